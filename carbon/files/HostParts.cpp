// Parts of files beside them: finding, moving, removing.
#include "HostParts.h"

#include "Catalog.h"
#include "ForkHome.h"
#include "ForkLocator.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace lampblack::files {

using std::filesystem::path;

namespace {

bool Exists(const path& inPath)
{
    struct stat status;
    return lstat(inPath.c_str(), &status) == 0;
}

// An empty file counts: it is a sidecar that was just begun.
bool HoldsParts(const path& inPath, OSErr* ioError = nullptr)
{
    MappedFile file;
    struct stat status;
    const bool isThere = lstat(inPath.c_str(), &status) == 0;
    if (isThere && !S_ISREG(status.st_mode))
        return false;
    if (!isThere || !file.Open(inPath)) {
        if (ioError && errno != ENOENT && errno != ENOTDIR)
            *ioError = ErrorOfHost(errno);
        return false;
    }
    return status.st_size == 0 || ReadContainer(file.Contents()).form != Form::None;
}

void Add(const path& inPart, std::vector<path>* ioParts)
{
    if (std::find(ioParts->begin(), ioParts->end(), inPart) == ioParts->end())
        ioParts->push_back(inPart);
}

// A part keeps its way of being beside the file: "._name", "name.rsrc", "%name", ".AppleDouble/name".
path NewPlaceOf(const path& inPart, const path& inFrom, const path& inTo)
{
    const std::string part = inPart.filename(), from = inFrom.filename(), to = inTo.filename();
    const std::string holder = inPart.parent_path().filename();
    const path folder = inTo.parent_path();
    if (holder == ".AppleDouble")
        return folder / holder / to;
    if (part == from + ".rsrc")
        return folder / (to + ".rsrc");
    if (part == "%" + from)
        return folder / ("%" + to);
    const bool isBeside = inPart.parent_path() == inFrom.parent_path();
    return isBeside ? SidecarOf(inTo) : folder / "__MACOSX" / ("._" + to);
}

// For file systems on which a file has one name only.
OSErr CopyFile(const path& inOld, const path& inNew)
{
    MappedFile old;
    struct stat status;
    Replacement copy;
    if (stat(inOld.c_str(), &status) != 0 || !old.Open(inOld))
        return ErrorOfHost(errno);
    OSErr error = copy.Begin(inNew, &status);
    error = error == noErr ? WriteAll(copy.File(), old.Contents(), 0) : error;
    return error == noErr ? copy.PutWhereNothingIs() : error;
}

} // namespace

OSErr PartsBeside(const path& inFile, std::vector<path>* outParts)
{
    std::vector<path>& parts = *outParts;
    struct stat status;
    OSErr error = noErr;
    parts.clear();
    if (lstat(inFile.c_str(), &status) != 0)
        return ErrorOfHost(errno);
    const path sidecar = SidecarOf(inFile), old = inFile.parent_path() / ".AppleDouble" / inFile.filename();
    if (HoldsParts(sidecar, &error))
        Add(sidecar, &parts);
    if (error != noErr || !S_ISREG(status.st_mode))
        return error;
    if (HoldsParts(old, &error))
        Add(old, &parts);
    const LocatedForks forks = LocateForks(inFile);
    for (const path& part : { forks.resourcePath, forks.finderPath })
        if (!part.empty() && part != inFile)
            Add(part, &parts);
    return error == noErr ? ErrorOfSearch(forks) : error;
}

OSErr PartsOnTheMove::LinkOne(const path& inOld, const path& inNew)
{
    std::error_code failed;
    const path folder = inNew.parent_path();
    if (std::filesystem::create_directory(folder, failed))
        fFolder = folder;
    if (IsPartName(inNew.filename().native()) || folder.filename() == ".AppleDouble")
        RemoveLeftPart(inNew);
    const bool isLinked = link(inOld.c_str(), inNew.c_str()) == 0;
    if (!isLinked && errno != EPERM && errno != EOPNOTSUPP && errno != EMLINK)
        return errno == EXDEV ? (OSErr)diffVolErr : ErrorOfHost(errno);
    const OSErr error = isLinked ? (OSErr)noErr : CopyFile(inOld, inNew);
    if (error == noErr) {
        fOld.push_back(inOld);
        fNew.push_back(inNew);
    }
    return error;
}

OSErr PartsOnTheMove::Link(const path& inFrom, const path& inTo)
{
    std::vector<path> parts;
    if (const OSErr error = PartsBeside(inFrom, &parts); error != noErr)
        return error;
    for (const path& part : parts) {
        const OSErr error = LinkOne(part, NewPlaceOf(part, inFrom, inTo));
        if (error != noErr)
            return error;
    }
    // Without a sidecar of its own it must not find one that an earlier file left.
    if (std::find(fNew.begin(), fNew.end(), SidecarOf(inTo)) == fNew.end())
        RemoveLeftPart(SidecarOf(inTo));
    return fNew.empty() ? (OSErr)noErr : FlushFolder(inTo.parent_path());
}

void PartsOnTheMove::Keep()
{
    fNew.clear();
    fFolder.clear();
}

void PartsOnTheMove::Drop()
{
    Keep();
    for (const path& old : fOld)
        unlink(old.c_str());
}

PartsOnTheMove::~PartsOnTheMove()
{
    for (const path& part : fNew)
        unlink(part.c_str());
    if (!fFolder.empty())
        rmdir(fFolder.c_str());
}

OSErr RemoveOtherForks(const path& inFile)
{
    bool hasRemoved = false;
    for (;;) {
        const LocatedForks forks = LocateForks(inFile);
        if (const OSErr error = ErrorOfSearch(forks); error != noErr)
            return error;
        const path& holder = forks.resourcePath;
        if (forks.resourceFork.empty() || holder == inFile || holder == SidecarOf(inFile))
            return hasRemoved ? FlushFolder(inFile.parent_path()) : (OSErr)noErr;
        if (unlink(holder.c_str()) != 0)
            return ErrorOfHost(errno);
        hasRemoved = true;
    }
}

void RemoveLeftPart(const path& inPart)
{
    if (!inPart.empty() && HoldsParts(inPart))
        unlink(inPart.c_str());
    else if (!inPart.empty() && Exists(inPart))
        KeepAside(inPart);
}

void RemoveLeftParts(const path& inFolder)
{
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(inFolder, ignored)) {
        const std::string name = entry.path().filename();
        if (entry.is_symlink(ignored) || !IsPartName(name))
            continue;
        if (entry.is_directory(ignored))
            std::filesystem::remove_all(entry.path(), ignored);
        else if (HoldsParts(entry.path()))
            unlink(entry.path().c_str());
    }
}

} // namespace lampblack::files
