// Finding, locking and opening the home of a fork, and putting a new one in its place.
#include "ForkHome.h"

#include "AppleDouble.h"
#include "ChangeTimes.h"
#include "HostLocks.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <map>
#include <unistd.h>

namespace lampblack::files {

using std::filesystem::path;

namespace {

constexpr uint32_t kDoubleMagic = 0x00051607;
constexpr int64_t kRecent = 20000000;      // nanoseconds; file times may be that coarse
constexpr size_t kLargestCompared = 65536; // of forks that are read again rather than their times

// The homes that this process holds, by device and inode.
std::map<std::pair<uint64_t, uint64_t>, ForkHome*>& OpenHomes()
{
    static auto& homes = *new std::map<std::pair<uint64_t, uint64_t>, ForkHome*>;
    return homes;
}

std::pair<uint64_t, uint64_t> KeyOf(const FileIdentity& inIdentity)
{
    return { inIdentity.device, inIdentity.inode };
}

// A link is followed to what it names: its own place is no home, unless the sidecar lies there alone.
path RealPathOf(const path& inFile)
{
    std::error_code ignored;
    path file = inFile.is_absolute() ? inFile : std::filesystem::absolute(inFile, ignored);
    UInt16 mode = 0;
    if (!FileIdentity::PlaceAt(file.native(), &mode, true).exists || !S_ISLNK(mode))
        return file;
    const path real = std::filesystem::canonical(file, ignored);
    const bool isAlone =
        FileIdentity::At(SidecarOf(file)).exists && !FileIdentity::At(SidecarOf(real)).exists;
    return real.empty() || isAlone ? file : real;
}

OSErr CheckWritable(const path& inFile)
{
    UInt16 mode = 0;
    if (!FileIdentity::PlaceAt(inFile.native(), &mode).exists)
        return ErrorOfHost(errno);
    if (S_ISDIR(mode))
        return fnfErr;
    if ((mode & 0222) == 0)
        return permErr;
    return access(inFile.c_str(), W_OK) == 0 ? (OSErr)noErr : ErrorOfHost(errno);
}

bool IsWrapping(Form inForm)
{
    return inForm == Form::MacBinary || inForm == Form::AppleSingle || inForm == Form::BinHex;
}

FinderBytes FinderOf(const LocatedForks& inForks, const ForkChange& inChange)
{
    return ToFinderBytes(inChange.finderInfo ? *inChange.finderInfo : inForks.finderInfo,
                         inChange.extendedFinderInfo ? *inChange.extendedFinderInfo
                                                     : inForks.extendedFinderInfo);
}

OSErr WriteZeros(int inFile, SInt64 inOffset, size_t inCount)
{
    const std::vector<uint8_t> zeros(std::min<size_t>(inCount, 65536));
    OSErr error = noErr;
    for (size_t done = 0; done < inCount && error == noErr; done += zeros.size())
        error = WriteAll(inFile, Bytes(zeros).first(std::min(zeros.size(), inCount - done)),
                         inOffset + (SInt64)done);
    return error;
}

// The mode of a new sidecar is that of its file.
const struct stat* ModeOf(const path& inFile, struct stat* outStatus)
{
    return stat(inFile.c_str(), outStatus) == 0 ? outStatus : nullptr;
}

} // namespace

path SidecarOf(const path& inFile)
{
    return inFile.parent_path() / ("._" + inFile.filename().native());
}

OSErr ForkHome::Open(const path& inFile, std::unique_ptr<ForkHome>* outHome, Fork inFork,
                     const KnownForks& inKnown, bool* outKnownHolds)
{
    std::unique_ptr<ForkHome> home(new ForkHome);
    KnownForks known = inKnown;
    home->fPath = RealPathOf(inFile);
    home->fFork = inFork;
    bool isKnown = false;
    Patience patience;
    for (;;) {
        bool again = false;
        const OSErr error = home->TryOpen(known, &isKnown, &again);
        if (!again && error != noErr)
            return error;
        if (!again)
            break;
        if (!patience.Wait())
            return opWrErr;
        known = home->fFile ? known : KnownForks();
    }
    if (outKnownHolds)
        *outKnownHolds = isKnown;
    *outHome = std::move(home);
    return noErr;
}

OSErr ForkHome::TryOpen(const KnownForks& inKnown, bool* outKnownHolds, bool* outAgain)
{
    *outKnownHolds = false;
    fFile.Close();
    const OSErr writable = CheckWritable(fPath);
    if (writable != noErr)
        return writable;
    const bool isFromKnown = inKnown.located;
    OSErr error = Locate(inKnown.located);
    error = error == noErr ? FindHome() : error;
    error = error == noErr ? OpenHomeFile(isFromKnown, outAgain) : error;
    if (error != noErr || *outAgain)
        return error;
    FindPlace();
    *outKnownHolds = isFromKnown && Holds(inKnown);
    if (!*outKnownHolds && !fIsNew)
        error = LookAgain(isFromKnown, outAgain);
    if (error != noErr || *outAgain)
        return error;
    Register(true);
    fIsStale = *outKnownHolds;
    return noErr;
}

// Somebody may have written between the look and the lock; now nobody can.
OSErr ForkHome::LookAgain(bool inFromKnown, bool* outAgain)
{
    OSErr error = CheckSidecar(outAgain);
    if (error != noErr || *outAgain || (!inFromKnown && IsCurrent()))
        return error;
    const path home = fHomePath;
    error = Locate(nullptr);
    error = error == noErr ? FindHome() : error;
    *outAgain = error == noErr && home != fHomePath;
    FindPlace();
    return error;
}

// What was known before serves to find the home; whether it still holds is seen once that is locked.
OSErr ForkHome::Locate(const LocatedForks* inKnown)
{
    if (inKnown) {
        fForks = *inKnown;
        return noErr;
    }
    fForks = LocateForks(fPath);
    return ErrorOfSearch(fForks);
}

namespace {

// Of a file without a resource fork: damage is something else than nothing.
OSErr WhyNoFork(const path& inSidecar)
{
    MappedFile mapped;
    if (!mapped.Open(inSidecar) || mapped.Contents().empty())
        return eofErr;
    const Container sidecar = ReadContainer(mapped.Contents());
    return sidecar.form != Form::None && sidecar.problems.empty() ? eofErr : mapReadErr;
}

} // namespace

OSErr ForkHome::FindHome()
{
    if (fFork == Fork::Resource && !fForks.hasResourceFork)
        return WhyNoFork(SidecarOf(fPath));
    const bool isOwn = fForks.hasResourceFork && fForks.resourcePath == fPath;
    if (isOwn && !fForks.isResourceFormSound)
        return mapReadErr;
    fHomePath = fPath;
    if (fFork == Fork::Data) {
        fKind = Kind::RawFork;
        return fForks.ownForm == Form::RawFork || fForks.dataFork.empty() ? (OSErr)noErr : (OSErr)wrPermErr;
    }
    if (IsWrapping(fForks.ownForm) && fForks.isOwnFormSound)
        fKind = Kind::Wrapped;
    else if (isOwn && fForks.form == Form::RawFork)
        fKind = Kind::RawFork;
    else if (isOwn && fForks.form == Form::AppleDouble)
        fKind = Kind::AppleDouble;
    else {
        fKind = Kind::Sidecar;
        fHomePath = SidecarOf(fPath);
    }
    const bool isHome = fForks.hasResourceFork && fForks.resourcePath == fHomePath;
    return isHome && !fForks.isResourceFormSound ? (OSErr)mapReadErr : (OSErr)noErr;
}

namespace {

// Reading it is no access that anybody asks for, and to flush a change would write that time, too. Only the
// owner may leave it out.
Descriptor OpenToChange(const path& inPath)
{
    constexpr int kFlags = O_RDWR | O_CLOEXEC | O_NONBLOCK;
    const int file = open(inPath.c_str(), kFlags | O_NOATIME);
    return Descriptor(file < 0 && errno == EPERM ? open(inPath.c_str(), kFlags) : file);
}

} // namespace

OSErr ForkHome::OpenHomeFile(bool inFromKnown, bool* outAgain)
{
    fIsNew = false;
    fFile = OpenToChange(fHomePath);
    if (!fFile && errno == ENOENT && fKind == Kind::Sidecar && !inFromKnown)
        return MakeSidecar(outAgain);
    if (!fFile) {
        *outAgain = errno == ENOENT; // what was found is gone since
        return ErrorOfHost(errno);
    }
    const FileIdentity place = FileIdentity::PlaceOf(fFile.Get());
    if (OpenHomes().count(KeyOf(place)))
        return opWrErr;
    *outAgain = !LockInTurn();
    if (*outAgain)
        return noErr;
    fIdentity = FileIdentity::PlaceAt(fHomePath);
    *outAgain = KeyOf(fIdentity) != KeyOf(place); // it was replaced
    return noErr;
}

OSErr ForkHome::CheckSidecar(bool* outAgain)
{
    if (fKind != Kind::Sidecar)
        return noErr;
    MappedFile mapped;
    if (!mapped.Open(fHomePath))
        return ErrorOfHost(errno);
    const Container old = ReadContainer(mapped.Contents());
    if (mapped.Contents().empty() || (old.form != Form::None && old.problems.empty()))
        return noErr;
    if (fFork == Fork::Resource)
        return mapReadErr;
    // What has the sidecar's name is none, or one in which no fork was found: it is kept, under another name.
    *outAgain = true;
    return KeepAside(fHomePath);
}

// Who waits first is first: a writer that comes back again and again would else keep the others out.
bool ForkHome::LockInTurn()
{
    const bool isFirst =
        fTurn && KeyOf(FileIdentity::PlaceOf(fTurn.Get())) == KeyOf(FileIdentity::PlaceOf(fFile.Get()));
    if (!isFirst) {
        LeaveTurn(); // it was for a file that has been replaced
        if (!IsFree(fFile.Get(), kTurnLock))
            return false;
    }
    if (TryLock(fFile.Get(), kWriterLock)) {
        LeaveTurn();
        return true;
    }
    if (!isFirst && TryLock(fFile.Get(), kTurnLock)) // the lock lasts as long as a descriptor of this opening
        fTurn = Descriptor(fcntl(fFile.Get(), F_DUPFD_CLOEXEC, 0));
    return false;
}

void ForkHome::LeaveTurn()
{
    if (fTurn)
        Unlock(fTurn.Get(), kTurnLock);
    fTurn.Close();
}

// An empty fork beside Finder information that may come from elsewhere: to readers, nothing has changed.
OSErr ForkHome::MakeSidecar(bool* outAgain)
{
    struct stat status;
    Replacement sidecar;
    const DoublePlan plan = PlanDouble({}, FinderOf(fForks, {}), 0);
    OSErr error = sidecar.Begin(fHomePath, ModeOf(fPath, &status));
    if (error == noErr && !TryLock(sidecar.File(), kWriterLock))
        error = ioErr;
    if (error == noErr)
        error = WriteAll(sidecar.File(), plan.front, 0);
    if (error == noErr)
        error = sidecar.PutWhereNothingIs();
    *outAgain = error == dupFNErr;
    if (error != noErr)
        return *outAgain ? (OSErr)noErr : error;
    fFile = sidecar.TakeFile();
    fIdentity = FileIdentity::PlaceOf(fFile.Get());
    fIsNew = true;
    return noErr;
}

// Whether each file that was looked at is as it was then. One that changed a moment before may have changed
// again within one tick of the file system's clock.
bool ForkHome::IsCurrent() const
{
    timespec now;
    clock_gettime(CLOCK_REALTIME, &now);
    const int64_t time = (int64_t)now.tv_sec * 1000000000 + now.tv_nsec;
    return std::all_of(fForks.lookedAt.begin(), fForks.lookedAt.end(), [&](const auto& file) {
        const FileIdentity current = file.path == fHomePath.native() ? FileIdentity::Of(fFile.Get())
                                                                     : file.identity.AgainAt(file.path);
        return current == file.identity && (!current.exists || time - current.changed > kRecent ||
                                            IsKnownToShowEachChange(current.device));
    });
}

bool ForkHome::Holds(const KnownForks& inKnown) const
{
    const std::vector<LocatedForks::LookedAt>& before = inKnown.located->lookedAt;
    const bool isCompared = !inKnown.fork.empty() && inKnown.fork.size() <= kLargestCompared;
    return std::all_of(before.begin(), before.end(), [&](const auto& file) {
        if (file.path != fHomePath.native())
            return file.identity.AgainAt(file.path) == file.identity;
        return isCompared ? HasFork(inKnown.fork) : FileIdentity::Of(fFile.Get()) == file.identity;
    });
}

bool ForkHome::HasFork(Bytes inFork) const
{
    if (fPlace.file < 0 || fPlace.length != inFork.size())
        return false;
    const auto bytes = std::make_unique_for_overwrite<uint8_t[]>(inFork.size());
    return ReadAll(fPlace.file, bytes.get(), inFork.size(), fPlace.offset) &&
           std::equal(inFork.begin(), inFork.end(), bytes.get());
}

void ForkHome::Register(bool inIsOpen)
{
    if (inIsOpen)
        OpenHomes()[KeyOf(fIdentity)] = this;
    else if (const auto found = OpenHomes().find(KeyOf(fIdentity));
             found != OpenHomes().end() && found->second == this)
        OpenHomes().erase(found);
}

void ForkHome::FindPlace()
{
    fPlace = {};
    if (fKind == Kind::Wrapped)
        return;
    if (fKind == Kind::RawFork) {
        fPlace = { fFile.Get(), 0, (size_t)fIdentity.size };
        return;
    }
    uint8_t front[512];
    const size_t size = std::min(sizeof front, (size_t)fIdentity.size);
    if (!ReadAll(fFile.Get(), front, size, 0) || foundation::ReadBE32(Bytes(front, size), 0) != kDoubleMagic)
        return;
    const size_t count = foundation::ReadBE16(Bytes(front, size), 24);
    for (size_t i = 0; i < count && 26 + (i + 1) * 12 <= size; ++i) {
        foundation::BigEndianReader entry(Bytes(front, size), 26 + i * 12);
        const uint32_t kind = entry.U32(), offset = entry.U32(), length = entry.U32();
        if (kind == 2 && (SInt64)offset + length <= fIdentity.size)
            fPlace = { fFile.Get(), offset, length };
    }
}

ForkHome::~ForkHome()
{
    LeaveTurn();
    if (!fFile)
        return;
    Register(false);
    if (fIsNew)
        unlink(fHomePath.c_str());
    Unlock(fFile.Get(), kWriterLock); // a child process may have the file as well
}

bool ForkHome::IsOpenHere(const path& inFile)
{
    const path file = RealPathOf(inFile);
    return std::any_of(OpenHomes().begin(), OpenHomes().end(),
                       [&](const auto& entry) { return entry.second->fPath == file; });
}

const LocatedForks& ForkHome::Forks()
{
    if (fIsStale)
        fForks = LocateForks(fPath);
    fIsStale = false;
    return fForks;
}

bool ForkHome::IsStillHome() const
{
    return KeyOf(FileIdentity::PlaceAt(fHomePath)) == KeyOf(fIdentity);
}

bool ForkHome::ShowsEachChange() const
{
    return files::ShowsEachChange(fIdentity.device, fHomePath.parent_path());
}

FileIdentity ForkHome::LastIdentity() const
{
    const bool isCompared = fPlace.file >= 0 && fPlace.length != 0 && fPlace.length <= kLargestCompared;
    return isCompared ? FileIdentity::PlaceOf(fFile.Get()) : FileIdentity::Of(fFile.Get());
}

void ForkHome::WroteInPlace()
{
    fIsNew = false;
    fIsStale = true;
}

bool ForkHome::HasNoReaders()
{
    fForks = {}; // it may read the home file in place
    fIsStale = true;
    return IsFree(fFile.Get(), kReaderLock);
}

// From now on the home is another host file, which is locked already.
void ForkHome::Adopt(Descriptor&& inFile)
{
    Register(false);
    const Descriptor old = std::move(fFile);
    fFile = std::move(inFile);
    fIdentity = FileIdentity::PlaceOf(fFile.Get());
    Register(true);
    Unlock(old.Get(), kWriterLock);
    FindPlace();
    fIsNew = false;
    fIsStale = true;
    ++fGeneration;
}

OSErr ForkHome::Replace(const ForkChange& inChange, size_t inRoom)
{
    if (inChange.resourceFork && inChange.resourceFork->size() + inRoom > 0x7FFFFFFF)
        return dskFulErr;
    if (!IsStillHome())
        return opWrErr;
    if (fKind != Kind::RawFork)
        return ReplaceDouble(inChange, inRoom);
    OSErr error = noErr;
    if (inChange.finderInfo || inChange.extendedFinderInfo)
        error = SetFinderInfo(fPath, inChange.finderInfo, inChange.extendedFinderInfo);
    return error == noErr && inChange.resourceFork ? ReplaceRaw(inChange, inRoom) : error;
}

OSErr ForkHome::ReplaceRaw(const ForkChange& inChange, size_t inRoom)
{
    struct stat status;
    Replacement file;
    const Bytes fork = *inChange.resourceFork;
    OSErr error = file.Begin(fHomePath, fstat(fFile.Get(), &status) == 0 ? &status : nullptr);
    if (error == noErr && !TryLock(file.File(), kWriterLock))
        error = ioErr;
    error = error == noErr ? WriteAll(file.File(), fork, 0) : error;
    error = error == noErr ? WriteZeros(file.File(), (SInt64)fork.size(), inRoom) : error;
    bool isInPlace = false;
    error = error == noErr ? file.PutInPlace(&isInPlace) : error;
    if (isInPlace)
        Adopt(file.TakeFile());
    return error;
}

// The sidecar, or the AppleDouble that the file is; of a wrapped file the sidecar first.
OSErr ForkHome::ReplaceDouble(const ForkChange& inChange, size_t inRoom)
{
    const bool isWrapped = fKind == Kind::Wrapped;
    const path target = isWrapped ? SidecarOf(fPath) : fHomePath;
    // Who sets the Finder information alone does not take the writer's lock.
    const StMomentLock moment(isWrapped ? -1 : fFile.Get());
    const LocatedForks now = LocateForks(fPath);
    if (const OSErr unread = ErrorOfSearch(now); unread != noErr)
        return unread;
    MappedFile old;
    const bool hasOld = old.Open(target) && ReadContainer(old.Contents()).form == Form::AppleDouble;
    const Bytes fork = inChange.resourceFork ? *inChange.resourceFork : now.resourceFork;
    const size_t room = inChange.resourceFork ? inRoom : 0;
    const DoublePlan plan = PlanDouble(hasOld ? old.Contents() : Bytes(), FinderOf(now, inChange),
                                       (uint32_t)(fork.size() + room));
    struct stat status;
    Replacement file;
    const bool isThere = !isWrapped && fstat(fFile.Get(), &status) == 0;
    OSErr error = file.Begin(target, isThere ? &status : ModeOf(fPath, &status));
    if (error == noErr && !TryLock(file.File(), kWriterLock))
        error = ioErr;
    error = error == noErr ? WriteAll(file.File(), plan.front, 0) : error;
    error = error == noErr ? WriteAll(file.File(), fork, (SInt64)plan.forkOffset()) : error;
    error = error == noErr ? WriteZeros(file.File(), (SInt64)(plan.forkOffset() + fork.size()), room) : error;
    bool isInPlace = false;
    if (error == noErr && !hasOld && isWrapped && FileIdentity::At(target).exists)
        error = KeepAside(target);
    error = error == noErr ? file.PutInPlace(&isInPlace) : error;
    if (isInPlace && isWrapped && error == noErr)
        error = Unwrap();
    if (isInPlace && (!isWrapped || error == noErr)) {
        fKind = isWrapped ? Kind::Sidecar : fKind;
        fHomePath = target;
        Adopt(file.TakeFile());
    }
    return error;
}

// The plain data fork takes the place of the file that wrapped it.
OSErr ForkHome::Unwrap()
{
    struct stat status;
    const LocatedForks now = LocateForks(fPath);
    Replacement file;
    OSErr error = ErrorOfSearch(now) == noErr && now.isOwnFormSound ? (OSErr)noErr : (OSErr)ioErr;
    error = error == noErr ? file.Begin(fPath, ModeOf(fPath, &status)) : error;
    error = error == noErr ? WriteAll(file.File(), now.dataFork, 0) : error;
    bool isInPlace = false;
    error = error == noErr ? file.PutInPlace(&isInPlace) : error;
    return isInPlace ? (OSErr)noErr : error;
}

namespace {

// Overwrites the information where it lies in the sidecar. False when that is not possible, or the sidecar
// was replaced meanwhile.
bool PatchFinderInfo(const path& inDouble, const FInfo* inInfo, const FXInfo* inExtended, OSErr* outError)
{
    constexpr size_t kSector = 512;
    const Descriptor file(open(inDouble.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return false;
    const StMomentLock moment(file.Get());
    uint8_t front[kSector];
    const FileIdentity identity = FileIdentity::Of(file.Get());
    const size_t size = (size_t)std::min<SInt64>(identity.size, kSector);
    if (!(FileIdentity::At(inDouble) == identity) || !ReadAll(file.Get(), front, size, 0))
        return false;
    // Within one sector the 32 bytes are written all or not at all.
    const std::optional<size_t> place = FinderPlace(Bytes(front, size));
    if (!place)
        return false;
    const FInfo info = inInfo ? *inInfo : FinderInfoFromBytes(front + *place);
    const FXInfo extended = inExtended ? *inExtended : ExtendedInfoFromBytes(front + *place + 16);
    const FinderBytes bytes = ToFinderBytes(info, extended);
    *outError = WriteAll(file.Get(), bytes, (SInt64)*place);
    if (*outError == noErr && fdatasync(file.Get()) != 0)
        *outError = ErrorOfHost(errno);
    return true;
}

// The AppleDouble that holds a file's Finder information, or will; empty when it has to be made, or the file
// unwrapped.
path FinderHome(const LocatedForks& inForks, const path& inFile)
{
    const bool isWrapped = IsWrapping(inForks.ownForm) && inForks.isOwnFormSound;
    const path sidecar = SidecarOf(inFile);
    if (isWrapped)
        return {};
    if (inForks.hasFinderInfo && inForks.finderPath == inFile)
        return inFile;
    MappedFile file;
    const bool isDouble = file.Open(sidecar) && ReadContainer(file.Contents()).form == Form::AppleDouble &&
                          ReadContainer(file.Contents()).problems.empty();
    return isDouble ? sidecar : path();
}

// A file that is a bare fork keeps its fork; beside it a sidecar without one holds the information.
OSErr MakeFinderSidecar(const path& inFile, const LocatedForks& inForks, const ForkChange& inChange)
{
    struct stat status;
    const path sidecar = SidecarOf(inFile);
    if (FileIdentity::At(sidecar).exists) {
        const OSErr kept = KeepAside(sidecar);
        if (kept != noErr)
            return kept;
    }
    Replacement file;
    OSErr error = file.Begin(sidecar, ModeOf(inFile, &status));
    error = error == noErr ? WriteAll(file.File(), PlanDouble({}, FinderOf(inForks, inChange), 0).front, 0)
                           : error;
    return error == noErr ? file.PutWhereNothingIs() : error;
}

} // namespace

OSErr SetFinderInfo(const path& inFile, const FInfo* inInfo, const FXInfo* inExtended)
{
    if (!inInfo && !inExtended)
        return noErr;
    const path file = RealPathOf(inFile);
    OSErr error = CheckWritable(file);
    Patience patience;
    while (error == noErr) {
        const LocatedForks forks = LocateForks(file);
        if (const OSErr unread = ErrorOfSearch(forks); unread != noErr)
            return unread;
        const path home = FinderHome(forks, file);
        // A half that is not given may come from elsewhere than where the whole will be.
        ForkChange change = { nullptr, inInfo ? inInfo : &forks.finderInfo,
                              inExtended ? inExtended : &forks.extendedFinderInfo };
        if (!home.empty() && PatchFinderInfo(home, change.finderInfo, change.extendedFinderInfo, &error))
            return error;
        const bool isRaw = forks.hasResourceFork && forks.resourcePath == file && forks.form == Form::RawFork;
        if (isRaw && home.empty()) {
            error = MakeFinderSidecar(file, forks, change);
            if (error != dupFNErr)
                return error;
            error = noErr;
        } else {
            const auto open = std::find_if(OpenHomes().begin(), OpenHomes().end(),
                                           [&](const auto& entry) { return entry.second->Path() == file; });
            if (open != OpenHomes().end())
                return open->second->Replace(change);
            std::unique_ptr<ForkHome> opened;
            error = ForkHome::Open(file, &opened);
            return error == noErr ? opened->Replace(change) : error;
        }
        if (!patience.Wait())
            return fBsyErr;
    }
    return error;
}

namespace {

// Puts a new file's sidecar where nothing is, or in place of one that an earlier file left, and holds its
// lock.
OSErr MakeSidecarOfNew(const path& inFile, Bytes inFront, Bytes inFork, Descriptor* outLocked)
{
    const path sidecar = SidecarOf(inFile);
    Patience patience;
    for (;;) {
        Replacement file;
        OSErr error = file.Begin(sidecar, nullptr);
        if (error == noErr && !TryLock(file.File(), kWriterLock))
            error = ioErr;
        error = error == noErr ? WriteAll(file.File(), inFront, 0) : error;
        error = error == noErr ? WriteAll(file.File(), inFork, (SInt64)inFront.size()) : error;
        if (error != noErr)
            return error;
        const Descriptor old(open(sidecar.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
        const bool isLocked = old && TryLock(old.Get(), kWriterLock) &&
                              FileIdentity::At(sidecar) == FileIdentity::Of(old.Get());
        struct stat status;
        if (lstat(inFile.c_str(), &status) == 0)
            return dupFNErr;
        MappedFile mapped;
        if (isLocked && mapped.Open(sidecar) && ReadContainer(mapped.Contents()).form == Form::AppleDouble)
            error = file.PutInPlace();
        else if (isLocked)
            error = KeepAside(sidecar);
        else if (!old)
            error = file.PutWhereNothingIs();
        const bool isDone = error == noErr && (!old || (isLocked && !mapped.Contents().empty()));
        if (isDone && FileIdentity::At(sidecar) == FileIdentity::Of(file.File())) {
            *outLocked = file.TakeFile();
            return noErr;
        }
        if (error != noErr && error != dupFNErr)
            return error;
        if (!patience.Wait())
            return fBsyErr;
    }
}

} // namespace

OSErr CreateFile(const path& inFile, const FInfo& inInfo, const FXInfo& inExtended, Bytes inFork)
{
    struct stat status;
    if (lstat(inFile.c_str(), &status) == 0)
        return dupFNErr;
    Descriptor sidecar;
    const DoublePlan plan = PlanDouble({}, ToFinderBytes(inInfo, inExtended), (uint32_t)inFork.size());
    OSErr error = MakeSidecarOfNew(inFile, plan.front, inFork, &sidecar);
    if (error != noErr)
        return error;
    Replacement file;
    error = file.Begin(inFile, nullptr);
    error = error == noErr ? file.PutWhereNothingIs() : error;
    if (error != noErr && error != dupFNErr && lstat(inFile.c_str(), &status) != 0)
        unlink(SidecarOf(inFile).c_str());
    return error;
}

} // namespace lampblack::files
