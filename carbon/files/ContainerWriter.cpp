// The forms of fixed layout. BinHex, which is encoded, is in BinHexWriter.cpp.
#include "ContainerWriter.h"

#include <algorithm>

namespace lampblack::files {

using foundation::BigEndianWriter;

namespace {

constexpr uint32_t kAppleSingleMagic = 0x00051600, kAppleDoubleMagic = 0x00051607, kVersion2 = 0x00020000;
constexpr uint32_t kDataFork = 1, kResourceFork = 2, kRealName = 3, kFileDates = 8, kFinderInfo = 9;
constexpr uint32_t kFinderInfoSize = 32;
constexpr size_t kHeaderSize = 26, kEntrySize = 12;
constexpr uint32_t kFrom1904To2000 = 3029529600u;
constexpr uint32_t kUnknownDate = 0x80000000;
constexpr size_t kMacBinaryBlock = 128;
constexpr size_t kLongestName = 63;

struct Entry {
    uint32_t kind;
    Bytes bytes;
};

void PutFinderInfo(const FInfo& inInfo, const FXInfo& inExtended, uint8_t* outThirtyTwo)
{
    FinderInfoToBytes(inInfo, outThirtyTwo);
    ExtendedInfoToBytes(inExtended, outThirtyTwo + 16);
}

void PutHeader(uint32_t inMagic, const std::vector<Entry>& inEntries, BigEndianWriter* ioWriter)
{
    ioWriter->U32(inMagic);
    ioWriter->U32(kVersion2);
    ioWriter->Zeros(16);
    ioWriter->U16((uint16_t)inEntries.size());
    size_t offset = kHeaderSize + inEntries.size() * kEntrySize;
    for (const Entry& entry : inEntries) {
        ioWriter->U32(entry.kind);
        ioWriter->U32((uint32_t)offset);
        ioWriter->U32((uint32_t)entry.bytes.size());
        offset += entry.bytes.size();
    }
}

uint32_t AppleSingleDate(uint32_t inDate)
{
    return inDate ? inDate - kFrom1904To2000 : kUnknownDate;
}

std::vector<uint8_t> DatesEntry(const FileDates& inDates)
{
    BigEndianWriter writer;
    writer.U32(AppleSingleDate(inDates.created));
    writer.U32(AppleSingleDate(inDates.modified));
    writer.U32(kUnknownDate); // of the backup
    writer.U32(kUnknownDate); // of the last access
    return std::move(writer.Data());
}

void PadBlock(BigEndianWriter* ioWriter)
{
    ioWriter->Zeros((kMacBinaryBlock - ioWriter->Size() % kMacBinaryBlock) % kMacBinaryBlock);
}

std::string NameFor(const FileParts& inParts)
{
    std::string name = inParts.name.substr(0, kLongestName);
    std::replace(name.begin(), name.end(), '\0', '_');
    return name.empty() ? "untitled" : name;
}

void PutFinderFields(const FInfo& inInfo, BigEndianWriter* ioWriter)
{
    ioWriter->U32(inInfo.fdType);
    ioWriter->U32(inInfo.fdCreator);
    ioWriter->U8((uint8_t)(inInfo.fdFlags >> 8));
    ioWriter->U8(0);
    ioWriter->U16((uint16_t)inInfo.fdLocation.v);
    ioWriter->U16((uint16_t)inInfo.fdLocation.h);
    ioWriter->U16((uint16_t)inInfo.fdFldr);
}

} // namespace

std::array<uint8_t, kAppleDoubleHeader> AppleDoubleHeader(const FInfo& inInfo, const FXInfo& inExtended,
                                                          uint32_t inForkLength)
{
    BigEndianWriter writer;
    writer.U32(kAppleDoubleMagic);
    writer.U32(kVersion2);
    writer.Zeros(16);
    writer.U16(2);
    const uint32_t finderInfo = kHeaderSize + 2 * kEntrySize;
    for (const uint32_t field : { kFinderInfo, finderInfo, kFinderInfoSize, kResourceFork,
                                  finderInfo + kFinderInfoSize, inForkLength })
        writer.U32(field);
    std::array<uint8_t, kAppleDoubleHeader> header = {};
    std::copy(writer.Data().begin(), writer.Data().end(), header.begin());
    PutFinderInfo(inInfo, inExtended, header.data() + finderInfo);
    return header;
}

std::vector<uint8_t> WriteAppleDouble(const FileParts& inParts)
{
    const auto header = AppleDoubleHeader(inParts.finderInfo, inParts.extendedFinderInfo,
                                          (uint32_t)inParts.resourceFork.size());
    std::vector<uint8_t> bytes(header.size() + inParts.resourceFork.size());
    std::copy(header.begin(), header.end(), bytes.begin());
    std::copy(inParts.resourceFork.begin(), inParts.resourceFork.end(),
              bytes.begin() + (ptrdiff_t)header.size());
    return bytes;
}

std::vector<uint8_t> WriteAppleSingle(const FileParts& inParts)
{
    const std::string name = NameFor(inParts);
    const std::vector<uint8_t> dates = DatesEntry(inParts.dates);
    uint8_t finderInfo[kFinderInfoSize];
    PutFinderInfo(inParts.finderInfo, inParts.extendedFinderInfo, finderInfo);
    std::vector<Entry> entries = { { kRealName, { (const uint8_t*)name.data(), name.size() } } };
    if (inParts.dates.created || inParts.dates.modified)
        entries.push_back({ kFileDates, dates });
    entries.push_back({ kFinderInfo, finderInfo });
    entries.push_back({ kResourceFork, inParts.resourceFork });
    entries.push_back({ kDataFork, inParts.dataFork });
    BigEndianWriter writer;
    PutHeader(kAppleSingleMagic, entries, &writer);
    for (const Entry& entry : entries)
        writer.Write(entry.bytes);
    return std::move(writer.Data());
}

std::vector<uint8_t> WriteMacBinary(const FileParts& inParts)
{
    const std::string name = NameFor(inParts);
    BigEndianWriter writer;
    writer.U8(0);
    writer.Pascal(name);
    writer.Zeros(kLongestName - name.size());
    PutFinderFields(inParts.finderInfo, &writer);
    writer.Zeros(2); // protected, a zero
    writer.U32((uint32_t)inParts.dataFork.size());
    writer.U32((uint32_t)inParts.resourceFork.size());
    writer.U32(inParts.dates.created);
    writer.U32(inParts.dates.modified);
    writer.Zeros(2); // length of a comment
    writer.U8((uint8_t)inParts.finderInfo.fdFlags);
    writer.U32('mBIN');
    writer.U8((uint8_t)inParts.extendedFinderInfo.fdScript);
    writer.U8((uint8_t)inParts.extendedFinderInfo.fdXFlags);
    writer.Zeros(14); // up to the length of a second header, which there is none of
    writer.U8(130);   // version III wrote this
    writer.U8(129);   // version II can read it
    writer.U16(Crc16(writer.Data()));
    PadBlock(&writer);
    writer.Write(inParts.dataFork);
    PadBlock(&writer);
    writer.Write(inParts.resourceFork);
    PadBlock(&writer);
    return std::move(writer.Data());
}

} // namespace lampblack::files
