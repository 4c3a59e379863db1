// Reading the names of parts in folders, and remembering them while they hold.
#include "FolderParts.h"

#include "FileIdentity.h"

#include <algorithm>
#include <dirent.h>
#include <list>
#include <memory>
#include <vector>

namespace lampblack::files {

struct KnownParts {
    std::string folder;
    FileIdentity stamp;
    bool isRead = false;
    std::vector<uint64_t> names; // hashes, sorted: two names with one hash are both said to be there
};

namespace {

constexpr size_t kRemembered = 16;

bool IsAscii(std::string_view inName)
{
    return std::all_of(inName.begin(), inName.end(), [](char byte) { return (uint8_t)byte < 0x80; });
}

char Small(char inByte)
{
    return inByte >= 'A' && inByte <= 'Z' ? (char)(inByte + 'a' - 'A') : inByte;
}

// Some folders know no capitals; how they compare other letters, nobody knows: all such names have one hash.
uint64_t HashOf(std::string_view inName)
{
    uint64_t hash = 14695981039346656037u;
    if (!IsAscii(inName))
        return 0;
    for (const char byte : inName)
        hash = (hash ^ (uint8_t)Small(byte)) * 1099511628211u;
    return hash;
}

bool EndsInSmall(std::string_view inName, std::string_view inEnd)
{
    return inName.size() >= inEnd.size() &&
           std::equal(inEnd.begin(), inEnd.end(), inName.end() - (ptrdiff_t)inEnd.size(),
                      [](char wanted, char byte) { return wanted == Small(byte); });
}

bool MayBePart(std::string_view inName)
{
    return inName.starts_with('.') || inName.starts_with('%') || inName.starts_with('_') ||
           EndsInSmall(inName, ".rsrc");
}

struct CloseFolder {
    void operator()(DIR* inFolder) const { closedir(inFolder); }
};

void Read(KnownParts* ioParts)
{
    ioParts->names.clear();
    const std::unique_ptr<DIR, CloseFolder> folder(opendir(ioParts->folder.c_str()));
    if (!folder)
        return;
    while (const dirent* entry = readdir(folder.get()))
        if (MayBePart(entry->d_name))
            ioParts->names.push_back(HashOf(entry->d_name));
    std::sort(ioParts->names.begin(), ioParts->names.end());
    ioParts->isRead = true;
}

// The folder asked for last in front.
std::list<KnownParts>& Memory()
{
    static auto& memory = *new std::list<KnownParts>;
    return memory;
}

} // namespace

FolderParts::FolderParts(const std::string& inFolder)
{
    std::list<KnownParts>& memory = Memory();
    const FileIdentity stamp = FileIdentity::At(inFolder);
    const auto found = std::find_if(memory.begin(), memory.end(),
                                    [&](const KnownParts& one) { return one.folder == inFolder; });
    if (found == memory.end() || !(found->stamp == stamp)) {
        if (found != memory.end())
            memory.erase(found);
        if (stamp.exists)
            memory.push_front({ inFolder, stamp, false, {} });
        if (memory.size() > kRemembered)
            memory.pop_back();
        return;
    }
    memory.splice(memory.begin(), memory, found);
    KnownParts& known = memory.front();
    if (!known.isRead && stamp.WouldShowChange())
        Read(&known);
    fKnown = known.isRead ? &known : nullptr;
}

bool FolderParts::MayHave(std::string_view inName) const
{
    return !fKnown || std::binary_search(fKnown->names.begin(), fKnown->names.end(), HashOf(inName)) ||
           (!fKnown->names.empty() && (fKnown->names.front() == 0 || !IsAscii(inName)));
}

} // namespace lampblack::files
