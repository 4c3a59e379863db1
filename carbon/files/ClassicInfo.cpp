// The catalog by parameter block: PBGetCatInfo, PBHGetFInfo, PBMakeFSSpec.
#include "Dates.h"
#include "ItemFacts.h"
#include "Listing.h"
#include "OpenFiles.h"
#include "ParameterBlock.h"

#include <foundation/BigEndian.h>
#include <foundation/MacRoman.h>

#include <algorithm>
#include <dirent.h>
#include <new>

using namespace lampblack;
using namespace lampblack::files;

namespace {

SInt32 Clamp(UInt64 inSize)
{
    return (SInt32)std::min<UInt64>(inSize, 0x7FFFFFFF);
}

bool IsFolderName(const std::filesystem::path& inFolder, const ListedName& inName)
{
    if (inName.kind != DT_UNKNOWN)
        return inName.kind == DT_DIR;
    struct stat status;
    return lstat((inFolder / inName.hostName).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// The nth of those listed, 1 being the first; files only when asked so. Null: there are fewer.
const ListedName* NthName(const Listing& inListing, const std::filesystem::path& inFolder, size_t inIndex,
                          bool inFilesOnly)
{
    const std::vector<ListedName>& names = inListing.Names();
    if (!inFilesOnly)
        return inIndex <= names.size() ? &names[inIndex - 1] : nullptr;
    for (const ListedName& name : names)
        if (!IsFolderName(inFolder, name) && --inIndex == 0)
            return &name;
    return nullptr;
}

OSErr NthItem(Folder inFolder, SInt16 inIndex, bool inFilesOnly, Item* outItem)
{
    const std::filesystem::path path = PathOf(inFolder);
    const auto listing = ListingOf(path);
    const ListedName* name = NthName(*listing, path, (size_t)inIndex, inFilesOnly);
    if (!name)
        return fnfErr;
    *outItem = { inFolder, std::string(name->hostName), std::string(name->macName) };
    return LookAtHost(outItem) ? noErr : fnfErr;
}

// What a block asks about: an entry of a folder by index, a name in it, or the folder.
OSErr AskedFor(SInt16 inVolume, SInt32 inDirectory, SInt16 inIndex, ConstStr255Param inName, bool inFilesOnly,
               Item* outItem)
{
    if (inIndex <= 0)
        return Resolve(inVolume, inDirectory, inIndex < 0 ? nullptr : inName, outItem);
    Folder folder;
    const OSErr error = ResolveFolder(inVolume, inDirectory, &folder);
    if (error != noErr)
        return error;
    return folder.id == fsRtParID ? (OSErr)dirNFErr : NthItem(folder, inIndex, inFilesOnly, outItem);
}

void GiveName(const Item& inItem, SInt16 inIndex, StringPtr outName)
{
    if (outName && inIndex != 0)
        foundation::PascalFromMacRoman(inItem.macName, outName, 31);
}

SInt16 OpenNumberOf(const Item& inItem)
{
    SInt16 number = 0;
    ForEachOpenFile([&](OpenFile& file) {
        if (number == 0 && file.item.parent == inItem.parent && file.item.hostName == inItem.hostName)
            number = file.refNum;
    });
    return number;
}

// What HFileInfo and HFileParam have in common.
template <class Block>
void FillFile(ItemFacts& ioFacts, Block* outBlock)
{
    UInt8 finder[16];
    const Item& item = ioFacts.TheItem();
    ioFacts.FinderBytes(finder);
    outBlock->ioFlFndrInfo = FinderInfoFromBytes(finder);
    outBlock->ioFRefNum = OpenNumberOf(item);
    outBlock->ioFVersNum = 0;
    outBlock->ioFlAttrib = (SInt8)ioFacts.Attributes();
    outBlock->ioDirID = NodeOf(item).id;
    outBlock->ioFlStBlk = outBlock->ioFlRStBlk = 0;
    outBlock->ioFlLgLen = Clamp(ioFacts.DataSize());
    outBlock->ioFlPyLen = Clamp(PhysicalSize(ioFacts.DataSize()));
    outBlock->ioFlRLgLen = Clamp(ioFacts.ResourceSize());
    outBlock->ioFlRPyLen = Clamp(PhysicalSize(ioFacts.ResourceSize()));
    outBlock->ioFlCrDat = LocalDateOf(ioFacts.Created());
    outBlock->ioFlMdDat = LocalDateOf(ioFacts.Modified());
}

DInfo FolderInfoFromBytes(const UInt8* inSixteen)
{
    foundation::BigEndianReader reader(inSixteen, 16);
    DInfo info = {};
    info.frRect = reader.ReadRect();
    info.frFlags = reader.U16();
    info.frLocation = reader.ReadPoint();
    info.frView = reader.S16();
    return info;
}

DXInfo ExtendedFolderInfoFromBytes(const UInt8* inSixteen)
{
    foundation::BigEndianReader reader(inSixteen, 16);
    DXInfo info = {};
    info.frScroll = reader.ReadPoint();
    info.frOpenChain = reader.S32();
    info.frScript = reader.S8();
    info.frXFlags = reader.S8();
    info.frComment = reader.S16();
    info.frPutAway = reader.S32();
    return info;
}

void FillFolder(ItemFacts& ioFacts, DirInfo* outBlock)
{
    UInt8 finder[16], extended[16];
    ioFacts.FinderBytes(finder);
    ioFacts.ExtendedBytes(extended);
    outBlock->ioFRefNum = 0;
    outBlock->ioFVersNum = 0;
    outBlock->ioFlAttrib = (SInt8)(ioFacts.Attributes() & kioFlAttribDirMask);
    outBlock->ioACUser = 0; // no access is denied by a server
    outBlock->ioDrUsrWds = FolderInfoFromBytes(finder);
    outBlock->ioDrDirID = NodeOf(ioFacts.TheItem()).id;
    outBlock->ioDrNmFls = (UInt16)std::min<UInt32>(ioFacts.Valence(), 0xFFFF);
    outBlock->ioDrCrDat = LocalDateOf(ioFacts.Created());
    outBlock->ioDrMdDat = LocalDateOf(ioFacts.Modified());
    outBlock->ioDrBkDat = 0;
    outBlock->ioDrFndrInfo = ExtendedFolderInfoFromBytes(extended);
    outBlock->ioDrParID = ioFacts.TheItem().parent.id;
}

void FillCatalogFile(ItemFacts& ioFacts, HFileInfo* outBlock)
{
    UInt8 extended[16];
    FillFile(ioFacts, outBlock);
    ioFacts.ExtendedBytes(extended);
    outBlock->ioACUser = 0;
    outBlock->ioFlBkDat = 0;
    outBlock->ioFlXFndrInfo = ExtendedInfoFromBytes(extended);
    outBlock->ioFlParID = ioFacts.TheItem().parent.id;
    outBlock->ioFlClpSiz = kAllocationBlock;
}

OSErr GetCatInfo(CInfoPBRec* ioBlock)
{
    HFileInfo& block = ioBlock->hFileInfo;
    Item item;
    OSErr error = AskedFor(block.ioVRefNum, block.ioDirID, block.ioFDirIndex, block.ioNamePtr, false, &item);
    if (error != noErr)
        return error;
    ItemFacts facts(item);
    error = facts.Look();
    if (error != noErr)
        return error;
    GiveName(item, block.ioFDirIndex, block.ioNamePtr);
    if (item.isFolder)
        FillFolder(facts, &ioBlock->dirInfo);
    else
        FillCatalogFile(facts, &block);
    return noErr;
}

OSErr GetFileInfo(HFileParam* ioBlock)
{
    const SInt16 index = std::max<SInt16>(ioBlock->ioFDirIndex, 0);
    Item item;
    OSErr error = AskedFor(ioBlock->ioVRefNum, ioBlock->ioDirID, index, ioBlock->ioNamePtr, true, &item);
    if (error != noErr)
        return error;
    ItemFacts facts(item);
    error = item.isFolder ? (OSErr)fnfErr : facts.Look();
    if (error != noErr)
        return error;
    GiveName(item, index, ioBlock->ioNamePtr);
    FillFile(facts, ioBlock);
    ioBlock->ioFlVersNum = 0;
    return noErr;
}

} // namespace

OSErr PBGetCatInfoSync(CInfoPBPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    return Finish(paramBlock->hFileInfo, GetCatInfo(paramBlock));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBHGetFInfoSync(HParmBlkPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    return Finish(paramBlock->fileParam, GetFileInfo(&paramBlock->fileParam));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBMakeFSSpecSync(HParmBlkPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    const HFileParam& where = paramBlock->fileParam;
    FSSpec* spec = (FSSpec*)paramBlock->ioParam.ioMisc;
    return Finish(paramBlock->ioParam, FSMakeFSSpec(where.ioVRefNum, where.ioDirID, where.ioNamePtr, spec));
} catch (const std::bad_alloc&) {
    return memFullErr;
}
