// What differs between the resources of two files.
#include "Commands.h"
#include "Dump.h"
#include "InputFile.h"
#include "LineDiff.h"
#include "MacText.h"

#include <algorithm>

namespace lampblack::rsrc {

namespace {

// A type, an ID, and which of those with the same two it is.
using Key = std::tuple<OSType, SInt16, size_t>;

std::string ShownKey(const Resource& inResource)
{
    return QuotedCode(inResource.type) + " (" + std::to_string(inResource.id) + ")";
}

std::string ShownName(const Resource& inResource)
{
    return inResource.hasName ? QuotedText(inResource.name) : "none";
}

std::string Line(const char* inWord, const Resource& inResource)
{
    std::string line = std::string(inWord) + ShownKey(inResource);
    if (inResource.hasName)
        line += " " + ShownName(inResource);
    return line + ", " + std::to_string(inResource.data.size()) + " bytes\n";
}

std::map<Key, const Resource*> Keyed(const std::vector<Resource>& inResources)
{
    std::map<std::pair<OSType, SInt16>, size_t> counts;
    std::map<Key, const Resource*> keyed;
    for (const Resource& resource : inResources)
        keyed[{ resource.type, resource.id, counts[{ resource.type, resource.id }]++ }] = &resource;
    return keyed;
}

// What changed between two resources of one key; empty when they are the same.
std::string Changes(const Resource& inOld, const Resource& inNew)
{
    std::string text;
    if (inOld.hasName != inNew.hasName || inOld.name != inNew.name)
        text += ", name " + ShownName(inOld) + " -> " + ShownName(inNew);
    if (inOld.attributes != inNew.attributes)
        text +=
            ", attributes " + std::to_string(inOld.attributes) + " -> " + std::to_string(inNew.attributes);
    if (inOld.data.size() != inNew.data.size())
        text +=
            ", " + std::to_string(inOld.data.size()) + " -> " + std::to_string(inNew.data.size()) + " bytes";
    if (inOld.data != inNew.data) {
        const auto [there, here] =
            std::mismatch(inOld.data.begin(), inOld.data.end(), inNew.data.begin(), inNew.data.end());
        text += ", from byte " + std::to_string(there - inOld.data.begin()) + " on";
    }
    return text;
}

std::string Indented(const std::string& inLines)
{
    std::string text;
    for (size_t start = 0; start < inLines.size();) {
        const size_t end = inLines.find('\n', start) + 1;
        text += "    " + inLines.substr(start, end - start);
        start = end;
    }
    return text;
}

class Comparison {
public:
    Comparison(const DumpOptions& inOptions, bool inShowsText, std::ostream& ioOutput)
        : fOptions(inOptions), fShowsText(inShowsText), fOutput(ioOutput)
    {
    }

    // Answers whether they are the same.
    bool Run(const std::vector<Resource>& inOld, const std::vector<Resource>& inNew)
    {
        const std::map<Key, const Resource*> before = Keyed(inOld), after = Keyed(inNew);
        for (const auto& [key, resource] : before) {
            const auto same = after.find(key);
            if (same == after.end())
                Tell(Line("removed  ", *resource), resource, nullptr);
            else if (const std::string changes = Changes(*resource, *same->second); !changes.empty())
                Tell("changed  " + ShownKey(*resource) + ": " + changes.substr(2) + "\n", resource,
                     same->second);
        }
        for (const auto& [key, resource] : after)
            if (!before.contains(key))
                Tell(Line("added    ", *resource), nullptr, resource);
        return fCount == 0;
    }

private:
    void Tell(const std::string& inLine, const Resource* inOld, const Resource* inNew)
    {
        ++fCount;
        fOutput << inLine;
        if (fShowsText)
            fOutput << Indented(LineDiff(TextOf(inOld), TextOf(inNew)));
    }

    std::string TextOf(const Resource* inResource) const
    {
        return inResource ? DumpResource(*inResource, fOptions, false) : std::string();
    }

    const DumpOptions& fOptions;
    bool fShowsText;
    std::ostream& fOutput;
    size_t fCount = 0;
};

// Both may be descriptions as well.
std::vector<Resource> ResourcesOf(const std::string& inPath, const Arguments& inArguments, Streams ioStreams)
{
    Compiler compiler(LoadFile, {});
    compiler.SetNativeIsBig(inArguments.Has("--big-endian-custom"));
    std::vector<Resource> resources;
    if (!AddInput(inPath, compiler, ioStreams, &resources))
        throw std::runtime_error(inPath + ": cannot be compared");
    return resources;
}

} // namespace

int DiffCommand(const Words& inWords, Streams ioStreams)
{
    const Arguments arguments(inWords, { { "--text", false }, { "--big-endian-custom", false } });
    arguments.NeedFiles(2, 2, "diff takes two files");
    const std::vector<Resource> before = ResourcesOf(arguments.Files()[0], arguments, ioStreams);
    const std::vector<Resource> after = ResourcesOf(arguments.Files()[1], arguments, ioStreams);
    Compiler compiler(LoadFile, {});
    const DumpOptions options = { &compiler.Types(), &compiler.EnumNames(),
                                  arguments.Has("--big-endian-custom") };
    Comparison comparison(options, arguments.Has("--text"), ioStreams.output);
    return comparison.Run(before, after) ? 0 : 1;
}

} // namespace lampblack::rsrc
