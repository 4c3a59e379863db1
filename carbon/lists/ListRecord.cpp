// Cells and their places.
#include "lists/ListRecord.h"

#include <algorithm>

namespace lampblack::lists {

memory::ReferenceTable<ListRecord>& Lists()
{
    static auto* const table = new memory::ReferenceTable<ListRecord>; // alive for exit handlers
    return *table;
}

bool ListRecord::Has(Cell inCell) const
{
    return inCell.h >= fData.left && inCell.h < fData.right && inCell.v >= fData.top &&
           inCell.v < fData.bottom;
}

CellRecord* ListRecord::At(Cell inCell)
{
    if (!Has(inCell))
        return nullptr;
    return &fCells[static_cast<size_t>(inCell.v - fData.top) * Columns() + (inCell.h - fData.left)];
}

Rect ListRecord::BoundsOf(Cell inCell) const
{
    const int left = fView.left + (inCell.h - fOrigin.h) * fCellSize.h;
    const int top = fView.top + (inCell.v - fOrigin.v) * fCellSize.v;
    const auto clamp = [](int inValue) { return static_cast<short>(std::clamp(inValue, -32768, 32767)); };
    return { clamp(top), clamp(left), clamp(top + fCellSize.v), clamp(left + fCellSize.h) };
}

Cell ListRecord::CellAt(Point inLocal) const
{
    const auto index = [](int inDistance, int inSize) {
        return inDistance < 0 ? -1 - (-1 - inDistance) / inSize : inDistance / inSize;
    };
    const int column = fOrigin.h + index(inLocal.h - fView.left, fCellSize.h);
    const int row = fOrigin.v + index(inLocal.v - fView.top, fCellSize.v);
    return {
        static_cast<short>(std::clamp<int>(row, fData.top, std::max(fData.top, short(fData.bottom - 1)))),
        static_cast<short>(std::clamp<int>(column, fData.left, std::max(fData.left, short(fData.right - 1))))
    };
}

ListBounds ListRecord::Visible() const
{
    const int columns = (fView.right - fView.left + fCellSize.h - 1) / fCellSize.h;
    const int rows = (fView.bottom - fView.top + fCellSize.v - 1) / fCellSize.v;
    return { fOrigin.v, fOrigin.h, static_cast<short>(std::min<int>(fOrigin.v + rows, fData.bottom)),
             static_cast<short>(std::min<int>(fOrigin.h + columns, fData.right)) };
}

Point ListRecord::WholeCellsInView() const
{
    return { static_cast<short>(std::max(1, (fView.bottom - fView.top) / fCellSize.v)),
             static_cast<short>(std::max(1, (fView.right - fView.left) / fCellSize.h)) };
}

void ListRecord::InsertRows(int inCount, int inBefore)
{
    const size_t at = static_cast<size_t>(inBefore - fData.top) * Columns();
    fCells.insert(fCells.begin() + static_cast<ptrdiff_t>(at), static_cast<size_t>(inCount) * Columns(), {});
    fData.bottom = static_cast<short>(fData.bottom + inCount);
}

void ListRecord::InsertColumns(int inCount, int inBefore)
{
    const int columns = Columns(), at = inBefore - fData.left;
    std::vector<CellRecord> cells(static_cast<size_t>(columns + inCount) * Rows());
    for (int row = 0; row < Rows(); ++row)
        for (int column = 0; column < columns; ++column)
            cells[static_cast<size_t>(row) * (columns + inCount) + column + (column >= at ? inCount : 0)] =
                std::move(fCells[static_cast<size_t>(row) * columns + column]);
    fCells.swap(cells);
    fData.right = static_cast<short>(fData.right + inCount);
}

void ListRecord::DeleteRows(int inCount, int inFrom)
{
    const ptrdiff_t columns = Columns(), from = (inFrom - fData.top) * columns;
    fCells.erase(fCells.begin() + from, fCells.begin() + from + inCount * columns);
    fData.bottom = static_cast<short>(fData.bottom - inCount);
    ClampOrigin();
}

void ListRecord::DeleteColumns(int inCount, int inFrom)
{
    const int columns = Columns(), from = inFrom - fData.left;
    size_t index = 0;
    std::erase_if(fCells, [&](const CellRecord&) {
        const int column = static_cast<int>(index++ % static_cast<size_t>(columns));
        return column >= from && column < from + inCount;
    });
    fData.right = static_cast<short>(fData.right - inCount);
    ClampOrigin();
}

void ListRecord::ClampOrigin()
{
    const Point whole = WholeCellsInView();
    const auto clamp = [](int inOrigin, int inFirst, int inEnd, int inWhole) {
        return static_cast<short>(std::clamp(inOrigin, inFirst, std::max(inFirst, inEnd - inWhole)));
    };
    fOrigin.h = clamp(fOrigin.h, fData.left, fData.right, whole.h);
    fOrigin.v = clamp(fOrigin.v, fData.top, fData.bottom, whole.v);
}

} // namespace lampblack::lists
