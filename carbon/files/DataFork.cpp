// Data forks: the host file itself, or a part of a container until the first write takes it out.
#include "ForkHome.h"
#include "HostLocks.h"
#include "ItemChanges.h"
#include "OpenFork.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace lampblack::files {

using std::filesystem::path;

namespace {

OSErr LastError()
{
    return ErrorOfHost(errno == EFBIG ? ENOSPC : errno);
}

// As TryLock, but others may share it.
bool TrySharedLock(int inFile)
{
    struct flock lock = {};
    lock.l_type = F_RDLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kWriterLock;
    lock.l_len = 1;
    return fcntl(inFile, F_OFD_SETLK, &lock) == 0 || (errno != EAGAIN && errno != EACCES);
}

bool IsStillAt(int inFile, const path& inPath)
{
    struct stat open, named;
    return fstat(inFile, &open) == 0 && stat(inPath.c_str(), &named) == 0 && open.st_dev == named.st_dev &&
           open.st_ino == named.st_ino;
}

OSErr OpenHostFile(const path& inPath, int inFlags, Descriptor* outFile)
{
    Descriptor file(open(inPath.c_str(), inFlags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file)
        return errno == EISDIR ? (OSErr)fnfErr : ErrorOfHost(errno);
    struct stat status;
    if (fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode))
        return fnfErr;
    *outFile = std::move(file);
    return noErr;
}

// Another process may hold the lock for a moment, or replace the file.
OSErr OpenLocked(const path& inPath, WriteAccess inAccess, Descriptor* outFile)
{
    Patience patience;
    do {
        Descriptor file;
        const OSErr error = OpenHostFile(inPath, O_RDWR, &file);
        if (error != noErr)
            return error;
        const bool isLocked =
            inAccess == WriteAccess::Shared ? TrySharedLock(file.Get()) : TryLock(file.Get(), kWriterLock);
        if (isLocked && IsStillAt(file.Get(), inPath)) {
            *outFile = std::move(file);
            return noErr;
        }
    } while (patience.Wait());
    return opWrErr;
}

bool HasRoomFor(int inFile, SInt64 inBytes)
{
    struct statvfs volume;
    return fstatvfs(inFile, &volume) != 0 ||
           (uint64_t)inBytes / std::max<uint64_t>(volume.f_frsize, 1) <= volume.f_bavail;
}

bool IsWrapped(const LocatedForks& inForks)
{
    const Form form = inForks.ownForm;
    const bool wraps = form == Form::MacBinary || form == Form::AppleSingle || form == Form::BinHex;
    return wraps && !inForks.mappings.empty() &&
           inForks.dataFork.data() != inForks.mappings.front().Contents().data();
}

class DataFork : public OpenFork {
public:
    OSErr Open(const path& inPath)
    {
        fPath = inPath;
        OSErr error = OpenHostFile(inPath, O_RDONLY, &fFile);
        if (error != noErr)
            return error;
        fForks = LocateForks(inPath);
        if (!fForks.exists)
            return ErrorOfHost(fForks.openError);
        fIsWrapped = IsWrapped(fForks);
        fIsOwnHome = fForks.ownForm == Form::RawFork || fForks.ownForm == Form::AppleDouble;
        if (!fIsWrapped)
            fForks = {};
        return noErr;
    }

    OSErr StartWriting(WriteAccess inAccess) override
    {
        if (IsLocked(fPath))
            return permErr;
        if (access(fPath.c_str(), W_OK) != 0)
            return ErrorOfHost(errno);
        if (fIsOwnHome && ForkHome::IsOpenHere(fPath))
            return opWrErr;
        fAccess = inAccess;
        const OSErr error = fIsWrapped ? ForkHome::Open(fPath, &fHome) : OpenForWriting();
        if (error != noErr)
            fAccess = WriteAccess::None;
        return error;
    }

    OSErr StopWriting() override
    {
        fAccess = WriteAccess::None;
        fHome.reset();
        if (!fIsWrapped)
            Unlock(fFile.Get(), kWriterLock);
        return noErr;
    }

    OSErr GetSize(SInt64* outSize) override
    {
        struct stat status;
        if (!fIsWrapped && fstat(fFile.Get(), &status) != 0)
            return LastError();
        *outSize = fIsWrapped ? (SInt64)fForks.dataFork.size() : (SInt64)status.st_size;
        return noErr;
    }

    OSErr Read(void* outBytes, size_t inSize, SInt64 inOffset, size_t* outDone) override
    {
        *outDone = 0;
        if (fIsWrapped)
            return ReadWrapped(outBytes, inSize, inOffset, outDone);
        while (*outDone < inSize) {
            const ssize_t count = pread(fFile.Get(), (char*)outBytes + *outDone, inSize - *outDone,
                                        inOffset + (SInt64)*outDone);
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                return count < 0 ? LastError() : (OSErr)noErr;
            *outDone += (size_t)count;
        }
        return noErr;
    }

    OSErr Write(const void* inBytes, size_t inSize, SInt64 inOffset, size_t* outDone) override
    {
        *outDone = 0;
        const OSErr error = TakeOut();
        if (error != noErr)
            return error;
        while (*outDone < inSize) {
            const ssize_t count = pwrite(fFile.Get(), (const char*)inBytes + *outDone, inSize - *outDone,
                                         inOffset + (SInt64)*outDone);
            if (count < 0 && errno == EINTR)
                continue;
            if (count <= 0)
                return count < 0 ? LastError() : (OSErr)ioErr;
            *outDone += (size_t)count;
        }
        return noErr;
    }

    // Blocks are not asked for here, only whether they are there: asking writes the same place twice.
    OSErr SetSize(SInt64 inSize) override
    {
        SInt64 size = 0;
        OSErr error = TakeOut();
        error = error != noErr ? error : GetSize(&size);
        if (error != noErr)
            return error;
        if (inSize > size && !HasRoomFor(fFile.Get(), inSize - size))
            return dskFulErr;
        if (inSize < size && fIsOwnHome && !IsFree(fFile.Get(), kReaderLock))
            return opWrErr; // its resources are mapped somewhere
        return ftruncate(fFile.Get(), inSize) == 0 ? (OSErr)noErr : LastError();
    }

    OSErr Reserve(SInt64 inBytes) override
    {
        SInt64 size = 0;
        OSErr error = TakeOut();
        error = error != noErr ? error : GetSize(&size);
        if (error != noErr || inBytes == 0)
            return error;
        if (fallocate(fFile.Get(), FALLOC_FL_KEEP_SIZE, size, inBytes) == 0)
            return noErr;
        if (errno != EOPNOTSUPP && errno != ENOSYS)
            return LastError();
        return HasRoomFor(fFile.Get(), inBytes) ? noErr : dskFulErr;
    }

    OSErr Flush() override
    {
        return fIsWrapped || fAccess == WriteAccess::None || fsync(fFile.Get()) == 0 ? (OSErr)noErr
                                                                                     : LastError();
    }

    bool NeedsItsName() const override { return fHome != nullptr; }
    void DidMove(const path& inPath) override { fPath = inPath; }

private:
    OSErr OpenForWriting() { return OpenLocked(fPath, fAccess, &fFile); }

    OSErr ReadWrapped(void* outBytes, size_t inSize, SInt64 inOffset, size_t* outDone) const
    {
        const Bytes bytes = fForks.dataFork;
        const size_t start = (size_t)std::min<SInt64>(inOffset, (SInt64)bytes.size());
        *outDone = std::min(inSize, bytes.size() - start);
        if (*outDone)
            std::memcpy(outBytes, bytes.data() + start, *outDone);
        return noErr;
    }

    // The first write takes the data fork out of its container; the resource fork is beside it then.
    OSErr TakeOut()
    {
        if (fAccess == WriteAccess::None)
            return wrPermErr;
        if (!fIsWrapped)
            return noErr;
        const LocatedForks kept = fHome->Forks();
        const Bytes fork = kept.resourceFork;
        ForkChange change;
        change.resourceFork = &fork;
        OSErr error = fHome->Replace(change);
        if (error != noErr)
            return error;
        fHome.reset();
        error = OpenForWriting();
        if (error != noErr)
            return error;
        fIsWrapped = false;
        fForks = {};
        return noErr;
    }

    path fPath;
    Descriptor fFile;
    WriteAccess fAccess = WriteAccess::None;
    bool fIsOwnHome = false;         // the file is a resource file
    bool fIsWrapped = false;         // the data fork is within a container
    LocatedForks fForks;             // then: where
    std::unique_ptr<ForkHome> fHome; // then, while it may be written
};

} // namespace

OSErr OpenDataFork(const path& inPath, std::shared_ptr<OpenFork>* outFork)
{
    auto fork = std::make_shared<DataFork>();
    const OSErr error = fork->Open(inPath);
    if (error == noErr)
        *outFork = std::move(fork);
    return error;
}

bool IsWrittenElsewhere(const path& inPath)
{
    for (const path& place : { inPath, SidecarOf(inPath) }) {
        const Descriptor file(open(place.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY));
        if (file && !IsFree(file.Get(), kWriterLock))
            return true;
    }
    return false;
}

bool IsLocked(const path& inPath)
{
    struct stat status;
    return stat(inPath.c_str(), &status) == 0 && (status.st_mode & 0222) == 0;
}

} // namespace lampblack::files
