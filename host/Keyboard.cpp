// Tables of the published virtual keys.
#include "Keyboard.h"

#include <initializer_list>

namespace lampblack::host {

namespace {

// By virtual key 0x00 to 0x32; a blank where the key has no letter.
constexpr char kPlain[] = "asdfhgzxcv\0bqweryt123465=97-80]ou[ip\0lj'k;\\,/nm.\0 `";
constexpr char kShifted[] = "ASDFHGZXCV\0BQWERYT!@#$^%+(&_*)}OU{IP\0LJ\"K:|<?NM>\0 ~";
constexpr UInt16 kLetters = sizeof(kPlain) - 1;
static_assert(sizeof(kPlain) == sizeof(kShifted) && kLetters == 0x33);

struct KeyCharacter {
    UInt8 key;
    UInt8 character;
};

constexpr KeyCharacter kControls[] = {
    { 0x24, 13 }, { 0x30, 9 },   { 0x33, 8 },  { 0x35, 27 }, { 0x47, 27 }, { 0x4C, 3 },  { 0x60, 16 },
    { 0x61, 16 }, { 0x62, 16 },  { 0x63, 16 }, { 0x64, 16 }, { 0x65, 16 }, { 0x67, 16 }, { 0x69, 16 },
    { 0x6A, 16 }, { 0x6B, 16 },  { 0x6D, 16 }, { 0x6F, 16 }, { 0x71, 16 }, { 0x72, 5 },  { 0x73, 1 },
    { 0x74, 11 }, { 0x75, 127 }, { 0x76, 16 }, { 0x77, 4 },  { 0x78, 16 }, { 0x79, 12 }, { 0x7A, 16 },
    { 0x7B, 28 }, { 0x7C, 29 },  { 0x7D, 31 }, { 0x7E, 30 },
};

} // namespace

UInt32 ModifierOfKey(UInt16 inKey)
{
    switch (inKey) {
    case 0x36:
    case 0x37: return kCommandBit;
    case 0x38:
    case 0x3C: return kShiftBit;
    case 0x39: return kLockBit;
    case 0x3A:
    case 0x3D: return kOptionBit;
    case 0x3B:
    case 0x3E: return kControlBit;
    default: return 0;
    }
}

UniChar ControlCharacterOfKey(UInt16 inKey)
{
    for (const KeyCharacter& entry : kControls)
        if (entry.key == inKey)
            return entry.character;
    return 0;
}

UniChar UsCharacterOfKey(UInt16 inKey, bool inShift)
{
    if (inKey >= kLetters)
        return 0;
    return static_cast<UInt8>(inShift ? kShifted[inKey] : kPlain[inKey]);
}

bool UsKeyOfCharacter(UniChar inCharacter, UInt16* outKey, bool* outShift)
{
    if (inCharacter < ' ' || inCharacter > '~')
        return false;
    for (UInt16 key = 0; key < kLetters; ++key)
        for (const bool shift : { false, true })
            if (UsCharacterOfKey(key, shift) == inCharacter) {
                *outKey = key;
                *outShift = shift;
                return true;
            }
    return false;
}

} // namespace lampblack::host
