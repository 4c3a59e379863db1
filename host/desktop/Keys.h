// From the keys of this machine to the published virtual keys, modifiers and characters.
#ifndef LAMPBLACK_HOST_KEYS_H
#define LAMPBLACK_HOST_KEYS_H

#include <Carbon/MacTypes.h>

#include <SDL.h>

namespace lampblack::host {

inline constexpr UInt16 kNoKey = 0xFFFF;

// Which key of this machine is the Command key; Option and Control take what remains.
enum class CommandKey { Control, Super, Alt };
CommandKey CommandKeyFromOutside(); // LAMPBLACK_COMMAND_KEY=control|super|alt, default control

class KeyMap {
public:
    explicit KeyMap(CommandKey);

    UInt16 VirtualKey(SDL_Scancode) const;          // kNoKey when no Macintosh keyboard has it
    SDL_Scancode Scancode(UInt16 virtualKey) const; // SDL_SCANCODE_UNKNOWN when none
    UInt32 Modifiers(Uint16 kmod) const;            // published bits
    // What a key types while Command or Control is held, when the machine itself types nothing useful.
    UniChar CharacterWithCommand(const SDL_Keysym&, UInt32 modifiers) const;

private:
    UInt16 fKeys[SDL_NUM_SCANCODES];
    UInt32 fControl, fAlt, fSuper; // the bit that each means
};

} // namespace lampblack::host

#endif
