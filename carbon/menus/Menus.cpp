// Life, title and attributes of menus.
#include "MenuBar.h"
#include "MenuLayout.h"
#include "MenuRecord.h"

#include <events/EventTargets.h>

#include <cstring>

namespace lampblack::menus {

memory::ReferenceTable<MenuRecord>& Menus()
{
    static memory::ReferenceTable<MenuRecord> table;
    return table;
}

namespace {

// Commands climb from the menu to whatever has the focus, and from there to the application.
EventTargetRef AfterMenu(void*)
{
    return GetUserFocusEventTarget();
}

OSStatus SendMenuDispose(MenuRecord& inMenu)
{
    EventRef event = nullptr;
    const OSStatus status = CreateEvent(nullptr, kEventClassMenu, kEventMenuDispose, GetCurrentEventTime(),
                                        kEventAttributeNone, &event);
    if (status != noErr)
        return status;
    const MenuRef ref = inMenu.Ref();
    SetEventParameter(event, kEventParamDirectObject, typeMenuRef, sizeof ref, &ref);
    SendEventToEventTargetWithOptions(event, inMenu.target, kEventTargetDontPropagate);
    ReleaseEvent(event);
    return noErr;
}

} // namespace

MenuRef NewMenuRecord(MenuID inID)
{
    MenuRecord* menu = Menus().New();
    menu->id = inID;
    menu->target = events::NewEventTarget(menu, AfterMenu);
    return menu->Ref();
}

MenuItem* FindItem(MenuRef inMenu, long inItem)
{
    MenuRecord* menu = Find(inMenu);
    return menu && inItem >= 1 && inItem <= (long)menu->items.size() ? &menu->items[(size_t)(inItem - 1)]
                                                                     : nullptr;
}

// An item may name its submenu the old way too: its key is 0x1B and its mark is the menu's ID.
MenuRef SubmenuOf(const MenuItem& inItem)
{
    if (inItem.submenu)
        return inItem.submenu;
    if (inItem.submenuID)
        return GetMenuHandle(inItem.submenuID);
    return inItem.key == hMenuCmd && inItem.mark ? GetMenuHandle((MenuID)inItem.mark) : nullptr;
}

bool IsEnabled(const MenuRecord& inMenu, const MenuItem& inItem)
{
    return inMenu.enabled && !inItem.Has(kMenuItemAttrDisabled) && !inItem.IsSeparator();
}

void MenuChanged(MenuRecord& ioMenu)
{
    ioMenu.sizeStale = true;
}

void TitleChanged(MenuRecord& inMenu)
{
    if (IsInBar(inMenu.Ref()))
        InvalMenuBar();
}

void ReleaseItem(MenuItem& ioItem)
{
    if (ioItem.submenu)
        ReleaseMenu(ioItem.submenu);
    ioItem.submenu = nullptr;
}

void CopyPascal(const std::string& inText, Str255 outText)
{
    outText[0] = (unsigned char)inText.size();
    std::memcpy(outText + 1, inText.data(), inText.size());
}

std::string FromPascal(ConstStr255Param inText)
{
    return inText ? std::string(reinterpret_cast<const char*>(inText) + 1, inText[0]) : std::string();
}

} // namespace lampblack::menus

using namespace lampblack::menus;

MenuRef NewMenu(MenuID inID, ConstStr255Param inTitle)
{
    const MenuRef menu = NewMenuRecord(inID);
    SetMenuTitle(menu, inTitle);
    return menu;
}

OSStatus CreateNewMenu(MenuID inID, MenuAttributes inAttributes, MenuRef* outMenu)
{
    if (!outMenu)
        return paramErr;
    *outMenu = NewMenuRecord(inID);
    return ChangeMenuAttributes(*outMenu, inAttributes, 0);
}

void DisposeMenu(MenuRef inMenu)
{
    ReleaseMenu(inMenu);
}

OSStatus RetainMenu(MenuRef inMenu)
{
    MenuRecord* menu = Find(inMenu);
    if (!menu)
        return menuInvalidErr;
    ++menu->owners;
    return noErr;
}

OSStatus ReleaseMenu(MenuRef inMenu)
{
    MenuRecord* menu = Find(inMenu);
    if (!menu)
        return menuInvalidErr;
    if (--menu->owners)
        return noErr;
    menu->owners = 1; // alive while its handlers hear of the end
    SendMenuDispose(*menu);
    RemoveFromBar(inMenu);
    for (MenuItem& item : menu->items)
        ReleaseItem(item);
    lampblack::events::DisposeEventTarget(menu->target);
    Menus().Delete(menu);
    return noErr;
}

ItemCount GetMenuRetainCount(MenuRef inMenu)
{
    const MenuRecord* menu = Find(inMenu);
    return menu ? menu->owners : 0;
}

OSStatus DuplicateMenu(MenuRef inMenu, MenuRef* outMenu)
{
    const MenuRecord* menu = Find(inMenu);
    if (!menu || !outMenu)
        return menu ? (OSStatus)paramErr : (OSStatus)menuInvalidErr;
    *outMenu = NewMenuRecord(menu->id);
    MenuRecord* copy = Find(*outMenu);
    copy->title = menu->title;
    copy->attributes = menu->attributes;
    copy->enabled = menu->enabled;
    copy->font = menu->font;
    copy->fontSize = menu->fontSize;
    copy->items = menu->items;
    for (MenuItem& item : copy->items)
        if (item.submenu)
            RetainMenu(item.submenu);
    return noErr;
}

Boolean IsValidMenu(MenuRef inMenu)
{
    return Find(inMenu) != nullptr;
}

EventTargetRef GetMenuEventTarget(MenuRef inMenu)
{
    const MenuRecord* menu = Find(inMenu);
    return menu ? menu->target : nullptr;
}

MenuID GetMenuID(MenuRef inMenu)
{
    const MenuRecord* menu = Find(inMenu);
    return menu ? menu->id : 0;
}

void SetMenuID(MenuRef inMenu, MenuID inID)
{
    if (MenuRecord* menu = Find(inMenu))
        menu->id = inID;
}

StringPtr GetMenuTitle(MenuRef inMenu, Str255 outTitle)
{
    const MenuRecord* menu = Find(inMenu);
    if (!menu || !outTitle)
        return nullptr;
    CopyPascal(menu->title, outTitle);
    return outTitle;
}

OSStatus SetMenuTitle(MenuRef inMenu, ConstStr255Param inTitle)
{
    MenuRecord* menu = Find(inMenu);
    if (!menu || !inTitle)
        return menu ? (OSStatus)paramErr : (OSStatus)menuInvalidErr;
    menu->title = FromPascal(inTitle);
    TitleChanged(*menu);
    return noErr;
}

OSStatus GetMenuAttributes(MenuRef inMenu, MenuAttributes* outAttributes)
{
    const MenuRecord* menu = Find(inMenu);
    if (!menu || !outAttributes)
        return menu ? (OSStatus)paramErr : (OSStatus)menuInvalidErr;
    *outAttributes = menu->attributes;
    return noErr;
}

OSStatus ChangeMenuAttributes(MenuRef inMenu, MenuAttributes inSet, MenuAttributes inClear)
{
    MenuRecord* menu = Find(inMenu);
    if (!menu)
        return menuInvalidErr;
    menu->attributes = (menu->attributes | inSet) & ~inClear;
    MenuChanged(*menu);
    TitleChanged(*menu);
    return noErr;
}

OSStatus GetMenuFont(MenuRef inMenu, SInt16* outFontID, UInt16* outFontSize)
{
    const MenuRecord* menu = Find(inMenu);
    if (!menu)
        return menuInvalidErr;
    if (outFontID)
        *outFontID = menu->font;
    if (outFontSize)
        *outFontSize = menu->fontSize;
    return noErr;
}

OSStatus SetMenuFont(MenuRef inMenu, SInt16 inFontID, UInt16 inFontSize)
{
    MenuRecord* menu = Find(inMenu);
    if (!menu)
        return menuInvalidErr;
    menu->font = inFontID;
    menu->fontSize = inFontSize;
    MenuChanged(*menu);
    return noErr;
}

void CalcMenuSize(MenuRef inMenu)
{
    if (MenuRecord* menu = Find(inMenu))
        MeasureMenu(*menu);
}

// A size that was never computed is -1.
SInt16 GetMenuWidth(MenuRef inMenu)
{
    const MenuRecord* menu = Find(inMenu);
    return menu && !menu->sizeStale ? menu->width : (SInt16)(menu ? -1 : 0);
}

SInt16 GetMenuHeight(MenuRef inMenu)
{
    const MenuRecord* menu = Find(inMenu);
    return menu && !menu->sizeStale ? menu->height : (SInt16)(menu ? -1 : 0);
}

OSStatus InvalidateMenuSize(MenuRef inMenu)
{
    MenuRecord* menu = Find(inMenu);
    if (!menu)
        return menuInvalidErr;
    MenuChanged(*menu);
    return noErr;
}

Boolean IsMenuSizeInvalid(MenuRef inMenu)
{
    const MenuRecord* menu = Find(inMenu);
    return menu && menu->sizeStale;
}
