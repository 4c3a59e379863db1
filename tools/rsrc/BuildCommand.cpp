#include "Commands.h"
#include "InputFile.h"

#include <files/ContainerWriter.h>

#include <set>

namespace lampblack::rsrc {

namespace {

// A name as it stands in a rule for make.
std::string RuleName(const std::string& inPath)
{
    std::string name;
    for (const char letter : inPath) {
        if (letter == ' ' || letter == '#' || letter == '\\')
            name += '\\';
        name += letter == '$' ? "$$" : std::string(1, letter);
    }
    return name;
}

void WriteRule(const std::string& inRulePath, const std::string& inOutput,
               const std::set<std::string>& inRead)
{
    std::string rule = RuleName(inOutput) + ":";
    for (const std::string& path : inRead)
        rule += " " + RuleName(path);
    rule += "\n";
    WriteFile(inRulePath, { (const uint8_t*)rule.data(), rule.size() });
}

// An AppleDouble file with the type and creator, where they are given; the bare fork without.
void WriteOutput(const Arguments& inArguments, const std::vector<uint8_t>& inFork)
{
    const std::string output = inArguments.Value("-o");
    if (!inArguments.Has("--type") && !inArguments.Has("--creator"))
        return WriteFile(output, inFork);
    files::FileParts parts;
    if (inArguments.Has("--type"))
        parts.finderInfo.fdType = CodeArgument("--type", inArguments.Value("--type"));
    if (inArguments.Has("--creator"))
        parts.finderInfo.fdCreator = CodeArgument("--creator", inArguments.Value("--creator"));
    parts.resourceFork = inFork;
    WriteFile(output, files::WriteAppleDouble(parts));
}

} // namespace

int BuildCommand(const Words& inWords, Streams ioStreams)
{
    const Arguments arguments(inWords, { { "-o", true },
                                         { "-M", true },
                                         { "-I", true },
                                         { "-D", true },
                                         { "--type", true },
                                         { "--creator", true },
                                         { "--big-endian-custom", false } });
    arguments.NeedFiles(1, SIZE_MAX, "build takes at least one input");
    if (arguments.Value("-o").empty())
        throw UsageError("build needs -o OUT");
    for (const char* option : { "--type", "--creator" }) // before the work, not after it
        if (arguments.Has(option))
            CodeArgument(option, arguments.Value(option));
    std::set<std::string> read(arguments.Files().begin(), arguments.Files().end());
    const FileLoader load = [&read](const std::string& inPath, std::string* outBytes) {
        return LoadFile(inPath, outBytes) && (read.insert(inPath), true);
    };
    Compiler compiler(load, arguments.Values("-I"));
    compiler.SetNativeIsBig(arguments.Has("--big-endian-custom"));
    for (const std::string& definition : arguments.Values("-D"))
        compiler.Define(definition);
    std::vector<Resource> resources;
    bool isSound = true;
    for (const std::string& input : arguments.Files())
        isSound = AddInput(input, compiler, ioStreams, &resources) && isSound;
    if (!isSound)
        return 1;
    WriteOutput(arguments, BuildFork(resources));
    if (arguments.Has("-M"))
        WriteRule(arguments.Value("-M"), arguments.Value("-o"), read);
    return 0;
}

} // namespace lampblack::rsrc
