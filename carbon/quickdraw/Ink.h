// How pixels change when something is drawn. A boolean transfer mode is what becomes of the pixels that the
// source sets and of those that it leaves clear; every such change is (pixel & keep) ^ value, so that one
// loop serves all of them. Other modes, and pixel patterns, go through colours or pixel values row by row.
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
// The bits are those that inverting changes: PixelBits of the depth.
Change ChangeOf(Action, uint32_t fore, uint32_t back, uint32_t bits = kColorBits);

// Colours in rows that repeat; width and height are powers of two.
struct Tile {
    const uint32_t* colors = nullptr;
    int width = 0, height = 0;

    const uint32_t* Row(int v) const { return colors + (ptrdiff_t)(v & (height - 1)) * width; }
};

// A pattern under a transfer mode in a port's colours. Port and pattern must outlive it.
class Ink {
public:
    Ink(const PortRecord&, const Pattern&, short mode);
    Ink(const PortRecord&, const Tile&, short mode);
    // One colour, mixed where indexes do not have it.
    Ink(const PortRecord&, const RGBColor&, short mode);

    Ink(const Ink&) = delete; // a mixed tile lies within
    Ink& operator=(const Ink&) = delete;

    bool Draws() const { return fWay != Way::Solid || fSet != ChangeOf(Action::Leave, 0, 0); }

    // Draws count pixels of the port whose first has the local coordinates (h, v).
    void Row(int h, int v, int count) const
    {
        if (fPort.fSurface.depth == 32 && fWay <= Way::Bits)
            DirectRow(fPort.PixelAt(h, v), h, v, count);
        else
            AnyRow(h, v, count);
    }
    void Block(const Box& local) const;

private:
    enum class Way : uint8_t { Solid, Bits, Boolean, Arithmetic, Hilite };

    void Begin(short mode);
    void BeginBoolean();
    void Mix(const RGBColor&);
    void DirectRow(uint32_t* pixels, int h, int v, int count) const;
    void AnyRow(int h, int v, int count) const;
    template <class Word>
    void WordRow(Word* pixels, int h, int v, int count) const;
    void SmallRow(int h, int v, int count) const;
    void GeneralPiece(int h, int v, int count) const;

    UInt8 BitsOf(int v) const { return fPattern->pat[(v - fOrigin.v) & 7]; }
    void SourceColors(int h, int v, int count, uint32_t* out) const;
    void CombineBoolean(const uint32_t* source, uint32_t* ioPixels, int count) const;
    void CombineArithmetic(const uint32_t* source, uint32_t* ioPixels, int count) const;
    void CombineHilite(const uint32_t* source, uint32_t* ioPixels, int count) const;

    const PortRecord& fPort;
    const Pattern* fPattern = nullptr; // null: a tile
    Tile fTile;
    Point fOrigin;
    Way fWay = Way::Solid;
    bool fCopies = false; // a tile takes the place of what is there
    short fMode = patCopy;
    Change fSet = { 0xFFFFFFFF, 0 }, fClear = { 0xFFFFFFFF, 0 };
    uint32_t fMixed[64]; // the tile of a mixed colour
};

} // namespace lampblack::quickdraw

#endif
