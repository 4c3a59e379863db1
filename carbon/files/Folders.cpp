// FindFolder: where the host keeps what the Macintosh had folders of the system for.
#include <Carbon/Folders.h>

#include "Catalog.h"
#include "Durable.h"
#include "FileReferences.h"

#include <Host.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <new>
#include <sys/stat.h>

using namespace lampblack;
using namespace lampblack::files;

namespace {

using std::filesystem::path;

enum class Base {
    Config,
    Data,
    Cache,
    State,
    Home,
    Temporary,
    Desktop,
    Documents,
    Music,
    Pictures,
    Movies,
    Public
};

// Where a folder of the user lies, and the machine's own (null: there is none, the user's serves).
struct Place {
    OSType type;
    Base base;
    const char* below;  // of the base; empty: the base itself
    const char* local;  // kLocalDomain, kNetworkDomain
    const char* system; // kSystemDomain
};

constexpr Place kPlaces[] = {
    { kPreferencesFolderType, Base::Config, "Preferences", "/etc", "/etc" },
    { kSystemPreferencesFolderType, Base::Config, "Preferences", "/etc", "/etc" },
    { kApplicationSupportFolderType, Base::Data, "Application Support", "/usr/local/share", "/usr/share" },
    { kSystemFolderType, Base::Data, "", "/usr/local", "/usr" },
    { kDomainTopLevelFolderType, Base::Home, "", "/usr/local", "/usr" },
    { kDomainLibraryFolderType, Base::Data, "", "/usr/local/share", "/usr/share" },
    { kDesktopFolderType, Base::Desktop, "", nullptr, nullptr },
    { kSystemDesktopFolderType, Base::Desktop, "", nullptr, nullptr },
    { kTrashFolderType, Base::Data, "Trash/files", nullptr, nullptr },
    { kSystemTrashFolderType, Base::Data, "Trash/files", nullptr, nullptr },
    { kWhereToEmptyTrashFolderType, Base::Data, "Trash/files", nullptr, nullptr },
    { kStartupFolderType, Base::Config, "autostart", "/etc/xdg/autostart", "/etc/xdg/autostart" },
    { kFontsFolderType, Base::Data, "fonts", "/usr/local/share/fonts", "/usr/share/fonts" },
    { kTemporaryFolderType, Base::Temporary, "", nullptr, nullptr },
    { kChewableItemsFolderType, Base::Temporary, "", nullptr, nullptr },
    { kCachedDataFolderType, Base::Cache, "", "/var/cache", "/var/cache" },
    { kLogsFolderType, Base::State, "Logs", "/var/log", "/var/log" },
    { kApplicationsFolderType, Base::Data, "applications", "/usr/local/share/applications",
      "/usr/share/applications" },
    { kDocumentsFolderType, Base::Documents, "", nullptr, nullptr },
    { kMusicDocumentsFolderType, Base::Music, "", nullptr, nullptr },
    { kPictureDocumentsFolderType, Base::Pictures, "", nullptr, nullptr },
    { kMovieDocumentsFolderType, Base::Movies, "", nullptr, nullptr },
    { kPublicFolderType, Base::Public, "", nullptr, nullptr },
    { kSharedUserDataFolderType, Base::Public, "", nullptr, nullptr },
    { kCurrentUserFolderType, Base::Home, "", nullptr, nullptr },
    { kUsersFolderType, Base::Home, "..", nullptr, nullptr },
};

const path& Home()
{
    return host::CurrentSettings().home;
}

// A folder that the environment names; one that is not absolute does not count (XDG Base Directory 0.8).
path FromEnvironment(const char* inVariable, const char* inBelowHome)
{
    const char* value = getenv(inVariable);
    return value && *value == '/' ? path(value) : Home() / inBelowHome;
}

// A line XDG_MUSIC_DIR="$HOME/Music" of user-dirs.dirs; empty when there is none, or it names the home
// itself, which means that there is no such folder.
path FromUserFolders(std::string_view inKey)
{
    std::ifstream file(FromEnvironment("XDG_CONFIG_HOME", ".config") / "user-dirs.dirs");
    const std::string start = "XDG_" + std::string(inKey) + "_DIR=\"";
    constexpr std::string_view kHome = "$HOME";
    path found;
    for (std::string line; std::getline(file, line);) {
        if (!line.starts_with(start) || line.back() != '"' || line.size() <= start.size())
            continue;
        const std::string value = line.substr(start.size(), line.size() - start.size() - 1);
        if (value.starts_with("$HOME/"))
            found = Home() / value.substr(kHome.size() + 1);
        else if (value.starts_with('/'))
            found = value;
    }
    return found == Home() || found == Home() / "" ? path() : found;
}

path UserFolder(std::string_view inKey, const char* inBelowHome)
{
    const path folder = FromUserFolders(inKey);
    return folder.empty() ? Home() / inBelowHome : folder;
}

path TemporaryFolder()
{
    std::error_code error;
    const path folder = std::filesystem::temp_directory_path(error);
    return error ? path("/tmp") : folder;
}

path PathOfBase(Base inBase)
{
    switch (inBase) {
    case Base::Config: return FromEnvironment("XDG_CONFIG_HOME", ".config");
    case Base::Data: return FromEnvironment("XDG_DATA_HOME", ".local/share");
    case Base::Cache: return FromEnvironment("XDG_CACHE_HOME", ".cache");
    case Base::State: return FromEnvironment("XDG_STATE_HOME", ".local/state");
    case Base::Temporary: return TemporaryFolder();
    case Base::Desktop: return UserFolder("DESKTOP", "Desktop");
    case Base::Documents: return UserFolder("DOCUMENTS", "Documents");
    case Base::Music: return UserFolder("MUSIC", "Music");
    case Base::Pictures: return UserFolder("PICTURES", "Pictures");
    case Base::Movies: return UserFolder("VIDEOS", "Videos");
    case Base::Public: return UserFolder("PUBLICSHARE", "Public");
    case Base::Home: break;
    }
    return Home();
}

path PathIn(const Place& inPlace, SInt16 inDomain)
{
    const bool isLocal = inDomain == kLocalDomain || inDomain == kNetworkDomain;
    const char* shared = isLocal ? inPlace.local : inDomain == kSystemDomain ? inPlace.system : nullptr;
    if (shared)
        return shared;
    const path base = PathOfBase(inPlace.base);
    return *inPlace.below ? base / inPlace.below : base;
}

bool IsFolder(const path& inPath)
{
    struct stat status;
    return stat(inPath.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

// Makes a folder and those above it that are missing, for the user alone as the desktop's rules ask for.
OSErr MakeFolders(const path& inPath)
{
    if (IsFolder(inPath))
        return noErr;
    if (inPath.has_relative_path() && inPath != inPath.parent_path()) {
        const OSErr error = MakeFolders(inPath.parent_path());
        if (error != noErr)
            return error;
    }
    if (mkdir(inPath.c_str(), 0700) == 0)
        return FlushFolder(inPath.parent_path());
    const int error = errno;
    return error == EEXIST && IsFolder(inPath) ? (OSErr)noErr : ErrorOfHost(error);
}

// A link to nowhere, or a file, is in the way of the folder.
OSErr FolderAt(const path& inPath, bool inCreates, Item* outItem)
{
    struct stat status;
    const bool isThere = lstat(inPath.c_str(), &status) == 0;
    if (isThere && !IsFolder(inPath))
        return dupFNErr;
    if (!isThere && !inCreates)
        return fnfErr;
    const OSErr error = isThere ? (OSErr)noErr : MakeFolders(inPath);
    if (error != noErr)
        return error;
    return ItemAtPath(inPath, outItem) && outItem->isFolder ? noErr : fnfErr;
}

bool IsDomain(SInt16 inVolume)
{
    return inVolume >= kOnSystemDisk && inVolume <= kClassicDomain;
}

OSErr VolumeRoot(SInt16 inVolume, Item* outItem)
{
    const Volume* volume = FindVolume(IsDomain(inVolume) ? (SInt16)0 : inVolume);
    return volume && ItemWithID({ volume->refNum, fsRtDirID }, outItem) ? noErr : nsvErr;
}

OSErr Find(SInt16 inVolume, OSType inType, bool inCreates, Item* outItem)
{
    if (!IsDomain(inVolume) && !FindVolume(inVolume))
        return nsvErr;
    if (inType == kVolumeRootFolderType)
        return VolumeRoot(inVolume, outItem);
    const auto isIt = [&](const Place& place) { return place.type == inType; };
    const Place* place = std::find_if(std::begin(kPlaces), std::end(kPlaces), isIt);
    if (place == std::end(kPlaces))
        return fnfErr;
    return FolderAt(PathIn(*place, inVolume), inCreates, outItem);
}

} // namespace

OSErr FindFolder(SInt16 vRefNum, OSType folderType, Boolean createFolder, SInt16* foundVRefNum,
                 SInt32* foundDirID)
try {
    if (!foundVRefNum || !foundDirID)
        return paramErr;
    *foundVRefNum = 0;
    *foundDirID = 0;
    Item item;
    const OSErr error = Find(vRefNum, folderType, createFolder, &item);
    if (error != noErr)
        return error;
    const Folder folder = NodeOf(item);
    *foundVRefNum = folder.volume;
    *foundDirID = folder.id;
    return noErr;
} catch (const std::bad_alloc&) {
    return memFullErr;
}

OSErr FSFindFolder(SInt16 vRefNum, OSType folderType, Boolean createFolder, FSRef* foundRef)
try {
    if (!foundRef)
        return paramErr;
    Item item;
    const OSErr error = Find(vRefNum, folderType, createFolder, &item);
    if (error == noErr)
        MakeRef(item, foundRef);
    return error;
} catch (const std::bad_alloc&) {
    return memFullErr;
}
