// What the tests of the commands share: a folder of its own for each case, and a run of the tool.
#ifndef LAMPBLACK_RSRC_WORKSHOP_H
#define LAMPBLACK_RSRC_WORKSHOP_H

#include "Commands.h"
#include "Resources.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace lampblack::rsrc {

class Workshop {
public:
    Workshop()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "rsrc_test_XXXXXX").string();
        fFolder = mkdtemp(pattern.data());
    }
    ~Workshop() { std::filesystem::remove_all(fFolder); }

    std::string Path(const std::string& inName) const { return (fFolder / inName).string(); }
    std::string Put(const std::string& inName, const std::string& inBytes) const
    {
        std::ofstream(Path(inName), std::ios::binary) << inBytes;
        return Path(inName);
    }
    size_t CountFiles() const
    {
        return (size_t)std::distance(std::filesystem::directory_iterator(fFolder), {});
    }

    std::string Get(const std::string& inName) const
    {
        std::string bytes;
        LoadFile(Path(inName), &bytes);
        return bytes;
    }

private:
    std::filesystem::path fFolder;
};

struct Outcome {
    int code;
    std::string output, errors;
};

inline Outcome Run(const std::vector<std::string>& inArguments)
{
    std::ostringstream output, errors;
    const int code = RunCommand(inArguments, output, errors);
    return { code, output.str(), errors.str() };
}

// Makes a resource file of a description; answers its path.
inline std::string Build(const Workshop& inShop, const std::string& inName, const std::string& inText)
{
    const std::string path = inShop.Path(inName);
    Run({ "build", inShop.Put(inName + ".r", inText), "-o", path });
    return path;
}

} // namespace lampblack::rsrc

#endif
