// Names: what a name or path in a folder means on the host, and how a host's name looks on the Macintosh.
#include "Catalog.h"
#include "Listing.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <cstdio>

namespace lampblack::files {

using std::filesystem::path;

namespace {

constexpr size_t kLongestName = 31;
constexpr size_t kLongestSuffix = 6; // the dot and five more

// FNV-1a: any hash serves that is the same in every process.
uint32_t HashOf(std::string_view inText)
{
    uint32_t hash = 2166136261u;
    for (const char byte : inText)
        hash = (hash ^ (uint8_t)byte) * 16777619u;
    return hash;
}

// A ':' separates folders here and a '/' on the host: each stands for the other in a name.
std::string SwapSeparators(std::string_view inName)
{
    std::string name(inName);
    for (char& byte : name)
        byte = byte == ':' ? '/' : byte == '/' ? ':' : byte;
    return name;
}

std::string ShortForm(std::string_view inHostName, const std::string& inMacName)
{
    const size_t dot = inMacName.rfind('.');
    const bool hasSuffix = dot != std::string::npos && dot > 0 && inMacName.size() - dot <= kLongestSuffix;
    const std::string suffix = hasSuffix ? inMacName.substr(dot) : std::string();
    char digits[10];
    std::snprintf(digits, sizeof digits, "#%08X", (unsigned)HashOf(inHostName));
    const std::string stem = inMacName.substr(0, hasSuffix ? dot : std::string::npos);
    return stem.substr(0, kLongestName - 9 - suffix.size()) + digits + suffix;
}

bool IsPossibleName(std::string_view inMacName)
{
    return !inMacName.empty() && inMacName.size() <= kLongestName && inMacName != "." && inMacName != ".." &&
           inMacName.find('\0') == std::string_view::npos && inMacName.find(':') == std::string_view::npos;
}

// One name in a folder: the host's own bytes, else the first of those listed that have the name in whatever
// capitals. The item is filled in even when nothing is there.
OSErr LookUp(Folder inFolder, std::string_view inMacName, Item* outItem)
{
    if (!IsPossibleName(inMacName))
        return bdNamErr;
    const Item wanted = { inFolder, HostNameOf(inMacName), std::string(inMacName) };
    *outItem = wanted;
    if (LookAtHost(outItem))
        return noErr;
    const auto listing = ListingOf(PathOf(inFolder));
    for (const ListedName& name : listing->Named(inMacName)) {
        *outItem = { inFolder, std::string(name.hostName), std::string(name.macName) };
        if (LookAtHost(outItem))
            return noErr;
    }
    *outItem = wanted;
    return fnfErr;
}

// The usual case, the exact name of something in a folder that is known: one look at the host.
bool LookUpAtOnce(SInt16 inVolume, SInt32 inDirectory, std::string_view inMacName, Item* outItem)
{
    Folder folder;
    if (!IsPossibleName(inMacName) || FolderMeant(inVolume, inDirectory, &folder) != noErr ||
        !IsFolderID(folder))
        return false;
    *outItem = { folder, HostNameOf(inMacName), std::string(inMacName) };
    return LookAtHost(outItem);
}

OSErr VolumeItem(const Volume* inVolume, Item* outItem)
{
    if (!inVolume)
        return nsvErr;
    *outItem = { { inVolume->refNum, fsRtParID }, "", inVolume->name, true, true };
    return noErr;
}

OSErr FolderItem(Folder inFolder, Item* outItem)
{
    return ItemWithID(inFolder, outItem) && outItem->isFolder ? noErr : dirNFErr;
}

bool EnterFolder(Item* ioItem)
{
    return (!ioItem->isLink || FollowLinks(*ioItem, ioItem)) && ioItem->isFolder;
}

// Walks "name:name::name" from an item on. A ':' before a name or at the end enters the folder, or the one
// that a link leads to; each further one goes up.
OSErr Walk(std::string_view inPath, Item* ioItem)
{
    while (!inPath.empty()) {
        if (!EnterFolder(ioItem))
            return dirNFErr;
        if (inPath.front() == ':') {
            inPath.remove_prefix(1);
            if (ioItem->parent.id == fsRtParID || FolderItem(ioItem->parent, ioItem) != noErr)
                return dirNFErr;
            continue;
        }
        const size_t end = std::min(inPath.find(':'), inPath.size());
        const OSErr error = LookUp(NodeOf(*ioItem), inPath.substr(0, end), ioItem);
        const bool isLast = end + 1 >= inPath.size();
        if (error != noErr)
            return error == fnfErr && !isLast ? (OSErr)dirNFErr : error;
        if (end < inPath.size() && !EnterFolder(ioItem))
            return dirNFErr;
        inPath.remove_prefix(std::min(end + 1, inPath.size()));
    }
    return noErr;
}

} // namespace

OSErr Resolve(SInt16 inVolume, SInt32 inDirectory, ConstStr255Param inName, Item* outItem)
{
    std::string_view name =
        inName ? std::string_view((const char*)inName + 1, inName[0]) : std::string_view();
    const size_t colon = name.find(':');
    if (colon != std::string_view::npos && colon > 0) {
        const OSErr error = VolumeItem(FindVolumeNamed(name.substr(0, colon)), outItem);
        return error != noErr ? error : Walk(name.substr(colon + 1), outItem);
    }
    Folder folder;
    if (LookUpAtOnce(inVolume, inDirectory, name, outItem))
        return noErr;
    OSErr error = ResolveFolder(inVolume, inDirectory, &folder);
    if (error != noErr)
        return error;
    if (folder.id == fsRtParID)
        return name.empty() ? (OSErr)dirNFErr : VolumeItem(FindVolumeNamed(name), outItem);
    error = FolderItem(folder, outItem);
    if (error != noErr || name.empty())
        return error;
    name.remove_prefix(name.front() == ':' ? 1 : 0);
    return Walk(name, outItem);
}

OSErr Resolve(const FSSpec& inSpec, Item* outItem)
{
    // The volume's own FSSpec names it twice; the number counts.
    if (inSpec.parID == fsRtParID)
        return VolumeItem(FindVolume(inSpec.vRefNum), outItem);
    Str255 name;
    const size_t length = std::min<size_t>(inSpec.name[0], sizeof(Str63) - 1);
    foundation::PascalFromMacRoman({ (const char*)inSpec.name + 1, length }, name);
    return Resolve(inSpec.vRefNum, inSpec.parID, name, outItem);
}

std::string MacNameOf(std::string_view inHostName, bool* outIsShort)
{
    std::string name;
    const bool isExact = foundation::MacRomanFromUtf8Exactly(inHostName, &name);
    name = SwapSeparators(name);
    const bool isShort = !isExact || name.size() > kLongestName;
    if (outIsShort)
        *outIsShort = isShort;
    return isShort ? ShortForm(inHostName, name) : name;
}

std::string HostNameOf(std::string_view inMacName)
{
    return foundation::Utf8FromMacRoman(SwapSeparators(inMacName));
}

} // namespace lampblack::files
