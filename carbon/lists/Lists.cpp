// The public entries of the List Manager: each checks its reference and calls the files beside.
#include <Carbon/Lists.h>

#include <Carbon/MacWindows.h>

#include <algorithm>
#include <cstring>

#include "lists/ListRecord.h"

using namespace lampblack::lists;

namespace {

constexpr short kBarWidth = 15;
constexpr size_t kMaximumCellBytes = 32767;
constexpr int kMaximumCells =
    1 << 20; // far past what a short can address usefully, far below what memory holds

Point DefaultCellSize(const Rect& inView, Point inSize)
{
    FontInfo font;
    GetFontInfo(&font);
    if (inSize.h <= 0)
        inSize.h = static_cast<short>(std::max(1, inView.right - inView.left));
    if (inSize.v <= 0)
        inSize.v = static_cast<short>(std::max(1, font.ascent + font.descent + font.leading));
    return inSize;
}

ControlRef NewScrollBar(ListHandle inList, WindowRef inWindow, const Rect& inBounds)
{
    constexpr SInt16 kLiveScrollBar = 386;
    const ControlRef bar = NewControl(inWindow, &inBounds, reinterpret_cast<ConstStr255Param>(""), true, 0, 0,
                                      0, kLiveScrollBar, 0);
    if (bar)
        SetControlProperty(bar, kListCreator, kListTag, sizeof inList, &inList);
    return bar;
}

Rect VerticalBarBounds(const Rect& inView)
{
    return { static_cast<short>(inView.top - 1), inView.right, static_cast<short>(inView.bottom + 1),
             static_cast<short>(inView.right + kBarWidth + 1) };
}

Rect HorizontalBarBounds(const Rect& inView)
{
    return { inView.bottom, static_cast<short>(inView.left - 1),
             static_cast<short>(inView.bottom + kBarWidth + 1), static_cast<short>(inView.right + 1) };
}

void Refresh(ListRecord& ioList)
{
    UpdateScrollBars(ioList);
    DrawAll(ioList);
}

// How many lines can be added: the counts are shorts and the cells are bounded.
int Addable(int inCount, int inEnd, int inAcross, size_t inCells)
{
    const int byCells = inAcross > 0 ? (kMaximumCells - static_cast<int>(inCells)) / inAcross : 32767;
    return std::clamp(inCount, 0, std::max(0, std::min(32767 - inEnd, byCells)));
}

} // namespace

ListHandle LNew(const Rect* rView, const ListBounds* dataBounds, Point cSize, short theProc,
                WindowRef theWindow, Boolean drawIt, Boolean, Boolean scrollHoriz, Boolean scrollVert)
{
    const CGrafPtr port = GetWindowPort(theWindow);
    if (!rView || !dataBounds || !port || theProc != 0 || EmptyRect(rView) ||
        dataBounds->right < dataBounds->left || dataBounds->bottom < dataBounds->top)
        return nullptr;
    ListRecord* const list = Lists().New();
    list->fPort = port;
    list->fWindow = theWindow;
    list->fView = *rView;
    CGrafPtr saved = nullptr;
    GetPort(&saved);
    SetPort(port);
    list->fCellSize = DefaultCellSize(*rView, cSize);
    FontInfo font;
    GetFontInfo(&font);
    SetPort(saved);
    list->fIndent = { font.ascent, 4 };
    list->fData = { dataBounds->top, dataBounds->left, dataBounds->top, dataBounds->left };
    list->fOrigin = { dataBounds->top, dataBounds->left };
    const ListHandle reference = ReferenceOf(list);
    LAddColumn(static_cast<short>(dataBounds->right - dataBounds->left), dataBounds->left, reference);
    LAddRow(static_cast<short>(dataBounds->bottom - dataBounds->top), dataBounds->top, reference);
    if (scrollVert)
        list->fVertical = NewScrollBar(reference, theWindow, VerticalBarBounds(*rView));
    if (scrollHoriz)
        list->fHorizontal = NewScrollBar(reference, theWindow, HorizontalBarBounds(*rView));
    list->fIsDrawing = drawIt;
    UpdateScrollBars(*list);
    return reference;
}

void LDispose(ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record)
        return;
    const ControlRef bars[] = { record->fVertical, record->fHorizontal };
    Lists().Delete(record);
    for (const ControlRef bar : bars)
        if (bar)
            DisposeControl(bar);
}

short LAddColumn(short count, short colNum, ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record)
        return 0;
    const int at = std::clamp<int>(colNum, record->fData.left, record->fData.right);
    const int added = Addable(count, record->fData.right, record->Rows(), record->fCells.size());
    record->InsertColumns(added, at);
    Refresh(*record);
    return static_cast<short>(at);
}

short LAddRow(short count, short rowNum, ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record)
        return 0;
    const int at = std::clamp<int>(rowNum, record->fData.top, record->fData.bottom);
    const int added = Addable(count, record->fData.bottom, record->Columns(), record->fCells.size());
    record->InsertRows(added, at);
    Refresh(*record);
    return static_cast<short>(at);
}

void LDelColumn(short count, short colNum, ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record || (count != 0 && (colNum < record->fData.left || colNum >= record->fData.right)))
        return;
    const int from = count == 0 ? record->fData.left : colNum;
    const int most = record->fData.right - from;
    record->DeleteColumns(count == 0 ? most : std::clamp<int>(count, 0, most), from);
    Refresh(*record);
}

void LDelRow(short count, short rowNum, ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record || (count != 0 && (rowNum < record->fData.top || rowNum >= record->fData.bottom)))
        return;
    const int from = count == 0 ? record->fData.top : rowNum;
    const int most = record->fData.bottom - from;
    record->DeleteRows(count == 0 ? most : std::clamp<int>(count, 0, most), from);
    Refresh(*record);
}

void LSetCell(const void* dataPtr, short dataLen, Cell theCell, ListHandle list)
{
    ListRecord* const record = Find(list);
    CellRecord* const cell = record ? record->At(theCell) : nullptr;
    if (!cell || dataLen < 0 || (dataLen > 0 && !dataPtr))
        return;
    cell->fBytes.assign(static_cast<const char*>(dataPtr), static_cast<size_t>(dataLen));
    DrawCell(*record, theCell);
}

void LAddToCell(const void* dataPtr, short dataLen, Cell theCell, ListHandle list)
{
    ListRecord* const record = Find(list);
    CellRecord* const cell = record ? record->At(theCell) : nullptr;
    if (!cell || dataLen <= 0 || !dataPtr ||
        cell->fBytes.size() + static_cast<size_t>(dataLen) > kMaximumCellBytes)
        return;
    cell->fBytes.append(static_cast<const char*>(dataPtr), static_cast<size_t>(dataLen));
    DrawCell(*record, theCell);
}

void LClrCell(Cell theCell, ListHandle list)
{
    LSetCell("", 0, theCell, list);
}

void LGetCell(void* dataPtr, short* dataLen, Cell theCell, ListHandle list)
{
    if (!dataLen)
        return;
    ListRecord* const record = Find(list);
    CellRecord* const cell = record ? record->At(theCell) : nullptr;
    const short length = cell ? static_cast<short>(cell->fBytes.size()) : 0;
    if (cell && dataPtr && *dataLen > 0)
        std::memcpy(dataPtr, cell->fBytes.data(), static_cast<size_t>(std::min(length, *dataLen)));
    *dataLen = length;
}

Boolean LGetSelect(Boolean next, Cell* theCell, ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record || !theCell)
        return false;
    if (!next) {
        const CellRecord* const cell = record->At(*theCell);
        return cell && cell->fIsSelected;
    }
    for (Cell cell = *theCell; record->Has(cell);) {
        if (record->At(cell)->fIsSelected) {
            *theCell = cell;
            return true;
        }
        if (!LNextCell(true, true, &cell, list))
            break;
    }
    return false;
}

void LSetSelect(Boolean setIt, Cell theCell, ListHandle list)
{
    if (ListRecord* const record = Find(list))
        SelectCell(*record, theCell, setIt);
}

Cell LLastClick(ListHandle list)
{
    const ListRecord* const record = Find(list);
    return record ? record->fLastClick : Cell{ -1, -1 };
}

Boolean LNextCell(Boolean hNext, Boolean vNext, Cell* theCell, ListHandle list)
{
    const ListRecord* const record = Find(list);
    if (!record || !theCell)
        return false;
    Cell next = *theCell;
    if (hNext && ++next.h >= record->fData.right && vNext) {
        next.h = record->fData.left;
        ++next.v;
    } else if (!hNext && vNext) {
        ++next.v;
    }
    if (!(hNext || vNext) || !record->Has(next))
        return false;
    *theCell = next;
    return true;
}

void LRect(Rect* cellRect, Cell theCell, ListHandle list)
{
    if (!cellRect)
        return;
    const ListRecord* const record = Find(list);
    *cellRect = record && record->Has(theCell) ? record->BoundsOf(theCell) : Rect{};
}

void LSize(short listWidth, short listHeight, ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record || listWidth <= 0 || listHeight <= 0)
        return;
    record->fView.right = static_cast<short>(record->fView.left + listWidth);
    record->fView.bottom = static_cast<short>(record->fView.top + listHeight);
    const Rect vertical = VerticalBarBounds(record->fView), horizontal = HorizontalBarBounds(record->fView);
    if (record->fVertical)
        SetControlBounds(record->fVertical, &vertical);
    if (record->fHorizontal)
        SetControlBounds(record->fHorizontal, &horizontal);
    record->ClampOrigin();
    Refresh(*record);
}

void LCellSize(Point cSize, ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record)
        return;
    CGrafPtr saved = nullptr;
    GetPort(&saved);
    SetPort(record->fPort);
    record->fCellSize = DefaultCellSize(record->fView, cSize);
    SetPort(saved);
    record->ClampOrigin();
    Refresh(*record);
}

void LScroll(short dCols, short dRows, ListHandle list)
{
    if (ListRecord* const record = Find(list)) {
        const auto move = [](int inOrigin, int inDelta) {
            return static_cast<short>(std::clamp(inOrigin + inDelta, -32768, 32767));
        };
        ScrollTo(*record, { move(record->fOrigin.v, dRows), move(record->fOrigin.h, dCols) });
    }
}

void LAutoScroll(ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record)
        return;
    Cell cell = { record->fData.top, record->fData.left };
    if (LGetSelect(true, &cell, list))
        ScrollTo(*record, cell);
}

void LSetDrawingMode(Boolean drawIt, ListHandle list)
{
    if (ListRecord* const record = Find(list))
        record->fIsDrawing = drawIt;
}

void LDraw(Cell theCell, ListHandle list)
{
    if (ListRecord* const record = Find(list))
        DrawCell(*record, theCell);
}

void LUpdate(RgnHandle theRgn, ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record || !RectInRgn(&record->fView, theRgn))
        return;
    DrawAll(*record);
}

void LActivate(Boolean act, ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record || record->fIsActive == static_cast<bool>(act))
        return;
    record->fIsActive = act;
    Refresh(*record);
}

Boolean LClick(Point pt, EventModifiers modifiers, ListHandle list)
{
    ListRecord* const record = Find(list);
    if (!record || !record->fIsActive)
        return false;
    const Rect vertical = VerticalBarBounds(record->fView), horizontal = HorizontalBarBounds(record->fView);
    if (PtInRect(pt, &record->fView))
        return TrackCells(list, pt, modifiers);
    if (record->fVertical && PtInRect(pt, &vertical))
        TrackScrollBar(list, record->fVertical, pt);
    else if (record->fHorizontal && PtInRect(pt, &horizontal))
        TrackScrollBar(list, record->fHorizontal, pt);
    return false;
}

GrafPtr GetListPort(ListHandle list)
{
    const ListRecord* const record = Find(list);
    return record ? record->fPort : nullptr;
}

Rect* GetListViewBounds(ListHandle list, Rect* view)
{
    const ListRecord* const record = Find(list);
    if (view)
        *view = record ? record->fView : Rect{};
    return view;
}

ListBounds* GetListDataBounds(ListHandle list, ListBounds* bounds)
{
    const ListRecord* const record = Find(list);
    if (bounds)
        *bounds = record ? record->fData : ListBounds{};
    return bounds;
}

ListBounds* GetListVisibleCells(ListHandle list, ListBounds* visible)
{
    const ListRecord* const record = Find(list);
    if (visible)
        *visible = record ? record->Visible() : ListBounds{};
    return visible;
}

Point* GetListCellSize(ListHandle list, Point* size)
{
    const ListRecord* const record = Find(list);
    if (size)
        *size = record ? record->fCellSize : Point{};
    return size;
}

Point* GetListCellIndent(ListHandle list, Point* indent)
{
    const ListRecord* const record = Find(list);
    if (indent)
        *indent = record ? record->fIndent : Point{};
    return indent;
}

void SetListCellIndent(ListHandle list, const Point* indent)
{
    ListRecord* const record = Find(list);
    if (record && indent)
        record->fIndent = *indent;
}

ControlRef GetListVerticalScrollBar(ListHandle list)
{
    const ListRecord* const record = Find(list);
    return record ? record->fVertical : nullptr;
}

ControlRef GetListHorizontalScrollBar(ListHandle list)
{
    const ListRecord* const record = Find(list);
    return record ? record->fHorizontal : nullptr;
}

Boolean GetListActive(ListHandle list)
{
    const ListRecord* const record = Find(list);
    return record && record->fIsActive;
}

OptionBits GetListSelectionFlags(ListHandle list)
{
    const ListRecord* const record = Find(list);
    return record ? static_cast<UInt8>(record->fSelectionFlags) : 0;
}

void SetListSelectionFlags(ListHandle list, OptionBits selectionFlags)
{
    if (ListRecord* const record = Find(list))
        record->fSelectionFlags = static_cast<SInt8>(selectionFlags);
}

SInt32 GetListRefCon(ListHandle list)
{
    const ListRecord* const record = Find(list);
    return record ? record->fRefCon : 0;
}

void SetListRefCon(ListHandle list, SInt32 refCon)
{
    if (ListRecord* const record = Find(list))
        record->fRefCon = refCon;
}
