// What the user does with windows, updates, modality and the screen.
#include "ScreenPresenter.h"
#include "TestWindow.h"

#include <Carbon/QDOffscreen.h>
#include <Host.h>
#include <doctest/doctest.h>

#include <cstdlib>
#include <cstring>

using namespace lampblack;
using namespace lampblack::windows;
using Strings = std::vector<std::string>;

namespace {

bool Same(const Rect& a, const Rect& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

void Drag(Point inFrom, Point inTo)
{
    host::PressMouse(inFrom);
    host::MoveMouse({ (short)((inFrom.v + inTo.v) / 2), (short)((inFrom.h + inTo.h) / 2) });
    host::MoveMouse(inTo);
    host::ReleaseMouse(inTo);
    host::RunFor(0.3);
}

void ClickAt(Point inWhere, UInt32 inCount = 1)
{
    host::Click(inWhere, 0, inCount);
    host::RunFor(0.3);
}

// What the presenter hands to the machine.
struct Presented {
    int frames = 0;
    long pixels = 0;
};
Presented gPresented;
void (*gPresent)(const host::Frame&, const Rect*, int) = nullptr;

void CountingPresent(const host::Frame& inFrame, const Rect* inRects, int inCount)
{
    ++gPresented.frames;
    for (int i = 0; i < inCount; ++i)
        gPresented.pixels += (long)Width(inRects[i]) * Height(inRects[i]);
    gPresent(inFrame, inRects, inCount);
}

// Counts until the end of its scope.
class StCountPresents {
public:
    StCountPresents()
    {
        host::RunFor(0.2);
        auto& table = const_cast<host::Table&>(host::Machine());
        gPresent = table.present;
        table.present = CountingPresent;
        gPresented = {};
    }
    ~StCountPresents() { const_cast<host::Table&>(host::Machine()).present = gPresent; }
};

} // namespace

TEST_CASE("FindWindow: each part of a window is found, the front window hides the one behind")
{
    TestWindow back("back"),
        front("front", kDocumentWindowClass, TestWindow::kDocument, { 200, 200, 350, 500 });
    WindowRef window = nullptr;
    struct Expectation {
        WindowRegionCode region;
        WindowPartCode part;
    };
    for (const Expectation& expected :
         { Expectation{ kWindowContentRgn, inContent }, Expectation{ kWindowGrowRgn, inGrow },
           Expectation{ kWindowCloseBoxRgn, inGoAway },
           Expectation{ kWindowCollapseBoxRgn, inCollapseBox } }) {
        CHECK(FindWindow(front.Middle(expected.region), &window) == expected.part);
        CHECK(window == front);
    }
    CHECK(FindWindow({ 110, 110 }, &window) == inContent);
    CHECK(window == back);
    CHECK(FindWindow({ 700, 900 }, &window) == inDesk);
    CHECK(window == nullptr);
    CHECK(FindWindow({ 110, 110 }, nullptr) == inContent);
    const Point point = { 110, 110 };
    CHECK(FindWindowOfClass(&point, kFloatingWindowClass, &window, nullptr) == errWindowNotFound);
}

TEST_CASE("A drag of the title bar: the window follows the mouse and hears start and end")
{
    TestWindow window("a");
    window.Hear({ kEventWindowDragStarted, kEventWindowDragCompleted });
    const Point title = window.Middle(kWindowTitleBarRgn);
    Log().clear();
    Drag(title, { (short)(title.v + 40), (short)(title.h + 30) });
    CHECK(Same(window.Content(), { 140, 130, 340, 430 }));
    CHECK(Log() == Strings{ "a 30", "a 31" });
}

TEST_CASE("A drag to the top: the title bar does not leave the screen")
{
    TestWindow window("a");
    const Point title = window.Middle(kWindowTitleBarRgn);
    Drag(title, { 0, title.h });
    Rect structure;
    GetWindowBounds(window, kWindowStructureRgn, &structure);
    CHECK(structure.top >= 0);
}

TEST_CASE("A drag of the grow box: the size follows within the limits that the window answers")
{
    struct Limits {
        static OSStatus Answer(EventHandlerCallRef, EventRef inEvent, void*)
        {
            const Point size = { 150, 250 };
            return SetEventParameter(inEvent, kEventParamDimensions, typeQDPoint, sizeof size, &size);
        }
    };
    TestWindow window("a");
    const EventTypeSpec type = { kEventClassWindow, kEventWindowGetMinimumSize };
    InstallEventHandler(GetWindowEventTarget(window), Limits::Answer, 1, &type, nullptr, nullptr);
    window.Hear({ kEventWindowResizeStarted, kEventWindowResizeCompleted });
    const Point grow = window.Middle(kWindowGrowRgn);
    Log().clear();
    Drag(grow, { (short)(grow.v + 60), (short)(grow.h + 50) });
    CHECK(Same(window.Content(), { 100, 100, 360, 450 }));
    CHECK(Log() == Strings{ "a 28", "a 29" });
    const Point again = window.Middle(kWindowGrowRgn);
    Drag(again, { 120, 120 });
    CHECK(Same(window.Content(), { 100, 100, 250, 350 }));
}

TEST_CASE("The close box: released inside it closes, released outside it does not")
{
    TestWindow window("a");
    window.Hear({ kEventWindowClose, kEventWindowClosed });
    Log().clear();
    const Point box = window.Middle(kWindowCloseBoxRgn);
    Drag(box, { (short)(box.v + 100), box.h });
    CHECK(Log().empty());
    ClickAt(box);
    CHECK(Log() == Strings{ "a 72", "a 73" });
    CHECK(!IsValidWindowPtr(window));
}

TEST_CASE("The zoom box: out to the ideal size that the window answers, then back")
{
    struct Ideal {
        static OSStatus Answer(EventHandlerCallRef, EventRef inEvent, void*)
        {
            const Point size = { 320, 480 };
            return SetEventParameter(inEvent, kEventParamDimensions, typeQDPoint, sizeof size, &size);
        }
    };
    TestWindow window("a");
    const EventTypeSpec type = { kEventClassWindow, kEventWindowGetIdealSize };
    InstallEventHandler(GetWindowEventTarget(window), Ideal::Answer, 1, &type, nullptr, nullptr);
    window.Hear({ kEventWindowZoom, kEventWindowZoomed });
    Log().clear();
    ClickAt(window.Middle(kWindowZoomBoxRgn));
    CHECK(window.Content().right - window.Content().left == 480);
    CHECK(window.Content().bottom - window.Content().top == 320);
    CHECK(Log() == Strings{ "a 75", "a 76" });
    ClickAt(window.Middle(kWindowZoomBoxRgn));
    CHECK(Same(window.Content(), { 100, 100, 300, 400 }));
}

TEST_CASE("The collapse box and a double click on the title: the window collapses and expands")
{
    TestWindow window("a");
    ClickAt(window.Middle(kWindowCollapseBoxRgn));
    CHECK(IsWindowCollapsed(window));
    ClickAt(window.Middle(kWindowTitleBarRgn), 2);
    CHECK(!IsWindowCollapsed(window));
}

TEST_CASE("A click in an inactive window: it comes to the front and the click goes no further")
{
    TestWindow back("back"),
        front("front", kDocumentWindowClass, TestWindow::kDocument, { 300, 500, 400, 700 });
    back.Hear({ kEventWindowClickContentRgn, kEventWindowHandleContentClick });
    Log().clear();
    ClickAt({ 200, 200 });
    CHECK(FrontWindow() == back);
    CHECK(Log() == Strings{ "back 37" });
    ClickAt({ 200, 200 });
    CHECK(Log() == Strings{ "back 37", "back 37", "back 85" });
}

TEST_CASE("A contextual click: the window is asked first, and the click is handled when it does not answer")
{
    TestWindow window("a");
    window.Hear({ kEventWindowContextualMenuSelect, kEventWindowHandleContentClick });
    Log().clear();
    host::Click({ 200, 200 }, controlKey);
    host::RunFor(0.2);
    CHECK(Log() == Strings{ "a 78", "a 85" });
}

TEST_CASE("Updates: a window is drawn after it is shown and after an invalidation, and else not")
{
    TestWindow window("a");
    window.Hear({ kEventWindowDrawContent }, noErr);
    Log().clear();
    CHECK(IsWindowUpdatePending(window));
    host::RunFor(0.2);
    CHECK(Log() == Strings{ "a 2" });
    host::RunFor(0.5);
    CHECK(Log() == Strings{ "a 2" });
    const Rect part = { 10, 10, 20, 20 };
    InvalWindowRect(window, &part);
    InvalWindowRect(window, &part);
    host::RunFor(0.2);
    CHECK(Log() == Strings{ "a 2", "a 2" });
    InvalWindowRect(window, &part);
    ValidWindowRect(window, &part);
    CHECK(!IsWindowUpdatePending(window));
    host::RunFor(0.2);
    CHECK(Log() == Strings{ "a 2", "a 2" });
}

TEST_CASE("BeginUpdate: drawing is limited to what was invalidated, until EndUpdate")
{
    TestWindow window("a");
    host::RunFor(0.2);
    SetPortWindowPort(window);
    const Rect part = { 10, 10, 20, 20 }, all = { 0, 0, 200, 300 };
    const RGBColor red = { 0xFFFF, 0, 0 };
    InvalWindowRect(window, &part);
    BeginUpdate(window);
    RGBForeColor(&red);
    PaintRect(&all);
    EndUpdate(window);
    CHECK(host::ScreenPixel({ 115, 115 }) == 0xFF0000);
    CHECK(host::ScreenPixel({ 125, 125 }) == 0xFFFFFF);
    PaintRect(&all);
    CHECK(host::ScreenPixel({ 125, 125 }) == 0xFF0000);
}

TEST_CASE("Drawing in a hidden or collapsed window: nothing is drawn")
{
    TestWindow window("a", kDocumentWindowClass, TestWindow::kDocument, { 100, 100, 300, 400 }, false);
    const Rect all = { 0, 0, 200, 300 };
    SetPortWindowPort(window);
    ForeColor(blackColor);
    PaintRect(&all);
    ShowWindow(window);
    CHECK(host::ScreenPixel({ 200, 200 }) == 0xFFFFFF);
}

TEST_CASE("SetThemeWindowBackground, SetWindowContentColor: the content is erased with it")
{
    TestWindow window("a");
    const RGBColor green = { 0, 0xFFFF, 0 };
    CHECK(SetWindowContentColor(window, &green) == noErr);
    CHECK(host::ScreenPixel({ 200, 200 }) == 0x00FF00);
    RGBColor color = {};
    CHECK(GetWindowContentColor(window, &color) == noErr);
    CHECK(color.green == 0xFFFF);
    CHECK(SetThemeWindowBackground(window, kThemeBrushBlack, true) == noErr);
    CHECK(host::ScreenPixel({ 200, 200 }) == 0);
    CHECK(SetThemeWindowBackground(window, 4711, true) != noErr);
}

TEST_CASE("SetWindowAlpha: the window behind shines through")
{
    TestWindow back("back"), front("front");
    const RGBColor black = { 0, 0, 0 };
    SetWindowContentColor(back, &black);
    CHECK(SetWindowAlpha(front, 0.5f) == noErr);
    const UInt32 pixel = host::ScreenPixel({ 200, 200 }) & 0xFF;
    CHECK(pixel > 0x70);
    CHECK(pixel < 0x90);
    CHECK(SetWindowAlpha(front, 1.5f) == paramErr);
}

TEST_CASE("RunAppModalLoopForWindow: clicks behind beep, clicks inside arrive, quitting ends it")
{
    static WindowRef gModal;
    struct User {
        static void Act(EventLoopTimerRef, void*)
        {
            host::Click({ 150, 110 });
            host::Click({ 450, 500 });
            host::RunFor(0.2);
            QuitAppModalLoopForWindow(gModal);
        }
    };
    TestWindow document("document");
    TestWindow modal("modal", kMovableModalWindowClass, kWindowStandardHandlerAttribute,
                     { 400, 400, 500, 600 });
    gModal = modal;
    document.Hear({ kEventWindowClickContentRgn });
    modal.Hear({ kEventWindowHandleContentClick });
    Log().clear();
    const size_t beeps = host::PlayedSounds().size();
    EventLoopTimerRef timer = nullptr;
    InstallEventLoopTimer(GetMainEventLoop(), 0.1, 0, User::Act, nullptr, &timer);
    CHECK(RunAppModalLoopForWindow(modal) == noErr);
    RemoveEventLoopTimer(timer);
    CHECK(Log() == Strings{ "modal 85" });
    CHECK(host::PlayedSounds().size() == beeps + 1);
    CHECK(QuitAppModalLoopForWindow(modal) == paramErr);
    CHECK(EndAppModalStateForWindow(modal) == paramErr);
}

TEST_CASE("RunAppModalLoopForWindow: it ends when the window is disposed of")
{
    struct User {
        static void Act(EventLoopTimerRef, void* inWindow)
        {
            DisposeWindow(static_cast<WindowRef>(inWindow));
        }
    };
    TestWindow modal("modal", kMovableModalWindowClass, kWindowStandardHandlerAttribute);
    InstallEventLoopTimer(GetMainEventLoop(), 0.1, 0, User::Act, (WindowRef)modal, nullptr);
    CHECK(RunAppModalLoopForWindow(modal) == noErr);
    CHECK(!IsValidWindowPtr(modal));
}

TEST_CASE("Presenting: an idle screen is not presented, a small drawing presents little")
{
    TestWindow window("a");
    host::RunFor(0.2);
    const StCountPresents count;
    host::RunFor(2);
    CHECK(gPresented.frames == 0);
    SetPortWindowPort(window);
    const Rect part = { 10, 10, 20, 30 };
    ForeColor(blackColor);
    PaintRect(&part);
    host::RunFor(0.2);
    CHECK(gPresented.frames == 1);
    CHECK(gPresented.pixels == 200);
}

TEST_CASE("Presenting: many drawings within one frame are presented once")
{
    TestWindow window("a");
    const StCountPresents count;
    SetPortWindowPort(window);
    for (short i = 0; i < 200; ++i) {
        const Rect part = { 10, i, 20, (short)(i + 1) };
        PaintRect(&part);
    }
    host::RunFor(0.2);
    CHECK(gPresented.frames == 1);
    CHECK(gPresented.pixels <= 10 * 200 + 400);
}

TEST_CASE("Presenting: what is drawn behind another window shows only where it is not covered")
{
    TestWindow back("back"),
        front("front", kDocumentWindowClass, TestWindow::kDocument, { 150, 150, 250, 250 });
    host::RunFor(0.2);
    SetPortWindowPort(back);
    ForeColor(blackColor);
    const Rect all = { 0, 0, 200, 300 };
    PaintRect(&all);
    CHECK(host::ScreenPixel({ 110, 110 }) == 0);
    CHECK(host::ScreenPixel({ 200, 200 }) == 0xFFFFFF);
    HideWindow(front);
    CHECK(host::ScreenPixel({ 200, 200 }) == 0);
}

TEST_CASE("DamageList: rectangles within others are dropped, and too many are merged without losing any")
{
    DamageList list;
    list.Add({ 0, 0, 100, 100 });
    list.Add({ 10, 10, 20, 20 });
    CHECK(list.end() - list.begin() == 1);
    std::srand(7);
    std::vector<Rect> all;
    for (int i = 0; i < 500; ++i) {
        const auto top = (short)(std::rand() % 700), left = (short)(std::rand() % 1000);
        all.push_back({ top, left, (short)(top + 9), (short)(left + 5) });
        list.Add(all.back());
    }
    Region covered;
    for (const Rect& rect : list)
        covered.Add(rect);
    for (const Rect& rect : all) {
        Region left(rect);
        left.Subtract(covered);
        CHECK(left.IsEmpty());
    }
}

TEST_CASE("A picture of windows of every class" * doctest::skip(std::getenv("LAMPBLACK_PICTURE") == nullptr))
{
    TestWindow document("document", kDocumentWindowClass, TestWindow::kDocument, { 80, 60, 330, 460 });
    SetWTitle(document, (ConstStr255Param) "\014A document  ");
    TestWindow second("second", kDocumentWindowClass, TestWindow::kDocument, { 150, 260, 400, 640 });
    SetWTitle(second, (ConstStr255Param) "\021Another in front ");
    TestWindow floating("floating", kFloatingWindowClass,
                        kWindowStandardFloatingAttributes | kWindowStandardHandlerAttribute,
                        { 80, 700, 260, 860 });
    SetWTitle(floating, (ConstStr255Param) "\005Tools");
    TestWindow plain("plain", kPlainWindowClass, 0, { 420, 60, 520, 220 });
    TestWindow modal("modal", kMovableModalWindowClass, kWindowStandardHandlerAttribute,
                     { 450, 300, 600, 640 });
    SetThemeWindowBackground(modal, kThemeBrushMovableModalBackground, true);
    SetWTitle(modal, (ConstStr255Param) "\007Options");
    TestWindow alert("alert", kAlertWindowClass, 0, { 560, 700, 680, 960 });
    TestWindow sheet("sheet", kSheetWindowClass, 0, { 0, 0, 90, 240 }, false);
    ShowSheetWindow(sheet, second);
    host::RunFor(0.3);
    CHECK(host::SaveScreenshot(std::getenv("LAMPBLACK_PICTURE")));
}

TEST_CASE("RoundCorners: smoothed alike on both sides, never larger than half of the window")
{
    std::vector<uint32_t> screen(20 * 20, 0), white(20 * 20, 0xFFFFFF);
    const Canvas canvas = { screen.data(), 20 };
    const Rect window = { 0, 0, 20, 20 };
    Corner corners[4];
    REQUIRE(RoundCorners(window, 6, 0, corners) == 2);
    const pixman_box32_t left = { 0, 0, 6, 6 }, right = { 14, 0, 20, 6 };
    BlendCorner(canvas, { white.data(), 20, window }, left, corners[0], 256);
    BlendCorner(canvas, { white.data(), 20, window }, right, corners[1], 256);
    CHECK(*canvas.At(0, 0) == 0);
    CHECK(*canvas.At(5, 5) == 0xFFFFFF);
    CHECK(*canvas.At(1, 1) != 0);
    CHECK(*canvas.At(1, 1) != 0xFFFFFF);
    for (int v = 0; v < 6; ++v)
        for (int h = 0; h < 6; ++h)
            CHECK(*canvas.At(h, v) == *canvas.At(19 - h, v));
    CHECK(RoundCorners({ 0, 0, 4, 4 }, 6, 6, corners) == 4);
    CHECK(corners[3].radius == 2);
    CHECK(RoundCorners({ 0, 0, 0, 0 }, 6, 6, corners) == 0);
}
