// What drawing depends on: written when it is not what was written last.
#include "PictureRecorder.h"
#include "PictureWriting.h"
#include "PixelPatterns.h"

#include <Carbon/Fonts.h>
#include <quickdraw/RegionBytes.h>

#include <bit>
#include <cstring>
#include <string_view>

namespace lampblack::pictures {

using namespace quickdraw;

static constexpr int kWide = 32000; // a clip region that reaches so far everywhere clips nothing

static bool IsWideOpen(const Region& inClip)
{
    const Box all = inClip.Extents();
    return inClip.IsRectangle() && all.x1 <= -kWide && all.y1 <= -kWide && all.x2 >= kWide && all.y2 >= kWide;
}

// A wide-open region could not be scaled: in its place stands the frame, moved with the origin.
void PictureRecorder::MatchClip(const PortRecord& inPort)
{
    Region clip = inPort.fClip;
    if (IsWideOpen(clip)) {
        clip.SetRect(fHeader.source);
        clip.Offset(inPort.fBounds.left - fStart.h, inPort.fBounds.top - fStart.v);
    }
    if (fLast.hasClip && clip == fLast.clip)
        return;
    std::vector<uint8_t> bytes = RegionBytes(clip);
    if (bytes.empty())
        bytes = RegionBytes(Region(clip.Extents()));
    Op(0x01);
    fWriter.Write(bytes);
    fLast.clip = clip;
    fLast.hasClip = true;
}

void PictureRecorder::MatchColor(int inOpcode, const RGBColor& inNow, RGBColor* ioLast)
{
    if (inNow.red == ioLast->red && inNow.green == ioLast->green && inNow.blue == ioLast->blue)
        return;
    Op(inOpcode);
    WriteColor(inNow, fWriter);
    *ioLast = inNow;
}

void PictureRecorder::MatchPort(const PortRecord& inPort)
{
    const Point origin = { inPort.fBounds.top, inPort.fBounds.left };
    if (origin.h != fLast.origin.h || origin.v != fLast.origin.v) {
        Op(0x0C);
        fWriter.U16((uint16_t)(origin.h - fLast.origin.h));
        fWriter.U16((uint16_t)(origin.v - fLast.origin.v));
        fLast.origin = origin;
        fLast.hasClip = false; // the same numbers are another place now
    }
    MatchClip(inPort);
    MatchColor(0x1A, inPort.fFore, &fLast.fore);
    MatchColor(0x1B, inPort.fBack, &fLast.back);
}

// No opcode moves the origin of patterns: their bits are moved instead.
static Pattern Moved(const Pattern& inPattern, int dh, int dv)
{
    Pattern moved;
    for (int row = 0; row < 8; ++row)
        moved.pat[row] = std::rotr(inPattern.pat[(row - dv) & 7], dh & 7);
    return moved;
}

// A pattern is kept as its opcode and data, so that one of pixels and one of bits are told apart.
void PictureRecorder::MatchPattern(const PortRecord& inPort, int inOpcode, int inPixelOpcode,
                                   const Pattern& inPattern, PixPatHandle inPixels,
                                   std::vector<uint8_t>* ioLast)
{
    const Point origin = inPort.fPatternOrigin;
    const Pattern pattern = Moved(inPattern, origin.h - fPatternStart.h, origin.v - fPatternStart.v);
    BigEndianWriter writer;
    const bool hasPixels = inPixels && WritePixelPattern(inPixels, writer);
    if (!hasPixels)
        writer.Write({ pattern.pat, sizeof pattern });
    writer.U8(hasPixels); // told apart, and not written
    if (writer.Data() == *ioLast)
        return;
    *ioLast = writer.Data();
    Op(hasPixels ? inPixelOpcode : inOpcode);
    fWriter.Write({ ioLast->data(), ioLast->size() - 1 });
}

void PictureRecorder::MatchPen(const PortRecord& inPort)
{
    const Pen& pen = inPort.fPen;
    if (pen.size.h != fLast.penSize.h || pen.size.v != fLast.penSize.v) {
        Op(0x07);
        WritePoint(pen.size);
        fLast.penSize = pen.size;
    }
    if (pen.mode != fLast.penMode) {
        Op(0x08);
        fWriter.U16((uint16_t)pen.mode);
        fLast.penMode = pen.mode;
    }
    MatchColor(0x1F, inPort.fOpColor, &fLast.op);
    MatchColor(0x1D, inPort.fHiliteColor, &fLast.hilite);
    MatchPattern(inPort, 0x09, 0x13, pen.pattern, pen.pixels, &fLast.penPattern);
}

// A clear bit asks the next Invert to highlight, and is set by it; a hidden one does that here.
static bool TakesHilite(const PortRecord& inPort)
{
    const UInt8 mode = LMGetHiliteMode();
    if (mode & (1 << hiliteBit))
        return false;
    if (inPort.fPen.visibility < 0)
        LMSetHiliteMode((UInt8)(mode | (1 << hiliteBit)));
    return true;
}

void PictureRecorder::MatchVerb(const PortRecord& inPort, Verb inVerb, const Pattern* inFill)
{
    static constexpr Pattern kBlack = { { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF } };
    MatchPort(inPort);
    switch (inVerb) {
    case Verb::Frame:
    case Verb::Paint: return MatchPen(inPort);
    case Verb::Erase:
        return MatchPattern(inPort, 0x02, 0x12, inPort.fBackPattern, inPort.fBackPixels, &fLast.backPattern);
    case Verb::Fill:
        return MatchPattern(inPort, 0x0A, 0x14, inFill ? *inFill : kBlack, inPort.fFillPixels,
                            &fLast.fillPattern);
    case Verb::Invert:
        if (!TakesHilite(inPort))
            return;
        MatchColor(0x1D, inPort.fHiliteColor, &fLast.hilite);
        Op(0x1C);
    }
}

// Numbers of fonts differ from machine to machine; names do not.
void PictureRecorder::NameFont(short inFont)
{
    Str255 name = {};
    GetFontName(inFont, name);
    if (name[0] == 0 || !fLast.namedFonts.insert(inFont).second)
        return;
    Op(0x2C);
    fWriter.U16((uint16_t)(2 + 1 + name[0]));
    fWriter.U16((uint16_t)inFont);
    fWriter.Pascal({ reinterpret_cast<const char*>(name + 1), name[0] });
}

// Pictures say what follows as a part of the size, with 12 bits behind the point; rounded up, so that a sum
// of them that is rounded down is what it was.
static int CharacterSpace(const TextSettings& inText)
{
    const int unit = 16 * (inText.size > 0 ? inText.size : GetDefFontSize());
    const int part =
        inText.charExtra > 0 ? (int)(((int64_t)inText.charExtra + unit - 1) / unit) : inText.charExtra / unit;
    return Clamped(part);
}

// Glyphs here are never made to fit their line, and widths are whole: the other three flags are those of that.
void PictureRecorder::MatchGlyphs()
{
    const bool prefersOutlines = GetOutlinePreferred();
    if (fLast.outlines == prefersOutlines)
        return;
    Op(0x2E);
    fWriter.U16(4);
    fWriter.U8(prefersOutlines);
    fWriter.Zeros(3);
    fLast.outlines = prefersOutlines;
}

void PictureRecorder::MatchTextScale(const TextScale& inScale)
{
    if (std::memcmp(&inScale, &fLast.textScale, sizeof inScale) == 0)
        return;
    Op(0x10);
    WritePoint(inScale.numer);
    WritePoint(inScale.denom);
    fLast.textScale = inScale;
}

void PictureRecorder::MatchTextSpace(const TextSettings& inText)
{
    const TextSettings& last = fLast.text;
    if (inText.spaceExtra != last.spaceExtra) {
        Op(0x06);
        fWriter.U32((uint32_t)inText.spaceExtra);
    }
    if (inText.size != last.size) {
        Op(0x0D);
        fWriter.U16((uint16_t)inText.size);
    }
    if (inText.charExtra != last.charExtra || (inText.charExtra != 0 && inText.size != last.size)) {
        Op(0x16);
        fWriter.U16((uint16_t)CharacterSpace(inText));
    }
}

void PictureRecorder::MatchText(const PortRecord& inPort, const TextSettings& inText,
                                const TextScale& inScale)
{
    MatchColor(0x1F, inPort.fOpColor, &fLast.op);
    MatchColor(0x1D, inPort.fHiliteColor, &fLast.hilite);
    MatchGlyphs();
    MatchTextScale(inScale);
    MatchTextSpace(inText);
    TextSettings& last = fLast.text;
    if (inText.font != last.font) {
        NameFont(inText.font);
        Op(0x03);
        fWriter.U16((uint16_t)inText.font);
    }
    if (inText.face != last.face) {
        Op(0x04);
        fWriter.U8(inText.face);
    }
    if (inText.mode != last.mode) {
        Op(0x05);
        fWriter.U16((uint16_t)inText.mode);
    }
    last = inText;
    last.strike = nullptr;
}

} // namespace lampblack::pictures
