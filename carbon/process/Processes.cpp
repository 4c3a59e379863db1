// The entries of the Process Manager. The one process that it knows is this one.
#include "ProcessFacts.h"

#include <Carbon/MacErrors.h>
#include <Carbon/Processes.h>
#include <Host.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include <unistd.h>

using namespace lampblack;

namespace {

constexpr UInt32 kInfoLengthWithShortPointers = 60; // what callers state who counted four bytes a pointer

// Never one of the three special numbers.
ProcessSerialNumber OwnNumber()
{
    return { 0, 0x10000u + static_cast<UInt32>(getpid()) };
}

bool IsEqual(const ProcessSerialNumber& a, const ProcessSerialNumber& b)
{
    return a.highLongOfPSN == b.highLongOfPSN && a.lowLongOfPSN == b.lowLongOfPSN;
}

// kCurrentProcess spelled out.
ProcessSerialNumber Resolved(const ProcessSerialNumber& inNumber)
{
    return IsEqual(inNumber, { 0, kCurrentProcess }) ? OwnNumber() : inNumber;
}

OSErr CheckOwn(const ProcessSerialNumber* inNumber)
{
    if (!inNumber)
        return paramErr;
    return IsEqual(Resolved(*inNumber), OwnNumber()) ? noErr : procNotFound;
}

UInt32 Ticks(double inSeconds)
{
    return static_cast<UInt32>(static_cast<UInt64>(std::max(inSeconds, 0.0) * 60));
}

UInt32 Bytes(UInt64 inBytes)
{
    return static_cast<UInt32>(std::min<UInt64>(inBytes, 0xFFFFFFFF));
}

void CopyName(StringPtr outName)
{
    const std::string& name = process::ApplicationName();
    outName[0] = static_cast<UInt8>(name.size());
    memcpy(outName + 1, name.data(), name.size());
}

void FillNumbers(ProcessInfoRec& ioInfo)
{
    const process::Usage usage = process::CurrentUsage();
    ioInfo.processNumber = OwnNumber();
    ioInfo.processType = 'APPL';
    ioInfo.processSignature = process::ApplicationSignature();
    ioInfo.processMode = mode32BitCompatible | modeHighLevelEventAware | modeCanBackground |
                         modeNeedSuspendResume | modeDoesActivateOnFGSwitch;
    ioInfo.processLocation = nullptr;
    ioInfo.processSize = Bytes(usage.residentBytes);
    ioInfo.processFreeMem = Bytes(usage.freeBytes);
    ioInfo.processLauncher = { 0, kNoProcess };
    ioInfo.processLaunchDate = Ticks(host::Now() - usage.secondsSinceLaunch);
    ioInfo.processActiveTime = Ticks(usage.processorSeconds);
}

} // namespace

OSErr GetCurrentProcess(ProcessSerialNumber* outNumber)
{
    if (!outNumber)
        return paramErr;
    *outNumber = OwnNumber();
    return noErr;
}

OSErr GetFrontProcess(ProcessSerialNumber* outNumber)
{
    if (!outNumber)
        return paramErr;
    const auto& machine = host::Machine();
    const bool front = !machine.active || machine.active();
    *outNumber = front ? OwnNumber() : ProcessSerialNumber{ 0, kNoProcess };
    return front ? noErr : procNotFound;
}

OSErr SetFrontProcess(const ProcessSerialNumber* inNumber)
{
    if (const OSErr result = CheckOwn(inNumber); result != noErr)
        return result;
    if (host::Machine().activate)
        host::Machine().activate();
    return noErr;
}

OSErr GetNextProcess(ProcessSerialNumber* ioNumber)
{
    if (!ioNumber)
        return paramErr;
    if (IsEqual(*ioNumber, { 0, kNoProcess })) {
        *ioNumber = OwnNumber();
        return noErr;
    }
    if (CheckOwn(ioNumber) != noErr)
        return paramErr;
    *ioNumber = { 0, kNoProcess };
    return procNotFound;
}

OSErr GetProcessInformation(const ProcessSerialNumber* inNumber, ProcessInfoRec* ioInfo)
{
    if (!ioInfo || ioInfo->processInfoLength < kInfoLengthWithShortPointers)
        return paramErr;
    if (const OSErr result = CheckOwn(inNumber); result != noErr)
        return result;
    FillNumbers(*ioInfo);
    if (ioInfo->processName)
        CopyName(ioInfo->processName);
    return ioInfo->processAppSpec ? process::ApplicationSpec(ioInfo->processAppSpec) : OSErr{ noErr };
}

OSStatus GetProcessBundleLocation(const ProcessSerialNumber* inNumber, FSRef* outLocation)
{
    if (!outLocation)
        return paramErr;
    const OSErr result = CheckOwn(inNumber);
    return result == noErr ? process::ApplicationRef(outLocation) : result;
}

OSErr SameProcess(const ProcessSerialNumber* inFirst, const ProcessSerialNumber* inSecond, Boolean* outResult)
{
    if (!inFirst || !inSecond || !outResult)
        return paramErr;
    *outResult = IsEqual(Resolved(*inFirst), Resolved(*inSecond));
    return noErr;
}

OSErr WakeUpProcess(const ProcessSerialNumber* inNumber)
{
    if (const OSErr result = CheckOwn(inNumber); result != noErr)
        return result;
    host::Machine().wake();
    return noErr;
}

OSStatus GetProcessPID(const ProcessSerialNumber* inNumber, pid_t* outPid)
{
    if (!outPid)
        return paramErr;
    if (const OSErr result = CheckOwn(inNumber); result != noErr)
        return result;
    *outPid = getpid();
    return noErr;
}

OSStatus GetProcessForPID(pid_t inPid, ProcessSerialNumber* outNumber)
{
    if (!outNumber)
        return paramErr;
    if (inPid != getpid())
        return procNotFound;
    *outNumber = OwnNumber();
    return noErr;
}

void ExitToShell()
{
    exit(0);
}
