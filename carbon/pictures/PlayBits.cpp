// The opcodes of bit maps and pixel maps. Only the rows that are shown are decoded, and not more of them at
// once than fit into a few megabytes.
#include "MattePixels.h"
#include "Opcodes.h"
#include "PictureBits.h"
#include "Player.h"

#include <Carbon/MacErrors.h>
#include <quickdraw/ColorTables.h>

#include <algorithm>
#include <new>

namespace lampblack::pictures {

using namespace quickdraw;

static constexpr int64_t kBandBytes = 8 << 20;
static constexpr int kMaxRowBytes = 0x3FFC;
static constexpr int64_t kMostMattePixels = 16 << 20; // a larger image is drawn without its matte

// What CopyBits reads pixels through. The table is disposed of in the end.
class BandMap {
public:
    BandMap(const PictureBits& inBits, uint8_t* inPixels) : fIsPixMap(inBits.map.isPixMap)
    {
        const int depth = inBits.map.depth;
        DescribePixels(fMap, depth);
        fMap.baseAddr = reinterpret_cast<Ptr>(inPixels);
        fMap.rowBytes = (short)(NativeRowBytes(inBits.map) | (fIsPixMap ? 0x8000 : 0));
        fMap.bounds = inBits.map.bounds;
        fMap.pmTable = nullptr;
        if (fIsPixMap && depth <= 8)
            fMap.pmTable = NewTable(inBits.colors ? *inBits.colors : StandardColors(depth));
    }
    ~BandMap()
    {
        if (fMap.pmTable)
            DisposeCTable(fMap.pmTable);
    }
    BandMap(const BandMap&) = delete;
    BandMap& operator=(const BandMap&) = delete;

    void SetRows(int top, int bottom)
    {
        fMap.bounds.top = Clamped(top);
        fMap.bounds.bottom = Clamped(bottom);
    }
    const BitMap* Bits() const { return reinterpret_cast<const BitMap*>(&fMap); }

private:
    PixMap fMap = {};
    bool fIsPixMap;
};

// The rows of a map that a picture shows, with the part of them that is in memory.
class BitsPlayer {
public:
    BitsPlayer(Player& ioPlayer, const PictureBits& inBits, const Rect& inTo)
        : fPlayer(ioPlayer), fBits(inBits), fTo(inTo)
    {
        const int first = inBits.map.bounds.top, last = inBits.map.bounds.bottom;
        fFirst = std::clamp<int>(inBits.from.top, first, last);
        fLast = std::clamp<int>(inBits.from.bottom, fFirst, last);
        fMask = inBits.mask ? NewRgn() : nullptr;
        if (Region* region = FindRegion(fMask))
            *region = ioPlayer.Map().Of(*inBits.mask);
    }
    ~BitsPlayer()
    {
        if (fMask)
            DisposeRgn(fMask);
    }
    BitsPlayer(const BitsPlayer&) = delete;
    BitsPlayer& operator=(const BitsPlayer&) = delete;

    // Reads all rows; draws those that show. False when the data end early.
    bool Play(RowReader& ioRows, bool isDrawn)
    {
        const MapHeader& map = fBits.map;
        FindSeenRows();
        if (!isDrawn || fLast <= fFirst || !MakeBand())
            return SkipRows(ioRows, map.bounds.bottom - map.bounds.top);
        const bool isWhole = SkipRows(ioRows, fFirst - map.bounds.top) && PlayRows(ioRows);
        return isWhole && SkipRows(ioRows, map.bounds.bottom - fLast);
    }

private:
    // Rows that come to lie outside of what may be drawn are not worth decoding, unless their errors go on to
    // those that do.
    void FindSeenRows()
    {
        const Box drawable = fPlayer.Port().Drawable().Extents();
        const Box from = IsMixed() && !IsEmpty(drawable) ? BoxOf(fPlayer.Port().fBounds) : drawable;
        const Box seen = Intersection(from, BoxOf(fTo));
        const int64_t height = fTo.bottom - fTo.top, rows = fBits.from.bottom - fBits.from.top;
        if (IsEmpty(seen) || height <= 0 || rows <= 0) {
            fLast = fFirst;
            return;
        }
        const auto rowOf = [&](int v) { return (int)(fBits.from.top + (v - fTo.top) * rows / height); };
        fFirst = std::clamp(rowOf(seen.y1) - 1, fFirst, fLast);
        fLast = std::clamp(rowOf(seen.y2) + 2, fFirst, fLast);
    }

    bool MakeBand()
    {
        const int64_t rowBytes = NativeRowBytes(fBits.map);
        fBandRows = (int)std::clamp<int64_t>(kBandBytes / rowBytes, 1, fLast - fFirst);
        fPixels.reset(new (std::nothrow) uint8_t[(size_t)(rowBytes * fBandRows)]());
        if (!fPixels)
            fPlayer.Fail(noMemForPictPlaybackErr);
        return fPixels != nullptr;
    }

    static bool SkipRows(RowReader& ioRows, int inCount)
    {
        for (int i = 0; i < inCount; ++i)
            if (!ioRows.Skip())
                return false;
        return true;
    }

    bool PlayRows(RowReader& ioRows)
    {
        BandMap band(fBits, fPixels.get());
        const size_t rowBytes = (size_t)NativeRowBytes(fBits.map);
        for (int top = fFirst; top < fLast;) {
            const int bottom = std::min(fLast, EndOfBand(top));
            int row = top;
            while (row < bottom && ReadRow(ioRows, row, fPixels.get() + (size_t)(row - top) * rowBytes))
                ++row;
            band.SetRows(top, row);
            if (row > top)
                Draw(band);
            if (row < bottom)
                return false;
            top = bottom;
        }
        return true;
    }

    // Rows that become one are in one band, unless there are more of them than it holds.
    int EndOfBand(int inTop) const
    {
        const int64_t rows = fBits.from.bottom - fBits.from.top, height = fTo.bottom - fTo.top;
        const int64_t shown = (inTop + fBandRows - fBits.from.top) * height / rows;
        const int whole = (int)(fBits.from.top + shown * rows / height);
        return whole > inTop && IsMixed() ? whole : inTop + fBandRows;
    }

    bool IsMixed() const { return fBits.mode & ditherCopy; }

    // When the image is made smaller, rows that fall between those that show are only stepped over, unless
    // they are mixed.
    bool ReadRow(RowReader& ioRows, int inRow, uint8_t* outRow)
    {
        const int64_t rows = fBits.from.bottom - fBits.from.top, height = fTo.bottom - fTo.top;
        const int64_t at = inRow - fBits.from.top;
        const int64_t shownBy = (at * height + rows - 1) / rows; // the first row there that is not before it
        const bool isShown = rows <= height || IsMixed() || shownBy * rows / height == at;
        if (!fPlayer.CanAfford(isShown ? NativeRowBytes(fBits.map) / 4 + 8 : 2))
            return false;
        return isShown ? ioRows.Read(outRow) : ioRows.Skip();
    }

    // The source rectangle is that of all bands, so that scaling is the same as in one piece.
    void Draw(const BandMap& inBand)
    {
        CGrafPtr port = ReferenceOf(&fPlayer.Port());
        if (fPlayer.CanAfford(fTo, fMask ? 4 * (int64_t)FindRegion(fMask)->Boxes().size() : 1))
            CopyBits(inBand.Bits(), GetPortBitMapForCopyBits(port), &fBits.from, &fTo, fBits.mode, fMask);
    }

    Player& fPlayer;
    const PictureBits& fBits;
    Rect fTo;
    int fFirst = 0, fLast = 0, fBandRows = 1;
    RgnHandle fMask = nullptr;
    std::unique_ptr<uint8_t[]> fPixels;
};

// An image with a matte is drawn through it, pixel by pixel.
static bool PlayMatted(Player& ioPlayer, const PictureBits& inBits, RowReader& ioRows, const Rect& inTo)
{
    const int width = inBits.map.Width(), height = inBits.map.Height();
    const size_t rowBytes = (size_t)NativeRowBytes(inBits.map);
    if (!ioPlayer.CanAfford((int64_t)width * height))
        return false;
    Surface row{ nullptr, (int)rowBytes, inBits.map.depth, { 0, 0, 1, (short)width }, inBits.colors.get() };
    if (!row.colors && row.depth <= 8)
        row.colors = &StandardColors(row.depth);
    std::vector<uint8_t> pixels(rowBytes);
    std::vector<uint32_t> colors((size_t)width * (size_t)height);
    row.base = pixels.data();
    bool isWhole = true;
    for (int v = 0; v < height && isWhole; ++v) {
        isWhole = ioRows.Read(pixels.data());
        if (isWhole)
            ReadColors(row, 0, 0, width, colors.data() + (size_t)v * (size_t)width);
    }
    ApplyMatte(ioPlayer.fMatte, width, height, colors.data());
    Rect from = inBits.from;
    OffsetRect(&from, (short)-inBits.map.bounds.left, (short)-inBits.map.bounds.top);
    DrawWithAlpha(ioPlayer, { colors.data(), width, height }, from, inTo);
    return isWhole;
}

void PlayBits(Player& ioPlayer, int inOpcode, BigEndianReader& ioReader)
{
    PictureBits bits;
    if (!ReadPictureBits(inOpcode, ioReader, &bits) || NativeRowBytes(bits.map) > kMaxRowBytes)
        return ioPlayer.Fail(pictureDataErr);
    const Rect placed = ioPlayer.fHasPlacement ? ioPlayer.fPlacement.Of(bits.to) : bits.to;
    const Rect to = ioPlayer.Map().Of(placed);
    RowReader rows(bits.map, bits.coding, ioReader);
    const bool isMatted = ioPlayer.fHasPlacement && !ioPlayer.fMatte.weights.empty() &&
                          (int64_t)bits.map.Width() * bits.map.Height() <= kMostMattePixels;
    const bool isWhole = isMatted ? PlayMatted(ioPlayer, bits, rows, to)
                                  : BitsPlayer(ioPlayer, bits, to)
                                        .Play(rows, !bits.isBroken && !IsEmpty(bits.from) && !IsEmpty(to));
    ioPlayer.fHasPlacement = false;
    if (!isWhole)
        return ioPlayer.Fail(pictureDataErr);
    ioReader.Seek(rows.Offset());
}

} // namespace lampblack::pictures
