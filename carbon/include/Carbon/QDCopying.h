// Copying of pixels beyond CopyBits: through masks, and masks of what paint would fill. Begin with CopyMask.
// Quickdraw.h includes this.
#ifndef LAMPBLACK_CARBON_QDCOPYING_H
#define LAMPBLACK_CARBON_QDCOPYING_H

#include <Carbon/Quickdraw.h>

// A search procedure gets a colour. As SeedCFill and CalcCMask call it, it sets *position to 0 where paint
// passes and to 1 where it is stopped, and answers whether it has decided; else only the seed's own colour
// lets paint pass.
typedef Boolean (*ColorSearchProcPtr)(RGBColor* rgb, long* position);
typedef ColorSearchProcPtr ColorSearchUPP;

// Where the current device's gdRefCon points to while a search procedure is called: the seed's colour.
struct MatchRec {
    unsigned short red;
    unsigned short green;
    unsigned short blue;
    long matchData;
};
typedef struct MatchRec MatchRec;

LAMPBLACK_BEGIN_C

// CopyMask
//
// Copies as CopyBits with srcCopy does, where a mask says so: a mask of one bit where it is set; a deeper one
// weighs its colours, channel by channel: black copies, white leaves the destination. Source and mask are
// scaled to dstRect, each for itself. The clip holds as for CopyBits; an open picture takes the copy with a
// region of the pixels that the mask lets through by half or more.
//
// Errors:     by QDError: paramErr, and cDepthErr for a depth that does not exist.
void CopyMask(const BitMap* srcBits, const BitMap* maskBits, const BitMap* dstBits, const Rect* srcRect,
              const Rect* maskRect, const Rect* dstRect);

// The same with any mode, whose result the mask weighs, and a region in the destination's coordinates, which
// may be NULL.
void CopyDeepMask(const BitMap* srcBits, const BitMap* maskBits, const BitMap* dstBits, const Rect* srcRect,
                  const Rect* maskRect, const Rect* dstRect, short mode, RgnHandle maskRgn);

// SeedFill
//
// Sets the bits of the destination that paint, poured at (seedH, seedV) and stopped by set bits of the
// source, would reach; it runs left, right, up and down. Nothing is reached from a set bit or from outside.
//
// Units:      rows in bytes, `words` of 16 bits of each, `height` rows; the first bit is (0, 0).
void SeedFill(const void* srcPtr, void* dstPtr, short srcRow, short dstRow, short height, short words,
              short seedH, short seedV);

// Sets the bits that paint poured all around the edges would not reach.
void CalcMask(const void* srcPtr, void* dstPtr, short srcRow, short dstRow, short height, short words);

// SeedCFill
//
// SeedFill for pixels of any depth: paint passes where the colour is that of the seed, or where matchProc
// (which may be NULL) says so. What it reaches becomes black in dstRect of the destination, all other pixels
// white; dstRect is scaled to as by CopyBits, without a clip.
void SeedCFill(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect, const Rect* dstRect,
               short seedH, short seedV, ColorSearchUPP matchProc, long matchData);

// CalcMask for pixels of any depth: paint passes where the colour is seedRGB (or the nearest to it that the
// source can hold), or where matchProc says so.
void CalcCMask(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect, const Rect* dstRect,
               const RGBColor* seedRGB, ColorSearchUPP matchProc, long matchData);

ColorSearchUPP NewColorSearchUPP(ColorSearchProcPtr userRoutine);
void DisposeColorSearchUPP(ColorSearchUPP userUPP);
Boolean InvokeColorSearchUPP(RGBColor* rgb, long* position, ColorSearchUPP userUPP);

LAMPBLACK_END_C

#endif
