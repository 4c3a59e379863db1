// The text calls: settings, widths, drawing, truncation.
#include "FontFamilies.h"
#include "Recorder.h"
#include "TextEngine.h"
#include "TextPainter.h"

#include <Carbon/Fonts.h>
#include <Carbon/MacErrors.h>
#include <foundation/MacRoman.h>

#include <algorithm>
#include <cstring>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

static constexpr uint8_t kEllipsis = 0xC9;
static constexpr uint8_t kSpace = ' ';

using Bytes = std::span<const uint8_t>;

// The port's text settings, or a new port's when none is current.
static constinit TextSettings gNewPortSettings;

static TextSettings& Settings()
{
    PortRecord* port = CurrentPort();
    return port ? port->fText : gNewPortSettings;
}

static Strike& StrikeOf(TextSettings& ioSettings)
{
    if (!ioSettings.strike)
        ioSettings.strike = &StrikeFor(ioSettings.font, ioSettings.size, ioSettings.face);
    return *ioSettings.strike;
}

static Bytes BytesOf(const void* inText, int inFirst, int inCount)
{
    if (!inText || inFirst < 0 || inCount <= 0)
        return {};
    return { static_cast<const uint8_t*>(inText) + inFirst, (size_t)inCount };
}

static Bytes BytesOf(ConstStr255Param inString)
{
    return inString ? BytesOf(inString, 1, inString[0]) : Bytes{};
}

// What SpaceExtra adds to a text with that many spaces.
static int ExtraOf(Fixed inExtra, int inSpaces)
{
    return (int)(((int64_t)inExtra * inSpaces) >> 16);
}

static int WidthOf(Strike& ioStrike, Fixed inExtra, Bytes inText)
{
    int width = ioStrike.WidthOf(inText.data(), inText.size());
    if (inExtra)
        width += ExtraOf(inExtra, (int)std::count(inText.begin(), inText.end(), kSpace));
    return width;
}

static int WidthOf(Bytes inText)
{
    TextSettings& settings = Settings();
    return WidthOf(StrikeOf(settings), settings.spaceExtra, inText);
}

static Box TextBoxAt(Point inPen, int inWidth, const FontInfo& inInfo)
{
    return { inPen.h, inPen.v - inInfo.ascent, inPen.h + inWidth, inPen.v + inInfo.descent };
}

static Box UnderlineAt(Point inPen, int inWidth, int inSize)
{
    const int thickness = std::max(1, inSize / 16);
    return { inPen.h, inPen.v + 1, inPen.h + inWidth, inPen.v + 1 + thickness };
}

static bool ShowsText(PortRecord& ioPort)
{
    return ioPort.fPen.visibility >= 0 && !ioPort.Drawable().IsEmpty();
}

static void DrawBytes(Bytes inText)
{
    PortRecord* port = CurrentPort();
    if (!port || inText.empty())
        return;
    TextSettings& settings = port->fText;
    Strike& strike = StrikeOf(settings);
    const Point pen = port->fPen.location;
    const int width = WidthOf(strike, settings.spaceExtra, inText);
    port->fPen.location.h = Clamped(pen.h + width);
    RecordText(settings, pen, inText);
    if (!ShowsText(*port))
        return;
    TextPainter painter(*port, settings.mode, TextBoxAt(pen, width, strike.Info()));
    int h = pen.h, spaces = 0;
    for (const uint8_t byte : inText) {
        const Glyph& glyph = strike.GlyphOf(byte);
        painter.DrawGlyph(glyph, h + ExtraOf(settings.spaceExtra, spaces), pen.v);
        h += glyph.advance;
        spaces += byte == kSpace;
    }
    if (settings.face & underline)
        painter.Underline(UnderlineAt(pen, width, settings.size));
}

FontInfo InfoOf(const TextFontStyle& inStyle)
{
    return StrikeFor(inStyle.font, inStyle.size, inStyle.face).Info();
}

int WidthOfUtf8(const TextFontStyle& inStyle, std::string_view inText)
{
    Strike& strike = StrikeFor(inStyle.font, inStyle.size, inStyle.face);
    int width = 0;
    for (size_t at = 0; at < inText.size();) {
        const auto byte = (uint8_t)inText[at];
        if (byte < 0x80) {
            width += strike.AdvanceOf(byte); // the same in both encodings
            ++at;
        } else {
            width += strike.GlyphOfCharacter(foundation::NextUtf8(inText, &at)).advance;
        }
    }
    return width;
}

size_t Utf8ThatFits(const TextFontStyle& inStyle, std::string_view inText, int inWidth)
{
    Strike& strike = StrikeFor(inStyle.font, inStyle.size, inStyle.face);
    size_t at = 0;
    for (int width = 0; at < inText.size();) {
        size_t next = at;
        width += strike.GlyphOfCharacter(foundation::NextUtf8(inText, &next)).advance;
        if (width > inWidth)
            break;
        at = next;
    }
    return at;
}

static TextSettings SettingsOf(const TextFontStyle& inStyle, const PortRecord& inPort)
{
    return { inStyle.font, inStyle.size, inStyle.face, inPort.fText.mode, 0, nullptr };
}

static Bytes BytesOf(const std::string& inMacRoman)
{
    return { reinterpret_cast<const uint8_t*>(inMacRoman.data()), inMacRoman.size() };
}

void DrawUtf8(const TextFontStyle& inStyle, std::string_view inText)
{
    PortRecord* port = CurrentPort();
    if (!port || inText.empty())
        return;
    Strike& strike = StrikeFor(inStyle.font, inStyle.size, inStyle.face);
    const Point pen = port->fPen.location;
    const int width = WidthOfUtf8(inStyle, inText);
    port->fPen.location.h = Clamped(pen.h + width);
    if (RecorderOf(port))
        RecordText(SettingsOf(inStyle, *port), pen, BytesOf(foundation::MacRomanFromUtf8(inText)));
    if (!ShowsText(*port))
        return;
    TextPainter painter(*port, port->fText.mode, TextBoxAt(pen, width, strike.Info()));
    int h = pen.h;
    for (size_t at = 0; at < inText.size();) {
        const auto byte = (uint8_t)inText[at];
        const bool plain = byte < 0x80;
        const Glyph& glyph =
            plain ? strike.GlyphOf(byte) : strike.GlyphOfCharacter(foundation::NextUtf8(inText, &at));
        at += plain;
        painter.DrawGlyph(glyph, h, pen.v);
        h += glyph.advance;
    }
    if (inStyle.face & underline)
        painter.Underline(UnderlineAt(pen, width, inStyle.size));
}

// The longest beginning that fits, in bytes.
static size_t BytesThatFit(Strike& ioStrike, Fixed inExtra, Bytes inText, int inWidth)
{
    int width = 0, spaces = 0;
    for (size_t i = 0; i < inText.size(); ++i) {
        width += ioStrike.AdvanceOf(inText[i]);
        spaces += inText[i] == kSpace;
        if (width + ExtraOf(inExtra, spaces) > inWidth)
            return i;
    }
    return inText.size();
}

// The longest end that fits, in bytes.
static size_t EndThatFits(Strike& ioStrike, Bytes inText, int inWidth)
{
    size_t count = 0;
    for (int width = 0; count < inText.size(); ++count) {
        width += ioStrike.AdvanceOf(inText[inText.size() - 1 - count]);
        if (width > inWidth)
            break;
    }
    return count;
}

static short Truncate(int inWidth, uint8_t* ioText, size_t* ioLength, TruncCode inWhere)
{
    const Bytes text(ioText, *ioLength);
    Strike& strike = StrikeOf(Settings());
    const Fixed extra = Settings().spaceExtra;
    if (WidthOf(strike, extra, text) <= inWidth)
        return notTruncated;
    const int room = inWidth - strike.AdvanceOf(kEllipsis);
    if (room < 0)
        return truncErr;
    size_t head = BytesThatFit(strike, extra, text, inWhere == truncMiddle ? room / 2 : room);
    size_t tail = 0;
    if (inWhere == truncMiddle)
        tail = EndThatFits(strike, text, room - WidthOf(strike, extra, text.first(head)));
    std::memmove(ioText + head + 1, ioText + *ioLength - tail, tail);
    ioText[head] = kEllipsis;
    *ioLength = head + 1 + tail;
    return truncated;
}

} // namespace lampblack::quickdraw

void TextFont(short font)
{
    SetPortTextFont(ReferenceOf(CurrentPort()), font);
}

void TextFace(StyleParameter face)
{
    SetPortTextFace(ReferenceOf(CurrentPort()), face);
}

void TextMode(short mode)
{
    SetPortTextMode(ReferenceOf(CurrentPort()), mode);
}

void TextSize(short size)
{
    SetPortTextSize(ReferenceOf(CurrentPort()), size);
}

void SpaceExtra(Fixed extra)
{
    if (PortRecord* port = CurrentPort())
        port->fText.spaceExtra = extra;
}

void DrawChar(CharParameter ch)
{
    const auto byte = (uint8_t)ch;
    DrawBytes({ &byte, 1 });
}

void DrawString(ConstStr255Param s)
{
    DrawBytes(BytesOf(s));
}

void DrawText(const void* textBuf, short firstByte, short byteCount)
{
    DrawBytes(BytesOf(textBuf, firstByte, byteCount));
}

short CharWidth(CharParameter ch)
{
    const auto byte = (uint8_t)ch;
    return Clamped(WidthOf(Bytes{ &byte, 1 }));
}

short StringWidth(ConstStr255Param s)
{
    return Clamped(WidthOf(BytesOf(s)));
}

short TextWidth(const void* textBuf, short firstByte, short byteCount)
{
    return Clamped(WidthOf(BytesOf(textBuf, firstByte, byteCount)));
}

void MeasureText(short count, const void* textAddr, void* charLocs)
{
    if (count < 0 || !textAddr || !charLocs)
        return;
    Strike& strike = StrikeOf(Settings());
    auto* locations = static_cast<SInt16*>(charLocs);
    int width = 0, spaces = 0;
    locations[0] = 0;
    for (const uint8_t byte : BytesOf(textAddr, 0, count)) {
        width += strike.AdvanceOf(byte);
        spaces += byte == kSpace;
        *++locations = Clamped(width + ExtraOf(Settings().spaceExtra, spaces));
    }
}

void GetFontInfo(FontInfo* info)
{
    if (info)
        *info = StrikeOf(Settings()).Info();
}

short TruncString(short width, unsigned char* theString, TruncCode truncWhere)
{
    if (!theString)
        return truncErr;
    size_t length = theString[0];
    const short result = Truncate(width, theString + 1, &length, truncWhere);
    theString[0] = (unsigned char)length;
    return result;
}

short TruncText(short width, Ptr textPtr, short* length, TruncCode truncWhere)
{
    if (!textPtr || !length || *length < 0)
        return truncErr;
    size_t count = (size_t)*length;
    const short result = Truncate(width, reinterpret_cast<uint8_t*>(textPtr), &count, truncWhere);
    *length = (short)count;
    return result;
}

void GetFNum(ConstStr255Param name, short* familyID)
{
    if (familyID)
        *familyID = std::max<short>(0, FMGetFontFamilyFromName(name));
}

void GetFontName(short familyID, Str255 name)
{
    FMGetFontFamilyName(familyID, name);
}

Boolean RealFont(short fontNum, short size)
{
    return size > 0 && !NameOfFamily(fontNum).empty();
}

short GetSysFont(void)
{
    return systemFont;
}

short GetDefFontSize(void)
{
    return 12;
}

short GetAppFont(void)
{
    return kFontIDGeneva;
}

FMFontFamily FMGetFontFamilyFromName(ConstStr255Param name)
{
    return name ? FamilyNamed(lampblack::foundation::Utf8FromPascal(name)) : (FMFontFamily)kInvalidFontFamily;
}

OSStatus FMGetFontFamilyName(FMFontFamily fontFamily, Str255 name)
{
    if (!name)
        return paramErr;
    const std::string found = NameOfFamily(fontFamily);
    lampblack::foundation::PascalFromMacRoman(lampblack::foundation::MacRomanFromUtf8(found), name);
    return found.empty() ? (OSStatus)kFMInvalidFontFamilyErr : (OSStatus)noErr;
}
