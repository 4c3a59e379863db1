// Resources on their way from the inputs to the output, and the forks they are read from.
#ifndef LAMPBLACK_RSRC_RESOURCES_H
#define LAMPBLACK_RSRC_RESOURCES_H

#include "Source.h"

#include <Carbon/MacTypes.h>
#include <foundation/BigEndian.h>

#include <vector>

namespace lampblack::rsrc {

using foundation::Bytes;

struct Resource {
    OSType type = 0;
    SInt16 id = 0;
    UInt8 attributes = 0;
    bool hasName = false;
    std::string name; // Mac Roman
    std::vector<uint8_t> data;
    Place place; // of the statement, when it came from a text

    bool SameKey(const Resource& inOther) const { return type == inOther.type && id == inOther.id; }
};

// A type code as text: four characters, UTF-8 from Mac Roman.
std::string TypeText(OSType);

// Answers false unless the UTF-8 text is one to four Mac Roman characters; short ones are filled with spaces.
bool TypeFromText(std::string_view inUtf8, OSType* outType);

// "'STR#' (128)".
std::string KeyText(OSType inType, SInt16 inID);

// Appends every resource of a fork. Answers false when the map cannot be read; a resource whose data are cut
// off is left out. outProblems gets a sentence for each.
bool ReadFork(Bytes inFork, std::vector<Resource>* ioResources, std::vector<std::string>* outProblems);

// Appends the later resources; one with the type and ID of an earlier takes its place.
void Merge(std::vector<Resource> inLater, std::vector<Resource>* ioResources);

// Throws std::runtime_error when the resources pass a limit of the format.
std::vector<uint8_t> BuildFork(const std::vector<Resource>&, UInt16 inFileAttributes = 0);

// Writes a file as a whole or not at all: after a crash or on a full disk the old one is still there. A link
// is followed; what is no ordinary file, such as /dev/stdout, is written to directly. Throws
// std::runtime_error.
void WriteFile(const std::string& inPath, Bytes inContents);

} // namespace lampblack::rsrc

#endif
