// Making and deleting files and folders.
#include "TestFolder.h"

#include <Carbon/Files.h>

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace lampblack;

namespace {

FInfo InfoOf(const FSSpec& inSpec)
{
    FInfo info = {};
    CHECK(FSpGetFInfo(&inSpec, &info) == noErr);
    return info;
}

void PutFork(const FSSpec& inSpec, const char* inText)
{
    SInt16 refNum = 0;
    SInt32 count = (SInt32)std::strlen(inText);
    REQUIRE(FSpOpenRF(&inSpec, fsRdWrPerm, &refNum) == noErr);
    CHECK(SetEOF(refNum, 0) == noErr);
    CHECK(FSWrite(refNum, &count, inText) == noErr);
    CHECK(FSClose(refNum) == noErr);
}

} // namespace

TEST_CASE("FSpCreate: a file with type and creator, in a sidecar of two entries")
{
    TestFolder scratch;
    const FSSpec spec = scratch.Spec("New");
    CHECK(FSpCreate(&spec, 'lamp', 'TEXT', -1) == noErr);
    CHECK(scratch.Names() == "._New New");
    CHECK(+InfoOf(spec).fdType == 'TEXT');
    CHECK(+InfoOf(spec).fdCreator == 'lamp');
    const std::string sidecar = scratch.Bytes("._New");
    CHECK(sidecar.substr(0, 8) == std::string("\0\5\x16\7\0\2\0\0", 8));
    CHECK(sidecar.substr(24, 2) == std::string("\0\2", 2));
    CHECK(sidecar.substr(26, 4) == std::string("\0\0\0\x09", 4));
    CHECK(sidecar.substr(38, 4) == std::string("\0\0\0\2", 4));
    CHECK(scratch.Bytes("New").empty());
}

TEST_CASE("FSpCreate: a name in use, in whatever capitals, of a file or a folder, is dupFNErr")
{
    TestFolder scratch;
    scratch.Write("File", "kept");
    scratch.MakeFolder("Folder");
    for (const char* name : { "File", "FILE", "Folder", "folder" }) {
        CAPTURE(name);
        const FSSpec spec = scratch.Spec(name);
        CHECK(FSpCreate(&spec, 'lamp', 'TEXT', -1) == dupFNErr);
        SInt32 id = 1;
        CHECK(FSpDirCreate(&spec, -1, &id) == dupFNErr);
        CHECK(id == 0);
    }
    CHECK(scratch.Bytes("File") == "kept");
    CHECK(scratch.Names() == "File Folder");
}

TEST_CASE("HCreate, DirCreate: names that no file can have, and places that are none")
{
    TestFolder scratch;
    scratch.Write("File");
    const SInt16 volume = scratch.folder.volume;
    const SInt32 folder = scratch.folder.id;
    SInt32 id = 0;
    for (const std::string& name :
         { std::string(), std::string(32, 'x'), std::string("a\0b", 3), std::string("."), std::string(".."),
           std::string("._File"), std::string("__MACOSX"), std::string(".AppleDouble") }) {
        CAPTURE(name);
        CHECK(HCreate(volume, folder, PascalName(name), 'lamp', 'TEXT') == bdNamErr);
        CHECK(DirCreate(volume, folder, PascalName(name), &id) == bdNamErr);
    }
    CHECK(HCreate(volume, 0x7FFFFFF0, PascalName("x"), 'lamp', 'TEXT') == dirNFErr);
    CHECK(HCreate(volume, folder, PascalName(":Missing:x"), 'lamp', 'TEXT') == dirNFErr);
    CHECK(HCreate(volume, folder, PascalName(":File:x"), 'lamp', 'TEXT') == dirNFErr);
    CHECK(HCreate(-1000, folder, PascalName("x"), 'lamp', 'TEXT') == nsvErr);
    CHECK(HCreate(volume, folder, nullptr, 'lamp', 'TEXT') == paramErr);
    CHECK(FSpCreate(nullptr, 'lamp', 'TEXT', -1) == paramErr);
    CHECK(DirCreate(volume, folder, nullptr, &id) == paramErr);
    CHECK(scratch.Names() == "File");
}

TEST_CASE("HCreate: a partial path, Mac Roman letters, and a slash, which is a colon on the host")
{
    TestFolder scratch;
    scratch.MakeFolder("Folder");
    CHECK(HCreate(scratch.folder.volume, scratch.folder.id, PascalName(":Folder:caf\x8E/1"), 'lamp',
                  'TEXT') == noErr);
    CHECK(scratch.Has("Folder/caf\xC3\xA9:1"));
}

TEST_CASE("FSpCreate: what an earlier file left under that name is not the new file's")
{
    TestFolder scratch;
    scratch.Write("._New", Seed("appledouble"));
    const FSSpec spec = scratch.Spec("New");
    CHECK(FSpCreate(&spec, 'lamp', 'TEXT', -1) == noErr);
    CHECK(scratch.Fork("New").empty());
    CHECK(+InfoOf(spec).fdType == 'TEXT');
    scratch.Write("._Folder", Seed("appledouble"));
    const FSSpec folder = scratch.Spec("Folder");
    SInt32 id = 0;
    CHECK(FSpDirCreate(&folder, -1, &id) == noErr);
    CHECK_FALSE(scratch.Has("._Folder"));
}

TEST_CASE("FSpCreate: the script is kept where the Finder looks for it")
{
    TestFolder scratch;
    const FSSpec japanese = scratch.Spec("Japanese"), plain = scratch.Spec("Plain");
    CHECK(FSpCreate(&japanese, 'lamp', 'TEXT', 1) == noErr);
    CHECK(FSpCreate(&plain, 'lamp', 'TEXT', -1) == noErr);
    CHECK((UInt8)files::LocateForks(scratch.Path() / "Japanese").extendedFinderInfo.fdScript == 0x81);
    CHECK((UInt8)files::LocateForks(scratch.Path() / "Plain").extendedFinderInfo.fdScript == 0);
}

TEST_CASE("FSpDirCreate: the new folder's ID leads into it")
{
    TestFolder scratch;
    const FSSpec spec = scratch.Spec("Folder");
    long id = 0;
    CHECK(FSpDirCreate(&spec, -1, &id) == noErr);
    CHECK(id == scratch.IDOf("Folder"));
    CHECK(HCreate(scratch.folder.volume, (SInt32)id, PascalName("Inside"), 'lamp', 'TEXT') == noErr);
    CHECK(scratch.Has("Folder/Inside"));
    SInt32 second = 0;
    CHECK(DirCreate(scratch.folder.volume, (SInt32)id, PascalName("Deeper"), &second) == noErr);
    CHECK(scratch.Has("Folder/Deeper"));
}

TEST_CASE("PBHCreateSync, PBDirCreateSync, PBHDeleteSync: by parameter block")
{
    TestFolder scratch;
    PascalName name("Made");
    HParamBlockRec block = {};
    block.fileParam.ioNamePtr = name.text;
    block.fileParam.ioVRefNum = scratch.folder.volume;
    block.fileParam.ioDirID = scratch.folder.id;
    CHECK(PBHCreateSync(&block) == noErr);
    CHECK(scratch.Has("Made"));
    CHECK(PBHCreateSync(&block) == dupFNErr);
    CHECK(block.fileParam.ioResult == dupFNErr);
    CHECK(PBHDeleteSync(&block) == noErr);
    CHECK_FALSE(scratch.Has("Made"));
    CHECK(PBHDeleteSync(&block) == fnfErr);
    CHECK(PBDirCreateSync(&block) == noErr);
    CHECK(+block.fileParam.ioDirID == scratch.IDOf("Made"));
    CHECK(PBHCreateSync(nullptr) == paramErr);
    CHECK(PBDirCreateSync(nullptr) == paramErr);
    CHECK(PBHDeleteSync(nullptr) == paramErr);
}

TEST_CASE("FSpDelete: the file goes with every part, wherever it lies")
{
    TestFolder scratch;
    const FSSpec spec = scratch.Spec("File");
    REQUIRE(FSpCreate(&spec, 'lamp', 'TEXT', -1) == noErr);
    PutFork(spec, "fork");
    CHECK(FSpDelete(&spec) == noErr);
    CHECK(scratch.Names().empty());
    for (const char* place : { "__MACOSX/._File", "File.rsrc", "%File", ".AppleDouble/File" }) {
        CAPTURE(place);
        scratch.Write("File", "text");
        scratch.Write(place, Seed("appledouble"));
        CHECK(FSpDelete(&spec) == noErr);
        CHECK_FALSE(scratch.Has(place));
        CHECK_FALSE(scratch.Has("File"));
    }
}

TEST_CASE("FSpDelete: what only has the name of a part stays")
{
    TestFolder scratch;
    scratch.Write("File", "text");
    scratch.Write("._File", "a diary");
    scratch.Write("File.rsrc", "another file");
    const FSSpec spec = scratch.Spec("File");
    CHECK(FSpDelete(&spec) == noErr);
    CHECK(scratch.Names() == "._File File.rsrc");
}

TEST_CASE("FSpDelete: open, locked, missing")
{
    TestFolder scratch;
    const FSSpec spec = scratch.Spec("File");
    CHECK(FSpDelete(&spec) == fnfErr);
    CHECK(FSpDelete(nullptr) == paramErr);
    scratch.Write("File", "text");
    for (const auto open : { FSpOpenDF, FSpOpenRF }) {
        SInt16 refNum = 0;
        REQUIRE(open(&spec, fsRdPerm, &refNum) == noErr);
        CHECK(FSpDelete(&spec) == fBsyErr);
        CHECK(FSClose(refNum) == noErr);
    }
    CHECK(FSpSetFLock(&spec) == noErr);
    CHECK(FSpDelete(&spec) == fLckdErr);
    CHECK(FSpRstFLock(&spec) == noErr);
    CHECK(FSpDelete(&spec) == noErr);
    CHECK(HDelete(scratch.folder.volume, 0x7FFFFFF0, PascalName("File")) == dirNFErr);
    CHECK(HDelete(-1000, 2, PascalName("File")) == nsvErr);
    CHECK(HDelete(-1, fsRtParID, PascalName("Host")) == vLckdErr);
}

TEST_CASE("FSpDelete: a folder must list nothing; parts that earlier files left do not count")
{
    TestFolder scratch;
    scratch.MakeFolder("Folder");
    scratch.Write("Folder/File");
    const FSSpec folder = scratch.Spec("Folder"), file = scratch.Spec(":Folder:File");
    CHECK(FSpDelete(&folder) == fBsyErr);
    CHECK(FSpDelete(&file) == noErr);
    scratch.Write("Folder/._Gone", Seed("appledouble"));
    scratch.Write("Folder/.AppleDouble/Gone", Seed("appledouble"));
    scratch.Write("._Folder", Seed("appledouble"));
    CHECK(FSpDelete(&folder) == noErr);
    CHECK(scratch.Names().empty());
}

TEST_CASE("FSpDelete: the default directory is in use")
{
    TestFolder scratch;
    scratch.MakeFolder("Folder");
    const FSSpec spec = scratch.Spec("Folder");
    const files::Folder before = files::DefaultFolder();
    REQUIRE(HSetVol(nullptr, scratch.folder.volume, scratch.IDOf("Folder")) == noErr);
    CHECK(FSpDelete(&spec) == fBsyErr);
    files::SetDefaultFolder(before);
    CHECK(FSpDelete(&spec) == noErr);
}

TEST_CASE("FSpDelete, FSpRename: an FSSpec without a name does not mean its folder")
{
    TestFolder scratch;
    scratch.MakeFolder("Folder");
    FSSpec spec = {};
    spec.vRefNum = scratch.folder.volume;
    spec.parID = scratch.IDOf("Folder");
    CHECK(FSpDelete(&spec) == bdNamErr);
    CHECK(FSpRename(&spec, PascalName("x")) == bdNamErr);
    CHECK(scratch.Names() == "Folder");
}

TEST_CASE("FSpDelete: of a link, and not of what it leads to")
{
    TestFolder scratch;
    scratch.Write("Real/File", "kept");
    std::filesystem::create_symlink("Real", scratch.Path() / "ToFolder");
    std::filesystem::create_symlink("Real/File", scratch.Path() / "ToFile");
    std::filesystem::create_symlink("Nowhere", scratch.Path() / "ToNothing");
    for (const char* name : { "ToFolder", "ToFile", "ToNothing" }) {
        CAPTURE(name);
        const FSSpec spec = scratch.Spec(name);
        CHECK(FSpDelete(&spec) == noErr);
    }
    CHECK(scratch.Names() == "Real");
    CHECK(scratch.Bytes("Real/File") == "kept");
}

TEST_CASE("FSpDelete: an ID of what was deleted leads nowhere, also when the name is used again")
{
    TestFolder scratch;
    scratch.Write("File");
    const FSRef ref = scratch.Ref("File");
    const FSSpec spec = scratch.Spec("File");
    CHECK(FSpDelete(&spec) == noErr);
    CHECK(FSpCreate(&spec, 'lamp', 'TEXT', -1) == noErr);
    UInt8 path[1024];
    CHECK(FSRefMakePath(&ref, path, sizeof path) == fnfErr);
}

TEST_CASE("A folder that may not be written: permErr, and nothing is left half made")
{
    if (geteuid() == 0) {
        MESSAGE("skipped: the superuser may write everywhere");
        return;
    }
    TestFolder scratch;
    scratch.Write("File", "text");
    chmod(scratch.Path().c_str(), 0555);
    const FSSpec spec = scratch.Spec("New"), file = scratch.Spec("File");
    CHECK(FSpCreate(&spec, 'lamp', 'TEXT', -1) == permErr);
    CHECK(FSpDelete(&file) == permErr);
    CHECK(FSpRename(&file, PascalName("Other")) == permErr);
    chmod(scratch.Path().c_str(), 0755);
    CHECK(scratch.Names() == "File");
}

TEST_CASE("A full disk, and one that may only be read: dskFulErr and wPrErr, and the old state stays")
{
    TestFolder scratch;
    const auto disk = scratch.MakeFolder("Disk");
    if (mount("lampblack-test", disk.c_str(), "tmpfs", 0, "size=64k") != 0) {
        MESSAGE("skipped: no file system may be mounted here");
        return;
    }
    const FSSpec spec = scratch.Spec(":Disk:File"), other = scratch.Spec(":Disk:Other");
    CHECK(FSpCreate(&spec, 'lamp', 'TEXT', -1) == noErr);
    PutFork(spec, "old");
    SInt16 refNum = 0;
    REQUIRE(FSpOpenDF(&spec, fsRdWrPerm, &refNum) == noErr);
    CHECK(SetEOF(refNum, 1000000) == dskFulErr);
    const std::string bytes(100000, 'x');
    SInt32 count = (SInt32)bytes.size();
    CHECK(FSWrite(refNum, &count, bytes.data()) == dskFulErr);
    CHECK(count > 0);
    CHECK(count < 65536);
    CHECK(FSClose(refNum) == noErr);
    CHECK(FSpCreate(&other, 'lamp', 'TEXT', -1) == dskFulErr);
    REQUIRE(FSpOpenRF(&spec, fsRdWrPerm, &refNum) == noErr);
    count = 4;
    CHECK(FSWrite(refNum, &count, "new!") == dskFulErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(scratch.Fork("Disk/File") == "old");
    CHECK_FALSE(scratch.Has("Disk/Other"));
    if (mount(nullptr, disk.c_str(), nullptr, MS_REMOUNT | MS_RDONLY, "size=64k") == 0) {
        CHECK(FSpCreate(&other, 'lamp', 'TEXT', -1) == wPrErr);
        CHECK(FSpDelete(&spec) == wPrErr);
        CHECK(FSpOpenDF(&spec, fsRdWrPerm, &refNum) == wPrErr);
        CHECK(FSpOpenRF(&spec, fsRdWrPerm, &refNum) == wPrErr);
        CHECK(FSpRename(&spec, PascalName("Renamed")) == wPrErr);
        CHECK(FSpOpenDF(&spec, fsCurPerm, &refNum) == noErr);
        CHECK(FSClose(refNum) == noErr);
    }
    CHECK(umount(disk.c_str()) == 0);
}
