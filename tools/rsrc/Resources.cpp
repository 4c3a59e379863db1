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

constexpr uint32_t kAppleDoubleMagic = 0x00051607;
constexpr uint32_t kVersion2 = 0x00020000;
constexpr uint32_t kFinderInfoEntry = 9, kResourceForkEntry = 2;
constexpr uint32_t kHeaderSize = 26, kEntrySize = 12, kFinderInfoSize = 32;

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

std::vector<uint8_t> BuildFork(const std::vector<Resource>& inResources)
{
    resources::ForkBuilder builder;
    for (const Resource& resource : inResources)
        builder.Add({ resource.type, resource.id, resource.attributes, resource.hasName, resource.name,
                      resource.data });
    std::vector<uint8_t> fork;
    if (const char* problem = builder.Build(&fork))
        throw std::runtime_error(problem);
    return fork;
}

std::vector<uint8_t> WrapFork(Bytes inFork, OSType inType, OSType inCreator)
{
    const uint32_t finderInfo = kHeaderSize + 2 * kEntrySize;
    foundation::BigEndianWriter writer;
    writer.U32(kAppleDoubleMagic);
    writer.U32(kVersion2);
    writer.Zeros(16);
    writer.U16(2);
    for (const uint32_t field : { kFinderInfoEntry, finderInfo, kFinderInfoSize, kResourceForkEntry,
                                  finderInfo + kFinderInfoSize, (uint32_t)inFork.size() })
        writer.U32(field);
    writer.U32(inType);
    writer.U32(inCreator);
    writer.Zeros(kFinderInfoSize - 8);
    writer.Write(inFork);
    return std::move(writer.Data());
}

void WriteFile(const std::string& inPath, Bytes inContents)
{
    std::string temporary = inPath + ".XXXXXX";
    const int file = mkostemp(temporary.data(), O_CLOEXEC);
    if (file < 0)
        FailToWrite(inPath);
    const bool written = WriteAll(file, inContents) && fchmod(file, ModeFor(inPath)) == 0 && fsync(file) == 0;
    const int failure = errno;
    if (close(file) != 0 || !written || rename(temporary.c_str(), inPath.c_str()) != 0) {
        errno = written ? errno : failure;
        const int reported = errno;
        unlink(temporary.c_str());
        errno = reported;
        FailToWrite(inPath);
    }
    SyncFolder(inPath);
}

} // namespace lampblack::rsrc
