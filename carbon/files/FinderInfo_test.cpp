// Setting Finder information, dates and locks.
#include "TestFolder.h"

#include <Carbon/Files.h>

#include <cstdlib>
#include <ctime>
#include <sys/stat.h>

using namespace lampblack;

namespace {

CInfoPBRec CatInfoOf(const TestFolder& inScratch, StringPtr inName, SInt32 inDirectory = 0)
{
    CInfoPBRec block = {};
    block.hFileInfo.ioNamePtr = inName;
    block.hFileInfo.ioVRefNum = inScratch.folder.volume;
    block.hFileInfo.ioDirID = inDirectory ? inDirectory : inScratch.folder.id;
    CHECK(PBGetCatInfoSync(&block) == noErr);
    block.hFileInfo.ioDirID = inDirectory ? inDirectory : inScratch.folder.id;
    return block;
}

struct Dates {
    UInt32 created, modified;
    bool operator==(const Dates&) const = default;
};

Dates DatesOf(const TestFolder& inScratch, PascalName inName)
{
    const CInfoPBRec block = CatInfoOf(inScratch, inName.text);
    return { block.hFileInfo.ioFlCrDat, block.hFileInfo.ioFlMdDat };
}

OSErr SetDates(const TestFolder& inScratch, PascalName inName, UInt32 inCreated, UInt32 inModified)
{
    CInfoPBRec block = CatInfoOf(inScratch, inName.text);
    const bool isFolder = block.hFileInfo.ioFlAttrib & kioFlAttribDirMask;
    if (isFolder) {
        block.dirInfo.ioDrCrDat = inCreated;
        block.dirInfo.ioDrMdDat = inModified;
    } else {
        block.hFileInfo.ioFlCrDat = inCreated;
        block.hFileInfo.ioFlMdDat = inModified;
    }
    return PBSetCatInfoSync(&block);
}

constexpr UInt32 k1995 = 2871763200u; // 1 January 1995
constexpr UInt32 k1904 = 86400, k2039 = 4260211200u;

} // namespace

TEST_CASE("FSpSetFInfo, HSetFInfo: every field comes back, here and from the file")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    const FSSpec spec = scratch.Spec("File");
    const FInfo wanted = { 'TEXT', 'lamp', kHasBundle | kIsInvisible, { -3, 700 }, 12 };
    FInfo info = {};
    CHECK(FSpSetFInfo(&spec, &wanted) == noErr);
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    CHECK(std::memcmp(&info, &wanted, sizeof info) == 0);
    const FInfo other = { 'PICT', 'lamp', 0, { 1, 2 }, 0 };
    PascalName name("File");
    CHECK(HSetFInfo(scratch.folder.volume, scratch.folder.id, name, &other) == noErr);
    CHECK(HGetFInfo(scratch.folder.volume, scratch.folder.id, name, &info) == noErr);
    CHECK(std::memcmp(&info, &other, sizeof info) == 0);
    CHECK(scratch.Bytes("File") == "data");
}

TEST_CASE("FSpSetFInfo: unknown entries and the resource fork of the sidecar stay byte for byte")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    scratch.Write("._File", Seed("appledouble"));
    const FSSpec spec = scratch.Spec("File");
    FInfo info = {};
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    info.fdType = 'ABCD';
    CHECK(FSpSetFInfo(&spec, &info) == noErr);
    std::string now = scratch.Bytes("._File"), before = Seed("appledouble");
    REQUIRE(now.size() == before.size());
    size_t differing = 0;
    for (size_t i = 0; i < now.size(); ++i)
        differing += now[i] != before[i];
    CHECK(differing <= 4);
}

TEST_CASE("FSpSetFInfo: folders, missing and locked files, null")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    scratch.MakeFolder("Folder");
    const FSSpec file = scratch.Spec("File"), folder = scratch.Spec("Folder"),
                 missing = scratch.Spec("Missing");
    const FInfo info = { 'TEXT', 'lamp', 0, { 0, 0 }, 0 };
    CHECK(FSpSetFInfo(&folder, &info) == fnfErr);
    CHECK(FSpSetFInfo(&missing, &info) == fnfErr);
    CHECK(FSpSetFInfo(&file, nullptr) == paramErr);
    CHECK(FSpSetFInfo(nullptr, &info) == paramErr);
    CHECK(FSpSetFLock(&file) == noErr);
    CHECK(FSpSetFInfo(&file, &info) == fLckdErr);
    CHECK(scratch.Names() == "File Folder");
}

TEST_CASE("FSpSetFInfo: while the resource fork is open for writing neither loses what the other writes")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    const FSSpec spec = scratch.Spec("File");
    SInt16 refNum = 0;
    REQUIRE(FSpOpenRF(&spec, fsRdWrPerm, &refNum) == noErr);
    SInt32 count = 4;
    CHECK(FSWrite(refNum, &count, "fork") == noErr);
    const FInfo info = { 'TEXT', 'lamp', 0, { 0, 0 }, 0 };
    CHECK(FSpSetFInfo(&spec, &info) == noErr);
    CHECK(FSClose(refNum) == noErr);
    FInfo now = {};
    CHECK(FSpGetFInfo(&spec, &now) == noErr);
    CHECK(+now.fdType == 'TEXT');
    CHECK(scratch.Fork("File") == "fork");
}

TEST_CASE("FSpSetFLock, FSpRstFLock: the host's permissions carry the lock")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    scratch.MakeFolder("Folder");
    const FSSpec spec = scratch.Spec("File"), folder = scratch.Spec("Folder"),
                 missing = scratch.Spec("Missing");
    struct stat status;
    PascalName name("File");
    CHECK(FSpSetFLock(&spec) == noErr);
    CHECK(FSpSetFLock(&spec) == noErr);
    REQUIRE(stat((scratch.Path() / "File").c_str(), &status) == 0);
    CHECK((status.st_mode & 0222) == 0);
    CHECK((CatInfoOf(scratch, name.text).hFileInfo.ioFlAttrib & kioFlAttribLockedMask) != 0);
    CHECK(FSpRstFLock(&spec) == noErr);
    REQUIRE(stat((scratch.Path() / "File").c_str(), &status) == 0);
    CHECK((status.st_mode & 0200) != 0);
    CHECK((CatInfoOf(scratch, name.text).hFileInfo.ioFlAttrib & kioFlAttribLockedMask) == 0);
    CHECK(FSpSetFLock(&folder) == fnfErr);
    CHECK(FSpSetFLock(&missing) == fnfErr);
    CHECK(FSpSetFLock(nullptr) == paramErr);
    HParamBlockRec block = {};
    block.fileParam.ioNamePtr = name.text;
    block.fileParam.ioVRefNum = scratch.folder.volume;
    block.fileParam.ioDirID = scratch.folder.id;
    CHECK(PBHSetFLockSync(&block) == noErr);
    CHECK(FSpDelete(&spec) == fLckdErr);
    CHECK(PBHRstFLockSync(&block) == noErr);
    CHECK(FSpDelete(&spec) == noErr);
    CHECK(PBHSetFLockSync(nullptr) == paramErr);
}

TEST_CASE("PBSetCatInfoSync: both dates come back as they were set, in this process and in another")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    scratch.Write("Wrapped", Seed("macbinary2"));
    scratch.Write("Raw", Seed("raw-rich"));
    scratch.Write("Double", Seed("appledouble"));
    scratch.MakeFolder("Folder");
    for (const char* name : { "File", "Wrapped", "Raw", "Double", "Folder" })
        for (const UInt32 date : { k1995, k1904, k2039 }) {
            CAPTURE(name);
            CAPTURE(date);
            CHECK(SetDates(scratch, name, date, date) == noErr);
            CHECK(DatesOf(scratch, name) == Dates{ date, date });
            CHECK(InFreshProcess([&] { return DatesOf(scratch, name) == Dates{ date, date }; }) == 1);
            CHECK(SetDates(scratch, name, date, date + 1000) == noErr);
            CHECK(DatesOf(scratch, name) == Dates{ date, date + 1000 });
        }
    CHECK(scratch.Fork("Raw") == Seed("raw-rich"));
}

TEST_CASE("PBSetCatInfoSync: the dates entry stands between Finder information and resource fork")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    scratch.Write("._File", Seed("appledouble"));
    const std::string fork = scratch.Fork("File");
    CHECK(SetDates(scratch, "File", k1995, k1995 + 1000) == noErr);
    const std::string sidecar = scratch.Bytes("._File");
    const size_t count = (UInt8)sidecar[25];
    REQUIRE(count >= 3);
    CHECK(sidecar[26 + 3] == 9);
    CHECK(sidecar[26 + 12 * (count - 1) + 3] == 2);
    bool hasDates = false;
    for (size_t i = 1; i + 1 < count; ++i)
        hasDates |= sidecar[26 + 12 * i + 3] == 8;
    CHECK(hasDates);
    CHECK(scratch.Fork("File") == fork);
    const FSSpec spec = scratch.Spec("File");
    SInt16 refNum = 0;
    REQUIRE(FSpOpenRF(&spec, fsRdWrPerm, &refNum) == noErr);
    CHECK(SetEOF(refNum, 10) == noErr);
    CHECK(FSClose(refNum) == noErr);
    CHECK(DatesOf(scratch, "File").created == k1995); // a new resource fork leaves it
    CHECK(FSpRename(&spec, PascalName("Renamed")) == noErr);
    CHECK(DatesOf(scratch, "Renamed").created == k1995);
}

TEST_CASE("PBSetCatInfoSync: attributes behind the Finder information still say where they lie")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    // Finder information of 34 bytes, then the attributes: magic, tag, total size, start and length of the
    // data, three words, flags, count; one entry of offset, length, flags, name; its data.
    std::string info(34, '\0');
    const auto word = [](UInt32 value) {
        return std::string{ (char)(value >> 24), (char)(value >> 16), (char)(value >> 8), (char)value };
    };
    const std::string name("user.note\0", 10);
    const UInt32 start = 50, data = start + 34 + 36 + 24;
    info += "ATTR" + word(0) + word(data + 5) + word(data) + word(5) + std::string(12, '\0');
    info +=
        std::string("\0\0\0\1", 4) + word(data) + word(5) + std::string("\0\0", 2) + (char)name.size() + name;
    info.resize(34 + 36 + 24);
    info += "hello";
    std::string sidecar("\0\5\x16\7\0\2\0\0", 8);
    sidecar +=
        std::string(16, '\0') + std::string("\0\2", 2) + word(9) + word(start) + word((UInt32)info.size());
    sidecar += word(2) + word(start + (UInt32)info.size()) + word(4) + info + "fork";
    scratch.Write("._File", sidecar);
    REQUIRE(scratch.Fork("File") == "fork");
    CHECK(SetDates(scratch, "File", k1995, k1995 + 1000) == noErr);
    CHECK(scratch.Fork("File") == "fork");
    const std::string now = scratch.Bytes("._File");
    const auto at = [&](size_t place) {
        return (UInt32)(UInt8)now[place] << 24 | (UInt32)(UInt8)now[place + 1] << 16 |
               (UInt32)(UInt8)now[place + 2] << 8 | (UInt32)(UInt8)now[place + 3];
    };
    const size_t attributes = at(26 + 4) + 34;
    CHECK(now.substr(attributes, 4) == "ATTR");
    CHECK(now.substr(at(attributes + 36), at(attributes + 40)) == "hello");
    CHECK(now.substr(at(attributes + 12), 5) == "hello");
    CHECK(at(attributes + 8) == at(attributes + 12) + 5);
}

TEST_CASE("PBSetCatInfoSync: damaged sidecars are kept aside or left, never lost")
{
    const std::string whole = Seed("appledouble");
    for (size_t size = 1; size < whole.size(); size += 7) {
        CAPTURE(size);
        TestFolder scratch;
        scratch.Write("File", "data");
        scratch.Write("._File", whole.substr(0, size));
        const OSErr error = SetDates(scratch, "File", k1995, k1995 + 1000);
        CHECK(scratch.Bytes("File") == "data");
        CHECK((error == noErr || error == mapReadErr));
        bool isKept = false;
        for (const auto& entry : std::filesystem::directory_iterator(scratch.Path()))
            isKept = isKept || scratch.Bytes(entry.path().filename()) == whole.substr(0, size);
        CHECK(isKept);
    }
}

TEST_CASE("PBSetCatInfoSync: a creation date that the host tells of itself needs no entry")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    PascalName name("File");
    CInfoPBRec block = CatInfoOf(scratch, name.text);
    block.hFileInfo.ioFlMdDat += 100;
    const UInt32 created = block.hFileInfo.ioFlCrDat;
    CHECK(PBSetCatInfoSync(&block) == noErr);
    CHECK(DatesOf(scratch, name) == Dates{ created, +block.hFileInfo.ioFlMdDat });
    CHECK(scratch.Bytes("._File").size() == 82);
}

TEST_CASE("PBSetCatInfoSync: a folder's Finder information, by name and by its ID")
{
    TestFolder scratch;
    scratch.MakeFolder("Folder");
    PascalName name("Folder");
    CInfoPBRec block = CatInfoOf(scratch, name.text);
    block.dirInfo.ioDrUsrWds.frRect = { 10, 20, 300, 400 };
    block.dirInfo.ioDrUsrWds.frView = 0x0100;
    block.dirInfo.ioDrFndrInfo.frScroll = { 5, 6 };
    block.dirInfo.ioDrFndrInfo.frPutAway = 77;
    CHECK(PBSetCatInfoSync(&block) == noErr);
    CInfoPBRec now = CatInfoOf(scratch, name.text);
    CHECK(+now.dirInfo.ioDrUsrWds.frRect.right == 400);
    CHECK(+now.dirInfo.ioDrUsrWds.frView == 0x0100);
    CHECK(+now.dirInfo.ioDrFndrInfo.frScroll.h == 6);
    CHECK(+now.dirInfo.ioDrFndrInfo.frPutAway == 77);
    now.dirInfo.ioNamePtr = nullptr;
    now.dirInfo.ioDrDirID = scratch.IDOf("Folder");
    now.dirInfo.ioDrUsrWds.frRect.left = 99;
    CHECK(PBSetCatInfoSync(&now) == noErr);
    now = CatInfoOf(scratch, name.text);
    CHECK(+now.dirInfo.ioDrUsrWds.frRect.left == 99);
    CHECK(scratch.Names() == "._Folder Folder");
}

TEST_CASE("PBSetCatInfoSync: errors")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    PascalName name("File"), missing("Missing"), host("Host");
    CInfoPBRec block = CatInfoOf(scratch, name.text);
    block.hFileInfo.ioNamePtr = missing.text;
    CHECK(PBSetCatInfoSync(&block) == fnfErr);
    CHECK(block.hFileInfo.ioResult == fnfErr);
    block.hFileInfo.ioNamePtr = name.text;
    block.hFileInfo.ioDirID = 0x7FFFFFF0;
    CHECK(PBSetCatInfoSync(&block) == dirNFErr);
    block.hFileInfo.ioVRefNum = -1000;
    CHECK(PBSetCatInfoSync(&block) == nsvErr);
    block.hFileInfo.ioVRefNum = -1;
    block.hFileInfo.ioDirID = fsRtParID;
    block.hFileInfo.ioNamePtr = host.text;
    CHECK(PBSetCatInfoSync(&block) == vLckdErr);
    CHECK(PBSetCatInfoSync(nullptr) == paramErr);
    const FSSpec spec = scratch.Spec("File");
    CHECK(FSpSetFLock(&spec) == noErr);
    CHECK(SetDates(scratch, name, k1995, k1995) == fLckdErr);
}

TEST_CASE("PBHSetFInfoSync: Finder information and dates; 0 leaves a date")
{
    TestFolder scratch;
    scratch.Write("File", "data");
    PascalName name("File");
    const Dates before = DatesOf(scratch, name);
    HParamBlockRec block = {};
    block.fileParam.ioNamePtr = name.text;
    block.fileParam.ioVRefNum = scratch.folder.volume;
    block.fileParam.ioDirID = scratch.folder.id;
    block.fileParam.ioFlFndrInfo.fdType = 'TEXT';
    CHECK(PBHSetFInfoSync(&block) == noErr);
    CHECK(DatesOf(scratch, name) == before);
    block.fileParam.ioFlCrDat = k1995;
    block.fileParam.ioFlMdDat = k1995 + 5;
    CHECK(PBHSetFInfoSync(&block) == noErr);
    CHECK(DatesOf(scratch, name) == Dates{ k1995, k1995 + 5 });
    FInfo info = {};
    const FSSpec spec = scratch.Spec("File");
    CHECK(FSpGetFInfo(&spec, &info) == noErr);
    CHECK(+info.fdType == 'TEXT');
    CHECK(PBHSetFInfoSync(nullptr) == paramErr);
}
