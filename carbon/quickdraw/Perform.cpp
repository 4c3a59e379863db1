// How a job is performed: the loop that fits it, where it may draw, and what happens within one map.
#include "Blit.h"
#include "CopyJob.h"

#include <cstring>

namespace lampblack::quickdraw {

static const Box kEverywhere = { -32768, -32768, 32767, 32767 };

Where WhereOf(const CopyJob& inJob, PortRecord* inCurrent, const Region* inMask)
{
    static Region both; // a region keeps its memory
    const Region* drawable = inCurrent ? &inCurrent->Drawable() : nullptr;
    Where where = { Intersection(inJob.ShownBox(), BoxOf(inJob.ToRect())), { &kEverywhere, 1 } };
    const Region* last = nullptr; // the one that is no rectangle
    for (const Region* region : { drawable, inMask }) {
        if (!region)
            continue;
        where.bounds = Intersection(where.bounds, region->Extents());
        if (region->IsRectangle() || region->IsEmpty())
            continue;
        if (last)
            both.Intersect(*last, *region);
        last = last ? &both : region;
    }
    if (last)
        where.boxes = last->Boxes();
    return where;
}

static uint8_t* PixelAt(const Surface& s, int h, int v)
{
    return s.RowAt(v) + (ptrdiff_t)(h - s.bounds.left) * (s.depth / 8);
}

static void ConvertBox(const CopyJob& inJob, ConvertRow inRow, const Box& inBox)
{
    const Surface &from = inJob.From(), &to = inJob.To();
    const int dh = inJob.FromRect().left - inJob.ToRect().left,
              dv = inJob.FromRect().top - inJob.ToRect().top;
    for (int v = inBox.y1; v < inBox.y2; ++v)
        inRow(from.RowAt(v + dv), inBox.x1 + dh - from.bounds.left, to.RowAt(v), inBox.x1 - to.bounds.left,
              inBox.x2 - inBox.x1, inJob.Conversion().Table());
}

static void ScaleRow(const CopyJob& inJob, int inSourceRow, int v, const Steps& inColumns, const Box& inBox)
{
    const Converter& converter = inJob.Conversion();
    if (inJob.To().depth == 32 && converter.IsSame())
        return ReadScaledPixels(inJob.From(), inSourceRow, inJob.FromRect().left, inColumns,
                                inBox.x2 - inBox.x1,
                                reinterpret_cast<uint32_t*>(PixelAt(inJob.To(), inBox.x1, v)));
    uint32_t values[kRowPiece];
    for (int h = inBox.x1; h < inBox.x2; h += kRowPiece) {
        const int count = std::min(kRowPiece, inBox.x2 - h);
        inJob.Read(inSourceRow, h, count, values);
        converter.Row(values, count);
        WritePixels(inJob.To(), v, h, count, values);
    }
}

// A plain copy into whole bytes: rows that show the same source row are copied from each other.
static void ScaleBox(const CopyJob& inJob, const Box& inBox)
{
    const size_t bytes = (size_t)(inBox.x2 - inBox.x1) * (size_t)(inJob.To().depth / 8);
    const Steps columns = inJob.Columns(inBox.x1);
    Steps rows = inJob.Rows(inBox.y1);
    int last = -1;
    for (int v = inBox.y1; v < inBox.y2; ++v, rows.Next()) {
        if (rows.At() == last)
            std::memcpy(PixelAt(inJob.To(), inBox.x1, v), PixelAt(inJob.To(), inBox.x1, v - 1), bytes);
        else
            ScaleRow(inJob, inJob.FromRect().top + rows.At(), v, columns, inBox);
        last = rows.At();
    }
}

static Box PerformApart(const CopyJob& inJob, const Where& inWhere)
{
    const bool isPlain = inJob.IsPlain();
    if (inJob.IsBlit()) {
        const int dh = inJob.FromRect().left - inJob.ToRect().left,
                  dv = inJob.FromRect().top - inJob.ToRect().top;
        return EachBox(inWhere, [&](const Box& box) { BlitBox(inJob.From(), inJob.To(), box, dh, dv); });
    }
    const ConvertRow row = isPlain && !inJob.Scales()
                               ? ConvertRowOf(inJob.From().depth, inJob.To().depth, inJob.Conversion())
                               : nullptr;
    if (row)
        return EachBox(inWhere, [&](const Box& box) { ConvertBox(inJob, row, box); });
    if (isPlain && inJob.Scales() && inJob.To().depth >= 8)
        return EachBox(inWhere, [&](const Box& box) { ScaleBox(inJob, box); });
    EachConvertedRow(inJob, inWhere, [&](int v, int h, int count, const uint32_t* converted) {
        inJob.MeetThere(converted, v, h, count);
    });
    return EachBox(inWhere, [](const Box&) {});
}

bool ShareMemory(const Surface& a, const Surface& b)
{
    const auto end = [](const Surface& s) {
        return s.base + (ptrdiff_t)std::max(0, s.bounds.bottom - s.bounds.top) * s.rowBytes;
    };
    return a.base < end(b) && b.base < end(a);
}

// A plain copy of one rectangle within a map reads each pixel before it is written.
static bool IsSafeInPlace(const CopyJob& inJob, const Where& inWhere)
{
    const Surface &from = inJob.From(), &to = inJob.To();
    return inJob.IsBlit() && to.depth >= 8 && inWhere.boxes.size() == 1 && from.base == to.base &&
           from.rowBytes == to.rowBytes && EqualRect(&from.bounds, &to.bounds);
}

Surface SetAside(const Surface& inSurface, int inTop, int inBottom, std::vector<uint8_t>& outStorage)
{
    Surface aside = inSurface;
    const int top = std::max<int>(inTop, aside.bounds.top),
              bottom = std::max(top, std::min<int>(inBottom, aside.bounds.bottom));
    const uint8_t* first = aside.RowAt(top);
    outStorage.assign(first, first + (ptrdiff_t)(bottom - top) * aside.rowBytes);
    aside.base = outStorage.data();
    aside.bounds.top = (short)top;
    aside.bounds.bottom = (short)bottom;
    return aside;
}

void SetSourceAside(CopyJob& ioJob)
{
    static std::vector<uint8_t> storage;
    ioJob.ReadFrom(SetAside(ioJob.From(), ioJob.FromRect().top, ioJob.FromRect().bottom, storage));
}

Box Perform(CopyJob& ioJob, const Where& inWhere)
{
    if (IsEmpty(inWhere.bounds) || inWhere.boxes.empty())
        return { 0, 0, 0, 0 };
    if (ShareMemory(ioJob.From(), ioJob.To()) && !IsSafeInPlace(ioJob, inWhere))
        SetSourceAside(ioJob);
    return PerformApart(ioJob, inWhere);
}

Box CopySurface(const Surface& from, const Surface& to, const Rect& fromRect, const Rect& toRect, short mode)
{
    if (IsEmpty(fromRect) || IsEmpty(toRect) || !from.base || !to.base)
        return { 0, 0, 0, 0 };
    CopyJob job(from, to, fromRect, toRect, mode, {});
    return Perform(job, WhereOf(job, nullptr, nullptr));
}

} // namespace lampblack::quickdraw
