#include "Tracer.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <elf.h>
#include <fcntl.h>
#include <fstream>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

namespace torture {
namespace {

using CallInfo = __ptrace_syscall_info;

struct NamedFailure {
    uint64_t number;
    Failure failure;
};

const NamedFailure kFailures[] = {
#ifdef SYS_open
    { SYS_open, { "open", EMFILE, false } },
#endif
    { SYS_openat, { "openat", EMFILE, false } },
    { SYS_read, { "read", EIO, false } },
    { SYS_pread64, { "pread64", EIO, false } },
    { SYS_write, { "write", ENOSPC, false } },
    { SYS_writev, { "writev", ENOSPC, false } },
    { SYS_pwrite64, { "pwrite64", ENOSPC, false } },
    { SYS_pwritev, { "pwritev", ENOSPC, false } },
    { SYS_fsync, { "fsync", EIO, false } },
    { SYS_fdatasync, { "fdatasync", EIO, false } },
    { SYS_ftruncate, { "ftruncate", ENOSPC, false } },
    { SYS_fallocate, { "fallocate", ENOSPC, false } },
    { SYS_copy_file_range, { "copy_file_range", ENOSPC, false } },
    { SYS_close, { "close", EIO, true } },
#ifdef SYS_rename
    { SYS_rename, { "rename", EIO, false } },
    { SYS_link, { "link", ENOSPC, false } },
    { SYS_unlink, { "unlink", EACCES, false } },
    { SYS_mkdir, { "mkdir", ENOSPC, false } },
    { SYS_chmod, { "chmod", EPERM, false } },
#endif
#ifdef SYS_renameat
    { SYS_renameat, { "renameat", EIO, false } },
#endif
    { SYS_renameat2, { "renameat2", EIO, false } },
    { SYS_linkat, { "linkat", ENOSPC, false } },
    { SYS_unlinkat, { "unlinkat", EACCES, false } },
    { SYS_mkdirat, { "mkdirat", ENOSPC, false } },
    { SYS_fchmod, { "fchmod", EPERM, false } },
    { SYS_flock, { "flock", ENOLCK, false } },
    { SYS_fcntl, { "fcntl", EMFILE, false } },
    { SYS_mmap, { "mmap", ENOMEM, false } },
    { SYS_fstat, { "fstat", EIO, false } },
    { SYS_newfstatat, { "newfstatat", EIO, false } },
    { SYS_statx, { "statx", EIO, false } },
    { SYS_getdents64, { "getdents64", EIO, false } },
    { SYS_utimensat, { "utimensat", EPERM, false } },
    { SYS_lseek, { "lseek", EINVAL, false } },
};

bool GetCallInfo(pid_t inChild, CallInfo* outInfo)
{
    return ptrace(PTRACE_GET_SYSCALL_INFO, inChild, sizeof *outInfo, outInfo) > 0;
}

// The registers of a stopped process, by name.
class Registers {
public:
    explicit Registers(pid_t inChild) : fChild(inChild)
    {
        iovec part = { &fValues, sizeof fValues };
        ptrace(PTRACE_GETREGSET, fChild, NT_PRSTATUS, &part);
    }
    void Store()
    {
        iovec part = { &fValues, sizeof fValues };
        ptrace(PTRACE_SETREGSET, fChild, NT_PRSTATUS, &part);
    }
#if defined(__x86_64__)
    void SkipCall()
    {
        fValues.orig_rax = (unsigned long long)-1;
    }
    void SetResult(long inResult)
    {
        fValues.rax = (unsigned long long)inResult;
    }
    void SetThirdArgument(uint64_t inValue)
    {
        fValues.rdx = inValue;
    }
#elif defined(__aarch64__)
    void SkipCall()
    {
        int none = -1;
        iovec part = { &none, sizeof none };
        ptrace(PTRACE_SETREGSET, fChild, NT_ARM_SYSTEM_CALL, &part);
    }
    void SetResult(long inResult)
    {
        fValues.regs[0] = (unsigned long long)inResult;
    }
    void SetThirdArgument(uint64_t inValue)
    {
        fValues.regs[2] = inValue;
    }
#endif

private:
    pid_t fChild;
    user_regs_struct fValues = {};
};

// Writes down what system calls do to the files below one folder.
class Watcher {
public:
    Watcher(pid_t inChild, std::filesystem::path inFolder) : fChild(inChild), fFolder(std::move(inFolder))
    {
        if (!fFolder.empty())
            fNames = NamesBelow(fFolder);
    }

    void Entered(const CallInfo& inInfo)
    {
        if (fFolder.empty())
            return;
        fNumber = inInfo.entry.nr;
        std::copy(std::begin(inInfo.entry.args), std::end(inInfo.entry.args), fArguments);
        fOffset = -1;
        if (fNumber == SYS_write || fNumber == SYS_writev)
            fOffset = PositionOf((int)fArguments[0]);
    }

    void Left(int64_t inResult, std::vector<Act>* ioActs)
    {
        if (fFolder.empty() || inResult < 0)
            return;
        const int descriptor = (int)fArguments[0];
        switch (fNumber) {
        case SYS_write:
            AddWrite(descriptor, fOffset, ReadMemory(fArguments[1], (size_t)inResult), ioActs);
            break;
        case SYS_pwrite64:
            AddWrite(descriptor, (int64_t)fArguments[3], ReadMemory(fArguments[1], (size_t)inResult), ioActs);
            break;
        case SYS_writev:
            AddWrite(descriptor, fOffset, ReadVector(fArguments[1], fArguments[2], (size_t)inResult), ioActs);
            break;
        case SYS_pwritev:
            AddWrite(descriptor, (int64_t)fArguments[3],
                     ReadVector(fArguments[1], fArguments[2], (size_t)inResult), ioActs);
            break;
        case SYS_ftruncate:
        case SYS_fallocate:
        case SYS_copy_file_range:
            AddWhole(fNumber == SYS_copy_file_range ? (int)fArguments[2] : descriptor, ioActs);
            break;
        case SYS_fsync:
        case SYS_fdatasync: AddSync(descriptor, ioActs); break;
        default:
            if (ChangesNames(fNumber))
                AddNames(ioActs);
        }
    }

private:
    static bool ChangesNames(uint64_t inNumber)
    {
        for (uint64_t number : {
#ifdef SYS_rename
                 SYS_open,
                 SYS_rename,
                 SYS_link,
                 SYS_unlink,
                 SYS_mkdir,
                 SYS_rmdir,
                 SYS_symlink,
#endif
                 SYS_openat,
                 SYS_renameat2,
                 SYS_linkat,
                 SYS_unlinkat,
                 SYS_mkdirat,
#ifdef SYS_renameat
                 SYS_renameat,
#endif
             })
            if (number == inNumber)
                return true;
        return false;
    }

    std::string DescriptorPath(int inDescriptor) const
    {
        return "/proc/" + std::to_string(fChild) + "/fd/" + std::to_string(inDescriptor);
    }

    // An ordinary file or folder that lies, or lay, below the watched folder.
    bool StatOf(int inDescriptor, struct stat* outStat, uint64_t* outFile) const
    {
        const std::string path = DescriptorPath(inDescriptor);
        std::error_code failed;
        const auto target = std::filesystem::read_symlink(path, failed);
        *outFile = FileAt(path, true);
        return !failed && target.string().starts_with(fFolder.string()) && stat(path.c_str(), outStat) == 0;
    }

    int64_t PositionOf(int inDescriptor) const
    {
        std::ifstream info("/proc/" + std::to_string(fChild) + "/fdinfo/" + std::to_string(inDescriptor));
        std::string label;
        int64_t position = -1;
        info >> label >> position;
        return position;
    }

    std::string ReadMemory(uint64_t inAddress, size_t inSize) const
    {
        std::string bytes(inSize, '\0');
        iovec here = { bytes.data(), inSize }, there = { (void*)inAddress, inSize };
        process_vm_readv(fChild, &here, 1, &there, 1, 0);
        return bytes;
    }

    std::string ReadVector(uint64_t inAddress, uint64_t inCount, size_t inSize) const
    {
        const std::string parts = ReadMemory(inAddress, inCount * sizeof(iovec));
        std::string bytes;
        for (uint64_t i = 0; i < inCount && bytes.size() < inSize; ++i) {
            iovec part;
            std::memcpy(&part, parts.data() + i * sizeof part, sizeof part);
            bytes += ReadMemory((uint64_t)part.iov_base, part.iov_len);
        }
        bytes.resize(inSize);
        return bytes;
    }

    void AddWrite(int inDescriptor, int64_t inOffset, std::string inBytes, std::vector<Act>* ioActs) const
    {
        struct stat status;
        uint64_t file;
        if (StatOf(inDescriptor, &status, &file))
            ioActs->push_back({ Act::Kind::Write, file, inOffset, std::move(inBytes), {} });
    }

    // What a call wrote that does not say so itself: the file's new size and, of a copy, its bytes.
    void AddWhole(int inDescriptor, std::vector<Act>* ioActs) const
    {
        struct stat status;
        uint64_t written;
        if (!StatOf(inDescriptor, &status, &written))
            return;
        ioActs->push_back({ Act::Kind::Resize, written, status.st_size, {}, {} });
        if (fNumber != SYS_copy_file_range)
            return;
        std::ifstream file(DescriptorPath(inDescriptor), std::ios::binary);
        std::string bytes{ std::istreambuf_iterator<char>(file), {} };
        ioActs->push_back({ Act::Kind::Write, written, 0, std::move(bytes), {} });
    }

    void AddSync(int inDescriptor, std::vector<Act>* ioActs) const
    {
        struct stat status;
        uint64_t file;
        if (!StatOf(inDescriptor, &status, &file))
            return;
        const auto kind = S_ISDIR(status.st_mode) ? Act::Kind::SyncFolder : Act::Kind::SyncFile;
        ioActs->push_back({ kind, file, 0, {}, {} });
    }

    void AddNames(std::vector<Act>* ioActs)
    {
        auto names = NamesBelow(fFolder);
        if (names == fNames)
            return;
        fNames = names;
        ioActs->push_back({ Act::Kind::Names, 0, 0, {}, std::move(names) });
    }

    pid_t fChild;
    std::filesystem::path fFolder;
    std::map<std::string, uint64_t> fNames;
    uint64_t fNumber = 0, fArguments[6] = {};
    int64_t fOffset = -1;
};

// Strikes at the entry of a call; answers whether the process is to go on.
bool StrikeAtEntry(pid_t inChild, const CallInfo& inInfo, const Fault& inFault, Run* ioRun)
{
    const Failure failure = FailureOf(inInfo.entry.nr);
    ioRun->call = failure.name ? failure.name : "call " + std::to_string(inInfo.entry.nr);
    switch (inFault.kind) {
    case Fault::Kind::Kill:
        ioRun->reached = true;
        kill(inChild, SIGKILL);
        return false;
    case Fault::Kind::Fail:
        ioRun->reached = failure.error != 0;
        if (failure.error && !failure.executed) {
            Registers registers(inChild);
            registers.SkipCall();
            registers.Store();
        }
        return true;
    case Fault::Kind::ShortWrite: {
        const bool writes = inInfo.entry.nr == SYS_write || inInfo.entry.nr == SYS_pwrite64;
        if (!writes || inInfo.entry.args[2] < 2)
            return true;
        ioRun->reached = true;
        Registers registers(inChild);
        registers.SetThirdArgument(inInfo.entry.args[2] / 2);
        registers.Store();
        return true;
    }
    case Fault::Kind::None: break;
    }
    return true;
}

void StrikeAtExit(pid_t inChild, uint64_t inNumber)
{
    Registers registers(inChild);
    registers.SetResult(-FailureOf(inNumber).error);
    registers.Store();
}

pid_t StartChild(const std::function<int()>& inWork)
{
    const pid_t child = fork();
    if (child != 0)
        return child;
    if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0)
        _exit(255);
    raise(SIGSTOP);
    _exit(inWork());
}

// Follows the process from call to call until it ends.
void Follow(pid_t inChild, const Fault& inFault, Watcher* ioWatcher, Run* ioRun)
{
    uint64_t number = 0;
    bool striking = false;
    int signal = 0;
    while (ptrace(PTRACE_SYSCALL, inChild, nullptr, signal) == 0) {
        signal = 0;
        int status = 0;
        if (waitpid(inChild, &status, 0) != inChild)
            return;
        if (WIFEXITED(status) || WIFSIGNALED(status)) {
            ioRun->killed = WIFSIGNALED(status);
            ioRun->result = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
            return;
        }
        if (WSTOPSIG(status) != (SIGTRAP | 0x80)) {
            signal = WSTOPSIG(status);
            continue;
        }
        CallInfo info;
        if (!GetCallInfo(inChild, &info))
            return;
        if (info.op == PTRACE_SYSCALL_INFO_ENTRY) {
            number = info.entry.nr;
            ioRun->calls++;
            ioWatcher->Entered(info);
            striking = ioRun->calls == inFault.at;
            if (striking && !StrikeAtEntry(inChild, info, inFault, ioRun)) {
                waitpid(inChild, &status, 0);
                ioRun->killed = true;
                return;
            }
        } else if (info.op == PTRACE_SYSCALL_INFO_EXIT) {
            if (striking && ioRun->reached && inFault.kind == Fault::Kind::Fail)
                StrikeAtExit(inChild, number);
            striking = false;
            ioWatcher->Left(info.exit.rval, &ioRun->acts);
        }
    }
}

} // namespace

uint64_t FileAt(const std::filesystem::path& inPath, bool inFollow)
{
    struct statx status = {};
    if (statx(AT_FDCWD, inPath.c_str(), inFollow ? 0 : AT_SYMLINK_NOFOLLOW, STATX_INO | STATX_BTIME,
              &status) != 0)
        return 0;
    const uint64_t born = (uint64_t)status.stx_btime.tv_sec * 1'000'000'000u + status.stx_btime.tv_nsec;
    return status.stx_ino ^ (born * 0x9E3779B97F4A7C15u);
}

std::map<std::string, uint64_t> NamesBelow(const std::filesystem::path& inFolder)
{
    std::map<std::string, uint64_t> names;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(inFolder))
        names[std::filesystem::relative(entry.path(), inFolder).string()] = FileAt(entry.path(), false);
    return names;
}

Failure FailureOf(uint64_t inCallNumber)
{
    for (const NamedFailure& entry : kFailures)
        if (entry.number == inCallNumber)
            return entry.failure;
    return { nullptr, 0, false };
}

Run RunTraced(const std::function<int()>& inWork, const Fault& inFault,
              const std::filesystem::path& inWatched)
{
    Run run;
    const pid_t child = StartChild(inWork);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFSTOPPED(status))
        return run;
    run.traced = true;
    ptrace(PTRACE_SETOPTIONS, child, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL);
    Watcher watcher(child, inWatched);
    Follow(child, inFault, &watcher, &run);
    return run;
}

} // namespace torture
