// How an element looks: what a painter is told besides the size.
#ifndef LAMPBLACK_APPEARANCE_LOOK_H
#define LAMPBLACK_APPEARANCE_LOOK_H

#include <cstdint>

namespace lampblack::appearance {

enum class Tone : uint8_t { Active, Pressed, Inactive, Dim };

// What value and variant mean is the painter's.
struct Look {
    Tone tone = Tone::Active;
    uint8_t value = 0;
    uint16_t variant = 0;
};

} // namespace lampblack::appearance

#endif
