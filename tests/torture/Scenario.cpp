#include "Scenario.h"

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <lampblack/lampblack.h>
#include <string>

namespace torture {
namespace {

namespace fs = std::filesystem;

constexpr OSType kType = 'PREF';
constexpr SInt16 kEntries = 20;

// A literal as a Pascal string, for the duration of a statement.
class Pascal {
public:
    explicit Pascal(const char* inText) { CopyCStringToPascal(inText, fText); }
    operator ConstStr255Param() const { return fText; }

private:
    Str255 fText;
};

// The preference file of this process lies below the folder.
void UseFolder(const fs::path& inFolder)
{
    const char* current = std::getenv("XDG_CONFIG_HOME");
    if (!current || inFolder.native() != current)
        setenv("XDG_CONFIG_HOME", inFolder.c_str(), 1);
    DefinePreferenceFile(Pascal("Torture Preferences"), 'LBtt', 'pref', false);
}

void WriteEntries(const fs::path& inFolder)
{
    UseFolder(inFolder);
    for (SInt16 id = 1; id <= kEntries; ++id)
        AddSInt32Preference(id * 1000, kType, id, nullptr);
    AddCStringPreference("a text that stays", 'TEXT', 1, Pascal("named"));
}

bool EntriesStand(SInt16 inExcept)
{
    for (SInt16 id = 1; id <= kEntries; ++id)
        if (id != inExcept && GetSInt32Preference(kType, id, -1) != id * 1000)
            return false;
    char text[64] = {};
    GetCStringPreference('TEXT', 1, text, "lost");
    return std::strcmp(text, "a text that stays") == 0;
}

// One value of several is replaced.
int ReplaceValue(const fs::path& inFolder)
{
    UseFolder(inFolder);
    return AddSInt32Preference(77, kType, 7, nullptr) == noErr ? 0 : 1;
}

Found LookForValue(const fs::path& inFolder)
{
    UseFolder(inFolder);
    const SInt32 value = GetSInt32Preference(kType, 7, -1);
    if (!EntriesStand(7))
        return Found::Neither;
    return value == 77 ? Found::New : value == 7000 ? Found::Old : Found::Neither;
}

// The same with the file held open, two values one after the other: the first must not undo itself.
int ReplaceWhileOpen(const fs::path& inFolder)
{
    UseFolder(inFolder);
    if (OpenPreferenceFile(fsRdWrPerm) != noErr)
        return 1;
    const OSStatus result = AddSInt32Preference(77, kType, 7, nullptr);
    return ClosePreferenceFile() != noErr || result != noErr;
}

// The very first value, which makes the folder and the file.
void PrepareNothing(const fs::path&) {}

Found LookForFirst(const fs::path& inFolder)
{
    UseFolder(inFolder);
    const SInt32 value = GetSInt32Preference(kType, 7, -1);
    return value == 77 ? Found::New : value == -1 ? Found::Old : Found::Neither;
}

// A value so large that the file has to grow.
constexpr SInt32 kLarge = 300'000;

int WriteLarge(const fs::path& inFolder)
{
    UseFolder(inFolder);
    static char bytes[kLarge];
    std::memset(bytes, 'L', sizeof bytes);
    return AddPreferenceData(bytes, kLarge, 'LARG', 1, nullptr) == noErr ? 0 : 1;
}

Found LookForLarge(const fs::path& inFolder)
{
    UseFolder(inFolder);
    Handle large = GetPreferenceResource('LARG', 1);
    const bool isThere = large != nullptr;
    const bool isWhole = isThere && GetHandleSize(large) == kLarge && (*large)[0] == 'L' &&
                         std::memcmp(*large, *large + 1, (size_t)kLarge - 1) == 0;
    if (large)
        DisposeHandle(large);
    if (!EntriesStand(0))
        return Found::Neither;
    return isWhole ? Found::New : isThere ? Found::Neither : Found::Old;
}

// An entry under a name.
int WriteNamed(const fs::path& inFolder)
{
    UseFolder(inFolder);
    return AddBooleanNamedPreference(true, 'BOOL', Pascal("Sound")) == noErr ? 0 : 1;
}

Found LookForNamed(const fs::path& inFolder)
{
    UseFolder(inFolder);
    if (!EntriesStand(0))
        return Found::Neither;
    return GetBooleanNamedPreference('BOOL', Pascal("Sound"), false) ? Found::New : Found::Old;
}

// An ordinary resource file with its fork in the file itself: three changes, one update.
FSSpec SpecOf(const fs::path& inPath)
{
    FSSpec spec = {};
    FSRef ref;
    if (FSPathMakeRef((const UInt8*)inPath.c_str(), &ref, nullptr) == noErr)
        FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr);
    return spec;
}

Handle TextHandle(const char* inText)
{
    Handle text = nullptr;
    PtrToHand(inText, &text, (long)std::strlen(inText));
    return text;
}

void PrepareLevel(const fs::path& inFolder)
{
    std::ofstream(inFolder / "Level").put('x');
    const FSSpec spec = SpecOf(inFolder / "Level");
    FSpCreateResFile(&spec, 'LBtt', 'levl', smSystemScript);
    FInfo info = {};
    FSpGetFInfo(&spec, &info);
    info.fdCreator = 'LBtt'; // the file was there before the call
    FSpSetFInfo(&spec, &info);
    const SInt16 file = FSpOpenResFile(&spec, fsRdWrPerm);
    AddResource(TextHandle("one"), 'TEXT', 1, Pascal("first"));
    AddResource(TextHandle("two"), 'TEXT', 2, Pascal("second"));
    AddResource(TextHandle("three"), 'TEXT', 3, Pascal("third"));
    CloseResFile(file);
}

// The file "Level", without memory of this test's own.
FSSpec LevelIn(const fs::path& inFolder)
{
    char path[PATH_MAX];
    std::snprintf(path, sizeof path, "%s/Level", inFolder.c_str());
    FSSpec spec = {};
    FSRef ref;
    if (FSPathMakeRef((const UInt8*)path, &ref, nullptr) == noErr)
        FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr);
    return spec;
}

int ChangeLevel(const fs::path& inFolder)
{
    const FSSpec spec = LevelIn(inFolder);
    const SInt16 file = FSpOpenResFile(&spec, fsRdWrPerm);
    if (file == -1)
        return 1;
    OSErr error = noErr;
    const auto note = [&error] {
        if (error == noErr)
            error = ResError();
    };
    Handle one = Get1Resource('TEXT', 1);
    Handle two = Get1Resource('TEXT', 2);
    if (one && two) {
        SetHandleSize(one, 4);
        if (MemError() == noErr)
            std::memcpy(*one, "ONE!", 4);
        else
            error = MemError();
        ChangedResource(one);
        note();
        RemoveResource(two);
        note();
        DisposeHandle(two);
        Handle four = TextHandle("four");
        if (four)
            AddResource(four, 'TEXT', 4, Pascal("fourth"));
        else
            error = memFullErr;
        note();
    } else {
        error = resNotFound;
    }
    if (error != noErr) { // what was done by halves is not to be written
        SetResFileAttrs(file, mapReadOnly);
        CloseResFile(file);
        return 1;
    }
    UpdateResFile(file);
    note();
    CloseResFile(file);
    note();
    return error == noErr ? 0 : 1;
}

std::string TextOf(SInt16 inID)
{
    Handle text = Get1Resource('TEXT', inID);
    return text ? std::string(*text, (size_t)GetHandleSize(text)) : "-";
}

Found LookAtLevel(const fs::path& inFolder)
{
    const FSSpec spec = SpecOf(inFolder / "Level");
    const SInt16 file = FSpOpenResFile(&spec, fsRdPerm);
    if (file == -1)
        return Found::Neither;
    const std::string all = TextOf(1) + "," + TextOf(2) + "," + TextOf(3) + "," + TextOf(4);
    CloseResFile(file);
    return all == "one,two,three,-" ? Found::Old : all == "ONE!,-,three,four" ? Found::New : Found::Neither;
}

// A file with both forks and Finder information gets another name.
int RenameLevel(const fs::path& inFolder)
{
    const FSSpec spec = LevelIn(inFolder);
    return FSpRename(&spec, Pascal("Level Two")) == noErr ? 0 : 1;
}

bool IsLevel(const fs::path& inPath)
{
    const FSSpec spec = SpecOf(inPath);
    FInfo info = {};
    if (!fs::exists(inPath) || FSpGetFInfo(&spec, &info) != noErr || info.fdCreator != 'LBtt')
        return false;
    const SInt16 file = FSpOpenResFile(&spec, fsRdPerm);
    const bool isWhole = file != -1 && TextOf(1) == "one" && TextOf(3) == "three";
    if (file != -1)
        CloseResFile(file);
    return isWhole;
}

Found LookForName(const fs::path& inFolder)
{
    const bool isOld = IsLevel(inFolder / "Level"), isNew = IsLevel(inFolder / "Level Two");
    return isOld && !isNew ? Found::Old : isNew && !isOld ? Found::New : Found::Neither;
}

} // namespace

const std::vector<Scenario>& Scenarios()
{
    static const std::vector<Scenario> scenarios = {
        { "replace a value", WriteEntries, ReplaceValue, LookForValue },
        { "replace a value of a file held open", WriteEntries, ReplaceWhileOpen, LookForValue },
        { "the first value makes the file", PrepareNothing, ReplaceValue, LookForFirst },
        { "a value that makes the file grow", WriteEntries, WriteLarge, LookForLarge },
        { "a named value", WriteEntries, WriteNamed, LookForNamed },
        { "change, remove and add in a resource file", PrepareLevel, ChangeLevel, LookAtLevel },
        { "rename a file with both forks", PrepareLevel, RenameLevel, LookForName },
    };
    return scenarios;
}

} // namespace torture
