// Pieces: small premultiplied pictures of theme elements, painted once and drawn from a cache ever after.
//
//     DrawPiece(PaintPushButton, Look{ .tone = Tone::Pressed }, bounds, Slices{ 12, 0, 12, 0 });
//
// A painter sees only the size and the look; both, with its address, are the key of the cache.
#ifndef LAMPBLACK_APPEARANCE_PIECE_H
#define LAMPBLACK_APPEARANCE_PIECE_H

#include "appearance/Canvas.h"
#include "appearance/Look.h"

#include <Carbon/MacTypes.h>

#include <cstddef>

namespace lampblack::appearance {

using Painter = void (*)(Canvas&, int inWidth, int inHeight, Look);

// Margins that are never stretched. An axis with both margins zero is painted at its exact size; along the
// other axes a piece is painted once and its middle repeated, so the middle must look the same at every
// place.
struct Slices {
    short left = 0, top = 0, right = 0, bottom = 0;
    bool hollow = false; // the middle of both axes is empty and need not be drawn
};

// A painted piece; the pixels live until the next call of PaintedPiece.
struct PieceView {
    const uint32_t* pixels = nullptr; // premultiplied 0xAARRGGBB
    int width = 0, height = 0;
};

// Null pixels when the size is empty or there is no memory.
PieceView PaintedPiece(Painter, Look, int inWidth, int inHeight);

// Draws in the current port, over what is there.
void DrawPiece(Painter, Look, const Rect& inBounds, Slices = {});

// Of a piece painted for inBounds, only the part within inPart.
void DrawPiecePart(Painter, Look, const Rect& inBounds, const Rect& inPart);

// For tests: how many pieces are held, and how many were painted since the process began.
size_t PieceCount();
size_t PiecesPainted();

} // namespace lampblack::appearance

#endif
