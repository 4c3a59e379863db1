// The preference file: where it is, when it is made, how it is opened, closed, deleted and seeded.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <filesystem>
#include <ostream>
#include <string>

#include "FreshPreferences.h"

LAMPBLACK_WATCH(OSErr, FindFolder,
                (SInt16 volume, OSType type, Boolean create, SInt16* foundVolume, SInt32* foundDirectory),
                (volume, type, create, foundVolume, foundDirectory))
LAMPBLACK_WATCH(OSErr, FSMakeFSSpec, (SInt16 volume, SInt32 directory, ConstStr255Param name, FSSpec* spec),
                (volume, directory, name, spec))
LAMPBLACK_WATCH(OSErr, FSpCreate, (const FSSpec* spec, OSType creator, OSType type, ScriptCode script),
                (spec, creator, type, script))
LAMPBLACK_WATCH(void, FSpCreateResFile, (const FSSpec* spec, OSType creator, OSType type, ScriptCode script),
                (spec, creator, type, script))
LAMPBLACK_WATCH(SInt16, FSpOpenResFile, (const FSSpec* spec, SignedByte permission), (spec, permission))
LAMPBLACK_WATCH(void, CloseResFile, (SInt16 file), (file))
LAMPBLACK_WATCH(void, UseResFile, (SInt16 file), (file))
LAMPBLACK_WATCH(OSErr, FSpGetFInfo, (const FSSpec* spec, FInfo* info), (spec, info))
LAMPBLACK_WATCH(OSErr, FSpSetFInfo, (const FSSpec* spec, const FInfo* info), (spec, info))
LAMPBLACK_WATCH(OSErr, FSpDelete, (const FSSpec* spec), (spec))

namespace {

FSSpec Located()
{
    FSSpec spec = {};
    Boolean created;
    REQUIRE(GetPreferenceFileFSSpec(&spec, &created) == noErr);
    return spec;
}

FInfo InfoOf(const FSSpec& inSpec)
{
    FInfo info = {};
    CHECK(FSpGetFInfo(&inSpec, &info) == noErr);
    return info;
}

std::string TextOf(ResType inType, SInt16 inID, Str255 outName)
{
    const Handle resource = Get1Resource(inType, inID);
    if (!resource)
        return "none";
    SInt16 id;
    ResType type;
    GetResInfo(resource, &id, &type, outName);
    return { *resource, (size_t)GetHandleSize(resource) };
}

} // namespace

TEST_CASE("GetPreferenceFileFSSpec: the first look-up makes folder and file, the second finds them")
{
    const FreshPreferences fresh;
    FSSpec spec = {};
    Boolean created = true;
    {
        const CallLog log;
        CHECK(GetPreferenceFileFSSpec(&spec, &created) == noErr);
        CHECK(log.Calls() == "FindFolder FSMakeFSSpec FSpCreate FSpCreateResFile");
    }
    CHECK(PreferenceFileCreated());
    CHECK_FALSE(created); // the module's flag is set, not the caller's
    CHECK(std::filesystem::exists(fresh.File()));
    CHECK(FromP(spec.name) == fresh.kName);
    CHECK(InfoOf(spec).fdCreator == 'LBts');
    CHECK(InfoOf(spec).fdType == 'pref');
    const CallLog log;
    FSSpec again = {};
    CHECK(GetPreferenceFileFSSpec(&again, &created) == noErr);
    CHECK(log.Calls().empty());
    CHECK(EqualFSSpec(&spec, &again));
}

TEST_CASE("PreferenceFileCreated: only the open that made the file says so")
{
    const FreshPreferences fresh;
    CHECK(OpenPreferenceFile(fsRdPerm) == noErr);
    CHECK(PreferenceFileCreated());
    CHECK(ClosePreferenceFile() == noErr);
    CHECK(PreferenceFileCreated());
    CHECK(OpenPreferenceFile(fsRdPerm) == noErr);
    CHECK_FALSE(PreferenceFileCreated());
}

TEST_CASE("GetPreferenceFileFSSpec: a place that cannot be found is an error, and is looked for again")
{
    const FreshPreferences fresh;
    FSSpec spec = {};
    Boolean created = false;
    CallLog::gFailures["FindFolder"] = nsvErr;
    {
        const CallLog log;
        CHECK(GetPreferenceFileFSSpec(&spec, &created) == nsvErr);
        CHECK(log.Calls() == "FindFolder");
    }
    CallLog::gFailures.clear();
    CallLog::gFailures["FSpCreate"] = wPrErr;
    {
        const CallLog log;
        CHECK(GetPreferenceFileFSSpec(&spec, &created) == wPrErr);
        CHECK(log.Calls() == "FindFolder FSMakeFSSpec FSpCreate");
    }
    CHECK_FALSE(PreferenceFileCreated());
    CallLog::gFailures.clear();
    CHECK(GetPreferenceFileFSSpec(&spec, &created) == noErr);
    CHECK(GetPreferenceFileFSSpec(nullptr, &created) == paramErr);
    CHECK(GetPreferenceFileFSSpec(&spec, nullptr) == paramErr);
}

TEST_CASE("SetPreferenceFileDomain: a place already found stays until the file is defined again")
{
    const FreshPreferences fresh;
    Located();
    SetPreferenceFileDomain(kUserDomain);
    const CallLog log;
    Located();
    CHECK(log.Calls().empty());
    DefinePreferenceFile(P(fresh.kName), 'LBts', 'pref', false);
    Located();
    CHECK(log.Calls() == "FindFolder FSMakeFSSpec");
}

TEST_CASE("SetPreferenceFile, GetPreferenceFile: the whole description goes in and out")
{
    const FreshPreferences fresh;
    PreferenceFileInfo info = {};
    GetPreferenceFile(&info);
    CHECK(FromP(info.name) == fresh.kName);
    CHECK(info.creator == 'LBts');
    CHECK(info.fileType == 'pref');
    CHECK_FALSE(info.invisible);
    Located();
    info.creator = 'othr';
    SetPreferenceFile(&info);
    GetPreferenceFile(nullptr);
    SetPreferenceFile(nullptr);
    PreferenceFileInfo read = {};
    GetPreferenceFile(&read);
    CHECK(read.creator == 'othr');
    const CallLog log;
    Located();
    CHECK(log.Calls() == "FindFolder FSMakeFSSpec");
    CHECK(InfoOf(Located()).fdCreator == 'LBts'); // the file was there
}

TEST_CASE("OpenPreferenceFile: the file becomes the current resource file and stays it")
{
    const FreshPreferences fresh;
    Located();
    const SInt16 before = CurResFile();
    {
        const CallLog log;
        CHECK(OpenPreferenceFile(fsRdWrPerm) == noErr);
        CHECK(log.Calls() == "FSpOpenResFile UseResFile");
    }
    CHECK(CurResFile() != before);
    FSSpec open = {}, located = Located();
    CHECK(ResolveFileID(located.vRefNum, CurResFile(), &open) == noErr);
    CHECK(EqualFSSpec(&open, &located));
    CHECK(ClosePreferenceFile() == noErr);
    CHECK(CurResFile() == before);
}

TEST_CASE("OpenPreferenceFile: what cannot be opened leaves the current file, and the file counts as closed")
{
    const FreshPreferences fresh;
    Located();
    std::filesystem::remove(fresh.File());
    std::filesystem::remove(fresh.Sidecar());
    const SInt16 before = CurResFile();
    CHECK(OpenPreferenceFile(fsRdPerm) == fnfErr); // the place found earlier is believed
    CHECK(CurResFile() == before);
    CHECK(ClosePreferenceFile() == fnOpnErr);
}

TEST_CASE(
    "OpenPreferenceFile: a second time for writing is refused, and the file stays open until it is closed")
{
    const FreshPreferences fresh;
    REQUIRE(OpenPreferenceFile(fsRdWrPerm) == noErr);
    const SInt16 file = CurResFile();
    CHECK(OpenPreferenceFile(fsRdWrPerm) == opWrErr);
    CHECK(CurResFile() == file);
    CHECK(AddSInt32Preference(5, 'TEST', 1, nullptr) == noErr);
    CHECK(ClosePreferenceFile() == noErr);
    CHECK(GetSInt32Preference('TEST', 1, 0) == 5);
}

TEST_CASE("ClosePreferenceFile: the second time it is not open")
{
    const FreshPreferences fresh;
    CHECK(OpenPreferenceFile(fsRdPerm) == noErr);
    CHECK(ClosePreferenceFile() == noErr);
    const CallLog log;
    CHECK(ClosePreferenceFile() == fnOpnErr);
    CHECK(log.Calls().empty());
}

TEST_CASE("DefinePreferenceFile: an invisible file is one that was made here")
{
    {
        const FreshPreferences fresh(true);
        const CallLog log;
        CHECK(OpenPreferenceFile(fsRdPerm) == noErr);
        CHECK(log.Calls() == "FindFolder FSMakeFSSpec FSpCreate FSpCreateResFile FSpOpenResFile UseResFile "
                             "FSpGetFInfo FSpSetFInfo");
        CHECK((InfoOf(Located()).fdFlags & kIsInvisible) != 0);
    }
    const FreshPreferences fresh;
    Located();
    DefinePreferenceFile(P(fresh.kName), 'LBts', 'pref', true);
    CHECK(OpenPreferenceFile(fsRdPerm) == noErr);
    CHECK((InfoOf(Located()).fdFlags & kIsInvisible) == 0);
}

TEST_CASE("DeletePreferenceFile: the file is gone, and the next look-up makes another")
{
    const FreshPreferences fresh;
    Located();
    {
        const CallLog log;
        CHECK(DeletePreferenceFile() == noErr);
        CHECK(log.Calls() == "FSpDelete");
    }
    CHECK_FALSE(std::filesystem::exists(fresh.File()));
    CHECK_FALSE(std::filesystem::exists(fresh.Sidecar()));
    CHECK_FALSE(PreferenceFileCreated());
    Located();
    CHECK(PreferenceFileCreated());
}

TEST_CASE("DeletePreferenceFile: an open file cannot be deleted, yet counts as closed and as nowhere")
{
    const FreshPreferences fresh;
    REQUIRE(OpenPreferenceFile(fsRdWrPerm) == noErr);
    const SInt16 file = CurResFile();
    CHECK(DeletePreferenceFile() == fBsyErr);
    CHECK(std::filesystem::exists(fresh.File()));
    CHECK(ClosePreferenceFile() == fnOpnErr);
    CHECK_FALSE(PreferenceFileCreated());
    {
        const CallLog log;
        Located();
        CHECK(log.Calls() == "FindFolder FSMakeFSSpec");
    }
    CloseResFile(file);
    CHECK(ResError() == noErr);
}

TEST_CASE("AddStandardPreferenceFileResources: versions and strings of the application, under their names")
{
    const FreshPreferences fresh;
    const SInt16 before = CurResFile();
    CHECK(AddStandardPreferenceFileResources(true, true) == noErr);
    CHECK(CurResFile() == before);
    REQUIRE(OpenPreferenceFile(fsRdPerm) == noErr);
    Str255 name;
    CHECK(TextOf('vers', 1, name).substr(6, 6) == "\0051.2.3");
    CHECK(name[0] == 0);
    CHECK(TextOf('vers', 2, name).substr(6, 4) == "\003Two");
    CHECK(TextOf('STR ', -16397, name) == "\006Cannot");
    CHECK(FromP(name) == "Can\xD5t open preferences");
    CHECK(TextOf('STR ', -16396, name) == "\007Creator");
    CHECK(FromP(name) == "Document Creator Name");
    CHECK(Count1Types() == 2);
}

TEST_CASE("AddStandardPreferenceFileResources: a second time they replace the first, in an open file too")
{
    const FreshPreferences fresh;
    REQUIRE(OpenPreferenceFile(fsRdWrPerm) == noErr);
    CHECK(AddStandardPreferenceFileResources(true, false) == noErr);
    CHECK(AddStandardPreferenceFileResources(true, false) == noErr);
    CHECK(Count1Resources('vers') == 2);
    CHECK(Count1Resources('STR ') == 0);
    CHECK(ClosePreferenceFile() == noErr);
}

TEST_CASE("AddStandardPreferenceFileResources: without either the file is opened, closed and left alone")
{
    const FreshPreferences fresh;
    Located();
    const CallLog log;
    CHECK(AddStandardPreferenceFileResources(false, false) == noErr);
    CHECK(log.Calls() == "FSpOpenResFile UseResFile CloseResFile UseResFile");
    CHECK(OpenPreferenceFile(fsRdPerm) == noErr);
    CHECK(Count1Types() == 0);
}

TEST_CASE("AddStandardPreferenceFileResources: a file that cannot be opened is told")
{
    const FreshPreferences fresh;
    CallLog::gFailures["FindFolder"] = nsvErr;
    const SInt16 before = CurResFile();
    CHECK(AddStandardPreferenceFileResources(true, true) == nsvErr);
    CHECK(ResError() == nsvErr);
    CHECK(CurResFile() == before);
}
