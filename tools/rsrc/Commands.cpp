// The table of commands, and the two shortest of them.
#include "Commands.h"

#include "InputFile.h"
#include "Listing.h"

namespace lampblack::rsrc {

namespace {

constexpr char kUsage[] = R"(usage: rsrc COMMAND ...

  list [--json] FILE                        the resources of a file
  get FILE TYPE ID                          the bytes of one resource
  dump FILE [TYPE [ID]] [-o OUT]            resources as text that build takes back, byte for byte
  build INPUT... -o OUT                     a resource file of descriptions (*.r) and resource files
  convert IN -o OUT --to FORM               raw, appledouble, applesingle, macbinary, binhex or text
  check FOLDER                              forks that were lost or damaged
  diff [--text] A B                         what differs between two files' resources
  render FILE [TYPE ID] -o OUT.png          a picture, icon, pattern, dialog, ... or an image file, as PNG

  dump      --type-file X.r    types declared there are known too
  build     --type TYPE --creator CODE      OUT is AppleDouble and carries these codes
            -I FOLDER -D NAME[=VALUE]       as a C compiler has them; -M FILE writes a rule for make
  convert   --type TYPE --creator CODE --name NAME      instead of those of IN
            --swap-custom      turns files of the older, big-endian kind into this machine's, and back
  dump, build, convert, diff: --big-endian-custom       the file is of the older kind

FILE may be a bare resource fork, AppleDouble, AppleSingle, MacBinary or BinHex, or a file with such a
companion (._FILE, FILE.rsrc); its bytes decide. Codes and names are UTF-8. All of it: docs/rsrc.md.
Exit code: 0 done, 1 failed, found something or different, 2 called wrongly.
)";

struct Command {
    const char* name;
    int (*run)(const Words&, Streams);
};
constexpr Command kCommands[] = { { "list", ListCommand },       { "get", GetCommand },
                                  { "dump", DumpCommand },       { "build", BuildCommand },
                                  { "convert", ConvertCommand }, { "check", CheckCommand },
                                  { "diff", DiffCommand },       { "render", RenderCommand } };
constexpr char kExpected[] = "expected list, get, dump, build, convert, check, diff or render";

int Dispatch(const Words& inWords, Streams ioStreams)
{
    if (inWords.empty())
        throw UsageError(kExpected);
    const std::string& name = inWords[0];
    if (name == "--help" || name == "-h" || name == "help") {
        ioStreams.output << kUsage;
        return 0;
    }
    for (const Command& command : kCommands)
        if (name == command.name)
            return command.run(Words(inWords.begin() + 1, inWords.end()), ioStreams);
    throw UsageError(std::string(kExpected) + ", found '" + name + "'");
}

} // namespace

int RunCommand(const Words& inArguments, std::ostream& ioOutput, std::ostream& ioErrors)
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

int ListCommand(const Words& inWords, Streams ioStreams)
{
    const Arguments arguments(inWords, { { "--json", false } });
    arguments.NeedFiles(1, 1, "list takes one file");
    const std::string& path = arguments.Files()[0];
    OpenFork file;
    OpenFile(path, ioStreams, &file);
    for (const std::string& problem : file.fork.Check())
        ioStreams.errors << path << ": " << problem << "\n";
    (arguments.Has("--json") ? ListAsJson : ListAsText)(file.fork, ioStreams.output);
    return 0;
}

int GetCommand(const Words& inWords, Streams ioStreams)
{
    if (inWords.size() != 3) // an ID may begin with '-': there are no options here
        throw UsageError("get takes a file, a type and an ID");
    const OSType type = CodeArgument("a type", inWords[1]);
    const SInt16 id = IDArgument(inWords[2]);
    OpenFork file;
    OpenFile(inWords[0], ioStreams, &file);
    const resources::ResourceRef ref = file.fork.Find(type, id);
    if (!ref)
        throw std::runtime_error(inWords[0] + ": there is no " + KeyText(type, id));
    Bytes data;
    if (!file.fork.Data(ref, &data))
        throw std::runtime_error(inWords[0] + ": " + KeyText(type, id) + " is cut off");
    ioStreams.output.write((const char*)data.data(), (std::streamsize)data.size());
    return 0;
}

} // namespace lampblack::rsrc
