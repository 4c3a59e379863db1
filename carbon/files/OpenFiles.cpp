// The table of open files, and the calls that tell of them.
#include "OpenFiles.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <map>

namespace lampblack::files {
namespace {

constexpr SInt16 kFirstNumber = 256, kLastNumber = 32000;
constexpr size_t kMostFiles = 4096;

std::map<SInt16, OpenFile>& OpenFiles()
{
    static auto& files = *new std::map<SInt16, OpenFile>;
    return files;
}

} // namespace

SInt16 AddOpenFile(OpenFile inFile)
{
    static SInt16 last = kFirstNumber - 1;
    std::map<SInt16, OpenFile>& files = OpenFiles();
    if (files.size() >= kMostFiles)
        return 0;
    do
        last = last >= kLastNumber ? kFirstNumber : (SInt16)(last + 1);
    while (files.count(last));
    inFile.refNum = last;
    files[last] = std::move(inFile);
    return last;
}

void RemoveOpenFile(SInt16 inRefNum)
{
    OpenFiles().erase(inRefNum);
}

OpenFile* FindOpenFile(SInt16 inRefNum)
{
    const auto found = OpenFiles().find(inRefNum);
    return found == OpenFiles().end() ? nullptr : &found->second;
}

const OpenFile* NthOpenFile(SInt16 inVolume, SInt16 inIndex)
{
    SInt16 index = 0;
    for (const auto& [refNum, file] : OpenFiles())
        if ((inVolume == 0 || file.item.parent.volume == inVolume) && ++index == inIndex)
            return &file;
    return nullptr;
}

bool IsOpen(const Item& inItem, bool inResourceFork)
{
    return std::any_of(OpenFiles().begin(), OpenFiles().end(), [&](const auto& entry) {
        const OpenFile& file = entry.second;
        return file.isResourceFork == inResourceFork && file.item.parent == inItem.parent &&
               file.item.hostName == inItem.hostName;
    });
}

} // namespace lampblack::files

using namespace lampblack::files;

namespace {

constexpr SInt64 kBlock = 4096;

// ioFCBFlags, high byte: bit 1 the resource fork, bit 0 writable.
constexpr SInt16 kFCBResourceMask = 0x0200, kFCBWriteMask = 0x0100;

SInt32 Clamp(SInt64 inSize)
{
    return (SInt32)std::min<SInt64>(inSize, 0x7FFFFFFF);
}

void FillIn(const OpenFile& inFile, FCBPBRec* outBlock)
{
    const Item& item = inFile.item;
    if (outBlock->ioNamePtr)
        lampblack::foundation::PascalFromMacRoman(item.macName, outBlock->ioNamePtr, 31);
    outBlock->ioRefNum = inFile.refNum;
    outBlock->ioFCBFlNm = NodeOf(item).id;
    outBlock->ioFCBFlags =
        (SInt16)((inFile.isResourceFork ? kFCBResourceMask : 0) | (inFile.isWritable ? kFCBWriteMask : 0));
    outBlock->ioFCBStBlk = 0;
    outBlock->ioFCBEOF = Clamp(inFile.logicalSize);
    outBlock->ioFCBPLen = Clamp((inFile.logicalSize + kBlock - 1) / kBlock * kBlock);
    outBlock->ioFCBCrPs = Clamp(inFile.mark);
    outBlock->ioFCBVRefNum = item.parent.volume;
    outBlock->ioFCBClpSiz = (SInt32)kBlock;
    outBlock->ioFCBParID = item.parent.id;
}

OSErr GetFCBInfo(FCBPBRec* ioBlock)
{
    if (ioBlock->ioFCBIndx == 0) {
        const OpenFile* file = FindOpenFile(ioBlock->ioRefNum);
        if (!file)
            return rfNumErr;
        FillIn(*file, ioBlock);
        return noErr;
    }
    const Volume* volume = ioBlock->ioVRefNum ? FindVolume(ioBlock->ioVRefNum) : nullptr;
    if (ioBlock->ioVRefNum && !volume)
        return nsvErr;
    const OpenFile* file = NthOpenFile(volume ? volume->refNum : (SInt16)0, ioBlock->ioFCBIndx);
    if (!file)
        return fnOpnErr;
    FillIn(*file, ioBlock);
    return noErr;
}

} // namespace

OSErr PBGetFCBInfoSync(FCBPBPtr paramBlock)
{
    if (!paramBlock)
        return paramErr;
    const OSErr error = GetFCBInfo(paramBlock);
    paramBlock->ioResult = error;
    return error;
}
