// Draws glyphs into a port under a text mode. Begin with Glyph, end with Finish.
#ifndef LAMPBLACK_QUICKDRAW_TEXTPAINTER_H
#define LAMPBLACK_QUICKDRAW_TEXTPAINTER_H

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
    void Underline(const Box&);

private:
    void Blend(const Glyph&, const Box& whole, const Box& part);
    void BlendClipped(const Glyph&, const Box&);
    void Gather(const Glyph&, const Box&);
    void DrawGathered();
    void Cover(const Box& part, const uint8_t* coverage, int rowLength);

    PortRecord& fPort;
    Change fSet, fClear;
    uint32_t fColor = 0;
    bool fInverts = false; // no half-tones then, so that drawing twice restores
    bool fGathers = false; // the background is drawn too: all glyphs are gathered first
    Box fTextBox;
    Box fOpen = { 0, 0, 0, 0 }; // a box without clipping inside
    Box fTouched = { 32767, 32767, -32768, -32768 };
};

} // namespace lampblack::quickdraw

#endif
