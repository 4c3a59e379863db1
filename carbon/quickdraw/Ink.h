// How pixels change when something is drawn. A transfer mode is what becomes of the pixels that the source
// sets and of those that it leaves clear; every such change is (pixel & keep) ^ value, so that one loop
// serves all modes.
#ifndef LAMPBLACK_QUICKDRAW_INK_H
#define LAMPBLACK_QUICKDRAW_INK_H

#include "PortRecord.h"

namespace lampblack::quickdraw {

enum class Action : uint8_t { Leave, Fore, Back, Invert };

struct Transfer {
    Action set, clear;
};

// Of a boolean pattern or source mode; other modes count as copying.
Transfer TransferOf(short mode);

struct Change {
    uint32_t keep, value;
    uint32_t Of(uint32_t pixel) const { return (pixel & keep) ^ value; }
    bool operator==(const Change&) const = default;
};
Change ChangeOf(Action, uint32_t fore, uint32_t back);

// A pattern under a transfer mode in given colours.
class Ink {
public:
    Ink(const Pattern&, short mode, uint32_t fore, uint32_t back);

    bool Draws() const { return !fSolid || fSet != ChangeOf(Action::Leave, 0, 0); }

    // Draws count pixels whose first has the local coordinates (h, v).
    void Row(uint32_t* pixels, int h, int v, int count) const;
    // Draws a block of rows of equal length.
    void Block(uint32_t* pixels, int rowPixels, const Box& local) const;

private:
    Pattern const* fPattern;
    bool fSolid; // fSet is for every pixel
    Change fSet, fClear;
};

} // namespace lampblack::quickdraw

#endif
