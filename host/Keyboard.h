// The published virtual keys: which are modifiers, what the others type on a US keyboard.
#ifndef LAMPBLACK_HOST_KEYBOARD_H
#define LAMPBLACK_HOST_KEYBOARD_H

#include <Carbon/MacTypes.h>

namespace lampblack::host {

enum : UInt32 {
    kCommandBit = 0x0100,
    kShiftBit = 0x0200,
    kLockBit = 0x0400,
    kOptionBit = 0x0800,
    kControlBit = 0x1000
};

// The modifier bit of a key, left or right; 0 for the other keys.
UInt32 ModifierOfKey(UInt16 virtualKey);

// The control character of a key without a letter (Return, Tab, arrows, function keys); 0 for the others.
UniChar ControlCharacterOfKey(UInt16 virtualKey);

// What a key types on a US keyboard; 0 when nothing.
UniChar UsCharacterOfKey(UInt16 virtualKey, bool shift);

// The key, and whether Shift is needed, that types the character on a US keyboard. False when none does.
bool UsKeyOfCharacter(UniChar character, UInt16* outVirtualKey, bool* outShift);

} // namespace lampblack::host

#endif
