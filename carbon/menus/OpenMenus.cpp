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

constexpr short kScrollZone = 16; // pixels at the ends of a menu that does not fit

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
    const int width = inLayout.width, height = std::min<int>(inLayout.height, windows::Height(space));
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

bool OpenMenus::Open(const std::vector<MenuRef>& inMenus, Point inTopLeft, UInt32 inContext)
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
    open.layout = LayOut(menus);
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
    for (int row = 0; row < (int)inMenu.layout.rows.size(); ++row)
        DrawRow(inMenu.layout, inMenu.layout.rows[(size_t)row], { (short)-inMenu.scrolled, 0 },
                row == inMenu.selected && CanChoose(inMenu.layout.rows[(size_t)row]));
}

void OpenMenus::DrawOne(OpenMenu& inMenu, int inRow, bool inSelected)
{
    if (inRow < 0 || inRow >= (int)inMenu.layout.rows.size())
        return;
    const windows::StWindowPort port(GetWindowPort(inMenu.surface));
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

bool OpenMenus::ScrollAt(Point inWhere)
{
    const int index = MenuAt(inWhere);
    if (index < 0 || (size_t)index + 1 != Count())
        return false;
    OpenMenu& menu = fOpen[(size_t)index];
    const int most = menu.layout.height - windows::Height(menu.bounds);
    const bool up = inWhere.v < menu.bounds.top + kScrollZone;
    const bool down = inWhere.v >= menu.bounds.bottom - kScrollZone;
    const int scrolled = std::clamp(menu.scrolled + (down ? 18 : up ? -18 : 0), 0, std::max(0, most));
    if (scrolled == menu.scrolled)
        return false;
    menu.scrolled = scrolled;
    menu.selected = RowAt(menu, inWhere);
    Draw(menu);
    return true;
}

void OpenMenus::FlashSelected(size_t inMenu, bool inLit)
{
    DrawOne(fOpen[inMenu], fOpen[inMenu].selected, inLit);
}

} // namespace lampblack::menus
