#include "ResourceFonts.h"

#include "BitmapFont.h"
#include "FontFaces.h"
#include "FontFamilyRecord.h"

#include <foundation/MacRoman.h>
#include <resources/ChainChanges.h>
#include <resources/ResourceFile.h>

#include <algorithm>
#include <map>
#include <tuple>

namespace lampblack::quickdraw {

using resources::Bytes;
using resources::kNoEntry;
using resources::ResourceFile;

static constexpr OSType kFontTypes[] = { 'FOND', 'FONT', 'NFNT', 'sfnt' };
static constexpr SInt16 kDefaultSize = 12;
static constexpr int kSizesOfOld = 128, kFamiliesOfOld = 256; // 'FONT' IDs

static bool gOutlinesPreferred = false;

bool OutlinesPreferred()
{
    return gOutlinesPreferred;
}

void PreferOutlines(bool inPrefer)
{
    gOutlinesPreferred = inPrefer;
}

// A resource and the file that has it.
struct FoundResource {
    ResourceFile* file = nullptr;
    uint32_t entry = kNoEntry;
    explicit operator bool() const { return file != nullptr; }
};

// The first that a function finds in the maps from the current file on.
template <class Look>
static FoundResource Search(Look&& inLook)
{
    const resources::ResourceChain& chain = resources::Chain();
    for (size_t i = chain.CurrentIndex(); i < chain.Files().size(); ++i)
        if (const uint32_t entry = inLook(chain.Files()[i]->map); entry != kNoEntry)
            return { chain.Files()[i].get(), entry };
    return {};
}

static FoundResource Find(OSType inType, int inID)
{
    return Search([&](const resources::ResourceMap& map) { return map.Find(inType, (SInt16)inID); });
}

// What its handle holds, which is loaded for that.
static Bytes DataOf(const FoundResource& inFound)
{
    OSErr error = noErr;
    const Handle handle = resources::Chain().HandleOf(inFound.file, inFound.entry, true, &error);
    if (!handle || !*handle)
        return {};
    return { reinterpret_cast<const uint8_t*>(*handle), (size_t)GetHandleSize(handle) };
}

static std::string NameOf(const FoundResource& inFound)
{
    return foundation::Utf8FromMacRoman(inFound.file->map.Info(inFound.entry).name);
}

// Fonts that were read, by the file, type and ID of their resource; null for those that cannot be read.
using FontKey = std::tuple<const ResourceFile*, OSType, SInt16>;
struct ReadFonts {
    std::map<FontKey, std::shared_ptr<FontFace>> outlines;
    std::map<FontKey, std::shared_ptr<const BitmapFont>> bitmaps;
    std::map<FontKey, std::vector<FontAssociation>> families;
};

static ReadFonts& Read()
{
    static auto& read = *new ReadFonts;
    return read;
}

static FontKey KeyOf(const FoundResource& inFound, OSType inType)
{
    return { inFound.file, inType, inFound.file->map.Info(inFound.entry).id };
}

static std::shared_ptr<FontFace> OutlinesIn(const FoundResource& inFound)
{
    const auto [place, isNew] = Read().outlines.try_emplace(KeyOf(inFound, 'sfnt'));
    const Bytes data = isNew ? DataOf(inFound) : Bytes{};
    if (isNew)
        place->second = FontFace::Open(std::vector<uint8_t>(data.begin(), data.end()));
    return place->second;
}

static std::shared_ptr<const BitmapFont> BitmapsIn(const FoundResource& inFound, OSType inType)
{
    const auto [place, isNew] = Read().bitmaps.try_emplace(KeyOf(inFound, inType));
    auto font = isNew ? std::make_shared<BitmapFont>() : nullptr;
    if (font && font->Read(DataOf(inFound)))
        place->second = font;
    return place->second;
}

static const std::vector<FontAssociation>& FamilyIn(const FoundResource& inFound)
{
    const auto [place, isNew] = Read().families.try_emplace(KeyOf(inFound, 'FOND'));
    if (isNew)
        place->second = ReadFontFamily(DataOf(inFound));
    return place->second;
}

static FoundResource FindBitmaps(int inID, OSType* outType)
{
    *outType = 'NFNT';
    if (const FoundResource found = Find('NFNT', inID))
        return found;
    *outType = 'FONT';
    return Find('FONT', inID);
}

static bool Use(const FontAssociation& inOne, Style inFace, StrikeSource* outSource)
{
    OSType type = 'NFNT';
    const FoundResource found = inOne.IsOutline() ? Find('sfnt', inOne.id) : FindBitmaps(inOne.id, &type);
    if (!found)
        return false;
    outSource->made = (Style)(inFace & ~inOne.style & (bold | italic));
    if (inOne.IsOutline()) {
        outSource->owned = OutlinesIn(found);
        outSource->outlines = outSource->owned.get();
        return outSource->outlines != nullptr;
    }
    outSource->bitmaps = BitmapsIn(found, type);
    outSource->bitmapSize = inOne.size;
    return outSource->bitmaps != nullptr;
}

// The sizes of a family of old, of which only the plain style exists, behind those of its 'FOND'. There are
// families whose 'FOND' names fonts that went, while the 'FONT' resources of the family are there.
static void AddFamilyOfOld(SInt16 inFamily, std::vector<FontAssociation>* ioFamily)
{
    const auto hasSome = [](const resources::ResourceMap& map) { return map.At('FONT', 0); };
    if (inFamily < 0 || inFamily >= kFamiliesOfOld || !Search(hasSome))
        return;
    for (int size = 1; size < kSizesOfOld; ++size)
        if (const int id = inFamily * kSizesOfOld + size; Find('FONT', id))
            ioFamily->push_back({ (SInt16)size, normal, (SInt16)id });
}

static std::vector<FontAssociation> AssociationsOf(SInt16 inFamily)
{
    std::vector<FontAssociation> family;
    if (const FoundResource found = Find('FOND', inFamily))
        family = FamilyIn(found);
    AddFamilyOfOld(inFamily, &family);
    return family;
}

bool FindResourceFont(SInt16 inFamily, SInt16 inSize, Style inFace, StrikeSource* outSource)
{
    std::vector<FontAssociation> family = AssociationsOf(inFamily);
    // One that is missing or cannot be read leaves the choice to the others.
    while (const FontAssociation* best = BestAssociation(family, inSize, inFace, gOutlinesPreferred)) {
        *outSource = {};
        outSource->size = inSize;
        outSource->face = inFace;
        if (Use(*best, inFace, outSource))
            return true;
        family.erase(family.begin() + (best - family.data()));
    }
    return false;
}

SInt16 ResourceFamilyNamed(std::string_view inName)
{
    const std::string name = foundation::MacRomanFromUtf8(inName);
    if (name.empty())
        return kNoFamily;
    const auto named = [&](OSType type) {
        return Search([&](const resources::ResourceMap& map) { return map.FindNamed(type, name); });
    };
    if (const FoundResource found = named('FOND'))
        return found.file->map.Info(found.entry).id;
    const FoundResource found = named('FONT');
    const int id = found ? found.file->map.Info(found.entry).id : 1;
    return id % kSizesOfOld == 0 ? (SInt16)((UInt16)id / kSizesOfOld) : kNoFamily;
}

std::string NameOfResourceFamily(SInt16 inNumber)
{
    if (const FoundResource found = Find('FOND', inNumber))
        return NameOf(found);
    if (inNumber < 0 || inNumber >= kFamiliesOfOld)
        return {};
    const FoundResource found = Find('FONT', (SInt16)(inNumber * kSizesOfOld));
    return found ? NameOf(found) : std::string();
}

FontPresence PresenceOfResourceFont(SInt16 inFamily, SInt16 inSize)
{
    StrikeSource source;
    const SInt16 size = inSize > 0 ? inSize : kDefaultSize;
    if (!FindResourceFont(inFamily, size, normal, &source))
        return FontPresence::NoFamily;
    return source.outlines || source.bitmapSize == size ? FontPresence::Real : FontPresence::Scaled;
}

// The files with fonts, from the current one on, and how many resources of each type they have.
using Inventory = std::vector<size_t>;

static Inventory TakeInventory()
{
    Inventory inventory;
    const resources::ResourceChain& chain = resources::Chain();
    for (size_t i = chain.CurrentIndex(); i < chain.Files().size(); ++i) {
        const ResourceFile& file = *chain.Files()[i];
        size_t sum = 0;
        for (const OSType type : kFontTypes)
            sum += file.map.CountOf(type);
        if (sum == 0)
            continue;
        inventory.push_back((size_t)file.refNum);
        inventory.push_back(file.opening);
        for (const OSType type : kFontTypes)
            inventory.push_back(file.map.CountOf(type));
    }
    return inventory;
}

bool ResourceFontsChanged()
{
    static Inventory last;
    static unsigned lastEdits = 0;
    Inventory now = TakeInventory();
    const bool areSame = now == last && (now.empty() || lastEdits == resources::gChainEdits);
    lastEdits = resources::gChainEdits;
    if (areSame)
        return false;
    last = std::move(now);
    Read() = {};
    return true;
}

} // namespace lampblack::quickdraw
