#include "RegionBytes.h"

#include <foundation/BigEndian.h>

#include <algorithm>

namespace lampblack::quickdraw {

static constexpr size_t kHeader = 10;      // the size and the bounds
static constexpr int kEnd = 0x7FFF;        // of a row, and of all rows
static constexpr size_t kMaxSize = 0xFFFE; // what a size field can say, and even
static constexpr size_t kMaxBoxes = 1000000;

using Columns = std::vector<int>;

// The columns where exactly one of two sorted rows changes.
static void Toggle(const Columns& inRow, const Columns& inChanges, Columns& outRow)
{
    outRow.clear();
    std::set_symmetric_difference(inRow.begin(), inRow.end(), inChanges.begin(), inChanges.end(),
                                  std::back_inserter(outRow));
}

// A column named twice changes nothing.
static void Normalize(Columns& ioRow)
{
    if (!std::is_sorted(ioRow.begin(), ioRow.end()))
        std::sort(ioRow.begin(), ioRow.end());
    size_t kept = 0;
    for (size_t i = 0; i < ioRow.size(); ++i) {
        if (kept && ioRow[kept - 1] == ioRow[i])
            --kept;
        else
            ioRow[kept++] = ioRow[i];
    }
    ioRow.resize(kept);
}

// The rows of one region, while they are read.
class RowReader {
public:
    RowReader(foundation::Bytes inRows, const Box& inBounds) : fReader(inRows), fBounds(inBounds) {}

    bool Read(Region* out)
    {
        while (fReader.Remaining() >= 2) {
            const int row = fReader.S16();
            if (row == kEnd)
                break;
            if (fStarted && row <= fRow)
                return false;
            if (!EmitTo(row))
                return false;
            fRow = row;
            fStarted = true;
            ReadChanges();
        }
        if (!EmitTo(fBounds.y2))
            return false;
        *out = Region(fBoxes);
        return true;
    }

private:
    void ReadChanges()
    {
        fChanges.clear();
        while (fReader.Remaining() >= 2) {
            const int column = fReader.S16();
            if (column == kEnd)
                break;
            fChanges.push_back(column);
        }
        Normalize(fChanges);
        Toggle(fColumns, fChanges, fNext);
        fColumns.swap(fNext);
    }

    // What the row in force covers down to another one. Answers false when it is too much.
    bool EmitTo(int inRow)
    {
        if (fBoxes.size() + fColumns.size() / 2 > kMaxBoxes)
            return false;
        for (size_t i = 0; i < fColumns.size(); i += 2) {
            const int right = i + 1 < fColumns.size() ? fColumns[i + 1] : fBounds.x2;
            const Box box = Intersection({ fColumns[i], fRow, right, inRow }, fBounds);
            if (!IsEmpty(box))
                fBoxes.push_back(box);
        }
        return true;
    }

    foundation::BigEndianReader fReader;
    Box fBounds;
    Columns fColumns, fChanges, fNext;
    std::vector<Box> fBoxes;
    int fRow = 0;
    bool fStarted = false;
};

bool ReadRegionBytes(std::span<const uint8_t> inBytes, Region* out, size_t* outUsed)
{
    foundation::BigEndianReader reader(inBytes);
    const size_t size = reader.U16();
    const Box bounds = BoxOf(reader.ReadRect());
    if (!reader.Ok() || size < kHeader || size % 2 || size > inBytes.size())
        return false;
    if (outUsed)
        *outUsed = size;
    if (size == kHeader || IsEmpty(bounds)) {
        out->SetBox(bounds);
        return true;
    }
    return RowReader(inBytes.subspan(kHeader, size - kHeader), bounds).Read(out);
}

// The bytes of a region, row by row.
class RowWriter {
public:
    void Row(int y, const Columns& inRow)
    {
        Toggle(fRow, inRow, fChanges);
        if (fChanges.empty())
            return;
        Put(y);
        for (const int column : fChanges)
            Put(column);
        Put(kEnd);
        fRow = inRow;
    }
    void Put(int inValue)
    {
        fBytes.push_back((uint8_t)(inValue >> 8));
        fBytes.push_back((uint8_t)inValue);
    }
    void PutRect(const Rect& r)
    {
        for (const int value : { r.top, r.left, r.bottom, r.right })
            Put(value);
    }

    std::vector<uint8_t> fBytes;

private:
    Columns fRow, fChanges;
};

static Box Representable(const Box& b)
{
    const auto clamp = [](int value) { return std::clamp(value, -32768, kEnd - 1); };
    return { clamp(b.x1), clamp(b.y1), clamp(b.x2), clamp(b.y2) };
}

static void WriteRows(const std::span<const Box> inBoxes, RowWriter& ioWriter)
{
    Columns row;
    for (size_t i = 0; i < inBoxes.size() && ioWriter.fBytes.size() <= kMaxSize;) {
        const Box first = Representable(inBoxes[i]);
        const int top = inBoxes[i].y1, bottom = inBoxes[i].y2;
        for (row.clear(); i < inBoxes.size() && inBoxes[i].y1 == top; ++i) {
            const Box box = Representable(inBoxes[i]);
            row.push_back(box.x1);
            row.push_back(box.x2);
        }
        Normalize(row);
        if (first.y1 >= first.y2)
            continue;
        ioWriter.Row(first.y1, row);
        if (i == inBoxes.size() || inBoxes[i].y1 != bottom)
            ioWriter.Row(first.y2, {});
    }
}

std::vector<uint8_t> RegionBytes(const Region& inRegion)
{
    RowWriter writer;
    writer.Put((int)kHeader);
    if (inRegion.IsEmpty() || inRegion.IsRectangle()) {
        writer.PutRect(inRegion.IsEmpty() ? Rect{ 0, 0, 0, 0 } : RectOf(inRegion.Extents()));
        return std::move(writer.fBytes);
    }
    writer.PutRect(RectOf(Representable(inRegion.Extents())));
    WriteRows(inRegion.Boxes(), writer);
    writer.Put(kEnd);
    const size_t size = writer.fBytes.size();
    if (size > kMaxSize)
        return {};
    foundation::StoreBE16(writer.fBytes.data(), (uint16_t)size);
    return std::move(writer.fBytes);
}

} // namespace lampblack::quickdraw
