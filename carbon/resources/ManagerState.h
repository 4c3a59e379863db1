// What the files of entries share: the error of the last call and whether resources are loaded when asked
// for.
#ifndef LAMPBLACK_RESOURCES_MANAGERSTATE_H
#define LAMPBLACK_RESOURCES_MANAGERSTATE_H

#include <Carbon/Resources.h>

namespace lampblack::resources {

[[gnu::visibility("hidden")]] extern constinit OSErr gResourceError; // what ResError answers
inline OSErr SetResourceError(OSErr inError)
{
    return gResourceError = inError;
}

// Asked before a handle of a resource is purged for want of memory.
bool MayPurgeResource(Handle);

} // namespace lampblack::resources

#endif
