#include "text/TextRecord.h"

#include "memory/ReferenceTable.h"
#include "text/PortText.h"

#include <Carbon/MacMemory.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

namespace lampblack::text {

namespace {

constexpr Size kHeader = offsetof(TERec, lineStarts);
constexpr int kSpareLines = 16; // room that is made beyond what is needed

memory::AddressSet& LiveHandles()
{
    static memory::AddressSet handles;
    return handles;
}

// How many line starts, without the one behind the last, the record has room for.
int RoomForLines(TEHandle inHandle)
{
    return (int)((GetHandleSize((Handle)inHandle) - kHeader) / (Size)sizeof(short)) - 1;
}

bool MakeRoom(TEHandle inHandle, int inLines)
{
    if (RoomForLines(inHandle) >= inLines)
        return true;
    const int lines = std::min(inLines + inLines / 2 + kSpareLines, kMostLines);
    SetHandleSize((Handle)inHandle, kHeader + (Size)((lines + 1) * (int)sizeof(short)));
    return MemError() == noErr;
}

void MendText(TERec& ioRecord)
{
    if (!ioRecord.hText || !IsHandleValid(ioRecord.hText) || !*ioRecord.hText) {
        ioRecord.hText = NewHandle(0);
        ioRecord.teLength = 0;
    }
    const Size size = ioRecord.hText ? GetHandleSize(ioRecord.hText) : 0;
    ioRecord.teLength = (short)std::clamp<Size>(ioRecord.teLength, 0, std::min<Size>(size, kLongestText));
}

void Mend(TEHandle inHandle)
{
    MendText(**inHandle);
    TERec& record = **inHandle;
    record.selStart = std::clamp<short>(record.selStart, 0, record.teLength);
    record.selEnd = std::clamp<short>(record.selEnd, record.selStart, record.teLength);
    record.nLines = (short)std::clamp<int>(record.nLines, 0, std::min(RoomForLines(inHandle), kMostLines));
    record.lineHeight = std::max<short>(record.lineHeight, 1);
}

} // namespace

Private PrivateOf(const TERec& inRecord)
{
    const auto packed = (unsigned long)inRecord.hDispatchRec;
    return { (uint8_t)packed, (uint8_t)(packed >> 8), (int16_t)(packed >> 16) };
}

void SetPrivate(TERec& ioRecord, Private inPrivate)
{
    ioRecord.hDispatchRec = (long)((unsigned long)inPrivate.features | (unsigned long)inPrivate.clicks << 8 |
                                   (unsigned long)(uint16_t)inPrivate.goalX << 16);
}

Text Record::Bytes() const
{
    const TERec& record = **fHandle;
    return { record.hText ? *record.hText : nullptr, record.hText ? record.teLength : 0 };
}

Lines Record::LineTable() const
{
    return Lines(Bytes(), (**fHandle).lineStarts, (**fHandle).nLines);
}

Record NewRecord(const Rect& inDestination, const Rect& inView)
{
    const auto handle = (TEHandle)NewHandleClear(kHeader + (Size)((kSpareLines + 1) * (int)sizeof(short)));
    if (!handle)
        return Record();
    const Handle text = NewHandle(0);
    if (!text) {
        DisposeHandle((Handle)handle);
        return Record();
    }
    TERec& record = **handle;
    record.destRect = inDestination;
    record.viewRect = inView;
    record.hText = text;
    TakePortText(record);
    SetPrivate(record, {});
    LiveHandles().Insert(handle);
    return Record(handle);
}

Record Find(TEHandle inHandle)
{
    if (!LiveHandles().Contains(inHandle))
        return Record();
    // Somebody may have disposed of the handle, or shrunk it, by the Memory Manager.
    if (!IsHandleValid((Handle)inHandle) || !*inHandle || RoomForLines(inHandle) < 0) {
        LiveHandles().Erase(inHandle);
        return Record();
    }
    Mend(inHandle);
    return Record(inHandle);
}

void DisposeRecord(Record inRecord)
{
    LiveHandles().Erase(inRecord.Handle());
    if (inRecord->hText)
        DisposeHandle(inRecord->hText);
    DisposeHandle((Handle)inRecord.Handle());
}

int ReplaceBytes(Record inRecord, Span inSpan, const void* inBytes, int inCount)
{
    const Handle text = inRecord->hText;
    if (!text)
        return 0;
    // Bytes out of the text itself would move while they are inserted.
    const auto bytes = (const char*)inBytes;
    if (bytes >= *text && bytes < *text + GetHandleSize(text)) {
        const std::string copy(bytes,
                               (size_t)std::clamp<Size>(inCount, 0, *text + GetHandleSize(text) - bytes));
        return ReplaceBytes(inRecord, inSpan, copy.data(), (int)copy.size());
    }
    const int length = inRecord->teLength, removed = inSpan.end - inSpan.start;
    const int added = std::clamp(inCount, 0, kLongestText - (length - removed));
    const int tail = length - inSpan.end, total = length - removed + added;
    if (GetHandleSize(text) < total) {
        SetHandleSize(text, total);
        if (MemError() != noErr)
            return 0;
    }
    char* at = *text + inSpan.start;
    std::memmove(at + added, at + removed, (size_t)tail);
    if (added)
        std::memcpy(at, inBytes, (size_t)added);
    SetHandleSize(text, total);
    inRecord->teLength = (short)total;
    return added;
}

namespace {

Breaking BreakingOf(Record inRecord)
{
    return { inRecord->destRect.right - inRecord->destRect.left, inRecord->crOnly < 0, inRecord->wordBreak };
}

// Whether the line table is one that LayOut made for a text of this length.
bool IsSound(const TERec& inRecord, int inLength)
{
    const short *starts = inRecord.lineStarts, *end = starts + inRecord.nLines;
    return inRecord.nLines > 0 && starts[0] == 0 && *end == inLength && std::is_sorted(starts, end + 1);
}

// The starts of lines from one on, until the text ends or a start is that of an old line moved by the change.
struct Change {
    int editEnd, delta; // the old text from editEnd on is now delta farther

    // Leaves the starts in outFresh and answers the old line that comes next, nLines when none does.
    int LayOut(Record inRecord, int inFirst, std::vector<short>& outFresh) const
    {
        const Text text = inRecord.Bytes();
        const Breaking breaking = BreakingOf(inRecord);
        PortMeasure measure;
        const int lines = inRecord->nLines;
        int old = inFirst + 1, start = inRecord->lineStarts[inFirst];
        outFresh.clear();
        while (start < text.length && (int)outFresh.size() + inFirst < kMostLines) {
            outFresh.push_back((short)start);
            start = LineEnd(text, start, breaking, measure);
            while (old < lines && inRecord->lineStarts[old] + delta < start)
                ++old;
            if (old < lines && inRecord->lineStarts[old] >= editEnd &&
                inRecord->lineStarts[old] + delta == start)
                return old;
        }
        return lines;
    }
};

// Puts fresh starts in the place of old lines first…next, and moves those behind.
bool PutStarts(Record inRecord, int inFirst, int inNext, const std::vector<short>& inFresh, int inDelta)
{
    const int kept = inRecord->nLines - inNext, total = inFirst + (int)inFresh.size() + kept;
    if (total > kMostLines || !MakeRoom(inRecord.Handle(), total))
        return false;
    short* starts = inRecord->lineStarts;
    short* tail = starts + inFirst + inFresh.size();
    std::memmove(tail, starts + inNext, (size_t)(kept + 1) * sizeof(short));
    for (short* each = tail; each <= tail + kept; ++each)
        *each = (short)(*each + inDelta);
    std::copy(inFresh.begin(), inFresh.end(), starts + inFirst);
    inRecord->nLines = (short)total;
    return true;
}

} // namespace

void LayOut(Record inRecord)
{
    const Text text = inRecord.Bytes();
    const Breaking breaking = BreakingOf(inRecord);
    PortMeasure measure;
    int line = 0, start = 0;
    while (start < text.length && line < kMostLines && MakeRoom(inRecord.Handle(), line + 1)) {
        inRecord->lineStarts[line++] = (short)start;
        start = LineEnd(text, start, breaking, measure);
    }
    inRecord->nLines = (short)line;
    inRecord->lineStarts[line] = (short)text.length;
}

Relaid LayOutChange(Record inRecord, int inStart, int inRemoved, int inAdded)
{
    static std::vector<short> fresh;
    const int delta = inAdded - inRemoved, oldLines = inRecord->nLines;
    if (!IsSound(*inRecord, inRecord->teLength - delta)) {
        LayOut(inRecord);
        return { 0, kMostLines, true };
    }
    const short* starts = inRecord->lineStarts;
    const int line = (int)(std::upper_bound(starts, starts + oldLines, inStart) - starts) - 1;
    const int first = std::max(0, line - 1); // which may take words back from the line that changes
    const int firstEnd = inRecord->lineStarts[first + 1];
    const int next = Change{ inStart + inRemoved, delta }.LayOut(inRecord, first, fresh);
    const int freshLines = (int)fresh.size();
    if (!PutStarts(inRecord, first, next, fresh, delta)) {
        LayOut(inRecord);
        return { 0, kMostLines, true };
    }
    const bool firstStands = first < line && freshLines > 1 && fresh[1] == firstEnd;
    return { firstStands ? first + 1 : first, first + freshLines - 1, inRecord->nLines != oldLines };
}

} // namespace lampblack::text
