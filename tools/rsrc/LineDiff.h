// The lines in which two texts differ.
#ifndef LAMPBLACK_RSRC_LINEDIFF_H
#define LAMPBLACK_RSRC_LINEDIFF_H

#include <string>

namespace lampblack::rsrc {

// Each line that only one of them has, behind "- " or "+ ", in the order of the texts; as few as can be,
// unless they are so long that all of what lies between their common ends is shown.
std::string LineDiff(const std::string& inOld, const std::string& inNew);

} // namespace lampblack::rsrc

#endif
