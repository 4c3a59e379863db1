// Windows and controls from resources, and CWindow's dispatch of events.
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

#include "Interpose.h"

using namespace lampblack::host;

namespace {

struct Call {
    std::string fName;
    SInt32 fArgument;
    bool operator==(const Call&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Call& inCall)
{
    return out << inCall.fName << ' ' << inCall.fArgument;
}

std::vector<Call> gCalls;
std::vector<std::pair<UInt32, UInt32>> gInstalledEvents; // of the longest list installed so far
int gMoves = 0, gReposition = -1;

// A window that notes what reaches it.
struct TestWindow : CWindow {
    explicit TestWindow(long inID = 128) : CWindow(inID, kDocumentWindowClass) {}
    TestWindow(long inID, unsigned long inClass) : CWindow(inID, inClass) {}

    OSStatus DoControlHit(EventRef inEvent) override
    {
        SInt16 part = 0;
        GetEventParameter(inEvent, kEventParamControlPart, typeControlPartCode, nullptr, sizeof part, nullptr,
                          &part);
        gCalls.push_back({ "hit", GetControlID(GetCarbonEventControl(inEvent)) });
        gCalls.push_back({ "part", part });
        return noErr;
    }
    OSStatus DoControlNoTrackHit(EventRef inEvent) override
    {
        gCalls.push_back({ "no-track", GetControlID(GetCarbonEventControl(inEvent)) });
        return eventNotHandledErr;
    }
    OSStatus DoWindowShowing(EventRef) const override
    {
        gCalls.push_back({ "showing", 0 });
        return noErr;
    }
    OSStatus DoControlTextCutCopyPasteValidation(EventRef) override
    {
        gCalls.push_back({ "validation", 0 });
        return noErr;
    }
    OSStatus DoWindowFocusChange(EventRef, ControlRef inOld, ControlRef inNew) override
    {
        gCalls.push_back({ "focus", GetControlID(inOld) * 10000 + GetControlID(inNew) });
        return noErr;
    }
    void Timer() override { gCalls.push_back({ "timer", 0 }); }
};

OSStatus Send(CWindow& inWindow, UInt32 inClass, UInt32 inKind)
{
    EventRef event = nullptr;
    CreateEvent(nullptr, inClass, inKind, GetCurrentEventTime(), kEventAttributeNone, &event);
    const OSStatus result = CWindowEventHandler(nullptr, event, &inWindow);
    ReleaseEvent(event);
    return result;
}

OSStatus SendCommand(CWindow& inWindow, UInt32 inKind, UInt32 inCommand)
{
    EventRef event = nullptr;
    CreateEvent(nullptr, kEventClassCommand, inKind, GetCurrentEventTime(), kEventAttributeNone, &event);
    HICommand command = {};
    command.commandID = inCommand;
    SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof command, &command);
    const OSStatus result = CWindowEventHandler(nullptr, event, &inWindow);
    ReleaseEvent(event);
    return result;
}

Point CentreOf(CWindow& inWindow, SInt32 inID)
{
    Rect bounds, window;
    GetControlBounds(GetControlByID(inWindow.fWindow, inID), &bounds);
    GetWindowPortGlobalBounds(inWindow.fWindow, &window);
    return { static_cast<short>(window.top + (bounds.top + bounds.bottom) / 2),
             static_cast<short>(window.left + (bounds.left + bounds.right) / 2) };
}

struct Toolkit {
    Toolkit()
    {
        InitializeMacOSHelpers();
        gCalls.clear();
    }
};

} // namespace

LAMPBLACK_INTERPOSE OSStatus InstallEventHandler(EventTargetRef target, EventHandlerUPP handler,
                                                 ItemCount count, const EventTypeSpec* list, void* data,
                                                 EventHandlerRef* out)
{
    if (count >= gInstalledEvents.size()) {
        gInstalledEvents.clear();
        for (ItemCount i = 0; i < count; ++i)
            gInstalledEvents.push_back({ list[i].eventClass, list[i].eventKind });
    }
    return Next<decltype(InstallEventHandler)>("InstallEventHandler")(target, handler, count, list, data,
                                                                      out);
}

LAMPBLACK_INTERPOSE void MoveWindow(WindowRef window, short h, short v, Boolean front)
{
    ++gMoves;
    Next<decltype(MoveWindow)>("MoveWindow")(window, h, v, front);
}

LAMPBLACK_INTERPOSE OSStatus RepositionWindow(WindowRef window, WindowRef parent, WindowPositionMethod method)
{
    gReposition = static_cast<int>(method);
    return Next<decltype(RepositionWindow)>("RepositionWindow")(window, parent, method);
}

TEST_CASE_FIXTURE(Toolkit, "CreateWindowFromDLOGResource: bounds, title and ID come from the resource")
{
    WindowRef window = nullptr;
    REQUIRE(CreateWindowFromDLOGResource(kDocumentWindowClass, kWindowStandardDocumentAttributes, 128,
                                         &window) == noErr);
    Rect bounds;
    CHECK(GetWindowPortGlobalBounds(window, &bounds) == noErr);
    CHECK(bounds.top == 100);
    CHECK(bounds.left == 100);
    CHECK(bounds.bottom == 340);
    CHECK(bounds.right == 500);
    Str255 title;
    GetWTitle(window, title);
    CHECK(std::string(reinterpret_cast<char*>(title) + 1, title[0]) == "Main window");
    CHECK(GetWindowID(window) == 128);
    CGrafPtr port = nullptr;
    GetPort(&port);
    CHECK(port == GetWindowPort(window));
    ControlRef root = nullptr;
    CHECK(GetRootControl(window, &root) == noErr);
    ReleaseWindow(window);
}

TEST_CASE_FIXTURE(Toolkit, "CreateWindowFromDLOGResource: a missing resource or result is a parameter error")
{
    WindowRef window = nullptr;
    CHECK(CreateWindowFromDLOGResource(kDocumentWindowClass, 0, 128, nullptr) == paramErr);
    CHECK(CreateWindowFromDLOGResource(kDocumentWindowClass, 0, 9999, &window) == paramErr);
    CHECK(window == nullptr);
}

TEST_CASE_FIXTURE(Toolkit, "GetWindowByID: 0 finds the first window without an ID")
{
    TestWindow withID;
    const Rect bounds = { 50, 50, 100, 100 };
    WindowRef plain = nullptr;
    REQUIRE(CreateNewWindow(kDocumentWindowClass, 0, &bounds, &plain) == noErr);
    CHECK(GetWindowByID(0) == plain);
    CHECK(GetWindowByID(128) == withID.fWindow);
    CHECK(GetWindowByID(12345) == nullptr);
    ReleaseWindow(plain);
}

TEST_CASE_FIXTURE(Toolkit, "OffsetWindow: (0, 0) does not call MoveWindow")
{
    TestWindow window;
    Rect before, after;
    GetWindowPortGlobalBounds(window.fWindow, &before);
    gMoves = 0;
    OffsetWindow(window.fWindow, 0, 0);
    CHECK(gMoves == 0);
    OffsetWindow(window.fWindow, 5, -3);
    CHECK(gMoves == 1);
    GetWindowPortGlobalBounds(window.fWindow, &after);
    CHECK(after.left == before.left + 5);
    CHECK(after.top == before.top - 3);
    OffsetWindow(nullptr, 1, 1);
    CHECK(gMoves == 1);
}

TEST_CASE_FIXTURE(Toolkit,
                  "SetWindowPosition: a record of the window's size is applied, any other centres it")
{
    TestWindow window;
    const auto record = GetWindowPosition(window.fWindow);
    REQUIRE(record);
    (*record)->bounds = { 200, 150, 440, 550 };
    CHECK(SetWindowPosition(window.fWindow, record) == noErr);
    CHECK(MemError() == noErr);
    Rect bounds;
    GetWindowPortGlobalBounds(window.fWindow, &bounds);
    CHECK(bounds.top == 200);
    CHECK(bounds.left == 150);
    gReposition = -1;
    (*record)->bounds = { 200, 150, 400, 140 }; // repaired to a width of 72, which is not the window's
    CHECK(SetWindowPosition(window.fWindow, record) == -1);
    CHECK(gReposition == kWindowCenterOnMainScreen);
    CHECK(SetWindowPosition(window.fWindow, nullptr) == nilHandleErr);
    CHECK(SetWindowPosition(nullptr, record) == errInvalidWindowRef);
    CHECK(MemError() == errInvalidWindowRef);
    EmptyHandle(reinterpret_cast<Handle>(record));
    CHECK(SetWindowPosition(window.fWindow, record) == nilHandleErr);
    DisposeHandle(reinterpret_cast<Handle>(record));
}

TEST_CASE_FIXTURE(Toolkit, "SetWindowPosition: a resizable window takes a repaired size")
{
    CWindow window(128, kDocumentWindowClass, kWindowStandardHandlerAttribute | kWindowResizableAttribute);
    const auto record = GetWindowPosition(window.fWindow);
    (*record)->bounds = { 200, 150, 100, 140 };
    CHECK(SetWindowPosition(window.fWindow, record) == noErr);
    Rect bounds;
    GetWindowPortGlobalBounds(window.fWindow, &bounds);
    CHECK(bounds.right - bounds.left == 72);
    CHECK(bounds.bottom - bounds.top == 144);
    DisposeHandle(reinterpret_cast<Handle>(record));
}

TEST_CASE_FIXTURE(Toolkit, "GetWindowPosition: a null window leaves its error in MemError")
{
    CHECK(GetWindowPosition(nullptr) == nullptr);
    CHECK(MemError() == errInvalidWindowRef);
}

TEST_CASE_FIXTURE(Toolkit, "Window queries: false for a null window, else by class and attributes")
{
    CHECK_FALSE(WindowIsFloating(nullptr));
    CHECK_FALSE(WindowIsModal(nullptr));
    CHECK_FALSE(WindowIsResizeable(nullptr));
    CHECK_FALSE(WindowHasZoomBox(nullptr));
    CWindow dialog(128, kMovableModalWindowClass);
    CHECK(WindowIsModal(dialog.fWindow));
    CHECK(WindowIsMovableModal(dialog.fWindow));
    CHECK_FALSE(WindowIsResizeable(dialog.fWindow));
    CWindow document(128, kDocumentWindowClass, kWindowStandardDocumentAttributes);
    CHECK(WindowIsResizeable(document.fWindow));
    CHECK(WindowHasZoomBox(document.fWindow));
    CHECK_FALSE(WindowIsModal(document.fWindow));
}

TEST_CASE_FIXTURE(Toolkit, "'CTL#': of five bytes two words are swapped and the fifth is left alone")
{
    const Handle list = GetResource('CTL#', 129);
    REQUIRE(list);
    REQUIRE(GetHandleSize(list) == 5);
    const UInt8* const bytes = reinterpret_cast<UInt8*>(*list);
    CHECK(bytes[0] == 2);
    CHECK(bytes[1] == 1);
    CHECK(bytes[2] == 4);
    CHECK(bytes[3] == 3);
    CHECK(bytes[4] == 5);
}

TEST_CASE("flipCustomResources: other types are not handled, native data is left alone")
{
    UInt8 data[] = { 1, 2 };
    CHECK(flipCustomResources('rsrc', 'DLOG', 1, data, 2, false, nullptr) == handlerNotFoundErr);
    CHECK(flipCustomResources('rsrc', 'CTL#', 1, data, 2, true, nullptr) == noErr);
    CHECK(data[0] == 1);
    CHECK(flipCustomResources('rsrc', 'CTL#', 1, data, 2, false, nullptr) == noErr);
    CHECK(data[0] == 2);
}

TEST_CASE_FIXTURE(Toolkit, "GetApplicationResFile: the file beside the program, found by its creator")
{
    CHECK(GetApplicationResFile() > 0);
    CHECK(GetCurrentResourceFileID() == GetApplicationResFile());
}

TEST_CASE_FIXTURE(Toolkit, "StResFile: -1 changes nothing and restores the saved file")
{
    const SInt16 before = CurResFile();
    {
        const StResFile saver(-1);
        CHECK(CurResFile() == before);
    }
    CHECK(CurResFile() == before);
}

TEST_CASE_FIXTURE(Toolkit, "GetNewControls: every control has its resource ID, its kind and its parent")
{
    TestWindow window;
    window.SetupControls();
    ControlRef root = nullptr, parent = nullptr;
    GetRootControl(window.fWindow, &root);
    for (SInt32 id = 1000; id <= 1007; ++id) {
        INFO(id);
        REQUIRE(GetControlByID(window.fWindow, id));
        GetSuperControl(GetControlByID(window.fWindow, id), &parent);
        CHECK(parent == (id == 1007 ? GetControlByID(window.fWindow, 1006) : root));
    }
    CHECK(GetControlDefProcID(GetControlByID(window.fWindow, 1004)) == 272);
    ControlRef button = nullptr;
    GetWindowDefaultButton(window.fWindow, &button);
    CHECK(GetControlID(button) == 1000);
    GetWindowCancelButton(window.fWindow, &button);
    CHECK(GetControlID(button) == 1001);
    char text[64];
    CHECK(GetStaticTextControlTitle(GetControlByID(window.fWindow, 1003), text) == noErr);
    CHECK(std::string(text) == "Some text");
}

TEST_CASE_FIXTURE(Toolkit, "GetNewControls: of two edit fields the first gets the focus")
{
    TestWindow window;
    window.SetupControls();
    ControlRef focus = nullptr;
    CHECK(HasKeyboardFocus(window.fWindow, &focus));
    CHECK(GetControlID(focus) == 1004);
}

TEST_CASE_FIXTURE(Toolkit, "GetNewControls: an empty list and a missing one create nothing and are no error")
{
    TestWindow window;
    CHECK(GetNewControls(window.fWindow, 130) == noErr);
    CHECK(GetNewControls(window.fWindow, 4444) == noErr);
    ControlRef root = nullptr;
    GetRootControl(window.fWindow, &root);
    UInt16 count = 99;
    CHECK(CountSubControls(root, &count) == noErr);
    CHECK(count == 0);
}

TEST_CASE_FIXTURE(Toolkit, "GetNewControls: parked controls come back by 16384 and are hidden")
{
    TestWindow window(131);
    window.SetupControls();
    Rect bounds;
    const ControlRef parked = GetControlByID(window.fWindow, 1100);
    GetControlBounds(parked, &bounds);
    CHECK(bounds.left == 16);
    CHECK(bounds.right == 116);
    CHECK_FALSE(IsControlVisible(parked));
    const ControlRef half = GetControlByID(window.fWindow, 1101);
    GetControlBounds(half, &bounds);
    CHECK(bounds.left == -16284);
    CHECK(bounds.right == 6);
    CHECK_FALSE(IsControlVisible(half));
}

TEST_CASE_FIXTURE(Toolkit,
                  "GetNewControls: a parent that comes later in the list falls back to the root control")
{
    TestWindow window(131);
    window.SetupControls();
    ControlRef root = nullptr, parent = nullptr;
    GetRootControl(window.fWindow, &root);
    GetSuperControl(GetControlByID(window.fWindow, 1102), &parent);
    CHECK(parent == root);
    CHECK(GetControlByID(window.fWindow, 1103));
}

TEST_CASE_FIXTURE(Toolkit, "GetControlFontStyleFromResource: without the font flag it is the big system font")
{
    ControlFontStyleRec style = {};
    CHECK(GetControlFontStyleFromResource(1200, &style) == noErr);
    CHECK(style.font == -1);
    CHECK((style.flags & kControlUseFontMask) != 0);
    SInt16 monaco = 0;
    GetFNum(reinterpret_cast<ConstStr255Param>("\6Monaco"), &monaco);
    CHECK(GetControlFontStyleFromResource(1201, &style) == noErr);
    CHECK(style.font == monaco);
    CHECK(GetControlFontStyleFromResource(1202, &style) == noErr);
    CHECK(style.size == 14);
    CHECK((style.style & bold) != 0);
}

TEST_CASE_FIXTURE(Toolkit, "GetControlFontStyleFromResource: a missing or short resource is not found")
{
    ControlFontStyleRec style = {};
    CHECK(GetControlFontStyleFromResource(4444, &style) == resNotFound);
    CHECK(GetControlFontStyleFromResource(1203, &style) == resNotFound);
}

TEST_CASE_FIXTURE(Toolkit, "CWindow::SetupEventHandlers: the list of 27 events, the command twice")
{
    TestWindow window;
    gInstalledEvents.clear();
    window.SetupEventHandlers();
    const std::vector<std::pair<UInt32, UInt32>> expected = {
        { 'cmds', 1 },      { 'cmds', 1 },     { 'wind', 2 },   { 'wind', 22 },     { 'wind', 23 },
        { 'wind', 5 },      { 'wind', 6 },     { 'wind', 37 },  { 'wind', 85 },     { 'wind', 72 },
        { 'wind', 75 },     { 'wind', 77 },    { 'wind', 76 },  { 'wind', 29 },     { 'wind', 80 },
        { 'wind', 81 },     { 'wind', 82 },    { 'wind', 200 }, { 'wind', 201 },    { 'wind', 78 },
        { 'cntl', 13 },     { 'cntl', 1 },     { 'mous', 5 },   { 'MOSH', 'RSHT' }, { 'MOSH', 'TXI-' },
        { 'MOSH', 'TXI+' }, { 'MOSH', 'CCPV' }
    };
    CHECK(gInstalledEvents == expected);
}

TEST_CASE_FIXTURE(Toolkit, "CWindowEventHandler: a window without a window does not handle anything")
{
    CHECK(TestWindow(128, static_cast<unsigned long>(-1)).fWindow == nullptr);
    TestWindow window(128, kDeferWindowCreation);
    CHECK(window.fWindow == nullptr);
    CHECK(Send(window, kEventClassWindow, kEventWindowShowing) == eventNotHandledErr);
    CHECK(gCalls.empty());
    window.Show();
    window.Hide();
    window.SetPort();
    window.SetTitle("Nobody");
    window.Activate(1000);
    window.SetValue(1000, 1);
    CHECK(window.GetValue(1000) == 0);
    window.SetContents(1004, "x");
}

TEST_CASE_FIXTURE(Toolkit,
                  "CWindow: a constructor that fails throws the status as a long and restores the port")
{
    CGrafPtr before = nullptr, after = nullptr;
    GetPort(&before);
    long thrown = 0;
    try {
        TestWindow window(9999);
    } catch (long status) {
        thrown = status;
    }
    GetPort(&after);
    CHECK(thrown == paramErr);
    CHECK(before == after);
}

TEST_CASE_FIXTURE(Toolkit, "CWindow: OK flashes the visible default button and hits it with part 10")
{
    TestWindow window;
    window.StandardSetup();
    window.Show();
    gCalls.clear();
    CHECK(SendCommand(window, kEventCommandProcess, kHICommandOK) == noErr);
    CHECK(gCalls == std::vector<Call>{ { "hit", 1000 }, { "part", 10 } });
}

TEST_CASE_FIXTURE(Toolkit, "CWindow: an update-status event for OK presses the default button too")
{
    TestWindow window;
    window.StandardSetup();
    window.Show();
    gCalls.clear();
    CHECK(SendCommand(window, kEventCommandUpdateStatus, kHICommandOK) == noErr);
    CHECK(gCalls.size() == 2);
}

TEST_CASE_FIXTURE(Toolkit, "CWindow: OK is not handled when the default button is disabled or hidden")
{
    TestWindow window;
    window.StandardSetup();
    window.Show();
    gCalls.clear();
    window.Deactivate(1000);
    CHECK(SendCommand(window, kEventCommandProcess, kHICommandOK) == eventNotHandledErr);
    window.Activate(1000);
    HideControlByID(window.fWindow, 1000);
    CHECK(SendCommand(window, kEventCommandProcess, kHICommandOK) == eventNotHandledErr);
    CHECK(SendCommand(window, kEventCommandProcess, kHICommandCancel) == eventNotHandledErr);
    CHECK(gCalls.empty());
}

TEST_CASE_FIXTURE(Toolkit, "CWindow: with the command handler as well, each command arrives once")
{
    TestWindow window;
    window.StandardSetup();
    window.SetupCommandEventHandlers();
    window.Show();
    for (const UInt32 kind : { UInt32{ kEventCommandProcess }, UInt32{ kEventCommandUpdateStatus } }) {
        gCalls.clear();
        EventRef event = nullptr;
        CreateEvent(nullptr, kEventClassCommand, kind, 0, kEventAttributeNone, &event);
        HICommand command = {};
        command.commandID = kHICommandOK;
        SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof command, &command);
        CHECK(SendEventToEventTarget(event, GetWindowEventTarget(window.fWindow)) == noErr);
        ReleaseEvent(event);
        CHECK(gCalls == std::vector<Call>{ { "hit", 1000 }, { "part", 10 } });
    }
}

TEST_CASE_FIXTURE(Toolkit, "CWindow: showing and paste validation cannot mark their events handled")
{
    TestWindow window;
    CHECK(Send(window, kEventClassWindow, kEventWindowShowing) == eventNotHandledErr);
    CHECK(Send(window, kEventClassToolkit, kEventTextCutCopyPasteValidation) == eventNotHandledErr);
    CHECK(gCalls == std::vector<Call>{ { "showing", 0 }, { "validation", 0 } });
}

TEST_CASE_FIXTURE(Toolkit, "CWindow: the Return key presses the default button")
{
    TestWindow window;
    window.StandardSetup();
    window.Show();
    RunFor(0.1);
    gCalls.clear();
    PressKey(0x24, '\r');
    RunFor(1);
    CHECK(gCalls == std::vector<Call>{ { "hit", 1000 }, { "part", 10 } });
}

TEST_CASE_FIXTURE(Toolkit, "CWindow: a click on a button is a hit and leaves no mark behind")
{
    TestWindow window;
    window.StandardSetup();
    window.Show();
    RunFor(0.1);
    gCalls.clear();
    Click(CentreOf(window, 1002));
    RunFor(1);
    REQUIRE(gCalls.size() == 2);
    CHECK(gCalls[0] == Call{ "hit", 1002 });
    CHECK(window.GetValue(1002) == 1);
    Boolean mark = false;
    CHECK(GetControlProperty(GetControlByID(window.fWindow, 1002), 'MOSH', 'HIT ', 1, nullptr, &mark) !=
          noErr);
}

TEST_CASE_FIXTURE(Toolkit, "CWindow: a press released outside its button is no hit but a no-track hit")
{
    TestWindow window;
    window.StandardSetup();
    window.Show();
    RunFor(0.1);
    gCalls.clear();
    const Point inside = CentreOf(window, 1001);
    PressMouse(inside);
    MoveMouse({ static_cast<short>(inside.v - 60), inside.h });
    ReleaseMouse({ static_cast<short>(inside.v - 60), inside.h });
    RunFor(1);
    CHECK(gCalls == std::vector<Call>{ { "no-track", 1001 } });
}

TEST_CASE_FIXTURE(Toolkit,
                  "CWindow: a click into another edit field tells of the focus change, typing reaches it")
{
    TestWindow window;
    window.StandardSetup();
    window.Show();
    RunFor(0.1);
    gCalls.clear();
    Click(CentreOf(window, 1005));
    RunFor(0.5);
    CHECK(std::count(gCalls.begin(), gCalls.end(), Call{ "focus", 1004 * 10000 + 1005 }) == 1);
    TypeText("abc");
    RunFor(0.5);
    char text[64];
    CHECK(GetEditTextControlContents(window.fWindow, 1005, text) == noErr);
    CHECK(std::string(text) == "abc");
}

TEST_CASE_FIXTURE(Toolkit,
                  "SetEditTextControlContents and its kin: null texts and buffers are parameter errors")
{
    TestWindow window;
    window.SetupControls();
    const ControlRef field = GetControlByID(window.fWindow, 1004);
    window.SetContents(1004, "kept");
    CHECK(SetEditTextControlContents(field, static_cast<const char*>(nullptr)) == paramErr);
    CHECK(SetEditTextControlContents(field, static_cast<ConstStr255Param>(nullptr)) == paramErr);
    CHECK(SetEditTextControlPassword(field, nullptr) == paramErr);
    CHECK(SetEditTextControlFontStyle(field, nullptr) == paramErr);
    CHECK(GetEditTextControlContents(field, static_cast<char*>(nullptr)) == paramErr);
    CHECK(GetEditTextControlContents(field, static_cast<StringPtr>(nullptr)) == paramErr);
    CHECK(GetEditTextControlContentsLength(field, nullptr) == paramErr);
    char text[64];
    CHECK(GetEditTextControlContents(field, text) == noErr);
    CHECK(std::string(text) == "kept");
}

TEST_CASE_FIXTURE(Toolkit,
                  "CWindow: over no control the cursor is the arrow, over the focused field the I-beam")
{
    TestWindow window;
    window.StandardSetup();
    window.Show();
    RunFor(0.1);
    MoveMouse(CentreOf(window, 1004));
    RunFor(0.2);
    CHECK(CurrentThemeCursor() == kThemeIBeamCursor);
    MoveMouse(CentreOf(window, 1005));
    RunFor(0.2);
    CHECK(CurrentThemeCursor() == kThemeArrowCursor);
    CHECK(Send(window, kEventClassMouse, kEventMouseMoved) == noErr);
}

TEST_CASE_FIXTURE(
    Toolkit, "CWindow: StartTimer ticks Timer, StopTimer ends it, a second StartTimer runs beside the first")
{
    TestWindow window;
    window.StartTimer(0.1, 0.1);
    RunFor(0.35);
    CHECK(gCalls.size() == 3);
    CTimer* const first = window.fTimer;
    window.StartTimer(0.1, 0.1);
    CHECK(window.fTimer != first);
    gCalls.clear();
    RunFor(0.25);
    CHECK(gCalls.size() >= 4);
    window.StopTimer();
    CHECK(window.fTimer == nullptr);
    delete first;
    gCalls.clear();
    RunFor(1);
    CHECK(gCalls.empty());
}

TEST_CASE_FIXTURE(Toolkit, "CWindow: SetupTimer keeps the timer that is there")
{
    TestWindow window;
    window.SetupTimer([](EventLoopTimerRef, void*) { gCalls.push_back({ "setup", 0 }); }, 0.1, 0);
    CTimer* const first = window.fSetupTimer;
    window.SetupTimer(nullptr, 0.2, 0);
    CHECK(window.fSetupTimer == first);
    RunFor(1);
    CHECK(gCalls == std::vector<Call>{ { "setup", 0 } });
    window.RemoveTimer();
    CHECK(window.fSetupTimer == nullptr);
}

TEST_CASE_FIXTURE(
    Toolkit, "CWindow: deleting one inside its own control hit is safe, and its port stays no longer current")
{
    struct SelfDeleting : TestWindow {
        OSStatus DoControlHit(EventRef) override
        {
            gCalls.push_back({ "gone", 0 });
            delete this;
            return noErr;
        }
    };
    CWindow* const window = new SelfDeleting;
    window->StandardSetup();
    window->Show();
    RunFor(0.1);
    gCalls.clear();
    const WindowRef ref = window->fWindow;
    Click(CentreOf(*window, 1001));
    RunFor(1);
    CHECK(gCalls == std::vector<Call>{ { "gone", 0 } });
    CHECK_FALSE(IsValidWindowPtr(ref));
    CGrafPtr port = nullptr;
    GetPort(&port);
    CHECK(IsValidPort(port));
}

TEST_CASE("InitializeMacOSHelpers, ExitMacOSHelpers: always without error, the first call counts")
{
    CHECK(InitializeMacOSHelpers() == noErr);
    CHECK(ExitMacOSHelpers() == noErr);
    CHECK(InitializeMacOSHelpers() == noErr);
    ProcessSerialNumber current;
    GetCurrentProcess(&current);
    Boolean same = false;
    SameProcess(&current, &fgPSN, &same);
    CHECK(same);
}
