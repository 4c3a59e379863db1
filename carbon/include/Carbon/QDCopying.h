// Copying of pixels beyond CopyBits: masks. Begin with CopyMask. Quickdraw.h includes this.
#ifndef LAMPBLACK_CARBON_QDCOPYING_H
#define LAMPBLACK_CARBON_QDCOPYING_H

#include <Carbon/MacTypes.h>

#endif
