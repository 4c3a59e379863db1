#include "controls/TestSupport.h"

using namespace lampblack;
using namespace lampblack::test;

namespace {

constexpr UInt16 kReturnKey = 0x24, kTabKey = 0x30, kEscapeKey = 0x35, kPeriodKey = 0x2F;

} // namespace

TEST_CASE("SetKeyboardFocus: fields take it; buttons, hidden and disabled fields do not")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 100, 10, 120, 90 }, "Go");
    const ControlRef field = window.Add(kControlEditTextProc, { 10, 10, 26, 120 });
    CHECK(FocusOf(window) == nullptr);
    CHECK(SetKeyboardFocus(window, field, kControlFocusNextPart) == noErr);
    CHECK(FocusOf(window) == field);
    CHECK(SetKeyboardFocus(window, button, kControlFocusNextPart) == errControlDoesntSupportFocus);
    CHECK(FocusOf(window) == field);
    CHECK(ClearKeyboardFocus(window) == noErr);
    CHECK(FocusOf(window) == nullptr);
    DisableControl(field);
    CHECK(SetKeyboardFocus(window, field, kControlFocusNextPart) == errCouldntSetFocus);
    EnableControl(field);
    HideControl(field);
    CHECK(SetKeyboardFocus(window, field, kControlFocusNextPart) == errCouldntSetFocus);
    CHECK(FocusOf(window) == nullptr);
}

TEST_CASE("Keyboard focus: bad arguments")
{
    TestWindow window, flat(false);
    ControlRef focus = nullptr;
    CHECK(GetKeyboardFocus(nullptr, &focus) == paramErr);
    CHECK(GetKeyboardFocus(window, nullptr) == paramErr);
    CHECK(GetKeyboardFocus(flat, &focus) == errNoRootControl);
    CHECK(AdvanceKeyboardFocus(flat) == errNoRootControl);
    CHECK(AdvanceKeyboardFocus(window) == errCouldntSetFocus);
}

TEST_CASE("AdvanceKeyboardFocus, ReverseKeyboardFocus: in order, round, past what cannot take it")
{
    TestWindow window;
    const ControlRef a = window.Add(kControlEditTextProc, { 10, 10, 26, 120 });
    const ControlRef b = window.Add(kControlEditTextProc, { 40, 10, 56, 120 });
    const ControlRef c = window.Add(kControlEditTextProc, { 70, 10, 86, 120 });
    DisableControl(b);
    AdvanceKeyboardFocus(window);
    CHECK(FocusOf(window) == a);
    AdvanceKeyboardFocus(window);
    CHECK(FocusOf(window) == c);
    AdvanceKeyboardFocus(window);
    CHECK(FocusOf(window) == a);
    ReverseKeyboardFocus(window);
    CHECK(FocusOf(window) == c);
    EnableControl(b);
    ReverseKeyboardFocus(window);
    CHECK(FocusOf(window) == b);
}

TEST_CASE("Tab and shift-Tab move the focus, and select the text of the field they come to")
{
    TestWindow window;
    const ControlRef a = window.Add(kControlEditTextProc, { 10, 10, 26, 120 });
    const ControlRef b = window.Add(kControlEditTextProc, { 40, 10, 56, 120 });
    SetTextOf(b, "second");
    SetKeyboardFocus(window, a, kControlFocusNextPart);
    host::PressKey(kTabKey, 9);
    host::RunFor(0.1);
    CHECK(FocusOf(window) == b);
    ControlEditTextSelectionRec selection = {};
    GetControlData(b, 0, kControlEditTextSelectionTag, sizeof selection, &selection, nullptr);
    CHECK(selection.selStart == 0);
    CHECK(selection.selEnd == 6);
    host::PressKey(kTabKey, 9, shiftKey);
    host::RunFor(0.1);
    CHECK(FocusOf(window) == a);
}

TEST_CASE("A focused field that is hidden or disposed of gives the focus up")
{
    TestWindow window;
    const ControlRef a = window.Add(kControlEditTextProc, { 10, 10, 26, 120 });
    const ControlRef b = window.Add(kControlEditTextProc, { 40, 10, 56, 120 });
    SetKeyboardFocus(window, a, kControlFocusNextPart);
    HideControl(a);
    CHECK(FocusOf(window) == b);
    DisposeControl(b);
    CHECK(FocusOf(window) == nullptr);
}

TEST_CASE("A click gives a field the focus; a click on a button leaves it there")
{
    TestWindow window;
    const ControlRef field = window.Add(kControlEditTextProc, { 10, 10, 26, 120 });
    const ControlRef button = window.Add(kControlPushButtonProc, { 100, 10, 120, 90 }, "Go");
    host::Click(Middle(field));
    host::RunFor(0.1);
    CHECK(FocusOf(window) == field);
    host::Click(Middle(button));
    host::RunFor(0.1);
    CHECK(FocusOf(window) == field);
}

TEST_CASE("Return: the command 'ok  ' first; unhandled, the default button is hit")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 100, 10, 120, 90 }, "OK");
    CHECK(SetWindowDefaultButton(window, button) == noErr);
    Boolean isDefault = false;
    GetControlData(button, 0, kControlPushButtonDefaultTag, 1, &isDefault, nullptr);
    CHECK(isDefault);
    Listener hits(GetWindowEventTarget(window), { kHitEvent });
    {
        Listener commands(GetWindowEventTarget(window), { { kEventClassCommand, kEventCommandProcess } });
        host::PressKey(kReturnKey, 13);
        host::RunFor(1);
        REQUIRE(commands.Count() == 1);
        CHECK(commands.All()[0].command == kHICommandOK);
    }
    REQUIRE(hits.Count() == 1);
    CHECK(hits.All()[0].control == button);
    CHECK(hits.All()[0].part == kControlButtonPart);

    Listener taken(GetWindowEventTarget(window), { { kEventClassCommand, kEventCommandProcess } }, noErr);
    host::PressKey(kReturnKey, 13);
    host::RunFor(1);
    CHECK(taken.Count() == 1);
    CHECK(hits.Count() == 1);
}

TEST_CASE("Return: a hidden or disabled default button is not hit")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 100, 10, 120, 90 }, "OK");
    SetWindowDefaultButton(window, button);
    Listener hits(GetWindowEventTarget(window), { kHitEvent });
    DisableControl(button);
    host::PressKey(kReturnKey, 13);
    host::RunFor(0.5);
    EnableControl(button);
    HideControl(button);
    host::PressKey(kReturnKey, 13);
    host::RunFor(0.5);
    CHECK(hits.Count() == 0);
}

TEST_CASE("Return and Escape reach the window from a focused field with a filter that blocks them")
{
    TestWindow window;
    const ControlRef okay = window.Add(kControlPushButtonProc, { 100, 10, 120, 90 }, "OK");
    const ControlRef cancel = window.Add(kControlPushButtonProc, { 100, 110, 120, 190 }, "Cancel");
    const ControlRef field = window.Add(kControlEditTextProc, { 10, 10, 26, 120 });
    SetWindowDefaultButton(window, okay);
    SetWindowCancelButton(window, cancel);
    const ControlKeyFilterUPP block =
        NewControlKeyFilterUPP([](ControlRef, SInt16*, SInt16*, EventModifiers*) {
            return (ControlKeyFilterResult)kControlKeyFilterBlockKey;
        });
    SetControlData(field, 0, kControlEditTextKeyFilterTag, sizeof block, &block);
    SetKeyboardFocus(window, field, kControlFocusNextPart);
    Listener hits(GetWindowEventTarget(window), { kHitEvent });
    host::PressKey(kReturnKey, 13);
    host::RunFor(0.5);
    host::PressKey(kEscapeKey, 27);
    host::RunFor(0.5);
    host::PressKey(kPeriodKey, '.', cmdKey);
    host::RunFor(0.5);
    REQUIRE(hits.Count() == 3);
    CHECK(hits.All()[0].control == okay);
    CHECK(hits.All()[1].control == cancel);
    CHECK(hits.All()[2].control == cancel);
}

TEST_CASE("GetWindowDefaultButton: the button, none after it is disposed of; bad arguments")
{
    TestWindow window, other;
    const ControlRef button = window.Add(kControlPushButtonProc, { 100, 10, 120, 90 }, "OK");
    ControlRef found = nullptr;
    SetWindowDefaultButton(window, button);
    CHECK(GetWindowDefaultButton(window, &found) == noErr);
    CHECK(found == button);
    CHECK(SetWindowDefaultButton(other, button) == errControlNotFound);
    DisposeControl(button);
    CHECK(GetWindowDefaultButton(window, &found) == noErr);
    CHECK(found == nullptr);
    CHECK(SetWindowDefaultButton(nullptr, nullptr) == paramErr);
    CHECK(GetWindowCancelButton(window, nullptr) == paramErr);
}
