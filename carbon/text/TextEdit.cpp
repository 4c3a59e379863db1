// The published calls: lifetime, text, selection and activation.
#include "text/Editing.h"
#include "text/PortText.h"
#include "text/TextView.h"

#include <Carbon/Events.h>
#include <Carbon/MacMemory.h>

#include <algorithm>

namespace lampblack::text {

namespace {

Span Clamped(Record inRecord, long inStart, long inEnd)
{
    const long length = inRecord->teLength;
    const long end = std::clamp(inEnd, 0L, length);
    return { (int)std::clamp(inStart, 0L, end), (int)end };
}

} // namespace

namespace {

// Replaces bytes and lays out and draws what changes; the caret is hidden, and left hidden. Answers how many
// came in.
int Splice(Record inRecord, Span inSpan, Span inSelection, const void* inBytes, long inCount)
{
    const int oldTotal = inRecord.LineTable().Total();
    const int count = (int)std::clamp<long>(inCount, 0, kLongestText);
    const Span old = inRecord.Selection();
    const int added = ReplaceBytes(inRecord, inSpan, inBytes, count);
    inRecord->selStart = (short)(inSelection.start + added);
    inRecord->selEnd = (short)(inSelection.end + added);
    Relaid change = LayOutChange(inRecord, inSpan.start, inSpan.end - inSpan.start, added);
    // A highlight that goes, or moves, changes the lines that it lay in too.
    change.moved |= !old.IsEmpty();
    DrawChange(inRecord, change, oldTotal);
    return added;
}

} // namespace

void ReplaceSpan(Record inRecord, Span inSpan, const void* inBytes, long inCount)
{
    const StTextPort port(*inRecord);
    HideCaret(inRecord);
    Splice(inRecord, inSpan, { inSpan.start, inSpan.start }, inBytes, inCount);
    ShowCaret(inRecord);
    if (inRecord.HasFeature(teFAutoScroll))
        Reveal(inRecord, inRecord->selEnd);
}

} // namespace lampblack::text

using namespace lampblack::text;

void TEInit(void) {}

TEHandle TENew(const Rect* inDestRect, const Rect* inViewRect)
{
    if (!inDestRect || !inViewRect || !GetQDGlobalsThePort())
        return nullptr;
    return NewRecord(*inDestRect, *inViewRect).Handle();
}

void TEDispose(TEHandle inHandle)
{
    if (const Record record = Find(inHandle))
        DisposeRecord(record);
}

void TESetText(const void* inText, long inLength, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record || (!inText && inLength > 0))
        return;
    const StTextPort port(*record);
    record->caretState = 0; // whoever sets the text draws it
    const int count = (int)std::clamp<long>(inLength, 0, kLongestText);
    ReplaceBytes(record, { 0, record->teLength }, inText, count);
    record->selStart = record->selEnd = record->teLength;
    LayOut(record);
}

CharsHandle TEGetText(TEHandle inHandle)
{
    const Record record = Find(inHandle);
    return record ? (CharsHandle)record->hText : nullptr;
}

void TEInsert(const void* inText, long inLength, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record || !inText || inLength <= 0)
        return;
    const StTextPort port(*record);
    HideCaret(record);
    const Span selection = record.Selection();
    Splice(record, { selection.start, selection.start }, selection, inText, inLength);
    ShowCaret(record);
    if (record.HasFeature(teFAutoScroll))
        Reveal(record, record->selEnd);
}

void TEDelete(TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (record && !record.Selection().IsEmpty())
        ReplaceSpan(record, record.Selection(), nullptr, 0);
}

void TESetSelect(long inStart, long inEnd, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record)
        return;
    const StTextPort port(*record);
    const long end = inEnd < 0 ? record->teLength : inEnd; // negative: to the end of the text
    const Span selection = Clamped(record, inStart, end);
    ChangeSelection(record, selection);
    record->clickLoc = (short)selection.start; // Shift extends from here
}

void TEActivate(TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record || record->active)
        return;
    const StTextPort port(*record);
    record->active = 1;
    record->caretTime = (long)TickCount() + (long)GetCaretTime();
    if (record.Selection().IsEmpty())
        ShowCaret(record);
    else
        DrawSpan(record, record.Selection());
}

void TEDeactivate(TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record || !record->active)
        return;
    const StTextPort port(*record);
    HideCaret(record);
    record->active = 0;
    if (!record.Selection().IsEmpty())
        DrawSpan(record, record.Selection());
}

void TEIdle(TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record || !record->active || !record.Selection().IsEmpty())
        return;
    const long now = (long)TickCount();
    if (now < record->caretTime)
        return;
    const StTextPort port(*record);
    record->caretTime = now + (long)GetCaretTime();
    if (record->caretState)
        HideCaret(record);
    else
        ShowCaret(record);
}

void TEUpdate(const Rect* inUpdate, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record)
        return;
    const StTextPort port(*record, inUpdate);
    Rect area = record->viewRect;
    if (inUpdate)
        SectRect(inUpdate, &area, &area);
    if (!EmptyRect(&area))
        DrawLines(record, area);
}

void TECalText(TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record)
        return;
    const StTextPort port(*record);
    LayOut(record);
}

void TESetAlignment(short inAlignment, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (record)
        record->just = inAlignment;
}

short TEFeatureFlag(short inFeature, short inAction, TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (!record || inFeature < teFAutoScroll || inFeature > teFOutlineHilite)
        return 0;
    const bool before = record.HasFeature(inFeature);
    Private fields = PrivateOf(*record);
    if (inAction == teBitSet)
        fields.features |= (uint8_t)(1 << inFeature);
    if (inAction == teBitClear)
        fields.features &= (uint8_t) ~(1 << inFeature);
    SetPrivate(*record, fields);
    return before ? teBitSet : teBitClear;
}

void TESetClickLoop(TEClickLoopUPP inClickLoop, TEHandle inHandle)
{
    if (const Record record = Find(inHandle))
        record->clickLoop = inClickLoop;
}

void TESetWordBreak(WordBreakUPP inWordBreak, TEHandle inHandle)
{
    if (const Record record = Find(inHandle))
        record->wordBreak = inWordBreak;
}

// Universal procedure pointers are the procedures themselves here.

WordBreakUPP NewWordBreakUPP(WordBreakProcPtr inProc)
{
    return inProc;
}

TEClickLoopUPP NewTEClickLoopUPP(TEClickLoopProcPtr inProc)
{
    return inProc;
}

HighHookUPP NewHighHookUPP(HighHookProcPtr inProc)
{
    return inProc;
}

CaretHookUPP NewCaretHookUPP(CaretHookProcPtr inProc)
{
    return inProc;
}

void DisposeWordBreakUPP(WordBreakUPP) {}
void DisposeTEClickLoopUPP(TEClickLoopUPP) {}
void DisposeHighHookUPP(HighHookUPP) {}
void DisposeCaretHookUPP(CaretHookUPP) {}
