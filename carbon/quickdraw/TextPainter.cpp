#include "TextPainter.h"

#include <algorithm>
#include <vector>

namespace lampblack::quickdraw {

// A pixel that is half covered by an inverting glyph counts as covered from here on.
static constexpr uint8_t kHalf = 128;

static uint32_t Mixed(uint32_t a, uint32_t b, uint32_t weightOfB) // weight 0 to 256
{
    const uint32_t redBlue = a & 0x00FF00FF, green = a & 0x0000FF00;
    return ((redBlue + (((b & 0x00FF00FF) - redBlue) * weightOfB >> 8)) & 0x00FF00FF) |
           ((green + (((b & 0x0000FF00) - green) * weightOfB >> 8)) & 0x0000FF00);
}

static Transfer TextTransfer(SInt16 inMode)
{
    const int mode = inMode & ~ditherCopy;
    return TransferOf(mode >= 0 && mode <= notPatBic ? (short)mode : (short)srcOr);
}

// The coverage of a whole text, for modes that need it at once.
static std::vector<uint8_t>& Gathered()
{
    static std::vector<uint8_t> coverage;
    return coverage;
}

TextPainter::TextPainter(PortRecord& inPort, SInt16 inMode, const Box& inTextBox)
    : fPort(inPort), fTextBox(inTextBox)
{
    const bool grayish = inMode == grayishTextOr;
    const uint32_t fore = grayish ? Mixed(inPort.fForePixel, inPort.fBackPixel, 128) : inPort.fForePixel;
    const Transfer transfer = TextTransfer(inMode);
    fSet = ChangeOf(transfer.set, fore, inPort.fBackPixel);
    fClear = ChangeOf(transfer.clear, fore, inPort.fBackPixel);
    fColor = fSet.value;
    fInverts = transfer.set == Action::Invert || transfer.clear == Action::Invert;
    fGathers = transfer.clear != Action::Leave;
    const Region& drawable = inPort.Drawable();
    if (drawable.IsRectangle())
        fOpen = drawable.Extents();
    if (!fGathers)
        return;
    fTextBox = fTouched = Intersection(inTextBox, drawable.Extents());
    if (IsEmpty(fTextBox))
        fTextBox = fTouched = { 0, 0, 0, 0 };
    Gathered().assign((size_t)(fTextBox.x2 - fTextBox.x1) * (size_t)(fTextBox.y2 - fTextBox.y1), 0);
}

TextPainter::~TextPainter()
{
    if (fGathers)
        DrawGathered();
    fPort.Damage(Intersection(fTouched, fPort.Drawable().Extents()));
}

static void BlendRow(uint32_t* ioPixels, const uint8_t* inCoverage, int inCount, uint32_t inColor)
{
    for (int i = 0; i < inCount; ++i) {
        const uint32_t covered = inCoverage[i];
        if (covered == 255)
            ioPixels[i] = inColor;
        else if (covered != 0)
            ioPixels[i] = Mixed(ioPixels[i], inColor, covered + (covered >> 7));
    }
}

static void InvertRow(uint32_t* ioPixels, const uint8_t* inCoverage, int inCount)
{
    for (int i = 0; i < inCount; ++i)
        if (inCoverage[i] >= kHalf)
            ioPixels[i] ^= kColorBits;
}

void TextPainter::Blend(const Glyph& inGlyph, const Box& whole, const Box& part)
{
    fTouched = { std::min(fTouched.x1, part.x1), std::min(fTouched.y1, part.y1),
                 std::max(fTouched.x2, part.x2), std::max(fTouched.y2, part.y2) };
    const uint8_t* coverage =
        inGlyph.coverage + (ptrdiff_t)(part.y1 - whole.y1) * inGlyph.width + (part.x1 - whole.x1);
    uint32_t* pixels = fPort.PixelAt(part.x1, part.y1);
    const int count = part.x2 - part.x1;
    for (int v = part.y1; v < part.y2; ++v, coverage += inGlyph.width, pixels += fPort.RowPixels()) {
        if (fInverts)
            InvertRow(pixels, coverage, count);
        else
            BlendRow(pixels, coverage, count, fColor);
    }
}

void TextPainter::BlendClipped(const Glyph& inGlyph, const Box& inBox)
{
    for (const Box& clip : fPort.Drawable().Boxes()) {
        if (clip.y1 >= inBox.y2)
            break;
        const Box part = Intersection(inBox, clip);
        if (!IsEmpty(part))
            Blend(inGlyph, inBox, part);
    }
}

void TextPainter::Gather(const Glyph& inGlyph, const Box& inBox)
{
    const Box part = Intersection(inBox, fTextBox);
    const int rowLength = fTextBox.x2 - fTextBox.x1;
    for (int v = part.y1; v < part.y2 && part.x1 < part.x2; ++v) {
        const uint8_t* from =
            inGlyph.coverage + (ptrdiff_t)(v - inBox.y1) * inGlyph.width + (part.x1 - inBox.x1);
        uint8_t* to = Gathered().data() + (ptrdiff_t)(v - fTextBox.y1) * rowLength + (part.x1 - fTextBox.x1);
        for (int i = 0; i < part.x2 - part.x1; ++i)
            to[i] = std::max(to[i], from[i]);
    }
}

void TextPainter::Cover(const Box& part, const uint8_t* coverage, int rowLength)
{
    for (int v = part.y1; v < part.y2; ++v, coverage += rowLength) {
        uint32_t* pixels = fPort.PixelAt(part.x1, v);
        for (int i = 0; i < part.x2 - part.x1; ++i) {
            const uint32_t covered =
                fInverts ? (coverage[i] >= kHalf ? 256 : 0) : coverage[i] + (coverage[i] >> 7);
            pixels[i] = Mixed(fClear.Of(pixels[i]), fSet.Of(pixels[i]), covered);
        }
    }
}

void TextPainter::DrawGathered()
{
    const int rowLength = fTextBox.x2 - fTextBox.x1;
    for (const Box& clip : fPort.Drawable().Boxes()) {
        const Box part = Intersection(fTextBox, clip);
        if (!IsEmpty(part))
            Cover(part,
                  Gathered().data() + (ptrdiff_t)(part.y1 - fTextBox.y1) * rowLength +
                      (part.x1 - fTextBox.x1),
                  rowLength);
    }
}

// A line is a glyph that is covered all over, row by row.
void TextPainter::Underline(const Box& inBox)
{
    static constexpr int kPiece = 64;
    static const std::vector<uint8_t> full(kPiece, 255);
    for (int v = inBox.y1; v < inBox.y2; ++v)
        for (int h = inBox.x1; h < inBox.x2; h += kPiece) {
            Glyph piece;
            piece.width = (SInt16)std::min(kPiece, inBox.x2 - h);
            piece.height = 1;
            piece.coverage = full.data();
            DrawGlyph(piece, h, v);
        }
}

} // namespace lampblack::quickdraw
