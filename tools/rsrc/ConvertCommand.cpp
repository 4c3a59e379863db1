// From any form of a Macintosh file to any other.
#include "Commands.h"
#include "Dump.h"
#include "InputFile.h"
#include "ValueDecoder.h"

#include <files/ContainerWriter.h>
#include <foundation/MacRoman.h>

#include <algorithm>
#include <cstring>
#include <filesystem>

namespace lampblack::rsrc {

namespace {

using files::FileParts;
using files::Form;

constexpr struct {
    const char* name;
    Form form;
    std::vector<uint8_t> (*write)(const FileParts&); // null: not a container
} kForms[] = {
    { "raw", Form::RawFork, nullptr },
    { "appledouble", Form::AppleDouble, files::WriteAppleDouble },
    { "applesingle", Form::AppleSingle, files::WriteAppleSingle },
    { "macbinary", Form::MacBinary, files::WriteMacBinary },
    { "binhex", Form::BinHex, files::WriteBinHex },
    { "text", Form::None, nullptr },
};

// The file that is converted, with what its parts lie in.
struct Source {
    resources::LocatedForks forks;
    std::vector<uint8_t> fork; // when it was made here
    FileParts parts;
    bool hasFork = false;
};

std::string NameOf(const std::filesystem::path& inPath)
{
    std::string name = inPath.filename().string();
    if (name.starts_with("._"))
        name.erase(0, 2);
    name = foundation::MacRomanFromUtf8(name);
    std::replace(name.begin(), name.end(), ':', '/');
    return name;
}

void TakeForks(const std::string& inPath, Streams ioStreams, Source* outSource)
{
    outSource->forks = resources::LocateForks(inPath);
    const resources::LocatedForks& forks = outSource->forks;
    if (!forks.exists)
        throw std::runtime_error(WhyNotOpened(inPath, forks.openError));
    for (const std::string& problem : forks.problems)
        ioStreams.errors << inPath << ": " << problem << "\n";
    if (!forks.problems.empty())
        throw std::runtime_error(inPath + ": damaged, and not converted");
    FileParts& parts = outSource->parts;
    parts.finderInfo = forks.finderInfo;
    parts.extendedFinderInfo = forks.extendedFinderInfo;
    parts.resourceFork = forks.resourceFork;
    outSource->hasFork = forks.hasResourceFork;
    // A file that is nothing but the fork has no data besides.
    const files::Container itself = files::ReadContainer(forks.dataFork);
    const bool isForkAlone = itself.form == Form::RawFork || itself.form == Form::AppleDouble;
    if (!(isForkAlone && forks.resourcePath == std::filesystem::absolute(inPath)))
        parts.dataFork = forks.dataFork;
    for (const auto& container : forks.containers) {
        if (parts.name.empty())
            parts.name = container->name;
        if (!parts.dates.created && !parts.dates.modified)
            parts.dates = container->dates;
    }
}

// Answers false when the text is faulty; that was told.
bool TakeText(const std::string& inPath, const Arguments& inArguments, Streams ioStreams, Source* outSource)
{
    Compiler compiler(LoadFile, inArguments.Values("-I"));
    compiler.SetNativeIsBig(inArguments.Has("--big-endian-custom"));
    for (const std::string& definition : inArguments.Values("-D"))
        compiler.Define(definition);
    std::vector<Resource> resources;
    if (!AddInput(inPath, compiler, ioStreams, &resources))
        return false;
    outSource->fork = BuildFork(resources);
    outSource->parts.resourceFork = outSource->fork;
    outSource->hasFork = true;
    return true;
}

void SwapCustom(Source* ioSource)
{
    if (ioSource->parts.resourceFork.empty())
        return;
    std::vector<Resource> resources;
    std::vector<std::string> problems;
    resources::ResourceFork fork;
    if (fork.Open(ioSource->parts.resourceFork) ||
        !ReadFork(ioSource->parts.resourceFork, &resources, &problems) || !problems.empty())
        throw std::runtime_error("the resource fork is damaged" +
                                 (problems.empty() ? "" : ": " + problems[0]));
    Compiler compiler(LoadFile, {});
    for (Resource& resource : resources) {
        try {
            SwapNativeNumbers(compiler.Types(), compiler.EnumNames(), &resource);
        } catch (const DecodeError& error) {
            throw std::runtime_error(KeyText(resource.type, resource.id) +
                                     " cannot be turned: " + error.what());
        }
    }
    ioSource->fork = BuildFork(resources, fork.Attributes());
    ioSource->parts.resourceFork = ioSource->fork;
}

std::vector<uint8_t> TextOf(const Source& inSource, const Arguments& inArguments)
{
    std::vector<Resource> resources;
    std::vector<std::string> problems;
    if (!inSource.parts.resourceFork.empty())
        ReadFork(inSource.parts.resourceFork, &resources, &problems);
    if (!problems.empty())
        throw std::runtime_error(problems[0]);
    Compiler compiler(LoadFile, {});
    const DumpOptions options = { &compiler.Types(), &compiler.EnumNames(),
                                  inArguments.Has("--big-endian-custom") };
    const std::string text = DumpResources(resources, options);
    return std::vector<uint8_t>(text.begin(), text.end());
}

// An AppleDouble file named "._NAME" has its data fork in NAME. The sidecar is written first: until the data
// fork replaces a container of both, nothing is lost.
void WriteAppleDouble(const std::string& inOutput, const Source& inSource, Streams ioStreams)
{
    const std::filesystem::path output(inOutput);
    const std::string name = output.filename().string();
    const Bytes data = inSource.parts.dataFork;
    WriteFile(inOutput, files::WriteAppleDouble(inSource.parts));
    if (name.starts_with("._") && name.size() > 2)
        WriteFile((output.parent_path() / name.substr(2)).string(), data);
    else if (!data.empty())
        ioStreams.errors << inOutput << ": the data fork, " << data.size()
                         << " bytes, has no place in AppleDouble; an output named ._NAME puts it into NAME\n";
}

void WriteForm(const std::string& inOutput, Form inForm, const Source& inSource, const Arguments& inArguments,
               Streams ioStreams)
{
    if (inForm == Form::AppleDouble)
        return WriteAppleDouble(inOutput, inSource, ioStreams);
    for (const auto& form : kForms)
        if (form.form == inForm && form.write)
            return WriteFile(inOutput, form.write(inSource.parts));
    if (!inSource.hasFork)
        throw std::runtime_error(inArguments.Files()[0] + ": there is no resource fork");
    if (!inSource.parts.dataFork.empty())
        ioStreams.errors << inOutput << ": the data fork, " << inSource.parts.dataFork.size()
                         << " bytes, has no place in this form\n";
    if (inForm == Form::None)
        WriteFile(inOutput, TextOf(inSource, inArguments));
    else
        WriteFile(inOutput, inSource.parts.resourceFork);
}

Form FormArgument(const Arguments& inArguments)
{
    const std::string name = inArguments.Value("--to");
    for (const auto& form : kForms)
        if (name == form.name)
            return form.form;
    throw UsageError("--to takes raw, appledouble, applesingle, macbinary, binhex or text, not '" + name +
                     "'");
}

void Override(const Arguments& inArguments, FileParts* ioParts)
{
    if (inArguments.Has("--type"))
        ioParts->finderInfo.fdType = CodeArgument("--type", inArguments.Value("--type"));
    if (inArguments.Has("--creator"))
        ioParts->finderInfo.fdCreator = CodeArgument("--creator", inArguments.Value("--creator"));
    if (inArguments.Has("--name"))
        ioParts->name = foundation::MacRomanFromUtf8(inArguments.Value("--name"));
    if (ioParts->name.empty())
        ioParts->name = NameOf(inArguments.Files()[0]);
}

} // namespace

int ConvertCommand(const Words& inWords, Streams ioStreams)
{
    const Arguments arguments(inWords, { { "-o", true },
                                         { "--to", true },
                                         { "--type", true },
                                         { "--creator", true },
                                         { "--name", true },
                                         { "-I", true },
                                         { "-D", true },
                                         { "--swap-custom", false },
                                         { "--big-endian-custom", false } });
    arguments.NeedFiles(1, 1, "convert takes one file");
    if (arguments.Value("-o").empty())
        throw UsageError("convert needs -o OUT");
    if (!arguments.Has("--to"))
        throw UsageError("convert needs --to FORM");
    const Form form = FormArgument(arguments);
    const std::string& input = arguments.Files()[0];
    Source source;
    TakeForks(input, ioStreams, &source);
    std::string bytes;
    if (!source.hasFork && input.ends_with(".r") && LoadFile(input, &bytes) && IsDescription(input, bytes)) {
        source.parts.dataFork = {};
        if (!TakeText(input, arguments, ioStreams, &source))
            return 1;
    }
    Override(arguments, &source.parts);
    if (arguments.Has("--swap-custom"))
        SwapCustom(&source);
    WriteForm(arguments.Value("-o"), form, source, arguments, ioStreams);
    return 0;
}

} // namespace lampblack::rsrc
