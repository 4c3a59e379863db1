// Renaming, moving, exchanging.
#include "TestFolder.h"

#include <Carbon/Files.h>

#include <sys/mount.h>
#include <sys/stat.h>

using namespace lampblack;

namespace {

void Make(const FSSpec& inSpec, OSType inType, const char* inData, const char* inFork)
{
    REQUIRE(FSpCreate(&inSpec, 'lamp', inType, -1) == noErr);
    SInt16 refNum = 0;
    SInt32 count = (SInt32)std::strlen(inData);
    REQUIRE(FSpOpenDF(&inSpec, fsRdWrPerm, &refNum) == noErr);
    CHECK(FSWrite(refNum, &count, inData) == noErr);
    CHECK(FSClose(refNum) == noErr);
    count = (SInt32)std::strlen(inFork);
    REQUIRE(FSpOpenRF(&inSpec, fsRdWrPerm, &refNum) == noErr);
    CHECK(FSWrite(refNum, &count, inFork) == noErr);
    CHECK(FSClose(refNum) == noErr);
}

OSType TypeOf(const FSSpec& inSpec)
{
    FInfo info = {};
    CHECK(FSpGetFInfo(&inSpec, &info) == noErr);
    return info.fdType;
}

} // namespace

TEST_CASE("FSpRename: both parts get the name, and the ID stays")
{
    TestFolder scratch;
    const FSSpec old = scratch.Spec("Old");
    Make(old, 'TEXT', "data", "fork");
    const FSRef ref = scratch.Ref("Old");
    CHECK(FSpRename(&old, PascalName("New")) == noErr);
    CHECK(scratch.Names() == "._New New");
    CHECK(scratch.Bytes("New") == "data");
    CHECK(scratch.Fork("New") == "fork");
    CHECK(TypeOf(scratch.Spec("New")) == 'TEXT');
    UInt8 path[1024];
    CHECK(FSRefMakePath(&ref, path, sizeof path) == noErr);
    CHECK(std::string((const char*)path) == (scratch.Path() / "New").string());
    CHECK(FSpRename(&old, PascalName("Newer")) == fnfErr);
}

TEST_CASE("FSpRename: a part keeps its way of lying beside the file")
{
    for (const auto& places :
         std::vector<std::pair<std::string, std::string>>{ { "__MACOSX/._Old", "__MACOSX/._New" },
                                                           { "Old.rsrc", "New.rsrc" },
                                                           { "%Old", "%New" },
                                                           { ".AppleDouble/Old", ".AppleDouble/New" } }) {
        const std::string &place = places.first, &moved = places.second;
        CAPTURE(place);
        TestFolder scratch;
        scratch.Write("Old", "data");
        scratch.Write(place, Seed("appledouble"));
        const FSSpec spec = scratch.Spec("Old");
        const std::string fork = scratch.Fork("Old");
        CHECK(FSpRename(&spec, PascalName("New")) == noErr);
        CHECK(scratch.Fork("New") == fork);
        CHECK(scratch.Has(moved));
        CHECK_FALSE(scratch.Has(place));
    }
}

TEST_CASE("FSpRename: a part that is listed itself does not replace another file")
{
    TestFolder scratch;
    scratch.Write("Old", "data");
    scratch.Write("%Old", Seed("appledouble"));
    scratch.Write("%New", "another file");
    const FSSpec spec = scratch.Spec("Old");
    CHECK(FSpRename(&spec, PascalName("New")) == dupFNErr);
    CHECK(scratch.Names() == "%New %Old Old");
    CHECK(scratch.Bytes("%New") == "another file");
}

TEST_CASE("FSpRename: parts that an earlier file left under the new name do not come back")
{
    TestFolder scratch;
    scratch.Write("Old", "data");
    scratch.Write("._New", Seed("appledouble"));
    const FSSpec spec = scratch.Spec("Old");
    CHECK(FSpRename(&spec, PascalName("New")) == noErr);
    CHECK(scratch.Fork("New").empty());
    CHECK(TypeOf(scratch.Spec("New")) == 0);
}

TEST_CASE("FSpRename: other capitals of the same name, and the same name")
{
    TestFolder scratch;
    const FSSpec spec = scratch.Spec("file");
    Make(spec, 'TEXT', "data", "fork");
    CHECK(FSpRename(&spec, PascalName("FILE")) == noErr);
    CHECK(scratch.Names() == "._FILE FILE");
    CHECK(scratch.Fork("FILE") == "fork");
    CHECK(FSpRename(&spec, PascalName("FILE")) == noErr);
    CHECK(scratch.Names() == "._FILE FILE");
}

TEST_CASE("FSpRename: a short name given to the file that shows it keeps the long one")
{
    TestFolder scratch;
    const std::string longName = "A name that is much longer than thirty-one letters.txt";
    scratch.Write(longName, "data");
    const FSSpec spec = scratch.Spec(files::MacNameOf(longName));
    CHECK(FSpRename(&spec, spec.name) == noErr);
    CHECK(scratch.Has(longName));
}

TEST_CASE("FSpRename, HRename: names taken, names that cannot be, locks and missing files")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    scratch.Write("Taken", "kept");
    const FSSpec spec = scratch.Spec("File");
    CHECK(FSpRename(&spec, PascalName("Taken")) == dupFNErr);
    CHECK(FSpRename(&spec, PascalName("TAKEN")) == dupFNErr);
    for (const std::string& name : { std::string(), std::string(32, 'x'), std::string("a:b"),
                                     std::string(".."), std::string("._File"), std::string("a\0b", 3) })
        CHECK(FSpRename(&spec, PascalName(name)) == bdNamErr);
    CHECK(FSpRename(&spec, nullptr) == paramErr);
    CHECK(FSpRename(nullptr, PascalName("x")) == paramErr);
    CHECK(HRename(scratch.folder.volume, 0x7FFFFFF0, PascalName("File"), PascalName("x")) == dirNFErr);
    CHECK(HRename(-1000, 2, PascalName("File"), PascalName("x")) == nsvErr);
    CHECK(HRename(-1, fsRtParID, PascalName("Host"), PascalName("x")) == vLckdErr);
    CHECK(FSpSetFLock(&spec) == noErr);
    CHECK(FSpRename(&spec, PascalName("x")) == fLckdErr);
    CHECK(FSpRstFLock(&spec) == noErr);
    CHECK(scratch.Names() == "File Taken");
    CHECK(scratch.Bytes("Taken") == "kept");
}

TEST_CASE("PBHRenameSync: the new name is in ioMisc")
{
    TestFolder scratch;
    scratch.Write("Old", "data");
    PascalName old("Old"), fresh("New");
    HParamBlockRec block = {};
    block.fileParam.ioNamePtr = old.text;
    block.fileParam.ioVRefNum = scratch.folder.volume;
    block.fileParam.ioDirID = scratch.folder.id;
    block.ioParam.ioMisc = (Ptr)fresh.text;
    CHECK(PBHRenameSync(&block) == noErr);
    CHECK(scratch.Names() == "New");
    CHECK(PBHRenameSync(&block) == fnfErr);
    CHECK(PBHRenameSync(nullptr) == paramErr);
}

TEST_CASE("FSpRename: an open data fork goes on under the new name; a resource fork being written is fBsyErr")
{
    TestFolder scratch;
    const FSSpec old = scratch.Spec("Old");
    Make(old, 'TEXT', "data", "fork");
    SInt16 refNum = 0;
    REQUIRE(FSpOpenDF(&old, fsRdWrPerm, &refNum) == noErr);
    CHECK(FSpRename(&old, PascalName("New")) == noErr);
    SInt32 count = 2;
    CHECK(FSWrite(refNum, &count, "DA") == noErr);
    Str255 name;
    FCBPBRec block = {};
    block.ioNamePtr = name;
    block.ioRefNum = refNum;
    CHECK(PBGetFCBInfoSync(&block) == noErr);
    CHECK(std::string((const char*)name + 1, name[0]) == "New");
    const FSSpec now = scratch.Spec("New");
    CHECK(FSpDelete(&now) == fBsyErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(scratch.Bytes("New") == "DAta");
    REQUIRE(FSpOpenRF(&now, fsRdWrPerm, &refNum) == noErr);
    CHECK(FSpRename(&now, PascalName("Newer")) == fBsyErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(FSpRename(&now, PascalName("Newer")) == noErr);
}

TEST_CASE("FSpRename: a folder, with its sidecar, and what is open in it")
{
    TestFolder scratch;
    scratch.Write("Folder/File", "data");
    scratch.Write("._Folder", Seed("appledouble"));
    const SInt32 id = scratch.IDOf("Folder");
    const FSSpec folder = scratch.Spec("Folder"), file = scratch.Spec(":Folder:File");
    SInt16 refNum = 0;
    REQUIRE(FSpOpenRF(&file, fsRdWrPerm, &refNum) == noErr);
    CHECK(FSpRename(&folder, PascalName("Other")) == fBsyErr);
    CHECK(FSClose(refNum) == noErr);
    REQUIRE(FSpOpenDF(&file, fsRdPerm, &refNum) == noErr);
    CHECK(FSpRename(&folder, PascalName("Other")) == noErr);
    CHECK(scratch.Names() == "._Other Other");
    CHECK(scratch.IDOf("Other") == id);
    SInt16 writer = 0;
    REQUIRE(FSpOpenDF(&file, fsRdWrPerm, &writer) == noErr); // the fork that is open knows where it is now
    SInt32 count = 1;
    CHECK(FSWrite(writer, &count, "D") == noErr);
    CHECK(FSClose(writer) == noErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(scratch.Bytes("Other/File") == "Data");
}

TEST_CASE("FSpRename: a link is renamed itself")
{
    TestFolder scratch;
    scratch.Write("Real", "data");
    std::filesystem::create_symlink("Real", scratch.Path() / "Link");
    const FSSpec link = scratch.Spec("Link");
    CHECK(FSpRename(&link, PascalName("Other")) == noErr);
    CHECK(scratch.Names() == "Other Real");
    CHECK(std::filesystem::is_symlink(scratch.Path() / "Other"));
}

TEST_CASE("HRename, CatMove: without a name and an ID, the default directory is not meant")
{
    TestFolder scratch;
    scratch.MakeFolder("Default");
    scratch.MakeFolder("Other");
    SInt16 volume;
    SInt32 directory;
    REQUIRE(HGetVol(nullptr, &volume, &directory) == noErr);
    REQUIRE(HSetVol(nullptr, scratch.folder.volume, scratch.IDOf("Default")) == noErr);
    CHECK(CatMove(0, 0, nullptr, 0, nullptr) == bdNamErr);
    CHECK(CatMove(0, 0, PascalName(""), scratch.IDOf("Other"), nullptr) == bdNamErr);
    CHECK(HRename(0, 0, nullptr, PascalName("New")) == bdNamErr);
    CMovePBRec block = {};
    CHECK(PBCatMoveSync(&block) == bdNamErr);
    CHECK(scratch.Names() == "Default Other");
    HSetVol(nullptr, volume, directory);
    CHECK(CatMove(scratch.folder.volume, scratch.IDOf("Default"), nullptr, scratch.IDOf("Other"), nullptr) ==
          noErr);
    CHECK(scratch.Names() == "Other");
}

TEST_CASE("FSpCatMove, CatMove, PBCatMoveSync: into another folder with all parts")
{
    TestFolder scratch;
    scratch.MakeFolder("A");
    scratch.MakeFolder("B");
    const FSSpec spec = scratch.Spec(":A:File"), b = scratch.Spec("B");
    Make(spec, 'TEXT', "data", "fork");
    CHECK(FSpCatMove(&spec, &b) == noErr);
    CHECK(scratch.Fork("B/File") == "fork");
    CHECK(scratch.Has("B/._File"));
    CHECK(std::filesystem::is_empty(scratch.Path() / "A"));
    const SInt16 volume = scratch.folder.volume;
    CHECK(CatMove(volume, scratch.IDOf("B"), PascalName("File"), scratch.IDOf("A"), nullptr) == noErr);
    CHECK(scratch.Fork("A/File") == "fork");
    CHECK(CatMove(volume, scratch.IDOf("A"), PascalName("File"), scratch.folder.id, PascalName("B")) ==
          noErr);
    CHECK(scratch.Fork("B/File") == "fork");
    PascalName name("File");
    CMovePBRec block = {};
    block.ioNamePtr = name.text;
    block.ioVRefNum = volume;
    block.ioDirID = scratch.IDOf("B");
    block.ioNewDirID = scratch.IDOf("A");
    CHECK(PBCatMoveSync(&block) == noErr);
    CHECK(scratch.Fork("A/File") == "fork");
    CHECK(PBCatMoveSync(&block) == fnfErr);
    CHECK(block.ioResult == fnfErr);
    CHECK(PBCatMoveSync(nullptr) == paramErr);
}

TEST_CASE("CatMove: what cannot be moved, and where nothing can be moved to")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    scratch.Write("A/File", "kept");
    scratch.MakeFolder("A/Inner");
    const SInt16 volume = scratch.folder.volume;
    const SInt32 here = scratch.folder.id;
    const auto move = [&](const char* name, SInt32 to) {
        return CatMove(volume, here, PascalName(name), to, nullptr);
    };
    CHECK(move("File", scratch.IDOf("A")) == dupFNErr);
    CHECK(move("A", scratch.IDOf("A")) == badMovErr);
    CHECK(move("A", scratch.IDOf(":A:Inner")) == badMovErr);
    CHECK(move("Missing", here) == fnfErr);
    CHECK(move("File", 0x7FFFFFF0) == dirNFErr);
    CHECK(CatMove(volume, here, PascalName("File"), here, PascalName("Missing")) == dirNFErr);
    CHECK(CatMove(volume, here, PascalName("A"), here, PascalName("File")) == badMovErr);
    CHECK(move("File", here) == noErr);
    CHECK(CatMove(-1, fsRtParID, PascalName("Host"), here, nullptr) == vLckdErr);
    const FSSpec file = scratch.Spec("File"), missing = scratch.Spec("Missing");
    CHECK(FSpCatMove(&file, &missing) == dirNFErr);
    CHECK(FSpCatMove(&file, nullptr) == paramErr);
    CHECK(scratch.Bytes("A/File") == "kept");
    CHECK(scratch.Bytes("File") == "data");
}

TEST_CASE("FSpCatMove: to another volume, or another disk of the host, is diffVolErr")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    const SInt16 volume = files::AddVolume("Other disk", scratch.MakeFolder("Disk"));
    FSSpec other = {}, file = scratch.Spec("File");
    REQUIRE(FSMakeFSSpec(volume, fsRtDirID, PascalName(""), &other) == noErr);
    CHECK(FSpCatMove(&file, &other) == diffVolErr);
    const auto mounted = scratch.MakeFolder("Mounted");
    if (mount("lampblack-test", mounted.c_str(), "tmpfs", 0, "size=64k") != 0) {
        MESSAGE("the rest skipped: no file system may be mounted here");
        return;
    }
    scratch.Write("._File", Seed("appledouble"));
    const FSSpec target = scratch.Spec("Mounted");
    CHECK(FSpCatMove(&file, &target) == diffVolErr);
    CHECK(std::filesystem::is_empty(mounted));
    CHECK(scratch.Fork("File").size() == 321);
    CHECK(umount(mounted.c_str()) == 0);
}

TEST_CASE("FSpExchangeFiles: the contents change places, Finder information does not")
{
    TestFolder scratch;
    scratch.MakeFolder("Folder");
    const FSSpec one = scratch.Spec("One"), two = scratch.Spec(":Folder:Two");
    Make(one, 'ONE ', "data one", "fork one");
    Make(two, 'TWO ', "data two", "fork two");
    SInt16 refNum = 0;
    REQUIRE(FSpOpenDF(&one, fsRdPerm, &refNum) == noErr);
    CHECK(FSpExchangeFiles(&one, &two) == noErr);
    CHECK(scratch.Bytes("One") == "data two");
    CHECK(scratch.Fork("One") == "fork two");
    CHECK(TypeOf(one) == 'ONE ');
    CHECK(scratch.Bytes("Folder/Two") == "data one");
    CHECK(scratch.Fork("Folder/Two") == "fork one");
    CHECK(TypeOf(two) == 'TWO ');
    Str255 name;
    FCBPBRec block = {};
    block.ioNamePtr = name;
    block.ioRefNum = refNum; // it still reads what it was opened for
    CHECK(PBGetFCBInfoSync(&block) == noErr);
    CHECK(std::string((const char*)name + 1, name[0]) == "Two");
    CHECK(FSClose(refNum) == noErr);
}

TEST_CASE("FSpExchangeFiles: a container, a resource file and a plain file")
{
    TestFolder scratch;
    scratch.Write("Plain", "plain data");
    scratch.Write("Binary", Seed("macbinary2"));
    scratch.Write("Raw", Seed("raw-rich"));
    const FSSpec plain = scratch.Spec("Plain"), binary = scratch.Spec("Binary"), raw = scratch.Spec("Raw");
    const std::string fork = scratch.Fork("Binary"), data = scratch.Data("Binary");
    CHECK(FSpExchangeFiles(&plain, &binary) == noErr);
    CHECK(scratch.Fork("Plain") == fork);
    CHECK(scratch.Bytes("Plain") == data);
    CHECK(scratch.Bytes("Binary") == "plain data");
    CHECK(scratch.Fork("Binary").empty());
    CHECK(TypeOf(binary) != 0);
    CHECK(FSpExchangeFiles(&plain, &raw) == noErr);
    CHECK(scratch.Bytes("Plain") == Seed("raw-rich"));
    CHECK(scratch.Fork("Plain") == Seed("raw-rich"));
    CHECK(scratch.Fork("Raw") == fork);
    CHECK(scratch.Bytes("Raw") == data);
}

TEST_CASE("FSpExchangeFiles: what cannot be exchanged")
{
    TestFolder scratch;
    scratch.Write("One", "1");
    scratch.Write("Two", "2");
    scratch.MakeFolder("Folder");
    const FSSpec one = scratch.Spec("One"), two = scratch.Spec("Two"), folder = scratch.Spec("Folder"),
                 missing = scratch.Spec("Missing");
    CHECK(FSpExchangeFiles(&one, &one) == sameFileErr);
    CHECK(FSpExchangeFiles(&one, &folder) == notAFileErr);
    CHECK(FSpExchangeFiles(&folder, &one) == notAFileErr);
    CHECK(FSpExchangeFiles(&one, &missing) == fnfErr);
    CHECK(FSpExchangeFiles(&one, nullptr) == paramErr);
    CHECK(FSpSetFLock(&two) == noErr);
    CHECK(FSpExchangeFiles(&one, &two) == fLckdErr);
    CHECK(FSpRstFLock(&two) == noErr);
    SInt16 refNum = 0;
    REQUIRE(FSpOpenRF(&one, fsRdWrPerm, &refNum) == noErr);
    CHECK(FSpExchangeFiles(&one, &two) == fBsyErr);
    CHECK(FSClose(refNum) == noErr);
    const SInt16 volume = files::AddVolume("Third disk", scratch.MakeFolder("Disk"));
    scratch.Write("Disk/Other", "3");
    FSSpec other = {};
    REQUIRE(FSMakeFSSpec(volume, fsRtDirID, PascalName("Other"), &other) == noErr);
    CHECK(FSpExchangeFiles(&one, &other) == diffVolErr);
    CHECK(scratch.Bytes("One") == "1");
}
