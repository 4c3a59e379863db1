#include "Resources.h"

#include <foundation/MacRoman.h>
#include <resources/ResourceFork.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <map>
#include <sys/stat.h>
#include <unistd.h>

namespace lampblack::rsrc {

namespace {

[[noreturn]] void FailToWrite(const std::string& inPath)
{
    throw std::runtime_error(inPath + ": cannot write: " + std::strerror(errno));
}

bool WriteAll(int inFile, Bytes inContents)
{
    while (!inContents.empty()) {
        const ssize_t written = write(inFile, inContents.data(), inContents.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        inContents = inContents.subspan((size_t)written);
    }
    return true;
}

// A new file keeps to the user's mask, one that replaces another keeps the other's rights.
mode_t ModeFor(const std::string& inPath)
{
    struct stat info;
    if (stat(inPath.c_str(), &info) == 0)
        return info.st_mode & 0777;
    const mode_t mask = umask(0);
    umask(mask);
    return 0666 & ~mask;
}

void SyncFolder(const std::string& inPath)
{
    const size_t slash = inPath.rfind('/');
    const std::string folder = slash == std::string::npos ? "." : inPath.substr(0, slash + 1);
    const int file = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return;
    fsync(file);
    close(file);
}

// The file that a chain of links leads to, so that the last link stays.
std::string TargetOf(const std::string& inPath)
{
    char* target = realpath(inPath.c_str(), nullptr);
    const std::string path = target ? target : inPath;
    std::free(target);
    return path;
}

// A name in the same folder that listings hide.
std::string TemporaryFor(const std::string& inPath)
{
    const size_t slash = inPath.rfind('/');
    return (slash == std::string::npos ? std::string() : inPath.substr(0, slash + 1)) + ".rsrc-XXXXXX";
}

void WriteDirectly(const std::string& inPath, Bytes inContents)
{
    const int file = open(inPath.c_str(), O_WRONLY | O_CLOEXEC);
    const bool isWritten = file >= 0 && WriteAll(file, inContents);
    const int failure = errno;
    if (file >= 0)
        close(file);
    errno = failure;
    if (!isWritten)
        FailToWrite(inPath);
}

} // namespace

std::string TypeText(OSType inType)
{
    const char code[] = { (char)(inType >> 24), (char)(inType >> 16), (char)(inType >> 8), (char)inType };
    return foundation::Utf8FromMacRoman({ code, 4 });
}

bool TypeFromText(std::string_view inUtf8, OSType* outType)
{
    std::string code;
    if (!foundation::MacRomanFromUtf8Exactly(inUtf8, &code) || code.empty() || code.size() > 4)
        return false;
    code.resize(4, ' ');
    *outType = foundation::LoadBE32(code.data());
    return true;
}

std::string KeyText(OSType inType, SInt16 inID)
{
    return "'" + TypeText(inType) + "' (" + std::to_string(inID) + ")";
}

bool ReadFork(Bytes inFork, std::vector<Resource>* ioResources, std::vector<std::string>* outProblems)
{
    resources::ResourceFork fork;
    if (const char* problem = fork.Open(inFork)) {
        outProblems->push_back(problem);
        return false;
    }
    fork.ForEach([&](resources::ResourceRef inRef) {
        const resources::ResourceInfo info = fork.Info(inRef);
        Bytes data;
        if (!fork.Data(inRef, &data)) {
            outProblems->push_back(KeyText(info.type, info.id) + " is cut off");
            return;
        }
        ioResources->push_back({ info.type,
                                 info.id,
                                 info.attributes,
                                 info.hasName,
                                 std::string(info.name),
                                 std::vector<uint8_t>(data.begin(), data.end()),
                                 {} });
    });
    return true;
}

void Merge(std::vector<Resource> inLater, std::vector<Resource>* ioResources)
{
    std::map<std::pair<OSType, SInt16>, size_t> earlier;
    for (size_t i = 0; i < ioResources->size(); ++i)
        earlier.try_emplace({ (*ioResources)[i].type, (*ioResources)[i].id }, i);
    for (Resource& resource : inLater) {
        const auto same = earlier.find({ resource.type, resource.id });
        if (same == earlier.end()) {
            ioResources->push_back(std::move(resource));
            continue;
        }
        (*ioResources)[same->second] = std::move(resource);
        earlier.erase(same); // a file may hold a key twice, and then keeps both
    }
}

std::vector<uint8_t> BuildFork(const std::vector<Resource>& inResources, UInt16 inFileAttributes)
{
    resources::ForkBuilder builder;
    builder.SetAttributes(inFileAttributes);
    for (const Resource& resource : inResources)
        builder.Add({ resource.type, resource.id, resource.attributes, resource.hasName, resource.name,
                      resource.data });
    std::vector<uint8_t> fork;
    if (const char* problem = builder.Build(&fork))
        throw std::runtime_error(problem);
    return fork;
}

void WriteFile(const std::string& inPath, Bytes inContents)
{
    struct stat info;
    if (stat(inPath.c_str(), &info) == 0 && !S_ISREG(info.st_mode) && !S_ISDIR(info.st_mode))
        return WriteDirectly(inPath, inContents);
    const std::string path = TargetOf(inPath);
    std::string temporary = TemporaryFor(path);
    const int file = mkostemp(temporary.data(), O_CLOEXEC);
    if (file < 0)
        FailToWrite(inPath);
    bool isWritten = WriteAll(file, inContents) && fchmod(file, ModeFor(path)) == 0 && fsync(file) == 0;
    int failure = errno;
    if (close(file) != 0 && isWritten) {
        isWritten = false;
        failure = errno;
    }
    if (isWritten && rename(temporary.c_str(), path.c_str()) != 0) {
        isWritten = false;
        failure = errno;
    }
    if (!isWritten) {
        unlink(temporary.c_str());
        errno = failure;
        FailToWrite(inPath);
    }
    SyncFolder(path);
}

} // namespace lampblack::rsrc
