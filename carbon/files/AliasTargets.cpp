// What records keep of files, and how those are found again.
#include "AliasTargets.h"

#include "Dates.h"
#include "ItemFacts.h"
#include "UnicodeNames.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <dirent.h>
#include <fcntl.h>

namespace lampblack::files {

using std::filesystem::path;

namespace {

constexpr UInt16 kSignature = 0x482B; // 'H+'

// What tells a host file from all others, now and in another process.
struct Identity {
    UInt32 number = 0; // of the inode, as much of it as a record holds
    UInt64 birth = 0;  // 0: the host does not say
    bool exists = false, isFolder = false;
};

Identity IdentityOf(const path& inPath)
{
    struct statx status = {};
    if (statx(AT_FDCWD, inPath.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS | STATX_BTIME, &status) != 0)
        return {};
    Identity identity = { (UInt32)status.stx_ino, 0, true, S_ISDIR(status.stx_mode) };
    if (status.stx_mask & STATX_BTIME) {
        const UTCDateTime date =
            UTCDateOf({ (time_t)status.stx_btime.tv_sec, (long)status.stx_btime.tv_nsec });
        identity.birth = (UInt64)date.highSeconds << 48 | (UInt64)date.lowSeconds << 16 | date.fraction;
    }
    return identity;
}

std::vector<std::string> Split(std::string_view inText, char inSeparator)
{
    std::vector<std::string> parts;
    while (!inText.empty()) {
        const size_t end = std::min(inText.find(inSeparator), inText.size());
        if (end > 0)
            parts.emplace_back(inText.substr(0, end));
        inText.remove_prefix(std::min(end + 1, inText.size()));
    }
    return parts;
}

std::u16string TextOf(const HFSUniStr255& inName)
{
    return std::u16string(inName.unicode, inName.unicode + inName.length);
}

// The item, then the folders above it, up to the volume and without it.
std::vector<Item> ItemAndFolders(const Item& inItem)
{
    std::vector<Item> items;
    for (Item item = inItem; item.parent.id != fsRtParID;) {
        items.push_back(item);
        Item parent;
        if (!ItemWithID(item.parent, &parent))
            break;
        item = parent;
    }
    return items;
}

std::string MacPathOf(const std::string& inVolume, const std::vector<Item>& inItems)
{
    std::string result = inVolume + (inItems.empty() ? ":" : "");
    for (auto item = inItems.rbegin(); item != inItems.rend(); ++item)
        result += ":" + item->macName;
    return result;
}

std::string PosixPathOf(const std::vector<Item>& inItems)
{
    std::string result = inItems.empty() ? "/" : "";
    for (auto item = inItems.rbegin(); item != inItems.rend(); ++item)
        result += "/" + item->hostName;
    return result;
}

// How many folders two ways from one volume share at its end.
size_t SharedFolders(const std::vector<Item>& inLeft, const std::vector<Item>& inRight)
{
    size_t count = 0;
    const size_t most =
        std::min(inLeft.size(), inRight.size()) - 1; // the items themselves are not folders to share
    while (count < most &&
           inLeft[inLeft.size() - 1 - count].hostName == inRight[inRight.size() - 1 - count].hostName)
        ++count;
    return count;
}

void DescribeLevels(const Item& inFrom, const std::vector<Item>& inTarget, SInt16 inVolume,
                    AliasContents* ioContents)
{
    const std::vector<Item> from = ItemAndFolders(inFrom);
    if (inFrom.parent.volume != inVolume || from.empty() || inTarget.empty())
        return;
    const size_t shared = SharedFolders(from, inTarget);
    ioContents->levelsFrom = (SInt16)std::min<size_t>(from.size() - shared, 0x7FFF);
    ioContents->levelsTo = (SInt16)std::min<size_t>(inTarget.size() - shared, 0x7FFF);
}

void DescribeIdentity(const std::vector<Item>& inItems, AliasContents* ioContents)
{
    const Identity itself = IdentityOf(PathOf(inItems.front()));
    ioContents->fileID = itself.number;
    ioContents->birth = itself.birth;
    for (size_t i = 1; i < inItems.size(); ++i)
        ioContents->folderIDs.push_back(IdentityOf(PathOf(inItems[i])).number);
    if (inItems.size() > 1) {
        ioContents->parentID = ioContents->folderIDs.front();
        ioContents->parentName = inItems[1].macName;
    }
}

void DescribeFinderInfo(const Item& inTarget, AliasContents* ioContents)
{
    ItemFacts facts(inTarget);
    if (facts.Look() != noErr)
        return;
    ioContents->fileDate = LocalDateOf(facts.Created());
    if (inTarget.isFolder)
        return;
    const FInfo info = FinderInfoOf(inTarget);
    ioContents->fileType = info.fdType;
    ioContents->creator = info.fdCreator;
}

// A way down from a folder: names, and the numbers that the files had (0: not kept).
struct Way {
    path start;
    std::vector<std::string> names;
    std::vector<UInt32> numbers;
    UInt64 birth = 0; // of the last
};

// The entry of a folder with a number, and a birth unless that is 0, which only folders on the way may have.
std::string EntryNumbered(const path& inFolder, UInt32 inNumber, UInt64 inBirth, bool inIsLast)
{
    std::string found;
    DIR* folder = inNumber && (inBirth || !inIsLast) ? opendir(inFolder.c_str()) : nullptr;
    while (const dirent* entry = folder && found.empty() ? readdir(folder) : nullptr) {
        const std::string_view name = entry->d_name;
        if ((UInt32)entry->d_ino != inNumber || name == "." || name == "..")
            continue;
        const Identity identity = IdentityOf(inFolder / name);
        if (inIsLast ? identity.birth == inBirth : identity.isFolder)
            found = name;
    }
    if (folder)
        closedir(folder);
    return found;
}

// One step: the name as it is, or the one that the file has now.
bool Step(const path& inFolder, const std::string& inName, UInt32 inNumber, UInt64 inBirth, bool inIsLast,
          bool inNumbersFirst, path* outPath)
{
    *outPath = inFolder / inName;
    const Identity named = IdentityOf(*outPath);
    if (named.exists && (!inNumbersFirst || named.number == inNumber))
        return true;
    const std::string other = EntryNumbered(inFolder, inNumber, inBirth, inIsLast);
    if (!other.empty())
        *outPath = inFolder / other;
    return named.exists || !other.empty();
}

OSErr Follow(const Way& inWay, bool inNumbersFirst, Item* outTarget)
{
    path at = inWay.start;
    *outTarget = {};
    for (size_t i = 0; i < inWay.names.size(); ++i) {
        const bool isLast = i + 1 == inWay.names.size();
        const UInt32 number = i < inWay.numbers.size() ? inWay.numbers[i] : 0;
        path next;
        const bool isThere =
            Step(at, inWay.names[i], number, isLast ? inWay.birth : 0, isLast, inNumbersFirst, &next);
        at = next;
        if (!isThere && !isLast)
            return dirNFErr;
    }
    if (ItemAtPathItself(at, outTarget))
        return noErr;
    return outTarget->hostName == at.filename().native() && !at.filename().empty() ? fnfErr : dirNFErr;
}

// The last numbers of the folders and the file, one for each name.
std::vector<UInt32> NumbersFor(const AliasContents& inContents, size_t inNames)
{
    std::vector<UInt32> numbers(inNames, 0);
    for (size_t i = 0; i < inNames; ++i) {
        const size_t up = inNames - 1 - i;
        if (up == 0)
            numbers[i] = inContents.fileID;
        else if (up - 1 < inContents.folderIDs.size())
            numbers[i] = inContents.folderIDs[up - 1];
    }
    return numbers;
}

bool RelativeWay(const AliasContents& inContents, const Item& inFrom, Way* outWay)
{
    const std::vector<std::string> names = NamesOnTheWay(inContents);
    const size_t down = (size_t)std::max<SInt16>(inContents.levelsTo, 0);
    if (inContents.levelsFrom < 1 || down < 1 || down > names.size())
        return false;
    path start = PathOf(inFrom);
    for (SInt16 up = 0; up < inContents.levelsFrom; ++up) {
        if (start == start.parent_path())
            return false;
        start = start.parent_path();
    }
    *outWay = {
        start, { names.end() - (ptrdiff_t)down, names.end() }, NumbersFor(inContents, down), inContents.birth
    };
    return true;
}

// Where the volume was mounted, or else is now.
path PlaceOfVolume(const AliasContents& inContents)
{
    const path mount = inContents.mountPoint;
    if (mount.is_absolute() && IdentityOf(mount).exists)
        return mount;
    const Volume* volume = FindVolumeNamed(inContents.volumeName);
    return volume ? volume->path : path();
}

// Whether the record is of the volume itself, to which no names lead.
bool IsOfVolume(const AliasContents& inContents)
{
    const std::string& path = inContents.posixPath;
    if (!path.empty())
        return path.find_first_not_of('/') == path.npos;
    return inContents.macPath.find(':') + 1 == inContents.macPath.size() && !inContents.macPath.empty();
}

bool AbsoluteWay(const AliasContents& inContents, Way* outWay)
{
    const std::vector<std::string> names = NamesOnTheWay(inContents);
    const path start = PlaceOfVolume(inContents);
    if (start.empty() || (names.empty() && !IsOfVolume(inContents)))
        return false;
    *outWay = { start, names, NumbersFor(inContents, names.size()), inContents.birth };
    return true;
}

// By short forms and in any capitals, which the host's path does not know.
OSErr FollowMacPath(const AliasContents& inContents, Item* outTarget)
{
    const std::string& path = inContents.macPath;
    const size_t colon = path.find(':');
    if (colon == path.npos || colon == 0 || path.size() > 255)
        return nsvErr;
    Str255 name;
    foundation::PascalFromMacRoman(path, name);
    return Resolve(0, 0, name, outTarget);
}

path Straight(const Way& inWay)
{
    path result = inWay.start;
    for (const std::string& name : inWay.names)
        result /= name;
    return result;
}

bool IsElsewhere(const Way* inRecorded, const Item& inFound)
{
    Item recorded;
    return !inRecorded || !ItemAtPathItself(Straight(*inRecorded), &recorded) ||
           !(NodeOf(recorded) == NodeOf(inFound));
}

} // namespace

AliasContents DescribeMinimally(const Item& inTarget)
{
    AliasContents contents;
    const std::vector<Item> items = ItemAndFolders(inTarget);
    const Volume* volume = FindVolume(inTarget.parent.volume);
    contents.isFolder = inTarget.isFolder;
    contents.volumeName = contents.fileName = volume ? volume->name : "";
    contents.volumeSignature = kSignature;
    contents.posixPath = PosixPathOf(items);
    contents.mountPoint = volume ? volume->path.native() : "/";
    if (!items.empty()) {
        contents.fileName = inTarget.macName;
        DescribeIdentity(items, &contents);
    }
    contents.folderIDs.clear();
    return contents;
}

AliasContents DescribeTarget(const Item* inFrom, const Item& inTarget)
{
    AliasContents contents = DescribeMinimally(inTarget);
    const std::vector<Item> items = ItemAndFolders(inTarget);
    if (!items.empty())
        DescribeIdentity(items, &contents);
    contents.macPath = MacPathOf(contents.volumeName, items);
    contents.unicodeName = TextOf(UnicodeNameOf(inTarget));
    contents.unicodeVolumeName = foundation::Utf16FromUtf8(foundation::Utf8FromMacRoman(contents.volumeName));
    DescribeFinderInfo(inTarget, &contents);
    if (inFrom)
        DescribeLevels(*inFrom, items, inTarget.parent.volume, &contents);
    return contents;
}

std::vector<std::string> NamesOnTheWay(const AliasContents& inContents)
{
    const auto isNone = [](const std::string& name) {
        return name == "." || name == ".." || name.find('\0') != name.npos;
    };
    std::vector<std::string> names = Split(inContents.posixPath, '/');
    if (names.empty()) {
        names = Split(inContents.macPath, ':');
        names.erase(names.begin(), names.begin() + (names.empty() ? 0 : 1));
        for (std::string& name : names)
            name = HostNameOf(name);
    }
    if (names.empty() && inContents.posixPath.empty() && inContents.levelsTo == 1 &&
        !inContents.fileName.empty())
        names.push_back(HostNameOf(inContents.fileName));
    const bool isHostile = std::any_of(names.begin(), names.end(), isNone);
    return isHostile ? std::vector<std::string>() : names;
}

OSErr FindTarget(const AliasContents& inContents, const Item* inFrom, bool inNumbersFirst, Item* outTarget,
                 bool* outIsElsewhere)
{
    Way relative, absolute;
    const bool hasAbsolute = AbsoluteWay(inContents, &absolute);
    const auto tryAll = [&](auto use) {
        if (inFrom && RelativeWay(inContents, *inFrom, &relative))
            use([&](Item* item) { return Follow(relative, inNumbersFirst, item); });
        if (hasAbsolute)
            use([&](Item* item) { return Follow(absolute, inNumbersFirst, item); });
        use([&](Item* item) { return FollowMacPath(inContents, item); });
    };
    // The first that leads there; else the one that leads farthest.
    OSErr error = nsvErr;
    tryAll([&](auto follow) {
        Item item;
        const OSErr result = error == noErr ? (OSErr)nsvErr : follow(&item);
        if (result == noErr || (result == fnfErr && error != noErr && error != fnfErr) ||
            (result == dirNFErr && error == nsvErr)) {
            error = result;
            *outTarget = item;
        }
    });
    if (error == noErr && outIsElsewhere)
        *outIsElsewhere = IsElsewhere(hasAbsolute ? &absolute : nullptr, *outTarget);
    return error;
}

} // namespace lampblack::files
