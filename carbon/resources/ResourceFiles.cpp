// Entries on resource files: opening, closing, and moving along the chain.
#include "ManagerState.h"
#include "ResourceFile.h"

#include <files/FileReferences.h>
#include <foundation/MacRoman.h>

#include <new>

using namespace lampblack;
using namespace lampblack::resources;

namespace {

// Permissions have had more bits than these calls know.
int KnownPermission(SInt8 inPermission)
{
    const bool isKnown = inPermission >= fsCurPerm && inPermission <= fsRdWrShPerm;
    return isKnown ? inPermission : (int)fsCurPerm;
}

SInt16 OpenFork(const files::Item& inItem, bool inResourceFork, int inPermission, OSErr* outError)
{
    try {
        return Chain().Open(inItem, inResourceFork, inPermission, outError);
    } catch (const std::bad_alloc&) {
        *outError = memFullErr;
        return 0;
    }
}

// Opens what an earlier call found, or answers that call's error.
SInt16 OpenItem(OSErr inFound, const files::Item& inItem, int inPermission)
{
    OSErr error = inFound;
    SInt16 refNum = kResFileNotOpened;
    if (error == noErr && inItem.isFolder)
        error = fnfErr;
    if (error == noErr)
        refNum = OpenFork(inItem, true, inPermission, &error);
    return SetResourceError(error) == noErr ? refNum : (SInt16)kResFileNotOpened;
}

bool IsName(UniCharCount inLength, const UniChar* inName, std::u16string_view inWanted)
{
    if (inLength != inWanted.size() || (inLength > 0 && !inName))
        return false;
    return std::equal(inWanted.begin(), inWanted.end(), inName, [](char16_t a, UniChar b) { return a == b; });
}

} // namespace

SInt16 FSpOpenResFile(const FSSpec* spec, SignedByte permission)
try {
    Chain();
    files::Item item;
    const OSErr error = spec ? files::Resolve(*spec, &item) : (OSErr)paramErr;
    return OpenItem(error, item, KnownPermission(permission));
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return -1;
}

SInt16 FSOpenResFile(const FSRef* ref, SInt8 permission)
try {
    Chain();
    files::Item item;
    const OSErr error = files::ItemOfRef(ref, &item);
    return OpenItem(error, item, KnownPermission(permission));
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return -1;
}

OSErr FSOpenResourceFile(const FSRef* ref, UniCharCount forkNameLength, const UniChar* forkName,
                         SInt8 permissions, SInt16* refNum)
try {
    if (!refNum)
        return SetResourceError(paramErr);
    *refNum = kResFileNotOpened;
    const bool isResourceFork = IsName(forkNameLength, forkName, u"RESOURCE_FORK");
    if (!isResourceFork && forkNameLength != 0)
        return SetResourceError(errFSBadForkName);
    files::Item item;
    OSErr error = files::ItemOfRef(ref, &item);
    if (error == noErr && item.isFolder)
        error = fnfErr;
    SInt16 opened = kResFileNotOpened;
    if (error == noErr)
        opened = OpenFork(item, isResourceFork, KnownPermission(permissions), &error);
    *refNum = error == noErr ? opened : (SInt16)kResFileNotOpened;
    return SetResourceError(error);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

SInt16 HOpenResFile(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName, SInt8 permission)
try {
    Chain();
    files::Item item;
    const OSErr error = fileName ? files::Resolve(vRefNum, dirID, fileName, &item) : (OSErr)bdNamErr;
    return OpenItem(error, item, KnownPermission(permission));
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return -1;
}

SInt16 OpenResFile(ConstStr255Param fileName)
{
    return HOpenResFile(0, 0, fileName, fsCurPerm);
}

void CloseResFile(SInt16 refNum)
try {
    SetResourceError(Chain().Close(refNum));
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

SInt16 CurResFile(void)
try {
    Chain();
    SetResourceError(noErr);
    return gFront.refNum;
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}

void UseResFile(SInt16 refNum)
try {
    ResourceChain& chain = Chain();
    const bool isKnown = refNum == gFront.refNum || chain.SetCurrent(refNum);
    SetResourceError(isKnown ? noErr : resFNotFound);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

SInt16 HomeResFile(Handle theResource)
try {
    const Resource resource = Chain().ResourceOf(theResource);
    SetResourceError(resource ? noErr : resNotFound);
    return resource ? resource.file->refNum : (SInt16)-1;
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}

OSErr GetTopResourceFile(SInt16* refNum)
try {
    if (!refNum)
        return SetResourceError(paramErr);
    const auto& files = Chain().Files();
    *refNum = files.empty() ? (SInt16)0 : files.front()->refNum;
    return SetResourceError(noErr);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr GetNextResourceFile(SInt16 curRefNum, SInt16* nextRefNum)
try {
    if (!nextRefNum)
        return SetResourceError(paramErr);
    *nextRefNum = 0;
    const auto& files = Chain().Files();
    for (size_t i = 0; i < files.size(); ++i) {
        if (files[i]->refNum != curRefNum)
            continue;
        *nextRefNum = i + 1 < files.size() ? files[i + 1]->refNum : (SInt16)0;
        return SetResourceError(noErr);
    }
    return SetResourceError(resFNotFound);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

SInt16 GetResFileAttrs(SInt16 refNum)
try {
    const ResourceFile* file = Chain().Find(refNum);
    SetResourceError(file ? noErr : resFNotFound);
    if (!file)
        return 0;
    // A file that may be written is not read-only, whatever its map says of the time when it was made.
    const int ofTheMoment = mapCompact | mapChanged | (file->home ? mapReadOnly : 0);
    return (SInt16)((file->map.Attributes() & ~ofTheMoment) | (file->isFrozen ? mapReadOnly : 0) |
                    (file->isCompact ? mapCompact : 0) | (file->map.HasChanges() ? mapChanged : 0));
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return 0;
}

void SetResFileAttrs(SInt16 refNum, SInt16 attrs)
try {
    ResourceFile* file = Chain().Find(refNum);
    SetResourceError(file ? noErr : resFNotFound);
    if (!file)
        return;
    constexpr int kOfTheMoment = mapReadOnly | mapCompact | mapChanged;
    file->isFrozen = attrs & mapReadOnly;
    file->isCompact = attrs & mapCompact;
    const int kept = (file->map.Attributes() & kOfTheMoment) | (attrs & ~kOfTheMoment);
    if (kept != file->map.Attributes())
        file->map.SetMapAttributes((UInt16)kept);
    if (attrs & (mapChanged | mapCompact))
        file->map.MustBeWritten();
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void UpdateResFile(SInt16 refNum)
try {
    ResourceFile* file = Chain().Find(refNum);
    const OSErr none = refNum == kSystemResFile ? noErr : resFNotFound;
    SetResourceError(file ? UpdateFile(file) : none);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

Boolean FSResourceFileAlreadyOpen(const FSRef* resourceFileRef, Boolean* inChain, SInt16* refNum)
try {
    files::Item item;
    const OSErr error = files::ItemOfRef(resourceFileRef, &item);
    const ResourceFile* file = error == noErr ? Chain().FindItem(item, true) : nullptr;
    SetResourceError(error);
    if (inChain)
        *inChain = file != nullptr;
    if (refNum)
        *refNum = file ? file->refNum : (SInt16)kResFileNotOpened;
    return file != nullptr;
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
    return false;
}
