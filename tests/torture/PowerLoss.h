// What a disk may hold after the power went: everything that was flushed, and any of what was not. Begin at
// PowerLoss.
#ifndef LAMPBLACK_TESTS_TORTURE_POWERLOSS_H
#define LAMPBLACK_TESTS_TORTURE_POWERLOSS_H

#include "Tracer.h"

#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace torture {

// A folder as it may be found: paths within it and their bytes; a folder's path ends in '/'.
using Disk = std::map<std::string, std::string>;

void WriteDisk(const Disk&, const std::filesystem::path& inFolder);

// PowerLoss
//
// Made of a folder before anything was done to it; then told what was done.
class PowerLoss {
public:
    explicit PowerLoss(const std::filesystem::path& inFolderBefore);

    // Calls inVisit with each distinct disk that may remain when the power goes after some number of the
    // acts. Of the writes to a file that were not flushed, none, all, all but one, or one alone may have
    // arrived; names arrive in order, but any number of the last ones may be missing. `finished`: all acts
    // were done.
    void Visit(const std::vector<Act>& inActs,
               const std::function<void(const Disk&, bool finished)>& inVisit);

private:
    using Names = std::map<std::string, uint64_t>;
    using Choice = std::function<bool(size_t nth)>; // which of the unflushed writes arrive
    struct File {
        std::string flushed;
        std::vector<const Act*> pending;
    };

    void Do(const Act&);
    void VisitNow(const std::function<void(const Disk&)>&) const;
    Disk DiskOf(const Names&, const Choice&) const;
    static std::string Arrived(const File&, const Choice&);

    std::map<uint64_t, File> fFiles;
    std::set<uint64_t> fFolders;
    Names fFlushedNames;
    std::vector<const Names*> fPendingNames;
};

} // namespace torture

#endif
