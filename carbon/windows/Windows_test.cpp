// Life, order, activation, bounds and properties of windows.
#include "TestWindow.h"

#include <doctest/doctest.h>

#include <cstring>
#include <string>

using namespace lampblack::windows;
using Strings = std::vector<std::string>;

namespace {

bool Same(const Rect& a, const Rect& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

WindowRef Foreign()
{
    static char notAWindow[512];
    return reinterpret_cast<WindowRef>(notAWindow);
}

} // namespace

TEST_CASE("CreateNewWindow: a new window is hidden, in front, and has its bounds, class and attributes")
{
    TestWindow window("a", kDocumentWindowClass, TestWindow::kDocument, { 60, 50, 260, 350 }, false);
    CHECK(window.Status() == noErr);
    CHECK(!IsWindowVisible(window));
    CHECK(GetWindowList() == window);
    CHECK(Same(window.Content(), { 60, 50, 260, 350 }));
    WindowClass windowClass = 0;
    WindowAttributes attributes = 0;
    CHECK(GetWindowClass(window, &windowClass) == noErr);
    CHECK(GetWindowAttributes(window, &attributes) == noErr);
    CHECK(windowClass == kDocumentWindowClass);
    CHECK(attributes == TestWindow::kDocument);
    CHECK(GetWindowFromPort(GetWindowPort(window)) == window);
    Rect port;
    CHECK(Same(*GetWindowPortBounds(window, &port), { 0, 0, 200, 300 }));
}

TEST_CASE("CreateNewWindow: an unknown class, attributes that it cannot have and bad arguments are refused")
{
    const Rect bounds = { 50, 50, 100, 100 }, empty = { 50, 50, 50, 100 };
    WindowRef window = Foreign();
    CHECK(CreateNewWindow(77, 0, &bounds, &window) == errUnrecognizedWindowClass);
    CHECK(window == nullptr);
    CHECK(CreateNewWindow(kAlertWindowClass, kWindowCloseBoxAttribute, &bounds, &window) ==
          errUnsupportedWindowAttributesForClass);
    CHECK(CreateNewWindow(kDocumentWindowClass, 0, nullptr, &window) == paramErr);
    CHECK(CreateNewWindow(kDocumentWindowClass, 0, &empty, &window) == paramErr);
    CHECK(CreateNewWindow(kDocumentWindowClass, 0, &bounds, nullptr) == paramErr);
}

TEST_CASE("Every call: a null, foreign or disposed window is errInvalidWindowRef or nothing")
{
    WindowRef disposed = nullptr;
    {
        TestWindow window("gone");
        disposed = window;
    }
    for (WindowRef window : { (WindowRef) nullptr, Foreign(), disposed }) {
        Rect bounds = { 1, 2, 3, 4 };
        WindowClass windowClass;
        ByteCount size;
        CHECK(!IsValidWindowPtr(window));
        CHECK(GetWindowBounds(window, kWindowContentRgn, &bounds) == errInvalidWindowRef);
        CHECK(SetWindowBounds(window, kWindowContentRgn, &bounds) == errInvalidWindowRef);
        CHECK(GetWindowClass(window, &windowClass) == errInvalidWindowRef);
        CHECK(ReleaseWindow(window) == errInvalidWindowRef);
        CHECK(RetainWindow(window) == errInvalidWindowRef);
        CHECK(GetWindowPropertySize(window, 'test', 'size', &size) == errInvalidWindowRef);
        CHECK(InvalWindowRect(window, &bounds) == errInvalidWindowRef);
        CHECK(RunAppModalLoopForWindow(window) == errInvalidWindowRef);
        CHECK(RepositionWindow(window, nullptr, kWindowCenterOnMainScreen) == errInvalidWindowRef);
        CHECK(GetWindowPort(window) == nullptr);
        CHECK(GetWindowEventTarget(window) == nullptr);
        CHECK(GetNextWindow(window) == nullptr);
        ShowWindow(window);
        SelectWindow(window);
        HideWindow(window);
        DisposeWindow(window);
        BeginUpdate(window);
        EndUpdate(window);
        CHECK(!IsWindowVisible(window));
    }
}

TEST_CASE("ReleaseWindow: the window lives until as many calls released as retained it")
{
    TestWindow window("a");
    RetainWindow(window);
    CHECK(GetWindowRetainCount(window) == 2);
    ReleaseWindow(window);
    CHECK(IsValidWindowPtr(window));
    ReleaseWindow(window);
    CHECK(!IsValidWindowPtr(window));
}

TEST_CASE("DisposeWindow: inside the window's own handler the event still ends well")
{
    struct Closer {
        static OSStatus Handle(EventHandlerCallRef inCall, EventRef inEvent, void* inWindow)
        {
            DisposeWindow(static_cast<WindowRef>(inWindow));
            return CallNextEventHandler(inCall, inEvent);
        }
    };
    TestWindow window("a");
    const EventTypeSpec type = { kEventClassWindow, kEventWindowClickContentRgn };
    InstallEventHandler(GetWindowEventTarget(window), Closer::Handle, 1, &type, (WindowRef)window, nullptr);
    lampblack::host::Click({ 200, 200 });
    lampblack::host::RunFor(0.2);
    CHECK(!IsValidWindowPtr(window));
}

TEST_CASE("SelectWindow: the old front window hears deactivate before the new one hears activate")
{
    TestWindow back("back"), front("front");
    back.Hear({ kEventWindowActivated, kEventWindowDeactivated, kEventWindowFocusAcquired });
    front.Hear({ kEventWindowActivated, kEventWindowDeactivated, kEventWindowFocusRelinquish });
    CHECK(IsWindowActive(front));
    Log().clear();
    SelectWindow(back);
    CHECK(Log() == Strings{ "front 201", "front 6", "back 5", "back 200" });
    CHECK(FrontWindow() == back);
    CHECK(ActiveNonFloatingWindow() == back);
    CHECK(GetUserFocusWindow() == back);
}

TEST_CASE("ShowWindow, HideWindow: events surround the change and the next window becomes active")
{
    TestWindow back("back");
    TestWindow front("front", kDocumentWindowClass, TestWindow::kDocument, { 120, 120, 200, 200 }, false);
    back.Hear({ kEventWindowActivated, kEventWindowDeactivated });
    front.Hear({ kEventWindowShowing, kEventWindowShown, kEventWindowHiding, kEventWindowHidden,
                 kEventWindowActivated, kEventWindowDeactivated });
    Log().clear();
    ShowWindow(front);
    CHECK(Log() == Strings{ "front 22", "front 24", "back 6", "front 5" });
    Log().clear();
    HideWindow(front);
    CHECK(Log() == Strings{ "front 23", "front 25", "front 6", "back 5" });
}

TEST_CASE("Floating windows: they lie above documents, stay active beside them and do not take the focus")
{
    TestWindow document("document");
    TestWindow floating("floating", kFloatingWindowClass, kWindowStandardHandlerAttribute);
    CHECK(IsWindowActive(document));
    CHECK(IsWindowActive(floating));
    SelectWindow(document);
    CHECK(FrontWindow() == floating);
    CHECK(FrontNonFloatingWindow() == document);
    CHECK(GetUserFocusWindow() == document);
    CHECK(SetUserFocusWindow(floating) == noErr);
    CHECK(GetUserFocusWindow() == floating);
    HideWindow(floating);
    CHECK(GetUserFocusWindow() == document);
}

TEST_CASE("SendBehind, BringToFront: order changes within the layer and activation follows")
{
    TestWindow a("a"), b("b"), c("c");
    CHECK(GetNextWindow(c) == b);
    SendBehind(c, nullptr);
    CHECK(FrontWindow() == b);
    CHECK(IsWindowActive(b));
    CHECK(GetPreviousWindow(c) == a);
    SendBehind(b, a);
    CHECK(GetNextWindow(a) == b);
    BringToFront(c);
    CHECK(GetFrontWindowOfClass(kDocumentWindowClass, true) == c);
    CHECK(GetNextWindowOfClass(c, kDocumentWindowClass, true) == a);
    CHECK(GetNextWindowOfClass(c, kFloatingWindowClass, true) == nullptr);
}

TEST_CASE("SetWindowBounds: the events carry old and new bounds, and a handler may amend them")
{
    struct Handler {
        static OSStatus Widen(EventHandlerCallRef, EventRef inEvent, void*)
        {
            Rect bounds;
            GetEventParameter(inEvent, kEventParamCurrentBounds, typeQDRectangle, nullptr, sizeof bounds,
                              nullptr, &bounds);
            bounds.right = (short)(bounds.left + 500);
            SetEventParameter(inEvent, kEventParamCurrentBounds, typeQDRectangle, sizeof bounds, &bounds);
            return noErr;
        }
    };
    TestWindow window("a");
    const EventTypeSpec type = { kEventClassWindow, kEventWindowBoundsChanging };
    InstallEventHandler(GetWindowEventTarget(window), Handler::Widen, 1, &type, nullptr, nullptr);
    const Rect wanted = { 150, 160, 250, 260 };
    CHECK(SetWindowBounds(window, kWindowContentRgn, &wanted) == noErr);
    CHECK(Same(window.Content(), { 150, 160, 250, 660 }));
    CHECK(SetWindowBounds(window, kWindowTitleBarRgn, &wanted) == errWindowRegionCodeInvalid);
}

TEST_CASE("GetWindowBounds: the structure holds the content and a title bar above it")
{
    TestWindow window("a");
    Rect structure, title;
    CHECK(GetWindowBounds(window, kWindowStructureRgn, &structure) == noErr);
    CHECK(GetWindowBounds(window, kWindowTitleBarRgn, &title) == noErr);
    CHECK(structure.top < 100);
    CHECK(structure.bottom >= 300);
    CHECK(title.bottom <= 100);
    CHECK(SetWindowBounds(window, kWindowStructureRgn, &structure) == noErr);
    CHECK(Same(window.Content(), { 100, 100, 300, 400 }));
    CHECK(GetWindowBounds(window, 99, &title) == errWindowRegionCodeInvalid);
}

TEST_CASE("MoveWindow, SizeWindow: place and size change alone, and local coordinates follow the place")
{
    TestWindow window("a");
    MoveWindow(window, 210, 220, false);
    CHECK(Same(window.Content(), { 220, 210, 420, 510 }));
    SizeWindow(window, 50, 60, true);
    CHECK(Same(window.Content(), { 220, 210, 280, 260 }));
    SetPortWindowPort(window);
    Point point = { 0, 0 };
    LocalToGlobal(&point);
    CHECK(point.h == 210);
    CHECK(point.v == 220);
}

TEST_CASE("SetWindowProperty: data, size and attributes come back, and an absent one is told")
{
    TestWindow window("a");
    const SInt32 value = 4711;
    SInt32 read = 0;
    ByteCount size = 0;
    OptionBits attributes = 0;
    CHECK(GetWindowProperty(window, 'test', 'numb', 4, &size, &read) == errWindowPropertyNotFound);
    CHECK(SetWindowProperty(window, 'test', 'numb', 4, &value) == noErr);
    CHECK(GetWindowProperty(window, 'test', 'numb', 4, &size, &read) == noErr);
    CHECK(read == 4711);
    CHECK(size == 4);
    CHECK(GetWindowPropertySize(window, 'test', 'numb', &size) == noErr);
    CHECK(ChangeWindowPropertyAttributes(window, 'test', 'numb', kWindowPropertyPersistent, 0) == noErr);
    CHECK(GetWindowPropertyAttributes(window, 'test', 'numb', &attributes) == noErr);
    CHECK(attributes == kWindowPropertyPersistent);
    char small[2] = {};
    CHECK(GetWindowProperty(window, 'test', 'numb', 2, &size, small) == noErr);
    CHECK(size == 4);
    CHECK(RemoveWindowProperty(window, 'test', 'numb') == noErr);
    CHECK(RemoveWindowProperty(window, 'test', 'numb') == errWindowPropertyNotFound);
}

TEST_CASE("SetWTitle: the title comes back; no title for no window")
{
    TestWindow window("a");
    Str255 title;
    SetWTitle(window, (ConstStr255Param) "\005Hello");
    GetWTitle(window, title);
    CHECK(std::memcmp(title, "\005Hello", 6) == 0);
    GetWTitle(nullptr, title);
    CHECK(title[0] == 0);
}

TEST_CASE("RepositionWindow: centred is centred, alert position is higher, a missing parent is refused")
{
    TestWindow window("a");
    CHECK(RepositionWindow(window, nullptr, kWindowCenterOnMainScreen) == noErr);
    const Rect centred = window.Content();
    CHECK(std::abs(centred.left + centred.right - 1024) <= 1);
    CHECK(RepositionWindow(window, nullptr, kWindowAlertPositionOnMainScreen) == noErr);
    CHECK(window.Content().top < centred.top);
    CHECK(window.Content().left == centred.left);
    CHECK(RepositionWindow(window, nullptr, kWindowCenterOnParentWindow) == paramErr);
    CHECK(RepositionWindow(window, nullptr, 0) == paramErr);
    CHECK(RepositionWindow(window, nullptr, 11) == paramErr);
    TestWindow other("b");
    CHECK(RepositionWindow(other, window, kWindowCenterOnParentWindow) == noErr);
    CHECK(Same(other.Content(), window.Content()));
}

TEST_CASE("ConstrainWindowToScreen: a window beyond the edge comes back; calculating alone moves nothing")
{
    TestWindow window("a", kDocumentWindowClass, TestWindow::kDocument, { 700, 1000, 900, 1300 });
    Rect structure;
    CHECK(ConstrainWindowToScreen(window, kWindowStructureRgn, kWindowConstrainCalcOnly, nullptr,
                                  &structure) == noErr);
    CHECK(window.Content().left == 1000);
    CHECK(structure.right <= 1024);
    CHECK(ConstrainWindowToScreen(window, kWindowStructureRgn, 0, nullptr, nullptr) == noErr);
    CHECK(window.Content().right <= 1024);
    CHECK(window.Content().bottom <= 768);
    const Rect partly = { 200, 900, 400, 1200 };
    SetWindowBounds(window, kWindowContentRgn, &partly);
    CHECK(ConstrainWindowToScreen(window, kWindowStructureRgn, kWindowConstrainAllowPartial, nullptr,
                                  nullptr) == noErr);
    CHECK(Same(window.Content(), partly));
    const Rect huge = { 100, 100, 1100, 1500 };
    SetWindowBounds(window, kWindowContentRgn, &huge);
    CHECK(ConstrainWindowToScreen(window, kWindowStructureRgn, 0, nullptr, nullptr) ==
          errWindowDoesNotFitOnscreen);
    CHECK(ConstrainWindowToScreen(window, kWindowStructureRgn, kWindowConstrainMayResize, nullptr, nullptr) ==
          noErr);
    CHECK(window.Content().right - window.Content().left <= 1024);
}

TEST_CASE("ZoomWindowIdeal: out to the ideal size and in to where the user had it")
{
    TestWindow window("a");
    Point ideal = { 500, 700 };
    CHECK(!IsWindowInStandardState(window, &ideal, nullptr));
    CHECK(ZoomWindowIdeal(window, inZoomOut, &ideal) == noErr);
    CHECK(window.Content().right - window.Content().left == 700);
    CHECK(IsWindowInStandardState(window, &ideal, nullptr));
    CHECK(ZoomWindowIdeal(window, inZoomIn, &ideal) == noErr);
    CHECK(Same(window.Content(), { 100, 100, 300, 400 }));
    CHECK(ZoomWindowIdeal(window, inContent, &ideal) == paramErr);
}

TEST_CASE("CollapseWindow: the title bar stays, the content is gone, the port keeps its bounds")
{
    TestWindow window("a");
    window.Hear({ kEventWindowCollapsing, kEventWindowCollapsed, kEventWindowExpanded });
    Log().clear();
    CHECK(IsWindowCollapsable(window));
    CHECK(CollapseWindow(window, true) == noErr);
    CHECK(IsWindowCollapsed(window));
    Rect structure, port;
    GetWindowBounds(window, kWindowStructureRgn, &structure);
    GetWindowBounds(window, kWindowGlobalPortRgn, &port);
    CHECK(structure.bottom <= 100);
    CHECK(Same(port, { 100, 100, 300, 400 }));
    CHECK(CollapseWindow(window, false) == noErr);
    CHECK(Log() == Strings{ "a 86", "a 67", "a 70" });
    TestWindow modal("m", kModalWindowClass, 0);
    CHECK(CollapseWindow(modal, true) == paramErr);
}

TEST_CASE("TransitionWindow: it shows and hides; an effect that does not know the action is refused")
{
    TestWindow window("a", kDocumentWindowClass, TestWindow::kDocument, { 100, 100, 300, 400 }, false);
    CHECK(TransitionWindow(window, kWindowZoomTransitionEffect, kWindowShowTransitionAction, nullptr) ==
          noErr);
    CHECK(IsWindowVisible(window));
    CHECK(TransitionWindow(window, kWindowZoomTransitionEffect, kWindowHideTransitionAction, nullptr) ==
          noErr);
    CHECK(!IsWindowVisible(window));
    CHECK(TransitionWindow(window, kWindowSlideTransitionEffect, kWindowMoveTransitionAction, nullptr) ==
          paramErr);
    CHECK(TransitionWindow(window, 9, kWindowShowTransitionAction, nullptr) == paramErr);
}

TEST_CASE("ShowSheetWindow: it hangs from its parent, moves with it and keeps the mouse from it")
{
    TestWindow parent("parent");
    TestWindow sheet("sheet", kSheetWindowClass, kWindowStandardHandlerAttribute, { 0, 0, 80, 200 }, false);
    CHECK(ShowSheetWindow(sheet, parent) == noErr);
    CHECK(Same(sheet.Content(), { 100, 150, 180, 350 }));
    CHECK(FrontWindow() == sheet);
    MoveWindow(parent, 300, 200, false);
    CHECK(Same(sheet.Content(), { 200, 350, 280, 550 }));
    parent.Hear({ kEventWindowClickContentRgn });
    Log().clear();
    lampblack::host::Click({ 390, 400 });
    lampblack::host::RunFor(0.1);
    CHECK(Log().empty());
    WindowRef owner = nullptr;
    CHECK(GetSheetWindowParent(sheet, &owner) == noErr);
    CHECK(owner == parent);
    CHECK(HideSheetWindow(sheet) == noErr);
    CHECK(IsWindowActive(parent));
    CHECK(ShowSheetWindow(parent, sheet) == paramErr);
}

TEST_CASE(
    "SetWindowTitleWithCFString: the title is that of SetWTitle; what Mac Roman lacks is a question mark")
{
    TestWindow window("a");
    const CFStringRef title =
        CFStringCreateWithCString(nullptr, "caf\xC3\xA9 \xE2\x86\x92", kCFStringEncodingUTF8);
    CHECK(SetWindowTitleWithCFString(window, title) == noErr);
    Str255 roman;
    GetWTitle(window, roman);
    CHECK(std::string(reinterpret_cast<char*>(roman) + 1, roman[0]) == "caf\x8E ?");
    CFStringRef copy = nullptr;
    CHECK(CopyWindowTitleAsCFString(window, &copy) == noErr);
    CHECK(CFStringGetLength(copy) == 6);
    CHECK(CFStringGetCharacterAtIndex(copy, 3) == 0xE9);
    CHECK(SetWindowTitleWithCFString(window, nullptr) == paramErr);
    CHECK(SetWindowTitleWithCFString(nullptr, title) == errInvalidWindowRef);
    CHECK(CopyWindowTitleAsCFString(Foreign(), &copy) == errInvalidWindowRef);
    CFRelease(copy);
    CFRelease(title);
}

TEST_CASE("InstallStandardEventHandler: a window that had none closes by its close box")
{
    TestWindow window("a", kDocumentWindowClass, kWindowCloseBoxAttribute);
    CHECK(InstallStandardEventHandler(nullptr) == paramErr);
    CHECK(InstallStandardEventHandler(GetApplicationEventTarget()) == noErr);
    CHECK(InstallStandardEventHandler(GetWindowEventTarget(window)) == noErr);
    WindowAttributes attributes = 0;
    GetWindowAttributes(window, &attributes);
    CHECK((attributes & kWindowStandardHandlerAttribute) != 0);
    const RgnHandle box = NewRgn();
    Rect bounds;
    CHECK(GetWindowRegion(window, kWindowCloseBoxRgn, box) == noErr);
    GetRegionBounds(box, &bounds);
    DisposeRgn(box);
    lampblack::host::Click({ static_cast<short>((bounds.top + bounds.bottom) / 2),
                             static_cast<short>((bounds.left + bounds.right) / 2) });
    lampblack::host::RunFor(0.5);
    CHECK_FALSE(IsValidWindowPtr(window));
}
