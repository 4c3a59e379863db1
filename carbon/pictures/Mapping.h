// From a picture's coordinates to those of the port that it is played in.
#ifndef LAMPBLACK_PICTURES_MAPPING_H
#define LAMPBLACK_PICTURES_MAPPING_H

#include <quickdraw/Region.h>

namespace lampblack::pictures {

class PictureMapping {
public:
    // Neither may be empty.
    PictureMapping(const Rect& frame, const Rect& to) : fFrame(frame), fTo(to) {}

    bool Scales() const { return Width(fFrame) != Width(fTo) || Height(fFrame) != Height(fTo); }

    void SetFrame(const Rect& frame) { fFrame = frame; }

    // The picture's coordinates from now on have their origin elsewhere.
    void MoveOrigin(int dh, int dv);

    int H(int h) const { return Scaled(h - fOriginH - fFrame.left, Width(fTo), Width(fFrame)) + fTo.left; }
    int V(int v) const { return Scaled(v - fOriginV - fFrame.top, Height(fTo), Height(fFrame)) + fTo.top; }
    Point Of(Point p) const { return { quickdraw::Clamped(V(p.v)), quickdraw::Clamped(H(p.h)) }; }
    Rect Of(const Rect& r) const
    {
        return { quickdraw::Clamped(V(r.top)), quickdraw::Clamped(H(r.left)), quickdraw::Clamped(V(r.bottom)),
                 quickdraw::Clamped(H(r.right)) };
    }
    quickdraw::Region Of(const quickdraw::Region&) const;

    // A size: of a pen, of the corners of a round rectangle. What is not 0 does not become 0.
    Point Size(Point size) const
    {
        return { Size(size.v, Height(fTo), Height(fFrame)), Size(size.h, Width(fTo), Width(fFrame)) };
    }

    // The scale, as a fraction.
    Point Numerator() const { return { quickdraw::Clamped(Height(fTo)), quickdraw::Clamped(Width(fTo)) }; }
    Point Denominator() const
    {
        return { quickdraw::Clamped(Height(fFrame)), quickdraw::Clamped(Width(fFrame)) };
    }

    // Where (0,0) of the picture's coordinates comes to when nothing is scaled.
    Point Shift() const
    {
        return { (short)(fTo.top - fFrame.top - fOriginV), (short)(fTo.left - fFrame.left - fOriginH) };
    }

private:
    static int Width(const Rect& r) { return r.right - r.left; }
    static int Height(const Rect& r) { return r.bottom - r.top; }
    static int Scaled(int64_t value, int64_t to, int64_t from);
    static short Size(int size, int to, int from);

    Rect fFrame, fTo;
    int fOriginH = 0, fOriginV = 0;
};

} // namespace lampblack::pictures

#endif
