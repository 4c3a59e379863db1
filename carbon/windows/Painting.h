// The loops that put pixels into the screen. Pixels are 0x00RRGGBB; a canvas is addressed in global pixels.
#ifndef LAMPBLACK_WINDOWS_PAINTING_H
#define LAMPBLACK_WINDOWS_PAINTING_H

#include "Region.h"

#include <cstdint>
#include <vector>

namespace lampblack::windows {

struct Canvas {
    uint32_t* pixels = nullptr;
    int rowPixels = 0;

    uint32_t* At(int inH, int inV) const { return pixels + (long)inV * rowPixels + inH; }
};

struct Source {
    const uint32_t* pixels = nullptr;
    int rowPixels = 0;
    Rect place = { 0, 0, 0, 0 }; // where its pixels belong on the screen
};

void PaintSource(const Canvas& inCanvas, const Source& inSource, const pixman_box32_t& inBox);
void BlendSource(const Canvas& inCanvas, const Source& inSource, const pixman_box32_t& inBox,
                 uint32_t inAlpha256);
// A corner of a window, as a square with a side of its radius.
struct Corner {
    Rect place = { 0, 0, 0, 0 }; // global
    int radius = 0;
    bool right = false, bottom = false;

    // How much of a pixel of the square belongs to the window, 0 to 256.
    uint32_t Weight(int inH, int inV) const;
};
// The round corners of a rectangle; answers how many, up to four.
int RoundCorners(const Rect& inRect, int inTopRadius, int inBottomRadius, Corner outCorners[4]);
// Only what belongs to the window.
void BlendCorner(const Canvas& inCanvas, const Source& inSource, const pixman_box32_t& inBox,
                 const Corner& inCorner, uint32_t inAlpha256);

// A plain gradient from the top of the screen to the bottom.
void PaintDesktop(const Canvas& inCanvas, int inScreenHeight, const pixman_box32_t& inBox);

// The soft shadow of a rectangle. A blurred rectangle is the product of two blurred edges, so two short
// tables hold all of it.
class Shadow {
public:
    static constexpr int kReach = 18; // pixels beyond the rectangle, at most
    static constexpr int kDrop = 6;   // pixels that it hangs lower

    void Fit(const Rect& inRect, bool inStrong); // does nothing when it fits already
    Rect Bounds() const { return fBounds; }
    void Paint(const Canvas& inCanvas, const pixman_box32_t& inBox) const;
    // The hairline around the window, which sets a white one off from a white one.
    void PaintOutline(const Canvas& inCanvas, const pixman_box32_t& inBox, int inTopRadius,
                      int inBottomRadius) const;

private:
    Rect fRect = { 0, 0, 0, 0 }, fBounds = { 0, 0, 0, 0 };
    bool fStrong = false;
    std::vector<uint16_t> fAcross, fDown; // 0 to 256
};

} // namespace lampblack::windows

#endif
