// Open forks by parameter block and by FSRef, with offsets of 32 and of 64 bits.
#include "TestForks.h"

#include <Carbon/Files.h>

using namespace lampblack;

namespace {

struct ResourceName {
    HFSUniStr255 name;
    ResourceName() { FSGetResourceForkName(&name); }
};

} // namespace

TEST_CASE("PBReadSync, PBWriteSync: positions, counts and the mark afterwards")
{
    TestFolder scratch;
    scratch.Write("File", "0123456789");
    PascalName name("File");
    HParamBlockRec open = {};
    open.ioParam.ioNamePtr = name.text;
    open.ioParam.ioVRefNum = scratch.folder.volume;
    open.ioParam.ioPermssn = fsRdWrPerm;
    open.fileParam.ioDirID = scratch.folder.id;
    REQUIRE(PBHOpenDFSync(&open) == noErr);
    char buffer[16] = {};
    ParamBlockRec block = {};
    block.ioParam.ioRefNum = open.ioParam.ioRefNum;
    block.ioParam.ioBuffer = buffer;
    block.ioParam.ioReqCount = 3;
    block.ioParam.ioPosMode = fsFromStart | noCacheMask;
    block.ioParam.ioPosOffset = 2;
    CHECK(PBReadSync(&block) == noErr);
    CHECK(+block.ioParam.ioActCount == 3);
    CHECK(+block.ioParam.ioPosOffset == 5);
    CHECK(std::string(buffer) == "234");
    block.ioParam.ioPosMode = fsFromLEOF | rdVerify;
    block.ioParam.ioPosOffset = -2;
    CHECK(PBReadSync(&block) == eofErr);
    CHECK(block.ioParam.ioResult == eofErr);
    CHECK(+block.ioParam.ioActCount == 2);
    CHECK(+block.ioParam.ioPosOffset == 10);
    block.ioParam.ioPosMode = fsFromMark;
    block.ioParam.ioPosOffset = -11;
    CHECK(PBReadSync(&block) == posErr);
    CHECK(+block.ioParam.ioActCount == 0);
    block.ioParam.ioReqCount = -1;
    CHECK(PBReadSync(&block) == paramErr);
    block.ioParam.ioReqCount = 2;
    block.ioParam.ioPosMode = fsFromStart;
    block.ioParam.ioPosOffset = 12;
    std::memcpy(buffer, "AB", 2);
    CHECK(PBWriteSync(&block) == noErr);
    CHECK(+block.ioParam.ioActCount == 2);
    CHECK(+block.ioParam.ioPosOffset == 14);
    CHECK(scratch.Bytes("File") == std::string("0123456789\0\0AB", 14));
    CHECK(PBGetEOFSync(&block) == noErr);
    CHECK((intptr_t)block.ioParam.ioMisc == 14);
    block.ioParam.ioMisc = (Ptr)5;
    CHECK(PBSetEOFSync(&block) == noErr);
    CHECK(PBGetFPosSync(&block) == noErr);
    CHECK(+block.ioParam.ioPosOffset == 5);
    block.ioParam.ioPosMode = fsFromStart;
    block.ioParam.ioPosOffset = 1;
    CHECK(PBSetFPosSync(&block) == noErr);
    CHECK(+block.ioParam.ioPosOffset == 1);
    CHECK(PBCloseSync(&block) == noErr);
    CHECK(PBReadSync(&block) == fnOpnErr);
    CHECK(PBReadSync(nullptr) == paramErr);
}

TEST_CASE("PBReadSync: newline mode ends with the character and touches no byte behind it")
{
    TestFolder scratch;
    const std::string longLine(700, 'x');
    scratch.Write("File", "one\rtwo\r" + longLine + "\rend");
    ParamBlockRec block = {};
    char buffer[1024];
    block.ioParam.ioRefNum = OpenData(scratch.Spec("File"), fsRdPerm);
    block.ioParam.ioBuffer = buffer;
    block.ioParam.ioReqCount = sizeof buffer;
    block.ioParam.ioPosMode = (SInt16)('\r' << 8 | newLineMask | fsAtMark);
    std::memset(buffer, '-', sizeof buffer);
    CHECK(PBReadSync(&block) == noErr);
    CHECK(std::string(buffer, 5) == "one\r-");
    CHECK(+block.ioParam.ioActCount == 4);
    CHECK(+block.ioParam.ioPosOffset == 4);
    CHECK(PBReadSync(&block) == noErr);
    CHECK(+block.ioParam.ioActCount == 4);
    CHECK(PBReadSync(&block) == noErr);
    CHECK(std::string(buffer, 701) == longLine + "\r");
    block.ioParam.ioReqCount = 2;
    CHECK(PBReadSync(&block) == noErr);
    CHECK(+block.ioParam.ioActCount == 2);
    CHECK(PBReadSync(&block) == eofErr);
    CHECK(+block.ioParam.ioActCount == 1);
    CHECK(PBCloseSync(&block) == noErr);
}

TEST_CASE("PBReadAsync: done when it returns, and the completion routine has been called")
{
    static int calls;
    static OSErr result;
    TestFolder scratch;
    scratch.Write("File", "0123");
    char buffer[8];
    ParamBlockRec block = {};
    block.ioParam.ioRefNum = OpenData(scratch.Spec("File"), fsRdPerm);
    block.ioParam.ioBuffer = buffer;
    block.ioParam.ioReqCount = 8;
    block.ioParam.ioCompletion = [](ParmBlkPtr ioBlock) {
        ++calls;
        result = ioBlock->ioParam.ioResult;
    };
    calls = 0;
    CHECK(PBReadAsync(&block) == eofErr);
    CHECK(calls == 1);
    CHECK(result == eofErr);
    CHECK(+block.ioParam.ioActCount == 4);
    CHECK(PBCloseAsync(&block) == noErr);
    CHECK(calls == 2);
}

TEST_CASE("FSOpenFork: both forks by name, and what is no fork")
{
    TestFolder scratch;
    scratch.Write("File", "0123456789");
    scratch.MakeFolder("Folder");
    const ResourceName resource;
    const FSRef ref = scratch.Ref("File"), folder = scratch.Ref("Folder");
    SInt16 data = 0, fork = 0, none = 0;
    REQUIRE(FSOpenFork(&ref, 0, nullptr, fsRdWrPerm, &data) == noErr);
    REQUIRE(FSOpenFork(&ref, resource.name.length, resource.name.unicode, fsRdWrPerm, &fork) == noErr);
    ByteCount count = 0;
    char buffer[16] = {};
    CHECK(FSReadFork(data, fsFromStart, 4, 3, buffer, &count) == noErr);
    CHECK(std::string(buffer) == "456");
    CHECK(FSReadFork(data, fsAtMark, 99, 9, buffer, &count) == eofErr);
    CHECK(count == 3);
    CHECK(FSReadFork(data, fsFromStart, 99, 9, buffer, nullptr) == eofErr);
    SInt64 position = 0, size = 0;
    CHECK(FSGetForkPosition(data, &position) == noErr);
    CHECK(position == 10);
    CHECK(FSSetForkPosition(data, fsFromLEOF, -1) == noErr);
    CHECK(FSSetForkPosition(data, 0x0008, 0) == errFSBadPosMode);
    CHECK(FSReadFork(data, newLineMask, 0, 1, buffer, nullptr) == errFSBadPosMode);
    CHECK(FSWriteFork(fork, fsFromStart, 0, 4, "fork", &count) == noErr);
    CHECK(FSGetForkSize(fork, &size) == noErr);
    CHECK(size == 4);
    CHECK(FSWriteFork(fork, fsFromStart, INT64_C(0x80000000), 1, "x", &count) == fileBoundsErr);
    CHECK(FSCloseFork(data) == noErr);
    CHECK(FSCloseFork(fork) == noErr);
    CHECK(scratch.Fork("File") == "fork");
    CHECK(FSOpenFork(&ref, 3, resource.name.unicode, fsRdPerm, &none) == errFSBadForkName);
    CHECK(FSOpenFork(&ref, 3, nullptr, fsRdPerm, &none) == paramErr);
    CHECK(FSOpenFork(&folder, 0, nullptr, fsRdPerm, &none) == notAFileErr);
    CHECK(FSOpenFork(&ref, 0, nullptr, fsRdPerm, nullptr) == paramErr);
    FSRef foreign = {};
    CHECK(FSOpenFork(&foreign, 0, nullptr, fsRdPerm, &none) == errFSBadFSRef);
}

TEST_CASE("FSCreateFork, FSDeleteFork: a fork is there always; with bytes it exists already")
{
    TestFolder scratch;
    scratch.Write("File", "0123456789");
    const ResourceName resource;
    const FSRef ref = scratch.Ref("File");
    const UniCharCount length = resource.name.length;
    const UniChar* name = resource.name.unicode;
    CHECK(FSCreateFork(&ref, length, name) == noErr);
    CHECK(FSCreateFork(&ref, 0, nullptr) == errFSForkExists);
    SInt16 fork = 0;
    REQUIRE(FSOpenFork(&ref, length, name, fsRdWrPerm, &fork) == noErr);
    CHECK(FSWriteFork(fork, fsAtMark, 0, 4, "fork", nullptr) == noErr);
    CHECK(FSDeleteFork(&ref, length, name) == fBsyErr);
    CHECK(FSCloseFork(fork) == noErr);
    CHECK(FSCreateFork(&ref, length, name) == errFSForkExists);
    CHECK(FSDeleteFork(&ref, length, name) == noErr);
    CHECK(scratch.Fork("File").empty());
    CHECK(FSDeleteFork(&ref, 0, nullptr) == noErr);
    CHECK(scratch.Bytes("File").empty());
}

TEST_CASE("Sizes above 2 GB: 64 bits tell them, 32 bits answer fileBoundsErr")
{
    TestFolder scratch;
    scratch.Write("File");
    const FSRef ref = scratch.Ref("File");
    const SInt64 size = INT64_C(0x80000000) + 10; // a hole: it takes no room
    SInt16 refNum = 0;
    REQUIRE(FSOpenFork(&ref, 0, nullptr, fsRdWrPerm, &refNum) == noErr);
    if (FSSetForkSize(refNum, fsFromStart, size) != noErr) {
        MESSAGE("no room for it here");
        FSCloseFork(refNum);
        return;
    }
    SInt64 wide = 0;
    SInt32 narrow = 0;
    char byte = 'x';
    CHECK(FSGetForkSize(refNum, &wide) == noErr);
    CHECK(wide == size);
    CHECK(GetEOF(refNum, &narrow) == fileBoundsErr);
    CHECK(FSWriteFork(refNum, fsFromLEOF, -1, 1, &byte, nullptr) == noErr);
    CHECK(FSGetForkPosition(refNum, &wide) == noErr);
    CHECK(wide == size);
    CHECK(GetFPos(refNum, &narrow) == fileBoundsErr);
    narrow = 1;
    CHECK(FSRead(refNum, &narrow, &byte) == fileBoundsErr);
    narrow = 1;
    CHECK(FSWrite(refNum, &narrow, &byte) == fileBoundsErr);
    CHECK(SetFPos(refNum, fsFromLEOF, 0) == fileBoundsErr);
    CHECK(SetFPos(refNum, fsFromStart, 0x7FFFFFFF) == noErr);
    CHECK(FSReadFork(refNum, fsFromLEOF, -1, 1, &byte, nullptr) == noErr);
    CHECK(byte == 'x');
    CHECK(FSCloseFork(refNum) == noErr);
}

TEST_CASE("PBGetFCBInfoSync: tells of open forks, their ends and marks")
{
    TestFolder scratch;
    scratch.Write("File", "0123456789");
    const SInt16 refNum = OpenData(scratch.Spec("File"), fsRdWrPerm);
    CHECK(SetFPos(refNum, fsFromStart, 4) == noErr);
    Str255 name;
    FCBPBRec block = {};
    block.ioNamePtr = name;
    block.ioRefNum = refNum;
    CHECK(PBGetFCBInfoSync(&block) == noErr);
    CHECK(std::string((const char*)name + 1, name[0]) == "File");
    CHECK(+block.ioFCBEOF == 10);
    CHECK(+block.ioFCBCrPs == 4);
    CHECK((block.ioFCBFlags & 0x0100) != 0);
    CHECK((block.ioFCBFlags & 0x0200) == 0);
    CHECK(FSClose(refNum) == noErr);
}
