// What items say and do: text, marks, keys, commands, submenus, properties.
#include "MenuBar.h"
#include "MenuRecord.h"

#include <algorithm>

namespace lampblack::menus {

namespace {

OSStatus Missing(MenuRef inMenu)
{
    return Find(inMenu) ? (OSStatus)menuItemNotFoundErr : (OSStatus)menuInvalidErr;
}

template <class Change>
OSStatus Set(MenuRef inMenu, long inItem, Change inChange)
{
    MenuItem* item = FindItem(inMenu, inItem);
    if (!item)
        return Missing(inMenu);
    inChange(*item);
    MenuChanged(*Find(inMenu));
    return noErr;
}

template <class Value, class Read>
OSStatus Get(MenuRef inMenu, long inItem, Value* outValue, Read inRead)
{
    const MenuItem* item = FindItem(inMenu, inItem);
    if (!item)
        return Missing(inMenu);
    if (!outValue)
        return paramErr;
    *outValue = (Value)inRead(*item);
    return noErr;
}

void SetDisabled(MenuItem& ioItem, bool inDisabled)
{
    ioItem.attributes =
        inDisabled ? ioItem.attributes | kMenuItemAttrDisabled : ioItem.attributes & ~kMenuItemAttrDisabled;
}

void SetEnabled(MenuRef inMenu, MenuItemIndex inItem, bool inEnabled)
{
    MenuRecord* menu = Find(inMenu);
    if (!menu)
        return;
    if (inItem) {
        Set(inMenu, inItem, [=](MenuItem& item) { SetDisabled(item, !inEnabled); });
        return;
    }
    menu->enabled = inEnabled;
    TitleChanged(*menu);
}

void SetAllEnabled(MenuRef inMenu, bool inEnabled)
{
    if (MenuRecord* menu = Find(inMenu))
        for (MenuItem& item : menu->items)
            SetDisabled(item, !inEnabled);
}

} // namespace

} // namespace lampblack::menus

using namespace lampblack::menus;

void GetMenuItemText(MenuRef inMenu, MenuItemIndex inItem, Str255 outText)
{
    if (!outText)
        return;
    outText[0] = 0;
    if (const MenuItem* item = FindItem(inMenu, inItem))
        CopyPascal(item->text, outText);
}

void SetMenuItemText(MenuRef inMenu, MenuItemIndex inItem, ConstStr255Param inText)
{
    if (inText)
        Set(inMenu, inItem, [=](MenuItem& item) { item.text = FromPascal(inText); });
}

void EnableMenuItem(MenuRef inMenu, MenuItemIndex inItem)
{
    SetEnabled(inMenu, inItem, true);
}

void DisableMenuItem(MenuRef inMenu, MenuItemIndex inItem)
{
    SetEnabled(inMenu, inItem, false);
}

Boolean IsMenuItemEnabled(MenuRef inMenu, MenuItemIndex inItem)
{
    const MenuRecord* menu = Find(inMenu);
    if (!menu)
        return false;
    if (!inItem)
        return menu->enabled;
    const MenuItem* item = FindItem(inMenu, inItem);
    return item && menu->enabled && !item->Has(kMenuItemAttrDisabled);
}

void EnableAllMenuItems(MenuRef inMenu)
{
    SetAllEnabled(inMenu, true);
}

void DisableAllMenuItems(MenuRef inMenu)
{
    SetAllEnabled(inMenu, false);
}

Boolean MenuHasEnabledItems(MenuRef inMenu)
{
    const MenuRecord* menu = Find(inMenu);
    return menu && std::any_of(menu->items.begin(), menu->items.end(),
                               [=](const MenuItem& item) { return IsEnabled(*menu, item); });
}

void CheckMenuItem(MenuRef inMenu, MenuItemIndex inItem, Boolean inChecked)
{
    SetItemMark(inMenu, inItem, (CharParameter)(inChecked ? (int)kMenuCheckMark : (int)noMark));
}

void SetItemMark(MenuRef inMenu, MenuItemIndex inItem, CharParameter inMark)
{
    Set(inMenu, inItem, [=](MenuItem& item) { item.mark = (UInt8)inMark; });
}

void GetItemMark(MenuRef inMenu, MenuItemIndex inItem, CharParameter* outMark)
{
    if (Get(inMenu, inItem, outMark, [](const MenuItem& item) { return item.mark; }) != noErr && outMark)
        *outMark = noMark;
}

void SetItemCmd(MenuRef inMenu, MenuItemIndex inItem, CharParameter inKey)
{
    Set(inMenu, inItem, [=](MenuItem& item) { item.key = (UInt8)inKey; });
}

void GetItemCmd(MenuRef inMenu, MenuItemIndex inItem, CharParameter* outKey)
{
    if (Get(inMenu, inItem, outKey, [](const MenuItem& item) { return item.key; }) != noErr && outKey)
        *outKey = 0;
}

void SetItemStyle(MenuRef inMenu, MenuItemIndex inItem, StyleParameter inStyle)
{
    Set(inMenu, inItem, [=](MenuItem& item) { item.style = (Style)inStyle; });
}

void GetItemStyle(MenuRef inMenu, MenuItemIndex inItem, Style* outStyle)
{
    if (Get(inMenu, inItem, outStyle, [](const MenuItem& item) { return item.style; }) != noErr && outStyle)
        *outStyle = normal;
}

OSStatus SetMenuItemIndent(MenuRef inMenu, MenuItemIndex inItem, UInt32 inIndent)
{
    return Set(inMenu, inItem, [=](MenuItem& item) { item.indent = inIndent; });
}

OSStatus GetMenuItemIndent(MenuRef inMenu, MenuItemIndex inItem, UInt32* outIndent)
{
    return Get(inMenu, inItem, outIndent, [](const MenuItem& item) { return item.indent; });
}

OSErr SetMenuItemCommandID(MenuRef inMenu, MenuItemIndex inItem, MenuCommand inCommand)
{
    return (OSErr)Set(inMenu, inItem, [=](MenuItem& item) { item.command = inCommand; });
}

OSErr GetMenuItemCommandID(MenuRef inMenu, MenuItemIndex inItem, MenuCommand* outCommand)
{
    return (OSErr)Get(inMenu, inItem, outCommand, [](const MenuItem& item) { return item.command; });
}

OSErr SetMenuItemModifiers(MenuRef inMenu, MenuItemIndex inItem, UInt8 inModifiers)
{
    return (OSErr)Set(inMenu, inItem, [=](MenuItem& item) { item.modifiers = inModifiers; });
}

OSErr GetMenuItemModifiers(MenuRef inMenu, MenuItemIndex inItem, UInt8* outModifiers)
{
    return (OSErr)Get(inMenu, inItem, outModifiers, [](const MenuItem& item) { return item.modifiers; });
}

OSStatus SetMenuItemCommandKey(MenuRef inMenu, MenuItemIndex inItem, Boolean inVirtualKey, UInt16 inKey)
{
    return Set(inMenu, inItem, [=](MenuItem& item) {
        item.key = inKey;
        item.attributes = inVirtualKey ? item.attributes | kMenuItemAttrUseVirtualKey
                                       : item.attributes & ~kMenuItemAttrUseVirtualKey;
    });
}

// Asked for the kind of key that the item does not have, the answer is 0.
OSStatus GetMenuItemCommandKey(MenuRef inMenu, MenuItemIndex inItem, Boolean inVirtualKey, UInt16* outKey)
{
    return Get(inMenu, inItem, outKey, [=](const MenuItem& item) {
        return item.Has(kMenuItemAttrUseVirtualKey) == (inVirtualKey != 0) ? item.key : (UInt16)0;
    });
}

OSErr SetMenuItemRefCon(MenuRef inMenu, MenuItemIndex inItem, UInt32 inRefCon)
{
    return (OSErr)Set(inMenu, inItem, [=](MenuItem& item) { item.refCon = inRefCon; });
}

OSErr GetMenuItemRefCon(MenuRef inMenu, MenuItemIndex inItem, UInt32* outRefCon)
{
    return (OSErr)Get(inMenu, inItem, outRefCon, [](const MenuItem& item) { return item.refCon; });
}

OSStatus GetMenuItemAttributes(MenuRef inMenu, MenuItemIndex inItem, MenuItemAttributes* outAttributes)
{
    return Get(inMenu, inItem, outAttributes, [](const MenuItem& item) {
        return item.attributes | (item.IsSeparator() ? kMenuItemAttrSeparator : 0);
    });
}

OSStatus ChangeMenuItemAttributes(MenuRef inMenu, MenuItemIndex inItem, MenuItemAttributes inSet,
                                  MenuItemAttributes inClear)
{
    return Set(inMenu, inItem,
               [=](MenuItem& item) { item.attributes = (item.attributes | inSet) & ~inClear; });
}

OSErr SetMenuItemHierarchicalID(MenuRef inMenu, MenuItemIndex inItem, MenuID inSubmenu)
{
    return (OSErr)Set(inMenu, inItem, [=](MenuItem& item) {
        ReleaseItem(item);
        item.submenuID = inSubmenu;
    });
}

OSErr GetMenuItemHierarchicalID(MenuRef inMenu, MenuItemIndex inItem, MenuID* outSubmenu)
{
    return (OSErr)Get(inMenu, inItem, outSubmenu, [](const MenuItem& item) -> MenuID {
        if (item.submenu)
            return GetMenuID(item.submenu);
        return item.submenuID || item.key != hMenuCmd ? item.submenuID : (MenuID)item.mark;
    });
}

OSStatus SetMenuItemHierarchicalMenu(MenuRef inMenu, MenuItemIndex inItem, MenuRef inSubmenu)
{
    if (inSubmenu && (!Find(inSubmenu) || inSubmenu == inMenu))
        return menuInvalidErr;
    return Set(inMenu, inItem, [=](MenuItem& item) {
        if (inSubmenu)
            RetainMenu(inSubmenu);
        ReleaseItem(item);
        item.submenu = inSubmenu;
        item.submenuID = 0;
    });
}

OSStatus GetMenuItemHierarchicalMenu(MenuRef inMenu, MenuItemIndex inItem, MenuRef* outSubmenu)
{
    return Get(inMenu, inItem, outSubmenu, [](const MenuItem& item) { return SubmenuOf(item); });
}

// Properties

OSStatus SetMenuItemProperty(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator, OSType inTag,
                             ByteCount inSize, const void* inData)
{
    MenuItem* item = FindItem(inMenu, inItem);
    return item ? item->properties.Set(inCreator, inTag, inSize, inData) : Missing(inMenu);
}

OSStatus GetMenuItemProperty(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator, OSType inTag,
                             ByteCount inBufferSize, ByteCount* outActualSize, void* outBuffer)
{
    const MenuItem* item = FindItem(inMenu, inItem);
    return item ? item->properties.Get(inCreator, inTag, inBufferSize, outActualSize, outBuffer)
                : Missing(inMenu);
}

OSStatus GetMenuItemPropertySize(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator, OSType inTag,
                                 ByteCount* outSize)
{
    const MenuItem* item = FindItem(inMenu, inItem);
    return item ? item->properties.GetSize(inCreator, inTag, outSize) : Missing(inMenu);
}

OSStatus RemoveMenuItemProperty(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator, OSType inTag)
{
    MenuItem* item = FindItem(inMenu, inItem);
    return item ? item->properties.Remove(inCreator, inTag) : Missing(inMenu);
}

OSStatus GetMenuItemPropertyAttributes(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator, OSType inTag,
                                       OptionBits* outAttributes)
{
    const MenuItem* item = FindItem(inMenu, inItem);
    return item ? item->properties.GetAttributes(inCreator, inTag, outAttributes) : Missing(inMenu);
}

OSStatus ChangeMenuItemPropertyAttributes(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator,
                                          OSType inTag, OptionBits inSet, OptionBits inClear)
{
    MenuItem* item = FindItem(inMenu, inItem);
    return item ? item->properties.ChangeAttributes(inCreator, inTag, inSet, inClear) : Missing(inMenu);
}
