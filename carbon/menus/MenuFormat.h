// The bytes of 'MENU' and 'xmnu' resources, big-endian as they lie in files.
#ifndef LAMPBLACK_MENUS_MENUFORMAT_H
#define LAMPBLACK_MENUS_MENUFORMAT_H

#include "MenuRecord.h"

namespace lampblack::menus {

// ID, title, state and items. Answers false for bytes that end before the menu does.
bool ReadMenu(const void* inBytes, size_t inSize, MenuRecord& outMenu);
// What 'MENU' has no room for; what is cut off is left as it was.
void ReadExtensions(const void* inBytes, size_t inSize, MenuRecord& ioMenu);

} // namespace lampblack::menus

#endif
