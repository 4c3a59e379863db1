// Changes to items: making, deleting, renaming, moving, exchanging, and what is kept about them. The calls by
// FSSpec, by name and by FSRef all come here. Begin at CreateFileItem.
//
// Errors of all: fnfErr  the item does not exist; vLckdErr  a volume itself; fLckdErr  locked; what the host
// says, as ErrorOfHost.
#ifndef LAMPBLACK_FILES_ITEMCHANGES_H
#define LAMPBLACK_FILES_ITEMCHANGES_H

#include "Catalog.h"

#include <ctime>

namespace lampblack::files {

// CreateFileItem, CreateFolderItem
//
// Make what Resolve found to be missing; ioItem exists afterwards. Errors: dupFNErr; bdNamErr  a name that
// the host uses for parts of files.
OSErr CreateFileItem(Item* ioItem, const FInfo&, const FXInfo&);
OSErr CreateFolderItem(Item* ioItem);

// Deletes a file with all its parts, a link, or an empty folder. Errors: fBsyErr.
OSErr DeleteItem(const Item&);

// RenameItem, MoveItem
//
// outNew, which may be null, is the item as it is afterwards. Errors: dupFNErr, bdNamErr, fBsyErr; MoveItem
// also badMovErr, diffVolErr.
OSErr RenameItem(const Item&, const std::string& inNewHostName, Item* outNew = nullptr);
OSErr MoveItem(const Item&, Folder inTo, Item* outNew = nullptr);

// The files change both forks; names and Finder information stay. Errors: sameFileErr, notAFileErr,
// diffVolErr, fBsyErr.
OSErr ExchangeItems(const Item&, const Item&);

// A Macintosh name for a new item, as the host will have it. Errors: bdNamErr.
OSErr CheckNewName(ConstStr255Param inName, std::string* outHostName);

// SetItemInfo
//
// Either may be null. Sixteen bytes each: FInfo and FXInfo of a file, DInfo and DXInfo of a folder, in the
// order of the machine.
OSErr SetItemInfo(const Item&, const void* inInfo, const void* inExtendedInfo);

// Dates to set; null ones stay as they are.
struct NewDates {
    const timespec* created = nullptr;
    const timespec* modified = nullptr;
};
OSErr SetItemDates(const Item&, const NewDates&);

OSErr SetItemLock(const Item&, bool inIsLocked);

// Whether another process writes one of the file's forks at this moment.
bool IsWrittenElsewhere(const std::filesystem::path&);

} // namespace lampblack::files

#endif
