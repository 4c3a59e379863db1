// The preference file: its description, its place, opening and deleting.
#include "prefs/PreferenceFile.h"

#include <cstring>

#include "prefs/ApplicationResources.h"
#include "prefs/FileHelpers.h"
#include "prefs/PreferenceState.h"

using lampblack::prefs::gOpenFile;

namespace {

SInt16 fgDomain = kOnAppropriateDisk;
PreferenceFileInfo fgInfo = {};
FSSpec fgSpec = {};
bool fgIsSpecValid = false;
Boolean fgWasCreated = false;

// Shown by the desktop for a file of an application that is missing, and the name of that application.
constexpr SInt16 kCannotOpenID = -16397, kCreatorNameID = -16396;
constexpr unsigned char kCannotOpenName[] = "\x16"
                                            "Can\xD5t open preferences"; // Mac Roman's closing quote
constexpr unsigned char kCreatorName[] = "\x15"
                                         "Document Creator Name";

OSErr FindPreferenceFile()
{
    SInt16 volume = 0;
    SInt32 directory = 0;
    const OSErr err = FindFolder(fgDomain, kPreferencesFolderType, kCreateFolder, &volume, &directory);
    return err == noErr ? FSMakeFSSpec(volume, directory, fgInfo.name, &fgSpec) : err;
}

OSErr CreatePreferenceFile()
{
    // Another process of the application may have been quicker since the look, with the file or with its map.
    const OSErr err = FSpCreate(&fgSpec, fgInfo.creator, fgInfo.fileType, smSystemScript);
    if (err != noErr && err != dupFNErr)
        return err;
    FSpCreateResFile(&fgSpec, fgInfo.creator, fgInfo.fileType, smSystemScript);
    const OSErr result = ResError();
    fgWasCreated = err == noErr;
    return result == dupFNErr ? static_cast<OSErr>(noErr) : result;
}

// Whether a file without a resource fork is one of ours: a process that made it was stopped before it gave it
// a resource map, or somebody copied it without its resource fork, and nothing is left. (A damaged file is
// another error, and stays for somebody to mend.)
bool IsHalfMade(const FSSpec& inSpec)
{
    FInfo info = {};
    UInt32 size = 0;
    const bool isThere =
        FSpGetFInfo(&inSpec, &info) == noErr && FSpGetFileSize(&inSpec, &size, nullptr) == noErr;
    const bool isOurs = info.fdCreator == fgInfo.creator && info.fdType == fgInfo.fileType;
    LMSetResErr(eofErr);
    return isThere && (isOurs || (info.fdCreator == 0 && info.fdType == 0 && size == 0));
}

void MakeInvisible(const FSSpec& inSpec)
{
    FInfo info;
    if (FSpGetFInfo(&inSpec, &info) != noErr)
        return;
    info.fdFlags |= kIsInvisible;
    FSpSetFInfo(&inSpec, &info);
}

// The application's resources of one type, in place of the file's own.
struct StandardResource {
    SInt16 fID;
    ConstStr255Param fName;
};

void ReplaceWithApplications(ResType inType, const StandardResource (&inResources)[2])
{
    {
        const lampblack::prefs::StUnwritten unwritten;
        for (const StandardResource& resource : inResources)
            RemoveResourceByID(inType, resource.fID);
    }
    for (const StandardResource& resource : inResources)
        CopyApplicationResource(inType, resource.fID, resource.fName);
}

} // namespace

namespace lampblack::prefs {

SInt16 gOpenFile = kResFileNotOpened;

void ForgetUnwritten()
{
    SetResFileAttrs(gOpenFile, static_cast<SInt16>(GetResFileAttrs(gOpenFile) | mapReadOnly));
    CloseResFile(gOpenFile);
    gOpenFile = FSpOpenResFile(&fgSpec, fsRdWrPerm);
    UseResFile(gOpenFile);
}

} // namespace lampblack::prefs

void SetPreferenceFileDomain(SInt16 inDomain)
{
    fgDomain = inDomain;
}

void DefinePreferenceFile(ConstStr255Param inName, OSType inCreator, OSType inFileType, Boolean inInvisible)
{
    fgInfo = {};
    if (inName)
        std::memcpy(fgInfo.name, inName, inName[0] + 1);
    fgInfo.creator = inCreator;
    fgInfo.fileType = inFileType;
    fgInfo.invisible = inInvisible;
    fgIsSpecValid = false;
}

void GetPreferenceFile(PreferenceFileInfo* outInfo)
{
    if (outInfo)
        *outInfo = fgInfo;
}

void SetPreferenceFile(const PreferenceFileInfo* inInfo)
{
    if (!inInfo)
        return;
    fgInfo = *inInfo;
    fgIsSpecValid = false;
}

OSStatus GetPreferenceFileFSSpec(FSSpec* outSpec, Boolean* outCreated)
{
    if (!outSpec || !outCreated)
        return paramErr;
    *outCreated = false;
    OSErr err = noErr;
    if (!fgIsSpecValid) {
        err = FindPreferenceFile();
        if (err == fnfErr)
            err = CreatePreferenceFile();
        fgIsSpecValid = err == noErr;
    }
    if (fgIsSpecValid)
        *outSpec = fgSpec;
    return err;
}

OSStatus OpenPreferenceFile(SInt8 inPermission)
{
    FSSpec spec;
    const OSStatus located = GetPreferenceFileFSSpec(&spec, &fgWasCreated);
    if (located != noErr)
        return located;
    const SInt16 saved = CurResFile(), earlier = gOpenFile;
    gOpenFile = FSpOpenResFile(&spec, inPermission);
    if (gOpenFile == kResFileNotOpened && inPermission != fsRdPerm && ResError() == eofErr &&
        IsHalfMade(spec)) {
        FSpCreateFile(&spec, fgInfo.creator, fgInfo.fileType);
        gOpenFile = FSpOpenResFile(&spec, inPermission);
    }
    if (gOpenFile == kResFileNotOpened) {
        if (const OSErr err = ResError(); err != noErr) {
            gOpenFile = earlier; // a file that is open already stays so and can be closed
            UseResFile(saved);
            return err;
        }
    }
    UseResFile(gOpenFile);
    if (fgWasCreated && fgInfo.invisible)
        MakeInvisible(spec);
    return noErr;
}

OSStatus ClosePreferenceFile()
{
    if (gOpenFile == kResFileNotOpened)
        return fnOpnErr;
    CloseResFile(gOpenFile);
    const OSErr err = ResError();
    gOpenFile = kResFileNotOpened;
    return err;
}

OSStatus DeletePreferenceFile()
{
    // Kept: the test stands the wrong way round, so that an open file stays open and cannot be deleted.
    if (gOpenFile == kResFileNotOpened)
        ClosePreferenceFile();
    FSSpec spec;
    OSStatus err = GetPreferenceFileFSSpec(&spec, &fgWasCreated);
    if (err != noErr)
        return err;
    err = FSpDelete(&spec);
    fgIsSpecValid = false;
    gOpenFile = kResFileNotOpened;
    fgWasCreated = false;
    return err;
}

Boolean PreferenceFileCreated()
{
    return fgWasCreated;
}

OSStatus AddStandardPreferenceFileResources(Boolean inVersions, Boolean inFinderStrings)
{
    const lampblack::prefs::StPreferenceFile file(fsRdWrPerm);
    if (!file.IsOpen())
        return file.Result();
    if (inVersions)
        ReplaceWithApplications('vers', { { 1, nullptr }, { 2, nullptr } });
    if (inFinderStrings)
        ReplaceWithApplications('STR ',
                                { { kCannotOpenID, kCannotOpenName }, { kCreatorNameID, kCreatorName } });
    return noErr;
}
