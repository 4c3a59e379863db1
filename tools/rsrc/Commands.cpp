#include "Commands.h"

#include "Compiler.h"
#include "Listing.h"

#include <resources/Container.h>
#include <resources/ResourceFork.h>

#include <algorithm>
#include <charconv>
#include <set>

namespace lampblack::rsrc {

namespace {

constexpr char kUsage[] = R"(usage: rsrc list [--json] FILE
       rsrc get FILE TYPE ID
       rsrc build INPUT... -o OUT [--type TYPE --creator CODE] [-I FOLDER] [-D NAME[=VALUE]] [-M FILE]

list    the resources of FILE; --json as an array of objects with type, id, name, attributes, size
get     the bytes of one resource on the standard output
build   makes the resource file OUT of readable descriptions (*.r) and of resource files, which are merged;
        a resource of a later input takes the place of one with the same type and ID. OUT is a bare resource
        fork, or with --type and --creator an AppleDouble file that carries these two codes as well. -M writes
        a rule for make that names every file read.

FILE may be a bare resource fork, AppleDouble, AppleSingle, MacBinary or BinHex, or a file with such a
companion (._FILE, FILE.rsrc). Type codes and names are read and written as UTF-8.
Exit code: 0 done, 1 failed, 2 called wrongly.
)";

// A wrong call: what() says how.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Streams {
    std::ostream &output, &errors;
};
using Arguments = std::vector<std::string>;

bool IsDescription(const std::string& inPath, const std::string& inBytes)
{
    const Bytes bytes((const uint8_t*)inBytes.data(), inBytes.size());
    if (resources::ReadContainer(bytes).form != resources::Form::None)
        return false;
    const bool named = inPath.size() > 2 && SameWord(inPath.substr(inPath.size() - 2), ".r");
    return named || inBytes.find('\0') == std::string::npos;
}

// A fork that was found, with the file it lies in.
struct OpenFork {
    resources::LocatedForks forks;
    resources::ResourceFork fork;
};

// Warnings about damage go to the errors; a fork that cannot be read at all throws.
void OpenFile(const std::string& inPath, Streams ioStreams, OpenFork* outFork)
{
    outFork->forks = resources::LocateForks(inPath);
    for (const std::string& problem : outFork->forks.problems)
        ioStreams.errors << inPath << ": " << problem << "\n";
    if (!outFork->forks.exists && !outFork->forks.hasResourceFork)
        throw std::runtime_error(inPath + ": " + std::strerror(outFork->forks.openError));
    if (!outFork->forks.hasResourceFork)
        throw std::runtime_error(inPath + ": not a resource file");
    if (outFork->forks.resourceFork.empty())
        return; // an empty fork is an empty file
    if (const char* problem = outFork->fork.Open(outFork->forks.resourceFork))
        throw std::runtime_error(inPath + ": " + problem);
}

int List(const Arguments& inArguments, Streams ioStreams)
{
    bool json = false;
    Arguments files;
    for (const std::string& argument : inArguments) {
        if (argument == "--json")
            json = true;
        else if (argument.size() > 1 && argument[0] == '-')
            throw UsageError("unknown option " + argument);
        else
            files.push_back(argument);
    }
    if (files.size() != 1)
        throw UsageError("list takes one file");
    OpenFork file;
    OpenFile(files[0], ioStreams, &file);
    for (const std::string& problem : file.fork.Check())
        ioStreams.errors << files[0] << ": " << problem << "\n";
    (json ? ListAsJson : ListAsText)(file.fork, ioStreams.output);
    return 0;
}

int Get(const Arguments& inArguments, Streams ioStreams)
{
    if (inArguments.size() != 3)
        throw UsageError("get takes a file, a type and an ID");
    OSType type = 0;
    SInt16 id = 0;
    const std::string& number = inArguments[2];
    if (!TypeFromText(inArguments[1], &type))
        throw UsageError("a type has four characters of Mac Roman, not '" + inArguments[1] + "'");
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), id);
    if (error != std::errc() || end != number.data() + number.size())
        throw UsageError("an ID is a number from -32768 to 32767, not '" + number + "'");
    OpenFork file;
    OpenFile(inArguments[0], ioStreams, &file);
    const resources::ResourceRef ref = file.fork.Find(type, id);
    if (!ref)
        throw std::runtime_error(inArguments[0] + ": there is no " + KeyText(type, id));
    Bytes data;
    if (!file.fork.Data(ref, &data))
        throw std::runtime_error(inArguments[0] + ": " + KeyText(type, id) + " is cut off");
    ioStreams.output.write((const char*)data.data(), (std::streamsize)data.size());
    return 0;
}

struct BuildOptions {
    Arguments inputs, folders, definitions;
    std::string output, rule;
    OSType type = 0, creator = 0;
    bool hasInfo = false;
};

OSType CodeArgument(const std::string& inOption, const std::string& inText)
{
    OSType code = 0;
    if (!TypeFromText(inText, &code))
        throw UsageError(inOption + " takes four characters of Mac Roman, not '" + inText + "'");
    return code;
}

void ReadOption(const std::string& inOption, const std::string& inValue, BuildOptions* outOptions)
{
    if (inOption == "-o")
        outOptions->output = inValue;
    else if (inOption == "-M")
        outOptions->rule = inValue;
    else if (inOption == "-I")
        outOptions->folders.push_back(inValue);
    else if (inOption == "-D")
        outOptions->definitions.push_back(inValue);
    else
        (inOption == "--type" ? outOptions->type : outOptions->creator) = CodeArgument(inOption, inValue);
    outOptions->hasInfo = outOptions->hasInfo || inOption == "--type" || inOption == "--creator";
}

BuildOptions ReadBuildOptions(const Arguments& inArguments)
{
    static const Arguments kOptions = { "-o", "-I", "-D", "-M", "--type", "--creator" };
    BuildOptions options;
    for (size_t i = 0; i < inArguments.size(); ++i) {
        const std::string& argument = inArguments[i];
        if (argument.size() < 2 || argument[0] != '-') {
            options.inputs.push_back(argument);
            continue;
        }
        if (std::find(kOptions.begin(), kOptions.end(), argument) == kOptions.end())
            throw UsageError("unknown option " + argument);
        if (++i == inArguments.size())
            throw UsageError(argument + " needs a value");
        ReadOption(argument, inArguments[i], &options);
    }
    if (options.inputs.empty())
        throw UsageError("build takes at least one input");
    if (options.output.empty())
        throw UsageError("build needs -o OUT");
    return options;
}

// Answers whether the input was without fault.
bool AddInput(const std::string& inPath, Compiler& ioCompiler, Streams ioStreams,
              std::vector<Resource>* ioResources)
{
    std::string bytes;
    std::vector<std::string> problems;
    const bool readable = LoadFile(inPath, &bytes);
    bool sound = true;
    if (readable && IsDescription(inPath, bytes)) {
        sound = ioCompiler.Compile(inPath, TextFromBytes(bytes), ioResources, &problems);
    } else {
        OpenFork file;
        OpenFile(inPath, ioStreams, &file);
        std::vector<Resource> found;
        sound = file.forks.resourceFork.empty() || ReadFork(file.forks.resourceFork, &found, &problems);
        for (std::string& problem : problems)
            problem = inPath + ": " + problem;
        Merge(std::move(found), ioResources);
        sound = sound && problems.empty() && file.forks.problems.empty();
    }
    for (const std::string& problem : problems)
        ioStreams.errors << problem << "\n";
    return sound;
}

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

void WriteRule(const BuildOptions& inOptions, const std::set<std::string>& inRead)
{
    std::string rule = RuleName(inOptions.output) + ":";
    for (const std::string& path : inRead)
        rule += " " + RuleName(path);
    rule += "\n";
    WriteFile(inOptions.rule, { (const uint8_t*)rule.data(), rule.size() });
}

int Build(const Arguments& inArguments, Streams ioStreams)
{
    const BuildOptions options = ReadBuildOptions(inArguments);
    std::set<std::string> read(options.inputs.begin(), options.inputs.end());
    const FileLoader load = [&read](const std::string& inPath, std::string* outBytes) {
        return LoadFile(inPath, outBytes) && (read.insert(inPath), true);
    };
    Compiler compiler(load, options.folders);
    for (const std::string& definition : options.definitions)
        compiler.Define(definition);
    std::vector<Resource> resources;
    bool sound = true;
    for (const std::string& input : options.inputs)
        sound = AddInput(input, compiler, ioStreams, &resources) && sound;
    if (!sound)
        return 1;
    std::vector<uint8_t> contents = BuildFork(resources);
    if (options.hasInfo)
        contents = WrapFork(contents, options.type, options.creator);
    WriteFile(options.output, contents);
    if (!options.rule.empty())
        WriteRule(options, read);
    return 0;
}

struct Command {
    const char* name;
    int (*run)(const Arguments&, Streams);
};
constexpr Command kCommands[] = { { "list", List }, { "get", Get }, { "build", Build } };

int Dispatch(const Arguments& inArguments, Streams ioStreams)
{
    if (inArguments.empty())
        throw UsageError("expected list, get or build");
    const std::string& name = inArguments[0];
    if (name == "--help" || name == "-h" || name == "help") {
        ioStreams.output << kUsage;
        return 0;
    }
    for (const Command& command : kCommands)
        if (name == command.name)
            return command.run(Arguments(inArguments.begin() + 1, inArguments.end()), ioStreams);
    throw UsageError("expected list, get or build, found '" + name + "'");
}

} // namespace

int RunCommand(const Arguments& inArguments, std::ostream& ioOutput, std::ostream& ioErrors)
{
    try {
        const int result = Dispatch(inArguments, { ioOutput, ioErrors });
        ioOutput.flush();
        if (ioOutput)
            return result;
        ioErrors << "rsrc: cannot write the output\n";
        return 1;
    } catch (const UsageError& error) {
        ioErrors << "rsrc: " << error.what() << "\n" << kUsage;
        return 2;
    } catch (const std::exception& error) {
        ioErrors << error.what() << "\n";
        return 1;
    }
}

} // namespace lampblack::rsrc
