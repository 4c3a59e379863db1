// The catalog by parameter block: entries by index and name, their order, what is said of each.
#include "CatalogFixture.h"
#include "Dates.h"
#include "OpenFiles.h"

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

using namespace lampblack::files;

// The published records are packed to 2 bytes: a '+' before a field keeps a check from taking its address.

namespace {

std::vector<std::string> NamesByIndex(Folder inFolder)
{
    std::vector<std::string> names;
    for (SInt16 index = 1; index < 30000; ++index) {
        CatalogBlock block(inFolder, index);
        if (block.Get() != noErr)
            break;
        names.push_back(block.Name());
    }
    return names;
}

void SetModified(const std::filesystem::path& inPath, time_t inSeconds)
{
    const timespec times[2] = { { inSeconds, 0 }, { inSeconds, 0 } };
    REQUIRE(utimensat(AT_FDCWD, inPath.c_str(), times, AT_SYMLINK_NOFOLLOW) == 0);
}

} // namespace

TEST_CASE("PBGetCatInfoSync: by index in the order of names, capitals or not; fnfErr ends the folder")
{
    CatalogFolder scratch;
    for (const char* name : { "beta", "Alpha", "gamma", "Beta 2", "._beta", ".hidden", "10", "9", "_last",
                              "\xC3\x89t\xC3\xA9", "eta", "F", "e\xCC\x81ta", "\xE2\x80\xA0" })
        scratch.Write(name);
    scratch.MakeFolder("Folder");
    scratch.MakeFolder("__MACOSX");
    const std::vector<std::string> expected = { ".hidden", "10",     "9",     "_last",  "Alpha",
                                                "beta",    "Beta 2", "eta",   "\x8Eta", "\x83t\x8E",
                                                "F",       "Folder", "gamma", "\xA0" };
    CHECK(NamesByIndex(scratch.folder) == expected);
    CatalogBlock beyond(scratch.folder, 15);
    CHECK(beyond.Get() == fnfErr);
    CHECK(beyond.File().ioResult == fnfErr);
}

TEST_CASE("PBGetCatInfoSync: a file")
{
    CatalogFolder scratch;
    const auto path = scratch.Write("File", "12345");
    SetModified(path, 1000000000);
    CatalogBlock block(scratch.folder, 0, "FILE");
    REQUIRE(block.Get() == noErr);
    const HFileInfo& info = block.File();
    CHECK((info.ioFlAttrib & kioFlAttribDirMask) == 0);
    CHECK((info.ioFlAttrib & kioFlAttribLockedMask) == 0);
    CHECK(+info.ioFlLgLen == 5);
    CHECK(+info.ioFlPyLen == 4096);
    CHECK(+info.ioFlRLgLen == 0);
    CHECK(+info.ioFlParID == scratch.folder.id);
    CHECK(+info.ioDirID >= 16);
    CHECK(info.ioFRefNum == 0);
    CHECK(+info.ioFlMdDat == LocalDateOf({ 1000000000, 0 }));
    CHECK(+info.ioFlCrDat == +info.ioFlMdDat); // a file is never changed before it is made
    CHECK(+info.ioFlBkDat == 0);
    CHECK(block.Name() == "FILE"); // a name that was given stays
}

TEST_CASE("PBGetCatInfoSync: a folder, by name, by index and by its own ID")
{
    CatalogFolder scratch;
    scratch.Write("Folder/One");
    scratch.Write("Folder/._One");
    scratch.MakeFolder("Folder/Two");
    CatalogBlock byName(scratch.folder, 0, ":Folder");
    REQUIRE(byName.Get() == noErr);
    CHECK((byName.Directory().ioFlAttrib & kioFlAttribDirMask) != 0);
    CHECK(+byName.Directory().ioDrNmFls == 2);
    CHECK(+byName.Directory().ioDrParID == scratch.folder.id);
    CatalogBlock byIndex(scratch.folder, 1);
    REQUIRE(byIndex.Get() == noErr);
    CHECK(+byIndex.Directory().ioDrDirID == +byName.Directory().ioDrDirID);
    CHECK(byIndex.Name() == "Folder");
    CatalogBlock itself({ scratch.folder.volume, byName.Directory().ioDrDirID }, -1, "ignored");
    REQUIRE(itself.Get() == noErr);
    CHECK(itself.Name() == "Folder");
    CHECK(+itself.Directory().ioDrParID == scratch.folder.id);
    CatalogBlock nameless(scratch.folder, 0);
    nameless.File().ioNamePtr = nullptr;
    REQUIRE(nameless.Get() == noErr);
    CHECK(+nameless.Directory().ioDrDirID == scratch.folder.id);
}

TEST_CASE("PBGetCatInfoSync: from a folder upward to the volume, whose ID is 2 and parent 1")
{
    CatalogFolder scratch;
    Folder at = scratch.folder;
    std::string path;
    for (int depth = 0; depth < 100; ++depth) {
        CatalogBlock block(at, -1);
        REQUIRE(block.Get() == noErr);
        path = block.Name() + (path.empty() ? "" : ":" + path);
        if (at.id == fsRtDirID) {
            CHECK(+block.Directory().ioDrParID == fsRtParID);
            break;
        }
        at.id = block.Directory().ioDrParID;
    }
    CHECK(path.starts_with("Host:"));
    FSSpec spec = {};
    CHECK(FSMakeFSSpec(0, 0, PascalText(path), &spec) == noErr);
    CHECK(TextOf(spec.name) == scratch.Path().filename().string());
}

TEST_CASE("PBGetCatInfoSync: errors by name")
{
    CatalogFolder scratch;
    scratch.Write("File");
    CHECK(CatalogBlock(scratch.folder, 0, "Missing").Get() == fnfErr);
    CHECK(CatalogBlock(scratch.folder, 0, ":Missing:File").Get() == dirNFErr);
    CHECK(CatalogBlock(scratch.folder, 0, "Nowhere:File").Get() == nsvErr);
    CHECK(CatalogBlock(scratch.folder, 0, std::string(32, 'x')).Get() == bdNamErr);
    CHECK(CatalogBlock({ -1, 0x7FFFFFF0 }, 1).Get() == dirNFErr);
    CHECK(CatalogBlock({ -1, 0x7FFFFFF0 }, -1).Get() == dirNFErr);
    CHECK(CatalogBlock({ -1000, 2 }, 1).Get() == nsvErr);
    CHECK(CatalogBlock({ -1, fsRtParID }, 1).Get() == dirNFErr);
    CHECK(PBGetCatInfoSync(nullptr) == paramErr);
    CatalogBlock asFolder({ -1, NodeOf({ scratch.folder, "File", "File", true }).id }, 1);
    CHECK(asFolder.Get() == dirNFErr);
}

TEST_CASE("PBGetCatInfoSync: what is added or removed between two calls is seen, however soon")
{
    CatalogFolder scratch;
    for (int round = 0; round < 50; ++round) {
        scratch.Write("File " + std::to_string(round));
        REQUIRE(NamesByIndex(scratch.folder).size() == (size_t)round + 1);
    }
    std::filesystem::rename(scratch.Path() / "File 7", scratch.Path() / "A File");
    CHECK(NamesByIndex(scratch.folder).front() == "A File");
    std::filesystem::remove(scratch.Path() / "A File");
    CHECK(NamesByIndex(scratch.folder).size() == 49);
}

TEST_CASE("PBGetCatInfoSync: a listing that has settled is used again, and not after a change")
{
    CatalogFolder scratch;
    scratch.Write("One");
    std::this_thread::sleep_for(std::chrono::milliseconds(40));
    CHECK(NamesByIndex(scratch.folder).size() == 1);
    CHECK(NamesByIndex(scratch.folder).size() == 1);
    scratch.Write("Two");
    CHECK(NamesByIndex(scratch.folder).size() == 2);
    SetModified(scratch.Path(), 1000000000); // as an archive does, after it has filled the folder
    scratch.Write("Three");
    SetModified(scratch.Path(), 1000000000);
    CHECK(NamesByIndex(scratch.folder).size() == 3);
}

TEST_CASE("PBGetCatInfoSync: locks and open forks show among the attributes")
{
    CatalogFolder scratch;
    const auto path = scratch.Write("File", "text");
    OpenFile open;
    REQUIRE(Resolve(scratch.Spec("File"), &open.item) == noErr);
    const SInt16 refNum = AddOpenFile(open);
    CatalogBlock block(scratch.folder, 0, "File");
    REQUIRE(block.Get() == noErr);
    CHECK((UInt8)block.File().ioFlAttrib == (kioFlAttribDataOpenMask | kioFlAttribFileOpenMask));
    CHECK(block.File().ioFRefNum == refNum);
    RemoveOpenFile(refNum);
    chmod(path.c_str(), 0444);
    CatalogBlock locked(scratch.folder, 0, "File");
    REQUIRE(locked.Get() == noErr);
    CHECK((UInt8)locked.File().ioFlAttrib == kioFlAttribLockedMask);
}

TEST_CASE("PBGetCatInfoSync: a link is an alias file, also one to a folder, to nowhere or to itself")
{
    CatalogFolder scratch;
    scratch.MakeFolder("Target");
    std::filesystem::create_symlink("Target", scratch.Path() / "To folder");
    std::filesystem::create_symlink("missing", scratch.Path() / "To nowhere");
    std::filesystem::create_symlink("To itself", scratch.Path() / "To itself");
    std::filesystem::create_symlink("..", scratch.Path() / "Up");
    for (const char* name : { "To folder", "To nowhere", "To itself", "Up" }) {
        CAPTURE(name);
        CatalogBlock block(scratch.folder, 0, name);
        REQUIRE(block.Get() == noErr);
        CHECK((block.File().ioFlAttrib & kioFlAttribDirMask) == 0);
        CHECK(+block.File().ioFlFndrInfo.fdType == 'slnk');
        CHECK((block.File().ioFlFndrInfo.fdFlags & kIsAlias) != 0);
        CHECK(+block.File().ioFlLgLen == 0);
    }
    CHECK(NamesByIndex(scratch.folder).size() == 5);
    scratch.Write("Target/File");
    CHECK(CatalogBlock(scratch.folder, 0, ":To folder:File").Get() == noErr); // a path leads through links
    CHECK(CatalogBlock(scratch.folder, 0, ":To itself:File").Get() == dirNFErr);
    CHECK(CatalogBlock(scratch.folder, 0, ":To nowhere:File").Get() == dirNFErr);
}

TEST_CASE("PBGetCatInfoSync: hostile names are listed, found again by what is shown, and lead nowhere else")
{
    CatalogFolder scratch;
    const std::vector<std::string> hostNames = { "a:b",
                                                 ":",
                                                 "::",
                                                 "...",
                                                 " leading",
                                                 "trailing ",
                                                 "line\rbreak",
                                                 "tab\t\n\x7F",
                                                 std::string(255, 'n'),
                                                 "\xFF",
                                                 "\xC3\x28",
                                                 "caf\xC3\xA9",
                                                 "\xE4\xB8\xAD",
                                                 "#1234",
                                                 "-rf",
                                                 "%s%n",
                                                 "~" };
    for (const std::string& name : hostNames)
        scratch.Write(name, name);
    const std::vector<std::string> shown = NamesByIndex(scratch.folder);
    CHECK(shown.size() == hostNames.size());
    for (const std::string& name : shown) {
        CAPTURE(name);
        CHECK(name.size() <= 31);
        CHECK(name.find(':') == std::string::npos);
        const FSSpec spec = scratch.Spec(name);
        Item item;
        REQUIRE(Resolve(spec, &item) == noErr);
        CHECK(PathOf(item).parent_path() == scratch.Path());
        CHECK(std::find(hostNames.begin(), hostNames.end(), item.hostName) != hostNames.end());
        CatalogBlock block(scratch.folder, 0, name);
        REQUIRE(block.Get() == noErr);
        CHECK((size_t) + block.File().ioFlLgLen == item.hostName.size());
    }
}

TEST_CASE("PBGetCatInfoSync: special files are listed and not opened")
{
    CatalogFolder scratch;
    REQUIRE(mkfifo((scratch.Path() / "pipe").c_str(), 0600) == 0);
    CatalogBlock block(scratch.folder, 1);
    REQUIRE(block.Get() == noErr);
    CHECK(block.Name() == "pipe");
    CHECK(+block.File().ioFlLgLen == 0);
}

TEST_CASE("PBGetCatInfoSync: Finder information of a folder is that of its sidecar")
{
    CatalogFolder scratch;
    scratch.MakeFolder("Folder");
    std::string sidecar("\x00\x05\x16\x07\x00\x02\x00\x00", 8);
    sidecar += std::string(16, '\0') + std::string("\x00\x02", 2);
    sidecar += std::string("\x00\x00\x00\x09\x00\x00\x00\x32\x00\x00\x00\x20", 12);
    sidecar += std::string("\x00\x00\x00\x02\x00\x00\x00\x52\x00\x00\x00\x00", 12);
    sidecar += std::string("\x00\x0A\x00\x14\x01\x00\x02\x00\x40\x00\x00\x07\x00\x08\x01\x02", 16);
    sidecar += std::string("\x00\x03\x00\x04\x00\x00\x00\x05\x00\x00\x00\x06\x00\x00\x00\x07", 16);
    scratch.Write("._Folder", sidecar);
    CatalogBlock block(scratch.folder, 0, "Folder");
    REQUIRE(block.Get() == noErr);
    const DInfo info = block.Directory().ioDrUsrWds;
    CHECK(info.frRect.top == 10);
    CHECK(info.frRect.left == 20);
    CHECK(info.frFlags == kIsInvisible);
    CHECK(info.frLocation.v == 7);
    CHECK(info.frView == 0x0102);
    const DXInfo extended = block.Directory().ioDrFndrInfo;
    CHECK(extended.frScroll.h == 4);
    CHECK(+extended.frOpenChain == 5);
    CHECK(+extended.frPutAway == 7);
}

TEST_CASE("PBHGetFInfoSync: an index counts files alone; a folder by name is fnfErr")
{
    CatalogFolder scratch;
    scratch.MakeFolder("A folder");
    scratch.Write("B file", "1234567");
    scratch.MakeFolder("C folder");
    scratch.Write("D file");
    Str255 name;
    const auto get = [&](SInt16 index, ConstStr255Param text, HFileParam* out) {
        HParamBlockRec block = {};
        block.fileParam.ioVRefNum = scratch.folder.volume;
        block.fileParam.ioDirID = scratch.folder.id;
        block.fileParam.ioFDirIndex = index;
        std::memcpy(name, text, sizeof name);
        block.fileParam.ioNamePtr = name;
        const OSErr error = PBHGetFInfoSync(&block);
        CHECK(block.fileParam.ioResult == error);
        *out = block.fileParam;
        return error;
    };
    HFileParam info;
    CHECK(get(1, PascalText(""), &info) == noErr);
    CHECK(TextOf(name) == "B file");
    CHECK(+info.ioFlLgLen == 7);
    CHECK(get(2, PascalText(""), &info) == noErr);
    CHECK(TextOf(name) == "D file");
    CHECK(get(3, PascalText(""), &info) == fnfErr);
    CHECK(get(0, PascalText("B file"), &info) == noErr);
    CHECK(get(0, PascalText("A folder"), &info) == fnfErr);
    CHECK(get(0, PascalText("Missing"), &info) == fnfErr);
    CHECK(get(0, PascalText(":Missing:x"), &info) == dirNFErr);
    CHECK(PBHGetFInfoSync(nullptr) == paramErr);
}

TEST_CASE("PBMakeFSSpecSync: as FSMakeFSSpec, result in the block")
{
    CatalogFolder scratch;
    scratch.Write("File");
    const PascalText name("file");
    FSSpec spec = {};
    HParamBlockRec block = {};
    block.ioParam.ioVRefNum = scratch.folder.volume;
    block.ioParam.ioNamePtr = (StringPtr)name.text;
    block.fileParam.ioDirID = scratch.folder.id;
    block.ioParam.ioMisc = (Ptr)&spec;
    CHECK(PBMakeFSSpecSync(&block) == noErr);
    CHECK(TextOf(spec.name) == "File");
    block.ioParam.ioMisc = nullptr;
    CHECK(PBMakeFSSpecSync(&block) == paramErr);
    CHECK(block.ioParam.ioResult == paramErr);
    CHECK(PBMakeFSSpecSync(nullptr) == paramErr);
}

TEST_CASE("FSMakeFSSpec: the empty name, ':' and the volume's name with a colon are the folders themselves")
{
    CatalogFolder scratch;
    scratch.MakeFolder("Folder");
    for (const char* name : { "", ":" }) {
        CAPTURE(name);
        const FSSpec spec = scratch.Spec(name);
        CHECK(TextOf(spec.name) == scratch.Path().filename().string());
        CHECK(+spec.parID != scratch.folder.id);
    }
    CHECK(TextOf(scratch.Spec(":Folder::").name) == scratch.Path().filename().string());
    CHECK(TextOf(scratch.Spec("::").name) == scratch.Path().parent_path().filename().string());
    const FSSpec volume = scratch.Spec("Host:");
    CHECK(+volume.parID == fsRtParID);
    CHECK(TextOf(volume.name) == "Host");
}

TEST_CASE("Directory IDs: a folder keeps its ID, and all in it theirs, when this process renames or moves it")
{
    CatalogFolder scratch;
    scratch.Write("Old/Inner/File");
    scratch.MakeFolder("Other");
    Item old, inner, renamed;
    REQUIRE(ItemAtPath(scratch.Path() / "Old", &old));
    REQUIRE(ItemAtPath(scratch.Path() / "Old/Inner", &inner));
    const Folder oldNode = NodeOf(old), innerNode = NodeOf(inner);
    const FSRef file = [&] {
        FSRef ref;
        REQUIRE(FSPathMakeRef((const UInt8*)(scratch.Path() / "Old/Inner/File").c_str(), &ref, nullptr) ==
                noErr);
        return ref;
    }();
    std::filesystem::rename(scratch.Path() / "Old", scratch.Path() / "Other/New");
    Item other;
    REQUIRE(ItemAtPath(scratch.Path() / "Other", &other));
    REQUIRE(ItemNamed(NodeOf(other), "New", &renamed));
    NodeDidMove(old, renamed);
    CHECK(NodeOf(renamed) == oldNode);
    CHECK(PathOf(innerNode) == scratch.Path() / "Other/New/Inner");
    CHECK(PathOfRef(file) == (scratch.Path() / "Other/New/Inner/File").string());
    CHECK(CatalogBlock(innerNode, 1).Get() == noErr);
}

TEST_CASE("Directory IDs: one that was deleted is not given to what has the name next, nor leads anywhere")
{
    CatalogFolder scratch;
    scratch.MakeFolder("Folder/Inner");
    Item folder, inner;
    REQUIRE(ItemAtPath(scratch.Path() / "Folder/Inner", &inner));
    REQUIRE(ItemAtPath(scratch.Path() / "Folder", &folder));
    const Folder node = NodeOf(folder), innerNode = NodeOf(inner);
    std::filesystem::remove_all(scratch.Path() / "Folder");
    NodeDidGo(folder);
    scratch.MakeFolder("Folder/Inner");
    REQUIRE(ItemAtPath(scratch.Path() / "Folder", &folder));
    CHECK_FALSE(NodeOf(folder) == node);
    CHECK(CatalogBlock(node, -1).Get() == dirNFErr);
    CHECK(CatalogBlock(innerNode, -1).Get() == dirNFErr);
    FSSpec spec;
    CHECK(FSMakeFSSpec(-1, innerNode.id, PascalText("etc"), &spec) == dirNFErr);
}
