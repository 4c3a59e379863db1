// CopyBits and ScrollRect.
#include "CopyBits.h"

#include "Recorder.h"

#include <Carbon/MacErrors.h>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

CopyColors CopyColorsOf(const PortRecord* inPort)
{
    if (!inPort)
        return {};
    return { PixelOf(inPort->fFore),
             { PixelOf(inPort->fOpColor), PixelOf(inPort->fBack), PixelOf(inPort->fHiliteColor) } };
}

bool TellRecorder(const PortRecord* inPort, const CopiedPixels& inPixels)
{
    if (!inPort || inPort != CurrentPort() || !RecorderOf(inPort))
        return false;
    RecordPixels(inPixels);
    return inPort->fPen.visibility < 0; // as OpenPicture left it: nothing shows
}

void CopyPixels(const MapPixels& from, const MapPixels& to, const Rect& fromRect, const Rect& toRect,
                short mode, const Region* mask)
{
    PortRecord* current = CurrentPort();
    if (IsEmpty(fromRect) || IsEmpty(toRect) || !from.surface.base)
        return;
    if (TellRecorder(to.port, { from.surface, fromRect, toRect, mode, mask }) || !to.surface.base)
        return;
    CopyJob job(from.surface, to.surface, fromRect, toRect, mode, CopyColorsOf(current));
    const Box changed = Perform(job, WhereOf(job, to.port == current ? current : nullptr, mask));
    if (to.port && !IsEmpty(changed))
        to.port->Damage(changed);
}

} // namespace lampblack::quickdraw

void CopyBits(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect, const Rect* dstRect,
              short mode, RgnHandle maskRgn)
{
    const Region* mask = FindRegion(maskRgn);
    if (!srcBits || !dstBits || !srcRect || !dstRect || (maskRgn && !mask))
        return SetQDError(paramErr);
    MapPixels from, to;
    QDErr error = FindPixels(srcBits, &from);
    if (!error)
        error = FindPixels(dstBits, &to);
    SetQDError(error);
    if (!error)
        CopyPixels(from, to, *srcRect, *dstRect, mode, mask);
}

void ScrollRect(const Rect* r, short dh, short dv, RgnHandle updateRgn)
{
    PortRecord* port = CurrentPort();
    if (!port || !r)
        return;
    Region area(*r), moved, uncovered;
    area.Intersect(area, port->Drawable());
    moved = area;
    moved.Offset(dh, dv);
    moved.Intersect(moved, area);
    uncovered.Subtract(area, moved);
    if (dh == 0 && dv == 0) {
        uncovered.Clear();
    } else if (!moved.IsEmpty() && port->fSurface.base) {
        Box from = moved.Extents();
        from.x1 -= dh, from.x2 -= dh, from.y1 -= dv, from.y2 -= dv;
        CopyJob job(port->fSurface, port->fSurface, RectOf(from), RectOf(moved.Extents()), srcCopy, {});
        port->Damage(Perform(job, { moved.Extents(), moved.Boxes() }));
    }
    DrawRegion(Verb::Erase, uncovered, nullptr);
    if (Region* update = FindRegion(updateRgn))
        *update = uncovered;
}
