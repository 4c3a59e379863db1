// The data behind a MenuRef.
#ifndef LAMPBLACK_MENUS_MENURECORD_H
#define LAMPBLACK_MENUS_MENURECORD_H

#include <Carbon/Menus.h>
#include <memory/ReferenceTable.h>
#include <windows/PropertyList.h>

#include <string>
#include <vector>

namespace lampblack::menus {

struct MenuItem {
    std::string text; // Mac Roman, at most 255 bytes
    UInt16 mark = 0;  // Mac Roman; 0: none
    UInt16 key = 0;   // a character, or a virtual key; 0: none
    UInt8 modifiers = 0;
    Style style = normal;
    SInt16 icon = 0;
    MenuCommand command = 0;
    UInt32 refCon = 0, indent = 0;
    MenuItemAttributes attributes = 0;
    MenuID submenuID = 0;
    MenuRef submenu = nullptr; // retained; else the installed menu with submenuID
    windows::PropertyList properties;

    bool Has(MenuItemAttributes inAny) const { return attributes & inAny; }
    bool IsSeparator() const
    {
        return Has(kMenuItemAttrSeparator) ||
               (!text.empty() && text[0] == '-' && !Has(kMenuItemAttrIgnoreMeta));
    }
};

struct MenuRecord {
    MenuID id = 0;
    std::string title;
    MenuAttributes attributes = 0;
    bool enabled = true;
    SInt16 font = 0;     // 0: the theme's
    UInt16 fontSize = 0; // 0: the theme's
    std::vector<MenuItem> items;
    ItemCount owners = 1;
    EventTargetRef target = nullptr;
    SInt16 width = 0, height = 0;
    bool sizeStale = true, wasOpened = false;

    MenuRef Ref() { return reinterpret_cast<MenuRef>(this); }
};

memory::ReferenceTable<MenuRecord>& Menus();

inline MenuRecord* Find(MenuRef inMenu)
{
    return Menus().Find(inMenu);
}

// The item with that number, from 1; null when there is none.
MenuItem* FindItem(MenuRef inMenu, long inItem);
// The menu that opens beside an item; null for an item without one.
MenuRef SubmenuOf(const MenuItem& inItem);
bool IsEnabled(const MenuRecord& inMenu, const MenuItem& inItem);

// After any change to what a menu shows.
void MenuChanged(MenuRecord& ioMenu);
void TitleChanged(MenuRecord& inMenu);

MenuRef NewMenuRecord(MenuID inID);
void ReleaseItem(MenuItem& ioItem);
void CopyPascal(const std::string& inText, Str255 outText);
std::string FromPascal(ConstStr255Param inText);

} // namespace lampblack::menus

#endif
