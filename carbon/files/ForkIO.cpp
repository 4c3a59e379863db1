// What happens to an open file by its number: opening and closing, the mark, reading and writing, flushing.
#include "ForkHome.h"
#include "OpenFiles.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace lampblack::files {

namespace {

// Data forks that were written and closed, and not flushed since.
std::vector<Item>& Unflushed()
{
    static auto& items = *new std::vector<Item>;
    return items;
}

void NoteUnflushed(const Item& inItem)
{
    std::vector<Item>& items = Unflushed();
    const bool isKnown = std::any_of(items.begin(), items.end(), [&](const Item& item) {
        return item.parent == inItem.parent && item.hostName == inItem.hostName;
    });
    if (!isKnown)
        items.push_back(inItem);
}

OSErr FlushItem(const Item& inItem)
{
    const Descriptor file(open(PathOf(inItem).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return noErr; // deleted or moved away since
    return fsync(file.Get()) == 0 ? (OSErr)noErr : ErrorOfHost(errno);
}

// The fork that other numbers of this process stand for already.
std::shared_ptr<OpenFork> ForkInUse(const Item& inItem, bool inResourceFork)
{
    std::shared_ptr<OpenFork> fork;
    ForEachOpenFile([&](OpenFile& file) {
        if (file.fork && file.isResourceFork == inResourceFork && file.item.parent == inItem.parent &&
            file.item.hostName == inItem.hostName)
            fork = file.fork;
    });
    return fork;
}

// A bare resource file is its own resource fork: one of the two forks may be written while the other is open,
// never the bytes that the other reads.
bool IsItsOtherFork(const Item& inItem, bool inResourceFork, bool inForWriting)
{
    const bool isBusy =
        inForWriting ? IsOpen(inItem, !inResourceFork) : WriterOf(inItem, !inResourceFork) != nullptr;
    if (!isBusy)
        return false;
    const std::filesystem::path path = PathOf(inItem);
    const LocatedForks forks = LocateForks(path);
    return forks.hasResourceFork && forks.resourcePath == path &&
           (forks.form == Form::RawFork || forks.form == Form::AppleDouble);
}

OSErr StartWriting(const Item& inItem, bool inResourceFork, OpenFork& ioFork, WriteAccess inAccess)
{
    return IsItsOtherFork(inItem, inResourceFork, true) ? (OSErr)opWrErr : ioFork.StartWriting(inAccess);
}

OSErr GetFork(const Item& inItem, bool inResourceFork, std::shared_ptr<OpenFork>* outFork)
{
    *outFork = ForkInUse(inItem, inResourceFork);
    if (*outFork)
        return noErr;
    if (IsItsOtherFork(inItem, inResourceFork, false))
        return opWrErr;
    return (inResourceFork ? OpenResourceFork : OpenDataFork)(PathOf(inItem), outFork);
}

WriteAccess AccessOf(SInt8 inPermission)
{
    return inPermission == fsRdPerm       ? WriteAccess::None
           : inPermission == fsRdWrShPerm ? WriteAccess::Shared
                                          : WriteAccess::Exclusive;
}

bool IsWrittenByOthers(const OpenFork* inFork)
{
    bool isWritten = false;
    ForEachOpenFile([&](OpenFile& file) { isWritten |= file.fork.get() == inFork && file.isWritable; });
    return isWritten;
}

} // namespace

OSErr OpenItem(const Item& inItem, bool inResourceFork, SInt8 inPermission, SInt16* outRefNum)
{
    if (!outRefNum || inPermission < fsCurPerm || inPermission > fsRdWrShPerm)
        return paramErr;
    *outRefNum = 0;
    if (!inItem.exists || inItem.isFolder)
        return fnfErr;
    WriteAccess access = AccessOf(inPermission);
    const OpenFile* writer = WriterOf(inItem, inResourceFork);
    const bool sharesWriter = writer && writer->sharesWriting && access == WriteAccess::Shared;
    if (writer && access != WriteAccess::None && !sharesWriter) {
        if (inPermission != fsCurPerm) {
            *outRefNum = writer->refNum;
            return opWrErr;
        }
        access = WriteAccess::None;
    }
    OpenFile file;
    OSErr error = GetFork(inItem, inResourceFork, &file.fork);
    if (error != noErr)
        return error;
    const bool starts = access != WriteAccess::None && !writer;
    error = starts ? StartWriting(inItem, inResourceFork, *file.fork, access) : (OSErr)noErr;
    if (error != noErr && inPermission != fsCurPerm)
        return error;
    file.item = inItem;
    file.isResourceFork = inResourceFork;
    file.isWritable = access != WriteAccess::None && error == noErr;
    file.sharesWriting = access == WriteAccess::Shared;
    const std::shared_ptr<OpenFork> fork = file.fork;
    const bool hasStarted = starts && file.isWritable;
    *outRefNum = AddOpenFile(std::move(file));
    if (*outRefNum != 0)
        return noErr;
    if (hasStarted)
        fork->StopWriting();
    return tmfoErr;
}

OSErr CloseFile(SInt16 inRefNum)
{
    const OpenFile* found = FindOpenFile(inRefNum);
    if (!found || !found->fork)
        return found ? (OSErr)rfNumErr : ErrorOfNumber(inRefNum);
    const OpenFile file = *found;
    RemoveOpenFile(inRefNum);
    if (file.hasWritten && !file.isResourceFork)
        NoteUnflushed(file.item);
    if (!file.isWritable || IsWrittenByOthers(file.fork.get()))
        return noErr;
    return file.fork->StopWriting();
}

OSErr PlaceIn(const OpenFile& inFile, UInt16 inMode, SInt64 inOffset, SInt64* outPlace)
{
    const UInt16 from = inMode & 3;
    const SInt64 base = from == fsFromStart ? 0 : from == fsFromLEOF ? SizeOf(inFile) : inFile.mark;
    if (__builtin_add_overflow(base, from == fsAtMark ? 0 : inOffset, outPlace))
        return inOffset < 0 ? posErr : paramErr;
    return *outPlace < 0 ? posErr : noErr;
}

OSErr SetMark(OpenFile* ioFile, UInt16 inMode, SInt64 inOffset)
{
    SInt64 place = 0;
    const OSErr error = PlaceIn(*ioFile, inMode, inOffset, &place);
    if (error != noErr)
        return error;
    const SInt64 size = SizeOf(*ioFile);
    ioFile->mark = std::min(place, size);
    return place > size ? eofErr : noErr;
}

OSErr ReadFile(OpenFile* ioFile, UInt16 inMode, SInt64 inOffset, size_t inCount, void* outBytes,
               size_t* outDone)
{
    *outDone = 0;
    if (!ioFile->fork)
        return rfNumErr;
    if (!outBytes && inCount)
        return paramErr;
    SInt64 place = 0;
    OSErr error = PlaceIn(*ioFile, inMode, inOffset, &place);
    if (error != noErr)
        return error;
    error = ioFile->fork->Read(outBytes, inCount, place, outDone);
    const bool isCut = *outDone < inCount;
    ioFile->mark = isCut ? std::min(place + (SInt64)*outDone, SizeOf(*ioFile)) : place + (SInt64)*outDone;
    return error == noErr && isCut ? (OSErr)eofErr : error;
}

OSErr WriteFile(OpenFile* ioFile, UInt16 inMode, SInt64 inOffset, size_t inCount, const void* inBytes,
                size_t* outDone)
{
    *outDone = 0;
    if (!ioFile->fork)
        return rfNumErr;
    if (!ioFile->isWritable)
        return wrPermErr;
    if (!inBytes && inCount)
        return paramErr;
    SInt64 place = 0, end = 0;
    OSErr error = PlaceIn(*ioFile, inMode, inOffset, &place);
    if (error != noErr)
        return error;
    if (inCount > (size_t)INT64_MAX || __builtin_add_overflow(place, (SInt64)inCount, &end))
        return fileBoundsErr;
    error = inCount ? ioFile->fork->Write(inBytes, inCount, place, outDone) : (OSErr)noErr;
    ioFile->mark = place + (SInt64)*outDone;
    ioFile->hasWritten |= *outDone > 0;
    return error;
}

OSErr SetEnd(OpenFile* ioFile, SInt64 inSize)
{
    if (!ioFile->fork)
        return rfNumErr;
    if (!ioFile->isWritable)
        return wrPermErr;
    if (inSize < 0)
        return paramErr;
    const OSErr error = ioFile->fork->SetSize(inSize);
    if (error != noErr)
        return error;
    ioFile->hasWritten = true;
    ForEachOpenFile([&](OpenFile& file) {
        if (file.fork == ioFile->fork)
            file.mark = std::min(file.mark, inSize);
    });
    return noErr;
}

OSErr ReserveIn(OpenFile* ioFile, SInt64 inBytes)
{
    if (!ioFile->fork)
        return rfNumErr;
    if (inBytes < 0)
        return paramErr;
    return ioFile->isWritable ? ioFile->fork->Reserve(inBytes) : (OSErr)wrPermErr;
}

OSErr FlushFile(OpenFile* ioFile)
{
    if (!ioFile->fork)
        return rfNumErr;
    return ioFile->isWritable ? ioFile->fork->Flush() : (OSErr)noErr;
}

OSErr FlushFilesOf(SInt16 inVolume)
{
    OSErr first = noErr;
    const auto note = [&](OSErr inError) { first = first != noErr ? first : inError; };
    ForEachOpenFile([&](OpenFile& file) {
        if (file.fork && file.item.parent.volume == inVolume)
            note(FlushFile(&file));
    });
    std::erase_if(Unflushed(), [&](const Item& item) {
        const bool isOfVolume = item.parent.volume == inVolume;
        if (isOfVolume)
            note(FlushItem(item));
        return isOfVolume;
    });
    return first;
}

} // namespace lampblack::files
