// Menus and menu bars from resources, and bars as handles.
#include "MenuBar.h"
#include "MenuFormat.h"

#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>

#include <cstring>

namespace lampblack::menus {

namespace {

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
