#include "InputFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace lampblack::rsrc {

std::string WhyNotOpened(const std::string& inPath, int inError)
{
    std::error_code error;
    const bool isFolder = std::filesystem::is_directory(inPath, error);
    return inPath + ": " + (inError == EISDIR && !isFolder ? "not a file" : std::strerror(inError));
}

bool IsDescription(const std::string& inPath, const std::string& inBytes)
{
    const Bytes bytes((const uint8_t*)inBytes.data(), inBytes.size());
    if (resources::ReadContainer(bytes).form != resources::Form::None)
        return false;
    const bool named = inPath.size() > 2 && SameWord(inPath.substr(inPath.size() - 2), ".r");
    return named || inBytes.find('\0') == std::string::npos;
}

void OpenFile(const std::string& inPath, Streams ioStreams, OpenFork* outFork)
{
    outFork->forks = resources::LocateForks(inPath);
    for (const std::string& problem : outFork->forks.problems)
        ioStreams.errors << inPath << ": " << problem << "\n";
    if (!outFork->forks.exists && !outFork->forks.hasResourceFork)
        throw std::runtime_error(WhyNotOpened(inPath, outFork->forks.openError));
    if (!outFork->forks.hasResourceFork)
        throw std::runtime_error(inPath + ": not a resource file");
    if (outFork->forks.resourceFork.empty())
        return; // an empty fork is an empty file
    if (const char* problem = outFork->fork.Open(outFork->forks.resourceFork))
        throw std::runtime_error(inPath + ": " + problem);
}

namespace {

bool AddFork(const std::string& inPath, Streams ioStreams, std::vector<Resource>* ioResources,
             std::vector<std::string>* outProblems)
{
    OpenFork file;
    OpenFile(inPath, ioStreams, &file);
    std::vector<Resource> found;
    const bool isRead =
        file.forks.resourceFork.empty() || ReadFork(file.forks.resourceFork, &found, outProblems);
    for (std::string& problem : *outProblems)
        problem = inPath + ": " + problem;
    Merge(std::move(found), ioResources);
    return isRead && outProblems->empty() && file.forks.problems.empty();
}

} // namespace

bool AddInput(const std::string& inPath, Compiler& ioCompiler, Streams ioStreams,
              std::vector<Resource>* ioResources)
{
    std::string bytes;
    std::vector<std::string> problems;
    const bool isText = LoadFile(inPath, &bytes) && IsDescription(inPath, bytes) &&
                        !(bytes.empty() && resources::LocateForks(inPath).hasResourceFork);
    const bool isSound = isText ? ioCompiler.Compile(inPath, TextFromBytes(bytes), ioResources, &problems)
                                : AddFork(inPath, ioStreams, ioResources, &problems);
    for (const std::string& problem : problems)
        ioStreams.errors << problem << "\n";
    return isSound;
}

} // namespace lampblack::rsrc
