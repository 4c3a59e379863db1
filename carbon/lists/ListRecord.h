// The data behind a ListRef, and the arithmetic between cells and pixels.
#ifndef LAMPBLACK_LISTS_LISTRECORD_H
#define LAMPBLACK_LISTS_LISTRECORD_H

#include <Carbon/Controls.h>
#include <Carbon/Lists.h>
#include <Carbon/Quickdraw.h>

#include <string>
#include <vector>

#include "memory/ReferenceTable.h"

namespace lampblack::lists {

// The scroll bar's property that holds its list.
inline constexpr PropertyCreator kListCreator = 'lblk';
inline constexpr PropertyTag kListTag = 'list';

struct CellRecord {
    std::string fBytes;
    bool fIsSelected = false;
};

struct ListRecord {
    CGrafPtr fPort = nullptr;
    WindowRef fWindow = nullptr;
    Rect fView = {};
    ListBounds fData = {};
    Point fOrigin = { 0, 0 }; // the cell at the view's top left
    Point fCellSize = { 0, 0 };
    Point fIndent = { 0, 0 };
    std::vector<CellRecord> fCells; // row by row
    ControlRef fVertical = nullptr, fHorizontal = nullptr;
    bool fIsDrawing = false;
    bool fIsActive = true;
    SInt8 fSelectionFlags = 0;
    SInt32 fRefCon = 0;
    Cell fLastClick = { -1, -1 };
    EventTime fLastClickTime = -1000;

    int Columns() const { return fData.right - fData.left; }
    int Rows() const { return fData.bottom - fData.top; }
    bool Has(Cell inCell) const;
    CellRecord* At(Cell inCell); // null when not in the list
    Rect BoundsOf(Cell inCell) const;
    Cell CellAt(Point inLocal) const; // the nearest cell of the list
    ListBounds Visible() const;       // cells at least partly in the view
    Point WholeCellsInView() const;   // at least 1 by 1

    void InsertRows(int inCount, int inBefore);
    void InsertColumns(int inCount, int inBefore);
    void DeleteRows(int inCount, int inFrom);
    void DeleteColumns(int inCount, int inFrom);
    void ClampOrigin();
};

memory::ReferenceTable<ListRecord>& Lists();
inline ListRecord* Find(ListHandle inList)
{
    return Lists().Find(inList);
}
inline ListHandle ReferenceOf(ListRecord* inList)
{
    return reinterpret_cast<ListHandle>(inList);
}

// Drawing: nothing happens while the list's drawing mode is off.
void DrawCell(ListRecord&, Cell);
void DrawCells(ListRecord&, const ListBounds&);
void DrawAll(ListRecord&);
void UpdateScrollBars(ListRecord&);
void ScrollTo(ListRecord&, Point inOrigin);
void RevealCell(ListRecord&, Cell);

// Selects one cell; draws it if that changes it.
void SelectCell(ListRecord&, Cell, bool inIsSelected);
void SelectOnly(ListRecord&, Cell);

// Tracks a press in the cells; answers whether it was a double click.
bool TrackCells(ListHandle, Point inLocal, EventModifiers);
void TrackScrollBar(ListHandle, ControlRef, Point inLocal);

} // namespace lampblack::lists

#endif
