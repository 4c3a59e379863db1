// The application's file by the File Manager, its use of the machine by /proc.
#include "ProcessFacts.h"

#include <Carbon/MacErrors.h>
#include <Host.h>
#include <foundation/MacRoman.h>

#include <cstdio>
#include <cstring>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <unistd.h>

namespace lampblack::process {

namespace {

constexpr size_t kLongestName = 31;

OSStatus SpecOf(const std::filesystem::path& inPath, FSSpec* outSpec)
{
    FSRef ref;
    const OSStatus result = FSPathMakeRef(reinterpret_cast<const UInt8*>(inPath.c_str()), &ref, nullptr);
    return result == noErr ? FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, outSpec, nullptr)
                           : result;
}

// What a file would be called that is not there, in a folder that is.
OSErr SpecOfMissing(const std::filesystem::path& inPath, FSSpec* outSpec)
{
    FSRef folder;
    FSSpec place;
    FSCatalogInfo info;
    OSErr result =
        FSPathMakeRef(reinterpret_cast<const UInt8*>(inPath.parent_path().c_str()), &folder, nullptr);
    if (result == noErr)
        result = FSGetCatalogInfo(&folder, kFSCatInfoNodeID, &info, nullptr, &place, nullptr);
    if (result != noErr)
        return fnfErr;
    const std::string name = foundation::MacRomanFromUtf8(inPath.filename().string()).substr(0, kLongestName);
    Str255 pascal;
    pascal[0] = static_cast<UInt8>(name.size());
    memcpy(pascal + 1, name.data(), name.size());
    result = FSMakeFSSpec(place.vRefNum, static_cast<SInt32>(info.nodeID), pascal, outSpec);
    return result == fnfErr ? static_cast<OSErr>(noErr) : result;
}

// 0 when the file has no creator, or is not there.
OSType CreatorOf(const std::filesystem::path& inPath)
{
    FSSpec spec;
    FInfo info;
    if (SpecOf(inPath, &spec) != noErr || FSpGetFInfo(&spec, &info) != noErr)
        return 0;
    return info.fdCreator == kUnknownType ? 0 : info.fdCreator;
}

OSType FindSignature()
{
    const auto& application = host::CurrentSettings().application;
    if (const OSType creator = CreatorOf(application))
        return creator;
    const OSType creator = CreatorOf(application.string() + ".rsrc");
    return creator ? creator : OSType{ kUnknownType };
}

// The seconds between the boot of the machine and the start of this process.
double LaunchSecond()
{
    std::ifstream file("/proc/self/stat");
    std::string text((std::istreambuf_iterator<char>(file)), {});
    const size_t afterName = text.rfind(')'); // the name itself may hold anything
    if (afterName == std::string::npos)
        return 0;
    std::istringstream fields(text.substr(afterName + 1));
    std::string field;
    for (int i = 3; i < 22; ++i) // proc(5): the 22nd is the start time
        fields >> field;
    double ticks = 0;
    fields >> ticks;
    return ticks / static_cast<double>(sysconf(_SC_CLK_TCK));
}

double SecondsOf(clockid_t inClock)
{
    timespec time = {};
    clock_gettime(inClock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

UInt64 ResidentPages()
{
    UInt64 all = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident;
}

} // namespace

const std::string& ApplicationName()
{
    static const std::string name = [] {
        const std::string file = host::CurrentSettings().application.filename().string();
        return foundation::MacRomanFromUtf8(file).substr(0, kLongestName);
    }();
    return name;
}

OSType ApplicationSignature()
{
    static const OSType signature = FindSignature();
    return signature;
}

OSErr ApplicationSpec(FSSpec* outSpec)
{
    const auto& path = host::CurrentSettings().application;
    const OSErr result = static_cast<OSErr>(SpecOf(path, outSpec));
    // A test may have given an application only its resource file.
    return result == fnfErr ? SpecOfMissing(path, outSpec) : result;
}

OSStatus ApplicationRef(FSRef* outRef)
{
    const auto& path = host::CurrentSettings().application;
    return FSPathMakeRef(reinterpret_cast<const UInt8*>(path.c_str()), outRef, nullptr);
}

Usage CurrentUsage()
{
    static const double launch = LaunchSecond();
    const UInt64 page = static_cast<UInt64>(sysconf(_SC_PAGESIZE));
    Usage usage;
    usage.residentBytes = ResidentPages() * page;
    usage.freeBytes = static_cast<UInt64>(sysconf(_SC_AVPHYS_PAGES)) * page;
    usage.secondsSinceLaunch = SecondsOf(CLOCK_BOOTTIME) - launch;
    usage.processorSeconds = SecondsOf(CLOCK_PROCESS_CPUTIME_ID);
    return usage;
}

} // namespace lampblack::process
