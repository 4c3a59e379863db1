#include "text/PortText.h"

#include <algorithm>
#include <vector>

namespace lampblack::text {

namespace {

constexpr int kFirstChunk = 32;
constexpr int kChunk = 256; // bytes measured at once; their widths stay far below what 16 bits hold

// Regions that savers borrow, so that drawing allocates none.
std::vector<RgnHandle>& IdleRegions()
{
    static std::vector<RgnHandle> regions;
    return regions;
}

RgnHandle BorrowRegion()
{
    auto& idle = IdleRegions();
    if (idle.empty())
        return NewRgn();
    const RgnHandle region = idle.back();
    idle.pop_back();
    return region;
}

void ReturnRegion(RgnHandle inRegion)
{
    if (inRegion)
        IdleRegions().push_back(inRegion);
}

// Where each character of a chunk begins, and where the last one ends.
struct Places {
    short at[kChunk + 1];
    Places(const char* inBytes, int inCount)
    {
        at[inCount] = 0;
        MeasureText((short)inCount, inBytes, at);
    }
};

Rect Intersection(const Rect& inA, const Rect& inB)
{
    Rect both = {};
    SectRect(&inA, &inB, &both);
    return both;
}

} // namespace

void TakePortText(TERec& ioRecord)
{
    FontInfo font = {};
    GetFontInfo(&font);
    ioRecord.inPort = GetQDGlobalsThePort();
    ioRecord.txFont = GetPortTextFont(ioRecord.inPort);
    ioRecord.txFace = GetPortTextFace(ioRecord.inPort);
    ioRecord.txMode = GetPortTextMode(ioRecord.inPort);
    ioRecord.txSize = GetPortTextSize(ioRecord.inPort);
    ioRecord.lineHeight = (short)(font.ascent + font.descent + font.leading);
    ioRecord.fontAscent = font.ascent;
}

int PortMeasure::Width(const char* inBytes, int inCount)
{
    int width = 0;
    for (int done = 0; done < inCount; done += kChunk)
        width += TextWidth(inBytes + done, 0, (short)std::min(kChunk, inCount - done));
    return width;
}

int PortMeasure::Fitting(const char* inBytes, int inCount, int inWidth)
{
    int room = inWidth;
    // Small steps first: most lines are short, and what is measured past their end is measured for nothing.
    for (int done = 0, step = kFirstChunk; done < inCount; done += step, step = std::min(2 * step, kChunk)) {
        const int count = std::min(step, inCount - done);
        const Places places(inBytes + done, count);
        if (places.at[count] > room)
            return done + (int)(std::upper_bound(places.at, places.at + count + 1, room) - places.at) - 1;
        room -= places.at[count];
    }
    return inCount;
}

int PortMeasure::Nearest(const char* inBytes, int inCount, int inDistance)
{
    int rest = inDistance;
    for (int done = 0; done < inCount; done += kChunk) {
        const int count = std::min(kChunk, inCount - done);
        const Places places(inBytes + done, count);
        for (int index = 0; index < count; ++index)
            if (rest < (places.at[index] + places.at[index + 1] + 1) / 2)
                return done + index;
        rest -= places.at[count];
    }
    return inCount;
}

StTextPort::StTextPort(const TERec& inRecord, const Rect* inArea)
{
    Enter(inRecord.inPort, inArea ? Intersection(inRecord.viewRect, *inArea) : inRecord.viewRect);
    TextFont(inRecord.txFont);
    TextFace(inRecord.txFace);
    TextSize(inRecord.txSize);
    TextMode(inRecord.txMode);
}

StTextPort::StTextPort(const Rect& inBox)
{
    Enter(GetQDGlobalsThePort(), inBox);
}

void StTextPort::Enter(CGrafPtr inPort, const Rect& inClip)
{
    fSavedPort = GetQDGlobalsThePort();
    fPort = inPort;
    SetPort(inPort);
    fFont = GetPortTextFont(inPort);
    fSize = GetPortTextSize(inPort);
    fMode = GetPortTextMode(inPort);
    fFace = GetPortTextFace(inPort);
    GetForeColor(&fFore);
    GetBackColor(&fBack);
    GetPenState(&fPen);
    fClip = BorrowRegion();
    const RgnHandle narrow = BorrowRegion();
    if (fClip && narrow) {
        GetClip(fClip);
        RectRgn(narrow, &inClip);
        SectRgn(fClip, narrow, narrow);
        SetClip(narrow);
    }
    ReturnRegion(narrow);
}

StTextPort::~StTextPort()
{
    SetPort(fPort);
    if (fClip)
        SetClip(fClip);
    ReturnRegion(fClip);
    SetPenState(&fPen);
    RGBForeColor(&fFore);
    RGBBackColor(&fBack);
    TextFont(fFont);
    TextSize(fSize);
    TextMode(fMode);
    TextFace(fFace);
    SetPort(fSavedPort);
}

int JustifiedStart(int inBoxWidth, int inTextWidth, short inJustification)
{
    if (inJustification == teJustCenter)
        return (inBoxWidth - inTextWidth) / 2;
    return inJustification == teJustRight ? inBoxWidth - inTextWidth : 0;
}

} // namespace lampblack::text
