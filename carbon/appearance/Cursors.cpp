// Theme cursors and sounds, and the beep: what the machine shows and plays, with fallbacks where it cannot.
#include "appearance/Geometry.h"
#include "appearance/Painters.h"

#include <Carbon/Sound.h>
#include <Host.h>

#include <cmath>

namespace lampblack::appearance {

namespace {

constexpr int kCursorSide = 16;
constexpr int kWatchSteps = 12, kFingerSteps = 6, kSpinSteps = 12;

// A watch whose one hand stands at the step.
void PaintWatch(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    const double x = inWidth / 2.0, y = inHeight / 2.0;
    ioCanvas.RoundBox(x - 3, 0, 6, inHeight, 1.5);
    ioCanvas.Fill(Black(1));
    ioCanvas.Disc(x, y, 6.5);
    ioCanvas.Fill(Black(1));
    ioCanvas.Disc(x, y, 5.3);
    ioCanvas.Fill(White(1));
    const double angle = 2 * M_PI * inLook.variant / kWatchSteps - M_PI / 2;
    ioCanvas.Polyline({ x, y - 3.2, x, y, x + 3.6 * std::cos(angle), y + 3.6 * std::sin(angle) });
    ioCanvas.Stroke(Black(1), 1.2);
}

// A hand that shows 0 to 5 fingers.
void PaintCountingHand(Canvas& ioCanvas, int, int, Look inLook)
{
    static constexpr struct {
        double x, tip;
    } kFingers[] = { { 5, 2 }, { 7.5, 1 }, { 10, 1.5 }, { 12.5, 3 } };
    const auto hand = [&](Color inColor, double inGrow) {
        ioCanvas.RoundBox(4 - inGrow, 8 - inGrow, 10 + 2 * inGrow, 7 + 2 * inGrow, 3);
        ioCanvas.Fill(inColor);
        for (int finger = 0; finger < std::min<int>(inLook.variant, 4); ++finger) {
            const auto& each = kFingers[finger];
            ioCanvas.RoundBox(each.x - 1 - inGrow, each.tip - inGrow, 2 + 2 * inGrow, 10, 1 + inGrow);
            ioCanvas.Fill(inColor);
        }
        if (inLook.variant < 5)
            return;
        ioCanvas.RoundBox(1 - inGrow, 8.5 - inGrow, 5 + 2 * inGrow, 2 + 2 * inGrow, 1 + inGrow);
        ioCanvas.Fill(inColor);
    };
    hand(Black(1), 0.9);
    hand(White(1), 0);
}

void PaintSpinningDisc(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    static constexpr Color kSectors[] = { { 0xE8503F }, { 0xF2B330 }, { 0x5FBB45 },
                                          { 0x4A90E8 }, { 0x7B61C9 }, { 0xD25FA8 } };
    const double x = inWidth / 2.0, y = inHeight / 2.0, turn = 2 * M_PI * inLook.variant / kSpinSteps;
    cairo_t* context = ioCanvas.Context();
    for (int sector = 0; sector < 6; ++sector) {
        cairo_new_path(context);
        cairo_move_to(context, x, y);
        cairo_arc(context, x, y, 7.5, turn + sector * M_PI / 3, turn + (sector + 1) * M_PI / 3);
        cairo_close_path(context);
        ioCanvas.Fill(kSectors[sector]);
    }
    ioCanvas.Disc(x, y, 7);
    ioCanvas.Stroke(Black(0.35), 1);
}

// A cursor that moves: its frames, and the painter's variant of each step.
struct AnimatedCursor {
    ThemeCursor cursor;
    Painter painter;
    int steps;
    bool countsDown, thenUp;
};

constexpr AnimatedCursor kAnimated[] = {
    { kThemeWatchCursor, PaintWatch, kWatchSteps, false, false },
    { kThemeCountingUpHandCursor, PaintCountingHand, kFingerSteps, false, false },
    { kThemeCountingDownHandCursor, PaintCountingHand, kFingerSteps, true, false },
    { kThemeCountingUpAndDownHandCursor, PaintCountingHand, kFingerSteps, false, true },
    { kThemeSpinningCursor, PaintSpinningDisc, kSpinSteps, false, false },
};

const AnimatedCursor* FindAnimated(ThemeCursor inCursor)
{
    for (const AnimatedCursor& each : kAnimated)
        if (each.cursor == inCursor)
            return &each;
    return nullptr;
}

int FrameOf(const AnimatedCursor& inCursor, UInt32 inStep)
{
    const int last = inCursor.steps - 1;
    if (!inCursor.thenUp) {
        const int frame = (int)(inStep % (UInt32)inCursor.steps);
        return inCursor.countsDown ? last - frame : frame;
    }
    const int frame = (int)(inStep % (UInt32)(2 * last));
    return frame <= last ? frame : 2 * last - frame;
}

} // namespace

} // namespace lampblack::appearance

using namespace lampblack;
using namespace lampblack::appearance;

OSStatus SetThemeCursor(ThemeCursor inCursor)
{
    if (inCursor > kThemePoofCursor)
        return themeBadCursorIndexErr;
    if (host::Machine().setThemeCursor)
        host::Machine().setThemeCursor((SInt32)inCursor);
    return noErr;
}

OSStatus SetAnimatedThemeCursor(ThemeCursor inCursor, UInt32 inAnimationStep)
{
    const AnimatedCursor* cursor = FindAnimated(inCursor);
    if (!cursor)
        return themeBadCursorIndexErr;
    const Look look = { Tone::Active, 0, (uint16_t)FrameOf(*cursor, inAnimationStep) };
    const PieceView piece = PaintedPiece(cursor->painter, look, kCursorSide, kCursorSide);
    if (!host::Machine().setCursorImage || !piece.pixels)
        return SetThemeCursor(inCursor);
    host::Machine().setCursorImage({ piece.pixels, piece.width, piece.height, { 8, 8 } });
    return noErr;
}

OSStatus PlayThemeSound(ThemeSoundKind inKind)
{
    if (inKind != kThemeSoundNone && host::Machine().playThemeSound)
        host::Machine().playThemeSound(inKind);
    return noErr;
}

void SysBeep(short)
{
    if (host::Machine().beep)
        host::Machine().beep();
}
