// Entries that make resource files and resource forks.
#include "ManagerState.h"
#include "ResourceFile.h"

#include <files/FileReferences.h>
#include <files/UnicodeNames.h>

#include <cstring>
#include <new>
#include <string_view>

using namespace lampblack;
using namespace lampblack::resources;

namespace {

using files::ForkHome;

std::vector<uint8_t> EmptyFork()
{
    std::vector<uint8_t> fork;
    ForkBuilder().Build(&fork);
    return fork;
}

OSErr CreateDataForkFile(const std::filesystem::path& inPath, const FInfo& inInfo, const FXInfo& inExtended)
{
    files::Replacement file;
    OSErr error = file.Begin(inPath, nullptr);
    error = error == noErr ? files::WriteAll(file.File(), EmptyFork(), 0) : error;
    error = error == noErr ? file.PutWhereNothingIs() : error;
    const bool isPlain = inInfo.fdType == 0 && inInfo.fdCreator == 0;
    return error == noErr && !isPlain ? files::SetFinderInfo(inPath, &inInfo, &inExtended) : error;
}

// Gives a file an empty map where it has no fork yet. Only who holds the lock knows that it has none.
OSErr AddFork(const std::filesystem::path& inPath, bool inResourceFork)
{
    std::unique_ptr<ForkHome> home;
    const files::LocatedForks before = files::LocateForks(inPath);
    if (const OSErr unread = files::ErrorOfSearch(before); unread != noErr)
        return unread;
    if (!(inResourceFork ? before.resourceFork : before.dataFork).empty())
        return dupFNErr;
    const OSErr error =
        ForkHome::Open(inPath, &home, inResourceFork ? ForkHome::Fork::NewResource : ForkHome::Fork::Data);
    if (error != noErr)
        return error;
    const files::LocatedForks& forks = home->Forks();
    if (!(inResourceFork ? forks.resourceFork : forks.dataFork).empty())
        return dupFNErr;
    const std::vector<uint8_t> fork = EmptyFork();
    const Bytes bytes = fork;
    return home->Replace({ &bytes, nullptr, nullptr });
}

OSErr CreateForkOf(const files::Item& inItem, bool inResourceFork, const FInfo& inInfo,
                   const FXInfo& inExtended)
{
    const std::filesystem::path path = files::PathOf(inItem);
    if (inItem.exists && inItem.isFolder)
        return dupFNErr;
    if (inItem.exists)
        return AddFork(path, inResourceFork);
    if (!inResourceFork)
        return CreateDataForkFile(path, inInfo, inExtended);
    return files::CreateFile(path, inInfo, inExtended, EmptyFork());
}

OSErr Create(OSErr inFound, const files::Item& inItem, OSType inCreator, OSType inType)
{
    if (inFound != noErr && inFound != fnfErr)
        return inFound;
    FInfo info = {};
    info.fdType = inType;
    info.fdCreator = inCreator;
    try {
        return CreateForkOf(inItem, true, info, {});
    } catch (const std::bad_alloc&) {
        return memFullErr;
    }
}

// Which fork a name means. Errors: errFSBadForkName.
OSErr ForkOfName(UniCharCount inLength, const UniChar* inName, bool* outIsResourceFork)
{
    constexpr std::u16string_view kName = u"RESOURCE_FORK";
    *outIsResourceFork = inLength == kName.size() && inName && std::equal(kName.begin(), kName.end(), inName);
    return *outIsResourceFork || inLength == 0 ? (OSErr)noErr : (OSErr)errFSBadForkName;
}

struct NewFile {
    const FSRef* parent;
    UniCharCount nameLength;
    const UniChar* name;
    FSCatalogInfoBitmap whichInfo;
    const FSCatalogInfo* info;
};

OSErr CreateUnicode(const NewFile& inNew, bool inResourceFork, FSRef* outRef, FSSpec* outSpec)
{
    files::Item parent, item;
    OSErr error = files::ItemOfRef(inNew.parent, &parent);
    if (error == noErr && !parent.isFolder)
        error = errFSNotAFolder;
    if (error != noErr)
        return error;
    error = files::LookUpUnicode(files::NodeOf(parent), inNew.nameLength, inNew.name, &item);
    if (error != fnfErr)
        return error == noErr ? (OSErr)dupFNErr : error;
    FInfo info = {};
    FXInfo extended = {};
    if (inNew.info && (inNew.whichInfo & kFSCatInfoFinderInfo))
        std::memcpy(&info, inNew.info->finderInfo, sizeof info);
    if (inNew.info && (inNew.whichInfo & kFSCatInfoFinderXInfo))
        std::memcpy(&extended, inNew.info->extFinderInfo, sizeof extended);
    error = CreateForkOf(item, inResourceFork, info, extended);
    if (error != noErr)
        return error;
    item.exists = true;
    if (outRef)
        files::MakeRef(item, outRef);
    if (outSpec)
        files::MakeSpec(item, outSpec);
    return noErr;
}

OSErr CreateGuarded(const NewFile& inNew, bool inResourceFork, FSRef* outRef, FSSpec* outSpec)
{
    try {
        return SetResourceError(CreateUnicode(inNew, inResourceFork, outRef, outSpec));
    } catch (const std::bad_alloc&) {
        return SetResourceError(memFullErr);
    }
}

} // namespace

void FSpCreateResFile(const FSSpec* spec, OSType creator, OSType fileType, ScriptCode)
try {
    Chain();
    files::Item item;
    const OSErr found = spec ? files::Resolve(*spec, &item) : (OSErr)paramErr;
    SetResourceError(Create(found, item, creator, fileType));
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void HCreateResFile(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName)
try {
    Chain();
    files::Item item;
    const OSErr found = fileName ? files::Resolve(vRefNum, dirID, fileName, &item) : (OSErr)bdNamErr;
    SetResourceError(Create(found, item, 0, 0));
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void CreateResFile(ConstStr255Param fileName)
try {
    HCreateResFile(0, 0, fileName);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

void FSCreateResFile(const FSRef* parentRef, UniCharCount nameLength, const UniChar* name,
                     FSCatalogInfoBitmap whichInfo, const FSCatalogInfo* catalogInfo, FSRef* newRef,
                     FSSpec* newSpec)
try {
    CreateGuarded({ parentRef, nameLength, name, whichInfo, catalogInfo }, true, newRef, newSpec);
} catch (const std::bad_alloc&) {
    LMSetResErr(memFullErr);
}

OSErr FSCreateResourceFile(const FSRef* parentRef, UniCharCount nameLength, const UniChar* name,
                           FSCatalogInfoBitmap whichInfo, const FSCatalogInfo* catalogInfo,
                           UniCharCount forkNameLength, const UniChar* forkName, FSRef* newRef,
                           FSSpec* newSpec)
try {
    bool isResourceFork = false;
    const OSErr error = ForkOfName(forkNameLength, forkName, &isResourceFork);
    if (error != noErr)
        return SetResourceError(error);
    return CreateGuarded({ parentRef, nameLength, name, whichInfo, catalogInfo }, isResourceFork, newRef,
                         newSpec);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSCreateResourceFork(const FSRef* ref, UniCharCount forkNameLength, const UniChar* forkName, UInt32)
try {
    bool isResourceFork = false;
    files::Item item;
    OSErr error = ForkOfName(forkNameLength, forkName, &isResourceFork);
    error = error == noErr ? files::ItemOfRef(ref, &item) : error;
    if (error == noErr && item.isFolder)
        error = fnfErr;
    try {
        error = error == noErr ? AddFork(files::PathOf(item), isResourceFork) : error;
    } catch (const std::bad_alloc&) {
        error = memFullErr;
    }
    return SetResourceError(error);
} catch (const std::bad_alloc&) {
    return memFullErr;
}
