// Taking alias records apart, and putting them together.
#include "AliasRecord.h"

#include <algorithm>

namespace lampblack::files {

using foundation::BigEndianReader;
using foundation::BigEndianWriter;

namespace {

constexpr size_t kVersion2Size = 150, kVersion3Size = 58;
constexpr size_t kLongestRecord = 0xFFFF;
constexpr size_t kVolumeNameSize = 27, kFileNameSize = 63;

// What follows the fixed part: a tag, a length, and that many bytes and one more when the length is odd.
enum Tag : SInt16 {
    kEnd = -1,
    kParentName = 0,
    kFolderIDs = 1,
    kMacPath = 2,
    kZoneName = 3,
    kServerName = 4,
    kUnicodeName = 14,
    kUnicodeVolumeName = 15,
    kFileBirth = 17,
    kPosixPath = 18,
    kMountPoint = 19
};

// A Pascal string in a field of fixed size.
std::string FixedName(BigEndianReader& ioReader, size_t inSize)
{
    const size_t length = ioReader.U8();
    const Bytes field = ioReader.ReadBytes(inSize);
    return std::string(field.begin(), field.begin() + (ptrdiff_t)std::min(length, field.size()));
}

void WriteFixedName(BigEndianWriter& ioWriter, std::string_view inName, size_t inSize)
{
    inName = inName.substr(0, inSize);
    ioWriter.Pascal(inName);
    ioWriter.Zeros(inSize - inName.size());
}

void ReadVersion2(BigEndianReader& ioReader, AliasContents* outContents)
{
    AliasContents& contents = *outContents;
    contents.isFolder = ioReader.S16() == 1;
    contents.volumeName = FixedName(ioReader, kVolumeNameSize);
    contents.volumeDate = ioReader.U32();
    contents.volumeSignature = ioReader.U16();
    ioReader.Skip(2); // kind of drive
    contents.parentID = ioReader.U32();
    contents.fileName = FixedName(ioReader, kFileNameSize);
    contents.fileID = ioReader.U32();
    contents.fileDate = ioReader.U32();
    contents.fileType = ioReader.U32();
    contents.creator = ioReader.U32();
    contents.levelsFrom = ioReader.S16();
    contents.levelsTo = ioReader.S16();
    ioReader.Skip(4 + 2 + 10); // attributes and kind of the volume, reserved
}

// Dates here are 48 bits of seconds and 16 of a fraction; names are in the entries behind.
void ReadVersion3(BigEndianReader& ioReader, AliasContents* outContents)
{
    AliasContents& contents = *outContents;
    contents.isFolder = ioReader.S16() == 1;
    ioReader.Skip(2);
    contents.volumeDate = ioReader.U32();
    ioReader.Skip(2);
    contents.volumeSignature = ioReader.U16();
    ioReader.Skip(2 + 2); // kind of file system and drive
    contents.parentID = ioReader.U32();
    contents.fileID = ioReader.U32();
    ioReader.Skip(2);
    contents.fileDate = ioReader.U32();
    ioReader.Skip(2);
    ioReader.Skip(4 + 14); // attributes of the volume, reserved
}

std::string TextOf(Bytes inBytes)
{
    return std::string(inBytes.begin(), inBytes.end());
}

// A count of units, then the units.
std::u16string UnicodeOf(Bytes inBytes)
{
    BigEndianReader reader(inBytes);
    std::u16string text;
    for (size_t left = reader.U16(); left > 0 && reader.Remaining() >= 2; --left)
        text += (char16_t)reader.U16();
    return text;
}

std::vector<UInt32> NumbersOf(Bytes inBytes)
{
    BigEndianReader reader(inBytes);
    std::vector<UInt32> numbers;
    while (reader.Remaining() >= 4)
        numbers.push_back(reader.U32());
    return numbers;
}

void TakeEntry(SInt16 inTag, Bytes inData, AliasContents* ioContents)
{
    switch (inTag) {
    case kParentName: ioContents->parentName = TextOf(inData); break;
    case kFolderIDs: ioContents->folderIDs = NumbersOf(inData); break;
    case kMacPath: ioContents->macPath = TextOf(inData); break;
    case kZoneName: ioContents->zoneName = TextOf(inData); break;
    case kServerName: ioContents->serverName = TextOf(inData); break;
    case kUnicodeName: ioContents->unicodeName = UnicodeOf(inData); break;
    case kUnicodeVolumeName: ioContents->unicodeVolumeName = UnicodeOf(inData); break;
    case kFileBirth:
        ioContents->birth = (UInt64)foundation::ReadBE32(inData, 0) << 32 | foundation::ReadBE32(inData, 4);
        break;
    case kPosixPath: ioContents->posixPath = TextOf(inData); break;
    case kMountPoint: ioContents->mountPoint = TextOf(inData); break;
    default: break;
    }
}

void ReadEntries(BigEndianReader& ioReader, AliasContents* ioContents)
{
    while (ioReader.Remaining() >= 4) {
        const SInt16 tag = ioReader.S16();
        const size_t length = ioReader.U16();
        if (tag == kEnd || length > ioReader.Remaining())
            return;
        TakeEntry(tag, ioReader.ReadBytes(length), ioContents);
        ioReader.Skip(std::min<size_t>(length & 1, ioReader.Remaining()));
    }
}

// An entry that leaves no room for the end is left out.
void WriteEntry(BigEndianWriter& ioWriter, Tag inTag, Bytes inData)
{
    constexpr size_t kHead = 4;
    if (inData.empty() || ioWriter.Size() + kHead + inData.size() + 1 + kHead > kLongestRecord)
        return;
    ioWriter.U16((UInt16)inTag);
    ioWriter.U16((UInt16)inData.size());
    ioWriter.Write(inData);
    ioWriter.Zeros(inData.size() & 1);
}

void WriteText(BigEndianWriter& ioWriter, Tag inTag, const std::string& inText)
{
    WriteEntry(ioWriter, inTag, Bytes((const UInt8*)inText.data(), inText.size()));
}

void WriteUnicode(BigEndianWriter& ioWriter, Tag inTag, const std::u16string& inText)
{
    BigEndianWriter data;
    if (!inText.empty() && inText.size() <= 0x7FFF) {
        data.U16((UInt16)inText.size());
        for (const char16_t unit : inText)
            data.U16(unit);
    }
    WriteEntry(ioWriter, inTag, data.Data());
}

void WriteFixedPart(BigEndianWriter& ioWriter, const AliasContents& inContents)
{
    ioWriter.U32(inContents.userType);
    ioWriter.U16(0); // the length, known at the end
    ioWriter.U16(2);
    ioWriter.U16(inContents.isFolder ? 1 : 0);
    WriteFixedName(ioWriter, inContents.volumeName, kVolumeNameSize);
    ioWriter.U32(inContents.volumeDate);
    ioWriter.U16(inContents.volumeSignature);
    ioWriter.U16(0); // a fixed disk
    ioWriter.U32(inContents.parentID);
    WriteFixedName(ioWriter, inContents.fileName, kFileNameSize);
    ioWriter.U32(inContents.fileID);
    ioWriter.U32(inContents.fileDate);
    ioWriter.U32(inContents.fileType);
    ioWriter.U32(inContents.creator);
    ioWriter.U16((UInt16)inContents.levelsFrom);
    ioWriter.U16((UInt16)inContents.levelsTo);
    ioWriter.Zeros(4 + 2 + 10);
}

} // namespace

bool ReadAlias(Bytes inBytes, AliasContents* outContents)
{
    BigEndianReader start(inBytes);
    *outContents = {};
    outContents->userType = start.U32();
    const size_t size = start.U16();
    const UInt16 version = start.U16();
    const size_t least = version == 2 ? kVersion2Size : version == 3 ? kVersion3Size : kLongestRecord + 1;
    if (size < least || size > inBytes.size())
        return false;
    BigEndianReader reader(inBytes.first(size), start.Offset());
    if (version == 2)
        ReadVersion2(reader, outContents);
    else
        ReadVersion3(reader, outContents);
    ReadEntries(reader, outContents);
    return true;
}

std::vector<UInt8> WriteAlias(const AliasContents& inContents)
{
    BigEndianWriter writer;
    WriteFixedPart(writer, inContents);
    WriteText(writer, kParentName, inContents.parentName);
    BigEndianWriter folders;
    for (const UInt32 id : inContents.folderIDs)
        folders.U32(id);
    WriteEntry(writer, kFolderIDs, folders.Data());
    WriteUnicode(writer, kUnicodeName, inContents.unicodeName);
    WriteUnicode(writer, kUnicodeVolumeName, inContents.unicodeVolumeName);
    BigEndianWriter birth;
    birth.U32((UInt32)(inContents.birth >> 32));
    birth.U32((UInt32)inContents.birth);
    WriteEntry(writer, kFileBirth, inContents.birth ? birth.Data() : Bytes());
    WriteText(writer, kPosixPath, inContents.posixPath);
    WriteText(writer, kMountPoint, inContents.mountPoint);
    WriteText(writer, kMacPath, inContents.macPath);
    WriteText(writer, kZoneName, inContents.zoneName);
    WriteText(writer, kServerName, inContents.serverName);
    writer.U16((UInt16)kEnd);
    writer.U16(0);
    foundation::StoreBE16(writer.Data().data() + 4, (UInt16)writer.Size());
    return std::move(writer.Data());
}

} // namespace lampblack::files
