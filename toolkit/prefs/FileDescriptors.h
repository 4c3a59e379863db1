// Files that arrive in descriptors of Apple events and in drags.
#ifndef LAMPBLACK_PREFS_FILEDESCRIPTORS_H
#define LAMPBLACK_PREFS_FILEDESCRIPTORS_H

#include <Carbon/Carbon.h>
#include <Carbon/Drag.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// GetFSSpecFromAEDesc, GetFSSRefFromAEDesc
//
// The file that a descriptor names, coerced if need be. The FSRef form tries the FSSpec of the file last.
// Errors: paramErr for null; those of AECoerceDesc and FSpMakeFSRef.
OSStatus GetFSSpecFromAEDesc(const AEDesc* inDescriptor, FSSpec* outSpec);
OSStatus GetFSSRefFromAEDesc(const AEDesc* inDescriptor, FSRef* outRef);

// GetDragItemFileInfo
//
// File and file type of a dragged item, a promised file's included once it has been made.
// Errors: cantGetFlavorErr (-1854)  no file, or a promise of another kind; paramErr for null; those of
// GetFlavorData.
OSStatus GetDragItemFileInfo(DragRef inDrag, DragItemRef inItem, FSSpec* outSpec, OSType* outFileType);

LAMPBLACK_END

#endif
