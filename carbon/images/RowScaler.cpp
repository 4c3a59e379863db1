// The rows of an image in another size.
#include "RowScaler.h"

#include <algorithm>
#include <cstring>

namespace lampblack::images {

static constexpr int kRowsAtOnce = 16;

RowScaler::RowScaler(ImageReader& inReader, const Rect& inPart, int inWidth, int inHeight,
                     const quickdraw::Box& inShown, Alpha inAlpha)
    : fReader(inReader),
      fColumns{ inPart.left, inPart.right - inPart.left, inWidth },
      fRows{ inPart.top, inPart.bottom - inPart.top, inHeight },
      fShown(inShown),
      fAlpha(inAlpha),
      fWidth(inReader.Facts().width),
      fBuffer((size_t)fWidth * kRowsAtOnce),
      fRow(inShown.y1)
{
    for (int i = 0; i < kRowsAtOnce; ++i)
        fPointers.push_back(fBuffer.data() + (size_t)fWidth * (size_t)i);
    for (int h = inShown.x1; h <= inShown.x2; ++h)
        fStarts.push_back(fColumns.Start(h));
    if (fColumns.from > fColumns.to || fRows.from > fRows.to)
        fSums.resize((size_t)(inShown.x2 - inShown.x1) * 4);
}

static uint32_t Premultiplied(uint32_t inPixel)
{
    const uint32_t alpha = inPixel >> 24;
    if (alpha == 255)
        return inPixel;
    const auto scaled = [alpha](uint32_t channel) {
        const uint32_t product = channel * alpha + 128;
        return (product + (product >> 8)) >> 8;
    };
    return alpha << 24 | scaled(inPixel >> 16 & 0xFF) << 16 | scaled(inPixel >> 8 & 0xFF) << 8 |
           scaled(inPixel & 0xFF);
}

void RowScaler::PrepareRow(uint32_t* ioRow) const
{
    if (!fReader.Facts().hasAlpha)
        return;
    for (int i = 0; i < fWidth; ++i)
        ioRow[i] = fAlpha == Alpha::Drop ? ioRow[i] & 0x00FFFFFF : Premultiplied(ioRow[i]);
}

const uint32_t* RowScaler::SourceRow(int inRow)
{
    while (inRow >= fFirstBuffered + fBuffered) {
        fFirstBuffered += fBuffered;
        fBuffered = fReader.Read(fPointers.data(), kRowsAtOnce);
        if (fBuffered == 0)
            return nullptr;
        for (int i = 0; i < fBuffered; ++i)
            PrepareRow(fPointers[(size_t)i]);
    }
    return fPointers[(size_t)(inRow - fFirstBuffered)];
}

// Adds a row of the image to the sums.
bool RowScaler::AddRow(int inRow)
{
    const uint32_t* row = SourceRow(inRow);
    if (!row)
        return false;
    uint64_t* sums = fSums.data();
    for (int h = fShown.x1; h < fShown.x2; ++h, sums += 4)
        for (int at = fColumns.Start(h); at < fColumns.End(h); ++at)
            for (int channel = 0; channel < 4; ++channel)
                sums[channel] += row[at] >> (channel * 8) & 0xFF;
    return true;
}

void RowScaler::Average(int inFirst, int inLast, uint32_t* outRow)
{
    const uint64_t* sums = fSums.data();
    for (int h = fShown.x1; h < fShown.x2; ++h, sums += 4) {
        const auto count = (uint64_t)(fColumns.End(h) - fColumns.Start(h)) * (uint64_t)(inLast - inFirst);
        uint32_t pixel = 0;
        for (int channel = 0; channel < 4; ++channel)
            pixel |= (uint32_t)((sums[channel] + count / 2) / count) << (channel * 8);
        outRow[h - fShown.x1] = pixel;
    }
}

bool RowScaler::Next(uint32_t* outRow)
{
    if (fRow >= fShown.y2)
        return false;
    const int first = fRows.Start(fRow), last = fRows.End(fRow);
    ++fRow;
    if (fSums.empty()) {
        const uint32_t* row = SourceRow(first);
        for (int i = 0; row && i < fShown.x2 - fShown.x1; ++i)
            outRow[i] = row[fStarts[(size_t)i]];
        return row != nullptr;
    }
    std::fill(fSums.begin(), fSums.end(), 0);
    for (int row = first; row < last; ++row)
        if (!AddRow(row))
            return false;
    Average(first, last, outRow);
    return true;
}

} // namespace lampblack::images
