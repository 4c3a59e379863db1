// Capability tests over Gestalt, each with its own cache; see the header for what they answer.
#include "util/SystemChecks.h"

#include <cstring>

namespace {

// Older systems left junk in the high half of an OSErr result, so only the low 16 bits tell of failure.
bool AskGestalt(OSType inSelector, SInt32* outValue)
{
    return static_cast<SInt16>(Gestalt(inSelector, outValue)) == noErr;
}

// The flag goes up before the question, so a failure is remembered as false.
struct BooleanCache {
    bool fInitialized = false;
    bool fAnswer = false;

    bool AtLeast(OSType inSelector, SInt32 inThreshold)
    {
        if (!fInitialized) {
            fInitialized = true;
            SInt32 value = 0;
            fAnswer = AskGestalt(inSelector, &value) && value >= inThreshold;
        }
        return fAnswer;
    }

    bool HasBit(OSType inSelector, int inBit)
    {
        if (!fInitialized) {
            fInitialized = true;
            SInt32 value = 0;
            fAnswer = AskGestalt(inSelector, &value) && (value >> inBit & 1) != 0;
        }
        return fAnswer;
    }
};

struct ReleaseCache {
    SInt32 fResult = -3; // not asked yet

    SInt32 Compare(SInt32 inRelease)
    {
        if (fResult == -3) {
            fResult = -2;
            SInt32 version = 0;
            if (AskGestalt('sysv', &version))
                fResult = version < inRelease ? -1 : version > inRelease;
        }
        return fResult;
    }
};

bool CarbonLibAtLeast(BooleanCache& ioCache, SInt32 inVersion)
{
    return HasMacOSX() || ioCache.AtLeast('cbon', inVersion);
}

} // namespace

bool HasMacOSX()
{
    static BooleanCache cache;
    return cache.AtLeast('sysv', 0x1000);
}

bool HasMacOS9()
{
    static BooleanCache cache;
    return cache.AtLeast('sysv', 0x0900);
}

SInt32 HasMacOSX1004()
{
    static ReleaseCache cache;
    return cache.Compare(0x1004);
}

SInt32 HasMacOSX101()
{
    static ReleaseCache cache;
    return cache.Compare(0x1010);
}

SInt32 HasMacOSX102()
{
    static ReleaseCache cache;
    return cache.Compare(0x1020);
}

SInt32 HasMacOSXPanther()
{
    static ReleaseCache cache;
    return cache.Compare(0x1030);
}

bool HasAqua()
{
    static BooleanCache cache;
    return cache.HasBit('menu', 1);
}

bool HasCarbonLib12()
{
    static BooleanCache cache;
    return HasAqua() || cache.AtLeast('cbon', 0x0120);
}

bool HasCarbonLib131()
{
    static BooleanCache cache;
    return CarbonLibAtLeast(cache, 0x0131);
}

bool HasCarbonLib15()
{
    static BooleanCache cache;
    return CarbonLibAtLeast(cache, 0x0150);
}

bool HasCarbonLib16()
{
    static BooleanCache cache;
    return CarbonLibAtLeast(cache, 0x0160);
}

bool HasQuickTime30()
{
    static BooleanCache cache;
    return cache.AtLeast('qtim', 0x03008000);
}

bool HasQuickTime40()
{
    static BooleanCache cache;
    return cache.AtLeast('qtim', 0x04008000);
}

bool HasQuickTime5()
{
    static BooleanCache cache;
    return cache.AtLeast('qtim', 0x05008000);
}

bool HasSpeechManager()
{
    static BooleanCache cache;
    return cache.HasBit('ttsc', 0);
}

bool HasSpeechRecognition()
{
    static bool firstTime = true;
    static bool answer = false;
    if (firstTime) {
        firstTime = false;
        SInt32 version = 0;
        answer = AskGestalt('srtb', &version) && version > 0x014F;
    }
    return answer;
}

bool HasPowerPC60x()
{
    static bool initialized = false;
    static bool answer = false;
    if (!initialized) {
        initialized = true;
        constexpr UInt32 kProcessors = 0x36D; // bit n: processor 0x101 + n
        SInt32 processor = 0;
        if (AskGestalt('cput', &processor)) {
            const UInt32 index = static_cast<UInt32>(processor) - 0x101u;
            answer = index <= 9 && (kProcessors >> index & 1) != 0;
        }
    }
    return answer;
}

bool HasNetSprockets()
{
    return false;
}

bool HasFeature(OSType inSelector, SInt32 inBit)
{
    SInt32 value = 0;
    return AskGestalt(inSelector, &value) && (static_cast<UInt32>(value) >> (inBit & 31) & 1) != 0;
}

bool HasCatSearch(SInt16 inVolume)
{
    SInt32 value = 0;
    if (!AskGestalt('vers', &value) || !HasFeature('fs  ', 0))
        return false;
    GetVolParmsInfoBuffer volume;
    std::memset(&volume, 0, sizeof volume);
    HParamBlockRec block;
    std::memset(&block, 0, sizeof block);
    block.ioParam.ioNamePtr = nullptr;
    block.ioParam.ioVRefNum = inVolume;
    block.ioParam.ioBuffer = reinterpret_cast<Ptr>(&volume);
    block.ioParam.ioReqCount = sizeof volume;
    if (PBHGetVolParmsSync(&block) != noErr)
        return false;
    return (static_cast<UInt32>(volume.vMAttrib) >> 31 & 1) != 0;
}

bool HasEnoughMemory(Size inBytes)
{
    if (HasAqua())
        return true;
    Size total = 0;
    Size contiguous = 0;
    PurgeSpace(&total, &contiguous);
    return inBytes <= contiguous;
}

bool HasEnoughTempMemory(Size)
{
    return true;
}
