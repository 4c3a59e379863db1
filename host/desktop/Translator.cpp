// One function per kind of event.
#include "Translator.h"
#include "../Keyboard.h"
#include "../Unicode.h"

namespace lampblack::host {

constexpr int kTextCapacity = sizeof(Input::text) / sizeof(UniChar);

Input Translator::Start(Input::Kind inKind) const
{
    Input input;
    input.kind = inKind;
    input.time = fNow;
    input.where = fWhere;
    input.modifiers = fModifiers;
    return input;
}

void Translator::Translate(const SDL_Event& inEvent)
{
    if (inEvent.type == SDL_TEXTINPUT)
        return Text(inEvent.text.text);
    FlushKey();
    switch (inEvent.type) {
    case SDL_KEYDOWN:
    case SDL_KEYUP: return Key(inEvent.key);
    case SDL_MOUSEMOTION: return Motion(inEvent.motion);
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP: return Button(inEvent.button);
    case SDL_MOUSEWHEEL: return Wheel(inEvent.wheel);
    case SDL_QUIT: return Report(Input::Kind::QuitRequested, fWhere);
    case SDL_WINDOWEVENT:
        if (inEvent.window.event == SDL_WINDOWEVENT_FOCUS_GAINED)
            Focus(true);
        if (inEvent.window.event == SDL_WINDOWEVENT_FOCUS_LOST)
            Focus(false);
        return;
    default: return;
    }
}

void Translator::Key(const SDL_KeyboardEvent& inEvent)
{
    fModifiers = fKeys.Modifiers(inEvent.keysym.mod);
    const UInt16 key = fKeys.VirtualKey(inEvent.keysym.scancode);
    if (ModifierOfKey(key))
        return ModifierKey(key, inEvent.repeat != 0);
    if (inEvent.type == SDL_KEYDOWN)
        KeyDown(key, inEvent);
    else if (key != kNoKey)
        KeyUp(key);
}

void Translator::ModifierKey(UInt16 inKey, bool inRepeat)
{
    Input input = Start(Input::Kind::ModifiersChanged);
    input.virtualKey = inKey;
    if (!inRepeat)
        fInputs.push_back(input);
}

void Translator::KeyDown(UInt16 inKey, const SDL_KeyboardEvent& inEvent)
{
    fKey = Start(inEvent.repeat ? Input::Kind::KeyRepeat : Input::Kind::KeyDown);
    fKey.virtualKey = inKey;
    UniChar character = ControlCharacterOfKey(inKey);
    if (!character && (fModifiers & (kCommandBit | kControlBit)))
        character = fKeys.CharacterWithCommand(inEvent.keysym, fModifiers);
    if (character)
        fKey.text[fKey.textLength++] = character;
    fHasKey = true;
}

void Translator::KeyUp(UInt16 inKey)
{
    Input input = Start(Input::Kind::KeyUp);
    input.virtualKey = inKey;
    if (inKey < 128 && fTyped[inKey])
        input.text[input.textLength++] = fTyped[inKey];
    fInputs.push_back(input);
}

void Translator::PushKey(const Input& inPressed)
{
    if (inPressed.virtualKey < 128)
        fTyped[inPressed.virtualKey] = inPressed.textLength ? inPressed.text[0] : 0;
    fInputs.push_back(inPressed);
}

void Translator::FlushKey()
{
    if (!fHasKey)
        return;
    fHasKey = false;
    if (fKey.virtualKey != kNoKey)
        PushKey(fKey);
}

// The text of the key just pressed belongs to that key; any other text was composed.
void Translator::Text(const char* inText)
{
    const bool isOfKey = fHasKey && fKey.virtualKey != kNoKey;
    if (isOfKey && fKey.textLength > 0)
        return FlushKey(); // it has its published character already
    Input input = isOfKey ? fKey : Start(Input::Kind::TextCommitted);
    std::string_view rest = inText;
    fHasKey = false;
    while (!rest.empty()) {
        if (input.textLength + 2 > kTextCapacity) {
            PushText(input);
            input = Start(Input::Kind::TextCommitted);
        }
        const char32_t point = NextCodePoint(rest);
        input.textLength =
            static_cast<UInt16>(AppendUtf16(input.text, input.textLength, kTextCapacity, point));
    }
    PushText(input);
}

void Translator::PushText(const Input& inInput)
{
    if (inInput.kind != Input::Kind::TextCommitted)
        PushKey(inInput);
    else if (inInput.textLength > 0)
        fInputs.push_back(inInput);
}

void Translator::Motion(const SDL_MouseMotionEvent& inEvent)
{
    fWhere = { static_cast<short>(inEvent.y), static_cast<short>(inEvent.x) };
    const Input input = Start(Input::Kind::MouseMoved);
    if (!fInputs.empty() && fInputs.back().kind == Input::Kind::MouseMoved)
        fInputs.back() = input; // where the pointer was in between, nobody has seen
    else
        fInputs.push_back(input);
}

void Translator::Button(const SDL_MouseButtonEvent& inEvent)
{
    if (inEvent.button < SDL_BUTTON_LEFT || inEvent.button > SDL_BUTTON_RIGHT)
        return;
    const bool down = inEvent.type == SDL_MOUSEBUTTONDOWN;
    fWhere = { static_cast<short>(inEvent.y), static_cast<short>(inEvent.x) };
    Input input = Start(down ? Input::Kind::MouseDown : Input::Kind::MouseUp);
    input.button = inEvent.button == SDL_BUTTON_LEFT ? 1 : inEvent.button == SDL_BUTTON_RIGHT ? 2 : 3;
    input.clickCount = down ? fClicks.Press(fNow, fWhere, input.button) : fClicks.Count();
    fInputs.push_back(input);
}

void Translator::Wheel(const SDL_MouseWheelEvent& inEvent)
{
    const int sign = inEvent.direction == SDL_MOUSEWHEEL_FLIPPED ? -1 : 1;
    Input input = Start(Input::Kind::MouseWheel);
    input.wheelH = -sign * inEvent.x;
    input.wheelV = sign * inEvent.y;
    if (input.wheelH || input.wheelV)
        fInputs.push_back(input);
}

void Translator::Focus(bool inGained)
{
    if (inGained == fActive)
        return;
    fActive = inGained;
    if (!inGained)
        fModifiers = 0; // keys let go elsewhere are not seen
    Report(inGained ? Input::Kind::Activated : Input::Kind::Deactivated, fWhere);
}

void Translator::Report(Input::Kind inKind, Point inWhere)
{
    if (!fInputs.empty() && fInputs.back().kind == inKind && inKind == Input::Kind::ScreenExposed)
        return;
    Input input = Start(inKind);
    input.where = inWhere;
    fInputs.push_back(input);
}

bool Translator::Take(Input* outInput)
{
    if (fInputs.empty())
        return false;
    *outInput = fInputs.front();
    fInputs.pop_front();
    return true;
}

} // namespace lampblack::host
