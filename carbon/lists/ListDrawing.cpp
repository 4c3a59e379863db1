// Drawing of cells, scrolling, and the scroll bars.
#include "lists/ListRecord.h"

#include <algorithm>

namespace lampblack::lists {

namespace {

constexpr RGBColor kBlack = { 0, 0, 0 }, kWhite = { 0xFFFF, 0xFFFF, 0xFFFF };
constexpr RGBColor kSelection = { 0xB5B5, 0xD5D5, 0xFFFF }, kInactiveSelection = { 0xD4D4, 0xD4D4, 0xD4D4 };

// The list's port with its clip held to the view, and the caller's colours kept, for one scope.
class DrawingScope {
public:
    explicit DrawingScope(const ListRecord& inList) : fClip(NewRgn())
    {
        ::GetPort(&fPort);
        ::SetPort(inList.fPort);
        GetForeColor(&fFore);
        GetBackColor(&fBack);
        GetClip(fClip);
        const RgnHandle view = NewRgn();
        RectRgn(view, &inList.fView);
        SectRgn(view, fClip, view);
        SetClip(view);
        DisposeRgn(view);
    }
    ~DrawingScope()
    {
        SetClip(fClip);
        DisposeRgn(fClip);
        RGBForeColor(&fFore);
        RGBBackColor(&fBack);
        ::SetPort(fPort);
    }
    DrawingScope(const DrawingScope&) = delete;
    DrawingScope& operator=(const DrawingScope&) = delete;

private:
    CGrafPtr fPort = nullptr;
    RgnHandle fClip;
    RGBColor fFore, fBack;
};

void DrawCellInScope(ListRecord& ioList, Cell inCell)
{
    const CellRecord* const cell = ioList.At(inCell);
    if (!cell)
        return;
    const Rect bounds = ioList.BoundsOf(inCell);
    const RGBColor& marked = ioList.fIsActive ? kSelection : kInactiveSelection;
    RGBForeColor(&kBlack);
    RGBBackColor(cell->fIsSelected ? &marked : &kWhite);
    EraseRect(&bounds);
    MoveTo(static_cast<short>(bounds.left + ioList.fIndent.h),
           static_cast<short>(bounds.top + ioList.fIndent.v));
    DrawText(cell->fBytes.data(), 0, static_cast<short>(cell->fBytes.size()));
}

// Where the cells end and the view goes on.
void EraseRest(const ListRecord& inList)
{
    const Rect end = inList.BoundsOf({ inList.fData.bottom, inList.fData.right });
    Rect below = inList.fView, beside = inList.fView;
    below.top = std::max(below.top, end.top);
    beside.left = std::max(beside.left, end.left);
    RGBBackColor(&kWhite);
    if (below.top < below.bottom)
        EraseRect(&below);
    if (beside.left < beside.right)
        EraseRect(&beside);
}

void UpdateScrollBar(ControlRef inBar, int inValue, int inMinimum, int inCells, int inWhole, bool inIsActive)
{
    if (!inBar)
        return;
    const int maximum = inMinimum + std::max(0, inCells - inWhole);
    SetControl32BitMinimum(inBar, inMinimum);
    SetControl32BitMaximum(inBar, maximum);
    SetControlViewSize(inBar, inWhole);
    SetControl32BitValue(inBar, inValue);
    HiliteControl(inBar, inIsActive && maximum > inMinimum ? 0 : 255);
}

} // namespace

void DrawCell(ListRecord& ioList, Cell inCell)
{
    if (!ioList.fIsDrawing)
        return;
    const DrawingScope scope(ioList);
    DrawCellInScope(ioList, inCell);
}

void DrawCells(ListRecord& ioList, const ListBounds& inCells)
{
    if (!ioList.fIsDrawing)
        return;
    const DrawingScope scope(ioList);
    for (short row = inCells.top; row < inCells.bottom; ++row)
        for (short column = inCells.left; column < inCells.right; ++column)
            DrawCellInScope(ioList, { row, column });
}

void DrawAll(ListRecord& ioList)
{
    if (!ioList.fIsDrawing)
        return;
    DrawCells(ioList, ioList.Visible());
    const DrawingScope scope(ioList);
    EraseRest(ioList);
}

void UpdateScrollBars(ListRecord& ioList)
{
    const Point whole = ioList.WholeCellsInView();
    UpdateScrollBar(ioList.fVertical, ioList.fOrigin.v, ioList.fData.top, ioList.Rows(), whole.v,
                    ioList.fIsActive);
    UpdateScrollBar(ioList.fHorizontal, ioList.fOrigin.h, ioList.fData.left, ioList.Columns(), whole.h,
                    ioList.fIsActive);
}

void ScrollTo(ListRecord& ioList, Point inOrigin)
{
    const Point before = ioList.fOrigin;
    ioList.fOrigin = inOrigin;
    ioList.ClampOrigin();
    if (ioList.fOrigin.h == before.h && ioList.fOrigin.v == before.v)
        return;
    UpdateScrollBars(ioList);
    DrawAll(ioList);
}

void RevealCell(ListRecord& ioList, Cell inCell)
{
    const Point whole = ioList.WholeCellsInView();
    const auto reveal = [](int inOrigin, int inIndex, int inWhole) {
        return static_cast<short>(std::clamp(inOrigin, inIndex - inWhole + 1, inIndex));
    };
    ScrollTo(ioList,
             { reveal(ioList.fOrigin.v, inCell.v, whole.v), reveal(ioList.fOrigin.h, inCell.h, whole.h) });
}

void SelectCell(ListRecord& ioList, Cell inCell, bool inIsSelected)
{
    CellRecord* const cell = ioList.At(inCell);
    if (!cell || cell->fIsSelected == inIsSelected)
        return;
    cell->fIsSelected = inIsSelected;
    DrawCell(ioList, inCell);
}

void SelectOnly(ListRecord& ioList, Cell inCell)
{
    for (short row = ioList.fData.top; row < ioList.fData.bottom; ++row)
        for (short column = ioList.fData.left; column < ioList.fData.right; ++column)
            SelectCell(ioList, { row, column }, row == inCell.v && column == inCell.h);
}

} // namespace lampblack::lists
