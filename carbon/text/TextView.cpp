#include "text/TextView.h"

#include "text/PortText.h"

#include <Carbon/Appearance.h>

#include <algorithm>

namespace lampblack::text {

namespace {

constexpr short kCaretOn = 255, kCaretOff = 0;

short Pinned(int inCoordinate)
{
    return (short)std::clamp(inCoordinate, -32768, 32767);
}

Rect PinnedRect(int inLeft, int inTop, int inRight, int inBottom)
{
    return { Pinned(inTop), Pinned(inLeft), Pinned(inBottom), Pinned(inRight) };
}

int LineLeft(Record inRecord, const Text& inText, Span inVisible)
{
    PortMeasure measure;
    const int box = inRecord->destRect.right - inRecord->destRect.left;
    const bool left = inRecord->just == teJustLeft || inRecord->just == teForceLeft;
    const int width =
        left ? 0 : measure.Width(inText.bytes + inVisible.start, inVisible.end - inVisible.start);
    return inRecord->destRect.left + JustifiedStart(box, width, inRecord->just);
}

// Of a selection, what lies in one line, and whether it goes on beyond the line's end.
struct Marked {
    int left = 0, right = 0;
    bool IsEmpty() const { return left >= right; }
};

// A selection that goes on in the next line reaches to the right edge, and from there begins at the left one.
Marked MarkedPart(Record inRecord, int inLine)
{
    const Lines lines = inRecord.LineTable();
    const Span selection = inRecord.Selection(), line = lines.Whole(inLine);
    if (selection.end <= line.start || selection.start >= line.end)
        return {};
    const Rect &dest = inRecord->destRect, &view = inRecord->viewRect;
    const bool goesOn = selection.end > lines.LastCaret(inLine) && inLine + 1 < lines.Total();
    return { selection.start < line.start ? std::min(dest.left, view.left)
                                          : HorizontalOf(inRecord, selection.start),
             goesOn ? std::max(dest.right, view.right) : HorizontalOf(inRecord, selection.end) };
}

bool ShowsSelection(Record inRecord)
{
    return inRecord->active || inRecord.HasFeature(teFOutlineHilite);
}

// Under the text: the highlight colour, or a frame while inactive.
void DrawHighlight(Record inRecord, const Rect& inRect)
{
    RGBColor text = {}, highlight = {};
    Pattern black = {};
    GetForeColor(&text);
    GetThemeBrushAsColor(inRecord->active ? kThemeBrushPrimaryHighlightColor
                                          : kThemeBrushSecondaryHighlightColor,
                         32, true, &highlight);
    RGBForeColor(&highlight);
    if (inRecord->active) {
        FillRect(&inRect, GetQDGlobalsBlack(&black));
    } else {
        PenNormal();
        FrameRect(&inRect);
    }
    RGBForeColor(&text);
}

void DrawLine(Record inRecord, int inLine)
{
    const int top = LineTop(inRecord, inLine);
    const Rect strip =
        PinnedRect(inRecord->viewRect.left, top, inRecord->viewRect.right, top + inRecord->lineHeight);
    EraseRect(&strip);
    const Span visible = inRecord.LineTable().Visible(inLine);
    const Marked marked = ShowsSelection(inRecord) ? MarkedPart(inRecord, inLine) : Marked{};
    const Rect highlight = PinnedRect(marked.left, top, marked.right, top + inRecord->lineHeight);
    if (!marked.IsEmpty() && !inRecord->highHook)
        DrawHighlight(inRecord, highlight);
    const Text text = inRecord.Bytes();
    if (!visible.IsEmpty()) {
        MoveTo(Pinned(LineLeft(inRecord, text, visible)), Pinned(top + inRecord->fontAscent));
        DrawText(text.bytes, (short)visible.start, (short)(visible.end - visible.start));
    }
    if (!marked.IsEmpty() && inRecord->highHook)
        inRecord->highHook(&highlight, &*inRecord);
}

Rect CaretRect(Record inRecord)
{
    const int top = LineTop(inRecord, inRecord.LineTable().LineOf(inRecord->selEnd));
    const int h = HorizontalOf(inRecord, inRecord->selEnd);
    const Rect& view = inRecord->viewRect;
    // At the very left there is no room before the first character.
    const int left = h - 1 < view.left && h >= view.left ? h : h - 1;
    return PinnedRect(left, top, left + 1, top + inRecord->lineHeight);
}

bool WantsCaret(Record inRecord)
{
    return inRecord->active && inRecord->selStart == inRecord->selEnd;
}

void FlipCaret(Record inRecord)
{
    const Rect caret = CaretRect(inRecord);
    if (inRecord->caretHook)
        inRecord->caretHook(&caret, &*inRecord);
    else
        InvertRect(&caret);
}

void DrawLineRange(Record inRecord, int inFirst, int inLast)
{
    const int total = inRecord.LineTable().Total();
    for (int line = std::max(0, inFirst); line <= inLast && line < total; ++line)
        DrawLine(inRecord, line);
}

// The background below the last line.
void EraseBelow(Record inRecord)
{
    const int bottom = LineTop(inRecord, inRecord.LineTable().Total());
    const Rect& view = inRecord->viewRect;
    const Rect below = PinnedRect(view.left, std::max<int>(bottom, view.top), view.right, view.bottom);
    if (below.bottom > below.top)
        EraseRect(&below);
}

void EraseAbove(Record inRecord)
{
    const Rect& view = inRecord->viewRect;
    const Rect above =
        PinnedRect(view.left, view.top, view.right, std::min<int>(inRecord->destRect.top, view.bottom));
    if (above.bottom > above.top)
        EraseRect(&above);
}

} // namespace

int LineTop(Record inRecord, int inLine)
{
    return inRecord->destRect.top + inLine * inRecord->lineHeight;
}

int LineAt(Record inRecord, int inV)
{
    const int below = inV - inRecord->destRect.top;
    const int line = below < 0 ? 0 : below / inRecord->lineHeight;
    return std::clamp(line, 0, std::max(0, inRecord.LineTable().Total() - 1));
}

int HorizontalOf(Record inRecord, int inOffset)
{
    PortMeasure measure;
    const Text text = inRecord.Bytes();
    const Lines lines = inRecord.LineTable();
    const int line = lines.LineOf(inOffset);
    const int start = lines.Whole(line).start;
    return LineLeft(inRecord, text, lines.Visible(line)) +
           measure.Width(text.bytes + start, inOffset - start);
}

int OffsetInLine(Record inRecord, int inLine, int inH)
{
    PortMeasure measure;
    const Text text = inRecord.Bytes();
    const Lines lines = inRecord.LineTable();
    const Span whole = lines.Whole(inLine);
    const int distance = inH - LineLeft(inRecord, text, lines.Visible(inLine));
    const int nearest =
        whole.start + measure.Nearest(text.bytes + whole.start, whole.end - whole.start, distance);
    return std::min(nearest, lines.LastCaret(inLine));
}

int OffsetAt(Record inRecord, Point inLocal)
{
    return OffsetInLine(inRecord, LineAt(inRecord, inLocal.v), inLocal.h);
}

int TextHeight(Record inRecord)
{
    return inRecord.LineTable().Total() * inRecord->lineHeight;
}

void DrawLines(Record inRecord, const Rect& inArea)
{
    EraseAbove(inRecord);
    DrawLineRange(inRecord, LineAt(inRecord, inArea.top), LineAt(inRecord, inArea.bottom - 1));
    EraseBelow(inRecord);
    if (inRecord->caretState == kCaretOn && WantsCaret(inRecord))
        FlipCaret(inRecord);
}

void DrawChange(Record inRecord, const Relaid& inChange, int inOldTotal)
{
    const Rect& view = inRecord->viewRect;
    const int total = inRecord.LineTable().Total(), bottom = LineAt(inRecord, view.bottom - 1);
    const bool moved = inChange.moved || total != inOldTotal;
    DrawLineRange(inRecord, std::max(inChange.first, LineAt(inRecord, view.top)),
                  moved ? bottom : std::min(inChange.last, bottom));
    if (total >= inOldTotal)
        return;
    const Rect below = PinnedRect(view.left, std::max<int>(LineTop(inRecord, total), view.top), view.right,
                                  std::min<int>(LineTop(inRecord, inOldTotal), view.bottom));
    if (below.bottom > below.top)
        EraseRect(&below);
}

void DrawSpan(Record inRecord, Span inSpan)
{
    const Lines lines = inRecord.LineTable();
    const int top = LineAt(inRecord, inRecord->viewRect.top),
              bottom = LineAt(inRecord, inRecord->viewRect.bottom - 1);
    DrawLineRange(inRecord, std::max(lines.LineOf(inSpan.start), top),
                  std::min(lines.LineOf(inSpan.end), bottom));
}

void ShowCaret(Record inRecord)
{
    if (inRecord->caretState == kCaretOn || !WantsCaret(inRecord))
        return;
    inRecord->caretState = kCaretOn;
    FlipCaret(inRecord);
}

void HideCaret(Record inRecord)
{
    if (inRecord->caretState != kCaretOn)
        return;
    if (WantsCaret(inRecord))
        FlipCaret(inRecord);
    inRecord->caretState = kCaretOff;
}

void ChangeSelection(Record inRecord, Span inSelection)
{
    const Span old = inRecord.Selection();
    HideCaret(inRecord);
    inRecord->selStart = (short)inSelection.start;
    inRecord->selEnd = (short)inSelection.end;
    if (ShowsSelection(inRecord) && !(old.IsEmpty() && inSelection.IsEmpty()) && old != inSelection) {
        if (old.start == inSelection.start)
            DrawSpan(inRecord, { std::min(old.end, inSelection.end), std::max(old.end, inSelection.end) });
        else if (old.end == inSelection.end)
            DrawSpan(inRecord,
                     { std::min(old.start, inSelection.start), std::max(old.start, inSelection.start) });
        else {
            DrawSpan(inRecord, old);
            DrawSpan(inRecord, inSelection);
        }
    }
    ShowCaret(inRecord);
}

void ScrollBy(Record inRecord, int inH, int inV)
{
    if (!inH && !inV)
        return;
    const bool caret = inRecord->caretState == kCaretOn;
    HideCaret(inRecord);
    const Rect& dest = inRecord->destRect;
    const short h = (short)(Pinned(dest.left + inH) - dest.left),
                v = (short)(Pinned(dest.top + inV) - dest.top);
    OffsetRect(&inRecord->destRect, h, v);
    static const RgnHandle uncovered = NewRgn();
    const Rect view = inRecord->viewRect;
    ScrollRect(&view, h, v, uncovered);
    Rect bare = {};
    GetRegionBounds(uncovered, &bare);
    if (!EmptyRect(&bare))
        DrawLines(inRecord, bare);
    if (caret)
        ShowCaret(inRecord);
}

void Reveal(Record inRecord, int inOffset)
{
    const Rect& view = inRecord->viewRect;
    const int top = LineTop(inRecord, inRecord.LineTable().LineOf(inOffset)),
              bottom = top + inRecord->lineHeight;
    const int h = HorizontalOf(inRecord, inOffset);
    const int quarter = std::max(1, (view.right - view.left) / 4);
    int scrollV = 0, scrollH = 0;
    if (top < view.top || bottom - top > view.bottom - view.top)
        scrollV = view.top - top;
    else if (bottom > view.bottom)
        scrollV = view.bottom - bottom;
    if (h < view.left)
        scrollH = std::min(view.left - h + quarter, std::max(0, view.left - inRecord->destRect.left));
    else if (h > view.right && inRecord->destRect.right > view.right)
        scrollH = view.right - h - quarter;
    ScrollBy(inRecord, scrollH, scrollV);
}

} // namespace lampblack::text
