// How the bytes of an entry reach their destination; private to this folder.
#ifndef LAMPBLACK_PREFS_PREFERENCEENTRIES_H
#define LAMPBLACK_PREFS_PREFERENCEENTRIES_H

#include <Carbon/Carbon.h>

namespace lampblack::prefs {

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
