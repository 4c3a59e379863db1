// Rows of another width: the nearest pixels, or the mean of what comes together in one. Begin with Steps.
#ifndef LAMPBLACK_QUICKDRAW_SCALING_H
#define LAMPBLACK_QUICKDRAW_SCALING_H

#include "Surface.h"

namespace lampblack::quickdraw {

// The nearest pixel along one axis: destination pixel i shows source pixel i * source / destination, rounded
// down. The same rule holds for every depth and for making larger and smaller, so that a picture copied in
// pieces fits together.
class Steps {
public:
    Steps(int source, int destination, int first)
        : fWhole(source / destination),
          fRest(source % destination),
          fDestination(destination),
          fAt((int)((int64_t)first * source / destination)),
          fError((int)((int64_t)first * source % destination))
    {
    }
    int At() const { return fAt; }
    bool Halves() const { return fWhole == 2 && fRest == 0; }
    bool Doubles() const { return fWhole == 0 && 2 * fRest == fDestination; }
    bool IsFirstOfTwo() const { return fError == 0; } // when it doubles
    void Next()
    {
        fAt += fWhole;
        fError += fRest;
        if (fError >= fDestination) {
            fError -= fDestination;
            ++fAt;
        }
    }

private:
    int fWhole, fRest, fDestination, fAt, fError;
};

// count pixels as their own values; the first one is the pixel of column left + steps.At().
void ReadScaledPixels(const Surface&, int v, int left, Steps, int count, uint32_t* outPixels);

// Every other pixel, and every pixel twice (the first one once when the row begins with its second half).
// No pixel beyond the last one taken is read.
void HalveRow(const uint32_t* from, int count, uint32_t* to);
void DoubleRow(const uint32_t* from, bool wholeFirst, int count, uint32_t* to);

// Which source pixels become one destination pixel along one axis: all from its own nearest one to that of
// its neighbour, at least one.
struct Share {
    int first, end;
};
inline Share ShareOf(int at, int source, int destination)
{
    const int first = (int)((int64_t)at * source / destination);
    const int end = (int)((int64_t)(at + 1) * source / destination);
    return { first, end > first ? end : first + 1 };
}

// The mean colours of count destination pixels of a row, the first one being column h, from what of their
// shares lies inside the source's bounds.
void ReadMeanColors(const Surface&, const Rect& fromRect, const Rect& toRect, int v, int h, int count,
                    uint32_t* outColors);

} // namespace lampblack::quickdraw

#endif
