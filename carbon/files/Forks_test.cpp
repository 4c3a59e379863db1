// Open forks: permissions, marks, reading and writing, sizes, both forks in every form, other processes.
#include "TestForks.h"

#include <Carbon/Files.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <files/OpenFiles.h>
#include <sys/resource.h>
#include <unistd.h>

using namespace lampblack;

namespace {

// No file of this process may grow beyond a size; the signal about it is ignored meanwhile.
class StFileSizeLimit {
public:
    explicit StFileSizeLimit(rlim_t inBytes)
    {
        getrlimit(RLIMIT_FSIZE, &fOld);
        const rlimit limit = { inBytes, fOld.rlim_max };
        fOldSignal = signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~StFileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &fOld);
        signal(SIGXFSZ, fOldSignal);
    }

private:
    rlimit fOld;
    void (*fOldSignal)(int);
};

} // namespace

TEST_CASE("FSpOpenDF: bytes written are in the file at once, and the mark follows")
{
    TestFolder scratch;
    scratch.Write("File", "0123456789");
    const FSSpec spec = scratch.Spec("File");
    const SInt16 refNum = OpenData(spec, fsRdWrPerm);
    char buffer[16] = {};
    SInt32 count = 4;
    CHECK(FSRead(refNum, &count, buffer) == noErr);
    CHECK(count == 4);
    CHECK(std::string(buffer) == "0123");
    CHECK(WriteTo(refNum, "AB") == noErr);
    CHECK(MarkOf(refNum) == 6);
    CHECK(scratch.Bytes("File") == "0123AB6789");
    CHECK(FSClose(refNum) == noErr);
    CHECK(scratch.Names() == "File"); // nothing beside it
}

TEST_CASE("FSRead: the end gives eofErr and what there was; nothing asked for is no error")
{
    TestFolder scratch;
    scratch.Write("File", "012345");
    const SInt16 refNum = OpenData(scratch.Spec("File"), fsRdPerm);
    char buffer[16] = {};
    SInt32 count = 10;
    CHECK(FSRead(refNum, &count, buffer) == eofErr);
    CHECK(count == 6);
    CHECK(std::string(buffer) == "012345");
    CHECK(MarkOf(refNum) == 6);
    count = 1;
    CHECK(FSRead(refNum, &count, buffer) == eofErr);
    CHECK(count == 0);
    CHECK(FSRead(refNum, &count, buffer) == noErr);
    CHECK(FSClose(refNum) == noErr);
}

TEST_CASE("FSRead, FSWrite: negative counts, null, and numbers that mean nothing")
{
    TestFolder scratch;
    scratch.Write("File", "012345");
    const SInt16 refNum = OpenData(scratch.Spec("File"), fsRdWrPerm);
    char buffer[4];
    SInt32 count = -1;
    CHECK(FSRead(refNum, &count, buffer) == paramErr);
    CHECK(count == 0);
    count = -1;
    CHECK(FSWrite(refNum, &count, buffer) == paramErr);
    count = 1;
    CHECK(FSRead(refNum, &count, nullptr) == paramErr);
    CHECK(FSRead(refNum, nullptr, buffer) == paramErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(FSRead(refNum, &count, buffer) == fnOpnErr);
    CHECK(FSClose(refNum) == fnOpnErr);
    for (const SInt16 number : { (SInt16)0, (SInt16)-1, (SInt16)32766 }) {
        SInt32 value = 1;
        SInt64 wide = 0;
        CHECK(FSRead(number, &value, buffer) == rfNumErr);
        CHECK(FSWrite(number, &value, buffer) == rfNumErr);
        CHECK(GetEOF(number, &value) == rfNumErr);
        CHECK(SetEOF(number, 0) == rfNumErr);
        CHECK(GetFPos(number, &value) == rfNumErr);
        CHECK(SetFPos(number, fsFromStart, 0) == rfNumErr);
        CHECK(Allocate(number, &value) == rfNumErr);
        CHECK(FSClose(number) == rfNumErr);
        CHECK(FSCloseFork(number) == errFSBadForkRef);
        CHECK(FSGetForkSize(number, &wide) == errFSBadForkRef);
        CHECK(FSFlushFork(number) == errFSBadForkRef);
    }
    CHECK(GetEOF(refNum, (SInt32*)nullptr) == paramErr);
}

TEST_CASE("FSRead: a number of the Resource Manager is none of these calls'")
{
    TestFolder scratch;
    scratch.Write("File", "012345");
    files::OpenFile file;
    file.item = scratch.Item("File");
    file.isResourceFork = true;
    const SInt16 refNum = files::AddOpenFile(file);
    char buffer[4];
    SInt32 count = 1;
    CHECK(FSRead(refNum, &count, buffer) == rfNumErr);
    CHECK(FSClose(refNum) == rfNumErr);
    CHECK(files::FindOpenFile(refNum) != nullptr);
    files::RemoveOpenFile(refNum);
}

TEST_CASE("Callers that count in long: the same calls, and a count beyond 32 bits is an error")
{
    TestFolder scratch;
    scratch.Write("File", "012345");
    const SInt16 refNum = OpenData(scratch.Spec("File"), fsRdWrPerm);
    char buffer[16];
    long count = 10, end = 0, mark = 0;
    CHECK(FSRead(refNum, &count, buffer) == eofErr);
    CHECK(count == 6);
    CHECK(GetEOF(refNum, &end) == noErr);
    CHECK(end == 6);
    CHECK(GetFPos(refNum, &mark) == noErr);
    CHECK(mark == 6);
    count = 2;
    CHECK(FSWrite(refNum, &count, "xy") == noErr);
    count = 0x100000000;
    CHECK(FSWrite(refNum, &count, buffer) == paramErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(scratch.Bytes("File") == "012345xy");
}

TEST_CASE("SetFPos: every mode; before the start the mark stays, beyond the end it is at the end")
{
    TestFolder scratch;
    scratch.Write("File", "0123456789");
    const SInt16 refNum = OpenData(scratch.Spec("File"), fsRdPerm);
    CHECK(SetFPos(refNum, fsFromStart, 4) == noErr);
    CHECK(MarkOf(refNum) == 4);
    CHECK(SetFPos(refNum, fsFromMark, 3) == noErr);
    CHECK(MarkOf(refNum) == 7);
    CHECK(SetFPos(refNum, fsFromMark, -2) == noErr);
    CHECK(MarkOf(refNum) == 5);
    CHECK(SetFPos(refNum, fsFromLEOF, -1) == noErr);
    CHECK(MarkOf(refNum) == 9);
    CHECK(SetFPos(refNum, fsAtMark, 1234) == noErr);
    CHECK(MarkOf(refNum) == 9);
    CHECK(SetFPos(refNum, fsFromMark, -10) == posErr);
    CHECK(SetFPos(refNum, fsFromStart, -1) == posErr);
    CHECK(MarkOf(refNum) == 9);
    CHECK(SetFPos(refNum, fsFromLEOF, 1) == eofErr);
    CHECK(MarkOf(refNum) == 10);
    CHECK(SetFPos(refNum, fsFromStart, 10) == noErr);
    CHECK(FSClose(refNum) == noErr);
}

TEST_CASE("SetEOF: cuts and grows; marks beyond the end come back, of every number")
{
    TestFolder scratch;
    scratch.Write("File", "0123456789");
    const FSSpec spec = scratch.Spec("File");
    const SInt16 writer = OpenData(spec, fsRdWrPerm), reader = OpenData(spec, fsRdPerm);
    CHECK(SetFPos(reader, fsFromLEOF, 0) == noErr);
    CHECK(SetEOF(writer, 4) == noErr);
    CHECK(MarkOf(reader) == 4);
    CHECK(EndOf(reader) == 4);
    CHECK(SetEOF(writer, 6) == noErr);
    CHECK(scratch.Bytes("File") == std::string("0123\0\0", 6));
    CHECK(SetEOF(writer, -1) == paramErr);
    CHECK(SetEOF(reader, 1) == wrPermErr);
    CHECK(WriteTo(reader, "x") == wrPermErr);
    SInt32 room = 100000;
    CHECK(Allocate(reader, &room) == wrPermErr);
    CHECK(Allocate(writer, &room) == noErr);
    CHECK(EndOf(writer) == 6);
    room = -1;
    CHECK(Allocate(writer, &room) == paramErr);
    CHECK(FSClose(reader) == noErr);
    CHECK(FSClose(writer) == noErr);
}

TEST_CASE("SetEOF: more than the disk has is dskFulErr and changes nothing")
{
    TestFolder scratch;
    scratch.Write("File", "0123");
    const FSRef ref = scratch.Ref("File");
    SInt16 refNum = 0;
    REQUIRE(FSOpenFork(&ref, 0, nullptr, fsRdWrPerm, &refNum) == noErr);
    CHECK(FSSetForkSize(refNum, fsFromStart, INT64_C(1) << 55) == dskFulErr);
    CHECK(EndOf(refNum) == 4);
    CHECK(FSSetForkSize(refNum, fsFromLEOF, -5) == posErr);
    CHECK(FSSetForkSize(refNum, fsFromLEOF, -1) == noErr);
    CHECK(EndOf(refNum) == 3);
    CHECK(FSCloseFork(refNum) == noErr);
}

TEST_CASE("FSWrite: a full disk tells how much went in")
{
    TestFolder scratch;
    scratch.Write("File");
    const SInt16 refNum = OpenData(scratch.Spec("File"), fsRdWrPerm);
    const std::string bytes(100000, 'x');
    SInt32 count = (SInt32)bytes.size();
    {
        const StFileSizeLimit limit(65536);
        CHECK(FSWrite(refNum, &count, bytes.data()) == dskFulErr);
    }
    CHECK(count == 65536);
    CHECK(MarkOf(refNum) == 65536);
    CHECK(FSClose(refNum) == noErr);
}

TEST_CASE("FSpOpenDF: what cannot be opened")
{
    TestFolder scratch;
    scratch.Write("File", "0123");
    scratch.MakeFolder("Folder");
    FSSpec spec = scratch.Spec("Missing");
    SInt16 refNum = 77;
    CHECK(FSpOpenDF(&spec, fsRdPerm, &refNum) == fnfErr);
    CHECK(refNum == 0);
    spec = scratch.Spec("Folder");
    CHECK(FSpOpenDF(&spec, fsRdPerm, &refNum) == fnfErr);
    spec = scratch.Spec("File");
    CHECK(FSpOpenDF(&spec, 5, &refNum) == paramErr);
    CHECK(FSpOpenDF(&spec, -1, &refNum) == paramErr);
    CHECK(FSpOpenDF(&spec, fsRdPerm, nullptr) == paramErr);
    CHECK(FSpOpenDF(nullptr, fsRdPerm, &refNum) == paramErr);
    spec.parID = 0x7FFFFFF0;
    CHECK(FSpOpenDF(&spec, fsRdPerm, &refNum) == dirNFErr);
    spec.vRefNum = -1000;
    CHECK(FSpOpenDF(&spec, fsRdPerm, &refNum) == nsvErr);
    CHECK(HOpen(scratch.folder.volume, scratch.folder.id, PascalName(std::string(32, 'x')), fsRdPerm,
                &refNum) == bdNamErr);
    CHECK(HOpenDF(0, 0, nullptr, fsRdPerm, &refNum) == paramErr);
}

TEST_CASE("Permissions: one writer, many readers; the second writer learns who the first is")
{
    TestFolder scratch;
    scratch.Write("File", "0123");
    const FSSpec spec = scratch.Spec("File");
    for (const auto open : { FSpOpenDF, FSpOpenRF }) {
        SInt16 writer = 0, reader = 0, second = 0;
        REQUIRE(open(&spec, fsRdWrPerm, &writer) == noErr);
        CHECK(open(&spec, fsRdPerm, &reader) == noErr);
        CHECK(open(&spec, fsRdWrPerm, &second) == opWrErr);
        CHECK(second == writer);
        CHECK(open(&spec, fsWrPerm, &second) == opWrErr);
        CHECK(open(&spec, fsRdWrShPerm, &second) == opWrErr);
        REQUIRE(open(&spec, fsCurPerm, &second) == noErr);
        CHECK(WriteTo(second, "x") == wrPermErr);
        CHECK(FSClose(second) == noErr);
        CHECK(FSClose(writer) == noErr);
        REQUIRE(open(&spec, fsCurPerm, &second) == noErr);
        CHECK(WriteTo(second, "x") == noErr);
        CHECK(FSClose(second) == noErr);
        CHECK(FSClose(reader) == noErr);
    }
}

TEST_CASE("Permissions: fsRdWrShPerm shares with its like, and the first writer may close first")
{
    TestFolder scratch;
    scratch.Write("File", "0123");
    const FSSpec spec = scratch.Spec("File");
    for (const auto open : { FSpOpenDF, FSpOpenRF }) {
        SInt16 first = 0, second = 0, third = 0;
        REQUIRE(open(&spec, fsRdWrShPerm, &first) == noErr);
        REQUIRE(open(&spec, fsRdWrShPerm, &second) == noErr);
        CHECK(open(&spec, fsRdWrPerm, &third) == opWrErr);
        CHECK(WriteTo(first, "AB") == noErr);
        CHECK(FSClose(first) == noErr);
        CHECK(SetFPos(second, fsFromStart, 2) == noErr);
        CHECK(WriteTo(second, "CD") == noErr);
        CHECK(ReadAllOf(second) == "ABCD");
        CHECK(FSClose(second) == noErr);
    }
    CHECK(scratch.Bytes("File") == "ABCD");
    CHECK(scratch.Fork("File") == "ABCD");
}

TEST_CASE("Permissions: another process that writes is opWrErr, reading beside it goes on")
{
    TestFolder scratch;
    scratch.Write("File", "0123");
    const FSSpec spec = scratch.Spec("File");
    for (const auto open : { FSpOpenDF, FSpOpenRF }) {
        const OtherProcess writer([&] {
            SInt16 refNum = 0;
            return open(&spec, fsRdWrPerm, &refNum) == noErr;
        });
        SInt16 refNum = 0;
        CHECK(open(&spec, fsRdWrPerm, &refNum) == opWrErr);
        CHECK(refNum == 0);
        CHECK(open(&spec, fsRdPerm, &refNum) == noErr);
        CHECK(FSClose(refNum) == noErr);
        CHECK(FSpDelete(&spec) == fBsyErr);
        CHECK(FSpRename(&spec, PascalName("Other")) == fBsyErr);
    }
    SInt16 refNum = 0;
    CHECK(FSpOpenDF(&spec, fsRdWrPerm, &refNum) == noErr); // both have ended
    CHECK(FSClose(refNum) == noErr);
}

TEST_CASE("Permissions: sharing writers of two processes")
{
    TestFolder scratch;
    scratch.Write("File", "0123");
    const FSSpec spec = scratch.Spec("File");
    const OtherProcess writer([&] {
        SInt16 refNum = 0;
        return FSpOpenDF(&spec, fsRdWrShPerm, &refNum) == noErr;
    });
    const SInt16 refNum = OpenData(spec, fsRdWrShPerm);
    SInt16 other = 0;
    CHECK(WriteTo(refNum, "x") == noErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(FSpOpenDF(&spec, fsRdWrPerm, &other) == opWrErr);
}

TEST_CASE("Permissions: a locked file opens for reading only")
{
    TestFolder scratch;
    scratch.Write("File", "0123");
    const FSSpec spec = scratch.Spec("File");
    REQUIRE(FSpSetFLock(&spec) == noErr);
    SInt16 refNum = 0;
    CHECK(FSpOpenDF(&spec, fsRdWrPerm, &refNum) == permErr);
    CHECK(FSpOpenRF(&spec, fsWrPerm, &refNum) == permErr);
    REQUIRE(FSpOpenDF(&spec, fsCurPerm, &refNum) == noErr);
    CHECK(WriteTo(refNum, "x") == wrPermErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(scratch.Names() == "File");
}

TEST_CASE("tmfoErr: the table of open files has an end, and a closed file makes room")
{
    TestFolder scratch;
    scratch.Write("File", "0123");
    const FSSpec spec = scratch.Spec("File");
    std::vector<SInt16> numbers;
    SInt16 refNum = 0;
    OSErr error;
    while ((error = FSpOpenDF(&spec, fsRdPerm, &refNum)) == noErr)
        numbers.push_back(refNum);
    CHECK(error == tmfoErr);
    CHECK(numbers.size() > 1000);
    CHECK(FSClose(numbers.back()) == noErr);
    CHECK(FSpOpenDF(&spec, fsRdPerm, &refNum) == noErr);
    numbers.back() = refNum;
    for (const SInt16 number : numbers)
        CHECK(FSClose(number) == noErr);
}

TEST_CASE("tmfoErr: the host's descriptors have an end")
{
    TestFolder scratch;
    std::vector<FSSpec> specs;
    for (int i = 0; i < 40; ++i) {
        scratch.Write("File " + std::to_string(i), "0123");
        specs.push_back(scratch.Spec("File " + std::to_string(i)));
    }
    const int result = InFreshProcess([&] {
        const rlimit limit = { 24, 24 };
        setrlimit(RLIMIT_NOFILE, &limit);
        for (const FSSpec& spec : specs) {
            SInt16 refNum = 0;
            const OSErr error = FSpOpenDF(&spec, fsRdPerm, &refNum);
            if (error != noErr)
                return (int)error;
        }
        return 0;
    });
    CHECK(result == tmfoErr);
}

TEST_CASE("FSpOpenRF: a write is seen at once here, and by others after closing")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    const FSSpec spec = scratch.Spec("File");
    const SInt16 writer = OpenResource(spec, fsRdWrPerm), reader = OpenResource(spec, fsRdPerm);
    CHECK(WriteTo(writer, "Hello, fork") == noErr);
    CHECK(ReadAllOf(reader) == "Hello, fork");
    CHECK(scratch.Fork("File").empty());
    CHECK(FSClose(writer) == noErr);
    CHECK(scratch.Fork("File") == "Hello, fork");
    CHECK(ReadAllOf(reader) == "Hello, fork");
    CHECK(FSClose(reader) == noErr);
    CHECK(scratch.Bytes("File") == "data");
    CHECK(scratch.Names() == "._File File");
}

TEST_CASE("FSpOpenRF: opened for writing and not written leaves nothing behind")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    const SInt16 refNum = OpenResource(scratch.Spec("File"), fsRdWrPerm);
    CHECK(EndOf(refNum) == 0);
    CHECK(FSClose(refNum) == noErr);
    CHECK(scratch.Names() == "File");
}

TEST_CASE("FSpOpenRF: writes in the middle, cutting, growing, and writing beyond the end")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    const FSSpec spec = scratch.Spec("File");
    SInt16 refNum = OpenResource(spec, fsRdWrPerm);
    CHECK(WriteTo(refNum, "0123456789") == noErr);
    CHECK(FSClose(refNum) == noErr);
    refNum = OpenResource(spec, fsRdWrPerm);
    CHECK(SetFPos(refNum, fsFromStart, 3) == noErr);
    CHECK(WriteTo(refNum, "AB") == noErr);
    CHECK(SetEOF(refNum, 7) == noErr);
    CHECK(ReadAllOf(refNum) == "012AB56");
    CHECK(SetEOF(refNum, 8) == noErr);
    ByteCount done = 0;
    CHECK(FSWriteFork(refNum, fsFromLEOF, 2, 1, "z", &done) == noErr);
    CHECK(done == 1);
    CHECK(ReadAllOf(refNum) == std::string("012AB56\0\0\0z", 11));
    CHECK(FSClose(refNum) == noErr);
    CHECK(scratch.Fork("File") == std::string("012AB56\0\0\0z", 11));
    refNum = OpenResource(spec, fsRdWrPerm);
    CHECK(SetEOF(refNum, 0) == noErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(scratch.Fork("File").empty());
}

TEST_CASE("PBFlushFileSync, FSFlushFork, FlushVol: what was written into a resource fork is in place")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    const FSSpec spec = scratch.Spec("File");
    const SInt16 refNum = OpenResource(spec, fsRdWrPerm);
    ParamBlockRec block = {};
    block.ioParam.ioRefNum = refNum;
    CHECK(WriteTo(refNum, "one") == noErr);
    CHECK(PBFlushFileSync(&block) == noErr);
    CHECK(scratch.Fork("File") == "one");
    CHECK(WriteTo(refNum, "two") == noErr);
    CHECK(FSFlushFork(refNum) == noErr);
    CHECK(scratch.Fork("File") == "onetwo");
    CHECK(WriteTo(refNum, "three") == noErr);
    CHECK(FlushVol(nullptr, spec.vRefNum) == noErr);
    CHECK(scratch.Fork("File") == "onetwothree");
    CHECK(FSClose(refNum) == noErr);
    CHECK(FlushVol(nullptr, -1000) == nsvErr);
    CHECK(FlushVol(PascalName("Host:"), 0) == noErr);
    CHECK(FlushVol(PascalName("No such volume"), 0) == nsvErr);
    block.ioParam.ioNamePtr = nullptr;
    block.ioParam.ioVRefNum = spec.vRefNum;
    CHECK(PBFlushVolSync(&block) == noErr);
}

TEST_CASE("FSClose: a resource fork that does not fit on the disk is reported, and the old one stays")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    const FSSpec spec = scratch.Spec("File");
    SInt16 refNum = OpenResource(spec, fsRdWrPerm);
    CHECK(WriteTo(refNum, "old fork") == noErr);
    CHECK(FSClose(refNum) == noErr);
    refNum = OpenResource(spec, fsRdWrPerm);
    CHECK(WriteTo(refNum, std::string(5000, 'x')) == noErr);
    {
        const StFileSizeLimit limit(4096);
        CHECK(FSClose(refNum) == dskFulErr);
    }
    CHECK(scratch.Fork("File") == "old fork");
    CHECK(scratch.Names() == "._File File");
    CHECK(FSClose(refNum) == fnOpnErr);
    refNum = OpenResource(spec, fsRdWrPerm); // its lock was given back
    {
        const StFileSizeLimit limit(4096);
        CHECK(WriteTo(refNum, std::string(5000, 'x')) == dskFulErr);
    }
    CHECK(FSClose(refNum) == noErr);
    CHECK(scratch.Fork("File").substr(0, 4) == "xxxx"); // what went in, as told
}

TEST_CASE("FSpOpenRF: a process that dies while writing leaves the old fork and no lock")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    const FSSpec spec = scratch.Spec("File");
    SInt16 refNum = OpenResource(spec, fsRdWrPerm);
    CHECK(WriteTo(refNum, "old fork") == noErr);
    CHECK(FSClose(refNum) == noErr);
    InFreshProcess([&] {
        SInt16 number = 0;
        FSpOpenRF(&spec, fsRdWrPerm, &number);
        WriteTo(number, "new bytes");
        kill(getpid(), SIGKILL);
        return 0;
    });
    CHECK(scratch.Fork("File") == "old fork");
    CHECK(scratch.Names() == "._File File");
    refNum = OpenResource(spec, fsRdWrPerm);
    CHECK(FSClose(refNum) == noErr);
}

TEST_CASE("FSpOpenRF: a process that ends without closing has written, its child has not")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    const FSSpec spec = scratch.Spec("File");
    InFreshProcess([&] {
        SInt16 number = 0;
        FSpOpenRF(&spec, fsRdWrPerm, &number);
        WriteTo(number, "bytes");
        InFreshProcess([] {
            std::exit(0);
            return 0;
        });
        if (scratch.Fork("File").empty())
            std::exit(0);
        return 0;
    });
    CHECK(scratch.Fork("File") == "bytes");
}

TEST_CASE("FSpOpenDF: the data fork within a container, which the first write takes out of it")
{
    for (const char* seed : { "macbinary2", "applesingle", "binhex" }) {
        CAPTURE(seed);
        TestFolder scratch;
        scratch.Write("File", Seed(seed));
        const std::string data = scratch.Data("File");
        const std::string fork = scratch.Fork("File");
        REQUIRE_FALSE(data.empty());
        const FSSpec spec = scratch.Spec("File");
        const SInt16 reader = OpenData(spec, fsRdPerm);
        CHECK(ReadAllOf(reader) == data);
        SInt16 writer = OpenData(spec, fsRdWrPerm);
        CHECK(FSClose(writer) == noErr);
        CHECK(scratch.Bytes("File") == Seed(seed)); // opened is not written
        writer = OpenData(spec, fsRdWrPerm);
        CHECK(WriteTo(writer, "XY") == noErr);
        CHECK(ReadAllOf(reader) == "XY" + data.substr(2));
        CHECK(scratch.Bytes("File") == "XY" + data.substr(2));
        SInt16 second = 0;
        CHECK(FSpOpenDF(&spec, fsRdWrPerm, &second) == opWrErr);
        CHECK(FSClose(writer) == noErr);
        CHECK(FSClose(reader) == noErr);
        CHECK(scratch.Fork("File") == fork);
        FInfo info = {};
        CHECK(FSpGetFInfo(&spec, &info) == noErr);
        CHECK(+info.fdCreator == 'lamp');
    }
}

TEST_CASE("FSpOpenRF: a fork within a container is written beside the plain data fork")
{
    for (const char* seed : { "macbinary2", "applesingle", "binhex" }) {
        CAPTURE(seed);
        TestFolder scratch;
        scratch.Write("File", Seed(seed));
        const std::string data = scratch.Data("File");
        const SInt16 refNum = OpenResource(scratch.Spec("File"), fsRdWrPerm);
        CHECK(ReadAllOf(refNum) == scratch.Fork("File"));
        CHECK(SetEOF(refNum, 0) == noErr);
        CHECK(WriteTo(refNum, "fork") == noErr);
        CHECK(FSClose(refNum) == noErr);
        CHECK(scratch.Fork("File") == "fork");
        CHECK(scratch.Names() == "._File File");
        CHECK(scratch.Bytes("File") == data);
    }
}

TEST_CASE(
    "FSpOpenRF: a file that is itself a resource file keeps that form, and its forks exclude each other")
{
    TestFolder scratch;
    scratch.Write("File", Seed("raw-rich"));
    const FSSpec spec = scratch.Spec("File");
    SInt16 refNum = OpenResource(spec, fsRdWrPerm), other = 0;
    CHECK(ReadAllOf(refNum) == Seed("raw-rich"));
    CHECK(FSpOpenDF(&spec, fsRdWrPerm, &other) == opWrErr);
    CHECK(SetFPos(refNum, fsFromStart, 100) == noErr);
    CHECK(WriteTo(refNum, "!") == noErr);
    CHECK(FSClose(refNum) == noErr);
    std::string expected = Seed("raw-rich");
    expected[100] = '!';
    CHECK(scratch.Bytes("File") == expected);
    CHECK(scratch.Names() == "File");
    refNum = OpenResource(spec, fsRdPerm);
    CHECK(FSpOpenDF(&spec, fsRdWrPerm, &other) == opWrErr);
    CHECK(FSpOpenDF(&spec, fsRdPerm, &other) == noErr);
    CHECK(FSClose(other) == noErr);
    CHECK(FSClose(refNum) == noErr);
}

TEST_CASE("FSpOpenRF: a fork that lies beside the file in another form is emptied all the same")
{
    for (const char* place : { "__MACOSX/._File", "File.rsrc", "%File", ".AppleDouble/File" }) {
        CAPTURE(place);
        TestFolder scratch;
        scratch.Write("File", "text");
        scratch.Write(place, Seed("appledouble"));
        const FSSpec spec = scratch.Spec("File");
        const SInt16 refNum = OpenResource(spec, fsRdWrPerm);
        CHECK(EndOf(refNum) == 321);
        CHECK(SetEOF(refNum, 0) == noErr);
        CHECK(FSClose(refNum) == noErr);
        CHECK(scratch.Fork("File").empty());
        FInfo info = {};
        CHECK(FSpGetFInfo(&spec, &info) == noErr);
        CHECK(+info.fdCreator == 'lamp');
    }
}

TEST_CASE("FSpOpenRF: a new resource fork is a modification of the file")
{
    TestFolder scratch;
    scratch.Write("File", "text");
    const auto before = std::filesystem::last_write_time(scratch.Path() / "File") - std::chrono::hours(1);
    std::filesystem::last_write_time(scratch.Path() / "File", before);
    const SInt16 refNum = OpenResource(scratch.Spec("File"), fsRdWrPerm);
    CHECK(WriteTo(refNum, "fork") == noErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(std::filesystem::last_write_time(scratch.Path() / "File") > before + std::chrono::minutes(1));
}

TEST_CASE("FSpOpenDF: through a link the file it leads to is written; one that leads nowhere is fnfErr")
{
    TestFolder scratch;
    scratch.Write("Real", "0123");
    std::filesystem::create_symlink("Real", scratch.Path() / "Link");
    std::filesystem::create_symlink("Nowhere", scratch.Path() / "Broken");
    const SInt16 refNum = OpenData(scratch.Spec("Link"), fsRdWrPerm);
    SInt16 other = 0;
    const FSSpec real = scratch.Spec("Real"), broken = scratch.Spec("Broken");
    CHECK(FSpOpenDF(&real, fsRdWrPerm, &other) == opWrErr);
    CHECK(other == refNum);
    CHECK(WriteTo(refNum, "AB") == noErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(scratch.Bytes("Real") == "AB23");
    CHECK(std::filesystem::is_symlink(scratch.Path() / "Link"));
    CHECK(FSpOpenDF(&broken, fsRdPerm, &other) == fnfErr);
}

TEST_CASE("FSpOpenDF: hard links of one file have one writer")
{
    TestFolder scratch;
    scratch.Write("One", "0123");
    std::filesystem::create_hard_link(scratch.Path() / "One", scratch.Path() / "Two");
    const SInt16 refNum = OpenData(scratch.Spec("One"), fsRdWrPerm);
    const FSSpec two = scratch.Spec("Two");
    SInt16 other = 0;
    CHECK(FSpOpenDF(&two, fsRdWrPerm, &other) == opWrErr);
    CHECK(FSClose(refNum) == noErr);
}

TEST_CASE("FSpOpenDF: names are found without regard to case")
{
    TestFolder scratch;
    scratch.Write("ReadMe", "0123");
    SInt16 first = 0, second = 0;
    CHECK(HOpenDF(scratch.folder.volume, scratch.folder.id, PascalName("README"), fsRdWrPerm, &first) ==
          noErr);
    CHECK(HOpenDF(scratch.folder.volume, scratch.folder.id, PascalName("readme"), fsRdWrPerm, &second) ==
          opWrErr);
    CHECK(FSClose(first) == noErr);
}
