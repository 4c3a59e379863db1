#include "Commands.h"
#include "Dump.h"
#include "InputFile.h"

#include <cstdio>

namespace lampblack::rsrc {

namespace {

std::string Quoted(const std::string& inPath)
{
    std::string text = "\"";
    for (const char letter : inPath)
        text += letter == '\n' || letter == '"' ? '?' : letter;
    return text + "\"";
}

// Answers whether the file's types could be read. Resources that it makes are of no concern.
bool AddTypes(const std::string& inPath, Compiler* ioCompiler, Streams ioStreams)
{
    std::string bytes;
    if (!LoadFile(inPath, &bytes))
        throw std::runtime_error(inPath + ": cannot read this file");
    std::vector<Resource> ignored;
    std::vector<std::string> problems;
    const bool isSound = ioCompiler->Compile(inPath, TextFromBytes(bytes), &ignored, &problems);
    for (const std::string& problem : problems)
        ioStreams.errors << problem << "\n";
    return isSound;
}

std::string IntroductionOf(const std::string& inPath, const resources::ResourceFork& inFork,
                           const Arguments& inArguments)
{
    std::string name = inPath.substr(inPath.rfind('/') + 1);
    for (char& letter : name)
        letter = letter == '\n' || letter == '\r' ? '?' : letter;
    std::string text = "// " + name + ", written by rsrc dump.\n";
    if (const UInt16 attributes = inFork.Attributes()) {
        char number[8];
        std::snprintf(number, sizeof number, "%04X", attributes);
        text += std::string("// The file's own attributes, 0x") + number + ", have no place here.\n";
    }
    for (const std::string& types : inArguments.Values("--type-file"))
        text += "#include " + Quoted(types) + "\n";
    return text + "\n";
}

} // namespace

int DumpCommand(const Words& inWords, Streams ioStreams)
{
    // A negative ID is no option.
    Words words = inWords;
    const bool endsWithID = words.size() >= 3 && words.back().size() > 1 && words.back()[0] == '-' &&
                            words.back()[1] >= '0' && words.back()[1] <= '9';
    if (endsWithID)
        words.insert(words.end() - 1, "--");
    const Arguments arguments(words, { { "-o", true },
                                       { "--type-file", true },
                                       { "-I", true },
                                       { "-D", true },
                                       { "--big-endian-custom", false } });
    arguments.NeedFiles(1, 3, "dump takes a file, and perhaps a type and an ID");
    const std::vector<std::string>& files = arguments.Files();
    const OSType type = files.size() > 1 ? CodeArgument("a type", files[1]) : 0;
    const SInt16 id = files.size() > 2 ? IDArgument(files[2]) : (SInt16)0;

    Compiler compiler(LoadFile, arguments.Values("-I"));
    for (const std::string& definition : arguments.Values("-D"))
        compiler.Define(definition);
    for (const std::string& path : arguments.Values("--type-file"))
        if (!AddTypes(path, &compiler, ioStreams))
            return 1;
    OpenFork file;
    OpenFile(files[0], ioStreams, &file);
    std::vector<Resource> resources;
    std::vector<std::string> problems;
    if (!file.forks.resourceFork.empty())
        ReadFork(file.forks.resourceFork, &resources, &problems);
    for (const std::string& problem : problems)
        ioStreams.errors << files[0] << ": " << problem << "\n";
    std::erase_if(resources, [&](const Resource& resource) {
        return (files.size() > 1 && resource.type != type) || (files.size() > 2 && resource.id != id);
    });
    if (files.size() > 2 && resources.empty())
        throw std::runtime_error(files[0] + ": there is no " + KeyText(type, id));
    const DumpOptions options = { &compiler.Types(), &compiler.EnumNames(),
                                  arguments.Has("--big-endian-custom") };
    const std::string text =
        IntroductionOf(files[0], file.fork, arguments) + DumpResources(resources, options);
    if (arguments.Has("-o"))
        WriteFile(arguments.Value("-o"), { (const uint8_t*)text.data(), text.size() });
    else
        ioStreams.output << text;
    return problems.empty() ? 0 : 1;
}

} // namespace lampblack::rsrc
