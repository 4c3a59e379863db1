// Conversion between kinds of colour.
#include <Carbon/Quickdraw.h>

#include <doctest/doctest.h>

#include <algorithm>
#include <cstdlib>
#include <random>

namespace {

HSLColor HslOf(RGBColor color)
{
    HSLColor result;
    RGB2HSL(&color, &result);
    return result;
}

RGBColor RgbOf(HSLColor color)
{
    RGBColor result;
    HSL2RGB(&color, &result);
    return result;
}

int Farthest(const RGBColor& a, const RGBColor& b)
{
    return std::max({ std::abs(a.red - b.red), std::abs(a.green - b.green), std::abs(a.blue - b.blue) });
}

} // namespace

TEST_CASE("RGB2HSL: the pure colours lie a third of the circle apart, from red")
{
    CHECK(HslOf({ 0xFFFF, 0, 0 }).hue == 0);
    CHECK(HslOf({ 0, 0xFFFF, 0 }).hue == 0x5555);
    CHECK(HslOf({ 0, 0, 0xFFFF }).hue == 0xAAAB);
    CHECK(HslOf({ 0, 0, 0xFFFF }).saturation == 0xFFFF);
    CHECK(HslOf({ 0, 0, 0xFFFF }).lightness == 0x8000);
    CHECK(HslOf({ 0x4000, 0x4000, 0x4000 }).saturation == 0);
    CHECK(HslOf({ 0x4000, 0x4000, 0x4000 }).lightness == 0x4000);
    CHECK(HslOf({ 0xFFFF, 0xFFFF, 0xFFFF }).lightness == 0xFFFF);
    CHECK(HslOf({ 0, 0, 0 }).saturation == 0);
}

TEST_CASE("HSL2RGB: greater lightness ends in white, none in black")
{
    HSLColor color = HslOf({ 0x8000, 0x2000, 0x1000 });
    color.lightness = 0xFFFF;
    CHECK(RgbOf(color).red == 0xFFFF);
    CHECK(RgbOf(color).blue == 0xFFFF);
    color.lightness = 0;
    CHECK(RgbOf(color).red == 0);
}

TEST_CASE("HSL2RGB: brings back what RGB2HSL had, and so does HSV")
{
    std::mt19937 random(3);
    int farthest = 0, farthestValue = 0;
    for (int i = 0; i < 20000; ++i) {
        const RGBColor color = { (UInt16)random(), (UInt16)random(), (UInt16)random() };
        farthest = std::max(farthest, Farthest(color, RgbOf(HslOf(color))));
        HSVColor hsv;
        RGBColor back;
        RGB2HSV(&color, &hsv);
        HSV2RGB(&hsv, &back);
        farthestValue = std::max(farthestValue, Farthest(color, back));
    }
    CHECK(farthest <= 4);
    CHECK(farthestValue <= 4);
}

TEST_CASE("RGB2HSV: the value is the brightest channel")
{
    const RGBColor color = { 0x1000, 0x8000, 0x4000 };
    HSVColor hsv;
    RGB2HSV(&color, &hsv);
    CHECK(hsv.value == 0x8000);
    CHECK(hsv.saturation == 0xDFFF);
}

TEST_CASE("RGB2CMY: is the complement, both ways")
{
    const RGBColor color = { 0x1234, 0, 0xFFFF };
    CMYColor cmy;
    RGB2CMY(&color, &cmy);
    CHECK(cmy.cyan == 0xEDCB);
    RGBColor back;
    CMY2RGB(&cmy, &back);
    CHECK(back.red == 0x1234);
    CHECK(back.blue == 0xFFFF);
}

TEST_CASE("Fix2SmallFract: takes the fraction, and all of it from 1 on")
{
    CHECK(Fix2SmallFract(0x8000) == 0x8000);
    CHECK(Fix2SmallFract(0x10000) == MaxSmallFract);
    CHECK(Fix2SmallFract(0x7FFFFFFF) == MaxSmallFract);
    CHECK(SmallFract2Fix(0xFFFF) == 0xFFFF);
}

TEST_CASE("HSL2RGB: NULL is left alone")
{
    HSLColor hsl = { 1, 2, 3 };
    RGBColor rgb = { 4, 5, 6 };
    HSL2RGB(nullptr, &rgb);
    HSL2RGB(&hsl, nullptr);
    RGB2HSL(nullptr, &hsl);
    RGB2HSV(&rgb, nullptr);
    CMY2RGB(nullptr, &rgb);
    CHECK(rgb.red == 4);
    CHECK(hsl.lightness == 3);
}
