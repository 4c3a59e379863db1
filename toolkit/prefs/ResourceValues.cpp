// Small values in resources and texts with versions.
#include "prefs/ResourceValues.h"

#include <algorithm>
#include <cstring>

#include "prefs/ApplicationResources.h"
#include "prefs/FileRecords.h"
#include "util/StringResources.h"

namespace {

constexpr ResType kVersionType = 'vers', kBooleanType = 'BOOL', kRectType = 'RECT', kColorType = 'RGB ';
constexpr Size kShortVersionOffset = 6;
constexpr unsigned char kUnknownVersion[] = "\x09<unknown>";

OSStatus SetResult(OSErr inResult)
{
    LMSetResErr(inResult);
    return inResult;
}

// A resource's leading bytes; zeros where it ends before the value does, or is missing.
template <typename Value>
Value ValueOf(Handle inResource)
{
    Value value = {};
    if (inResource && *inResource)
        std::memcpy(&value, *inResource,
                    std::min(sizeof value, static_cast<size_t>(GetHandleSize(inResource))));
    LMSetResErr(inResource ? noErr : resNotFound);
    return value;
}

OSStatus TakeNumVersion(Handle inResource, NumVersion* outVersion)
{
    if (!outVersion)
        return SetResult(paramErr);
    if (!inResource)
        return SetResult(resNotFound);
    const bool isWhole = GetHandleSize(inResource) >= static_cast<Size>(sizeof *outVersion);
    if (isWhole)
        std::memcpy(outVersion, *inResource, sizeof *outVersion);
    ReleaseResource(inResource);
    return SetResult(isWhole ? noErr : resNotFound);
}

// The short version string of a 'vers', cut where the resource ends; "<unknown>" without one. Releases it.
OSErr TakeShortVersion(Handle inResource, Str255 outText)
{
    outText[0] = 0;
    if (!inResource) {
        std::memcpy(outText, kUnknownVersion, sizeof kUnknownVersion);
        return resNotFound;
    }
    HLock(inResource);
    const Size room = GetHandleSize(inResource) - kShortVersionOffset - 1;
    if (room >= 0) {
        const unsigned char* const text = reinterpret_cast<unsigned char*>(*inResource) + kShortVersionOffset;
        outText[0] = static_cast<unsigned char>(std::min<Size>(text[0], room));
        std::memcpy(outText + 1, text + 1, outText[0]);
    }
    HUnlock(inResource);
    ReleaseResource(inResource);
    return noErr;
}

OSStatus Concat(Handle inResource, StringPtr ioText)
{
    Str255 version;
    const OSErr err = TakeShortVersion(inResource, version);
    if (!ioText)
        return SetResult(paramErr);
    lampblack::prefs::AppendName(ioText, version);
    return SetResult(err);
}

OSStatus Concat(Handle inResource, char* ioText)
{
    Str255 version;
    const OSErr err = TakeShortVersion(inResource, version);
    if (!ioText)
        return SetResult(paramErr);
    char text[256];
    CopyPascalStringToC(version, text);
    if (err != noErr)
        ioText[0] = 0; // kept: the C form is replaced
    std::strcat(ioText, text);
    return SetResult(err);
}

} // namespace

Boolean GetApplicationCString(SInt16 inListID, SInt16 inIndex, char* outText)
{
    if (!outText)
        return false;
    outText[0] = 0;
    if (GetApplicationResFile() == -1)
        return false;
    const StResFile file(GetApplicationResFile());
    Str255 text;
    GetIndString(text, inListID, inIndex);
    CopyPascalStringToC(text, outText);
    return text[0] != 0;
}

OSStatus GetNumVersion(SInt16 inID, NumVersion* outVersion)
{
    return TakeNumVersion(GetResource(kVersionType, inID), outVersion);
}

OSStatus Get1NumVersion(SInt16 inID, NumVersion* outVersion)
{
    return TakeNumVersion(Get1Resource(kVersionType, inID), outVersion);
}

OSStatus GetApplicationNumVersion(NumVersion* outVersion)
{
    return TakeNumVersion(GetApplicationResource(kVersionType, 1), outVersion);
}

Boolean GetBoolean(SInt16 inID)
{
    return ValueOf<Boolean>(GetResource(kBooleanType, inID)) != 0;
}

Boolean Get1Boolean(SInt16 inID)
{
    return ValueOf<Boolean>(Get1Resource(kBooleanType, inID)) != 0;
}

Rect GetRect(SInt16 inID)
{
    return ValueOf<Rect>(GetResource(kRectType, inID));
}

Rect Get1Rect(SInt16 inID)
{
    return ValueOf<Rect>(Get1Resource(kRectType, inID));
}

Rect GetNamedRect(ConstStr255Param inName)
{
    return ValueOf<Rect>(GetNamedResource(kRectType, inName));
}

RGBColor GetRGBColor(SInt16 inID)
{
    return ValueOf<RGBColor>(GetResource(kColorType, inID));
}

RGBColor Get1RGBColor(SInt16 inID)
{
    return ValueOf<RGBColor>(Get1Resource(kColorType, inID));
}

Boolean GetStringByID(StringPtr outText, SInt16 inID)
{
    return SetResult(static_cast<OSErr>(GetPascalString(inID, outText, true))) == noErr;
}

Boolean GetStringByName(StringPtr outText, ConstStr255Param inName)
{
    if (!outText)
        return SetResult(paramErr) == noErr;
    outText[0] = 0;
    const Handle resource = GetNamedResource('STR ', inName);
    if (!resource)
        return SetResult(resNotFound) == noErr;
    const SInt8 state = HGetState(resource);
    HLock(resource);
    if (const Size size = GetHandleSize(resource); size > 0) {
        const unsigned char* const text = reinterpret_cast<unsigned char*>(*resource);
        outText[0] = static_cast<unsigned char>(std::min<Size>(text[0], size - 1));
        std::memcpy(outText + 1, text + 1, outText[0]);
    }
    HSetState(resource, state);
    ReleaseResource(resource);
    return SetResult(noErr) == noErr;
}

OSStatus ConcatVersion(SInt16 inID, StringPtr ioText)
{
    return Concat(GetResource(kVersionType, inID), ioText);
}

OSStatus ConcatVersion(SInt16 inID, char* ioText)
{
    return Concat(GetResource(kVersionType, inID), ioText);
}

OSStatus ConcatApplicationVersion(SInt16 inID, char* ioText)
{
    return Concat(GetApplicationResource(kVersionType, inID), ioText);
}

OSStatus ConcatApplicationVersion(SInt16 inID, StringPtr ioText)
{
    return Concat(GetApplicationResource(kVersionType, inID), ioText);
}
