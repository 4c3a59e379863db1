// Texts in boxes that were laid out for narrower fonts.
#include "controls/ControlText.h"

#include <Carbon/Appearance.h>
#include <Carbon/Script.h>
#include <quickdraw/Port.h>

#include <doctest/doctest.h>

using namespace lampblack;

namespace {

// The smallest rectangle around what a text in a box draws.
Rect Drawn(std::string_view text, const Rect& box)
{
    const CGrafPtr port = quickdraw::NewPixelPort(300, 100);
    SetPort(port);
    UseThemeFont(kThemeSystemFont, smSystemScript);
    ClipRect(&box);
    controls::DrawWrapped(text, box, 0);
    Rect drawn = { 100, 300, 0, 0 };
    const quickdraw::PixelView view = quickdraw::PortPixels(port);
    for (short v = 0; v < 100; ++v)
        for (short h = 0; h < 300; ++h)
            if ((view.base[v * view.rowPixels + h] & 0xFFFFFF) != 0xFFFFFF)
                drawn = { std::min(drawn.top, v), std::min(drawn.left, h),
                          std::max(drawn.bottom, (short)(v + 1)), std::max(drawn.right, (short)(h + 1)) };
    quickdraw::DisposePixelPort(port);
    return drawn;
}

} // namespace

TEST_CASE("DrawWrapped: a text that would lose its last word is drawn in narrower letters")
{
    const Rect wide = { 10, 10, 27, 290 }, tight = { 10, 10, 27, 113 };
    const Rect free = Drawn("Blinking Background", wide), fitted = Drawn("Blinking Background", tight);
    REQUIRE(free.right - free.left > 103);
    CHECK(fitted.right <= 113);
    CHECK(fitted.right > 100);
    CHECK(fitted.top == free.top);
    CHECK(fitted.bottom == free.bottom); // one line still
}

TEST_CASE(
    "DrawWrapped: in a box that is a little too low the tails of letters stay, not the room for accents")
{
    const Rect free = Drawn("Happy", { 10, 10, 40, 290 });
    const short height = (short)(free.bottom - 10);
    const Rect low = Drawn("Happy", { 10, 10, (short)(10 + height - 2), 290 });
    CHECK(low.bottom - low.top == free.bottom - free.top);
    const Rect lower = Drawn("Happy", { 10, 10, 16, 290 }); // what does not fit at all stays where it was
    CHECK(lower.top == free.top);
}

TEST_CASE("DrawWrapped: a text that has room for its lines keeps the width of its letters")
{
    const Rect tall = { 10, 10, 60, 113 }, wide = { 10, 10, 60, 290 };
    const Rect wrapped = Drawn("Blinking Background", tall), word = Drawn("Background", wide);
    CHECK(wrapped.bottom - wrapped.top > 20);
    CHECK(std::abs((wrapped.right - wrapped.left) - (word.right - word.left)) <= 1);
}
