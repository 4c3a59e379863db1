// Alias records: their bytes, and the targets that they lead to after all that may happen to those.
#include "AliasRecord.h"
#include "CatalogFixture.h"

#include <Carbon/Aliases.h>
#include <Carbon/MacMemory.h>
#include <sys/stat.h>
#include <vector>

using namespace lampblack::files;

namespace {

// A record in a handle, disposed of at the end.
struct Alias {
    AliasHandle handle = nullptr;

    Alias() = default;
    explicit Alias(const std::vector<UInt8>& inBytes)
    {
        CHECK(PtrToHand(inBytes.data(), (Handle*)&handle, (long)inBytes.size()) == noErr);
    }
    ~Alias()
    {
        if (handle)
            DisposeHandle((Handle)handle);
    }
    Alias(const Alias&) = delete;

    Bytes Contents() const { return { (const UInt8*)*handle, (size_t)GetHandleSize((Handle)handle) }; }
    AliasContents Read() const
    {
        AliasContents contents;
        CHECK(ReadAlias(Contents(), &contents));
        return contents;
    }
};

std::string Resolved(const Alias& inAlias, const FSSpec* inFrom = nullptr, Boolean* outChanged = nullptr)
{
    FSSpec spec = {};
    Boolean changed = false;
    const OSErr error = ResolveAlias(inFrom, inAlias.handle, &spec, outChanged ? outChanged : &changed);
    if (error != noErr)
        return std::to_string(error);
    Item item;
    CHECK(Resolve(spec, &item) == noErr);
    return PathOf(item).string();
}

AliasContents Sample()
{
    AliasContents contents;
    contents.userType = 'user';
    contents.isFolder = true;
    contents.volumeName = "Disk";
    contents.volumeDate = 0xC0000001;
    contents.volumeSignature = 0x482B;
    contents.parentID = 17;
    contents.fileID = 0x80000001;
    contents.fileName = "Target";
    contents.fileDate = 0xC0000002;
    contents.fileType = 'TEXT';
    contents.creator = 'lamp';
    contents.birth = 0x0000C00000028000;
    contents.levelsFrom = 2;
    contents.levelsTo = 3;
    contents.parentName = "odd"; // of odd length: a byte follows
    contents.folderIDs = { 17, 16, 15 };
    contents.macPath = "Disk:a:b:Target";
    contents.unicodeName = u"T\u00E4rget";
    contents.unicodeVolumeName = u"Disk";
    contents.posixPath = "/a/b/T\xC3\xA4rget";
    contents.mountPoint = "/Volumes/Disk";
    return contents;
}

void CheckSame(const AliasContents& inLeft, const AliasContents& inRight)
{
    CHECK(WriteAlias(inLeft) == WriteAlias(inRight));
}

} // namespace

TEST_CASE("WriteAlias, ReadAlias: every field, where the published layout has it")
{
    const std::vector<UInt8> bytes = WriteAlias(Sample());
    const Bytes all(bytes);
    CHECK(lampblack::foundation::ReadBE32(all, 0) == 'user');
    CHECK(lampblack::foundation::ReadBE16(all, 4) == bytes.size());
    CHECK(lampblack::foundation::ReadBE16(all, 6) == 2);
    CHECK(bytes[10] == 4);
    CHECK(bytes[11] == 'D');
    CHECK(lampblack::foundation::ReadBE16(all, 42) == 0x482B);
    CHECK(lampblack::foundation::ReadBE32(all, 46) == 17);
    CHECK(bytes[50] == 6);
    CHECK(lampblack::foundation::ReadBE32(all, 122) == 'TEXT');
    CHECK(lampblack::foundation::ReadBE16(all, 130) == 2);
    CHECK(lampblack::foundation::ReadBE16(all, 150) == 0); // the first entry: the parent's name
    CHECK(lampblack::foundation::ReadBE16(all, 152) == 3);
    CHECK(lampblack::foundation::ReadBE16(all, 158) == 1);
    CHECK(lampblack::foundation::ReadBE32(all, bytes.size() - 4) == 0xFFFF0000);
    AliasContents read;
    REQUIRE(ReadAlias(bytes, &read));
    CheckSame(read, Sample());
    CHECK(read.folderIDs == Sample().folderIDs);
    CHECK(read.unicodeName == Sample().unicodeName);
    CHECK(read.birth == Sample().birth);
    CHECK(read.mountPoint == Sample().mountPoint);
}

TEST_CASE("ReadAlias: bytes that are no record, and records that are cut off")
{
    const std::vector<UInt8> bytes = WriteAlias(Sample());
    AliasContents contents;
    for (size_t size = 0; size < bytes.size(); ++size)
        CHECK_FALSE(ReadAlias(Bytes(bytes).first(size), &contents));
    std::vector<UInt8> version = bytes;
    version[7] = 4;
    CHECK_FALSE(ReadAlias(version, &contents));
    std::vector<UInt8> shorter = bytes; // its own length says that the entries are cut off
    shorter[4] = 0;
    shorter[5] = 156;
    REQUIRE(ReadAlias(shorter, &contents));
    CHECK(contents.fileName == "Target");
    CHECK(contents.posixPath.empty());
    shorter[5] = 149;
    CHECK_FALSE(ReadAlias(shorter, &contents));
    std::vector<UInt8> names = bytes; // names longer than their fields
    names[10] = names[50] = 255;
    REQUIRE(ReadAlias(names, &contents));
    CHECK(contents.volumeName.size() == 27);
    CHECK(contents.fileName.size() == 63);
}

TEST_CASE("ReadAlias: a record of version 3 keeps its names in the entries")
{
    std::vector<UInt8> bytes(58, 0);
    bytes[7] = 3;
    bytes[9] = 1;
    bytes[18] = 'H';
    bytes[19] = '+';
    bytes[27] = 42; // parent
    bytes[31] = 43; // file
    const UInt8 entries[] = { 0, 18, 0, 4, '/', 'a', '/', 'b', 0xFF, 0xFF, 0, 0 };
    bytes.insert(bytes.end(), std::begin(entries), std::end(entries));
    bytes[5] = (UInt8)bytes.size();
    AliasContents contents;
    REQUIRE(ReadAlias(bytes, &contents));
    CHECK(contents.isFolder);
    CHECK(contents.volumeSignature == 0x482B);
    CHECK(contents.parentID == 42);
    CHECK(contents.fileID == 43);
    CHECK(contents.posixPath == "/a/b");
}

TEST_CASE("WriteAlias: what does not fit into a record is left out, and the rest is sound")
{
    AliasContents contents = Sample();
    contents.macPath = std::string(65000, 'x');
    contents.posixPath = std::string(70000, 'y');
    contents.unicodeName = std::u16string(40000, u'z');
    const std::vector<UInt8> bytes = WriteAlias(contents);
    CHECK(bytes.size() <= 0xFFFF);
    AliasContents read;
    REQUIRE(ReadAlias(bytes, &read));
    CHECK(read.macPath.size() == 65000);
    CHECK(read.posixPath.empty());
    CHECK(read.mountPoint == contents.mountPoint);
}

TEST_CASE("NewAlias, ResolveAlias: there and back, for files, folders, volumes and names of any bytes")
{
    CatalogFolder scratch;
    scratch.MakeFolder("Folder");
    for (const std::string& name :
         { std::string("File"), std::string("a:b"), std::string("\xE4\xB8\xAD \xFF"), std::string(255, 'n'),
           std::string("caf\xC3\xA9"), std::string("Folder") }) {
        CAPTURE(name);
        if (name != "Folder")
            scratch.Write(name);
        const FSSpec spec = scratch.Spec(MacNameOf(name));
        Alias full, minimal;
        REQUIRE(NewAlias(nullptr, &spec, &full.handle) == noErr);
        REQUIRE(NewAliasMinimal(&spec, &minimal.handle) == noErr);
        Boolean changed = true;
        CHECK(Resolved(full, nullptr, &changed) == (scratch.Path() / name).string());
        CHECK_FALSE(changed);
        CHECK(Resolved(minimal) == (scratch.Path() / name).string());
        CHECK(GetAliasSize(full.handle) == GetHandleSize((Handle)full.handle));
        CHECK(GetAliasSize(minimal.handle) < GetAliasSize(full.handle));
    }
    FSRef root, found;
    REQUIRE(FSPathMakeRef((const UInt8*)"/", &root, nullptr) == noErr);
    Alias volume;
    Boolean changed;
    REQUIRE(FSNewAlias(nullptr, &root, &volume.handle) == noErr);
    CHECK(FSResolveAlias(nullptr, volume.handle, &found, &changed) == noErr);
    CHECK(FSCompareFSRefs(&root, &found) == noErr);
    CHECK(volume.Read().macPath == "Host:");
}

TEST_CASE("ResolveAlias: a target that was renamed, and folders above it, are found by their numbers")
{
    CatalogFolder scratch;
    scratch.Write("Outer/Inner/File");
    const FSSpec spec = scratch.Spec(":Outer:Inner:File");
    Alias alias, folders;
    REQUIRE(NewAlias(nullptr, &spec, &alias.handle) == noErr);
    REQUIRE(NewAlias(nullptr, &spec, &folders.handle) == noErr);
    SetAliasUserType(alias.handle, 'mine');
    const bool hasBirth = alias.Read().birth != 0; // not every host tells it
    std::filesystem::rename(scratch.Path() / "Outer/Inner/File", scratch.Path() / "Outer/Inner/Renamed");
    scratch.Write("Outer/Inner/Another");
    Boolean changed = false;
    if (hasBirth) {
        CHECK(Resolved(alias, nullptr, &changed) == (scratch.Path() / "Outer/Inner/Renamed").string());
        CHECK(changed);
        CHECK(alias.Read().fileName == "Renamed");
        CHECK(GetAliasUserType(alias.handle) == 'mine');
        CHECK(Resolved(alias, nullptr, &changed) == (scratch.Path() / "Outer/Inner/Renamed").string());
        CHECK_FALSE(changed);
    }
    std::filesystem::rename(scratch.Path() / "Outer/Inner/Renamed", scratch.Path() / "Outer/Inner/File");
    std::filesystem::rename(scratch.Path() / "Outer", scratch.Path() / "Outer 2");
    CHECK(Resolved(folders, nullptr, &changed) == (scratch.Path() / "Outer 2/Inner/File").string());
    CHECK(changed);
}

TEST_CASE("ResolveAlias: the name counts before the number, unless the caller says otherwise")
{
    CatalogFolder scratch;
    scratch.Write("File", "old");
    const FSSpec spec = scratch.Spec("File");
    Alias alias;
    REQUIRE(NewAlias(nullptr, &spec, &alias.handle) == noErr);
    std::filesystem::rename(scratch.Path() / "File", scratch.Path() / "Backup");
    scratch.Write("File", "new"); // as programs save
    Boolean changed = true;
    CHECK(Resolved(alias, nullptr, &changed) == (scratch.Path() / "File").string());
    CHECK_FALSE(changed);
    FSSpec found = {};
    REQUIRE(ResolveAliasWithMountFlags(nullptr, alias.handle, &found, &changed,
                                       kResolveAliasTryFileIDFirst) == noErr);
    CHECK(TextOf(found.name) == (alias.Read().birth ? "Backup" : "File"));
}

TEST_CASE("ResolveAlias: the way from a file comes first, so that both can move together")
{
    CatalogFolder scratch;
    scratch.Write("Game/Saves/Alias");
    scratch.Write("Game/Data/Level");
    const FSSpec from = scratch.Spec(":Game:Saves:Alias"), target = scratch.Spec(":Game:Data:Level");
    Alias alias;
    REQUIRE(NewAlias(&from, &target, &alias.handle) == noErr);
    CHECK(alias.Read().levelsFrom == 2);
    CHECK(alias.Read().levelsTo == 2);
    scratch.Write("Copy/Saves/Alias");
    scratch.Write("Copy/Data/Level");
    const FSSpec copy = scratch.Spec(":Copy:Saves:Alias");
    Boolean changed = false;
    CHECK(Resolved(alias, &copy, &changed) == (scratch.Path() / "Copy/Data/Level").string());
    CHECK(changed);
    CHECK(Resolved(alias) == (scratch.Path() / "Copy/Data/Level").string()); // brought up to date
    std::filesystem::remove(scratch.Path() / "Copy/Data/Level");
    scratch.Write("Elsewhere");
    const FSSpec elsewhere = scratch.Spec("Elsewhere");
    CHECK(Resolved(alias, &elsewhere) == std::to_string(fnfErr));
}

TEST_CASE("ResolveAlias: what is missing: the target, its folder, the volume; bytes that are no record")
{
    CatalogFolder scratch;
    scratch.Write("Folder/File");
    const FSSpec spec = scratch.Spec(":Folder:File");
    Alias alias;
    REQUIRE(NewAlias(nullptr, &spec, &alias.handle) == noErr);
    std::filesystem::remove(scratch.Path() / "Folder/File");
    FSSpec found = {};
    Boolean changed = true;
    CHECK(ResolveAlias(nullptr, alias.handle, &found, &changed) == fnfErr);
    CHECK_FALSE(changed);
    CHECK(TextOf(found.name) == "File"); // where it would be
    CHECK(+found.parID == +spec.parID);
    std::filesystem::remove(scratch.Path() / "Folder");
    CHECK(Resolved(alias) == std::to_string(dirNFErr));
    const AliasContents foreign = [] {
        AliasContents contents = Sample();
        contents.mountPoint = "/no/such/place";
        return contents;
    }();
    CHECK(Resolved(Alias(WriteAlias(foreign))) == std::to_string(nsvErr));
    CHECK(Resolved(Alias(std::vector<UInt8>(40, 0xEE))) == std::to_string(paramErr));
    CHECK(Resolved(Alias(std::vector<UInt8>())) == std::to_string(paramErr));
    CHECK(ResolveAlias(nullptr, nullptr, &found, &changed) == paramErr);
    CHECK(ResolveAlias(nullptr, alias.handle, nullptr, &changed) == paramErr);
    CHECK(ResolveAlias(nullptr, (AliasHandle)&found, &found, &changed) == paramErr);
}

TEST_CASE("ResolveAlias: a hostile record leads to no place that its names do not spell")
{
    AliasContents contents = Sample();
    contents.mountPoint = "/";
    contents.macPath.clear();
    for (const std::string& path :
         { std::string("/tmp/../etc"), std::string("/./etc"), std::string("/e\0tc", 5) }) {
        contents.posixPath = path;
        CHECK(Resolved(Alias(WriteAlias(contents))) == std::to_string(nsvErr));
    }
    contents.posixPath.clear();
    contents.macPath = "::etc";
    CHECK(Resolved(Alias(WriteAlias(contents))) == std::to_string(nsvErr));
}

TEST_CASE(
    "NewAliasMinimalFromFullPath: by a Macintosh path, in any capitals, whether or not it leads anywhere")
{
    CatalogFolder scratch;
    scratch.Write("Folder/File");
    std::string path = "Host";
    for (const auto& name : scratch.Path().relative_path())
        path += ":" + name.string();
    path += ":FOLDER:FILE";
    Alias alias;
    REQUIRE(NewAliasMinimalFromFullPath((SInt16)path.size(), path.data(), nullptr, nullptr, &alias.handle) ==
            noErr);
    CHECK(Resolved(alias) == (scratch.Path() / "Folder/File").string());
    Alias nowhere;
    REQUIRE(NewAliasMinimalFromFullPath(12, "Nowhere:File", nullptr, nullptr, &nowhere.handle) == noErr);
    CHECK(Resolved(nowhere) == std::to_string(nsvErr));
    AliasHandle handle;
    CHECK(NewAliasMinimalFromFullPath(4, "File", nullptr, nullptr, &handle) == bdNamErr);
    CHECK(NewAliasMinimalFromFullPath(5, ":File", nullptr, nullptr, &handle) == bdNamErr);
    CHECK(NewAliasMinimalFromFullPath(-1, "File", nullptr, nullptr, &handle) == paramErr);
    CHECK(NewAliasMinimalFromFullPath(4, nullptr, nullptr, nullptr, &handle) == paramErr);
}

TEST_CASE("UpdateAlias: another target; the application's type stays")
{
    CatalogFolder scratch;
    scratch.Write("One");
    scratch.Write("Two");
    const FSSpec one = scratch.Spec("One"), two = scratch.Spec("Two"), missing = scratch.Spec("Missing");
    Alias alias;
    REQUIRE(NewAlias(nullptr, &one, &alias.handle) == noErr);
    SetAliasUserType(alias.handle, 'mine');
    Boolean changed = true;
    CHECK(UpdateAlias(nullptr, &one, alias.handle, &changed) == noErr);
    CHECK_FALSE(changed);
    CHECK(UpdateAlias(nullptr, &two, alias.handle, &changed) == noErr);
    CHECK(changed);
    CHECK(Resolved(alias) == (scratch.Path() / "Two").string());
    CHECK(GetAliasUserType(alias.handle) == 'mine');
    CHECK(UpdateAlias(nullptr, &missing, alias.handle, &changed) == fnfErr);
    CHECK(UpdateAlias(nullptr, &one, nullptr, &changed) == paramErr);
    AliasHandle handle = nullptr;
    CHECK(NewAlias(nullptr, &missing, &handle) == fnfErr);
    CHECK(NewAlias(nullptr, nullptr, &handle) == paramErr);
    CHECK(NewAlias(nullptr, &one, nullptr) == paramErr);
    CHECK(NewAlias(&missing, &one, &handle) == fnfErr);
    CHECK(FSNewAliasMinimal(nullptr, &handle) == paramErr);
    CHECK(handle == nullptr);
}

TEST_CASE("GetAliasInfo, GetAliasSize: names in the record, upward to the volume")
{
    CatalogFolder scratch;
    scratch.Write("Outer/Inner/File");
    const FSSpec spec = scratch.Spec(":Outer:Inner:File");
    Alias alias;
    REQUIRE(NewAlias(nullptr, &spec, &alias.handle) == noErr);
    const auto name = [&](AliasInfoType index) {
        Str63 text = {};
        CHECK(GetAliasInfo(alias.handle, index, text) == noErr);
        return TextOf(text);
    };
    CHECK(name(asiAliasName) == "File");
    CHECK(name(asiParentName) == "Inner");
    CHECK(name(2) == "Outer");
    CHECK(name(asiVolumeName) == "Host");
    CHECK(name((AliasInfoType)(3 + std::distance(scratch.Path().begin(), scratch.Path().end()) - 1)) ==
          "Host");
    CHECK(name(30000) == "");
    CHECK(name(asiZoneName) == "");
    Str63 text;
    CHECK(GetAliasInfo(alias.handle, -4, text) == paramErr);
    CHECK(GetAliasInfo(nullptr, 0, text) == paramErr);
    CHECK(GetAliasInfo(alias.handle, 0, nullptr) == paramErr);
    CHECK(GetAliasSize(nullptr) == 0);
    CHECK(GetAliasUserType(nullptr) == 0);
    CHECK(GetAliasSizeFromPtr(*alias.handle) == GetAliasSize(alias.handle));
    SetAliasUserTypeWithPtr(*alias.handle, 'abcd');
    CHECK(GetAliasUserTypeFromPtr(*alias.handle) == 'abcd');
    Alias tiny(std::vector<UInt8>(5, 1));
    CHECK(GetAliasSize(tiny.handle) == 0);
    SetAliasUserType(tiny.handle, 'abcd');
    CHECK(tiny.Contents()[4] == 1);
}
