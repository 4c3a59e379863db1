// Looking for the parts of a file, in the file and beside it.
#include "ForkLocator.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lampblack::files {

struct MappedFile::Mapping {
    void* base = nullptr;
    size_t size = 0;

    Mapping(void* inBase, size_t inSize) : base(inBase), size(inSize) {}
    Mapping(const Mapping&) = delete;
    ~Mapping()
    {
        if (size)
            munmap(base, size);
    }
};

bool MappedFile::Open(const std::filesystem::path& inPath)
{
    fMapping.reset();
    const int file = open(inPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return false;
    struct stat status;
    const bool isFile = fstat(file, &status) == 0 && S_ISREG(status.st_mode);
    const size_t size = isFile ? (size_t)status.st_size : 0;
    void* base = size ? mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0) : nullptr;
    const int error = !isFile ? EISDIR : base == MAP_FAILED ? errno : 0;
    close(file);
    errno = error;
    if (error == 0)
        fMapping = std::make_shared<Mapping>(base, size);
    return error == 0;
}

Bytes MappedFile::Contents() const
{
    return fMapping ? Bytes((const uint8_t*)fMapping->base, fMapping->size) : Bytes();
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

bool IsComplete(const LocatedForks& inForks)
{
    return !inForks.resourceFork.empty() && inForks.hasFinderInfo;
}

// Takes from a container what is still missing.
void Take(const path& inPath, std::shared_ptr<const Container> inContainer, LocatedForks* ioForks)
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

void TakeSidecar(const path& inPath, LocatedForks* ioForks)
{
    MappedFile file;
    if (IsComplete(*ioForks) || !file.Open(inPath))
        return;
    auto container = std::make_shared<const Container>(ReadContainer(file.Contents()));
    if (container->form == Form::None)
        return;
    ioForks->mappings.push_back(std::move(file));
    Take(inPath, std::move(container), ioForks);
}

// An archive's "__MACOSX" lies in a folder above the file and repeats the folders between them.
void TakeArchiveSidecars(const path& inPath, LocatedForks* ioForks)
{
    const path sidecar = "._" + inPath.filename().string();
    path folder = inPath.parent_path(), between;
    while (!folder.empty() && !IsComplete(*ioForks)) {
        const path archive = folder / "__MACOSX";
        if (access(archive.c_str(), X_OK) == 0)
            TakeSidecar(archive / between / sidecar, ioForks);
        if (folder == folder.parent_path())
            break;
        between = between.empty() ? folder.filename() : folder.filename() / between;
        folder = folder.parent_path();
    }
}

void TakeSidecars(const path& inPath, LocatedForks* ioForks)
{
    const path folder = inPath.parent_path();
    const std::string name = inPath.filename().string();
    TakeSidecar(folder / ("._" + name), ioForks);
    TakeArchiveSidecars(inPath, ioForks);
    TakeSidecar(folder / (name + ".rsrc"), ioForks);
    TakeSidecar(folder / ("%" + name), ioForks);
    TakeSidecar(folder / ".AppleDouble" / name, ioForks);
}

} // namespace

LocatedForks LocateForks(const std::filesystem::path& inPath)
{
    LocatedForks forks;
    MappedFile file;
    std::error_code ignored;
    const path absolute = std::filesystem::absolute(inPath, ignored);
    forks.exists = file.Open(absolute);
    forks.openError = forks.exists ? 0 : errno;
    if (!forks.exists)
        return forks;
    const auto itself = std::make_shared<const Container>(ReadContainer(file.Contents()));
    const bool isSound = itself->hasDataFork && itself->problems.empty();
    forks.dataFork = isSound ? itself->dataFork : file.Contents();
    forks.mappings.push_back(file);
    if (itself->form == Form::MacBinary)
        Take(absolute, itself, &forks);
    if (!IsComplete(forks))
        TakeSidecars(absolute, &forks);
    if (itself->form != Form::MacBinary)
        Take(absolute, itself, &forks);
    return forks;
}

} // namespace lampblack::files
