// Where the parts of a button are, and which painter draws them.
#include "appearance/Geometry.h"
#include "appearance/Painters.h"

#include <array>

namespace lampblack::appearance {

namespace {

enum class Family : uint8_t {
    Push,
    Check,
    Radio,
    Bevel,
    Arrow,
    Popup,
    Triangle,
    LittleArrows,
    Header,
    Round,
    Combo
};

// A kind of button. `mark` is the side of a box or disc, the width of an arrow part or the corner radius of a
// bevel; `width` and `height` are fixed when not zero, and then centred (marks stand at the left end).
struct ButtonKind {
    Family family;
    short width, height, mark;
    short left, top, right, bottom; // from the bounds to the place for the content
};

constexpr std::array<ButtonKind, 27> kKinds = { {
    { Family::Push, 0, 0, 0, 10, 1, 10, 2 },         // push
    { Family::Check, 0, 0, 15, 20, 0, 0, 0 },        // check box
    { Family::Radio, 0, 0, 16, 20, 0, 0, 0 },        // radio button
    { Family::Bevel, 0, 0, 3, 3, 3, 3, 4 },          // bevel
    { Family::Arrow, 0, 0, 0, 3, 2, 3, 3 },          // arrow button
    { Family::Popup, 0, 20, 19, 9, 1, 23, 2 },       // popup
    { Family::Triangle, 0, 0, 0, 0, 0, 0, 0 },       // disclosure triangle
    { Family::LittleArrows, 13, 23, 0, 0, 0, 0, 0 }, // little arrows
    { Family::Bevel, 0, 0, 2, 2, 2, 2, 3 },          // small bevel
    { Family::Bevel, 0, 0, 4, 4, 4, 4, 5 },          // large bevel
    { Family::Header, 0, 0, 0, 5, 0, 5, 1 },         // list header
    { Family::Round, 20, 20, 0, 3, 3, 3, 4 },        // round
    { Family::Round, 25, 25, 0, 4, 4, 4, 5 },        // large round
    { Family::Check, 0, 0, 13, 17, 0, 0, 0 },        // small check box
    { Family::Radio, 0, 0, 14, 17, 0, 0, 0 },        // small radio button
    { Family::Bevel, 0, 0, 6, 4, 3, 4, 4 },          // rounded bevel
    { Family::Combo, 0, 20, 19, 3, 2, 21, 3 },       // combo box
    { Family::Combo, 0, 17, 16, 3, 2, 18, 3 },       // small combo box
    { Family::Combo, 0, 14, 13, 3, 1, 15, 2 },       // mini combo box
    { Family::Check, 0, 0, 11, 14, 0, 0, 0 },        // mini check box
    { Family::Radio, 0, 0, 11, 14, 0, 0, 0 },        // mini radio button
    { Family::LittleArrows, 11, 20, 0, 0, 0, 0, 0 }, // small little arrows
    { Family::LittleArrows, 9, 16, 0, 0, 0, 0, 0 },  // mini little arrows
    { Family::Push, 0, 17, 0, 9, 1, 9, 2 },          // small push
    { Family::Push, 0, 15, 0, 8, 1, 8, 2 },          // mini push
    { Family::Popup, 0, 17, 16, 8, 1, 20, 2 },       // small popup
    { Family::Popup, 0, 15, 13, 6, 1, 16, 2 },       // mini popup
} };

const ButtonKind* KindOf(ThemeButtonKind inKind)
{
    return inKind < kKinds.size() ? &kKinds[inKind] : nullptr;
}

// The bounds within which the kind is really drawn.
Rect BodyOf(const Rect& inBounds, const ButtonKind& inKind)
{
    const int width = inKind.width && inKind.width < WidthOf(inBounds) ? inKind.width : WidthOf(inBounds);
    const int height =
        inKind.height && inKind.height < HeightOf(inBounds) ? inKind.height : HeightOf(inBounds);
    return Centered(inBounds, width, height);
}

bool ReadsRightToLeft(const ThemeButtonDrawInfo& inInfo)
{
    return inInfo.adornment & kThemeAdornmentRightToLeft;
}

// The box or disc of check boxes and radio buttons.
Rect MarkOf(const Rect& inBounds, const ButtonKind& inKind, bool inRightToLeft)
{
    const int side = std::min<int>({ inKind.mark, WidthOf(inBounds), HeightOf(inBounds) });
    Rect mark = Centered(inBounds, side, side);
    const long left = inRightToLeft ? inBounds.right - side - 1 : inBounds.left + 1;
    return MakeRect(left, mark.top, side, side);
}

Rect ContentOf(const Rect& inBounds, const ButtonKind& inKind, const ThemeButtonDrawInfo& inInfo)
{
    const Rect body = BodyOf(inBounds, inKind);
    return ReadsRightToLeft(inInfo) ? Inset(body, inKind.right, inKind.top, inKind.left, inKind.bottom)
                                    : Inset(body, inKind.left, inKind.top, inKind.right, inKind.bottom);
}

struct Drawing {
    const Rect& bounds;
    const ButtonKind& kind;
    const ThemeButtonDrawInfo& info;
    Rect body;
    Look look;
};

void DrawPush(const Drawing& in)
{
    Look look = in.look;
    look.value = (in.info.adornment & kThemeAdornmentDefault) != 0;
    DrawPiece(PaintPushButton, look, in.body, { 12, 0, 12, 0 });
}

void DrawCheck(const Drawing& in)
{
    DrawPiece(PaintCheckBox, in.look, MarkOf(in.bounds, in.kind, ReadsRightToLeft(in.info)));
}

void DrawRadio(const Drawing& in)
{
    DrawPiece(PaintRadioButton, in.look, MarkOf(in.bounds, in.kind, ReadsRightToLeft(in.info)));
}

// The small arrow with which a bevel button says that it opens a menu.
void DrawAdornmentArrow(const Drawing& in)
{
    struct Arrow {
        int bit, direction;
    };
    static constexpr Arrow kArrows[] = { { kThemeAdornmentArrowLeftArrow, kThemeArrowLeft },
                                         { kThemeAdornmentArrowDownArrow, kThemeArrowDown },
                                         { kThemeAdornmentArrowUpArrow, kThemeArrowUp } };
    for (const Arrow& arrow : kArrows)
        if (in.info.adornment & arrow.bit)
            DrawPiece(PaintTriangle, Look{ in.look.tone, 1, (uint16_t)arrow.direction },
                      MakeRect(in.body.right - 12, in.body.bottom - 12, 9, 9));
}

void DrawBevel(const Drawing& in)
{
    Look look = in.look;
    look.variant = (uint16_t)in.kind.mark;
    DrawPiece(PaintBevelButton, look, in.body, { 8, 0, 8, 0 });
    DrawAdornmentArrow(in);
}

void DrawArrow(const Drawing& in)
{
    DrawPiece(PaintBevelButton, Look{ in.look.tone, 0, 4 }, in.body, { 8, 0, 8, 0 });
    DrawPiece(PaintTriangle, Look{ in.look.tone, 1, kThemeArrowDown }, Centered(in.body, 9, 9));
}

void DrawPopup(const Drawing& in)
{
    const short cap = in.kind.mark;
    DrawPiece(PaintPopupButton, Look{ in.look.tone, 0, (uint16_t)cap }, in.body,
              { 8, 0, (short)(cap + 2), 0 });
}

void DrawTriangle(const Drawing& in)
{
    static constexpr uint16_t kDirections[] = { kThemeArrowRight, kThemeArrowDown, kThemeArrowLeft };
    const uint16_t direction = kDirections[std::min<int>(in.info.value, 2)];
    const int side = std::min({ WidthOf(in.bounds), HeightOf(in.bounds), 11 });
    DrawPiece(PaintTriangle, Look{ in.look.tone, 2, direction }, Centered(in.bounds, side, side));
}

void DrawLittleArrows(const Drawing& in)
{
    const uint8_t half = in.info.state == kThemeStatePressedUp     ? 1
                         : in.info.state == kThemeStatePressedDown ? 2
                                                                   : 0;
    DrawPiece(PaintLittleArrows, Look{ in.look.tone, half, 0 }, in.body);
}

void DrawHeader(const Drawing& in)
{
    const bool sorted = in.info.value != kThemeButtonOff;
    DrawPiece(PaintListHeader, Look{ in.look.tone, sorted, 0 }, in.body, { 1, 0, 3, 0 });
    if (!sorted || WidthOf(in.body) < 24)
        return;
    const bool up = in.info.adornment & kThemeAdornmentHeaderButtonSortUp;
    const Rect arrow = MakeRect(in.body.right - 15, in.body.top + (HeightOf(in.body) - 9) / 2, 9, 9);
    DrawPiece(PaintTriangle, Look{ in.look.tone, 1, (uint16_t)(up ? kThemeArrowUp : kThemeArrowDown) },
              arrow);
}

void DrawRound(const Drawing& in)
{
    DrawPiece(PaintRoundButton, Look{ in.look.tone, 0, 0 }, in.body);
}

void DrawCombo(const Drawing& in)
{
    const Rect field = Inset(in.body, 0, 0, in.kind.mark, 1);
    DrawPiece(PaintWell, Look{ in.look.tone, 1, 1 }, field, { 4, 0, 4, 0 });
    DrawPiece(PaintComboButton, Look{ in.look.tone, 0, 0 },
              MakeRect(in.body.right - in.kind.mark, in.body.top, in.kind.mark, HeightOf(in.body)));
}

using DrawProc = void (*)(const Drawing&);
constexpr DrawProc kDraw[] = { DrawPush,     DrawCheck,        DrawRadio,  DrawBevel, DrawArrow, DrawPopup,
                               DrawTriangle, DrawLittleArrows, DrawHeader, DrawRound, DrawCombo };

// How far the corners of a family are rounded, for its focus ring.
int CornerOf(const ButtonKind& inKind, const Rect& inBody)
{
    switch (inKind.family) {
    case Family::Push: return std::min(HeightOf(inBody) / 2, 10);
    case Family::Check: return 3;
    case Family::Bevel: return inKind.mark;
    case Family::Arrow:
    case Family::Popup:
    case Family::Combo: return 4;
    case Family::Radio:
    case Family::Round:
    case Family::LittleArrows: return std::min(WidthOf(inBody), HeightOf(inBody)) / 2;
    default: return 0;
    }
}

// What of a button is drawn, and so what the ring surrounds and the region holds: of check boxes only the
// box.
Rect FigureOf(const Drawing& in)
{
    if (in.kind.family != Family::Check && in.kind.family != Family::Radio)
        return in.body;
    return MarkOf(in.bounds, in.kind, ReadsRightToLeft(in.info));
}

void DrawFocus(const Drawing& in)
{
    const Rect figure = Inset(FigureOf(in), 0, 0, 0, 1); // without the row of the shadow
    const short corner = (short)CornerOf(in.kind, figure), margin = (short)(corner + kFocusWidth + 1);
    DrawPiece(PaintFocusRing, Look{ Tone::Active, 0, (uint16_t)corner }, Outset(figure, kFocusWidth),
              { margin, margin, margin, margin, true });
}

Drawing DrawingOf(const Rect& inBounds, const ButtonKind& inKind, const ThemeButtonDrawInfo& inInfo)
{
    const uint8_t value = (uint8_t)std::min<int>(inInfo.value, kThemeButtonMixed);
    return { inBounds, inKind, inInfo, BodyOf(inBounds, inKind), Look{ ToneOf(inInfo.state), value, 0 } };
}

Rect BackgroundOf(const Rect& inBounds, const ThemeButtonDrawInfo& inInfo)
{
    return inInfo.adornment & kThemeAdornmentFocus ? Outset(inBounds, kFocusWidth) : inBounds;
}

} // namespace

} // namespace lampblack::appearance

using namespace lampblack::appearance;

OSStatus DrawThemeButton(const Rect* inBounds, ThemeButtonKind inKind, const ThemeButtonDrawInfo* inNewInfo,
                         const ThemeButtonDrawInfo*, ThemeEraseUPP inEraseProc,
                         ThemeButtonDrawUPP inLabelProc, URefCon inUserData)
{
    const ButtonKind* kind = KindOf(inKind);
    if (!inBounds || !inNewInfo || !kind)
        return paramErr;
    const Drawing drawing = DrawingOf(*inBounds, *kind, *inNewInfo);
    const Rect background = BackgroundOf(*inBounds, *inNewInfo);
    if (inEraseProc)
        inEraseProc(&background, inUserData, kDepth, true);
    kDraw[(int)kind->family](drawing);
    if (inNewInfo->adornment & kThemeAdornmentFocus)
        DrawFocus(drawing);
    const Rect content = ContentOf(*inBounds, *kind, *inNewInfo);
    if (inLabelProc && !(inNewInfo->adornment & kThemeAdornmentDrawIndicatorOnly))
        inLabelProc(&content, inKind, inNewInfo, inUserData, kDepth, true);
    return noErr;
}

OSStatus GetThemeButtonRegion(const Rect* inBounds, ThemeButtonKind inKind,
                              const ThemeButtonDrawInfo* inNewInfo, RgnHandle outRegion)
{
    const ButtonKind* kind = KindOf(inKind);
    if (!inBounds || !inNewInfo || !outRegion || !kind)
        return paramErr;
    const Rect figure = FigureOf(DrawingOf(*inBounds, *kind, *inNewInfo));
    RectRgn(outRegion, &figure);
    return noErr;
}

OSStatus GetThemeButtonContentBounds(const Rect* inBounds, ThemeButtonKind inKind,
                                     const ThemeButtonDrawInfo* inDrawInfo, Rect* outBounds)
{
    const ButtonKind* kind = KindOf(inKind);
    if (!inBounds || !inDrawInfo || !outBounds || !kind)
        return paramErr;
    *outBounds = ContentOf(*inBounds, *kind, *inDrawInfo);
    return noErr;
}

OSStatus GetThemeButtonBackgroundBounds(const Rect* inBounds, ThemeButtonKind inKind,
                                        const ThemeButtonDrawInfo* inDrawInfo, Rect* outBounds)
{
    if (!inBounds || !inDrawInfo || !outBounds || !KindOf(inKind))
        return paramErr;
    *outBounds = BackgroundOf(*inBounds, *inDrawInfo);
    return noErr;
}
