// File helpers: copies, whole forks, facts, names, folder menus, files in descriptors and drags.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include "CallLog.h"
#include "FreshProcess.h"
#include "PascalText.h"
#include "ScratchFolder.h"

LAMPBLACK_WATCH(OSErr, FSpCreate, (const FSSpec* spec, OSType creator, OSType type, ScriptCode script),
                (spec, creator, type, script))
LAMPBLACK_WATCH(void, FSpCreateResFile, (const FSSpec* spec, OSType creator, OSType type, ScriptCode script),
                (spec, creator, type, script))
LAMPBLACK_WATCH(OSErr, FSpGetFInfo, (const FSSpec* spec, FInfo* info), (spec, info))
LAMPBLACK_WATCH(OSErr, FSpSetFInfo, (const FSSpec* spec, const FInfo* info), (spec, info))
LAMPBLACK_WATCH(OSErr, FSpOpenDF, (const FSSpec* spec, SInt8 permission, SInt16* file),
                (spec, permission, file))
LAMPBLACK_WATCH(OSErr, FSpOpenRF, (const FSSpec* spec, SInt8 permission, SInt16* file),
                (spec, permission, file))
LAMPBLACK_WATCH(OSErr, FSRead, (SInt16 file, SInt32* count, void* buffer), (file, count, buffer))
LAMPBLACK_WATCH(OSErr, FSWrite, (SInt16 file, SInt32* count, const void* buffer), (file, count, buffer))
LAMPBLACK_WATCH(OSErr, SetEOF, (SInt16 file, SInt32 length), (file, length))
LAMPBLACK_WATCH(OSErr, SetFPos, (SInt16 file, SInt16 mode, SInt32 offset), (file, mode, offset))
LAMPBLACK_WATCH(OSErr, FSClose, (SInt16 file), (file))
LAMPBLACK_WATCH(OSErr, FlushVol, (ConstStr63Param name, SInt16 volume), (name, volume))

namespace {

Size gLargestHandle = 0x7FFFFFFF;

// A folder of the host as a volume and a directory ID.
struct Folder : ScratchFolder {
    Folder()
    {
        CallLog::gFailures.clear();
        gLargestHandle = 0x7FFFFFFF;
        FSRef ref;
        FSPathMakeRef((const UInt8*)Path().c_str(), &ref, nullptr);
        FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &fItself, nullptr);
        Boolean isDirectory = false;
        REQUIRE(FSpIsDirectory(&fItself, &isDirectory, &fDirID) == noErr);
    }

    FSSpec Spec(std::string_view inName) const
    {
        FSSpec spec = {};
        FSMakeFSSpec(fItself.vRefNum, fDirID, P(inName), &spec);
        return spec;
    }

    FSSpec fItself = {};
    SInt32 fDirID = 0;
};

std::string ReadData(const FSSpec& inSpec)
{
    Handle data = nullptr;
    if (FSpReadDF(&inSpec, &data) != noErr)
        return "unreadable";
    const std::string bytes(*data, (size_t)GetHandleSize(data));
    DisposeHandle(data);
    return bytes;
}

std::string ReadResourceFork(const FSSpec& inSpec)
{
    SInt16 file = 0;
    Handle data = nullptr;
    if (FSpOpenRF(&inSpec, fsRdPerm, &file) != noErr)
        return "unreadable";
    FSReadHandle(file, &data);
    FSClose(file);
    const std::string bytes(data ? *data : "", data ? (size_t)GetHandleSize(data) : 0);
    if (data)
        DisposeHandle(data);
    return bytes;
}

void WriteResourceFork(const FSSpec& inSpec, const std::string& inBytes)
{
    SInt16 file = 0;
    REQUIRE(FSpOpenRF(&inSpec, fsRdWrPerm, &file) == noErr);
    SInt32 count = (SInt32)inBytes.size();
    CHECK(SetEOF(file, count) == noErr);
    CHECK(FSWrite(file, &count, inBytes.data()) == noErr);
    CHECK(FSClose(file) == noErr);
}

Handle NewHandleOf(std::string_view inBytes)
{
    const Handle data = NewHandle((Size)inBytes.size());
    std::memcpy(*data, inBytes.data(), inBytes.size());
    return data;
}

std::string BytesOfSize(size_t inSize)
{
    std::string bytes(inSize, '\0');
    for (size_t i = 0; i < inSize; ++i)
        bytes[i] = (char)(i * 31 + i / 251);
    return bytes;
}

size_t CountOf(const std::string& inCalls, const std::string& inName)
{
    size_t count = 0;
    for (size_t at = inCalls.find(inName); at != std::string::npos; at = inCalls.find(inName, at + 1))
        ++count;
    return count;
}

std::vector<std::string> ItemsOf(MenuRef inMenu)
{
    std::vector<std::string> items;
    for (MenuItemIndex i = 1; i <= CountMenuItems(inMenu); ++i) {
        Str255 text;
        GetMenuItemText(inMenu, i, text);
        items.push_back(FromP(text));
    }
    return items;
}

MenuRef SubmenuAt(MenuRef inMenu, MenuItemIndex inItem)
{
    MenuID id = 0;
    GetMenuItemHierarchicalID(inMenu, inItem, &id);
    return id ? GetMenuHandle(id) : nullptr;
}

struct TestMenu {
    TestMenu() { CreateNewMenu(500, 0, &fMenu); }
    ~TestMenu() { DisposeMenu(fMenu); }
    MenuRef fMenu = nullptr;
};

} // namespace

LAMPBLACK_INTERPOSE Handle NewHandle(Size size)
{
    return size <= gLargestHandle ? Next<decltype(NewHandle)>("NewHandle")(size) : nullptr;
}

TEST_CASE("FSpCreateFile: a new file with both forks, creator and type; one that is there keeps its bytes")
{
    const Folder folder;
    const FSSpec spec = folder.Spec("New");
    {
        const CallLog log;
        CHECK(FSpCreateFile(&spec, 'AAAA', 'BBBB') == noErr);
        CHECK(log.Calls() == "FSpCreate FSpCreateResFile FSpGetFInfo");
    }
    FInfo info;
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    CHECK(info.fdCreator == 'AAAA');
    CHECK(info.fdType == 'BBBB');
    CHECK_FALSE(ReadResourceFork(spec).empty());
    WriteResourceFork(spec, "some bytes");
    const Handle data = NewHandleOf("data");
    CHECK(FSpWriteDF(&spec, data) == noErr);
    {
        const CallLog log;
        CHECK(FSpCreateFile(&spec, 'CCCC', 'BBBB') == noErr);
        CHECK(log.Calls() == "FSpCreate FSpCreateResFile FSpGetFInfo FSpSetFInfo");
    }
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    CHECK(info.fdCreator == 'CCCC');
    CHECK(ReadResourceFork(spec) == "some bytes");
    CHECK(ReadData(spec) == "data");
    DisposeHandle(data);
    CHECK(FSpCreateFile(nullptr, 'AAAA', 'BBBB') == paramErr);
    CallLog::gFailures["FSpCreate"] = wPrErr;
    CHECK(FSpCreateFile(&spec, 'AAAA', 'BBBB') == wPrErr);
}

TEST_CASE("FSpWriteDF, FSpReadDF: a handle becomes the data fork and comes back")
{
    const Folder folder;
    const FSSpec spec = folder.Spec("File");
    folder.Write("File", "something much longer than that");
    const Handle data = NewHandleOf("short");
    HLock(data);
    {
        const CallLog log;
        CHECK(FSpWriteDF(&spec, data) == noErr);
        CHECK(log.Calls() == "FSpOpenDF SetEOF SetFPos FSWrite FSClose FlushVol");
    }
    CHECK((HGetState(data) & 0x80) != 0); // still locked
    HUnlock(data);
    CHECK(ReadData(spec) == "short");
    DisposeHandle(data);
    Handle read = (Handle)&read;
    CHECK(FSpReadDF(&spec, nullptr) == paramErr);
    CHECK(FSpReadDF(nullptr, &read) == paramErr);
    const FSSpec none = folder.Spec("Nothing");
    CHECK(FSpReadDF(&none, &read) == fnfErr);
    CHECK(read == nullptr);
    CHECK(FSpWriteDF(&spec, nullptr) == paramErr);
    CHECK(FSpWriteDF(&none, data) == fnfErr);
}

TEST_CASE("FSReadHandle: as many bytes as the fork has, from the mark; behind the start that is too many")
{
    const Folder folder;
    folder.Write("File", "0123456789");
    const FSSpec spec = folder.Spec("File");
    SInt16 file = 0;
    REQUIRE(FSpOpenDF(&spec, fsRdPerm, &file) == noErr);
    Handle data = nullptr;
    CHECK(FSReadHandle(file, &data) == noErr);
    CHECK(GetHandleSize(data) == 10);
    DisposeHandle(data);
    CHECK(FSReadHandle(file, &data) == eofErr);
    CHECK(data == nullptr);
    SetFPos(file, fsFromStart, 0);
    gLargestHandle = 4;
    CHECK(FSReadHandle(file, &data) != 1);
    CHECK(data == nullptr);
    FSClose(file);
    CHECK(FSReadHandle(file, &data) == fnOpnErr);
    CHECK(FSReadHandle(file, nullptr) == paramErr);
    CHECK(FSWriteHandle(file, nullptr) == paramErr);
}

TEST_CASE("FSpCopyFile: both forks, creator and type")
{
    const Folder folder;
    const FSSpec source = folder.Spec("Source"), copy = folder.Spec("Copy");
    FSpCreateFile(&source, 'AAAA', 'BBBB');
    WriteResourceFork(source, BytesOfSize(3000));
    const Handle data = NewHandleOf(BytesOfSize(70000));
    FSpWriteDF(&source, data);
    DisposeHandle(data);
    CHECK(FSpCopyFile(&source, &copy) == noErr);
    CHECK(ReadData(copy) == BytesOfSize(70000));
    CHECK(ReadResourceFork(copy) == BytesOfSize(3000));
    FInfo info;
    FSpGetFInfo(&copy, &info);
    CHECK(info.fdCreator == 'AAAA');
    CHECK(info.fdType == 'BBBB');
    const FSSpec none = folder.Spec("Nothing");
    CHECK(FSpCopyFile(&none, &copy) == fnfErr);
    CHECK(FSpCopyFile(nullptr, &copy) == paramErr);
    CHECK(FSpCopyForks(&source, nullptr) == paramErr);
}

TEST_CASE("FSpCopyFile: an empty fork of the source leaves the destination's as it was")
{
    const Folder folder;
    folder.Write("Source", "plain");
    const FSSpec source = folder.Spec("Source"), copy = folder.Spec("Copy");
    FSpCreateFile(&copy, 'AAAA', 'BBBB');
    WriteResourceFork(copy, "stays");
    CHECK(FSpCopyFile(&source, &copy) == noErr);
    CHECK(ReadData(copy) == "plain");
    CHECK(ReadResourceFork(copy) == "stays");
    folder.Write("Empty");
    const FSSpec empty = folder.Spec("Empty");
    const CallLog log;
    CHECK(FSpCopyForks(&empty, &copy) == noErr);
    CHECK(log.Calls() == "FSpOpenDF FSClose FSpOpenRF FSClose");
    CHECK(ReadData(copy) == "plain");
}

TEST_CASE("FSpCopyFork: 600 KB go in two pieces; with less memory in five; with none not at all")
{
    const Folder folder;
    const std::string bytes = BytesOfSize(600 * 1024);
    folder.Write("Source", bytes);
    folder.Write("Copy", BytesOfSize(900 * 1024));
    const FSSpec source = folder.Spec("Source"), copy = folder.Spec("Copy");
    {
        const CallLog log;
        CHECK(FSpCopyFork(&source, &copy, false) == noErr);
        CHECK(log.Calls() ==
              "FSpOpenDF FSpOpenDF SetEOF SetFPos FSRead FSWrite FSRead FSWrite FSClose FSClose");
    }
    CHECK(ReadData(copy) == bytes);
    gLargestHandle = 0x20000;
    {
        const CallLog log;
        CHECK(FSpCopyFork(&source, &copy, false) == noErr);
        CHECK(CountOf(log.Calls(), "FSRead") == 5);
    }
    gLargestHandle = 0x10000;
    const CallLog log;
    CHECK(FSpCopyFork(&source, &copy, false) == memFullErr);
    CHECK(CountOf(log.Calls(), "FSClose") == 2);
    gLargestHandle = 0x7FFFFFFF;
    CHECK(ReadData(copy) == bytes);
}

TEST_CASE("FSpCopyFork: the error of a step ends the copy, and what was opened is closed")
{
    const Folder folder;
    folder.Write("Source", "abc");
    folder.Write("Copy", "def");
    const FSSpec source = folder.Spec("Source"), copy = folder.Spec("Copy");
    for (const char* step : { "SetEOF", "SetFPos", "FSRead", "FSWrite" }) {
        CAPTURE(step);
        CallLog::gFailures.clear();
        CallLog::gFailures[step] = ioErr;
        const CallLog log;
        CHECK(FSpCopyFork(&source, &copy, false) == ioErr);
        CHECK(CountOf(log.Calls(), "FSClose") == 2);
    }
    CallLog::gFailures.clear();
    CallLog::gFailures["FSRead"] = eofErr; // a source that became shorter does not make it read for ever
    CHECK(InFreshProcess([&] { return FSpCopyFork(&source, &copy, false) != 77; }) == 1);
    CallLog::gFailures.clear();
}

TEST_CASE("GetFileSize, FSpGetFileSize: the two forks; either answer may be left out")
{
    const Folder folder;
    const FSSpec spec = folder.Spec("File");
    FSpCreateFile(&spec, 'AAAA', 'BBBB');
    folder.Write("File", "0123456789");
    WriteResourceFork(spec, "12345");
    UInt32 data = 0, resource = 0;
    CHECK(GetFileSize(spec.vRefNum, spec.parID, spec.name, &data, &resource) == noErr);
    CHECK(data == 10);
    CHECK(resource == 5);
    data = 0;
    CHECK(FSpGetFileSize(&spec, &data, nullptr) == noErr);
    CHECK(data == 10);
    CHECK(FSpGetFileSize(&spec, nullptr, &resource) == noErr);
    const FSSpec none = folder.Spec("Nothing");
    CHECK(FSpGetFileSize(&none, &data, &resource) == fnfErr);
    CHECK(FSpGetFileSize(nullptr, &data, &resource) == paramErr);
}

TEST_CASE("FSSetLongDateTime: both dates, of a file and of a folder itself")
{
    const Folder folder;
    folder.Write("File", "x");
    const FSSpec spec = folder.Spec("File");
    constexpr SInt64 kDate = 0xB0000000; // above 31 bits: 1997
    SInt64 created = 1, modified = 1;
    CHECK(FSpSetLongDateTime(&spec, (SInt64{ 7 } << 32) + kDate) == noErr);
    CHECK(FSpGetLongModDateTime(&spec, &modified) == noErr);
    CHECK(modified == kDate);
    CHECK(FSpGetLongCreateDateTime(&spec, &created) == noErr);
    CHECK(created == kDate);
    CHECK(FSSetLongDateTime(spec.vRefNum, spec.parID, nullptr, kDate - 100) == noErr);
    CHECK(GetLongModDateTime(spec.vRefNum, spec.parID, P(""), &modified) == noErr);
    CHECK(modified == kDate - 100);
    CHECK(GetLongModDateTime(folder.fItself.vRefNum, folder.fItself.parID, folder.fItself.name, &modified) ==
          noErr);
    CHECK(modified == kDate - 100);
    const FSSpec none = folder.Spec("Nothing");
    CHECK(FSpGetLongModDateTime(&none, &modified) == fnfErr);
    CHECK(modified == 0);
    CHECK(FSpSetLongDateTime(&none, kDate) == fnfErr);
    CHECK(FSpGetLongCreateDateTime(nullptr, &created) == paramErr);
    CHECK(FSpGetLongCreateDateTime(&spec, nullptr) == paramErr);
    CHECK(FSpSetLongDateTime(nullptr, kDate) == paramErr);
}

TEST_CASE("FSpExists, FSpIsDirectory: a file is there, a folder is a folder, a volume has the ID 1")
{
    const Folder folder;
    folder.Write("File");
    folder.MakeFolder("Inside");
    const FSSpec file = folder.Spec("File"), inside = folder.Spec("Inside"), none = folder.Spec("Nothing");
    CHECK(FSpExists(&file));
    CHECK_FALSE(FSpExists(&inside));
    CHECK_FALSE(FSpExists(&none));
    CHECK_FALSE(FSpExists(nullptr));
    FSSpec incomplete = file;
    incomplete.parID = 0;
    CHECK_FALSE(FSpExists(&incomplete));
    Boolean isDirectory = true;
    SInt32 directory = 0;
    CHECK(FSpIsDirectory(&file, &isDirectory, &directory) == noErr);
    CHECK_FALSE(isDirectory);
    CHECK(directory == 0);
    CHECK(FSpIsDirectory(&inside, &isDirectory, &directory) == noErr);
    CHECK(isDirectory);
    FSSpec within = {};
    CHECK(FSMakeFSSpec(inside.vRefNum, directory, nullptr, &within) == noErr);
    CHECK(EqualFSSpec(&within, &inside));
    FSSpec volume = inside;
    volume.parID = fsRtParID;
    CHECK(FSpIsDirectory(&volume, &isDirectory, &directory) == noErr);
    CHECK(isDirectory);
    CHECK(directory == 1);
    CHECK(FSpIsDirectory(&none, &isDirectory, nullptr) == fnfErr);
    CHECK_FALSE(isDirectory);
    CHECK(FSpIsDirectory(&incomplete, &isDirectory, nullptr) == paramErr);
    CHECK(FSpIsDirectory(&file, nullptr, nullptr) == paramErr);
}

TEST_CASE("EqualFSSpec: the same place, however it is written")
{
    const Folder folder;
    folder.Write("File");
    folder.Write("Other");
    const FSSpec file = folder.Spec("File"), other = folder.Spec("Other"), none = folder.Spec("Nothing");
    FSSpec loose = file;
    loose.vRefNum = folder.fItself.vRefNum;
    CHECK(EqualFSSpec(&file, &loose));
    CHECK_FALSE(EqualFSSpec(&file, &other));
    CHECK_FALSE(EqualFSSpec(&none, &none)); // neither can be made out
    CHECK_FALSE(EqualFSSpec(nullptr, &file));
    CHECK(FSpGetFileID(&file) == folder.fDirID);
    CHECK(FSpGetFileID(nullptr) == 0);
    FSSpec missing = none;
    CHECK(FSpNormalize(&missing) == fnfErr);
    CHECK(FromP(missing.name) == "Nothing");
    CHECK(FSpNormalize(nullptr) == paramErr);
}

TEST_CASE("FSpGetVersion: of another file, whose resource file does not stay open or current")
{
    const Folder folder;
    const FSSpec spec = folder.Spec("File");
    FSpCreateFile(&spec, 'AAAA', 'BBBB');
    const SInt16 before = CurResFile();
    const SInt16 file = FSpOpenResFile(&spec, fsRdWrPerm);
    UseResFile(file);
    AddResource(NewHandleOf(std::string_view("\1\x23\x80\0\0\0\0\0", 8)), 'vers', 1, nullptr);
    AddResource(NewHandleOf("\1\x23"), 'vers', 2, nullptr);
    CloseResFile(file);
    UseResFile(before);
    NumVersion version = {};
    CHECK(FSpGetVersion(&spec, 1, &version) == noErr);
    CHECK(version.minorAndBugRev == 0x23);
    CHECK(FSpGetVersion(&spec, 2, &version) == resNotFound);
    CHECK(FSpGetVersion(&spec, 3, &version) == resNotFound);
    CHECK(CurResFile() == before);
    const FSSpec none = folder.Spec("Nothing");
    CHECK(FSpGetVersion(&none, 1, &version) == fnfErr);
    CHECK(FSpGetVersion(nullptr, 1, &version) == paramErr);
    CHECK(FSpGetVersion(&spec, 1, nullptr) == paramErr);
}

TEST_CASE("DetermineVRefNum: by reference, and by path")
{
    const Folder folder;
    SInt16 volume = 0;
    CHECK(DetermineVRefNum(nullptr, folder.fItself.vRefNum, &volume) == noErr);
    CHECK(volume == folder.fItself.vRefNum);
    Str255 path;
    FSSpec itself = folder.fItself;
    CHECK(GetFullPathname(&itself, path) == noErr);
    volume = 0;
    CHECK(DetermineVRefNum(path, 0, &volume) == noErr);
    CHECK(volume == folder.fItself.vRefNum);
    CHECK(DetermineVRefNum(nullptr, 12345, &volume) == nsvErr);
    CHECK(DetermineVRefNum(nullptr, 0, nullptr) == paramErr);
    HParamBlockRec block = {};
    CHECK(GetVolumeInfoNoName(path, 0, &block) == noErr);
    const StringPtr name = block.volumeParam.ioNamePtr;
    CHECK(name == nullptr);
    CHECK(GetVolumeInfoNoName(path, 0, nullptr) == paramErr);
}

TEST_CASE("GetFullPathname: volume, folders and file")
{
    const Folder folder;
    folder.MakeFolder("Inside");
    folder.Write("Inside/File");
    FSSpec spec = folder.Spec(":Inside:File"), root = {};
    Str255 path;
    CHECK(GetFullPathname(&spec, path) == noErr);
    const std::string text = FromP(path);
    CHECK(text.substr(text.size() - 12) == ":Inside:File");
    FSSpec again = {};
    CHECK(FSMakeFSSpec(0, 0, path, &again) == noErr);
    CHECK(EqualFSSpec(&again, &spec));
    CHECK(FSMakeFSSpec(spec.vRefNum, fsRtDirID, P("tmp"), &root) == noErr);
    CHECK(GetFullPathname(&root, path) == noErr);
    CHECK(FromP(path).ends_with(":tmp"));
    CHECK(FromP(path).find(':') == FromP(path).rfind(':'));
    FSSpec none = folder.Spec("Nothing");
    CHECK(GetFullPathname(&none, path) == fnfErr);
    CHECK(path[0] == 0);
    CHECK(GetFullPathname(nullptr, path) == paramErr);
    CHECK(GetFullPathname(&spec, nullptr) == paramErr);
}

TEST_CASE("GetFullPathname: a path too long for a Pascal string ends with its last part")
{
    const Folder folder;
    std::filesystem::path deep = folder.Path();
    const std::string name(31, 'n');
    for (int i = 0; i < 9; ++i)
        deep /= name;
    std::filesystem::create_directories(deep);
    std::ofstream(deep / "File") << 'x';
    FSRef ref;
    REQUIRE(FSPathMakeRef((const UInt8*)(deep / "File").c_str(), &ref, nullptr) == noErr);
    FSSpec spec = {};
    FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr);
    Str255 path;
    CHECK(GetFullPathname(&spec, path) == -1410);
    CHECK(FromP(path).ends_with(name + ":File"));
    CHECK(FromP(path).starts_with(name));
    CHECK(path[0] > 200);
}

TEST_CASE("FSpGetLongFilename: the whole name where the FSSpec has a short form")
{
    const Folder folder;
    const std::string name = "A name of more than thirty-one characters.txt";
    folder.Write(name);
    FSRef ref;
    REQUIRE(FSPathMakeRef((const UInt8*)(folder.Path() / name).c_str(), &ref, nullptr) == noErr);
    FSSpec spec = {};
    FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr);
    CHECK(spec.name[0] <= 31);
    Str255 text;
    CHECK(FSpGetLongFilename(&spec, text, sizeof text) == noErr);
    CHECK(FromP(text) == name);
    CHECK(FSGetLongFilename(&ref, text, sizeof text) == noErr);
    CHECK(FromP(text) == name);
    CHECK(FSpGetLongFilename(nullptr, text, sizeof text) == paramErr);
    CHECK(FSpGetLongFilename(&spec, nullptr, 0) == paramErr);
    CHECK(FSGetLongFilename(nullptr, text, sizeof text) == paramErr);
}

TEST_CASE("GetUnicodeName: Mac Roman bytes of a Unicode name, as a Pascal and as a C string")
{
    const HFSUniStr255 name = { 4, { 'C', 'a', 'f', 0xE9 } };
    unsigned char pascal[32];
    char text[32];
    CHECK(GetUnicodeName(&name, pascal, sizeof pascal) == noErr);
    CHECK(FromP(pascal) == "Caf\x8E");
    CHECK(GetUnicodeName(&name, text, sizeof text) == noErr);
    CHECK(std::string(text) == "Caf\x8E");
    const HFSUniStr255 foreign = { 1, { 0x4E2D } };
    CHECK(GetUnicodeName(&foreign, text, sizeof text) == paramErr);
    CHECK(text[0] == 0);
    CHECK(GetUnicodeName(nullptr, text, sizeof text) == paramErr);
    CHECK(GetUnicodeName(&name, (char*)nullptr, 10) == paramErr);
}

TEST_CASE("PStringInsert: in front, and cut at 255")
{
    Str255 text = "\003def";
    PStringInsert(text, P("abc"));
    CHECK(FromP(text) == "abcdef");
    PStringInsert(text, P(std::string(252, 'x')));
    CHECK(text[0] == 255);
    CHECK(FromP(text).ends_with("xabc"));
    PStringInsert(nullptr, P("abc"));
    PStringInsert(text, nullptr);
    CHECK(text[0] == 255);
}

TEST_CASE("FSpResolveAliasFile: a link leads to its file, a file to itself")
{
    const Folder folder;
    folder.Write("File");
    std::filesystem::create_symlink(folder.Path() / "File", folder.Path() / "First");
    std::filesystem::create_symlink(folder.Path() / "First", folder.Path() / "Second");
    FSSpec spec = folder.Spec("Second");
    const FSSpec file = folder.Spec("File");
    CHECK(FSpResolveAliasFile(&spec) == noErr);
    CHECK(EqualFSSpec(&spec, &file));
    CHECK(FSpResolveAliasFile(&spec) == noErr);
    CHECK(EqualFSSpec(&spec, &file));
    CHECK(FSpResolveAliasFile(nullptr) == paramErr);
}

TEST_CASE(
    "CreateFolderMenu: an item for each file, with its FSSpec; names that begin with a dot are left out")
{
    const Folder folder;
    const TestMenu menu;
    for (const char* name : { "b;(/", "A", ".hidden", "c" })
        folder.Write(name == std::string("b;(/") ? "b;(:" : name);
    folder.MakeFolder("Folder");
    folder.Write("Folder/inner");
    CHECK(CreateFolderMenu(&folder.fItself, menu.fMenu, false, '****') == noErr);
    CHECK(ItemsOf(menu.fMenu) == std::vector<std::string>{ "A", "b;(/", "c" });
    FSSpec spec = {};
    ByteCount size = 0;
    CHECK(GetMenuItemProperty(menu.fMenu, 3, 'CFMU', 'FILE', sizeof spec, &size, &spec) == noErr);
    CHECK(size == 70);
    const FSSpec file = folder.Spec("c");
    CHECK(EqualFSSpec(&spec, &file));
    CHECK(CreateFolderMenu(&file, menu.fMenu, false, '****') == dirNFErr);
    const FSSpec none = folder.Spec("Nothing");
    CHECK(CreateFolderMenu(&none, menu.fMenu, false, '****') == fnfErr);
    CHECK(CreateFolderMenu(nullptr, menu.fMenu, false, '****') == paramErr);
    CHECK(CreateFolderMenu(&folder.fItself, nullptr, false, '****') == paramErr);
    CHECK_FALSE(AddFilesToFolderMenu(nullptr, folder.fItself.vRefNum, folder.fDirID, false, '****'));
}

TEST_CASE("CreateFolderMenu: only files of the type, and submenus for folders that have some")
{
    const Folder folder;
    const TestMenu menu;
    for (const char* path : { "d/wanted", "e/other", "f/g/wanted", "wanted" }) {
        folder.Write(path);
        FSRef ref;
        FSSpec spec;
        FSPathMakeRef((const UInt8*)(folder.Path() / path).c_str(), &ref, nullptr);
        FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr);
        const bool isWanted = std::string(path).ends_with("wanted");
        CHECK(FSpCreateFile(&spec, 'AAAA', isWanted ? 'WANT' : 'OTHR') == noErr);
    }
    SetMenuFont(menu.fMenu, 0, 20);
    CHECK(CreateFolderMenu(&folder.fItself, menu.fMenu, true, 'WANT') == noErr);
    CHECK(ItemsOf(menu.fMenu) == std::vector<std::string>{ "d", "f", "wanted" });
    const MenuRef d = SubmenuAt(menu.fMenu, 1), f = SubmenuAt(menu.fMenu, 2);
    REQUIRE(d);
    REQUIRE(f);
    CHECK(GetMenuID(d) == 18618);
    CHECK(GetMenuID(f) == 18619); // that of "e" became free again
    CHECK(ItemsOf(d) == std::vector<std::string>{ "wanted" });
    CHECK(ItemsOf(f) == std::vector<std::string>{ "g" });
    UInt16 size = 0;
    CHECK(GetMenuFont(d, nullptr, &size) == noErr);
    CHECK(size == 20);
    REQUIRE(SubmenuAt(f, 1));
    CHECK(ItemsOf(SubmenuAt(f, 1)) == std::vector<std::string>{ "wanted" });
    const TestMenu flat;
    CHECK(AddFilesToFolderMenu(flat.fMenu, folder.fItself.vRefNum, folder.fDirID, false, 'WANT'));
    CHECK(ItemsOf(flat.fMenu) == std::vector<std::string>{ "wanted" });
    const TestMenu none;
    CHECK_FALSE(AddFilesToFolderMenu(none.fMenu, folder.fItself.vRefNum, folder.fDirID, false, 'NONE'));
    for (MenuID id = 18618; id < 18630; ++id)
        if (const MenuRef submenu = GetMenuHandle(id)) {
            DeleteMenu(id);
            DisposeMenu(submenu);
        }
}

TEST_CASE("CreateFolderMenu: aliases stand for what they lead to; one that leads back ends the walk")
{
    const Folder folder;
    const TestMenu menu;
    folder.Write("File");
    folder.Write("Sub/inner");
    std::filesystem::create_symlink(folder.Path() / "File", folder.Path() / "Link");
    std::filesystem::create_symlink(folder.Path(), folder.Path() / "Sub/Up");
    std::filesystem::create_symlink(folder.Path() / "nowhere", folder.Path() / "Broken");
    std::filesystem::create_symlink(folder.Path() / "Sub", folder.Path() / "ToSub");
    CHECK(CreateFolderMenu(&folder.fItself, menu.fMenu, true, '****') == noErr);
    CHECK(ItemsOf(menu.fMenu) == std::vector<std::string>{ "File", "Link", "Sub", "ToSub" });
    FSSpec spec = {};
    const FSSpec file = folder.Spec("File");
    GetMenuItemProperty(menu.fMenu, 2, 'CFMU', 'FILE', sizeof spec, nullptr, &spec);
    CHECK(EqualFSSpec(&spec, &file));
    CHECK(ItemsOf(SubmenuAt(menu.fMenu, 3)) == std::vector<std::string>{ "inner" });
    CHECK(ItemsOf(SubmenuAt(menu.fMenu, 4)) == std::vector<std::string>{ "inner" });
}

TEST_CASE("GetFSSpecFromAEDesc, GetFSSRefFromAEDesc: as they are, and coerced")
{
    const Folder folder;
    folder.Write("File");
    const FSSpec file = folder.Spec("File");
    FSRef ref;
    CHECK(FSpMakeFSRef(&file, &ref) == noErr);
    AEDesc asSpec, asRef, asText;
    CHECK(AECreateDesc(typeFSS, &file, sizeof file, &asSpec) == noErr);
    CHECK(AECreateDesc(typeFSRef, &ref, sizeof ref, &asRef) == noErr);
    CHECK(AECreateDesc(typeSInt16, "ab", 2, &asText) == noErr);
    FSSpec spec = {};
    CHECK(GetFSSpecFromAEDesc(&asSpec, &spec) == noErr);
    CHECK(std::memcmp(&spec, &file, sizeof spec) == 0);
    spec = {};
    CHECK(GetFSSpecFromAEDesc(&asRef, &spec) == noErr);
    CHECK(EqualFSSpec(&spec, &file));
    FSRef read;
    CHECK(GetFSSRefFromAEDesc(&asRef, &read) == noErr);
    CHECK(FSCompareFSRefs(&read, &ref) == noErr);
    CHECK(GetFSSRefFromAEDesc(&asSpec, &read) == noErr);
    CHECK(FSCompareFSRefs(&read, &ref) == noErr);
    CHECK(GetFSSpecFromAEDesc(&asText, &spec) == errAECoercionFail);
    CHECK(GetFSSRefFromAEDesc(&asText, &read) == errAECoercionFail);
    CHECK(GetFSSpecFromAEDesc(nullptr, &spec) == paramErr);
    CHECK(GetFSSRefFromAEDesc(&asRef, nullptr) == paramErr);
    for (AEDesc* desc : { &asSpec, &asRef, &asText })
        AEDisposeDesc(desc);
}

TEST_CASE("GetDragItemFileInfo: a file, a promised file, and what is neither")
{
    const Folder folder;
    folder.Write("File");
    HFSFlavor flavor = { 'TYPE', 'CREA', 0, folder.Spec("File") };
    PromiseHFSFlavor promise = { 'PROM', 'CREA', 0, kDragPromisedFlavorFindFile };
    DragRef drag = nullptr;
    REQUIRE(NewDrag(&drag) == noErr);
    AddDragItemFlavor(drag, 1, kDragFlavorTypeHFS, &flavor, sizeof flavor, 0);
    AddDragItemFlavor(drag, 2, kDragFlavorTypePromiseHFS, &promise, sizeof promise, 0);
    AddDragItemFlavor(drag, 2, kDragPromisedFlavorFindFile, &flavor.fileSpec, sizeof flavor.fileSpec, 0);
    promise.promisedFlavor = 'what';
    AddDragItemFlavor(drag, 3, kDragFlavorTypePromiseHFS, &promise, sizeof promise, 0);
    AddDragItemFlavor(drag, 4, 'TEXT', "text", 4, 0);
    FSSpec spec = {};
    OSType type = 0;
    CHECK(GetDragItemFileInfo(drag, 1, &spec, &type) == noErr);
    CHECK(EqualFSSpec(&spec, &flavor.fileSpec));
    CHECK(type == 'TYPE');
    spec = {};
    CHECK(GetDragItemFileInfo(drag, 2, &spec, &type) == noErr);
    CHECK(EqualFSSpec(&spec, &flavor.fileSpec));
    CHECK(type == 'PROM');
    CHECK(GetDragItemFileInfo(drag, 3, &spec, &type) == -1854);
    CHECK(GetDragItemFileInfo(drag, 4, &spec, &type) == -1854);
    CHECK(GetDragItemFileInfo(drag, 1, nullptr, &type) == paramErr);
    CHECK(GetDragItemFileInfo(drag, 1, &spec, nullptr) == paramErr);
    DisposeDrag(drag);
}
