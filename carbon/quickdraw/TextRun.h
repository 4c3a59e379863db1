// Mac Roman bytes in one style: how wide they are and how they are drawn. Begin with RunOf.
#ifndef LAMPBLACK_QUICKDRAW_TEXTRUN_H
#define LAMPBLACK_QUICKDRAW_TEXTRUN_H

#include "Strike.h"
#include "TextPainter.h"

#include <span>

namespace lampblack::quickdraw {

using Bytes = std::span<const uint8_t>;

struct TextRun {
    Strike& strike;
    Fixed spaceExtra = 0, charExtra = 0; // what every space, and every other character, is wider
    SInt64 numer = 1, denom = 1;         // all distances are scaled by numer / denom

    bool IsSimple() const { return !(spaceExtra | charExtra) && numer == denom; }
};

// Adds characters up. Fractions are added too, so that only the sum is rounded.
class Ruler {
public:
    explicit Ruler(const TextRun& inRun) : fRun(inRun) {}

    void Add(uint8_t inByte)
    {
        fWidth += fRun.strike.AdvanceOf(inByte);
        fExtra += inByte == ' ' ? fRun.spaceExtra : fRun.charExtra;
    }
    SInt64 AtFixed() const { return ((fWidth << 16) + fExtra) * fRun.numer / fRun.denom; }
    int At() const;

private:
    const TextRun& fRun;
    SInt64 fWidth = 0, fExtra = 0;
};

extern TextSettings gNewPortSettings;

// The port's text settings, or a new port's when none is current.
inline TextSettings& CurrentTextSettings()
{
    PortRecord* port = CurrentPort();
    return port ? port->fText : gNewPortSettings;
}

Strike& FindStrikeOf(TextSettings&);
inline Strike& StrikeOf(TextSettings& ioSettings)
{
    const bool isKnown = ioSettings.strike && ioSettings.strikeStamp == StrikeStamp();
    return isKnown ? *ioSettings.strike : FindStrikeOf(ioSettings);
}

inline TextRun RunOf(TextSettings& ioSettings)
{
    return { StrikeOf(ioSettings), ioSettings.spaceExtra, ioSettings.charExtra };
}

// None for null or senseless arguments.
inline Bytes BytesOf(const void* inText, SInt64 inFirst, SInt64 inCount)
{
    if (!inText || inFirst < 0 || inCount <= 0)
        return {};
    return { static_cast<const uint8_t*>(inText) + inFirst, (size_t)inCount };
}

int WidthOf(const TextRun&, Bytes);

// Draws at the port's pen, which moves; the pictures of the glyphs may be another strike's than their widths.
void DrawRun(PortRecord&, const TextRun&, Strike& pictures, SInt16 size, Bytes);

// What text in such a box and mode needs besides its glyphs.
Box TextBoxAt(Point pen, int width, const FontInfo&);
bool ShowsText(PortRecord&);

} // namespace lampblack::quickdraw

#endif
