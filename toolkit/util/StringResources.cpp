// Strings from 'STR ' resources, and the user's name.
#include "util/StringResources.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr CFStringEncoding kMacRoman = 0;

// Copies a resource's string, which ends with the resource when its length byte says more.
void CopyString(Handle inString, StringPtr outText)
{
    const SInt8 state = HGetState(inString);
    HLock(inString);
    const Size size = std::clamp<Size>(GetHandleSize(inString), 0, 256);
    Str255 text = { 0 };
    if (size > 0) {
        std::memcpy(text, *inString, static_cast<size_t>(size));
        text[0] = static_cast<unsigned char>(std::min<Size>(text[0], size - 1));
    }
    PLstrcpy(outText, text);
    HSetState(inString, state);
}

} // namespace

OSErr GetCString(SInt16 inID, char* outText)
{
    if (!outText)
        return paramErr;
    Str255 text;
    const OSErr err = GetPascalString(inID, text, true);
    CopyPascalStringToC(text, outText);
    return err;
}

OSErr GetPascalString(SInt16 inID, StringPtr outText, bool inSearchAll)
{
    if (!outText)
        return paramErr;
    outText[0] = 0;
    const Handle string =
        inSearchAll ? reinterpret_cast<Handle>(GetString(inID)) : Get1Resource('STR ', inID);
    if (!string)
        return paramErr;
    CopyString(string, outText);
    return noErr;
}

OSErr GetUserNameMachineName(StringPtr outUserName, StringPtr ioMachineName)
{
    if (!outUserName)
        return ioMachineName ? noErr : paramErr;
    static const CFStringRef name = CSCopyUserName(true); // never released
    Str255 text;
    if (!name || !CFStringGetPascalString(name, text, sizeof text, kMacRoman))
        CopyCStringToPascal("You", text);
    PLstrcpy(outUserName, text);
    return noErr;
}
