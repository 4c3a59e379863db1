// How coverage becomes pixels. At depth 32 most text is mixed straight into the rows; every other depth and
// mode has a function for a piece of a row.
#include "TextPainter.h"

#include <algorithm>
#include <vector>

namespace lampblack::quickdraw {

static constexpr int kPiece = 256; // pixels that are looked at together

static uint32_t Mixed(uint32_t a, uint32_t b, uint32_t weightOfB) // weight 0 to 256
{
    const uint32_t redBlue = a & 0x00FF00FF, green = a & 0x0000FF00;
    return ((redBlue + (((b & 0x00FF00FF) - redBlue) * weightOfB >> 8)) & 0x00FF00FF) |
           ((green + (((b & 0x0000FF00) - green) * weightOfB >> 8)) & 0x0000FF00);
}

// The coverage of a whole text, for modes that need it at once.
static std::vector<uint8_t>& Gathered()
{
    static std::vector<uint8_t> coverage;
    return coverage;
}

static bool IsNear(uint32_t a, uint32_t b)
{
    static constexpr int kNear = 0x30; // of 255 in a channel
    for (int shift = 0; shift < 24; shift += 8)
        if (std::abs((int)(a >> shift & 0xFF) - (int)(b >> shift & 0xFF)) > kNear)
            return false;
    return true;
}

// Whether the pixels have colours between two others.
bool TextPainter::CanMix(uint32_t inFore, uint32_t inBack) const
{
    if (fSurface.depth >= 16)
        return true;
    if (fSurface.depth == 1)
        return false;
    const uint32_t middle = Mixed(inFore, inBack, 128);
    const uint32_t found = ColorFor(fSurface, PixelFor(fSurface, middle));
    return IsNear(found, middle) && !IsNear(found, inFore) && !IsNear(found, inBack);
}

TextPainter::TextPainter(PortRecord& inPort, SInt16 inMode, const Box& inTextBox)
    : fPort(inPort), fSurface(inPort.fSurface), fTextBox(inTextBox)
{
    const Region& drawable = inPort.Drawable(); // the surface is up to date from here on
    if (drawable.IsRectangle())
        fOpen = drawable.Extents();
    fPixelBits = PixelBits(fSurface.depth);
    ChooseTransfer(inMode);
    ChooseRows();
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

void TextPainter::ChooseTransfer(SInt16 inMode)
{
    const uint32_t fore = PixelOf(fPort.fFore), back = PixelOf(fPort.fBack);
    const bool isMasked = inMode & mask;
    SInt16 mode = (SInt16)(inMode & ~mask);
    fColor = fore;
    fIsPlain = !CanMix(fore, back);
    fArithmetic = fSurface.depth > 1 && mode != transparent ? ArithmeticRowOf(mode) : nullptr;
    if (fArithmetic) {
        fOperands = { PixelOf(fPort.fOpColor), back, PixelOf(fPort.fHiliteColor) };
        if (mode == hilite) // exchanges what is seen of them
            fOperands = { 0, ShownColor(fSurface, back), ShownColor(fSurface, fOperands.hilite) };
        fIsPlain |= mode == hilite;
        fGathers = !isMasked && mode != hilite;
        return;
    }
    mode = mode == transparent ? (SInt16)srcOr : ModeAtDepth1(mode);
    Transfer transfer = TransferOf(mode >= 0 && mode <= notPatBic ? mode : (SInt16)srcOr);
    if (isMasked)
        transfer.clear = Action::Leave;
    fSet = ChangeOf(transfer.set, fPort.fForePixel, fPort.fBackPixel);
    fClear = ChangeOf(transfer.clear, fPort.fForePixel, fPort.fBackPixel);
    fInverts = transfer.set == Action::Invert || transfer.clear == Action::Invert;
    fIsPlain |= fInverts;
    fGathers = transfer.clear != Action::Leave;
    if (transfer.set == Action::Back)
        fColor = back;
    if (mode == grayishTextOr)
        ChooseGrayish();
}

void TextPainter::ChooseGrayish()
{
    fIsThinned = fIsPlain;
    if (fIsThinned)
        return;
    fColor = Mixed(PixelOf(fPort.fFore), PixelOf(fPort.fBack), 128);
    fSet = ChangeOf(Action::Fore, PixelFor(fSurface, fColor), 0);
}

void TextPainter::ChooseRows()
{
    const int depth = fSurface.depth;
    if (fArithmetic)
        fRow = fGathers ? &TextPainter::ArithmeticRowOfAll : &TextPainter::ArithmeticOverRow;
    else if (fGathers)
        fRow = depth == 32 ? &TextPainter::CoverRow32 : &TextPainter::CoverRow;
    else if (fIsPlain)
        fRow = &TextPainter::ChangeRow;
    else if (depth != 32)
        fRow = depth == 16 ? &TextPainter::BlendRow16 : &TextPainter::BlendRowIndexed;
}

static void BlendRow32(uint32_t* ioPixels, const uint8_t* inCoverage, int inCount, uint32_t inColor)
{
    for (int i = 0; i < inCount; ++i) {
        const uint32_t covered = inCoverage[i];
        if (covered == 255)
            ioPixels[i] = inColor;
        else if (covered != 0)
            ioPixels[i] = Mixed(ioPixels[i], inColor, covered + (covered >> 7));
    }
}

void TextPainter::Blend(const Glyph& inGlyph, const Box& whole, const Box& part)
{
    fTouched = { std::min(fTouched.x1, part.x1), std::min(fTouched.y1, part.y1),
                 std::max(fTouched.x2, part.x2), std::max(fTouched.y2, part.y2) };
    const uint8_t* coverage =
        inGlyph.coverage + (ptrdiff_t)(part.y1 - whole.y1) * inGlyph.width + (part.x1 - whole.x1);
    const int count = part.x2 - part.x1;
    if (fRow) {
        for (int v = part.y1; v < part.y2; ++v, coverage += inGlyph.width)
            (this->*fRow)(v, part.x1, coverage, count);
        return;
    }
    uint32_t* pixels = fPort.PixelAt(part.x1, part.y1);
    const ptrdiff_t rowPixels = fPort.RowPixels();
    for (int v = part.y1; v < part.y2; ++v, coverage += inGlyph.width, pixels += rowPixels)
        BlendRow32(pixels, coverage, count, fColor);
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

void TextPainter::BlendRow16(int v, int h, const uint8_t* inCoverage, int inCount)
{
    auto* pixels = reinterpret_cast<uint16_t*>(fSurface.RowAt(v)) + (h - fSurface.bounds.left);
    for (int i = 0; i < inCount; ++i)
        if (const uint32_t covered = inCoverage[i])
            pixels[i] = (uint16_t)PixelOf555(Mixed(ColorOf555(pixels[i]), fColor, covered + (covered >> 7)));
}

void TextPainter::BlendRowIndexed(int v, int h, const uint8_t* inCoverage, int inCount)
{
    const ColorSpace& colors = ColorsOf(fSurface);
    const uint32_t full = fSet.Of(0);
    uint32_t pixels[kPiece];
    for (int done = 0; done < inCount; done += kPiece) {
        const int count = std::min(kPiece, inCount - done);
        ReadPixels(fSurface, v, h + done, count, pixels);
        for (int i = 0; i < count; ++i) {
            const uint32_t covered = inCoverage[done + i];
            if (covered == 255)
                pixels[i] = full;
            else if (covered != 0)
                pixels[i] = colors.IndexOf(Mixed(colors.At((int)pixels[i]), fColor, covered));
        }
        WritePixels(fSurface, v, h + done, count, pixels);
    }
}

// Without half-tones.
void TextPainter::ChangeRow(int v, int h, const uint8_t* inCoverage, int inCount)
{
    uint32_t pixels[kPiece];
    for (int done = 0; done < inCount; done += kPiece) {
        const int count = std::min(kPiece, inCount - done);
        ReadPixels(fSurface, v, h + done, count, pixels);
        for (int i = 0; i < count; ++i)
            if (inCoverage[done + i] >= kHalf && !(fIsThinned && ((v + h + done + i) & 1)))
                pixels[i] = fSet.Of(pixels[i]) & fPixelBits;
        WritePixels(fSurface, v, h + done, count, pixels);
    }
}

// Writes what differs; the rest keeps its pixels even where several indexes are of one colour.
static void WriteChanged(const Surface& inSurface, int v, int h, int inCount, const uint32_t* inBefore,
                         const uint32_t* inAfter)
{
    for (int i = 0; i < inCount;) {
        int end = i;
        while (end < inCount && inBefore[end] != inAfter[end])
            ++end;
        if (end > i)
            WriteColors(inSurface, v, h + i, end - i, inAfter + i);
        i = end + 1;
    }
}

// The operation on what the glyphs cover, and nothing on the rest.
void TextPainter::ArithmeticOverRow(int v, int h, const uint8_t* inCoverage, int inCount)
{
    uint32_t before[kPiece], after[kPiece], source[kPiece];
    const uint32_t color = fArithmetic == ArithmeticRowOf(hilite) ? kBlackPixel : fColor;
    std::fill_n(source, std::min(kPiece, inCount), color);
    for (int done = 0; done < inCount; done += kPiece) {
        const int count = std::min(kPiece, inCount - done);
        ReadColors(fSurface, v, h + done, count, before);
        std::copy_n(before, count, after);
        fArithmetic(source, after, count, fOperands);
        for (int i = 0; i < count; ++i)
            after[i] = Mixed(before[i], after[i], WeightOf(inCoverage[done + i]));
        WriteChanged(fSurface, v, h + done, count, before, after);
    }
}

// The operation with the text on its background as the source.
void TextPainter::ArithmeticRowOfAll(int v, int h, const uint8_t* inCoverage, int inCount)
{
    uint32_t before[kPiece], after[kPiece], source[kPiece];
    for (int done = 0; done < inCount; done += kPiece) {
        const int count = std::min(kPiece, inCount - done);
        ReadColors(fSurface, v, h + done, count, before);
        std::copy_n(before, count, after);
        for (int i = 0; i < count; ++i)
            source[i] = Mixed(fOperands.back, fColor, WeightOf(inCoverage[done + i]));
        fArithmetic(source, after, count, fOperands);
        WriteChanged(fSurface, v, h + done, count, before, after);
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

void TextPainter::CoverRow32(int v, int h, const uint8_t* inCoverage, int inCount)
{
    uint32_t* pixels = fPort.PixelAt(h, v);
    for (int i = 0; i < inCount; ++i)
        pixels[i] = Mixed(fClear.Of(pixels[i]), fSet.Of(pixels[i]), WeightOf(inCoverage[i]));
}

void TextPainter::CoverRow(int v, int h, const uint8_t* inCoverage, int inCount)
{
    uint32_t pixels[kPiece];
    for (int done = 0; done < inCount; done += kPiece) {
        const int count = std::min(kPiece, inCount - done);
        ReadPixels(fSurface, v, h + done, count, pixels);
        for (int i = 0; i < count; ++i) {
            const uint32_t weight = WeightOf(inCoverage[done + i]);
            const uint32_t clear = fClear.Of(pixels[i]) & fPixelBits, set = fSet.Of(pixels[i]) & fPixelBits;
            pixels[i] =
                weight == 0 ? clear
                : weight == 256
                    ? set
                    : PixelFor(fSurface, Mixed(ColorFor(fSurface, clear), ColorFor(fSurface, set), weight));
        }
        WritePixels(fSurface, v, h + done, count, pixels);
    }
}

void TextPainter::DrawGathered()
{
    const int rowLength = fTextBox.x2 - fTextBox.x1;
    for (const Box& clip : fPort.Drawable().Boxes()) {
        const Box part = Intersection(fTextBox, clip);
        if (IsEmpty(part))
            continue;
        const uint8_t* coverage =
            Gathered().data() + (ptrdiff_t)(part.y1 - fTextBox.y1) * rowLength + (part.x1 - fTextBox.x1);
        for (int v = part.y1; v < part.y2; ++v, coverage += rowLength)
            (this->*fRow)(v, part.x1, coverage, part.x2 - part.x1);
    }
}

// Row by row, in pieces.
void TextPainter::Fill(const Box& inBox)
{
    static constexpr int kLength = 64;
    static const std::vector<uint8_t> full(kLength, 255);
    for (int v = inBox.y1; v < inBox.y2; ++v)
        for (int h = inBox.x1; h < inBox.x2; h += kLength) {
            Glyph piece;
            piece.width = (SInt16)std::min(kLength, inBox.x2 - h);
            piece.height = 1;
            piece.coverage = full.data();
            DrawGlyph(piece, h, v);
        }
}

// One pixel below the baseline and one thick; more in large sizes, whose round letters pass the baseline.
Underliner::Underliner(TextPainter& inPainter, Point inPen, int inSize)
    : fPainter(inPainter), fStart(inPen.h), fBaseline(inPen.v)
{
    const int thickness = std::max(1, inSize / 16);
    fTop = inPen.v + thickness;
    fBottom = fTop + thickness;
}

void Underliner::DrawTo(int inRight)
{
    if (fStart < inRight)
        fPainter.Fill({ fStart, fTop, inRight, fBottom });
}

// The line keeps a pixel away from what it meets [IM-T, documented].
void Underliner::Pass(const Glyph& inGlyph, int h)
{
    static constexpr uint8_t kInk = 96;
    const int top = fBaseline + inGlyph.top;
    const int first = std::max(0, fTop - 1 - top), end = std::min<int>(inGlyph.height, fBottom + 1 - top);
    for (int column = 0; column < inGlyph.width && first < end; ++column)
        for (int row = first; row < end; ++row)
            if (inGlyph.coverage[(ptrdiff_t)row * inGlyph.width + column] >= kInk) {
                const int place = h + inGlyph.left + column;
                DrawTo(place - 1);
                fStart = std::max(fStart, place + 2);
                break;
            }
}

void Underliner::End(int inRight)
{
    DrawTo(inRight);
}

} // namespace lampblack::quickdraw
