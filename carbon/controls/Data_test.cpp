#include "controls/TestSupport.h"

#include <Carbon/TextEdit.h>

using namespace lampblack::test;

TEST_CASE("SetControlData: unknown tags and wrong sizes are told apart")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    const Boolean on = true;
    CHECK(SetControlData(button, 0, kControlPushButtonDefaultTag, 1, &on) == noErr);
    Boolean value = false;
    Size actual = 0;
    CHECK(GetControlData(button, 0, kControlPushButtonDefaultTag, 1, &value, &actual) == noErr);
    CHECK(value == true);
    CHECK(actual == 1);
    CHECK(SetControlData(button, 0, 'zzzz', 1, &on) == errDataNotSupported);
    CHECK(SetControlData(button, 0, kControlPushButtonDefaultTag, 2, &on) == errDataSizeMismatch);
    CHECK(GetControlData(button, 0, kControlPushButtonDefaultTag, 0, &value, nullptr) == errDataSizeMismatch);
    CHECK(GetControlData(button, 0, 'text', 1, &value, nullptr) == errDataNotSupported);
    CHECK(SetControlData(nullptr, 0, 'dflt', 1, &on) == paramErr);
    CHECK(SetControlData(button, 0, 'dflt', 1, nullptr) == paramErr);
}

TEST_CASE("GetControlData: a text comes as far as the buffer reaches, with its whole size")
{
    TestWindow window;
    const ControlRef label = window.Add(kControlStaticTextProc, { 10, 10, 30, 200 });
    CHECK(SetTextOf(label, "Lampblack") == noErr);
    Size size = 0;
    CHECK(GetControlDataSize(label, 0, 'text', &size) == noErr);
    CHECK(size == 9);
    char buffer[6] = "-----";
    CHECK(GetControlData(label, 0, 'text', 4, buffer, &size) == noErr);
    CHECK(Str(buffer) == "Lamp-");
    CHECK(size == 9);
}

TEST_CASE("Control sizes: buttons take one, texts do not")
{
    TestWindow window;
    const SInt16 small = kControlSizeSmall;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    const ControlRef label = window.Add(kControlStaticTextProc, { 10, 10, 30, 200 });
    CHECK(SetControlData(button, 0, kControlSizeTag, 2, &small) == noErr);
    CHECK(SetControlData(label, 0, kControlSizeTag, 2, &small) == errDataNotSupported);
}

TEST_CASE("SetControlFontStyle: the record is the 'font' datum")
{
    TestWindow window;
    const ControlRef label = window.Add(kControlStaticTextProc, { 10, 10, 30, 200 });
    ControlFontStyleRec style = {};
    style.flags = kControlUseFontMask | kControlUseSizeMask;
    style.font = kControlFontSmallSystemFont;
    style.size = 9;
    CHECK(SetControlFontStyle(label, &style) == noErr);
    ControlFontStyleRec back = {};
    CHECK(GetControlData(label, 0, kControlFontStyleTag, sizeof back, &back, nullptr) == noErr);
    CHECK(back.font == -2);
    CHECK(back.size == 9);
    CHECK(SetControlFontStyle(label, nullptr) == paramErr);
    CHECK(SetControlData(label, 0, kControlFontStyleTag, 10, &style) == errDataSizeMismatch);
}

TEST_CASE("Properties: set, read, measured, removed; what is not there is not found")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    const SInt32 value = 42;
    ByteCount size = 0;
    SInt32 back = 0;
    CHECK(GetControlProperty(button, 'TEST', 'valu', sizeof back, &size, &back) ==
          controlPropertyNotFoundErr);
    CHECK(SetControlProperty(button, 'TEST', 'valu', sizeof value, &value) == noErr);
    CHECK(GetControlProperty(button, 'TEST', 'valu', sizeof back, &size, &back) == noErr);
    CHECK(back == 42);
    CHECK(size == 4);
    CHECK(GetControlPropertySize(button, 'TEST', 'valu', &size) == noErr);
    CHECK(size == 4);
    UInt32 attributes = 9;
    CHECK(ChangeControlPropertyAttributes(button, 'TEST', 'valu', kControlPropertyPersistent, 0) == noErr);
    CHECK(GetControlPropertyAttributes(button, 'TEST', 'valu', &attributes) == noErr);
    CHECK(attributes == kControlPropertyPersistent);
    CHECK(RemoveControlProperty(button, 'TEST', 'valu') == noErr);
    CHECK(RemoveControlProperty(button, 'TEST', 'valu') == controlPropertyNotFoundErr);
    CHECK(SetControlProperty(button, 0, 'valu', sizeof value, &value) == controlPropertyInvalid);
    CHECK(SetControlProperty(nullptr, 'TEST', 'valu', sizeof value, &value) == paramErr);
}

TEST_CASE("GetControlByID: signature and number count; hidden and embedded controls are found")
{
    TestWindow window;
    const ControlRef group = window.Add(kControlGroupBoxTextTitleProc, { 10, 10, 150, 200 }, "Group");
    const ControlRef button = window.Add(kControlPushButtonProc, { 40, 40, 60, 120 }, "Go");
    EmbedControl(button, group);
    HideControl(group);
    const ControlID id = { 0xA94B525A, 5 };
    CHECK(SetControlID(button, &id) == noErr);
    ControlRef found = nullptr;
    CHECK(GetControlByID(window, &id, &found) == noErr);
    CHECK(found == button);
    const ControlID other = { 'OTHR', 5 };
    found = nullptr;
    CHECK(GetControlByID(window, &other, &found) == errControlNotFound);
    CHECK(found == nullptr);
    ControlID back = {};
    CHECK(GetControlID(button, &back) == noErr);
    CHECK(back.id == 5);
    CHECK(GetControlByID(nullptr, &id, &found) == paramErr);
}

TEST_CASE("Values: kept within the limits, in 16 and in 32 bits")
{
    TestWindow window;
    const ControlRef bar = window.Add(kControlScrollBarProc, { 10, 10, 110, 25 }, "", 5, 0, 10);
    SetControlValue(bar, 99);
    CHECK(GetControlValue(bar) == 10);
    SetControl32BitMaximum(bar, 100000);
    SetControl32BitValue(bar, 70000);
    CHECK(GetControl32BitValue(bar) == 70000);
    CHECK(GetControlValue(bar) == 32767);
    SetControl32BitMaximum(bar, 50);
    CHECK(GetControl32BitValue(bar) == 50);
    SetControl32BitMinimum(bar, 50);
    SetControlValue(bar, 3);
    CHECK(GetControlValue(bar) == 50);
    SetControlViewSize(bar, 12);
    CHECK(GetControlViewSize(bar) == 12);
}

TEST_CASE("Change notices: value, title, bounds, visibility, enabling; none when nothing changed")
{
    TestWindow window;
    const ControlRef box = window.Add(kControlCheckBoxProc, { 10, 10, 30, 120 }, "Box");
    Listener listener(GetControlEventTarget(box),
                      { { kEventClassControl, kEventControlValueFieldChanged },
                        { kEventClassControl, kEventControlTitleChanged },
                        { kEventClassControl, kEventControlBoundsChanged },
                        { kEventClassControl, kEventControlVisibilityChanged },
                        { kEventClassControl, kEventControlEnabledStateChanged } });
    SetControlValue(box, 1);
    SetControlValue(box, 1);
    SetControlTitle(box, Pascal("New").data());
    SetControlTitle(box, Pascal("New").data());
    MoveControl(box, 15, 15);
    HideControl(box);
    HideControl(box);
    DisableControl(box);
    REQUIRE(listener.Count() == 5);
    CHECK(listener.All()[0].kind == kEventControlValueFieldChanged);
    CHECK(listener.All()[1].kind == kEventControlTitleChanged);
    CHECK(listener.All()[2].kind == kEventControlBoundsChanged);
    CHECK(listener.All()[3].kind == kEventControlVisibilityChanged);
    CHECK(listener.All()[4].kind == kEventControlEnabledStateChanged);
    CHECK(listener.All()[0].control == box);
}

TEST_CASE("GetControlKind: the kind of each definition ID")
{
    struct {
        SInt16 procID;
        OSType kind;
    } const kinds[] = { { 0, 'push' },   { 368, 'push' }, { 1, 'cbox' },   { 369, 'cbox' }, { 2, 'rdio' },
                        { 370, 'rdio' }, { 16, 'sbar' },  { 384, 'sbar' }, { 386, 'sbar' }, { 288, 'stxt' },
                        { 272, 'etxt' }, { 274, 'etxt' }, { 80, 'prgb' },  { 256, 'upan' }, { 144, 'sepa' },
                        { 160, 'grpb' }, { 161, 'cgrp' }, { 400, 'popb' }, { 1008, 'popb' } };
    TestWindow window;
    for (const auto& expected : kinds) {
        CAPTURE(expected.procID);
        const ControlRef control = window.Add(expected.procID, { 10, 10, 40, 90 }, "", 0, -12345);
        ControlKind kind = {};
        CHECK(GetControlKind(control, &kind) == noErr);
        CHECK(kind.signature == kControlKindSignatureApple);
        CHECK(kind.kind == expected.kind);
    }
}

TEST_CASE("HiliteControl: 255 dims a control, 0 brings it back")
{
    TestWindow window;
    const ControlRef button = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "Go");
    HiliteControl(button, kControlInactivePart);
    CHECK_FALSE(IsControlActive(button));
    CHECK(GetControlHilite(button) == 255);
    HiliteControl(button, 0);
    CHECK(IsControlActive(button));
    DeactivateControl(button);
    CHECK(GetControlHilite(button) == 255);
    HiliteControl(button, 0);
    CHECK(IsControlActive(button));
    HiliteControl(button, kControlButtonPart);
    CHECK(IsControlHilited(button));
}

TEST_CASE("GetBestControlRect: a push button fits its title")
{
    TestWindow window;
    const ControlRef small = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "OK");
    const ControlRef large = window.Add(kControlPushButtonProc, { 10, 10, 30, 90 }, "A title of some length");
    Rect a, b;
    SInt16 base = 0;
    CHECK(GetBestControlRect(small, &a, &base) == noErr);
    CHECK(GetBestControlRect(large, &b, &base) == noErr);
    CHECK(b.right - b.left > a.right - a.left);
    CHECK(a.bottom - a.top == 20);
    CHECK(base < 0);
    CHECK(GetBestControlRect(small, nullptr, &base) == paramErr);
}
