// Items by the command that they send.
#include "Commands.h"

namespace lampblack::menus {

namespace {

struct Found {
    MenuRef menu = nullptr;
    MenuItemIndex item = 0;
};

OSStatus FindCommand(MenuRef inMenu, MenuCommand inCommand, UInt32 inIndex, Found* outFound)
{
    if (inMenu && !Find(inMenu))
        return menuInvalidErr;
    UInt32 left = inIndex;
    auto visit = [&](MenuRef menu, MenuItemIndex item) {
        if (FindItem(menu, item)->command != inCommand || --left)
            return false;
        *outFound = { menu, item };
        return true;
    };
    return inIndex && Walk(visit).Run(inMenu) ? (OSStatus)noErr : (OSStatus)menuItemNotFoundErr;
}

// Every item with the command.
template <class Change>
void ForCommand(MenuRef inMenu, MenuCommand inCommand, Change inChange)
{
    if (inMenu && !Find(inMenu))
        return;
    Walk([&](MenuRef menu, MenuItemIndex item) {
        if (FindItem(menu, item)->command == inCommand)
            inChange(menu, item);
        return false;
    }).Run(inMenu);
}

} // namespace

} // namespace lampblack::menus

using namespace lampblack::menus;

OSStatus GetIndMenuItemWithCommandID(MenuRef inMenu, MenuCommand inCommand, UInt32 inIndex, MenuRef* outMenu,
                                     MenuItemIndex* outItem)
{
    Found found;
    const OSStatus status = FindCommand(inMenu, inCommand, inIndex, &found);
    if (status != noErr)
        return status;
    if (outMenu)
        *outMenu = found.menu;
    if (outItem)
        *outItem = found.item;
    return noErr;
}

ItemCount CountMenuItemsWithCommandID(MenuRef inMenu, MenuCommand inCommand)
{
    ItemCount count = 0;
    ForCommand(inMenu, inCommand, [&](MenuRef, MenuItemIndex) { ++count; });
    return count;
}

void EnableMenuCommand(MenuRef inMenu, MenuCommand inCommand)
{
    ForCommand(inMenu, inCommand, EnableMenuItem);
}

void DisableMenuCommand(MenuRef inMenu, MenuCommand inCommand)
{
    ForCommand(inMenu, inCommand, DisableMenuItem);
}

Boolean IsMenuCommandEnabled(MenuRef inMenu, MenuCommand inCommand)
{
    Found found;
    return FindCommand(inMenu, inCommand, 1, &found) == noErr && IsMenuItemEnabled(found.menu, found.item);
}

OSStatus SetMenuCommandMark(MenuRef inMenu, MenuCommand inCommand, UniChar inMark)
{
    Found found;
    const OSStatus status = FindCommand(inMenu, inCommand, 1, &found);
    if (status != noErr)
        return status;
    FindItem(found.menu, found.item)->mark = inMark;
    return noErr;
}

OSStatus GetMenuCommandMark(MenuRef inMenu, MenuCommand inCommand, UniChar* outMark)
{
    Found found;
    const OSStatus status = FindCommand(inMenu, inCommand, 1, &found);
    if (status != noErr || !outMark)
        return status ? status : (OSStatus)paramErr;
    *outMark = FindItem(found.menu, found.item)->mark;
    return noErr;
}
