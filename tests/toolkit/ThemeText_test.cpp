// Theme text at the pen, meta fonts and growing strings.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <cstring>
#include <string>

#include "CallLog.h"
#include "PascalText.h"

namespace {

struct DrawnBox {
    Rect box;
    ThemeFontID font;
    ThemeDrawState state;
    Boolean wraps;
    SInt16 justification;
    void* context;
    std::string text;
} gDrawn;
OSStatus gDrawingError = noErr;
bool gConverts = true; // text into strings
int gOwned = 0;        // strings converted and not yet released
CFIndex gMostUnits = -1;
CFAllocatorRef gAllocator = nullptr;
struct ThemeFontUse {
    ThemeFontID font;
    ScriptCode script;
} gUsed;
SInt16 gBaseline = 0;
Point gSize = { 0, 0 };
Point gAsked = { -1, -1 };

std::string TextOf(CFStringRef inString)
{
    char text[1024] = "";
    CFStringGetCString(inString, text, sizeof text, kCFStringEncodingMacRoman);
    return text;
}

// A port with pixels, current for the test.
struct World {
    World()
    {
        constexpr Rect kBounds = { 0, 0, 100, 300 };
        REQUIRE(NewGWorld(&fWorld, 32, &kBounds, nullptr, nullptr, 0) == noErr);
        SetGWorld(fWorld, nullptr);
        EraseRect(&kBounds);
    }
    ~World()
    {
        SetGWorld(nullptr, nullptr);
        DisposeGWorld(fWorld);
    }
    GWorldPtr fWorld = nullptr;
};

CFIndex RoomOf(CFMutableStringRef ioString) // how many units more it takes, up to 2000
{
    const CFIndex before = CFStringGetLength(ioString);
    const std::string many(2000, 'x');
    CFStringAppendCString(ioString, many.c_str(), kCFStringEncodingMacRoman);
    return CFStringGetLength(ioString) - before;
}

} // namespace

LAMPBLACK_INTERPOSE OSStatus DrawThemeTextBox(CFStringRef text, ThemeFontID font, ThemeDrawState state,
                                              Boolean wraps, const Rect* box, SInt16 justification,
                                              void* context)
{
    gDrawn = { *box, font, state, wraps, justification, context, TextOf(text) };
    const OSStatus status = Next<decltype(DrawThemeTextBox)>("DrawThemeTextBox")(text, font, state, wraps,
                                                                                 box, justification, context);
    return gDrawingError ? gDrawingError : status;
}

// A provider of ports may leave a new one current.
LAMPBLACK_INTERPOSE CGrafPtr CreateNewPort()
{
    const CallLog::StCall call("CreateNewPort");
    const CGrafPtr port = Next<CGrafPtr()>("CreateNewPort")();
    SetPort(port);
    return port;
}

LAMPBLACK_WATCH(void, CFStringAppendCString,
                (CFMutableStringRef string, const char* text, CFStringEncoding encoding),
                (string, text, encoding))
LAMPBLACK_WATCH(void, CFStringAppendPascalString,
                (CFMutableStringRef string, ConstStr255Param text, CFStringEncoding encoding),
                (string, text, encoding))

LAMPBLACK_INTERPOSE CFMutableStringRef CFStringCreateMutable(CFAllocatorRef allocator, CFIndex most)
{
    const CallLog::StCall call("CFStringCreateMutable");
    gMostUnits = most;
    gAllocator = allocator;
    if (CallLog::gFailures.contains("CFStringCreateMutable"))
        return nullptr;
    return Next<decltype(CFStringCreateMutable)>("CFStringCreateMutable")(allocator, most);
}

LAMPBLACK_INTERPOSE CFStringRef CFStringCreateWithCString(CFAllocatorRef allocator, const char* text,
                                                          CFStringEncoding encoding)
{
    const CallLog::StCall call("CFStringCreateWithCString");
    if (!gConverts)
        return nullptr;
    gOwned += call.fIsOutermost;
    return Next<decltype(CFStringCreateWithCString)>("CFStringCreateWithCString")(allocator, text, encoding);
}

LAMPBLACK_INTERPOSE CFStringRef CFStringCreateWithPascalString(CFAllocatorRef allocator,
                                                               ConstStr255Param text,
                                                               CFStringEncoding encoding)
{
    const CallLog::StCall call("CFStringCreateWithPascalString");
    if (!gConverts)
        return nullptr;
    gOwned += call.fIsOutermost;
    return Next<decltype(CFStringCreateWithPascalString)>("CFStringCreateWithPascalString")(allocator, text,
                                                                                            encoding);
}

LAMPBLACK_INTERPOSE void CFRelease(CFTypeRef object)
{
    const CallLog::StCall call("CFRelease");
    gOwned -= call.fIsOutermost;
    Next<decltype(CFRelease)>("CFRelease")(object);
}

LAMPBLACK_INTERPOSE OSStatus UseThemeFont(ThemeFontID font, ScriptCode script)
{
    gUsed = { font, script };
    return Next<decltype(UseThemeFont)>("UseThemeFont")(font, script);
}

LAMPBLACK_INTERPOSE OSStatus GetThemeTextDimensions(CFStringRef text, ThemeFontID font, ThemeDrawState state,
                                                    Boolean wraps, Point* ioBounds, SInt16* outBaseline)
{
    gAsked = *ioBounds;
    const OSStatus status = Next<decltype(GetThemeTextDimensions)>("GetThemeTextDimensions")(
        text, font, state, wraps, ioBounds, outBaseline);
    gSize = *ioBounds;
    gBaseline = *outBaseline;
    return status;
}

// First in this program, which has asked for no meta font before.
TEST_CASE("ConvertMetaFontToFontAndSize: its port is made once, and not before it is needed")
{
    const World world;
    CHECK(fgScratchPort == nullptr);
    const CallLog log;
    SInt16 font, size;
    ConvertMetaFontToFontAndSize(3, &font, &size);
    ConvertMetaFontToFontAndSize(-1, &font, &size);
    CHECK(log.Calls() == "CreateNewPort");
    CHECK(IsValidPort(fgScratchPort));
    CHECK(font == GetPortTextFont(fgScratchPort));
    CGrafPtr port = nullptr;
    GetPort(&port);
    CHECK(port == world.fWorld);
}

TEST_CASE("ExitMacOSHelpers: disposes of the port that meta fonts are asked in; a later call makes another")
{
    const World world;
    SInt16 font = 0, size = 0, again = 0;
    ConvertMetaFontToFontAndSize(-2, &font, &size);
    const CGrafPtr scratch = fgScratchPort;
    REQUIRE(IsValidPort(scratch));
    CHECK(ExitMacOSHelpers() == noErr);
    CHECK(!IsValidPort(scratch));
    CHECK(fgScratchPort == nullptr);
    ConvertMetaFontToFontAndSize(-2, &again, &size);
    CHECK(again == font);
    CHECK(IsValidPort(fgScratchPort));
}

TEST_CASE("DrawThemeCString: the box starts a pixel left of the pen and sits on its baseline")
{
    const World world;
    MoveTo(50, 60);
    CHECK(DrawThemeCString("Score", kThemeSmallSystemFont, teJustLeft) == noErr);
    CHECK(gAsked.h == 0);
    CHECK(gAsked.v == 0);
    CHECK(gBaseline < 0);
    CHECK(gDrawn.box.left == 49);
    CHECK(gDrawn.box.right == 49 + gSize.h);
    CHECK(gDrawn.box.bottom == 60 - gBaseline);
    CHECK(gDrawn.box.top == gDrawn.box.bottom - gSize.v);
    CHECK(gDrawn.font == kThemeSmallSystemFont);
    CHECK(gDrawn.state == kThemeStateActive);
    CHECK(!gDrawn.wraps);
    CHECK(gDrawn.justification == teJustLeft);
    CHECK(gDrawn.text == "Score");
    CHECK(gDrawn.context == nullptr);
    Point pen;
    GetPen(&pen);
    CHECK(EqualPt(pen, { 60, 50 }));
}

TEST_CASE("DrawThemeCString: something shows, above and on the baseline")
{
    const World world;
    MoveTo(20, 40);
    REQUIRE(DrawThemeCString("HHHH", kThemeSystemFont, teJustLeft) == noErr);
    int inked = 0, below = 0;
    for (short v = 0; v < 100; ++v)
        for (short h = 0; h < 300; ++h) {
            inked += GetPixel(h, v);
            below += v > 41 && GetPixel(h, v);
        }
    CHECK(inked > 20);
    CHECK(below == 0);
}

TEST_CASE("DrawThemePascalString: is the same call with another kind of string")
{
    const World world;
    MoveTo(50, 60);
    CHECK(DrawThemePascalString(P("Lives"), kThemeSystemFont, teJustRight) == noErr);
    CHECK(gDrawn.text == "Lives");
    CHECK(gDrawn.justification == teJustRight);
    CHECK(gDrawn.box.left == 49);
}

TEST_CASE("DrawThemeCString, DrawThemePascalString: null is paramErr")
{
    const World world;
    CHECK(DrawThemeCString(nullptr, kThemeSystemFont, 0) == paramErr);
    CHECK(DrawThemePascalString(nullptr, kThemeSystemFont, 0) == paramErr);
}

TEST_CASE("DrawThemeCString, DrawThemePascalString: what the theme answers is the answer")
{
    const World world;
    gDrawingError = -30560;
    CHECK(DrawThemeCString("a", kThemeSystemFont, 0) == -30560);
    CHECK(DrawThemePascalString(P("a"), kThemeSystemFont, 0) == -30560);
    gDrawingError = noErr;
}

TEST_CASE("DrawThemeCString, WidthThemeCString: text that does not convert is paramErr, and 0 wide")
{
    const World world;
    gDrawn.text = "nothing";
    gConverts = false;
    SInt16 baseline = 99;
    CHECK(DrawThemeCString("a", kThemeSystemFont, 0) == paramErr);
    CHECK(DrawThemePascalString(P("a"), kThemeSystemFont, 0) == paramErr);
    CHECK(WidthThemeCString("a", kThemeSystemFont, &baseline) == 0);
    CHECK(WidthThemePascalString(P("a"), kThemeSystemFont, &baseline) == 0);
    gConverts = true;
    CHECK(gDrawn.text == "nothing");
}

TEST_CASE("DrawThemeCString, WidthThemeCString: every string that was converted is released")
{
    const World world;
    gOwned = 0;
    DrawThemeCString("a", kThemeSystemFont, 0);
    DrawThemePascalString(P("a"), kThemeSystemFont, 0);
    WidthThemeCString("a", kThemeSystemFont);
    WidthThemePascalString(P("a"), kThemeSystemFont);
    CHECK(gOwned == 0);
}

TEST_CASE("WidthThemeCString: is the width of the theme, with its baseline; null is 0")
{
    const World world;
    SInt16 baseline = 99;
    const SInt16 width = WidthThemeCString("Lampblack", kThemeSystemFont, &baseline);
    CHECK(width > 20);
    CHECK(width == gSize.h);
    CHECK(baseline == gBaseline);
    CHECK(gAsked.h == 0);
    CHECK(WidthThemeCString("Lampblack", kThemeSystemFont) == width);
    CHECK(WidthThemePascalString(P("Lampblack"), kThemeSystemFont) == width);
    CHECK(WidthThemePascalString(P("Lampblack"), kThemeSystemFont, &baseline) == width);
    CHECK(WidthThemeCString(nullptr, kThemeSystemFont) == 0);
    CHECK(WidthThemePascalString(nullptr, kThemeSystemFont, &baseline) == 0);
}

TEST_CASE("WidthThemeCString: the text is in the application's encoding")
{
    const World world;
    WidthThemeCString("\x8A\x9F", kThemeSystemFont); // ä and ü in Mac Roman
    MoveTo(10, 20);
    DrawThemeCString("\x8A\x9F", kThemeSystemFont, 0);
    CHECK(gDrawn.text == "\x8A\x9F");
}

TEST_CASE("CFMutableStringCreateWithCString: room for 255 units, or as many as a longer text has")
{
    const auto create = [](const char* text) {
        return CFMutableStringCreateWithCString(nullptr, text, kCFStringEncodingMacRoman);
    };
    const CFMutableStringRef empty = create(nullptr), word = create("word");
    const std::string longer(300, 'a');
    const CFMutableStringRef full = create(longer.c_str());
    REQUIRE(empty);
    REQUIRE(word);
    REQUIRE(full);
    CHECK(CFStringGetLength(empty) == 0);
    CHECK(TextOf(word) == "word");
    CHECK(CFStringGetLength(full) == 300);
    CHECK(RoomOf(full) == 0);
    CHECK(RoomOf(word) == 251);
    for (const CFMutableStringRef string : { empty, word, full })
        CFRelease(string);
}

TEST_CASE("CFMutableStringCreateWithCString: asks for 255 units or the text's length, of the allocator given")
{
    const auto asked = [](size_t inLength) {
        CFRelease(CFMutableStringCreateWithCString(kCFAllocatorDefault, std::string(inLength, 'a').c_str(),
                                                   kCFStringEncodingMacRoman));
        return gMostUnits;
    };
    CHECK(asked(0) == 255);
    CHECK(asked(254) == 255);
    CHECK(asked(255) == 255);
    CHECK(asked(256) == 256);
    CFRelease(CFMutableStringCreateWithPascalString(kCFAllocatorMalloc, P("a"), kCFStringEncodingMacRoman));
    CHECK(gMostUnits == 255);
    CHECK(gAllocator == kCFAllocatorMalloc);
    CFRelease(CFMutableStringCreateWithCString(kCFAllocatorMalloc, "a", kCFStringEncodingMacRoman));
    CHECK(gAllocator == kCFAllocatorMalloc);
}

TEST_CASE("CFMutableStringCreateWithCString: the text is in the encoding given")
{
    const CFMutableStringRef c = CFMutableStringCreateWithCString(nullptr, "\xC3\xA4", kCFStringEncodingUTF8);
    const CFMutableStringRef pascal =
        CFMutableStringCreateWithPascalString(nullptr, P("\xC3\xA4"), kCFStringEncodingUTF8);
    for (const CFMutableStringRef string : { c, pascal }) {
        REQUIRE(CFStringGetLength(string) == 1);
        CHECK(CFStringGetCharacterAtIndex(string, 0) == 0x00E4);
        CFRelease(string);
    }
}

TEST_CASE("CFMutableStringCreateWithCString: null appends nothing; a string that cannot be made is null")
{
    {
        const CallLog log;
        CFRelease(CFMutableStringCreateWithCString(nullptr, nullptr, kCFStringEncodingMacRoman));
        CFRelease(CFMutableStringCreateWithPascalString(nullptr, nullptr, kCFStringEncodingMacRoman));
        CHECK(log.Calls() == "CFStringCreateMutable CFRelease CFStringCreateMutable CFRelease");
        CHECK(gMostUnits == 255);
    }
    CallLog::gFailures["CFStringCreateMutable"] = 1;
    CHECK(CFMutableStringCreateWithCString(nullptr, "a", kCFStringEncodingMacRoman) == nullptr);
    CHECK(CFMutableStringCreateWithPascalString(nullptr, P("a"), kCFStringEncodingMacRoman) == nullptr);
    CallLog::gFailures.clear();
}

TEST_CASE("CFMutableStringCreateWithPascalString: the text, or an empty string for null")
{
    const CFMutableStringRef word =
        CFMutableStringCreateWithPascalString(nullptr, P("word"), kCFStringEncodingMacRoman);
    const CFMutableStringRef empty =
        CFMutableStringCreateWithPascalString(nullptr, nullptr, kCFStringEncodingMacRoman);
    REQUIRE(word);
    REQUIRE(empty);
    CHECK(TextOf(word) == "word");
    CFStringAppendCString(word, "s", kCFStringEncodingMacRoman);
    CHECK(TextOf(word) == "words");
    CHECK(CFStringGetLength(empty) == 0);
    CFRelease(word);
    CFRelease(empty);
}

TEST_CASE("ConvertMetaFontToFontAndSize: meta fonts are those of the theme")
{
    const World world;
    constexpr ThemeFontID kFonts[] = { kThemeSystemFont, kThemeSmallSystemFont,
                                       kThemeSmallEmphasizedSystemFont, kThemeViewsFont };
    for (SInt16 meta = -1; meta >= -4; --meta) {
        CAPTURE(meta);
        SInt16 font = -99, size = -99;
        CHECK(ConvertMetaFontToFontAndSize(meta, &font, &size) == noErr);
        CHECK(gUsed.font == kFonts[-1 - meta]);
        CHECK(gUsed.script == -1);
        const StPortSaver saver;
        const CGrafPtr port = CreateNewPort();
        {
            const StPortSaver current(port);
            UseThemeFont(kFonts[-1 - meta], smSystemScript);
            CHECK(font == GetPortTextFont(port));
            CHECK(size == GetPortTextSize(port));
        }
        DisposePort(port);
    }
}

TEST_CASE("ConvertMetaFontToFontAndSize: any other number is a font, in the current port's size")
{
    const World world;
    TextSize(17);
    TextFont(4);
    SInt16 font = 0, size = 0;
    CHECK(ConvertMetaFontToFontAndSize(3, &font, &size) == noErr);
    CHECK(font == 3);
    CHECK(size == 17);
    CHECK(ConvertMetaFontToFontAndSize(-5, &font, &size) == noErr);
    CHECK(font == -5);
    CGrafPtr port = nullptr;
    GetPort(&port);
    CHECK(port == world.fWorld);
    CHECK(GetPortTextFont(port) == 4);
    CHECK(GetPortTextSize(port) == 17);
    CHECK(ConvertMetaFontToFontAndSize(-1, nullptr, nullptr) == noErr);
}
