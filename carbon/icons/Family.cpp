#include "icons/Family.h"

#include <algorithm>

namespace lampblack::icons {

static constexpr size_t kHeader = 8; // of the family and of each element: type and size

bool Members::IsEmpty() const
{
    return std::all_of(data.begin(), data.end(), [](const auto& bytes) { return bytes.empty(); });
}

bool ForEachElement(Bytes inFamily, const std::function<bool(OSType, Bytes)>& inVisit)
{
    foundation::BigEndianReader reader(inFamily);
    const OSType type = reader.U32();
    const size_t size = reader.U32();
    if (!reader.Ok() || type != kIconFamilyType || size < kHeader || size > inFamily.size())
        return false;
    while (reader.Offset() + kHeader <= size) {
        const OSType elementType = reader.U32();
        const size_t elementSize = reader.U32();
        if (elementSize < kHeader || elementSize - kHeader > size - reader.Offset())
            return false;
        if (!inVisit(elementType, reader.ReadBytes(elementSize - kHeader)))
            break;
    }
    return true;
}

// Three planes, each in runs: 128 to 255 and a byte is 3 to 130 of it, 0 to 127 stands before 1 to 128 bytes.
static bool UnpackPlane(foundation::BigEndianReader& ioReader, uint8_t* outFirst, size_t inPixels)
{
    for (size_t done = 0; done < inPixels;) {
        const uint8_t code = ioReader.U8();
        const size_t count = code & 0x80 ? (size_t)code - 125 : (size_t)code + 1;
        const Bytes bytes = ioReader.ReadBytes(code & 0x80 ? 1 : count);
        if (bytes.empty() || count > inPixels - done)
            return false;
        for (size_t i = 0; i < count; ++i)
            outFirst[(done + i) * 4] = bytes[code & 0x80 ? 0 : i];
        done += count;
    }
    return true;
}

// Thumbnails begin with four bytes of zeros.
static size_t LeadOf(Kind inKind)
{
    return inKind.Type() == kThumbnail32BitData ? 4 : 0;
}

static std::vector<uint8_t> UnpackDirect(Kind inKind, Bytes inElement)
{
    const size_t lead = LeadOf(inKind);
    foundation::BigEndianReader reader(inElement, std::min(lead, inElement.size()));
    std::vector<uint8_t> plain(inKind.Bytes());
    for (size_t channel = 1; channel <= 3; ++channel)
        if (!UnpackPlane(reader, plain.data() + channel, plain.size() / 4))
            return {};
    return plain;
}

std::vector<uint8_t> UnpackElement(Kind inKind, Bytes inElement)
{
    const bool isPlain = inKind.data != Data::Direct || inElement.size() == inKind.Bytes();
    if (!isPlain)
        return UnpackDirect(inKind, inElement);
    const size_t least = inKind.data == Data::Bits ? inKind.Bytes() / 2 : inKind.Bytes();
    if (inElement.size() < least)
        return {};
    std::vector<uint8_t> plain(inElement.begin(),
                               inElement.begin() + (ptrdiff_t)std::min(inKind.Bytes(), inElement.size()));
    if (inKind.data == Data::Direct)
        for (size_t i = 0; i < plain.size(); i += 4)
            plain[i] = 0;
    return plain;
}

static void PackPlane(const uint8_t* inFirst, size_t inPixels, std::vector<uint8_t>& ioBytes)
{
    const auto at = [inFirst](size_t i) { return inFirst[i * 4]; };
    const auto runFrom = [&](size_t i) {
        size_t end = i + 1;
        while (end < inPixels && end - i < 130 && at(end) == at(i))
            ++end;
        return end - i;
    };
    for (size_t i = 0; i < inPixels;) {
        const size_t run = runFrom(i);
        if (run >= 3) {
            ioBytes.insert(ioBytes.end(), { (uint8_t)(run + 125), at(i) });
            i += run;
            continue;
        }
        size_t end = i;
        while (end < inPixels && end - i < 128 && runFrom(end) < 3)
            ++end;
        ioBytes.push_back((uint8_t)(end - i - 1));
        for (; i < end; ++i)
            ioBytes.push_back(at(i));
    }
}

std::vector<uint8_t> PackElement(Kind inKind, Bytes inPlain)
{
    if (inKind.data != Data::Direct)
        return { inPlain.begin(), inPlain.end() };
    std::vector<uint8_t> bytes(LeadOf(inKind), 0);
    for (size_t channel = 1; channel <= 3; ++channel)
        PackPlane(inPlain.data() + channel, inPlain.size() / 4, bytes);
    return bytes;
}

std::optional<Members> ReadFamily(Bytes inFamily)
{
    Members members;
    const bool isFamily = ForEachElement(inFamily, [&](OSType type, Bytes bytes) {
        if (Kind kind; FindKind(type, &kind))
            members.data[kind.Place()] = UnpackElement(kind, bytes);
        return true;
    });
    return isFamily ? std::optional(std::move(members)) : std::nullopt;
}

static void PutHeader(std::vector<uint8_t>& ioBytes, OSType inType, size_t inSize)
{
    const size_t at = ioBytes.size();
    ioBytes.resize(at + kHeader);
    foundation::StoreBE32(&ioBytes[at], inType);
    foundation::StoreBE32(&ioBytes[at + 4], (uint32_t)inSize);
}

static void PutElement(std::vector<uint8_t>& ioBytes, OSType inType, Bytes inElement)
{
    PutHeader(ioBytes, inType, kHeader + inElement.size());
    ioBytes.insert(ioBytes.end(), inElement.begin(), inElement.end());
}

std::vector<uint8_t> FamilyOf(const Members& inMembers)
{
    std::vector<uint8_t> family;
    PutHeader(family, kIconFamilyType, 0);
    ForEachKind([&](Kind kind) {
        if (!inMembers.At(kind).empty())
            PutElement(family, kind.Type(), PackElement(kind, inMembers.At(kind)));
    });
    foundation::StoreBE32(&family[4], (uint32_t)family.size());
    return family;
}

std::vector<uint8_t> WithElement(Bytes inFamily, OSType inType, Bytes inElement)
{
    std::vector<uint8_t> family;
    PutHeader(family, kIconFamilyType, 0);
    ForEachElement(inFamily, [&](OSType type, Bytes bytes) {
        if (type != inType)
            PutElement(family, type, bytes);
        return true;
    });
    if (!inElement.empty())
        PutElement(family, inType, inElement);
    foundation::StoreBE32(&family[4], (uint32_t)family.size());
    return family;
}

} // namespace lampblack::icons
