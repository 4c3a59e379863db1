// Entries of the preference file as raw bytes: storing, fetching, removing.
#include "prefs/Preferences.h"

#include <algorithm>
#include <cstring>

#include "prefs/ApplicationResources.h"
#include "prefs/PreferenceEntries.h"
#include "prefs/PreferenceState.h"
#include "util/Random.h"
#include "window/WindowUtilities.h"

using lampblack::prefs::FetchEntry;
using lampblack::prefs::StPreferenceFile;
using lampblack::prefs::TakeEntry;

namespace {

constexpr ResType kWindowPositionType = 'wpos';
constexpr SInt16 kLowestRandomID = 100, kHighestRandomID = 20000;

// In the current file, which is the preference file. The handle is no longer the caller's once *outIsTaken.
OSErr ReplaceEntry(Handle inData, OSType inType, SInt16 inID, ConstStr255Param inName, bool* outIsTaken)
{
    {
        const lampblack::prefs::StUnwritten unwritten;
        // Beside an old entry that could not be removed, the new one would never be found.
        if (const OSStatus removed = RemoveResourceByID(inType, inID); removed != noErr)
            return static_cast<OSErr>(removed);
    }
    AddResource(inData, inType, inID, inName);
    OSErr err = ResError();
    *outIsTaken = err == noErr;
    if (err == memFullErr)
        lampblack::prefs::ForgetUnwritten();
    if (err != noErr)
        return err;
    WriteResource(inData);
    err = ResError();
    ReleaseResource(inData);
    return err;
}

OSErr AddEntry(Handle inData, OSType inType, SInt16 inID, ConstStr255Param inName, bool* outIsTaken)
{
    StPreferenceFile file(fsRdWrPerm);
    *outIsTaken = false;
    return file.IsOpen() ? file.SetResult(ReplaceEntry(inData, inType, inID, inName, outIsTaken))
                         : file.Result();
}

// Kept: the probe is by index, so it ends at once unless the file holds that many entries of the type.
SInt16 NewEntryID(OSType inType)
{
    SInt16 id = RangedRandomSInt16(kLowestRandomID, kHighestRandomID);
    do
        id = static_cast<SInt16>(id + 1);
    while (Get1IndResource(inType, id));
    return id;
}

} // namespace

namespace lampblack::prefs {

void CopyEntry(Handle inEntry, const Destination& inTo, bool inIsComplete)
{
    const Size stored = inEntry ? GetHandleSize(inEntry) : 0;
    const Size wanted = inTo.fSize == kWholeEntry ? stored : inTo.fSize;
    if (inTo.fData && inTo.fDefault && inTo.fDefaultSize > 0 &&
        (stored < wanted || !inIsComplete || !inEntry))
        std::memcpy(inTo.fData, inTo.fDefault, static_cast<size_t>(inTo.fDefaultSize));
    if (inTo.fData && std::min(stored, wanted) > 0)
        std::memcpy(inTo.fData, *inEntry, static_cast<size_t>(std::min(stored, wanted)));
    if (inEntry)
        DisposeHandle(inEntry);
}

} // namespace lampblack::prefs

OSStatus AddPreferenceResource(Handle inData, OSType inType, SInt16 inID, ConstStr255Param inName)
{
    if (!inData) {
        LMSetResErr(paramErr);
        return paramErr;
    }
    bool isTaken = false;
    return AddEntry(inData, inType, inID, inName, &isTaken);
}

OSStatus AddPreferenceData(const void* inData, SInt32 inSize, OSType inType, SInt16 inID,
                           ConstStr255Param inName)
{
    if (!inData && inSize > 0) {
        LMSetResErr(paramErr);
        return paramErr;
    }
    // Kept: without memory the answer is the size.
    OSStatus result = static_cast<SInt16>(inSize);
    if (const Handle data = NewHandle(inSize)) {
        if (inSize > 0)
            std::memcpy(*data, inData, static_cast<size_t>(inSize));
        bool isTaken = false;
        result = AddEntry(data, inType, inID, inName, &isTaken);
        if (!isTaken)
            DisposeHandle(data);
    }
    LMSetResErr(static_cast<SInt16>(result));
    return result;
}

OSStatus AddNamedPreferenceData(const void* inData, SInt32 inSize, OSType inType, ConstStr255Param inName)
{
    StPreferenceFile file(fsRdWrPerm);
    if (!file.IsOpen())
        return file.Result();
    SInt16 id = 0;
    if (const Handle earlier = GetNamedPreferenceResource(inType, &id, inName))
        DisposeHandle(earlier);
    else
        id = NewEntryID(inType);
    return file.SetResult(static_cast<OSErr>(AddPreferenceData(inData, inSize, inType, id, inName)));
}

Handle GetPreferenceResource(OSType inType, SInt16 inID)
{
    return FetchEntry(inType, inID);
}

Handle GetNamedPreferenceResource(OSType inType, SInt16* outID, ConstStr255Param inName)
{
    StPreferenceFile file(fsRdPerm);
    if (!file.IsOpen())
        return nullptr;
    const Handle resource = Get1NamedResource(inType, inName);
    if (resource && outID) {
        ResType type;
        Str255 name;
        GetResInfo(resource, outID, &type, name);
    }
    return TakeEntry(resource, &file);
}

void GetPreferenceData(OSType inType, SInt16 inID, void* outData, SInt32 inSize, const void* inDefault,
                       SInt32 inDefaultSize)
{
    lampblack::prefs::CopyEntry(FetchEntry(inType, inID), { outData, inSize, inDefault, inDefaultSize });
}

void GetNamedPreferenceData(OSType inType, ConstStr255Param inName, void* outData, SInt32 inSize,
                            const void* inDefault, SInt32 inDefaultSize)
{
    lampblack::prefs::CopyEntry(GetNamedPreferenceResource(inType, nullptr, inName),
                                { outData, inSize, inDefault, inDefaultSize });
}

OSStatus RemovePreferenceResource(OSType inType, SInt16 inID)
{
    const StPreferenceFile file(fsRdWrPerm);
    if (file.IsOpen())
        RemoveResourceByID(inType, inID); // its failure is nobody's: kept
    return file.Result();
}

OSStatus StoreWindowPosition(WindowRef inWindow, SInt16 inID)
{
    const Handle position = reinterpret_cast<Handle>(GetWindowPosition(inWindow));
    if (!position)
        return MemError();
    bool isTaken = false;
    const OSStatus result = AddEntry(position, kWindowPositionType, inID, nullptr, &isTaken);
    if (!isTaken)
        DisposeHandle(position);
    return result;
}

OSStatus RestoreWindowPosition(WindowRef inWindow, SInt16 inID)
{
    const Handle position = FetchEntry(kWindowPositionType, inID);
    const bool isWhole =
        position && GetHandleSize(position) >= static_cast<Size>(sizeof(WindowPositionRecord));
    const OSStatus result =
        SetWindowPosition(inWindow, isWhole ? reinterpret_cast<WindowPositionRecord**>(position) : nullptr);
    if (position)
        DisposeHandle(position);
    return result;
}
