#include "controls/TestSupport.h"

using namespace lampblack;
using namespace lampblack::test;

TEST_CASE("A click on a push button: one hit, at the control, then its window, then the application")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    Listener atControl(GetControlEventTarget(button), { kHitEvent });
    Listener atWindow(GetWindowEventTarget(window), { kHitEvent });
    Listener atApplication(GetApplicationEventTarget(), { kHitEvent });
    host::Click(Middle(button));
    host::RunFor(0.1);
    REQUIRE(atControl.Count() == 1);
    CHECK(atControl.All()[0].control == button);
    CHECK(atControl.All()[0].part == kControlButtonPart);
    CHECK(atWindow.Count() == 1);
    CHECK(atApplication.Count() == 1);
    CHECK(GetControlHilite(button) == 0);
}

TEST_CASE("A hit that the window takes does not reach the application")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    Listener atWindow(GetWindowEventTarget(window), { kHitEvent }, noErr);
    Listener atApplication(GetApplicationEventTarget(), { kHitEvent });
    host::Click(Middle(button));
    host::RunFor(0.1);
    CHECK(atWindow.Count() == 1);
    CHECK(atApplication.Count() == 0);
}

TEST_CASE("A press that is released elsewhere: a click, but no hit")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    Listener clicks(GetWindowEventTarget(window), { { kEventClassControl, kEventControlClick } });
    Listener hits(GetWindowEventTarget(window), { kHitEvent });
    host::PressMouse(Middle(button));
    host::MoveMouse(Global(200, 200));
    host::ReleaseMouse(Global(200, 200));
    host::RunFor(0.1);
    CHECK(clicks.Count() == 1);
    CHECK(hits.Count() == 0);
    CHECK(GetControlHilite(button) == 0);
}

TEST_CASE("Disabled, inactive and hidden controls are not hit")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    Listener hits(GetWindowEventTarget(window), { kHitEvent });
    DisableControl(button);
    host::Click(Middle(button));
    host::RunFor(0.1);
    EnableControl(button);
    DeactivateControl(button);
    host::Click(Middle(button));
    host::RunFor(0.1);
    ActivateControl(button);
    HideControl(button);
    host::Click(Middle(button));
    host::RunFor(0.1);
    CHECK(hits.Count() == 0);
    ShowControl(button);
    host::Click(Middle(button));
    host::RunFor(0.1);
    CHECK(hits.Count() == 1);
}

TEST_CASE("A control's command follows a hit that nobody took")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    SetControlCommandID(button, 'fire');
    Listener commands(GetWindowEventTarget(window), { { kEventClassCommand, kEventCommandProcess } }, noErr);
    host::Click(Middle(button));
    host::RunFor(0.1);
    REQUIRE(commands.Count() == 1);
    CHECK(commands.All()[0].command == 'fire');
    {
        Listener taken(GetWindowEventTarget(window), { kHitEvent }, noErr);
        host::Click(Middle(button));
        host::RunFor(0.1);
    }
    CHECK(commands.Count() == 1);
}

TEST_CASE("A control that is disposed of in its own hit handler: nothing is touched afterwards")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    Listener hits(GetControlEventTarget(button), { kHitEvent }, noErr);
    hits.fWhenHeard = [](EventRef inEvent) {
        ControlRef control = nullptr;
        GetEventParameter(inEvent, kEventParamDirectObject, typeControlRef, nullptr, sizeof control, nullptr,
                          &control);
        DisposeControl(control);
    };
    host::Click(Middle(button));
    host::RunFor(0.1);
    CHECK(hits.Count() == 1);
    CHECK_FALSE(IsValidControlHandle(button));
}

TEST_CASE("A window that is disposed of while one of its controls is tracked: tracking ends without a hit")
{
    static WindowRef gWindow;
    TestWindow window;
    gWindow = window;
    const ControlRef bar = window.Add(kControlScrollBarLiveProc, { 10, 10, 150, 25 }, "", 0, 0, 100);
    SetControlAction(bar, [](ControlRef, ControlPartCode) { DisposeWindow(gWindow); });
    host::Click(Global(17, 145));
    host::RunFor(0.2);
    CHECK_FALSE(IsValidControlHandle(bar));
    CHECK_FALSE(IsValidWindowPtr(gWindow));
}

TEST_CASE("Check boxes toggle by themselves only where the kind says so")
{
    TestWindow window;
    const ControlRef plain = window.Add(kControlCheckBoxProc, { 10, 10, 30, 120 }, "Plain");
    const ControlRef automatic = window.Add(kControlCheckBoxAutoToggleProc, { 40, 10, 60, 120 }, "Auto");
    host::Click(Middle(plain));
    host::Click(Middle(automatic));
    host::RunFor(0.1);
    CHECK(GetControlValue(plain) == 0);
    CHECK(GetControlValue(automatic) == 1);
    host::Click(Middle(automatic));
    host::RunFor(0.1);
    CHECK(GetControlValue(automatic) == 0);
}

TEST_CASE("FindControl and FindControlUnderMouse: a disabled control is under the mouse, but not found")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    const Point inside = { 20, 50 }, outside = { 200, 200 };
    ControlRef found = nullptr;
    ControlPartCode part = 99;
    CHECK(FindControl(inside, window, &found) == kControlButtonPart);
    CHECK(found == button);
    CHECK(FindControlUnderMouse(inside, window, &part) == button);
    CHECK(part == kControlButtonPart);
    DisableControl(button);
    CHECK(FindControl(inside, window, &found) == kControlNoPart);
    CHECK(found == nullptr);
    CHECK(FindControlUnderMouse(inside, window, &part) == button);
    CHECK(part == kControlNoPart);
    CHECK(FindControlUnderMouse(outside, window, &part) == nullptr);
    CHECK(FindControl(inside, nullptr, &found) == kControlNoPart);
}

namespace {

int gActions;
ControlPartCode gLastPart;
const Point kArrow = Global(17, 204);
void CountAction(ControlRef inControl, ControlPartCode inPart)
{
    ++gActions;
    gLastPart = inPart;
    if (inPart == kControlDownButtonPart)
        SetControlValue(inControl, (SInt16)(GetControlValue(inControl) + 1));
    if (gActions == 5)
        host::ReleaseMouse(kArrow);
}

} // namespace

TEST_CASE("A scroll bar's arrow repeats its action while it is held")
{
    TestWindow window;
    const ControlRef bar = window.Add(kControlScrollBarProc, { 10, 10, 210, 25 }, "", 0, 0, 1000);
    SetControlAction(bar, CountAction);
    gActions = 0;
    host::PressMouse(kArrow);
    host::RunFor(2);
    CHECK(gActions == 5);
    CHECK(gLastPart == kControlDownButtonPart);
    CHECK(GetControlValue(bar) == 5);
}

TEST_CASE("A scroll bar's thumb: dragged, it sets the value; let go far away, it springs back")
{
    TestWindow window;
    const ControlRef bar = window.Add(kControlScrollBarLiveProc, { 10, 10, 210, 25 }, "", 0, 0, 100);
    Point grip = { 0, 17 };
    ControlRef found = nullptr;
    for (grip.v = 12; grip.v < 200; ++grip.v)
        if (FindControl(grip, window, &found) == kControlIndicatorPart)
            break;
    REQUIRE(grip.v < 200);
    const Point start = Global(17, (SInt16)(grip.v + 2)), lower = Global(17, (SInt16)(grip.v + 62));
    host::PressMouse(start);
    host::MoveMouse(lower);
    host::ReleaseMouse(lower);
    host::RunFor(0.1);
    const SInt16 dragged = GetControlValue(bar);
    CHECK(dragged > 10);
    CHECK(dragged < 100);
    host::PressMouse(lower);
    host::MoveMouse(Global(390, 290));
    host::ReleaseMouse(Global(390, 290));
    host::RunFor(0.1);
    CHECK(GetControlValue(bar) == dragged);
}

TEST_CASE("A draw handler on the control draws over the default, which it can call")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    static int gDrawn;
    gDrawn = 0;
    const EventTypeSpec draw = { kEventClassControl, kEventControlDraw };
    InstallEventHandler(
        GetControlEventTarget(button),
        [](EventHandlerCallRef inNext, EventRef inEvent, void*) {
            const OSStatus status = CallNextEventHandler(inNext, inEvent);
            gDrawn += status == noErr;
            return status;
        },
        1, &draw, nullptr, nullptr);
    Draw1Control(button);
    CHECK(gDrawn == 1);
    DrawControls(window);
    CHECK(gDrawn == 2);
    HideControl(button);
    DrawControls(window);
    CHECK(gDrawn == 2);
}

TEST_CASE("User panes call the application's procedures")
{
    TestWindow window;
    const Rect bounds = { 10, 10, 60, 110 };
    ControlRef pane = nullptr;
    REQUIRE(CreateUserPaneControl(window, &bounds, kControlSupportsEmbedding, &pane) == noErr);
    static int gDraws, gTests;
    gDraws = gTests = 0;
    const ControlUserPaneDrawUPP draw = NewControlUserPaneDrawUPP([](ControlRef, SInt16) { ++gDraws; });
    const ControlUserPaneHitTestUPP test = NewControlUserPaneHitTestUPP([](ControlRef, Point) {
        ++gTests;
        return (ControlPartCode)7;
    });
    CHECK(SetControlData(pane, 0, kControlUserPaneDrawProcTag, sizeof draw, &draw) == noErr);
    CHECK(SetControlData(pane, 0, kControlUserPaneHitTestProcTag, sizeof test, &test) == noErr);
    Draw1Control(pane);
    CHECK(gDraws == 1);
    CHECK(TestControl(pane, { 20, 20 }) == 7);
    CHECK(gTests == 1);
    UInt32 features = 0;
    CHECK(GetControlFeatures(pane, &features) == noErr);
    CHECK((features & kControlSupportsEmbedding) != 0);
}

TEST_CASE("HandleControlClick: a click beside the control is no hit")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    CHECK(HandleControlClick(button, { 200, 200 }, 0, nullptr) == kControlNoPart);
    CHECK(HandleControlClick(nullptr, { 20, 20 }, 0, nullptr) == kControlNoPart);
}

TEST_CASE("A popup button shows its menu, takes the chosen item for its value and is hit")
{
    TestWindow window;
    const MenuRef menu = NewMenu(200, Pascal("Menu").data());
    AppendMenu(menu, Pascal("First;Second;Third").data());
    const ControlRef popup =
        window.Add(kControlPopupButtonProc, { 40, 20, 60, 220 }, "Choose:", 0, -12345, -1);
    SetControlPopupMenuHandle(popup, menu);
    CHECK(GetControlPopupMenuHandle(popup) == menu);
    CHECK(GetControlMinimum(popup) == 1);
    CHECK(GetControlMaximum(popup) == 3);
    CHECK(GetControlValue(popup) == 1);
    MenuRef back = nullptr;
    CHECK(GetControlData(popup, 0, kControlPopupButtonMenuHandleTag, sizeof back, &back, nullptr) == noErr);
    CHECK(back == menu);
    Listener hits(GetWindowEventTarget(window), { kHitEvent });
    host::PressMouse(Global(150, 50));
    host::MoveMouse(Global(150, 68)); // one item further down
    host::ReleaseMouse(Global(150, 68));
    host::RunFor(1);
    CHECK(GetControlValue(popup) == 2);
    CHECK(hits.Count() == 1);
    DisposeControl(popup);
    DisposeMenu(menu);
}
