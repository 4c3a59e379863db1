// The events that menus send.
#ifndef LAMPBLACK_MENUS_MENUSENDING_H
#define LAMPBLACK_MENUS_MENUSENDING_H

#include "MenuRecord.h"

namespace lampblack::menus {

// kEventCommandProcess for an item: to its menu, the user focus and the application, in that order.
OSStatus SendCommand(MenuRef inMenu, MenuItemIndex inItem, UInt32 inModifiers);

// Lets the application bring the items up to date before the menu is seen or its keys are compared.
void PrepareMenu(MenuRef inMenu, UInt32 inContext, bool inForKey);
// Asks about one item's command.
void UpdateStatus(MenuRef inMenu, MenuItemIndex inItem, UInt32 inContext);

// Answers false when the application refuses to have it opened.
bool SendOpening(MenuRef inMenu, UInt32 inContext);
void SendClosed(MenuRef inMenu, UInt32 inContext);
void SendTargetItem(MenuRef inMenu, MenuItemIndex inItem, UInt32 inContext);
// kEventMenuBeginTracking or kEventMenuEndTracking.
void SendTracking(MenuRef inMenu, UInt32 inKind, UInt32 inContext);

} // namespace lampblack::menus

#endif
