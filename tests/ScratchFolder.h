// A folder that a test fills as it likes; it goes with all in it.
#ifndef LAMPBLACK_TESTS_SCRATCHFOLDER_H
#define LAMPBLACK_TESTS_SCRATCHFOLDER_H

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

class ScratchFolder {
public:
    ScratchFolder()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "lampblack-test-XXXXXX").string();
        fPath = std::filesystem::canonical(mkdtemp(pattern.data()));
    }
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(fPath, ignored);
        // Whoever set the folder's own Finder information or dates made a sidecar beside it.
        std::filesystem::remove(fPath.parent_path() / ("._" + fPath.filename().string()), ignored);
    }
    ScratchFolder(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return fPath; }

    std::filesystem::path MakeFolder(const std::filesystem::path& inName) const
    {
        std::filesystem::create_directories(fPath / inName);
        return fPath / inName;
    }

    std::filesystem::path Write(const std::filesystem::path& inName, std::string_view inBytes = {}) const
    {
        std::filesystem::create_directories((fPath / inName).parent_path());
        std::ofstream(fPath / inName, std::ios::binary)
            .write(inBytes.data(), (std::streamsize)inBytes.size());
        return fPath / inName;
    }

private:
    std::filesystem::path fPath;
};

#endif
