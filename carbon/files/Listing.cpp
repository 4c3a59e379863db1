// Reading folders of the host, and remembering what was read while it holds.
#include "Listing.h"

#include "Catalog.h"
#include "FileIdentity.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <cstring>
#include <dirent.h>
#include <list>
#include <set>

namespace lampblack::files {

using std::filesystem::path;

namespace {

constexpr size_t kRemembered = 8;
constexpr size_t kLongestName = 31; // of a Macintosh name

bool IsListed(std::string_view inName)
{
    return inName != "." && inName != ".." && !IsPartName(inName);
}

// A name that is the same on the Macintosh.
bool IsPlain(std::string_view inName)
{
    return inName.size() <= kLongestName && std::all_of(inName.begin(), inName.end(), [](char byte) {
               return (UInt8)byte < 0x80 && byte != ':';
           });
}

template <class Visit>
void ForEachEntry(const path& inFolder, Visit inVisit)
{
    DIR* folder = opendir(inFolder.c_str());
    while (const dirent* entry = folder ? readdir(folder) : nullptr)
        if (IsListed(entry->d_name))
            inVisit(*entry);
    if (folder)
        closedir(folder);
}

// Names are ordered as on a volume of the time: by Unicode, small letters for capital ones, accents taken off
// and put behind their letters. So "_" stands before "a", and an accented letter after all words that go on
// with a plain one.
class SortKeys {
public:
    SortKeys()
    {
        for (unsigned byte = 0; byte < 256; ++byte)
            fUnits[byte] = { Folded((UInt8)byte), 0 };
        for (const char16_t accent : kAccents)
            for (const char* letter = kLetters; *letter; ++letter)
                Decompose(*letter, accent);
        RankUnits();
    }

    // At most two bytes for one of the name.
    size_t Make(std::string_view inMacName, char* outKey) const
    {
        char* end = outKey;
        for (const char byte : inMacName) {
            const Ranks& ranks = fRanks[(UInt8)byte];
            *end++ = (char)ranks.letter;
            if (ranks.accent)
                *end++ = (char)ranks.accent;
        }
        return (size_t)(end - outKey);
    }

private:
    struct Units {
        char16_t letter, accent; // 0: none
    };
    struct Ranks {
        UInt8 letter, accent;
    };
    static constexpr const char* kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    static constexpr std::u16string_view kAccents = u"\u0300\u0301\u0302\u0303\u0308\u030A\u0327";

    // In Unicode, small. Of a letter that has a small one in Mac Roman, that one's.
    static char16_t Folded(UInt8 inByte)
    {
        for (unsigned small = 0; small < 256; ++small)
            if (small != inByte && foundation::MacRomanUpper((UInt8)small) == inByte)
                return foundation::MacRomanToUnicode((UInt8)small);
        return foundation::MacRomanToUnicode(inByte);
    }

    void Decompose(char inLetter, char16_t inAccent)
    {
        std::string pair(1, inLetter), composed;
        foundation::AppendUtf8(pair, inAccent);
        if (foundation::MacRomanFromUtf8Exactly(pair, &composed) && composed.size() == 1)
            fUnits[(UInt8)composed[0]] = { Folded((UInt8)inLetter), inAccent };
    }

    // There are fewer than 256 units in all, so that a byte holds a unit's place among them.
    void RankUnits()
    {
        std::set<char16_t> all;
        for (const Units& units : fUnits)
            all.insert({ units.letter, units.accent });
        const auto rank = [&](char16_t unit) { return (UInt8)std::distance(all.begin(), all.find(unit)); };
        for (unsigned byte = 0; byte < 256; ++byte)
            fRanks[byte] = { rank(fUnits[byte].letter), rank(fUnits[byte].accent) };
    }

    Units fUnits[256];
    Ranks fRanks[256];
};

size_t MakeKey(std::string_view inMacName, char* outKey)
{
    static const SortKeys keys;
    return keys.Make(inMacName, outKey);
}

struct Remembered {
    path folder;
    FileIdentity stamp;
    bool isSettled;
    std::shared_ptr<const Listing> listing;
};

// The folder asked for last in front.
std::list<Remembered>& Memory()
{
    static auto& memory = *new std::list<Remembered>;
    return memory;
}

} // namespace

Listing::Listing(const path& inFolder)
{
    ForEachEntry(inFolder, [this](const dirent& entry) { Add(entry.d_name, entry.d_type); });
    std::sort(fNames.begin(), fNames.end(), [](const ListedName& left, const ListedName& right) {
        const int order = left.key.compare(right.key);
        return order != 0 ? order < 0 : left.hostName < right.hostName;
    });
}

// Texts of one folder lie together, a few blocks for all of them.
std::string_view Listing::Keep(std::string_view inText)
{
    constexpr size_t kBlockSize = 16384; // no name is as long
    if (inText.size() > fFree) {
        fBlocks.push_back(std::make_unique_for_overwrite<char[]>(kBlockSize));
        fFree = kBlockSize;
    }
    char* place = fBlocks.back().get() + kBlockSize - fFree;
    fFree -= inText.size();
    std::memcpy(place, inText.data(), inText.size());
    return { place, inText.size() };
}

// Most names are the same here and there.
void Listing::Add(std::string_view inHostName, unsigned char inKind)
{
    ListedName name = { Keep(inHostName), {}, {}, false, inKind };
    name.macName = IsPlain(inHostName) ? name.hostName : Keep(MacNameOf(inHostName, &name.isShort));
    char key[2 * kLongestName];
    name.key = Keep({ key, MakeKey(name.macName, key) });
    fNames.push_back(name);
}

std::span<const ListedName> Listing::Named(std::string_view inMacName) const
{
    char bytes[2 * kLongestName];
    const std::string_view key(bytes, MakeKey(inMacName.substr(0, kLongestName), bytes));
    const auto byKey = [](const auto& left, const auto& right) {
        if constexpr (std::is_same_v<std::decay_t<decltype(left)>, ListedName>)
            return left.key < right;
        else
            return left < right.key;
    };
    const auto [first, last] = std::equal_range(fNames.begin(), fNames.end(), key, byKey);
    return { first, last };
}

std::shared_ptr<const Listing> ListingOf(const path& inFolder)
{
    std::list<Remembered>& memory = Memory();
    const auto found = std::find_if(memory.begin(), memory.end(), [&](const Remembered& one) {
        return one.folder.native() == inFolder.native();
    });
    const FileIdentity stamp = FileIdentity::At(inFolder);
    if (found != memory.end() && stamp.exists && found->isSettled && found->stamp == stamp) {
        memory.splice(memory.begin(), memory, found);
        return found->listing;
    }
    if (found != memory.end())
        memory.erase(found);
    const bool isSettled = stamp.exists && stamp.WouldShowChange();
    auto listing = std::make_shared<const Listing>(inFolder);
    if (stamp.exists)
        memory.push_front({ inFolder, stamp, isSettled, listing });
    if (memory.size() > kRemembered)
        memory.pop_back();
    return listing;
}

size_t CountNamesIn(const path& inFolder)
{
    size_t count = 0;
    ForEachEntry(inFolder, [&](const dirent&) { ++count; });
    return count;
}

bool IsPartName(std::string_view inHostName)
{
    return inHostName.starts_with("._") || inHostName == "__MACOSX" || inHostName == ".AppleDouble";
}

std::vector<std::string> NamesIn(const path& inFolder)
{
    std::vector<std::string> names;
    const auto listing = ListingOf(inFolder);
    for (const ListedName& name : listing->Names())
        names.emplace_back(name.hostName);
    return names;
}

} // namespace lampblack::files
