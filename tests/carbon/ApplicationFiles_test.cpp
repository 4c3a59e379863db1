// File calls as applications of the time wrote them: numbers in a long, FInfo and FileInfo for the same bytes.
#include <Carbon/Carbon.h>
#include <doctest/doctest.h>

#include <cstring>

#include "PascalText.h"

namespace {

// A file of its own in the Preferences folder.
FSSpec ScoreFile()
{
    short volume = 0;
    long folder = 0;
    FSSpec spec = {};
    REQUIRE(FindFolder(kOnSystemDisk, kPreferencesFolderType, kCreateFolder, &volume, &folder) == noErr);
    const OSErr err = FSMakeFSSpec(volume, (SInt32)folder, P("Scores"), &spec);
    REQUIRE((err == noErr || err == fnfErr));
    return spec;
}

} // namespace

TEST_CASE("FSWrite, GetEOF, SetFPos, FSRead: counts in a long")
{
    const FSSpec spec = ScoreFile();
    short file = 0;
    REQUIRE(FSpCreate(&spec, 'GAME', 'SCOR', smSystemScript) == noErr);
    REQUIRE(FSpOpenDF(&spec, fsRdWrPerm, &file) == noErr);
    long count = 6, end = -1, mark = -1;
    CHECK(FSWrite(file, &count, "scores") == noErr);
    CHECK(GetEOF(file, &end) == noErr);
    CHECK(end == 6);
    CHECK(SetFPos(file, fsFromStart, 1) == noErr);
    char bytes[8] = {};
    count = sizeof bytes;
    CHECK(FSRead(file, &count, bytes) == eofErr);
    CHECK(count == 5);
    CHECK(std::memcmp(bytes, "cores", 5) == 0);
    CHECK(GetFPos(file, &mark) == noErr);
    CHECK(mark == 6);
    FSClose(file);
    CHECK(FSpDelete(&spec) == noErr);
}

TEST_CASE("HGetVol, FindFolder: directory IDs in a long are those in an SInt32")
{
    short volume = 0, sameVolume = 0;
    long folder = -1;
    SInt32 sameFolder = 0;
    CHECK(HGetVol(nullptr, &volume, &folder) == noErr);
    CHECK(HGetVol(nullptr, &sameVolume, &sameFolder) == noErr);
    CHECK(volume == sameVolume);
    CHECK(folder == sameFolder);
    CHECK(FindFolder(kUserDomain, kPreferencesFolderType, kCreateFolder, &volume, &folder) == noErr);
    CHECK(FindFolder(kUserDomain, kPreferencesFolderType, kCreateFolder, &sameVolume, &sameFolder) == noErr);
    CHECK(folder == sameFolder);
    folder = -1;
    CHECK(FindFolder(kUserDomain, 'none', kCreateFolder, &volume, &folder) == fnfErr);
    CHECK(folder == 0);
}

TEST_CASE("FSGetCatalogInfo, FSSetCatalogInfo: FileInfo and ExtendedFileInfo are FInfo and FXInfo")
{
    const FSSpec spec = ScoreFile();
    FSRef ref;
    FSCatalogInfo info;
    REQUIRE(FSpCreate(&spec, 'GAME', 'SCOR', smSystemScript) == noErr);
    REQUIRE(FSpMakeFSRef(&spec, &ref) == noErr);
    const FSCatalogInfoBitmap wanted = kFSCatInfoFinderInfo | kFSCatInfoFinderXInfo | kFSCatInfoNodeFlags;
    REQUIRE(FSGetCatalogInfo(&ref, wanted, &info, nullptr, nullptr, nullptr) == noErr);
    FileInfo* const finder = reinterpret_cast<FileInfo*>(info.finderInfo);
    CHECK((OSType)finder->fileType == 'SCOR');
    CHECK((OSType)finder->fileCreator == 'GAME');
    CHECK((info.nodeFlags & 1 << kFSNodeIsDirectoryBit) == 0);
    finder->finderFlags |= kIsInvisible;
    reinterpret_cast<ExtendedFileInfo*>(info.extFinderInfo)->putAwayFolderID = 77;
    CHECK(FSSetCatalogInfo(&ref, kFSCatInfoFinderInfo | kFSCatInfoFinderXInfo, &info) == noErr);
    FInfo classic = {};
    CHECK(FSpGetFInfo(&spec, &classic) == noErr);
    CHECK((UInt16)classic.fdFlags == kIsInvisible);
    CInfoPBRec block = {};
    Str255 name;
    std::memcpy(name, spec.name, sizeof spec.name);
    block.hFileInfo.ioNamePtr = name;
    block.hFileInfo.ioVRefNum = spec.vRefNum;
    block.hFileInfo.ioDirID = spec.parID;
    CHECK(PBGetCatInfoSync(&block) == noErr);
    CHECK((SInt32)block.hFileInfo.ioFlXFndrInfo.fdPutAway == 77);
    CHECK(FSpDelete(&spec) == noErr);
}
