// The default volume and directory, and which volume a name or number means.
#include "Catalog.h"
#include "OpenFiles.h"
#include "ParameterBlock.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace lampblack::files {

const Volume* VolumeOfName(ConstStr255Param inName, SInt16 inRefNum)
{
    if (!inName || inName[0] == 0)
        return FindVolume(inRefNum);
    const std::string_view name((const char*)inName + 1, inName[0]);
    const size_t colon = name.find(':');
    if (colon == 0)
        return FindVolume(inRefNum);
    const Volume* named = FindVolumeNamed(name.substr(0, colon));
    return named || colon != std::string_view::npos ? named : FindVolume(inRefNum);
}

} // namespace lampblack::files

using namespace lampblack;
using namespace lampblack::files;

OSErr HGetVol(StringPtr volName, SInt16* vRefNum, SInt32* dirID)
try {
    const Folder folder = DefaultFolder();
    const Volume* volume = FindVolume(folder.volume);
    if (!volume)
        return nsvErr;
    if (volName)
        foundation::PascalFromMacRoman(volume->name, volName, 27);
    if (vRefNum)
        *vRefNum = folder.volume;
    if (dirID)
        *dirID = folder.id;
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr HSetVol(ConstStr63Param volName, SInt16 vRefNum, SInt32 dirID)
try {
    Item item, folder;
    const OSErr error = Resolve(vRefNum, dirID, volName, &item);
    if (error != noErr)
        return error == fnfErr ? (OSErr)dirNFErr : error;
    if (!FollowLinks(item, &folder) || !folder.isFolder)
        return dirNFErr;
    SetDefaultFolder(NodeOf(folder));
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr GetVol(StringPtr volName, SInt16* vRefNum)
{
    return HGetVol(volName, vRefNum, nullptr);
}

OSErr SetVol(ConstStr63Param volName, SInt16 vRefNum)
try {
    const Volume* volume = VolumeOfName(volName, vRefNum);
    if (!volume)
        return nsvErr;
    SetDefaultFolder({ volume->refNum, fsRtDirID });
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBHGetVolSync(WDPBPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    SInt16 volume = 0;
    SInt32 directory = 0;
    const OSErr error = HGetVol(paramBlock->ioNamePtr, &volume, &directory);
    if (error == noErr) {
        paramBlock->ioVRefNum = paramBlock->ioWDVRefNum = volume;
        paramBlock->ioWDDirID = directory;
        paramBlock->ioWDProcID = 0;
    }
    return Finish(*paramBlock, error);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBHSetVolSync(WDPBPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    return Finish(*paramBlock, HSetVol(paramBlock->ioNamePtr, paramBlock->ioVRefNum, paramBlock->ioWDDirID));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr GetVRefNum(SInt16 fileRefNum, SInt16* vRefNum)
try {
    const OpenFile* file = FindOpenFile(fileRefNum);
    if (!vRefNum)
        return paramErr;
    if (!file)
        return ErrorOfNumber(fileRefNum);
    *vRefNum = file->item.parent.volume;
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}
