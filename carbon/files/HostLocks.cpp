// Locks of open file descriptions.
#include "HostLocks.h"

#include <cerrno>
#include <fcntl.h>
#include <thread>

namespace lampblack::files {
namespace {

struct flock LockOf(int64_t inByte, short inKind)
{
    struct flock lock = {};
    lock.l_type = inKind;
    lock.l_whence = SEEK_SET;
    lock.l_start = inByte;
    lock.l_len = 1;
    return lock;
}

} // namespace

bool TryLock(int inFile, int64_t inByte)
{
    struct flock lock = LockOf(inByte, F_WRLCK);
    return fcntl(inFile, F_OFD_SETLK, &lock) == 0 || (errno != EAGAIN && errno != EACCES);
}

void Unlock(int inFile, int64_t inByte)
{
    struct flock lock = LockOf(inByte, F_UNLCK);
    fcntl(inFile, F_OFD_SETLK, &lock);
}

bool IsFree(int inFile, int64_t inByte)
{
    struct flock lock = LockOf(inByte, F_WRLCK);
    return fcntl(inFile, F_OFD_GETLK, &lock) != 0 || lock.l_type == F_UNLCK;
}

bool Patience::Wait()
{
    if (std::chrono::steady_clock::now() >= fEnd)
        return false;
    std::this_thread::sleep_for(fNext);
    fNext = std::min(fNext * 2, std::chrono::milliseconds(5));
    return true;
}

StMomentLock::StMomentLock(int inFile) : fFile(inFile)
{
    Patience patience;
    while (fFile >= 0 && !TryLock(fFile, kMomentLock) && patience.Wait())
        ;
}

StMomentLock::~StMomentLock()
{
    if (fFile >= 0)
        Unlock(fFile, kMomentLock);
}

} // namespace lampblack::files
