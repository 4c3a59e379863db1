// Renaming, moving and exchanging, with all parts and in an order that leaves the old pair or the new one.
#include "AppleDouble.h"
#include "ForkHome.h"
#include "HostParts.h"
#include "ItemChanges.h"
#include "OpenFiles.h"
#include "Sidecar.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace lampblack::files {

using std::filesystem::path;

namespace {

bool IsSameFile(const path& inOne, const path& inOther)
{
    struct stat one, other;
    return lstat(inOne.c_str(), &one) == 0 && lstat(inOther.c_str(), &other) == 0 &&
           one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

// Renames and replaces nothing; but a file system may take both names for one.
OSErr RenameOnHost(const path& inFrom, const path& inTo)
{
    int failure = RenameToNothing(inFrom, inTo) ? 0 : errno;
    if (failure == EEXIST && IsSameFile(inFrom, inTo))
        failure = rename(inFrom.c_str(), inTo.c_str()) == 0 ? 0 : errno;
    return failure == 0 ? (OSErr)noErr : failure == EXDEV ? (OSErr)diffVolErr : ErrorOfHost(failure);
}

bool Lies(const path& inPath, const path& inWithin)
{
    const auto end = std::mismatch(inWithin.begin(), inWithin.end(), inPath.begin(), inPath.end());
    return end.first == inWithin.end();
}

// What is being written by its name cannot lose it: the item, or something in the folder.
bool NeedsName(const Item& inItem)
{
    const path place = PathOf(inItem);
    bool needs = false;
    ForEachOpenFile([&](OpenFile& file) {
        const bool isHeld = file.isWritable && (file.fork ? file.fork->NeedsItsName() : true);
        needs = needs || (isHeld && Lies(PathOf(file.item), place));
    });
    return needs;
}

// A folder on whose way up another lies is within it.
bool IsWithin(Folder inFolder, Folder inOther)
{
    Item item;
    while (inFolder.id != fsRtParID) {
        if (inFolder == inOther)
            return true;
        if (!ItemWithID(inFolder, &item))
            return false;
        inFolder = item.parent;
    }
    return false;
}

OSErr CheckChange(const Item& inItem)
{
    if (!inItem.exists)
        return fnfErr;
    if (inItem.hostName.empty())
        return vLckdErr;
    const path place = PathOf(inItem);
    if (!inItem.isFolder && !inItem.isLink && IsLocked(place))
        return fLckdErr;
    const bool isWritten = !inItem.isFolder && !inItem.isLink && !IsOpen(inItem, true) &&
                           !IsOpen(inItem, false) && IsWrittenElsewhere(place);
    return NeedsName(inItem) || isWritten ? fBsyErr : noErr;
}

// The catalog and the open files learn of it.
void Tell(const Item& inOld, const Item& inNew)
{
    NodeDidMove(inOld, inNew);
    OpenFilesMoved(inOld, inNew);
}

OSErr Place(const Item& inOld, const Item& inNew)
{
    const path from = PathOf(inOld), to = PathOf(inNew);
    PartsOnTheMove parts;
    OSErr error = parts.Link(from, to);
    error = error == noErr ? RenameOnHost(from, to) : error;
    if (error != noErr)
        return error;
    parts.Keep(); // whatever happens from here on, the file has its new name
    error = FlushFolder(to.parent_path());
    parts.Drop();
    Tell(inOld, inNew);
    const OSErr other =
        from.parent_path() == to.parent_path() ? (OSErr)noErr : FlushFolder(from.parent_path());
    return error != noErr ? error : other;
}

Item Renamed(const Item& inItem, Folder inParent, const std::string& inHostName)
{
    Item item = inItem;
    item.parent = inParent;
    item.hostName = inHostName;
    item.macName = MacNameOf(inHostName);
    return item;
}

// Whether the name is taken by another item, in whatever capitals.
bool IsTaken(const Item& inBy, const Item& inSelf)
{
    Str255 name;
    Item found;
    name[0] = (unsigned char)inBy.macName.size();
    inBy.macName.copy((char*)name + 1, inBy.macName.size());
    const OSErr error = Resolve(inBy.parent.volume, inBy.parent.id, name, &found);
    return error == noErr && !(found.parent == inSelf.parent && found.hostName == inSelf.hostName);
}

} // namespace

OSErr RenameItem(const Item& inItem, const std::string& inNewHostName, Item* outNew)
{
    const OSErr error = CheckChange(inItem);
    if (error != noErr)
        return error;
    const Item item = Renamed(inItem, inItem.parent, inNewHostName);
    if (outNew)
        *outNew = item;
    if (IsPartName(inNewHostName))
        return bdNamErr;
    if (inNewHostName == inItem.hostName)
        return noErr;
    return IsTaken(item, inItem) ? (OSErr)dupFNErr : Place(inItem, item);
}

OSErr MoveItem(const Item& inItem, Folder inTo, Item* outNew)
{
    const OSErr error = CheckChange(inItem);
    if (error != noErr)
        return error;
    Item folder;
    if (!ItemWithID(inTo, &folder))
        return dirNFErr;
    if (!folder.isFolder)
        return badMovErr;
    if (inTo.volume != inItem.parent.volume)
        return diffVolErr;
    if (inItem.isFolder && IsWithin(inTo, NodeOf(inItem)))
        return badMovErr;
    const Item item = Renamed(inItem, inTo, inItem.hostName);
    if (outNew)
        *outNew = item;
    if (inTo == inItem.parent)
        return noErr;
    return IsTaken(item, inItem) ? (OSErr)dupFNErr : Place(inItem, item);
}

namespace {

// One of the two files of an exchange, before it.
struct Side {
    path place;
    LocatedForks forks;
    FinderBytes info;

    bool IsOwnHome() const { return forks.ownForm == Form::RawFork || forks.ownForm == Form::AppleDouble; }
};

// Reads a side; a container is taken apart first, so that Finder information and forks can go different ways.
OSErr ReadSide(const Item& inItem, Side* outSide)
{
    outSide->place = PathOf(inItem);
    outSide->forks = LocateForks(outSide->place);
    const Form form = outSide->forks.ownForm;
    if (form == Form::MacBinary || form == Form::AppleSingle || form == Form::BinHex) {
        std::unique_ptr<ForkHome> home;
        OSErr error = ForkHome::Open(outSide->place, &home);
        ForkChange change;
        change.finderInfo = &outSide->forks.finderInfo;
        error = error == noErr ? home->Replace(change) : error;
        if (error != noErr)
            return error == opWrErr ? (OSErr)fBsyErr : error;
        home.reset();
        outSide->forks = LocateForks(outSide->place);
    }
    outSide->info = ToFinderBytes(outSide->forks.finderInfo, outSide->forks.extendedFinderInfo);
    return ErrorOfSearch(outSide->forks);
}

// A file that brings its resources in itself needs none in the sidecar.
OSErr TakeFork(const Side& inTaker, const Side& inGiver)
{
    const Bytes fork = inGiver.IsOwnHome() ? Bytes() : inGiver.forks.resourceFork;
    if (fork.empty() && inTaker.forks.resourceFork.empty() && !inTaker.forks.hasFinderInfo)
        return noErr;
    const OSErr error = SetSidecarFork(inTaker.place, fork, inTaker.info);
    return error == noErr && fork.empty() ? RemoveOtherForks(inTaker.place) : error;
}

OSErr SwapOnHost(const path& inOne, const path& inOther)
{
    if (renameat2(AT_FDCWD, inOne.c_str(), AT_FDCWD, inOther.c_str(), RENAME_EXCHANGE) == 0)
        return noErr;
    if (errno != EINVAL && errno != ENOSYS)
        return errno == EXDEV ? (OSErr)diffVolErr : ErrorOfHost(errno);
    const path aside = inOne.parent_path() / ("._" + inOne.filename().native() + ".exchange");
    if (rename(inOne.c_str(), aside.c_str()) != 0)
        return ErrorOfHost(errno);
    if (rename(inOther.c_str(), inOne.c_str()) == 0 && rename(aside.c_str(), inOther.c_str()) == 0)
        return noErr;
    const OSErr error = ErrorOfHost(errno);
    rename(aside.c_str(), inOne.c_str());
    return error;
}

OSErr CheckSide(const Item& inItem)
{
    if (inItem.exists && (inItem.isFolder || inItem.isLink))
        return notAFileErr;
    const OSErr error = CheckChange(inItem);
    return error == noErr && WriterOf(inItem, true) ? (OSErr)fBsyErr : error;
}

} // namespace

OSErr ExchangeItems(const Item& inOne, const Item& inOther)
{
    OSErr error = CheckSide(inOne);
    error = error == noErr ? CheckSide(inOther) : error;
    if (error != noErr)
        return error;
    if (inOne.parent.volume != inOther.parent.volume)
        return diffVolErr;
    if (NodeOf(inOne) == NodeOf(inOther))
        return sameFileErr;
    Side one, other;
    error = ReadSide(inOne, &one);
    error = error == noErr ? ReadSide(inOther, &other) : error;
    error = error == noErr ? SwapOnHost(one.place, other.place) : error;
    if (error != noErr)
        return error;
    OpenFilesExchanged(inOne, inOther);
    const OSErr first = TakeFork(one, other), second = TakeFork(other, one);
    error = FlushFolder(one.place.parent_path());
    const OSErr last = FlushFolder(other.place.parent_path());
    return first != noErr ? first : second != noErr ? second : error != noErr ? error : last;
}

} // namespace lampblack::files
