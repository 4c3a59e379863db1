// FindFolder: where the user's folders are, made when asked for, and what is in their way.
#include "CatalogFixture.h"

#include <Carbon/Folders.h>
#include <Host.h>
#include <cstdlib>
#include <sys/stat.h>

using namespace lampblack;
using namespace lampblack::files;

namespace {

// The desktop's variables for one test, taken back at its end.
struct Environment {
    CatalogFolder home;

    Environment()
    {
        Set("XDG_CONFIG_HOME", home.Path() / "config");
        Set("XDG_DATA_HOME", home.Path() / "data");
        Set("XDG_CACHE_HOME", home.Path() / "cache");
        Set("XDG_STATE_HOME", home.Path() / "state");
    }
    ~Environment()
    {
        for (const char* name : { "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME" })
            unsetenv(name);
    }
    static void Set(const char* inName, const std::filesystem::path& inPath)
    {
        setenv(inName, inPath.c_str(), 1);
    }
};

OSErr Find(SInt16 inDomain, OSType inType, bool inCreates, std::filesystem::path* outPath = nullptr)
{
    Folder folder;
    const OSErr error = FindFolder(inDomain, inType, inCreates, &folder.volume, &folder.id);
    if (outPath)
        *outPath = PathOf(folder);
    return error;
}

} // namespace

TEST_CASE("FindFolder: Preferences is made when asked for, for the user alone, and found from then on")
{
    Environment environment;
    std::filesystem::path path;
    CHECK(Find(kOnAppropriateDisk, kPreferencesFolderType, kDontCreateFolder) == fnfErr);
    CHECK_FALSE(std::filesystem::exists(environment.home.Path() / "config"));
    CHECK(Find(kOnAppropriateDisk, kPreferencesFolderType, kCreateFolder, &path) == noErr);
    CHECK(path == environment.home.Path() / "config/Preferences");
    struct stat status;
    REQUIRE(stat(path.c_str(), &status) == 0);
    CHECK((status.st_mode & 0777) == 0700);
    CHECK(Find(kUserDomain, kPreferencesFolderType, kDontCreateFolder, &path) == noErr);
    CHECK(Find(kOnSystemDisk, kPreferencesFolderType, kDontCreateFolder) == noErr);
    CHECK(Find(-1, kPreferencesFolderType, kDontCreateFolder) == noErr); // a volume stands for its user
    CHECK(Find(0, kPreferencesFolderType, kDontCreateFolder) == noErr);
    SInt16 volume;
    SInt32 directory;
    FSSpec spec;
    REQUIRE(FindFolder(kUserDomain, kPreferencesFolderType, true, &volume, &directory) == noErr);
    CHECK(FSMakeFSSpec(volume, directory, PascalText("New prefs"), &spec) == fnfErr);
}

TEST_CASE("FindFolder: without a variable of the desktop, or with one that is not absolute, the home counts")
{
    Environment environment;
    std::filesystem::path path;
    unsetenv("XDG_CONFIG_HOME");
    const OSErr error = Find(kUserDomain, kPreferencesFolderType, kDontCreateFolder, &path);
    if (error == noErr)
        CHECK(path == std::filesystem::canonical(host::CurrentSettings().home / ".config/Preferences"));
    else
        CHECK(error == fnfErr);
    Environment::Set("XDG_CONFIG_HOME", "relative");
    CHECK(Find(kUserDomain, kPreferencesFolderType, kDontCreateFolder) == error);
    CHECK(Find(kUserDomain, kCurrentUserFolderType, kDontCreateFolder, &path) == noErr);
    CHECK(path == std::filesystem::canonical(host::CurrentSettings().home));
}

TEST_CASE("FindFolder: folders of the user that the desktop names elsewhere")
{
    Environment environment;
    const auto music = environment.home.MakeFolder("Other/Music");
    environment.home.Write("config/user-dirs.dirs", "# made by hand\n"
                                                    "XDG_MUSIC_DIR=\"" +
                                                        music.string() +
                                                        "\"\n"
                                                        "XDG_VIDEOS_DIR=\"$HOME/Missing Videos\"\n"
                                                        "XDG_PICTURES_DIR=\"\n"
                                                        "XDG_DOCUMENTS_DIR=\"relative\"\n");
    std::filesystem::path path;
    CHECK(Find(kUserDomain, kMusicDocumentsFolderType, kDontCreateFolder, &path) == noErr);
    CHECK(path == music);
    CHECK(Find(kUserDomain, kMovieDocumentsFolderType, kDontCreateFolder) == fnfErr);
}

TEST_CASE("FindFolder: each type of the user's, made in its place")
{
    Environment environment;
    const auto& home = environment.home.Path();
    const std::pair<OSType, const char*> places[] = {
        { kApplicationSupportFolderType, "data/Application Support" },
        { kFontsFolderType, "data/fonts" },
        { kCachedDataFolderType, "cache" },
        { kTrashFolderType, "data/Trash/files" },
        { kLogsFolderType, "state/Logs" },
        { kStartupFolderType, "config/autostart" },
        { kDomainLibraryFolderType, "data" },
        { kSystemFolderType, "data" },
    };
    for (const auto& [type, place] : places) {
        CAPTURE(place);
        std::filesystem::path path;
        CHECK(Find(kUserDomain, type, kCreateFolder, &path) == noErr);
        CHECK(path == home / place);
    }
    std::filesystem::path path;
    CHECK(Find(kUserDomain, kTemporaryFolderType, kDontCreateFolder, &path) == noErr);
    CHECK(path == std::filesystem::canonical(std::filesystem::temp_directory_path()));
}

TEST_CASE("FindFolder: the machine's folders, where it has its own; volumes' roots")
{
    Environment environment;
    std::filesystem::path path;
    CHECK(Find(kSystemDomain, kSystemFolderType, kDontCreateFolder, &path) == noErr);
    CHECK(path == "/usr");
    CHECK(Find(kLocalDomain, kPreferencesFolderType, kDontCreateFolder, &path) == noErr);
    CHECK(path == "/etc");
    CHECK(Find(kLocalDomain, kTrashFolderType, kCreateFolder, &path) == noErr); // no machine has a trash
    CHECK(path == environment.home.Path() / "data/Trash/files");
    CHECK(Find(-1, kVolumeRootFolderType, kDontCreateFolder, &path) == noErr);
    CHECK(path == "/");
    CHECK(Find(kUserDomain, kVolumeRootFolderType, kDontCreateFolder) == noErr);
}

TEST_CASE("FindFolder: what is in the way is an error, and so is what cannot be made")
{
    Environment environment;
    environment.home.Write("config/Preferences", "a file");
    CHECK(Find(kUserDomain, kPreferencesFolderType, kCreateFolder) == dupFNErr);
    CHECK(Find(kUserDomain, kPreferencesFolderType, kDontCreateFolder) == dupFNErr);
    std::filesystem::remove(environment.home.Path() / "config/Preferences");
    std::filesystem::create_symlink("nowhere", environment.home.Path() / "config/Preferences");
    CHECK(Find(kUserDomain, kPreferencesFolderType, kCreateFolder) == dupFNErr);
    std::filesystem::remove(environment.home.Path() / "config/Preferences");
    std::filesystem::create_symlink("../real", environment.home.Path() / "config/Preferences");
    environment.home.MakeFolder("real");
    std::filesystem::path path;
    CHECK(Find(kUserDomain, kPreferencesFolderType, kCreateFolder, &path) ==
          noErr); // a link to a folder will do
    CHECK(path == environment.home.Path() / "real");
    Environment::Set("XDG_DATA_HOME", environment.home.Write("a file"));
    CHECK(Find(kUserDomain, kApplicationSupportFolderType, kCreateFolder) == dupFNErr);
    Environment::Set("XDG_DATA_HOME", "/proc/no");
    CHECK(Find(kUserDomain, kApplicationSupportFolderType, kCreateFolder) != noErr);
}

TEST_CASE("FindFolder, FSFindFolder: bad arguments")
{
    SInt16 volume = 7;
    SInt32 directory = 7;
    CHECK(FindFolder(kUserDomain, 'zzzz', true, &volume, &directory) == fnfErr);
    CHECK(volume == 0);
    CHECK(directory == 0);
    CHECK(FindFolder(-500, kPreferencesFolderType, false, &volume, &directory) == nsvErr);
    CHECK(FindFolder(kUserDomain, kPreferencesFolderType, false, nullptr, &directory) == paramErr);
    CHECK(FindFolder(kUserDomain, kPreferencesFolderType, false, &volume, nullptr) == paramErr);
    CHECK(FSFindFolder(kUserDomain, kPreferencesFolderType, false, nullptr) == paramErr);
    FSRef ref;
    CHECK(FSFindFolder(kUserDomain, 'zzzz', false, &ref) == fnfErr);
    CHECK(FSFindFolder(kUserDomain, kCurrentUserFolderType, false, &ref) == noErr);
    CHECK(PathOfRef(ref) == std::filesystem::canonical(host::CurrentSettings().home).string());
}
