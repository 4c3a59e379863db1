// From a file to what a record keeps of it, and from there back to the file. Begin at FindTarget.
#ifndef LAMPBLACK_FILES_ALIASTARGETS_H
#define LAMPBLACK_FILES_ALIASTARGETS_H

#include "AliasRecord.h"
#include "Catalog.h"

namespace lampblack::files {

// What a record keeps of a target that exists; inFrom may be null. A minimal record knows where it is and no
// more.
AliasContents DescribeTarget(const Item* inFrom, const Item& inTarget);
AliasContents DescribeMinimally(const Item& inTarget);

// FindTarget
//
// By the way from inFrom, when there is one and the record has it; by the path from where the volume was
// mounted, or is now; by the Macintosh path. A name that is gone is looked for in the same folder by the
// number and birth of the file; inNumbersFirst: that comes before the name. *outIsElsewhere, which may be
// null: not where the record said.
//
// Errors:     fnfErr  the folder is there and the target is not, *outTarget is filled in; dirNFErr; nsvErr.
OSErr FindTarget(const AliasContents&, const Item* inFrom, bool inNumbersFirst, Item* outTarget,
                 bool* outIsElsewhere);

// The names on the way down from the volume to the target, as the host has them; none when the record has no
// path.
std::vector<std::string> NamesOnTheWay(const AliasContents&);

} // namespace lampblack::files

#endif
