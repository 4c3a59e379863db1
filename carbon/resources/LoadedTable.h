// Handles by type and ID: it holds no more than handles of resources that are loaded, so that a look-up that finds
// one needs nothing else.
//
// Each type has a row, and that the handles of a range of IDs, each at its place: what is numbered in a row, as
// resources mostly are, is found without a search. IDs that lie too far off for their number are not listed.
#ifndef LAMPBLACK_RESOURCES_LOADEDTABLE_H
#define LAMPBLACK_RESOURCES_LOADEDTABLE_H

#include <Carbon/MacTypes.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <vector>

namespace lampblack::resources {

struct LoadedRow {
    OSType type = 0;
    SInt32 first = 0;          // ID
    UInt32 count = 0;          // of IDs; 0: the row is empty
    UInt32 index = 0;          // of the range that is its own
    Handle* handles = nullptr; // count; null: not loaded

    bool Covers(SInt16 inID) const { return (UInt32)(inID - first) < count; }
    Handle At(SInt16 inID) const { return Covers(inID) ? handles[inID - first] : nullptr; }
};

// What a look-up reads of a table, which keeps it: open addressing, linear probing.
struct LoadedView {
    static constexpr LoadedRow kNothing[2] = {};

    const LoadedRow* rows = kNothing;
    int shift = 31; // 32 less the bits of a row's number

    size_t HomeOf(OSType inType) const { return (inType * 0x9E3779B1u) >> shift; }

    // The type's row, or the empty one where it would be.
    size_t RowOf(OSType inType) const
    {
        const size_t mask = ((size_t)1 << (32 - shift)) - 1;
        size_t row = HomeOf(inType);
        while (rows[row].count > 0 && rows[row].type != inType)
            row = (row + 1) & mask;
        return row;
    }

    Handle Find(OSType inType, SInt16 inID) const { return rows[RowOf(inType)].At(inID); }

    // Looks no farther than the first row, where most types are.
    Handle FindAtHome(OSType inType, SInt16 inID) const
    {
        const LoadedRow& row = rows[HomeOf(inType)];
        return row.type == inType ? row.At(inID) : nullptr;
    }
};

class LoadedTable {
public:
    LoadedTable() = default;
    LoadedTable(const LoadedTable&) = delete;

    LoadedView View() const { return fView; } // lasts until something is inserted or cleared
    bool IsEmpty() const { return fCount == 0; }
    Handle Find(OSType inType, SInt16 inID) const { return fView.Find(inType, inID); }

    // False: the ID is not listed.
    bool Insert(OSType inType, SInt16 inID, Handle inHandle)
    {
        LoadedRow* row = FindRow(inType);
        if (!row)
            row = AddRow(inType, inID);
        if (!row->Covers(inID) && !Widen(row, inID))
            return false;
        Handle& place = row->handles[inID - row->first];
        const size_t added = place ? 0 : 1;
        place = inHandle;
        fRanges[row->index].loaded += added;
        fCount += added;
        return true;
    }

    void Erase(OSType inType, SInt16 inID)
    {
        LoadedRow* row = FindRow(inType);
        if (!row || !row->At(inID))
            return;
        row->handles[inID - row->first] = nullptr;
        --fRanges[row->index].loaded;
        --fCount;
    }

    void Clear()
    {
        fView = {};
        fRows.clear();
        fRanges.clear();
        fCount = 0;
    }

private:
    struct Range {
        std::vector<Handle> handles;
        size_t loaded = 0;
    };

    LoadedRow* FindRow(OSType inType)
    {
        const size_t row = fView.RowOf(inType);
        return fView.rows[row].count > 0 ? &fRows[row] : nullptr;
    }

    // A quarter of the rows is taken, so that most types are found at once.
    LoadedRow* AddRow(OSType inType, SInt16 inID)
    {
        if ((fRanges.size() + 1) * 4 > fRows.size())
            Grow();
        fRanges.push_back({ std::vector<Handle>(8), 0 });
        LoadedRow& row = fRows[fView.RowOf(inType)];
        const SInt32 first = std::min<SInt32>(inID, 0x7FFF - 7);
        row = { inType, first, 8, (UInt32)fRanges.size() - 1, fRanges.back().handles.data() };
        return &row;
    }

    void Grow()
    {
        std::vector<LoadedRow> rows(std::max<size_t>(8, fRows.size() * 2));
        const LoadedView view = { rows.data(), 32 - std::countr_zero(rows.size()) };
        for (const LoadedRow& row : fRows)
            if (row.count > 0)
                rows[view.RowOf(row.type)] = row;
        fRows.swap(rows);
        fView = view;
    }

    // To the new ID, with room beyond for those that will follow it.
    bool Widen(LoadedRow* ioRow, SInt16 inID)
    {
        constexpr SInt32 kLeastWidth = 256, kWidthOfOne = 16;
        Range& range = fRanges[ioRow->index];
        SInt32 first = std::min<SInt32>(ioRow->first, inID);
        SInt32 end = std::max<SInt32>(ioRow->first + (SInt32)ioRow->count, inID + 1);
        const SInt32 width = end - first;
        if (width > kLeastWidth + kWidthOfOne * (SInt32)range.loaded)
            return false;
        if (first < ioRow->first)
            first = std::max(first - width / 2, -0x8000);
        else
            end = std::min(end + width / 2, 0x8000);
        std::vector<Handle> wider((size_t)(end - first));
        std::copy(range.handles.begin(), range.handles.end(), wider.begin() + (ioRow->first - first));
        range.handles.swap(wider);
        ioRow->first = first;
        ioRow->count = (UInt32)range.handles.size();
        ioRow->handles = range.handles.data();
        return true;
    }

    LoadedView fView; // of the rows
    std::vector<LoadedRow> fRows;
    std::vector<Range> fRanges;
    size_t fCount = 0;
};

} // namespace lampblack::resources

#endif
