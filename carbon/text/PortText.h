// Text in the current port: the font settings of a record, measuring, and savers of what drawing changes.
#ifndef LAMPBLACK_TEXT_PORTTEXT_H
#define LAMPBLACK_TEXT_PORTTEXT_H

#include "text/EditCore.h"

#include <Carbon/Quickdraw.h>
#include <Carbon/TextEdit.h>

namespace lampblack::text {

// Gives the record the current port, its font and the measures of that font.
void TakePortText(TERec& ioRecord);

// Widths in the current port's font, of any length: the port counts pixels in 16 bits, this does not.
class PortMeasure final : public Measure {
public:
    int Width(const char* inBytes, int inCount) override;
    int Fitting(const char* inBytes, int inCount, int inWidth) override;
    // The offset among the bytes whose left side is nearest to the distance.
    int Nearest(const char* inBytes, int inCount, int inDistance);
};

// The current port, and of it the clip region, colours, pen place and text settings.
class StTextPort {
public:
    // Makes the record's port current, with the record's font, clipped to its view and, if given, to an area.
    [[nodiscard]] explicit StTextPort(const TERec& inRecord, const Rect* inArea = nullptr);
    // Stays in the current port, clipped to a box.
    [[nodiscard]] explicit StTextPort(const Rect& inBox);
    ~StTextPort();
    StTextPort(const StTextPort&) = delete;
    StTextPort& operator=(const StTextPort&) = delete;

private:
    void Enter(CGrafPtr inPort, const Rect& inClip);

    CGrafPtr fSavedPort = nullptr, fPort = nullptr;
    RgnHandle fClip = nullptr;
    RGBColor fFore = {}, fBack = {};
    PenState fPen = {};
    short fFont = 0, fSize = 0, fMode = 0;
    Style fFace = 0;
};

// How far into a line of a width, within a box, text of another width begins.
int JustifiedStart(int inBoxWidth, int inTextWidth, short inJustification);

} // namespace lampblack::text

#endif
