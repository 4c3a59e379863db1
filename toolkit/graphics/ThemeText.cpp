// Theme text at the pen and meta fonts.
#include "graphics/ThemeText.h"

#include "graphics/StateSavers.h"
#include "window/Startup.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace {

constexpr CFIndex kLeastRoom = 255; // units

// A string that is released at the end of the scope; it may be null.
class StString {
public:
    explicit StString(CFStringRef inString) : fString(inString) {}
    ~StString()
    {
        if (fString)
            CFRelease(fString);
    }
    StString(const StString&) = delete;
    StString& operator=(const StString&) = delete;

    CFStringRef Get() const { return fString; }

private:
    CFStringRef fString;
};

CFStringRef StringOf(const char* inText)
{
    return inText ? CFStringCreateWithCString(nullptr, inText, GetApplicationTextEncoding()) : nullptr;
}

CFStringRef StringOf(ConstStr255Param inText)
{
    return inText ? CFStringCreateWithPascalString(nullptr, inText, GetApplicationTextEncoding()) : nullptr;
}

void Measure(CFStringRef inText, ThemeFontID inFont, Point* outSize, SInt16* outBaseline)
{
    *outSize = { 0, 0 };
    *outBaseline = 0;
    GetThemeTextDimensions(inText, inFont, kThemeStateActive, false, outSize, outBaseline);
}

OSStatus DrawAtPen(const StString& inText, ThemeFontID inFont, SInt16 inJustification)
{
    if (!inText.Get())
        return paramErr;
    Point size, pen = { 0, 0 };
    SInt16 baseline;
    Measure(inText.Get(), inFont, &size, &baseline);
    GetPen(&pen);
    Rect box;
    box.left = (short)(pen.h - 1);
    box.right = (short)(box.left + size.h);
    box.bottom = (short)(pen.v - baseline); // the baseline is negative: below the pen by the descent
    box.top = (short)(box.bottom - size.v);
    return DrawThemeTextBox(inText.Get(), inFont, kThemeStateActive, false, &box, inJustification, nullptr);
}

SInt16 WidthOf(const StString& inText, ThemeFontID inFont, SInt16* outBaseline)
{
    if (!inText.Get())
        return 0;
    Point size;
    SInt16 baseline;
    Measure(inText.Get(), inFont, &size, &baseline);
    if (outBaseline)
        *outBaseline = baseline;
    return size.h;
}

void MakeScratchPort()
{
    if (fgScratchPort)
        return;
    const StPortSaver saver;
    fgScratchPort = CreateNewPort();
}

SInt16 CurrentTextSize()
{
    GrafPtr port = nullptr;
    GetPort(&port);
    return port ? GetPortTextSize(port) : (SInt16)0;
}

// The theme fonts of the meta fonts -1, -2, -3, -4.
constexpr ThemeFontID kMetaFonts[] = { kThemeSystemFont, kThemeSmallSystemFont,
                                       kThemeSmallEmphasizedSystemFont, kThemeViewsFont };

} // namespace

CFMutableStringRef CFMutableStringCreateWithCString(CFAllocatorRef inAllocator, const char* inText,
                                                    CFStringEncoding inEncoding)
{
    const CFIndex length = inText ? (CFIndex)std::strlen(inText) : 0;
    const CFMutableStringRef string = CFStringCreateMutable(inAllocator, std::max(length, kLeastRoom));
    if (string && inText)
        CFStringAppendCString(string, inText, inEncoding);
    return string;
}

CFMutableStringRef CFMutableStringCreateWithPascalString(CFAllocatorRef inAllocator, ConstStr255Param inText,
                                                         CFStringEncoding inEncoding)
{
    const CFMutableStringRef string = CFStringCreateMutable(inAllocator, kLeastRoom);
    if (string && inText)
        CFStringAppendPascalString(string, inText, inEncoding);
    return string;
}

OSStatus DrawThemeCString(const char* inText, ThemeFontID inFont, SInt16 inJustification)
{
    return DrawAtPen(StString(StringOf(inText)), inFont, inJustification);
}

OSStatus DrawThemePascalString(ConstStr255Param inText, ThemeFontID inFont, SInt16 inJustification)
{
    return DrawAtPen(StString(StringOf(inText)), inFont, inJustification);
}

SInt16 WidthThemeCString(const char* inText, ThemeFontID inFont, SInt16* outBaseline)
{
    return WidthOf(StString(StringOf(inText)), inFont, outBaseline);
}

SInt16 WidthThemePascalString(ConstStr255Param inText, ThemeFontID inFont, SInt16* outBaseline)
{
    return WidthOf(StString(StringOf(inText)), inFont, outBaseline);
}

SInt16 WidthThemeCString(const char* inText, ThemeFontID inFont)
{
    return WidthThemeCString(inText, inFont, nullptr);
}

SInt16 WidthThemePascalString(ConstStr255Param inText, ThemeFontID inFont)
{
    return WidthThemePascalString(inText, inFont, nullptr);
}

OSErr ConvertMetaFontToFontAndSize(SInt16 inFont, SInt16* outFont, SInt16* outSize)
{
    SInt16 font = inFont, size = CurrentTextSize();
    MakeScratchPort();
    const StPortSaver saver(fgScratchPort);
    const int meta = -1 - inFont;
    if (meta >= 0 && meta < (int)std::size(kMetaFonts)) {
        UseThemeFont(kMetaFonts[meta], smSystemScript);
        font = GetPortTextFont(fgScratchPort);
        size = GetPortTextSize(fgScratchPort);
    }
    if (outFont)
        *outFont = font;
    if (outSize)
        *outSize = size;
    return noErr;
}
