// Names in Unicode: references by name, whole names, normal forms, capitals, names that are no Unicode; and
// the acts by reference.
#include "CatalogFixture.h"
#include "Dates.h"

#include <algorithm>
#include <foundation/MacRoman.h>
#include <sys/stat.h>
#include <vector>

using namespace lampblack;
using namespace lampblack::files;

namespace {

const UniChar* Units(const char16_t* inText)
{
    return (const UniChar*)inText;
}

OSErr MakeRefNamed(const FSRef& inFolder, std::u16string_view inName, FSRef* outRef)
{
    return FSMakeFSRefUnicode(&inFolder, inName.size(), (const UniChar*)inName.data(), 0, outRef);
}

std::string Found(const FSRef& inFolder, std::u16string_view inName)
{
    FSRef ref = {};
    const OSErr error = MakeRefNamed(inFolder, inName, &ref);
    return error == noErr ? std::filesystem::path(PathOfRef(ref)).filename().string() : std::to_string(error);
}

std::u16string NameOf(const FSRef& inRef)
{
    HFSUniStr255 name = {};
    CHECK(FSGetCatalogInfo(&inRef, 0, nullptr, &name, nullptr, nullptr) == noErr);
    return std::u16string(name.unicode, name.unicode + name.length);
}

} // namespace

TEST_CASE("FSMakeFSRefUnicode: the exact name, composed otherwise, in other capitals")
{
    CatalogFolder scratch;
    scratch.Write("caf\xC3\xA9");                              // composed, in Mac Roman
    scratch.Write("re\xCC\x81sume\xCC\x81");                   // with combining accents
    scratch.Write("\xCE\xA9\xCE\xBC\xCE\xAD\xCE\xB3\xCE\xB1"); // Greek, with an accent of its own
    scratch.Write("long name of more than thirty-one letters.txt");
    const FSRef folder = scratch.OwnRef();
    CHECK(Found(folder, u"caf\u00E9") == "caf\xC3\xA9");
    CHECK(Found(folder, u"cafe\u0301") == "caf\xC3\xA9");
    CHECK(Found(folder, u"CAF\u00C9") == "caf\xC3\xA9");
    CHECK(Found(folder, u"r\u00E9sum\u00E9") == "re\xCC\x81sume\xCC\x81");
    CHECK(Found(folder, u"\u03A9\u03BC\u03B5\u0301\u03B3\u03B1") ==
          "\xCE\xA9\xCE\xBC\xCE\xAD\xCE\xB3\xCE\xB1");
    CHECK(Found(folder, u"\u03C9\u039C\u0388\u0393\u0391") == "\xCE\xA9\xCE\xBC\xCE\xAD\xCE\xB3\xCE\xB1");
    CHECK(Found(folder, u"LONG NAME of more than thirty-one letters.TXT") ==
          "long name of more than thirty-one letters.txt");
    CHECK(Found(folder, u"cafe") == std::to_string(fnfErr));
    CHECK(Found(folder, u"long name of more than thirty-one letters.tx") == std::to_string(fnfErr));
}

TEST_CASE("FSMakeFSRefUnicode: of several that are the same, the exact one")
{
    CatalogFolder scratch;
    scratch.Write("README");
    scratch.Write("readme");
    scratch.Write("\xC3\xA9");
    scratch.Write("e\xCC\x81");
    const FSRef folder = scratch.OwnRef();
    CHECK(Found(folder, u"readme") == "readme");
    CHECK(Found(folder, u"README") == "README");
    CHECK(Found(folder, u"\u00E9") == "\xC3\xA9");
    CHECK(Found(folder, u"e\u0301") == "e\xCC\x81");
}

TEST_CASE("FSMakeFSRefUnicode: every name that is listed leads to its file, whatever its bytes")
{
    CatalogFolder scratch;
    const std::vector<std::string> names = {
        "a:b",        ":",        "\xFF\xFE bad",        "half \xE4\xB8",    "...",
        " x ",        "cr\rname", std::string(255, 'n'), "\xF0\x9F\x90\xA7", "\xED\xA0\x80",
        "caf\xC3\xA9"
    };
    for (const std::string& name : names)
        scratch.Write(name);
    const FSRef folder = scratch.OwnRef();
    for (const std::string& name : NamesIn(scratch.Path())) {
        CAPTURE(name);
        const FSRef ref = scratch.Ref(MacNameOf(name));
        CHECK(PathOfRef(ref) == (scratch.Path() / name).string());
        const std::u16string shown = NameOf(ref);
        CHECK(shown.find(u':') == shown.npos);
        FSRef again;
        REQUIRE(MakeRefNamed(folder, shown, &again) == noErr);
        CHECK(FSCompareFSRefs(&ref, &again) == noErr);
    }
}

TEST_CASE("FSMakeFSRefUnicode: names that no file can have, folders that are none")
{
    CatalogFolder scratch;
    scratch.Write("File");
    std::filesystem::create_symlink(".", scratch.Path() / "Here");
    const FSRef folder = scratch.OwnRef(), file = scratch.Ref("File");
    FSRef ref;
    CHECK(MakeRefNamed(folder, u"", &ref) == errFSMissingName);
    CHECK(FSMakeFSRefUnicode(&folder, 4, nullptr, 0, &ref) == errFSMissingName);
    CHECK(MakeRefNamed(folder, std::u16string(256, u'x'), &ref) == errFSNameTooLong);
    CHECK(MakeRefNamed(folder, std::u16string(255, u'\u4E2D'), &ref) == fnfErr); // 765 bytes on the host
    for (std::u16string_view name : { std::u16string_view(u"a:b"), std::u16string_view(u"."),
                                      std::u16string_view(u".."), std::u16string_view(u"a\0b", 3) })
        CHECK(MakeRefNamed(folder, name, &ref) == bdNamErr);
    CHECK(MakeRefNamed(folder, u"../File", &ref) == fnfErr); // a '/' is a letter here
    CHECK(MakeRefNamed(folder, u"/etc/passwd", &ref) == fnfErr);
    CHECK(MakeRefNamed(file, u"x", &ref) == errFSNotAFolder);
    CHECK(MakeRefNamed(scratch.Ref("Here"), u"File", &ref) == noErr); // a link leads to its folder
    CHECK(MakeRefNamed(folder, u"Missing", &ref) == fnfErr);
    CHECK(FSMakeFSRefUnicode(nullptr, 1, Units(u"x"), 0, &ref) == paramErr);
    CHECK(FSMakeFSRefUnicode(&folder, 1, Units(u"x"), 0, nullptr) == paramErr);
    FSRef garbage;
    std::memset(&garbage, 0x5A, sizeof garbage);
    CHECK(FSMakeFSRefUnicode(&garbage, 1, Units(u"x"), 0, &ref) == errFSBadFSRef);
}

TEST_CASE("FSCreateFileUnicode, FSCreateDirectoryUnicode: names of any letters, with catalog information")
{
    CatalogFolder scratch;
    const FSRef folder = scratch.OwnRef();
    FSCatalogInfo info = {};
    const FInfo finder = { 'TEXT', 'lamp', 0, { 0, 0 }, 0 };
    std::memcpy(info.finderInfo, &finder, sizeof finder);
    info.contentModDate = UTCDateOf({ 1000000000, 0 });
    info.createDate = UTCDateOf({ 900000000, 0 });
    constexpr FSCatalogInfoBitmap kWhich = kFSCatInfoFinderInfo | kFSCatInfoContentMod | kFSCatInfoCreateDate;
    FSRef ref;
    FSSpec spec;
    const std::u16string name = u"Gr\u00FC\u00DFe \u4E2D\u6587/1";
    REQUIRE(FSCreateFileUnicode(&folder, name.size(), (const UniChar*)name.data(), kWhich, &info, &ref,
                                &spec) == noErr);
    CHECK(NameOf(ref) == name);
    CHECK(std::filesystem::exists(scratch.Path() / "Gr\xC3\xBC\xC3\x9F"
                                                   "e \xE4\xB8\xAD\xE6\x96\x87:1"));
    FSCatalogInfo found = {};
    REQUIRE(FSGetCatalogInfo(&ref, kWhich, &found, nullptr, nullptr, nullptr) == noErr);
    CHECK(std::memcmp(found.finderInfo, info.finderInfo, sizeof found.finderInfo) == 0);
    CHECK(+found.contentModDate.lowSeconds == +info.contentModDate.lowSeconds);
    CHECK(+found.createDate.lowSeconds == +info.createDate.lowSeconds);
    FSRef again;
    CHECK(FSpMakeFSRef(&spec, &again) == noErr);
    CHECK(FSCompareFSRefs(&ref, &again) == noErr);
    CHECK(FSCreateFileUnicode(&folder, name.size(), (const UniChar*)name.data(), 0, nullptr, nullptr,
                              nullptr) == dupFNErr);
    UInt32 directory = 0;
    CHECK(FSCreateDirectoryUnicode(&folder, 3, Units(u"Dir"), 0, nullptr, &ref, nullptr, &directory) ==
          noErr);
    CHECK(CatalogBlock({ -1, (SInt32)directory }, -1).Get() == noErr);
    CHECK(FSCreateDirectoryUnicode(&folder, 3, Units(u"dIR"), 0, nullptr, nullptr, nullptr, nullptr) ==
          dupFNErr);
    CHECK(FSCreateFileUnicode(&folder, 1, Units(u":"), 0, nullptr, nullptr, nullptr) == bdNamErr);
    CHECK(FSCreateFileUnicode(&folder, 1, Units(u"x"), kFSCatInfoValence, &info, nullptr, nullptr) ==
          paramErr);
    CHECK(FSCreateFileUnicode(&folder, 1, Units(u"x"), kFSCatInfoFinderInfo, nullptr, nullptr, nullptr) ==
          paramErr);
    CHECK_FALSE(std::filesystem::exists(scratch.Path() / "x"));
}

TEST_CASE("FSRenameUnicode, FSMoveObject: a reference stays with its file, and the new one is the same")
{
    CatalogFolder scratch;
    scratch.Write("Old", "text");
    scratch.Write("Taken");
    scratch.MakeFolder("Folder/Inner");
    const FSRef ref = scratch.Ref("Old"), folder = scratch.Ref("Folder");
    FSRef renamed, moved;
    const std::u16string name = u"Neu \u00E4\u00F6\u00FC, longer than thirty-one letters";
    REQUIRE(FSRenameUnicode(&ref, name.size(), (const UniChar*)name.data(), 0, &renamed) == noErr);
    CHECK(FSCompareFSRefs(&ref, &renamed) == noErr);
    CHECK(NameOf(ref) == name);
    CHECK(FSRenameUnicode(&ref, 5, Units(u"TAKEN"), 0, nullptr) == dupFNErr);
    CHECK(FSRenameUnicode(&ref, 0, Units(u""), 0, nullptr) == errFSMissingName);
    REQUIRE(FSMoveObject(&ref, &folder, &moved) == noErr);
    CHECK(FSCompareFSRefs(&ref, &moved) == noErr);
    CHECK(std::filesystem::path(PathOfRef(ref)).parent_path() == scratch.Path() / "Folder");
    const FSRef inner = scratch.Ref(":Folder:Inner");
    CHECK(FSMoveObject(&folder, &inner, nullptr) == badMovErr);
    CHECK(FSMoveObject(&folder, &ref, nullptr) == errFSNotAFolder);
    CHECK(FSMoveObject(nullptr, &folder, nullptr) == paramErr);
}

TEST_CASE("FSDeleteObject: a file, a link and not what it leads to, no folder that is not empty")
{
    CatalogFolder scratch;
    scratch.Write("Folder/File");
    std::filesystem::create_symlink("Folder", scratch.Path() / "Link");
    const FSRef folder = scratch.Ref("Folder"), file = scratch.Ref(":Folder:File"),
                link = scratch.Ref("Link");
    CHECK(FSDeleteObject(&folder) == fBsyErr);
    CHECK(FSDeleteObject(&link) == noErr);
    CHECK(FSDeleteObject(&file) == noErr);
    CHECK(FSDeleteObject(&file) == fnfErr);
    CHECK(FSDeleteObject(&folder) == noErr);
    CHECK(NamesIn(scratch.Path()).empty());
}

TEST_CASE("FSSetCatalogInfo: what was set is answered; the rest stays")
{
    CatalogFolder scratch;
    const auto path = scratch.Write("File");
    const FSRef ref = scratch.Ref("File");
    FSCatalogInfo info = {};
    info.accessDate = UTCDateOf({ 1100000000, 0 });
    info.contentModDate = UTCDateOf({ 1000000000, 0 });
    FSPermissionInfo permissions = {};
    permissions.mode = 0640;
    std::memcpy(info.permissions, &permissions, sizeof permissions);
    info.nodeFlags = kFSNodeLockedMask;
    REQUIRE(FSSetCatalogInfo(&ref, kFSCatInfoContentMod | kFSCatInfoAccessDate | kFSCatInfoPermissions,
                             &info) == noErr);
    FSCatalogInfo found = {};
    REQUIRE(FSGetCatalogInfo(&ref, kFSCatInfoGettableInfo, &found, nullptr, nullptr, nullptr) == noErr);
    CHECK(+found.contentModDate.lowSeconds == +info.contentModDate.lowSeconds);
    CHECK(+found.accessDate.lowSeconds == +info.accessDate.lowSeconds);
    std::memcpy(&permissions, found.permissions, sizeof permissions);
    CHECK((permissions.mode & 0777) == 0640);
    CHECK((found.nodeFlags & kFSNodeLockedMask) == 0);
    REQUIRE(FSSetCatalogInfo(&ref, kFSCatInfoNodeFlags, &info) == noErr);
    REQUIRE(FSGetCatalogInfo(&ref, kFSCatInfoNodeFlags, &found, nullptr, nullptr, nullptr) == noErr);
    CHECK((found.nodeFlags & kFSNodeLockedMask) != 0);
    info.nodeFlags = 0;
    CHECK(FSSetCatalogInfo(&ref, kFSCatInfoNodeFlags, &info) == noErr);
    CHECK(FSSetCatalogInfo(&ref, kFSCatInfoValence, &info) == paramErr);
    CHECK(FSSetCatalogInfo(&ref, kFSCatInfoContentMod, nullptr) == paramErr);
    CHECK(FSSetCatalogInfo(nullptr, 0, &info) == paramErr);
}

TEST_CASE("FSGetCatalogInfo: Finder information of a folder is native")
{
    CatalogFolder scratch;
    scratch.MakeFolder("Folder");
    const FSRef ref = scratch.Ref("Folder");
    FSCatalogInfo info = {}, found = {};
    const DInfo finder = { { 10, 20, 300, 400 }, kIsInvisible, { 7, 8 }, 0x0102 };
    const DXInfo extended = { { 3, 4 }, 5, 6, 7, 8, 9 };
    std::memcpy(info.finderInfo, &finder, sizeof finder);
    std::memcpy(info.extFinderInfo, &extended, sizeof extended);
    constexpr FSCatalogInfoBitmap kWhich = kFSCatInfoFinderInfo | kFSCatInfoFinderXInfo;
    REQUIRE(FSSetCatalogInfo(&ref, kWhich, &info) == noErr);
    REQUIRE(FSGetCatalogInfo(&ref, kWhich, &found, nullptr, nullptr, nullptr) == noErr);
    CHECK(std::memcmp(found.finderInfo, info.finderInfo, 16) == 0);
    CHECK(std::memcmp(found.extFinderInfo, info.extFinderInfo, 16) == 0);
    CatalogBlock block(scratch.folder, 0, "Folder");
    REQUIRE(block.Get() == noErr);
    CHECK(std::memcmp(&block.Directory().ioDrUsrWds, &finder, sizeof finder) == 0);
    CHECK(std::memcmp(&block.Directory().ioDrFndrInfo, &extended, sizeof extended) == 0);
}
