// Looking for the parts of a file, in the file and beside it.
#include "ForkLocator.h"

#include "Durable.h"
#include "FolderParts.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <functional>
#include <optional>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lampblack::files {

namespace {

constexpr size_t kLargestCopy = 16384; // below that, reading costs less than mapping

} // namespace

// Readers never wait: writers look whether there are readers, they do not lock them out.
bool TakeReaderLock(int inFile)
{
    struct flock lock = {};
    lock.l_type = F_RDLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = kReaderLock;
    lock.l_len = 1;
    return fcntl(inFile, F_OFD_SETLK, &lock) == 0;
}

namespace {

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

struct MappedFile::Mapping {
    FileIdentity identity;
    Descriptor file; // open until all of it is copied
    void* base = nullptr;
    std::unique_ptr<uint8_t[]> copy; // of the first bytes
    size_t copied = 0;
    bool isLocked = false;

    Mapping() = default;
    Mapping(const Mapping&) = delete;
    ~Mapping()
    {
        if (base)
            munmap(base, (size_t)identity.size);
    }

    size_t Size() const { return (size_t)identity.size; }
    bool Look();
    bool Copy(size_t inWanted);
    bool Map();
};

bool MappedFile::Mapping::Look()
{
    struct stat status;
    if (fstat(file.Get(), &status) != 0)
        return false;
    identity = FileIdentity(status);
    if (!S_ISREG(status.st_mode))
        errno = EISDIR;
    return S_ISREG(status.st_mode);
}

// Copies the first bytes; a small file wholly, and then nobody needs to leave it alone any more.
bool MappedFile::Mapping::Copy(size_t inWanted)
{
    const size_t size = Size() <= kLargestCopy ? Size() : std::min(inWanted, Size());
    if (size <= copied)
        return true;
    auto bytes = std::make_unique_for_overwrite<uint8_t[]>(size);
    if (!ReadWhole(file.Get(), bytes.get(), size))
        return false;
    copy = std::move(bytes);
    copied = size;
    if (copied == Size())
        file.Close();
    return true;
}

bool MappedFile::Mapping::Map()
{
    if (base || copied == Size())
        return true;
    void* mapped = mmap(nullptr, Size(), PROT_READ, MAP_SHARED, file.Get(), 0);
    base = mapped == MAP_FAILED ? nullptr : mapped;
    return base;
}

bool MappedFile::Open(const std::filesystem::path& inPath)
{
    const bool isRead = OpenToLook(inPath) && Load();
    if (!isRead)
        fMapping.reset();
    return isRead;
}

bool MappedFile::OpenToLook(const std::filesystem::path& inPath)
{
    fMapping.reset();
    const auto mapping = std::make_shared<Mapping>();
    mapping->file = Descriptor(open(inPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!mapping->file || !mapping->Look())
        return false;
    if (mapping->Size() != 0)
        mapping->isLocked = TakeReaderLock(mapping->file.Get());
    fMapping = mapping;
    return true;
}

bool MappedFile::Load()
{
    return fMapping &&
           (fMapping->Size() <= kLargestCopy ? fMapping->Copy(fMapping->Size()) : fMapping->Map());
}

Bytes MappedFile::Contents() const
{
    if (!fMapping)
        return Bytes();
    const uint8_t* bytes = fMapping->base ? (const uint8_t*)fMapping->base : fMapping->copy.get();
    return Bytes(bytes, fMapping->base ? fMapping->Size() : fMapping->copied);
}

Bytes MappedFile::Front(size_t inWanted)
{
    if (!fMapping || !fMapping->Copy(inWanted))
        return Bytes();
    return Bytes(fMapping->copy.get(), std::min(inWanted, fMapping->copied));
}

Descriptor MappedFile::TakeHeldFile()
{
    return fMapping && fMapping->isLocked ? std::move(fMapping->file) : Descriptor();
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
    return inForks.resourceSize != 0 && (inForks.hasFinderInfo || inWanted == Wanted::ResourceForkOnly);
}

SInt64 OffsetIn(Bytes inFile, Bytes inPart)
{
    const bool isInside = !inPart.empty() && std::greater_equal<>()(inPart.data(), inFile.data()) &&
                          std::less<>()(inPart.data(), inFile.data() + inFile.size());
    return isInside ? (SInt64)(inPart.data() - inFile.data()) : (SInt64)-1;
}

// What a file was found to be.
struct Found {
    std::shared_ptr<const Container> container;
    FrontParts places; // of the forks, when their bytes were not needed
    bool hasBytes = true;

    size_t ResourceSize() const
    {
        return hasBytes ? container->resourceFork.size() : places.resourceFork.length;
    }
};

// Takes from a container what is still missing.
void Take(const path& inPath, const MappedFile& inFile, const Found& inFound, LocatedForks* ioForks)
{
    const Container& found = *inFound.container;
    for (const std::string& problem : found.problems)
        ioForks->problems.push_back(inPath.filename().string() + ": " + problem);
    if (found.hasResourceFork && ioForks->resourceSize == 0 &&
        (!ioForks->hasResourceFork || inFound.ResourceSize() != 0)) {
        ioForks->hasResourceFork = true;
        ioForks->resourceFork = found.resourceFork;
        ioForks->resourceSize = inFound.ResourceSize();
        ioForks->form = found.form;
        ioForks->resourcePath = inPath;
        ioForks->isResourceFormSound = found.problems.empty();
        ioForks->resourceOffset = inFound.hasBytes ? OffsetIn(inFile.Contents(), found.resourceFork)
                                                   : (SInt64)inFound.places.resourceFork.offset;
        ioForks->resourceFile = inFile;
    }
    if (found.hasFinderInfo && !ioForks->hasFinderInfo &&
        !IsZero(found.finderInfo, found.extendedFinderInfo)) {
        ioForks->hasFinderInfo = true;
        ioForks->finderInfo = found.finderInfo;
        ioForks->extendedFinderInfo = found.extendedFinderInfo;
        ioForks->finderPath = inPath;
    }
    ioForks->containers.push_back(inFound.container);
}

// The search for the parts of one file.
struct Search {
    path file; // absolute
    Wanted wanted;
    Delivery delivery;
    LocatedForks forks;

    bool IsDone() const { return IsComplete(forks, wanted); }
    bool Open(const path& inPath, MappedFile* outFile);
    bool Read(MappedFile* ioFile, Found* outFound);
    void TakeSidecar(const path&);
    void TakeArchiveSidecars();
    void TakeSidecars();
    void TakeAll();
};

bool Search::Open(const path& inPath, MappedFile* outFile)
{
    const bool isOpen = outFile->OpenToLook(inPath);
    const int error = isOpen ? 0 : errno;
    if (error && error != ENOENT && error != ENOTDIR && error != EISDIR && !forks.besideError)
        forks.besideError = error;
    forks.lookedAt.push_back({ inPath.native(), outFile->Identity() });
    return isOpen;
}

// Looks at the first bytes if those may be enough, and else at all. False: it cannot be read.
bool Search::Read(MappedFile* ioFile, Found* outFound)
{
    auto container = std::make_shared<Container>();
    outFound->hasBytes = delivery == Delivery::Bytes ||
                         !ReadFront([&](size_t wanted) { return ioFile->Front(wanted); },
                                    (size_t)ioFile->Identity().size, container.get(), &outFound->places);
    if (outFound->hasBytes && !ioFile->Load())
        return false;
    if (outFound->hasBytes)
        *container = ReadContainer(ioFile->Contents());
    outFound->container = std::move(container);
    return true;
}

void Search::TakeSidecar(const path& inPath)
{
    MappedFile sidecar;
    Found found;
    if (IsDone() || !Open(inPath, &sidecar))
        return;
    if (!Read(&sidecar, &found)) {
        forks.besideError = forks.besideError ? forks.besideError : errno;
        return;
    }
    if (found.container->form == Form::None)
        return;
    Take(inPath, sidecar, found, &forks);
    if (found.hasBytes)
        forks.mappings.push_back(std::move(sidecar));
}

// An archive's "__MACOSX" lies in a folder above the file and repeats the folders between them.
void Search::TakeArchiveSidecars()
{
    const path sidecar = "._" + file.filename().native();
    path folder = file.parent_path(), between;
    while (!folder.empty() && !IsDone()) {
        const path archive = folder / "__MACOSX";
        if (access(archive.c_str(), X_OK) == 0)
            TakeSidecar(archive / between / sidecar);
        else
            forks.lookedAt.push_back({ archive.native(), {} });
        if (folder == folder.parent_path())
            break;
        between = between.empty() ? folder.filename() : folder.filename() / between;
        folder = folder.parent_path();
    }
}

// Who only wants to know asks the folder first which names it has at all.
void Search::TakeSidecars()
{
    const path folder = file.parent_path();
    const std::string name = file.filename().native();
    std::optional<FolderParts> parts;
    if (delivery == Delivery::Places)
        parts.emplace(folder.native());
    const auto look = [&](const std::string& inPart, const path& inPath) {
        if (!parts || parts->MayHave(inPart))
            TakeSidecar(inPath);
        else if (!IsDone())
            forks.lookedAt.push_back({ inPath.native(), {} });
    };
    const std::string sidecar = "._" + name, raw = name + ".rsrc", percent = "%" + name;
    look(sidecar, folder / sidecar);
    TakeArchiveSidecars();
    look(raw, folder / raw);
    look(percent, folder / percent);
    look(".AppleDouble", folder / ".AppleDouble" / name);
}

void Search::TakeAll()
{
    MappedFile own;
    Found itself;
    forks.exists = own.OpenToLook(file) && Read(&own, &itself);
    forks.openError = forks.exists ? 0 : errno;
    forks.lookedAt.push_back({ file.native(), own.Identity() });
    if (!forks.exists)
        return;
    const Container& container = *itself.container;
    const bool isSound = container.hasDataFork && container.problems.empty();
    forks.ownForm = container.form;
    forks.isOwnFormSound = container.problems.empty();
    if (itself.hasBytes) {
        forks.dataFork = isSound ? container.dataFork : own.Contents();
        forks.dataSize = forks.dataFork.size();
        forks.mappings.push_back(own);
    } else {
        forks.dataSize = isSound ? itself.places.dataFork.length : (size_t)own.Identity().size;
    }
    if (container.form == Form::MacBinary)
        Take(file, own, itself, &forks);
    if (!IsDone())
        TakeSidecars();
    if (container.form != Form::MacBinary)
        Take(file, own, itself, &forks);
}

} // namespace

LocatedForks LocateForks(const std::filesystem::path& inPath, Wanted inWanted, Delivery inDelivery)
{
    std::error_code ignored;
    Search search = {
        inPath.is_absolute() ? inPath : std::filesystem::absolute(inPath, ignored), inWanted, inDelivery, {}
    };
    search.TakeAll();
    return std::move(search.forks);
}

OSErr ErrorOfSearch(const LocatedForks& inForks)
{
    const int error = inForks.exists ? inForks.besideError : inForks.openError;
    return error == EISDIR ? (OSErr)fnfErr : error ? ErrorOfHost(error) : (OSErr)noErr;
}

} // namespace lampblack::files
