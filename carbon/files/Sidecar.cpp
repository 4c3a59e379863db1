// Entries of sidecars on the host.
#include "Sidecar.h"

#include "Dates.h"
#include "DoubleEntries.h"
#include "ForkHome.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace lampblack::files {

using std::filesystem::path;

namespace {

constexpr SInt64 kSecondsTo2000 = 3029529600; // from 1904: dates count from 1 January 2000, Greenwich
constexpr uint32_t kUnknownDate = 0x80000000;
constexpr size_t kDates = 16;

// Writes over the first bytes of an entry that is there. fnfErr when it is not.
OSErr WriteOver(const path& inSidecar, uint32_t inKind, Bytes inBytes)
{
    MappedFile old;
    const std::optional<size_t> place =
        old.Open(inSidecar) ? PlaceOfEntry(old.Contents(), inKind, inBytes.size()) : std::nullopt;
    if (!place)
        return fnfErr;
    const Descriptor file(open(inSidecar.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file)
        return ErrorOfHost(errno);
    const OSErr error = WriteAll(file.Get(), inBytes, (SInt64)*place);
    return error != noErr || fdatasync(file.Get()) == 0 ? error : ErrorOfHost(errno);
}

// Puts an entry into a sidecar, or into a new one. What stands in its place and is none is kept aside.
OSErr PutEntry(const path& inSidecar, uint32_t inKind, Bytes inBytes, const FinderBytes& inIfNew)
{
    MappedFile old;
    struct stat status;
    const bool isThere = old.Open(inSidecar) && stat(inSidecar.c_str(), &status) == 0;
    const std::vector<uint8_t> bytes =
        WithEntry(isThere ? old.Contents() : Bytes(), inKind, inBytes, inIfNew);
    if (isThere && !old.Contents().empty() && !IsSoundDouble(old.Contents()))
        if (const OSErr error = KeepAside(inSidecar); error != noErr)
            return error;
    Replacement file;
    OSErr error = file.Begin(inSidecar, isThere ? &status : nullptr);
    error = error == noErr ? WriteAll(file.File(), bytes, 0) : error;
    return error == noErr ? file.PutInPlace() : error;
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
    if (IsFolder(inPath))
        return PutEntry(keeper, kDatesEntry, inDates, {});
    std::unique_ptr<ForkHome> home;
    OSErr error = ForkHome::Open(inPath, &home);
    if (error != noErr)
        return error;
    const LocatedForks forks = home->Forks();
    if (home->HomePath() == keeper || IsWrapped(inPath)) {
        // Whatever stands there becomes a whole AppleDouble first; a container is taken apart.
        ForkChange change;
        change.finderInfo = &forks.finderInfo;
        change.extendedFinderInfo = &forks.extendedFinderInfo;
        error = home->Replace(change);
    }
    const FinderBytes info = ToFinderBytes(forks.finderInfo, forks.extendedFinderInfo);
    return error == noErr ? PutEntry(keeper, kDatesEntry, inDates, info) : error;
}

} // namespace

// Modulo 2^32, as dates since 1904 count: 1904 to 1931 stand where 2040 to 2068 would.
OSErr SetCreationDate(const path& inPath, const timespec& inTime)
{
    uint8_t dates[kDates];
    foundation::StoreBE32(dates, (uint32_t)(inTime.tv_sec + kSecondsTo1970 - kSecondsTo2000));
    for (size_t other = 4; other < kDates; other += 4)
        foundation::StoreBE32(dates + other, kUnknownDate);
    const OSErr error =
        IsWrapped(inPath) ? (OSErr)fnfErr : WriteOver(KeeperOf(inPath), kDatesEntry, Bytes(dates, 4));
    return error == fnfErr ? PutDates(inPath, Bytes(dates)) : error;
}

OSErr SetFolderInfo(const path& inFolder, const FinderBytes& inInfo)
{
    const path sidecar = SidecarOf(inFolder);
    const OSErr error = WriteOver(sidecar, kFinderInfoEntry, Bytes(inInfo));
    return error == fnfErr ? PutEntry(sidecar, kFinderInfoEntry, Bytes(inInfo), inInfo) : error;
}

OSErr SetSidecarFork(const path& inFile, Bytes inFork, const FinderBytes& inIfNew)
{
    return PutEntry(SidecarOf(inFile), kResourceForkEntry, inFork, inIfNew);
}

} // namespace lampblack::files
