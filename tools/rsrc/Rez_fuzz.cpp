// Any text: the compiler answers with a fork that opens again, or with messages.
#include "Compiler.h"

#include <resources/ResourceFork.h>

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    using namespace lampblack::rsrc;
    const FileLoader noFiles = [](const std::string&, std::string*) { return false; };
    Compiler compiler(noFiles, {});
    std::vector<Resource> resources;
    std::vector<std::string> problems;
    if (!compiler.Compile("fuzz.r", TextFromBytes({ (const char*)inData, inSize }), &resources, &problems))
        return 0;
    try {
        const std::vector<uint8_t> fork = BuildFork(resources);
        lampblack::resources::ResourceFork opened;
        if (opened.Open(fork) || opened.ResourceCount() != resources.size())
            std::abort();
    } catch (const std::runtime_error&) {
    }
    return 0;
}
