// The facts of one item, each looked for when it is first asked for.
#include "ItemFacts.h"

#include "Dates.h"
#include "Listing.h"
#include "OpenFiles.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

namespace lampblack::files {

namespace {

constexpr FInfo kLinkInfo = { 'slnk', 'rhap', kIsAlias, { 0, 0 }, 0 };

timespec TimeOf(const statx_timestamp& inTime)
{
    return { (time_t)inTime.tv_sec, (long)inTime.tv_nsec };
}

bool IsBefore(const timespec& inLeft, const timespec& inRight)
{
    return inLeft.tv_sec != inRight.tv_sec ? inLeft.tv_sec < inRight.tv_sec
                                           : inLeft.tv_nsec < inRight.tv_nsec;
}

// The date that a container keeps: MacBinary in local time, the others in Greenwich's.
std::optional<timespec> KeptCreationDate(const LocatedForks& inForks)
{
    for (const auto& container : inForks.containers) {
        const UInt32 date = container->dates.created;
        if (date && container->form == Form::MacBinary)
            return TimeOfLocalDate(date);
        if (date)
            return timespec{ (time_t)((SInt64)date - kSecondsTo1970), 0 };
    }
    return {};
}

// Nobody may write it, or this user may not. The administrator may write everything, so that the bits count
// first.
bool IsLocked(const std::filesystem::path& inPath, UInt16 inMode)
{
    return (inMode & 0222) == 0 || access(inPath.c_str(), W_OK) != 0;
}

} // namespace

OSErr ItemFacts::Look()
{
    const int flags = fItem.isLink ? AT_SYMLINK_NOFOLLOW : 0;
    const unsigned fields = STATX_BASIC_STATS | STATX_BTIME;
    return statx(AT_FDCWD, fPath.c_str(), flags, fields, &fStatus) == 0 ? noErr : fnfErr;
}

// Only ordinary files are opened: with a device that would be an act.
const LocatedForks& ItemFacts::Forks()
{
    if (!fForks && S_ISREG(fStatus.stx_mode))
        fForks = LocateForks(fPath, Wanted::Both, Delivery::Places);
    if (!fForks && fItem.isFolder)
        ReadFolderInfo();
    if (!fForks)
        fForks.emplace();
    return *fForks;
}

void ItemFacts::ReadFolderInfo()
{
    MappedFile sidecar;
    fForks.emplace();
    if (fItem.hostName.empty() || !sidecar.Open(fPath.parent_path() / ("._" + fItem.hostName)))
        return;
    auto container = std::make_shared<const Container>(ReadContainer(sidecar.Contents()));
    if (container->form != Form::AppleDouble)
        return;
    fForks->finderInfo = container->finderInfo;
    fForks->extendedFinderInfo = container->extendedFinderInfo;
    fForks->containers.push_back(std::move(container));
}

void ItemFacts::FinderBytes(UInt8* outSixteen)
{
    FinderInfoToBytes(fItem.isLink ? kLinkInfo : Forks().finderInfo, outSixteen);
}

void ItemFacts::ExtendedBytes(UInt8* outSixteen)
{
    ExtendedInfoToBytes(Forks().extendedFinderInfo, outSixteen);
}

UInt64 ItemFacts::DataSize()
{
    if (!S_ISREG(fStatus.stx_mode))
        return 0;
    return Forks().exists ? Forks().dataSize : fStatus.stx_size;
}

// What is written into an open resource fork is not in its file yet.
UInt64 ItemFacts::ResourceSize()
{
    if (const OpenFile* writer = WriterOf(fItem, true); writer && writer->fork)
        return (UInt64)SizeOf(*writer);
    return Forks().resourceSize;
}

UInt32 ItemFacts::Valence() const
{
    return fItem.isFolder ? (UInt32)CountNamesIn(fPath) : 0;
}

timespec ItemFacts::Created()
{
    if (const auto kept = KeptCreationDate(Forks()))
        return *kept;
    timespec created = Modified();
    const timespec birth = TimeOf(fStatus.stx_btime), changed = TimeOf(fStatus.stx_ctime);
    if ((fStatus.stx_mask & STATX_BTIME) && birth.tv_sec != 0)
        created = std::min(created, birth, IsBefore);
    return std::min(created, changed, IsBefore);
}

timespec ItemFacts::Modified() const
{
    return TimeOf(fStatus.stx_mtime);
}

UInt8 ItemFacts::Attributes() const
{
    const bool isResourceOpen = IsOpen(fItem, true), isDataOpen = IsOpen(fItem, false);
    int attributes = fItem.isFolder ? kioFlAttribDirMask : 0;
    if (!fItem.isLink && IsLocked(fPath, fStatus.stx_mode))
        attributes |= kioFlAttribLockedMask;
    if (isResourceOpen)
        attributes |= kioFlAttribResOpenMask;
    if (isDataOpen)
        attributes |= kioFlAttribDataOpenMask;
    if (isResourceOpen || isDataOpen)
        attributes |= kioFlAttribFileOpenMask;
    return (UInt8)attributes;
}

FInfo FinderInfoOf(const Item& inItem)
{
    return inItem.isLink ? kLinkInfo : LocateForks(PathOf(inItem), Wanted::Both, Delivery::Places).finderInfo;
}

UInt64 PhysicalSize(UInt64 inLogicalSize)
{
    return (inLogicalSize + kAllocationBlock - 1) / kAllocationBlock * kAllocationBlock;
}

} // namespace lampblack::files
