// What happens to an open file by its number: opening and closing, the mark, reading and writing, flushing.
#include "ForkHome.h"
#include "OpenFiles.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace lampblack::files {

namespace {

// Data forks that were written and closed, and not flushed since: by ID, which outlasts a new name.
std::vector<Folder>& Unflushed()
{
    static auto& nodes = *new std::vector<Folder>;
    return nodes;
}

void NoteUnflushed(const Item& inItem)
{
    std::vector<Folder>& nodes = Unflushed();
    const Folder node = NodeOf(inItem);
    if (std::find(nodes.begin(), nodes.end(), node) == nodes.end())
        nodes.push_back(node);
}

OSErr FlushNode(Folder inNode)
{
    Item item;
    if (!ItemWithID(inNode, &item))
        return noErr; // deleted since
    const Descriptor file(open(PathOf(item).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    return !file || fsync(file.Get()) == 0 ? (OSErr)noErr : ErrorOfHost(errno);
}

// A process that ends without closing its files loses nothing by it. What a child process has from its parent
// is the parent's.
void FlushAtExit()
{
    static const int registered = std::atexit([] {
        ForEachOpenFile([](OpenFile& file) {
            if (file.fork && file.isResourceFork && file.opener == getpid())
                FlushFile(&file);
        });
    });
    (void)registered;
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

namespace {

// How a fork is opened beside the writer that this process has, or none: as asked, or for reading where that
// is left to us.
OSErr Agree(SInt8 inPermission, const OpenFile* inWriter, WriteAccess* outAccess)
{
    *outAccess = AccessOf(inPermission);
    const bool isFree = !inWriter || *outAccess == WriteAccess::None ||
                        (*outAccess == WriteAccess::Shared && inWriter->sharesWriting);
    if (isFree)
        return noErr;
    *outAccess = WriteAccess::None;
    return inPermission == fsCurPerm ? noErr : opWrErr;
}

OSErr Register(OpenFile&& ioFile, bool inHasStarted, SInt16* outRefNum)
{
    const std::shared_ptr<OpenFork> fork = ioFile.fork;
    if (inHasStarted && ioFile.isResourceFork)
        FlushAtExit();
    *outRefNum = AddOpenFile(std::move(ioFile));
    if (*outRefNum == 0 && inHasStarted)
        fork->StopWriting();
    return *outRefNum ? noErr : tmfoErr;
}

} // namespace

OSErr OpenItem(const Item& inItem, bool inResourceFork, SInt8 inPermission, SInt16* outRefNum)
{
    if (!outRefNum || inPermission < fsCurPerm || inPermission > fsRdWrShPerm)
        return paramErr;
    *outRefNum = 0;
    if (!inItem.exists || inItem.isFolder)
        return fnfErr;
    OpenFile file;
    file.item = inItem;
    file.isResourceFork = inResourceFork;
    WriteAccess access;
    const OpenFile* writer = WriterOf(inItem, inResourceFork);
    OSErr error = Agree(inPermission, writer, &access);
    if (error != noErr)
        *outRefNum = writer->refNum;
    error = error == noErr ? GetFork(inItem, inResourceFork, &file.fork) : error;
    if (error != noErr)
        return error;
    const bool starts = access != WriteAccess::None && !writer;
    error = starts ? StartWriting(inItem, inResourceFork, *file.fork, access) : (OSErr)noErr;
    if (error != noErr && inPermission != fsCurPerm)
        return error;
    file.isWritable = access != WriteAccess::None && error == noErr;
    file.sharesWriting = access == WriteAccess::Shared;
    file.opener = getpid();
    const bool hasStarted = starts && file.isWritable;
    return Register(std::move(file), hasStarted, outRefNum);
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
    std::erase_if(Unflushed(), [&](Folder node) {
        if (node.volume == inVolume)
            note(FlushNode(node));
        return node.volume == inVolume;
    });
    return first;
}

} // namespace lampblack::files
