// Menus, items, the bar and choosing from it.
#include "MenuText.h"

#include <Carbon/Files.h>
#include <Carbon/MacMemory.h>
#include <Carbon/MacWindows.h>
#include <Carbon/Resources.h>
#include <ScratchFolder.h>
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <resources/ResourceFork.h>
#include <windows/TestWindow.h>

#include <cstdlib>
#include <cstring>
#include <string_view>

using namespace lampblack;
using windows::TestWindow;

namespace {

// A Pascal string that lasts for a few calls.
ConstStr255Param P(std::string_view inText)
{
    static Str255 strings[4];
    static int next = 0;
    unsigned char* string = strings[next++ % 4];
    string[0] = (unsigned char)inText.size();
    std::memcpy(string + 1, inText.data(), inText.size());
    return string;
}

std::string Text(MenuRef inMenu, MenuItemIndex inItem)
{
    Str255 text;
    GetMenuItemText(inMenu, inItem, text);
    return std::string((const char*)text + 1, text[0]);
}

std::vector<MenuCommand>& Commands()
{
    static std::vector<MenuCommand> commands;
    return commands;
}

OSStatus NoteCommand(EventHandlerCallRef, EventRef inEvent, void* inAnswer)
{
    HICommand command;
    GetEventParameter(inEvent, kEventParamDirectObject, typeHICommand, nullptr, sizeof command, nullptr,
                      &command);
    Commands().push_back(command.commandID);
    return inAnswer ? (OSStatus)noErr : (OSStatus)eventNotHandledErr;
}

std::vector<UInt32>& MenuKinds()
{
    static std::vector<UInt32> kinds;
    return kinds;
}

OSStatus NoteMenu(EventHandlerCallRef, EventRef inEvent, void*)
{
    MenuKinds().push_back(GetEventKind(inEvent));
    return eventNotHandledErr;
}

// Handles what the menus send to the application, for a scope.
class StApplicationHandler {
public:
    explicit StApplicationHandler(bool inHandles)
    {
        const EventTypeSpec command = { kEventClassCommand, kEventCommandProcess };
        const EventTypeSpec menu[] = { { kEventClassMenu, kEventMenuBeginTracking },
                                       { kEventClassMenu, kEventMenuEndTracking },
                                       { kEventClassMenu, kEventMenuOpening },
                                       { kEventClassMenu, kEventMenuClosed } };
        Commands().clear();
        MenuKinds().clear();
        InstallEventHandler(GetApplicationEventTarget(), NoteCommand, 1, &command, inHandles ? this : nullptr,
                            &fCommand);
        InstallEventHandler(GetApplicationEventTarget(), NoteMenu, 4, menu, nullptr, &fMenu);
    }
    ~StApplicationHandler()
    {
        RemoveEventHandler(fCommand);
        RemoveEventHandler(fMenu);
        ClearMenuBar();
    }

private:
    EventHandlerRef fCommand = nullptr, fMenu = nullptr;
};

MenuRef FileMenu()
{
    const MenuRef menu = NewMenu(129, P("File"));
    AppendMenu(menu, P("New Game/N;Open\311/O;(-;Save/W"));
    SetMenuItemCommandID(menu, 1, kHICommandNew);
    SetMenuItemCommandID(menu, 2, kHICommandOpen);
    SetMenuItemCommandID(menu, 4, kHICommandSave);
    return menu;
}

} // namespace

TEST_CASE("AppendMenu: metacharacters make items, keys, marks, styles and disabled lines")
{
    const MenuRef menu = NewMenu(200, P("Test"));
    AppendMenu(menu, P("New/N;Open;(Gone;Marked!\022;Bold<B;-"));
    REQUIRE(CountMenuItems(menu) == 6);
    CharParameter value = 0;
    Style style = normal;
    CHECK(Text(menu, 1) == "New");
    GetItemCmd(menu, 1, &value);
    CHECK(value == 'N');
    CHECK(IsMenuItemEnabled(menu, 2));
    CHECK(Text(menu, 3) == "Gone");
    CHECK(!IsMenuItemEnabled(menu, 3));
    GetItemMark(menu, 4, &value);
    CHECK(value == kMenuCheckMark);
    GetItemStyle(menu, 5, &style);
    CHECK(style == bold);
    MenuItemAttributes attributes = 0;
    GetMenuItemAttributes(menu, 6, &attributes);
    CHECK((attributes & kMenuItemAttrSeparator) != 0);
    DisposeMenu(menu);
}

TEST_CASE("AppendMenuItemText: metacharacters are text")
{
    const MenuRef menu = NewMenu(200, P("Test"));
    CHECK(AppendMenuItemText(menu, P("(a/b;c")) == noErr);
    CHECK(InsertMenuItemText(menu, P("first"), 0) == noErr);
    CHECK(CountMenuItems(menu) == 2);
    CHECK(Text(menu, 1) == "first");
    CHECK(Text(menu, 2) == "(a/b;c");
    CHECK(IsMenuItemEnabled(menu, 2));
    CHECK(AppendMenuItemText(menu, nullptr) == paramErr);
    DisposeMenu(menu);
}

TEST_CASE("SetMenuFont: a larger font makes a larger menu, and is answered; the theme's is 0")
{
    MenuRef menu = nullptr;
    CreateNewMenu(300, 0, &menu);
    AppendMenuItemText(menu, P("Some text"));
    SInt16 font = 1;
    UInt16 size = 1;
    CHECK(GetMenuFont(menu, &font, &size) == noErr);
    CHECK(font == 0);
    CHECK(size == 0);
    CalcMenuSize(menu);
    const SInt16 width = GetMenuWidth(menu), height = GetMenuHeight(menu);
    CHECK(SetMenuFont(menu, 0, 36) == noErr);
    CHECK(IsMenuSizeInvalid(menu));
    CalcMenuSize(menu);
    CHECK(GetMenuWidth(menu) > width);
    CHECK(GetMenuHeight(menu) > height);
    CHECK(GetMenuFont(menu, nullptr, &size) == noErr);
    CHECK(size == 36);
    DisposeMenu(menu);
    CHECK(GetMenuFont(menu, &font, &size) == menuInvalidErr);
    CHECK(SetMenuFont(nullptr, 0, 9) == menuInvalidErr);
}

TEST_CASE("DeleteMenuItem, CopyMenuItems: items go and come in order")
{
    const MenuRef menu = FileMenu(), copy = NewMenu(201, P("Copy"));
    CHECK(CopyMenuItems(menu, 1, 2, copy, 0) == noErr);
    CHECK(Text(copy, 2) == "Open\xC9");
    DeleteMenuItem(menu, 1);
    CHECK(CountMenuItems(menu) == 3);
    DeleteMenuItem(menu, 9);
    CHECK(DeleteMenuItems(menu, 2, 2) == noErr);
    CHECK(CountMenuItems(menu) == 1);
    CHECK(DeleteMenuItems(menu, 1, 2) == menuItemNotFoundErr);
    CHECK(CopyMenuItems(menu, 1, 2, copy, 0) == menuItemNotFoundErr);
    DisposeMenu(menu);
    DisposeMenu(copy);
}

TEST_CASE("Every call: a null, foreign or disposed menu and an absent item are told or do nothing")
{
    static char notAMenu[512];
    const MenuRef disposed = NewMenu(202, P("Gone")), live = FileMenu();
    DisposeMenu(disposed);
    for (MenuRef menu : { (MenuRef) nullptr, disposed, (MenuRef)notAMenu }) {
        MenuCommand command = 0;
        Str255 text;
        CHECK(!IsValidMenu(menu));
        CHECK(CountMenuItems(menu) == 0);
        CHECK(GetMenuID(menu) == 0);
        CHECK(GetMenuTitle(menu, text) == nullptr);
        CHECK(GetMenuItemCommandID(menu, 1, &command) == menuInvalidErr);
        CHECK(ReleaseMenu(menu) == menuInvalidErr);
        CHECK(AppendMenuItemText(menu, P("x")) == menuInvalidErr);
        CHECK(PopUpMenuSelect(menu, 0, 0, 1) == 0);
        AppendMenu(menu, P("x"));
        InsertMenu(menu, 0);
        EnableMenuItem(menu, 1);
    }
    ByteCount size;
    CharParameter mark = 5;
    CHECK(GetMenuItemPropertySize(live, 9, 'test', 'tag ', &size) == menuItemNotFoundErr);
    CHECK(SetMenuItemModifiers(live, 0, 0) == menuItemNotFoundErr);
    GetItemMark(live, 99, &mark);
    CHECK(mark == noMark);
    CHECK(Text(live, 99).empty());
    DisposeMenu(live);
}

TEST_CASE("SetMenuItemProperty: the data stays with its item")
{
    const MenuRef menu = FileMenu();
    const SInt32 value = 12;
    SInt32 read = 0;
    ByteCount size = 0;
    CHECK(SetMenuItemProperty(menu, 2, 'test', 'numb', 4, &value) == noErr);
    DeleteMenuItem(menu, 1);
    CHECK(GetMenuItemProperty(menu, 1, 'test', 'numb', 4, &size, &read) == noErr);
    CHECK(read == 12);
    CHECK(GetMenuItemProperty(menu, 2, 'test', 'numb', 4, &size, &read) == menuPropertyNotFoundErr);
    CHECK(RemoveMenuItemProperty(menu, 1, 'test', 'numb') == noErr);
    DisposeMenu(menu);
}

TEST_CASE("InsertMenu, DeleteMenu: menus are found by ID while they are installed")
{
    const MenuRef menu = FileMenu(), submenu = NewMenu(300, P("Sub"));
    CHECK(GetMenuHandle(129) == nullptr);
    InsertMenu(menu, 0);
    InsertMenu(submenu, kInsertHierarchicalMenu);
    CHECK(GetMenuHandle(129) == menu);
    CHECK(GetMenuHandle(300) == submenu);
    CHECK(SetMenuItemHierarchicalID(menu, 2, 300) == noErr);
    MenuRef found = nullptr;
    CHECK(GetMenuItemHierarchicalMenu(menu, 2, &found) == noErr);
    CHECK(found == submenu);
    DeleteMenu(129);
    DeleteMenu(300);
    CHECK(GetMenuHandle(129) == nullptr);
    CHECK(IsValidMenu(menu));
    DisposeMenu(menu);
    DisposeMenu(submenu);
}

TEST_CASE("SetMenuBar: the bar comes back as it was, whatever was installed meanwhile")
{
    const MenuRef menu = FileMenu();
    InsertMenu(menu, 0);
    DisposeMenu(menu);
    const MenuBarHandle bar = GetMenuBar();
    REQUIRE(bar != nullptr);
    ClearMenuBar();
    CHECK(GetMenuHandle(129) == nullptr);
    SetMenuBar(bar);
    CHECK(GetMenuHandle(129) == menu);
    CHECK(DisposeMenuBar(bar) == noErr);
    CHECK(DisposeMenuBar(nullptr) == paramErr);
    const Handle wrong = NewHandleClear(40);
    SetMenuBar(wrong);
    CHECK(GetMenuHandle(129) == menu);
    DisposeHandle(wrong);
    ClearMenuBar();
    CHECK(!IsValidMenu(menu));
}

TEST_CASE("Commands: found by index, counted, enabled and marked, submenus included")
{
    const MenuRef menu = FileMenu(), submenu = NewMenu(300, P("Sub"));
    AppendMenu(submenu, P("Again"));
    SetMenuItemCommandID(submenu, 1, kHICommandOpen);
    SetMenuItemHierarchicalMenu(menu, 1, submenu);
    MenuRef found = nullptr;
    MenuItemIndex item = 0;
    CHECK(CountMenuItemsWithCommandID(menu, kHICommandOpen) == 2);
    CHECK(GetIndMenuItemWithCommandID(menu, kHICommandOpen, 1, &found, &item) == noErr);
    CHECK(found == submenu);
    CHECK(GetIndMenuItemWithCommandID(menu, kHICommandOpen, 2, &found, &item) == noErr);
    CHECK(found == menu);
    CHECK(item == 2);
    CHECK(GetIndMenuItemWithCommandID(menu, kHICommandOpen, 3, &found, &item) == menuItemNotFoundErr);
    CHECK(GetIndMenuItemWithCommandID(menu, kHICommandOpen, 0, &found, &item) == menuItemNotFoundErr);
    DisableMenuCommand(menu, kHICommandNew);
    CHECK(!IsMenuCommandEnabled(menu, kHICommandNew));
    CHECK(SetMenuCommandMark(menu, kHICommandSave, kMenuCheckMark) == noErr);
    UniChar mark = 0;
    CHECK(GetMenuCommandMark(menu, kHICommandSave, &mark) == noErr);
    CHECK(mark == kMenuCheckMark);
    CHECK(SetMenuCommandMark(menu, 'none', 1) == menuItemNotFoundErr);
    // A menu that contains itself is walked once.
    SetMenuItemHierarchicalID(submenu, 1, 129);
    InsertMenu(menu, 0);
    CHECK(CountMenuItemsWithCommandID(nullptr, kHICommandOpen) == 2);
    ClearMenuBar();
    DisposeMenu(submenu);
    DisposeMenu(menu);
}

TEST_CASE("EnableMenuCommand: without a menu it reaches the application menu")
{
    CHECK(!IsMenuCommandEnabled(nullptr, kHICommandPreferences));
    EnableMenuCommand(nullptr, kHICommandPreferences);
    CHECK(IsMenuCommandEnabled(nullptr, kHICommandPreferences));
    DisableMenuCommand(nullptr, kHICommandPreferences);
    CHECK(CountMenuItemsWithCommandID(nullptr, kHICommandQuit) == 1);
}

TEST_CASE("Command keys: the item's command reaches the application; a disabled item's does not")
{
    TestWindow window("a");
    const StApplicationHandler handler(true);
    const MenuRef menu = FileMenu();
    InsertMenu(menu, 0);
    host::PressKey(kVK_ANSI_N, 'n', cmdKey);
    host::RunFor(0.2);
    CHECK(Commands() == std::vector<MenuCommand>{ kHICommandNew });
    DisableMenuItem(menu, 1);
    host::PressKey(kVK_ANSI_N, 'n', cmdKey);
    host::PressKey(kVK_ANSI_O, 'o', 0);
    host::RunFor(0.2);
    CHECK(Commands().size() == 1);
    DisableMenuItem(menu, 0);
    host::PressKey(kVK_ANSI_O, 'o', cmdKey);
    host::RunFor(0.2);
    CHECK(Commands().size() == 1);
    DisposeMenu(menu);
}

TEST_CASE("Command keys: shift and option tell items apart")
{
    TestWindow window("a");
    const StApplicationHandler handler(true);
    const MenuRef menu = NewMenu(129, P("Keys"));
    AppendMenu(menu, P("Save/S;Save All/S"));
    SetMenuItemCommandID(menu, 1, 'one ');
    SetMenuItemCommandID(menu, 2, 'two ');
    SetMenuItemModifiers(menu, 2, kMenuShiftModifier);
    InsertMenu(menu, 0);
    host::PressKey(kVK_ANSI_S, 'S', cmdKey | shiftKey);
    host::PressKey(kVK_ANSI_S, 's', cmdKey);
    host::PressKey(kVK_ANSI_S, 's', cmdKey | optionKey);
    host::RunFor(0.2);
    CHECK(Commands() == std::vector<MenuCommand>{ 'two ', 'one ' });
    DisposeMenu(menu);
}

TEST_CASE("MenuKey: an item without a handler is the answer, menu and item")
{
    const StApplicationHandler handler(false);
    const MenuRef menu = FileMenu();
    InsertMenu(menu, 0);
    CHECK(MenuKey('o') == (129 << 16 | 2));
    CHECK(MenuKey('y') == 0);
    HiliteMenu(0);
    DisposeMenu(menu);
}

TEST_CASE("Command-Q: without any menu of its own the application quits")
{
    struct User {
        static void Act(EventLoopTimerRef, void*) { host::PressKey(kVK_ANSI_Q, 'q', cmdKey); }
    };
    TestWindow window("a");
    InstallEventLoopTimer(GetMainEventLoop(), 0.1, 0, User::Act, nullptr, nullptr);
    RunApplicationEventLoop(); // ends
    CHECK(GetMBarHeight() == 22);
}

TEST_CASE("The bar: a press that is held chooses where it is released, and the events surround it")
{
    TestWindow window("a");
    const StApplicationHandler handler(true);
    const MenuRef menu = NewMenu(129, P("\024"));
    AppendMenu(menu, P("About\311;-"));
    SetMenuItemCommandID(menu, 1, kHICommandAbout);
    InsertMenu(menu, 0);
    host::PressMouse({ 10, 30 });
    host::MoveMouse({ 28, 40 });
    host::MoveMouse({ 36, 40 });
    host::ReleaseMouse({ 36, 40 });
    host::RunFor(1);
    CHECK(Commands() == std::vector<MenuCommand>{ kHICommandAbout });
    REQUIRE(MenuKinds().size() >= 4);
    CHECK(MenuKinds().front() == kEventMenuBeginTracking);
    CHECK(MenuKinds()[1] == kEventMenuOpening);
    CHECK(MenuKinds().back() == kEventMenuEndTracking);
    DisposeMenu(menu);
}

TEST_CASE(
    "The bar: a click leaves the menu open, arrows and Return choose, Escape and a click outside do not")
{
    TestWindow window("a");
    const StApplicationHandler handler(true);
    const MenuRef menu = FileMenu();
    InsertMenu(menu, 0);
    host::Click({ 10, 30 });
    host::PressKey(kVK_RightArrow, 0x1D);
    host::PressKey(kVK_DownArrow, 0x1F);
    host::PressKey(kVK_DownArrow, 0x1F);
    host::PressKey(kVK_DownArrow, 0x1F);
    host::PressKey(kVK_Return, 0x0D);
    host::RunFor(2);
    CHECK(Commands() == std::vector<MenuCommand>{ kHICommandSave });
    host::Click({ 10, 30 });
    host::PressKey(kVK_DownArrow, 0x1F);
    host::PressKey(kVK_Escape, 0x1B);
    host::RunFor(1);
    host::Click({ 10, 30 });
    host::Click({ 500, 700 });
    host::RunFor(1);
    CHECK(Commands().size() == 1);
    DisposeMenu(menu);
}

TEST_CASE("PopUpMenuSelect: the given item lies under the point, and a submenu opens beside its item")
{
    const StApplicationHandler handler(false);
    const MenuRef menu = NewMenu(140, P("")), submenu = NewMenu(141, P(""));
    AppendMenu(menu, P("One;Two;Three"));
    AppendMenu(submenu, P("Inner;More"));
    SetMenuItemHierarchicalMenu(menu, 3, submenu);
    host::PressMouse({ 305, 330 });
    host::MoveMouse({ 306, 331 });
    host::RunFor(0.05);
    struct User {
        static void Act(EventLoopTimerRef, void*) { host::ReleaseMouse({ 305, 331 }); }
    };
    InstallEventLoopTimer(GetMainEventLoop(), 1, 0, User::Act, nullptr, nullptr);
    CHECK(PopUpMenuSelect(menu, 296, 300, 2) == (140 << 16 | 2));
    struct Keys {
        static void Act(EventLoopTimerRef, void*)
        {
            host::PressKey(kVK_DownArrow, 0x1F);
            host::PressKey(kVK_RightArrow, 0x1D);
            host::PressKey(kVK_DownArrow, 0x1F);
            host::PressKey(kVK_Return, 0x0D);
        }
    };
    InstallEventLoopTimer(GetMainEventLoop(), 1, 0, Keys::Act, nullptr, nullptr);
    CHECK(PopUpMenuSelect(menu, 296, 300, 2) == (141 << 16 | 2));
    DisposeMenu(submenu);
    DisposeMenu(menu);
}

TEST_CASE("GetMenu: an absent resource is no menu")
{
    CHECK(GetMenu(4711) == nullptr);
    CHECK(GetNewMBar(4711) == nullptr);
}

TEST_CASE("GetNewMBar: the menus of an 'MBAR' from the left; one without its menu is no bar")
{
    std::string first = std::string(1, 0) + (char)0x96 + std::string(8, 0), second = first;
    second[1] = (char)0x97;
    const std::string rest("\xFF\xFF\xFF\xFF\4File\3New\0N\0\0\0", 18);
    first += rest;
    second += rest;
    const std::string bar("\0\2\0\x96\0\x97", 6), broken("\0\1\0\x98", 4);
    const auto bytes = [](const std::string& inText) {
        return foundation::Bytes((const uint8_t*)inText.data(), inText.size());
    };
    resources::ForkBuilder builder;
    builder.Add({ 'MENU', 150, 0, false, {}, bytes(first) });
    builder.Add({ 'MENU', 151, 0, false, {}, bytes(second) });
    builder.Add({ 'MBAR', 128, 0, false, {}, bytes(bar) });
    builder.Add({ 'MBAR', 129, 0, false, {}, bytes(broken) });
    std::vector<uint8_t> fork;
    REQUIRE(!builder.Build(&fork));
    ScratchFolder scratch;
    const std::string path = scratch.Write("Menus", { (const char*)fork.data(), fork.size() }).string();
    FSRef ref;
    REQUIRE(FSPathMakeRef((const UInt8*)path.c_str(), &ref, nullptr) == noErr);
    const SInt16 refNum = FSOpenResFile(&ref, fsRdPerm);
    REQUIRE(refNum > 0);
    const MenuBarHandle old = GetMenuBar(), loaded = GetNewMBar(128);
    REQUIRE(loaded);
    SetMenuBar(loaded);
    CHECK(GetMenuHandle(150));
    CHECK(Text(GetMenuHandle(151), 1) == "New");
    CHECK(GetNewMBar(129) == nullptr);
    SetMenuBar(old);
    CHECK(GetMenuHandle(150) == nullptr);
    DisposeMenuBar(loaded);
    DisposeMenuBar(old);
    CloseResFile(refNum);
}

TEST_CASE("MenuKey: without a loop that dispatches, Command-Q is the application's own item")
{
    const MenuRef menu = NewMenu(129, P("File"));
    AppendMenu(menu, P("New/N;Quit/Q"));
    SetMenuItemCommandID(menu, 2, kHICommandQuit);
    InsertMenu(menu, 0);
    CHECK(MenuKey('q') == (129 << 16 | 2));
    HiliteMenu(0);
    DeleteMenu(129);
    DisposeMenu(menu);
}

TEST_CASE("A picture of an open menu" * doctest::skip(std::getenv("LAMPBLACK_MENU_PICTURE") == nullptr))
{
    struct User {
        static void Act(EventLoopTimerRef, void*)
        {
            host::SaveScreenshot(std::getenv("LAMPBLACK_MENU_PICTURE"));
            host::PressKey(kVK_Escape, 0x1B);
        }
    };
    TestWindow window("a");
    const StApplicationHandler handler(true);
    const MenuRef apple = NewMenu(128, P("\024")), menu = FileMenu(), edit = NewMenu(130, P("Edit"));
    AppendMenu(apple, P("About\311"));
    AppendMenu(menu, P("-;Sound!\022;More;(Not now;Save As\311/S;Help<B"));
    SetMenuItemModifiers(menu, 9, kMenuShiftModifier | kMenuOptionModifier);
    AppendMenu(edit, P("Undo/Z;Cut"));
    SetMenuItemHierarchicalMenu(menu, 7, edit);
    InsertMenu(apple, 0);
    InsertMenu(menu, 0);
    InsertMenu(edit, 0);
    InstallEventLoopTimer(GetMainEventLoop(), 1.5, 0, User::Act, nullptr, nullptr);
    host::Click({ 10, 30 });
    host::PressKey(kVK_RightArrow, 0x1D);
    for (int i = 0; i < 5; ++i)
        host::PressKey(kVK_DownArrow, 0x1F);
    host::PressKey(kVK_RightArrow, 0x1D);
    host::RunFor(3);
    DisposeMenu(apple);
    DisposeMenu(menu);
    DisposeMenu(edit);
}
