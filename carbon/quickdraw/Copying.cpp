// The row loops of converting and combining.
#include "Copying.h"

#include <algorithm>
#include <cstring>

namespace lampblack::quickdraw {

bool IsBitMap(const Surface& s)
{
    return s.depth == 1 && ColorsOf(s).At(0) == kWhitePixel && ColorsOf(s).At(1) == kBlackPixel;
}

void Converter::Begin(const Surface& inFrom, const Meaning& inMeaning)
{
    fFore = inMeaning.fore & kColorBits;
    fBack = inMeaning.back & kColorBits;
    fFromWords = inFrom.depth == 16;
    fTo.depth = 0;
    fTable = nullptr;
    fKind = Kind::Any;
    if (!IsBitMap(inFrom))
        return;
    fOwn[0] = inMeaning.clear;
    fOwn[1] = inMeaning.set;
    TakeTable(fOwn);
}

void Converter::MakeTable(const Surface& inFrom, const Surface* inTo)
{
    const uint32_t* colors = ColorsOf(inFrom).Colors();
    const bool keepsColors = !inTo || inTo->depth == 32;
    if (keepsColors && !Colorizes())
        return TakeTable(colors);
    const int count = 1 << inFrom.depth;
    for (int i = 0; i < count; ++i)
        fOwn[i] = Colorized(colors[i]);
    if (!keepsColors)
        for (int i = 0; i < count; ++i)
            fOwn[i] = PixelOf555(fOwn[i]);
    TakeTable(fOwn);
}

namespace {

// The last table between two colour tables. It is known by the colours themselves, so that a table whose
// owner forgot to change its seed is no trap.
struct IndexTable {
    int depth = 0, count = 0;
    uint32_t fore = 0, back = 0;
    uint32_t from[256], to[256], indexes[256];

    bool IsOf(int inDepth, uint32_t inFore, uint32_t inBack, const uint32_t* inFrom, int inToCount,
              const uint32_t* inTo) const
    {
        return depth == inDepth && fore == inFore && back == inBack && count == inToCount &&
               std::memcmp(from, inFrom, sizeof from) == 0 && std::memcmp(to, inTo, sizeof to) == 0;
    }
};
IndexTable gIndexTable;

} // namespace

void Converter::MakeIndexTable(const Surface& inFrom, const Surface& inTo)
{
    const ColorSpace &from = ColorsOf(inFrom), &to = ColorsOf(inTo);
    IndexTable& table = gIndexTable;
    if (!table.IsOf(inFrom.depth, fFore, fBack, from.Colors(), to.Count(), to.Colors())) {
        table.depth = inFrom.depth;
        table.fore = fFore;
        table.back = fBack;
        table.count = to.Count();
        std::memcpy(table.from, from.Colors(), sizeof table.from);
        std::memcpy(table.to, to.Colors(), sizeof table.to);
        for (int i = 0; i < 1 << inFrom.depth; ++i)
            table.indexes[i] = PixelFor(inTo, Colorized(from.At(i)));
    }
    TakeTable(table.indexes);
}

static bool HaveEqualTables(const Surface& a, const Surface& b)
{
    return &ColorsOf(a) == &ColorsOf(b) || ColorsOf(a).Seed() == ColorsOf(b).Seed();
}

// Whether a table of a whole depth changes nothing.
static bool IsIdentity(const uint32_t* inTable, int inDepth)
{
    for (uint32_t i = 0; i < 1u << inDepth; ++i)
        if (inTable[i] != i)
            return false;
    return true;
}

void Converter::BeginPixels(const Surface& from, const Surface& to, const Meaning& meaning)
{
    Begin(from, meaning);
    if (!fTable && from.depth <= 8) {
        if (!Colorizes() && from.depth == to.depth && HaveEqualTables(from, to))
            fKind = Kind::Same;
        else if (to.depth <= 8)
            MakeIndexTable(from, to);
        else
            MakeTable(from, &to);
    }
    if (fTable && from.depth == to.depth && IsIdentity(fTable, from.depth))
        fKind = Kind::Same;
    fTo = to;
    if (from.depth >= 16 && to.depth >= 16 && !Colorizes())
        fKind = from.depth == to.depth ? Kind::Same : to.depth == 16 ? Kind::Narrow : Kind::Widen;
}

void Converter::BeginColors(const Surface& from, const Meaning& meaning)
{
    Begin(from, meaning);
    if (!fTable && from.depth <= 8)
        MakeTable(from, nullptr);
    if (from.depth >= 16 && !Colorizes())
        fKind = fFromWords ? Kind::Widen : Kind::Mask;
}

// Neighbours are often alike: the nearest index of a colour is looked for once.
static void IndexRow(const ColorSpace& inColors, uint32_t* ioValues, int inCount)
{
    uint32_t lastColor = 0xFFFFFFFF, lastIndex = 0;
    for (int i = 0; i < inCount; ++i) {
        if (ioValues[i] != lastColor) {
            lastColor = ioValues[i];
            lastIndex = inColors.IndexOf(lastColor);
        }
        ioValues[i] = lastIndex;
    }
}

void Converter::ColorizeRow(uint32_t* ioColors, int inCount) const
{
    for (int i = 0; i < inCount; ++i)
        ioColors[i] = Colorized(ioColors[i]) & kColorBits;
}

void Converter::AnyRow(uint32_t* ioValues, int inCount) const
{
    if (fFromWords)
        for (int i = 0; i < inCount; ++i)
            ioValues[i] = ColorOf555(ioValues[i]);
    ColorizeRow(ioValues, inCount);
    if (fTo.depth == 16)
        for (int i = 0; i < inCount; ++i)
            ioValues[i] = PixelOf555(ioValues[i]);
    else if (fTo.depth != 0 && fTo.depth <= 8)
        IndexRow(ColorsOf(fTo), ioValues, inCount);
}

void Converter::Row(uint32_t* ioValues, int inCount) const
{
    switch (fKind) {
    case Kind::Same: return;
    case Kind::Table:
        for (int i = 0; i < inCount; ++i)
            ioValues[i] = fTable[ioValues[i]];
        return;
    case Kind::Narrow:
        for (int i = 0; i < inCount; ++i)
            ioValues[i] = PixelOf555(ioValues[i]);
        return;
    case Kind::Widen:
        for (int i = 0; i < inCount; ++i)
            ioValues[i] = ColorOf555(ioValues[i]);
        return;
    case Kind::Mask:
        for (int i = 0; i < inCount; ++i)
            ioValues[i] &= kColorBits;
        return;
    case Kind::Any: return AnyRow(ioValues, inCount);
    }
}

static Change ChangeWithin(Action inAction, uint32_t inFore, uint32_t inBack, uint32_t inBits)
{
    const Change change = ChangeOf(inAction, inFore, inBack);
    return { change.keep & inBits, change.value & inBits };
}

Combination::Combination(short inMode, int inDepth, uint32_t inFore, uint32_t inBack)
    : fPlain(false), fFlip(inDepth >= 16 ? 0xFFFFFFFF : 0), fBits(PixelBits(inDepth))
{
    const Transfer transfer = TransferOf(inMode);
    fSet = ChangeWithin(transfer.set, inFore, inBack, fBits);
    fClear = ChangeWithin(transfer.clear, inFore, inBack, fBits);
}

void Combination::Row(const uint32_t* inSource, uint32_t* ioDestination, int inCount) const
{
    if (fPlain) {
        std::memcpy(ioDestination, inSource, (size_t)inCount * 4);
        return;
    }
    const Change set = fSet, clear = fClear;
    const uint32_t flip = fFlip, bits = fBits;
    for (int i = 0; i < inCount; ++i) {
        const uint32_t setBits = inSource[i] ^ flip, old = ioDestination[i];
        ioDestination[i] = ((setBits & set.Of(old)) | (~setBits & clear.Of(old))) & bits;
    }
}

} // namespace lampblack::quickdraw
