// A file that a command reads: a resource file in any container, or a description. Begin at OpenFile.
#ifndef LAMPBLACK_RSRC_INPUTFILE_H
#define LAMPBLACK_RSRC_INPUTFILE_H

#include "Arguments.h"
#include "Compiler.h"

#include <resources/Container.h>
#include <resources/ResourceFork.h>

namespace lampblack::rsrc {

// A fork that was found, with the file it lies in.
struct OpenFork {
    resources::LocatedForks forks;
    resources::ResourceFork fork;
};

// Whether the bytes are text to compile and no container.
bool IsDescription(const std::string& inPath, const std::string& inBytes);

// The line that says why a file could not be opened, with its errno.
std::string WhyNotOpened(const std::string& inPath, int inError);

// Warnings about damage go to the errors; a fork that cannot be read at all throws.
void OpenFile(const std::string& inPath, Streams, OpenFork* outFork);

// Adds the resources of a description or of a resource file. Answers whether it was without fault; problems
// go to the errors, a line each.
bool AddInput(const std::string& inPath, Compiler&, Streams, std::vector<Resource>* ioResources);

} // namespace lampblack::rsrc

#endif
