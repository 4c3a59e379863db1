// Files: what names mean, what FSSpecs and FSRefs say, where parts are found.
#include <Carbon/Files.h>

#include <ScratchFolder.h>
#include <algorithm>
#include <cstring>
#include <doctest/doctest.h>
#include <files/Catalog.h>
#include <files/FileReferences.h>
#include <files/ForkLocator.h>
#include <files/OpenFiles.h>
#include <fstream>
#include <iterator>
#include <lampblack/host.h>
#include <unistd.h>

using namespace lampblack;

// The published records are packed to 2 bytes: a '+' before a field keeps a check from taking its address.

namespace {

struct PascalString {
    Str255 text;
    PascalString(std::string_view inText)
    {
        text[0] = (unsigned char)inText.size();
        std::memcpy(text + 1, inText.data(), inText.size());
    }
    operator ConstStr255Param() const { return text; }
};

std::string TextOf(ConstStr255Param inString)
{
    return std::string((const char*)inString + 1, inString[0]);
}

std::string NameOf(const FSSpec& inSpec)
{
    return TextOf(inSpec.name);
}

// A scratch folder and its numbers.
struct Scratch : ScratchFolder {
    files::Folder folder;

    Scratch()
    {
        files::Item item;
        REQUIRE(files::ItemAtPath(Path(), &item));
        folder = files::NodeOf(item);
    }

    OSErr Make(std::string_view inName, FSSpec* outSpec) const
    {
        return FSMakeFSSpec(folder.volume, folder.id, PascalString(inName), outSpec);
    }

    FSSpec Spec(std::string_view inName) const
    {
        FSSpec spec = {};
        const OSErr error = Make(inName, &spec);
        CHECK((error == noErr || error == fnfErr));
        return spec;
    }

    FSRef Ref(std::string_view inName) const
    {
        FSRef ref = {};
        const FSSpec spec = Spec(inName);
        CHECK(FSpMakeFSRef(&spec, &ref) == noErr);
        return ref;
    }
};

std::string Seed(const std::string& inName)
{
    std::ifstream file(LAMPBLACK_SOURCE_DIR "/tests/fuzz/corpus/ResourceFile/" + inName, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

std::string PathOfRef(const FSRef& inRef)
{
    UInt8 path[4096];
    CHECK(FSRefMakePath(&inRef, path, sizeof path) == noErr);
    return (const char*)path;
}

} // namespace

TEST_CASE("FSMakeFSSpec: a file that is there, and one that is not, which is filled in all the same")
{
    Scratch scratch;
    scratch.Write("Here");
    FSSpec spec = {};
    CHECK(scratch.Make("Here", &spec) == noErr);
    CHECK(spec.vRefNum == -1);
    CHECK(+spec.parID == scratch.folder.id);
    CHECK(NameOf(spec) == "Here");
    CHECK(scratch.Make("Nowhere", &spec) == fnfErr);
    CHECK(+spec.parID == scratch.folder.id);
    CHECK(NameOf(spec) == "Nowhere");
}

TEST_CASE("FSMakeFSSpec: partial paths go down and up; what is missing on the way is dirNFErr")
{
    Scratch scratch;
    scratch.Write("A/B/File");
    scratch.Write("Top");
    FSSpec spec = {}, folder = {};
    CHECK(scratch.Make(":A:B:", &folder) == noErr);
    CHECK(scratch.Make(":A:B:File", &spec) == noErr);
    CHECK(NameOf(spec) == "File");
    files::Item item;
    REQUIRE(files::Resolve(folder, &item) == noErr);
    CHECK(+spec.parID == files::NodeOf(item).id);
    CHECK(scratch.Make(":A:B::B:File", &folder) == noErr);
    CHECK(+folder.parID == +spec.parID);
    CHECK(scratch.Make(":A:B:::Top", &folder) == noErr);
    CHECK(+folder.parID == scratch.folder.id);
    CHECK(scratch.Make(":A:C:File", &folder) == dirNFErr);
    CHECK(scratch.Make(":Top:File", &folder) == dirNFErr);
    CHECK(scratch.Make(":Top:", &folder) == dirNFErr);
    CHECK(scratch.Make(":A:C", &folder) == fnfErr);
    CHECK(NameOf(folder) == "C");
}

TEST_CASE("FSMakeFSSpec: a full path ignores the directory; the volume itself has parent 1")
{
    Scratch scratch;
    scratch.Write("File");
    std::string path = scratch.Path().string() + "/File";
    for (char& c : path)
        c = c == '/' ? ':' : c;
    FSSpec spec = {};
    CHECK(FSMakeFSSpec(0, 0, PascalString("Host" + path), &spec) == noErr);
    CHECK(+spec.parID == scratch.folder.id);
    CHECK(scratch.Make("host:", &spec) == noErr);
    CHECK(spec.vRefNum == -1);
    CHECK(+spec.parID == fsRtParID);
    CHECK(NameOf(spec) == "Host");
    CHECK(scratch.Make("No such volume:File", &spec) == nsvErr);
    CHECK(scratch.Make("Host::x", &spec) == dirNFErr);
}

TEST_CASE("FSMakeFSSpec: an empty name is the directory itself")
{
    Scratch scratch;
    FSSpec spec = {};
    CHECK(FSMakeFSSpec(-1, scratch.folder.id, PascalString(""), &spec) == noErr);
    CHECK(files::HostNameOf(NameOf(spec)) == scratch.Path().filename().string());
    CHECK(FSMakeFSSpec(-1, fsRtDirID, nullptr, &spec) == noErr);
    CHECK(+spec.parID == fsRtParID);
}

TEST_CASE("FSMakeFSSpec: bad volumes, directories, names and pointers")
{
    Scratch scratch;
    FSSpec spec = {};
    CHECK(FSMakeFSSpec(-99, 0, PascalString("x"), &spec) == nsvErr);
    CHECK(FSMakeFSSpec(99, 0, PascalString("x"), &spec) == nsvErr);
    CHECK(FSMakeFSSpec(-1, 0x7FFFFFFF, PascalString("x"), &spec) == dirNFErr);
    CHECK(FSMakeFSSpec(-1, -5, PascalString("x"), &spec) == dirNFErr);
    CHECK(scratch.Make(std::string(32, 'x'), &spec) == bdNamErr);
    CHECK(scratch.Make(std::string("a\0b", 3), &spec) == bdNamErr);
    CHECK(scratch.Make("..", &spec) == bdNamErr);
    CHECK(scratch.Make(":..:..", &spec) == bdNamErr);
    CHECK(FSMakeFSSpec(0, 0, PascalString("x"), nullptr) == paramErr);
}

TEST_CASE("FSMakeFSSpec: the exact name first, then any capitals, as the disk has it")
{
    Scratch scratch;
    scratch.Write("readme");
    scratch.Write("ReadMe");
    scratch.Write("caf\xC3\xA9");
    CHECK(NameOf(scratch.Spec("readme")) == "readme");
    CHECK(NameOf(scratch.Spec("ReadMe")) == "ReadMe");
    CHECK(NameOf(scratch.Spec("README")) == "ReadMe");
    CHECK(NameOf(scratch.Spec("CAF\x83")) == "caf\x8E");
}

TEST_CASE("FSMakeFSSpec: a name with combining accents on the host is the one with accented letters here")
{
    Scratch scratch;
    scratch.Write("cafe\xCC\x81");
    FSSpec spec = {};
    CHECK(scratch.Make("caf\x8E", &spec) == noErr);
    FSRef ref;
    CHECK(FSpMakeFSRef(&spec, &ref) == noErr);
    CHECK(PathOfRef(ref) == (scratch.Path() / "cafe\xCC\x81").string());
}

TEST_CASE("FSMakeFSSpec: a ':' on the host is a '/' here")
{
    Scratch scratch;
    scratch.Write("a:b");
    FSSpec spec = {};
    CHECK(scratch.Make("a/b", &spec) == noErr);
    CHECK(NameOf(spec) == "a/b");
    CHECK(scratch.Make("c/d", &spec) == fnfErr);
}

TEST_CASE("FSMakeFSSpec: host names that do not fit get a short form that leads back to them")
{
    Scratch scratch;
    for (const std::string& name :
         { std::string("A name that is much longer than thirty-one letters.txt"),
           std::string("\xE4\xB8\xAD\xE6\x96\x87.doc"), std::string("bad\xFFutf8"),
           std::string("A name that is much longer than thirty-one letters, too.txt") }) {
        scratch.Write(name);
        const std::string shortName = files::MacNameOf(name);
        CHECK(shortName.size() <= 31);
        CHECK(shortName.find('#') != std::string::npos);
        FSSpec spec = {};
        CHECK(scratch.Make(shortName, &spec) == noErr);
        FSRef ref;
        CHECK(FSpMakeFSRef(&spec, &ref) == noErr);
        CHECK(PathOfRef(ref) == (scratch.Path() / name).string());
    }
    CHECK(files::MacNameOf("A name that is much longer than thirty-one letters.txt").ends_with(".txt"));
}

TEST_CASE("Directory IDs: the same folder keeps its ID, another gets another")
{
    Scratch scratch;
    scratch.MakeFolder("A");
    scratch.MakeFolder("B");
    files::Item a, again, b;
    REQUIRE(files::ItemAtPath(scratch.Path() / "A", &a));
    REQUIRE(files::ItemAtPath(scratch.Path() / "B/../A", &again));
    REQUIRE(files::ItemAtPath(scratch.Path() / "B", &b));
    CHECK(files::NodeOf(a) == files::NodeOf(again));
    CHECK_FALSE(files::NodeOf(a) == files::NodeOf(b));
    std::filesystem::remove(scratch.Path() / "B");
    FSSpec spec;
    CHECK(FSMakeFSSpec(-1, files::NodeOf(b).id, PascalString("x"), &spec) == dirNFErr);
}

TEST_CASE("AddVolume: a folder of the host as a volume of its own")
{
    Scratch scratch;
    scratch.Write("disk/Folder/File");
    const SInt16 volume = files::AddVolume("Disk", scratch.Path() / "disk");
    REQUIRE(volume < -1);
    FSSpec spec = {};
    CHECK(FSMakeFSSpec(volume, 0, PascalString(":Folder:File"), &spec) == noErr);
    CHECK(spec.vRefNum == volume);
    FSSpec same = {};
    CHECK(FSMakeFSSpec(0, 0, PascalString("Disk:Folder:File"), &same) == noErr);
    CHECK(+same.parID == +spec.parID);
    CHECK(FSMakeFSSpec(volume, fsRtDirID, PascalString("::x"), &spec) == dirNFErr);
    FSRef first, second;
    CHECK(FSPathMakeRef((const UInt8*)(scratch.Path() / "disk/Folder/File").c_str(), &first, nullptr) ==
          noErr);
    CHECK(FSpMakeFSRef(&same, &second) == noErr);
    CHECK(FSCompareFSRefs(&first, &second) == noErr);
}

TEST_CASE("HGetVol, HSetVol: the default directory is where volume 0 and directory 0 lead")
{
    Scratch scratch;
    scratch.Write("A/File");
    const files::Folder before = files::DefaultFolder();
    Str255 name;
    SInt16 volume = 0;
    SInt32 directory = 0;
    CHECK(HSetVol(PascalString("A"), scratch.folder.volume, scratch.folder.id) == noErr);
    CHECK(HGetVol(name, &volume, &directory) == noErr);
    CHECK(TextOf(name) == "Host");
    FSSpec spec = {};
    CHECK(FSMakeFSSpec(0, 0, PascalString("File"), &spec) == noErr);
    CHECK(+spec.parID == directory);
    CHECK(HSetVol(nullptr, volume, 0x7FFFFFF0) == dirNFErr);
    CHECK(HSetVol(PascalString("File"), 0, 0) == dirNFErr);
    CHECK(HSetVol(PascalString("Missing"), 0, 0) == dirNFErr);
    CHECK(HGetVol(nullptr, nullptr, nullptr) == noErr);
    files::SetDefaultFolder(before);
}

TEST_CASE("FSpGetFInfo: a folder and a missing file are fnfErr; a bare file has no information")
{
    Scratch scratch;
    scratch.MakeFolder("Folder");
    scratch.Write("File", "text");
    FInfo info;
    FSSpec spec = scratch.Spec("Folder");
    CHECK(FSpGetFInfo(&spec, &info) == fnfErr);
    spec = scratch.Spec("Missing");
    CHECK(FSpGetFInfo(&spec, &info) == fnfErr);
    spec = scratch.Spec("File");
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    CHECK(+info.fdType == 0);
    CHECK(FSpGetFInfo(nullptr, &info) == paramErr);
}

TEST_CASE("FSpGetFInfo: from each place beside the file and in it")
{
    const std::string appleDouble = Seed("appledouble");
    for (const char* place : { "._File", "__MACOSX/._File", "File.rsrc", "%File", ".AppleDouble/File" }) {
        CAPTURE(place);
        Scratch scratch;
        scratch.Write("File", "text");
        scratch.Write(place, appleDouble);
        const FSSpec spec = scratch.Spec("File");
        FInfo info = {};
        CHECK(FSpGetFInfo(&spec, &info) == noErr);
        CHECK(+info.fdType == 'APPL');
        CHECK(+info.fdCreator == 'lamp');
    }
    for (const char* seed : { "macbinary2", "applesingle", "binhex" }) {
        CAPTURE(seed);
        Scratch scratch;
        scratch.Write("File", Seed(seed));
        const FSSpec spec = scratch.Spec("File");
        FInfo info = {};
        CHECK(FSpGetFInfo(&spec, &info) == noErr);
        CHECK(+info.fdCreator == 'lamp');
    }
}

TEST_CASE("LocateForks: the archive's folder may lie above, and repeats the folders between")
{
    Scratch scratch;
    scratch.Write("A/B/File", "text");
    scratch.Write("__MACOSX/A/B/._File", Seed("appledouble"));
    const files::LocatedForks forks = files::LocateForks(scratch.Path() / "A/B/File");
    CHECK(forks.form == files::Form::AppleDouble);
    CHECK_FALSE(forks.resourceFork.empty());
}

TEST_CASE("LocateForks: an empty fork does not hide the next form, and the first that is not empty counts")
{
    Scratch scratch;
    const auto file = scratch.Write("File", "text");
    scratch.Write("._File", Seed("appledouble-empty"));
    CHECK(files::LocateForks(file).hasResourceFork);
    CHECK(files::LocateForks(file).resourceFork.empty());
    scratch.Write("%File", Seed("appledouble"));
    CHECK(files::LocateForks(file).resourcePath.filename() == "%File");
    scratch.Write("File.rsrc", Seed("raw-rich"));
    CHECK(files::LocateForks(file).resourcePath.filename() == "File.rsrc");
    CHECK(files::LocateForks(file).form == files::Form::RawFork);
    CHECK(files::LocateForks(file).finderPath.filename() == "._File");
    scratch.Write("File", Seed("macbinary2"));
    CHECK(files::LocateForks(file).form == files::Form::MacBinary);
    CHECK(std::string((const char*)files::LocateForks(file).dataFork.data(), 4) == "text");
}

TEST_CASE("LocateForks: sidecars that are anything else are passed over")
{
    Scratch scratch;
    const auto file = scratch.Write("File", "text");
    scratch.Write("._File", "garbage");
    scratch.MakeFolder("File.rsrc");
    scratch.MakeFolder(".AppleDouble/File");
    const files::LocatedForks forks = files::LocateForks(file);
    CHECK(forks.exists);
    CHECK_FALSE(forks.hasResourceFork);
    CHECK_FALSE(files::LocateForks(scratch.Path() / "absent").exists);
    CHECK_FALSE(files::LocateForks(scratch.Path()).exists);
}

TEST_CASE("FSPathMakeRef, FSRefMakePath: links are followed; short buffers and bad references are errors")
{
    Scratch scratch;
    scratch.Write("Real/File");
    std::filesystem::create_symlink(scratch.Path() / "Real", scratch.Path() / "Link");
    FSRef ref, viaLink;
    Boolean isFolder = true;
    CHECK(FSPathMakeRef((const UInt8*)(scratch.Path() / "Real/File").c_str(), &ref, &isFolder) == noErr);
    CHECK_FALSE(isFolder);
    CHECK(FSPathMakeRef((const UInt8*)(scratch.Path() / "Link/File").c_str(), &viaLink, nullptr) == noErr);
    CHECK(FSCompareFSRefs(&ref, &viaLink) == noErr);
    CHECK(PathOfRef(viaLink) == (scratch.Path() / "Real/File").string());
    UInt8 buffer[8];
    CHECK(FSRefMakePath(&ref, buffer, sizeof buffer) == pathTooLongErr);
    CHECK(FSPathMakeRef((const UInt8*)"/no/such/file", &ref, nullptr) == fnfErr);
    CHECK(FSPathMakeRef(nullptr, &ref, nullptr) == paramErr);
    CHECK(FSPathMakeRef((const UInt8*)"/", &ref, &isFolder) == noErr);
    CHECK(isFolder);
    CHECK(PathOfRef(ref) == "/");
    FSRef garbage;
    std::memset(&garbage, 0x5A, sizeof garbage);
    CHECK(FSRefMakePath(&garbage, buffer, sizeof buffer) == errFSBadFSRef);
    CHECK(FSCompareFSRefs(&ref, &garbage) == errFSBadFSRef);
    CHECK(FSCompareFSRefs(nullptr, &ref) == paramErr);
    CHECK(FSCompareFSRefs(&ref, &viaLink) == errFSRefsDifferent);
}

TEST_CASE("FSRef: a file that went away is fnfErr")
{
    Scratch scratch;
    scratch.Write("File");
    const FSRef ref = scratch.Ref("File");
    std::filesystem::remove(scratch.Path() / "File");
    UInt8 path[1024];
    CHECK(FSRefMakePath(&ref, path, sizeof path) == fnfErr);
    CHECK(FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, nullptr, nullptr) == fnfErr);
}

TEST_CASE("FSGetCatalogInfo: every field of a file")
{
    Scratch scratch;
    scratch.Write("File", "12345");
    const std::string sidecar = Seed("appledouble");
    scratch.Write("._File", sidecar);
    const FSRef ref = scratch.Ref("File");
    FSCatalogInfo info;
    std::memset(&info, 0xAA, sizeof info);
    HFSUniStr255 name;
    FSSpec spec;
    FSRef parent;
    REQUIRE(FSGetCatalogInfo(&ref, kFSCatInfoGettableInfo, &info, &name, &spec, &parent) == noErr);
    CHECK((info.nodeFlags & kFSNodeIsDirectoryMask) == 0);
    CHECK(info.volume == -1);
    CHECK(+info.parentDirID == (UInt32)scratch.folder.id);
    CHECK(+info.nodeID > 15);
    CHECK(+info.dataLogicalSize == 5);
    CHECK(+info.dataPhysicalSize == 4096);
    CHECK(+info.rsrcLogicalSize == 321);
    CHECK(+info.valence == 0);
    CHECK(+info.createDate.lowSeconds > 3600000000u); // after 2018
    CHECK(+info.createDate.highSeconds == 0);
    CHECK(+info.backupDate.lowSeconds == 0);
    FInfo finder;
    std::memcpy(&finder, info.finderInfo, sizeof finder);
    CHECK(+finder.fdType == 'APPL');
    FSPermissionInfo permissions;
    std::memcpy(&permissions, info.permissions, sizeof permissions);
    CHECK(+permissions.userID == getuid());
    CHECK((permissions.userAccess & 4) == 4);
    CHECK(name.length == 4);
    CHECK(name.unicode[0] == 'F');
    CHECK(NameOf(spec) == "File");
    CHECK(PathOfRef(parent) == scratch.Path().string());
}

TEST_CASE(
    "FSGetCatalogInfo: a folder counts its entries without the parts of others; fields not asked for stay")
{
    Scratch scratch;
    scratch.Write("Folder/One");
    scratch.Write("Folder/._One");
    scratch.Write("Folder/Two");
    const FSRef ref = scratch.Ref("Folder");
    FSCatalogInfo info;
    std::memset(&info, 0xAA, sizeof info);
    REQUIRE(FSGetCatalogInfo(&ref, kFSCatInfoValence | kFSCatInfoNodeFlags, &info, nullptr, nullptr,
                             nullptr) == noErr);
    CHECK(+info.valence == 2);
    CHECK((info.nodeFlags & kFSNodeIsDirectoryMask) != 0);
    CHECK(+info.dataLogicalSize == 0xAAAAAAAAAAAAAAAAu);
    CHECK(FSGetCatalogInfo(&ref, 0x00100000, &info, nullptr, nullptr, nullptr) == paramErr);
}

TEST_CASE("FSGetCatalogInfo: the name in full, and no parent above a volume")
{
    Scratch scratch;
    const std::string longName = "A name that is much longer than thirty-one letters \xE4\xB8\xAD";
    scratch.Write(longName);
    const FSRef ref = scratch.Ref(files::MacNameOf(longName));
    HFSUniStr255 name;
    REQUIRE(FSGetCatalogInfo(&ref, 0, nullptr, &name, nullptr, nullptr) == noErr);
    CHECK(name.length == longName.size() - 2);
    CHECK(name.unicode[name.length - 1] == 0x4E2D);
    FSRef root, parent;
    REQUIRE(FSPathMakeRef((const UInt8*)"/", &root, nullptr) == noErr);
    FSSpec spec;
    REQUIRE(FSGetCatalogInfo(&root, 0, nullptr, nullptr, &spec, &parent) == noErr);
    CHECK(+spec.parID == fsRtParID);
    CHECK(std::all_of(parent.hidden, parent.hidden + 80, [](UInt8 byte) { return byte == 0; }));
}

TEST_CASE("PBGetFCBInfoSync: a reference number leads to its file")
{
    Scratch scratch;
    scratch.Write("Open me");
    files::OpenFile open;
    const FSSpec spec = scratch.Spec("Open me");
    REQUIRE(files::Resolve(spec, &open.item) == noErr);
    open.isResourceFork = true;
    open.logicalSize = 5000;
    const SInt16 refNum = files::AddOpenFile(open);
    REQUIRE(refNum > 0);
    Str255 name;
    FCBPBRec block = {};
    block.ioNamePtr = name;
    block.ioRefNum = refNum;
    CHECK(PBGetFCBInfoSync(&block) == noErr);
    CHECK(TextOf(name) == "Open me");
    CHECK(+block.ioFCBVRefNum == -1);
    CHECK(+block.ioFCBParID == scratch.folder.id);
    CHECK(+block.ioFCBEOF == 5000);
    CHECK(+block.ioFCBPLen == 8192);
    block.ioFCBIndx = 1;
    block.ioRefNum = 0;
    block.ioVRefNum = 0;
    CHECK(PBGetFCBInfoSync(&block) == noErr);
    CHECK(block.ioRefNum == refNum);
    block.ioFCBIndx = 999;
    CHECK(PBGetFCBInfoSync(&block) == fnOpnErr);
    const FSRef ref = scratch.Ref("Open me");
    FSCatalogInfo info = {};
    CHECK(FSGetCatalogInfo(&ref, kFSCatInfoNodeFlags, &info, nullptr, nullptr, nullptr) == noErr);
    CHECK((info.nodeFlags & kFSNodeResOpenMask) != 0);
    files::RemoveOpenFile(refNum);
    block.ioFCBIndx = 0;
    block.ioRefNum = refNum;
    CHECK(PBGetFCBInfoSync(&block) == rfNumErr);
    CHECK(block.ioResult == rfNumErr);
    CHECK(PBGetFCBInfoSync(nullptr) == paramErr);
}

TEST_CASE("PBHGetVolParmsSync: the attributes; a short buffer gets what fits")
{
    UInt8 buffer[sizeof(GetVolParmsInfoBuffer) + 4];
    std::memset(buffer, 0xAA, sizeof buffer);
    HParamBlockRec block = {};
    block.ioParam.ioVRefNum = -1;
    block.ioParam.ioBuffer = (Ptr)buffer;
    block.ioParam.ioReqCount = 32;
    CHECK(PBHGetVolParmsSync(&block) == noErr);
    CHECK(+block.ioParam.ioActCount == 32);
    CHECK(buffer[32] == 0xAA);
    GetVolParmsInfoBuffer info;
    std::memcpy(&info, buffer, 32);
    CHECK(((UInt32)info.vMAttrib >> bLimitFCBs & 1) == 1);
    CHECK(((UInt32)info.vMAttrib >> bHasFileIDs & 1) == 0);
    block.ioParam.ioVRefNum = -1000;
    CHECK(PBHGetVolParmsSync(&block) == nsvErr);
    block.ioParam.ioBuffer = nullptr;
    CHECK(PBHGetVolParmsSync(&block) == paramErr);
}
