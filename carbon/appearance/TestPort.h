// For tests: a current port of its own with pixels to look at.
#ifndef LAMPBLACK_APPEARANCE_TESTPORT_H
#define LAMPBLACK_APPEARANCE_TESTPORT_H

#include "appearance/Geometry.h"

#include <quickdraw/Port.h>

#include <vector>

namespace lampblack::appearance {

class TestPort {
public:
    TestPort(int inWidth = 200, int inHeight = 100) : fPort(quickdraw::NewPixelPort(inWidth, inHeight))
    {
        SetPort(fPort);
    }
    ~TestPort() { quickdraw::DisposePixelPort(fPort); }
    TestPort(const TestPort&) = delete;
    TestPort& operator=(const TestPort&) = delete;

    CGrafPtr Ref() const { return fPort; }

    uint32_t Pixel(int inX, int inY) const
    {
        const quickdraw::PixelView view = quickdraw::PortPixels(fPort);
        return view.base[inY * view.rowPixels + inX] & 0xFFFFFF;
    }

    std::vector<uint32_t> Pixels(const Rect& inRect) const
    {
        std::vector<uint32_t> pixels;
        for (int y = inRect.top; y < inRect.bottom; ++y)
            for (int x = inRect.left; x < inRect.right; ++x)
                pixels.push_back(Pixel(x, y));
        return pixels;
    }

    std::vector<uint32_t> Pixels() const
    {
        const Rect bounds = quickdraw::PortPixels(fPort).bounds;
        return Pixels(MakeRect(0, 0, WidthOf(bounds), HeightOf(bounds)));
    }

    // The smallest rectangle around all that is not white.
    Rect Drawn() const
    {
        const Rect all = quickdraw::PortPixels(fPort).bounds;
        Rect drawn = { 32767, 32767, 0, 0 };
        for (short y = 0; y < HeightOf(all); ++y)
            for (short x = 0; x < WidthOf(all); ++x)
                if (Pixel(x, y) != 0xFFFFFF)
                    drawn = { std::min(drawn.top, y), std::min(drawn.left, x),
                              std::max(drawn.bottom, (short)(y + 1)), std::max(drawn.right, (short)(x + 1)) };
        return drawn.bottom ? drawn : Rect{ 0, 0, 0, 0 };
    }

    void Clear()
    {
        const quickdraw::PixelView view = quickdraw::PortPixels(fPort);
        for (int y = 0; y < HeightOf(view.bounds); ++y)
            std::fill_n(view.base + y * view.rowPixels, WidthOf(view.bounds), 0xFFFFFFu);
    }

private:
    CGrafPtr fPort;
};

inline bool IsWithin(const Rect& inInner, const Rect& inOuter)
{
    return IsEmpty(inInner) || (inInner.left >= inOuter.left && inInner.top >= inOuter.top &&
                                inInner.right <= inOuter.right && inInner.bottom <= inOuter.bottom);
}

inline bool IsSame(const Rect& inA, const Rect& inB)
{
    return inA.left == inB.left && inA.top == inB.top && inA.right == inB.right && inA.bottom == inB.bottom;
}

// How much bluer than red a pixel is.
inline int Blueness(uint32_t inPixel)
{
    return (int)(inPixel & 0xFF) - (int)(inPixel >> 16 & 0xFF);
}

} // namespace lampblack::appearance

#endif
