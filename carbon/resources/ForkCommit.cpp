// Writing the changes of an open resource file.
#include "Flippers.h"
#include "ResourceFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace lampblack::resources {
namespace {

using files::ForkPlace;

// The file's time is set to the nanosecond, unless the file system sees to that: two changes within one tick
// of its clock differ then.
void MarkTime(const files::ForkHome& inHome)
{
    if (inHome.ShowsEachChange())
        return;
    timespec times[2] = { { 0, UTIME_OMIT }, {} };
    clock_gettime(CLOCK_REALTIME, &times[1]);
    if (futimens(inHome.Place().file, times) != 0)
        errno = 0;
}

OSErr Flush(int inFile)
{
    return fdatasync(inFile) == 0 ? (OSErr)noErr : files::ErrorOfHost(errno);
}

std::optional<files::FileIdentity> IdentityIn(const files::LocatedForks& inForks, const std::string& inPath)
{
    for (const auto& file : inForks.lookedAt)
        if (file.path == inPath)
            return file.identity;
    return {};
}

// Another call may have replaced the home's file, with the same fork in it.
void FollowHome(ResourceFile& ioFile)
{
    if (ioFile.generation == ioFile.home->Generation())
        return;
    ioFile.generation = ioFile.home->Generation();
}

PlanInput InputFor(ResourceFile& inFile, const std::vector<NewData>& inData)
{
    const ForkPlace place = inFile.home->Place();
    return { inFile.image->Contents(), inFile.areas, &inFile.map.Edit(), &inData,
             place.file >= 0 ? place.offset : 82 };
}

bool MayPatch(ResourceFile& inFile)
{
    const ForkPlace place = inFile.home->Place();
    const ResourceFork::Shape& areas = inFile.areas;
    const bool isApart = areas.mapOffset >= (size_t)areas.dataOffset + areas.dataLength ||
                         areas.dataOffset >= (size_t)areas.mapOffset + areas.mapLength;
    return inFile.hasPlace && !inFile.mustRewrite && !inFile.isCompact && isApart && place.file >= 0 &&
           place.length == inFile.image->Contents().size();
}

// A copy that others read stays theirs.
void OwnImage(ResourceFile& ioFile)
{
    if (ioFile.image.use_count() == 1)
        return;
    const Bytes bytes = ioFile.image->Contents();
    ioFile.image = ForkImage::OfBytes(std::vector<uint8_t>(bytes.begin(), bytes.end()));
    ioFile.map.Rebase(ioFile.image->Contents(), ioFile.areas.dataOffset, ioFile.areas.dataLength);
}

void PatchImage(ResourceFile& ioFile, const ForkPlan& inPlan)
{
    for (const Patch& patch : inPlan.preparations)
        ioFile.image->Patch(patch.offset, patch.bytes);
    ioFile.image->Patch(inPlan.commit.offset, inPlan.commit.bytes);
    ioFile.areas = inPlan.areas;
    ioFile.map.Rebase(ioFile.image->Contents(), ioFile.areas.dataOffset, ioFile.areas.dataLength);
}

// Until the last bytes are written the file's state is the old one; when writing those or flushing them fails
// it may be either, and the next update writes a new file.
OSErr WritePlan(ResourceFile& ioFile, const ForkPlan& inPlan)
{
    const ForkPlace place = ioFile.home->Place();
    OSErr error = noErr;
    for (size_t i = 0; i < inPlan.preparations.size() && error == noErr; ++i)
        error = files::WriteAll(place.file, inPlan.preparations[i].bytes,
                                place.offset + inPlan.preparations[i].offset);
    error = error == noErr ? Flush(place.file) : error;
    if (error != noErr)
        return error;
    ioFile.mustRewrite = true;
    error = files::WriteAll(place.file, inPlan.commit.bytes, place.offset + inPlan.commit.offset);
    MarkTime(*ioFile.home);
    error = error == noErr ? Flush(place.file) : error;
    ioFile.home->WroteInPlace();
    ioFile.mustRewrite = error != noErr;
    return error;
}

OSErr PatchFile(ResourceFile& ioFile, const ForkPlan& inPlan)
{
    OwnImage(ioFile);
    const OSErr error = WritePlan(ioFile, inPlan);
    if (error != noErr) {
        ioFile.space.reset();
        return error;
    }
    const bool isShared = ioFile.space->IsShared();
    PatchImage(ioFile, inPlan);
    TakeOver(inPlan, &ioFile.map.Edit(), isShared ? nullptr : &*ioFile.space);
    if (isShared)
        ioFile.space.reset();
    return noErr;
}

bool PlanPatch(ResourceFile& ioFile, const std::vector<NewData>& inData, ForkPlan* outPlan)
{
    if (!MayPatch(ioFile))
        return false;
    const PlanInput input = InputFor(ioFile, inData);
    if (!ioFile.space)
        ioFile.space.emplace(*input.map, ioFile.areas.dataLength);
    if (PlanInPlace(input, &*ioFile.space, outPlan) && ioFile.home->HasNoReaders())
        return true;
    ioFile.space.reset(); // what the plan took was not used
    return false;
}

OSErr RewriteFile(ResourceFile& ioFile, const std::vector<NewData>& inData)
{
    ForkPlan plan;
    if (PlanWhole(InputFor(ioFile, inData), ioFile.isCompact, &plan))
        return addResFailed;
    const unsigned before = ioFile.home->Generation();
    const Bytes whole = plan.whole;
    std::vector<uint8_t> bytes;
    bytes.reserve(plan.whole.size() + plan.room); // before anything is written
    const OSErr error = ioFile.home->Replace({ &whole, nullptr, nullptr }, plan.room);
    if (ioFile.home->Generation() == before)
        return error;
    ioFile.generation = ioFile.home->Generation();
    ioFile.hasPlace = true;
    bytes.assign(plan.whole.begin(), plan.whole.end());
    bytes.resize(plan.whole.size() + plan.room);
    ioFile.image = ForkImage::OfBytes(std::move(bytes));
    ioFile.areas = plan.areas;
    ioFile.map.Rebase(ioFile.image->Contents(), plan.areas.dataOffset, plan.areas.dataLength);
    ioFile.space.reset();
    TakeOver(plan, &ioFile.map.Edit(), nullptr);
    ioFile.mustRewrite = error != noErr;
    if (error != noErr)
        ioFile.map.MustBeWritten();
    return error;
}

// The map, and these data, are in the file afterwards, or all is as before.
OSErr Commit(ResourceFile& ioFile, const std::vector<NewData>& inData)
{
    if (!ioFile.home->IsStillHome())
        return opWrErr;
    FollowHome(ioFile);
    ForkPlan plan;
    const OSErr error =
        PlanPatch(ioFile, inData, &plan) ? PatchFile(ioFile, plan) : RewriteFile(ioFile, inData);
    if (error != noErr)
        return error;
    ioFile.isCompact = false;
    ioFile.hasWritten = true;
    return noErr;
}

// What the handle of a changed resource holds, as the file is to have it. A purged handle has nothing: the
// data in the file stay.
OSErr TakeData(const ResourceFile& inFile, uint32_t inEntry, std::vector<NewData>* ioData)
{
    const Handle handle = inEntry < inFile.handles.size() ? inFile.handles[inEntry] : nullptr;
    if (!handle || !*handle)
        return noErr;
    const uint8_t* bytes = (const uint8_t*)*handle;
    NewData data = { inEntry, std::vector<uint8_t>(bytes, bytes + GetHandleSize(handle)) };
    const ResourceInfo info = inFile.map.Info(inEntry);
    const OSStatus flipped = FlipStored(info.type, info.id, data.bytes.data(), data.bytes.size());
    if (flipped != noErr)
        return (OSErr)flipped;
    ioData->push_back(std::move(data));
    return noErr;
}

template <typename Work>
OSErr WithoutExceptions(Work&& inWork)
{
    try {
        return inWork();
    } catch (const std::bad_alloc&) {
        return memFullErr;
    }
}

OSErr Update(ResourceFile& ioFile)
{
    OSErr error = EnsureWritable(&ioFile);
    const ResourceMap::Edits& edits = ioFile.map.Edit();
    std::vector<uint32_t> changed;
    std::vector<NewData> data;
    for (uint32_t number = 0; number < edits.entries.size() && error == noErr; ++number) {
        if (!edits.entries[number].isChanged)
            continue;
        changed.push_back(number);
        error = TakeData(ioFile, number, &data);
    }
    if (error == noErr && (!data.empty() || edits.mustWrite || edits.isStale))
        error = Commit(ioFile, data);
    for (const uint32_t number : changed)
        if (error == noErr)
            ioFile.map.SetChanged(number, false);
    return error;
}

} // namespace

OSErr UpdateFile(ResourceFile* ioFile)
{
    const bool isDue = !ioFile->isFrozen && ioFile->map.HasChanges();
    const OSErr error = isDue ? WithoutExceptions([&] { return Update(*ioFile); }) : (OSErr)noErr;
    NoteModification(ioFile);
    return error;
}

// What was known of the file before holds if nothing but its times is other than it was.
void NoteModification(ResourceFile* ioFile)
{
    if (!ioFile->hasWritten || !ioFile->home || ioFile->home->HomePath() == ioFile->home->Path())
        return;
    const std::string& path = ioFile->home->Path().native();
    const std::optional<files::FileIdentity> known =
        ioFile->ownIdentity ? ioFile->ownIdentity : IdentityIn(*ioFile->located, path);
    const bool wasAsKnown = known && known->AgainAt(path) == *known;
    timespec times[2] = { { 0, UTIME_OMIT }, {} };
    clock_gettime(CLOCK_REALTIME, &times[1]);
    ioFile->hasWritten = false;
    if (utimensat(AT_FDCWD, path.c_str(), times, 0) != 0)
        return;
    const files::FileIdentity after = known ? known->AgainAt(path) : files::FileIdentity();
    const bool isSame = wasAsKnown && after.inode == known->inode && after.device == known->device &&
                        after.size == known->size;
    ioFile->ownIdentity = isSame ? after : files::FileIdentity(); // one that nothing is equal to
}

OSErr UpdateOne(ResourceFile* ioFile, uint32_t inEntry)
{
    if (ioFile->isFrozen || !ioFile->map.IsChanged(inEntry))
        return noErr;
    return WithoutExceptions([&] {
        std::vector<NewData> data;
        OSErr error = EnsureWritable(ioFile);
        error = error == noErr ? TakeData(*ioFile, inEntry, &data) : error;
        if (error == noErr && (!data.empty() || ioFile->map.IsMapStale()))
            error = Commit(*ioFile, data);
        if (error == noErr)
            ioFile->map.SetChanged(inEntry, false);
        return error;
    });
}

OSErr WriteBytes(ResourceFile* ioFile, uint32_t inEntry, std::vector<uint8_t>&& inBytes)
{
    return WithoutExceptions([&] {
        std::vector<NewData> data(1);
        data[0] = { inEntry, std::move(inBytes) };
        const OSErr error = EnsureWritable(ioFile);
        ioFile->map.Edit();
        return error == noErr ? Commit(*ioFile, data) : error;
    });
}

} // namespace lampblack::resources
