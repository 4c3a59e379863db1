// The environment in which the desktop's libraries start.
#include "Environment.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>

#include <sys/stat.h>

namespace lampblack::host {

namespace {

std::string Value(const char* inName)
{
    const char* value = getenv(inName);
    return value ? value : "";
}

// Folders of XDG_CACHE_HOME belong to their user alone (XDG Base Directory 0.8).
bool MakeFolder(const std::string& inPath)
{
    return mkdir(inPath.c_str(), 0700) == 0 || errno == EEXIST;
}

} // namespace

StVariable::StVariable(const char* inName, const std::string& inValue) : fName(nullptr)
{
    if (!inValue.empty() && !getenv(inName) && setenv(inName, inValue.c_str(), 0) == 0)
        fName = inName;
}

StVariable::~StVariable()
{
    if (fName)
        unsetenv(fName);
}

std::string AddressOfNoBus()
{
    std::error_code error;
    const std::string runtime = Value("XDG_RUNTIME_DIR");
    const bool hasBus = !runtime.empty() && std::filesystem::exists(runtime + "/bus", error);
    return hasBus ? "" : "disabled:";
}

std::string ComposeCacheFolder()
{
    std::error_code error;
    const std::string home = Value("HOME");
    std::string cache = Value("XDG_CACHE_HOME");
    if (home.empty() || std::filesystem::exists(home + "/.compose-cache", error))
        return "";
    if (cache.empty() || cache[0] != '/')
        cache = home + "/.cache";
    const bool made =
        MakeFolder(cache) && MakeFolder(cache + "/lampblack") && MakeFolder(cache + "/lampblack/compose");
    return made ? cache + "/lampblack/compose" : "";
}

} // namespace lampblack::host
