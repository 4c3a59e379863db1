// The loops that put pixels into the screen.
#include "Painting.h"

#include <appearance/WindowGeometry.h>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace lampblack::windows {

namespace {

// The part of a box that the source has pixels for.
pixman_box32_t Common(const Source& inSource, const pixman_box32_t& inBox)
{
    const Rect& place = inSource.place;
    return { inBox.x1 > place.left ? inBox.x1 : place.left, inBox.y1 > place.top ? inBox.y1 : place.top,
             inBox.x2 < place.right ? inBox.x2 : place.right,
             inBox.y2 < place.bottom ? inBox.y2 : place.bottom };
}

const uint32_t* SourceAt(const Source& inSource, int inH, int inV)
{
    return inSource.pixels + (long)(inV - inSource.place.top) * inSource.rowPixels +
           (inH - inSource.place.left);
}

// inWeight of 256 gives the first colour.
uint32_t Mix(uint32_t inFirst, uint32_t inSecond, uint32_t inWeight)
{
    const uint32_t rest = 256 - inWeight;
    const uint32_t redBlue =
        (((inFirst & 0xFF00FF) * inWeight + (inSecond & 0xFF00FF) * rest) >> 8) & 0xFF00FF;
    const uint32_t green = (((inFirst & 0x00FF00) * inWeight + (inSecond & 0x00FF00) * rest) >> 8) & 0x00FF00;
    return redBlue | green;
}

// How much of a blurred edge lies at `inDistance` pixels inside of it, 0 to 1.
double Edge(double inDistance)
{
    constexpr double kSigma = Shadow::kReach / 2.6;
    return 0.5 * (1 + std::erf(inDistance / (kSigma * std::sqrt(2.0))));
}

// The blurred profile of an interval that begins kReach pixels in.
void Profile(std::vector<uint16_t>* outTable, int inLength, double inStrength)
{
    outTable->resize((size_t)(inLength + 2 * Shadow::kReach));
    for (size_t i = 0; i < outTable->size(); ++i) {
        const double at = (double)i + 0.5 - Shadow::kReach;
        (*outTable)[i] = (uint16_t)std::lround(256 * inStrength * Edge(at) * Edge(inLength - at));
    }
}

} // namespace

void PaintSource(const Canvas& inCanvas, const Source& inSource, const pixman_box32_t& inBox)
{
    const pixman_box32_t box = Common(inSource, inBox);
    if (box.x1 >= box.x2)
        return;
    for (int v = box.y1; v < box.y2; ++v)
        std::memcpy(inCanvas.At(box.x1, v), SourceAt(inSource, box.x1, v), (size_t)(box.x2 - box.x1) * 4);
}

void BlendSource(const Canvas& inCanvas, const Source& inSource, const pixman_box32_t& inBox,
                 uint32_t inAlpha256)
{
    const pixman_box32_t box = Common(inSource, inBox);
    for (int v = box.y1; v < box.y2; ++v) {
        uint32_t* to = inCanvas.At(box.x1, v);
        const uint32_t* from = SourceAt(inSource, box.x1, v);
        for (int h = box.x1; h < box.x2; ++h, ++to, ++from)
            *to = Mix(*from, *to, inAlpha256);
    }
}

uint32_t Corner::Weight(int inH, int inV) const
{
    const int x = right ? place.right - 1 - inH : inH - place.left;
    const int y = bottom ? place.bottom - 1 - inV : inV - place.top;
    const uint32_t coverage = appearance::CornerCoverage(radius, x, y);
    return coverage + (coverage >> 7);
}

int RoundCorners(const Rect& inRect, int inTopRadius, int inBottomRadius, Corner outCorners[4])
{
    int count = 0;
    for (const bool bottom : { false, true }) {
        const int most = std::min(Width(inRect), Height(inRect)) / 2;
        const int radius = std::min(bottom ? inBottomRadius : inTopRadius, most);
        if (radius <= 0)
            continue;
        const auto top = (short)(bottom ? inRect.bottom - radius : inRect.top);
        for (const bool right : { false, true }) {
            const auto left = (short)(right ? inRect.right - radius : inRect.left);
            const Rect place = { top, left, (short)(top + radius), (short)(left + radius) };
            outCorners[count++] = { place, radius, right, bottom };
        }
    }
    return count;
}

void BlendCorner(const Canvas& inCanvas, const Source& inSource, const pixman_box32_t& inBox,
                 const Corner& inCorner, uint32_t inAlpha256)
{
    const pixman_box32_t box = Common(inSource, inBox);
    for (int v = box.y1; v < box.y2; ++v) {
        uint32_t* to = inCanvas.At(box.x1, v);
        const uint32_t* from = SourceAt(inSource, box.x1, v);
        for (int h = box.x1; h < box.x2; ++h, ++to, ++from)
            *to = Mix(*from, *to, inCorner.Weight(h, v) * inAlpha256 >> 8);
    }
}

void PaintDesktop(const Canvas& inCanvas, int inScreenHeight, const pixman_box32_t& inBox)
{
    constexpr uint32_t kTop = 0x5B86B8, kBottom = 0x2E5587;
    for (int v = inBox.y1; v < inBox.y2; ++v) {
        const uint32_t weight = 256u * (uint32_t)v / (uint32_t)(inScreenHeight > 0 ? inScreenHeight : 1);
        const uint32_t color = Mix(kBottom, kTop, weight > 256 ? 256 : weight);
        uint32_t* to = inCanvas.At(inBox.x1, v);
        for (int h = inBox.x1; h < inBox.x2; ++h)
            *to++ = color;
    }
}

void Shadow::Fit(const Rect& inRect, bool inStrong)
{
    const bool sameSize =
        Width(inRect) == Width(fRect) && Height(inRect) == Height(fRect) && inStrong == fStrong;
    fRect = inRect;
    fBounds = { (short)(inRect.top + kDrop - kReach), (short)(inRect.left - kReach),
                (short)(inRect.bottom + kDrop + kReach), (short)(inRect.right + kReach) };
    if (sameSize && !fAcross.empty())
        return;
    fStrong = inStrong;
    Profile(&fAcross, Width(inRect), inStrong ? 0.55 : 0.35);
    Profile(&fDown, Height(inRect), 1);
}

void Shadow::Paint(const Canvas& inCanvas, const pixman_box32_t& inBox) const
{
    for (int v = inBox.y1; v < inBox.y2; ++v) {
        const uint32_t down = fDown[(size_t)(v - fBounds.top)];
        const uint16_t* across = fAcross.data() + (inBox.x1 - fBounds.left);
        uint32_t* to = inCanvas.At(inBox.x1, v);
        for (int h = inBox.x1; h < inBox.x2; ++h, ++to, ++across)
            *to = Mix(0, *to, (down * *across) >> 8);
    }
}

void Shadow::PaintOutline(const Canvas& inCanvas, const pixman_box32_t& inBox, int inTopRadius,
                          int inBottomRadius) const
{
    const uint32_t darkness = fStrong ? 72 : 52;
    const Rect outer = { (short)(fRect.top - 1), (short)(fRect.left - 1), (short)(fRect.bottom + 1),
                         (short)(fRect.right + 1) };
    // Darkens a part of the ring; within a corner as far as its pixels belong to the ring's round shape.
    const auto darken = [&](const Rect& inPart, const Corner* inCorner) {
        const Rect part =
            Overlap(inPart, { (short)inBox.y1, (short)inBox.x1, (short)inBox.y2, (short)inBox.x2 });
        for (int v = part.top; v < part.bottom; ++v)
            for (int h = part.left; h < part.right; ++h) {
                uint32_t* to = inCanvas.At(h, v);
                *to = Mix(0, *to, inCorner ? inCorner->Weight(h, v) * darkness >> 8 : darkness);
            }
    };
    Corner corners[4];
    const int count = RoundCorners(outer, inTopRadius + 1, inBottomRadius + 1, corners);
    for (int i = 0; i < count; ++i)
        darken(corners[i].place, &corners[i]);
    if (count < 4)
        return; // too small for a line between them
    const Rect &topLeft = corners[0].place, &topRight = corners[1].place, &bottomLeft = corners[2].place,
               &bottomRight = corners[3].place;
    darken({ outer.top, topLeft.right, fRect.top, topRight.left }, nullptr);
    darken({ fRect.bottom, bottomLeft.right, outer.bottom, bottomRight.left }, nullptr);
    darken({ topLeft.bottom, outer.left, bottomLeft.top, fRect.left }, nullptr);
    darken({ topRight.bottom, fRect.right, bottomRight.top, outer.right }, nullptr);
}

} // namespace lampblack::windows
