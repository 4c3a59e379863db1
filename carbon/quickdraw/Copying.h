// Copying of pixels. Begin with CopyBits.cpp; here are the loops that know nothing of ports.
#ifndef LAMPBLACK_QUICKDRAW_COPYING_H
#define LAMPBLACK_QUICKDRAW_COPYING_H

#include "Ink.h"

namespace lampblack::quickdraw {

// The nearest pixel along one axis: destination pixel i shows source pixel i * source / destination, rounded
// down.
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

// Pixels as they are read.
struct Source {
    const uint8_t* base = nullptr;
    int rowBytes = 0;
    int depth = 0; // 1 or 32
    Rect bounds = { 0, 0, 0, 0 };
    const PortRecord* port = nullptr; // whose they are

    const uint8_t* RowAt(int v) const { return base + (ptrdiff_t)(v - bounds.top) * rowBytes; }
};

// count pixels of a row, the first being column h.
void FetchRow(const Source&, int v, int h, int count, uint32_t* out);
void FetchScaledRow(const Source&, int v, int left, Steps, int count, uint32_t* out);

// How source pixels meet destination pixels: bit by bit, a zero bit of the source counting as set.
class Combination {
public:
    Combination(short mode, uint32_t fore, uint32_t back);

    bool IsPlainCopy() const { return fPlain; }
    void Row(const uint32_t* source, uint32_t* destination, int count) const;

private:
    bool fPlain = false, fTransparent = false;
    uint32_t fBack;
    Change fSet, fClear;
};

// Scales whole images of depth 32; the rows are given in pixels.
void Stretch(const uint32_t* from, int fromRow, int fromWidth, int fromHeight, uint32_t* to, int toRow,
             int toWidth, int toHeight);

// Moves the pixels of a port that come from (dh, dv) away into a region; the two may overlap.
void MovePixels(PortRecord&, const Region& to, int dh, int dv);

} // namespace lampblack::quickdraw

#endif
