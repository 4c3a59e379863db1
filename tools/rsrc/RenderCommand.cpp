// render: leaves the work to rsrc-render, which stands on the platform and lies beside this program.
#include "Commands.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <unistd.h>

namespace lampblack::rsrc {

int RenderCommand(const Words& inWords, Streams ioStreams)
{
    std::error_code error;
    const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
    const std::string program = (self.parent_path() / "rsrc-render").string();
    std::vector<char*> arguments = { const_cast<char*>(program.c_str()) };
    for (const std::string& word : inWords)
        arguments.push_back(const_cast<char*>(word.c_str()));
    arguments.push_back(nullptr);
    ioStreams.output.flush();
    execv(program.c_str(), arguments.data()); // comes back only when it failed
    ioStreams.errors << "rsrc: " << program << ": " << std::strerror(errno) << "\n";
    return 1;
}

} // namespace lampblack::rsrc
