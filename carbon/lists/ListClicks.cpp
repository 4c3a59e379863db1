// Clicks in a list: the selection rules, double clicks and the scroll bars.
#include "lists/ListRecord.h"

#include <Carbon/CarbonEvents.h>
#include <Carbon/MacWindows.h>

#include <algorithm>

namespace lampblack::lists {

namespace {

// What one press does as the mouse moves over cells.
struct Press {
    Cell fAnchor;
    bool fExtends = false; // a block from the anchor to the mouse
    bool fToggles = false; // command: each cell passed over takes fSense
    bool fSense = true;
};

bool Allows(const ListRecord& inList, SInt8 inFlag)
{
    return (inList.fSelectionFlags & inFlag) == 0;
}

Press StartPress(ListRecord& ioList, Cell inCell, EventModifiers inModifiers)
{
    Press press{ inCell };
    const bool onlyOne = !Allows(ioList, lOnlyOne);
    if (!onlyOne && (inModifiers & shiftKey) && Allows(ioList, lNoExtend)) {
        press.fExtends = true;
        if (ioList.Has(ioList.fLastClick))
            press.fAnchor = ioList.fLastClick;
    } else if (!onlyOne && (inModifiers & cmdKey) && Allows(ioList, lNoDisjoint)) {
        press.fToggles = true;
        press.fSense = !ioList.At(inCell)->fIsSelected;
    } else {
        press.fExtends = !onlyOne && !Allows(ioList, lExtendDrag);
    }
    return press;
}

void SelectBlock(ListRecord& ioList, Cell inA, Cell inB)
{
    for (short row = ioList.fData.top; row < ioList.fData.bottom; ++row)
        for (short column = ioList.fData.left; column < ioList.fData.right; ++column) {
            const bool inside = row >= std::min(inA.v, inB.v) && row <= std::max(inA.v, inB.v) &&
                                column >= std::min(inA.h, inB.h) && column <= std::max(inA.h, inB.h);
            SelectCell(ioList, { row, column }, inside);
        }
}

void ApplyPress(ListRecord& ioList, const Press& inPress, Cell inCell)
{
    if (inPress.fToggles)
        SelectCell(ioList, inCell, inPress.fSense);
    else if (inPress.fExtends)
        SelectBlock(ioList, inPress.fAnchor, inCell);
    else
        SelectOnly(ioList, inCell);
}

// Scrolls while the mouse is held outside the view.
void ScrollToward(ListRecord& ioList, Point inMouse)
{
    Point origin = ioList.fOrigin;
    const Rect& view = ioList.fView;
    origin.v = static_cast<short>(origin.v - (inMouse.v < view.top) + (inMouse.v >= view.bottom));
    origin.h = static_cast<short>(origin.h - (inMouse.h < view.left) + (inMouse.h >= view.right));
    ScrollTo(ioList, origin);
}

bool IsDoubleClick(const ListRecord& inList, Cell inCell)
{
    const double seconds = GetDblTime() / 60.0;
    return inCell.h == inList.fLastClick.h && inCell.v == inList.fLastClick.v &&
           GetCurrentEventTime() - inList.fLastClickTime <= seconds;
}

void FollowScrollBar(ControlRef inBar)
{
    ListHandle reference = nullptr;
    GetControlProperty(inBar, kListCreator, kListTag, sizeof reference, nullptr, &reference);
    ListRecord* const list = Find(reference);
    if (!list)
        return;
    Point origin = list->fOrigin;
    (inBar == list->fVertical ? origin.v : origin.h) = static_cast<short>(GetControl32BitValue(inBar));
    ScrollTo(*list, origin);
}

void ScrollAction(ControlRef inBar, ControlPartCode inPart)
{
    const SInt32 page = std::max<SInt32>(1, GetControlViewSize(inBar) - 1);
    SInt32 step = 0;
    switch (inPart) {
    case kControlUpButtonPart: step = -1; break;
    case kControlDownButtonPart: step = 1; break;
    case kControlPageUpPart: step = -page; break;
    case kControlPageDownPart: step = page; break;
    }
    if (step != 0)
        SetControl32BitValue(inBar, GetControl32BitValue(inBar) + step);
    FollowScrollBar(inBar);
}

} // namespace

bool TrackCells(ListHandle inList, Point inLocal, EventModifiers inModifiers)
{
    ListRecord* list = Find(inList);
    if (list->Columns() <= 0 || list->Rows() <= 0)
        return false;
    const Cell first = list->CellAt(inLocal);
    const bool isDouble = IsDoubleClick(*list, first);
    const Press press = StartPress(*list, first, inModifiers);
    ApplyPress(*list, press, first);
    Cell last = first;
    MouseTrackingResult result = kMouseTrackingMouseDown;
    const CGrafPtr port = list->fPort;
    while (result != kMouseTrackingMouseUp) {
        Point mouse;
        constexpr EventTimeout kScrollInterval = 0.05;
        if (TrackMouseLocationWithOptions(port, 0, kScrollInterval, &mouse, nullptr, &result) != noErr &&
            result != kMouseTrackingTimedOut)
            break;
        list = Find(inList);
        if (!list)
            return false;
        if (result == kMouseTrackingMouseUp)
            break;
        ScrollToward(*list, mouse);
        const Cell cell = list->CellAt(mouse);
        if (cell.h != last.h || cell.v != last.v)
            ApplyPress(*list, press, cell);
        last = cell;
    }
    list->fLastClick = last;
    list->fLastClickTime = GetCurrentEventTime();
    return isDouble;
}

void TrackScrollBar(ListHandle inList, ControlRef inBar, Point inLocal)
{
    static const ControlActionUPP action = NewControlActionUPP(ScrollAction);
    HandleControlClick(inBar, inLocal, 0, action);
    if (Find(inList))
        FollowScrollBar(inBar);
}

} // namespace lampblack::lists
