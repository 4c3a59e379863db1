// 'ICON', 'ICN#' and 'SICN' data.
#include "icons/TestIcons.h"

using namespace lampblack::icons;

TEST_CASE("GetIcon, PlotIcon: the bits in the colours of the port, stretched over the rectangle")
{
    ByteList bits(128, 0);
    std::fill_n(bits.begin(), 64, 0xFF); // the upper half
    const IconFile file({ { 'ICON', 200, bits }, { 'ICON', 201, ByteList(127) } });
    const Handle icon = GetIcon(200);
    REQUIRE(icon);
    CHECK(GetIcon(201) == nullptr);
    CHECK(GetIcon(202) == nullptr);
    Backdrop port;
    const Rect r = MakeRect(0, 0, 64, 64);
    PlotIcon(&r, icon);
    CHECK(port.At(63, 31) == kBlack);
    CHECK(port.At(0, 32) == kWhite);
    const RGBColor red = { 0xFFFF, 0, 0 }, blue = { 0, 0, 0xFFFF };
    RGBForeColor(&red);
    RGBBackColor(&blue);
    PlotIcon(&r, icon);
    CHECK(port.At(63, 31) == 0xFF0000);
    CHECK(port.At(0, 32) == 0x0000FF);
    PlotIcon(nullptr, icon);
    PlotIcon(&r, nullptr);
}

TEST_CASE("PlotIconHandle: with a mask it covers the mask, without all of its square")
{
    const Rect r = MakeRect(8, 8, 40, 40);
    const Handle masked = HandleOf(HalfMasked(32, 32, 0xFF)), bare = HandleOf(ByteList(128, 0xFF)),
                 tooShort = HandleOf(ByteList(127, 0xFF));
    Backdrop first;
    CHECK(PlotIconHandle(&r, kAlignNone, kTransformNone, masked) == noErr);
    CHECK(IsRect(first.Changed(), 8, 8, 24, 40));
    Backdrop second;
    CHECK(PlotIconHandle(&r, kAlignNone, kTransformSelected, bare) == noErr);
    CHECK(IsRect(second.Changed(), 8, 8, 40, 40));
    CHECK(second.At(8, 8) == kWhite);
    CHECK(PlotIconHandle(&r, kAlignNone, kTransformNone, tooShort) == paramErr);
    CHECK(PlotIconHandle(&r, kAlignNone, kTransformNone, nullptr) == paramErr);
    CHECK(PlotIconHandle(nullptr, kAlignNone, kTransformNone, masked) == paramErr);
    for (const Handle each : { masked, bare, tooShort })
        DisposeHandle(each);
}

TEST_CASE("PlotSICNHandle: a small icon, the second of several being the mask")
{
    const Rect r = MakeRect(8, 8, 40, 40);
    const Handle several = HandleOf(HalfMasked(16, 16, 0xFF)), one = HandleOf(ByteList(32, 0xFF));
    Backdrop first;
    CHECK(PlotSICNHandle(&r, kAlignTopLeft, kTransformNone, several) == noErr);
    CHECK(IsRect(first.Changed(), 8, 8, 16, 24));
    Backdrop second;
    CHECK(PlotSICNHandle(&r, kAlignBottomRight, kTransformNone, one) == noErr);
    CHECK(IsRect(second.Changed(), 24, 24, 40, 40));
    CHECK(PlotSICNHandle(&r, kAlignNone, kTransformNone, nullptr) == paramErr);
    DisposeHandle(several);
    DisposeHandle(one);
}

TEST_CASE("Icons: the clip region holds, and rectangles of any extent are drawn in bounded time")
{
    const Handle icon = HandleOf(ByteList(128, 0xFF));
    const Rect clip = MakeRect(10, 10, 20, 20);
    Backdrop port;
    ClipRect(&clip);
    const Rect huge = MakeRect(-32768, -32768, 32767, 32767), none = MakeRect(5, 5, 5, 9),
               insideOut = MakeRect(20, 20, 0, 0);
    CHECK(PlotIconHandle(&none, kAlignAbsoluteCenter, kTransformNone, icon) == noErr);
    CHECK(PlotIconHandle(&insideOut, kAlignAbsoluteCenter, kTransformNone, icon) == noErr);
    CHECK(port.Changed().right == 0);
    CHECK(PlotIconHandle(&huge, kAlignNone, kTransformNone, icon) == noErr);
    CHECK(IsRect(port.Changed(), 10, 10, 20, 20));
    SetPort(nullptr);
    CHECK(PlotIconHandle(&huge, kAlignNone, kTransformNone, icon) == noErr);
    DisposeHandle(icon);
}
