// Menus of the files in a folder. Each item carries the FSSpec of its file as the property 'CFMU' 'FILE'.
#ifndef LAMPBLACK_PREFS_FOLDERMENUS_H
#define LAMPBLACK_PREFS_FOLDERMENUS_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

enum : unsigned { kFolderMenuCreator = 'CFMU', kFolderMenuFileTag = 'FILE', kFolderMenuAnyType = '****' };

// CreateFolderMenu
//
// Appends an item for each file of the type in a folder, in the order of the file system; names that begin
// with '.' are left out. Aliases stand for what they point at. With inHierarchical each subfolder that has
// such files becomes a submenu; the submenus take the free menu IDs from 18618 on.
// Errors:     dirNFErr  not a folder; those of FSpIsDirectory.
OSStatus CreateFolderMenu(const FSSpec* inFolder, MenuRef inMenu, Boolean inHierarchical, OSType inFileType);

// The same by directory ID. Answers whether any item was added.
Boolean AddFilesToFolderMenu(MenuRef inMenu, SInt16 inVRefNum, SInt32 inDirID, Boolean inHierarchical,
                             OSType inFileType);

LAMPBLACK_END

#endif
