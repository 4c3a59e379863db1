// Scoped savers of port, world, colours and pen.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <memory>

#include "CallLog.h"

namespace {

int gSetPorts = 0;

CGrafPtr CurrentPort()
{
    CGrafPtr port = nullptr;
    GetPort(&port);
    return port;
}

// A port of its own, current for the test.
struct TestPort {
    TestPort() : fPort(CreateNewPort())
    {
        GetPort(&fBefore);
        SetPort(fPort);
    }
    ~TestPort()
    {
        SetPort(fBefore);
        DisposePort(fPort);
    }
    CGrafPtr fPort, fBefore = nullptr;
};

bool IsColor(const RGBColor& inColor, UInt16 inRed, UInt16 inGreen, UInt16 inBlue)
{
    return inColor.red == inRed && inColor.green == inGreen && inColor.blue == inBlue;
}

} // namespace

LAMPBLACK_INTERPOSE void SetPort(CGrafPtr port)
{
    ++gSetPorts;
    Next<decltype(SetPort)>("SetPort")(port);
}

LAMPBLACK_WATCH(void, SetPortWindowPort, (WindowRef window), (window))
LAMPBLACK_WATCH(void, GetGWorld, (CGrafPtr * port, GDHandle* device), (port, device))
LAMPBLACK_WATCH(void, SetGWorld, (CGrafPtr port, GDHandle device), (port, device))
LAMPBLACK_WATCH(void, GetForeColor, (RGBColor * color), (color))
LAMPBLACK_WATCH(void, GetBackColor, (RGBColor * color), (color))
LAMPBLACK_WATCH(void, RGBForeColor, (const RGBColor* color), (color))
LAMPBLACK_WATCH(void, RGBBackColor, (const RGBColor* color), (color))
LAMPBLACK_WATCH(void, ForeColor, (SInt32 color), (color))
LAMPBLACK_WATCH(void, BackColor, (SInt32 color), (color))
LAMPBLACK_WATCH(void, GetPenState, (PenState * state), (state))
LAMPBLACK_WATCH(void, SetPenState, (const PenState* state), (state))
LAMPBLACK_WATCH(void, PenNormal, (), ())
LAMPBLACK_WATCH(void, PenSize, (short width, short height), (width, height))
LAMPBLACK_WATCH(void, TextFont, (short font), (font))
LAMPBLACK_WATCH(void, TextSize, (short size), (size))
LAMPBLACK_WATCH(void, TextFace, (StyleParameter face), (face))
LAMPBLACK_WATCH(void, TextMode, (short mode), (mode))
LAMPBLACK_WATCH(void, GetFNum, (ConstStr255Param name, short* number), (name, number))

TEST_CASE("StPortSaver: the port of the caller is back at the end of the scope")
{
    TestPort outer, inner;
    SetPort(outer.fPort);
    {
        const StPortSaver saver(inner.fPort);
        CHECK(CurrentPort() == inner.fPort);
    }
    CHECK(CurrentPort() == outer.fPort);
}

TEST_CASE("StPortSaver: a null window saves but does not switch, and its destruction still restores")
{
    TestPort outer, inner;
    SetPort(outer.fPort);
    {
        const StPortSaver saver(static_cast<WindowRef>(nullptr));
        CHECK(CurrentPort() == outer.fPort);
        SetPort(inner.fPort);
    }
    CHECK(CurrentPort() == outer.fPort);
}

TEST_CASE("StPortSaver: null ports and controls do not switch")
{
    TestPort outer;
    const StPortSaver port(static_cast<CGrafPtr>(nullptr));
    const StPortSaver control(static_cast<ControlRef>(nullptr));
    CHECK(CurrentPort() == outer.fPort);
}

TEST_CASE("StPortSaver: a window, a control and a list make the window's port current")
{
    TestPort outer;
    const Rect bounds = { 100, 100, 200, 300 };
    WindowRef window = nullptr;
    REQUIRE(CreateNewWindow(kDocumentWindowClass, kWindowStandardDocumentAttributes, &bounds, &window) ==
            noErr);
    ControlRef root = nullptr;
    REQUIRE(CreateRootControl(window, &root) == noErr);
    const Rect view = { 10, 10, 50, 100 }, cells = { 0, 0, 2, 1 };
    const ListRef list = LNew(&view, &cells, { 0, 0 }, 0, window, false, false, false, true);
    REQUIRE(list);
    SetPort(outer.fPort);
    {
        const StPortSaver saver(list);
        CHECK(CurrentPort() == GetWindowPort(window));
    }
    CHECK(CurrentPort() == outer.fPort);
    LDispose(list);
    {
        const StPortSaver saver(window);
        CHECK(CurrentPort() == GetWindowPort(window));
    }
    {
        const StPortSaver saver(root);
        CHECK(CurrentPort() == GetWindowPort(window));
    }
    CHECK(CurrentPort() == outer.fPort);
    ReleaseWindow(window);
}

TEST_CASE("StPortSaver::SetSavedPort: with null the destructor leaves the current port as it is")
{
    TestPort outer, inner;
    SetPort(outer.fPort);
    int before = 0;
    {
        StPortSaver saver;
        SetPort(inner.fPort);
        saver.SetSavedPort(nullptr);
        before = gSetPorts;
    }
    CHECK(gSetPorts == before);
    CHECK(CurrentPort() == inner.fPort);
}

TEST_CASE("StPortSaver: may live on the heap and be restored early")
{
    TestPort outer, inner;
    SetPort(outer.fPort);
    const auto saver = std::make_unique<StPortSaver>(inner.fPort);
    saver->Restore();
    CHECK(CurrentPort() == outer.fPort);
}

TEST_CASE("StGWorldSaver: switches to a world and restores the caller's")
{
    TestPort outer;
    const Rect bounds = { 0, 0, 10, 10 };
    GWorldPtr world = nullptr;
    REQUIRE(NewGWorld(&world, 32, &bounds, nullptr, nullptr, 0) == noErr);
    {
        const StGWorldSaver saver(world, nullptr);
        CHECK(CurrentPort() == world);
    }
    CHECK(CurrentPort() == outer.fPort);
    {
        StGWorldSaver saver(nullptr, nullptr);
        CHECK(CurrentPort() == outer.fPort);
        SetGWorld(world, nullptr);
        saver.SetSavedGWorld(nullptr, nullptr);
    }
    CHECK(CurrentPort() == world);
    SetPort(outer.fPort);
    DisposeGWorld(world);
}

TEST_CASE("StColorState: the colours are back; Normalize gives black on white and needs no state")
{
    TestPort port;
    const RGBColor red = { 0xFFFF, 0, 0 }, blue = { 0, 0, 0xFFFF };
    RGBForeColor(&red);
    RGBBackColor(&blue);
    RGBColor fore, back;
    {
        const StColorState saver;
        StColorState::Normalize();
        GetForeColor(&fore);
        GetBackColor(&back);
        CHECK(IsColor(fore, 0, 0, 0));
        CHECK(IsColor(back, 0xFFFF, 0xFFFF, 0xFFFF));
    }
    GetForeColor(&fore);
    GetBackColor(&back);
    CHECK(IsColor(fore, 0xFFFF, 0, 0));
    CHECK(IsColor(back, 0, 0, 0xFFFF));
}

TEST_CASE("StPenState: a normal pen of 2 by 3 for the scope, the caller's pen afterwards")
{
    TestPort port;
    PenSize(7, 5);
    PenMode(patXor);
    MoveTo(11, 12);
    PenState state;
    {
        const StPenState saver(2, 3);
        GetPenState(&state);
        CHECK(state.pnSize.h == 2);
        CHECK(state.pnSize.v == 3);
        CHECK(state.pnMode == patCopy);
        MoveTo(50, 50);
    }
    GetPenState(&state);
    CHECK(state.pnSize.h == 7);
    CHECK(state.pnSize.v == 5);
    CHECK(state.pnMode == patXor);
    CHECK(state.pnLoc.h == 11);
    CHECK(state.pnLoc.v == 12);
}

TEST_CASE("GetTextState, SetTextState: carry the port's font settings; null does nothing")
{
    TestPort port;
    TextFont(4);
    TextSize(9);
    TextFace(bold | italic);
    TextMode(srcCopy);
    TextState state = {};
    GetTextState(&state);
    CHECK(state.font == 4);
    CHECK(state.size == 9);
    CHECK(state.face == (bold | italic));
    CHECK(state.mode == srcCopy);
    TextFont(0);
    TextSize(0);
    SetTextState(nullptr);
    GetTextState(nullptr);
    CHECK(GetPortTextFont(port.fPort) == 0);
    SetTextState(&state);
    CHECK(GetPortTextFont(port.fPort) == 4);
    CHECK(GetPortTextSize(port.fPort) == 9);
}

TEST_CASE("SetTextFont: sets the number that the name has")
{
    TestPort port;
    SInt16 monaco = 0;
    GetFNum(reinterpret_cast<ConstStr255Param>("\6Monaco"), &monaco);
    SetTextFont(reinterpret_cast<ConstStr255Param>("\6Monaco"));
    CHECK(monaco != 0);
    CHECK(GetPortTextFont(port.fPort) == monaco);
    SetTextFont(reinterpret_cast<ConstStr255Param>("\7Nowhere"));
    CHECK(GetPortTextFont(port.fPort) == 0);
}

TEST_CASE("Savers: the calls that they make, in their order")
{
    TestPort port;
    {
        const CallLog log;
        {
            const StPenState plain;
        }
        CHECK(log.Calls() == "GetPenState PenNormal SetPenState");
    }
    {
        const CallLog log;
        {
            const StPenState sized(2, 3);
        }
        CHECK(log.Calls() == "GetPenState PenNormal PenSize SetPenState");
    }
    {
        const CallLog log;
        {
            const StColorState colors;
            StColorState::Normalize();
        }
        CHECK(log.Calls() == "GetForeColor GetBackColor ForeColor BackColor RGBForeColor RGBBackColor");
    }
    {
        const CallLog log;
        {
            const StGWorldSaver world(port.fPort, nullptr);
        }
        CHECK(log.Calls() == "GetGWorld SetGWorld SetGWorld");
    }
}

TEST_CASE("SetTextState, SetTextFont: the calls that they make, in their order; null makes none")
{
    TestPort port;
    const TextState state = { 4, 9, bold, srcCopy };
    const CallLog log;
    SetTextState(nullptr);
    GetTextState(nullptr);
    CHECK(log.Calls() == "");
    SetTextState(&state);
    SetTextFont(reinterpret_cast<ConstStr255Param>("\6Monaco"));
    CHECK(log.Calls() == "TextFont TextSize TextFace TextMode GetFNum TextFont");
}
