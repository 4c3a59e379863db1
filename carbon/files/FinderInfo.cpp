// Setting what is kept about an item: Finder information, dates, the lock.
#include "Dates.h"
#include "ForkHome.h"
#include "ItemChanges.h"
#include "ItemFacts.h"
#include "OpenFork.h"
#include "Sidecar.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lampblack::files {

using std::filesystem::path;

namespace {

constexpr mode_t kWriteBits = 0222;

OSErr CheckSettable(const Item& inItem)
{
    if (!inItem.exists)
        return fnfErr;
    if (inItem.hostName.empty())
        return vLckdErr;
    return !inItem.isFolder && !inItem.isLink && IsLocked(PathOf(inItem)) ? fLckdErr : noErr;
}

// All fields of DInfo and the first two of DXInfo are words; then a long, two bytes, a word and a long.
void DInfoToBytes(const void* inInfo, uint8_t* outSixteen)
{
    std::memcpy(outSixteen, inInfo, sizeof(DInfo));
    for (size_t i = 0; i < sizeof(DInfo); i += 2)
        foundation::Flip16(outSixteen + i);
}

void DXInfoToBytes(const void* inInfo, uint8_t* outSixteen)
{
    std::memcpy(outSixteen, inInfo, sizeof(DXInfo));
    for (const size_t word : { 0, 2, 10 })
        foundation::Flip16(outSixteen + word);
    foundation::Flip32(outSixteen + 4);
    foundation::Flip32(outSixteen + 12);
}

OSErr SetInfoOfFolder(const Item& inItem, const void* inInfo, const void* inExtendedInfo)
{
    FinderBytes info = {};
    ItemFacts facts(inItem);
    const OSErr error = facts.Look();
    if (error != noErr)
        return error;
    facts.FinderBytes(info.data());
    facts.ExtendedBytes(info.data() + 16);
    if (inInfo)
        DInfoToBytes(inInfo, info.data());
    if (inExtendedInfo)
        DXInfoToBytes(inExtendedInfo, info.data() + 16);
    return SetFolderInfo(PathOf(inItem), info);
}

OSErr SetModified(const path& inPath, const timespec& inTime)
{
    const timespec times[2] = { { 0, UTIME_OMIT }, inTime };
    return utimensat(AT_FDCWD, inPath.c_str(), times, AT_SYMLINK_NOFOLLOW) == 0 ? (OSErr)noErr
                                                                                : ErrorOfHost(errno);
}

// The host may tell the creation date of itself, as long as it is the wanted one.
OSErr SetCreated(const Item& inItem, const timespec& inTime)
{
    ItemFacts facts(inItem);
    const OSErr error = facts.Look();
    if (error != noErr || facts.Created().tv_sec == inTime.tv_sec)
        return error;
    const path place = PathOf(inItem);
    const timespec modified = facts.Modified();
    const OSErr set = SetCreationDate(place, inTime);
    return set == noErr ? SetModified(place, modified) : set;
}

} // namespace

OSErr SetItemInfo(const Item& inItem, const void* inInfo, const void* inExtendedInfo)
{
    const OSErr error = CheckSettable(inItem);
    if (error != noErr)
        return error;
    if (inItem.isFolder)
        return SetInfoOfFolder(inItem, inInfo, inExtendedInfo);
    FInfo info;
    FXInfo extended;
    if (inInfo)
        std::memcpy(&info, inInfo, sizeof info);
    if (inExtendedInfo)
        std::memcpy(&extended, inExtendedInfo, sizeof extended);
    return SetFinderInfo(PathOf(inItem), inInfo ? &info : nullptr, inExtendedInfo ? &extended : nullptr);
}

OSErr SetItemDates(const Item& inItem, const NewDates& inDates)
{
    OSErr error = CheckSettable(inItem);
    if (error == noErr && inDates.modified)
        error = SetModified(PathOf(inItem), *inDates.modified);
    if (error == noErr && inDates.created && !inItem.isLink)
        error = SetCreated(inItem, *inDates.created);
    return error;
}

OSErr SetItemLock(const Item& inItem, bool inIsLocked)
{
    if (!inItem.exists || inItem.isFolder)
        return fnfErr;
    const path place = PathOf(inItem);
    struct stat status;
    if (stat(place.c_str(), &status) != 0)
        return ErrorOfHost(errno);
    // Who else might write is not remembered: unlocking lets the owner.
    const mode_t mode = status.st_mode & 07777;
    const mode_t wanted = inIsLocked ? mode & ~kWriteBits : mode & kWriteBits ? mode : mode | S_IWUSR;
    return wanted == mode || chmod(place.c_str(), wanted) == 0 ? (OSErr)noErr : ErrorOfHost(errno);
}

} // namespace lampblack::files
