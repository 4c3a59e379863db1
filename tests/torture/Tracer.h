// Runs a piece of work in a process of its own and meddles with its system calls: kills it at one, makes one
// fail, or writes down what it did to a folder. Begin at RunTraced.
#ifndef LAMPBLACK_TESTS_TORTURE_TRACER_H
#define LAMPBLACK_TESTS_TORTURE_TRACER_H

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace torture {

// What happens at the system call with the number `at`, counted from 1.
struct Fault {
    enum class Kind { None, Kill, Fail, ShortWrite };
    Kind kind = Kind::None;
    int at = 0;
};

// Something that the work did to a file or folder below the one that was watched.
struct Act {
    enum class Kind { Write, Resize, SyncFile, Names, SyncFolder };
    Kind kind;
    uint64_t file = 0;                     // not of Names
    int64_t offset = 0;                    // of Write; the new size of Resize
    std::string bytes;                     // of Write
    std::map<std::string, uint64_t> names; // of Names: every path below the folder and its file
};

struct Run {
    bool traced = false;  // false: this machine does not let one process trace another
    bool killed = false;  // by the fault or by its own doing
    int result = 0;       // what the work answered
    int calls = 0;        // how many system calls it made
    bool reached = false; // the fault took place
    std::string call;     // the name or number of the call it struck, for messages
    std::vector<Act> acts;
};

// RunTraced
//
// Runs inWork, whose answer is 0 to 255, with the fault. With a folder to watch, Run::acts says what became
// of everything in it.
Run RunTraced(const std::function<int()>& inWork, const Fault& inFault,
              const std::filesystem::path& inWatched = {});

// What tells a file from every other, also from one that had its inode number before; 0: there is none.
uint64_t FileAt(const std::filesystem::path&, bool inFollow);

// Every path below a folder and the file it leads to.
std::map<std::string, uint64_t> NamesBelow(const std::filesystem::path& inFolder);

// Whether a fault of kind Fail can strike at this call at all, and how. Errno values differ by call.
struct Failure {
    const char* name;
    int error;     // 0: the call cannot fail in a way worth trying
    bool executed; // the call is carried out all the same, as close is
};
Failure FailureOf(uint64_t inCallNumber);

} // namespace torture

#endif
