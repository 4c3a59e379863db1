// Taking the table of an AppleDouble apart and building it anew.
#include "DoubleEntries.h"

#include <algorithm>
#include <cstring>

namespace lampblack::files {

namespace {

using foundation::LoadBE16;
using foundation::LoadBE32;
using foundation::StoreBE16;
using foundation::StoreBE32;

constexpr uint32_t kMagic = 0x00051607, kVersion = 0x00020000;
constexpr size_t kHeader = 26, kDescriptor = 12, kCountPlace = 24;
constexpr size_t kMostEntries = 256; // some fifteen kinds are known

struct Entry {
    uint32_t kind;
    size_t offset;
    Bytes bytes;
};

// The entries, in the order of the table. Empty when the bytes are no AppleDouble, when an entry does not lie
// within them, or when entries overlap so that they would be more than the bytes are.
std::vector<Entry> EntriesOf(Bytes inDouble)
{
    if (inDouble.size() < kHeader || LoadBE32(inDouble.data()) != kMagic)
        return {};
    const size_t count = LoadBE16(inDouble.data() + kCountPlace);
    if (count > kMostEntries || !foundation::Fits(kHeader, count * kDescriptor, inDouble.size()))
        return {};
    std::vector<Entry> entries;
    size_t total = 0;
    for (size_t i = 0; i < count; ++i) {
        const uint8_t* at = inDouble.data() + kHeader + i * kDescriptor;
        const size_t offset = LoadBE32(at + 4), length = LoadBE32(at + 8);
        total += length;
        if (!foundation::Fits(offset, length, inDouble.size()) || total > inDouble.size())
            return {};
        entries.push_back({ LoadBE32(at), offset, inDouble.subspan(offset, length) });
    }
    return entries;
}

// The attributes that some systems keep behind the 32 bytes of Finder information tell places in the whole
// file: total size, start of the data, and of each attribute its offset.
void MoveAttributes(uint8_t* ioFinderInfo, size_t inLength, uint32_t inBy)
{
    constexpr size_t kAttributes = 34, kTotal = 8, kStart = 12, kCount = 34, kFirst = 36, kName = 11;
    uint8_t* at = ioFinderInfo + kAttributes;
    const size_t size = inLength > kAttributes ? inLength - kAttributes : 0;
    if (size < kFirst || std::memcmp(at, "ATTR", 4) != 0)
        return;
    const auto move = [&](size_t place) { StoreBE32(at + place, LoadBE32(at + place) + inBy); };
    move(kTotal);
    move(kStart);
    size_t place = kFirst;
    for (int count = LoadBE16(at + kCount); count > 0 && place + kName <= size; --count) {
        move(place);
        place = (place + kName + at[place + kName - 1] + 3) & ~(size_t)3;
    }
}

int RankOf(const Entry& inEntry)
{
    return inEntry.kind == kFinderInfoEntry ? 0 : inEntry.kind == kResourceForkEntry ? 2 : 1;
}

std::vector<uint8_t> Build(const std::vector<Entry>& inEntries)
{
    std::vector<uint8_t> bytes(kHeader + inEntries.size() * kDescriptor);
    StoreBE32(bytes.data(), kMagic);
    StoreBE32(bytes.data() + 4, kVersion);
    StoreBE16(bytes.data() + kCountPlace, (uint16_t)inEntries.size());
    for (size_t i = 0; i < inEntries.size(); ++i) {
        const Entry& entry = inEntries[i];
        const size_t offset = bytes.size();
        uint8_t* at = bytes.data() + kHeader + i * kDescriptor;
        StoreBE32(at, entry.kind);
        StoreBE32(at + 4, (uint32_t)offset);
        StoreBE32(at + 8, (uint32_t)entry.bytes.size());
        bytes.insert(bytes.end(), entry.bytes.begin(), entry.bytes.end());
        if (entry.kind == kFinderInfoEntry && entry.offset)
            MoveAttributes(bytes.data() + offset, entry.bytes.size(), (uint32_t)(offset - entry.offset));
    }
    return bytes;
}

} // namespace

std::optional<size_t> PlaceOfEntry(Bytes inDouble, uint32_t inKind, size_t inLength)
{
    for (const Entry& entry : EntriesOf(inDouble))
        if (entry.kind == inKind && entry.bytes.size() >= inLength)
            return entry.offset;
    return {};
}

std::vector<uint8_t> WithEntry(Bytes inDouble, uint32_t inKind, Bytes inEntry, const FinderBytes& inIfNew)
{
    std::vector<Entry> entries = EntriesOf(inDouble);
    if (entries.empty())
        entries = { { kFinderInfoEntry, 0, Bytes(inIfNew) }, { kResourceForkEntry, 0, {} } };
    std::erase_if(entries, [&](const Entry& entry) { return entry.kind == inKind; });
    entries.push_back({ inKind, 0, inEntry });
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry& a, const Entry& b) { return RankOf(a) < RankOf(b); });
    return Build(entries);
}

bool IsSoundDouble(Bytes inBytes)
{
    return !EntriesOf(inBytes).empty();
}

} // namespace lampblack::files
