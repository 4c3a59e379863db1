// References to files, as the floors above take them apart and make them.
#ifndef LAMPBLACK_FILES_FILEREFERENCES_H
#define LAMPBLACK_FILES_FILEREFERENCES_H

#include "Catalog.h"

namespace lampblack::files {

void MakeRef(const Item&, FSRef* outRef);

// Errors: paramErr  null; errFSBadFSRef  not a reference of this process; fnfErr  the item is gone.
OSErr ItemOfRef(const FSRef*, Item* outItem);

// The same, and errFSNotAFolder when it is a file; of a link to a folder, that folder.
OSErr FolderOfRef(const FSRef*, Item* outItem);

} // namespace lampblack::files

#endif
