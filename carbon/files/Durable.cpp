// Replacing host files whole.
#include "Durable.h"

#include "HostLocks.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>
#include <utility>
#include <vector>

namespace lampblack::files {

using std::filesystem::path;

namespace {

constexpr struct {
    int host;
    OSErr error;
} kErrors[] = {
    { ENOSPC, dskFulErr }, { EDQUOT, dskFulErr },      { EFBIG, dskFulErr },   { EROFS, wPrErr },
    { EACCES, permErr },   { EPERM, permErr },         { EMFILE, tmfoErr },    { ENFILE, tmfoErr },
    { ENOENT, fnfErr },    { ENOTDIR, dirNFErr },      { EEXIST, dupFNErr },   { ETXTBSY, fBsyErr },
    { EBUSY, fBsyErr },    { ENAMETOOLONG, bdNamErr }, { ENOMEM, memFullErr }, { EISDIR, fnfErr },
};

constexpr size_t kLargestAttribute = 65536;
constexpr int kMostTries = 1000; // to take a temporary name

OSErr HostError()
{
    return ErrorOfHost(errno);
}

// A name for the file until it is renamed. It begins as the name of a sidecar does, so that it is never
// listed, and the first is the same each time for one target: what a crash left behind is cleared away by the
// next try.
path TemporaryName(const path& inTarget, int inNumber)
{
    const path leaf = inTarget.filename();
    uint32_t hash = 2166136261u;
    for (const char byte : leaf.native())
        hash = (hash ^ (uint8_t)byte) * 16777619u;
    char name[48];
    std::snprintf(name, sizeof name, inNumber == 0 ? "._lampblack-%08x" : "._lampblack-%08x-%d",
                  (unsigned)hash, inNumber);
    return inTarget.parent_path() / name;
}

bool HasName(int inFile, const path& inName)
{
    const FileIdentity named = FileIdentity::PlaceAt(inName.native(), nullptr, true);
    const FileIdentity file = FileIdentity::PlaceOf(inFile);
    return named.exists && named.device == file.device && named.inode == file.inode;
}

// Takes a temporary name from a file that nobody holds. False: somebody does, in this process or another.
bool ClearAway(const path& inName)
{
    const Descriptor file(open(inName.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW));
    if (!file)
        return errno == ENOENT;
    return TryLock(file.Get(), kTemporaryLock) && HasName(file.Get(), inName) && unlink(inName.c_str()) == 0;
}

// Has a file take one of the target's temporary names. inTake answers whether it did; if not, errno tells
// why, EEXIST that the name is another's.
template <typename Take>
OSErr TakeTemporaryName(const path& inTarget, Take&& inTake)
{
    int number = 0;
    for (int tries = 0; tries < kMostTries; ++tries) {
        const path name = TemporaryName(inTarget, number);
        if (inTake(name))
            return noErr;
        if (errno != EEXIST)
            return HostError();
        number += ClearAway(name) ? 0 : 1;
    }
    return fBsyErr;
}

path FolderOf(const path& inPath)
{
    const path folder = inPath.parent_path();
    return folder.empty() ? path(".") : folder;
}

// What can be kept of who owns a file and who may use it. A system that refuses has its reasons.
void TakeOver(int inFile, const path& inTarget, const struct stat& inLike)
{
    if (fchown(inFile, inLike.st_uid, inLike.st_gid) != 0)
        errno = 0;
    if (fchmod(inFile, inLike.st_mode & 07777) != 0)
        errno = 0;
    char names[4096];
    const ssize_t length = listxattr(inTarget.c_str(), names, sizeof names);
    std::vector<char> value;
    for (ssize_t at = 0; at < length; at += (ssize_t)std::char_traits<char>::length(names + at) + 1) {
        value.resize(kLargestAttribute);
        const ssize_t size = getxattr(inTarget.c_str(), names + at, value.data(), value.size());
        if (size >= 0 && fsetxattr(inFile, names + at, value.data(), (size_t)size, 0) != 0)
            errno = 0;
    }
}

} // namespace

OSErr ErrorOfHost(int inErrno)
{
    const auto found = std::find_if(std::begin(kErrors), std::end(kErrors),
                                    [&](const auto& row) { return row.host == inErrno; });
    return found == std::end(kErrors) ? (OSErr)ioErr : found->error;
}

Descriptor& Descriptor::operator=(Descriptor&& ioOther) noexcept
{
    if (this != &ioOther) {
        Close();
        fNumber = ioOther.Release();
    }
    return *this;
}

int Descriptor::Release()
{
    return std::exchange(fNumber, -1);
}

void Descriptor::Close()
{
    if (fNumber >= 0)
        close(fNumber);
    fNumber = -1;
}

OSErr WriteAll(int inFile, Bytes inBytes, SInt64 inOffset)
{
    for (size_t done = 0; done < inBytes.size();) {
        const ssize_t now =
            pwrite(inFile, inBytes.data() + done, inBytes.size() - done, (off_t)inOffset + (off_t)done);
        if (now < 0 && errno == EINTR)
            continue;
        if (now <= 0)
            return now < 0 ? HostError() : (OSErr)ioErr;
        done += (size_t)now;
    }
    return noErr;
}

bool ReadAll(int inFile, void* outBytes, size_t inSize, SInt64 inOffset)
{
    for (size_t done = 0; done < inSize;) {
        const ssize_t now =
            pread(inFile, (char*)outBytes + done, inSize - done, (off_t)inOffset + (off_t)done);
        if (now < 0 && errno == EINTR)
            continue;
        if (now <= 0)
            return false;
        done += (size_t)now;
    }
    return true;
}

OSErr FlushFolder(const path& inFolder)
{
    const Descriptor folder(open(inFolder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder)
        return HostError();
    // Some file systems have nothing to flush for a folder, and say so.
    if (fsync(folder.Get()) != 0 && errno != EINVAL && errno != ENOTSUP)
        return HostError();
    return noErr;
}

bool RenameToNothing(const path& inFrom, const path& inTo)
{
    if (renameat2(AT_FDCWD, inFrom.c_str(), AT_FDCWD, inTo.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno != EINVAL && errno != ENOSYS)
        return false;
    if (link(inFrom.c_str(), inTo.c_str()) == 0)
        return unlink(inFrom.c_str()) == 0;
    if (errno == EEXIST)
        return false;
    const bool isTaken = FileIdentity::PlaceAt(inTo.native(), nullptr, true).exists;
    errno = EEXIST;
    return !isTaken && rename(inFrom.c_str(), inTo.c_str()) == 0;
}

OSErr KeepAside(const path& inPath)
{
    const std::string base = inPath.native() + ".damaged";
    std::string name = base;
    for (int number = 2; number < 1000; ++number) {
        if (RenameToNothing(inPath, name))
            return FlushFolder(FolderOf(inPath));
        if (errno != EEXIST)
            return HostError();
        name = base + "-" + std::to_string(number);
    }
    return dupFNErr;
}

OSErr Replacement::Begin(const path& inTarget, const struct stat* inLike)
{
    fTarget = inTarget;
    const path folder = FolderOf(inTarget);
    fFile = Descriptor(open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0666));
    const bool isUnknown =
        !fFile && (errno == EOPNOTSUPP || errno == EISDIR || errno == EINVAL || errno == ENOENT);
    OSErr error = fFile ? (OSErr)noErr : HostError();
    if (isUnknown)
        error = BeginWithName();
    if (error == noErr && inLike)
        TakeOver(fFile.Get(), inTarget, *inLike);
    return error;
}

OSErr Replacement::BeginWithName()
{
    return TakeTemporaryName(fTarget, [&](const path& name) {
        Descriptor file(open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
        if (!file)
            return false;
        // Before it is locked, another may take it for what was left behind.
        if (!TryLock(file.Get(), kTemporaryLock) || !HasName(file.Get(), name)) {
            errno = EEXIST;
            return false;
        }
        fFile = std::move(file);
        fTemporary = name;
        return true;
    });
}

namespace {

// Gives a name to a file without one.
bool LinkTo(int inFile, const path& inName)
{
    const std::string self = "/proc/self/fd/" + std::to_string(inFile);
    return linkat(AT_FDCWD, self.c_str(), AT_FDCWD, inName.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

} // namespace

// Only a file that has a name can replace another.
OSErr Replacement::GiveTemporaryName()
{
    if (!fTemporary.empty())
        return noErr;
    TryLock(fFile.Get(), kTemporaryLock); // nobody else knows it
    return TakeTemporaryName(fTarget, [&](const path& name) {
        const bool isLinked = LinkTo(fFile.Get(), name);
        if (isLinked)
            fTemporary = name;
        return isLinked;
    });
}

void Replacement::LeaveTemporaryName()
{
    fTemporary.clear();
    Unlock(fFile.Get(), kTemporaryLock);
}

OSErr Replacement::PutInPlace(bool* outIsInPlace)
{
    if (outIsInPlace)
        *outIsInPlace = false;
    if (fsync(fFile.Get()) != 0)
        return HostError();
    const OSErr error = GiveTemporaryName();
    if (error != noErr)
        return error;
    if (rename(fTemporary.c_str(), fTarget.c_str()) != 0)
        return HostError();
    LeaveTemporaryName();
    if (outIsInPlace)
        *outIsInPlace = true;
    return FlushFolder(FolderOf(fTarget));
}

OSErr Replacement::PutWhereNothingIs()
{
    if (fsync(fFile.Get()) != 0)
        return HostError();
    const bool isThere =
        fTemporary.empty() ? LinkTo(fFile.Get(), fTarget) : RenameToNothing(fTemporary, fTarget);
    if (!isThere)
        return HostError();
    if (!fTemporary.empty())
        LeaveTemporaryName();
    return FlushFolder(FolderOf(fTarget));
}

Replacement::~Replacement()
{
    if (!fTemporary.empty())
        unlink(fTemporary.c_str());
}

} // namespace lampblack::files
