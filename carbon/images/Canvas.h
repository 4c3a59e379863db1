// Pixels made aside, which CopyBits takes from. Wide images are in pieces, since a pixel map's row is short.
#ifndef LAMPBLACK_IMAGES_CANVAS_H
#define LAMPBLACK_IMAGES_CANVAS_H

#include "RowScaler.h"

#include <memory>
#include <vector>

namespace lampblack::images {

class Canvas {
public:
    struct Piece {
        Rect bounds;
        uint32_t* pixels; // rows without slack

        uint32_t* RowAt(int v) const
        {
            return pixels + (ptrdiff_t)(v - bounds.top) * (bounds.right - bounds.left);
        }
        PixMap Map() const;
    };

    // False when there is no memory.
    bool Make(const Rect& inBounds, uint32_t inPixel = 0);

    // Takes all rows that there are; pieces end where they end.
    void Fill(RowScaler&);

    const std::vector<Piece>& Pieces() const { return fPieces; }

private:
    void CutAt(int inBottom);

    Rect fBounds = { 0, 0, 0, 0 };
    std::unique_ptr<uint32_t[]> fPixels;
    std::vector<Piece> fPieces;
};

} // namespace lampblack::images

#endif
