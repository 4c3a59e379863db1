// The Resource Manager: the chain, the handles, the errors, and byte order.
#include <Carbon/Resources.h>

#include <Host.h>
#include <ScratchFolder.h>
#include <algorithm>
#include <cstring>
#include <doctest/doctest.h>
#include <files/Catalog.h>
#include <lampblack/host.h>
#include <resources/ResourceFork.h>

using namespace lampblack;
using resources::ForkBuilder;
using resources::ForkEntry;

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

std::string TextOf(Handle inHandle)
{
    return std::string(*inHandle, (size_t)GetHandleSize(inHandle));
}

struct Data {
    OSType type;
    SInt16 id;
    std::string bytes;
    const char* name = nullptr;
    UInt8 attributes = 0;
};

std::string Fork(const std::vector<Data>& inEntries)
{
    ForkBuilder builder;
    for (const Data& entry : inEntries)
        builder.Add({ entry.type,
                      entry.id,
                      entry.attributes,
                      entry.name != nullptr,
                      entry.name ? entry.name : "",
                      { (const uint8_t*)entry.bytes.data(), entry.bytes.size() } });
    std::vector<uint8_t> bytes;
    REQUIRE(builder.Build(&bytes) == nullptr);
    return std::string(bytes.begin(), bytes.end());
}

// The file beside this executable, written before the Resource Manager is first called; removed at the end.
struct ApplicationFile {
    std::filesystem::path path = host::CurrentSettings().application.native() + ".rsrc";

    ApplicationFile()
    {
        const std::string fork = Fork({ { 'STR ', 128, std::string("\4host"), "From the application" },
                                        { 'TEXT', 128, "application" },
                                        { 'only', 5, "application only" } });
        std::ofstream(path, std::ios::binary).write(fork.data(), (std::streamsize)fork.size());
    }
    ~ApplicationFile() { std::filesystem::remove(path); }
};

SInt16 ApplicationRefNum()
{
    static ApplicationFile file;
    static const SInt16 refNum = CurResFile();
    return refNum;
}

FSSpec SpecOf(const std::filesystem::path& inPath)
{
    FSSpec spec = {};
    files::Item item;
    REQUIRE(files::ItemAtPath(inPath, &item));
    files::MakeSpec(item, &spec);
    return spec;
}

// A resource file of its own, open and on top of the chain while this lives.
struct TestFile : ScratchFolder {
    SInt16 refNum;

    explicit TestFile(const std::vector<Data>& inEntries) : TestFile(Fork(inEntries)) {}
    explicit TestFile(const std::string& inBytes)
    {
        ApplicationRefNum();
        const FSSpec spec = SpecOf(Write("File", inBytes));
        refNum = FSpOpenResFile(&spec, fsRdPerm);
    }
    ~TestFile() { CloseResFile(refNum); }
};

std::string Words(std::initializer_list<int> inWords)
{
    std::string bytes;
    for (const int word : inWords) {
        bytes.push_back((char)(word >> 8));
        bytes.push_back((char)word);
    }
    return bytes;
}

SInt16 WordAt(Handle inHandle, size_t inOffset)
{
    SInt16 word;
    REQUIRE((size_t)GetHandleSize(inHandle) >= inOffset + 2);
    std::memcpy(&word, *inHandle + inOffset, 2);
    return word;
}

SInt32 LongAt(Handle inHandle, size_t inOffset)
{
    SInt32 value;
    REQUIRE((size_t)GetHandleSize(inHandle) >= inOffset + 4);
    std::memcpy(&value, *inHandle + inOffset, 4);
    return value;
}

} // namespace

TEST_CASE("Chain: the application's file beside the executable is open, current and last to be searched")
{
    const SInt16 application = ApplicationRefNum();
    REQUIRE(application > 0);
    CHECK(CurResFile() == application);
    const TestFile file({ { 'TEXT', 128, "file" } });
    REQUIRE(file.refNum > 0);
    CHECK(CurResFile() == file.refNum);
    SInt16 top = 0, next = 0, end = -1;
    CHECK(GetTopResourceFile(&top) == noErr);
    CHECK(top == file.refNum);
    CHECK(GetNextResourceFile(top, &next) == noErr);
    CHECK(next == application);
    CHECK(GetNextResourceFile(next, &end) == noErr);
    CHECK(end == 0);
    CHECK(GetNextResourceFile(12345, &end) == resFNotFound);
    CHECK(GetTopResourceFile(nullptr) == paramErr);
}

TEST_CASE("PBGetFCBInfoSync: the application's resource file is found by its reference number")
{
    Str255 name;
    FCBPBRec block = {};
    block.ioNamePtr = name;
    block.ioRefNum = ApplicationRefNum();
    REQUIRE(PBGetFCBInfoSync(&block) == noErr);
    FSSpec spec = {};
    CHECK(FSMakeFSSpec(block.ioFCBVRefNum, block.ioFCBParID, name, &spec) == noErr);
    CHECK(TextOf(spec.name) == host::CurrentSettings().application.filename().string() + ".rsrc");
}

TEST_CASE("GetResource, Get1Resource: the chain from the current file on, or that file alone")
{
    const SInt16 application = ApplicationRefNum();
    const TestFile file({ { 'TEXT', 128, "file" } });
    CHECK(TextOf(GetResource('TEXT', 128)) == "file");
    CHECK(TextOf(GetResource('only', 5)) == "application only");
    CHECK(Get1Resource('only', 5) == nullptr);
    CHECK(ResError() == resNotFound);
    UseResFile(application);
    CHECK(TextOf(GetResource('TEXT', 128)) == "application");
    CHECK(HomeResFile(GetResource('TEXT', 128)) == application);
    UseResFile(12345);
    CHECK(ResError() == resFNotFound);
    CHECK(CurResFile() == application);
    UseResFile(kSystemResFile);
    CHECK(GetResource('TEXT', 128) == nullptr);
    CHECK(CurResFile() == 0);
    UseResFile(file.refNum);
}

TEST_CASE("GetResource: one handle for one resource until it is released, whichever call finds it")
{
    const TestFile file({ { 'TEXT', 1, "one", "First" }, { 'TEXT', 2, "two" } });
    const Handle handle = GetResource('TEXT', 1);
    CHECK(GetResource('TEXT', 1) == handle);
    CHECK(Get1IndResource('TEXT', 1) == handle);
    CHECK(GetNamedResource('TEXT', PascalString("FIRST")) == handle);
    CHECK((HGetState(handle) & kHandleIsResourceMask) != 0);
    ReleaseResource(handle);
    CHECK_FALSE(IsHandleValid(handle));
    ReleaseResource(handle);
    CHECK(ResError() == resNotFound);
    CHECK(TextOf(GetResource('TEXT', 1)) == "one");
}

TEST_CASE("DetachResource: the handle is the caller's, and the resource loads anew")
{
    const TestFile file({ { 'TEXT', 1, "one" } });
    const Handle mine = GetResource('TEXT', 1);
    DetachResource(mine);
    CHECK(ResError() == noErr);
    CHECK((HGetState(mine) & kHandleIsResourceMask) == 0);
    CHECK(HomeResFile(mine) == -1);
    CHECK(ResError() == resNotFound);
    (*mine)[0] = 'X';
    const Handle again = GetResource('TEXT', 1);
    CHECK(again != mine);
    CHECK(TextOf(again) == "one");
    DetachResource(mine);
    CHECK(ResError() == resNotFound);
    DisposeHandle(mine);
}

TEST_CASE("DisposeHandle: of a resource's handle, whatever its state byte says, the resource loads anew")
{
    const TestFile file({ { 'TEXT', 1, "one" } });
    const Handle handle = GetResource('TEXT', 1);
    HClrRBit(handle);
    DisposeHandle(handle);
    const Handle again = GetResource('TEXT', 1);
    CHECK(IsHandleValid(again));
    CHECK(TextOf(again) == "one");
}

TEST_CASE("SetResLoad: false gives empty handles, LoadResource fills them")
{
    const TestFile file({ { 'TEXT', 1, "one" } });
    SetResLoad(false);
    const Handle handle = GetResource('TEXT', 1);
    SetResLoad(true);
    REQUIRE(handle != nullptr);
    CHECK(*handle == nullptr);
    CHECK(GetResourceSizeOnDisk(handle) == 3);
    LoadResource(handle);
    CHECK(ResError() == noErr);
    CHECK(TextOf(handle) == "one");
}

TEST_CASE("GetResource: what was purged is read again, into the same handle")
{
    const TestFile file(
        { { 'TEXT', 1, "one", nullptr, resPurgeable }, { 'TEXT', 2, "two", nullptr, resLocked } });
    const Handle handle = GetResource('TEXT', 1), locked = GetResource('TEXT', 2);
    CHECK((HGetState(handle) & kHandlePurgeableMask) != 0);
    CHECK((HGetState(locked) & kHandleLockedMask) != 0);
    PurgeMem(0);
    CHECK(*handle == nullptr);
    CHECK(GetResource('TEXT', 1) == handle);
    CHECK(TextOf(handle) == "one");
    CHECK(TextOf(locked) == "two");
}

TEST_CASE("CloseResFile: its handles die, the file behind it becomes current, and it is found no more")
{
    const SInt16 application = ApplicationRefNum();
    SInt16 refNum = 0;
    Handle handle = nullptr, kept = nullptr;
    {
        const TestFile file({ { 'TEXT', 1, "one" }, { 'TEXT', 2, "two" } });
        refNum = file.refNum;
        handle = GetResource('TEXT', 1);
        kept = GetResource('TEXT', 2);
        DetachResource(kept);
    }
    CHECK(ResError() == noErr);
    CHECK_FALSE(IsHandleValid(handle));
    CHECK(TextOf(kept) == "two");
    DisposeHandle(kept);
    CHECK(CurResFile() == application);
    CloseResFile(refNum);
    CHECK(ResError() == resFNotFound);
    CHECK(GetResFileAttrs(refNum) == 0);
    CHECK(ResError() == resFNotFound);
}

TEST_CASE("CloseResFile: of a file that is not current, the current one stays")
{
    const TestFile lower({ { 'TEXT', 1, "lower" } });
    {
        const TestFile upper({ { 'TEXT', 1, "upper" } });
        UseResFile(lower.refNum);
    }
    CHECK(CurResFile() == lower.refNum);
}

TEST_CASE("FSpOpenResFile: each failure and its error")
{
    ApplicationRefNum();
    ScratchFolder scratch;
    const struct {
        const char* name;
        std::string bytes;
        OSErr error;
    } cases[] = { { "text", "no fork at all", eofErr },
                  { "nothing", "", eofErr },
                  { "cut.rsrc", Fork({ { 'TEXT', 1, "one" } }).substr(0, 280), eofErr } };
    for (const auto& test : cases) {
        CAPTURE(test.name);
        const FSSpec spec = SpecOf(scratch.Write(test.name, test.bytes));
        CHECK(FSpOpenResFile(&spec, fsRdPerm) == -1);
        CHECK(ResError() == test.error);
    }
    FSSpec missing = SpecOf(scratch.Path());
    CHECK(FSpOpenResFile(&missing, fsRdPerm) == -1);
    CHECK(ResError() == fnfErr);
    FSMakeFSSpec(missing.vRefNum, missing.parID, PascalString("not there"), &missing);
    CHECK(FSpOpenResFile(&missing, fsRdPerm) == -1);
    CHECK(ResError() == fnfErr);
    CHECK(FSpOpenResFile(nullptr, fsRdPerm) == -1);
    CHECK(ResError() == paramErr);
    CHECK(OpenResFile(PascalString("No such volume:x")) == -1);
    CHECK(ResError() == nsvErr);
}

TEST_CASE("FSpOpenResFile: a damaged fork in a sidecar is mapReadErr, and the chain stays as it was")
{
    const SInt16 before = (ApplicationRefNum(), CurResFile());
    ScratchFolder scratch;
    // AppleDouble with a resource fork (2) of 20 bytes that are none.
    const std::string sidecar = std::string("\0\5\x16\7\0\2\0\0", 8) + std::string(16, '\0') +
                                std::string("\0\1\0\0\0\2\0\0\0\x26\0\0\0\x14", 14) + std::string(20, 'x');
    scratch.Write("._File", sidecar);
    const FSSpec spec = SpecOf(scratch.Write("File", "text"));
    CHECK(FSpOpenResFile(&spec, fsRdPerm) == -1);
    CHECK(ResError() == mapReadErr);
    CHECK(CurResFile() == before);
}

TEST_CASE("FSpOpenResFile: a file that is open answers its number, and the current file stays")
{
    const TestFile file({ { 'TEXT', 1, "one" } });
    UseResFile(ApplicationRefNum());
    const FSSpec spec = SpecOf(file.Path() / "File");
    CHECK(FSpOpenResFile(&spec, fsRdPerm) == file.refNum);
    CHECK(CurResFile() == ApplicationRefNum());
}

TEST_CASE("FSOpenResFile, FSOpenResourceFile, HOpenResFile: by reference, by fork, by name")
{
    ApplicationRefNum();
    ScratchFolder scratch;
    const auto path = scratch.Write("File", Fork({ { 'TEXT', 1, "one" } }));
    FSRef ref;
    REQUIRE(FSPathMakeRef((const UInt8*)path.c_str(), &ref, nullptr) == noErr);
    const SInt16 first = FSOpenResFile(&ref, fsRdPerm);
    CHECK(first > 0);
    HFSUniStr255 name;
    FSGetResourceForkName(&name);
    SInt16 same = 0, data = 0;
    CHECK(FSOpenResourceFile(&ref, name.length, name.unicode, fsRdPerm, &same) == noErr);
    CHECK(same == first);
    CHECK(FSOpenResourceFile(&ref, 0, nullptr, fsRdPerm, &data) == noErr);
    CHECK(data != first);
    CHECK(TextOf(Get1Resource('TEXT', 1)) == "one");
    CHECK(FSOpenResourceFile(&ref, 1, name.unicode, fsRdPerm, &same) == errFSBadForkName);
    CHECK(same == -1);
    CHECK(FSOpenResourceFile(nullptr, 0, nullptr, fsRdPerm, &same) == paramErr);
    const FSSpec spec = SpecOf(path);
    CHECK(HOpenResFile(spec.vRefNum, spec.parID, PascalString("file"), fsRdPerm) == first);
    CloseResFile(first);
    CloseResFile(data);
}

TEST_CASE("Counting: types and resources, in one file and in the chain")
{
    const TestFile file({ { 'TEXT', 1, "one" }, { 'TEXT', 2, "two" }, { 'mine', 1, "" } });
    CHECK(Count1Types() == 2);
    CHECK(CountTypes() == 4); // with 'STR ' and 'only' of the application
    CHECK(Count1Resources('TEXT') == 2);
    CHECK(CountResources('TEXT') == 3);
    CHECK(CountResources('none') == 0);
    ResType type = 0;
    Get1IndType(&type, 2);
    CHECK(type == 'mine');
    Get1IndType(&type, 3);
    CHECK(type == 0);
    GetIndType(&type, 3);
    CHECK(type == 'STR ');
    GetIndType(&type, 0);
    CHECK(type == 0);
    CHECK(TextOf(Get1IndResource('TEXT', 2)) == "two");
    CHECK(TextOf(GetIndResource('TEXT', 3)) == "application");
    CHECK(GetIndResource('TEXT', 4) == nullptr);
    CHECK(ResError() == resNotFound);
    CHECK(Get1IndResource('TEXT', 0) == nullptr);
    CHECK(Get1IndResource('TEXT', 3) == nullptr);
}

TEST_CASE("UniqueID: above the system's numbers and in no file's use; Unique1ID asks the current file only")
{
    const TestFile file({ { 'TEXT', 129, "x" } });
    CHECK(UniqueID('TEXT') == 130);
    CHECK(Unique1ID('TEXT') == 128);
}

TEST_CASE("GetResInfo, GetResAttrs, GetResFileAttrs: what the map says")
{
    const TestFile file({ { 'TEXT', -7, "one", "Name \x8E", resPurgeable | resProtected } });
    const Handle handle = GetResource('TEXT', -7);
    SInt16 id = 0;
    ResType type = 0;
    Str255 name;
    GetResInfo(handle, &id, &type, name);
    CHECK(id == -7);
    CHECK(type == 'TEXT');
    CHECK(TextOf(name) == "Name \x8E");
    CHECK(GetResAttrs(handle) == (resPurgeable | resProtected));
    GetResInfo(handle, nullptr, nullptr, nullptr);
    CHECK(ResError() == noErr);
    CHECK(GetResFileAttrs(file.refNum) == 0);
    CHECK(ResError() == noErr);
}

TEST_CASE("Handle calls: null, disposed and foreign handles are resNotFound")
{
    ApplicationRefNum();
    const Handle disposed = NewHandle(4), plain = NewHandle(4);
    DisposeHandle(disposed);
    void (*const calls[])(Handle) = { LoadResource,
                                      ReleaseResource,
                                      DetachResource,
                                      [](Handle h) { GetResInfo(h, nullptr, nullptr, nullptr); },
                                      [](Handle h) { CHECK(GetResAttrs(h) == 0); },
                                      [](Handle h) { CHECK(GetResourceSizeOnDisk(h) == -1); },
                                      [](Handle h) { CHECK(HomeResFile(h) == -1); },
                                      [](Handle h) { ReadPartialResource(h, 0, &h, 1); } };
    for (const Handle handle : { (Handle) nullptr, disposed, plain })
        for (const auto call : calls) {
            LMSetResErr(noErr);
            call(handle);
            CHECK(ResError() == resNotFound);
        }
    CHECK(IsHandleValid(plain));
    DisposeHandle(plain);
}

TEST_CASE("ReadPartialResource: bytes of the file, as far as they go")
{
    const TestFile file({ { 'TEXT', 1, "0123456789" } });
    SetResLoad(false);
    const Handle handle = GetResource('TEXT', 1);
    SetResLoad(true);
    char buffer[8] = "-------";
    ReadPartialResource(handle, 2, buffer, 3);
    CHECK(ResError() == noErr);
    CHECK(std::string(buffer) == "234----");
    ReadPartialResource(handle, 8, buffer, 5);
    CHECK(ResError() == inputOutOfBounds);
    CHECK(std::string(buffer) == "894----");
    ReadPartialResource(handle, 100, buffer, 1);
    CHECK(ResError() == inputOutOfBounds);
    ReadPartialResource(handle, -1, buffer, 1);
    CHECK(ResError() == paramErr);
    LoadResource(handle);
    (*handle)[0] = 'X';
    ReadPartialResource(handle, 0, buffer, 1);
    CHECK(ResError() == resourceInMemory);
    CHECK(buffer[0] == '0');
}

TEST_CASE("GetResource: data that pass the end of the fork are eofErr, and the others load")
{
    std::string bytes = Fork({ { 'TEXT', 1, "one" }, { 'TEXT', 2, "two" } });
    bytes[256] = 0x7F;
    const TestFile file(bytes);
    CHECK(GetResource('TEXT', 1) == nullptr);
    CHECK(ResError() == eofErr);
    CHECK(TextOf(GetResource('TEXT', 2)) == "two");
}

TEST_CASE("GetNamedResource: no name and a null name find nothing")
{
    const TestFile file({ { 'TEXT', 1, "one" } });
    CHECK(GetNamedResource('TEXT', PascalString("x")) == nullptr);
    CHECK(ResError() == resNotFound);
    CHECK(Get1NamedResource('TEXT', nullptr) == nullptr);
    CHECK(ResError() == resNotFound);
    CHECK(TextOf(GetNamedResource('STR ', PascalString("from the APPLICATION"))) == "\4host");
}

TEST_CASE("GetString, GetIndString: through the chain; what is not there is empty")
{
    const TestFile file({ { 'STR#', 200, Words({ 3 }) + "\3one" + std::string("\0", 1) + "\5three" },
                          { 'STR#', 201, Words({ 9 }) + "\4ab" },
                          { 'STR#', 202, "" } });
    CHECK(TextOf((ConstStr255Param)*GetString(128)) == "host");
    CHECK(GetString(9999) == nullptr);
    const struct {
        SInt16 list, index;
        const char* text;
    } cases[] = { { 200, 1, "one" }, { 200, 2, "" },   { 200, 3, "three" }, { 200, 4, "" }, { 200, 0, "" },
                  { 200, -1, "" },   { 201, 1, "ab" }, { 201, 2, "" },      { 202, 1, "" }, { 999, 1, "" } };
    for (const auto& test : cases) {
        Str255 text;
        GetIndString(text, test.list, test.index);
        CHECK(TextOf(text) == test.text);
    }
    CHECK(ResError() == resNotFound);
    GetIndString(nullptr, 200, 1);
    CHECK(ResError() == paramErr);
}

TEST_CASE("Byte order: a 'DLOG' is native in its handle and big-endian in its file")
{
    const std::string dialog = Words({ 40, -2, 200, 300, 4 }) + std::string("\1\0\1\0\x12\x34\x56\x78", 8) +
                               Words({ 128 }) + std::string("\5Title", 6) + Words({ 0x280A });
    const TestFile file({ { 'DLOG', 1, dialog }, { 'DLOG', 2, dialog.substr(0, 19) } });
    const Handle handle = GetResource('DLOG', 1);
    CHECK(WordAt(handle, 0) == 40);
    CHECK(WordAt(handle, 2) == -2);
    CHECK(WordAt(handle, 8) == 4);
    CHECK((*handle)[10] == 1);
    CHECK(LongAt(handle, 14) == 0x12345678);
    CHECK(WordAt(handle, 18) == 128);
    CHECK(std::string(*handle + 20, 6) == "\5Title");
    CHECK(WordAt(handle, 26) == 0x280A);
    char buffer[2];
    ReadPartialResource(handle, 18, buffer, 2);
    CHECK(std::string(buffer, 2) == Words({ 128 }));
    const Handle cut = GetResource('DLOG', 2);
    CHECK(LongAt(cut, 14) == 0x12345678);
    CHECK(GetHandleSize(cut) == 19);
    CHECK((*cut)[18] == 0);
}

TEST_CASE("Byte order: 'DITL' items of every kind")
{
    const std::string rect = Words({ 1, 2, 3, 4 }), place(4, '\0');
    const std::string items =
        Words({ 4 }) + place + rect + std::string("\x84\3Odd\0", 6) // disabled button, padded
        + place + rect + "\x07\x02" + Words({ 500 }) + place + rect + "\xA0\x02" + Words({ 501 }) + place +
        rect + "\x01\x04" + Words({ 2, 502 }) + place + rect + std::string("\0\2", 2) + Words({ 0x0102 });
    const TestFile file({ { 'DITL', 1, items }, { 'DITL', 2, Words({ -1 }) } });
    const Handle list = GetResource('DITL', 1);
    CHECK(WordAt(list, 0) == 4);
    CHECK(WordAt(list, 6) == 1);
    CHECK(std::string(*list + 15, 4) == "\3Odd");
    CHECK(WordAt(list, 20 + 4) == 1);
    CHECK(WordAt(list, 20 + 14) == 500);
    CHECK(WordAt(list, 36 + 14) == 501);
    CHECK(WordAt(list, 52 + 14) == 2);
    CHECK(WordAt(list, 52 + 16) == 502);
    CHECK(std::string(*list + 70 + 14, 2) == Words({ 0x0102 })); // a user item's data are its own
    CHECK(WordAt(GetResource('DITL', 2), 0) == -1);
}

TEST_CASE("Byte order: the other records, and types that stay as they are")
{
    const std::string words = Words({ 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12 });
    const TestFile file({ { 'CNTL', 1, words + "\1x" },
                          { 'WIND', 1, words + "\1x" },
                          { 'ALRT', 1, words },
                          { 'MBAR', 1, words },
                          { 'CURS', 1, words },
                          { 'clut', 1, Words({ 0, 9, 0, 1, 0, 1, 2, 3, 1, 4, 5, 6, 7 }) },
                          { 'styl', 1, Words({ 1, 0, 5, 16, 12, 3, 0x0100, 12, 1, 2, 3, 9 }) },
                          { 'MENU', 1, words },
                          { 'vers', 1, words } });
    CHECK(WordAt(GetResource('CNTL', 1), 8) == 5);
    CHECK(WordAt(GetResource('CNTL', 1), 10) == 0x0600); // visible, a byte
    CHECK(LongAt(GetResource('CNTL', 1), 18) == 0x000A000B);
    CHECK(LongAt(GetResource('WIND', 1), 14) == 0x00080009);
    CHECK(WordAt(GetResource('ALRT', 1), 12) == 7);
    CHECK(WordAt(GetResource('ALRT', 1), 14) == 0x0800);
    CHECK(WordAt(GetResource('MBAR', 1), 22) == 12);
    CHECK(WordAt(GetResource('CURS', 1), 22) == 12);
    CHECK(LongAt(GetResource('clut', 1), 0) == 9);
    CHECK(WordAt(GetResource('clut', 1), 22) == 6);
    CHECK(WordAt(GetResource('clut', 1), 24) == 0x0700); // behind the last entry
    CHECK(LongAt(GetResource('styl', 1), 2) == 5);
    CHECK(WordAt(GetResource('styl', 1), 20) == 3);
    CHECK(WordAt(GetResource('styl', 1), 12) == 1); // face and filler, bytes
    CHECK(WordAt(GetResource('MENU', 1), 0) == 0x0100);
    CHECK(WordAt(GetResource('vers', 1), 0) == 0x0100);
}

namespace {

struct FlipCall {
    OSType domain = 0, type = 0;
    SInt16 id = 0;
    ByteCount size = 0;
    Boolean native = true;
    int count = 0;
    OSStatus result = noErr;
};

OSStatus RecordFlip(OSType inDomain, OSType inType, SInt16 inID, void* ioData, ByteCount inSize,
                    Boolean inNative, void* inRefcon)
{
    FlipCall& call = *(FlipCall*)inRefcon;
    call = { inDomain, inType, inID, inSize, inNative, call.count + 1, call.result };
    std::reverse((char*)ioData, (char*)ioData + inSize);
    return call.result;
}

} // namespace

TEST_CASE(
    "CoreEndianInstallFlipper: called once for each load with what it needs, and not for ones loaded before")
{
    static FlipCall call; // as long as the flipper is installed
    const TestFile file({ { 'flip', 3, "abc" }, { 'flip', 4, "xyz" } });
    const Handle before = GetResource('flip', 4);
    CoreEndianFlipProc proc = nullptr;
    CHECK(CoreEndianGetFlipper('rsrc', 'flip', &proc, nullptr) == handlerNotFoundErr);
    REQUIRE(CoreEndianInstallFlipper('rsrc', 'flip', RecordFlip, &call) == noErr);
    CHECK(TextOf(GetResource('flip', 3)) == "cba");
    CHECK(TextOf(GetResource('flip', 3)) == "cba");
    CHECK(call.count == 1);
    CHECK(call.domain == kCoreEndianResourceManagerDomain);
    CHECK(call.type == 'flip');
    CHECK(call.id == 3);
    CHECK(call.size == 3);
    CHECK_FALSE(call.native);
    CHECK(TextOf(GetResource('flip', 4)) == "xyz");
    ReleaseResource(before);
    CHECK(TextOf(GetResource('flip', 4)) == "zyx");
    void* refcon = nullptr;
    CHECK(CoreEndianGetFlipper('rsrc', 'flip', &proc, &refcon) == noErr);
    CHECK((proc == RecordFlip));
    CHECK(refcon == &call);
    call.result = -1234;
    ReleaseResource(GetResource('flip', 3));
    CHECK(GetResource('flip', 3) == nullptr);
    CHECK(ResError() == -1234);
    char text[] = "12";
    call.result = noErr;
    CHECK(CoreEndianFlipData('rsrc', 'flip', 1, text, 2, true) == noErr);
    CHECK(std::string(text) == "21");
    CHECK(call.native);
    CHECK(CoreEndianFlipData('aevt', 'flip', 1, text, 2, true) == handlerNotFoundErr);
    CHECK(CoreEndianFlipData('rsrc', 'flip', 1, nullptr, 2, true) == paramErr);
    CHECK(CoreEndianInstallFlipper('rsrc', 'flip', nullptr, nullptr) == paramErr);
}
