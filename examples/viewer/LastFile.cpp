#include "LastFile.h"

#include <lampblack/lampblack.h>

#include <climits>

namespace {

constexpr SInt16 kLastFileID = 128;

} // namespace

void RememberFile(const std::filesystem::path& inPath)
{
    FSRef file;
    AliasHandle alias = nullptr;
    if (FSPathMakeRef((const UInt8*)inPath.c_str(), &file, nullptr) != noErr ||
        FSNewAlias(nullptr, &file, &alias) != noErr)
        return;
    if (AddPreferenceResource((Handle)alias, rAliasType, kLastFileID, nullptr) != noErr)
        DisposeHandle((Handle)alias);
}

std::filesystem::path RememberedFile()
{
    const Handle alias = GetPreferenceResource(rAliasType, kLastFileID);
    if (!alias)
        return {};
    FSRef file;
    Boolean wasChanged = false;
    UInt8 path[PATH_MAX] = "";
    if (FSResolveAlias(nullptr, (AliasHandle)alias, &file, &wasChanged) != noErr ||
        FSRefMakePath(&file, path, sizeof path) != noErr)
        path[0] = 0;
    DisposeHandle(alias);
    return (const char*)path;
}
