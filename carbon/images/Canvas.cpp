// Pixels made aside.
#include "Canvas.h"

#include <quickdraw/PortRecord.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace lampblack::images {

static constexpr int kMaxPieceWidth = 4092; // pixels of depth 32 in a row of a pixel map

PixMap Canvas::Piece::Map() const
{
    PixMap map = {};
    quickdraw::DescribePixels(map, 32);
    map.baseAddr = reinterpret_cast<Ptr>(pixels);
    map.rowBytes = (short)((bounds.right - bounds.left) * 4 | 0x8000);
    map.bounds = bounds;
    map.hRes = map.vRes = 72 << 16;
    return map;
}

bool Canvas::Make(const Rect& inBounds, uint32_t inPixel)
{
    const auto width = (size_t)(inBounds.right - inBounds.left),
               height = (size_t)(inBounds.bottom - inBounds.top);
    fBounds = inBounds;
    fPieces.clear();
    fPixels.reset(new (std::nothrow) uint32_t[width * height]);
    if (!fPixels)
        return false;
    if (inPixel)
        std::fill_n(fPixels.get(), width * height, inPixel);
    uint32_t* at = fPixels.get();
    for (int left = inBounds.left; left < inBounds.right; left += kMaxPieceWidth) {
        const int right = std::min(left + kMaxPieceWidth, (int)inBounds.right);
        fPieces.push_back({ { inBounds.top, (short)left, inBounds.bottom, (short)right }, at });
        at += (size_t)(right - left) * height;
    }
    return true;
}

void Canvas::CutAt(int inBottom)
{
    for (Piece& piece : fPieces)
        piece.bounds.bottom = (short)inBottom;
    if (inBottom == fBounds.top)
        fPieces.clear();
}

void Canvas::Fill(RowScaler& ioRows)
{
    std::vector<uint32_t> row(fPieces.size() > 1 ? (size_t)(fBounds.right - fBounds.left) : 0);
    for (int v = fBounds.top; v < fBounds.bottom; ++v) {
        if (!ioRows.Next(row.empty() ? fPieces[0].RowAt(v) : row.data()))
            return CutAt(v);
        for (const Piece& piece : fPieces)
            if (!row.empty())
                std::memcpy(piece.RowAt(v), row.data() + (piece.bounds.left - fBounds.left),
                            (size_t)(piece.bounds.right - piece.bounds.left) * 4);
    }
}

} // namespace lampblack::images
