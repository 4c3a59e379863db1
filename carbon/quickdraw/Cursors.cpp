// Cursors: the application's pictures, given to the machine.
#include "CursorImage.h"
#include "Port.h"
#include "Region.h"

#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>

#include <Host.h>

#include <algorithm>
#include <cstring>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static constexpr Cursor kArrow = { { 0x0000, 0x4000, 0x6000, 0x7000, 0x7800, 0x7C00, 0x7E00, 0x7F00, 0x7F80,
                                     0x7C00, 0x6C00, 0x4600, 0x0600, 0x0300, 0x0300, 0x0000 },
                                   { (SInt16)0xC000, (SInt16)0xE000, (SInt16)0xF000, (SInt16)0xF800,
                                     (SInt16)0xFC00, (SInt16)0xFE00, (SInt16)0xFF00, (SInt16)0xFF80,
                                     (SInt16)0xFFC0, (SInt16)0xFFE0, (SInt16)0xFE00, (SInt16)0xEF00,
                                     (SInt16)0xCF00, (SInt16)0x8780, 0x0780, 0x0380 },
                                   { 1, 1 } };

struct SystemCursor {
    SInt16 id;
    Cursor cursor;
};

static constexpr SystemCursor kSystemCursors[] = {
    { iBeamCursor,
      { { 0x0C60, 0x0280, 0x0100, 0x0100, 0x0100, 0x0100, 0x0100, 0x0100, 0x0100, 0x0100, 0x0100, 0x07C0,
          0x0100, 0x0100, 0x0280, 0x0C60 },
        { 0x0C60, 0x0280, 0x0100, 0x0100, 0x0100, 0x0100, 0x0100, 0x0100, 0x0100, 0x0100, 0x0100, 0x07C0,
          0x0100, 0x0100, 0x0280, 0x0C60 },
        { 4, 7 } } },
    { crossCursor,
      { { 0x0400, 0x0400, 0x0400, 0x0400, 0x0400, (SInt16)0xFFE0, 0x0400, 0x0400, 0x0400, 0x0400, 0x0400, 0,
          0, 0, 0, 0 },
        { 0x0400, 0x0400, 0x0400, 0x0400, 0x0400, (SInt16)0xFFE0, 0x0400, 0x0400, 0x0400, 0x0400, 0x0400, 0,
          0, 0, 0, 0 },
        { 5, 5 } } },
    { plusCursor,
      { { 0, 0x07C0, 0x0440, 0x0440, 0x0440, 0x7C7C, 0x4004, 0x4004, 0x4004, 0x7C7C, 0x0440, 0x0440, 0x0440,
          0x07C0, 0, 0 },
        { 0x0FC0, 0x0FE0, 0x0FE0, 0x0FE0, (SInt16)0xFFFE, (SInt16)0xFFFE, (SInt16)0xFFFE, (SInt16)0xFFFE,
          (SInt16)0xFFFE, (SInt16)0xFFFE, 0x0FE0, 0x0FE0, 0x0FE0, 0x0FE0, 0x07C0, 0 },
        { 8, 8 } } },
    { watchCursor,
      { { 0x3F00, 0x3F00, 0x3F00, 0x3F00, 0x4080, (SInt16)0x8440, (SInt16)0x8440, (SInt16)0x8460,
          (SInt16)0x9C60, (SInt16)0x8040, (SInt16)0x8040, 0x4080, 0x3F00, 0x3F00, 0x3F00, 0x3F00 },
        { 0x3F00, 0x3F00, 0x3F00, 0x3F00, 0x7F80, (SInt16)0xFFC0, (SInt16)0xFFC0, (SInt16)0xFFE0,
          (SInt16)0xFFE0, (SInt16)0xFFC0, (SInt16)0xFFC0, 0x7F80, 0x3F00, 0x3F00, 0x3F00, 0x3F00 },
        { 8, 8 } } },
};

static Cursor gArrow = kArrow;
static SInt16 gLevel = 0;   // 0: visible; never above
static SInt16 gShields = 0; // of the levels below 0, those that hide the cursor only once it moves
static bool gObscured = false;

static void ShowOrHide()
{
    if (host::Machine().showCursor)
        host::Machine().showCursor(gLevel + gShields >= 0 && !gObscured);
}

static bool BitOf(const Bits16& inBits, int h, int v)
{
    return (UInt16)inBits[v] >> (15 - h) & 1;
}

// A black bit outside the mask inverts the screen there, which no machine of today can: it becomes black.
static uint32_t PixelOf(const Cursor& inCursor, const uint32_t* inColors, int h, int v)
{
    const uint32_t black = 0, white = 0x00FFFFFF;
    const uint32_t color = inColors ? inColors[v * 16 + h] : BitOf(inCursor.data, h, v) ? black : white;
    return BitOf(inCursor.mask, h, v) || color == black ? 0xFF000000 | color : 0;
}

void ShowCursorPicture(const Cursor& inCursor, const uint32_t* inColors)
{
    if (!host::Machine().setCursorImage)
        return;
    static uint32_t pixels[16 * 16]; // a host may read them until the next call
    for (int v = 0; v < 16; ++v)
        for (int h = 0; h < 16; ++h)
            pixels[v * 16 + h] = PixelOf(inCursor, inColors, h, v);
    const auto inside = [](SInt16 at) { return std::clamp<SInt16>(at, 0, 15); };
    const Point hotSpot = { inside(inCursor.hotSpot.v), inside(inCursor.hotSpot.h) };
    host::Machine().setCursorImage({ pixels, 16, 16, hotSpot });
}

// The arrow is the machine's own, which looks right at every scale, unless an application drew another one.
static void ShowArrow()
{
    const bool isOurs = std::memcmp(&gArrow, &kArrow, sizeof(Cursor)) == 0;
    if (isOurs && host::Machine().setThemeCursor)
        host::Machine().setThemeCursor(0);
    else
        ShowCursorPicture(gArrow);
}

static CursHandle NewCursorHandle(const Cursor& inCursor)
{
    Handle handle = nullptr;
    return PtrToHand(&inCursor, &handle, sizeof inCursor) == noErr ? reinterpret_cast<CursHandle>(handle)
                                                                   : nullptr;
}

// Made once each: whoever asks again gets the same handle, as with a resource.
static CursHandle SystemCursorNumbered(SInt16 inID)
{
    static CursHandle handles[std::size(kSystemCursors)];
    for (size_t i = 0; i < std::size(kSystemCursors); ++i) {
        if (kSystemCursors[i].id != inID)
            continue;
        if (!IsHandleValid(reinterpret_cast<Handle>(handles[i])))
            handles[i] = NewCursorHandle(kSystemCursors[i].cursor);
        return handles[i];
    }
    return nullptr;
}

// Whether a rectangle comes near the hot spot; wherever in its picture that is, the picture is no larger.
static bool MeetsCursor(const Rect& inRect, Point inOffset)
{
    const Point mouse = host::Machine().mouse ? host::Machine().mouse() : Point{ 0, 0 };
    const int h = mouse.h + inOffset.h, v = mouse.v + inOffset.v;
    return !IsEmpty(Intersection(BoxOf(inRect), { h - 15, v - 15, h + 16, v + 16 }));
}

void MouseDidMove()
{
    if (!gObscured && gShields == 0)
        return;
    gObscured = false;
    gShields = 0;
    ShowOrHide();
}

} // namespace lampblack::quickdraw

Cursor* GetQDGlobalsArrow(Cursor* arrow)
{
    if (arrow)
        *arrow = gArrow;
    return arrow;
}

void SetQDGlobalsArrow(const Cursor* arrow)
{
    if (arrow)
        gArrow = *arrow;
}

void InitCursor(void)
{
    gLevel = gShields = 0;
    gObscured = false;
    ShowArrow();
    ShowOrHide();
}

void SetCursor(const Cursor* crsr)
{
    if (!crsr)
        return;
    if (std::memcmp(crsr, &gArrow, sizeof(Cursor)) == 0)
        ShowArrow();
    else
        ShowCursorPicture(*crsr);
}

void HideCursor(void)
{
    if (gLevel > -32768)
        --gLevel;
    ShowOrHide();
}

void ShowCursor(void)
{
    if (gLevel < 0)
        ++gLevel;
    gShields = std::min<SInt16>(gShields, (SInt16)-gLevel);
    ShowOrHide();
}

void ShieldCursor(const Rect* shieldRect, Point offsetPt)
{
    if (!shieldRect || gLevel == -32768)
        return;
    --gLevel;
    if (!MeetsCursor(*shieldRect, offsetPt))
        ++gShields;
    ShowOrHide();
}

void ObscureCursor(void)
{
    gObscured = true;
    ShowOrHide();
}

// A resource too short for the record is none.
CursHandle GetCursor(short cursorID)
{
    const Handle resource = GetResource('CURS', cursorID);
    if (resource && *resource && GetHandleSize(resource) >= (Size)sizeof(Cursor))
        return reinterpret_cast<CursHandle>(resource);
    return SystemCursorNumbered(cursorID);
}
