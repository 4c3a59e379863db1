// Copies and mappings of forks, and the cache of them.
#include "ForkImage.h"

#include <algorithm>
#include <ctime>
#include <sys/mman.h>

namespace lampblack::resources {

using std::filesystem::path;

namespace {

constexpr size_t kLargestCopy = 1u << 20;
constexpr size_t kMostKnown = 8;
constexpr int64_t kRecent = 20000000; // nanoseconds: longer than a tick of any file system's clock

} // namespace

ForkImage::~ForkImage()
{
    if (fMapped)
        munmap(fMapped, fMappedSize);
}

std::shared_ptr<ForkImage> ForkImage::Of(const files::LocatedForks& inForks, bool inResourceFork)
{
    const Bytes bytes = inResourceFork ? inForks.resourceFork : inForks.dataFork;
    auto image = std::make_shared<ForkImage>();
    if (bytes.size() < kLargestCopy) {
        image->fCopy.assign(bytes.begin(), bytes.end());
        image->fBytes = image->fCopy;
        return image;
    }
    image->fHeld = inForks;
    image->fBytes = bytes;
    return image;
}

std::shared_ptr<ForkImage> ForkImage::OfPlace(const files::ForkPlace& inPlace)
{
    auto image = std::make_shared<ForkImage>();
    if (inPlace.length >= kLargestCopy) {
        const size_t size = (size_t)inPlace.offset + inPlace.length;
        void* mapped = mmap(nullptr, size, PROT_READ, MAP_SHARED, inPlace.file, 0);
        if (mapped != MAP_FAILED) {
            image->fMapped = mapped;
            image->fMappedSize = size;
            image->fBytes = Bytes((const uint8_t*)mapped + inPlace.offset, inPlace.length);
            return image;
        }
    }
    image->fCopy.resize(inPlace.length);
    if (!files::ReadAll(inPlace.file, image->fCopy.data(), inPlace.length, inPlace.offset))
        image->fCopy.clear();
    image->fBytes = image->fCopy;
    return image;
}

std::shared_ptr<ForkImage> ForkImage::OfBytes(std::vector<uint8_t>&& inBytes)
{
    auto image = std::make_shared<ForkImage>();
    image->fCopy = std::move(inBytes);
    image->fBytes = image->fCopy;
    return image;
}

const char* ForkImage::Parse()
{
    if (!fIsParsed)
        fProblem = fFork.Open(fBytes);
    fIsParsed = true;
    return fProblem;
}

bool ForkImage::IsSound()
{
    if (!fIsSound)
        fIsSound = !Parse() && fFork.IsSound();
    return *fIsSound;
}

void ForkImage::Patch(uint32_t inOffset, Bytes inBytes)
{
    std::copy(inBytes.begin(), inBytes.end(), fCopy.begin() + inOffset);
    fIsParsed = false;
}

int64_t FileTimeNow()
{
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    return (int64_t)now.tv_sec * 1000000000 + now.tv_nsec;
}

const KnownFork* ForkCache::Find(const path& inPath, bool inResourceFork) const
{
    const auto found = std::find_if(fForks.rbegin(), fForks.rend(), [&](const KnownFork& fork) {
        return fork.isResourceFork == inResourceFork && fork.path == inPath;
    });
    return found == fForks.rend() ? nullptr : &*found;
}

KnownFork ForkCache::Take(const path& inPath, bool inResourceFork)
{
    const KnownFork* found = Find(inPath, inResourceFork);
    if (!found)
        return {};
    const size_t index = (size_t)(found - fForks.data());
    KnownFork taken = std::move(fForks[index]);
    fForks.erase(fForks.begin() + (ptrdiff_t)index);
    return taken;
}

void ForkCache::Keep(KnownFork inFork)
{
    Take(inFork.path, inFork.isResourceFork);
    if (!inFork.image || !inFork.image->IsCopy())
        return;
    if (fForks.size() >= kMostKnown)
        fForks.erase(fForks.begin());
    fForks.push_back(std::move(inFork));
}

bool ForkCache::IsCurrent(const files::LocatedForks& inForks)
{
    return std::all_of(inForks.lookedAt.begin(), inForks.lookedAt.end(),
                       [](const auto& file) { return files::FileIdentity::At(file.path) == file.identity; });
}

bool ForkCache::IsSettled(const files::LocatedForks& inForks, int64_t inLookedAt, const path& inOwn)
{
    return std::all_of(inForks.lookedAt.begin(), inForks.lookedAt.end(), [&](const auto& file) {
        return !file.identity.exists || file.path == inOwn || inLookedAt - file.identity.changed > kRecent;
    });
}

files::LocatedForks ForkCache::Stripped(const files::LocatedForks& inForks, const path& inPath)
{
    files::LocatedForks forks = inForks;
    forks.mappings.clear();
    forks.containers.clear();
    forks.resourceFork = forks.dataFork = Bytes();
    // What comes later in the search than a fork that was found beside the file has no part in it.
    auto& looked = forks.lookedAt;
    const auto last = std::find_if(looked.begin(), looked.end(),
                                   [&](const auto& file) { return file.path == forks.resourcePath; });
    if (forks.resourcePath != inPath && last != looked.end())
        looked.erase(last + 1, looked.end());
    return forks;
}

} // namespace lampblack::resources
