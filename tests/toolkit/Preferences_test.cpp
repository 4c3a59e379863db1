// Values in the preference file: what is stored, what is read, and how the file is handled around it.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <csignal>
#include <cstring>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <sys/resource.h>
#include <vector>

#include "FreshPreferences.h"
#include "FreshProcess.h"

LAMPBLACK_WATCH(OSErr, FSMakeFSSpec, (SInt16 volume, SInt32 directory, ConstStr255Param name, FSSpec* spec),
                (volume, directory, name, spec))
LAMPBLACK_WATCH(SInt16, FSpOpenResFile, (const FSSpec* spec, SignedByte permission), (spec, permission))
LAMPBLACK_WATCH(void, CloseResFile, (SInt16 file), (file))
LAMPBLACK_WATCH(void, UpdateResFile, (SInt16 file), (file))
LAMPBLACK_WATCH(void, SetResLoad, (Boolean load), (load))
LAMPBLACK_WATCH(Handle, Get1Resource, (ResType type, SInt16 id), (type, id))
LAMPBLACK_WATCH(Handle, Get1NamedResource, (ResType type, ConstStr255Param name), (type, name))
LAMPBLACK_WATCH(void, GetResInfo, (Handle resource, SInt16* id, ResType* type, Str255 name),
                (resource, id, type, name))
LAMPBLACK_WATCH(void, DetachResource, (Handle resource), (resource))
LAMPBLACK_WATCH(void, AddResource, (Handle data, ResType type, SInt16 id, ConstStr255Param name),
                (data, type, id, name))
LAMPBLACK_WATCH(void, WriteResource, (Handle resource), (resource))
LAMPBLACK_WATCH(void, ReleaseResource, (Handle resource), (resource))
LAMPBLACK_WATCH(void, RemoveResource, (Handle resource), (resource))

namespace {

constexpr OSType kType = 'TEST';
int gProbes = 0;       // by index
int gProbesToFail = 0; // as many answer that there is a resource
short gRandom = 0;     // what Random answers; 0: its own numbers
bool gHasMemory = true;

// The bytes of an entry, and how many entries its type has.
std::string Stored(SInt16 inID)
{
    const Handle entry = GetPreferenceResource(kType, inID);
    if (!entry)
        return "none";
    const std::string bytes(*entry, (size_t)GetHandleSize(entry));
    DisposeHandle(entry);
    return bytes;
}

SInt16 CountStored()
{
    const bool isOpen = OpenPreferenceFile(fsRdPerm) == noErr;
    const SInt16 count = isOpen ? Count1Resources(kType) : (SInt16)-1;
    ClosePreferenceFile();
    return count;
}

SInt16 IDOf(ConstStr255Param inName)
{
    SInt16 id = 0;
    if (const Handle entry = GetNamedPreferenceResource(kType, &id, inName))
        DisposeHandle(entry);
    return id;
}

template <typename Value>
std::string Image(const Value& inValue)
{
    return { (const char*)&inValue, sizeof inValue };
}

std::string BytesOf(const std::filesystem::path& inPath)
{
    std::ifstream file(inPath, std::ios::binary);
    return { std::istreambuf_iterator<char>(file), {} };
}

void WriteTo(const std::filesystem::path& inPath, const std::string& inBytes)
{
    std::ofstream(inPath, std::ios::binary) << inBytes;
}

} // namespace

LAMPBLACK_INTERPOSE Handle Get1IndResource(ResType type, SInt16 index)
{
    static SInt16 any = 0;
    static SInt16* handle = &any;
    ++gProbes;
    if (gProbesToFail-- > 0)
        return (Handle)&handle;
    return Next<decltype(Get1IndResource)>("Get1IndResource")(type, index);
}

LAMPBLACK_INTERPOSE short Random(void)
{
    return gRandom ? gRandom : Next<decltype(Random)>("Random")();
}

LAMPBLACK_INTERPOSE Handle NewHandle(Size size)
{
    return gHasMemory ? Next<decltype(NewHandle)>("NewHandle")(size) : nullptr;
}

TEST_CASE("Typed preferences: each value comes back, stored as the bytes that it has in memory")
{
    const FreshPreferences fresh;
    const RGBColor color = { 0x1111, 0x2222, 0x8003 };
    const Rect rect = { -1, 2, 300, 400 };
    FSSpec spec = {};
    FSMakeFSSpec(0, 0, P("Some file"), &spec);
    CHECK(AddUInt32Preference(0xFEDCBA98, kType, 1, nullptr) == noErr);
    CHECK(AddSInt32Preference(-70000, kType, 2, nullptr) == noErr);
    CHECK(AddSInt16Preference(-3, kType, 3, nullptr) == noErr);
    CHECK(AddRGBColorPreference(color, kType, 4, nullptr) == noErr);
    CHECK(AddRectPreference(&rect, kType, 5, nullptr) == noErr);
    CHECK(AddPStringPreference(P("Pascal"), kType, 6, nullptr) == noErr);
    CHECK(AddFSSpecPreference(&spec, kType, 7, nullptr) == noErr);
    CHECK(AddFloat64Preference(1.0 / 3, kType, 8, nullptr) == noErr);
    CHECK(AddFloat32Preference(0.1f, kType, 9, nullptr) == noErr);
    CHECK(AddCStringPreference("C text", kType, 10, nullptr) == noErr);
    CHECK(AddBooleanPreference(true, kType, 11, nullptr) == noErr);
    CHECK(GetUInt32Preference(kType, 1, 0) == 0xFEDCBA98);
    CHECK(GetSInt32Preference(kType, 2, 0) == -70000);
    CHECK(GetSInt16Preference(kType, 3, 0) == -3);
    CHECK(Image(GetRGBColorPreference(kType, 4, { 0, 0, 0 })) == Image(color));
    CHECK(Image(GetRectPreference(kType, 5, nullptr)) == Image(rect));
    Str255 text;
    GetPStringPreference(kType, 6, text, P("default"));
    CHECK(FromP(text) == "Pascal");
    FSSpec read = {};
    GetFSSpecPreference(kType, 7, &read, nullptr);
    CHECK(Image(read) == Image(spec));
    CHECK(GetFloat64Preference(kType, 8, 0) == 1.0 / 3);
    CHECK(GetFloat32Preference(kType, 9, 0) == 0.1f);
    char chars[32];
    GetCStringPreference(kType, 10, chars, "default");
    CHECK(std::string(chars) == "C text");
    CHECK(GetBooleanPreference(kType, 11, false));
    CHECK(Stored(1) == Image(UInt32{ 0xFEDCBA98 }));
    CHECK(Stored(3) == Image(SInt16{ -3 }));
    CHECK(Stored(4).size() == 6);
    CHECK(Stored(5).size() == 8);
    CHECK(Stored(6) == "\006Pascal");
    CHECK(Stored(7).size() == 70);
    CHECK(Stored(8).size() == 8);
    CHECK(Stored(9).size() == 4);
    CHECK(Stored(10) == std::string("C text", 7));
    CHECK(Stored(11) == "\001");
}

TEST_CASE("Typed preferences: without an entry the default comes back, and no more than it is written")
{
    const FreshPreferences fresh;
    const Rect rect = { 1, 2, 3, 4 };
    CHECK(GetUInt32Preference(kType, 1, 0xFFFFFFFF) == 0xFFFFFFFF);
    CHECK(GetSInt32Preference(kType, 1, -5) == -5);
    CHECK(GetSInt16Preference(kType, 1, 7) == 7);
    CHECK(GetRGBColorPreference(kType, 1, { 1, 2, 3 }).blue == 3);
    CHECK(Image(GetRectPreference(kType, 1, &rect)) == Image(rect));
    CHECK(GetFloat64Preference(kType, 1, 2.5) == 2.5);
    CHECK(GetFloat32Preference(kType, 1, 2.5f) == 2.5f);
    CHECK(GetBooleanPreference(kType, 1, true));
    CHECK_FALSE(GetBooleanPreference(kType, 1, false));
    CHECK(GetBooleanNamedPreference(kType, P("nothing"), true));
    char bytes[16];
    std::memset(bytes, '#', sizeof bytes);
    GetPStringPreference(kType, 1, (StringPtr)bytes, P("four"));
    CHECK(std::string(bytes, 7) == "\004four##");
    std::memset(bytes, '#', sizeof bytes);
    GetCStringPreference(kType, 1, bytes, "four");
    CHECK(std::string(bytes, 7) == std::string("four\0##", 7));
    GetCStringPreference(kType, 1, bytes, nullptr);
    CHECK(bytes[0] == 'f');
    CHECK(ResError() == resNotFound);
}

TEST_CASE("AddSInt32Preference: written twice, one entry holds the second value")
{
    const FreshPreferences fresh;
    CHECK(AddSInt32Preference(1, kType, 128, P("First")) == noErr);
    CHECK(AddSInt32Preference(2, kType, 128, P("Second")) == noErr);
    CHECK(CountStored() == 1);
    CHECK(GetSInt32Preference(kType, 128, 0) == 2);
    CHECK(IDOf(P("Second")) == 128);
    CHECK(IDOf(P("First")) == 0);
}

TEST_CASE("AddCStringPreference: an empty string is its final zero")
{
    const FreshPreferences fresh;
    CHECK(AddCStringPreference("", kType, 1, nullptr) == noErr);
    CHECK(Stored(1) == std::string(1, '\0'));
    char text[8] = "x";
    GetCStringPreference(kType, 1, text, "default");
    CHECK(text[0] == 0);
}

TEST_CASE("AddPreferenceData: an empty entry is one")
{
    const FreshPreferences fresh;
    CHECK(AddPreferenceData(nullptr, 0, kType, 1, nullptr) == noErr);
    CHECK(CountStored() == 1);
    CHECK(Stored(1).empty());
    CHECK(GetSInt16Preference(kType, 1, 12) == 12);
    char text[8];
    GetCStringPreference(kType, 1, text, "all");
    CHECK(std::string(text) == "all");
}

TEST_CASE("A value and its entry: a shorter entry is laid over the default, a longer one is cut")
{
    const FreshPreferences fresh;
    AddSInt16Preference(0x1234, kType, 1, nullptr);
    CHECK(GetUInt32Preference(kType, 1, 0xAABBCCDD) == 0xAABB1234);
    const Rect rect = { 1, 2, 3, 4 };
    CHECK(Image(GetRectPreference(kType, 1, &rect)) == Image(Rect{ 0x1234, 2, 3, 4 }));
    AddUInt32Preference(0x11223344, kType, 2, nullptr);
    CHECK(GetSInt16Preference(kType, 2, 0) == 0x3344);
    char bytes[8] = "#######";
    GetPreferenceData(kType, 1, bytes, 4, nullptr, 0);
    CHECK(std::string(bytes) == "\x34\x12#####");
}

TEST_CASE("GetPreferenceData: -1 copies the whole entry, 0 none of it")
{
    const FreshPreferences fresh;
    AddPreferenceData("abcdef", 6, kType, 1, nullptr);
    char bytes[12] = "###########";
    GetPreferenceData(kType, 1, bytes, -1, "XYZ", 3);
    CHECK(std::string(bytes) == "abcdef#####");
    GetPreferenceData(kType, 1, bytes, 0, "XYZ", 3);
    CHECK(std::string(bytes) == "abcdef#####");
    GetPreferenceData(kType, 1, bytes, 2, "XYZ", 3);
    CHECK(std::string(bytes) == "abcdef#####");
    GetPreferenceData(kType, 2, bytes, 2, "XYZ", 3);
    CHECK(std::string(bytes) == "XYZdef#####");
    GetPreferenceData(kType, 2, bytes, 2, "uvw", 0);
    CHECK(std::string(bytes) == "XYZdef#####");
    GetPreferenceData(kType, 1, nullptr, -1, "uvw", 3);
}

TEST_CASE("Strings: an entry that is no whole string ends where it ends")
{
    const FreshPreferences fresh;
    AddPreferenceData("\011ab", 3, kType, 1, nullptr);
    Str255 pascal;
    GetPStringPreference(kType, 1, pascal, P("123456789"));
    CHECK(FromP(pascal) == "ab3456789");
    AddPreferenceData("abc", 3, kType, 2, nullptr);
    char text[8] = "#######";
    GetCStringPreference(kType, 2, text, "12345");
    CHECK(std::string(text) == "abc45");
    std::memset(text, '#', sizeof text);
    GetCStringPreference(kType, 2, text, "1");
    CHECK(std::string(text) == "abc");
}

TEST_CASE("GetPStringPreference: of an entry that no Pascal string can be, 256 bytes come")
{
    const FreshPreferences fresh;
    const std::string entry = "\003abc" + std::string(1000, 'x');
    AddPreferenceData(entry.data(), (SInt32)entry.size(), kType, 1, nullptr);
    std::vector<unsigned char> text(2000, '#');
    GetPStringPreference(kType, 1, text.data(), P("default"));
    CHECK(FromP(text.data()) == "abc");
    CHECK(text[256] == '#');
}

TEST_CASE("AddPreferenceData: without memory the answer is the size, cut to 16 bits")
{
    const FreshPreferences fresh;
    const std::vector<char> data(70000);
    gHasMemory = false;
    const OSStatus result = AddPreferenceData(data.data(), 70000, kType, 1, nullptr);
    const SInt16 left = ResError();
    gHasMemory = true;
    CHECK(result == 70000 - 65536);
    CHECK(left == 70000 - 65536);
    CHECK(AddPreferenceData(data.data(), -5, kType, 1, nullptr) == -5);
    CHECK(AddPreferenceData(nullptr, 4, kType, 1, nullptr) == paramErr);
    CHECK(CountStored() == 0);
}

TEST_CASE("Writers: a null pointer is a parameter error, and nothing is opened")
{
    const FreshPreferences fresh;
    const CallLog log;
    const auto isRefused = [](OSStatus inResult) {
        const bool isError = inResult == paramErr && ResError() == paramErr;
        LMSetResErr(noErr);
        return isError;
    };
    CHECK(isRefused(AddPreferenceResource(nullptr, kType, 1, nullptr)));
    CHECK(isRefused(AddPreferenceData(nullptr, 4, kType, 1, nullptr)));
    CHECK(isRefused(AddRectPreference(nullptr, kType, 1, nullptr)));
    CHECK(isRefused(AddPStringPreference(nullptr, kType, 1, nullptr)));
    CHECK(isRefused(AddFSSpecPreference(nullptr, kType, 1, nullptr)));
    CHECK(isRefused(AddCStringPreference(nullptr, kType, 1, nullptr)));
    CHECK(log.Calls().empty());
}

TEST_CASE("AddPreferenceResource: a handle that was stored is gone, one that was not is still the caller's")
{
    const FreshPreferences fresh;
    Handle data = NewHandle(4);
    CHECK(AddPreferenceResource(data, kType, 1, nullptr) == noErr);
    CHECK_FALSE(IsHandleValid(data));
    data = NewHandle(4);
    CallLog::gFailures["FSMakeFSSpec"] = nsvErr;
    DefinePreferenceFile(P("Other"), 'LBts', 'pref', false);
    CHECK(AddPreferenceResource(data, kType, 1, nullptr) == nsvErr);
    CHECK(ResError() == nsvErr);
    CHECK(IsHandleValid(data));
    CallLog::gFailures.clear();
    DisposeHandle(data);
}

TEST_CASE("AddPreferenceResource: a handle that is a resource already is refused and stays")
{
    const FreshPreferences fresh;
    REQUIRE(OpenPreferenceFile(fsRdWrPerm) == noErr);
    const Handle data = NewHandle(4);
    AddResource(data, 'XXXX', 1, nullptr);
    CHECK(AddPreferenceResource(data, kType, 1, nullptr) == addResFailed);
    CHECK(ResError() == addResFailed);
    CHECK(IsHandleValid(data));
    CHECK(Get1Resource(kType, 1) == nullptr);
}

TEST_CASE("AddNamedPreferenceData: the ID is chosen once and kept")
{
    const FreshPreferences fresh;
    gRandom = 1;
    CHECK(AddBooleanNamedPreference(true, kType, P("Sound")) == noErr);
    CHECK(IDOf(P("Sound")) == 101); // the lowest number, plus one
    gRandom = 32767;
    CHECK(AddBooleanNamedPreference(false, kType, P("Sound")) == noErr);
    CHECK(IDOf(P("Sound")) == 101);
    CHECK(CountStored() == 1);
    CHECK_FALSE(GetBooleanNamedPreference(kType, P("Sound"), true));
    gRandom = 0;
    CHECK(AddBooleanNamedPreference(true, kType, P("Music")) == noErr);
    CHECK(IDOf(P("Music")) > 100);
    CHECK(CountStored() == 2);
}

TEST_CASE("AddNamedPreferenceData: the probe is by index, so an ID in use is not seen and its entry replaced")
{
    const FreshPreferences fresh;
    CHECK(AddSInt32Preference(1, kType, 101, P("Old")) == noErr);
    gRandom = 1;
    gProbes = 0;
    CHECK(AddBooleanNamedPreference(true, kType, P("New")) == noErr);
    CHECK(gProbes == 1);
    CHECK(IDOf(P("New")) == 101);
    CHECK(IDOf(P("Old")) == 0);
    gProbesToFail = 2;
    gProbes = 0;
    CHECK(AddBooleanNamedPreference(true, kType, P("Third")) == noErr);
    gRandom = 0;
    CHECK(gProbes == 3);
    CHECK(IDOf(P("Third")) == 103);
}

TEST_CASE("GetNamedPreferenceData: by name, whatever the ID")
{
    const FreshPreferences fresh;
    AddSInt32Preference(42, kType, 7, P("Answer"));
    SInt32 value = 0, other = -1;
    GetNamedPreferenceData(kType, P("answer"), &value, sizeof value, &other, sizeof other);
    CHECK(value == 42);
    GetNamedPreferenceData(kType, P("Question"), &value, sizeof value, &other, sizeof other);
    CHECK(value == -1);
    CHECK(GetNamedPreferenceResource(kType, nullptr, P("Question")) == nullptr);
    CHECK(ResError() == resNotFound);
}

TEST_CASE("RemovePreferenceResource: gone, and no error when it was not there or cannot go")
{
    const FreshPreferences fresh;
    AddSInt32Preference(1, kType, 1, nullptr);
    CHECK(RemovePreferenceResource(kType, 1) == noErr);
    CHECK(CountStored() == 0);
    CHECK(RemovePreferenceResource(kType, 1) == noErr);
    REQUIRE(OpenPreferenceFile(fsRdWrPerm) == noErr);
    AddSInt32Preference(1, kType, 2, nullptr);
    SetResAttrs(Get1Resource(kType, 2), resProtected);
    CHECK(RemovePreferenceResource(kType, 2) == noErr);
    CHECK(Count1Resources(kType) == 1);
    ClosePreferenceFile();
    DefinePreferenceFile(P("Other"), 'LBts', 'pref', false);
    CallLog::gFailures["FSMakeFSSpec"] = nsvErr;
    CHECK(RemovePreferenceResource(kType, 1) == nsvErr);
    CallLog::gFailures.clear();
}

TEST_CASE("A write: opened, the old entry removed, the new one added and written, closed")
{
    const FreshPreferences fresh;
    AddSInt32Preference(1, kType, 1, nullptr);
    const CallLog log;
    CHECK(AddSInt32Preference(2, kType, 1, nullptr) == noErr);
    CHECK(log.Calls() == "FSpOpenResFile SetResLoad Get1Resource SetResLoad RemoveResource UpdateResFile "
                         "AddResource WriteResource ReleaseResource CloseResFile");
}

TEST_CASE("A read: opened, fetched, detached, closed")
{
    const FreshPreferences fresh;
    AddSInt32Preference(1, kType, 1, P("One"));
    {
        const CallLog log;
        CHECK(GetSInt32Preference(kType, 1, 0) == 1);
        CHECK(log.Calls() == "FSpOpenResFile Get1Resource DetachResource CloseResFile");
    }
    const CallLog log;
    CHECK(IDOf(P("One")) == 1);
    CHECK(log.Calls() == "FSpOpenResFile Get1NamedResource GetResInfo DetachResource CloseResFile");
}

TEST_CASE("An open preference file is used and left open; the current file stays what it was")
{
    const FreshPreferences fresh;
    const SInt16 application = CurResFile();
    REQUIRE(OpenPreferenceFile(fsRdWrPerm) == noErr);
    const SInt16 file = CurResFile();
    UseResFile(application);
    {
        const CallLog log;
        CHECK(AddSInt32Preference(5, kType, 1, nullptr) == noErr);
        CHECK(GetSInt32Preference(kType, 1, 0) == 5);
        CHECK(AddBooleanNamedPreference(true, kType, P("Name")) == noErr);
        CHECK(RemovePreferenceResource(kType, 1) == noErr);
        CHECK(log.Calls().find("FSpOpenResFile") == std::string::npos);
        CHECK(log.Calls().find("CloseResFile") == std::string::npos);
    }
    CHECK(CurResFile() == application);
    UseResFile(file);
    CHECK(ResError() == noErr);
    CHECK(ClosePreferenceFile() == noErr);
}

TEST_CASE("Readers: a file that cannot be opened gives the default and says why")
{
    const FreshPreferences fresh;
    const SInt16 before = CurResFile();
    CallLog::gFailures["FSMakeFSSpec"] = nsvErr;
    CHECK(GetPreferenceResource(kType, 1) == nullptr);
    CHECK(ResError() == nsvErr);
    CHECK(GetSInt32Preference(kType, 1, 9) == 9);
    CHECK(GetBooleanNamedPreference(kType, P("x"), true));
    CHECK(CurResFile() == before);
    CallLog::gFailures.clear();
}

TEST_CASE("A damaged preference file: it cannot be opened, and defaults do not overwrite it")
{
    const FreshPreferences fresh;
    AddSInt32Preference(1, kType, 1, nullptr);
    std::string garbage = BytesOf(fresh.Sidecar());
    REQUIRE(garbage.size() > 286);
    SUBCASE("garbage throughout")
    {
        for (size_t i = 0; i < garbage.size(); ++i)
            garbage[i] = (char)(i * 37 + 11);
    }
    SUBCASE("garbage in the resource fork") // behind the heads of the container
    {
        for (size_t i = 82; i < garbage.size(); ++i)
            garbage[i] = (char)(i * 37 + 11);
    }
    SUBCASE("cut off")
    {
        garbage.resize(garbage.size() - 20);
    }
    WriteTo(fresh.Sidecar(), garbage);
    CHECK(AddSInt32Preference(2, kType, 1, nullptr) != noErr);
    CHECK(ResError() != noErr);
    CHECK(GetSInt32Preference(kType, 1, 77) == 77);
    CHECK(ResError() != noErr);
    CHECK(OpenPreferenceFile(fsRdPerm) != noErr);
    CHECK_FALSE(PreferenceFileCreated());
    CHECK(BytesOf(fresh.Sidecar()) == garbage);
    CHECK(BytesOf(fresh.File()).empty());
}

TEST_CASE("A full disk: the writer is told, and the old value stays")
{
    const FreshPreferences fresh;
    AddSInt32Preference(1, kType, 1, nullptr);
    const int wrong = InFreshProcess([&] {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit limit = {};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit full = { 100, limit.rlim_max }; // bytes of a file
        setrlimit(RLIMIT_FSIZE, &full);
        int count = AddSInt32Preference(2, kType, 1, nullptr) != dskFulErr;
        count += ResError() != dskFulErr;
        const Handle data = NewHandle(5000);
        count += AddPreferenceResource(data, kType, 2, nullptr) != dskFulErr;
        setrlimit(RLIMIT_FSIZE, &limit);
        count += GetSInt32Preference(kType, 1, 0) != 1;
        return count;
    });
    CHECK(wrong == 0);
    CHECK(GetSInt32Preference(kType, 1, 0) == 1);
    CHECK(CountStored() == 1);
}

TEST_CASE("A writer that is killed at any moment: the entry is there, with the old value or the new")
{
    const FreshPreferences fresh;
    AddSInt32Preference(100, kType, 1, nullptr);
    for (int round = 0; round < 25; ++round) {
        const pid_t writer = fork();
        if (writer == 0)
            for (SInt32 value = 100;; ++value)
                AddSInt32Preference(value, kType, 1, nullptr);
        usleep((useconds_t)(500 + round * 737 % 9000));
        kill(writer, SIGKILL);
        waitpid(writer, nullptr, 0);
        CHECK(GetSInt32Preference(kType, 1, -1) >= 100);
    }
    CHECK(CountStored() == 1);
}

TEST_CASE("Two processes of one application: each writes a hundred entries, and none is lost")
{
    const FreshPreferences fresh;
    AddSInt32Preference(0, kType, 0, nullptr);
    constexpr SInt16 kEach = 100;
    const auto write = [](SInt16 inFirst) {
        int failures = 0;
        for (SInt16 i = 0; i < kEach; ++i)
            failures += AddSInt32Preference(inFirst + i, kType, (SInt16)(inFirst + i), nullptr) != noErr;
        return failures;
    };
    const int failures = InFreshProcess([&] {
        const pid_t child = fork();
        if (child == 0)
            _exit(write(1000) != 0);
        const int own = write(2000);
        int status = 0;
        waitpid(child, &status, 0);
        return own + (WIFEXITED(status) ? WEXITSTATUS(status) : 99);
    });
    CHECK(failures == 0);
    CHECK(CountStored() == 2 * kEach + 1);
    for (SInt16 i = 0; i < kEach; ++i) {
        CHECK(GetSInt32Preference(kType, (SInt16)(1000 + i), 0) == 1000 + i);
        CHECK(GetSInt32Preference(kType, (SInt16)(2000 + i), 0) == 2000 + i);
    }
}

namespace {

// How many of so many processes cannot write their own entry, all beginning at the same moment.
int CountFailuresOfFirstWrites(SInt16 inProcesses)
{
    int gate[2];
    if (pipe(gate) != 0)
        return -1;
    std::vector<pid_t> children;
    for (SInt16 id = 1; id <= inProcesses; ++id) {
        children.push_back(fork());
        if (children.back() != 0)
            continue;
        char byte;
        close(gate[1]);
        _exit(read(gate[0], &byte, 1) != 0 || AddSInt32Preference(id, kType, id, nullptr) != noErr);
    }
    close(gate[1]); // which lets them all go
    close(gate[0]);
    int failures = 0;
    for (const pid_t child : children) {
        int status = 0;
        waitpid(child, &status, 0);
        failures += !WIFEXITED(status) || WEXITSTATUS(status) != 0;
    }
    return failures;
}

} // namespace

TEST_CASE("Processes of one application that all write for the first time: one file with all entries")
{
    const FreshPreferences fresh;
    constexpr SInt16 kProcesses = 5;
    for (const char* name : { "One", "Two", "Three", "Four", "Five", "Six", "Seven", "Eight" }) {
        CAPTURE(std::string(name));
        DefinePreferenceFile(P(name), 'LBts', 'pref', false);
        CHECK(InFreshProcess([] { return CountFailuresOfFirstWrites(kProcesses); }) == 0);
        for (SInt16 id = 1; id <= kProcesses; ++id)
            CHECK(GetSInt32Preference(kType, id, 0) == id);
        CHECK_FALSE(PreferenceFileCreated());
    }
}

TEST_CASE("A preference file whose resource fork was left behind: it is finished, and nothing else is")
{
    const FreshPreferences fresh;
    AddSInt32Preference(1, kType, 1, nullptr);
    std::filesystem::remove(fresh.Sidecar());
    OSErr expected = noErr;
    SUBCASE("copied without its sidecar") {}
    SUBCASE("an empty sidecar")
    {
        WriteTo(fresh.Sidecar(), "");
    }
    SUBCASE("a file of somebody else's has that name")
    {
        WriteTo(fresh.File(), "text");
        expected = eofErr;
    }
    CHECK(GetSInt32Preference(kType, 1, 77) == 77);
    CHECK(AddSInt32Preference(2, kType, 1, nullptr) == expected);
    CHECK(GetSInt32Preference(kType, 1, 77) == (expected == noErr ? 2 : 77));
    FSSpec spec;
    Boolean wasCreated;
    FInfo info = {};
    CHECK(GetPreferenceFileFSSpec(&spec, &wasCreated) == noErr);
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    CHECK(info.fdCreator == (expected == noErr ? 'LBts' : 0));
}

TEST_CASE(
    "A preference file that is a link: its sidecar is beside what it leads to, or beside the link alone")
{
    const FreshPreferences fresh;
    const std::filesystem::path elsewhere = gHome.Preferences() / "elsewhere";
    AddSInt32Preference(1, kType, 1, nullptr);
    std::filesystem::rename(fresh.File(), elsewhere);
    std::filesystem::create_symlink(elsewhere, fresh.File());
    SUBCASE("the file alone") {}
    SUBCASE("both of them")
    {
        std::filesystem::rename(fresh.Sidecar(), gHome.Preferences() / "._elsewhere");
        std::filesystem::create_symlink(gHome.Preferences() / "._elsewhere", fresh.Sidecar());
    }
    CHECK(GetSInt32Preference(kType, 1, 0) == 1);
    CHECK(AddSInt32Preference(2, kType, 1, nullptr) == noErr);
    CHECK(GetSInt32Preference(kType, 1, 0) == 2);
    CHECK(AddPStringPreference(P(std::string(200, 'x').c_str()), kType, 2, nullptr) == noErr);
    CHECK(GetSInt32Preference(kType, 1, 0) == 2);
    CHECK(std::filesystem::is_symlink(fresh.File()));
}
