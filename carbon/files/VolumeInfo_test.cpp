// What volumes say of themselves, and every way to name one.
#include "CatalogFixture.h"
#include "OpenFiles.h"

#include <sys/statvfs.h>

using namespace lampblack::files;

namespace {

struct VolumeBlock {
    HParamBlockRec block = {};
    Str255 name = {};

    VolumeBlock(SInt16 inIndex, SInt16 inRefNum, std::string_view inName = {})
    {
        name[0] = (unsigned char)inName.size();
        std::copy(inName.begin(), inName.end(), name + 1);
        block.volumeParam.ioNamePtr = name;
        block.volumeParam.ioVolIndex = inIndex;
        block.volumeParam.ioVRefNum = inRefNum;
    }

    OSErr Get() { return PBHGetVInfoSync(&block); }
    SInt16 RefNum() { return Get() == noErr ? block.volumeParam.ioVRefNum : (SInt16)0; }
};

// A second volume, for the tests of this file.
SInt16 SecondVolume()
{
    static const auto& folder = *new ScratchFolder;
    static const SInt16 volume = AddVolume("Second", folder.Path());
    return volume;
}

} // namespace

TEST_CASE("PBHGetVInfoSync: by reference, drive number, index, and the name that a path begins with")
{
    const SInt16 second = SecondVolume();
    REQUIRE(second < -1);
    CHECK(VolumeBlock(0, -1).RefNum() == -1);
    CHECK(VolumeBlock(0, 1).RefNum() == -1);
    CHECK(VolumeBlock(0, 0).RefNum() == DefaultFolder().volume);
    CHECK(VolumeBlock(0, second).RefNum() == second);
    CHECK(VolumeBlock(0, (SInt16)-second).RefNum() == second);
    CHECK(VolumeBlock(1, -500).RefNum() == -1); // an index does not ask for the reference
    CHECK(VolumeBlock(-1, -1, "Second:").RefNum() == second);
    CHECK(VolumeBlock(-1, -1, "SECOND:folder:file").RefNum() == second);
    CHECK(VolumeBlock(-1, -1, "Second").RefNum() == second);
    CHECK(VolumeBlock(-1, second, ":partial:path").RefNum() == second);
    CHECK(VolumeBlock(-1, second, "").RefNum() == second);
    VolumeBlock named(-1, -1, "second:x");
    REQUIRE(named.Get() == noErr);
    CHECK(TextOf(named.name) == "Second");
    for (SInt16 index = 1; index <= (SInt16)Volumes().size(); ++index)
        CHECK(VolumeBlock(index, 0).Get() == noErr);
    CHECK(VolumeBlock((SInt16)(Volumes().size() + 1), 0).Get() == nsvErr);
    CHECK(VolumeBlock(0, -500).Get() == nsvErr);
    CHECK(VolumeBlock(0, 500).Get() == nsvErr);
    CHECK(VolumeBlock(-1, -1, "Nowhere:").Get() == nsvErr);
    CHECK(PBHGetVInfoSync(nullptr) == paramErr);
}

TEST_CASE(
    "PBHGetVInfoSync: sizes never pass what callers of old can count; PBXGetVolInfoSync tells the truth")
{
    struct statvfs host;
    REQUIRE(statvfs("/", &host) == 0);
    VolumeBlock block(0, -1);
    REQUIRE(block.Get() == noErr);
    const HVolumeParam& info = block.block.volumeParam;
    CHECK(TextOf(block.name) == "Host");
    CHECK((UInt64)info.ioVNmAlBlks * info.ioVAlBlkSiz <= 0x7FFFFFFFu);
    CHECK(info.ioVFrBlk <= info.ioVNmAlBlks);
    CHECK(+info.ioVAlBlkSiz >= 512);
    CHECK(info.ioVSigWord == 0x4244);
    CHECK(info.ioVDrvInfo == 1);
    CHECK(+info.ioVLsMod > 3000000000u);
    CHECK(info.ioResult == noErr);
    XVolumeParam extended = {};
    extended.ioVRefNum = -1;
    REQUIRE(PBXGetVolInfoSync(&extended) == noErr);
    CHECK(+extended.ioVTotalBytes == (UInt64)host.f_blocks * host.f_frsize);
    CHECK(+extended.ioVFreeBytes <= +extended.ioVTotalBytes);
    CHECK(+extended.ioVFreeBytes > 0);
    if (+extended.ioVTotalBytes > 0x80000000u)
        CHECK((UInt64)info.ioVNmAlBlks * info.ioVAlBlkSiz > 0x7FFF0000u);
    extended.ioVRefNum = -500;
    CHECK(PBXGetVolInfoSync(&extended) == nsvErr);
    CHECK(PBXGetVolInfoSync(nullptr) == paramErr);
}

TEST_CASE("PBHGetVInfoSync: the attributes tell of the default volume and of open files")
{
    const SInt16 second = SecondVolume();
    const Folder before = DefaultFolder();
    SetDefaultFolder({ second, fsRtDirID });
    OpenFile open;
    REQUIRE(ItemWithID({ second, fsRtDirID }, &open.item));
    const SInt16 refNum = AddOpenFile(open);
    VolumeBlock block(0, 0);
    REQUIRE(block.Get() == noErr);
    CHECK(block.block.volumeParam.ioVRefNum == second);
    CHECK((UInt16)block.block.volumeParam.ioVAtrb == (kioVAtrbDefaultVolumeMask | kioVAtrbFilesOpenMask));
    RemoveOpenFile(refNum);
    SetDefaultFolder(before);
    REQUIRE(VolumeBlock(0, second).Get() == noErr);
}

TEST_CASE("GetVInfo: name, reference and free bytes")
{
    Str255 name;
    SInt16 volume = 0;
    SInt32 free = -1;
    CHECK(GetVInfo(1, name, &volume, &free) == noErr);
    CHECK(TextOf(name) == "Host");
    CHECK(volume == -1);
    CHECK(free >= 0);
    CHECK(GetVInfo(-1, nullptr, nullptr, nullptr) == noErr);
    CHECK(GetVInfo(999, name, &volume, &free) == nsvErr);
}

TEST_CASE("GetVRefNum: the volume of an open file")
{
    OpenFile open;
    REQUIRE(ItemWithID({ SecondVolume(), fsRtDirID }, &open.item));
    const SInt16 refNum = AddOpenFile(open);
    SInt16 volume = 0;
    CHECK(GetVRefNum(refNum, &volume) == noErr);
    CHECK(volume == SecondVolume());
    CHECK(GetVRefNum(refNum, nullptr) == paramErr);
    RemoveOpenFile(refNum);
    CHECK(GetVRefNum(refNum, &volume) != noErr);
    CHECK(GetVRefNum(-7, &volume) == rfNumErr);
}

TEST_CASE("FSGetVolumeInfo: every field, the name in Unicode, the root")
{
    const SInt16 second = SecondVolume();
    FSVolumeInfo info;
    std::memset(&info, 0xAA, sizeof info);
    FSVolumeRefNum actual = 0;
    HFSUniStr255 name;
    FSRef root;
    REQUIRE(FSGetVolumeInfo(second, 0, &actual, kFSVolInfoGettableInfo, &info, &name, &root) == noErr);
    CHECK(actual == second);
    CHECK(name.length == 6);
    CHECK(PathOfRef(root) == Volumes()[(size_t)-second - 1].path.string());
    CHECK(+info.totalBytes >= +info.freeBytes);
    CHECK(+info.totalBlocks >= +info.freeBlocks);
    CHECK(info.signature == 0x482B);
    CHECK(info.driveNumber == -second);
    CHECK(+info.folderCount == 0);
    CHECK(+info.checkedDate.lowSeconds == 0);
    CHECK((info.flags & kFSVolFlagHardwareLockedMask) == 0);
    std::memset(&info, 0xAA, sizeof info);
    REQUIRE(FSGetVolumeInfo(0, 1, &actual, kFSVolInfoFSInfo, &info, nullptr, nullptr) == noErr);
    CHECK(actual == -1);
    CHECK(+info.totalBytes == 0xAAAAAAAAAAAAAAAAu);
    CHECK(FSGetVolumeInfo(-1, 0, nullptr, 0, nullptr, nullptr, nullptr) == noErr);
    CHECK(FSGetVolumeInfo(0, 999, nullptr, 0, nullptr, nullptr, nullptr) == nsvErr);
    CHECK(FSGetVolumeInfo(-500, 0, nullptr, 0, nullptr, nullptr, nullptr) == nsvErr);
    CHECK(FSGetVolumeInfo(-1, 0, nullptr, 0x10000, &info, nullptr, nullptr) == paramErr);
}

TEST_CASE("GetVol, SetVol, PBHGetVolSync, PBHSetVolSync: the default volume and directory")
{
    const Folder before = DefaultFolder();
    CatalogFolder scratch;
    scratch.MakeFolder("Folder");
    std::filesystem::create_symlink("Folder", scratch.Path() / "Link");
    Str255 name;
    SInt16 volume = 0;
    CHECK(SetVol(PascalText("Second:"), 0) == noErr);
    CHECK(GetVol(name, &volume) == noErr);
    CHECK(TextOf(name) == "Second");
    CHECK(DefaultFolder() == Folder{ SecondVolume(), fsRtDirID });
    CHECK(SetVol(nullptr, -1) == noErr);
    CHECK(DefaultFolder() == Folder{ -1, fsRtDirID });
    CHECK(SetVol(nullptr, -500) == nsvErr);
    CHECK(SetVol(PascalText("Nowhere:"), 0) == nsvErr);
    WDPBRec block = {};
    block.ioVRefNum = scratch.folder.volume;
    block.ioWDDirID = scratch.folder.id;
    const PascalText folder("Link");
    block.ioNamePtr = (StringPtr)folder.text;
    CHECK(PBHSetVolSync(&block) == noErr); // a link leads to its folder
    CHECK(PathOf(DefaultFolder()) == scratch.Path() / "Folder");
    block = {};
    block.ioNamePtr = name;
    CHECK(PBHGetVolSync(&block) == noErr);
    CHECK(TextOf(name) == "Host");
    CHECK(+block.ioWDDirID == DefaultFolder().id);
    block.ioVRefNum = -500;
    block.ioNamePtr = nullptr;
    CHECK(PBHSetVolSync(&block) == nsvErr);
    CHECK(block.ioResult == nsvErr);
    CHECK(PBHGetVolSync(nullptr) == paramErr);
    CHECK(PBHSetVolSync(nullptr) == paramErr);
    SetDefaultFolder(before);
}
