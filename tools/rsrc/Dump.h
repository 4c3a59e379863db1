// Resources as text that `build` turns into the same bytes: typed statements where the type is known and
// gives back every byte, hexadecimal ones for the rest.
#ifndef LAMPBLACK_RSRC_DUMP_H
#define LAMPBLACK_RSRC_DUMP_H

#include "Resources.h"
#include "TypeModel.h"

namespace lampblack::rsrc {

struct DumpOptions {
    const TypeTable* types = nullptr;
    const Names* names = nullptr;
    bool nativeIsBig = false;
};

// "resource 'STR ' (128, "name", purgeable) { ... };" with a line end behind it. inRepeats: a resource with
// this key stands before it in the text.
std::string DumpResource(const Resource&, const DumpOptions&, bool inRepeats);

// All of them in their order, empty lines between.
std::string DumpResources(const std::vector<Resource>&, const DumpOptions&);

// Turns the numbers in a resource that are kept in the order of the reading machine, into the other order.
// Answers whether there were any. Throws DecodeError when the bytes are no resource of the type.
bool SwapNativeNumbers(const TypeTable&, const Names&, Resource* ioResource);

} // namespace lampblack::rsrc

#endif
