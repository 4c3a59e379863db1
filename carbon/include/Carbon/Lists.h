// The List Manager: a grid of cells, each holding some bytes of Mac Roman text, in part of a window.
// Begin at LNew; LClick and LUpdate serve the window's events.
#ifndef LAMPBLACK_CARBON_LISTS_H
#define LAMPBLACK_CARBON_LISTS_H

#include <Carbon/Events.h>
#include <Carbon/MacTypes.h>

typedef Point Cell;      // h is the column, v the row
typedef Rect ListBounds; // half-open, in cells

enum { lDrawingModeOffBit = 3, lDrawingModeOff = 8, lDoVAutoscroll = 2, lDoHAutoscroll = 1 };

// Selection flags; together they say what a click, shift and command do. 0: the usual rules.
enum {
    lOnlyOne = -128,
    lExtendDrag = 64,
    lNoDisjoint = 32,
    lNoExtend = 16,
    lNoRect = 8,
    lUseSense = 4,
    lNoNilHilite = 2
};

LAMPBLACK_BEGIN_C

// LNew
//
// A new list in a window's port.
//
// Units:      rView is local and excludes the scroll bars, which lie 15 pixels wide along its right and
//             bottom. A cell size of 0 in either direction is computed: the whole width, the height of a line
//             of text.
// Ownership:  the caller's; LDispose. The scroll bars belong to the list.
// Errors:     NULL for a bad window or rectangle. theProc must be 0, the text list.
ListHandle LNew(const Rect* rView, const ListBounds* dataBounds, Point cSize, short theProc,
                WindowRef theWindow, Boolean drawIt, Boolean hasGrow, Boolean scrollHoriz,
                Boolean scrollVert);
void LDispose(ListHandle list);

// LAddColumn, LAddRow
//
// Insert empty ones before the given number; past the end they are added there. The number of the first new
// one.
short LAddColumn(short count, short colNum, ListHandle list);
short LAddRow(short count, short rowNum, ListHandle list);

// LDelColumn, LDelRow
//
// Delete from the given number on; a count of 0 deletes all.
void LDelColumn(short count, short colNum, ListHandle list);
void LDelRow(short count, short rowNum, ListHandle list);

// Cell data: at most 32,767 bytes a cell. LGetCell's length says how much fits, then how much was there.
void LSetCell(const void* dataPtr, short dataLen, Cell theCell, ListHandle list);
void LAddToCell(const void* dataPtr, short dataLen, Cell theCell, ListHandle list);
void LClrCell(Cell theCell, ListHandle list);
void LGetCell(void* dataPtr, short* dataLen, Cell theCell, ListHandle list);

// Selection. LGetSelect with next finds the first selected cell at or after theCell, row by row.
Boolean LGetSelect(Boolean next, Cell* theCell, ListHandle list);
void LSetSelect(Boolean setIt, Cell theCell, ListHandle list);
Cell LLastClick(ListHandle list);
Boolean LNextCell(Boolean hNext, Boolean vNext, Cell* theCell, ListHandle list);

// Geometry. LRect gives an empty rectangle for a cell that is not in the list.
void LRect(Rect* cellRect, Cell theCell, ListHandle list);
void LSize(short listWidth, short listHeight, ListHandle list);
void LCellSize(Point cSize, ListHandle list);
void LScroll(short dCols, short dRows, ListHandle list);
void LAutoScroll(ListHandle list);

// Drawing
void LSetDrawingMode(Boolean drawIt, ListHandle list);
void LDraw(Cell theCell, ListHandle list);
void LUpdate(RgnHandle theRgn, ListHandle list);
void LActivate(Boolean act, ListHandle list);

// LClick
//
// Tracks a press at a point of the port in the cells or the scroll bars, and answers whether it was the
// second of a double click on one cell.
Boolean LClick(Point pt, EventModifiers modifiers, ListHandle list);

GrafPtr GetListPort(ListHandle list);
Rect* GetListViewBounds(ListHandle list, Rect* view);
ListBounds* GetListDataBounds(ListHandle list, ListBounds* bounds);
ListBounds* GetListVisibleCells(ListHandle list, ListBounds* visible);
Point* GetListCellSize(ListHandle list, Point* size);
Point* GetListCellIndent(ListHandle list, Point* indent);
void SetListCellIndent(ListHandle list, const Point* indent);
ControlRef GetListVerticalScrollBar(ListHandle list);
ControlRef GetListHorizontalScrollBar(ListHandle list);
Boolean GetListActive(ListHandle list);
OptionBits GetListSelectionFlags(ListHandle list);
void SetListSelectionFlags(ListHandle list, OptionBits selectionFlags);
SInt32 GetListRefCon(ListHandle list);
void SetListRefCon(ListHandle list, SInt32 refCon);

LAMPBLACK_END_C

#endif
