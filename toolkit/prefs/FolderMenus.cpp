// Menus of the files in a folder.
#include "prefs/FolderMenus.h"

#include "prefs/FileHelpers.h"
#include "prefs/FileRecords.h"

namespace {

constexpr MenuID kFirstSubmenuID = 18618, kLastSubmenuID = 25000;

// The folders being listed, innermost first: an alias that leads back to one of them is passed over.
struct Walk {
    SInt16 fVRefNum;
    SInt32 fDirID;
    OSType fFileType;
    bool fIsHierarchical;
    const Walk* fOuter;
};

bool IsBeingListed(const Walk* inWalk, SInt16 inVRefNum, SInt32 inDirID)
{
    for (; inWalk; inWalk = inWalk->fOuter)
        if (inWalk->fVRefNum == inVRefNum && inWalk->fDirID == inDirID)
            return true;
    return false;
}

MenuID FreeSubmenuID()
{
    for (MenuID id = kFirstSubmenuID; id <= kLastSubmenuID; ++id)
        if (!GetMenuHandle(id))
            return id;
    return 0;
}

void CopyMenuFont(MenuRef inFrom, MenuRef inTo)
{
    SInt16 font = 0;
    UInt16 size = 0;
    if (GetMenuFont(inFrom, &font, &size) == noErr && (font != 0 || size != 0))
        SetMenuFont(inTo, font, size);
}

bool AddEntries(MenuRef inMenu, const Walk& inWalk);

// The next three answer whether the listing may go on.
bool AddFile(MenuRef inMenu, ConstStr255Param inName, const FSSpec& inFile, bool* ioAdded)
{
    if (AppendMenuItemText(inMenu, inName) != noErr)
        return false;
    SetMenuItemProperty(inMenu, CountMenuItems(inMenu), kFolderMenuCreator, kFolderMenuFileTag, sizeof inFile,
                        &inFile);
    *ioAdded = true;
    return true;
}

bool AddFolder(MenuRef inMenu, ConstStr255Param inName, const Walk& inFolder, bool* ioAdded)
{
    const MenuID id = FreeSubmenuID();
    MenuRef submenu = nullptr;
    if (id == 0 || CreateNewMenu(id, 0, &submenu) != noErr)
        return true;
    InsertMenu(submenu, kInsertHierarchicalMenu);
    const bool hasItems = AddEntries(submenu, inFolder);
    const bool goesOn = !hasItems || AppendMenuItemText(inMenu, inName) == noErr;
    if (!hasItems || !goesOn) {
        DeleteMenu(id);
        DisposeMenu(submenu);
        return goesOn;
    }
    CopyMenuFont(inMenu, submenu);
    SetMenuItemHierarchicalID(inMenu, CountMenuItems(inMenu), id);
    *ioAdded = true;
    return true;
}

bool AddEntry(MenuRef inMenu, const lampblack::prefs::CatalogRecord& inEntry, const Walk& inWalk,
              bool* ioAdded)
{
    FSSpec spec;
    Boolean isFolder = false, isAlias = false;
    if (inEntry.fName[0] == 0 || inEntry.fName[1] == '.' ||
        FSMakeFSSpec(inWalk.fVRefNum, inWalk.fDirID, inEntry.fName, &spec) != noErr ||
        ResolveAliasFile(&spec, true, &isFolder, &isAlias) != noErr)
        return true;
    if (!isFolder) {
        const bool isWanted = inWalk.fFileType == kFolderMenuAnyType ||
                              inWalk.fFileType == inEntry.fBlock.hFileInfo.ioFlFndrInfo.fdType;
        return !isWanted || AddFile(inMenu, inEntry.fName, spec, ioAdded);
    }
    Walk folder = { inWalk.fVRefNum, inEntry.fBlock.dirInfo.ioDrDirID, inWalk.fFileType, true, &inWalk };
    if (isAlias) {
        folder.fVRefNum = spec.vRefNum;
        FSpIsDirectory(&spec, &isFolder, &folder.fDirID);
    }
    if (!inWalk.fIsHierarchical || !isFolder || IsBeingListed(&inWalk, folder.fVRefNum, folder.fDirID))
        return true;
    return AddFolder(inMenu, inEntry.fName, folder, ioAdded);
}

bool AddEntries(MenuRef inMenu, const Walk& inWalk)
{
    bool hasAdded = false, goesOn = true;
    for (SInt16 index = 1; goesOn && index > 0; ++index) {
        lampblack::prefs::CatalogRecord entry(inWalk.fVRefNum, inWalk.fDirID, nullptr);
        entry.fBlock.hFileInfo.ioFDirIndex = index;
        goesOn = entry.Get() == noErr && AddEntry(inMenu, entry, inWalk, &hasAdded);
    }
    return hasAdded;
}

} // namespace

OSStatus CreateFolderMenu(const FSSpec* inFolder, MenuRef inMenu, Boolean inHierarchical, OSType inFileType)
{
    if (!inFolder || !inMenu)
        return paramErr;
    Boolean isDirectory = false;
    SInt32 directory = 0;
    const OSStatus err = FSpIsDirectory(inFolder, &isDirectory, &directory);
    if (err != noErr)
        return err;
    if (!isDirectory)
        return dirNFErr;
    AddFilesToFolderMenu(inMenu, inFolder->vRefNum, directory, inHierarchical, inFileType);
    return noErr;
}

Boolean AddFilesToFolderMenu(MenuRef inMenu, SInt16 inVRefNum, SInt32 inDirID, Boolean inHierarchical,
                             OSType inFileType)
{
    return inMenu && AddEntries(inMenu, { inVRefNum, inDirID, inFileType, inHierarchical != 0, nullptr });
}
