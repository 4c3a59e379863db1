// The installed menus and the bar.
#include "MenuBar.h"

#include "MenuTracking.h"

#include <Carbon/Appearance.h>
#include <Carbon/MacWindows.h>
#include <Host.h>
#include <foundation/MacRoman.h>
#include <windows/PortSaver.h>
#include <windows/Rects.h>
#include <windows/Surface.h>

#include <algorithm>

namespace lampblack::menus {

namespace {

constexpr short kFirstTitle = 10; // pixels left of the first title
constexpr char kAppleTitle = 0x14;
constexpr ScriptCode kSystemScript = -1;

struct BarView {
    WindowRef surface = nullptr;
    std::vector<Title> titles;
    MenuRef lit = nullptr;
    bool stale = true, hidden = false, wasModal = false;
};

BarView& View()
{
    static BarView view;
    return view;
}

bool IsAppleMenu(MenuRef inMenu)
{
    const MenuRecord* menu = Find(inMenu);
    return menu && menu->title.size() == 1 && menu->title[0] == kAppleTitle;
}

std::string ApplicationName()
{
    return foundation::MacRomanFromUtf8(host::CurrentSettings().application.stem().string());
}

void AddApplicationItem(MenuRef inMenu, const std::string& inText, char inKey, MenuCommand inCommand)
{
    MenuItem item;
    item.text = inText;
    item.key = (UInt8)inKey;
    item.command = inCommand;
    item.attributes = kMenuItemAttrIgnoreMeta;
    Find(inMenu)->items.push_back(std::move(item));
}

MenuRef MakeApplicationMenu()
{
    const std::string name = ApplicationName();
    const MenuRef menu = NewMenuRecord(0);
    Find(menu)->title = name;
    AddApplicationItem(menu, "Preferences\xC9", ',', kHICommandPreferences);
    DisableMenuItem(menu, 1); // until the application enables the command
    AppendMenu(menu, (ConstStr255Param) "\001-");
    AddApplicationItem(menu, "Quit " + name, 'Q', kHICommandQuit);
    return menu;
}

// --- Titles

// The system font, heavier for the application's name.
void UseTitleFont(bool inApplication)
{
    UseThemeFont(kThemeMenuTitleFont, kSystemScript);
    if (inApplication)
        TextFace(bold);
}

bool IsApplicationTitle(const Title& inTitle)
{
    return inTitle.menus.back() == ApplicationMenu();
}

const std::string& TextOf(const Title& inTitle)
{
    return Find(inTitle.menus.back())->title;
}

short TitleWidth(const Title& inTitle)
{
    SInt16 extra = 0;
    Str255 text;
    GetThemeMenuTitleExtra(&extra, false);
    CopyPascal(TextOf(inTitle), text);
    UseTitleFont(IsApplicationTitle(inTitle));
    return (short)(StringWidth(text) + extra);
}

// An Apple menu is shown within the application menu, above its own items.
void CollectTitles(std::vector<Title>& outTitles)
{
    outTitles.clear();
    Title first;
    for (MenuRef menu : TheBar().menus)
        if (IsAppleMenu(menu))
            first.menus.push_back(menu);
    first.menus.push_back(ApplicationMenu());
    outTitles.push_back(first);
    for (MenuRef menu : TheBar().menus)
        if (!IsAppleMenu(menu) && !(Find(menu)->attributes & kMenuAttrHidden))
            outTitles.push_back({ { menu }, { 0, 0, 0, 0 } });
}

void PlaceTitles(std::vector<Title>& ioTitles)
{
    const windows::StWindowPort port(GetWindowPort(View().surface));
    const Rect bar = BarBounds();
    short left = kFirstTitle;
    for (Title& title : ioTitles) {
        const auto right = (short)(left + TitleWidth(title));
        title.bounds = { bar.top, left, bar.bottom, right };
        left = right;
    }
}

bool IsTitleEnabled(const Title& inTitle)
{
    const MenuRecord* menu = Find(inTitle.menus.back());
    if (!menu->enabled || !windows::IsAppModal())
        return menu->enabled;
    return std::any_of(menu->items.begin(), menu->items.end(),
                       [&](const MenuItem& item) { return IsUsable(inTitle.menus.back(), item); });
}

bool IsLit(const Title& inTitle)
{
    const std::vector<MenuRef>& menus = inTitle.menus;
    return View().lit && std::find(menus.begin(), menus.end(), View().lit) != menus.end();
}

void DrawTitleText(const Rect* inBounds, SInt16, Boolean, SRefCon inTitle)
{
    const auto& title = *reinterpret_cast<const Title*>(inTitle);
    FontInfo font;
    Str255 text;
    CopyPascal(TextOf(title), text);
    UseTitleFont(IsApplicationTitle(title));
    GetFontInfo(&font);
    const int slack = inBounds->bottom - inBounds->top - font.ascent - font.descent;
    MoveTo(inBounds->left, (short)(inBounds->top + slack / 2 + font.ascent));
    DrawString(text);
}

void DrawBar()
{
    const windows::StWindowPort port(GetWindowPort(View().surface));
    const Rect bar = BarBounds();
    DrawThemeMenuBarBackground(&bar, kThemeMenuBarNormal, 0);
    for (const Title& title : View().titles) {
        const ThemeMenuState state = !IsTitleEnabled(title) ? kThemeMenuDisabled
                                     : IsLit(title)         ? kThemeMenuSelected
                                                            : kThemeMenuActive;
        DrawThemeMenuTitle(&bar, &title.bounds, state, 0, DrawTitleText, (SRefCon)&title);
    }
}

// The bar is drawn once for a frame, however many menus came and went.
void BeforeFrame()
{
    BarView& view = View();
    if (!view.surface || view.hidden)
        return;
    const bool modal = windows::IsAppModal();
    if (!view.stale && modal == view.wasModal)
        return;
    view.wasModal = modal;
    Titles();
    DrawBar();
    view.stale = false;
}

void ScreenChanged()
{
    if (!View().surface)
        return;
    const Rect bounds = BarBounds();
    SetWindowBounds(View().surface, kWindowContentRgn, &bounds);
    InvalMenuBar();
}

template <class Menus>
bool Contains(const Menus& inMenus, MenuRef inMenu)
{
    return std::find(inMenus.begin(), inMenus.end(), inMenu) != inMenus.end();
}

void Insert(std::vector<MenuRef>& ioMenus, MenuRef inMenu, MenuID inBefore)
{
    RetainMenu(inMenu);
    const auto place = std::find_if(ioMenus.begin(), ioMenus.end(), [=](MenuRef menu) {
        return inBefore > 0 && GetMenuID(menu) == inBefore;
    });
    ioMenus.insert(place, inMenu);
}

void Clear(std::vector<MenuRef>& ioMenus)
{
    std::vector<MenuRef> old;
    old.swap(ioMenus);
    for (MenuRef menu : old)
        ReleaseMenu(menu);
}

MenuRef FindByID(const std::vector<MenuRef>& inMenus, MenuID inID)
{
    for (MenuRef menu : inMenus)
        if (GetMenuID(menu) == inID)
            return menu;
    return nullptr;
}

// Menus ask for the screen before any window does when a bar is built first.
const bool gHooked = [] {
    windows::TheSurfaceHooks() = { StartMenus, ScreenChanged, BeforeFrame };
    return true;
}();

} // namespace

Bar& TheBar()
{
    static Bar bar;
    return bar;
}

MenuRef ApplicationMenu()
{
    static const MenuRef menu = MakeApplicationMenu();
    return menu;
}

bool IsInBar(MenuRef inMenu)
{
    return Contains(TheBar().menus, inMenu) || inMenu == ApplicationMenu();
}

void RemoveFromBar(MenuRef inMenu)
{
    std::erase(TheBar().menus, inMenu);
    std::erase(TheBar().hierarchical, inMenu);
    if (View().lit == inMenu)
        View().lit = nullptr;
    InvalMenuBar();
}

const std::vector<Title>& Titles()
{
    if (View().stale) {
        CollectTitles(View().titles);
        PlaceTitles(View().titles);
    }
    return View().titles;
}

const Title* TitleAt(Point inWhere)
{
    for (const Title& title : Titles())
        if (windows::RectHolds(title.bounds, inWhere))
            return IsTitleEnabled(title) ? &title : nullptr;
    return nullptr;
}

void HiliteTitle(MenuRef inMenu)
{
    if (View().lit == inMenu)
        return;
    View().lit = inMenu;
    InvalMenuBar();
}

Rect BarBounds()
{
    SInt16 height = 0;
    GetThemeMenuBarHeight(&height);
    return { 0, 0, height, windows::ScreenBounds().right };
}

bool IsUsable(MenuRef inMenu, const MenuItem& inItem)
{
    const MenuRecord* menu = Find(inMenu);
    if (!menu || !IsEnabled(*menu, inItem))
        return false;
    if (!windows::IsAppModal())
        return true;
    switch (inItem.command) {
    case kHICommandUndo:
    case kHICommandRedo:
    case kHICommandCut:
    case kHICommandCopy:
    case kHICommandPaste:
    case kHICommandClear:
    case kHICommandSelectAll: return true;
    default: return false;
    }
}

} // namespace lampblack::menus

using namespace lampblack::menus;

void InsertMenu(MenuRef inMenu, MenuID inBefore)
{
    if (!Find(inMenu) || Contains(TheBar().menus, inMenu) || Contains(TheBar().hierarchical, inMenu))
        return;
    Insert(inBefore == kInsertHierarchicalMenu ? TheBar().hierarchical : TheBar().menus, inMenu, inBefore);
    InvalMenuBar();
}

void DeleteMenu(MenuID inID)
{
    const MenuRef menu = GetMenuHandle(inID);
    if (!menu)
        return;
    RemoveFromBar(menu);
    ReleaseMenu(menu);
}

void ClearMenuBar(void)
{
    Clear(TheBar().menus);
    Clear(TheBar().hierarchical);
    InvalMenuBar();
}

MenuRef GetMenuHandle(MenuID inID)
{
    const MenuRef menu = FindByID(TheBar().menus, inID);
    return menu ? menu : FindByID(TheBar().hierarchical, inID);
}

MenuRef GetMenuRef(MenuID inID)
{
    return GetMenuHandle(inID);
}

void InvalMenuBar(void)
{
    View().stale = true;
    lampblack::windows::SurfaceIsStale(View().surface);
}

void DrawMenuBar(void)
{
    InvalMenuBar();
}

void HiliteMenu(MenuID inID)
{
    HiliteTitle(inID ? GetMenuHandle(inID) : nullptr);
}

short GetMBarHeight(void)
{
    const Rect bounds = BarBounds();
    return View().hidden ? 0 : bounds.bottom;
}

void HideMenuBar(void)
{
    View().hidden = true;
    lampblack::windows::SetMenuBarInset(0);
    ShowHide(View().surface, false);
}

void ShowMenuBar(void)
{
    View().hidden = false;
    lampblack::windows::SetMenuBarInset(BarBounds().bottom);
    ShowHide(View().surface, true);
    InvalMenuBar();
}

Boolean IsMenuBarVisible(void)
{
    return !View().hidden;
}

void lampblack::menus::StartMenus()
{
    if (View().surface)
        return;
    View().surface = windows::NewSurface(windows::Layer::MenuBar, BarBounds(), true);
    InstallMenuHandlers();
    if (View().hidden)
        return;
    windows::SetMenuBarInset(BarBounds().bottom);
    ShowHide(View().surface, true);
}
