// A pop-up menu that is as wide as what it belongs to. For controls/.
#ifndef LAMPBLACK_MENUS_POPUPMENU_H
#define LAMPBLACK_MENUS_POPUPMENU_H

#include <Carbon/Menus.h>

namespace lampblack::menus {

// As PopUpMenuSelect, with a least width in pixels.
SInt32 PopUpMenu(MenuRef inMenu, Point inTopLeft, MenuItemIndex inItem, short inLeastWidth);

} // namespace lampblack::menus

#endif
