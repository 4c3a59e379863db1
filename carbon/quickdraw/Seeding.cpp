// Masks of what paint would fill.
#include "CopyBits.h"

#include <Carbon/MacErrors.h>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

namespace {

// Bits in rows of whole bytes.
struct Bits {
    int width = 0, height = 0, rowBytes = 0;
    std::vector<uint8_t> bytes;

    Bits(int inWidth, int inHeight)
        : width(inWidth),
          height(inHeight),
          rowBytes((inWidth + 15) / 16 * 2),
          bytes((size_t)rowBytes * (size_t)inHeight)
    {
    }
    uint8_t* Row(int v) { return bytes.data() + (ptrdiff_t)v * rowBytes; }
    bool At(int h, int v) { return Row(v)[h >> 3] >> (7 - (h & 7)) & 1; }
    void Set(int h, int v) { Row(v)[h >> 3] |= (uint8_t)(0x80 >> (h & 7)); }
};

// Pours paint into bits, run by run.
class Paint {
public:
    explicit Paint(Bits& inWalls) : fWalls(inWalls), fReached(inWalls.width, inWalls.height) {}

    void PourAt(int h, int v)
    {
        if (h < 0 || v < 0 || h >= fWalls.width || v >= fWalls.height)
            return;
        fNext.push_back({ h, v });
        while (!fNext.empty()) {
            const Place place = fNext.back();
            fNext.pop_back();
            if (IsOpen(place.h, place.v))
                FillRun(place);
        }
    }
    void PourAround()
    {
        for (int h = 0; h < fWalls.width; ++h) {
            PourAt(h, 0);
            PourAt(h, fWalls.height - 1);
        }
        for (int v = 0; v < fWalls.height; ++v) {
            PourAt(0, v);
            PourAt(fWalls.width - 1, v);
        }
    }
    Bits& Reached() { return fReached; }
    Bits& NotReached()
    {
        for (uint8_t& byte : fReached.bytes)
            byte = (uint8_t)~byte;
        return fReached;
    }

private:
    struct Place {
        int h, v;
    };

    bool IsOpen(int h, int v) { return !fWalls.At(h, v) && !fReached.At(h, v); }

    void FillRun(Place inPlace)
    {
        int left = inPlace.h, right = inPlace.h + 1;
        while (left > 0 && IsOpen(left - 1, inPlace.v))
            --left;
        while (right < fWalls.width && IsOpen(right, inPlace.v))
            ++right;
        for (int h = left; h < right; ++h)
            fReached.Set(h, inPlace.v);
        for (int v : { inPlace.v - 1, inPlace.v + 1 })
            if (v >= 0 && v < fWalls.height)
                TakeRuns(v, left, right);
    }
    void TakeRuns(int v, int inLeft, int inRight)
    {
        bool wasOpen = false;
        for (int h = inLeft; h < inRight; ++h) {
            const bool isOpen = IsOpen(h, v);
            if (isOpen && !wasOpen)
                fNext.push_back({ h, v });
            wasOpen = isOpen;
        }
    }

    Bits& fWalls;
    Bits fReached;
    std::vector<Place> fNext;
};

// Says of colours whether paint passes. Neighbours are often alike: a procedure is asked once.
class Matcher {
public:
    Matcher(uint32_t inSeed, ColorSearchUPP inProc, long inData)
        : fSeed(inSeed), fProc(inProc), fDevice(GetGDevice())
    {
        const RGBColor color = ColorOf(inSeed);
        fRecord = { color.red, color.green, color.blue, inData };
        if (!fProc || !fDevice)
            return;
        fOldRefCon = (*fDevice)->gdRefCon;
        (*fDevice)->gdRefCon = (long)&fRecord;
    }
    ~Matcher()
    {
        if (fProc && fDevice && GetGDevice() == fDevice)
            (*fDevice)->gdRefCon = fOldRefCon;
    }
    Matcher(const Matcher&) = delete;
    Matcher& operator=(const Matcher&) = delete;

    bool Passes(uint32_t inColor)
    {
        if (!fProc)
            return inColor == fSeed;
        if (inColor != fLast) {
            RGBColor color = ColorOf(inColor);
            long position = 0;
            fPasses = fProc(&color, &position) ? position == 0 : inColor == fSeed;
            fLast = inColor;
        }
        return fPasses;
    }

private:
    uint32_t fSeed;
    ColorSearchUPP fProc;
    GDHandle fDevice;
    MatchRec fRecord;
    long fOldRefCon = 0;
    uint32_t fLast = 0xFFFFFFFF;
    bool fPasses = false;
};

} // namespace

// Rows that are shorter than the words they shall have are taken for as long as they are.
static Bits WallsOf(const void* inBits, int inRowBytes, int inHeight, int inWords)
{
    const int words = std::min(inWords, inRowBytes / 2);
    Bits walls(words * 16, inHeight);
    for (int v = 0; v < inHeight; ++v)
        std::copy_n(static_cast<const uint8_t*>(inBits) + (ptrdiff_t)v * inRowBytes, words * 2, walls.Row(v));
    return walls;
}

static void PutInto(Bits& inBits, void* outBits, int inRowBytes)
{
    const int bytes = std::min(inBits.rowBytes, inRowBytes);
    for (int v = 0; v < inBits.height; ++v)
        std::copy_n(inBits.Row(v), bytes, static_cast<uint8_t*>(outBits) + (ptrdiff_t)v * inRowBytes);
}

static bool AreBits(const void* inFrom, void* inTo, int inFromRow, int inToRow, int inHeight, int inWords)
{
    return inFrom && inTo && inFromRow > 0 && inToRow > 0 && inHeight > 0 && inWords > 0;
}

static constexpr uint32_t kNoColor = 0xFFFFFFFF;

// Pixels where no paint passes. The box lies in the surface.
static Bits WallsOf(const Surface& inSurface, const Box& inBox, Matcher& ioMatcher)
{
    Bits walls(inBox.x2 - inBox.x1, inBox.y2 - inBox.y1);
    uint32_t colors[kRowPiece];
    for (int v = inBox.y1; v < inBox.y2; ++v)
        for (int h = inBox.x1; h < inBox.x2; h += kRowPiece) {
            const int count = std::min(kRowPiece, inBox.x2 - h);
            ReadColors(inSurface, v, h, count, colors);
            for (int i = 0; i < count; ++i)
                if (!ioMatcher.Passes(colors[i]))
                    walls.Set(h + i - inBox.x1, v - inBox.y1);
        }
    return walls;
}

static uint32_t ColorAt(const Surface& s, int h, int v)
{
    const bool exists = h >= s.bounds.left && h < s.bounds.right && v >= s.bounds.top && v < s.bounds.bottom;
    return exists ? ColorFor(s, ReadPixel(s, v, h)) : kNoColor;
}

// Where the source has no pixels the destination keeps its own.
static void CopyResult(Bits& inBits, const Box& inBox, const Rect& inRect, const MapPixels& inTo,
                       const Rect& inToRect)
{
    const Surface result = { inBits.bytes.data(), inBits.rowBytes, 1, RectOf(inBox), nullptr };
    const Box changed = CopySurface(result, inTo.surface, inRect, inToRect, srcCopy);
    if (inTo.port && !IsEmpty(changed))
        inTo.port->Damage(changed);
}

// Both maps, if there is anything to do.
static bool FindMaps(const BitMap* inFrom, const BitMap* inTo, const Rect* inFromRect, const Rect* inToRect,
                     MapPixels* outFrom, MapPixels* outTo, Box* outBox)
{
    if (!inFrom || !inTo || !inFromRect || !inToRect) {
        SetQDError(paramErr);
        return false;
    }
    QDErr error = FindPixels(inFrom, outFrom);
    if (!error)
        error = FindPixels(inTo, outTo);
    SetQDError(error);
    if (error || !outFrom->surface.base || !outTo->surface.base)
        return false;
    *outBox = Intersection(BoxOf(*inFromRect), BoxOf(outFrom->surface.bounds));
    return !IsEmpty(*outBox) && !IsEmpty(*inFromRect) && !IsEmpty(*inToRect);
}

} // namespace lampblack::quickdraw

void SeedFill(const void* srcPtr, void* dstPtr, short srcRow, short dstRow, short height, short words,
              short seedH, short seedV)
{
    if (!AreBits(srcPtr, dstPtr, srcRow, dstRow, height, words))
        return;
    Bits walls = WallsOf(srcPtr, srcRow, height, words);
    Paint paint(walls);
    paint.PourAt(seedH, seedV);
    PutInto(paint.Reached(), dstPtr, dstRow);
}

void CalcMask(const void* srcPtr, void* dstPtr, short srcRow, short dstRow, short height, short words)
{
    if (!AreBits(srcPtr, dstPtr, srcRow, dstRow, height, words))
        return;
    Bits walls = WallsOf(srcPtr, srcRow, height, words);
    Paint paint(walls);
    paint.PourAround();
    PutInto(paint.NotReached(), dstPtr, dstRow);
}

void SeedCFill(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect, const Rect* dstRect,
               short seedH, short seedV, ColorSearchUPP matchProc, long matchData)
{
    MapPixels from, to;
    Box box;
    if (!FindMaps(srcBits, dstBits, srcRect, dstRect, &from, &to, &box))
        return;
    const uint32_t seed = ColorAt(from.surface, seedH, seedV);
    Matcher matcher(seed, matchProc, matchData);
    Bits walls = WallsOf(from.surface, box, matcher);
    Paint paint(walls);
    if (seed != kNoColor)
        paint.PourAt(seedH - box.x1, seedV - box.y1);
    CopyResult(paint.Reached(), box, *srcRect, to, *dstRect);
}

void CalcCMask(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect, const Rect* dstRect,
               const RGBColor* seedRGB, ColorSearchUPP matchProc, long matchData)
{
    MapPixels from, to;
    Box box;
    if (!seedRGB)
        return SetQDError(paramErr);
    if (!FindMaps(srcBits, dstBits, srcRect, dstRect, &from, &to, &box))
        return;
    // What the source cannot hold is taken for the nearest that it does.
    Matcher matcher(ShownColor(from.surface, PixelOf(*seedRGB)), matchProc, matchData);
    Bits walls = WallsOf(from.surface, box, matcher);
    Paint paint(walls);
    paint.PourAround();
    CopyResult(paint.NotReached(), box, *srcRect, to, *dstRect);
}

ColorSearchUPP NewColorSearchUPP(ColorSearchProcPtr userRoutine)
{
    return userRoutine;
}

void DisposeColorSearchUPP(ColorSearchUPP) {}

Boolean InvokeColorSearchUPP(RGBColor* rgb, long* position, ColorSearchUPP userUPP)
{
    return userUPP ? userUPP(rgb, position) : false;
}
