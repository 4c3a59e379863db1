// The application's own resources, small values in resources, version texts, the current-file saver, the
// flipper.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <cstring>
#include <ostream>
#include <string>

#include "CallLog.h"
#include "PascalText.h"
#include "ScratchFolder.h"

LAMPBLACK_WATCH(Handle, Get1Resource, (ResType type, SInt16 id), (type, id))
LAMPBLACK_WATCH(void, SetResLoad, (Boolean load), (load))
LAMPBLACK_WATCH(void, UseResFile, (SInt16 file), (file))
LAMPBLACK_WATCH(void, AddResource, (Handle data, ResType type, SInt16 id, ConstStr255Param name),
                (data, type, id, name))
LAMPBLACK_WATCH(void, WriteResource, (Handle resource), (resource))
LAMPBLACK_WATCH(void, DetachResource, (Handle resource), (resource))
LAMPBLACK_WATCH(void, RemoveResource, (Handle resource), (resource))
LAMPBLACK_WATCH(void, DisposeHandle, (Handle handle), (handle))
LAMPBLACK_WATCH(void, ReleaseResource, (Handle resource), (resource))
LAMPBLACK_WATCH(void, UpdateResFile, (SInt16 file), (file))
LAMPBLACK_WATCH(OSStatus, CoreEndianInstallFlipper,
                (OSType domain, OSType type, CoreEndianFlipProc proc, void* refCon),
                (domain, type, proc, refCon))

namespace {

// The application's file and another one that is open for writing, on top of it, with a 'vers' 1 and a 'RECT'
// 1 of its own.
struct Files {
    Files()
    {
        InitializeMacOSHelpers();
        CallLog::gFailures.clear();
        FSRef folder;
        FSPathMakeRef((const UInt8*)fFolder.Path().c_str(), &folder, nullptr);
        FSGetCatalogInfo(&folder, kFSCatInfoNone, nullptr, nullptr, &fSpec, nullptr);
        Boolean isDirectory = false;
        SInt32 directory = 0;
        FSpIsDirectory(&fSpec, &isDirectory, &directory);
        FSMakeFSSpec(fSpec.vRefNum, directory, P("Other file"), &fSpec);
        FSpCreateFile(&fSpec, 'othr', 'rsrc');
        fRefNum = FSpOpenResFile(&fSpec, fsRdWrPerm);
        REQUIRE(fRefNum != -1);
        UseResFile(fRefNum);
    }
    ~Files()
    {
        CloseResFile(fRefNum);
        UseResFile(GetApplicationResFile());
    }

    void Add(ResType inType, SInt16 inID, std::string_view inBytes, ConstStr255Param inName = nullptr)
    {
        const Handle data = NewHandle((Size)inBytes.size());
        std::memcpy(*data, inBytes.data(), inBytes.size());
        AddResource(data, inType, inID, inName);
        REQUIRE(ResError() == noErr);
    }

    ScratchFolder fFolder;
    FSSpec fSpec = {};
    SInt16 fRefNum = -1;
};

std::string BytesOf(Handle inHandle)
{
    return inHandle ? std::string(*inHandle, (size_t)GetHandleSize(inHandle)) : "none";
}

using namespace std::string_view_literals;

} // namespace

TEST_CASE("The application's resources: a file that is not known yet is fnfErr") // before the toolkit starts
{
    if (GetApplicationResFile() != -1) {
        MESSAGE("another case has started the toolkit");
        return;
    }
    CHECK(GetApplicationResource('vers', 1) == nullptr);
    CHECK(ResError() == fnfErr);
    const Handle data = NewHandle(4);
    CHECK(AddApplicationResource(data, 'TEST', 1, nullptr) == fnfErr);
    DisposeHandle(data);
    CHECK(CopyApplicationResource('vers', 1, nullptr) == fnfErr);
    char text[256] = "old";
    CHECK_FALSE(GetApplicationCString(128, 1, text));
    CHECK(text[0] == 0);
    NumVersion version;
    CHECK(GetApplicationNumVersion(&version) == resNotFound);
}

TEST_CASE_FIXTURE(Files, "InitResourceHelpers: a second call installs the flipper again and keeps the file")
{
    const SInt16 file = GetApplicationResFile();
    CHECK(file > 0);
    CHECK(file == GetCurrentResourceFileID());
    const CallLog log;
    CHECK(InitResourceHelpers() == noErr);
    CHECK(log.Calls() == "CoreEndianInstallFlipper");
    CHECK(GetApplicationResFile() == file);
}

TEST_CASE_FIXTURE(Files, "GetApplicationResource: from the application's file and no other")
{
    Add('vers', 1,
        "\x09\x00\x80\x00\x00\x00\x03"
        "9.0\x03"
        "9.0"sv);
    CHECK(BytesOf(Get1Resource('vers', 1)).substr(6, 4) == "\0039.0");
    CHECK(BytesOf(GetApplicationResource('vers', 1)).substr(6, 6) == "\0051.2.3");
    CHECK(ResError() == noErr);
    CHECK(CurResFile() == fRefNum);
    Add('ONLY', 1, "x");
    CHECK(GetApplicationResource('ONLY', 1) == nullptr);
    CHECK(ResError() == resNotFound);
}

TEST_CASE_FIXTURE(Files, "CopyApplicationResource: its bytes arrive in the current file, under the new name")
{
    {
        const CallLog log;
        CHECK(CopyApplicationResource('STR ', 128, P("Copied")) == noErr);
        CHECK(log.Calls() == "UseResFile Get1Resource UseResFile DetachResource AddResource WriteResource");
    }
    const Handle copy = Get1NamedResource('STR ', P("Copied"));
    CHECK(BytesOf(copy) == "\005Hello");
    CHECK(HomeResFile(copy) == fRefNum);
    CHECK(BytesOf(GetApplicationResource('STR ', 128)) == "\005Hello");
    CHECK(CopyApplicationResource('STR ', 4444, nullptr) == resNotFound);
    CHECK(ResError() == resNotFound);
}

TEST_CASE_FIXTURE(Files, "AddApplicationResource: added to the application's file, which is written")
{
    const Handle data = NewHandle(4);
    {
        const CallLog log;
        CHECK(AddApplicationResource(data, 'TEST', 1, P("Added")) == noErr);
        CHECK(log.Calls() == "UseResFile AddResource UpdateResFile UseResFile");
    }
    CHECK(CurResFile() == fRefNum);
    CHECK(HomeResFile(data) == GetApplicationResFile());
    {
        const StResFile file(GetApplicationResFile());
        CHECK(RemoveResourceByID('TEST', 1) == noErr); // as it was before this test
    }
    const CallLog log;
    CHECK(AddApplicationResource(nullptr, 'TEST', 1, nullptr) == addResFailed);
    CHECK(ResError() == addResFailed);
    CHECK(log.Calls() == "UseResFile AddResource UseResFile");
}

TEST_CASE_FIXTURE(Files, "RemoveResourceByID: gone from the current file, which is written")
{
    Add('TEST', 1, "abc");
    UpdateResFile(fRefNum);
    {
        const CallLog log;
        CHECK(RemoveResourceByID('TEST', 1) == noErr);
        CHECK(log.Calls() == "SetResLoad Get1Resource SetResLoad RemoveResource DisposeHandle UpdateResFile");
    }
    CHECK(Get1Resource('TEST', 1) == nullptr);
    const CallLog log;
    CHECK(RemoveResourceByID('TEST', 1) == noErr); // and what is not there does not write the file
    CHECK(log.Calls() == "SetResLoad Get1Resource SetResLoad");
}

TEST_CASE_FIXTURE(Files, "RemoveResourceByID: a protected resource stays")
{
    Add('TEST', 1, "abc");
    UpdateResFile(fRefNum);
    SetResAttrs(Get1Resource('TEST', 1), resProtected);
    const CallLog log;
    CHECK(RemoveResourceByID('TEST', 1) == rmvResFailed);
    CHECK(log.Calls() == "SetResLoad Get1Resource SetResLoad RemoveResource ReleaseResource UpdateResFile");
    CHECK(ResError() == rmvResFailed);
    CHECK(Count1Resources('TEST') == 1);
}

TEST_CASE_FIXTURE(Files, "GetNumVersion: the chain, the current file, the application's file")
{
    NumVersion version = { 7, 7, 7, 7 };
    CHECK(Get1NumVersion(1, &version) == resNotFound);
    CHECK(ResError() == resNotFound);
    CHECK(version.majorRev == 7);
    CHECK(GetNumVersion(1, &version) == noErr);
    CHECK(version.majorRev == 0x01);
    CHECK(version.minorAndBugRev == 0x23);
    CHECK(version.stage == 0x80);
    Add('vers', 1, "\x09\x10\x60\x05\x00\x00\x00\x00"sv);
    CHECK(Get1NumVersion(1, &version) == noErr);
    CHECK(version.majorRev == 0x09);
    CHECK(version.nonRelRev == 0x05);
    CHECK(GetApplicationNumVersion(&version) == noErr);
    CHECK(version.majorRev == 0x01);
    Add('vers', 3, "\x09\x10\x60"sv);
    CHECK(GetNumVersion(3, &version) == resNotFound);
    CHECK(version.majorRev == 0x01);
    CHECK(GetNumVersion(1, nullptr) == paramErr);
}

TEST_CASE_FIXTURE(Files,
                  "GetBoolean, GetRect, GetRGBColor: bytes as they are; what is missing is false or zero")
{
    CHECK(GetBoolean(128));
    CHECK_FALSE(GetBoolean(129));
    CHECK_FALSE(Get1Boolean(128)); // not in the current file
    CHECK(ResError() == resNotFound);
    Add('BOOL', 128, "\0"sv);
    CHECK_FALSE(GetBoolean(128));
    Add('RECT', 1, "\1\0\2\0\3\0\4\0"sv, P("Place"));
    CHECK(Get1Rect(1).top == 1);
    CHECK(GetRect(1).right == 4);
    CHECK(GetNamedRect(P("place")).left == 2);
    Add('RECT', 2, "\1\0\2"sv);
    CHECK(GetRect(2).top == 1);
    CHECK(GetRect(2).right == 0);
    CHECK(GetRect(77).bottom == 0);
    CHECK(ResError() == resNotFound);
    Add('RGB ', 1, "\1\0\2\0\3\0"sv);
    CHECK(GetRGBColor(1).red == 1);
    CHECK(Get1RGBColor(1).blue == 3);
    CHECK(Get1RGBColor(2).green == 0);
    CHECK(ResError() == resNotFound);
}

TEST_CASE_FIXTURE(Files, "GetStringByID, GetStringByName: through the chain; empty when there is none")
{
    Str255 text;
    CHECK(GetStringByID(text, 128));
    CHECK(FromP(text) == "Hello");
    CHECK(ResError() == noErr);
    CHECK_FALSE(GetStringByID(text, 4444));
    CHECK(text[0] == 0);
    CHECK(ResError() == paramErr);
    CHECK(GetStringByName(text, P("greeting")));
    CHECK(FromP(text) == "Hello");
    CHECK_FALSE(GetStringByName(text, P("nobody")));
    CHECK(text[0] == 0);
    CHECK(ResError() == resNotFound);
    Add('STR ', 200, "\011ab", P("Cut"));
    CHECK(GetStringByName(text, P("Cut")));
    CHECK(FromP(text) == "ab");
    CHECK_FALSE(GetStringByName(nullptr, P("Cut")));
}

TEST_CASE_FIXTURE(Files,
                  "GetApplicationCString: of the application's list; empty for an index that is not there")
{
    char text[256] = "old";
    CHECK(GetApplicationCString(128, 2, text));
    CHECK(std::string(text) == "two");
    CHECK_FALSE(GetApplicationCString(128, 3, text)); // an empty string
    CHECK(text[0] == 0);
    CHECK_FALSE(GetApplicationCString(128, 9, text));
    CHECK_FALSE(GetApplicationCString(77, 1, text));
    CHECK(CurResFile() == fRefNum);
    CHECK_FALSE(GetApplicationCString(128, 1, nullptr));
}

TEST_CASE_FIXTURE(Files, "ConcatVersion: appended; without one a Pascal string grows, a C string is replaced")
{
    Str255 pascal = "\010Version ";
    CHECK(ConcatVersion(1, pascal) == noErr);
    CHECK(FromP(pascal) == "Version 1.2.3");
    CHECK(ConcatVersion(77, pascal) == resNotFound);
    CHECK(ResError() == resNotFound);
    CHECK(FromP(pascal) == "Version 1.2.3<unknown>");
    char text[256] = "Version ";
    CHECK(ConcatVersion(1, text) == noErr);
    CHECK(std::string(text) == "Version 1.2.3");
    CHECK(ConcatVersion(77, text) == resNotFound);
    CHECK(std::string(text) == "<unknown>");
}

TEST_CASE_FIXTURE(Files, "ConcatApplicationVersion: the application's, whatever the current file has")
{
    Add('vers', 1,
        "\x09\x00\x80\x00\x00\x00\x03"
        "9.0\x03"
        "9.0"sv);
    char text[256] = "";
    CHECK(ConcatVersion(1, text) == noErr);
    CHECK(ConcatApplicationVersion(1, text) == noErr);
    CHECK(std::string(text) == "9.01.2.3");
    Str255 pascal = "\001v";
    CHECK(ConcatApplicationVersion(1, pascal) == noErr);
    CHECK(FromP(pascal) == "v1.2.3");
    Add('vers', 9, "\x09\x00\x80\x00\x00\x00\x01x\x01x"sv);
    CHECK(ConcatApplicationVersion(9, pascal) == resNotFound);
}

TEST_CASE_FIXTURE(Files, "ConcatVersion: a long Pascal string is cut at 255, a cut 'vers' at its end")
{
    Str255 pascal;
    std::memset(pascal, 'x', sizeof pascal);
    pascal[0] = 253;
    CHECK(ConcatVersion(1, pascal) == noErr);
    CHECK(pascal[0] == 255);
    CHECK(pascal[255] == '.');
    Add('vers', 3,
        "\x09\x10\x60\x05\x00\x00\x09"
        "ab"sv);
    char text[256] = "v";
    CHECK(ConcatVersion(3, text) == noErr);
    CHECK(std::string(text) == "vab");
    Add('vers', 4, "\x09\x10"sv);
    CHECK(ConcatVersion(4, text) == noErr);
    CHECK(std::string(text) == "vab");
    CHECK(ConcatVersion(1, (char*)nullptr) == paramErr);
    CHECK(ConcatVersion(1, (StringPtr) nullptr) == paramErr);
}

TEST_CASE_FIXTURE(Files, "StResFile: the file is current for the scope; -1 only saves")
{
    const SInt16 application = GetApplicationResFile();
    {
        const StResFile file(application);
        CHECK(CurResFile() == application);
    }
    CHECK(CurResFile() == fRefNum);
    const CallLog log;
    {
        const StResFile file(-1);
        CHECK(CurResFile() == fRefNum);
        CHECK(log.Calls().empty());
        UseResFile(application);
    }
    CHECK(CurResFile() == fRefNum);
    {
        const StResFile file(fRefNum); // it is current already
    }
    CHECK(log.Calls() == "UseResFile UseResFile UseResFile");
}

TEST_CASE("flipCTLHashResource: words are swapped on the way in only, an odd byte never")
{
    UInt8 bytes[5] = { 1, 2, 3, 4, 5 };
    CHECK(flipCustomResources('rsrc', 'CTL#', 128, bytes, 5, false, nullptr) == noErr);
    CHECK(std::memcmp(bytes, "\2\1\4\3\5", 5) == 0);
    CHECK(flipCustomResources('rsrc', 'CTL#', 128, bytes, 5, true, nullptr) == noErr);
    CHECK(std::memcmp(bytes, "\2\1\4\3\5", 5) == 0);
    CHECK(flipCustomResources('rsrc', 'CNTL', 128, bytes, 5, false, nullptr) == handlerNotFoundErr);
    CHECK(flipCTLHashResource('rsrc', 'CTL#', 128, bytes, 1, false, nullptr) == noErr);
    CHECK(bytes[0] == 2);
}

TEST_CASE_FIXTURE(Files, "'CTL#' lists: five bytes arrive with two words swapped")
{
    CHECK(BytesOf(GetApplicationResource('CTL#', 129)) == "\2\1\4\3\5");
}
