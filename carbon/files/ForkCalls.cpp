// Entries on open forks: opening by FSSpec, name and FSRef, and everything by number. Offsets of the older
// calls have 32 bits.
#include "FileReferences.h"
#include "ItemChanges.h"
#include "OpenFiles.h"
#include "ParameterBlock.h"

#include <algorithm>
#include <cstring>
#include <new>

using namespace lampblack::files;

namespace {

constexpr SInt64 kLast = 0x7FFFFFFF;

// What is written through a link is written where it leads, on the same volume.
OSErr OpenThrough(OSErr inFound, const Item& inItem, bool inResourceFork, SInt8 inPermission,
                  SInt16* outRefNum)
{
    if (outRefNum)
        *outRefNum = 0;
    if (inFound != noErr)
        return inFound;
    Item target = inItem;
    if (inItem.isLink && (!FollowLinks(inItem, &target) || target.parent.volume != inItem.parent.volume))
        return fnfErr;
    return OpenItem(target, inResourceFork, inPermission, outRefNum);
}

OSErr OpenNamed(FSVolumeRefNum inVolume, SInt32 inDirectory, ConstStr255Param inName, bool inResourceFork,
                SInt8 inPermission, SInt16* outRefNum)
{
    Item item;
    if (!inName || !outRefNum)
        return paramErr;
    const OSErr error = Resolve(inVolume, inDirectory, inName, &item);
    return OpenThrough(error, item, inResourceFork, inPermission, outRefNum);
}

OSErr OpenSpec(const FSSpec* inSpec, bool inResourceFork, SInt8 inPermission, SInt16* outRefNum)
{
    Item item;
    if (!inSpec || !outRefNum)
        return paramErr;
    return OpenThrough(Resolve(*inSpec, &item), item, inResourceFork, inPermission, outRefNum);
}

// An open file whose bytes are read and written here; numbers of the Resource Manager have none.
OSErr Find(SInt16 inRefNum, OpenFile** outFile)
{
    *outFile = FindOpenFile(inRefNum);
    if (*outFile && (*outFile)->fork)
        return noErr;
    return *outFile ? (OSErr)rfNumErr : ErrorOfNumber(inRefNum);
}

// The older calls reach no farther than numbers of 32 bits tell.
OSErr ReadOld(OpenFile* ioFile, UInt16 inMode, SInt32 inOffset, SInt32 inCount, void* outBytes,
              SInt32* outDone)
{
    SInt64 place = 0;
    size_t done = 0;
    OSErr error = inCount < 0 ? (OSErr)paramErr : PlaceIn(*ioFile, inMode, inOffset, &place);
    if (error == noErr && place > kLast)
        error = fileBoundsErr;
    const size_t count = (size_t)std::min<SInt64>(inCount, kLast - place);
    if (error == noErr)
        error = ReadFile(ioFile, fsFromStart, place, count, outBytes, &done);
    *outDone = (SInt32)done;
    return error == noErr && count < (size_t)inCount ? (OSErr)fileBoundsErr : error;
}

OSErr WriteOld(OpenFile* ioFile, UInt16 inMode, SInt32 inOffset, SInt32 inCount, const void* inBytes,
               SInt32* outDone)
{
    SInt64 place = 0;
    size_t done = 0;
    OSErr error = inCount < 0 ? (OSErr)paramErr : PlaceIn(*ioFile, inMode, inOffset, &place);
    if (error == noErr && !ioFile->isWritable)
        error = wrPermErr;
    if (error == noErr && place + inCount > kLast)
        error = fileBoundsErr;
    if (error == noErr)
        error = WriteFile(ioFile, fsFromStart, place, (size_t)inCount, inBytes, &done);
    *outDone = (SInt32)done;
    return error;
}

// Reads up to and with a character, a little at a time, so that nothing behind it reaches the buffer.
OSErr ReadLine(OpenFile* ioFile, UInt16 inMode, SInt32 inOffset, SInt32 inCount, char* outBytes,
               char inNewline, SInt32* outDone)
{
    char chunk[512];
    SInt64 place = 0;
    OSErr error =
        inCount < 0 || (!outBytes && inCount) ? (OSErr)paramErr : PlaceIn(*ioFile, inMode, inOffset, &place);
    *outDone = 0;
    bool isAtEnd = false;
    while (error == noErr && !isAtEnd && *outDone < inCount) {
        SInt32 read = 0;
        error = ReadOld(ioFile, fsFromStart, (SInt32)std::min<SInt64>(place + *outDone, kLast),
                        std::min<SInt32>(inCount - *outDone, sizeof chunk), chunk, &read);
        const void* found = std::memchr(chunk, inNewline, (size_t)read);
        const SInt32 taken = found ? (SInt32)((const char*)found - chunk) + 1 : read;
        std::memcpy(outBytes + *outDone, chunk, (size_t)taken);
        *outDone += taken;
        isAtEnd = found != nullptr;
    }
    if (isAtEnd) {
        ioFile->mark = place + *outDone;
        error = noErr;
    }
    return error;
}

OSErr SizeIn32Bits(SInt64 inSize, SInt32* outSize)
{
    *outSize = (SInt32)std::min(inSize, kLast);
    return inSize > kLast ? fileBoundsErr : noErr;
}

OSErr VolumeNamed(ConstStr255Param inName, SInt16 inRefNum, SInt16* outVolume)
{
    const bool hasName = inName && inName[0];
    std::string_view name((const char*)inName + 1, hasName ? inName[0] : 0);
    const Volume* volume = hasName ? FindVolumeNamed(name.substr(0, name.find(':'))) : FindVolume(inRefNum);
    if (volume)
        *outVolume = volume->refNum;
    return volume ? noErr : nsvErr;
}

} // namespace

OSErr FSpOpenDF(const FSSpec* spec, SInt8 permission, FSIORefNum* refNum)
try {
    return OpenSpec(spec, false, permission, refNum);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSpOpenRF(const FSSpec* spec, SInt8 permission, FSIORefNum* refNum)
try {
    return OpenSpec(spec, true, permission, refNum);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr HOpen(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, SInt8 permission,
            FSIORefNum* refNum)
try {
    return OpenNamed(vRefNum, dirID, fileName, false, permission, refNum);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr HOpenDF(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, SInt8 permission,
              FSIORefNum* refNum)
try {
    return OpenNamed(vRefNum, dirID, fileName, false, permission, refNum);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr HOpenRF(FSVolumeRefNum vRefNum, SInt32 dirID, ConstStr255Param fileName, SInt8 permission,
              FSIORefNum* refNum)
try {
    return OpenNamed(vRefNum, dirID, fileName, true, permission, refNum);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSOpen(ConstStr255Param fileName, FSVolumeRefNum vRefNum, FSIORefNum* refNum)
try {
    return OpenNamed(vRefNum, 0, fileName, false, fsCurPerm, refNum);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSClose(FSIORefNum refNum)
try {
    return CloseFile(refNum);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSRead(FSIORefNum refNum, SInt32* count, void* buffPtr)
try {
    OpenFile* file;
    const OSErr error = count ? Find(refNum, &file) : (OSErr)paramErr;
    return error == noErr ? ReadOld(file, fsAtMark, 0, *count, buffPtr, count) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSWrite(FSIORefNum refNum, SInt32* count, const void* buffPtr)
try {
    OpenFile* file;
    const OSErr error = count ? Find(refNum, &file) : (OSErr)paramErr;
    return error == noErr ? WriteOld(file, fsAtMark, 0, *count, buffPtr, count) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr GetEOF(FSIORefNum refNum, SInt32* logEOF)
try {
    OpenFile* file;
    const OSErr error = logEOF ? Find(refNum, &file) : (OSErr)paramErr;
    return error == noErr ? SizeIn32Bits(SizeOf(*file), logEOF) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr SetEOF(FSIORefNum refNum, SInt32 logEOF)
try {
    OpenFile* file;
    const OSErr error = Find(refNum, &file);
    return error == noErr ? SetEnd(file, logEOF) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr Allocate(FSIORefNum refNum, SInt32* count)
try {
    OpenFile* file;
    const OSErr error = count ? Find(refNum, &file) : (OSErr)paramErr;
    return error == noErr ? ReserveIn(file, *count) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr AllocContig(FSVolumeRefNum refNum, SInt32* count)
{
    return Allocate(refNum, count);
}

OSErr GetFPos(FSIORefNum refNum, SInt32* filePos)
try {
    OpenFile* file;
    const OSErr error = filePos ? Find(refNum, &file) : (OSErr)paramErr;
    return error == noErr ? SizeIn32Bits(file->mark, filePos) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr SetFPos(FSIORefNum refNum, SInt16 posMode, SInt32 posOff)
try {
    OpenFile* file;
    OSErr error = Find(refNum, &file);
    SInt64 place = 0;
    error = error == noErr ? PlaceIn(*file, (UInt16)posMode, posOff, &place) : error;
    if (error == noErr && place > kLast)
        return fileBoundsErr;
    return error == noErr ? SetMark(file, fsFromStart, place) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FlushVol(ConstStr63Param volName, FSVolumeRefNum vRefNum)
try {
    SInt16 volume = 0;
    const OSErr error = VolumeNamed(volName, vRefNum, &volume);
    return error == noErr ? FlushFilesOf(volume) : error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

// By parameter block. A call works on the records of the union that have its fields.
namespace {

OSErr OpenBlock(HParmBlkPtr ioBlock, bool inResourceFork)
{
    if (!ioBlock)
        return paramErr;
    HIOParam& block = ioBlock->ioParam;
    SInt16 refNum = 0;
    const OSErr error = OpenNamed(block.ioVRefNum, ioBlock->fileParam.ioDirID, block.ioNamePtr,
                                  inResourceFork, block.ioPermssn, &refNum);
    block.ioRefNum = refNum;
    return Finish(block, error);
}

OSErr ReadBlock(IOParam& ioBlock, OpenFile* ioFile)
{
    const UInt16 mode = (UInt16)ioBlock.ioPosMode;
    SInt32 done = 0;
    const OSErr error = mode & newLineMask ? ReadLine(ioFile, mode, ioBlock.ioPosOffset, ioBlock.ioReqCount,
                                                      ioBlock.ioBuffer, (char)(mode >> 8), &done)
                                           : ReadOld(ioFile, mode, ioBlock.ioPosOffset, ioBlock.ioReqCount,
                                                     ioBlock.ioBuffer, &done);
    ioBlock.ioActCount = done;
    ioBlock.ioPosOffset = (SInt32)std::min(ioFile->mark, kLast);
    return error;
}

OSErr WriteBlock(IOParam& ioBlock, OpenFile* ioFile)
{
    SInt32 done = 0;
    const OSErr error = WriteOld(ioFile, (UInt16)ioBlock.ioPosMode, ioBlock.ioPosOffset, ioBlock.ioReqCount,
                                 ioBlock.ioBuffer, &done);
    ioBlock.ioActCount = done;
    ioBlock.ioPosOffset = (SInt32)std::min(ioFile->mark, kLast);
    return error;
}

OSErr GetEOFBlock(IOParam& ioBlock, OpenFile* ioFile)
{
    SInt32 size = 0;
    const OSErr error = SizeIn32Bits(SizeOf(*ioFile), &size);
    ioBlock.ioMisc = (Ptr)(intptr_t)size;
    return error;
}

OSErr SetEOFBlock(IOParam& ioBlock, OpenFile* ioFile)
{
    const auto size = (intptr_t)ioBlock.ioMisc;
    return size > kLast ? (OSErr)fileBoundsErr : SetEnd(ioFile, size);
}

OSErr GetFPosBlock(IOParam& ioBlock, OpenFile* ioFile)
{
    ioBlock.ioReqCount = ioBlock.ioActCount = 0;
    ioBlock.ioPosMode = 0;
    SInt32 mark = 0; // the block is packed, its fields may lie anywhere
    const OSErr error = SizeIn32Bits(ioFile->mark, &mark);
    ioBlock.ioPosOffset = mark;
    return error;
}

OSErr SetFPosBlock(IOParam& ioBlock, OpenFile* ioFile)
{
    const OSErr error = SetFPos(ioFile->refNum, ioBlock.ioPosMode, ioBlock.ioPosOffset);
    ioBlock.ioPosOffset = (SInt32)std::min(ioFile->mark, kLast);
    return error;
}

OSErr AllocateBlock(IOParam& ioBlock, OpenFile* ioFile)
{
    const OSErr error = ReserveIn(ioFile, ioBlock.ioReqCount);
    ioBlock.ioActCount = error == noErr ? ioBlock.ioReqCount : 0;
    return error;
}

using BlockCall = OSErr (*)(IOParam&, OpenFile*);

OSErr OnFile(ParmBlkPtr ioBlock, BlockCall inCall)
{
    if (!ioBlock)
        return paramErr;
    IOParam& block = ioBlock->ioParam;
    OpenFile* file;
    const OSErr error = Find(block.ioRefNum, &file);
    return Finish(block, error == noErr ? inCall(block, file) : error);
}

OSErr Complete(ParmBlkPtr ioBlock, OSErr inError)
{
    if (ioBlock && ioBlock->ioParam.ioCompletion)
        ioBlock->ioParam.ioCompletion(ioBlock);
    return inError;
}

} // namespace

OSErr PBHOpenSync(HParmBlkPtr paramBlock)
try {
    return OpenBlock(paramBlock, false);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBHOpenDFSync(HParmBlkPtr paramBlock)
try {
    return OpenBlock(paramBlock, false);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBHOpenRFSync(HParmBlkPtr paramBlock)
try {
    return OpenBlock(paramBlock, true);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBCloseSync(ParmBlkPtr paramBlock)
try {
    return paramBlock ? Finish(paramBlock->ioParam, CloseFile(paramBlock->ioParam.ioRefNum))
                      : (OSErr)paramErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBReadSync(ParmBlkPtr paramBlock)
try {
    return OnFile(paramBlock, ReadBlock);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBWriteSync(ParmBlkPtr paramBlock)
try {
    return OnFile(paramBlock, WriteBlock);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBGetEOFSync(ParmBlkPtr paramBlock)
try {
    return OnFile(paramBlock, GetEOFBlock);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBSetEOFSync(ParmBlkPtr paramBlock)
try {
    return OnFile(paramBlock, SetEOFBlock);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBGetFPosSync(ParmBlkPtr paramBlock)
try {
    return OnFile(paramBlock, GetFPosBlock);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBSetFPosSync(ParmBlkPtr paramBlock)
try {
    return OnFile(paramBlock, SetFPosBlock);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBAllocateSync(ParmBlkPtr paramBlock)
try {
    return OnFile(paramBlock, AllocateBlock);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBAllocContigSync(ParmBlkPtr paramBlock)
try {
    return OnFile(paramBlock, AllocateBlock);
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBFlushFileSync(ParmBlkPtr paramBlock)
try {
    return OnFile(paramBlock, [](IOParam&, OpenFile* ioFile) { return FlushFile(ioFile); });
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBFlushVolSync(ParmBlkPtr paramBlock)
try {
    if (!paramBlock)
        return paramErr;
    IOParam& block = paramBlock->ioParam;
    return Finish(block, FlushVol(block.ioNamePtr, block.ioVRefNum));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBReadAsync(ParmBlkPtr paramBlock)
try {
    return Complete(paramBlock, PBReadSync(paramBlock));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBWriteAsync(ParmBlkPtr paramBlock)
try {
    return Complete(paramBlock, PBWriteSync(paramBlock));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBCloseAsync(ParmBlkPtr paramBlock)
try {
    return Complete(paramBlock, PBCloseSync(paramBlock));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBFlushFileAsync(ParmBlkPtr paramBlock)
try {
    return Complete(paramBlock, PBFlushFileSync(paramBlock));
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr PBFlushVolAsync(ParmBlkPtr paramBlock)
try {
    return Complete(paramBlock, PBFlushVolSync(paramBlock));
} catch (const std::bad_alloc&) {
    return memFullErr;
}
