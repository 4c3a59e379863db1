// The folders that every user has: preferences, documents, temporary files and the like. Begin at
// FindFolder.
//
// The user's folders are those of the desktop: "Preferences" and "Application Support" lie in
// $XDG_CONFIG_HOME (default ~/.config) and $XDG_DATA_HOME (~/.local/share), Desktop, Documents, Music,
// Pictures and Movies where user-dirs.dirs puts them. Fonts, caches and the trash follow the same rules.
#ifndef LAMPBLACK_CARBON_FOLDERS_H
#define LAMPBLACK_CARBON_FOLDERS_H

#include <Carbon/Files.h>
#include <Carbon/MacTypes.h>

// Whose folder; a volume reference may stand instead and means the user's.
enum {
    kOnSystemDisk = -32768,
    kOnAppropriateDisk = -32767,
    kSystemDomain = -32766,
    kLocalDomain = -32765,
    kNetworkDomain = -32764,
    kUserDomain = -32763,
    kClassicDomain = -32762
};

enum { kCreateFolder = true, kDontCreateFolder = false };

enum {
    kSystemFolderType = 'macs',
    kDesktopFolderType = 'desk',
    kSystemDesktopFolderType = 'sdsk',
    kTrashFolderType = 'trsh',
    kSystemTrashFolderType = 'strs',
    kWhereToEmptyTrashFolderType = 'empt',
    kStartupFolderType = 'strt',
    kFontsFolderType = 'font',
    kPreferencesFolderType = 'pref',
    kSystemPreferencesFolderType = 'sprf',
    kApplicationSupportFolderType = 'asup',
    kTemporaryFolderType = 'temp',
    kChewableItemsFolderType = 'flnt',
    kCachedDataFolderType = 'cach',
    kLogsFolderType = 'logs',
    kApplicationsFolderType = 'apps',
    kDocumentsFolderType = 'docs',
    kMusicDocumentsFolderType = (FourCharCode)0xB5646F63, // 'µdoc' in Mac Roman
    kPictureDocumentsFolderType = 'pdoc',
    kMovieDocumentsFolderType = 'mdoc',
    kPublicFolderType = 'pubb',
    kCurrentUserFolderType = 'cusr',
    kUsersFolderType = 'usrs',
    kSharedUserDataFolderType = 'sdat',
    kVolumeRootFolderType = 'root',
    kDomainTopLevelFolderType = 'dtop',
    kDomainLibraryFolderType = 'dlib'
};

LAMPBLACK_BEGIN_C

// FindFolder
//
// Volume and directory ID of a folder. With kCreateFolder a folder that is not there is made, readable by
// the user alone. kOnSystemDisk, kOnAppropriateDisk, kUserDomain, kClassicDomain and volume references mean
// the user's folder; kLocalDomain, kNetworkDomain and kSystemDomain the machine's (under /usr/local,
// /usr/local and /usr) where it has one of its own, such as fonts, applications and preferences (/etc).
// What no machine has, the desktop for instance, is the user's in every domain. The two volume-root types
// answer for the volume named.
//
// Errors:     fnfErr  the folder is not there and is not to be made, or the type is unknown; dupFNErr  a file
//             is where the folder belongs; nsvErr  no such volume; wPrErr, permErr, dskFulErr, ioErr  it
//             cannot be made; paramErr  a null result.
OSErr FindFolder(SInt16 vRefNum, OSType folderType, Boolean createFolder, SInt16* foundVRefNum,
                 SInt32* foundDirID);
OSErr FSFindFolder(SInt16 vRefNum, OSType folderType, Boolean createFolder, FSRef* foundRef);

LAMPBLACK_END_C

// Where a long is wider than the directory ID (see OpenForks.h).
LAMPBLACK_IF_LONG inline OSErr FindFolder(SInt16 vRefNum, OSType folderType, Boolean createFolder,
                                          SInt16* foundVRefNum, Long* foundDirID)
{
    *foundDirID = 0;
    return LampblackThroughSInt32(foundDirID, [&](SInt32* value) {
        return FindFolder(vRefNum, folderType, createFolder, foundVRefNum, value);
    });
}

#endif
