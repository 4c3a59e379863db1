// Every kind of reference, null, disposed of and foreign, given to many entries of its manager: each answers
// the published error or nothing, and memory that is gone is never touched (the sanitizer run sees to that).
#include <Carbon/Carbon.h>
#include <doctest/doctest.h>
#include <lampblack/host.h>

#include <vector>

namespace {

const Rect kBounds = { 100, 100, 300, 400 };
char gForeign[4096];

template <typename Reference>
std::vector<Reference> BadOnes(Reference inDisposed)
{
    return { nullptr, inDisposed, reinterpret_cast<Reference>(gForeign) };
}

WindowRef NewTestWindow()
{
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, kWindowStandardDocumentAttributes | kWindowStandardHandlerAttribute,
                    &kBounds, &window);
    return window;
}

} // namespace

TEST_CASE("Window Manager: null, disposed and foreign windows are invalid")
{
    const WindowRef gone = NewTestWindow();
    ReleaseWindow(gone);
    for (const WindowRef window : BadOnes(gone)) {
        Rect r = kBounds;
        WindowClass windowClass;
        WindowAttributes attributes;
        UInt32 number = 0;
        CHECK_FALSE(IsValidWindowPtr(window));
        CHECK(GetWindowClass(window, &windowClass) == errInvalidWindowRef);
        CHECK(GetWindowAttributes(window, &attributes) == errInvalidWindowRef);
        CHECK(GetWindowBounds(window, kWindowContentRgn, &r) == errInvalidWindowRef);
        CHECK(SetWindowBounds(window, kWindowContentRgn, &r) == errInvalidWindowRef);
        CHECK(SetWindowProperty(window, 'test', 'test', 4, &number) == errInvalidWindowRef);
        CHECK(GetWindowProperty(window, 'test', 'test', 4, nullptr, &number) == errInvalidWindowRef);
        CHECK(RepositionWindow(window, nullptr, kWindowCenterOnMainScreen) == errInvalidWindowRef);
        CHECK(ConstrainWindowToScreen(window, kWindowStructureRgn, 0, nullptr, nullptr) ==
              errInvalidWindowRef);
        CHECK(CollapseWindow(window, true) == errInvalidWindowRef);
        CHECK(InvalWindowRect(window, &r) == errInvalidWindowRef);
        CHECK(ReleaseWindow(window) == errInvalidWindowRef);
        CHECK(GetWindowPort(window) == nullptr);
        CHECK_FALSE(IsWindowVisible(window));
        CHECK_FALSE(IsWindowCollapsed(window));
        CHECK(GetNextWindow(window) == nullptr);
        CHECK(GetWindowEventTarget(window) == nullptr);
        CHECK(GetWRefCon(window) == 0);
        ShowWindow(window);
        HideWindow(window);
        SelectWindow(window);
        SendBehind(window, nullptr);
        MoveWindow(window, 1, 1, true);
        SizeWindow(window, 10, 10, true);
        SetWTitle(window, reinterpret_cast<ConstStr255Param>("\1x"));
        SetPortWindowPort(window);
        BeginUpdate(window);
        EndUpdate(window);
        DisposeWindow(window);
        CHECK(RunAppModalLoopForWindow(window) == errInvalidWindowRef);
    }
}

TEST_CASE("Control Manager: null, disposed and foreign controls and windows are refused")
{
    const WindowRef window = NewTestWindow();
    ControlRef root = nullptr;
    REQUIRE(CreateRootControl(window, &root) == noErr);
    const Rect r = { 10, 10, 30, 100 };
    const ControlRef gone =
        NewControl(window, &r, reinterpret_cast<ConstStr255Param>("\1x"), true, 0, 0, 1, 368, 0);
    REQUIRE(gone);
    DisposeControl(gone);
    for (const ControlRef control : BadOnes(gone)) {
        SInt32 value = 0;
        Size size = 0;
        ControlID id = {};
        ControlRef other = nullptr;
        Str255 title;
        Rect bounds;
        CHECK(GetControlData(control, 0, 'text', 4, &value, &size) != noErr);
        CHECK(SetControlData(control, 0, 'text', 4, &value) != noErr);
        CHECK(GetControlDataSize(control, 0, 'text', &size) != noErr);
        CHECK(SetControlProperty(control, 'test', 'test', 4, &value) != noErr);
        CHECK(GetControlProperty(control, 'test', 'test', 4, nullptr, &value) != noErr);
        CHECK(SetControlID(control, &id) != noErr);
        CHECK(GetControlID(control, &id) != noErr);
        CHECK(EmbedControl(control, root) != noErr);
        CHECK(EmbedControl(root, control) != noErr);
        CHECK(GetSuperControl(control, &other) != noErr);
        CHECK(ActivateControl(control) != noErr);
        CHECK(EnableControl(control) != noErr);
        CHECK((SetKeyboardFocus(window, control, kControlFocusNextPart) != noErr) == (control != nullptr));
        CHECK(GetControlOwner(control) == nullptr);
        CHECK(GetControlEventTarget(control) == nullptr);
        CHECK_FALSE(IsControlVisible(control));
        CHECK_FALSE(IsControlEnabled(control));
        CHECK(GetControlValue(control) == 0);
        CHECK(GetControl32BitMaximum(control) == 0);
        CHECK(HandleControlClick(control, { 15, 15 }, 0, nullptr) == 0);
        CHECK(HandleControlKey(control, 0, 'a', 0) == 0);
        GetControlTitle(control, title);
        GetControlBounds(control, &bounds);
        SetControlValue(control, 1);
        SetControlTitle(control, reinterpret_cast<ConstStr255Param>("\1x"));
        ShowControl(control);
        HideControl(control);
        MoveControl(control, 1, 1);
        SizeControl(control, 10, 10);
        HiliteControl(control, 10);
        Draw1Control(control);
        DisposeControl(control);
    }
    ReleaseWindow(window);
    ControlRef out = nullptr;
    const ControlID id = { 'test', 1 };
    for (const WindowRef bad : BadOnes(window)) {
        CHECK(CreateRootControl(bad, &out) != noErr);
        CHECK(GetRootControl(bad, &out) != noErr);
        CHECK(GetControlByID(bad, &id, &out) != noErr);
        CHECK(GetKeyboardFocus(bad, &out) != noErr);
        CHECK(AdvanceKeyboardFocus(bad) != noErr);
        CHECK(NewControl(bad, &r, reinterpret_cast<ConstStr255Param>("\1x"), true, 0, 0, 1, 368, 0) ==
              nullptr);
        CHECK(FindControlUnderMouse({ 1, 1 }, bad, nullptr) == nullptr);
        DrawControls(bad);
        UpdateControls(bad, nullptr);
        KillControls(bad);
        IdleControls(bad);
    }
}

TEST_CASE("Carbon Event Manager: null, released and foreign events, handlers and timers are refused")
{
    EventRef gone = nullptr;
    REQUIRE(CreateEvent(nullptr, 'test', 1, 0, kEventAttributeNone, &gone) == noErr);
    ReleaseEvent(gone);
    for (const EventRef event : BadOnes(gone)) {
        UInt32 value = 0;
        CHECK(GetEventClass(event) == 0);
        CHECK(GetEventKind(event) == 0);
        CHECK(SetEventParameter(event, 'test', typeUInt32, 4, &value) != noErr);
        CHECK(GetEventParameter(event, 'test', typeUInt32, nullptr, 4, nullptr, &value) != noErr);
        CHECK(SendEventToEventTarget(event, GetApplicationEventTarget()) != noErr);
        CHECK(PostEventToQueue(GetMainEventQueue(), event, kEventPriorityStandard) != noErr);
        CHECK(CopyEvent(event) == nullptr);
        CHECK_FALSE(IsEventInQueue(GetMainEventQueue(), event));
        ReleaseEvent(event);
    }
    EventLoopTimerRef timer = nullptr;
    InstallEventLoopTimer(
        GetCurrentEventLoop(), 1, 1, [](EventLoopTimerRef, void*) {}, nullptr, &timer);
    RemoveEventLoopTimer(timer);
    for (const EventLoopTimerRef bad : BadOnes(timer)) {
        CHECK(SetEventLoopTimerNextFireTime(bad, 1) != noErr);
        CHECK(RemoveEventLoopTimer(bad) != noErr);
    }
    const EventTypeSpec type = { 'test', 1 };
    EventHandlerRef handler = nullptr;
    const auto ignore = [](EventHandlerCallRef, EventRef, void*) -> OSStatus { return eventNotHandledErr; };
    InstallEventHandler(GetApplicationEventTarget(), ignore, 1, &type, nullptr, &handler);
    RemoveEventHandler(handler);
    for (const EventHandlerRef bad : BadOnes(handler)) {
        CHECK(RemoveEventHandler(bad) != noErr);
        CHECK(AddEventTypesToHandler(bad, 1, &type) != noErr);
    }
    for (const EventTargetRef bad : BadOnes(EventTargetRef(nullptr)))
        CHECK(InstallEventHandler(bad, ignore, 1, &type, nullptr, nullptr) != noErr);
    CHECK(InstallEventHandler(GetApplicationEventTarget(), nullptr, 1, &type, nullptr, nullptr) != noErr);
    CHECK(CallNextEventHandler(nullptr, nullptr) != noErr);
}

TEST_CASE("QuickDraw: null, disposed and foreign ports, worlds and regions do nothing")
{
    const CGrafPtr gone = CreateNewPort();
    DisposePort(gone);
    for (const CGrafPtr port : BadOnes(gone)) {
        Rect r = kBounds;
        CHECK_FALSE(IsValidPort(port));
        SetPort(port);
        PaintRect(&kBounds);
        LineTo(10, 10);
        DrawString(reinterpret_cast<ConstStr255Param>("\4text"));
        GetPortBounds(port, &r);
        DisposePort(port);
        DisposeGWorld(port);
        CHECK(GetGWorldPixMap(port) == nullptr);
    }
    const RgnHandle region = NewRgn(), good = NewRgn();
    DisposeRgn(region);
    for (const RgnHandle bad : BadOnes(region)) {
        Rect r;
        SetRectRgn(bad, 0, 0, 10, 10);
        UnionRgn(bad, good, good);
        CopyRgn(bad, good);
        OffsetRgn(bad, 1, 1);
        GetRegionBounds(bad, &r);
        CHECK_FALSE(PtInRgn({ 1, 1 }, bad));
        DisposeRgn(bad);
    }
    DisposeRgn(good);
    LockPixels(nullptr);
    UnlockPixels(nullptr);
    CopyBits(nullptr, nullptr, &kBounds, &kBounds, srcCopy, nullptr);
}

TEST_CASE("Menu Manager: null, disposed and foreign menus do nothing")
{
    const MenuRef gone = NewMenu(200, reinterpret_cast<ConstStr255Param>("\1M"));
    REQUIRE(gone);
    DisposeMenu(gone);
    for (const MenuRef menu : BadOnes(gone)) {
        Str255 text;
        CHECK(CountMenuItems(menu) == 0);
        CHECK(GetMenuID(menu) == 0);
        AppendMenu(menu, reinterpret_cast<ConstStr255Param>("\1x"));
        InsertMenu(menu, 0);
        EnableMenuItem(menu, 1);
        CheckMenuItem(menu, 1, true);
        GetMenuItemText(menu, 1, text);
        DeleteMenuItem(menu, 1);
        CHECK(PopUpMenuSelect(menu, 10, 10, 1) == 0);
        DisposeMenu(menu);
    }
}

TEST_CASE("TextEdit and dialogs: null, disposed and foreign references do nothing")
{
    const WindowRef window = NewTestWindow();
    SetPortWindowPort(window);
    const Rect r = { 0, 0, 50, 100 };
    const TEHandle gone = TENew(&r, &r);
    REQUIRE(gone);
    TEDispose(gone);
    for (const TEHandle te : { TEHandle(nullptr), gone, reinterpret_cast<TEHandle>(gForeign) }) {
        TEKey('a', te);
        TESetText("abc", 3, te);
        TESetSelect(0, 3, te);
        TEClick({ 1, 1 }, false, te);
        TEIdle(te);
        TECut(te);
        TEPaste(te);
        TEUpdate(&r, te);
        TEDispose(te);
    }
    ReleaseWindow(window);
    for (const DialogRef dialog : { DialogRef(nullptr), reinterpret_cast<DialogRef>(gForeign) }) {
        DialogItemType type;
        Handle item = nullptr;
        Rect box;
        CHECK(CountDITL(dialog) == 0);
        CHECK(GetDialogWindow(dialog) == nullptr);
        GetDialogItem(dialog, 1, &type, &item, &box);
        CHECK(item == nullptr);
        DrawDialog(dialog);
        DisposeDialog(dialog);
    }
}

TEST_CASE("Memory and Resource Managers: null, disposed and foreign handles leave their errors")
{
    const Handle gone = NewHandle(10);
    DisposeHandle(gone);
    for (const Handle handle : { Handle(nullptr), gone, reinterpret_cast<Handle>(gForeign) }) {
        HLock(handle);
        CHECK(MemError() != noErr);
        CHECK(GetHandleSize(handle) == 0);
        SetHandleSize(handle, 5);
        CHECK(MemError() != noErr);
        DisposeHandle(handle);
        CHECK(MemError() != noErr);
        ReleaseResource(handle);
        CHECK(ResError() == resNotFound);
        DetachResource(handle);
        CHECK(ResError() == resNotFound);
    }
    CHECK(NewHandle(-1) == nullptr);
    CHECK(MemError() != noErr);
    CloseResFile(12345);
    CHECK(ResError() == resFNotFound);
    UseResFile(12345);
    CHECK(ResError() == resFNotFound);
}
