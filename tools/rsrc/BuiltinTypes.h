// The resource types that every description may use without declaring them.
#ifndef LAMPBLACK_RSRC_BUILTINTYPES_H
#define LAMPBLACK_RSRC_BUILTINTYPES_H

#include "TypeModel.h"

namespace lampblack::rsrc {

// The declarations, in the language that TypeParser reads.
const SourceText& BuiltinTypeText();

// Made once; copies share the declarations.
const TypeTable& BuiltinTypes();

} // namespace lampblack::rsrc

#endif
