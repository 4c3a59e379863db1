// Resource forks as plain bytes. What is written is kept in a file without a name, and put in place of the
// old fork as a whole when writing stops or is flushed.
#include "ForkHome.h"
#include "HostParts.h"
#include "OpenFork.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lampblack::files {

using std::filesystem::path;

namespace {

OSErr LastError()
{
    return ErrorOfHost(errno == EFBIG ? ENOSPC : errno);
}

// A file in a folder that has no name, or none any more.
Descriptor NamelessFile(const path& inFolder)
{
    Descriptor file(open(inFolder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
    if (file)
        return file;
    std::string name = (inFolder / "._lampblack-XXXXXX").native();
    file = Descriptor(mkostemp(name.data(), O_CLOEXEC));
    if (file)
        unlink(name.c_str());
    return file;
}

// All of a file's bytes, mapped.
class Mapped {
public:
    Mapped(int inFile, size_t inSize) : fSize(inSize)
    {
        fBase = inSize ? mmap(nullptr, inSize, PROT_READ, MAP_SHARED, inFile, 0) : nullptr;
    }
    ~Mapped()
    {
        if (fSize && fBase != MAP_FAILED)
            munmap(fBase, fSize);
    }
    Mapped(const Mapped&) = delete;

    bool IsSound() const { return fBase != MAP_FAILED; }
    Bytes Contents() const { return Bytes((const uint8_t*)fBase, fSize); }

private:
    void* fBase;
    size_t fSize;
};

class ResourceForkIO : public OpenFork {
public:
    OSErr Open(const path& inPath)
    {
        fPath = inPath;
        return Locate();
    }

    OSErr StartWriting(WriteAccess) override
    {
        if (IsLocked(fPath))
            return permErr;
        OSErr error = ForkHome::Open(fPath, &fHome);
        error = error == noErr ? Locate() : error;
        if (error != noErr)
            fHome.reset();
        return error;
    }

    OSErr StopWriting() override
    {
        const OSErr error = Commit();
        fStage.Close();
        const OSErr located = fHome ? Locate() : (OSErr)noErr;
        fHome.reset();
        return error != noErr ? error : located;
    }

    OSErr GetSize(SInt64* outSize) override
    {
        *outSize = fSize;
        return noErr;
    }

    OSErr Read(void* outBytes, size_t inSize, SInt64 inOffset, size_t* outDone) override
    {
        const size_t count = (size_t)std::clamp<SInt64>(fSize - inOffset, 0, (SInt64)inSize);
        *outDone = 0;
        const bool isRead =
            fStage ? ReadAll(fStage.Get(), outBytes, count, inOffset) : ReadOld(outBytes, count, inOffset);
        *outDone = isRead ? count : 0;
        return isRead ? (OSErr)noErr : (OSErr)ioErr;
    }

    OSErr Write(const void* inBytes, size_t inSize, SInt64 inOffset, size_t* outDone) override
    {
        *outDone = 0;
        if (inOffset > kLongestFork || inSize > (size_t)(kLongestFork - inOffset))
            return fileBoundsErr;
        OSErr error = Stage(fSize);
        while (error == noErr && *outDone < inSize) {
            const ssize_t count = pwrite(fStage.Get(), (const char*)inBytes + *outDone, inSize - *outDone,
                                         inOffset + (SInt64)*outDone);
            if (count > 0)
                *outDone += (size_t)count;
            else if (count == 0 || errno != EINTR)
                error = count == 0 ? (OSErr)ioErr : LastError();
        }
        if (*outDone)
            fSize = std::max(fSize, inOffset + (SInt64)*outDone);
        return error;
    }

    OSErr SetSize(SInt64 inSize) override
    {
        if (inSize > kLongestFork)
            return fileBoundsErr;
        const OSErr error = inSize == fSize ? CheckWritable() : Stage(std::min(fSize, inSize));
        if (error != noErr || inSize == fSize)
            return error;
        const int result = inSize > fSize ? posix_fallocate(fStage.Get(), fSize, inSize - fSize)
                           : ftruncate(fStage.Get(), inSize) != 0 ? errno
                                                                  : 0;
        if (result != 0)
            return ErrorOfHost(result == EFBIG ? ENOSPC : result);
        fSize = inSize;
        return noErr;
    }

    OSErr Reserve(SInt64 inBytes) override
    {
        const OSErr error = Stage(fSize);
        if (error != noErr || inBytes == 0)
            return error;
        return fallocate(fStage.Get(), FALLOC_FL_KEEP_SIZE, fSize, inBytes) == 0 || errno == EOPNOTSUPP
                   ? (OSErr)noErr
                   : LastError();
    }

    OSErr Flush() override
    {
        const OSErr error = Commit();
        if (error != noErr)
            return error;
        fStage.Close();
        return fHome ? Locate() : (OSErr)noErr;
    }

    bool NeedsItsName() const override { return fHome != nullptr; }
    void DidMove(const path& inPath) override { fPath = inPath; }

private:
    static constexpr SInt64 kLongestFork = 0x7FFFFFFF; // AppleDouble counts in 32 bits

    OSErr CheckWritable() const { return fHome ? noErr : wrPermErr; }

    // Begins to keep what is written apart; the first inKept bytes of the old fork go there with it.
    OSErr Stage(SInt64 inKept)
    {
        if (fStage || !fHome)
            return CheckWritable();
        Descriptor stage = NamelessFile(fHome->HomePath().parent_path());
        if (!stage)
            return LastError();
        std::vector<uint8_t> buffer(std::min((size_t)inKept, kBuffer));
        for (SInt64 done = 0; done < inKept; done += (SInt64)buffer.size()) {
            const Bytes part = Bytes(buffer).first(std::min(buffer.size(), (size_t)(inKept - done)));
            const OSErr error =
                ReadOld(buffer.data(), part.size(), done) ? WriteAll(stage.Get(), part, done) : (OSErr)ioErr;
            if (error != noErr)
                return error;
        }
        fStage = std::move(stage);
        fSize = inKept;
        return noErr;
    }

    OSErr Commit()
    {
        if (!fStage)
            return noErr;
        const Mapped stage(fStage.Get(), (size_t)fSize);
        if (!stage.IsSound())
            return LastError();
        const Bytes fork = stage.Contents();
        ForkChange change;
        change.resourceFork = &fork;
        OSErr error = fHome->Replace(change);
        if (error == noErr && fork.empty())
            error = RemoveOtherForks(fPath);
        if (error == noErr)
            NoteModification();
        return error;
    }

    // The file has changed, though the host sees only its sidecar change.
    void NoteModification() const
    {
        const timespec now[2] = { { 0, UTIME_OMIT }, { 0, UTIME_NOW } };
        utimensat(AT_FDCWD, fPath.c_str(), now, 0);
    }

    // Finds the fork as it is on the disk. A large one is not mapped but read: then nobody can pull bytes
    // from under this process by making its file shorter.
    OSErr Locate()
    {
        fForks = LocateForks(fPath, Wanted::ResourceForkOnly, Delivery::Places);
        const OSErr error = ErrorOfSearch(fForks);
        if (error != noErr)
            return error;
        fSize = (SInt64)fForks.resourceSize;
        fOld = fForks.resourceOffset >= 0 ? fForks.resourceFile.TakeHeldFile() : Descriptor();
        fOldBytes = fForks.resourceFork;
        if (!fOld && fForks.resourceOffset >= 0 && fForks.resourceFile.Load())
            fOldBytes = fForks.resourceFile.Contents().subspan((size_t)fForks.resourceOffset, (size_t)fSize);
        return fOld || (SInt64)fOldBytes.size() == fSize ? (OSErr)noErr : (OSErr)ioErr;
    }

    bool ReadOld(void* outBytes, size_t inCount, SInt64 inOffset) const
    {
        if (fOld)
            return ReadAll(fOld.Get(), outBytes, inCount, fForks.resourceOffset + inOffset);
        if (!foundation::Fits((size_t)inOffset, inCount, fOldBytes.size()))
            return false;
        if (inCount)
            std::memcpy(outBytes, fOldBytes.data() + inOffset, inCount);
        return true;
    }

    static constexpr size_t kBuffer = 262144;

    path fPath;
    LocatedForks fForks; // where the fork is on the disk
    Descriptor fOld;     // the file that holds it; none: it is in memory
    Bytes fOldBytes;
    std::unique_ptr<ForkHome> fHome; // while it may be written
    Descriptor fStage;               // the fork as it was written, from the first write to the commit
    SInt64 fSize = 0;
};

} // namespace

OSErr OpenResourceFork(const path& inPath, std::shared_ptr<OpenFork>* outFork)
{
    auto fork = std::make_shared<ResourceForkIO>();
    const OSErr error = fork->Open(inPath);
    if (error == noErr)
        *outFork = std::move(fork);
    return error;
}

} // namespace lampblack::files
