// What an open picture hears of drawing. Each public drawing entry asks RecorderOf and tells it what it was
// asked to draw, whether or not the pen shows anything. Begin with Recorder.
#ifndef LAMPBLACK_QUICKDRAW_RECORDER_H
#define LAMPBLACK_QUICKDRAW_RECORDER_H

#include "Surface.h"
#include "Verbs.h"

namespace lampblack::quickdraw {

// CopyBits into the port that records. The rectangles are not empty.
struct CopiedPixels {
    Surface from;
    Rect fromRect, toRect;
    short mode = srcCopy;
    const Region* mask = nullptr; // null: none
};

// How much larger than its settings a text is drawn, down and across.
struct TextScale {
    Point numer = { 1, 1 }, denom = { 1, 1 };
};

// The port's own state (pen, colours, patterns, clip, text) is compared with what was recorded last, so that
// no setter has to tell. `fill` is the pattern of Verb::Fill and of no other verb.
class Recorder {
public:
    virtual ~Recorder() = default;

    virtual void Line(const PortRecord&, Point from, Point to) = 0;
    virtual void Rectangle(const PortRecord&, Verb, const Rect&, const Pattern* fill) = 0;
    virtual void RoundRectangle(const PortRecord&, Verb, const Rect&, Point oval, const Pattern* fill) = 0;
    virtual void Oval(const PortRecord&, Verb, const Rect&, const Pattern* fill) = 0;
    virtual void Arc(const PortRecord&, Verb, const Rect&, int start, int extent, const Pattern* fill) = 0;
    virtual void Polygon(const PortRecord&, Verb, std::span<const Point>, const Pattern* fill) = 0;
    virtual void Shape(const PortRecord&, Verb, const Region&, const Pattern* fill) = 0;
    // Mac Roman bytes; the settings may be other than the port's.
    virtual void Text(const PortRecord&, const TextSettings&, const TextScale&, Point at,
                      std::span<const uint8_t>) = 0;
    virtual void Pixels(const PortRecord&, const CopiedPixels&) = 0;
    virtual void Comment(const PortRecord&, short kind, std::span<const uint8_t> data) = 0;
};

// Who records what is drawn in a port; null for nobody. The outline of an open region or polygon is not a
// drawing.
inline Recorder* RecorderOf(const PortRecord* inPort)
{
    if (!inPort || !inPort->fRecorder || inPort->fOpenRegion || inPort->fOpenPolygon)
        return nullptr;
    return inPort->fRecorder;
}

// While this lives nothing is recorded, for a drawing that is made of others.
class StRecorderAside {
public:
    [[nodiscard]] explicit StRecorderAside(PortRecord& ioPort) : fPort(ioPort), fRecorder(ioPort.fRecorder)
    {
        fPort.fRecorder = nullptr;
    }
    ~StRecorderAside() { fPort.fRecorder = fRecorder; }
    StRecorderAside(const StRecorderAside&) = delete;
    StRecorderAside& operator=(const StRecorderAside&) = delete;

private:
    PortRecord& fPort;
    Recorder* fRecorder;
};

// One line for each drawing entry: tells the recorder of the current port, if there is one. A shape that
// would never show (empty, or a Fill without pattern) is not told.
void RecordLine(Point from, Point to);
void RecordRoundRect(Verb, const Rect&, int ovalWidth, int ovalHeight,
                     const Pattern* fill); // 0, 0: a rectangle
void RecordArc(Verb, const Rect&, int start, int extent, const Pattern* fill);
void RecordPolygon(Verb, std::span<const Point>, const Pattern* fill);
void RecordRegion(Verb, const Region&, const Pattern* fill);
void RecordText(const TextSettings&, Point at, std::span<const uint8_t> macRoman, const TextScale& = {});
void RecordPixels(const CopiedPixels&);

} // namespace lampblack::quickdraw

#endif
