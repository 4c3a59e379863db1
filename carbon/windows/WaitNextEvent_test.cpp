// An application around WaitNextEvent: what it hears as records, growing windows, and windows from resources.
#include "TestWindow.h"

#include <Carbon/Files.h>
#include <Carbon/Resources.h>
#include <ScratchFolder.h>
#include <doctest/doctest.h>
#include <quickdraw/Port.h>
#include <resources/ResourceFork.h>

using namespace lampblack;
using namespace lampblack::windows;

namespace {

constexpr WindowAttributes kClassic = kWindowStandardDocumentAttributes;

// The next record of a kind among the first few; a null event when there is none. Updates are answered.
EventRecord Next(EventKind inWhat)
{
    EventRecord event = {};
    for (int i = 0; i < 20; ++i) {
        const bool got = WaitNextEvent(everyEvent, &event, 1, nullptr);
        if (got && event.what == updateEvt) {
            BeginUpdate((WindowRef)event.message);
            EndUpdate((WindowRef)event.message);
        }
        if (got && event.what == inWhat)
            return event;
    }
    return {};
}

void Forget()
{
    host::RunFor(0.3);
    FlushEvents(everyEvent, 0);
}

} // namespace

TEST_CASE(
    "WaitNextEvent: a window without the standard handler is activated, updated and deactivated in records")
{
    Forget();
    TestWindow window("a", kDocumentWindowClass, kClassic);
    EventRecord event = Next(activateEvt);
    CHECK(event.what == activateEvt);
    CHECK((WindowRef)event.message == window);
    CHECK((event.modifiers & activeFlag) != 0);
    event = Next(updateEvt);
    CHECK(event.what == updateEvt);
    CHECK((WindowRef)event.message == window);
    CHECK(Next(updateEvt).what == nullEvent);

    TestWindow front("b", kDocumentWindowClass, kClassic);
    event = Next(activateEvt);
    CHECK((WindowRef)event.message == window);
    CHECK((event.modifiers & activeFlag) == 0);
    event = Next(activateEvt);
    CHECK((WindowRef)event.message == front);
    CHECK((event.modifiers & activeFlag) != 0);
}

TEST_CASE("WaitNextEvent: handlers hear of activation once; a disposed window leaves no record")
{
    Forget();
    {
        Log().clear();
        TestWindow window("a", kDocumentWindowClass, kClassic, { 100, 100, 300, 400 }, false);
        window.Hear({ kEventWindowActivated });
        ShowWindow(window);
        CHECK(Next(activateEvt).what == activateEvt);
        CHECK(Log().size() == 1);
        HideWindow(window);
        ShowWindow(window);
    }
    CHECK(Next(activateEvt).what == nullEvent);
    TestWindow standard("s");
    CHECK(Next(activateEvt).what == nullEvent);
}

TEST_CASE("WaitNextEvent: a press, a key, and the desktop's wish to quit as Command-Q")
{
    Forget();
    TestWindow window("a", kDocumentWindowClass, kClassic);
    host::PressMouse({ 200, 200 });
    EventRecord event = Next(mouseDown);
    CHECK(event.what == mouseDown);
    CHECK(event.where.h == 200);
    CHECK(event.where.v == 200);
    host::ReleaseMouse({ 200, 200 });
    host::PressKey(kVK_Return, 0x0D);
    event = Next(keyDown);
    CHECK((event.message & charCodeMask) == 0x0D);
    host::RequestQuit();
    event = Next(keyDown);
    CHECK(event.what == keyDown);
    CHECK((event.message & charCodeMask) == 'q');
    CHECK((event.modifiers & cmdKey) != 0);
}

TEST_CASE("GetMouse: in the coordinates of the current port")
{
    TestWindow window("a");
    host::MoveMouse({ 150, 180 });
    host::RunFor(0.1);
    SetPortWindowPort(window);
    Point mouse = { 0, 0 };
    GetMouse(&mouse);
    CHECK(mouse.h == 80);
    CHECK(mouse.v == 50);
    GetMouse(nullptr);
}

TEST_CASE("QDIsPortBufferDirty: until the window was presented")
{
    TestWindow window("a");
    host::RunFor(0.3);
    const CGrafPtr port = GetWindowPort(window);
    CHECK(!QDIsPortBufferDirty(port));
    SetPort(port);
    const Rect box = { 10, 10, 20, 20 };
    PaintRect(&box);
    CHECK(QDIsPortBufferDirty(port));
    host::RunFor(0.3);
    CHECK(!QDIsPortBufferDirty(port));
}

TEST_CASE("GrowWindow answers the size within its limits, ResizeWindow takes it; neither does for no window")
{
    Forget();
    TestWindow window("a", kDocumentWindowClass, kClassic);
    const Rect limits = { 50, 60, 250, 320 };
    const Point start = { 295, 395 };
    const auto drag = [&](short dv, short dh) {
        host::PressMouse(start);
        CHECK(Next(mouseDown).what == mouseDown);
        host::MoveMouse({ (short)(start.v + dv), (short)(start.h + dh) });
        host::ReleaseMouse({ (short)(start.v + dv), (short)(start.h + dh) });
    };
    drag(20, -30);
    CHECK(GrowWindow(window, start, &limits) == ((220L << 16) | 270));
    CHECK(window.Content().right == 400);
    drag(0, 0);
    CHECK(GrowWindow(window, start, &limits) == 0);
    drag(500, -500);
    Rect content = {};
    CHECK(ResizeWindow(window, start, &limits, &content));
    CHECK(content.bottom == 350);
    CHECK(content.right == 160);
    CHECK(window.Content().right == 160);
    CHECK(GrowWindow(nullptr, start, &limits) == 0);
    CHECK(!ResizeWindow(nullptr, start, &limits, &content));
}

TEST_CASE("GetNewCWindow: bounds, kind, title and visibility of a 'WIND'; a short one is no window")
{
    static const uint8_t kWind[] = {
        0, 80, 0, 90, 0, 180, 1, 34, 0, 8, 1, 0, 1, 0, 0, 0, 0, 42, 2, 'H', 'i'
    };
    resources::ForkBuilder builder;
    builder.Add({ 'WIND', 300, 0, false, {}, kWind });
    builder.Add({ 'WIND', 301, 0, false, {}, foundation::Bytes(kWind, 12) });
    std::vector<uint8_t> fork;
    REQUIRE(!builder.Build(&fork));
    ScratchFolder scratch;
    const std::string path = scratch.Write("Windows", { (const char*)fork.data(), fork.size() }).string();
    FSRef ref;
    REQUIRE(FSPathMakeRef((const UInt8*)path.c_str(), &ref, nullptr) == noErr);
    const SInt16 file = FSOpenResFile(&ref, fsRdPerm);
    REQUIRE(file > 0);
    const WindowRef window = GetNewCWindow(300, nullptr, (WindowRef)-1);
    REQUIRE(window);
    Rect bounds = {};
    GetWindowBounds(window, kWindowContentRgn, &bounds);
    CHECK(bounds.top == 80);
    CHECK(bounds.left == 90);
    CHECK(bounds.bottom == 180);
    CHECK(bounds.right == 290);
    Str255 title = {};
    GetWTitle(window, title);
    CHECK(std::string((const char*)title + 1, title[0]) == "Hi");
    CHECK(GetWRefCon(window) == 42);
    CHECK(IsWindowVisible(window));
    WindowAttributes attributes = 0;
    GetWindowAttributes(window, &attributes);
    CHECK((attributes & kWindowCloseBoxAttribute) != 0);
    CHECK((attributes & kWindowFullZoomAttribute) == kWindowFullZoomAttribute);
    DisposeWindow(window);
    CHECK(GetNewCWindow(301, nullptr, (WindowRef)-1) == nullptr);
    CHECK(GetNewCWindow(302, nullptr, (WindowRef)-1) == nullptr);
    CloseResFile(file);
}
