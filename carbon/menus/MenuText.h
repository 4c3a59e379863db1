// The old notation of menu items: text with metacharacters.
#ifndef LAMPBLACK_MENUS_MENUTEXT_H
#define LAMPBLACK_MENUS_MENUTEXT_H

#include "MenuRecord.h"

namespace lampblack::menus {

// Each item of the text, in order. ';' and return separate items; '^' is followed by an icon number, '!' by a
// mark,
// '<' by a style letter, '/' by a command key; '(' disables.
std::vector<MenuItem> ParseItems(const std::string& inText);

} // namespace lampblack::menus

#endif
