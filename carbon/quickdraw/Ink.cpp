// The row loops of patterns.
#include "Ink.h"

#include <algorithm>

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

Change ChangeOf(Action inAction, uint32_t inFore, uint32_t inBack)
{
    switch (inAction) {
    case Action::Fore: return { 0, inFore };
    case Action::Back: return { 0, inBack };
    case Action::Invert: return { kColorBits, kColorBits };
    case Action::Leave: break;
    }
    return { 0xFFFFFFFF, 0 };
}

static bool IsAll(const Pattern& inPattern, UInt8 inByte)
{
    return std::all_of(inPattern.pat, inPattern.pat + 8, [=](UInt8 row) { return row == inByte; });
}

Ink::Ink(const Pattern& inPattern, short inMode, uint32_t inFore, uint32_t inBack)
    : fPattern(&inPattern), fSolid(false)
{
    const Transfer transfer = TransferOf(inMode);
    fSet = ChangeOf(transfer.set, inFore, inBack);
    fClear = ChangeOf(transfer.clear, inFore, inBack);
    if (IsAll(inPattern, 0))
        fSet = fClear;
    fSolid = fSet == fClear || IsAll(inPattern, 0xFF);
}

static void SolidRow(uint32_t* ioPixels, int inCount, Change inChange)
{
    if (inChange.keep == 0) {
        std::fill_n(ioPixels, inCount, inChange.value);
        return;
    }
    for (int i = 0; i < inCount; ++i)
        ioPixels[i] = inChange.Of(ioPixels[i]);
}

static void PatternRow(uint32_t* ioPixels, int h, UInt8 inBits, int inCount, Change inSet, Change inClear)
{
    Change tile[8];
    for (int i = 0; i < 8; ++i)
        tile[i] = inBits >> (7 - ((h + i) & 7)) & 1 ? inSet : inClear;
    int i = 0;
    for (; i + 8 <= inCount; i += 8)
        for (int j = 0; j < 8; ++j)
            ioPixels[i + j] = tile[j].Of(ioPixels[i + j]);
    for (int j = 0; i + j < inCount; ++j)
        ioPixels[i + j] = tile[j].Of(ioPixels[i + j]);
}

void Ink::Row(uint32_t* pixels, int h, int v, int count) const
{
    if (fSolid)
        SolidRow(pixels, count, fSet);
    else
        PatternRow(pixels, h, fPattern->pat[v & 7], count, fSet, fClear);
}

void Ink::Block(uint32_t* pixels, int rowPixels, const Box& local) const
{
    for (int v = local.y1; v < local.y2; ++v, pixels += rowPixels)
        Row(pixels, local.x1, v, local.x2 - local.x1);
}

} // namespace lampblack::quickdraw
