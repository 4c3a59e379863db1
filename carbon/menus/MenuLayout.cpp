// Measuring and drawing the items of menus.
#include "MenuLayout.h"

#include "Glyphs.h"
#include "MenuBar.h"

#include <Carbon/Appearance.h>
#include <Carbon/Events.h>
#include <Carbon/MacWindows.h>
#include <quickdraw/Port.h>
#include <windows/PortSaver.h>
#include <windows/Rects.h>

#include <algorithm>

namespace lampblack::menus {

namespace {

constexpr ScriptCode kSystemScript = -1;
constexpr short kGlyphStep = kGlyphSize + 2;
constexpr short kKeyColumn = 14; // room for the key itself

short Metric(ThemeMetric inMetric)
{
    SInt32 value = 0;
    GetThemeMetric(inMetric, &value);
    return (short)value;
}

short MarkColumn(const MenuRecord& inMenu)
{
    return Metric(inMenu.attributes & kMenuAttrExcludesMarkColumn ? kThemeMetricMenuExcludedMarkColumnWidth
                                                                  : kThemeMetricMenuMarkColumnWidth);
}

// --- Keys

// The name of a virtual key that types nothing; null for others.
const char* KeyName(UInt16 inKey)
{
    struct Name {
        UInt16 key;
        const char* name;
    };
    static constexpr Name kNames[] = { { kVK_F1, "F1" },
                                       { kVK_F2, "F2" },
                                       { kVK_F3, "F3" },
                                       { kVK_F4, "F4" },
                                       { kVK_F5, "F5" },
                                       { kVK_F6, "F6" },
                                       { kVK_F7, "F7" },
                                       { kVK_F8, "F8" },
                                       { kVK_F9, "F9" },
                                       { kVK_F10, "F10" },
                                       { kVK_F11, "F11" },
                                       { kVK_F12, "F12" },
                                       { kVK_F13, "F13" },
                                       { kVK_F14, "F14" },
                                       { kVK_F15, "F15" },
                                       { kVK_Return, "Return" },
                                       { kVK_Tab, "Tab" },
                                       { kVK_Space, "Space" },
                                       { kVK_Delete, "Delete" },
                                       { kVK_Escape, "Esc" },
                                       { kVK_Home, "Home" },
                                       { kVK_End, "End" },
                                       { kVK_Help, "Help" },
                                       { kVK_LeftArrow, "Left" },
                                       { kVK_RightArrow, "Right" },
                                       { kVK_UpArrow, "Up" },
                                       { kVK_DownArrow, "Down" } };
    for (const Name& name : kNames)
        if (name.key == inKey)
            return name.name;
    return nullptr;
}

bool HasKey(const MenuItem& inItem)
{
    if (inItem.Has(kMenuItemAttrUseVirtualKey))
        return KeyName(inItem.key);
    return inItem.key > 0x20;
}

std::string KeyText(const MenuItem& inItem)
{
    if (inItem.Has(kMenuItemAttrUseVirtualKey))
        return KeyName(inItem.key);
    return { (char)inItem.key };
}

struct KeySign {
    UInt8 modifier;
    bool whenClear;
    Glyph glyph;
};
// From left to right.
constexpr KeySign kKeySigns[] = { { kMenuControlModifier, false, Glyph::Control },
                                  { kMenuOptionModifier, false, Glyph::Option },
                                  { kMenuShiftModifier, false, Glyph::Shift },
                                  { kMenuNoCommandModifier, true, Glyph::Command } };

bool Shows(const KeySign& inSign, const MenuItem& inItem)
{
    return ((inItem.modifiers & inSign.modifier) == 0) == inSign.whenClear;
}

short KeyTextWidth(const MenuItem& inItem)
{
    Str255 text;
    CopyPascal(KeyText(inItem), text);
    return std::max(kKeyColumn, StringWidth(text));
}

short KeyWidth(const MenuItem& inItem)
{
    if (!HasKey(inItem))
        return 0;
    short width = KeyTextWidth(inItem);
    for (const KeySign& sign : kKeySigns)
        width = (short)(width + (Shows(sign, inItem) ? kGlyphStep : 0));
    return (short)(width + Metric(kThemeMetricMenuTextTrailingEdgeMargin));
}

void DrawKey(const MenuItem& inItem, const Rect& inBounds, short inBaseline)
{
    Str255 text;
    CopyPascal(KeyText(inItem), text);
    auto left = (short)(inBounds.right - KeyTextWidth(inItem));
    MoveTo((short)(left + 2), inBaseline);
    DrawString(text);
    for (int i = (int)std::size(kKeySigns); i-- > 0;) {
        if (!Shows(kKeySigns[i], inItem))
            continue;
        left = (short)(left - kGlyphStep);
        DrawGlyph(kKeySigns[i].glyph, { inBaseline, left });
    }
}

// --- Marks and text

void DrawMark(const MenuItem& inItem, short inLeft, short inBaseline)
{
    switch (inItem.mark) {
    case kMenuCheckMark: return DrawGlyph(Glyph::Check, { inBaseline, inLeft });
    case kMenuDiamondMark: return DrawGlyph(Glyph::Diamond, { inBaseline, inLeft });
    case 0xA5: return DrawGlyph(Glyph::Bullet, { inBaseline, inLeft });
    default: break;
    }
    if (inItem.mark <= 0x20)
        return;
    MoveTo(inLeft, inBaseline);
    DrawChar((CharParameter)inItem.mark);
}

void UseMenuFont(const MenuRecord& inMenu)
{
    UseThemeFont(kThemeMenuItemFont, kSystemScript);
    if (inMenu.font)
        TextFont(inMenu.font);
    if (inMenu.fontSize)
        TextSize((short)inMenu.fontSize);
}

void UseItemFont(const MenuRecord& inMenu, const MenuItem& inItem)
{
    UseMenuFont(inMenu);
    TextFace(inItem.style);
}

void DrawContent(const Rect* inBounds, SInt16, Boolean, SRefCon inRow)
{
    const auto& row = *reinterpret_cast<const Row*>(inRow);
    const MenuItem& item = *ItemOf(row);
    FontInfo font;
    Str255 text;
    UseItemFont(*Find(row.menu), item);
    GetFontInfo(&font);
    const int slack = inBounds->bottom - inBounds->top - font.ascent - font.descent;
    const auto baseline = (short)(inBounds->top + slack / 2 + font.ascent);
    const int indent = (int)std::min<UInt32>(item.indent, 100) * Metric(kThemeMetricMenuIndentWidth);
    CopyPascal(item.text, text);
    MoveTo((short)(inBounds->left + MarkColumn(*Find(row.menu)) + indent), baseline);
    DrawString(text);
    TextFace(normal);
    DrawMark(item, inBounds->left, baseline);
    if (HasKey(item) && !SubmenuOf(item))
        DrawKey(item, *inBounds, baseline);
}

// --- Rows

struct Sizes {
    short item, separator, extra, extraSubmenu;
};

Sizes ItemSizes(const MenuRecord& inMenu)
{
    FontInfo font;
    SInt16 height = 0, separator = 0, plain = 0, submenu = 0;
    UseMenuFont(inMenu);
    GetFontInfo(&font);
    GetThemeMenuItemExtra(kThemeMenuItemPlain, &height, &plain);
    GetThemeMenuItemExtra(kThemeMenuItemHierarchical, &height, &submenu);
    GetThemeMenuSeparatorHeight(&separator);
    return { (short)std::max(font.ascent + font.descent + height, 18), separator, plain, submenu };
}

short ItemWidth(const MenuRecord& inMenu, const MenuItem& inItem, const Sizes& inSizes)
{
    Str255 text;
    CopyPascal(inItem.text, text);
    UseItemFont(inMenu, inItem);
    const int indent = (int)std::min<UInt32>(inItem.indent, 100) * Metric(kThemeMetricMenuIndentWidth);
    int width =
        MarkColumn(inMenu) + StringWidth(text) + indent + Metric(kThemeMetricMenuTextTrailingEdgeMargin);
    TextFace(normal);
    const bool hierarchical = SubmenuOf(inItem) != nullptr;
    width += hierarchical ? inSizes.extraSubmenu : KeyWidth(inItem) + inSizes.extra;
    return (short)std::min(width, 4000);
}

class RowStack {
public:
    explicit RowStack(Layout& outLayout) : fLayout(outLayout) {}
    void Add(MenuRef inMenu, MenuItemIndex inItem, short inHeight, short inWidth)
    {
        const auto bottom = (short)std::min(fTop + inHeight, 32000);
        fLayout.rows.push_back({ inMenu, inItem, { (short)fTop, 0, bottom, 0 } });
        fTop = bottom;
        fLayout.width = std::max(fLayout.width, inWidth);
    }
    void Finish(short inEdge)
    {
        for (Row& row : fLayout.rows)
            row.bounds.right = fLayout.width;
        fLayout.height = (short)(fTop + inEdge);
    }
    void Start(short inEdge) { fTop = inEdge; }

private:
    Layout& fLayout;
    int fTop = 0;
};

void AddMenu(RowStack& ioRows, MenuRef inMenu, const Sizes& inSizes)
{
    const MenuRecord& menu = *Find(inMenu);
    for (size_t i = 0; i < menu.items.size(); ++i) {
        const MenuItem& item = menu.items[i];
        if (item.Has(kMenuItemAttrHidden))
            continue;
        const bool line = item.IsSeparator();
        ioRows.Add(inMenu, (MenuItemIndex)(i + 1), line ? inSizes.separator : inSizes.item,
                   line ? (short)0 : ItemWidth(menu, item, inSizes));
    }
}

// A small port that lasts, to measure text in.
CGrafPtr MeasuringPort()
{
    static const CGrafPtr port = quickdraw::NewPixelPort(1, 1);
    return port;
}

} // namespace

const MenuItem* ItemOf(const Row& inRow)
{
    return FindItem(inRow.menu, inRow.item);
}

Layout LayOut(const std::vector<MenuRef>& inMenus, short inLeastWidth)
{
    constexpr short kEdge = 4, kNarrowest = 60; // the edge is above the first row and below the last
    const windows::StWindowPort port(MeasuringPort());
    Layout layout;
    layout.width = std::max(kNarrowest, inLeastWidth);
    RowStack rows(layout);
    rows.Start(kEdge);
    for (MenuRef menu : inMenus) {
        const MenuRecord* record = Find(menu);
        if (!record)
            continue;
        const Sizes sizes = ItemSizes(*record);
        if (!layout.rows.empty() && CountMenuItems(menu))
            rows.Add(menu, 0, sizes.separator, 0);
        AddMenu(rows, menu, sizes);
    }
    rows.Finish(kEdge);
    return layout;
}

void MeasureMenu(MenuRecord& ioMenu)
{
    const Layout layout = LayOut({ ioMenu.Ref() });
    ioMenu.width = layout.width;
    ioMenu.height = layout.height;
    ioMenu.sizeStale = false;
}

void DrawRow(const Layout& inLayout, const Row& inRow, Point inOrigin, bool inSelected)
{
    const Rect menuRect = windows::Shifted({ 0, 0, inLayout.height, inLayout.width }, inOrigin.h, inOrigin.v);
    const Rect bounds = windows::Shifted(inRow.bounds, inOrigin.h, inOrigin.v);
    const MenuItem* item = ItemOf(inRow);
    if (!item || item->IsSeparator()) {
        DrawThemeMenuSeparator(&bounds);
        return;
    }
    const bool enabled =
        IsInBar(inRow.menu) ? IsUsable(inRow.menu, *item) : IsEnabled(*Find(inRow.menu), *item);
    const ThemeMenuState state = !enabled     ? kThemeMenuDisabled
                                 : inSelected ? kThemeMenuSelected
                                              : kThemeMenuActive;
    const ThemeMenuItemType type = SubmenuOf(*item) ? kThemeMenuItemHierarchical : kThemeMenuItemPlain;
    DrawThemeMenuItem(&menuRect, &bounds, menuRect.top, menuRect.bottom, state, type, DrawContent,
                      (SRefCon)&inRow);
}

} // namespace lampblack::menus
