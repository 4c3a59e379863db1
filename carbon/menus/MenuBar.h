// The installed menus, and the bar that shows their titles. The application menu, with the Quit item that
// every application has, stands first and is the platform's own.
#ifndef LAMPBLACK_MENUS_MENUBAR_H
#define LAMPBLACK_MENUS_MENUBAR_H

#include "MenuRecord.h"

namespace lampblack::menus {

// One title of the bar. Its menu drops down as these menus, one below the other.
struct Title {
    std::vector<MenuRef> menus;
    Rect bounds = { 0, 0, 0, 0 }; // global
};

struct Bar {
    std::vector<MenuRef> menus;        // from left to right, retained
    std::vector<MenuRef> hierarchical; // installed off the bar, retained
};

Bar& TheBar();
MenuRef ApplicationMenu();

bool IsInBar(MenuRef inMenu);
void RemoveFromBar(MenuRef inMenu);

// The titles as they stand in the bar now.
const std::vector<Title>& Titles();
const Title* TitleAt(Point inWhere);
// Which title is lit; null for none.
void HiliteTitle(MenuRef inMenu);
Rect BarBounds();

// Whether a menu that lies behind a modal window can be used: only items that edit text can.
bool IsUsable(MenuRef inMenu, const MenuItem& inItem);

// The first use of the screen: the bar comes up, and the application answers clicks in it and command keys.
void StartMenus();

} // namespace lampblack::menus

#endif
