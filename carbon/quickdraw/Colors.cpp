// Colours of the current port, single pixels, patterns, and the random numbers that live in the same globals.
#include "PortRecord.h"
#include "SystemPatterns.h"

#include <Carbon/QDColors.h>
#include <Carbon/Resources.h>

#include <cstring>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

struct NumberedColor {
    SInt32 number;
    RGBColor color;
};

// What the eight colours of old are in colour ports.
static constexpr NumberedColor kClassicColors[] = {
    { blackColor, { 0x0000, 0x0000, 0x0000 } },   { whiteColor, { 0xFFFF, 0xFFFF, 0xFFFF } },
    { redColor, { 0xDD6B, 0x08C2, 0x06A2 } },     { greenColor, { 0x0000, 0x8000, 0x11B0 } },
    { blueColor, { 0x0000, 0x0000, 0xD400 } },    { cyanColor, { 0x0241, 0xAB54, 0xEAFF } },
    { magentaColor, { 0xF2D7, 0x0856, 0x84EC } }, { yellowColor, { 0xFC00, 0xF37D, 0x052F } },
};

// A number that is none of the eight counts as black.
const RGBColor& ClassicColor(SInt32 inNumber)
{
    for (const NumberedColor& classic : kClassicColors)
        if (classic.number == inNumber)
            return classic.color;
    return kClassicColors[0].color;
}

static bool IsDrawable(const PortRecord* inPort, short h, short v)
{
    return inPort && inPort->fSurface.base && h >= inPort->fSurface.bounds.left &&
           h < inPort->fSurface.bounds.right && v >= inPort->fSurface.bounds.top &&
           v < inPort->fSurface.bounds.bottom;
}

static constexpr Pattern kBlack = { { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF } };
static constexpr Pattern kWhite = { { 0, 0, 0, 0, 0, 0, 0, 0 } };
static constexpr Pattern kGray = { { 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55 } };
static constexpr Pattern kLightGray = { { 0x88, 0x22, 0x88, 0x22, 0x88, 0x22, 0x88, 0x22 } };
static constexpr Pattern kDarkGray = { { 0x77, 0xDD, 0x77, 0xDD, 0x77, 0xDD, 0x77, 0xDD } };

static Pattern* Answer(Pattern* outPattern, const Pattern& inPattern)
{
    if (outPattern)
        *outPattern = inPattern;
    return outPattern;
}

static SInt32 gRandomSeed = 1;

static UInt8 gHiliteMode = 0xFF;
static RGBColor gHiliteColor = { 0xB5B5, 0xD3D3, 0xFBFB };

bool TakeHiliteMode()
{
    const bool highlights = !(gHiliteMode & 1 << hiliteBit);
    gHiliteMode |= 1 << hiliteBit;
    return highlights;
}

} // namespace lampblack::quickdraw

void ForeColor(SInt32 color)
{
    RGBForeColor(&ClassicColor(color));
}

void BackColor(SInt32 color)
{
    RGBBackColor(&ClassicColor(color));
}

void RGBForeColor(const RGBColor* color)
{
    PortRecord* port = CurrentPort();
    if (!port || !color)
        return;
    port->SetFore(*color);
}

void RGBBackColor(const RGBColor* color)
{
    PortRecord* port = CurrentPort();
    if (!port || !color)
        return;
    port->SetBack(*color);
}

void GetForeColor(RGBColor* color)
{
    if (const PortRecord* port = CurrentPort(); port && color)
        *color = port->fFore;
}

void GetBackColor(RGBColor* color)
{
    if (const PortRecord* port = CurrentPort(); port && color)
        *color = port->fBack;
}

void BackPat(const Pattern* pat)
{
    if (PortRecord* port = CurrentPort(); port && pat) {
        port->fBackPattern = *pat;
        port->fBackPixels = nullptr;
    }
}

// A place without a pixel is white.
void GetCPixel(short h, short v, RGBColor* cPix)
{
    PortRecord* port = CurrentPort();
    if (!cPix)
        return;
    *cPix = ColorOf(kWhitePixel);
    if (!IsDrawable(port, h, v))
        return;
    const Surface& surface = port->Pixels();
    const uint32_t pixel = ReadPixel(surface, v, h);
    *cPix = surface.depth <= 8 ? ColorsOf(surface).Exact((int)pixel) : ColorOf(ColorFor(surface, pixel));
}

void SetCPixel(short h, short v, const RGBColor* cPix)
{
    PortRecord* port = CurrentPort();
    if (!port || !cPix || !port->Drawable().Contains(h, v))
        return;
    WritePixel(port->fSurface, v, h, PixelFor(port->fSurface, PixelOf(*cPix)));
    port->Damage({ h, v, h + 1, v + 1 });
}

Boolean GetPixel(short h, short v)
{
    PortRecord* port = CurrentPort();
    return IsDrawable(port, h, v) && ColorFor(port->Pixels(), ReadPixel(port->fSurface, v, h)) != kWhitePixel;
}

void OpColor(const RGBColor* color)
{
    SetPortOpColor(ReferenceOf(CurrentPort()), color);
}

void HiliteColor(const RGBColor* color)
{
    if (PortRecord* port = CurrentPort(); port && color)
        port->fHiliteColor = *color;
}

RGBColor* GetPortOpColor(CGrafPtr port, RGBColor* opColor)
{
    const PortRecord* record = FindPort(port);
    if (opColor)
        *opColor = record ? record->fOpColor : RGBColor{};
    return opColor;
}

RGBColor* GetPortHiliteColor(CGrafPtr port, RGBColor* hiliteColor)
{
    const PortRecord* record = FindPort(port);
    if (hiliteColor)
        *hiliteColor = record ? record->fHiliteColor : RGBColor{};
    return hiliteColor;
}

void SetPortOpColor(CGrafPtr port, const RGBColor* opColor)
{
    if (PortRecord* record = FindPort(port); record && opColor)
        record->fOpColor = *opColor;
}

UInt8 LMGetHiliteMode(void)
{
    return gHiliteMode;
}

void LMSetHiliteMode(UInt8 value)
{
    gHiliteMode = value;
}

void LMGetHiliteRGB(RGBColor* hiliteRGBValue)
{
    if (hiliteRGBValue)
        *hiliteRGBValue = gHiliteColor;
}

void LMSetHiliteRGB(const RGBColor* hiliteRGBValue)
{
    if (hiliteRGBValue)
        gHiliteColor = *hiliteRGBValue;
}

Point* QDGetPatternOrigin(Point* origin)
{
    const PortRecord* port = CurrentPort();
    if (origin)
        *origin = port ? port->fPatternOrigin : Point{ 0, 0 };
    return origin;
}

void QDSetPatternOrigin(Point origin)
{
    if (PortRecord* port = CurrentPort())
        port->fPatternOrigin = origin;
}

// A pattern list is a count of 16 bits, big-endian, and that many patterns.
void GetIndPattern(Pattern* thePat, short patternListID, short index)
{
    const Handle list = thePat ? GetResource('PAT#', patternListID) : nullptr;
    if (thePat && !list && patternListID == sysPatListID)
        if (const Pattern* pattern = SystemPatternNumbered(index))
            *thePat = *pattern;
    if (!list || !*list || index < 1 || GetHandleSize(list) < (Size)(2 + index * sizeof(Pattern)))
        return;
    const auto* bytes = reinterpret_cast<const UInt8*>(*list);
    if (index <= (bytes[0] << 8 | bytes[1]))
        std::memcpy(thePat, bytes + 2 + (index - 1) * sizeof(Pattern), sizeof(Pattern));
}

PatHandle GetPattern(short patternID)
{
    const Handle pattern = GetResource('PAT ', patternID);
    if (!pattern || !*pattern || GetHandleSize(pattern) < (Size)sizeof(Pattern))
        return nullptr;
    return reinterpret_cast<PatHandle>(pattern);
}

Pattern* GetQDGlobalsBlack(Pattern* black)
{
    return Answer(black, kBlack);
}

Pattern* GetQDGlobalsWhite(Pattern* white)
{
    return Answer(white, kWhite);
}

Pattern* GetQDGlobalsGray(Pattern* gray)
{
    return Answer(gray, kGray);
}

Pattern* GetQDGlobalsLightGray(Pattern* lightGray)
{
    return Answer(lightGray, kLightGray);
}

Pattern* GetQDGlobalsDarkGray(Pattern* darkGray)
{
    return Answer(darkGray, kDarkGray);
}

SInt32 GetQDGlobalsRandomSeed(void)
{
    return gRandomSeed;
}

void SetQDGlobalsRandomSeed(SInt32 randomSeed)
{
    gRandomSeed = randomSeed;
}

// The published generator: the seed times 16807 modulo 2^31 - 1, of which the low word is the answer.
short Random(void)
{
    const int64_t seed = (int64_t)gRandomSeed % 0x7FFFFFFF * 16807 % 0x7FFFFFFF;
    gRandomSeed = (SInt32)(seed < 0 ? seed + 0x7FFFFFFF : seed);
    const short low = (short)(gRandomSeed & 0xFFFF);
    return low == -32768 ? (short)0 : low;
}
