// Names and places of files: FSSpecs made equal, full paths, long names.
#include <algorithm>
#include <cstring>

#include "prefs/FileHelpers.h"
#include "prefs/FileRecords.h"
#include "util/Strings.h"

using lampblack::prefs::AppendName;
using lampblack::prefs::CatalogRecord;
using lampblack::prefs::CopyName;

namespace {

constexpr size_t kLongest = 255; // bytes of a Pascal string
constexpr unsigned char kSeparator[] = "\x01:";
constexpr OSErr kPathTooLong = -1410;
constexpr SInt32 kSystemWithUnicodeNames = 0x0900;
constexpr CFStringEncoding kMacRoman = 0;

bool HasUnicodeNames()
{
    static const bool hasThem = [] {
        SInt32 version = 0;
        return Gestalt(gestaltSystemVersion, &version) == noErr && version >= kSystemWithUnicodeNames;
    }();
    return hasThem;
}

// Puts the names of the folders above in front, up to the volume.
OSErr PrependFolders(SInt16 inVRefNum, SInt32 inDirID, size_t inFileNameLength, StringPtr ioPath)
{
    for (SInt32 directory = inDirID;;) {
        CatalogRecord record(inVRefNum, directory, nullptr);
        if (record.Get() != noErr)
            return noErr; // above the root
        if (ioPath[0] + record.fName[0] + inFileNameLength + 2 > kLongest)
            return kPathTooLong;
        AppendName(record.fName, kSeparator);
        PStringInsert(ioPath, record.fName);
        if (directory == fsRtDirID)
            return noErr;
        directory = record.fBlock.dirInfo.ioDrParID;
    }
}

template <typename Character, typename Convert>
OSStatus ConvertName(const HFSUniStr255* inName, Character* outName, UInt32 inSize, Convert inConvert)
{
    if (!inName || !outName || inSize == 0)
        return paramErr;
    outName[0] = 0;
    const CFStringRef text = CFStringCreateWithCharacters(
        nullptr, inName->unicode, static_cast<CFIndex>(std::min<size_t>(inName->length, kLongest)));
    if (!text)
        return paramErr;
    const bool isConverted = inConvert(text, outName, static_cast<CFIndex>(inSize), kMacRoman);
    CFRelease(text);
    return isConverted ? noErr : paramErr;
}

} // namespace

namespace lampblack::prefs {

void AppendName(StringPtr ioText, ConstStr255Param inName)
{
    const size_t count = std::min<size_t>(inName[0], kLongest - ioText[0]);
    std::memcpy(ioText + ioText[0] + 1, inName + 1, count);
    ioText[0] = static_cast<unsigned char>(ioText[0] + count);
}

} // namespace lampblack::prefs

OSStatus ResolveFileID(SInt16 inVRefNum, SInt16 inRefNum, FSSpec* outSpec)
{
    Str255 name = {};
    FCBPBRec block = {};
    block.ioNamePtr = name;
    block.ioRefNum = inRefNum;
    block.ioFCBIndx = 0;
    const OSErr err = PBGetFCBInfoSync(&block);
    if (err != noErr)
        return err;
    return FSMakeFSSpec(inVRefNum, block.ioFCBParID, name, outSpec);
}

Boolean EqualFSSpec(const FSSpec* inA, const FSSpec* inB)
{
    if (!inA || !inB)
        return false;
    FSSpec a = *inA, b = *inB;
    return FSpNormalize(&a) == noErr && FSpNormalize(&b) == noErr && a.vRefNum == b.vRefNum &&
           a.parID == b.parID && PLstrcmp(a.name, b.name) == 0;
}

OSStatus FSpNormalize(FSSpec* ioSpec)
{
    if (!ioSpec)
        return paramErr;
    FSSpec spec = {};
    const OSErr err = FSMakeFSSpec(ioSpec->vRefNum, ioSpec->parID, ioSpec->name, &spec);
    *ioSpec = spec;
    return err;
}

OSStatus FSpResolveAliasFile(FSSpec* ioSpec)
{
    if (!ioSpec)
        return paramErr;
    Boolean isFolder = false, wasAlias = false;
    return ResolveAliasFile(ioSpec, true, &isFolder, &wasAlias);
}

OSStatus GetFullPathname(FSSpec* ioSpec, StringPtr outPath)
{
    if (!ioSpec || !outPath)
        return paramErr;
    OSStatus err = FSpNormalize(ioSpec);
    outPath[0] = 0;
    if (err != noErr)
        return err;
    err = PrependFolders(ioSpec->vRefNum, ioSpec->parID, ioSpec->name[0], outPath);
    AppendName(outPath, ioSpec->name);
    return err;
}

OSStatus FSpGetLongFilename(const FSSpec* inSpec, StringPtr outName, UInt32 inSize)
{
    if (!inSpec || !outName || inSize == 0)
        return paramErr;
    if (!HasUnicodeNames()) {
        PLstrcpysafe(outName, inSpec->name, inSize);
        return noErr;
    }
    FSRef ref;
    const OSErr err = FSpMakeFSRef(inSpec, &ref);
    return err == noErr ? FSGetLongFilename(&ref, outName, inSize) : err;
}

OSStatus FSGetLongFilename(const FSRef* inRef, StringPtr outName, UInt32 inSize)
{
    if (!HasUnicodeNames() || !inRef || !outName)
        return paramErr;
    HFSUniStr255 name;
    const OSErr err = FSGetCatalogInfo(inRef, kFSCatInfoNone, nullptr, &name, nullptr, nullptr);
    return err == noErr ? GetUnicodeName(&name, outName, inSize) : err;
}

OSStatus GetUnicodeName(const HFSUniStr255* inName, unsigned char* outName, UInt32 inSize)
{
    return ConvertName(inName, outName, inSize, CFStringGetPascalString);
}

OSStatus GetUnicodeName(const HFSUniStr255* inName, char* outName, UInt32 inSize)
{
    return ConvertName(inName, outName, inSize, CFStringGetCString);
}

void PStringInsert(StringPtr ioText, ConstStr255Param inPrefix)
{
    if (!ioText || !inPrefix)
        return;
    Str255 text;
    CopyName(inPrefix, text);
    AppendName(text, ioText);
    CopyName(text, ioText);
}
