// Copies of forks, those that are read, and the cache of them.
#include "ForkImage.h"

#include <files/ChangeTimes.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <fcntl.h>

namespace lampblack::resources {
namespace {

constexpr size_t kLargestCopy = 1u << 16; // of what is only read
constexpr size_t kLargestKept = 1u << 20; // of what is kept in memory for the next who opens it
constexpr size_t kLargestFork =
    1u << 28; // data begin within 16 MB; nobody has a resource of a quarter gigabyte
constexpr size_t kHeaderLength = 16;
constexpr size_t kMostKnown = 8;
constexpr int64_t kRecent = 20000000; // nanoseconds: longer than a tick of any file system's clock

} // namespace

// Where the bytes of a fork that was found are: in memory, or in a file.
struct ForkImage::Source {
    Bytes bytes; // all of them, or none
    size_t size = 0;
    SInt64 offset = -1; // in the file; -1: only in memory
    std::string path;
    files::MappedFile* file = nullptr;

    Source(files::LocatedForks& inForks, bool inResourceFork)
    {
        files::MappedFile* own = inForks.mappings.empty() ? nullptr : &inForks.mappings.front();
        const bool isPlain = own && inForks.dataFork.size() == (size_t)own->Identity().size;
        bytes = inResourceFork ? inForks.resourceFork : inForks.dataFork;
        size = inResourceFork ? inForks.resourceSize : inForks.dataSize;
        offset = inResourceFork ? inForks.resourceOffset : isPlain ? 0 : -1;
        file = inResourceFork ? &inForks.resourceFile : own;
        path = inResourceFork ? inForks.resourcePath.native() : inForks.lookedAt.front().path;
        if (bytes.empty() && offset >= 0 && file->Contents().size() >= (size_t)offset + size)
            bytes = file->Contents().subspan((size_t)offset, size); // a small file is in memory as it is
    }
};

bool ForkImage::CopyAll(const Source& inSource)
{
    const bool isInFile = fFile && inSource.offset >= 0;
    if (fSize > kLargestFork || (!isInFile && inSource.bytes.size() != fSize))
        return false;
    fCopy.resize(fSize);
    if (!isInFile)
        std::copy(inSource.bytes.begin(), inSource.bytes.end(), fCopy.begin());
    else if (!files::ReadAll(fFile.Get(), fCopy.data(), fSize, inSource.offset))
        return false;
    fFile.Close();
    return true;
}

std::shared_ptr<ForkImage> ForkImage::Of(files::LocatedForks& ioForks, bool inResourceFork)
{
    const Source source(ioForks, inResourceFork);
    auto image = std::make_shared<ForkImage>();
    image->fSize = source.size;
    if (source.file && source.offset >= 0)
        image->fFile = source.file->TakeHeldFile();
    if (!image->fFile || source.size <= kLargestCopy)
        return image->CopyAll(source) ? image : nullptr;
    image->fIsWhole = false;
    image->fPath = source.path;
    image->fIdentity = source.file->Identity();
    image->fOffset = source.offset;
    image->fHolders = 1;
    return image;
}

std::shared_ptr<ForkImage> ForkImage::Copied(files::LocatedForks& ioForks, bool inResourceFork)
{
    const Source source(ioForks, inResourceFork);
    auto image = std::make_shared<ForkImage>();
    image->fSize = source.size;
    if (source.file && source.offset >= 0)
        image->fFile = source.file->TakeHeldFile();
    return image->CopyAll(source) ? image : nullptr;
}

std::shared_ptr<ForkImage> ForkImage::OfPlace(const files::ForkPlace& inPlace)
{
    auto image = std::make_shared<ForkImage>();
    if (inPlace.length > kLargestFork)
        return nullptr;
    image->fSize = inPlace.length;
    image->fCopy.resize(inPlace.length);
    return files::ReadAll(inPlace.file, image->fCopy.data(), inPlace.length, inPlace.offset) ? image
                                                                                             : nullptr;
}

std::shared_ptr<ForkImage> ForkImage::OfBytes(std::vector<uint8_t>&& inBytes)
{
    auto image = std::make_shared<ForkImage>();
    image->fCopy = std::move(inBytes);
    image->fSize = image->fCopy.size();
    return image;
}

// The lock comes first: a writer that came before has changed the times.
bool ForkImage::Hold()
{
    if (fIsWhole)
        return true;
    if (fHolders == 0) {
        fFile = files::Descriptor(open(fPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
        if (!fFile || !files::TakeReaderLock(fFile.Get()) ||
            !(files::FileIdentity::Of(fFile.Get()) == fIdentity)) {
            fFile.Close();
            return false;
        }
    }
    ++fHolders;
    return true;
}

void ForkImage::LetGo()
{
    if (!fIsWhole && --fHolders == 0)
        fFile.Close();
}

bool ForkImage::Read(size_t inOffset, size_t inCount, void* outBytes) const
{
    return fFile && foundation::Fits(inOffset, inCount, fSize) &&
           files::ReadAll(fFile.Get(), outBytes, inCount, fOffset + (SInt64)inOffset);
}

const char* ForkImage::ParseMap()
{
    uint8_t header[kHeaderLength];
    if (!Read(0, kHeaderLength, header))
        return "the header is cut off";
    const DataPlace map = ResourceFork::MapPlace(header, fSize);
    fCopy.resize(map.length);
    if (!Read(map.offset, map.length, fCopy.data()))
        return "the map is cut off";
    return fFork.OpenMap(header, fCopy, fSize, this);
}

const char* ForkImage::Parse()
{
    if (!fIsParsed)
        fProblem = fIsWhole ? fFork.Open(fCopy) : ParseMap();
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

const KnownFork* ForkCache::Find(const std::string& inPath, bool inResourceFork) const
{
    const auto found = std::find_if(fForks.rbegin(), fForks.rend(), [&](const KnownFork& fork) {
        return fork.isResourceFork == inResourceFork && fork.path == inPath;
    });
    return found == fForks.rend() ? nullptr : &*found;
}

KnownFork ForkCache::Take(const std::string& inPath, bool inResourceFork)
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
    if (!inFork.image || (inFork.image->IsWhole() && inFork.image->Size() > kLargestKept))
        return;
    if (fForks.size() >= kMostKnown)
        fForks.erase(fForks.begin());
    fForks.push_back(std::move(inFork));
}

bool ForkCache::IsCurrent(const files::LocatedForks& inForks, const std::string& inPath,
                          const files::FileIdentity* inSeen)
{
    return std::all_of(inForks.lookedAt.begin(), inForks.lookedAt.end(), [&](const auto& file) {
        const bool isSeen = inSeen && file.path == inPath;
        return (isSeen ? *inSeen : file.identity.AgainAt(file.path)) == file.identity;
    });
}

bool ForkCache::IsSettled(const files::LocatedForks& inForks, int64_t inLookedAt, const std::string& inOwn)
{
    return std::all_of(inForks.lookedAt.begin(), inForks.lookedAt.end(), [&](const auto& file) {
        return !file.identity.exists || file.path == inOwn || inLookedAt - file.identity.changed > kRecent ||
               files::IsKnownToShowEachChange(file.identity.device);
    });
}

std::shared_ptr<const files::LocatedForks> ForkCache::Stripped(const files::LocatedForks& inForks,
                                                               const std::string& inPath)
{
    auto stripped = std::make_shared<files::LocatedForks>(inForks);
    files::LocatedForks& forks = *stripped;
    forks.mappings.clear();
    forks.containers.clear();
    forks.resourceFile = {};
    forks.resourceFork = forks.dataFork = Bytes();
    // What comes later in the search than a fork that was found beside the file has no part in it.
    auto& looked = forks.lookedAt;
    const auto last = std::find_if(looked.begin(), looked.end(), [&](const auto& file) {
        return file.path == forks.resourcePath.native();
    });
    if (forks.resourcePath.native() != inPath && last != looked.end())
        looked.erase(last + 1, looked.end());
    return stripped;
}

} // namespace lampblack::resources
