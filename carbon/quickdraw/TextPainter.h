// Draws glyphs into a port under a text mode, whatever the depth of its pixels. Begin with DrawGlyph.
#ifndef LAMPBLACK_QUICKDRAW_TEXTPAINTER_H
#define LAMPBLACK_QUICKDRAW_TEXTPAINTER_H

#include "Arithmetic.h"
#include "Ink.h"
#include "Strike.h"

namespace lampblack::quickdraw {

class TextPainter {
public:
    // The text box is what modes that also draw the background fill.
    TextPainter(PortRecord&, SInt16 mode, const Box& textBox);
    ~TextPainter();
    TextPainter(const TextPainter&) = delete;
    TextPainter& operator=(const TextPainter&) = delete;

    // Half-tones cannot be drawn, or are not to be: glyphs without any look better then.
    bool IsPlain() const { return fIsPlain; }

    // The pen is on the baseline at (h, v).
    void DrawGlyph(const Glyph& inGlyph, int h, int v)
    {
        if (inGlyph.width == 0)
            return;
        const Box box = { h + inGlyph.left, v + inGlyph.top, h + inGlyph.left + inGlyph.width,
                          v + inGlyph.top + inGlyph.height };
        if (fGathers)
            Gather(inGlyph, box);
        else if (Contains(fOpen, box))
            Blend(inGlyph, box, box);
        else
            BlendClipped(inGlyph, box);
    }
    void Fill(const Box&); // as if it were a glyph that is covered all over

private:
    using Row = void (TextPainter::*)(int v, int h, const uint8_t* coverage, int count);

    void ChooseTransfer(SInt16 mode);
    void ChooseGrayish();
    void ChooseRows();
    bool CanMix(uint32_t fore, uint32_t back) const;

    void Blend(const Glyph&, const Box& whole, const Box& part);
    void BlendClipped(const Glyph&, const Box&);
    void BlendRow16(int v, int h, const uint8_t* coverage, int count);
    void BlendRowIndexed(int v, int h, const uint8_t* coverage, int count);
    void ChangeRow(int v, int h, const uint8_t* coverage, int count);
    void ArithmeticOverRow(int v, int h, const uint8_t* coverage, int count);

    void Gather(const Glyph&, const Box&);
    void DrawGathered();
    void CoverRow32(int v, int h, const uint8_t* coverage, int count);
    void CoverRow(int v, int h, const uint8_t* coverage, int count);
    void ArithmeticRowOfAll(int v, int h, const uint8_t* coverage, int count);

    uint32_t WeightOf(uint8_t inCoverage) const
    {
        return fIsPlain ? (inCoverage >= kHalf ? 256 : 0) : inCoverage + (inCoverage >> 7);
    }

    // A pixel that is half covered counts as covered from here on where there are no half-tones.
    static constexpr uint8_t kHalf = 128;

    PortRecord& fPort;
    const Surface& fSurface;
    Row fRow = nullptr; // null: depth 32 and no more than blending
    Change fSet, fClear;
    uint32_t fPixelBits = 0;
    uint32_t fColor = 0; // what blending mixes in
    ArithmeticRow fArithmetic = nullptr;
    ArithmeticColors fOperands;
    bool fInverts = false; // so that drawing twice restores
    bool fIsPlain = false;
    bool fIsThinned = false; // every second pixel only
    bool fGathers = false;   // the background is drawn too: all glyphs are gathered first
    Box fTextBox;
    Box fOpen = { 0, 0, 0, 0 }; // a box without clipping inside
    Box fTouched = { 32767, 32767, -32768, -32768 };
};

// A line below a text, broken where the text reaches down to it.
class Underliner {
public:
    Underliner(TextPainter&, Point pen, int size);
    void Pass(const Glyph&, int h); // glyphs from left to right
    void End(int right);

private:
    void DrawTo(int right);

    TextPainter& fPainter;
    int fStart, fBaseline;
    int fTop, fBottom;
};

} // namespace lampblack::quickdraw

#endif
