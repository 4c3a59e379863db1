// The table of keys: by place on the keyboard, so that a key keeps its virtual code in every layout.
#include "Keys.h"
#include "../Keyboard.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace lampblack::host {

namespace {

struct Pair {
    SDL_Scancode scancode;
    UInt8 key;
};

constexpr Pair kPlaces[] = {
    { SDL_SCANCODE_A, 0x00 },
    { SDL_SCANCODE_S, 0x01 },
    { SDL_SCANCODE_D, 0x02 },
    { SDL_SCANCODE_F, 0x03 },
    { SDL_SCANCODE_H, 0x04 },
    { SDL_SCANCODE_G, 0x05 },
    { SDL_SCANCODE_Z, 0x06 },
    { SDL_SCANCODE_X, 0x07 },
    { SDL_SCANCODE_C, 0x08 },
    { SDL_SCANCODE_V, 0x09 },
    { SDL_SCANCODE_NONUSBACKSLASH, 0x0A },
    { SDL_SCANCODE_B, 0x0B },
    { SDL_SCANCODE_Q, 0x0C },
    { SDL_SCANCODE_W, 0x0D },
    { SDL_SCANCODE_E, 0x0E },
    { SDL_SCANCODE_R, 0x0F },
    { SDL_SCANCODE_Y, 0x10 },
    { SDL_SCANCODE_T, 0x11 },
    { SDL_SCANCODE_1, 0x12 },
    { SDL_SCANCODE_2, 0x13 },
    { SDL_SCANCODE_3, 0x14 },
    { SDL_SCANCODE_4, 0x15 },
    { SDL_SCANCODE_6, 0x16 },
    { SDL_SCANCODE_5, 0x17 },
    { SDL_SCANCODE_EQUALS, 0x18 },
    { SDL_SCANCODE_9, 0x19 },
    { SDL_SCANCODE_7, 0x1A },
    { SDL_SCANCODE_MINUS, 0x1B },
    { SDL_SCANCODE_8, 0x1C },
    { SDL_SCANCODE_0, 0x1D },
    { SDL_SCANCODE_RIGHTBRACKET, 0x1E },
    { SDL_SCANCODE_O, 0x1F },
    { SDL_SCANCODE_U, 0x20 },
    { SDL_SCANCODE_LEFTBRACKET, 0x21 },
    { SDL_SCANCODE_I, 0x22 },
    { SDL_SCANCODE_P, 0x23 },
    { SDL_SCANCODE_RETURN, 0x24 },
    { SDL_SCANCODE_L, 0x25 },
    { SDL_SCANCODE_J, 0x26 },
    { SDL_SCANCODE_APOSTROPHE, 0x27 },
    { SDL_SCANCODE_K, 0x28 },
    { SDL_SCANCODE_SEMICOLON, 0x29 },
    { SDL_SCANCODE_BACKSLASH, 0x2A },
    { SDL_SCANCODE_COMMA, 0x2B },
    { SDL_SCANCODE_SLASH, 0x2C },
    { SDL_SCANCODE_N, 0x2D },
    { SDL_SCANCODE_M, 0x2E },
    { SDL_SCANCODE_PERIOD, 0x2F },
    { SDL_SCANCODE_TAB, 0x30 },
    { SDL_SCANCODE_SPACE, 0x31 },
    { SDL_SCANCODE_GRAVE, 0x32 },
    { SDL_SCANCODE_BACKSPACE, 0x33 },
    { SDL_SCANCODE_ESCAPE, 0x35 },
    { SDL_SCANCODE_LSHIFT, 0x38 },
    { SDL_SCANCODE_CAPSLOCK, 0x39 },
    { SDL_SCANCODE_RSHIFT, 0x3C },
    { SDL_SCANCODE_F17, 0x40 },
    { SDL_SCANCODE_KP_PERIOD, 0x41 },
    { SDL_SCANCODE_KP_MULTIPLY, 0x43 },
    { SDL_SCANCODE_KP_PLUS, 0x45 },
    { SDL_SCANCODE_CLEAR, 0x47 },
    { SDL_SCANCODE_VOLUMEUP, 0x48 },
    { SDL_SCANCODE_VOLUMEDOWN, 0x49 },
    { SDL_SCANCODE_MUTE, 0x4A },
    { SDL_SCANCODE_KP_DIVIDE, 0x4B },
    { SDL_SCANCODE_KP_ENTER, 0x4C },
    { SDL_SCANCODE_KP_MINUS, 0x4E },
    { SDL_SCANCODE_F18, 0x4F },
    { SDL_SCANCODE_F19, 0x50 },
    { SDL_SCANCODE_KP_EQUALS, 0x51 },
    { SDL_SCANCODE_KP_0, 0x52 },
    { SDL_SCANCODE_KP_1, 0x53 },
    { SDL_SCANCODE_KP_2, 0x54 },
    { SDL_SCANCODE_KP_3, 0x55 },
    { SDL_SCANCODE_KP_4, 0x56 },
    { SDL_SCANCODE_KP_5, 0x57 },
    { SDL_SCANCODE_KP_6, 0x58 },
    { SDL_SCANCODE_KP_7, 0x59 },
    { SDL_SCANCODE_F20, 0x5A },
    { SDL_SCANCODE_KP_8, 0x5B },
    { SDL_SCANCODE_KP_9, 0x5C },
    { SDL_SCANCODE_INTERNATIONAL3, 0x5D },
    { SDL_SCANCODE_INTERNATIONAL1, 0x5E },
    { SDL_SCANCODE_KP_COMMA, 0x5F },
    { SDL_SCANCODE_F5, 0x60 },
    { SDL_SCANCODE_F6, 0x61 },
    { SDL_SCANCODE_F7, 0x62 },
    { SDL_SCANCODE_F3, 0x63 },
    { SDL_SCANCODE_F8, 0x64 },
    { SDL_SCANCODE_F9, 0x65 },
    { SDL_SCANCODE_LANG2, 0x66 },
    { SDL_SCANCODE_F11, 0x67 },
    { SDL_SCANCODE_LANG1, 0x68 },
    { SDL_SCANCODE_F13, 0x69 },
    { SDL_SCANCODE_F16, 0x6A },
    { SDL_SCANCODE_F14, 0x6B },
    { SDL_SCANCODE_F10, 0x6D },
    { SDL_SCANCODE_F12, 0x6F },
    { SDL_SCANCODE_F15, 0x71 },
    { SDL_SCANCODE_PRINTSCREEN, 0x69 },
    { SDL_SCANCODE_SCROLLLOCK, 0x6B },
    { SDL_SCANCODE_PAUSE, 0x71 },
    { SDL_SCANCODE_INSERT, 0x72 },
    { SDL_SCANCODE_HELP, 0x72 },
    { SDL_SCANCODE_HOME, 0x73 },
    { SDL_SCANCODE_PAGEUP, 0x74 },
    { SDL_SCANCODE_DELETE, 0x75 },
    { SDL_SCANCODE_F4, 0x76 },
    { SDL_SCANCODE_END, 0x77 },
    { SDL_SCANCODE_F2, 0x78 },
    { SDL_SCANCODE_PAGEDOWN, 0x79 },
    { SDL_SCANCODE_F1, 0x7A },
    { SDL_SCANCODE_LEFT, 0x7B },
    { SDL_SCANCODE_RIGHT, 0x7C },
    { SDL_SCANCODE_DOWN, 0x7D },
    { SDL_SCANCODE_UP, 0x7E },
};

// The left and right virtual keys of a modifier.
void SetModifierPair(UInt16* ioKeys, SDL_Scancode inLeft, SDL_Scancode inRight, UInt32 inBit)
{
    ioKeys[inLeft] = inBit == kCommandBit ? 0x37 : inBit == kOptionBit ? 0x3A : 0x3B;
    ioKeys[inRight] = inBit == kCommandBit ? 0x36 : inBit == kOptionBit ? 0x3D : 0x3E;
}

} // namespace

CommandKey CommandKeyFromOutside()
{
    const char* value = getenv("LAMPBLACK_COMMAND_KEY");
    const std::string_view asked = value ? value : "";
    return asked == "super" ? CommandKey::Super : asked == "alt" ? CommandKey::Alt : CommandKey::Control;
}

KeyMap::KeyMap(CommandKey inCommand) : fControl(kControlBit), fAlt(kOptionBit), fSuper(kCommandBit)
{
    if (inCommand == CommandKey::Control)
        std::swap(fControl, fSuper);
    if (inCommand == CommandKey::Alt)
        std::swap(fAlt, fSuper);
    std::fill(std::begin(fKeys), std::end(fKeys), kNoKey);
    for (const Pair& pair : kPlaces)
        fKeys[pair.scancode] = pair.key;
    SetModifierPair(fKeys, SDL_SCANCODE_LCTRL, SDL_SCANCODE_RCTRL, fControl);
    SetModifierPair(fKeys, SDL_SCANCODE_LALT, SDL_SCANCODE_RALT, fAlt);
    SetModifierPair(fKeys, SDL_SCANCODE_LGUI, SDL_SCANCODE_RGUI, fSuper);
    fKeys[SDL_SCANCODE_MODE] = 0x3D;
}

UInt16 KeyMap::VirtualKey(SDL_Scancode inScancode) const
{
    return inScancode >= 0 && inScancode < SDL_NUM_SCANCODES ? fKeys[inScancode] : kNoKey;
}

SDL_Scancode KeyMap::Scancode(UInt16 inKey) const
{
    const UInt16* found = std::find(std::begin(fKeys), std::end(fKeys), inKey);
    if (inKey == kNoKey || found == std::end(fKeys))
        return SDL_SCANCODE_UNKNOWN;
    return static_cast<SDL_Scancode>(found - fKeys);
}

UInt32 KeyMap::Modifiers(Uint16 inMod) const
{
    UInt32 bits = 0;
    bits |= inMod & KMOD_SHIFT ? UInt32{ kShiftBit } : 0;
    bits |= inMod & KMOD_CAPS ? UInt32{ kLockBit } : 0;
    bits |= inMod & KMOD_MODE ? UInt32{ kOptionBit } : 0;
    bits |= inMod & KMOD_CTRL ? fControl : 0;
    bits |= inMod & KMOD_ALT ? fAlt : 0;
    bits |= inMod & KMOD_GUI ? fSuper : 0;
    return bits;
}

UniChar KeyMap::CharacterWithCommand(const SDL_Keysym& inKey, UInt32 inModifiers) const
{
    if (inKey.sym <= ' ' - 1 || inKey.sym >= 127)
        return inKey.sym >= 0xA0 && inKey.sym < 0x10000 ? static_cast<UniChar>(inKey.sym) : 0;
    UniChar character = static_cast<UniChar>(inKey.sym);
    const bool letter = character >= 'a' && character <= 'z';
    const UInt16 key = VirtualKey(inKey.scancode);
    if (inModifiers & kControlBit)
        return letter || (character >= '[' && character <= ']') ? character & 0x1F : character;
    if ((inModifiers & kShiftBit) && !letter && UsCharacterOfKey(key, false) == character)
        return UsCharacterOfKey(key, true);
    return character;
}

} // namespace lampblack::host
