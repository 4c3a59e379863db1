// Capitals, small letters and marks of Mac Roman text.
#include "RomanText.h"

#include <Carbon/MacApplication.h>
#include <Carbon/TextUtils.h>

using namespace lampblack::foundation;

namespace {

bool IsRoman(ScriptCode inScript)
{
    return inScript == smRoman || inScript == smSystemScript || inScript == smCurrentScript;
}

void MapText(void* ioText, long inLength, const ByteMap& inMap)
{
    UInt8* text = (UInt8*)ioText;
    for (long i = 0; text && i < inLength; ++i)
        text[i] = inMap[text[i]];
}

void MapScript(void* ioText, SInt16 inLength, ScriptCode inScript, const ByteMap& inMap)
{
    if (IsRoman(inScript))
        MapText(ioText, inLength, inMap);
}

} // namespace

void UppercaseText(Ptr textPtr, SInt16 len, ScriptCode script)
{
    MapScript(textPtr, len, script, Roman().upper);
}

void LowercaseText(Ptr textPtr, SInt16 len, ScriptCode script)
{
    MapScript(textPtr, len, script, Roman().lower);
}

void StripDiacritics(Ptr textPtr, SInt16 len, ScriptCode script)
{
    MapScript(textPtr, len, script, Roman().stripped);
}

void UppercaseStripDiacritics(Ptr textPtr, SInt16 len, ScriptCode script)
{
    MapScript(textPtr, len, script, Roman().upperStripped);
}

void UpperString(Str255 theString, Boolean diacSens)
{
    if (theString)
        MapText(theString + 1, theString[0], diacSens ? Roman().fileUpper : Roman().fileUpperStripped);
}

TextEncoding GetApplicationTextEncoding(void)
{
    return kTextEncodingMacRoman;
}

ScriptCode GetApplicationScript(void)
{
    return smRoman;
}
