// Clicks and drags in a record.
#include "text/PortText.h"
#include "text/TextView.h"

#include "events/MouseTracking.h"

#include <Carbon/Events.h>

#include <algorithm>

namespace lampblack::text {

namespace {

constexpr double kPoll = 1.0 / 30; // seconds between two steps of scrolling while the mouse rests outside
constexpr int kMostClicks = 3;     // caret, word, paragraph

// The whole unit around an offset that this many clicks select.
Span UnitAt(Record inRecord, int inOffset, int inClicks)
{
    if (inClicks == 2)
        return WordAt(inRecord.Bytes(), inOffset, inRecord->wordBreak);
    return inClicks == 3 ? ParagraphAt(inRecord.Bytes(), inOffset) : Span{ inOffset, inOffset };
}

int CountClick(Record inRecord, int inOffset)
{
    const long now = (long)TickCount();
    Private fields = PrivateOf(*inRecord);
    const bool again = fields.clicks && now - inRecord->clickTime <= (long)GetDblTime() &&
                       now >= inRecord->clickTime && inRecord->clickLoc == inOffset;
    fields.clicks = (uint8_t)(again ? fields.clicks % kMostClicks + 1 : 1);
    fields.goalX = Private::kNoGoal;
    SetPrivate(*inRecord, fields);
    inRecord->clickTime = now;
    inRecord->clickLoc = (short)inOffset;
    return fields.clicks;
}

// From the unit where the drag began to the one where the mouse is.
Span Joined(Span inAnchor, Span inHere)
{
    return { std::min(inAnchor.start, inHere.start), std::max(inAnchor.end, inHere.end) };
}

void SelectTo(Record inRecord, Point inLocal, Span inAnchor, int inClicks)
{
    const StTextPort port(*inRecord);
    ChangeSelection(inRecord, Joined(inAnchor, UnitAt(inRecord, OffsetAt(inRecord, inLocal), inClicks)));
}

void ScrollTowards(Record inRecord, Point inLocal)
{
    const Rect& view = inRecord->viewRect;
    const int height = inRecord->lineHeight;
    int h = 0, v = 0;
    if (inLocal.v < view.top)
        v = std::min(height, view.top - inRecord->destRect.top);
    else if (inLocal.v >= view.bottom)
        v = -std::min(height, inRecord->destRect.top + TextHeight(inRecord) - view.bottom);
    if (inLocal.h < view.left)
        h = std::min(height, view.left - inRecord->destRect.left);
    else if (inLocal.h >= view.right)
        h = -std::min(height, inRecord->destRect.right - view.right);
    const StTextPort port(*inRecord);
    ScrollBy(inRecord, inLocal.h < view.left ? std::max(h, 0) : std::min(h, 0),
             inLocal.v < view.top ? std::max(v, 0) : std::min(v, 0));
}

Point LocalMouse(Record inRecord, Point inGlobal)
{
    Point local = inGlobal;
    QDGlobalToLocalPoint(inRecord->inPort, &local);
    return local;
}

// The button is down, or was when this click happened and its release still waits to be heard.
bool IsPressed()
{
    EventRecord release = {};
    return Button() || EventAvail(mUpMask, &release);
}

// Follows the mouse until it is released. Whatever runs meanwhile may dispose of the record.
void Track(TEHandle inHandle, Span inAnchor, int inClicks)
{
    MouseTrackingResult result = kMouseTrackingMouseDragged;
    while (result != kMouseTrackingMouseUp) {
        Point global = {};
        const OSStatus status = events::TrackMouseGlobal(0, kPoll, &global, nullptr, &result);
        const Record record = Find(inHandle);
        if (!record || (status != noErr && status != eventLoopTimedOutErr))
            return;
        const Point local = LocalMouse(record, global);
        SelectTo(record, local, inAnchor, inClicks);
        if (result == kMouseTrackingMouseUp)
            return;
        if (record->clickLoop) {
            if (!record->clickLoop(&*record))
                return;
        } else if (record.HasFeature(teFAutoScroll)) {
            ScrollTowards(record, local);
        }
        if (!Find(inHandle))
            return;
    }
}

} // namespace

} // namespace lampblack::text

using namespace lampblack::text;

void TEClick(Point inLocal, Boolean inExtend, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record)
        return;
    Span anchor;
    int clicks = 1;
    {
        const StTextPort port(*record);
        record->selPoint = inLocal;
        const int offset = OffsetAt(record, inLocal);
        if (inExtend) {
            // The end that is farther from the mouse stays.
            const Span old = record.Selection();
            const int fixed = offset - old.start < old.end - offset ? old.end : old.start;
            anchor = { fixed, fixed };
        } else {
            clicks = CountClick(record, offset);
            anchor = UnitAt(record, offset, clicks);
        }
        ChangeSelection(record, Joined(anchor, UnitAt(record, offset, clicks)));
        record->caretTime = (long)TickCount() + (long)GetCaretTime();
    }
    if (IsPressed())
        Track(inHandle, anchor, clicks);
}
