// Conversion between kinds of colour. Hue, saturation and the rest are fractions of 65535.
#include <Carbon/QDColors.h>

#include <algorithm>
#include <cmath>

namespace lampblack::quickdraw {

static constexpr double kWhole = 65535;

static UInt16 Level(double inFraction)
{
    return (UInt16)std::lround(std::clamp(inFraction, 0.0, 1.0) * kWhole);
}

struct Extremes {
    double red, green, blue, most, least;

    explicit Extremes(const RGBColor& c) : red(c.red / kWhole), green(c.green / kWhole), blue(c.blue / kWhole)
    {
        most = std::max({ red, green, blue });
        least = std::min({ red, green, blue });
    }
    double Range() const { return most - least; }
};

// 0 to less than 1, red at 0, green at a third, blue at two thirds; 0 for greys.
static double HueOf(const Extremes& c)
{
    if (c.Range() == 0)
        return 0;
    double sextant = 0;
    if (c.most == c.red)
        sextant = (c.green - c.blue) / c.Range();
    else if (c.most == c.green)
        sextant = 2 + (c.blue - c.red) / c.Range();
    else
        sextant = 4 + (c.red - c.green) / c.Range();
    return (sextant < 0 ? sextant + 6 : sextant) / 6;
}

// A hue counts in 65536ths of the circle, so that the greatest one is not red again.
static SmallFract HueFraction(double inHue)
{
    return (SmallFract)((unsigned)std::lround(inHue * 65536) & 0xFFFF);
}

// The colour of a hue whose channels lie between two levels.
static RGBColor ColorOfHue(SmallFract inHue, double inLeast, double inMost)
{
    const double place = inHue / 65536.0 * 6;
    const int sextant = (int)place;
    const double rising = inLeast + (inMost - inLeast) * (place - sextant);
    const double falling = inMost - (inMost - inLeast) * (place - sextant);
    const UInt16 low = Level(inLeast), high = Level(inMost), up = Level(rising), down = Level(falling);
    switch (sextant) {
    case 0: return { high, up, low };
    case 1: return { down, high, low };
    case 2: return { low, high, up };
    case 3: return { low, down, high };
    case 4: return { up, low, high };
    }
    return { high, low, down };
}

} // namespace lampblack::quickdraw

using namespace lampblack::quickdraw;

SmallFract Fix2SmallFract(Fixed f)
{
    return f >= 0x10000 ? (SmallFract)MaxSmallFract : (SmallFract)(f & 0xFFFF);
}

Fixed SmallFract2Fix(SmallFract s)
{
    return s;
}

void CMY2RGB(const CMYColor* cColor, RGBColor* rColor)
{
    if (cColor && rColor)
        *rColor = { (UInt16)~cColor->cyan, (UInt16)~cColor->magenta, (UInt16)~cColor->yellow };
}

void RGB2CMY(const RGBColor* rColor, CMYColor* cColor)
{
    if (rColor && cColor)
        *cColor = { (SmallFract)~rColor->red, (SmallFract)~rColor->green, (SmallFract)~rColor->blue };
}

void HSL2RGB(const HSLColor* hColor, RGBColor* rColor)
{
    if (!hColor || !rColor)
        return;
    const double lightness = hColor->lightness / kWhole, saturation = hColor->saturation / kWhole;
    const double half = saturation * std::min(lightness, 1 - lightness);
    *rColor = ColorOfHue(hColor->hue, lightness - half, lightness + half);
}

void RGB2HSL(const RGBColor* rColor, HSLColor* hColor)
{
    if (!rColor || !hColor)
        return;
    const Extremes c(*rColor);
    const double sum = c.most + c.least;
    const double room = std::min(sum, 2 - sum);
    *hColor = { HueFraction(HueOf(c)), Level(room > 0 ? c.Range() / room : 0), Level(sum / 2) };
}

void HSV2RGB(const HSVColor* hColor, RGBColor* rColor)
{
    if (!hColor || !rColor)
        return;
    const double value = hColor->value / kWhole;
    *rColor = ColorOfHue(hColor->hue, value * (1 - hColor->saturation / kWhole), value);
}

void RGB2HSV(const RGBColor* rColor, HSVColor* hColor)
{
    if (!rColor || !hColor)
        return;
    const Extremes c(*rColor);
    *hColor = { HueFraction(HueOf(c)), Level(c.most > 0 ? c.Range() / c.most : 0), Level(c.most) };
}
