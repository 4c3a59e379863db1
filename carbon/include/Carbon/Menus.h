// The Menu Manager: menus, their items, the menu bar, and choosing with the mouse or with command keys.
// Begin at GetNewMBar, or at CreateNewMenu and InsertMenu. Items count from 1.
#ifndef LAMPBLACK_CARBON_MENUS_H
#define LAMPBLACK_CARBON_MENUS_H

#include <Carbon/CarbonEvents.h>
#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>

typedef SInt16 MenuID;
typedef UInt16 MenuItemIndex; // 0: the menu itself, or no item
typedef UInt32 MenuCommand;
typedef SInt16 CharParameter;
typedef SInt16 StyleParameter;
typedef Handle MenuBarHandle;

enum { noMark = 0, hMenuCmd = 0x1B, hierMenu = -1, kInsertHierarchicalMenu = -1, textMenuProc = 0 };
enum { kMenuBlankMark = 0, kMenuCheckMark = 0x12, kMenuDiamondMark = 0x13, kMenuAppleMark = 0x14 };

// The modifiers of an item's command key; the command key itself is understood unless bit 3 says otherwise.
enum {
    kMenuNoModifiers = 0,
    kMenuShiftModifier = 1 << 0,
    kMenuOptionModifier = 1 << 1,
    kMenuControlModifier = 1 << 2,
    kMenuNoCommandModifier = 1 << 3
};

typedef OptionBits MenuAttributes;
enum { kMenuAttrExcludesMarkColumn = 1U << 0, kMenuAttrAutoDisable = 1U << 2, kMenuAttrHidden = 1U << 4 };

typedef OptionBits MenuItemAttributes;
enum {
    kMenuItemAttrDisabled = 1U << 0,
    kMenuItemAttrIconDisabled = 1U << 1,
    kMenuItemAttrSubmenuParentChoosable = 1U << 2,
    kMenuItemAttrHidden = 1U << 5,
    kMenuItemAttrSeparator = 1U << 6,
    kMenuItemAttrSectionHeader = 1U << 7,
    kMenuItemAttrIgnoreMeta = 1U << 8,
    kMenuItemAttrUseVirtualKey = 1U << 10,
    kMenuItemAttrIncludeInCmdKeyMatching = 1U << 12,
    kMenuItemAttrAutoDisable = 1U << 13
};

typedef OptionBits MenuEventOptions;
enum {
    kMenuEventIncludeDisabledItems = 0x0001,
    kMenuEventQueryOnly = 0x0002,
    kMenuEventDontCheckSubmenus = 0x0004
};

// How a menu is being followed.
typedef UInt32 MenuTrackingMode;
enum { kMenuTrackingModeMouse = 1, kMenuTrackingModeKeyboard = 2 };

// Where it stands: the bits of kEventParamMenuContext.
enum {
    kMenuContextMenuBar = 1 << 0,
    kMenuContextPullDown = 1 << 8,
    kMenuContextPopUp = 1 << 9,
    kMenuContextSubmenu = 1 << 10,
    kMenuContextMenuBarTracking = 1 << 16,
    kMenuContextPopUpTracking = 1 << 17,
    kMenuContextKeyMatching = 1 << 18,
    kMenuContextMenuEnabling = 1 << 19,
    kMenuContextCommandIDSearch = 1 << 20
};

enum { kMenuPropertyPersistent = 0x00000001 };

LAMPBLACK_BEGIN_C

// --- Life of a menu

MenuRef NewMenu(MenuID inID, ConstStr255Param inTitle);
OSStatus CreateNewMenu(MenuID inID, MenuAttributes inAttributes, MenuRef* outMenu);
// A menu from a 'MENU' resource; its commands come from a 'xmnu' of the same ID when there is one. NULL when
// there is no such resource or it is damaged.
MenuRef GetMenu(short inResourceID);
void DisposeMenu(MenuRef inMenu);
OSStatus RetainMenu(MenuRef inMenu);
OSStatus ReleaseMenu(MenuRef inMenu);
ItemCount GetMenuRetainCount(MenuRef inMenu);
OSStatus DuplicateMenu(MenuRef inMenu, MenuRef* outMenu);
Boolean IsValidMenu(MenuRef inMenu);
EventTargetRef GetMenuEventTarget(MenuRef inMenu);

MenuID GetMenuID(MenuRef inMenu);
void SetMenuID(MenuRef inMenu, MenuID inID);
StringPtr GetMenuTitle(MenuRef inMenu, Str255 outTitle); // NULL for no menu
OSStatus SetMenuTitle(MenuRef inMenu, ConstStr255Param inTitle);
OSStatus GetMenuAttributes(MenuRef inMenu, MenuAttributes* outAttributes);
OSStatus ChangeMenuAttributes(MenuRef inMenu, MenuAttributes inSet, MenuAttributes inClear);
// The font of a menu's items by its number, and the size in points; 0 is what the theme says. Either result
// may be NULL.
OSStatus GetMenuFont(MenuRef inMenu, SInt16* outFontID, UInt16* outFontSize);
OSStatus SetMenuFont(MenuRef inMenu, SInt16 inFontID, UInt16 inFontSize);
void CalcMenuSize(MenuRef inMenu);
SInt16 GetMenuWidth(MenuRef inMenu);
SInt16 GetMenuHeight(MenuRef inMenu);
OSStatus InvalidateMenuSize(MenuRef inMenu);
Boolean IsMenuSizeInvalid(MenuRef inMenu);

// --- Items

// Text with metacharacters: ';' next item, '^' icon, '!' mark, '<' style, '/' key, '(' disabled, '-'
// separator.
void AppendMenu(MenuRef inMenu, ConstStr255Param inText);
void InsertMenuItem(MenuRef inMenu, ConstStr255Param inText, MenuItemIndex inAfter);
// Text as it is.
OSErr AppendMenuItemText(MenuRef inMenu, ConstStr255Param inText);
OSErr InsertMenuItemText(MenuRef inMenu, ConstStr255Param inText, MenuItemIndex inAfter);
void AppendResMenu(MenuRef inMenu, ResType inType);
void InsertResMenu(MenuRef inMenu, ResType inType, MenuItemIndex inAfter);
OSStatus CopyMenuItems(MenuRef inSource, MenuItemIndex inFirst, ItemCount inCount, MenuRef inDestination,
                       MenuItemIndex inAfter);
void DeleteMenuItem(MenuRef inMenu, MenuItemIndex inItem);
OSStatus DeleteMenuItems(MenuRef inMenu, MenuItemIndex inFirst, ItemCount inCount);
MenuItemIndex CountMenuItems(MenuRef inMenu);

void GetMenuItemText(MenuRef inMenu, MenuItemIndex inItem, Str255 outText); // empty for no item
void SetMenuItemText(MenuRef inMenu, MenuItemIndex inItem, ConstStr255Param inText);
// Item 0 is the menu as a whole.
void EnableMenuItem(MenuRef inMenu, MenuItemIndex inItem);
void DisableMenuItem(MenuRef inMenu, MenuItemIndex inItem);
Boolean IsMenuItemEnabled(MenuRef inMenu, MenuItemIndex inItem);
void EnableAllMenuItems(MenuRef inMenu);
void DisableAllMenuItems(MenuRef inMenu);
Boolean MenuHasEnabledItems(MenuRef inMenu);
void CheckMenuItem(MenuRef inMenu, MenuItemIndex inItem, Boolean inChecked);
void SetItemMark(MenuRef inMenu, MenuItemIndex inItem, CharParameter inMark);
void GetItemMark(MenuRef inMenu, MenuItemIndex inItem, CharParameter* outMark);
void SetItemCmd(MenuRef inMenu, MenuItemIndex inItem, CharParameter inKey);
void GetItemCmd(MenuRef inMenu, MenuItemIndex inItem, CharParameter* outKey);
void SetItemStyle(MenuRef inMenu, MenuItemIndex inItem, StyleParameter inStyle);
void GetItemStyle(MenuRef inMenu, MenuItemIndex inItem, Style* outStyle);
OSStatus SetMenuItemIndent(MenuRef inMenu, MenuItemIndex inItem, UInt32 inIndent);
OSStatus GetMenuItemIndent(MenuRef inMenu, MenuItemIndex inItem, UInt32* outIndent);
OSErr SetMenuItemCommandID(MenuRef inMenu, MenuItemIndex inItem, MenuCommand inCommand);
OSErr GetMenuItemCommandID(MenuRef inMenu, MenuItemIndex inItem, MenuCommand* outCommand);
OSErr SetMenuItemModifiers(MenuRef inMenu, MenuItemIndex inItem, UInt8 inModifiers);
OSErr GetMenuItemModifiers(MenuRef inMenu, MenuItemIndex inItem, UInt8* outModifiers);
OSStatus SetMenuItemCommandKey(MenuRef inMenu, MenuItemIndex inItem, Boolean inVirtualKey, UInt16 inKey);
OSStatus GetMenuItemCommandKey(MenuRef inMenu, MenuItemIndex inItem, Boolean inVirtualKey, UInt16* outKey);
OSErr SetMenuItemRefCon(MenuRef inMenu, MenuItemIndex inItem, UInt32 inRefCon);
OSErr GetMenuItemRefCon(MenuRef inMenu, MenuItemIndex inItem, UInt32* outRefCon);
OSStatus GetMenuItemAttributes(MenuRef inMenu, MenuItemIndex inItem, MenuItemAttributes* outAttributes);
OSStatus ChangeMenuItemAttributes(MenuRef inMenu, MenuItemIndex inItem, MenuItemAttributes inSet,
                                  MenuItemAttributes inClear);
OSErr SetMenuItemHierarchicalID(MenuRef inMenu, MenuItemIndex inItem, MenuID inSubmenu);
OSErr GetMenuItemHierarchicalID(MenuRef inMenu, MenuItemIndex inItem, MenuID* outSubmenu);
OSStatus SetMenuItemHierarchicalMenu(MenuRef inMenu, MenuItemIndex inItem, MenuRef inSubmenu);
OSStatus GetMenuItemHierarchicalMenu(MenuRef inMenu, MenuItemIndex inItem, MenuRef* outSubmenu);

// Errors: menuPropertyNotFoundErr, menuPropertyInvalidErr, menuItemNotFoundErr.
OSStatus SetMenuItemProperty(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator, OSType inTag,
                             ByteCount inSize, const void* inData);
OSStatus GetMenuItemProperty(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator, OSType inTag,
                             ByteCount inBufferSize, ByteCount* outActualSize, void* outBuffer);
OSStatus GetMenuItemPropertySize(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator, OSType inTag,
                                 ByteCount* outSize);
OSStatus RemoveMenuItemProperty(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator, OSType inTag);
OSStatus GetMenuItemPropertyAttributes(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator, OSType inTag,
                                       OptionBits* outAttributes);
OSStatus ChangeMenuItemPropertyAttributes(MenuRef inMenu, MenuItemIndex inItem, OSType inCreator,
                                          OSType inTag, OptionBits inSet, OptionBits inClear);

// --- Commands. A NULL menu means the menu bar and everything below it.

// inIndex counts the items with that command from 1, depth first. Errors: menuItemNotFoundErr.
OSStatus GetIndMenuItemWithCommandID(MenuRef inMenu, MenuCommand inCommand, UInt32 inIndex, MenuRef* outMenu,
                                     MenuItemIndex* outItem);
ItemCount CountMenuItemsWithCommandID(MenuRef inMenu, MenuCommand inCommand);
void EnableMenuCommand(MenuRef inMenu, MenuCommand inCommand);
void DisableMenuCommand(MenuRef inMenu, MenuCommand inCommand);
Boolean IsMenuCommandEnabled(MenuRef inMenu, MenuCommand inCommand);
OSStatus SetMenuCommandMark(MenuRef inMenu, MenuCommand inCommand, UniChar inMark);
OSStatus GetMenuCommandMark(MenuRef inMenu, MenuCommand inCommand, UniChar* outMark);

// --- The menu bar

MenuBarHandle GetNewMBar(short inResourceID); // NULL unless 'MBAR' and all its menus are there
MenuBarHandle GetMenuBar(void);               // the caller's copy
void SetMenuBar(MenuBarHandle inBar);
OSStatus DuplicateMenuBar(MenuBarHandle inBar, MenuBarHandle* outBar);
OSStatus DisposeMenuBar(MenuBarHandle inBar);
void ClearMenuBar(void);
void InsertMenu(MenuRef inMenu, MenuID inBefore); // 0: at the end; kInsertHierarchicalMenu: off the bar
void DeleteMenu(MenuID inID);
MenuRef GetMenuHandle(MenuID inID); // NULL when no such menu is installed
MenuRef GetMenuRef(MenuID inID);
void DrawMenuBar(void);
void InvalMenuBar(void);
void HiliteMenu(MenuID inID); // 0: none
short GetMBarHeight(void);
void HideMenuBar(void);
void ShowMenuBar(void);
Boolean IsMenuBarVisible(void);

// --- Choosing

// The high word is the menu's ID, the low word the item; 0 when nothing was chosen. The title of the menu
// stays lit until HiliteMenu(0).
SInt32 MenuSelect(Point inStart);
SInt32 MenuKey(CharParameter inKey);
SInt32 MenuChoice(void);
// Puts the given item (0: none) at the point and tracks at once.
SInt32 PopUpMenuSelect(MenuRef inMenu, short inTop, short inLeft, MenuItemIndex inItem);
// inStartMenu may be NULL for the menu bar, outMenu and outItem too.
Boolean IsMenuKeyEvent(MenuRef inStartMenu, EventRef inEvent, MenuEventOptions inOptions, MenuRef* outMenu,
                       MenuItemIndex* outItem);
Boolean IsShowContextualMenuEvent(EventRef inEvent);

LAMPBLACK_END_C

#endif
