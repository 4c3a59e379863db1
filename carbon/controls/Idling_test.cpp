// What wakes an application that nobody touches: its caret and its timers, and nothing else.
#include "controls/TestSupport.h"
#include "events/WaitHooks.h"

#include <cmath>

using namespace lampblack;
using namespace lampblack::test;

namespace {

constexpr double kSeconds = 20;

// Waits within that time, beyond the one in which it ends.
long WakesWithin(double inSeconds)
{
    const unsigned long before = events::WaitsSoFar();
    host::RunFor(inSeconds);
    return (long)(events::WaitsSoFar() - before) - 1;
}

ControlRef AddField(const TestWindow& inWindow)
{
    return inWindow.Add(kControlEditTextProc, { 20, 20, 40, 200 });
}

} // namespace

TEST_CASE("An idle window: is not woken at all")
{
    TestWindow window;
    const ControlRef button = window.Add(pushButProc, { 60, 20, 80, 120 }, "Press");
    REQUIRE(button);
    AddField(window);
    host::RunFor(1); // until all is drawn
    CHECK(WakesWithin(kSeconds) == 0);
}

TEST_CASE("An idle window with a focused field: is woken for the caret, and for nothing else")
{
    TestWindow window;
    const ControlRef field = AddField(window);
    REQUIRE(SetKeyboardFocus(window, field, kControlFocusNextPart) == noErr);
    host::RunFor(1);
    const double blinks = kSeconds * 60 / GetCaretTime();
    const long wakes = WakesWithin(kSeconds);
    CHECK(wakes >= (long)std::floor(blinks));
    CHECK(wakes <= (long)std::ceil(blinks));
    ClearKeyboardFocus(window);
    host::RunFor(1);
    CHECK(WakesWithin(kSeconds) == 0);
}

TEST_CASE("A window with a focused field behind another: keeps its caret still")
{
    TestWindow back;
    const ControlRef field = AddField(back);
    REQUIRE(SetKeyboardFocus(back, field, kControlFocusNextPart) == noErr);
    TestWindow front;
    SelectWindow(front);
    host::RunFor(1);
    CHECK(WakesWithin(kSeconds) == 0);
}
