// What every call with a parameter block does at its end.
#ifndef LAMPBLACK_FILES_PARAMETERBLOCK_H
#define LAMPBLACK_FILES_PARAMETERBLOCK_H

#include <Carbon/Files.h>

namespace lampblack::files {

template <class Block>
OSErr Finish(Block& ioBlock, OSErr inResult)
{
    ioBlock.ioResult = inResult;
    return inResult;
}

} // namespace lampblack::files

#endif
