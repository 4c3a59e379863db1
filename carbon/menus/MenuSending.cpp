// The events that menus send.
#include "MenuSending.h"

#include <windows/WindowEvents.h>

namespace lampblack::menus {

namespace {

using windows::StEvent;

OSStatus SendMenuEvent(MenuRef inMenu, UInt32 inKind, UInt32 inContext)
{
    StEvent event(kEventClassMenu, inKind);
    event.Put(kEventParamDirectObject, typeMenuRef, inMenu)
        .Put(kEventParamMenuContext, typeUInt32, inContext);
    return event.SendTo(GetMenuEventTarget(inMenu));
}

HICommand CommandOf(MenuRef inMenu, MenuItemIndex inItem)
{
    HICommand command = {};
    command.attributes = kHICommandFromMenu;
    command.commandID = FindItem(inMenu, inItem)->command;
    command.menu.menuRef = inMenu;
    command.menu.menuItemIndex = inItem;
    return command;
}

} // namespace

OSStatus SendCommand(MenuRef inMenu, MenuItemIndex inItem, UInt32 inModifiers)
{
    if (!FindItem(inMenu, inItem))
        return eventNotHandledErr;
    StEvent event(kEventClassCommand, kEventCommandProcess);
    event.Put(kEventParamDirectObject, typeHICommand, CommandOf(inMenu, inItem))
        .Put(kEventParamKeyModifiers, typeUInt32, inModifiers)
        .Put(kEventParamMenuContext, typeUInt32, (UInt32)(kMenuContextMenuBar | kMenuContextPullDown));
    return event.SendTo(GetMenuEventTarget(inMenu));
}

void UpdateStatus(MenuRef inMenu, MenuItemIndex inItem, UInt32 inContext)
{
    const MenuItem* item = FindItem(inMenu, inItem);
    if (!item || !item->command)
        return;
    StEvent event(kEventClassCommand, kEventCommandUpdateStatus);
    event.Put(kEventParamDirectObject, typeHICommand, CommandOf(inMenu, inItem))
        .Put(kEventParamMenuContext, typeUInt32, inContext);
    const OSStatus status = event.SendTo(GetMenuEventTarget(inMenu));
    const MenuRecord* menu = Find(inMenu);
    item = FindItem(inMenu, inItem);
    // Nobody knows the command: items that ask for it are disabled then.
    if (status == eventNotHandledErr && item &&
        (item->Has(kMenuItemAttrAutoDisable) || (menu->attributes & kMenuAttrAutoDisable)))
        DisableMenuItem(inMenu, inItem);
}

void PrepareMenu(MenuRef inMenu, UInt32 inContext, bool inForKey)
{
    if (!inForKey)
        SendMenuEvent(inMenu, kEventMenuPopulate, inContext);
    StEvent event(kEventClassMenu, kEventMenuEnableItems);
    event.Put(kEventParamDirectObject, typeMenuRef, inMenu)
        .Put(kEventParamMenuContext, typeUInt32, inContext)
        .Put(kEventParamEnableMenuForKeyEvent, typeBoolean, (Boolean)inForKey);
    event.SendTo(GetMenuEventTarget(inMenu));
    const MenuItemIndex count = inForKey ? 0 : CountMenuItems(inMenu);
    for (MenuItemIndex item = 1; item <= count; ++item)
        UpdateStatus(inMenu, item, inContext);
}

bool SendOpening(MenuRef inMenu, UInt32 inContext)
{
    MenuRecord* menu = Find(inMenu);
    if (!menu)
        return false;
    StEvent event(kEventClassMenu, kEventMenuOpening);
    event.Put(kEventParamDirectObject, typeMenuRef, inMenu)
        .Put(kEventParamMenuContext, typeUInt32, inContext)
        .Put(kEventParamMenuFirstOpen, typeBoolean, (Boolean)!menu->wasOpened);
    menu->wasOpened = true;
    return event.SendTo(menu->target) != userCanceledErr && Find(inMenu);
}

void SendClosed(MenuRef inMenu, UInt32 inContext)
{
    SendMenuEvent(inMenu, kEventMenuClosed, inContext);
}

void SendTargetItem(MenuRef inMenu, MenuItemIndex inItem, UInt32 inContext)
{
    const MenuItem* item = FindItem(inMenu, inItem);
    StEvent event(kEventClassMenu, kEventMenuTargetItem);
    event.Put(kEventParamDirectObject, typeMenuRef, inMenu)
        .Put(kEventParamMenuContext, typeUInt32, inContext)
        .Put(kEventParamMenuItemIndex, typeMenuItemIndex, inItem)
        .Put(kEventParamMenuCommand, typeMenuCommand, item ? item->command : (MenuCommand)0);
    event.SendTo(GetMenuEventTarget(inMenu));
}

void SendTracking(MenuRef inMenu, UInt32 inKind, UInt32 inContext)
{
    StEvent event(kEventClassMenu, inKind);
    event.Put(kEventParamDirectObject, typeMenuRef, inMenu)
        .Put(kEventParamMenuContext, typeUInt32, inContext)
        .Put(kEventParamCurrentMenuTrackingMode, typeMenuTrackingMode,
             (MenuTrackingMode)kMenuTrackingModeMouse);
    event.SendTo(GetMenuEventTarget(inMenu));
}

} // namespace lampblack::menus
