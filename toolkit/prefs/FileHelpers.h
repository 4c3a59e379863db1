// Helpers over the File Manager.
#ifndef LAMPBLACK_PREFS_FILEHELPERS_H
#define LAMPBLACK_PREFS_FILEHELPERS_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// ResolveFileID
//
// The file behind an open file's reference number, as an FSSpec on the given volume.
// Errors: rfNumErr for a reference that is not open, else what FSMakeFSSpec answers.
OSErr ResolveFileID(SInt16 inVRefNum, SInt16 inRefNum, FSSpec* outSpec);

LAMPBLACK_END

#endif
