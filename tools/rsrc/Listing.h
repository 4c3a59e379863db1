// Lists of a fork's resources, for people and for programs.
#ifndef LAMPBLACK_RSRC_LISTING_H
#define LAMPBLACK_RSRC_LISTING_H

#include <resources/ResourceFork.h>

#include <ostream>

namespace lampblack::rsrc {

// One line a resource: type, ID, size, attributes, name.
void ListAsText(const resources::ResourceFork&, std::ostream&);

// An array of objects with type, id, name (null when there is none), attributes (a number) and size (null
// when the data are cut off). Everything but the codes of control characters is plain UTF-8.
void ListAsJson(const resources::ResourceFork&, std::ostream&);

// A JSON string with its quotes.
std::string JsonString(std::string_view inUtf8);

} // namespace lampblack::rsrc

#endif
