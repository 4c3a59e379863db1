// The application's preference file: which file it is, opening it, deleting it. Begin at
// DefinePreferenceFile; the values in it are in Preferences.h.
//
//     DefinePreferenceFile(kPreferencesName, 'GAME', 'pref', false);
//     const SInt32 level = GetSInt32Preference('PREF', 128, 1);   // makes the file when it is not there
//     if (PreferenceFileCreated())
//         ...
#ifndef LAMPBLACK_PREFS_PREFERENCEFILE_H
#define LAMPBLACK_PREFS_PREFERENCEFILE_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

// Which file, and what it is made as.
struct PreferenceFileInfo {
    Str255 name; // in the Preferences folder
    OSType creator;
    OSType fileType;
    Boolean invisible; // a file that is made here gets the invisible flag
};
typedef struct PreferenceFileInfo PreferenceFileInfo;

LAMPBLACK_BEGIN_C

// SetPreferenceFileDomain
//
// The folder domain that the Preferences folder is looked for in; kOnAppropriateDisk at first. A place
// already found stays until the next DefinePreferenceFile, SetPreferenceFile or DeletePreferenceFile.
void SetPreferenceFileDomain(SInt16 inDomain);

// DefinePreferenceFile
//
// Says which file is meant. Nothing is looked for or made before the first use. A null name is an empty one.
void DefinePreferenceFile(ConstStr255Param inName, OSType inCreator, OSType inFileType, Boolean inInvisible);

// The whole description, out and in; null does nothing.
void GetPreferenceFile(PreferenceFileInfo* outInfo);
void SetPreferenceFile(const PreferenceFileInfo* inInfo);

// GetPreferenceFileFSSpec
//
// Where the file is. A file that is not there is made, with an empty resource fork; PreferenceFileCreated
// tells. *outCreated is set to false at the start and is not the flag that is set when the file is made:
// kept, every caller of old passed that flag itself.
// Errors:     paramErr  null; else what FindFolder, FSMakeFSSpec, FSpCreate or FSpCreateResFile answers.
OSStatus GetPreferenceFileFSSpec(FSSpec* outSpec, Boolean* outCreated);

// OpenPreferenceFile
//
// Opens the file and makes it the current resource file, which it stays. While it is open, every operation
// of Preferences.h works in it and leaves it open; otherwise each opens and closes it around itself.
// Errors:     those of GetPreferenceFileFSSpec and FSpOpenResFile (opWrErr for a second time); the current
//             resource file is as before then, and a file that was open stays so.
OSStatus OpenPreferenceFile(SInt8 inPermission);

// Errors:     fnOpnErr  it is not open; else what CloseResFile answers.
OSStatus ClosePreferenceFile(void);

// DeletePreferenceFile
//
// Deletes the file and forgets where it was. A file that is open is not closed first: the deletion then
// fails, and the file counts as not open here all the same. Kept: applications close it themselves and rely
// on the rest.
// Errors:     those of GetPreferenceFileFSSpec and FSpDelete.
OSStatus DeletePreferenceFile(void);

// Whether the last lookup (any open, read or write that came to the file) made the file: the moment to write
// default settings.
Boolean PreferenceFileCreated(void);

// AddStandardPreferenceFileResources
//
// Copies the application's 'vers' 1 and 2, and its 'STR ' -16397 and -16396 that the desktop shows for a
// file that it cannot open, into the preference file, in place of those that are there.
// Errors:     those of OpenPreferenceFile; what cannot be copied is passed over.
OSStatus AddStandardPreferenceFileResources(Boolean inVersions, Boolean inFinderStrings);

LAMPBLACK_END_C

#endif
