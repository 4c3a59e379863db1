// Which resources a statement means: a type, perhaps with an ID, a range of IDs or a name. And what they
// become.
#ifndef LAMPBLACK_RSRC_SELECTION_H
#define LAMPBLACK_RSRC_SELECTION_H

#include "TextFunctions.h"

namespace lampblack::rsrc {

struct Selection {
    OSType type = 0; // 0: every type
    bool hasIDs = false;
    SInt16 first = 0, last = 0;
    std::optional<std::string> name;
    bool isInverted = false; // all but these

    bool Matches(const Resource&) const;
};

// 'TYPE', 'TYPE' (ID), 'TYPE' (FIRST:LAST) or 'TYPE' ("name").
Selection ReadSelection(TokenCursor&, const NameResolver&, const TextFunctions&);

// The key, name and attributes that a resource gets. With a range selected, IDs keep their distances.
struct Renaming {
    OSType type = 0;
    std::optional<SInt16> id;
    std::optional<std::string> name;
    std::optional<UInt8> attributes;

    void Apply(const Selection&, Resource* ioResource) const;
};

// What stands between '(' and ')' of a statement, and the reader of one ID and of attributes.
SInt16 ReadID(TokenCursor&, const NameResolver&);
UInt8 ReadAttributes(TokenCursor&, const char* inWhat);
Renaming ReadRenaming(TokenCursor&, const NameResolver&, const TextFunctions&);

} // namespace lampblack::rsrc

#endif
