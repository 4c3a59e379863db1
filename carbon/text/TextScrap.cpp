// The private scrap: what Cut and Copy put aside and Paste brings back, and its way to the desk scrap and
// from it.
#include "text/Editing.h"

#include <Carbon/MacMemory.h>
#include <Carbon/Scrap.h>

#include <algorithm>

namespace lampblack::text {

namespace {

struct PrivateScrap {
    Handle handle = nullptr;
    long length = 0; // of the handle's bytes, those that count
};

PrivateScrap& TheScrap()
{
    static PrivateScrap scrap;
    if (!scrap.handle || !IsHandleValid(scrap.handle)) {
        scrap.handle = NewHandle(0);
        scrap.length = 0;
    }
    return scrap;
}

// The bytes that are really there, whatever an application set as their length.
long LengthOf(const PrivateScrap& inScrap)
{
    const long size = inScrap.handle ? (long)GetHandleSize(inScrap.handle) : 0;
    return std::clamp(inScrap.length, 0L, std::min<long>(size, kLongestText));
}

bool CopySelection(Record inRecord)
{
    const Span selection = inRecord.Selection();
    PrivateScrap& scrap = TheScrap();
    if (PtrToXHand(inRecord.Bytes().bytes + selection.start, scrap.handle, selection.end - selection.start) !=
        noErr)
        return false;
    scrap.length = selection.end - selection.start;
    return true;
}

} // namespace

} // namespace lampblack::text

using namespace lampblack::text;

void TECopy(TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (record)
        CopySelection(record);
}

void TECut(TEHandle inHandle)
{
    const Record record = Find(inHandle);
    if (record && CopySelection(record))
        TEDelete(inHandle);
}

void TEPaste(TEHandle inHandle)
{
    const Record record = Find(inHandle);
    const PrivateScrap& scrap = TheScrap();
    if (record && LengthOf(scrap) > 0)
        ReplaceSpan(record, record.Selection(), *scrap.handle, LengthOf(scrap));
}

long TEGetScrapLength(void)
{
    return LengthOf(TheScrap());
}

void TESetScrapLength(long inLength)
{
    TheScrap().length = std::max(0L, inLength);
}

Handle TEGetScrapHandle(void)
{
    return TheScrap().handle;
}

void TESetScrapHandle(Handle inScrap)
{
    if (IsHandleValid(inScrap))
        TheScrap().handle = inScrap;
}

OSErr TEFromScrap(void)
{
    ScrapRef desk = nullptr;
    Size size = 0;
    OSStatus status = GetCurrentScrap(&desk);
    if (status == noErr)
        status = GetScrapFlavorSize(desk, kScrapFlavorTypeText, &size);
    if (status != noErr)
        return (OSErr)status;
    PrivateScrap& scrap = TheScrap();
    SetHandleSize(scrap.handle, std::max<Size>(size, 0));
    if (MemError() != noErr)
        return MemError();
    status = GetScrapFlavorData(desk, kScrapFlavorTypeText, &size, *scrap.handle);
    scrap.length = status == noErr ? (long)size : 0;
    return (OSErr)status;
}

OSErr TEToScrap(void)
{
    ScrapRef desk = nullptr;
    const PrivateScrap& scrap = TheScrap();
    const OSStatus status = GetCurrentScrap(&desk);
    if (status != noErr)
        return (OSErr)status;
    return (OSErr)PutScrapFlavor(desk, kScrapFlavorTypeText, kScrapFlavorMaskNone, LengthOf(scrap),
                                 *scrap.handle);
}
