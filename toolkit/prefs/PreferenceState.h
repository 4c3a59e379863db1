// What the preference file and the values in it share; private to this folder.
#ifndef LAMPBLACK_PREFS_PREFERENCESTATE_H
#define LAMPBLACK_PREFS_PREFERENCESTATE_H

#include <Carbon/Carbon.h>

#include "prefs/PreferenceFile.h"

namespace lampblack::prefs {

// The open preference file; kResFileNotOpened: none is.
[[gnu::visibility("hidden")]] extern SInt16 gOpenFile;

// StPreferenceFile
//
// Makes the preference file the current resource file for an operation: opens it if need be, and then closes
// it at the end. The current resource file is restored, and the operation's result left in ResError.
class StPreferenceFile {
public:
    [[nodiscard]] explicit StPreferenceFile(SInt8 inPermission)
        : fWasOpen(gOpenFile != kResFileNotOpened), fSaved(CurResFile())
    {
        if (fWasOpen)
            UseResFile(gOpenFile);
        else
            fResult = static_cast<OSErr>(OpenPreferenceFile(inPermission));
        fIsOpen = fResult == noErr;
    }
    ~StPreferenceFile()
    {
        if (fIsOpen && !fWasOpen)
            ClosePreferenceFile();
        UseResFile(fSaved);
        LMSetResErr(fResult);
    }

    StPreferenceFile(const StPreferenceFile&) = delete;
    StPreferenceFile& operator=(const StPreferenceFile&) = delete;

    bool IsOpen() const { return fIsOpen; }
    OSErr Result() const { return fResult; } // why it could not be opened, at first
    OSErr SetResult(OSErr inResult) { return fResult = inResult; }

private:
    bool fWasOpen;
    SInt16 fSaved;
    bool fIsOpen = true;
    OSErr fResult = noErr;
};

// StUnwritten
//
// What is removed from the current resource file meanwhile is not written at once but with what is written
// next: the file on the disk goes from the old entries to the new ones in one step, and whatever happens in
// between leaves the old.
class StUnwritten {
public:
    [[nodiscard]] StUnwritten() : fFile(CurResFile()), fAttributes(GetResFileAttrs(fFile))
    {
        SetResFileAttrs(fFile, static_cast<SInt16>(fAttributes | mapReadOnly));
    }
    ~StUnwritten() { SetResFileAttrs(fFile, fAttributes); }

    StUnwritten(const StUnwritten&) = delete;
    StUnwritten& operator=(const StUnwritten&) = delete;

private:
    SInt16 fFile, fAttributes;
};

// Opens the file anew, as it stands on the disk: what was removed in vain is there again.
void ForgetUnwritten();

} // namespace lampblack::prefs

#endif
