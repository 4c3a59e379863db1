// Open menus on the screen.
#include "OpenMenus.h"

#include "MenuBar.h"
#include "MenuSending.h"

#include <Carbon/Appearance.h>
#include <Carbon/MacWindows.h>
#include <windows/PortSaver.h>
#include <windows/Rects.h>
#include <windows/Surface.h>

#include <algorithm>

namespace lampblack::menus {

namespace {

constexpr short kArrowHeight = 18; // at the ends of a menu that does not fit

// The part of the screen that menus may take.
Rect MenuSpace()
{
    Rect space = windows::AvailableBounds();
    space.bottom = (short)(space.bottom - 2);
    return space;
}

// Where a menu of that size comes to lie. Its top stays above the bottom of the screen and below the bar.
Rect Placed(Point inTopLeft, const Layout& inLayout, int* outScrolled)
{
    const Rect space = MenuSpace();
    // Most rows are as high as an arrow; a menu that does not fit then ends between two.
    const int room = windows::Height(space);
    const int width = inLayout.width,
              height = inLayout.height > room ? room - room % kArrowHeight : inLayout.height;
    const int left = std::clamp<int>(inTopLeft.h, space.left, std::max<int>(space.left, space.right - width));
    int top = inTopLeft.v;
    // A pop-up menu may want to begin above the screen so that its item lies where it was pressed.
    *outScrolled = 0;
    if (top + height > space.bottom)
        top = space.bottom - height;
    if (top < space.top) {
        *outScrolled = std::min(space.top - inTopLeft.v, inLayout.height - height);
        *outScrolled = std::max(0, *outScrolled);
        top = space.top;
    }
    return { (short)top, (short)left, (short)(top + height), (short)(left + width) };
}

ThemeMenuType TypeFor(UInt32 inContext)
{
    return inContext & kMenuContextSubmenu ? kThemeMenuTypeHierarchical
           : inContext & kMenuContextPopUp ? kThemeMenuTypePopUp
                                           : kThemeMenuTypePullDown;
}

// Nothing where there is no room for it.
void DrawArrow(const Rect& inMenu, const Rect& inWhere, ThemeMenuItemType inArrow)
{
    if (!windows::IsEmptyRect(inWhere))
        DrawThemeMenuItem(&inMenu, &inWhere, inMenu.top, inMenu.bottom, kThemeMenuActive, inArrow, nullptr,
                          0);
}

bool Retain(const std::vector<MenuRef>& inMenus)
{
    bool any = false;
    for (MenuRef menu : inMenus)
        any = (RetainMenu(menu) == noErr) || any;
    return any;
}

} // namespace

bool CanChoose(const Row& inRow)
{
    const MenuItem* item = ItemOf(inRow);
    if (!item || item->Has(kMenuItemAttrSectionHeader))
        return false;
    return IsInBar(inRow.menu) ? IsUsable(inRow.menu, *item) : IsEnabled(*Find(inRow.menu), *item);
}

Rect OpenMenu::RowArea() const
{
    const auto height = (short)windows::Height(bounds);
    return { HasArrowAbove() ? kArrowHeight : (short)0, 0,
             HasArrowBelow() ? (short)(height - kArrowHeight) : height, (short)windows::Width(bounds) };
}

bool OpenMenus::Open(const std::vector<MenuRef>& inMenus, Point inTopLeft, UInt32 inContext,
                     short inLeastWidth)
{
    std::vector<MenuRef> menus;
    for (MenuRef menu : inMenus)
        if (Find(menu))
            menus.push_back(menu);
    if (!Retain(menus))
        return false;
    for (MenuRef menu : menus) {
        if (SendOpening(menu, inContext))
            PrepareMenu(menu, inContext, false);
    }
    OpenMenu open;
    open.menus = menus;
    open.layout = LayOut(menus, inLeastWidth);
    open.context = inContext;
    open.bounds = Placed(inTopLeft, open.layout, &open.scrolled);
    open.surface = windows::NewSurface(windows::Layer::Menu, open.bounds, true);
    // A pulled-down menu hangs square from the bar.
    const short radius = 5;
    windows::SetSurfaceCorners(
        open.surface,
        inContext & kMenuContextMenuBar && !(inContext & kMenuContextSubmenu) ? (short)0 : radius, radius);
    fOpen.push_back(std::move(open));
    ShowHide(Last().surface, true);
    Draw(Last());
    return true;
}

void OpenMenus::CloseTo(size_t inCount)
{
    while (fOpen.size() > inCount) {
        const OpenMenu closed = std::move(fOpen.back());
        fOpen.pop_back();
        DisposeWindow(closed.surface);
        for (MenuRef menu : closed.menus) {
            SendClosed(menu, closed.context);
            ReleaseMenu(menu);
        }
    }
}

void OpenMenus::Draw(OpenMenu& inMenu)
{
    const windows::StWindowPort port(GetWindowPort(inMenu.surface));
    const Rect bounds = { 0, 0, (short)windows::Height(inMenu.bounds), (short)windows::Width(inMenu.bounds) };
    DrawThemeMenuBackground(&bounds, TypeFor(inMenu.context));
    const Rect area = inMenu.RowArea();
    DrawArrow(bounds, { 0, 0, area.top, bounds.right }, kThemeMenuItemScrollUpArrow);
    DrawArrow(bounds, { area.bottom, 0, bounds.bottom, bounds.right }, kThemeMenuItemScrollDownArrow);
    ClipRect(&area);
    for (const Row& row : inMenu.layout.rows) {
        if (row.bounds.bottom - inMenu.scrolled <= area.top ||
            row.bounds.top - inMenu.scrolled >= area.bottom)
            continue;
        const bool selected = &row - inMenu.layout.rows.data() == inMenu.selected;
        DrawRow(inMenu.layout, row, { (short)-inMenu.scrolled, 0 }, selected && CanChoose(row));
    }
}

void OpenMenus::DrawOne(OpenMenu& inMenu, int inRow, bool inSelected)
{
    if (inRow < 0 || inRow >= (int)inMenu.layout.rows.size())
        return;
    const windows::StWindowPort port(GetWindowPort(inMenu.surface));
    const Rect area = inMenu.RowArea();
    ClipRect(&area);
    const Row& row = inMenu.layout.rows[(size_t)inRow];
    DrawRow(inMenu.layout, row, { (short)-inMenu.scrolled, 0 }, inSelected && CanChoose(row));
}

int OpenMenus::MenuAt(Point inWhere) const
{
    for (int i = (int)fOpen.size(); i-- > 0;)
        if (windows::RectHolds(fOpen[(size_t)i].bounds, inWhere))
            return i;
    return -1;
}

Rect OpenMenus::RowBounds(const OpenMenu& inMenu, int inRow) const
{
    return windows::Shifted(inMenu.layout.rows[(size_t)inRow].bounds, inMenu.bounds.left,
                            inMenu.bounds.top - inMenu.scrolled);
}

int OpenMenus::RowAt(const OpenMenu& inMenu, Point inWhere) const
{
    const Rect area = windows::Shifted(inMenu.RowArea(), inMenu.bounds.left, inMenu.bounds.top);
    if (!windows::RectHolds(area, inWhere))
        return -1;
    for (int row = 0; row < (int)inMenu.layout.rows.size(); ++row)
        if (windows::RectHolds(RowBounds(inMenu, row), inWhere))
            return row;
    return -1;
}

void OpenMenus::Select(size_t inMenu, int inRow)
{
    if (inMenu >= fOpen.size() || fOpen[inMenu].selected == inRow)
        return;
    CloseTo(inMenu + 1);
    OpenMenu& menu = fOpen[inMenu];
    const int old = menu.selected;
    menu.selected = inRow;
    DrawOne(menu, old, false);
    DrawOne(menu, inRow, true);
    const Row* row = inRow >= 0 ? &menu.layout.rows[(size_t)inRow] : nullptr;
    SendTargetItem(row ? row->menu : menu.menus.front(),
                   row && CanChoose(*row) ? row->item : (MenuItemIndex)0, menu.context);
}

bool OpenMenus::OpenSubmenu(size_t inMenu)
{
    OpenMenu& menu = fOpen[inMenu];
    if (menu.selected < 0 || Count() > inMenu + 1)
        return false;
    const Row& row = menu.layout.rows[(size_t)menu.selected];
    const MenuItem* item = ItemOf(row);
    const MenuRef submenu = item && CanChoose(row) ? SubmenuOf(*item) : nullptr;
    for (const OpenMenu& open : fOpen) // a menu that contains itself does not open for ever
        if (std::find(open.menus.begin(), open.menus.end(), submenu) != open.menus.end())
            return false;
    if (!submenu)
        return false;
    const Rect bounds = RowBounds(menu, menu.selected);
    const UInt32 context =
        (menu.context & ~(UInt32)(kMenuContextPullDown | kMenuContextPopUp)) | kMenuContextSubmenu;
    return Open({ submenu }, { (short)(bounds.top - 4), (short)(bounds.right - 3) }, context);
}

// Beyond the end of the menu is as good as on its arrow, for a pointer that was thrown to the screen's edge;
// but above a menu may be the bar it hangs from.
int OpenMenus::ArrowAt(Point inWhere) const
{
    if (fOpen.empty())
        return 0;
    const OpenMenu& menu = fOpen.back();
    if (inWhere.h < menu.bounds.left || inWhere.h >= menu.bounds.right || inWhere.v < menu.bounds.top)
        return 0;
    if (menu.HasArrowBelow() && inWhere.v >= menu.bounds.bottom - kArrowHeight)
        return 1;
    return menu.HasArrowAbove() && inWhere.v < menu.bounds.top + kArrowHeight ? -1 : 0;
}

// How far a menu scrolls so that a row begins right below the arrow: the next such place after one, and the last
// before it.
int OpenMenus::PlaceAfter(const OpenMenu& inMenu, int inScrolled) const
{
    for (const Row& row : inMenu.layout.rows)
        if (row.bounds.top - kArrowHeight > inScrolled)
            return row.bounds.top - kArrowHeight;
    return inMenu.Overflow();
}

int OpenMenus::PlaceBefore(const OpenMenu& inMenu, int inScrolled) const
{
    int place = 0;
    for (const Row& row : inMenu.layout.rows)
        if (row.bounds.top - kArrowHeight < inScrolled)
            place = row.bounds.top - kArrowHeight;
    return place;
}

bool OpenMenus::IsOnArrow(Point inWhere) const
{
    return ArrowAt(inWhere) != 0;
}

void OpenMenus::ScrollAt(Point inWhere)
{
    const int way = ArrowAt(inWhere);
    if (way == 0)
        return;
    OpenMenu& menu = Last();
    ScrollTo(menu, way > 0 ? PlaceAfter(menu, menu.scrolled) : PlaceBefore(menu, menu.scrolled));
    if (!IsOnArrow(inWhere)) // the arrow went away, and a row came under the pointer
        Select(Count() - 1, RowAt(menu, inWhere));
}

void OpenMenus::Reveal(int inRow)
{
    OpenMenu& menu = Last();
    if (inRow < 0 || inRow >= (int)menu.layout.rows.size() || menu.Overflow() <= 0)
        return;
    const Rect& row = menu.layout.rows[(size_t)inRow].bounds;
    const int height = windows::Height(menu.bounds);
    const int most = row.top - kArrowHeight, least = row.bottom - height + kArrowHeight;
    if (menu.scrolled > most)
        ScrollTo(menu, most);
    else if (menu.scrolled < least)
        ScrollTo(menu, PlaceAfter(menu, least - 1));
}

void OpenMenus::ScrollTo(OpenMenu& inMenu, int inScrolled)
{
    const int scrolled = std::clamp(inScrolled, 0, std::max(0, inMenu.Overflow()));
    if (scrolled == inMenu.scrolled)
        return;
    inMenu.scrolled = scrolled;
    Draw(inMenu);
}

void OpenMenus::FlashSelected(size_t inMenu, bool inLit)
{
    DrawOne(fOpen[inMenu], fOpen[inMenu].selected, inLit);
}

} // namespace lampblack::menus
