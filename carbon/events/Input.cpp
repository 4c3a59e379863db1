// Each kind of the machine's input, and the event that it becomes.
#include "events/Input.h"
#include "Host.h"
#include "events/Queue.h"
#include "events/ScreenHooks.h"
#include "events/Timers.h"

#include "foundation/MacRoman.h"

#include <Carbon/CarbonEvents.h>

#include <bit>
#include <optional>

namespace lampblack::events {

namespace {

using host::Input;
using Kind = Input::Kind;

constexpr double kFrame = 1.0 / 60;

struct UserState {
    UInt32 buttons = 0; // as of the last input taken from the machine
    Point mouse = { 0, 0 };
    double lastTaken = 0; // when input was last looked for
    // As of the last user event taken from the queue.
    std::optional<UInt32> eventModifiers;
    UInt32 eventButtons = 0;
    std::optional<Input> ahead; // taken, not yet posted
};

UserState& State()
{
    static UserState state;
    return state;
}

// Builds one event and posts it.
class Posting {
public:
    Posting(OSType inClass, UInt32 inKind, const Input& inInput, EventAttributes inAttributes)
        : fEvent(NewEvent(inClass, inKind, inInput.time, inAttributes))
    {
    }
    ~Posting()
    {
        if (!fEvent)
            return;
        gQueue.Post(fEvent, kEventPriorityStandard);
        Release(fEvent);
    }
    Posting(const Posting&) = delete;
    Posting& operator=(const Posting&) = delete;

    template <class Value>
    Posting& With(EventParamName inName, EventParamType inType, const Value& inValue)
    {
        if (fEvent)
            Set(*fEvent, inName, inType, inValue);
        return *this;
    }

    Posting& With(EventParamName inName, EventParamType inType, const void* inData, size_t inSize)
    {
        if (fEvent)
            SetParameter(*fEvent, inName, inType, inSize, inData);
        return *this;
    }

private:
    Event* fEvent;
};

Posting& WithMouse(Posting& ioPosting, const Input& inInput)
{
    return ioPosting.With(kEventParamMouseLocation, typeQDPoint, inInput.where)
        .With(kEventParamKeyModifiers, typeUInt32, inInput.modifiers)
        .With(kEventParamMouseChord, typeUInt32, State().buttons);
}

void PostButton(UInt32 inKind, const Input& inInput)
{
    Posting posting(kEventClassMouse, inKind, inInput, kEventAttributeUserEvent);
    WithMouse(posting, inInput)
        .With(kEventParamMouseButton, typeMouseButton, inInput.button)
        .With(kEventParamClickCount, typeUInt32, inInput.clickCount);
}

UInt32 ButtonBit(const Input& inInput)
{
    return inInput.button >= 1 && inInput.button <= 32 ? 1u << (inInput.button - 1) : 0;
}

void PostMouseDown(const Input& inInput)
{
    State().buttons |= ButtonBit(inInput);
    PostButton(kEventMouseDown, inInput);
}

void PostMouseUp(const Input& inInput)
{
    State().buttons &= ~ButtonBit(inInput);
    PostButton(kEventMouseUp, inInput);
}

void PostMouseMoved(const Input& inInput)
{
    UserState& state = State();
    const Point delta = { (short)(inInput.where.v - state.mouse.v),
                          (short)(inInput.where.h - state.mouse.h) };
    Posting posting(kEventClassMouse, state.buttons ? kEventMouseDragged : kEventMouseMoved, inInput,
                    kEventAttributeUserEvent);
    WithMouse(posting, inInput).With(kEventParamMouseDelta, typeQDPoint, delta);
    if (state.buttons)
        posting.With(kEventParamMouseButton, typeMouseButton,
                     (EventMouseButton)(std::countr_zero(state.buttons) + 1));
}

void PostWheel(EventMouseWheelAxis inAxis, SInt32 inLines, const Input& inInput)
{
    if (!inLines)
        return;
    Posting posting(kEventClassMouse, kEventMouseWheelMoved, inInput, kEventAttributeUserEvent);
    WithMouse(posting, inInput)
        .With(kEventParamMouseWheelAxis, typeMouseWheelAxis, inAxis)
        .With(kEventParamMouseWheelDelta, typeSInt32, inLines);
}

void PostMouseWheel(const Input& inInput)
{
    PostWheel(kEventMouseWheelAxisY, inInput.wheelV, inInput);
    PostWheel(kEventMouseWheelAxisX, inInput.wheelH, inInput);
}

// The Mac Roman character of what the key types; 0 for a key that types nothing, or nothing Mac Roman.
char MacCharacter(const Input& inInput)
{
    UInt8 character = 0;
    if (inInput.textLength)
        foundation::UnicodeToMacRoman(inInput.text[0], &character);
    return (char)character;
}

Posting& WithKey(Posting& ioPosting, const Input& inInput)
{
    ioPosting.With(kEventParamKeyCode, typeUInt32, (UInt32)inInput.virtualKey)
        .With(kEventParamKeyMacCharCodes, typeChar, MacCharacter(inInput))
        .With(kEventParamKeyModifiers, typeUInt32, inInput.modifiers);
    if (inInput.textLength)
        ioPosting.With(kEventParamKeyUnicodes, typeUnicodeText, inInput.text,
                       inInput.textLength * sizeof(UniChar));
    return ioPosting;
}

void PostKey(UInt32 inKind, const Input& inInput)
{
    Posting posting(kEventClassKeyboard, inKind, inInput, kEventAttributeUserEvent);
    WithKey(posting, inInput);
}

void PostModifiers(const Input& inInput)
{
    Posting posting(kEventClassKeyboard, kEventRawKeyModifiersChanged, inInput, kEventAttributeUserEvent);
    posting.With(kEventParamKeyModifiers, typeUInt32, inInput.modifiers);
}

// Text of an input method comes as text for a key, which handlers look at for its modifiers and its
// character.
void PostText(const Input& inInput)
{
    if (!inInput.textLength)
        return;
    Event* key = NewEvent(kEventClassKeyboard, kEventRawKeyDown, inInput.time, kEventAttributeUserEvent);
    if (!key)
        return;
    Set(*key, kEventParamKeyCode, typeUInt32, UInt32{ 0 });
    Set(*key, kEventParamKeyMacCharCodes, typeChar, MacCharacter(inInput));
    Set(*key, kEventParamKeyModifiers, typeUInt32, inInput.modifiers);
    const size_t size = inInput.textLength * sizeof(UniChar);
    SetParameter(*key, kEventParamKeyUnicodes, typeUnicodeText, size, inInput.text);
    Posting posting(kEventClassTextInput, kEventTextInputUnicodeForKeyEvent, inInput,
                    kEventAttributeUserEvent);
    posting.With(kEventParamTextInputSendText, typeUnicodeText, inInput.text, size)
        .With(kEventParamTextInputSendKeyboardEvent, typeEventRef, ReferenceTo(key))
        .With(kEventParamKeyModifiers, typeUInt32, inInput.modifiers);
    Release(key);
}

void PostQuit(const Input& inInput)
{
    HICommand command = {};
    command.commandID = kHICommandQuit;
    Posting posting(kEventClassCommand, kEventCommandProcess, inInput, kEventAttributeUserEvent);
    posting.With(kEventParamDirectObject, typeHICommand, command)
        .With(kEventParamKeyModifiers, typeUInt32, inInput.modifiers)
        .With(kEventParamPostTarget, typeEventTargetRef, GetApplicationEventTarget());
}

void PostActivation(UInt32 inKind, const Input& inInput)
{
    Posting(kEventClassApplication, inKind, inInput, kEventAttributeNone);
}

void TellScreenResized(const Input& inInput)
{
    if (TheScreenHooks().screenChanged)
        TheScreenHooks().screenChanged(inInput.where.h, inInput.where.v);
}

void TellScreenExposed()
{
    if (TheScreenHooks().screenExposed)
        TheScreenHooks().screenExposed();
}

void Convert(const Input& inInput)
{
    switch (inInput.kind) {
    case Kind::MouseMoved: PostMouseMoved(inInput); break;
    case Kind::MouseDown: PostMouseDown(inInput); break;
    case Kind::MouseUp: PostMouseUp(inInput); break;
    case Kind::MouseWheel: PostMouseWheel(inInput); break;
    case Kind::KeyDown: PostKey(kEventRawKeyDown, inInput); break;
    case Kind::KeyRepeat: PostKey(kEventRawKeyRepeat, inInput); break;
    case Kind::KeyUp: PostKey(kEventRawKeyUp, inInput); break;
    case Kind::ModifiersChanged: PostModifiers(inInput); break;
    case Kind::TextCommitted: PostText(inInput); break;
    case Kind::ScreenResized: TellScreenResized(inInput); break;
    case Kind::ScreenExposed: TellScreenExposed(); break;
    case Kind::Activated: PostActivation(kEventAppActivated, inInput); break;
    case Kind::Deactivated: PostActivation(kEventAppDeactivated, inInput); break;
    case Kind::QuitRequested: PostQuit(inInput); break;
    }
}

bool IsMouse(Kind inKind)
{
    return inKind <= Kind::MouseWheel;
}

bool IsActivity(Kind inKind)
{
    return inKind <= Kind::TextCommitted;
}

bool TakeFromMachine(Input* outInput)
{
    UserState& state = State();
    if (!state.ahead)
        return host::Machine().takeInput(outInput);
    *outInput = *state.ahead;
    state.ahead.reset();
    return true;
}

// A program that draws longer than the mouse takes to move sees where it went, not every step: of moves that
// have been waiting for more than a frame, the last is kept.
void SkipOldMoves(Input* ioInput, double inNow)
{
    Input next;
    while (ioInput->kind == Kind::MouseMoved && inNow - ioInput->time > kFrame && TakeFromMachine(&next)) {
        if (next.kind != Kind::MouseMoved || next.modifiers != ioInput->modifiers) {
            State().ahead = next;
            return;
        }
        *ioInput = next;
    }
}

} // namespace

bool TakeInput()
{
    UserState& state = State();
    Input input;
    if (!TakeFromMachine(&input))
        return false;
    const double now = state.lastTaken = host::Now();
    SkipOldMoves(&input, now);
    if (IsActivity(input.kind))
        gTimers.NoteActivity(now);
    Convert(input);
    if (IsMouse(input.kind))
        state.mouse = input.where;
    return true;
}

void TakeAllInput()
{
    State().lastTaken = host::Now();
    while (TakeInput())
        ;
}

void TakeInputInPolls()
{
    if (host::Now() - State().lastTaken >= kFrame)
        TakeAllInput();
}

void NoteUserEventTaken(const Event& inEvent)
{
    UserState& state = State();
    const UInt32 modifiers = state.eventModifiers ? *state.eventModifiers : 0;
    state.eventModifiers = Get(inEvent, kEventParamKeyModifiers, typeUInt32, modifiers);
    state.eventButtons = Get(inEvent, kEventParamMouseChord, typeUInt32, state.eventButtons);
}

ScreenHooks& TheScreenHooks()
{
    static ScreenHooks hooks;
    return hooks;
}

} // namespace lampblack::events

using namespace lampblack;
using namespace lampblack::events;

UInt32 GetCurrentEventButtonState(void)
{
    return State().eventButtons;
}

UInt32 GetCurrentEventKeyModifiers(void)
{
    const auto& modifiers = State().eventModifiers;
    return modifiers ? *modifiers : host::Machine().modifiers();
}
