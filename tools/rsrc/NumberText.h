// A number as a description shows it: by the name that its field gives the value, else as the field would
// have it look.
#ifndef LAMPBLACK_RSRC_NUMBERTEXT_H
#define LAMPBLACK_RSRC_NUMBERTEXT_H

#include "TypeModel.h"

namespace lampblack::rsrc {

// inRaw has as many bits as the field. outExplains: whether it became a name.
std::string NumberText(const Field&, uint64_t inRaw, bool* outExplains);

} // namespace lampblack::rsrc

#endif
