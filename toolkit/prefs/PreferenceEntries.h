// How the bytes of an entry reach their destination; private to this folder.
#ifndef LAMPBLACK_PREFS_PREFERENCEENTRIES_H
#define LAMPBLACK_PREFS_PREFERENCEENTRIES_H

#include <Carbon/Carbon.h>

#include <cstring>

#include "prefs/PreferenceState.h"

namespace lampblack::prefs {

// An entry of the current file, the preference file, as a handle that is the caller's, or null; leaves the result
// with ioFile.
inline Handle TakeEntry(Handle inResource, StPreferenceFile* ioFile)
{
    if (inResource)
        DetachResource(inResource);
    ioFile->SetResult(inResource ? noErr : resNotFound);
    return inResource;
}

// What GetPreferenceResource answers.
inline Handle FetchEntry(OSType inType, SInt16 inID)
{
    StPreferenceFile file(fsRdPerm);
    return file.IsOpen() ? TakeEntry(Get1Resource(inType, inID), &file) : nullptr;
}

// An entry as a value that is no more than its bytes. Those that a short entry lacks are the default's.
template <typename Value>
Value FetchValue(OSType inType, SInt16 inID, const Value& inDefault)
{
    Value value = inDefault;
    const Handle entry = FetchEntry(inType, inID);
    if (!entry)
        return value;
    const Size stored = GetHandleSize(entry);
    if (stored >= static_cast<Size>(sizeof value)) [[likely]]
        std::memcpy(&value, *entry, sizeof value);
    else if (stored > 0)
        std::memcpy(&value, *entry, static_cast<size_t>(stored));
    DisposeHandle(entry);
    return value;
}

inline constexpr SInt32 kWholeEntry = -1;

struct Destination {
    void* fData;
    SInt32 fSize; // or kWholeEntry
    const void* fDefault;
    SInt32 fDefaultSize;
};

// CopyEntry
//
// Lays an entry's bytes over the destination, first the default's when the entry does not fill it, or when
// it is not the complete value that inIsComplete tells. Null is a missing entry. Disposes of the handle.
void CopyEntry(Handle inEntry, const Destination& inTo, bool inIsComplete = true);

} // namespace lampblack::prefs

#endif
