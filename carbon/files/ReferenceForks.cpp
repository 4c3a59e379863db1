// Forks by FSRef and name of fork, and the calls on their numbers, with offsets of 64 bits.
#include "FileReferences.h"
#include "OpenFiles.h"

#include <new>
#include <string_view>

using namespace lampblack::files;

namespace {

constexpr UInt16 kPlaces = 3, kTakenWishes = pleaseCacheMask | noCacheMask | rdVerifyMask;

OSErr FindFork(UniCharCount inLength, const UniChar* inName, bool* outIsResource)
{
    HFSUniStr255 resource;
    if (inLength && !inName)
        return paramErr;
    FSGetResourceForkName(&resource);
    *outIsResource = inLength == resource.length && std::equal(inName, inName + inLength, resource.unicode);
    return *outIsResource || inLength == 0 ? noErr : errFSBadForkName;
}

OSErr FindFile(const FSRef* inRef, UniCharCount inLength, const UniChar* inName, Item* outItem,
               bool* outIsResource)
{
    OSErr error = ItemOfRef(inRef, outItem);
    if (error != noErr)
        return error;
    if (outItem->isFolder)
        return notAFileErr;
    const Item link = *outItem;
    if (link.isLink && (!FollowLinks(link, outItem) || outItem->parent.volume != link.parent.volume))
        return fnfErr;
    return outItem->isFolder ? (OSErr)notAFileErr : FindFork(inLength, inName, outIsResource);
}

OSErr Find(SInt16 inRefNum, OpenFile** outFile)
{
    *outFile = FindOpenFile(inRefNum);
    return *outFile && (*outFile)->fork ? noErr : errFSBadForkRef;
}

OSErr FindAt(SInt16 inRefNum, UInt16 inMode, OpenFile** outFile)
{
    const OSErr error = Find(inRefNum, outFile);
    return error == noErr && (inMode & ~(kPlaces | kTakenWishes)) ? (OSErr)errFSBadPosMode : error;
}

void Give(size_t inDone, ByteCount* outCount)
{
    if (outCount)
        *outCount = inDone;
}

} // namespace

OSErr FSOpenFork(const FSRef* ref, UniCharCount forkNameLength, const UniChar* forkName, SInt8 permissions,
                 FSIORefNum* forkRefNum)
try {
    Item item;
    bool isResource = false;
    if (!forkRefNum)
        return paramErr;
    *forkRefNum = 0;
    const OSErr error = FindFile(ref, forkNameLength, forkName, &item, &isResource);
    return error == noErr ? OpenItem(item, isResource, permissions, forkRefNum) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSCreateFork(const FSRef* ref, UniCharCount forkNameLength, const UniChar* forkName)
try {
    Item item;
    bool isResource = false;
    SInt16 refNum = 0;
    OSErr error = FindFile(ref, forkNameLength, forkName, &item, &isResource);
    error = error == noErr ? OpenItem(item, isResource, fsRdPerm, &refNum) : error;
    if (error != noErr)
        return error;
    const SInt64 size = SizeOf(*FindOpenFile(refNum));
    CloseFile(refNum);
    return size > 0 ? errFSForkExists : noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSDeleteFork(const FSRef* ref, UniCharCount forkNameLength, const UniChar* forkName)
try {
    Item item;
    bool isResource = false;
    SInt16 refNum = 0;
    OSErr error = FindFile(ref, forkNameLength, forkName, &item, &isResource);
    if (error == noErr && IsOpen(item, isResource))
        error = fBsyErr;
    error = error == noErr ? OpenItem(item, isResource, fsRdWrPerm, &refNum) : error;
    if (error != noErr)
        return error;
    error = SetEnd(FindOpenFile(refNum), 0);
    const OSErr closed = CloseFile(refNum);
    return error != noErr ? error : closed;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSReadFork(FSIORefNum forkRefNum, UInt16 positionMode, SInt64 positionOffset, ByteCount requestCount,
                 void* buffer, ByteCount* actualCount)
try {
    OpenFile* file;
    size_t done = 0;
    OSErr error = FindAt(forkRefNum, positionMode, &file);
    if (error == noErr)
        error = ReadFile(file, positionMode, positionOffset, requestCount, buffer, &done);
    Give(done, actualCount);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSWriteFork(FSIORefNum forkRefNum, UInt16 positionMode, SInt64 positionOffset, ByteCount requestCount,
                  const void* buffer, ByteCount* actualCount)
try {
    OpenFile* file;
    size_t done = 0;
    OSErr error = FindAt(forkRefNum, positionMode, &file);
    if (error == noErr)
        error = WriteFile(file, positionMode, positionOffset, requestCount, buffer, &done);
    Give(done, actualCount);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSGetForkPosition(FSIORefNum forkRefNum, SInt64* position)
try {
    OpenFile* file;
    const OSErr error = position ? Find(forkRefNum, &file) : (OSErr)paramErr;
    if (error == noErr)
        *position = file->mark;
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSSetForkPosition(FSIORefNum forkRefNum, UInt16 positionMode, SInt64 positionOffset)
try {
    OpenFile* file;
    const OSErr error = FindAt(forkRefNum, positionMode, &file);
    return error == noErr ? SetMark(file, positionMode, positionOffset) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSGetForkSize(FSIORefNum forkRefNum, SInt64* forkSize)
try {
    OpenFile* file;
    const OSErr error = forkSize ? Find(forkRefNum, &file) : (OSErr)paramErr;
    if (error == noErr)
        *forkSize = SizeOf(*file);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSSetForkSize(FSIORefNum forkRefNum, UInt16 positionMode, SInt64 positionOffset)
try {
    OpenFile* file;
    SInt64 size = 0;
    OSErr error = FindAt(forkRefNum, positionMode, &file);
    error = error == noErr ? PlaceIn(*file, positionMode, positionOffset, &size) : error;
    return error == noErr ? SetEnd(file, size) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSFlushFork(FSIORefNum forkRefNum)
try {
    OpenFile* file;
    const OSErr error = Find(forkRefNum, &file);
    return error == noErr ? FlushFile(file) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSCloseFork(FSIORefNum forkRefNum)
try {
    OpenFile* file;
    const OSErr error = Find(forkRefNum, &file);
    return error == noErr ? CloseFile(forkRefNum) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}
