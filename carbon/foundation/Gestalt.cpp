// Gestalt: what the host's control interface overrides, then what the application registered, then what this
// system says of itself (the class of a 10.4 system on an Intel processor).
#include <Carbon/Gestalt.h>

#include <Host.h>

#include <algorithm>
#include <optional>
#include <unistd.h>
#include <unordered_map>

namespace {

struct Answer {
    OSType selector;
    SInt32 value;
};

constexpr SInt32 Bits()
{
    return 0;
}

template <class... Rest>
constexpr SInt32 Bits(int inBit, Rest... inRest)
{
    return (SInt32)(1u << inBit) | Bits(inRest...);
}

// The Control Manager's bits are: present, proxies, hierarchical menu buttons and so on; only those that hold
// here.
constexpr Answer kIdentity[] = {
    { gestaltSystemVersion, 0x1049 },
    { gestaltSystemVersionMajor, 10 },
    { gestaltSystemVersionMinor, 4 },
    { gestaltSystemVersionBugFix, 9 },
    { gestaltVersion, 1 },
    { gestaltCarbonVersion, 0x0160 },
    { gestaltMenuMgrAttr, Bits(gestaltMenuMgrPresent, gestaltMenuMgrAquaLayoutBit) },
    { gestaltAppearanceAttr, Bits(gestaltAppearanceExists) },
    { gestaltAppearanceVersion, 0x0110 },
    { gestaltControlMgrAttr, Bits(gestaltControlMgrPresent) },
    { gestaltControlMgrVersion, 0x0150 },
    { gestaltWindowMgrAttr,
      Bits(gestaltWindowMgrPresent, gestaltHasFloatingWindows, gestaltSheetsAreWindowModalBit) },
    { gestaltDITLExtAttr, Bits(gestaltDITLExtPresent) },
    { gestaltQuickTimeVersion, 0x07048000 },
    { gestaltSpeechAttr, Bits(gestaltSpeechMgrPresent) },
    { gestaltFSAttr, Bits(gestaltFullExtFSDispatching, gestaltHasFSSpecCalls, gestaltFSSupportsHFSPlusVols) },
    { gestaltFindFolderAttr, Bits(gestaltFindFolderPresent) },
    { gestaltQuickdrawVersion, gestaltMacOSXQD },
    { gestaltQuickdrawFeatures, Bits(gestaltHasColor, gestaltHasDeepGWorlds, gestaltHasDirectPixMaps) },
    { gestaltTextEditVersion, 5 },
    { gestaltResourceMgrAttr, Bits(gestaltPartialRsrcs) },
    { gestaltScrapMgrAttr, 0 },
    { gestaltMachineType, 406 }, // a Macintosh without a ROM of its own
    { gestaltNativeCPUtype, gestaltCPUPentium4 },
    { gestaltNativeCPUfamily, gestaltCPUX86 },
    { gestaltSysArchitecture, gestaltIntel },
    { gestaltOSAttr, 0 },
    { gestaltTimeMgrVersion, gestaltExtendedTimeMgr },
};

// A count of bytes as far as a signed 32-bit answer can say it.
SInt32 Clamp(int64_t inBytes)
{
    return (SInt32)std::clamp<int64_t>(inBytes, 0, 0x7FFFFFFF);
}

int64_t PhysicalMemory()
{
    return (int64_t)sysconf(_SC_PHYS_PAGES) * sysconf(_SC_PAGESIZE);
}

// What only this machine knows.
std::optional<SInt32> MachineAnswer(OSType inSelector)
{
    switch (inSelector) {
    case gestaltPhysicalRAMSize:
    case gestaltLogicalRAMSize: return Clamp(PhysicalMemory());
    case gestaltPhysicalRAMSizeInMegabytes: return Clamp(PhysicalMemory() >> 20);
    case gestaltLogicalPageSize: return (SInt32)sysconf(_SC_PAGESIZE);
    default: return std::nullopt;
    }
}

std::optional<SInt32> SystemAnswer(OSType inSelector)
{
    for (const Answer& answer : kIdentity)
        if (answer.selector == inSelector)
            return answer.value;
    return MachineAnswer(inSelector);
}

// What the application changed; no value is a selector that it deleted.
std::unordered_map<OSType, std::optional<SInt32>>& Changes()
{
    static std::unordered_map<OSType, std::optional<SInt32>> changes;
    return changes;
}

std::optional<SInt32> CurrentAnswer(OSType inSelector)
{
    const auto changed = Changes().find(inSelector);
    return changed != Changes().end() ? changed->second : SystemAnswer(inSelector);
}

} // namespace

OSErr Gestalt(OSType selector, SInt32* response)
{
    lampblack::host::Machine(); // from now on it is settled which one this is
    if (!response)
        return paramErr;
    bool fails = false;
    SInt32 value = 0;
    if (lampblack::host::GestaltOverride(selector, &fails, &value)) {
        if (!fails)
            *response = value;
        return fails ? gestaltUndefSelectorErr : noErr;
    }
    const std::optional<SInt32> answer = CurrentAnswer(selector);
    if (answer)
        *response = *answer;
    return answer ? noErr : gestaltUndefSelectorErr;
}

OSErr NewGestaltValue(OSType selector, SInt32 newValue)
{
    if (CurrentAnswer(selector))
        return gestaltDupSelectorErr;
    return SetGestaltValue(selector, newValue);
}

OSErr ReplaceGestaltValue(OSType selector, SInt32 replacementValue)
{
    if (!CurrentAnswer(selector))
        return gestaltUndefSelectorErr;
    return SetGestaltValue(selector, replacementValue);
}

OSErr SetGestaltValue(OSType selector, SInt32 newValue)
{
    Changes()[selector] = newValue;
    return noErr;
}

OSErr DeleteGestaltValue(OSType selector)
{
    if (!CurrentAnswer(selector))
        return gestaltUndefSelectorErr;
    Changes()[selector] = std::nullopt;
    return noErr;
}
