// Asking the host for what a file is known by.
#include "FileIdentity.h"

#include <ctime>
#include <fcntl.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace lampblack::files {
namespace {

constexpr int64_t kSecond = 1000000000;
// Linux steps by at most 10 ms; systems without nanoseconds by up to 2 s.
constexpr int64_t kFineStep = 20000000, kCoarseStep = 2 * kSecond + kFineStep;

int64_t Nanoseconds(const timespec& inTime)
{
    return (int64_t)inTime.tv_sec * kSecond + inTime.tv_nsec;
}

FileIdentity Place(int inFolder, const char* inPath, int inFlags, uint16_t* outMode)
{
    struct statx status;
    FileIdentity place;
    if (statx(inFolder, inPath, inFlags, STATX_TYPE | STATX_MODE | STATX_INO | STATX_SIZE, &status) != 0)
        return place;
    if (outMode)
        *outMode = status.stx_mode;
    place.exists = true;
    place.device = makedev(status.stx_dev_major, status.stx_dev_minor);
    place.inode = status.stx_ino;
    place.size = (int64_t)status.stx_size;
    return place;
}

} // namespace

FileIdentity::FileIdentity(const struct stat& inStatus)
    : exists(true), device(inStatus.st_dev), inode(inStatus.st_ino), size(inStatus.st_size)
{
    if (size == 0 && S_ISREG(inStatus.st_mode))
        return;
    modified = Nanoseconds(inStatus.st_mtim);
    changed = Nanoseconds(inStatus.st_ctim);
}

FileIdentity FileIdentity::At(const std::string& inPath)
{
    struct stat status;
    return stat(inPath.c_str(), &status) == 0 ? FileIdentity(status) : FileIdentity();
}

FileIdentity FileIdentity::Of(int inFile)
{
    struct stat status;
    return fstat(inFile, &status) == 0 ? FileIdentity(status) : FileIdentity();
}

FileIdentity FileIdentity::PlaceAt(const std::string& inPath, uint16_t* outMode, bool inOfLink)
{
    return Place(AT_FDCWD, inPath.c_str(), inOfLink ? AT_SYMLINK_NOFOLLOW : 0, outMode);
}

FileIdentity FileIdentity::PlaceOf(int inFile)
{
    return Place(inFile, "", AT_EMPTY_PATH, nullptr);
}

FileIdentity FileIdentity::AgainAt(const std::string& inPath) const
{
    const bool isEmptyFile = exists && size == 0 && changed == 0;
    return isEmptyFile ? PlaceAt(inPath) : At(inPath);
}

bool FileIdentity::WouldShowChange() const
{
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    const int64_t step = modified % kSecond == 0 ? kCoarseStep : kFineStep;
    const int64_t age = Nanoseconds(now) - modified;
    return age > step || age < -step; // a time to come is left behind by any change
}

} // namespace lampblack::files
