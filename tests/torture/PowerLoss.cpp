#include "PowerLoss.h"

#include <algorithm>
#include <fstream>

namespace torture {
namespace {

void Apply(const Act& inAct, std::string* ioBytes)
{
    if (inAct.kind == Act::Kind::Resize) {
        ioBytes->resize((size_t)inAct.offset);
        return;
    }
    const size_t end = (size_t)inAct.offset + inAct.bytes.size();
    if (ioBytes->size() < end)
        ioBytes->resize(end);
    ioBytes->replace((size_t)inAct.offset, inAct.bytes.size(), inAct.bytes);
}

std::string ReadFile(const std::filesystem::path& inPath)
{
    std::ifstream file(inPath, std::ios::binary);
    return std::string{ std::istreambuf_iterator<char>(file), {} };
}

} // namespace

PowerLoss::PowerLoss(const std::filesystem::path& inFolderBefore) : fFlushedNames(NamesBelow(inFolderBefore))
{
    for (const auto& [name, file] : fFlushedNames)
        if (std::filesystem::is_directory(inFolderBefore / name))
            fFolders.insert(file);
        else
            fFiles[file].flushed = ReadFile(inFolderBefore / name);
}

void PowerLoss::Do(const Act& inAct)
{
    switch (inAct.kind) {
    case Act::Kind::Write:
    case Act::Kind::Resize: fFiles[inAct.file].pending.push_back(&inAct); break;
    case Act::Kind::SyncFile: {
        File& file = fFiles[inAct.file];
        file.flushed = Arrived(file, [](size_t) { return true; });
        file.pending.clear();
        break;
    }
    case Act::Kind::Names: fPendingNames.push_back(&inAct.names); break;
    case Act::Kind::SyncFolder:
        fFolders.insert(inAct.file);
        if (!fPendingNames.empty())
            fFlushedNames = *fPendingNames.back();
        fPendingNames.clear();
        break;
    }
}

std::string PowerLoss::Arrived(const File& inFile, const Choice& inKeeps)
{
    std::string bytes = inFile.flushed;
    for (size_t i = 0; i < inFile.pending.size(); ++i)
        if (inKeeps(i))
            Apply(*inFile.pending[i], &bytes);
    return bytes;
}

Disk PowerLoss::DiskOf(const Names& inNames, const Choice& inKeeps) const
{
    Disk disk;
    for (const auto& [name, file] : inNames) {
        const auto next = inNames.lower_bound(name + "/");
        const bool isFolder =
            fFolders.contains(file) || (next != inNames.end() && next->first.starts_with(name + "/"));
        const auto found = fFiles.find(file);
        if (isFolder)
            disk[name + "/"];
        else
            disk[name] = found == fFiles.end() ? std::string() : Arrived(found->second, inKeeps);
    }
    return disk;
}

void PowerLoss::VisitNow(const std::function<void(const Disk&)>& inVisit) const
{
    size_t longest = 0;
    for (const auto& [id, file] : fFiles)
        longest = std::max(longest, file.pending.size());
    std::vector<Choice> choices = { [](size_t) { return false; }, [](size_t) { return true; } };
    for (size_t i = 0; i < longest; ++i) {
        choices.push_back([i](size_t nth) { return nth == i; });
        choices.push_back([i](size_t nth) { return nth != i; });
    }
    for (const Choice& keeps : choices) {
        inVisit(DiskOf(fFlushedNames, keeps));
        for (const Names* names : fPendingNames)
            inVisit(DiskOf(*names, keeps));
    }
}

void PowerLoss::Visit(const std::vector<Act>& inActs,
                      const std::function<void(const Disk&, bool finished)>& inVisit)
{
    std::set<std::pair<Disk, bool>> seen;
    for (size_t done = 0; done <= inActs.size(); ++done) {
        const bool finished = done == inActs.size();
        VisitNow([&](const Disk& disk) {
            if (seen.insert({ disk, finished }).second)
                inVisit(disk, finished);
        });
        if (!finished)
            Do(inActs[done]);
    }
}

void WriteDisk(const Disk& inDisk, const std::filesystem::path& inFolder)
{
    std::filesystem::remove_all(inFolder);
    std::filesystem::create_directories(inFolder);
    for (const auto& [name, bytes] : inDisk) {
        if (name.ends_with('/')) {
            std::filesystem::create_directories(inFolder / name);
            continue;
        }
        std::filesystem::create_directories((inFolder / name).parent_path());
        std::ofstream(inFolder / name, std::ios::binary) << bytes;
    }
}

} // namespace torture
