// Choosing from menus with the mouse and with the arrow keys.
#ifndef LAMPBLACK_MENUS_MENUTRACKING_H
#define LAMPBLACK_MENUS_MENUTRACKING_H

#include "MenuBar.h"
#include "MenuLayout.h"

namespace lampblack::menus {

struct Choice {
    MenuRef menu = nullptr; // null: nothing
    MenuItemIndex item = 0;
    UInt32 modifiers = 0;
};

// From the bar: the menu under the point opens.
Choice TrackBar(Point inStart);
// A menu by itself, with one of its items over the point.
Choice TrackPopUp(MenuRef inMenu, Point inTopLeft, MenuItemIndex inItem, short inLeastWidth);

// The filter of the event dispatcher: whether a key was an item's and somebody took its command.
bool ChooseByKey(EventRef inEvent);
// The handlers on the application: clicks in the bar, the Quit command.
void InstallMenuHandlers();

} // namespace lampblack::menus

#endif
