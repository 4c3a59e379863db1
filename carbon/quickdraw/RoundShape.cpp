// Everything is counted in half pixels from the centre, so that pixel centres are whole numbers.
#include "RoundShape.h"

#include <algorithm>
#include <cmath>

namespace lampblack::quickdraw {

RoundShape::RoundShape(const Box& inBox, int inOvalWidth, int inOvalHeight)
    : fBox(inBox),
      fOvalWidth(std::clamp(inOvalWidth, 0, std::max(0, inBox.x2 - inBox.x1))),
      fOvalHeight(std::clamp(inOvalHeight, 0, std::max(0, inBox.y2 - inBox.y1)))
{
}

RoundShape RoundShape::Inside(int inPenWidth, int inPenHeight) const
{
    const Box box = { fBox.x1 + inPenWidth, fBox.y1 + inPenHeight, fBox.x2 - inPenWidth,
                      fBox.y2 - inPenHeight };
    return RoundShape(box, fOvalWidth - 2 * inPenWidth, fOvalHeight - 2 * inPenHeight);
}

static bool IsInOval(int64_t dh, int64_t dv, int64_t width, int64_t height)
{
    using Wide = unsigned __int128;
    return (Wide)(dh * dh) * (Wide)(height * height) + (Wide)(dv * dv) * (Wide)(width * width) <=
           (Wide)(width * width) * (Wide)(height * height);
}

// How many pixels of this row of a corner are outside: an estimate, then exact steps.
int RoundShape::InsetOf(int inRow) const
{
    const int width = fOvalWidth, height = fOvalHeight;
    const int dv = 2 * inRow + 1 - height;
    const double half = width * std::sqrt(std::max(0.0, 1.0 - (double)dv * dv / ((double)height * height)));
    int inset = std::clamp((int)((width - half) / 2), 0, width / 2);
    while (inset > 0 && IsInOval(2 * (inset - 1) + 1 - width, dv, width, height))
        --inset;
    while (inset < width / 2 && !IsInOval(2 * inset + 1 - width, dv, width, height))
        ++inset;
    return inset;
}

void RoundShape::Row(int v, int* outLeft, int* outRight) const
{
    *outLeft = fBox.x1;
    *outRight = fBox.x2;
    if (v < fBox.y1 || v >= fBox.y2) {
        *outRight = fBox.x1;
        return;
    }
    const int fromEdge = std::min(v - fBox.y1, fBox.y2 - 1 - v);
    if (IsRectangle() || fromEdge >= fOvalHeight / 2)
        return;
    const int inset = InsetOf(fromEdge);
    *outLeft += inset;
    *outRight -= inset;
}

Region RoundShape::AsRegion() const
{
    if (IsRectangle())
        return Region(fBox);
    std::vector<Box> rows;
    for (int v = fBox.y1; v < fBox.y2; ++v) {
        Box row = { 0, v, 0, v + 1 };
        Row(v, &row.x1, &row.x2);
        if (!IsEmpty(row))
            rows.push_back(row);
    }
    return Region(rows);
}

// Opposite angles get opposite rays, and an angle the same one however it is written, to the last bit.
Wedge::Ray Wedge::RayAt(int inDegrees, int inWidth, int inHeight)
{
    const int degrees = (inDegrees % 360 + 360) % 360, quarter = degrees / 90;
    const double angle = degrees % 90 * 3.14159265358979323846 / 180.0;
    const int64_t shorter = std::llround(std::sin(angle) * 65536),
                  longer = std::llround(std::cos(angle) * 65536);
    const int64_t h[] = { shorter, longer, -shorter, -longer }, v[] = { -longer, shorter, longer, -shorter };
    return { h[quarter] * inWidth, v[quarter] * inHeight };
}

Wedge::Wedge(const Box& inBox, int inStartAngle, int inArcAngle) : fBox(inBox)
{
    const int start = inArcAngle < 0 ? inStartAngle + inArcAngle : inStartAngle;
    const int extent = std::abs(inArcAngle);
    fWhole = extent >= 360;
    fNone = extent == 0;
    fReflex = extent > 180;
    fStart = RayAt(start, inBox.x2 - inBox.x1, inBox.y2 - inBox.y1);
    fEnd = RayAt(start + extent, inBox.x2 - inBox.x1, inBox.y2 - inBox.y1);
}

static int64_t FloorOf(int64_t inNumerator, int64_t inDenominator)
{
    const int64_t quotient = inNumerator / inDenominator;
    return quotient - (inNumerator % inDenominator != 0 && (inNumerator < 0) != (inDenominator < 0));
}

// A pixel whose centre lies on the line counts as if it were a trifle further right and, on a level line,
// down: of two half-planes that meet, exactly one has it.
void Wedge::HalfLine(int64_t a, int64_t b, int v, int* ioLeft, int* ioRight) const
{
    const int64_t dv = 2 * (int64_t)v + 1 - (fBox.y1 + fBox.y2);
    const int64_t centre = fBox.x1 + fBox.x2 - 1; // dh = 2 * h - centre
    const bool hasLine = a > 0 || (a == 0 && b > 0);
    // a * (2 * h - centre) + b * dv >= 0, or > 0 without the line: 2 * a * h >= bound
    const int64_t bound = a * centre - b * dv + (hasLine ? 0 : 1);
    if (a == 0) {
        if (bound > 0)
            *ioRight = *ioLeft;
    } else if (a > 0) {
        const int64_t first = -FloorOf(-bound, 2 * a);
        *ioLeft = (int)std::clamp<int64_t>(first, *ioLeft, *ioRight);
    } else {
        const int64_t last = FloorOf(bound, 2 * a);
        *ioRight = (int)std::clamp<int64_t>(last + 1, *ioLeft, *ioRight);
    }
}

int Wedge::Cut(int v, int inLeft, int inRight, int outSpans[2][2]) const
{
    if (fNone || inLeft >= inRight)
        return 0;
    int left[2] = { inLeft, inLeft }, right[2] = { inRight, inRight };
    if (!fWhole) {
        // clockwise of the start: start x point; counter-clockwise of the end: point x end
        HalfLine(-fStart.v, fStart.h, v, &left[0], &right[0]);
        HalfLine(fEnd.v, -fEnd.h, v, &left[1], &right[1]);
    }
    if (!fReflex) {
        outSpans[0][0] = std::max(left[0], left[1]);
        outSpans[0][1] = std::min(right[0], right[1]);
        return outSpans[0][0] < outSpans[0][1];
    }
    const int first = left[0] <= left[1] ? 0 : 1;
    int count = 0;
    for (const int i : { first, 1 - first }) {
        if (left[i] >= right[i])
            continue;
        if (count && left[i] <= outSpans[0][1]) {
            outSpans[0][1] = std::max(outSpans[0][1], right[i]);
            continue;
        }
        outSpans[count][0] = left[i];
        outSpans[count++][1] = right[i];
    }
    return count;
}

} // namespace lampblack::quickdraw
