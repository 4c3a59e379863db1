// Open files and their reference numbers. The Resource Manager takes numbers here for the forks it reads, so
// that PBGetFCBInfo can say which file a number belongs to. Begin at AddOpenFile.
#ifndef LAMPBLACK_FILES_OPENFILES_H
#define LAMPBLACK_FILES_OPENFILES_H

#include "Catalog.h"

namespace lampblack::files {

struct OpenFile {
    Item item;
    bool isResourceFork = false;
    bool isWritable = false;
    SInt64 logicalSize = 0, mark = 0;
    SInt16 refNum = 0;
};

// The number given to an open file; 0 when there are too many. A number is not soon used again.
SInt16 AddOpenFile(OpenFile);
void RemoveOpenFile(SInt16 inRefNum);

// Null when the number is not in use. The pointer holds until a file is opened or closed.
OpenFile* FindOpenFile(SInt16 inRefNum);

// The nth open file of a volume (0: of all), 1 being the first; null: fewer are open.
const OpenFile* NthOpenFile(SInt16 inVolume, SInt16 inIndex);

// Whether any fork of an item is open.
bool IsOpen(const Item&, bool inResourceFork);

} // namespace lampblack::files

#endif
