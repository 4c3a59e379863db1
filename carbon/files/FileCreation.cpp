// Making files and folders, and deleting them.
#include "ForkHome.h"
#include "HostParts.h"
#include "ItemChanges.h"
#include "OpenFiles.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lampblack::files {

using std::filesystem::path;

namespace {

constexpr size_t kLongestName = 31;

OSErr CheckNew(const Item& inItem)
{
    if (inItem.exists)
        return dupFNErr;
    return IsPartName(inItem.hostName) ? bdNamErr : noErr;
}

bool IsInUse(const Item& inItem)
{
    return IsOpen(inItem, false) || IsOpen(inItem, true) ||
           (!inItem.isLink && IsWrittenElsewhere(PathOf(inItem)));
}

OSErr DeleteFile(const Item& inItem)
{
    const path file = PathOf(inItem);
    if (!inItem.isLink && IsLocked(file))
        return fLckdErr;
    if (IsInUse(inItem))
        return fBsyErr;
    std::vector<path> parts;
    if (const OSErr error = PartsBeside(file, &parts); error != noErr)
        return error;
    if (unlink(file.c_str()) != 0)
        return ErrorOfHost(errno);
    for (const path& part : parts)
        unlink(part.c_str());
    return FlushFolder(file.parent_path());
}

// A folder that lists nothing may still hold parts that earlier files left.
OSErr DeleteFolder(const Item& inItem)
{
    const path folder = PathOf(inItem);
    if (!NamesIn(folder).empty() || NodeOf(inItem) == DefaultFolder())
        return fBsyErr;
    RemoveLeftParts(folder);
    if (rmdir(folder.c_str()) != 0)
        return errno == ENOTEMPTY || errno == EEXIST ? (OSErr)fBsyErr : ErrorOfHost(errno);
    RemoveLeftPart(SidecarOf(folder));
    return FlushFolder(folder.parent_path());
}

} // namespace

OSErr CheckNewName(ConstStr255Param inName, std::string* outHostName)
{
    if (!inName)
        return paramErr;
    const std::string_view name((const char*)inName + 1, inName[0]);
    const bool isPossible = !name.empty() && name.size() <= kLongestName && name != "." && name != ".." &&
                            name.find(':') == std::string_view::npos &&
                            name.find('\0') == std::string_view::npos;
    if (!isPossible)
        return bdNamErr;
    *outHostName = HostNameOf(name);
    return IsPartName(*outHostName) ? bdNamErr : noErr;
}

OSErr CreateFileItem(Item* ioItem, const FInfo& inInfo, const FXInfo& inExtended)
{
    OSErr error = CheckNew(*ioItem);
    if (error == noErr)
        error = CreateFile(PathOf(*ioItem), inInfo, inExtended);
    ioItem->exists = ioItem->exists || error == noErr;
    return error;
}

OSErr CreateFolderItem(Item* ioItem)
{
    const OSErr error = CheckNew(*ioItem);
    if (error != noErr)
        return error;
    const path folder = PathOf(*ioItem);
    struct stat status;
    if (lstat(folder.c_str(), &status) != 0)
        RemoveLeftPart(SidecarOf(folder));
    if (mkdir(folder.c_str(), 0777) != 0)
        return errno == EMLINK ? (OSErr)dirFulErr : ErrorOfHost(errno);
    ioItem->exists = ioItem->isFolder = true;
    return FlushFolder(folder.parent_path());
}

OSErr DeleteItem(const Item& inItem)
{
    if (!inItem.exists)
        return fnfErr;
    if (inItem.hostName.empty())
        return vLckdErr;
    const OSErr error = inItem.isFolder ? DeleteFolder(inItem) : DeleteFile(inItem);
    struct stat status;
    if (lstat(PathOf(inItem).c_str(), &status) != 0)
        NodeDidGo(inItem);
    return error;
}

} // namespace lampblack::files
