// Trying out how finely a file system tells time.
#include "ChangeTimes.h"

#include "Durable.h"
#include "FileIdentity.h"

#include <fcntl.h>
#include <map>
#include <unistd.h>

namespace lampblack::files {
namespace {

// More changes than a clock of ticks can step through in so short a time.
constexpr int kTrials = 8;

std::map<uint64_t, bool>& Findings()
{
    static auto& findings = *new std::map<uint64_t, bool>;
    return findings;
}

bool TryOut(uint64_t inDevice, const std::filesystem::path& inFolder)
{
    const Descriptor file(open(inFolder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, 0600));
    FileIdentity before = FileIdentity::Of(file.Get());
    bool shows = before.exists && before.device == inDevice;
    for (int i = 0; i < kTrials && shows; ++i) {
        const uint8_t byte = (uint8_t)i;
        const OSErr written = WriteAll(file.Get(), Bytes(&byte, 1), 0);
        const FileIdentity after = FileIdentity::Of(file.Get());
        shows = written == noErr && after.modified != before.modified && after.changed != before.changed;
        before = after;
    }
    return shows;
}

} // namespace

bool ShowsEachChange(uint64_t inDevice, const std::filesystem::path& inFolder)
{
    const auto found = Findings().find(inDevice);
    if (found != Findings().end())
        return found->second;
    return Findings()[inDevice] = TryOut(inDevice, inFolder);
}

bool IsKnownToShowEachChange(uint64_t inDevice)
{
    const auto found = Findings().find(inDevice);
    return found != Findings().end() && found->second;
}

} // namespace lampblack::files
