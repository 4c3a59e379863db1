// Menus and menu bars from resources, and bars as handles.
#include "MenuBar.h"

#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>
#include <foundation/BigEndian.h>

#include <cstring>

namespace lampblack::menus {

namespace {

using foundation::BigEndianReader;

constexpr UInt16 kFirstSpecialKey = 0x1B, kLastSpecialKey = 0x1F; // keys that say something else of the item

std::string ReadPascal(BigEndianReader& ioReader)
{
    const size_t length = ioReader.U8();
    std::string text;
    for (size_t i = 0; i < length && ioReader.Ok(); ++i)
        text += (char)ioReader.U8();
    return text;
}

void ReadKeyAndMark(BigEndianReader& ioReader, MenuItem& outItem)
{
    outItem.key = ioReader.U8();
    outItem.mark = ioReader.U8();
    if (outItem.key == hMenuCmd) {
        outItem.submenuID = (MenuID)outItem.mark;
        outItem.mark = 0;
    }
    if (outItem.key >= kFirstSpecialKey && outItem.key <= kLastSpecialKey)
        outItem.key = 0;
}

// Items follow one another until one has no text. Each has a bit in the flags, the first 31 that is.
bool ReadItems(BigEndianReader& ioReader, UInt32 inEnabled, std::vector<MenuItem>* outItems)
{
    for (int number = 1; ioReader.Ok(); ++number) {
        MenuItem item;
        item.text = ReadPascal(ioReader);
        if (item.text.empty())
            return ioReader.Ok();
        item.icon = ioReader.U8();
        ReadKeyAndMark(ioReader, item);
        item.style = ioReader.U8();
        if (number < 32 && !(inEnabled & (1U << number)))
            item.attributes |= kMenuItemAttrDisabled;
        outItems->push_back(std::move(item));
    }
    return false;
}

// Answers false for bytes that end before the menu does.
bool ReadMenu(const void* inBytes, size_t inSize, MenuRecord& outMenu)
{
    BigEndianReader reader(inBytes, inSize);
    outMenu.id = reader.S16();
    reader.Skip(8); // width, height, definition, filler
    const UInt32 enabled = reader.U32();
    outMenu.title = ReadPascal(reader);
    outMenu.enabled = enabled & 1;
    return ReadItems(reader, enabled, &outMenu.items);
}

// What 'MENU' has no room for: a version, a count, then per item whether there is more and what.
void ReadExtensions(const void* inBytes, size_t inSize, MenuRecord& ioMenu)
{
    BigEndianReader reader(inBytes, inSize);
    if (reader.U16() != 0)
        return;
    const size_t count = reader.U16();
    for (size_t i = 0; i < count && i < ioMenu.items.size() && reader.Ok(); ++i) {
        if (reader.U16() != 1)
            continue;
        MenuItem& item = ioMenu.items[i];
        item.command = reader.U32();
        item.modifiers = reader.U8();
        reader.Skip(9); // icon, its handle, text encoding
        item.refCon = reader.U32();
        reader.Skip(4);
        const MenuID submenu = reader.S16();
        item.submenuID = submenu ? submenu : item.submenuID;
        reader.Skip(4); // font, key glyph
    }
}

// --- A bar as a handle: the published record is opaque, so it holds references and their number.

struct BarHeader {
    UInt32 signature;
    UInt16 menus, hierarchical;
};
constexpr UInt32 kBarSignature = 'mbar';

MenuBarHandle MakeBar(const Bar& inBar)
{
    const size_t count = inBar.menus.size() + inBar.hierarchical.size();
    const MenuBarHandle handle = NewHandle((Size)(sizeof(BarHeader) + count * sizeof(MenuRef)));
    if (!handle)
        return nullptr;
    const BarHeader header = { kBarSignature, (UInt16)inBar.menus.size(), (UInt16)inBar.hierarchical.size() };
    std::memcpy(*handle, &header, sizeof header);
    char* at = *handle + sizeof header;
    for (const auto* menus : { &inBar.menus, &inBar.hierarchical })
        for (MenuRef menu : *menus) {
            RetainMenu(menu);
            std::memcpy(at, &menu, sizeof menu);
            at += sizeof menu;
        }
    return handle;
}

// Answers false for a handle that holds no bar. Menus disposed of meanwhile are left out.
bool ReadBar(MenuBarHandle inHandle, Bar* outBar)
{
    BarHeader header;
    const Size size = inHandle ? GetHandleSize(inHandle) : 0;
    if (size < (Size)sizeof header || !*inHandle)
        return false;
    std::memcpy(&header, *inHandle, sizeof header);
    const size_t count = (size_t)header.menus + header.hierarchical;
    if (header.signature != kBarSignature || (size_t)size != sizeof header + count * sizeof(MenuRef))
        return false;
    for (size_t i = 0; i < count; ++i) {
        MenuRef menu;
        std::memcpy(&menu, *inHandle + sizeof header + i * sizeof menu, sizeof menu);
        if (Find(menu))
            (i < header.menus ? outBar->menus : outBar->hierarchical).push_back(menu);
    }
    return true;
}

void Install(const Bar& inBar)
{
    for (MenuRef menu : inBar.menus)
        InsertMenu(menu, 0);
    for (MenuRef menu : inBar.hierarchical)
        InsertMenu(menu, kInsertHierarchicalMenu);
}

void ReleaseAll(const Bar& inBar)
{
    for (const auto* menus : { &inBar.menus, &inBar.hierarchical })
        for (MenuRef menu : *menus)
            ReleaseMenu(menu);
}

} // namespace

} // namespace lampblack::menus

using namespace lampblack::menus;

MenuRef GetMenu(short inResourceID)
{
    const Handle resource = GetResource('MENU', inResourceID);
    if (!resource || !*resource)
        return nullptr;
    const MenuRef menu = NewMenuRecord(inResourceID);
    if (!ReadMenu(*resource, (size_t)GetHandleSize(resource), *Find(menu))) {
        ReleaseMenu(menu);
        return nullptr;
    }
    const Handle extensions = GetResource('xmnu', inResourceID);
    if (extensions && *extensions)
        ReadExtensions(*extensions, (size_t)GetHandleSize(extensions), *Find(menu));
    return menu;
}

MenuBarHandle GetNewMBar(short inResourceID)
{
    const Handle resource = GetResource('MBAR', inResourceID);
    const Size size = resource && *resource ? GetHandleSize(resource) : 0;
    UInt16 count = 0;
    if (size < 2)
        return nullptr;
    std::memcpy(&count, *resource, 2);
    if (size < 2 + 2 * (Size)count)
        return nullptr;
    Bar bar;
    for (UInt16 i = 0; i < count; ++i) {
        SInt16 id;
        std::memcpy(&id, *resource + 2 + 2 * i, 2);
        if (const MenuRef menu = GetMenu(id))
            bar.menus.push_back(menu);
    }
    const MenuBarHandle handle = bar.menus.size() == count ? MakeBar(bar) : nullptr;
    ReleaseAll(bar);
    return handle;
}

MenuBarHandle GetMenuBar(void)
{
    return MakeBar(TheBar());
}

void SetMenuBar(MenuBarHandle inBar)
{
    Bar bar;
    if (!ReadBar(inBar, &bar))
        return;
    for (const auto* menus : { &bar.menus, &bar.hierarchical })
        for (MenuRef menu : *menus)
            RetainMenu(menu); // while the old bar, which may own them, is cleared
    ClearMenuBar();
    Install(bar);
    ReleaseAll(bar);
}

OSStatus DuplicateMenuBar(MenuBarHandle inBar, MenuBarHandle* outBar)
{
    Bar bar;
    if (!outBar || !ReadBar(inBar, &bar))
        return paramErr;
    *outBar = MakeBar(bar);
    return *outBar ? (OSStatus)noErr : (OSStatus)memFullErr;
}

OSStatus DisposeMenuBar(MenuBarHandle inBar)
{
    Bar bar;
    if (!ReadBar(inBar, &bar))
        return paramErr;
    ReleaseAll(bar);
    DisposeHandle(inBar);
    return noErr;
}
