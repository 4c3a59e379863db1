// Adding, changing and writing resources, and what a file holds afterwards.
#include "WritingFixture.h"

#include <cstring>
#include <fcntl.h>

using namespace lampblack;
using namespace lampblack::writing;

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
