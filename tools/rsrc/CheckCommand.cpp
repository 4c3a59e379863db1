// Looks through a folder for forks that were lost or damaged on the way from one system to another.
#include "Commands.h"
#include "Damage.h"

#include <files/ForkLocator.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace lampblack::rsrc {

namespace {

using std::filesystem::path;

class FolderCheck {
public:
    FolderCheck(const path& inFolder, std::ostream& ioOutput) : fFolder(inFolder), fOutput(ioOutput) {}

    void Run()
    {
        for (const path& file : FilesIn(fFolder))
            CheckFile(file);
    }

    size_t FileCount() const { return fFiles; }
    size_t FindingCount() const { return fFindings; }

private:
    static std::vector<path> FilesIn(const path& inFolder)
    {
        using std::filesystem::recursive_directory_iterator;
        std::vector<path> files;
        const auto options = std::filesystem::directory_options::skip_permission_denied;
        for (const auto& entry : recursive_directory_iterator(inFolder, options))
            if (entry.is_regular_file() && !entry.is_symlink())
                files.push_back(entry.path());
        std::sort(files.begin(), files.end());
        return files;
    }

    void Tell(const path& inFile, const std::string& inProblem)
    {
        std::string shown = inFile.string();
        for (char& letter : shown)
            letter = (unsigned char)letter < 0x20 ? '?' : letter;
        fOutput << shown << ": " << inProblem << "\n";
        ++fFindings;
    }

    void CheckFile(const path& inFile)
    {
        ++fFiles;
        files::MappedFile file;
        if (!file.Open(inFile)) {
            Tell(inFile, std::string("cannot be read: ") + std::strerror(errno));
            return;
        }
        const path owner = OwnerOf(inFile);
        if (owner.empty())
            CheckOrdinary(inFile, file.Contents());
        else
            CheckSidecar(inFile, owner, file.Contents());
    }

    // The file whose sidecar this is; empty when it is none.
    path OwnerOf(const path& inFile) const
    {
        const std::string name = inFile.filename().string();
        const path folder = inFile.parent_path();
        if (folder.filename() == ".AppleDouble")
            return name == ".Parent" ? path() : folder.parent_path() / name;
        if (!name.starts_with("._") || name.size() < 3)
            return {};
        // An archive keeps all sidecars in a tree of their own beside the files.
        path between;
        for (path above = folder; above.has_filename() && above != fFolder.parent_path();
             above = above.parent_path()) {
            if (above.filename() == "__MACOSX")
                return above.parent_path() / between / name.substr(2);
            between = between.empty() ? above.filename() : above.filename() / between;
        }
        return folder / name.substr(2);
    }

    void CheckSidecar(const path& inFile, const path& inOwner, files::Bytes inBytes)
    {
        const files::Container container = files::ReadContainer(inBytes);
        if (!std::filesystem::exists(inOwner))
            Tell(inFile,
                 "an orphan: there is no file '" + inOwner.filename().string() + "' that it belongs to");
        const std::vector<std::string> problems = FindDamage(inBytes);
        for (const std::string& problem : problems)
            Tell(inFile, problem);
        if (!problems.empty())
            return;
        if (inBytes.empty())
            Tell(inFile, "an empty file instead of Finder information and a resource fork");
        else if (container.form != files::Form::AppleDouble)
            Tell(inFile, "not AppleDouble, but named like a sidecar");
        else if (!container.hasResourceFork && !container.hasFinderInfo)
            Tell(inFile, "neither a resource fork nor Finder information");
    }

    void CheckOrdinary(const path& inFile, files::Bytes inBytes)
    {
        const std::vector<std::string> problems = FindDamage(inBytes);
        for (const std::string& problem : problems)
            Tell(inFile, problem);
        const files::LocatedForks forks = files::LocateForks(inFile);
        if (forks.hasFinderInfo && problems.empty() && forks.problems.empty())
            for (const std::string& problem : FindBrokenPromises(forks.finderInfo, forks.resourceFork))
                Tell(inFile, problem);
        const std::string suffix = inFile.extension().string();
        if (inBytes.empty() && forks.resourceFork.empty() && !forks.hasFinderInfo &&
            (suffix == ".rsrc" || suffix == ".rsr" || inFile.filename() == "Icon\r"))
            Tell(inFile, "empty, and no resource fork beside it");
    }

    path fFolder;
    std::ostream& fOutput;
    size_t fFiles = 0, fFindings = 0;
};

} // namespace

int CheckCommand(const Words& inWords, Streams ioStreams)
{
    const Arguments arguments(inWords, {});
    arguments.NeedFiles(1, 1, "check takes one folder");
    const path folder(arguments.Files()[0]);
    if (!std::filesystem::is_directory(folder))
        throw std::runtime_error(folder.string() + ": not a folder");
    FolderCheck check(folder, ioStreams.output);
    check.Run();
    ioStreams.errors << check.FileCount() << " files, " << check.FindingCount() << " findings\n";
    return check.FindingCount() ? 1 : 0;
}

} // namespace lampblack::rsrc
