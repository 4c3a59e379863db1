// Where the items of an open menu stand, and their drawing.
#ifndef LAMPBLACK_MENUS_MENULAYOUT_H
#define LAMPBLACK_MENUS_MENULAYOUT_H

#include "MenuRecord.h"

namespace lampblack::menus {

struct Row {
    MenuRef menu = nullptr;
    MenuItemIndex item = 0; // 0: the line between two menus shown as one
    Rect bounds = { 0, 0, 0, 0 };
};

// Rows from the top to the bottom, relative to the top left of the menu.
struct Layout {
    std::vector<Row> rows;
    short width = 0, height = 0;
};

// Menus one below the other. Measuring needs a port; it is left as it was.
Layout LayOut(const std::vector<MenuRef>& inMenus, short inLeastWidth = 0);
void MeasureMenu(MenuRecord& ioMenu);

// The row as it looks in the current port; `inOrigin` is where the menu's top left stands in the port.
void DrawRow(const Layout& inLayout, const Row& inRow, Point inOrigin, bool inSelected);

const MenuItem* ItemOf(const Row& inRow); // null for a line

} // namespace lampblack::menus

#endif
