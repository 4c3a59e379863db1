// Writes what is drawn in a port into a picture of version 2. Begin with PictureRecorder::Open.
#ifndef LAMPBLACK_PICTURES_PICTURERECORDER_H
#define LAMPBLACK_PICTURES_PICTURERECORDER_H

#include <foundation/BigEndian.h>
#include <quickdraw/Recorder.h>

#include <optional>
#include <set>
#include <vector>

namespace lampblack::pictures {

using foundation::BigEndianWriter;
using foundation::Bytes;

struct ArgbPixels;

struct PictureHeader {
    Rect frame;    // at 72 pixels an inch
    Rect source;   // in the coordinates of the drawing
    bool extended; // has a resolution
    Fixed hRes, vRes;
};

Rect FrameAt72(const Rect& source, Fixed hRes, Fixed vRes);

class PictureRecorder final : public quickdraw::Recorder {
public:
    // Null without memory, which QDError tells.
    static PicHandle Open(quickdraw::PortRecord&, const PictureHeader&);
    static void Close(quickdraw::PortRecord&);
    static void Abandon(PicHandle); // no recorder will write into it

    PictureRecorder(const quickdraw::PortRecord&, const PictureHeader&, PicHandle);
    ~PictureRecorder() override;

    void Line(const quickdraw::PortRecord&, Point from, Point to) override;
    void Rectangle(const quickdraw::PortRecord&, quickdraw::Verb, const Rect&, const Pattern*) override;
    void RoundRectangle(const quickdraw::PortRecord&, quickdraw::Verb, const Rect&, Point oval,
                        const Pattern*) override;
    void Oval(const quickdraw::PortRecord&, quickdraw::Verb, const Rect&, const Pattern*) override;
    void Arc(const quickdraw::PortRecord&, quickdraw::Verb, const Rect&, int start, int extent,
             const Pattern*) override;
    void Polygon(const quickdraw::PortRecord&, quickdraw::Verb, std::span<const Point>,
                 const Pattern*) override;
    void Shape(const quickdraw::PortRecord&, quickdraw::Verb, const quickdraw::Region&,
               const Pattern*) override;
    void Text(const quickdraw::PortRecord&, const quickdraw::TextSettings&, const quickdraw::TextScale&,
              Point at, std::span<const uint8_t>) override;
    void Pixels(const quickdraw::PortRecord&, const quickdraw::CopiedPixels&) override;
    void Comment(const quickdraw::PortRecord&, short kind, std::span<const uint8_t> data) override;

    // An image that covers in part what is there.
    void Blended(const quickdraw::PortRecord&, const ArgbPixels&, const Rect& part, const Rect& to);

private:
    // What was recorded last of everything that drawing depends on.
    struct State {
        quickdraw::Region clip;
        bool hasClip = false;
        Point origin = { 0, 0 };
        Point penSize = { 1, 1 };
        SInt16 penMode = patCopy;
        std::vector<uint8_t> penPattern, backPattern, fillPattern; // as their opcodes have them
        RGBColor fore = { 0, 0, 0 }, back = { 0xFFFF, 0xFFFF, 0xFFFF };
        RGBColor op = { 0, 0, 0 }, hilite;
        quickdraw::TextSettings text;
        quickdraw::TextScale textScale;
        std::optional<bool> outlines; // preferred or not
        std::set<short> namedFonts;
        Point pen = { 0, 0 }, textAt = { 0, 0 }, oval = { 0, 0 };
        Rect rect = { 0, 0, 0, 0 }, roundRect = rect, ovalRect = rect, arcRect = rect;
    };

    template <typename Write>
    void Guarded(Write);
    void Op(int opcode); // at an even place
    void WritePoint(Point);
    void WriteText(Point at, std::span<const uint8_t>);
    void WriteBits(const quickdraw::CopiedPixels&, const quickdraw::Region* mask);
    void WriteShape(quickdraw::Verb, const quickdraw::Region&);

    void MatchPort(const quickdraw::PortRecord&);
    void MatchClip(const quickdraw::PortRecord&);
    void MatchColor(int opcode, const RGBColor& now, RGBColor* ioLast);
    void MatchPattern(const quickdraw::PortRecord&, int opcode, int pixelOpcode, const Pattern&, PixPatHandle,
                      std::vector<uint8_t>* ioLast);
    void MatchPen(const quickdraw::PortRecord&);
    void MatchVerb(const quickdraw::PortRecord&, quickdraw::Verb, const Pattern* fill);
    void MatchText(const quickdraw::PortRecord&, const quickdraw::TextSettings&, const quickdraw::TextScale&);
    void MatchGlyphs();
    void MatchTextScale(const quickdraw::TextScale&);
    void MatchTextSpace(const quickdraw::TextSettings&);
    void NameFont(short font);
    void WriteRectShape(int opcode, quickdraw::Verb, const Rect&, Rect* ioLast);

    bool Finish(); // false without memory

    PictureHeader fHeader;
    PicHandle fPicture;
    Point fStart, fPatternStart; // the origins when the picture was opened
    BigEndianWriter fWriter;
    State fLast;
    bool fFailed = false;
};

} // namespace lampblack::pictures

#endif
