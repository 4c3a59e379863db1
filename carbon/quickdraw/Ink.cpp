// The row loops of patterns.
#include "Ink.h"

#include "Arithmetic.h"

#include <Carbon/QDColors.h>

#include <algorithm>
#include <cstring>

namespace lampblack::quickdraw {

Transfer TransferOf(short inMode)
{
    static constexpr Transfer kTransfers[8] = {
        { Action::Fore, Action::Back },    // copy
        { Action::Fore, Action::Leave },   // or
        { Action::Invert, Action::Leave }, // xor
        { Action::Back, Action::Leave },   // bic
        { Action::Back, Action::Fore },    // the same of the inverted source
        { Action::Leave, Action::Fore },   { Action::Leave, Action::Invert }, { Action::Leave, Action::Back },
    };
    return inMode >= 0 && inMode <= notPatBic ? kTransfers[inMode & 7] : kTransfers[0];
}

Change ChangeOf(Action inAction, uint32_t inFore, uint32_t inBack, uint32_t inBits)
{
    switch (inAction) {
    case Action::Fore: return { 0, inFore };
    case Action::Back: return { 0, inBack };
    case Action::Invert: return { inBits, inBits };
    case Action::Leave: break;
    }
    return { 0xFFFFFFFF, 0 };
}

static bool IsAll(const Pattern& inPattern, UInt8 inByte)
{
    return std::all_of(inPattern.pat, inPattern.pat + 8, [=](UInt8 row) { return row == inByte; });
}

Ink::Ink(const PortRecord& inPort, const Pattern& inPattern, short inMode)
    : fPort(inPort), fPattern(&inPattern), fOrigin(inPort.fPatternOrigin)
{
    Begin(inMode);
    if (fWay != Way::Boolean)
        return;
    const uint32_t bits = PixelBits(inPort.Depth());
    const Transfer transfer = TransferOf(fMode);
    fSet = ChangeOf(transfer.set, inPort.fForePixel, inPort.fBackPixel, bits);
    fClear = ChangeOf(transfer.clear, inPort.fForePixel, inPort.fBackPixel, bits);
    if (IsAll(inPattern, 0))
        fSet = fClear;
    fWay = fSet == fClear || IsAll(inPattern, 0xFF) ? Way::Solid : Way::Bits;
}

Ink::Ink(const PortRecord& inPort, const Tile& inTile, short inMode)
    : fPort(inPort), fTile(inTile), fOrigin(inPort.fPatternOrigin)
{
    Begin(inMode);
    BeginBoolean();
}

Ink::Ink(const PortRecord& inPort, const RGBColor& inColor, short inMode)
    : fPort(inPort), fTile{ fMixed, 8, 8 }, fOrigin(inPort.fPatternOrigin)
{
    Mix(inColor);
    Begin(inMode);
    BeginBoolean();
}

// Which of the ways a mode goes; a boolean mode is not yet told from a simpler way.
void Ink::Begin(short inMode)
{
    const short mode = (short)(inMode & ~ditherCopy);
    fMode = fPort.Depth() == 1 ? ModeAtDepth1(mode) : mode;
    fWay = fMode == hilite ? Way::Hilite : IsArithmetic(fMode) ? Way::Arithmetic : Way::Boolean;
}

// The bits of a tile's pixels choose: those of black are set, those of white are clear.
void Ink::BeginBoolean()
{
    const uint32_t bits = PixelBits(fPort.Depth());
    const bool isDirect = fPort.Depth() >= 16;
    const Transfer transfer = TransferOf(fMode);
    fCopies = fWay == Way::Boolean && transfer.set == Action::Fore && transfer.clear == Action::Back;
    fSet = ChangeOf(transfer.set, isDirect ? 0 : bits, isDirect ? bits : 0, bits);
    fClear = ChangeOf(transfer.clear, isDirect ? 0 : bits, isDirect ? bits : 0, bits);
}

// Thresholds of an ordered mixture of 64 steps, 0 to 63, row by row: each digit of place and row in base 2
// counts a quarter of the one before.
static int ThresholdAt(int h, int v)
{
    int threshold = 0;
    for (int bit = 0; bit < 3; ++bit) {
        const int x = h >> bit & 1, y = v >> bit & 1;
        threshold = threshold * 4 + ((x ^ y) * 2 + y);
    }
    return threshold;
}

// The two greatest errors of a table are seldom more than this far from each other.
static int SpreadOf(const PortRecord& inPort)
{
    const int depth = inPort.Depth();
    return depth == 8 ? 51 : depth == 4 ? 96 : depth == 2 ? 85 : 255;
}

void Ink::Mix(const RGBColor& inColor)
{
    const bool mixes = fPort.Depth() <= 8;
    const uint32_t color = PixelOf(inColor);
    for (int i = 0; i < 64; ++i) {
        const int shift = mixes ? (ThresholdAt(i & 7, i >> 3) * 2 - 63) * SpreadOf(fPort) / 128 : 0;
        uint32_t mixed = 0;
        for (int channel = 0; channel < 24; channel += 8)
            mixed |= (uint32_t)std::clamp((int)(color >> channel & 0xFF) + shift, 0, 255) << channel;
        fMixed[i] = ColorFor(fPort.fSurface, PixelFor(fPort.fSurface, mixed));
    }
}

template <class Word>
static void SolidRow(Word* ioPixels, int inCount, Change inChange)
{
    if (inChange.keep == 0) {
        std::fill_n(ioPixels, inCount, (Word)inChange.value);
        return;
    }
    for (int i = 0; i < inCount; ++i)
        ioPixels[i] = (Word)inChange.Of(ioPixels[i]);
}

template <class Word>
static void PatternRow(Word* ioPixels, int inColumn, UInt8 inBits, int inCount, Change inSet, Change inClear)
{
    Change tile[8];
    for (int i = 0; i < 8; ++i)
        tile[i] = inBits >> (7 - ((inColumn + i) & 7)) & 1 ? inSet : inClear;
    int i = 0;
    for (; i + 8 <= inCount; i += 8)
        for (int j = 0; j < 8; ++j)
            ioPixels[i + j] = (Word)tile[j].Of(ioPixels[i + j]);
    for (int j = 0; i + j < inCount; ++j)
        ioPixels[i + j] = (Word)tile[j].Of(ioPixels[i + j]);
}

template <class Word>
void Ink::WordRow(Word* pixels, int h, int v, int count) const
{
    if (fWay == Way::Solid)
        SolidRow(pixels, count, fSet);
    else
        PatternRow(pixels, h - fOrigin.h, BitsOf(v), count, fSet, fClear);
}

void Ink::DirectRow(uint32_t* pixels, int h, int v, int count) const
{
    WordRow(pixels, h, v, count);
}

// What becomes of whole bytes. Eight pixels, where the pattern begins again, are as many bytes as a pixel
// has bits.
struct ByteTile {
    uint8_t keep[4], value[4];
};

static ByteTile BytesOf(int inDepth, int inColumn, UInt8 inBits, Change inSet, Change inClear)
{
    ByteTile tile = {};
    const uint32_t mask = (1u << inDepth) - 1;
    for (int i = 0; i < 8; ++i) {
        const Change& change = inBits >> (7 - ((inColumn + i) & 7)) & 1 ? inSet : inClear;
        const int bit = i * inDepth, shift = 8 - inDepth - bit % 8;
        tile.keep[bit / 8] |= (uint8_t)((change.keep & mask) << shift);
        tile.value[bit / 8] |= (uint8_t)((change.value & mask) << shift);
    }
    return tile;
}

static void ChangeByte(uint8_t& ioByte, uint8_t inKeep, uint8_t inValue, int inMask)
{
    ioByte = (uint8_t)((ioByte & ~inMask) | (((ioByte & inKeep) ^ inValue) & inMask));
}

// A row of depth 1, 2 or 4; bits of other pixels in its first and last byte stay.
void Ink::SmallRow(int h, int v, int count) const
{
    const Surface& surface = fPort.fSurface;
    const int depth = surface.depth, left = surface.bounds.left;
    const ByteTile tile =
        BytesOf(depth, left - fOrigin.h, fWay == Way::Solid ? (UInt8)0xFF : BitsOf(v), fSet, fClear);
    const int firstBit = (h - left) * depth, endBit = firstBit + count * depth;
    const int last = (endBit - 1) / 8;
    uint8_t* row = surface.RowAt(v);
    int mask = 0xFF >> firstBit % 8;
    for (int i = firstBit / 8; i <= last; ++i, mask = 0xFF) {
        if (i == last)
            mask &= 0xFF << (7 - (endBit - 1) % 8);
        ChangeByte(row[i], tile.keep[i & (depth - 1)], tile.value[i & (depth - 1)], mask);
    }
}

static constexpr int kPiece = 256;

void Ink::AnyRow(int h, int v, int count) const
{
    if (fWay > Way::Bits) {
        for (; count > 0; h += kPiece, count -= kPiece)
            GeneralPiece(h, v, std::min(count, kPiece));
        return;
    }
    const Surface& surface = fPort.fSurface;
    const int first = h - surface.bounds.left;
    if (surface.depth == 16)
        WordRow(reinterpret_cast<uint16_t*>(surface.RowAt(v)) + first, h, v, count);
    else if (surface.depth == 8)
        WordRow(surface.RowAt(v) + first, h, v, count);
    else if (count > 0)
        SmallRow(h, v, count);
}

// The pattern as colours. Of an old pattern only the set bits are told from the clear ones when highlighting.
void Ink::SourceColors(int h, int v, int count, uint32_t* out) const
{
    if (!fPattern) {
        const uint32_t* row = fTile.Row(v - fOrigin.v);
        for (int i = 0; i < count; ++i)
            out[i] = row[(h - fOrigin.h + i) & (fTile.width - 1)];
        return;
    }
    const bool hilites = fWay == Way::Hilite;
    const uint32_t set = hilites ? kBlackPixel : ColorFor(fPort.fSurface, fPort.fForePixel);
    const uint32_t clear = hilites ? kWhitePixel : ColorFor(fPort.fSurface, fPort.fBackPixel);
    const UInt8 bits = BitsOf(v);
    for (int i = 0; i < count; ++i)
        out[i] = bits >> (7 - ((h - fOrigin.h + i) & 7)) & 1 ? set : clear;
}

void Ink::CombineBoolean(const uint32_t* source, uint32_t* ioPixels, int count) const
{
    const Surface& surface = fPort.fSurface;
    const uint32_t bits = PixelBits(surface.depth), flip = surface.depth >= 16 ? bits : 0;
    for (int i = 0; i < count; ++i) {
        const uint32_t setBits = PixelFor(surface, source[i]) ^ flip, old = ioPixels[i];
        ioPixels[i] = ((setBits & fSet.Of(old)) | (~setBits & fClear.Of(old))) & bits;
    }
}

// A pixel whose colour stays keeps its index too, which may not be the first one of that colour.
void Ink::CombineArithmetic(const uint32_t* source, uint32_t* ioPixels, int count) const
{
    const Surface& surface = fPort.fSurface;
    uint32_t colors[kPiece], old[kPiece];
    for (int i = 0; i < count; ++i)
        colors[i] = old[i] = ColorFor(surface, ioPixels[i]);
    Combine(fMode, source, colors, count, PixelOf(fPort.fOpColor), ColorFor(surface, fPort.fBackPixel));
    for (int i = 0; i < count; ++i)
        if (colors[i] != old[i])
            ioPixels[i] = PixelFor(surface, colors[i]);
}

void Ink::CombineHilite(const uint32_t* source, uint32_t* ioPixels, int count) const
{
    const uint32_t bits = PixelBits(fPort.Depth()), back = fPort.fBackPixel;
    const uint32_t highlight = PixelFor(fPort.fSurface, PixelOf(fPort.fHiliteColor));
    for (int i = 0; i < count; ++i) {
        const uint32_t old = ioPixels[i] & bits;
        if (source[i] != kWhitePixel && (old == back || old == highlight))
            ioPixels[i] = old == back ? highlight : back;
    }
}

void Ink::GeneralPiece(int h, int v, int count) const
{
    uint32_t source[kPiece], pixels[kPiece];
    SourceColors(h, v, count, source);
    if (fCopies)
        return WriteColors(fPort.fSurface, v, h, count, source);
    ReadPixels(fPort.fSurface, v, h, count, pixels);
    if (fWay == Way::Boolean)
        CombineBoolean(source, pixels, count);
    else if (fWay == Way::Arithmetic)
        CombineArithmetic(source, pixels, count);
    else
        CombineHilite(source, pixels, count);
    WritePixels(fPort.fSurface, v, h, count, pixels);
}

void Ink::Block(const Box& local) const
{
    for (int v = local.y1; v < local.y2; ++v)
        Row(local.x1, v, local.x2 - local.x1);
}

} // namespace lampblack::quickdraw
