// A port with pixels for tests, current while it lives, and the pixels of two pictures compared.
#ifndef LAMPBLACK_QUICKDRAW_TESTPORT_H
#define LAMPBLACK_QUICKDRAW_TESTPORT_H

#include "Port.h"

#include <doctest/doctest.h>

#include <functional>
#include <random>
#include <string>
#include <vector>

namespace lampblack::quickdraw {

struct TestPort {
    explicit TestPort(int width = 40, int height = 30) : port(NewPixelPort(width, height)) { SetPort(port); }
    ~TestPort() { DisposePixelPort(port); }
    TestPort(const TestPort&) = delete;
    TestPort& operator=(const TestPort&) = delete;

    uint32_t At(int h, int v) const
    {
        const PixelView view = PortPixels(port);
        return view.base[(v - view.bounds.top) * view.rowPixels + (h - view.bounds.left)];
    }

    CGrafPtr port;
};

inline Rect MakeRect(int left, int top, int right, int bottom)
{
    return { (short)top, (short)left, (short)bottom, (short)right };
}

// The number of pixels of the port that are not what the function says of (h, v).
inline int Differences(const TestPort& port, const std::function<uint32_t(int, int)>& expected)
{
    const Rect bounds = PortPixels(port.port).bounds;
    int count = 0;
    for (int v = bounds.top; v < bounds.bottom; ++v)
        for (int h = bounds.left; h < bounds.right; ++h)
            count += port.At(h, v) != expected(h, v);
    return count;
}

// The same where the function says which pixels are black; all others are white.
inline int BlackDifferences(const TestPort& port, const std::function<bool(int, int)>& isBlack)
{
    return Differences(port, [&](int h, int v) { return isBlack(h, v) ? 0u : 0xFFFFFFu; });
}

inline bool IsInside(const Rect& r, int h, int v)
{
    return h >= r.left && h < r.right && v >= r.top && v < r.bottom;
}

} // namespace lampblack::quickdraw

#endif
