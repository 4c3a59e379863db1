// The table of classic families, and fontconfig for all others. Families of the table are first sought where
// Debian puts them, so that a process whose text is in these never pays for opening fontconfig.
#include "FontFamilies.h"

#include "ResourceFonts.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>
#include <iterator>
#include <map>
#include <strings.h>
#include <unistd.h>
#include <vector>

namespace lampblack::quickdraw {

struct ClassicFamily {
    SInt16 number;
    const char* name;
    const char* standIn;
    int percent = 100; // of the size asked for
    int across = 100;  // percent of the width that the stand-in has by nature
};

// Numbers below 1024 are published ones [IM-I, documented]; the stand-ins are of like metrics. Where a
// stand-in's letters are wider than those that dialogs were laid out for, it is taken smaller or narrower, so
// that texts keep their line breaks and none loses its last words: an English text in the system font is five
// sixths as wide as in the first system font. Monaco is 6, 6 and 7 pixels wide in 9, 10 and 12, as it was.
static constexpr ClassicFamily kClassicFamilies[] = {
    { 0, "Lucida Grande", "DejaVu Sans", 92 },
    { 1, "Geneva", "DejaVu Sans" },
    { 2, "New York", "Liberation Serif", 100, 113 },
    { 3, "Geneva", "DejaVu Sans" },
    { 4, "Monaco", "DejaVu Sans Mono", 100, 103 },
    { 5, "Venice", "Liberation Serif" },
    { 6, "London", "Liberation Serif" },
    { 7, "Athens", "Liberation Serif" },
    { 8, "San Francisco", "DejaVu Sans" },
    { 9, "Toronto", "Liberation Serif" },
    { 11, "Cairo", "DejaVu Sans" },
    { 12, "Los Angeles", "DejaVu Sans" },
    { 16, "Palatino", "Liberation Serif", 100, 113 },
    { 20, "Times", "Liberation Serif" },
    { 21, "Helvetica", "Liberation Sans" },
    { 22, "Courier", "Liberation Mono" },
    { 23, "Symbol", "DejaVu Sans" },
    { 24, "Mobile", "DejaVu Sans" },
    { 0, "Chicago", "DejaVu Sans", 92 },
    { 0, "Charcoal", "DejaVu Sans", 92 },
    { 0, "System Font", "DejaVu Sans", 92 },
    { 1, "Application Font", "DejaVu Sans" },
    { 2001, "Arial", "Liberation Sans" },
    { 2005, "Courier New", "Liberation Mono" },
    { 2010, "Times New Roman", "Liberation Serif" },
};

struct KnownFiles {
    const char* family;
    const char* path;      // before the style
    const char* styles[4]; // plain, bold, italic, both
};

static constexpr KnownFiles kKnownFiles[] = {
    { "DejaVu Sans",
      "/usr/share/fonts/truetype/dejavu/DejaVuSans",
      { ".ttf", "-Bold.ttf", "-Oblique.ttf", "-BoldOblique.ttf" } },
    { "DejaVu Sans Mono",
      "/usr/share/fonts/truetype/dejavu/DejaVuSansMono",
      { ".ttf", "-Bold.ttf", "-Oblique.ttf", "-BoldOblique.ttf" } },
    { "Liberation Serif",
      "/usr/share/fonts/truetype/liberation/LiberationSerif",
      { "-Regular.ttf", "-Bold.ttf", "-Italic.ttf", "-BoldItalic.ttf" } },
    { "Liberation Sans",
      "/usr/share/fonts/truetype/liberation/LiberationSans",
      { "-Regular.ttf", "-Bold.ttf", "-Italic.ttf", "-BoldItalic.ttf" } },
    { "Liberation Mono",
      "/usr/share/fonts/truetype/liberation/LiberationMono",
      { "-Regular.ttf", "-Bold.ttf", "-Italic.ttf", "-BoldItalic.ttf" } },
};

static bool SameName(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && strncasecmp(a.data(), b.data(), a.size()) == 0;
}

static std::string Lowered(std::string_view inName)
{
    std::string name(inName);
    std::transform(name.begin(), name.end(), name.begin(),
                   [](unsigned char c) { return c >= 'A' && c <= 'Z' ? (char)(c + 32) : (char)c; });
    return name;
}

static std::map<std::string, std::string>& Substitutes()
{
    static std::map<std::string, std::string> substitutes;
    return substitutes;
}

void SubstituteFamily(std::string_view inName, std::string_view inInstalledFamily)
{
    Substitutes()[Lowered(inName)] = inInstalledFamily;
}

// Numbers of families that have no published one: from their name, so that they are the same in every
// process.
static constexpr int kFirstNumber = 3000, kNumbers = 13000;

static int HomeNumber(const std::string& inLoweredName)
{
    uint32_t hash = 2166136261u;
    for (const unsigned char c : inLoweredName)
        hash = (hash ^ c) * 16777619u;
    return kFirstNumber + (int)(hash % kNumbers);
}

using Families = std::map<int, std::string>;

static void AddFamily(Families& ioFamilies, const std::string& inName)
{
    int number = HomeNumber(Lowered(inName));
    while (ioFamilies.count(number) && !SameName(ioFamilies[number], inName))
        number = number + 1 < kFirstNumber + kNumbers ? number + 1 : kFirstNumber;
    ioFamilies.emplace(number, inName);
}

static std::vector<std::string> ListFamilies()
{
    std::vector<std::string> names;
    FcPattern* all = FcPatternCreate();
    FcObjectSet* wanted = FcObjectSetBuild(FC_FAMILY, nullptr);
    FcFontSet* fonts = FcFontList(nullptr, all, wanted);
    for (int i = 0; fonts && i < fonts->nfont; ++i) {
        FcChar8* name = nullptr;
        for (int n = 0; FcPatternGetString(fonts->fonts[i], FC_FAMILY, n, &name) == FcResultMatch; ++n)
            names.emplace_back(reinterpret_cast<const char*>(name));
    }
    if (fonts)
        FcFontSetDestroy(fonts);
    FcObjectSetDestroy(wanted);
    FcPatternDestroy(all);
    return names;
}

static const Families& InstalledFamilies()
{
    static const Families families = [] {
        Families found;
        std::vector<std::string> names = ListFamilies();
        std::sort(names.begin(), names.end());
        for (const std::string& name : names)
            if ((int)found.size() < kNumbers / 2)
                AddFamily(found, name);
        return found;
    }();
    return families;
}

SInt16 FamilyNamed(std::string_view inName)
{
    if (const SInt16 brought = ResourceFamilyNamed(inName); brought != kNoFamily)
        return brought;
    for (const ClassicFamily& classic : kClassicFamilies)
        if (SameName(classic.name, inName))
            return SameName(inName, "Geneva") ? (SInt16)3 : classic.number;
    for (const auto& [number, name] : InstalledFamilies())
        if (SameName(name, inName))
            return (SInt16)number;
    return kNoFamily;
}

static const ClassicFamily* ClassicNumbered(SInt16 inNumber)
{
    const auto* found = std::find_if(std::begin(kClassicFamilies), std::end(kClassicFamilies),
                                     [=](const ClassicFamily& f) { return f.number == inNumber; });
    return found == std::end(kClassicFamilies) ? nullptr : found;
}

std::string NameOfFamily(SInt16 inNumber)
{
    std::string brought = NameOfResourceFamily(inNumber);
    if (!brought.empty())
        return brought;
    if (const ClassicFamily* classic = ClassicNumbered(inNumber))
        return classic->name;
    if (inNumber < kFirstNumber)
        return {};
    const auto found = InstalledFamilies().find(inNumber);
    return found == InstalledFamilies().end() ? std::string() : found->second;
}

std::string InstalledFamily(SInt16 inNumber)
{
    const ClassicFamily* classic = ClassicNumbered(inNumber);
    const std::string name = classic ? classic->name : NameOfFamily(inNumber);
    const auto substitute = Substitutes().find(Lowered(name));
    if (substitute != Substitutes().end())
        return substitute->second;
    if (classic)
        return classic->standIn;
    return name.empty() ? kClassicFamilies[0].standIn : name;
}

// Below this the pixels are too few for smaller letters to be legible.
static constexpr int kSmallestScaled = 9;

SInt16 SizeOfStandIn(SInt16 inFamily, SInt16 inSize)
{
    const ClassicFamily* classic = ClassicNumbered(inFamily);
    if (!classic || Substitutes().count(Lowered(classic->name)))
        return inSize;
    const int size = (inSize * classic->percent + 50) / 100;
    return (SInt16)std::max(size, std::min<int>(inSize, kSmallestScaled));
}

int StretchOfStandIn(SInt16 inFamily)
{
    const ClassicFamily* classic = ClassicNumbered(inFamily);
    const bool isItself = !classic || Substitutes().count(Lowered(classic->name));
    return isItself ? kUnstretched : kUnstretched * classic->across / 100;
}

static FaceFile Describe(FcPattern* inMatch, bool inBold, bool inItalic)
{
    FaceFile file;
    FcChar8* path = nullptr;
    int weight = FC_WEIGHT_REGULAR, slant = FC_SLANT_ROMAN;
    if (!inMatch || FcPatternGetString(inMatch, FC_FILE, 0, &path) != FcResultMatch)
        return file;
    file.path = reinterpret_cast<const char*>(path);
    FcPatternGetInteger(inMatch, FC_INDEX, 0, &file.index);
    FcPatternGetInteger(inMatch, FC_WEIGHT, 0, &weight);
    FcPatternGetInteger(inMatch, FC_SLANT, 0, &slant);
    file.hasBold = inBold && weight >= FC_WEIGHT_DEMIBOLD;
    file.hasItalic = inItalic && slant != FC_SLANT_ROMAN;
    return file;
}

static FaceFile Match(FcPattern* inWanted, bool inBold, bool inItalic)
{
    FcPatternAddInteger(inWanted, FC_WEIGHT, inBold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
    FcPatternAddInteger(inWanted, FC_SLANT, inItalic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(inWanted, FC_SCALABLE, FcTrue);
    FcConfigSubstitute(nullptr, inWanted, FcMatchPattern);
    FcDefaultSubstitute(inWanted);
    FcResult result;
    FcPattern* match = FcFontMatch(nullptr, inWanted, &result);
    const FaceFile file = Describe(match, inBold, inItalic);
    if (match)
        FcPatternDestroy(match);
    FcPatternDestroy(inWanted);
    return file;
}

static FaceFile KnownFile(const std::string& inFamily, bool inBold, bool inItalic)
{
    for (const KnownFiles& known : kKnownFiles) {
        if (!SameName(known.family, inFamily))
            continue;
        const std::string path =
            std::string(known.path) + known.styles[(inBold ? 1 : 0) + (inItalic ? 2 : 0)];
        if (access(path.c_str(), R_OK) == 0)
            return { path, 0, inBold, inItalic };
    }
    return {};
}

FaceFile FileOfFace(SInt16 inFamily, bool inBold, bool inItalic)
{
    const std::string family = InstalledFamily(inFamily);
    const FaceFile known = KnownFile(family, inBold, inItalic);
    if (!known.path.empty())
        return known;
    FcPattern* wanted = FcPatternCreate();
    FcPatternAddString(wanted, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    return Match(wanted, inBold, inItalic);
}

FaceFile FileWithCharacter(char32_t inCharacter, bool inBold, bool inItalic)
{
    FcCharSet* characters = FcCharSetCreate();
    FcCharSetAddChar(characters, inCharacter);
    FcPattern* wanted = FcPatternCreate();
    FcPatternAddCharSet(wanted, FC_CHARSET, characters);
    FcCharSetDestroy(characters);
    return Match(wanted, inBold, inItalic);
}

} // namespace lampblack::quickdraw
