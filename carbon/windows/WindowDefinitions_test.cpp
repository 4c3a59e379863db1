// Windows by definition number: class, attributes and frame of every published number; and what the user does
// with a title bar at the side.
#include "TestWindow.h"

#include <doctest/doctest.h>

#include <cstdlib>
#include <cstring>

using namespace lampblack;
using namespace lampblack::windows;

namespace {

constexpr WindowAttributes kVert = kWindowVerticalZoomAttribute, kHoriz = kWindowHorizontalZoomAttribute,
                           kFull = kWindowFullZoomAttribute, kGrow = kWindowResizableAttribute,
                           kCollapse = kWindowCollapseBoxAttribute, kSide = kWindowSideTitlebarAttribute,
                           kClose = kWindowCloseBoxAttribute;
constexpr Rect kContent = { 200, 200, 300, 360 };

struct Definition {
    int procID;
    WindowClass windowClass;
    WindowAttributes attributes;
    Rect frame; // pixels around the content
};
constexpr Rect kTitled = { 22, 0, 0, 0 }, kFramed = { 3, 3, 3, 3 }, kLined = { 1, 1, 1, 1 },
               kBare = { 0, 0, 0, 0 }, kPalette = { 16, 0, 0, 0 }, kSidePalette = { 0, 16, 0, 0 };

constexpr WindowClass kDocument = kDocumentWindowClass, kFloating = kFloatingWindowClass;
constexpr WindowAttributes kBoxes = kCollapse | kClose, kSideBoxes = kCollapse | kClose | kSide;

constexpr Definition kDefinitions[] = {
    { documentProc, kDocument, kBoxes | kGrow, kTitled },
    { dBoxProc, kModalWindowClass, 0, kFramed },
    { plainDBox, kPlainWindowClass, 0, kLined },
    { altDBoxProc, kAltPlainWindowClass, 0, kLined },
    { noGrowDocProc, kDocument, kBoxes, kTitled },
    { movableDBoxProc, kMovableModalWindowClass, kClose, kTitled },
    { zoomDocProc, kDocument, kBoxes | kGrow | kFull, kTitled },
    { zoomDocProc + dBoxProc, kModalWindowClass, 0, kFramed }, // the zoom bit of what cannot zoom
    { zoomDocProc + plainDBox, kPlainWindowClass, 0, kLined },
    { zoomDocProc + altDBoxProc, kAltPlainWindowClass, 0, kLined },
    { zoomNoGrow, kDocument, kBoxes | kFull, kTitled },
    { zoomDocProc + movableDBoxProc, kMovableModalWindowClass, kClose, kTitled },
    { rDocProc, kDocument, kClose, kTitled },
    { rDocProc + 2, kDocument, kClose, kTitled },
    { rDocProc + 7, kDocument, kClose, kTitled },
    { floatProc, kFloating, kBoxes, kPalette },
    { floatGrowProc, kFloating, kBoxes | kGrow, kPalette },
    { floatZoomProc, kFloating, kBoxes | kFull, kPalette },
    { floatZoomGrowProc, kFloating, kBoxes | kFull | kGrow, kPalette },
    { floatSideProc, kFloating, kSideBoxes, kSidePalette },
    { floatSideGrowProc, kFloating, kSideBoxes | kGrow, kSidePalette },
    { floatSideZoomProc, kFloating, kSideBoxes | kFull, kSidePalette },
    { floatSideZoomGrowProc, kFloating, kSideBoxes | kFull | kGrow, kSidePalette },
    { 1024, kDocument, kBoxes, kTitled },
    { 1025, kDocument, kBoxes | kGrow, kTitled },
    { 1026, kDocument, kBoxes | kVert, kTitled },
    { 1027, kDocument, kBoxes | kVert | kGrow, kTitled },
    { 1028, kDocument, kBoxes | kHoriz, kTitled },
    { 1029, kDocument, kBoxes | kHoriz | kGrow, kTitled },
    { 1030, kDocument, kBoxes | kFull, kTitled },
    { 1031, kDocument, kBoxes | kFull | kGrow, kTitled },
    { 1040, kPlainWindowClass, 0, kLined },
    { 1041, kAltPlainWindowClass, 0, kLined },
    { 1042, kModalWindowClass, 0, kFramed },
    { 1043, kMovableModalWindowClass, kClose, kTitled },
    { 1044, kAlertWindowClass, 0, kFramed },
    { 1045, kMovableAlertWindowClass, kClose, kTitled },
    { 1046, kMovableModalWindowClass, kClose | kGrow, kTitled },
    { 1057, kFloating, kBoxes, kPalette },
    { 1059, kFloating, kBoxes | kGrow, kPalette },
    { 1061, kFloating, kBoxes | kVert, kPalette },
    { 1063, kFloating, kBoxes | kVert | kGrow, kPalette },
    { 1065, kFloating, kBoxes | kHoriz, kPalette },
    { 1067, kFloating, kBoxes | kHoriz | kGrow, kPalette },
    { 1069, kFloating, kBoxes | kFull, kPalette },
    { 1071, kFloating, kBoxes | kFull | kGrow, kPalette },
    { 1073, kFloating, kSideBoxes, kSidePalette },
    { 1075, kFloating, kSideBoxes | kGrow, kSidePalette },
    { 1077, kFloating, kSideBoxes | kVert, kSidePalette },
    { 1079, kFloating, kSideBoxes | kVert | kGrow, kSidePalette },
    { 1081, kFloating, kSideBoxes | kHoriz, kSidePalette },
    { 1083, kFloating, kSideBoxes | kHoriz | kGrow, kSidePalette },
    { 1085, kFloating, kSideBoxes | kFull, kSidePalette },
    { 1087, kFloating, kSideBoxes | kFull | kGrow, kSidePalette },
    { 1088, kSheetWindowClass, 0, kBare },
    { 1104, kSimpleWindowClass, 0, kBare },
    { 1105, kPlainWindowClass, 0, kLined },
    { 1120, kSheetAlertWindowClass, 0, kBare },
};

bool Same(const Rect& a, const Rect& b)
{
    return std::memcmp(&a, &b, sizeof a) == 0;
}

constexpr unsigned char kTools[] = { 5, 'T', 'o', 'o', 'l', 's' };

WindowRef Make(int inProcID)
{
    return NewCWindow(nullptr, &kContent, kTools, false, (short)inProcID, (WindowRef)-1, true, 0);
}

// A floating window with its title bar at the side, shown, that answers clicks by itself.
class SideWindow {
public:
    SideWindow() : fWindow(Make(floatSideZoomGrowProc))
    {
        ChangeWindowAttributes(fWindow, kWindowStandardHandlerAttribute, 0);
        ShowWindow(fWindow);
        host::RunFor(0.1);
    }
    ~SideWindow()
    {
        if (IsValidWindowPtr(fWindow))
            DisposeWindow(fWindow);
    }
    SideWindow(const SideWindow&) = delete;
    SideWindow& operator=(const SideWindow&) = delete;

    operator WindowRef() const { return fWindow; }
    Rect Bounds(WindowRegionCode inPart) const
    {
        Rect bounds = { 0, 0, 0, 0 };
        GetWindowBounds(fWindow, inPart, &bounds);
        return bounds;
    }
    Point Middle(WindowRegionCode inPart) const
    {
        const Rect bounds = Bounds(inPart);
        return { (short)((bounds.top + bounds.bottom) / 2), (short)((bounds.left + bounds.right) / 2) };
    }
    // Below the boxes.
    Point BarEnd() const
    {
        const Rect bar = Bounds(kWindowTitleBarRgn);
        return { (short)(bar.bottom - 10), (short)(bar.left + 8) };
    }

private:
    WindowRef fWindow;
};

void Click(Point inWhere)
{
    host::Click(inWhere);
    host::RunFor(0.3);
}

void Drag(Point inFrom, Point inTo)
{
    host::PressMouse(inFrom);
    host::MoveMouse(inTo);
    host::ReleaseMouse(inTo);
    host::RunFor(0.3);
}

} // namespace

TEST_CASE("NewCWindow: each published definition is a class, its attributes and a frame")
{
    for (const Definition& expected : kDefinitions) {
        CAPTURE(expected.procID);
        const WindowRef window = Make(expected.procID);
        REQUIRE(window);
        WindowClass windowClass = 0;
        WindowAttributes attributes = 0;
        Rect widths = { 0, 0, 0, 0 };
        GetWindowClass(window, &windowClass);
        GetWindowAttributes(window, &attributes);
        GetWindowStructureWidths(window, &widths);
        CHECK(windowClass == expected.windowClass);
        CHECK(attributes == expected.attributes);
        CHECK(Same(widths, expected.frame));
        DisposeWindow(window);
    }
}

TEST_CASE("NewCWindow: a definition of an application's own, or one that is none, makes no window")
{
    for (const int procID : { 6, 7, 14, 24, 31, 32, 2048, 1047, 1058, 1072, 1984, 2000, -16 }) {
        CAPTURE(procID);
        CHECK(Make(procID) == nullptr);
    }
}

TEST_CASE("A title bar at the side: it stands left of the content, its boxes one below the other")
{
    const SideWindow window;
    CHECK(Same(window.Bounds(kWindowStructureRgn), { 200, 184, 300, 360 }));
    CHECK(Same(window.Bounds(kWindowTitleBarRgn), { 200, 184, 300, 200 }));
    CHECK(window.Bounds(kWindowCloseBoxRgn).bottom <= window.Bounds(kWindowCollapseBoxRgn).top);
    CHECK(window.Bounds(kWindowCollapseBoxRgn).bottom <= window.Bounds(kWindowZoomBoxRgn).top);
    WindowRef found = nullptr;
    CHECK(FindWindow(window.Middle(kWindowCloseBoxRgn), &found) == inGoAway);
    CHECK(found == window);
    CHECK(FindWindow(window.Middle(kWindowCollapseBoxRgn), nullptr) == inCollapseBox);
    CHECK(FindWindow(window.Middle(kWindowZoomBoxRgn), nullptr) == inZoomOut);
    CHECK(FindWindow(window.BarEnd(), nullptr) == inDrag);
    CHECK(FindWindow({ 199, 250 }, nullptr) == inDesk); // nothing above
    CHECK(FindWindow({ 250, 250 }, nullptr) == inContent);
}

TEST_CASE("A title bar at the side: a drag of it moves the window, to the left no farther than the pointer")
{
    const SideWindow window;
    const Point bar = window.BarEnd();
    Drag(bar, { (short)(bar.v + 40), (short)(bar.h + 30) });
    CHECK(Same(window.Bounds(kWindowContentRgn), { 240, 230, 340, 390 }));
    Drag(window.BarEnd(), { 300, -50 });
    CHECK(window.Bounds(kWindowTitleBarRgn).right > 0);
}

TEST_CASE("A title bar at the side: the zoom box fills the screen, bar and all, and comes back")
{
    const SideWindow window;
    Click(window.Middle(kWindowZoomBoxRgn));
    Rect screen;
    GetAvailableWindowPositioningBounds(nullptr, &screen);
    CHECK(Same(window.Bounds(kWindowStructureRgn), screen));
    Click(window.Middle(kWindowZoomBoxRgn));
    CHECK(Same(window.Bounds(kWindowContentRgn), kContent));
}

TEST_CASE("A title bar at the side: collapsed, the window is its bar, and expands again")
{
    const SideWindow window;
    const UInt32 content = host::ScreenPixel({ 250, 250 });
    Click(window.Middle(kWindowCollapseBoxRgn));
    CHECK(IsWindowCollapsed(window));
    CHECK(Same(window.Bounds(kWindowStructureRgn), { 200, 184, 300, 200 }));
    CHECK(host::ScreenPixel({ 250, 250 }) != content);
    CHECK(host::ScreenPixel({ 290, 192 }) == host::ScreenPixel({ 280, 192 })); // the bar is drawn still
    CHECK(FindWindow({ 290, 192 }, nullptr) == inDrag);
    Click(window.Middle(kWindowCollapseBoxRgn));
    CHECK_FALSE(IsWindowCollapsed(window));
    CHECK(host::ScreenPixel({ 250, 250 }) == content);
}

TEST_CASE("A title bar at the side: its close box closes the window, and the pressed box looks pressed")
{
    const SideWindow window;
    const Point box = window.Middle(kWindowCloseBoxRgn);
    const UInt32 before = host::ScreenPixel(box);
    struct User {
        static void Look(EventLoopTimerRef, void* outPixel)
        {
            const Rect bounds = { 200, 184, 300, 200 };
            *(UInt32*)outPixel = host::ScreenPixel({ (short)(bounds.top + 11), (short)(bounds.left + 8) });
            host::ReleaseMouse({ 400, 400 });
        }
    };
    UInt32 pressed = before;
    InstallEventLoopTimer(GetMainEventLoop(), 0.2, 0, User::Look, &pressed, nullptr);
    host::PressMouse(box);
    host::RunFor(0.5);
    CHECK(pressed != before);
    CHECK(IsValidWindowPtr(window)); // let go elsewhere
    Click(box);
    CHECK_FALSE(IsValidWindowPtr(window));
}

TEST_CASE("ConstrainWindowToScreen: what carries the title stays on the screen, above or at the left")
{
    const SideWindow window;
    MoveWindow(window, -60, 300, false);
    CHECK(ConstrainWindowToScreen(window, kWindowStructureRgn, kWindowConstrainAllowPartial, nullptr,
                                  nullptr) == noErr);
    CHECK(window.Bounds(kWindowStructureRgn).left == 0);
}

TEST_CASE("A picture of side title bars" * doctest::skip(std::getenv("LAMPBLACK_SIDE_PICTURE") == nullptr))
{
    const SideWindow one;
    MoveWindow(one, 100, 60, false);
    const SideWindow two;
    MoveWindow(two, 320, 60, false);
    CollapseWindow(two, true);
    const SideWindow three;
    host::RunFor(0.3);
    CHECK(host::SaveScreenshot(std::getenv("LAMPBLACK_SIDE_PICTURE")));
}
