// Telling the container forms apart, and the ones of fixed layout. BinHex, which is encoded, is in
// BinHex.cpp.
#include "BinHex.h"

#include <algorithm>
#include <cstring>

namespace lampblack::files {

using foundation::BigEndianReader;
using foundation::BigEndianWriter;
using foundation::Fits;
using foundation::ReadBE16;
using foundation::ReadBE32;
using foundation::ReadBE8;
using foundation::Slice;

namespace {

constexpr uint32_t kAppleSingleMagic = 0x00051600, kAppleDoubleMagic = 0x00051607;
constexpr size_t kMacBinaryHeader = 128;
constexpr size_t kFinderBytes = 32;

// The entries of AppleSingle and AppleDouble that matter here.
enum : uint32_t {
    kDataForkEntry = 1,
    kResourceForkEntry = 2,
    kRealNameEntry = 3,
    kFileDatesEntry = 8,
    kFinderInfoEntry = 9
};

void TakeFinderInfo(Bytes inBytes, Container* ioContainer)
{
    uint8_t padded[kFinderBytes] = {};
    std::copy_n(inBytes.begin(), std::min(inBytes.size(), kFinderBytes), padded);
    ioContainer->hasFinderInfo = inBytes.size() >= kFinderBytes / 2;
    ioContainer->finderInfo = FinderInfoFromBytes(padded);
    ioContainer->extendedFinderInfo = ExtendedInfoFromBytes(padded + 16);
}

// Signed seconds since 1 January 2000; the least number stands for an unknown date.
uint32_t DateFromApple(uint32_t inDate)
{
    constexpr uint32_t kFrom1904To2000 = 3029529600u;
    return inDate == 0x80000000 ? 0 : inDate + kFrom1904To2000;
}

void TakeEntry(uint32_t inKind, Bytes inBytes, Container* ioContainer)
{
    switch (inKind) {
    case kDataForkEntry:
        ioContainer->hasDataFork = true;
        ioContainer->dataFork = inBytes;
        break;
    case kResourceForkEntry:
        ioContainer->hasResourceFork = true;
        ioContainer->resourceFork = inBytes;
        break;
    case kRealNameEntry: ioContainer->name.assign((const char*)inBytes.data(), inBytes.size()); break;
    case kFileDatesEntry:
        if (inBytes.size() >= 8)
            ioContainer->dates = { DateFromApple(ReadBE32(inBytes, 0)), DateFromApple(ReadBE32(inBytes, 4)) };
        break;
    case kFinderInfoEntry: TakeFinderInfo(inBytes, ioContainer); break;
    default: break;
    }
}

bool IsKnownVersion(uint32_t inVersion)
{
    return inVersion == 0x00010000 || inVersion == 0x00020000;
}

// AppleSingle and AppleDouble: a magic number, a version, and a table of entries in any order.
Container ReadApple(Bytes inBytes)
{
    Container container;
    BigEndianReader reader(inBytes);
    container.form = reader.U32() == kAppleSingleMagic ? Form::AppleSingle : Form::AppleDouble;
    const uint32_t version = reader.U32();
    reader.Skip(16); // the home file system, or zeros
    const unsigned count = reader.U16();
    if (!IsKnownVersion(version))
        container.problems.push_back("unknown version of AppleSingle or AppleDouble");
    for (unsigned i = 0; i < count && reader.Ok(); ++i) {
        const uint32_t kind = reader.U32(), offset = reader.U32(), length = reader.U32();
        if (reader.Ok() && Fits(offset, length, inBytes.size()))
            TakeEntry(kind, inBytes.subspan(offset, length), &container);
        else if (reader.Ok())
            container.problems.push_back("entry " + std::to_string(kind) + " runs past the end of the file");
    }
    if (!reader.Ok())
        container.problems.push_back("the table of entries is cut off");
    return container;
}

size_t RoundUp(size_t inSize)
{
    return (inSize + kMacBinaryHeader - 1) & ~(kMacBinaryHeader - 1);
}

struct MacBinaryLayout {
    size_t dataOffset = 0, dataLength = 0;
    size_t resourceOffset = 0, resourceLength = 0;
};

// Where the forks are; false when they do not fit. The last fork need not be padded.
bool LayOut(Bytes inBytes, MacBinaryLayout* outLayout)
{
    outLayout->dataLength = ReadBE32(inBytes, 83);
    outLayout->resourceLength = ReadBE32(inBytes, 87);
    if (outLayout->dataLength > 0x7FFFFFFF || outLayout->resourceLength > 0x7FFFFFFF)
        return false;
    outLayout->dataOffset = kMacBinaryHeader + RoundUp(ReadBE16(inBytes, 120));
    outLayout->resourceOffset = outLayout->dataOffset + RoundUp(outLayout->dataLength);
    const size_t dataEnd = outLayout->dataOffset + outLayout->dataLength;
    const size_t resourceEnd =
        outLayout->resourceLength ? outLayout->resourceOffset + outLayout->resourceLength : 0;
    return std::max(dataEnd, resourceEnd) <= inBytes.size();
}

bool IsPlausibleName(Bytes inBytes)
{
    const size_t length = inBytes[1];
    if (length < 1 || length > 63)
        return false;
    return std::none_of(inBytes.begin() + 2, inBytes.begin() + 2 + (ptrdiff_t)length,
                        [](uint8_t c) { return c == 0; });
}

// Version I has no check sum: everything that later versions put into the header's tail must be zero, and the
// forks must account for the whole file.
bool IsPlausibleVersion1(Bytes inBytes, const MacBinaryLayout& inLayout)
{
    const bool tailIsZero =
        std::all_of(inBytes.begin() + 99, inBytes.begin() + 128, [](uint8_t byte) { return byte == 0; });
    const size_t end = inLayout.resourceOffset + inLayout.resourceLength;
    return tailIsZero && inLayout.dataLength + inLayout.resourceLength > 0 &&
           RoundUp(end) >= inBytes.size() &&
           (inLayout.resourceLength == 0 || IsRawFork(inBytes.subspan(inLayout.resourceOffset)));
}

// The check sum of versions II and III. One of zero, which version I has there, counts only with III's
// signature.
bool HasHeaderSum(Bytes inHeader)
{
    const uint16_t sum = ReadBE16(inHeader, 124);
    const bool isSummed = sum != 0 || ReadBE32(inHeader, 102) == 'mBIN';
    return isSummed && sum == Crc16(inHeader.first(124));
}

Container ReadMacBinary(Bytes inBytes)
{
    Container container;
    container.form = Form::MacBinary;
    MacBinaryLayout layout;
    LayOut(inBytes, &layout);
    container.hasDataFork = container.hasResourceFork = true;
    container.dataFork = Slice(inBytes, layout.dataOffset, layout.dataLength);
    container.resourceFork = Slice(inBytes, layout.resourceOffset, layout.resourceLength);
    container.name.assign((const char*)inBytes.data() + 2, inBytes[1]);
    container.dates = { ReadBE32(inBytes, 91), ReadBE32(inBytes, 95) };

    BigEndianReader reader(inBytes, 65);
    container.hasFinderInfo = true;
    FInfo& info = container.finderInfo;
    info.fdType = reader.U32();
    info.fdCreator = reader.U32();
    info.fdFlags = (UInt16)(ReadBE8(inBytes, 73) << 8 | ReadBE8(inBytes, 101));
    reader.Seek(75);
    info.fdLocation = reader.ReadPoint();
    info.fdFldr = reader.S16();
    container.extendedFinderInfo.fdScript = (SInt8)ReadBE8(inBytes, 106);
    container.extendedFinderInfo.fdXFlags = (SInt8)ReadBE8(inBytes, 107);
    return container;
}

} // namespace

const char* FormName(Form inForm)
{
    constexpr const char* kNames[] = { "none",        "raw fork",  "AppleDouble",
                                       "AppleSingle", "MacBinary", "BinHex 4.0" };
    return kNames[(size_t)inForm];
}

uint16_t Crc16(Bytes inBytes, uint16_t inStart)
{
    uint16_t crc = inStart;
    for (const uint8_t byte : inBytes) {
        crc = (uint16_t)(crc ^ byte << 8);
        for (int bit = 0; bit < 8; ++bit)
            crc = (uint16_t)(crc & 0x8000 ? crc << 1 ^ 0x1021 : crc << 1);
    }
    return crc;
}

bool IsMacBinary(Bytes inBytes)
{
    if (inBytes.size() < kMacBinaryHeader || inBytes[0] != 0 || inBytes[74] != 0 || inBytes[82] != 0)
        return false;
    MacBinaryLayout layout;
    if (!IsPlausibleName(inBytes) || !LayOut(inBytes, &layout))
        return false;
    return HasHeaderSum(inBytes) || IsPlausibleVersion1(inBytes, layout);
}

bool IsRawFork(Bytes inBytes)
{
    const uint32_t dataOffset = ReadBE32(inBytes, 0), mapOffset = ReadBE32(inBytes, 4);
    const uint32_t dataLength = ReadBE32(inBytes, 8), mapLength = ReadBE32(inBytes, 12);
    const Bytes map = Slice(inBytes, mapOffset, mapLength);
    if (map.size() < 30 || mapOffset < 16 || dataOffset < 16 || !Fits(dataOffset, dataLength, inBytes.size()))
        return false;
    const size_t typeList = ReadBE16(map, 24);
    if (typeList < 28 || !Fits(typeList, 2, map.size()))
        return false;
    const size_t typeCount = (uint16_t)(ReadBE16(map, typeList) + 1);
    if (!Fits(typeList + 2, typeCount * 8, map.size()))
        return false;
    size_t references = 0;
    for (size_t i = 0; i < typeCount; ++i) {
        const size_t entry = typeList + 2 + i * 8;
        const size_t count = ReadBE16(map, entry + 4) + 1u;
        references += count;
        if (!Fits(typeList + ReadBE16(map, entry + 6), count * 12, map.size()) ||
            references > map.size() / 12)
            return false;
    }
    return true;
}

Container ReadContainer(Bytes inBytes)
{
    const uint32_t magic = ReadBE32(inBytes, 0), version = ReadBE32(inBytes, 4);
    const bool hasMagic = magic == kAppleSingleMagic || magic == kAppleDoubleMagic;
    // A MacBinary file whose name is five odd characters begins like the others, but has its check sum and
    // cannot have their version.
    const bool isMacBinary =
        IsMacBinary(inBytes) && (!hasMagic || (!IsKnownVersion(version) && HasHeaderSum(inBytes)));
    if (isMacBinary)
        return ReadMacBinary(inBytes);
    if (hasMagic)
        return ReadApple(inBytes);
    Container container;
    if (IsRawFork(inBytes)) {
        container.form = Form::RawFork;
        container.hasResourceFork = true;
        container.resourceFork = inBytes;
        return container;
    }
    if (const size_t start = FindBinHex(inBytes))
        return ReadBinHex(inBytes.subspan(start));
    return container;
}

namespace {

constexpr size_t kFirstLook = 512, kSecondLook = 16384; // the second as far as the introduction of BinHex

// Nobody would take these for a container, whatever follows.
bool IsPlainFront(Bytes inFront, size_t inSize)
{
    const bool mayBeMacBinary = inFront.size() >= kMacBinaryHeader && inFront[0] == 0 && inFront[74] == 0 &&
                                inFront[82] == 0 && IsPlausibleName(inFront);
    const uint32_t dataOffset = ReadBE32(inFront, 0), mapOffset = ReadBE32(inFront, 4);
    const uint32_t dataLength = ReadBE32(inFront, 8), mapLength = ReadBE32(inFront, 12);
    const bool mayBeRawFork = mapLength >= 30 && mapOffset >= 16 && dataOffset >= 16 &&
                              Fits(mapOffset, mapLength, inSize) && Fits(dataOffset, dataLength, inSize);
    return !mayBeMacBinary && !mayBeRawFork;
}

// The table of an AppleSingle or AppleDouble and the small entries lie in front, if it is written as usual.
bool ReadAppleFront(Bytes inFront, size_t inSize, Container* outContainer, FrontParts* outPlaces)
{
    Container container;
    FrontParts places;
    BigEndianReader reader(inFront);
    container.form = reader.U32() == kAppleSingleMagic ? Form::AppleSingle : Form::AppleDouble;
    reader.Skip(20);
    const unsigned count = reader.U16();
    for (unsigned i = 0; i < count && reader.Ok(); ++i) {
        const uint32_t kind = reader.U32(), offset = reader.U32(), length = reader.U32();
        const bool isFork = kind == kDataForkEntry || kind == kResourceForkEntry;
        if (!reader.Ok() || !Fits(offset, length, isFork ? inSize : inFront.size()))
            return false;
        TakeEntry(kind, isFork ? Bytes() : inFront.subspan(offset, length), &container);
        if (isFork)
            (kind == kDataForkEntry ? places.dataFork : places.resourceFork) = { offset, length };
    }
    if (!reader.Ok())
        return false;
    *outContainer = std::move(container);
    *outPlaces = places;
    return true;
}

} // namespace

bool ReadFront(const std::function<Bytes(size_t)>& inFront, size_t inSize, Container* outContainer,
               FrontParts* outPlaces)
{
    const Bytes first = inFront(kFirstLook);
    if (first.size() < std::min(inSize, kFirstLook))
        return false;
    const uint32_t magic = ReadBE32(first, 0);
    if (magic == kAppleSingleMagic || magic == kAppleDoubleMagic)
        return IsKnownVersion(ReadBE32(first, 4)) && ReadAppleFront(first, inSize, outContainer, outPlaces);
    if (!IsPlainFront(first, inSize))
        return false;
    const Bytes second = inFront(kSecondLook);
    if (second.size() < std::min(inSize, kSecondLook) || FindBinHex(second))
        return false;
    *outContainer = {};
    *outPlaces = {};
    return true;
}

FInfo FinderInfoFromBytes(const uint8_t* inSixteen)
{
    BigEndianReader reader(inSixteen, 16);
    FInfo info = {};
    info.fdType = reader.U32();
    info.fdCreator = reader.U32();
    info.fdFlags = reader.U16();
    info.fdLocation = reader.ReadPoint();
    info.fdFldr = reader.S16();
    return info;
}

void FinderInfoToBytes(const FInfo& inInfo, uint8_t* outSixteen)
{
    BigEndianWriter writer;
    writer.U32(inInfo.fdType);
    writer.U32(inInfo.fdCreator);
    writer.U16(inInfo.fdFlags);
    writer.U16((uint16_t)inInfo.fdLocation.v);
    writer.U16((uint16_t)inInfo.fdLocation.h);
    writer.U16((uint16_t)inInfo.fdFldr);
    std::memcpy(outSixteen, writer.Data().data(), 16);
}

FXInfo ExtendedInfoFromBytes(const uint8_t* inSixteen)
{
    BigEndianReader reader(inSixteen, 16);
    FXInfo info = {};
    info.fdIconID = reader.S16();
    for (SInt16& word : info.fdReserved)
        word = reader.S16();
    info.fdScript = reader.S8();
    info.fdXFlags = reader.S8();
    info.fdComment = reader.S16();
    info.fdPutAway = reader.S32();
    return info;
}

void ExtendedInfoToBytes(const FXInfo& inInfo, uint8_t* outSixteen)
{
    BigEndianWriter writer;
    writer.U16((uint16_t)inInfo.fdIconID);
    for (const SInt16 word : inInfo.fdReserved)
        writer.U16((uint16_t)word);
    writer.U8((uint8_t)inInfo.fdScript);
    writer.U8((uint8_t)inInfo.fdXFlags);
    writer.U16((uint16_t)inInfo.fdComment);
    writer.U32((uint32_t)inInfo.fdPutAway);
    std::memcpy(outSixteen, writer.Data().data(), 16);
}

} // namespace lampblack::files
