// What becomes of source pixels on their way into a destination: they are converted into its pixel values,
// then combined with what is there. Begin with CopyJob.h; these are its rows.
#ifndef LAMPBLACK_QUICKDRAW_COPYING_H
#define LAMPBLACK_QUICKDRAW_COPYING_H

#include "Ink.h"
#include "Surface.h"

namespace lampblack::quickdraw {

// Rows go through buffers of this many pixels.
inline constexpr int kRowPiece = 512;

// Whether pixels mean what those of a bit map mean: clear is white, set is black.
bool IsBitMap(const Surface&);

// Turns pixel values of a source into pixel values of a destination, or into colours 0x00RRGGBB.
class Converter {
public:
    // What becomes of a bit map's pixels, in terms of the result. All other pixels are colourised, where
    // fore is not black or back not white: bit by bit, a zero bit of the colour taking the bit of fore, a one
    // bit that of back.
    struct Meaning {
        uint32_t set, clear;
        uint32_t fore = kBlackPixel, back = kWhitePixel;
    };
    Converter() = default;
    void BeginSame() { fKind = Kind::Same; } // pixels of one direct depth
    void BeginPixels(const Surface& from, const Surface& to, const Meaning&);
    void BeginColors(const Surface& from, const Meaning&);
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    bool IsSame() const { return fKind == Kind::Same; }        // values stay what they are
    const uint32_t* Table() const { return fTable; }           // of indexes; null for direct pixels
    bool JustNarrows() const { return fKind == Kind::Narrow; } // from depth 32 to 16
    bool JustWidens() const { return fKind == Kind::Widen; }   // from depth 16 to 32
    void Row(uint32_t* ioValues, int count) const;
    // Only the colourising, of colours.
    void ColorizeRow(uint32_t* ioColors, int count) const;

private:
    enum class Kind : uint8_t { Same, Table, Narrow, Widen, Mask, Any };

    void Begin(const Surface& from, const Meaning&);
    void TakeTable(const uint32_t* inTable)
    {
        fTable = inTable;
        fKind = Kind::Table;
    }
    void MakeTable(const Surface& from, const Surface* to);
    void MakeIndexTable(const Surface& from, const Surface& to);
    uint32_t Colorized(uint32_t color) const { return (~color & fFore) | (color & fBack); }
    bool Colorizes() const { return fFore != kBlackPixel || fBack != kWhitePixel; }
    void AnyRow(uint32_t* ioValues, int count) const;

    Kind fKind = Kind::Any;
    bool fFromWords = false; // of depth 16
    Surface fTo;             // depth 0: colours
    uint32_t fFore = kBlackPixel, fBack = kWhitePixel;
    const uint32_t* fTable = nullptr;
    uint32_t fOwn[256];
};

// How converted pixels meet those of the destination in a boolean mode, bit by bit. In indexes a one bit of
// the source is set, in direct pixels a zero bit, so that black is set in both.
class Combination {
public:
    Combination() = default; // plain copy
    Combination(short mode, int depth, uint32_t forePixel, uint32_t backPixel);

    bool IsPlainCopy() const { return fPlain; }
    void Row(const uint32_t* source, uint32_t* ioDestination, int count) const;

private:
    bool fPlain = true;
    uint32_t fFlip = 0, fBits = 0;
    Change fSet = {}, fClear = {};
};

// The pixel values in which every bit is set, and none.
inline uint32_t AllSet(int inDepth)
{
    return inDepth >= 16 ? 0 : PixelBits(inDepth);
}
inline uint32_t NoneSet(int inDepth)
{
    return inDepth >= 16 ? PixelBits(inDepth) : 0;
}

} // namespace lampblack::quickdraw

#endif
