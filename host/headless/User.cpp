// The user at the headless machine: what the calls of <lampblack/host.h> queue, and what taking it changes.
#include "../Keyboard.h"
#include "../Parts.h"
#include "../Unicode.h"
#include "HeadlessHost.h"

#include <bit>

namespace lampblack::host {

void HeadlessUser::Queue(const Input& inInput, UInt32 inModifiers)
{
    fQueue.push_back({ inInput, inModifiers });
}

bool HeadlessUser::Take(double inNow, Input* outInput)
{
    if (fQueue.empty())
        return false;
    *outInput = fQueue.front().input;
    fPassing = fQueue.front().modifiers;
    fQueue.pop_front();
    Apply(*outInput);
    outInput->time = inNow;
    outInput->modifiers = Modifiers();
    return true;
}

bool HeadlessUser::LetGo()
{
    if (!fButtons)
        return false;
    Input input;
    input.kind = Input::Kind::MouseUp;
    input.where = fMouse;
    input.button = static_cast<UInt16>(std::countr_zero(fButtons) + 1);
    Queue(input);
    return true;
}

void HeadlessUser::Apply(Input& ioInput)
{
    switch (ioInput.kind) {
    case Input::Kind::MouseMoved:
    case Input::Kind::MouseWheel: fMouse = ioInput.where; break;
    case Input::Kind::MouseDown:
        fMouse = ioInput.where;
        fButtons |= 1u << (ioInput.button - 1);
        break;
    case Input::Kind::MouseUp:
        fMouse = ioInput.where;
        fButtons &= ~(1u << (ioInput.button - 1));
        break;
    case Input::Kind::Activated: fActive = true; break;
    case Input::Kind::Deactivated: fActive = false; break;
    default: PressOrRelease(ioInput); break;
    }
}

void HeadlessUser::PressOrRelease(Input& ioInput)
{
    const bool down = ioInput.kind == Input::Kind::KeyDown;
    if ((!down && ioInput.kind != Input::Kind::KeyUp) || ioInput.virtualKey >= fKeys.size())
        return;
    if (down && fKeys[ioInput.virtualKey])
        ioInput.kind = Input::Kind::KeyRepeat;
    fKeys[ioInput.virtualKey] = down;
    const UInt32 modifier = ModifierOfKey(ioInput.virtualKey);
    if (!modifier)
        return;
    fHeld = down ? fHeld | modifier : fHeld & ~modifier;
    for (UInt16 key = 0x36; key <= 0x3E; ++key) // the other key of the pair may still be down
        if (fKeys[key])
            fHeld |= ModifierOfKey(key);
    ioInput.kind = Input::Kind::ModifiersChanged;
}

bool HeadlessUser::KeyIsDown(UInt16 inKey) const
{
    if (inKey >= fKeys.size())
        return false;
    const bool left = inKey >= 0x37 && inKey <= 0x3B; // modifiers of an action are held with the left hand
    return fKeys[inKey] || (left && (fPassing & ModifierOfKey(inKey)));
}

namespace {

void Queue(const Input& inInput, UInt32 inModifiers = 0)
{
    if (HeadlessIsChosen())
        TheHeadlessHost().user.Queue(inInput, inModifiers);
}

Input MouseInput(Input::Kind inKind, Point inWhere)
{
    Input input;
    input.kind = inKind;
    input.where = inWhere;
    return input;
}

Input KeyInput(UInt16 inKey, bool inDown, UniChar inCharacter)
{
    Input input;
    input.kind = inDown ? Input::Kind::KeyDown : Input::Kind::KeyUp;
    input.virtualKey = inKey;
    if (inCharacter)
        input.text[input.textLength++] = inCharacter;
    return input;
}

void CommitText(char32_t inPoint)
{
    Input input;
    input.kind = Input::Kind::TextCommitted;
    input.textLength = static_cast<UInt16>(AppendUtf16(input.text, 0, 16, inPoint));
    Queue(input);
}

// The key for a control character in typed text; 0 when there is none.
UInt16 KeyOfControl(char32_t inPoint)
{
    switch (inPoint) {
    case '\n':
    case '\r': return 0x24;
    case '\t': return 0x30;
    case '\b': return 0x33;
    case 27: return 0x35;
    default: return 0;
    }
}

void TypePoint(char32_t inPoint)
{
    UInt16 key = KeyOfControl(inPoint);
    bool shift = false;
    if (key)
        PressKey(key, ControlCharacterOfKey(key));
    else if (inPoint < 128 && UsKeyOfCharacter(static_cast<UniChar>(inPoint), &key, &shift))
        PressKey(key, static_cast<UniChar>(inPoint), shift ? UInt32{ kShiftBit } : 0);
    else
        CommitText(inPoint);
}

} // namespace

void MoveMouse(Point inGlobal)
{
    Queue(MouseInput(Input::Kind::MouseMoved, inGlobal));
}

void PressMouse(Point inGlobal, UInt32 inModifiers, UInt32 inClickCount)
{
    Input input = MouseInput(Input::Kind::MouseDown, inGlobal);
    input.clickCount = inClickCount;
    Queue(input, inModifiers);
}

void ReleaseMouse(Point inGlobal, UInt32 inModifiers)
{
    Queue(MouseInput(Input::Kind::MouseUp, inGlobal), inModifiers);
}

void Click(Point inGlobal, UInt32 inModifiers, UInt32 inClickCount)
{
    PressMouse(inGlobal, inModifiers, inClickCount);
    Input input = MouseInput(Input::Kind::MouseUp, inGlobal);
    input.clickCount = inClickCount;
    Queue(input, inModifiers);
}

void PressKey(UInt16 inKey, UniChar inCharacter, UInt32 inModifiers)
{
    Queue(KeyInput(inKey, true, inCharacter), inModifiers);
    Queue(KeyInput(inKey, false, inCharacter), inModifiers);
}

void HoldKey(UInt16 inKey, bool inDown)
{
    const UniChar letter = UsCharacterOfKey(inKey, false);
    Queue(KeyInput(inKey, inDown, letter ? letter : ControlCharacterOfKey(inKey)));
}

void TypeText(std::string_view inText)
{
    while (!inText.empty())
        TypePoint(NextCodePoint(inText));
}

void TurnWheel(Point inGlobal, SInt32 inLinesUp, UInt32 inModifiers)
{
    Input input = MouseInput(Input::Kind::MouseWheel, inGlobal);
    input.wheelV = inLinesUp;
    Queue(input, inModifiers);
}

void SwitchProgram(bool inToThisOne)
{
    Queue(MouseInput(inToThisOne ? Input::Kind::Activated : Input::Kind::Deactivated,
                     TheHeadlessHost().user.Mouse()));
}

void RequestQuit()
{
    Queue(MouseInput(Input::Kind::QuitRequested, TheHeadlessHost().user.Mouse()));
}

void CopyElsewhere(std::string_view inText)
{
    if (!HeadlessIsChosen())
        return;
    TheHeadlessHost().desk.clipboard = inText;
    ++TheHeadlessHost().desk.clipboardSerial;
}

std::string PasteElsewhere()
{
    return TheHeadlessHost().desk.clipboard;
}

SInt32 CurrentThemeCursor()
{
    return TheHeadlessHost().screen.themeCursor;
}
ShownCursor CurrentCursor()
{
    return TheHeadlessHost().screen.cursor;
}
std::vector<OSType> PlayedSounds()
{
    return TheHeadlessHost().desk.sounds;
}
std::vector<std::string> OpenedURLs()
{
    return TheHeadlessHost().desk.urls;
}
std::vector<std::string> SpokenTexts()
{
    return TheHeadlessHost().desk.spoken;
}

} // namespace lampblack::host
