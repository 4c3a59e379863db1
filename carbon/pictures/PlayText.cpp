// The opcodes of text and its settings.
#include "Opcodes.h"
#include "Player.h"

#include <Carbon/Fonts.h>

#include <algorithm>
#include <numeric>

namespace lampblack::pictures {

using namespace quickdraw;

static constexpr int kSystemSize = 12; // what a size of 0 means

// Extra space for each character is a part of the size, with 12 bits behind the point.
static Fixed CharacterSpace(const Player&, int inPart)
{
    const SInt16 size = CurrentPort()->fText.size;
    return (Fixed)std::clamp<int64_t>((int64_t)inPart * (size > 0 ? size : kSystemSize) * 16, INT32_MIN,
                                      INT32_MAX);
}

static short FontHere(const Player& inPlayer, short inFont)
{
    const auto found = inPlayer.fFonts.find(inFont);
    return found == inPlayer.fFonts.end() ? inFont : found->second;
}

void PlayTextSetting(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    switch (inOpcode) {
    case 0x03: return TextFont(FontHere(ioPlayer, ioData.S16()));
    case 0x04: return TextFace(ioData.U8());
    case 0x05: return TextMode(ioData.S16());
    case 0x06: return SpaceExtra(ioData.S32());
    case 0x0D: return TextSize(ioData.S16());
    default: CharExtra(CharacterSpace(ioPlayer, ioData.S16()));
    }
}

void PlayTextRatio(Player& ioPlayer, int, BigEndianReader& ioData)
{
    ioPlayer.fTextNumerator = ioData.ReadPoint();
    ioPlayer.fTextDenominator = ioData.ReadPoint();
}

// The number that a font had where the picture was made, and its name. A font that is not here keeps the
// number, which may be that of a font like it.
void PlayFontName(Player& ioPlayer, int, BigEndianReader& ioData)
{
    ioData.Skip(2);
    const short number = ioData.S16();
    const std::string_view name = ioData.ReadPascal();
    Str255 pascal;
    pascal[0] = (unsigned char)name.size();
    std::copy(name.begin(), name.end(), pascal + 1);
    short here = 0;
    GetFNum(pascal, &here);
    if (ioData.Ok() && here != 0)
        ioPlayer.fFonts[number] = here;
}

void PlayLineJustification(Player& ioPlayer, int, BigEndianReader& ioData)
{
    ioData.Skip(2);
    const Fixed between = ioData.S32(), shared = ioData.S32();
    if (ioData.Ok())
        ioPlayer.fJustification = { between, shared };
}

// Of the four flags the first is heard: glyphs here always keep their shape, widths are always whole, and
// bitmaps of a size that is missing are always scaled.
void PlayGlyphState(Player& ioPlayer, int, BigEndianReader& ioData)
{
    static constexpr int64_t kForgettingGlyphs = 1 << 18; // all are made anew
    ioData.Skip(2);
    const bool prefersOutlines = ioData.U8() != 0;
    if (ioData.Ok() && prefersOutlines != (bool)GetOutlinePreferred() &&
        ioPlayer.CanAfford(kForgettingGlyphs))
        SetOutlinePreferred(prefersOutlines);
}

struct Fraction {
    short numerator, denominator;
};

// The product of two fractions, of which none is negative or has no value, in 16 bits each.
static Fraction Product(Fraction a, Fraction b)
{
    const auto positive = [](short value) { return (int64_t)std::max<short>(value, 1); };
    int64_t numerator = positive(a.numerator) * positive(b.numerator);
    int64_t denominator = positive(a.denominator) * positive(b.denominator);
    const int64_t common = std::gcd(numerator, denominator);
    numerator /= common;
    denominator /= common;
    while (numerator > INT16_MAX || denominator > INT16_MAX) {
        numerator = std::max<int64_t>(1, numerator / 2);
        denominator = std::max<int64_t>(1, denominator / 2);
    }
    return { (short)numerator, (short)denominator };
}

// Letters take their area each.
static bool CanAffordText(Player& ioPlayer, size_t inCount, Point inNumerator, Point inDenominator)
{
    static constexpr int64_t kLargest = 4000; // pixels; larger letters are not worth their making
    const int64_t size = std::max<int64_t>(CurrentPort()->fText.size, kSystemSize);
    const int64_t height = size * inNumerator.v / inDenominator.v,
                  width = size * inNumerator.h / inDenominator.h;
    if (std::max(height, width) > kLargest)
        return false;
    return ioPlayer.CanAfford((int64_t)inCount * (height * width + 64));
}

static Fixed Sum(Fixed a, Fixed b)
{
    return (Fixed)std::clamp<int64_t>((int64_t)a + b, INT32_MIN, INT32_MAX);
}

static int SpacesIn(std::string_view inText)
{
    return (int)std::count(inText.begin(), inText.end(), ' ');
}

// One opcode of those that may belong to a line: false at its end. Texts on other baselines begin another one,
// and so does another justification.
static bool AddSpaces(BigEndianReader& ioAhead, int inVersion, short inLine, int* ioSpaces)
{
    if (inVersion > 1 && (ioAhead.Offset() & 1))
        ioAhead.Skip(1);
    const int number = inVersion > 1 ? ioAhead.U16() : ioAhead.U8();
    const Opcode opcode = OpcodeOf(number, inVersion);
    Bytes data;
    if (opcode.length == Length::Own || opcode.play == PlayEnd || opcode.play == PlayLineJustification ||
        !ReadData(opcode, ioAhead, &data))
        return false;
    if (opcode.play != PlayText)
        return true;
    BigEndianReader text(data);
    if ((number == 0x28 && text.ReadPoint().v != inLine) || number > 0x29)
        return false;
    if (number == 0x29)
        text.Skip(1);
    *ioSpaces += SpacesIn(text.ReadPascal());
    return true;
}

// What the spaces of one text have of that which all of its line share.
static Fixed ShareOf(Player& ioPlayer, Bytes inText)
{
    LineJustification& line = ioPlayer.fJustification;
    const int own = SpacesIn({ reinterpret_cast<const char*>(inText.data()), inText.size() });
    if (line.shared == 0)
        return 0;
    if (!line.isCounted || line.line != ioPlayer.fText.v) {
        line.line = ioPlayer.fText.v;
        line.isCounted = true;
        line.spaces = own;
        BigEndianReader ahead = ioPlayer.Rest();
        while (ioPlayer.CanAfford(1) &&
               AddSpaces(ahead, ioPlayer.Version(), ioPlayer.fText.v, &line.spaces)) {
        }
    }
    return line.spaces > 0 ? (Fixed)((int64_t)line.shared * own / line.spaces) : 0;
}

// The picture is scaled, and its text may be so on its own.
static void DrawScaled(Player& ioPlayer, Bytes inText)
{
    const Point up = ioPlayer.Map().Numerator(), down = ioPlayer.Map().Denominator();
    const Point& numer = ioPlayer.fTextNumerator;
    const Point& denom = ioPlayer.fTextDenominator;
    const Fraction h = Product({ up.h, down.h }, { numer.h, denom.h });
    const Fraction v = Product({ up.v, down.v }, { numer.v, denom.v });
    const Point numerator = { v.numerator, h.numerator }, denominator = { v.denominator, h.denominator };
    if (!CanAffordText(ioPlayer, inText.size(), numerator, denominator))
        return;
    const Point at = ioPlayer.Map().Of(ioPlayer.fText);
    MoveTo(at.h, at.v);
    TextSettings& settings = ioPlayer.Port().fText;
    const Fixed spaceExtra = settings.spaceExtra, charExtra = settings.charExtra;
    settings.spaceExtra = Sum(spaceExtra, ioPlayer.fJustification.between);
    settings.charExtra = Sum(charExtra, ioPlayer.fJustification.between);
    auto* text = const_cast<char*>(reinterpret_cast<const char*>(inText.data()));
    DrawJustified(text, (long)inText.size(), ShareOf(ioPlayer, inText), onlyStyleRun, numerator, denominator);
    settings.spaceExtra = spaceExtra;
    settings.charExtra = charExtra;
}

// 0x28 says where; the others move from where the last text began.
void PlayText(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    if (inOpcode == 0x28) {
        ioPlayer.fText = ioData.ReadPoint();
    } else {
        const int dh = inOpcode & 1 ? ioData.U8() : 0, dv = inOpcode & 2 ? ioData.U8() : 0;
        ioPlayer.fText = { Clamped(ioPlayer.fText.v + dv), Clamped(ioPlayer.fText.h + dh) };
    }
    const std::string_view text = ioData.ReadPascal();
    if (ioData.Ok() && !text.empty())
        DrawScaled(ioPlayer, { reinterpret_cast<const uint8_t*>(text.data()), text.size() });
}

} // namespace lampblack::pictures
