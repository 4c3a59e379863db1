// Adding, changing and writing resources, and what a file holds afterwards.
#include <Carbon/Resources.h>
#include <Carbon/Script.h>

#include <FreshProcess.h>
#include <Host.h>
#include <ScratchFolder.h>
#include <algorithm>
#include <csignal>
#include <cstring>
#include <doctest/doctest.h>
#include <fcntl.h>
#include <files/Catalog.h>
#include <files/FileReferences.h>
#include <files/ForkHome.h>
#include <iterator>
#include <map>
#include <random>
#include <resources/Container.h>
#include <resources/ResourceFork.h>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace lampblack;
using resources::Bytes;
using resources::ForkBuilder;

namespace {

struct PascalString {
    Str255 text;
    PascalString(std::string_view inText)
    {
        text[0] = (unsigned char)inText.size();
        std::copy(inText.begin(), inText.end(), text + 1);
    }
    operator ConstStr255Param() const { return text; }
};

std::string TextOf(Handle inHandle)
{
    return inHandle && *inHandle ? std::string(*inHandle, (size_t)GetHandleSize(inHandle)) : "(none)";
}

Handle HandleOf(std::string_view inText)
{
    Handle handle = nullptr;
    PtrToHand(inText.data(), &handle, (long)inText.size());
    return handle;
}

void SetText(Handle inHandle, std::string_view inText)
{
    SetHandleSize(inHandle, (Size)inText.size());
    std::copy(inText.begin(), inText.end(), *inHandle);
}

void AddText(std::string_view inText, OSType inType, SInt16 inID, std::string_view inName = {})
{
    AddResource(HandleOf(inText), inType, inID, PascalString(inName));
}

std::string ReadFile(const std::filesystem::path& inPath)
{
    std::ifstream stream(inPath, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

struct Place : ScratchFolder {
    FSSpec Spec(std::string_view inName) const
    {
        files::Item folder;
        REQUIRE(files::ItemAtPath(Path(), &folder));
        const files::Folder node = files::NodeOf(folder);
        FSSpec spec = {};
        FSMakeFSSpec(node.volume, node.id, PascalString(inName), &spec);
        return spec;
    }
    FSRef Ref(std::string_view inName = {}) const
    {
        FSRef ref = {};
        const std::filesystem::path path = inName.empty() ? Path() : Path() / inName;
        REQUIRE(FSPathMakeRef((const UInt8*)path.c_str(), &ref, nullptr) == noErr);
        return ref;
    }
    SInt16 Open(std::string_view inName, SignedByte inPermission = fsRdWrPerm) const
    {
        const FSSpec spec = Spec(inName);
        return FSpOpenResFile(&spec, inPermission);
    }
    void Create(std::string_view inName) const
    {
        const FSSpec spec = Spec(inName);
        FSpCreateResFile(&spec, 'test', 'rsrc', smSystemScript);
        REQUIRE(ResError() == noErr);
    }
    // What a newcomer reads of a resource.
    std::string OnDisk(std::string_view inName, OSType inType, SInt16 inID) const
    {
        const files::LocatedForks forks = files::LocateForks(Path() / inName);
        resources::ResourceFork fork;
        if (fork.Open(forks.resourceFork))
            return "(damaged)";
        Bytes data;
        if (!fork.Data(fork.Find(inType, inID), &data))
            return "(none)";
        return std::string((const char*)data.data(), data.size());
    }
};

// A file "File" with a few resources, open for writing.
struct WritableFile : Place {
    SInt16 refNum;

    WritableFile()
    {
        Create("File");
        refNum = Place::Open("File");
        AddText("one", 'TEXT', 1, "first");
        AddText("two", 'TEXT', 2);
        AddText("three", 'TEXT', 3, "third");
        AddText("x", 'othr', 1);
        UpdateResFile(refNum);
        REQUIRE(ResError() == noErr);
    }
    ~WritableFile()
    {
        if (refNum > 0)
            CloseResFile(refNum);
    }
    void Reopen(SignedByte inPermission = fsRdWrPerm)
    {
        CloseResFile(refNum);
        refNum = Place::Open("File", inPermission);
        REQUIRE(refNum > 0);
    }
    std::string OnDisk(OSType inType, SInt16 inID) const { return Place::OnDisk("File", inType, inID); }
};

} // namespace

TEST_CASE("FSpCreateResFile: a new file has type, creator and an empty map; a second time is dupFNErr")
{
    const Place place;
    place.Create("New");
    const FSSpec spec = place.Spec("New");
    FInfo info = {};
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    CHECK(+info.fdType == 'rsrc');
    CHECK(+info.fdCreator == 'test');
    CHECK(std::filesystem::file_size(place.Path() / "New") == 0);
    FSpCreateResFile(&spec, 'xxxx', 'yyyy', smSystemScript);
    CHECK(ResError() == dupFNErr);
    const SInt16 file = place.Open("New", fsRdPerm);
    CHECK(file > 0);
    CHECK(Count1Types() == 0);
    CloseResFile(file);
}

TEST_CASE("FSpCreateResFile: a file without a fork gets one and keeps its data, type and creator")
{
    const Place place;
    place.Write("Old", "data");
    const FSSpec spec = place.Spec("Old");
    FInfo info = {};
    info.fdType = 'TEXT';
    info.fdCreator = 'ttxt';
    REQUIRE(files::SetFinderInfo(place.Path() / "Old", &info, nullptr) == noErr);
    CHECK(place.Open("Old") == -1);
    CHECK(ResError() == eofErr);
    FSpCreateResFile(&spec, 'xxxx', 'yyyy', smSystemScript);
    CHECK(ResError() == noErr);
    CHECK(ReadFile(place.Path() / "Old") == "data");
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    CHECK(+info.fdType == 'TEXT');
    const SInt16 file = place.Open("Old");
    CHECK(file > 0);
    CloseResFile(file);
    FSpCreateResFile(nullptr, 'xxxx', 'yyyy', smSystemScript);
    CHECK(ResError() == paramErr);
    const FSSpec folder = place.Spec("");
    FSpCreateResFile(&folder, 'xxxx', 'yyyy', smSystemScript);
    CHECK(ResError() == dupFNErr);
}

TEST_CASE("HCreateResFile, CreateResFile: by name; the folder must be there")
{
    const Place place;
    const FSSpec spec = place.Spec("H");
    HCreateResFile(spec.vRefNum, spec.parID, PascalString("H"));
    CHECK(ResError() == noErr);
    CHECK(std::filesystem::exists(place.Path() / "H"));
    HCreateResFile(spec.vRefNum, spec.parID, PascalString(":none:H"));
    CHECK(ResError() == dirNFErr);
    HCreateResFile(spec.vRefNum, spec.parID, nullptr);
    CHECK(ResError() == bdNamErr);
    CreateResFile(PascalString("No such volume:x"));
    CHECK(ResError() != noErr);
}

TEST_CASE("FSCreateResourceFile: in the data fork, and in the resource fork")
{
    const Place place;
    const FSRef folder = place.Ref();
    const std::u16string name = u"data.rsrc", resourceFork = u"RESOURCE_FORK";
    const UniChar* fork = (const UniChar*)resourceFork.data();
    FSRef ref;
    FSSpec spec;
    REQUIRE(FSCreateResourceFile(&folder, name.size(), (const UniChar*)name.data(), kFSCatInfoNone, nullptr,
                                 0, nullptr, &ref, &spec) == noErr);
    CHECK(std::filesystem::file_size(place.Path() / "data.rsrc") == 286);
    CHECK_FALSE(std::filesystem::exists(place.Path() / "._data.rsrc"));
    SInt16 file = 0;
    REQUIRE(FSOpenResourceFile(&ref, 0, nullptr, fsRdWrPerm, &file) == noErr);
    AddText("in the data fork", 'TEXT', 1);
    CloseResFile(file);
    CHECK(ResError() == noErr);
    CHECK(place.OnDisk("data.rsrc", 'TEXT', 1) == "in the data fork");
    CHECK_FALSE(std::filesystem::exists(place.Path() / "._data.rsrc"));
    CHECK(FSCreateResourceFile(&folder, name.size(), (const UniChar*)name.data(), kFSCatInfoNone, nullptr, 0,
                               nullptr, &ref, &spec) == dupFNErr);
    const std::u16string other = u"other";
    REQUIRE(FSCreateResourceFile(&folder, other.size(), (const UniChar*)other.data(), kFSCatInfoNone, nullptr,
                                 resourceFork.size(), fork, &ref, nullptr) == noErr);
    CHECK(std::filesystem::file_size(place.Path() / "other") == 0);
    CHECK(FSCreateResourceFork(&ref, resourceFork.size(), fork, 0) == dupFNErr);
    CHECK(FSCreateResourceFork(&ref, 3, fork, 0) == errFSBadForkName);
    place.Write("plain", "");
    const FSRef plain = place.Ref("plain");
    CHECK(FSCreateResourceFork(&plain, resourceFork.size(), fork, 0) == noErr);
    Boolean inChain = true;
    SInt16 number = 0;
    CHECK_FALSE(FSResourceFileAlreadyOpen(&plain, &inChain, &number));
    CHECK_FALSE(inChain);
    file = FSOpenResFile(&plain, fsRdPerm);
    CHECK(FSResourceFileAlreadyOpen(&plain, &inChain, &number));
    CHECK(number == file);
    CloseResFile(file);
}

TEST_CASE("AddResource: found at once, in the file after an update, with its name")
{
    WritableFile file;
    AddText("new", 'newt', -5, "Name");
    CHECK(ResError() == noErr);
    const Handle handle = Get1Resource('newt', -5);
    CHECK(TextOf(handle) == "new");
    CHECK(GetResAttrs(handle) == resChanged);
    CHECK(HomeResFile(handle) == file.refNum);
    CHECK(Count1Types() == 3);
    CHECK(file.OnDisk('newt', -5) == "(none)");
    CHECK((GetResFileAttrs(file.refNum) & mapChanged) != 0);
    UpdateResFile(file.refNum);
    CHECK(file.OnDisk('newt', -5) == "new");
    CHECK(GetResAttrs(handle) == 0);
    CHECK(GetResFileAttrs(file.refNum) == 0);
    file.Reopen();
    CHECK(TextOf(Get1NamedResource('newt', PascalString("NAME"))) == "new");
    CHECK(TextOf(Get1Resource('TEXT', 3)) == "three");
}

TEST_CASE("AddResource: bad handles, a resource's handle, no file and a file open for reading")
{
    WritableFile file;
    AddResource(nullptr, 'TEXT', 9, nullptr);
    CHECK(ResError() == addResFailed);
    AddResource((Handle)&file, 'TEXT', 9, nullptr);
    CHECK(ResError() == addResFailed);
    const Handle empty = NewEmptyHandle();
    AddResource(empty, 'TEXT', 9, nullptr);
    CHECK(ResError() == addResFailed);
    DisposeHandle(empty);
    AddResource(Get1Resource('TEXT', 1), 'TEXT', 9, nullptr);
    CHECK(ResError() == addResFailed);
    const Handle handle = HandleOf("x");
    UseResFile(kSystemResFile);
    AddResource(handle, 'TEXT', 9, nullptr);
    CHECK(ResError() == resFNotFound);
    file.Reopen(fsRdPerm);
    AddResource(handle, 'TEXT', 9, nullptr);
    CHECK(ResError() == wrPermErr);
    ChangedResource(Get1Resource('TEXT', 1));
    CHECK(ResError() == wrPermErr);
    RemoveResource(Get1Resource('TEXT', 1));
    CHECK(ResError() == wrPermErr);
    WritePartialResource(Get1Resource('TEXT', 1), 0, "x", 1);
    CHECK(ResError() == wrPermErr);
    CHECK(IsHandleValid(handle));
    DisposeHandle(handle);
}

TEST_CASE("ChangedResource: what the handle holds is written, and only then")
{
    WritableFile file;
    const Handle handle = Get1Resource('TEXT', 2);
    SetText(handle, "changed and longer");
    UpdateResFile(file.refNum);
    CHECK(file.OnDisk('TEXT', 2) == "two");
    ChangedResource(handle);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 2) == "two");
    UpdateResFile(file.refNum);
    CHECK(file.OnDisk('TEXT', 2) == "changed and longer");
    CHECK(TextOf(handle) == "changed and longer");
    CHECK(GetResourceSizeOnDisk(handle) == 18);
    ChangedResource(nullptr);
    CHECK(ResError() == resNotFound);
}

TEST_CASE("WriteResource: that one is written; others that are changed wait")
{
    WritableFile file;
    const Handle one = Get1Resource('TEXT', 1), two = Get1Resource('TEXT', 2);
    SetText(one, "ONE");
    SetText(two, "TWO");
    ChangedResource(one);
    ChangedResource(two);
    AddText("added", 'TEXT', 7);
    WriteResource(one);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 1) == "ONE");
    CHECK(file.OnDisk('TEXT', 2) == "two");
    CHECK(file.OnDisk('TEXT', 7) == "(none)");
    CHECK(GetResAttrs(one) == 0);
    CHECK(GetResAttrs(two) == resChanged);
    file.Reopen();
    CHECK(TextOf(Get1Resource('TEXT', 2)) == "TWO");
    CHECK(TextOf(Get1Resource('TEXT', 7)) == "added");
    WriteResource(Get1Resource('TEXT', 7));
    CHECK(ResError() == noErr);
    WriteResource(nullptr);
    CHECK(ResError() == resNotFound);
}

TEST_CASE(
    "RemoveResource: gone from the map; the handle is an ordinary one; the last of a type takes it along")
{
    WritableFile file;
    const Handle handle = Get1Resource('othr', 1);
    RemoveResource(handle);
    CHECK(ResError() == noErr);
    CHECK(IsHandleValid(handle));
    CHECK((HGetState(handle) & kHandleIsResourceMask) == 0);
    CHECK(TextOf(handle) == "x");
    CHECK(Get1Resource('othr', 1) == nullptr);
    CHECK(Count1Types() == 1);
    RemoveResource(handle);
    CHECK(ResError() == resNotFound);
    CHECK(file.OnDisk('othr', 1) == "x");
    UpdateResFile(file.refNum);
    CHECK(file.OnDisk('othr', 1) == "(none)");
    CHECK(file.OnDisk('TEXT', 1) == "one");
    AddResource(handle, 'othr', 2, nullptr);
    CHECK(ResError() == noErr);
    file.Reopen();
    CHECK(TextOf(Get1Resource('othr', 2)) == "x");
}

TEST_CASE("RemoveResource: of another file, or protected, is rmvResFailed")
{
    WritableFile lower, upper;
    UseResFile(lower.refNum);
    const Handle handle = Get1Resource('TEXT', 1);
    UseResFile(upper.refNum);
    RemoveResource(handle);
    CHECK(ResError() == rmvResFailed);
    const Handle own = Get1Resource('TEXT', 1);
    SetResAttrs(own, resProtected);
    RemoveResource(own);
    CHECK(ResError() == rmvResFailed);
    ChangedResource(own);
    CHECK(ResError() == resAttrErr);
    SetResInfo(own, 5, nullptr);
    CHECK(ResError() == resAttrErr);
    WriteResource(own);
    CHECK(ResError() == resAttrErr);
}

TEST_CASE("RemoveResource, then AddResource of the same ID and WriteResource: the new one is found")
{
    WritableFile file;
    SetResLoad(false);
    const Handle old = Get1Resource('TEXT', 2);
    SetResLoad(true);
    RemoveResource(old);
    DisposeHandle(old);
    AddText("new two", 'TEXT', 2, "second");
    WriteResource(Get1Resource('TEXT', 2));
    CHECK(file.OnDisk('TEXT', 2) == "new two");
    file.Reopen();
    CHECK(Count1Resources('TEXT') == 3);
    CHECK(TextOf(Get1Resource('TEXT', 2)) == "new two");
}

TEST_CASE("DetachResource, ReleaseResource: of a changed resource, an error and nothing")
{
    WritableFile file;
    const Handle handle = Get1Resource('TEXT', 1);
    SetText(handle, "kept");
    ChangedResource(handle);
    DetachResource(handle);
    CHECK(ResError() == resAttrErr);
    ReleaseResource(handle);
    CHECK(ResError() == noErr);
    CHECK(IsHandleValid(handle));
    WriteResource(handle);
    DetachResource(handle);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 1) == "kept");
    DisposeHandle(handle);
}

TEST_CASE("DisposeHandle: of a changed resource, the file's data count again; one never written is no more")
{
    WritableFile file;
    Handle handle = Get1Resource('TEXT', 1);
    SetText(handle, "lost");
    ChangedResource(handle);
    DisposeHandle(handle);
    AddText("never written", 'TEXT', 8);
    DisposeHandle(Get1Resource('TEXT', 8));
    CHECK(Get1Resource('TEXT', 8) == nullptr);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    CHECK(file.OnDisk('TEXT', 8) == "(none)");
}

TEST_CASE("SetResInfo, SetResAttrs: found by the new ID and name at once, in the file with the next map")
{
    WritableFile file;
    const Handle handle = Get1Resource('TEXT', 1);
    SetResInfo(handle, 100, PascalString("renamed"));
    CHECK(ResError() == noErr);
    SetResAttrs(handle, resPurgeable | resPreload);
    CHECK(Get1Resource('TEXT', 1) == nullptr);
    CHECK(Get1Resource('TEXT', 100) == handle);
    CHECK(Get1NamedResource('TEXT', PascalString("renamed")) == handle);
    CHECK(file.OnDisk('TEXT', 100) == "(none)");
    UpdateResFile(file.refNum); // nothing is marked as changed
    CHECK(file.OnDisk('TEXT', 100) == "(none)");
    ChangedResource(handle);
    UpdateResFile(file.refNum);
    CHECK(file.OnDisk('TEXT', 100) == "one");
    file.Reopen();
    SInt16 id = 0;
    Str255 name;
    GetResInfo(Get1Resource('TEXT', 100), &id, nullptr, name);
    CHECK(std::string((char*)name + 1, name[0]) == "renamed");
    CHECK(GetResAttrs(Get1Resource('TEXT', 100)) == (resPurgeable | resPreload));
    SetResInfo(Get1Resource('TEXT', 100), 101, nullptr);
    GetResInfo(Get1Resource('TEXT', 101), &id, nullptr, name);
    CHECK(std::string((char*)name + 1, name[0]) == "renamed");
    CHECK(id == 101);
    SetResInfo(nullptr, 1, nullptr);
    CHECK(ResError() == resNotFound);
    SetResAttrs(nullptr, 0);
    CHECK(ResError() == resNotFound);
}

TEST_CASE("GetResource: of two with one ID the first counts; removed, the second is found")
{
    WritableFile file;
    AddText("again", 'TEXT', 1);
    CHECK(ResError() == noErr);
    const Handle first = Get1Resource('TEXT', 1);
    CHECK(TextOf(first) == "one");
    RemoveResource(first);
    DisposeHandle(first);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "again");
}

TEST_CASE("EmptyHandle: what is not changed is read again; purging keeps what is changed")
{
    WritableFile file;
    const Handle handle = Get1Resource('TEXT', 1);
    EmptyHandle(handle);
    CHECK(Get1Resource('TEXT', 1) == handle);
    CHECK(TextOf(handle) == "one");
    SetText(handle, "changed");
    ChangedResource(handle);
    HPurge(handle);
    PurgeMem(0);
    CHECK(TextOf(handle) == "changed");
    SetResPurge(true);
    PurgeMem(0);
    SetResPurge(false);
    CHECK(*handle == nullptr);
    CHECK(file.OnDisk('TEXT', 1) == "changed");
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "changed");
}

TEST_CASE("UpdateResFile: a changed handle that was emptied leaves the file's data")
{
    WritableFile file;
    const Handle handle = Get1Resource('TEXT', 1);
    ChangedResource(handle);
    EmptyHandle(handle);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 1) == "one");
    UpdateResFile(12345);
    CHECK(ResError() == resFNotFound);
    UpdateResFile(kSystemResFile);
    CHECK(ResError() == noErr);
}

TEST_CASE("SetResFileAttrs: mapReadOnly writes nothing without an error, mapCompact leaves no free space")
{
    WritableFile file;
    SetResFileAttrs(file.refNum, mapReadOnly);
    CHECK(GetResFileAttrs(file.refNum) == mapReadOnly);
    const Handle handle = Get1Resource('TEXT', 1);
    SetText(handle, "frozen");
    ChangedResource(handle);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    WriteResource(handle);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 1) == "one");
    SetResFileAttrs(file.refNum, mapCompact);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 1) == "frozen");
    // Header, four resources, map of two types, four references and two names; in front Finder information.
    const size_t fork = 256 + (4 + 6) + (4 + 3) + (4 + 5) + (4 + 1) + 28 + 2 + 2 * 8 + 4 * 12 + 6 + 6;
    CHECK(std::filesystem::file_size(file.Path() / "._File") == 82 + fork);
    SetResFileAttrs(12345, 0);
    CHECK(ResError() == resFNotFound);
}

TEST_CASE("WritePartialResource, SetResourceSize: the file at once, the handle not")
{
    WritableFile file;
    file.Reopen();
    SetResLoad(false);
    const Handle handle = Get1Resource('TEXT', 3);
    SetResLoad(true);
    WritePartialResource(handle, 1, "HR", 2);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 3) == "tHRee");
    CHECK(*handle == nullptr);
    WritePartialResource(handle, 4, "E more", 6);
    CHECK(ResError() == writingPastEnd);
    CHECK(file.OnDisk('TEXT', 3) == "tHReE more");
    WritePartialResource(handle, 99, "x", 1);
    CHECK(ResError() == inputOutOfBounds);
    WritePartialResource(handle, -1, "x", 1);
    CHECK(ResError() == inputOutOfBounds);
    WritePartialResource(handle, 0, nullptr, 1);
    CHECK(ResError() == paramErr);
    SetResourceSize(handle, 3);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 3) == "tHR");
    SetResourceSize(handle, 5);
    CHECK(file.OnDisk('TEXT', 3) == std::string("tHR\0\0", 5));
    CHECK(GetResourceSizeOnDisk(handle) == 5);
    LoadResource(handle);
    WritePartialResource(handle, 0, "T", 1);
    CHECK(ResError() == resourceInMemory);
    CHECK((*handle)[0] == 't');
    SetResourceSize(handle, -1);
    CHECK(ResError() == inputOutOfBounds);
    SetResourceSize(nullptr, 1);
    CHECK(ResError() == resNotFound);
}

TEST_CASE("Byte order: written as the file has it, and the handle stays native")
{
    WritableFile file;
    const std::string menus("\0\2\0\x80\1\0", 6);
    Handle handle = HandleOf(std::string("\2\0\x80\0\0\1", 6));
    AddResource(handle, 'MBAR', 128, nullptr);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('MBAR', 128) == menus);
    CHECK(TextOf(handle) == std::string("\2\0\x80\0\0\1", 6));
    file.Reopen();
    CHECK(TextOf(Get1Resource('MBAR', 128)) == std::string("\2\0\x80\0\0\1", 6));
}

TEST_CASE(
    "Byte order: a flipper that fails leaves the file and the mark; one that does nothing writes as it is")
{
    static OSStatus result; // as long as the flipper is installed
    WritableFile file;
    REQUIRE(CoreEndianInstallFlipper(
                'rsrc', 'CTL#',
                [](OSType, OSType, SInt16, void*, ByteCount, Boolean native, void*) -> OSStatus {
                    return native ? result : (OSStatus)noErr;
                },
                nullptr) == noErr);
    AddText("\1\2\3\4", 'CTL#', 1);
    result = -1234;
    UpdateResFile(file.refNum);
    CHECK(ResError() == -1234);
    CHECK(GetResAttrs(Get1Resource('CTL#', 1)) == resChanged);
    CHECK(file.OnDisk('CTL#', 1) == "(none)");
    result = noErr;
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('CTL#', 1) == "\1\2\3\4");
}

TEST_CASE("FSpOpenResFile: a second writer is opWrErr, a reader beside it reads what is on the disk")
{
    WritableFile file;
    const SInt16 current = CurResFile();
    CHECK(file.Open("File") == -1);
    CHECK(ResError() == opWrErr);
    CHECK(CurResFile() == current);
    CHECK(file.Open("File", fsCurPerm) == file.refNum);
    AddText("not yet", 'TEXT', 50);
    const SInt16 reader = file.Open("File", fsRdPerm);
    REQUIRE(reader > 0);
    CHECK(reader != file.refNum);
    CHECK(Get1Resource('TEXT', 50) == nullptr);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    CHECK(file.Open("File", fsRdPerm) == reader);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(Get1Resource('TEXT', 50) == nullptr);
    const SInt16 second = file.Open("File", fsRdPerm);
    CHECK(second != reader);
    CHECK(TextOf(Get1Resource('TEXT', 50)) == "not yet");
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    CloseResFile(second);
    CloseResFile(reader);
}

TEST_CASE("FSpOpenResFile: a file that may not be written is permErr for writing and opens with fsCurPerm")
{
    WritableFile file;
    CloseResFile(file.refNum);
    chmod((file.Path() / "File").c_str(), 0444);
    CHECK(file.Open("File") == -1);
    CHECK(ResError() == permErr);
    file.refNum = file.Open("File", fsCurPerm);
    REQUIRE(file.refNum > 0);
    AddText("x", 'TEXT', 9);
    CHECK(ResError() == wrPermErr);
}

TEST_CASE("FSpOpenResFile: a damaged resource is no matter for reading and mapReadErr for writing")
{
    const Place place;
    ForkBuilder builder;
    builder.Add({ 'TEXT', 1, 0, false, "", { (const uint8_t*)"one", 3 } });
    builder.Add({ 'TEXT', 2, 0, false, "", { (const uint8_t*)"two", 3 } });
    std::vector<uint8_t> fork;
    REQUIRE(builder.Build(&fork) == nullptr);
    fork[256] = 0x7F;
    const std::string bytes(fork.begin(), fork.end());
    place.Write("Bad", bytes);
    CHECK(place.Open("Bad") == -1);
    CHECK(ResError() == mapReadErr);
    const SInt16 file = place.Open("Bad", fsCurPerm);
    CHECK(file > 0);
    CHECK(TextOf(Get1Resource('TEXT', 2)) == "two");
    AddText("x", 'TEXT', 3);
    CHECK(ResError() == wrPermErr);
    CloseResFile(file);
    CHECK(ReadFile(place.Path() / "Bad") == bytes);
}

namespace {

// One resource changed, one added, one taken out, with the file in the form it has.
void ChangeThree(const Place& inPlace, const char* inName)
{
    const SInt16 file = inPlace.Open(inName);
    REQUIRE(file > 0);
    AddText("added", 'newt', 1);
    CloseResFile(file);
    REQUIRE(ResError() == noErr);
}

std::vector<uint8_t> SampleFork()
{
    ForkBuilder builder;
    builder.Add({ 'TEXT', 1, 0, true, "first", { (const uint8_t*)"one", 3 } });
    std::vector<uint8_t> fork;
    REQUIRE(builder.Build(&fork) == nullptr);
    fork[20] = 0x5A; // within the reserved bytes
    return fork;
}

std::string Seed(const std::string& inName)
{
    return ReadFile(std::filesystem::path(LAMPBLACK_SOURCE_DIR) / "tests/fuzz/corpus/ResourceFile" / inName);
}

} // namespace

TEST_CASE("CloseResFile: a bare fork stays one, its reserved bytes too, and gets no sidecar")
{
    const Place place;
    const std::vector<uint8_t> fork = SampleFork();
    place.Write("Raw", std::string(fork.begin(), fork.end()));
    ChangeThree(place, "Raw");
    const files::LocatedForks forks = files::LocateForks(place.Path() / "Raw");
    CHECK(forks.form == files::Form::RawFork);
    CHECK(forks.resourceFork[20] == 0x5A);
    CHECK(place.OnDisk("Raw", 'newt', 1) == "added");
    CHECK(place.OnDisk("Raw", 'TEXT', 1) == "one");
    CHECK_FALSE(std::filesystem::exists(place.Path() / "._Raw"));
}

TEST_CASE("CloseResFile: MacBinary, AppleSingle and BinHex are unwrapped; AppleDouble stays one")
{
    for (const char* seed : { "macbinary2", "applesingle", "binhex", "appledouble" }) {
        CAPTURE(seed);
        const Place place;
        place.Write("File", Seed(seed));
        const files::LocatedForks before = files::LocateForks(place.Path() / "File");
        const std::string data((const char*)before.dataFork.data(), before.dataFork.size());
        const OSType creator = before.finderInfo.fdCreator;
        REQUIRE(before.hasResourceFork);
        ChangeThree(place, "File");
        const files::LocatedForks after = files::LocateForks(place.Path() / "File");
        const bool wasDouble = std::string(seed) == "appledouble";
        CHECK(after.resourcePath.filename() == (wasDouble ? "File" : "._File"));
        CHECK(after.form == files::Form::AppleDouble);
        CHECK(+after.finderInfo.fdCreator == creator);
        CHECK(place.OnDisk("File", 'newt', 1) == "added");
        if (!wasDouble)
            CHECK(ReadFile(place.Path() / "File") == data);
        ChangeThree(place, "File"); // and once more, now that it is plain
    }
}

TEST_CASE("CloseResFile: a fork found elsewhere goes into the sidecar, and what it was found in stays")
{
    for (const char* name : { "File.rsrc", "%File", ".AppleDouble/File", "__MACOSX/._File" }) {
        CAPTURE(name);
        const Place place;
        place.Write("File", "data");
        place.Write(name, Seed("appledouble"));
        const std::string before = ReadFile(place.Path() / name);
        ChangeThree(place, "File");
        CHECK(ReadFile(place.Path() / name) == before);
        CHECK(files::LocateForks(place.Path() / "File").resourcePath.filename() == "._File");
        CHECK(place.OnDisk("File", 'newt', 1) == "added");
        CHECK(+files::LocateForks(place.Path() / "File").finderInfo.fdCreator == 'lamp');
    }
}

TEST_CASE("CloseResFile: after a write the same file opened again is as it was left, cached or not")
{
    WritableFile file;
    for (int i = 0; i < 20; ++i) {
        const Handle handle = Get1Resource('TEXT', 1);
        SetText(handle, "value " + std::to_string(i));
        ChangedResource(handle);
        file.Reopen(fsRdPerm);
        CHECK(TextOf(Get1Resource('TEXT', 1)) == "value " + std::to_string(i));
        CHECK(file.OnDisk('TEXT', 1) == "value " + std::to_string(i));
        file.Reopen();
    }
}

TEST_CASE("FSpOpenResFile: what another program wrote in place of the file is seen")
{
    const Place place;
    const std::vector<uint8_t> fork = SampleFork();
    std::string bytes(fork.begin(), fork.end());
    place.Write("File", bytes);
    SInt16 file = place.Open("File", fsRdPerm);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    CloseResFile(file);
    bytes[260] = 'O';
    place.Write("File", bytes);
    file = place.Open("File", fsRdPerm);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "One");
    CloseResFile(file);
}

TEST_CASE("UpdateResFile: one that does not fit the format is addResFailed, the file and the marks stay")
{
    WritableFile file;
    AddResource(NewHandleClear(15 << 20), 'huge', 1, nullptr);
    AddResource(NewHandleClear(15 << 20), 'huge', 2, nullptr);
    AddResource(NewHandleClear(100), 'tiny', 1, nullptr);
    UpdateResFile(file.refNum);
    CHECK(ResError() == addResFailed);
    CHECK(file.OnDisk('TEXT', 1) == "one");
    CHECK(file.OnDisk('huge', 1) == "(none)");
    const Handle second = Get1Resource('huge', 2);
    RemoveResource(second);
    DisposeHandle(second);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('huge', 1).size() == 15u << 20);
    const SInt16 reader = file.Open("File", fsRdPerm); // more than is copied
    CHECK(GetHandleSize(Get1Resource('huge', 1)) == 15 << 20);
    UseResFile(file.refNum);
    AddText("beside a reader", 'TEXT', 60);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    UseResFile(reader);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    CHECK(Get1Resource('TEXT', 60) == nullptr);
    CloseResFile(reader);
    UseResFile(file.refNum);
    for (int i = 0; i < 5; ++i) {
        const Handle handle = Get1Resource('TEXT', 60);
        SetText(handle, "in place " + std::to_string(i));
        ChangedResource(handle);
        UpdateResFile(file.refNum);
        CHECK(file.OnDisk('TEXT', 60) == "in place " + std::to_string(i));
    }
    CHECK(file.OnDisk('huge', 1).size() == 15u << 20);
}

TEST_CASE(
    "UpdateResFile: no room on the disk is dskFulErr; the file is as it was, and a later update succeeds")
{
    WritableFile file;
    const std::string before = ReadFile(file.Path() / "._File");
    AddText(std::string(200000, 'x'), 'TEXT', 30);
    const Handle one = Get1Resource('TEXT', 1);
    SetText(one, "ONE");
    ChangedResource(one);
    rlimit old;
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit small = { 65536, old.rlim_max };
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &small);
    UpdateResFile(file.refNum);
    const OSErr error = ResError();
    WriteResource(Get1Resource('TEXT', 30));
    const OSErr second = ResError();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, SIG_DFL);
    CHECK(error == dskFulErr);
    CHECK(second == dskFulErr);
    CHECK(ReadFile(file.Path() / "._File") == before);
    CHECK(std::distance(std::filesystem::directory_iterator(file.Path()), {}) == 2); // nothing is left about
    CHECK(GetResAttrs(one) == resChanged);
    UpdateResFile(file.refNum);
    CHECK(ResError() == noErr);
    CHECK(file.OnDisk('TEXT', 1) == "ONE");
    CHECK(file.OnDisk('TEXT', 30).size() == 200000);
}

TEST_CASE("UpdateResFile: small changes are written where the file lies, many times over")
{
    WritableFile file;
    struct stat first = {}, last = {};
    stat((file.Path() / "._File").c_str(), &first);
    std::mt19937 random(7);
    for (int i = 0; i < 200; ++i) {
        const Handle handle = Get1Resource('TEXT', (SInt16)(1 + i % 3));
        SetText(handle, std::string(1 + random() % 40, (char)('a' + i % 26)));
        ChangedResource(handle);
        WriteResource(handle);
        REQUIRE(ResError() == noErr);
        REQUIRE(file.OnDisk('TEXT', (SInt16)(1 + i % 3)) == TextOf(handle));
    }
    stat((file.Path() / "._File").c_str(), &last);
    CHECK(first.st_ino == last.st_ino);
    CHECK(first.st_size == last.st_size);
}

TEST_CASE(
    "UpdateResFile: when another program put a file in the place of the open one, opWrErr, and theirs stays")
{
    WritableFile file;
    file.Write("other", "theirs");
    std::filesystem::rename(file.Path() / "other", file.Path() / "._File");
    AddText("lost otherwise", 'TEXT', 9);
    UpdateResFile(file.refNum);
    CHECK(ResError() == opWrErr);
    CHECK(ReadFile(file.Path() / "._File") == "theirs");
}

TEST_CASE("ChangedResource: the application's own file is opened for writing then, and written")
{
    const SInt16 result = (SInt16)InFreshProcess([] {
        SInt16 top = 0, next = 0;
        GetTopResourceFile(&top);
        while (GetNextResourceFile(top, &next) == noErr && next != 0)
            top = next;
        UseResFile(top);
        const Handle handle = Get1Resource('TEXT', 128);
        if (!handle)
            return 2; // no such file, when this case runs alone
        (*handle)[0] = 'A';
        ChangedResource(handle);
        if (ResError() != noErr)
            return (int)ResError();
        UpdateResFile(top);
        FCBPBRec block = {};
        block.ioRefNum = top;
        PBGetFCBInfoSync(&block);
        return ResError() == noErr && (block.ioFCBFlags & 0x0100) ? 1 : (int)ResError();
    });
    CHECK((result == 1 || result == 2));
}

TEST_CASE("FSpOpenResFile: two processes that each write an entry of their own lose neither")
{
    const Place place;
    place.Create("File");
    constexpr int kTurns = 25;
    const auto work = [&](SInt16 base) {
        for (SInt16 i = 0; i < kTurns; ++i) {
            const SInt16 file = place.Open("File");
            if (file < 0)
                return (int)ResError();
            AddText("from " + std::to_string(base + i), 'TEXT', (SInt16)(base + i));
            CloseResFile(file);
            if (ResError() != noErr)
                return (int)ResError();
        }
        return 0;
    };
    int ends[2];
    REQUIRE(pipe(ends) == 0);
    const pid_t child = fork();
    if (child == 0) {
        const int result = work(1000);
        _exit(write(ends[1], &result, sizeof result) == sizeof result ? 0 : 1);
    }
    const int own = work(2000);
    int other = -1;
    CHECK(read(ends[0], &other, sizeof other) == sizeof other);
    close(ends[0]);
    close(ends[1]);
    waitpid(child, nullptr, 0);
    CHECK(own == 0);
    CHECK(other == 0);
    const SInt16 file = place.Open("File", fsRdPerm);
    CHECK(Count1Resources('TEXT') == 2 * kTurns);
    for (SInt16 i = 0; i < kTurns; ++i) {
        CHECK(TextOf(Get1Resource('TEXT', (SInt16)(1000 + i))) == "from " + std::to_string(1000 + i));
        CHECK(TextOf(Get1Resource('TEXT', (SInt16)(2000 + i))) == "from " + std::to_string(2000 + i));
    }
    CloseResFile(file);
}

TEST_CASE("FSpOpenResFile: open for writing in another process is opWrErr after a second; reading works")
{
    WritableFile file;
    const int result = InFreshProcess([&] {
        const auto start = std::chrono::steady_clock::now();
        const bool failed =
            file.Open("File") == -1; // the same process by its table, the lock is the parent's
        const OSErr error = ResError();
        const bool reads = file.Open("File", fsRdPerm) > 0;
        const auto took = std::chrono::steady_clock::now() - start;
        return failed && error == opWrErr && reads && took < std::chrono::seconds(3) ? 1 : 0;
    });
    CHECK(result == 1);
}

// Run by the case below in a process of its own: it adds a resource and ends without closing.
TEST_CASE("Exit: the part of the process that ends" * doctest::skip())
{
    const char* path = std::getenv("LAMPBLACK_TEST_FILE");
    FSRef ref = {};
    REQUIRE((path && FSPathMakeRef((const UInt8*)path, &ref, nullptr) == noErr));
    REQUIRE(FSOpenResFile(&ref, fsRdWrPerm) > 0);
    AddText("written at the end", 'TEXT', 1);
}

TEST_CASE("Exit: what was changed is written when the process ends")
{
    const Place place;
    place.Create("File");
    const pid_t child = fork();
    if (child == 0) {
        setenv("LAMPBLACK_TEST_FILE", (place.Path() / "File").c_str(), 1);
        const int quiet = open("/dev/null", O_WRONLY);
        dup2(quiet, 1);
        execl("/proc/self/exe", "resources_test", "--no-skip", "--test-case=Exit: the part*", (char*)nullptr);
        _exit(1);
    }
    int status = -1;
    waitpid(child, &status, 0);
    CHECK(status == 0);
    CHECK(place.OnDisk("File", 'TEXT', 1) == "written at the end");
}

namespace {

struct Entry {
    std::string data, name;
    int attributes = 0;
    bool operator==(const Entry&) const = default;
};
using Model = std::map<std::pair<OSType, SInt16>, Entry>;

// Everything in the current file.
Model Contents()
{
    Model model;
    for (SInt16 t = 1; t <= Count1Types(); ++t) {
        ResType type = 0;
        Get1IndType(&type, t);
        for (SInt16 i = 1; i <= Count1Resources(type); ++i) {
            const Handle handle = Get1IndResource(type, i);
            SInt16 id = 0;
            Str255 name;
            GetResInfo(handle, &id, nullptr, name);
            model[{ type, id }] = { TextOf(handle), std::string((char*)name + 1, name[0]),
                                    GetResAttrs(handle) & ~resChanged };
        }
    }
    return model;
}

std::string RandomText(std::mt19937& ioRandom, size_t inMost)
{
    std::string text(ioRandom() % inMost, ' ');
    for (char& letter : text)
        letter = (char)ioRandom();
    return text;
}

class Player {
public:
    Player(Place& inPlace, unsigned inSeed) : fPlace(inPlace), fRandom(inSeed) { Open(); }
    ~Player() { CloseResFile(fFile); }

    void Step()
    {
        switch (fRandom() % 10) {
        case 0:
        case 1:
        case 2: Add(); break;
        case 3:
        case 4:
        case 5: Change(); break;
        case 6: Remove(); break;
        case 7: Rename(); break;
        case 8:
            UpdateResFile(fFile);
            CheckDisk();
            break;
        default: Reopen(); break;
        }
        REQUIRE(ResError() == noErr);
    }

    void Reopen()
    {
        CloseResFile(fFile);
        REQUIRE(ResError() == noErr);
        CheckDisk();
        Open();
        REQUIRE(Contents() == fModel);
    }

private:
    void Open()
    {
        fFile = fPlace.Open("File");
        REQUIRE(fFile > 0);
    }

    // A newcomer that knows nothing of this process sees the model.
    void CheckDisk()
    {
        const files::LocatedForks forks = files::LocateForks(fPlace.Path() / "File");
        resources::ResourceFork fork;
        REQUIRE(fork.Open(forks.resourceFork) == nullptr);
        REQUIRE(fork.IsSound());
        REQUIRE(fork.ResourceCount() == fModel.size());
        for (const auto& [key, entry] : fModel) {
            Bytes data;
            REQUIRE(fork.Data(fork.Find(key.first, key.second), &data));
            REQUIRE(std::string(data.begin(), data.end()) == entry.data);
        }
    }

    std::pair<OSType, SInt16> AnyKey()
    {
        auto found = fModel.begin();
        std::advance(found, fRandom() % fModel.size());
        return found->first;
    }

    void Add()
    {
        const OSType type = 'tyA0' + fRandom() % 5;
        const SInt16 id = (SInt16)(fRandom() % 200);
        if (fModel.count({ type, id }))
            return;
        const Entry entry = { RandomText(fRandom, fRandom() % 20 ? 100 : 5000),
                              RandomText(fRandom, fRandom() % 3 ? 1 : 20), 0 };
        AddText(entry.data, type, id, entry.name);
        fModel[{ type, id }] = entry;
    }

    void Change()
    {
        if (fModel.empty())
            return;
        const auto key = AnyKey();
        const Handle handle = Get1Resource(key.first, key.second);
        REQUIRE(handle != nullptr);
        fModel[key].data = RandomText(fRandom, 150);
        SetText(handle, fModel[key].data);
        ChangedResource(handle);
        if (fRandom() % 2)
            WriteResource(handle);
    }

    void Remove()
    {
        if (fModel.empty())
            return;
        const auto key = AnyKey();
        const Handle handle = Get1Resource(key.first, key.second);
        RemoveResource(handle);
        REQUIRE(ResError() == noErr);
        DisposeHandle(handle);
        fModel.erase(key);
    }

    void Rename()
    {
        if (fModel.empty())
            return;
        const auto key = AnyKey();
        const std::pair<OSType, SInt16> other = { key.first, (SInt16)(fRandom() % 400 - 200) };
        if (fModel.count(other))
            return;
        const Handle handle = Get1Resource(key.first, key.second);
        Entry entry = fModel[key];
        entry.name = "n" + RandomText(fRandom, 30);
        entry.attributes = (int)(fRandom() % 2 ? resPurgeable : resPreload);
        SetResInfo(handle, other.second, PascalString(entry.name));
        SetResAttrs(handle, (SInt16)entry.attributes);
        ChangedResource(handle);
        fModel.erase(key);
        fModel[other] = entry;
    }

    Place& fPlace;
    std::mt19937 fRandom;
    SInt16 fFile = 0;
    Model fModel;
};

} // namespace

TEST_CASE("Resource files: random changes, updates and reopenings are as a simple model has them")
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        CAPTURE(seed);
        Place place;
        place.Create("File");
        Player player(place, seed);
        for (int step = 0; step < 300; ++step)
            player.Step();
        player.Reopen();
    }
}

TEST_CASE("Real files: one resource replaced, all others stay byte for byte, names, attributes and order too")
{
    const std::filesystem::path folder =
        std::filesystem::path(LAMPBLACK_SOURCE_DIR).parent_path() / "shared/data/real/public";
    std::error_code ignored;
    int count = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, ignored)) {
        if (!entry.is_regular_file())
            continue;
        CAPTURE(entry.path().string());
        const Place place;
        std::filesystem::copy_file(entry.path(), place.Path() / "File");
        std::filesystem::permissions(place.Path() / "File", std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add);
        const std::string before = ReadFile(place.Path() / "File");
        const files::LocatedForks old = files::LocateForks(place.Path() / "File");
        const std::vector<uint8_t> oldBytes(old.resourceFork.begin(), old.resourceFork.end());
        const std::string data(old.dataFork.begin(), old.dataFork.end());
        resources::ResourceFork oldFork;
        const bool isSound = !oldFork.Open(oldBytes) && oldFork.IsSound() && old.problems.empty();
        const SInt16 file = place.Open("File");
        CHECK((file > 0) == isSound);
        if (file < 0) {
            CHECK(ReadFile(place.Path() / "File") == before);
            continue;
        }
        ++count;
        ResType type = 0;
        Get1IndType(&type, 1);
        const Handle handle = Count1Types() ? Get1IndResource(type, 1) : HandleOf("the first");
        SetText(handle, "replaced");
        if (Count1Types() == 0)
            AddResource(handle, 'TEXT', 1, nullptr);
        SetResAttrs(handle, (SInt16)(GetResAttrs(handle) & ~resProtected));
        ChangedResource(handle);
        CloseResFile(file);
        REQUIRE(ResError() == noErr);
        const files::LocatedForks now = files::LocateForks(place.Path() / "File");
        resources::ResourceFork newFork;
        REQUIRE(newFork.Open(now.resourceFork) == nullptr);
        CHECK(newFork.IsSound());
        if (now.resourcePath.filename() == "._File")
            CHECK(std::string(now.dataFork.begin(), now.dataFork.end()) == data);
        CHECK(std::memcmp(&now.finderInfo, &old.finderInfo, sizeof(FInfo)) == 0);
        CHECK(newFork.Attributes() == (oldFork.Attributes() & ~(mapCompact | mapChanged)));
        CHECK(std::equal(oldBytes.begin() + 16, oldBytes.begin() + 256, now.resourceFork.begin() + 16));
        for (size_t i = 0; i < oldFork.ResourceCount(); ++i) {
            const resources::ResourceRef was = oldFork.WithOrdinal(i), is = newFork.WithOrdinal(i);
            const resources::ResourceInfo a = oldFork.Info(was), b = newFork.Info(is);
            REQUIRE(a.type == b.type);
            REQUIRE(a.id == b.id);
            REQUIRE(a.name == b.name);
            REQUIRE(a.hasName == b.hasName);
            Bytes x, y;
            REQUIRE(oldFork.Data(was, &x));
            REQUIRE(newFork.Data(is, &y));
            if (i > 0) {
                REQUIRE(a.attributes == b.attributes);
                REQUIRE(std::equal(x.begin(), x.end(), y.begin(), y.end()));
            }
        }
    }
    if (count == 0)
        MESSAGE("skipped: no real files at " << folder.string());
}
