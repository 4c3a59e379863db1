// Locks of open file descriptions on single bytes far behind a file's end: they belong to a descriptor, so
// that two of one process exclude each other as well, and end with it.
#ifndef LAMPBLACK_FILES_HOSTLOCKS_H
#define LAMPBLACK_FILES_HOSTLOCKS_H

#include "ForkLocator.h"

#include <chrono>

namespace lampblack::files {

// Held for the moment in which Finder information is read and written: by who sets it, and by who replaces
// the file that keeps it.
constexpr int64_t kMomentLock = kReaderLock + 1;

// Held by the one that waits for the writer's lock: while it waits, nobody else tries.
constexpr int64_t kTurnLock = kMomentLock + 1;

// Held on a file that has a temporary name, as long as it has that: what a crash left behind is free.
constexpr int64_t kTemporaryLock = kTurnLock + 1;

// Takes a lock alone. A file system without locks gives all of them.
bool TryLock(int inFile, int64_t inByte);
void Unlock(int inFile, int64_t inByte);
bool IsFree(int inFile, int64_t inByte); // whether nobody else has any part in it

// Waiting for others, a little longer each time up to a few milliseconds, for about a second in all.
class Patience {
public:
    bool Wait(); // false when it is at an end

private:
    std::chrono::milliseconds fNext{ 1 };
    std::chrono::steady_clock::time_point fEnd = std::chrono::steady_clock::now() + std::chrono::seconds(1);
};

// Waits for the moment's lock and holds it; after the usual patience, or without a file, it goes on without.
class StMomentLock {
public:
    [[nodiscard]] explicit StMomentLock(int inFile);
    ~StMomentLock();
    StMomentLock(const StMomentLock&) = delete;

private:
    int fFile;
};

} // namespace lampblack::files

#endif
