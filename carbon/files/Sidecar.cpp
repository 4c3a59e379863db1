// Sidecars entry by entry. Layout: RFC 1740.
#include "Sidecar.h"

#include "Container.h"
#include "Dates.h"
#include "ForkHome.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>
#include <vector>

namespace lampblack::files {

using std::filesystem::path;

namespace {

constexpr uint32_t kMagic = 0x00051607, kVersion = 0x00020000;
constexpr uint32_t kResourceFork = 2, kDates = 8, kFinderInfo = 9;
constexpr size_t kHeader = 26, kDescriptor = 12, kDatesSize = 16, kFinderSize = 32;
constexpr SInt64 kSecondsTo2000 = 3029529600; // from 1904: dates count from 1 January 2000, Greenwich
constexpr uint32_t kUnknownDate = 0x80000000;
constexpr size_t kMostEntries = 64; // formats know about fifteen

struct Entry {
    uint32_t id, offset, length;
};

// The table at the head of an AppleDouble file; empty when it is none.
std::vector<Entry> EntriesIn(int inFile)
{
    uint8_t header[kHeader], table[kMostEntries * kDescriptor];
    if (!ReadAll(inFile, header, kHeader, 0) || foundation::LoadBE32(header) != kMagic)
        return {};
    const size_t count = foundation::LoadBE16(header + 24);
    if (count > kMostEntries || !ReadAll(inFile, table, count * kDescriptor, kHeader))
        return {};
    std::vector<Entry> entries;
    for (size_t i = 0; i < count; ++i) {
        const uint8_t* at = table + i * kDescriptor;
        entries.push_back(
            { foundation::LoadBE32(at), foundation::LoadBE32(at + 4), foundation::LoadBE32(at + 8) });
    }
    return entries;
}

const Entry* Find(const std::vector<Entry>& inEntries, uint32_t inID, size_t inLength)
{
    for (const Entry& entry : inEntries)
        if (entry.id == inID && entry.length >= inLength)
            return &entry;
    return nullptr;
}

Descriptor OpenSidecar(const path& inPath, int inFlags)
{
    return Descriptor(open(inPath.c_str(), inFlags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
}

// Writes over the first bytes of an entry that is there. fnfErr when it is not.
OSErr WriteOver(const path& inPath, uint32_t inID, Bytes inBytes)
{
    const Descriptor file = OpenSidecar(inPath, O_RDWR);
    const std::vector<Entry> entries = file ? EntriesIn(file.Get()) : std::vector<Entry>();
    const Entry* entry = Find(entries, inID, inBytes.size());
    if (!entry)
        return fnfErr;
    const OSErr error = WriteAll(file.Get(), inBytes, entry->offset);
    if (error != noErr)
        return error;
    return fdatasync(file.Get()) == 0 ? (OSErr)noErr : ErrorOfHost(errno);
}

// The attributes behind a long Finder information say where they lie in the whole file.
void MoveAttributes(std::vector<uint8_t>* ioFinderInfo, uint32_t inBy)
{
    constexpr size_t kAttributes = 34, kTotal = 8, kStart = 12, kCount = 34, kFirst = 36, kName = 11;
    uint8_t* at = ioFinderInfo->data() + kAttributes;
    const size_t size = ioFinderInfo->size() > kAttributes ? ioFinderInfo->size() - kAttributes : 0;
    if (size < kFirst || std::memcmp(at, "ATTR", 4) != 0)
        return;
    const auto move = [&](size_t place) {
        foundation::StoreBE32(at + place, foundation::LoadBE32(at + place) + inBy);
    };
    move(kTotal);
    move(kStart);
    size_t place = kFirst;
    for (int count = foundation::LoadBE16(at + kCount); count > 0 && place + kName <= size; --count) {
        move(place);
        place = (place + kName + at[place + kName - 1] + 3) & ~(size_t)3;
    }
}

struct Part {
    uint32_t id;
    std::vector<uint8_t> bytes;
    uint32_t oldOffset;
};

std::vector<Part> ReadParts(const path& inPath)
{
    const Descriptor file = OpenSidecar(inPath, O_RDONLY);
    struct stat status;
    if (!file || fstat(file.Get(), &status) != 0)
        return {};
    std::vector<Part> parts;
    for (const Entry& entry : EntriesIn(file.Get())) {
        if (!foundation::Fits(entry.offset, entry.length, (size_t)status.st_size))
            return {};
        Part part = { entry.id, std::vector<uint8_t>(entry.length), entry.offset };
        if (!ReadAll(file.Get(), part.bytes.data(), entry.length, entry.offset))
            return {};
        parts.push_back(std::move(part));
    }
    return parts;
}

std::vector<uint8_t> BytesOf(std::vector<Part> inParts)
{
    std::stable_sort(inParts.begin(), inParts.end(), [](const Part& a, const Part& b) {
        const auto rank = [](uint32_t id) { return id == kFinderInfo ? 0 : id == kResourceFork ? 2 : 1; };
        return rank(a.id) < rank(b.id);
    });
    std::vector<uint8_t> bytes(kHeader + inParts.size() * kDescriptor);
    foundation::StoreBE32(bytes.data(), kMagic);
    foundation::StoreBE32(bytes.data() + 4, kVersion);
    foundation::StoreBE16(bytes.data() + 24, (uint16_t)inParts.size());
    for (size_t i = 0; i < inParts.size(); ++i) {
        Part& part = inParts[i];
        const uint32_t offset = (uint32_t)bytes.size();
        uint8_t* at = bytes.data() + kHeader + i * kDescriptor;
        foundation::StoreBE32(at, part.id);
        foundation::StoreBE32(at + 4, offset);
        foundation::StoreBE32(at + 8, (uint32_t)part.bytes.size());
        if (part.id == kFinderInfo && part.oldOffset)
            MoveAttributes(&part.bytes, offset - part.oldOffset);
        bytes.insert(bytes.end(), part.bytes.begin(), part.bytes.end());
    }
    return bytes;
}

OSErr WriteParts(const path& inTarget, std::vector<Part> inParts)
{
    const std::vector<uint8_t> bytes = BytesOf(std::move(inParts));
    struct stat status;
    const bool exists = stat(inTarget.c_str(), &status) == 0;
    Replacement file;
    OSErr error = file.Begin(inTarget, exists ? &status : nullptr);
    error = error == noErr ? WriteAll(file.File(), bytes, 0) : error;
    return error == noErr ? file.PutInPlace() : error;
}

// Puts an entry into a sidecar. A new one has the two entries of every sidecar besides.
OSErr PutEntry(const path& inTarget, uint32_t inID, Bytes inBytes, const uint8_t* inFinderInfo)
{
    std::vector<Part> parts = ReadParts(inTarget);
    if (parts.empty()) {
        if (access(inTarget.c_str(), F_OK) == 0 && std::filesystem::file_size(inTarget) > 0)
            if (const OSErr error = KeepAside(inTarget); error != noErr)
                return error;
        parts = { { kFinderInfo, std::vector<uint8_t>(inFinderInfo, inFinderInfo + kFinderSize), 0 },
                  { kResourceFork, {}, 0 } };
    }
    std::erase_if(parts, [&](const Part& part) { return part.id == inID; });
    parts.push_back({ inID, std::vector<uint8_t>(inBytes.begin(), inBytes.end()), 0 });
    return WriteParts(inTarget, std::move(parts));
}

bool IsFolder(const path& inPath)
{
    std::error_code ignored;
    return std::filesystem::is_directory(inPath, ignored);
}

// A file that is itself AppleDouble keeps its entries, all others have the sidecar.
path KeeperOf(const path& inPath)
{
    return LocateForks(inPath).ownForm == Form::AppleDouble ? inPath : SidecarOf(inPath);
}

bool IsWrapped(const path& inPath)
{
    const Form form = LocateForks(inPath).ownForm;
    return form == Form::MacBinary || form == Form::AppleSingle || form == Form::BinHex;
}

OSErr PutDates(const path& inPath, Bytes inDates)
{
    const path keeper = KeeperOf(inPath);
    uint8_t finderInfo[kFinderSize] = {};
    if (IsFolder(inPath))
        return PutEntry(keeper, kDates, inDates, finderInfo);
    std::unique_ptr<ForkHome> home;
    OSErr error = ForkHome::Open(inPath, &home);
    if (error != noErr)
        return error;
    const LocatedForks forks = home->Forks();
    FinderInfoToBytes(forks.finderInfo, finderInfo);
    ExtendedInfoToBytes(forks.extendedFinderInfo, finderInfo + 16);
    if (home->HomePath() == keeper || IsWrapped(inPath)) {
        // Whatever stands there becomes a whole AppleDouble first; a container is taken apart.
        ForkChange change;
        change.finderInfo = &forks.finderInfo;
        change.extendedFinderInfo = &forks.extendedFinderInfo;
        error = home->Replace(change);
    }
    return error == noErr ? PutEntry(keeper, kDates, inDates, finderInfo) : error;
}

} // namespace

OSErr SetCreationDate(const path& inPath, const timespec& inTime)
{
    uint8_t dates[kDatesSize];
    const auto since2000 = (uint32_t)(inTime.tv_sec + kSecondsTo1970 - kSecondsTo2000);
    for (size_t i = 0; i < kDatesSize; i += 4)
        foundation::StoreBE32(dates + i, i == 0 ? since2000 : kUnknownDate);
    const OSErr error =
        IsWrapped(inPath) ? (OSErr)fnfErr : WriteOver(KeeperOf(inPath), kDates, Bytes(dates, 4));
    return error == fnfErr ? PutDates(inPath, Bytes(dates, kDatesSize)) : error;
}

OSErr SetFolderInfo(const path& inFolder, const FolderInfo& inInfo)
{
    const path sidecar = SidecarOf(inFolder);
    const OSErr error = WriteOver(sidecar, kFinderInfo, Bytes(inInfo.data(), inInfo.size()));
    return error == fnfErr
               ? PutEntry(sidecar, kFinderInfo, Bytes(inInfo.data(), inInfo.size()), inInfo.data())
               : error;
}

OSErr SetSidecarFork(const path& inFile, Bytes inFork, const FolderInfo& inInfo)
{
    return PutEntry(SidecarOf(inFile), kResourceFork, inFork, inInfo.data());
}

} // namespace lampblack::files
