// The table of open files, and the calls that tell of them.
#include "OpenFiles.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <map>
#include <new>

namespace lampblack::files {
namespace {

constexpr SInt16 kFirstNumber = 256, kLastNumber = 32000;
constexpr size_t kMostFiles = 4096;

struct Table {
    std::map<SInt16, OpenFile> files;
    SInt16 last = kFirstNumber - 1;
    bool hasWrapped = false;
};

Table& State()
{
    static auto& table = *new Table; // outlives whoever asks while the process ends
    return table;
}

std::map<SInt16, OpenFile>& OpenFiles()
{
    return State().files;
}

void TellForks()
{
    for (auto& [refNum, file] : OpenFiles())
        if (file.fork)
            file.fork->DidMove(PathOf(file.item));
}

bool IsOf(const OpenFile& inFile, const Item& inItem)
{
    return inFile.item.parent == inItem.parent && inFile.item.hostName == inItem.hostName;
}

} // namespace

SInt16 AddOpenFile(OpenFile inFile)
{
    Table& table = State();
    if (table.files.size() >= kMostFiles)
        return 0;
    do {
        table.hasWrapped |= table.last >= kLastNumber;
        table.last = table.last >= kLastNumber ? kFirstNumber : (SInt16)(table.last + 1);
    } while (table.files.count(table.last));
    inFile.refNum = table.last;
    table.files[table.last] = std::move(inFile);
    return table.last;
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

OSErr ErrorOfNumber(SInt16 inRefNum)
{
    const SInt16 last = State().hasWrapped ? kLastNumber : State().last;
    return inRefNum >= kFirstNumber && inRefNum <= last ? fnOpnErr : rfNumErr;
}

const OpenFile* NthOpenFile(SInt16 inVolume, SInt16 inIndex)
{
    SInt16 index = 0;
    for (const auto& [refNum, file] : OpenFiles())
        if ((inVolume == 0 || file.item.parent.volume == inVolume) && ++index == inIndex)
            return &file;
    return nullptr;
}

SInt64 SizeOf(const OpenFile& inFile)
{
    SInt64 size = inFile.logicalSize;
    if (inFile.fork)
        inFile.fork->GetSize(&size);
    return size;
}

bool IsOpen(const Item& inItem, bool inResourceFork)
{
    return std::any_of(OpenFiles().begin(), OpenFiles().end(), [&](const auto& entry) {
        return entry.second.isResourceFork == inResourceFork && IsOf(entry.second, inItem);
    });
}

const OpenFile* WriterOf(const Item& inItem, bool inResourceFork)
{
    for (const auto& [refNum, file] : OpenFiles())
        if (file.isWritable && file.isResourceFork == inResourceFork && IsOf(file, inItem))
            return &file;
    return nullptr;
}

void ForEachOpenFile(const std::function<void(OpenFile&)>& inDo)
{
    for (auto& [refNum, file] : OpenFiles())
        inDo(file);
}

void OpenFilesMoved(const Item& inFrom, const Item& inTo)
{
    for (auto& [refNum, file] : OpenFiles())
        if (IsOf(file, inFrom))
            file.item = inTo;
    TellForks();
}

void OpenFilesExchanged(const Item& inOne, const Item& inOther)
{
    for (auto& [refNum, file] : OpenFiles()) {
        if (IsOf(file, inOne))
            file.item = inOther;
        else if (IsOf(file, inOther))
            file.item = inOne;
    }
    TellForks();
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
    outBlock->ioFCBEOF = Clamp(SizeOf(inFile));
    outBlock->ioFCBPLen = Clamp((SizeOf(inFile) + kBlock - 1) / kBlock * kBlock);
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
try {
    if (!paramBlock)
        return paramErr;
    const OSErr error = GetFCBInfo(paramBlock);
    paramBlock->ioResult = error;
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}
