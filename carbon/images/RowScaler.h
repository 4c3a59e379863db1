// The rows of an image, or of a part of it, in another size. A smaller one averages pixels, a larger one
// repeats them.
#ifndef LAMPBLACK_IMAGES_ROWSCALER_H
#define LAMPBLACK_IMAGES_ROWSCALER_H

#include "ImageReader.h"

#include <quickdraw/Region.h>

#include <vector>

namespace lampblack::images {

// What becomes of alpha: it is dropped, or the colours are multiplied by it.
enum class Alpha : uint8_t { Drop, Premultiply };

class RowScaler {
public:
    // `part` of the image becomes width by height pixels, of which only the box `shown` is made.
    RowScaler(ImageReader&, const Rect& part, int width, int height, const quickdraw::Box& shown, Alpha);

    // Makes the next row; false when the image ended, which it does early when its data is damaged.
    bool Next(uint32_t* outRow);

private:
    // Where along one axis the source pixels of a destination pixel are.
    struct Axis {
        int first, from, to;
        int Start(int inAt) const { return first + (int)((int64_t)inAt * from / to); }
        int End(int inAt) const { return from > to ? Start(inAt + 1) : Start(inAt) + 1; }
    };

    const uint32_t* SourceRow(int inRow);
    void PrepareRow(uint32_t* ioRow) const;
    void Average(int inFirst, int inLast, uint32_t* outRow);
    bool AddRow(int inRow);

    ImageReader& fReader;
    Axis fColumns, fRows;
    quickdraw::Box fShown;
    Alpha fAlpha;
    int fWidth;                       // of the image
    std::vector<uint32_t> fBuffer;    // some rows of the image
    std::vector<uint32_t*> fPointers; // to each of them
    std::vector<int> fStarts;         // the source column of each column, and of the one after the last
    std::vector<uint64_t> fSums;      // four channels for each column
    int fBuffered = 0, fFirstBuffered = 0;
    int fRow; // the next one, of the destination
};

} // namespace lampblack::images

#endif
