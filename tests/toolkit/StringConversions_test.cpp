// Numbers, dates, codes and versions from and to text, and texts of resources, with what is odd on purpose.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <cstring>
#include <ostream>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

#include "FreshProcess.h"
#include "Interpose.h"
#include "toolkit/SentinelPascal.h"

namespace {

std::vector<std::string> gCalls;
bool gNamesUser = true;
int gUserNames = 0;
LongDateRec gDate;
SInt8 gState = 0;

std::string Grouped(std::string_view inText)
{
    Pascal text(inText);
    CommaPString(text);
    CHECK(text.IsWithin());
    return text.Text();
}

LongDateTime Seconds(const LongDateRec& inDate)
{
    LongDateTime seconds = 0;
    LongDateToSeconds(&inDate, &seconds);
    return seconds;
}

LongDateTime SecondsOf(SInt16 inYear, SInt16 inMonth, SInt16 inDay, SInt16 inHour, SInt16 inMinute)
{
    LongDateRec date;
    std::memset(&date, 0, sizeof date);
    date.ld.year = inYear;
    date.ld.month = inMonth;
    date.ld.day = inDay;
    date.ld.hour = inHour;
    date.ld.minute = inMinute;
    return Seconds(date);
}

LongDateTime Date(const char* inDate)
{
    return StringToSeconds(inDate, "12:00 am");
}

LongDateTime Time(const char* inTime)
{
    return StringToSeconds("1/2/05", inTime);
}

std::string Version(NumVersion inVersion)
{
    Pascal pascal;
    char c[32];
    CHECK(NumVersionToString(&inVersion, pascal) == noErr);
    CHECK(NumVersionToString(&inVersion, c) == noErr);
    CHECK(pascal.Text() == c);
    return c;
}

} // namespace

LAMPBLACK_INTERPOSE void LongDateToSeconds(const LongDateRec* lDate, LongDateTime* lSecs)
{
    gDate = *lDate;
    Next<decltype(LongDateToSeconds)>("LongDateToSeconds")(lDate, lSecs);
}

LAMPBLACK_INTERPOSE CFStringRef CSCopyUserName(Boolean useShortName)
{
    ++gUserNames;
    gCalls.push_back(useShortName ? "short name" : "long name");
    return gNamesUser ? Next<decltype(CSCopyUserName)>("CSCopyUserName")(useShortName) : nullptr;
}

LAMPBLACK_INTERPOSE StringHandle GetString(SInt16 stringID)
{
    gCalls.push_back("GetString");
    return Next<decltype(GetString)>("GetString")(stringID);
}

LAMPBLACK_INTERPOSE Handle Get1Resource(ResType theType, SInt16 theID)
{
    gCalls.push_back("Get1Resource");
    return Next<decltype(Get1Resource)>("Get1Resource")(theType, theID);
}

LAMPBLACK_INTERPOSE void ReleaseResource(Handle theResource)
{
    gCalls.push_back("ReleaseResource");
    Next<decltype(ReleaseResource)>("ReleaseResource")(theResource);
}

LAMPBLACK_INTERPOSE void HSetState(Handle h, SInt8 flags)
{
    gState = flags;
    Next<decltype(HSetState)>("HSetState")(h, flags);
}

// --- Numbers

TEST_CASE("CStringToFloat32: thousandths, with the leading zeros of the fraction lost")
{
    CHECK(CStringToFloat32("2.5") == 2.5f);
    CHECK(CStringToFloat32("2.05") == 2.5f);
    CHECK(CStringToFloat32("1.05") == 1.5f);
    CHECK(CStringToFloat32("2.125") == 2.125f);
    CHECK(CStringToFloat32("2.25") == 2.25f);
    CHECK(CStringToFloat32("-3.25") == -3.25f);
    CHECK(CStringToFloat32("7") == 7.0f);
    CHECK(CStringToFloat32("1.100") == 1.1f);
    CHECK(CStringToFloat32("1.0") == 1.0f);
}

TEST_CASE("CStringToFloat32: a fourth digit is not cut")
{
    CHECK(CStringToFloat32("1.1234") == 2.234f);
}

TEST_CASE("CStringToFloat32: the sign is that of the text, not of the whole part")
{
    CHECK(CStringToFloat32("-0.5") == -0.5f);
    CHECK(CStringToFloat32("  -2.5") == -2.5f);
    CHECK(CStringToFloat32("- 2") == 0.0f);
    CHECK(CStringToFloat32("1.-5") == 0.5f); // a negative fraction counts hundreds of thousandths
    CHECK(CStringToFloat32("1.-25") == -1.5f);
}

TEST_CASE("CStringToFloat32: any one character separates")
{
    CHECK(CStringToFloat32("2,5") == 2.5f);
    CHECK(CStringToFloat32("2 5") == 2.5f);
    CHECK(CStringToFloat32("2x5") == 2.5f);
    CHECK(CStringToFloat32("2xx5") == 2.0f);
}

TEST_CASE("CStringToFloat32: what is no number is 0; numbers beyond any measure do no harm")
{
    CHECK(CStringToFloat32("") == 0.0f);
    CHECK(CStringToFloat32("abc") == 0.0f);
    CHECK(CStringToFloat32(".5") == 0.0f);
    CHECK(CStringToFloat32(nullptr) == 0.0f);
    CHECK(CStringToFloat32("9999999999999999999999.9999999999999999999999") > 9e18f);
    CHECK(CStringToFloat32("-9999999999999999999999") < -9e18f);
    CHECK(CStringToFloat32((std::string(5000, 'x')).c_str()) == 0.0f);
}

TEST_CASE("CommaPString: thousands")
{
    CHECK(Grouped("123") == "123");
    CHECK(Grouped("1234") == "1,234");
    CHECK(Grouped("123456") == "123,456");
    CHECK(Grouped("1234567") == "1,234,567");
    CHECK(Grouped("-1234") == "-1,234");
    CHECK(Grouped("-123") == "-123");
    CHECK(Grouped("") == "");
}

TEST_CASE("CommaPString: anything but a digit starts the count anew, a decimal point too")
{
    CHECK(Grouped("1234.5678") == "1,234.5,678");
    CHECK(Grouped("1,234") == "1,234");
    CHECK(Grouped("a1234b56789") == "a1,234b56,789");
    CommaPString(nullptr);
}

TEST_CASE("CommaPString: what passes 255 characters stays within them, with the length left in a byte")
{
    Pascal text(std::string(255, '1'));
    CommaPString(text);
    CHECK(text.IsWithin());
    CHECK(text.fBytes[0] == ((255 + 84) & 0xFF));
    CHECK(text.fBytes[4] == ',');
    CHECK(text.fBytes[255] == '1');
    CHECK(text.fBytes[252] == ',');
    CHECK(Grouped(std::string(191, '1')).size() == 191 + 63);
}

TEST_CASE("CommaString: a C string in place")
{
    char text[16] = "1234567";
    CommaString(text);
    CHECK(std::string(text) == "1,234,567");
    CommaString(nullptr);
}

// --- Dates

TEST_CASE("StringToSeconds: a date and an hour of the afternoon")
{
    CHECK(StringToSeconds("1/2/05", "3:04 pm") == SecondsOf(2005, 1, 2, 15, 4));
    CHECK(gDate.ld.hour == 15);
    CHECK(gDate.ld.era == 0);
    CHECK(gDate.ld.second == 0);
    CHECK(StringToSeconds("12/31/1999", "12:00 am") == SecondsOf(1999, 12, 31, 0, 0));
    CHECK(StringToSeconds("12/1/05", "11:59 PM") == SecondsOf(2005, 12, 1, 23, 59));
    CHECK(StringToSeconds("12/1/05", "9:07 ") == SecondsOf(2005, 12, 1, 9, 7));
}

TEST_CASE("StringToSeconds: the Pascal form")
{
    CHECK(StringToSeconds(Pascal("1/2/05"), Pascal("3:04 pm")) == SecondsOf(2005, 1, 2, 15, 4));
    CHECK(StringToSeconds(Pascal("1/2/05"), static_cast<ConstStr255Param>(nullptr)) == 0);
}

TEST_CASE("StringToSeconds: a month of two digits begins with 1, whatever is written")
{
    CHECK(Date("10/2/05") == SecondsOf(2005, 10, 2, 0, 0));
    Date("09/2/05");
    CHECK(gDate.ld.month == 19);
}

TEST_CASE("StringToSeconds: day and one-digit month are passed on as they are")
{
    Date("0/99/05");
    CHECK(gDate.ld.month == 0);
    CHECK(gDate.ld.day == 99);
    Date("x/y/05");
    CHECK(gDate.ld.month == 'x' - '0');
    CHECK(gDate.ld.day == 'y' - '0');
}

TEST_CASE("StringToSeconds: years")
{
    CHECK(Date("1/2/00") == 0);
    CHECK(Date("1/2/01") == 0);
    CHECK(Date("1/2/02") == SecondsOf(2002, 1, 2, 0, 0));
    CHECK(Date("1/2/99") == SecondsOf(2099, 1, 2, 0, 0));
    CHECK(Date("1/2/100") == SecondsOf(100, 1, 2, 0, 0));
    CHECK(Date("1/2/2100") == SecondsOf(2100, 1, 2, 0, 0));
    CHECK(Date("1/2/2101") == 0);
    CHECK(Date("1/2/-5") == 0);
    CHECK(Date("1/2/67541") == SecondsOf(2005, 1, 2, 0, 0)); // 16 bits of it
    CHECK(Date("1/2/99999999999999999999") == 0);
}

TEST_CASE("StringToSeconds: dates of another shape")
{
    for (const char* date :
         { "2-1-05", "", "1", "1/", "1/2", "1/2/", "12", "12/", "123/1/05", "1/234/05", "//" })
        CHECK(Date(date) == 0);
    CHECK(Date(nullptr) == 0);
    CHECK(StringToSeconds("1/2/05", static_cast<const char*>(nullptr)) == 0);
}

TEST_CASE("StringToSeconds: noon is handed on as hour 24, midnight as hour 0")
{
    CHECK(Time("12:30 pm") == SecondsOf(2005, 1, 3, 0, 30));
    CHECK(gDate.ld.hour == 24);
    Time("12:30 am");
    CHECK(gDate.ld.hour == 0);
    Time("11:30 x");
    CHECK(gDate.ld.hour == 11);
}

TEST_CASE("StringToSeconds: hours and minutes out of range")
{
    CHECK(StringToSeconds("12/1/05", "13:00 pm") == 0);
    CHECK(Time("0:30 am") == 0);
    CHECK(Time("3:60 pm") == 0);
    CHECK(Time("3:59 pm") != 0);
    CHECK(Time("99:00 am") == 0);
}

TEST_CASE("StringToSeconds: times of another shape")
{
    for (const char* time :
         { "", "3", "3:", "3:0", "3:04", "3:04pm", "3:4 pm", "12", "12:", "123:04 pm", "3.04 pm" })
        CHECK(Time(time) == 0);
}

// --- Four-character codes

TEST_CASE("OSTypeToCString, OSTypeToPString, CStringToOSType: each the other's inverse, as memory has it")
{
    OSType type = 0;
    std::memcpy(&type, "GAME", 4);
    char c[5];
    OSTypeToCString(type, c);
    CHECK(std::string(c) == "GAME");
    Pascal pascal;
    OSTypeToPString(type, pascal);
    CHECK(pascal.Text() == "GAME");
    CHECK(CStringToOSType("GAME") == type);
    CHECK(CStringToOSType("GAMES") == type);
    OSTypeToCString(0, c);
    CHECK(std::memcmp(c, "\0\0\0\0\0", 5) == 0);
    OSTypeToCString(type, nullptr);
    OSTypeToPString(type, nullptr);
}

TEST_CASE("CStringToOSType: short strings are padded with spaces; null is 0")
{
    const auto bytes = [](const char* inText) {
        char text[5];
        OSTypeToCString(CStringToOSType(inText), text);
        return std::string(text);
    };
    CHECK(bytes("a") == "a   ");
    CHECK(bytes("ab") == "ab  ");
    CHECK(bytes("abc") == "abc ");
    CHECK(CStringToOSType(nullptr) == 0);
}

TEST_CASE("CStringToOSType: an empty string gives what lies behind its zero byte, on the same page")
{
    const char text[] = { 0, 'x', 'y', 'z' };
    OSType type = CStringToOSType(text);
    CHECK(std::memcmp(&type, text, sizeof type) == 0);
    char code[5];
    OSTypeToCString(type, code);
    CHECK(CStringToOSType(code) == type);
    // A zero byte that is the last before memory that nobody may read.
    const size_t page = (size_t)getpagesize();
    void* const pages = mmap(nullptr, 2 * page, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    REQUIRE(pages != MAP_FAILED);
    char* const last = static_cast<char*>(pages) + page - 1;
    *last = 0;
    REQUIRE(mprotect(last + 1, page, PROT_NONE) == 0);
    CHECK(CStringToOSType(last) == 0);
    munmap(pages, 2 * page);
}

// --- Versions

TEST_CASE("NumVersionToString: stages, and parts that are left out")
{
    CHECK(Version({ 0x01, 0x00, 0x80, 0x00 }) == "1.0");
    CHECK(Version({ 0x01, 0x20, 0x80, 0x07 }) == "1.2");
    CHECK(Version({ 0x01, 0x00, 0x40, 0x03 }) == "1.0a3");
    CHECK(Version({ 0x01, 0x23, 0x60, 0x04 }) == "1.2.3b4");
    CHECK(Version({ 0x01, 0x03, 0x20, 0x00 }) == "1.0.3d0");
    CHECK(Version({ 0x01, 0x00, 0x55, 0x01 }) == "1.0?1");
}

TEST_CASE("NumVersionToString: the first and last number plainly, not as binary-coded decimals")
{
    CHECK(Version({ 0x10, 0x00, 0x60, 0x12 }) == "16.0b18");
    CHECK(Version({ 0xFF, 0xFF, 0x00, 0xFF }) == "255.15.15?255");
}

TEST_CASE("NumVersionToString: null")
{
    const NumVersion version = { 1, 0, 0x80, 0 };
    Pascal text("old");
    char c[8] = "old";
    CHECK(NumVersionToString(nullptr, text) == paramErr);
    CHECK(NumVersionToString(nullptr, c) == paramErr);
    CHECK(NumVersionToString(&version, static_cast<unsigned char*>(nullptr)) == paramErr);
    CHECK(NumVersionToString(&version, static_cast<char*>(nullptr)) == paramErr);
    CHECK(text.Text() == "old");
    CHECK(std::string(c) == "old");
}

TEST_CASE("VersionCompare: field by field, the first difference decides")
{
    const NumVersion version = { 0x12, 0x34, 0x60, 0x45 }; // 12.3.4b45
    CHECK(VersionCompare(&version, 12, 3, 4, 0x60, 45) == 0);
    CHECK(VersionCompare(&version, 13, 0, 0, 0, 0) == -1);
    CHECK(VersionCompare(&version, 11, 99, 99, 0x80, 99) == 1);
    CHECK(VersionCompare(&version, 12, 4, 0, 0, 0) == -1);
    CHECK(VersionCompare(&version, 12, 3, 3, 0x80, 99) == 1);
    CHECK(VersionCompare(&version, 12, 3, 4, 0x80, 0) == -1);
    CHECK(VersionCompare(&version, 12, 3, 4, 0x40, 99) == 1);
    CHECK(VersionCompare(&version, 12, 3, 4, 0x60, 46) == -1);
    CHECK(VersionCompare(&version, 12, 3, 4, 0x60, -1) == 1);
    CHECK(VersionCompare(nullptr, 1, 2, 3, 4, 5) == 0);
}

TEST_CASE("VersionCompare: two records, a null one being 0.0 final")
{
    const NumVersion older = { 0x09, 0x99, 0x80, 0x99 }, newer = { 0x10, 0x00, 0x20, 0x01 };
    const NumVersion none = { 0, 0, 0x80, 0 }, beta = { 0, 0, 0x60, 0 };
    CHECK(VersionCompare(&older, &newer) == -1);
    CHECK(VersionCompare(&newer, &older) == 1);
    CHECK(VersionCompare(&older, &older) == 0);
    CHECK(VersionCompare(&none, nullptr) == 0);
    CHECK(VersionCompare(&beta, nullptr) == -1);
    CHECK(VersionCompare(nullptr, &older) == 0);
}

TEST_CASE("VersionCompareToCurrentFile: 'vers' 1 of the current file, released again")
{
    gCalls.clear();
    CHECK(VersionCompareToCurrentFile(1, 2, 3, 0x60, 45) == 0);
    CHECK(gCalls == std::vector<std::string>{ "Get1Resource", "ReleaseResource" });
    CHECK(VersionCompareToCurrentFile(1, 2, 4, 0, 0) == -1);
    CHECK(VersionCompareToCurrentFile(1, 2, 3, 0x40, 0) == 1);
    const SInt16 saved = CurResFile();
    UseResFile(0); // the system's, which has none
    CHECK(VersionCompareToCurrentFile(0, 0, 0, 0, 0) == -1);
    UseResFile(saved);
}

// --- Strings from resources

TEST_CASE("GetCString, GetPascalString: a 'STR ' resource")
{
    char c[256];
    Pascal pascal;
    CHECK(GetCString(128, c) == noErr);
    CHECK(std::string(c) == "Hello");
    CHECK(GetPascalString(128, pascal, true) == noErr);
    CHECK(pascal.Text() == "Hello");
    CHECK(GetPascalString(131, pascal, false) == noErr);
    CHECK(pascal.Text() == std::string("A\0BCD", 5));
}

TEST_CASE("GetPascalString: all files by GetString, the current one by Get1Resource")
{
    Pascal text;
    gCalls.clear();
    GetPascalString(128, text, true);
    REQUIRE(!gCalls.empty());
    CHECK(gCalls[0] == "GetString");
    gCalls.clear();
    GetPascalString(128, text, false);
    CHECK(gCalls == std::vector<std::string>{ "Get1Resource" });
    const SInt16 saved = CurResFile();
    UseResFile(0);
    CHECK(GetPascalString(128, text, false) == paramErr);
    UseResFile(saved);
}

TEST_CASE("GetCString, GetPascalString: no such resource leaves an empty string")
{
    char c[] = "old";
    Pascal pascal("old");
    CHECK(GetCString(999, c) == paramErr);
    CHECK(GetPascalString(999, pascal, true) == paramErr);
    CHECK(std::string(c).empty());
    CHECK(pascal.Text().empty());
    CHECK(GetCString(128, nullptr) == paramErr);
    CHECK(GetPascalString(128, nullptr, true) == paramErr);
}

TEST_CASE("GetCString: a resource shorter than its length byte says ends where it ends")
{
    char c[256];
    CHECK(GetCString(129, c) == noErr);
    CHECK(std::string(c) == "Hi");
    CHECK(GetCString(130, c) == noErr);
    CHECK(std::string(c).empty());
}

TEST_CASE("GetCString: the handle's state is as before")
{
    char c[256];
    const Handle string = GetResource('STR ', 128);
    for (const bool isPurgeable : { false, true }) {
        HNoPurge(string);
        if (isPurgeable)
            HPurge(string);
        const SInt8 state = HGetState(string);
        gState = ~state;
        GetCString(128, c);
        CHECK(gState == state);
        CHECK(HGetState(string) == state);
    }
    HNoPurge(string);
}

TEST_CASE("GetUserNameMachineName: the short name, asked for once; the machine's name is left alone")
{
    CHECK(InFreshProcess([] {
              Pascal user, machine("mine");
              if (GetUserNameMachineName(user, machine) != noErr || machine.Text() != "mine")
                  return 1;
              if (GetUserNameMachineName(user, nullptr) != noErr || user.Text().empty())
                  return 2;
              return gUserNames == 1 && gCalls.back() == "short name" ? 0 : 3;
          }) == 0);
}

TEST_CASE("GetUserNameMachineName: \"You\" when there is no name")
{
    CHECK(InFreshProcess([] {
              gNamesUser = false;
              Pascal user("old");
              const OSErr err = GetUserNameMachineName(user, nullptr);
              GetUserNameMachineName(user, nullptr);
              return err == noErr && user.Text() == "You" && gUserNames == 1 ? 0 : 1;
          }) == 0);
}

TEST_CASE("GetUserNameMachineName: without a user name it asks nobody")
{
    CHECK(InFreshProcess([] {
              Pascal machine("mine");
              const bool right = GetUserNameMachineName(nullptr, machine) == noErr &&
                                 GetUserNameMachineName(nullptr, nullptr) == paramErr;
              return right && gUserNames == 0 && machine.Text() == "mine" ? 0 : 1;
          }) == 0);
}
