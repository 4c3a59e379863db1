// Looking for the parts of a file, in the file and beside it.
#include "ForkLocator.h"

#include "Durable.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lampblack::files {

namespace {

constexpr size_t kLargestCopy = 16384; // below that, reading costs less than mapping

int64_t Nanoseconds(const timespec& inTime)
{
    return (int64_t)inTime.tv_sec * 1000000000 + inTime.tv_nsec;
}

// Readers never wait: writers look whether there are readers, they do not lock them out.
void TakeReaderLock(int inFile)
{
    struct flock lock = {};
    lock.l_type = F_RDLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kReaderLock;
    lock.l_len = 1;
    fcntl(inFile, F_OFD_SETLK, &lock);
}

bool ReadWhole(int inFile, uint8_t* outBytes, size_t inSize)
{
    for (size_t done = 0; done < inSize;) {
        const ssize_t now = pread(inFile, outBytes + done, inSize - done, (off_t)done);
        if (now < 0 && errno == EINTR)
            continue;
        if (now == 0)
            errno = EIO; // it became shorter
        if (now <= 0)
            return false;
        done += (size_t)now;
    }
    return true;
}

} // namespace

FileIdentity::FileIdentity(const struct stat& inStatus)
    : exists(true),
      device(inStatus.st_dev),
      inode(inStatus.st_ino),
      size(inStatus.st_size),
      modified(Nanoseconds(inStatus.st_mtim)),
      changed(Nanoseconds(inStatus.st_ctim))
{
}

FileIdentity FileIdentity::At(const std::filesystem::path& inPath)
{
    struct stat status;
    return stat(inPath.c_str(), &status) == 0 ? FileIdentity(status) : FileIdentity();
}

FileIdentity FileIdentity::Of(int inFile)
{
    struct stat status;
    return fstat(inFile, &status) == 0 ? FileIdentity(status) : FileIdentity();
}

struct MappedFile::Mapping {
    FileIdentity identity;
    int file = -1; // open as long as it is mapped
    void* base = nullptr;
    std::unique_ptr<uint8_t[]> copy;

    Mapping() = default;
    Mapping(const Mapping&) = delete;
    ~Mapping()
    {
        if (base)
            munmap(base, (size_t)identity.size);
        if (file >= 0)
            close(file);
    }

    bool Take();
};

// Reads or maps what `file` is.
bool MappedFile::Mapping::Take()
{
    struct stat status;
    if (fstat(file, &status) != 0)
        return false;
    identity = FileIdentity(status);
    const size_t size = (size_t)identity.size;
    if (!S_ISREG(status.st_mode))
        errno = EISDIR;
    if (!S_ISREG(status.st_mode) || size == 0)
        return S_ISREG(status.st_mode);
    TakeReaderLock(file);
    if (size <= kLargestCopy) {
        copy = std::make_unique_for_overwrite<uint8_t[]>(size);
        const bool isRead = ReadWhole(file, copy.get(), size);
        close(file);
        file = -1;
        return isRead;
    }
    void* mapped = mmap(nullptr, size, PROT_READ, MAP_SHARED, file, 0);
    base = mapped == MAP_FAILED ? nullptr : mapped;
    return base;
}

bool MappedFile::Open(const std::filesystem::path& inPath)
{
    fMapping.reset();
    const auto mapping = std::make_shared<Mapping>();
    mapping->file = open(inPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (mapping->file < 0 || !mapping->Take())
        return false;
    fMapping = mapping;
    return true;
}

Bytes MappedFile::Contents() const
{
    if (!fMapping)
        return Bytes();
    const uint8_t* bytes = fMapping->base ? (const uint8_t*)fMapping->base : fMapping->copy.get();
    return Bytes(bytes, bytes ? (size_t)fMapping->identity.size : 0);
}

FileIdentity MappedFile::Identity() const
{
    return fMapping ? fMapping->identity : FileIdentity();
}

namespace {

using std::filesystem::path;

bool IsZero(const FInfo& inInfo, const FXInfo& inExtended)
{
    uint8_t bytes[32];
    FinderInfoToBytes(inInfo, bytes);
    ExtendedInfoToBytes(inExtended, bytes + 16);
    return std::all_of(bytes, bytes + 32, [](uint8_t byte) { return byte == 0; });
}

bool IsComplete(const LocatedForks& inForks, Wanted inWanted)
{
    return !inForks.resourceFork.empty() && (inForks.hasFinderInfo || inWanted == Wanted::ResourceForkOnly);
}

SInt64 OffsetIn(Bytes inFile, Bytes inPart)
{
    const bool isInside = !inPart.empty() && std::greater_equal<>()(inPart.data(), inFile.data()) &&
                          std::less<>()(inPart.data(), inFile.data() + inFile.size());
    return isInside ? (SInt64)(inPart.data() - inFile.data()) : (SInt64)-1;
}

// Takes from a container what is still missing.
void Take(const path& inPath, const MappedFile& inFile, std::shared_ptr<const Container> inContainer,
          LocatedForks* ioForks)
{
    const Container& found = *inContainer;
    for (const std::string& problem : found.problems)
        ioForks->problems.push_back(inPath.filename().string() + ": " + problem);
    if (found.hasResourceFork && ioForks->resourceFork.empty() &&
        (!ioForks->hasResourceFork || !found.resourceFork.empty())) {
        ioForks->hasResourceFork = true;
        ioForks->resourceFork = found.resourceFork;
        ioForks->form = found.form;
        ioForks->resourcePath = inPath;
        ioForks->isResourceFormSound = found.problems.empty();
        ioForks->resourceOffset = OffsetIn(inFile.Contents(), found.resourceFork);
    }
    if (found.hasFinderInfo && !ioForks->hasFinderInfo &&
        !IsZero(found.finderInfo, found.extendedFinderInfo)) {
        ioForks->hasFinderInfo = true;
        ioForks->finderInfo = found.finderInfo;
        ioForks->extendedFinderInfo = found.extendedFinderInfo;
        ioForks->finderPath = inPath;
    }
    ioForks->containers.push_back(std::move(inContainer));
}

// The search for the parts of one file.
struct Search {
    path file; // absolute
    Wanted wanted;
    LocatedForks forks;

    bool IsDone() const { return IsComplete(forks, wanted); }
    bool Open(const path& inPath, MappedFile* outFile);
    void TakeSidecar(const path&);
    void TakeArchiveSidecars();
    void TakeSidecars();
};

bool Search::Open(const path& inPath, MappedFile* outFile)
{
    const bool isOpen = outFile->Open(inPath);
    const int error = isOpen ? 0 : errno;
    if (error && error != ENOENT && error != ENOTDIR && error != EISDIR && !forks.besideError)
        forks.besideError = error;
    forks.lookedAt.push_back({ inPath, outFile->Identity() });
    return isOpen;
}

void Search::TakeSidecar(const path& inPath)
{
    MappedFile found;
    if (IsDone() || !Open(inPath, &found))
        return;
    auto container = std::make_shared<const Container>(ReadContainer(found.Contents()));
    if (container->form == Form::None)
        return;
    Take(inPath, found, std::move(container), &forks);
    forks.mappings.push_back(std::move(found));
}

// An archive's "__MACOSX" lies in a folder above the file and repeats the folders between them.
void Search::TakeArchiveSidecars()
{
    const path sidecar = "._" + file.filename().string();
    path folder = file.parent_path(), between;
    while (!folder.empty() && !IsDone()) {
        const path archive = folder / "__MACOSX";
        if (access(archive.c_str(), X_OK) == 0)
            TakeSidecar(archive / between / sidecar);
        else
            forks.lookedAt.push_back({ archive, {} });
        if (folder == folder.parent_path())
            break;
        between = between.empty() ? folder.filename() : folder.filename() / between;
        folder = folder.parent_path();
    }
}

void Search::TakeSidecars()
{
    const path folder = file.parent_path();
    const std::string name = file.filename().string();
    TakeSidecar(folder / ("._" + name));
    TakeArchiveSidecars();
    TakeSidecar(folder / (name + ".rsrc"));
    TakeSidecar(folder / ("%" + name));
    TakeSidecar(folder / ".AppleDouble" / name);
}

} // namespace

LocatedForks LocateForks(const std::filesystem::path& inPath, Wanted inWanted)
{
    std::error_code ignored;
    Search search = { inPath.is_absolute() ? inPath : std::filesystem::absolute(inPath, ignored),
                      inWanted,
                      {} };
    LocatedForks& forks = search.forks;
    MappedFile file;
    forks.exists = file.Open(search.file);
    forks.openError = forks.exists ? 0 : errno;
    forks.lookedAt.push_back({ search.file, file.Identity() });
    if (!forks.exists)
        return std::move(search.forks);
    const auto itself = std::make_shared<const Container>(ReadContainer(file.Contents()));
    const bool isSound = itself->hasDataFork && itself->problems.empty();
    forks.ownForm = itself->form;
    forks.isOwnFormSound = itself->problems.empty();
    forks.dataFork = isSound ? itself->dataFork : file.Contents();
    forks.mappings.push_back(file);
    if (itself->form == Form::MacBinary)
        Take(search.file, file, itself, &forks);
    if (!search.IsDone())
        search.TakeSidecars();
    if (itself->form != Form::MacBinary)
        Take(search.file, file, itself, &forks);
    return std::move(search.forks);
}

OSErr ErrorOfSearch(const LocatedForks& inForks)
{
    const int error = inForks.exists ? inForks.besideError : inForks.openError;
    return error == EISDIR ? (OSErr)fnfErr : error ? ErrorOfHost(error) : (OSErr)noErr;
}

} // namespace lampblack::files
