#include "controls/TestSupport.h"

#include <Carbon/MacMemory.h>
#include <Carbon/TextEdit.h>

using namespace lampblack;
using namespace lampblack::test;

namespace {

constexpr UInt16 kDeleteKey = 0x33, kLeftKey = 0x7B, kAKey = 0x00, kCKey = 0x08, kVKey = 0x09, kXKey = 0x07,
                 kZKey = 0x06;

struct Field : TestWindow {
    ControlRef field;
    explicit Field(SInt16 inProcID = kControlEditTextProc, const Rect& inBounds = { 10, 10, 26, 160 })
        : field(Add(inProcID, inBounds))
    {
        SetKeyboardFocus(*this, field, kControlFocusNextPart);
    }
    void Type(const Str& inText)
    {
        host::TypeText(inText);
        host::RunFor(0.2);
    }
    void Press(UInt16 inKey, UniChar inCharacter, UInt32 inModifiers = 0)
    {
        host::PressKey(inKey, inCharacter, inModifiers);
        host::RunFor(0.2);
    }
    ControlEditTextSelectionRec Selection() const
    {
        ControlEditTextSelectionRec selection = {};
        GetControlData(field, 0, kControlEditTextSelectionTag, sizeof selection, &selection, nullptr);
        return selection;
    }
    void Select(SInt16 inStart, SInt16 inEnd)
    {
        const ControlEditTextSelectionRec selection = { inStart, inEnd };
        SetControlData(field, 0, kControlEditTextSelectionTag, sizeof selection, &selection);
    }
    TEHandle Record() const
    {
        TEHandle text = nullptr;
        GetControlData(field, 0, kControlEditTextTEHandleTag, sizeof text, &text, nullptr);
        return text;
    }
};

} // namespace

TEST_CASE("Edit text: typing goes to the focused field")
{
    Field window;
    window.Type("Hello");
    CHECK(TextOf(window.field) == "Hello");
    window.Press(kDeleteKey, 8);
    CHECK(TextOf(window.field) == "Hell");
    window.Press(kLeftKey, 28);
    window.Type("X");
    CHECK(TextOf(window.field) == "HelXl");
}

TEST_CASE("Edit text: letters beyond ASCII arrive as Mac Roman")
{
    Field window;
    window.Type("Gr\xC3\xB6\xC3\x9F"
                "e");
    CHECK(TextOf(window.field) == "Gr\x9A\xA7"
                                  "e");
}

TEST_CASE("Edit text: a raw key handler on the control sees the text after CallNextEventHandler")
{
    Field window;
    static Str gAfter;
    gAfter.clear();
    const EventTypeSpec raw = { kEventClassKeyboard, kEventRawKeyDown };
    InstallEventHandler(
        GetControlEventTarget(window.field),
        [](EventHandlerCallRef inNext, EventRef inEvent, void* inField) {
            const OSStatus status = CallNextEventHandler(inNext, inEvent);
            gAfter = TextOf((ControlRef)inField);
            return status;
        },
        1, &raw, window.field, nullptr);
    window.Type("q");
    CHECK(gAfter == "q");
}

TEST_CASE("Edit text: the selection is set, kept within the text, and replaced by typing")
{
    Field window;
    SetTextOf(window.field, "abcdef");
    window.Select(1, 4);
    CHECK(window.Selection().selStart == 1);
    CHECK(window.Selection().selEnd == 4);
    window.Type("Z");
    CHECK(TextOf(window.field) == "aZef");
    window.Select(0, 32767);
    CHECK(window.Selection().selEnd == 4);
    window.Select(0, -1);
    CHECK(window.Selection().selEnd == 4);
}

TEST_CASE("Edit text: the record behind it is the text's own")
{
    Field window;
    SetTextOf(window.field, "record");
    const TEHandle text = window.Record();
    REQUIRE(text);
    CHECK((**text).teLength == 6);
    TESetSelect(0, 3, text);
    TEDelete(text);
    CHECK(TextOf(window.field) == "ord");
}

TEST_CASE("Password: bullets are shown, the password is kept, and cannot be copied")
{
    Field window(kControlEditTextPasswordProc);
    window.Type("secret");
    CHECK(TextOf(window.field) == Str(6, '\xA5'));
    CHECK(TextOf(window.field, kControlEditTextPasswordTag) == "secret");
    window.Press(kLeftKey, 28);
    window.Press(kDeleteKey, 8);
    CHECK(TextOf(window.field, kControlEditTextPasswordTag) == "secrt");
    window.Select(0, 2);
    window.Type("X");
    CHECK(TextOf(window.field, kControlEditTextPasswordTag) == "Xcrt");
    host::CopyElsewhere("before");
    window.Press(kAKey, 'a', cmdKey);
    window.Press(kCKey, 'c', cmdKey);
    CHECK(host::PasteElsewhere() == "before");
    SetTextOf(window.field, "swordfish", kControlEditTextPasswordTag);
    CHECK(TextOf(window.field) == Str(9, '\xA5'));
    CHECK(TextOf(window.field, kControlEditTextPasswordTag) == "swordfish");
}

TEST_CASE("Locked: keys and paste change nothing, the selection still moves")
{
    Field window;
    SetTextOf(window.field, "fixed");
    const Boolean locked = true;
    CHECK(SetControlData(window.field, 0, kControlEditTextLockedTag, 1, &locked) == noErr);
    host::CopyElsewhere("other");
    window.Type("zzz");
    window.Press(kDeleteKey, 8);
    window.Press(kVKey, 'v', cmdKey);
    CHECK(TextOf(window.field) == "fixed");
    window.Press(kAKey, 'a', cmdKey);
    CHECK(window.Selection().selEnd == 5);
}

TEST_CASE("Key filter: called with code and character; a blocked key changes nothing")
{
    Field window;
    const ControlKeyFilterUPP digits =
        NewControlKeyFilterUPP([](ControlRef, SInt16*, SInt16* ioCharacter, EventModifiers*) {
            return (ControlKeyFilterResult)(*ioCharacter >= '0' && *ioCharacter <= '9');
        });
    CHECK(SetControlData(window.field, 0, kControlEditTextKeyFilterTag, sizeof digits, &digits) == noErr);
    window.Type("a1b2c3");
    CHECK(TextOf(window.field) == "123");
}

TEST_CASE("Validation: called after cut, paste and clear, not while typing")
{
    Field window;
    static int gCalls;
    gCalls = 0;
    const ControlEditTextValidationUPP validate =
        NewControlEditTextValidationUPP([](ControlRef) { ++gCalls; });
    SetControlData(window.field, 0, kControlEditTextValidationProcTag, sizeof validate, &validate);
    window.Type("typed");
    CHECK(gCalls == 0);
    window.Press(kAKey, 'a', cmdKey);
    window.Press(kXKey, 'x', cmdKey);
    CHECK(gCalls == 1);
    CHECK(TextOf(window.field).empty());
    window.Press(kVKey, 'v', cmdKey);
    CHECK(gCalls == 2);
    CHECK(TextOf(window.field) == "typed");
}

TEST_CASE("Cut, copy, paste, undo: by Command keys, through the machine's clipboard")
{
    Field window;
    SetTextOf(window.field, "alpha beta");
    window.Select(0, 5);
    window.Press(kCKey, 'c', cmdKey);
    CHECK(host::PasteElsewhere() == "alpha");
    window.Select(10, 10);
    window.Press(kVKey, 'v', cmdKey);
    CHECK(TextOf(window.field) == "alpha betaalpha");
    window.Press(kZKey, 'z', cmdKey);
    CHECK(TextOf(window.field) == "alpha beta");
    host::CopyElsewhere("from elsewhere");
    window.Press(kAKey, 'a', cmdKey);
    window.Press(kVKey, 'v', cmdKey);
    CHECK(TextOf(window.field) == "from elsewhere");
}

TEST_CASE("Command keys: those that do nothing now, or never, type nothing")
{
    Field window;
    window.Press(kAKey, 'a', cmdKey);
    CHECK(TextOf(window.field).empty());
    window.Type("one");
    window.Press(kCKey, 'c', cmdKey);
    window.Press(0x0B, 'b', cmdKey);
    CHECK(TextOf(window.field) == "one");
}

TEST_CASE("Edit commands reach the focused field as HICommands")
{
    Field window;
    SetTextOf(window.field, "command");
    HICommand command = {};
    command.commandID = kHICommandSelectAll;
    CHECK(ProcessHICommand(&command) == noErr);
    CHECK(window.Selection().selEnd == 7);
    command.commandID = kHICommandClear;
    CHECK(ProcessHICommand(&command) == noErr);
    CHECK(TextOf(window.field).empty());
}

TEST_CASE("Pasting many lines into a field of one line takes the first")
{
    Field window;
    host::CopyElsewhere("one\ntwo");
    window.Press(kVKey, 'v', cmdKey);
    CHECK(TextOf(window.field) == "one");
}

TEST_CASE("A field of one line scrolls so that the caret stays in sight")
{
    Field window;
    window.Type("a text that is much longer than the field that it is typed into");
    const TEHandle text = window.Record();
    CHECK((**text).nLines == 1);
    CHECK((**text).destRect.left < 10);
    const Point caret = TEGetPoint((**text).selEnd, text);
    CHECK(caret.h >= 10);
    CHECK(caret.h <= 160);
    SetTextOf(window.field, "short");
    CHECK((**text).destRect.left == 10);
}

TEST_CASE("A text longer than the record holds is cut, not refused")
{
    Field window;
    CHECK(SetTextOf(window.field, Str(40000, 'x')) == noErr);
    CHECK(TextOf(window.field).size() == 32767);
}

TEST_CASE("IdleControls and the caret: an idle window with a focused field wakes only for its caret")
{
    Field window;
    IdleControls(window);
    host::RunFor(5);
    CHECK(FocusOf(window) == window.field);
    ClearKeyboardFocus(window);
    host::RunFor(5);
    CHECK(FocusOf(window) == nullptr);
}

TEST_CASE("A filter that disposes of its own field ends the key there")
{
    Field window;
    const ControlKeyFilterUPP disposes =
        NewControlKeyFilterUPP([](ControlRef inControl, SInt16*, SInt16*, EventModifiers*) {
            DisposeControl(inControl);
            return (ControlKeyFilterResult)kControlKeyFilterPassKey;
        });
    SetControlData(window.field, 0, kControlEditTextKeyFilterTag, sizeof disposes, &disposes);
    window.Type("x");
    CHECK_FALSE(IsValidControlHandle(window.field));
}
