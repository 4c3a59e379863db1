// The menu bar, menus and their items.
#include "appearance/Geometry.h"
#include "appearance/Painters.h"

namespace lampblack::appearance {

namespace {

constexpr short kBarHeight = 22, kTitleExtra = 20, kSquishedTitleExtra = 12;
constexpr short kSeparatorHeight = 11;
constexpr short kItemSide = 4;    // from the menu's edge to the highlight
constexpr short kItemMargin = 10; // from the menu's edge to what the item draws
constexpr short kItemExtraHeight = 3;
constexpr short kHierarchicalArrow = 14; // room for the arrow that opens a submenu
constexpr UInt16 kItemKindMask = 0x00FF;

// The port's foreground while an application's procedure draws a title or an item.
class StTextColor {
public:
    [[nodiscard]] explicit StTextColor(ThemeTextColor inColor)
    {
        GetForeColor(&fSaved);
        SetThemeTextColor(inColor, kDepth, true);
    }
    ~StTextColor() { RGBForeColor(&fSaved); }
    StTextColor(const StTextColor&) = delete;
    StTextColor& operator=(const StTextColor&) = delete;

private:
    RGBColor fSaved = {};
};

ThemeTextColor TitleColor(ThemeMenuState inState)
{
    return inState == kThemeMenuSelected   ? kThemeTextColorRootMenuSelected
           : inState == kThemeMenuDisabled ? kThemeTextColorRootMenuDisabled
                                           : kThemeTextColorRootMenuActive;
}

ThemeTextColor ItemColor(ThemeMenuState inState)
{
    return inState == kThemeMenuSelected   ? kThemeTextColorMenuItemSelected
           : inState == kThemeMenuDisabled ? kThemeTextColorMenuItemDisabled
                                           : kThemeTextColorMenuItemActive;
}

bool IsMenuState(ThemeMenuState inState)
{
    return inState == kThemeMenuActive || inState == kThemeMenuSelected || inState == kThemeMenuDisabled;
}

bool IsMenuType(ThemeMenuType inType)
{
    return (inType & ~kThemeMenuTypeInactive) <= kThemeMenuTypeHierarchical;
}

void PaintSelectedArrow(Canvas& ioCanvas, int inWidth, int inHeight, Look inLook)
{
    PaintArrow(ioCanvas, inWidth / 2.0, inHeight / 2.0, std::min(inWidth, inHeight) / 2.0, inLook.variant,
               palette::kWhite);
}

void DrawItemArrow(const Rect& inBox, int inDirection, ThemeMenuState inState)
{
    const Tone tone = inState == kThemeMenuDisabled ? Tone::Dim : Tone::Active;
    DrawPiece(inState == kThemeMenuSelected ? PaintSelectedArrow : PaintTriangle,
              Look{ tone, 2, (uint16_t)inDirection }, Centered(inBox, 9, 9));
}

void DrawItemMarks(const Rect& inItem, UInt16 inKind, ThemeMenuState inState)
{
    if (inKind == kThemeMenuItemHierarchical)
        DrawItemArrow(
            Inset(inItem, WidthOf(inItem) - kItemMargin - kHierarchicalArrow, 0, kItemMargin - 4, 0),
            kThemeArrowRight, inState);
    if (inKind == kThemeMenuItemScrollUpArrow)
        DrawItemArrow(inItem, kThemeArrowUp, inState);
    if (inKind == kThemeMenuItemScrollDownArrow)
        DrawItemArrow(inItem, kThemeArrowDown, inState);
}

void DrawItemBackground(const Rect& inItem, ThemeMenuState inState, ThemeMenuItemType inType)
{
    if (!(inType & kThemeMenuItemNoBackground))
        DrawPiece(PaintMenuBackground, {}, inItem, { 1, 1, 1, 1 });
    if (inState == kThemeMenuSelected)
        DrawPiece(PaintMenuItem, {}, Inset(inItem, kItemSide, 0, kItemSide, 0), { 6, 0, 6, 0 });
}

} // namespace

} // namespace lampblack::appearance

using namespace lampblack::appearance;

OSStatus GetThemeMenuBarHeight(SInt16* outHeight)
{
    if (!outHeight)
        return paramErr;
    *outHeight = kBarHeight;
    return noErr;
}

OSStatus DrawThemeMenuBarBackground(const Rect* inBounds, ThemeMenuBarState inState, UInt32)
{
    if (!inBounds || inState > kThemeMenuBarSelected)
        return paramErr;
    DrawPiece(inState == kThemeMenuBarSelected ? PaintMenuTitle : PaintMenuBar, {}, *inBounds,
              { 1, 0, 1, 0 });
    return noErr;
}

OSStatus DrawThemeMenuTitle(const Rect* inMenuBarRect, const Rect* inTitleRect, ThemeMenuState inState,
                            UInt32 inAttributes, MenuTitleDrawingUPP inTitleProc, SRefCon inTitleData)
{
    if (!inMenuBarRect || !inTitleRect || !IsMenuState(inState))
        return paramErr;
    // The bar's grade is that of its whole height, wherever the title stands in it.
    const Rect background = { inMenuBarRect->top, inTitleRect->left, inMenuBarRect->bottom,
                              inTitleRect->right };
    DrawThemeMenuBarBackground(&background,
                               inState == kThemeMenuSelected ? kThemeMenuBarSelected : kThemeMenuBarNormal,
                               inAttributes);
    const Rect content = Inset(*inTitleRect, kTitleExtra / 2, 0, kTitleExtra / 2, 1);
    if (!inTitleProc)
        return noErr;
    const StTextColor color(TitleColor(inState));
    inTitleProc(&content, kDepth, true, inTitleData);
    return noErr;
}

OSStatus GetThemeMenuTitleExtra(SInt16* outWidth, Boolean inIsSquished)
{
    if (!outWidth)
        return paramErr;
    *outWidth = inIsSquished ? kSquishedTitleExtra : kTitleExtra;
    return noErr;
}

OSStatus DrawThemeMenuBackground(const Rect* inMenuRect, ThemeMenuType inMenuType)
{
    if (!inMenuRect || !IsMenuType(inMenuType))
        return paramErr;
    const Tone tone = inMenuType & kThemeMenuTypeInactive ? Tone::Inactive : Tone::Active;
    DrawPiece(PaintMenuBackground, Look{ tone, 0, 0 }, *inMenuRect, { 1, 1, 1, 1 });
    return noErr;
}

OSStatus GetThemeMenuBackgroundRegion(const Rect* inMenuRect, ThemeMenuType inMenuType, RgnHandle ioRegion)
{
    if (!inMenuRect || !ioRegion || !IsMenuType(inMenuType))
        return paramErr;
    RectRgn(ioRegion, inMenuRect);
    return noErr;
}

OSStatus DrawThemeMenuItem(const Rect* inMenuRect, const Rect* inItemRect, SInt16, SInt16,
                           ThemeMenuState inState, ThemeMenuItemType inItemType,
                           MenuItemDrawingUPP inDrawProc, SRefCon inUserData)
{
    const UInt16 kind = inItemType & kItemKindMask;
    if (!inMenuRect || !inItemRect || !IsMenuState(inState) || kind > kThemeMenuItemScrollDownArrow)
        return paramErr;
    DrawItemBackground(*inItemRect, inState, inItemType);
    DrawItemMarks(*inItemRect, kind, inState);
    if (!inDrawProc)
        return noErr;
    const int right = kItemMargin + (kind == kThemeMenuItemHierarchical ? kHierarchicalArrow : 0);
    const Rect content = Inset(*inItemRect, kItemMargin, 1, right, 1);
    const StTextColor color(ItemColor(inState));
    inDrawProc(&content, kDepth, true, inUserData);
    return noErr;
}

OSStatus DrawThemeMenuSeparator(const Rect* inItemRect)
{
    if (!inItemRect)
        return paramErr;
    DrawPiece(PaintMenuBackground, {}, *inItemRect, { 1, 1, 1, 1 });
    const Rect line = MakeRect(inItemRect->left + 1, inItemRect->top + HeightOf(*inItemRect) / 2,
                               WidthOf(*inItemRect) - 2, 1);
    DrawPiece(PaintSeparator, Look{ Tone::Active, 1, 0 }, line, { 1, 0, 1, 0 });
    return noErr;
}

OSStatus GetThemeMenuSeparatorHeight(SInt16* outHeight)
{
    if (!outHeight)
        return paramErr;
    *outHeight = kSeparatorHeight;
    return noErr;
}

OSStatus GetThemeMenuItemExtra(ThemeMenuItemType inItemType, SInt16* outHeight, SInt16* outWidth)
{
    const UInt16 kind = inItemType & kItemKindMask;
    if (!outHeight || !outWidth || kind > kThemeMenuItemScrollDownArrow)
        return paramErr;
    *outHeight = kItemExtraHeight;
    *outWidth = (SInt16)(2 * kItemMargin + (kind == kThemeMenuItemHierarchical ? kHierarchicalArrow : 0));
    return noErr;
}
