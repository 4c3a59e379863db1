// Capability checks: thresholds, the three-way comparison, what is asked and how often.
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

#include <algorithm>
#include <vector>

#include "FreshProcess.h"
#include "Interpose.h"

namespace {

std::vector<OSType> gAsked;
Size gContiguous = -1;  // what PurgeSpace answers, when not negative
SInt32 gVolumeBits = 0; // vMAttrib of every volume
OSErr gVolumeError = noErr;
SInt16 gAskedVolume = 0;

int TimesAsked(OSType inSelector)
{
    return static_cast<int>(std::count(gAsked.begin(), gAsked.end(), inSelector));
}

// A check's answer on a machine where that selector has that value.
template <typename Check>
int With(OSType inSelector, SInt32 inValue, Check inCheck)
{
    return InFreshProcess([=] {
        lampblack::host::SetGestalt(inSelector, inValue);
        return static_cast<int>(inCheck());
    });
}

template <typename Check>
int Without(OSType inSelector, Check inCheck)
{
    return InFreshProcess([=] {
        lampblack::host::FailGestalt(inSelector);
        return static_cast<int>(inCheck());
    });
}

} // namespace

LAMPBLACK_INTERPOSE OSErr Gestalt(OSType selector, SInt32* response)
{
    gAsked.push_back(selector);
    return Next<decltype(Gestalt)>("Gestalt")(selector, response);
}

LAMPBLACK_INTERPOSE void PurgeSpace(Size* total, Size* contiguous)
{
    Next<decltype(PurgeSpace)>("PurgeSpace")(total, contiguous);
    if (gContiguous >= 0)
        *contiguous = gContiguous;
}

LAMPBLACK_INTERPOSE OSErr PBHGetVolParmsSync(HParmBlkPtr block)
{
    gAskedVolume = block->ioParam.ioVRefNum;
    const OSErr err = Next<decltype(PBHGetVolParmsSync)>("PBHGetVolParmsSync")(block);
    reinterpret_cast<GetVolParmsInfoBuffer*>(block->ioParam.ioBuffer)->vMAttrib = gVolumeBits;
    return gVolumeError != noErr ? gVolumeError : err;
}

// Stands first: nothing has asked for the machine yet.
TEST_CASE("Configure: as often as wanted before the first platform call, refused after it")
{
    void (*const calls[])() = { [] { HasMacOSX(); }, [] { NewHandle(0); }, [] { NewPtr(0); },
                                [] {
                                    GrafPtr port;
                                    GetPort(&port);
                                },
                                [] { GetWindowList(); } };
    for (const auto call : calls) {
        CAPTURE(&call - calls);
        CHECK(InFreshProcess([=] {
                  lampblack::host::Settings settings;
                  settings.screen = lampblack::host::Screen::Headless;
                  const bool before = lampblack::host::Configure(settings);
                  call();
                  return static_cast<int>(before && !lampblack::host::Configure(settings));
              }) == 1);
    }
}

TEST_CASE("HasMacOSXPanther: 0 on exactly 10.3, 1 above, -1 below, -2 when Gestalt fails")
{
    CHECK(With('sysv', 0x1030, HasMacOSXPanther) == 0);
    CHECK(With('sysv', 0x1031, HasMacOSXPanther) == 1);
    CHECK(With('sysv', 0x1029, HasMacOSXPanther) == -1);
    CHECK(Without('sysv', HasMacOSXPanther) == -2);
}

TEST_CASE("HasMacOSX1004, 101, 102: compare with their own release")
{
    CHECK(With('sysv', 0x1004, HasMacOSX1004) == 0);
    CHECK(With('sysv', 0x1003, HasMacOSX1004) == -1);
    CHECK(With('sysv', 0x1010, HasMacOSX101) == 0);
    CHECK(With('sysv', 0x1010, HasMacOSX1004) == 1);
    CHECK(With('sysv', 0x1020, HasMacOSX102) == 0);
    CHECK(With('sysv', 0x1010, HasMacOSX102) == -1);
}

TEST_CASE("HasMacOSXPanther: the answer of the first call lasts")
{
    CHECK(InFreshProcess([] {
              lampblack::host::SetGestalt('sysv', 0x1030);
              HasMacOSXPanther();
              lampblack::host::SetGestalt('sysv', 0x1049);
              return static_cast<int>(HasMacOSXPanther() == 0 && TimesAsked('sysv') == 1);
          }) == 1);
}

TEST_CASE("HasMacOSXPanther: a failure of the first call lasts")
{
    CHECK(InFreshProcess([] {
              lampblack::host::FailGestalt('sysv');
              HasMacOSXPanther();
              lampblack::host::SetGestalt('sysv', 0x1049);
              return static_cast<int>(HasMacOSXPanther());
          }) == -2);
}

TEST_CASE("HasMacOSX, HasMacOS9: at least their release")
{
    CHECK(With('sysv', 0x1000, HasMacOSX) == 1);
    CHECK(With('sysv', 0x0922, HasMacOSX) == 0);
    CHECK(With('sysv', 0x0900, HasMacOS9) == 1);
    CHECK(With('sysv', 0x0861, HasMacOS9) == 0);
    CHECK(Without('sysv', HasMacOSX) == 0);
}

TEST_CASE("HasMacOSX: a failed first question leaves the answer false for good")
{
    CHECK(InFreshProcess([] {
              lampblack::host::FailGestalt('sysv');
              HasMacOSX();
              lampblack::host::SetGestalt('sysv', 0x1049);
              return static_cast<int>(HasMacOSX());
          }) == 0);
}

TEST_CASE("HasAqua: bit 1 of the menu selector")
{
    CHECK(With('menu', 0x2, HasAqua) == 1);
    CHECK(With('menu', 0x1, HasAqua) == 0);
    CHECK(Without('menu', HasAqua) == 0);
}

TEST_CASE("HasCarbonLib16: true on Mac OS X without asking for CarbonLib")
{
    CHECK(InFreshProcess([] {
              lampblack::host::FailGestalt('cbon');
              return static_cast<int>(HasCarbonLib16() && TimesAsked('cbon') == 0);
          }) == 1);
}

TEST_CASE("HasCarbonLib131, 15, 16: CarbonLib's version before Mac OS X")
{
    const auto check = [](SInt32 inVersion, bool (*inCheck)()) {
        return InFreshProcess([=] {
            lampblack::host::SetGestalt('sysv', 0x0922);
            lampblack::host::SetGestalt('cbon', inVersion);
            return static_cast<int>(inCheck());
        });
    };
    CHECK(check(0x0131, HasCarbonLib131) == 1);
    CHECK(check(0x0130, HasCarbonLib131) == 0);
    CHECK(check(0x0150, HasCarbonLib15) == 1);
    CHECK(check(0x0145, HasCarbonLib15) == 0);
    CHECK(check(0x0160, HasCarbonLib16) == 1);
    CHECK(check(0x0150, HasCarbonLib16) == 0);
}

TEST_CASE("HasCarbonLib12: true with Aqua, else by version")
{
    const auto check = [](SInt32 inMenu, SInt32 inVersion) {
        return InFreshProcess([=] {
            lampblack::host::SetGestalt('menu', inMenu);
            lampblack::host::SetGestalt('cbon', inVersion);
            return static_cast<int>(HasCarbonLib12());
        });
    };
    CHECK(check(2, 0x0100) == 1);
    CHECK(check(0, 0x0120) == 1);
    CHECK(check(0, 0x0110) == 0);
}

TEST_CASE("HasQuickTime30, 40, 5: the release version and later")
{
    CHECK(With('qtim', 0x03008000, HasQuickTime30) == 1);
    CHECK(With('qtim', 0x03004000, HasQuickTime30) == 0);
    CHECK(With('qtim', 0x04008000, HasQuickTime40) == 1);
    CHECK(With('qtim', 0x03008000, HasQuickTime40) == 0);
    CHECK(With('qtim', 0x05008000, HasQuickTime5) == 1);
    CHECK(Without('qtim', HasQuickTime5) == 0);
}

TEST_CASE("HasSpeechManager: bit 0; HasSpeechRecognition: from version 1.5.0")
{
    CHECK(With('ttsc', 1, HasSpeechManager) == 1);
    CHECK(With('ttsc', 2, HasSpeechManager) == 0);
    CHECK(With('srtb', 0x0150, HasSpeechRecognition) == 1);
    CHECK(With('srtb', 0x014F, HasSpeechRecognition) == 0);
    CHECK(Without('srtb', HasSpeechRecognition) == 0);
}

TEST_CASE("HasPowerPC60x: the seven processors, 0x102, 0x105 and 0x108 not among them")
{
    for (const SInt32 processor : { 0x101, 0x103, 0x104, 0x106, 0x107, 0x109, 0x10A })
        CHECK(With('cput', processor, HasPowerPC60x) == 1);
    for (const SInt32 processor : { 0x100, 0x102, 0x105, 0x108, 0x10B, 0x10C, 0, -1 })
        CHECK(With('cput', processor, HasPowerPC60x) == 0);
}

TEST_CASE("HasNetSprockets: never")
{
    CHECK_FALSE(HasNetSprockets());
}

TEST_CASE("HasFeature: bit 33 is bit 1, and every call asks")
{
    lampblack::host::SetGestalt('test', 0x2);
    CHECK(HasFeature('test', 1));
    CHECK(HasFeature('test', 33));
    CHECK_FALSE(HasFeature('test', 0));
    lampblack::host::SetGestalt('test', 0x1);
    CHECK(HasFeature('test', 0));
    lampblack::host::SetGestalt('test', SInt32(0x80000000));
    CHECK(HasFeature('test', 31));
    lampblack::host::FailGestalt('test');
    CHECK_FALSE(HasFeature('test', 0));
}

TEST_CASE("HasCatSearch: bit 31 of the volume's attributes, asked each time")
{
    gVolumeBits = SInt32(0x80000000);
    CHECK(HasCatSearch(-1));
    CHECK(gAskedVolume == -1);
    gVolumeBits = 0x7FFFFFFF;
    CHECK_FALSE(HasCatSearch(-1));
    gVolumeBits = SInt32(0x80000000);
    gVolumeError = nsvErr;
    CHECK_FALSE(HasCatSearch(-1));
    gVolumeError = noErr;
}

TEST_CASE("HasCatSearch: false without the file-system selector or its bit 0")
{
    gVolumeBits = SInt32(0x80000000);
    lampblack::host::SetGestalt('fs  ', 2);
    CHECK_FALSE(HasCatSearch(-1));
    lampblack::host::FailGestalt('fs  ');
    CHECK_FALSE(HasCatSearch(-1));
    lampblack::host::SetGestalt('fs  ', 1);
    CHECK(HasCatSearch(-1));
    lampblack::host::FailGestalt('vers');
    CHECK_FALSE(HasCatSearch(-1));
}

TEST_CASE("HasEnoughMemory: always with Aqua, else up to the largest block")
{
    CHECK(InFreshProcess([] {
              lampblack::host::SetGestalt('menu', 0);
              gContiguous = 1000;
              return static_cast<int>(HasEnoughMemory(1000) && !HasEnoughMemory(1001));
          }) == 1);
    CHECK(HasEnoughMemory(Size(1) << 60));
    CHECK(HasEnoughTempMemory(Size(1) << 60));
}
