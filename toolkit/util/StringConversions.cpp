// Numbers, dates, four-character codes and versions from and to text; see the header for what is kept.
#include "util/StringConversions.h"

#include "util/Strings.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

long ScaledFraction(long inFraction)
{
    if (inFraction == 0 || inFraction >= 100)
        return inFraction;
    return inFraction * (inFraction < 10 ? 100 : 10);
}

// Whether the first word begins with a '-'.
bool IsNegative(const char* inText)
{
    return inText[std::strspn(inText, " \t\n\v\f\r")] == '-';
}

// A C string that is read at any place: behind its end there are zero bytes.
class Text {
public:
    explicit Text(const char* inText) : fText(inText) {}

    char operator[](size_t inIndex) const { return inIndex < fText.size() ? fText[inIndex] : '\0'; }
    Text From(size_t inIndex) const { return Text(fText.data() + std::min(inIndex, fText.size())); }
    int Digit(size_t inIndex) const { return (*this)[inIndex] - '0'; }
    int Number() const { return std::atoi(fText.data()); }
    int TwoDigits() const { return ShortNumber({ (*this)[0], (*this)[1], 0 }); }
    int OneDigit() const { return ShortNumber({ (*this)[0], 0, 0 }); }

private:
    static int ShortNumber(std::array<char, 3> inDigits) { return std::atoi(inDigits.data()); }

    std::string_view fText;
};

bool ReadDate(Text inDate, LongDateRec* outDate)
{
    Text rest = inDate.From(2);
    if (inDate[1] == '/') {
        outDate->ld.month = static_cast<SInt16>(inDate.Digit(0));
    } else if (inDate[2] == '/') {
        outDate->ld.month = static_cast<SInt16>(inDate.Digit(1) + 10);
        rest = inDate.From(3);
    } else {
        return false;
    }
    Text yearText = rest.From(2);
    if (rest[1] == '/') {
        outDate->ld.day = static_cast<SInt16>(rest.Digit(0));
    } else if (rest[2] == '/') {
        outDate->ld.day = static_cast<SInt16>(rest.Digit(0) * 10 + rest.Digit(1));
        yearText = rest.From(3);
    } else {
        return false;
    }
    const auto year = static_cast<SInt16>(yearText.Number());
    outDate->ld.year = static_cast<SInt16>(year <= 99 ? year + 2000 : year);
    return year >= 2 && year <= 2100;
}

bool ReadTime(Text inTime, LongDateRec* outDate)
{
    const size_t digits = inTime[1] == ':' ? 1 : 2;
    if (inTime[digits] != ':')
        return false;
    const int hour = digits == 1 ? inTime.OneDigit() : inTime.TwoDigits();
    const Text rest = inTime.From(digits + 1);
    const int minute = rest.TwoDigits();
    if (hour < 1 || hour > 12 || rest[2] != ' ' || minute > 59)
        return false;
    const bool afternoon = rest[3] == 'p' || rest[3] == 'P';
    outDate->ld.hour = static_cast<SInt16>(afternoon ? hour + 12 : hour % 12);
    outDate->ld.minute = static_cast<SInt16>(minute);
    return true;
}

int Decimal(UInt8 inBinaryCoded)
{
    return (inBinaryCoded >> 4) * 10 + (inBinaryCoded & 15);
}

using VersionFields = std::array<int, 5>; // major, minor, bug, stage, non-release

VersionFields FieldsOf(const NumVersion& inVersion)
{
    return { Decimal(inVersion.majorRev), inVersion.minorAndBugRev >> 4, inVersion.minorAndBugRev & 15,
             inVersion.stage, Decimal(inVersion.nonRelRev) };
}

SInt16 Compare(const VersionFields& inA, const VersionFields& inB)
{
    return static_cast<SInt16>((inA > inB) - (inA < inB));
}

// The code that begins with a string's zero byte. What follows it may be anybody's, but is on the same page of
// memory and so can be read; of another page zeros are taken.
__attribute__((no_sanitize("address"))) OSType CodeBehindZero(const char* inZero)
{
    constexpr uintptr_t kPage = 4096;
    const uintptr_t onPage = kPage - reinterpret_cast<uintptr_t>(inZero) % kPage;
    const volatile char* const memory = inZero;
    char bytes[sizeof(OSType)] = {};
    for (size_t i = 0; i < std::min<size_t>(sizeof bytes, onPage); ++i)
        bytes[i] = memory[i];
    return std::bit_cast<OSType>(bytes);
}

char StageLetter(UInt8 inStage)
{
    switch (inStage) {
    case 0x20: return 'd';
    case 0x40: return 'a';
    case 0x60: return 'b';
    default: return '?';
    }
}

} // namespace

Float32 CStringToFloat32(const char* inText)
{
    if (!inText)
        return 0;
    long whole = 0;
    long fraction = 0;
    char separator = 0;
    std::sscanf(inText, "%ld%c%ld", &whole, &separator, &fraction);
    // In double, where every number that a float can tell apart has its place and none overflows.
    const double thousandths =
        std::abs(static_cast<double>(whole)) * 1000 + static_cast<double>(ScaledFraction(fraction));
    return static_cast<Float32>(static_cast<double>(static_cast<Float32>(thousandths)) / 1000 *
                                (IsNegative(inText) ? -1 : 1));
}

void CommaPString(StringPtr ioText)
{
    if (!ioText || ioText[0] < 4)
        return;
    // Grouped beside the string, with room for every comma; what a Str255 does not hold is not copied back.
    unsigned char text[256 + 85];
    size_t length = ioText[0];
    std::memcpy(text, ioText, length + 1);
    const auto isDigit = [&](size_t inIndex) { return CharacterIsNumber(static_cast<char>(text[inIndex])); };
    int count = 3;
    for (size_t i = length; i > 1; --i) {
        if (!isDigit(i)) {
            count = 3;
        } else if (--count == 0) {
            count = 3;
            if (isDigit(i - 1)) {
                std::memmove(text + i + 1, text + i, length - i + 1);
                text[i] = ',';
                ++length;
            }
        }
    }
    std::memcpy(ioText + 1, text + 1, std::min<size_t>(length, 255));
    ioText[0] = static_cast<unsigned char>(length);
}

void CommaString(char* ioText)
{
    if (!ioText)
        return;
    Str255 text;
    CopyCStringToPascal(ioText, text);
    CommaPString(text);
    CopyPascalStringToC(text, ioText);
}

LongDateTime StringToSeconds(const char* inDate, const char* inTime)
{
    LongDateRec date;
    std::memset(&date, 0, sizeof date);
    if (!inDate || !inTime || !ReadDate(Text(inDate), &date) || !ReadTime(Text(inTime), &date))
        return 0;
    LongDateTime seconds = 0;
    LongDateToSeconds(&date, &seconds);
    return seconds;
}

LongDateTime StringToSeconds(ConstStr255Param inDate, ConstStr255Param inTime)
{
    if (!inDate || !inTime)
        return 0;
    char date[256];
    char time[256];
    CopyPascalStringToC(inDate, date);
    CopyPascalStringToC(inTime, time);
    return StringToSeconds(date, time);
}

void OSTypeToCString(OSType inType, char* outText)
{
    if (!outText)
        return;
    std::memcpy(outText, &inType, sizeof inType);
    outText[sizeof inType] = 0;
}

void OSTypeToPString(OSType inType, StringPtr outText)
{
    if (!outText)
        return;
    outText[0] = sizeof inType;
    std::memcpy(outText + 1, &inType, sizeof inType);
}

OSType CStringToOSType(const char* inText)
{
    if (!inText)
        return 0;
    if (!*inText)
        return CodeBehindZero(inText);
    char bytes[sizeof(OSType)] = { ' ', ' ', ' ', ' ' };
    std::memcpy(bytes, inText, strnlen(inText, sizeof bytes));
    OSType type = 0;
    std::memcpy(&type, bytes, sizeof type);
    return type;
}

OSErr NumVersionToString(const NumVersion* inVersion, unsigned char* outText)
{
    char text[32];
    if (!outText)
        return paramErr;
    const OSErr err = NumVersionToString(inVersion, text);
    if (err == noErr)
        CopyCStringToPascal(text, outText);
    return err;
}

OSErr NumVersionToString(const NumVersion* inVersion, char* outText)
{
    if (!inVersion || !outText)
        return paramErr;
    std::string text =
        std::to_string(inVersion->majorRev) + '.' + std::to_string(inVersion->minorAndBugRev >> 4);
    if (const int bug = inVersion->minorAndBugRev & 15)
        text += '.' + std::to_string(bug);
    if (inVersion->stage != 0x80)
        text += StageLetter(inVersion->stage) + std::to_string(inVersion->nonRelRev);
    std::memcpy(outText, text.c_str(), text.size() + 1);
    return noErr;
}

SInt16 VersionCompare(const NumVersion* inVersion, SInt16 inMajor, SInt16 inMinor, SInt16 inBug,
                      SInt16 inStage, SInt16 inNonRelease)
{
    if (!inVersion)
        return 0;
    return Compare(FieldsOf(*inVersion), { inMajor, inMinor, inBug, inStage, inNonRelease });
}

SInt16 VersionCompare(const NumVersion* inA, const NumVersion* inB)
{
    constexpr NumVersion kNone = { 0, 0, 0x80, 0 };
    return inA ? Compare(FieldsOf(*inA), FieldsOf(inB ? *inB : kNone)) : static_cast<SInt16>(0);
}

SInt16 VersionCompareToCurrentFile(SInt16 inMajor, SInt16 inMinor, SInt16 inBug, SInt16 inStage,
                                   SInt16 inNonRelease)
{
    const Handle resource = Get1Resource('vers', 1);
    if (!resource)
        return -1;
    NumVersion version = {};
    const bool isWhole = GetHandleSize(resource) >= static_cast<Size>(sizeof version);
    if (isWhole)
        std::memcpy(&version, *resource, sizeof version);
    ReleaseResource(resource);
    return isWhole ? VersionCompare(&version, inMajor, inMinor, inBug, inStage, inNonRelease)
                   : static_cast<SInt16>(-1);
}
