// Putting items into menus and taking them out.
#include "MenuText.h"

#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>

#include <algorithm>

namespace lampblack::menus {

namespace {

// An item number past the end means the end.
size_t InsertionIndex(const MenuRecord& inMenu, MenuItemIndex inAfter)
{
    return std::min<size_t>(inAfter, inMenu.items.size());
}

void Insert(MenuRecord& ioMenu, std::vector<MenuItem> inItems, size_t inIndex)
{
    ioMenu.items.insert(ioMenu.items.begin() + (long)inIndex, std::make_move_iterator(inItems.begin()),
                        std::make_move_iterator(inItems.end()));
    MenuChanged(ioMenu);
}

std::vector<MenuItem> NamesOf(ResType inType)
{
    std::vector<MenuItem> items;
    const SInt16 count = CountResources(inType);
    SetResLoad(false);
    for (SInt16 index = 1; index <= count; ++index) {
        const Handle resource = GetIndResource(inType, index);
        Str255 name = {};
        SInt16 id;
        ResType type;
        if (resource)
            GetResInfo(resource, &id, &type, name);
        // Names that begin with a period or a percent sign are not for the user.
        if (!name[0] || name[1] == '.' || name[1] == '%')
            continue;
        MenuItem item;
        item.text = FromPascal(name);
        items.push_back(std::move(item));
    }
    SetResLoad(true);
    std::sort(items.begin(), items.end(),
              [](const MenuItem& a, const MenuItem& b) { return a.text < b.text; });
    return items;
}

} // namespace

} // namespace lampblack::menus

using namespace lampblack::menus;

void AppendMenu(MenuRef inMenu, ConstStr255Param inText)
{
    if (MenuRecord* menu = Find(inMenu))
        Insert(*menu, ParseItems(FromPascal(inText)), menu->items.size());
}

void InsertMenuItem(MenuRef inMenu, ConstStr255Param inText, MenuItemIndex inAfter)
{
    if (MenuRecord* menu = Find(inMenu))
        Insert(*menu, ParseItems(FromPascal(inText)), InsertionIndex(*menu, inAfter));
}

OSErr InsertMenuItemText(MenuRef inMenu, ConstStr255Param inText, MenuItemIndex inAfter)
{
    MenuRecord* menu = Find(inMenu);
    if (!menu || !inText)
        return menu ? (OSErr)paramErr : (OSErr)menuInvalidErr;
    std::vector<MenuItem> items(1);
    items[0].text = FromPascal(inText);
    Insert(*menu, std::move(items), InsertionIndex(*menu, inAfter));
    return noErr;
}

OSErr AppendMenuItemText(MenuRef inMenu, ConstStr255Param inText)
{
    return InsertMenuItemText(inMenu, inText, 0xFFFF);
}

void InsertResMenu(MenuRef inMenu, ResType inType, MenuItemIndex inAfter)
{
    if (MenuRecord* menu = Find(inMenu))
        Insert(*menu, NamesOf(inType), InsertionIndex(*menu, inAfter));
}

void AppendResMenu(MenuRef inMenu, ResType inType)
{
    InsertResMenu(inMenu, inType, 0xFFFF);
}

OSStatus CopyMenuItems(MenuRef inSource, MenuItemIndex inFirst, ItemCount inCount, MenuRef inDestination,
                       MenuItemIndex inAfter)
{
    const MenuRecord* source = Find(inSource);
    MenuRecord* destination = Find(inDestination);
    if (!source || !destination)
        return menuInvalidErr;
    const size_t count = source->items.size();
    if (inFirst < 1 || inFirst > count || inCount > count - inFirst + 1)
        return menuItemNotFoundErr;
    const auto first = source->items.begin() + (inFirst - 1);
    std::vector<MenuItem> items(first, first + (long)inCount);
    for (MenuItem& item : items)
        if (item.submenu)
            RetainMenu(item.submenu);
    Insert(*destination, std::move(items), InsertionIndex(*destination, inAfter));
    return noErr;
}

OSStatus DeleteMenuItems(MenuRef inMenu, MenuItemIndex inFirst, ItemCount inCount)
{
    MenuRecord* menu = Find(inMenu);
    if (!menu)
        return menuInvalidErr;
    const size_t count = menu->items.size();
    if (inFirst < 1 || inFirst > count || inCount > count - inFirst + 1)
        return menuItemNotFoundErr;
    const auto first = menu->items.begin() + (inFirst - 1);
    std::vector<MenuItem> gone(std::make_move_iterator(first),
                               std::make_move_iterator(first + (long)inCount));
    menu->items.erase(first, first + (long)inCount);
    MenuChanged(*menu);
    for (MenuItem& item : gone)
        ReleaseItem(item);
    return noErr;
}

void DeleteMenuItem(MenuRef inMenu, MenuItemIndex inItem)
{
    DeleteMenuItems(inMenu, inItem, 1);
}

MenuItemIndex CountMenuItems(MenuRef inMenu)
{
    const MenuRecord* menu = Find(inMenu);
    return menu ? (MenuItemIndex)menu->items.size() : (MenuItemIndex)0;
}
