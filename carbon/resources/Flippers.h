// Byte order of the types that are read as records: the platform's own flippers, and the search for one.
#ifndef LAMPBLACK_RESOURCES_FLIPPERS_H
#define LAMPBLACK_RESOURCES_FLIPPERS_H

#include <Carbon/CoreEndian.h>

namespace lampblack::resources {

// The platform's flipper of a resource type; null when the type is delivered as it is.
CoreEndianFlipProc StandardFlipper(OSType inType);

// Whether what is loaded of a type stays as it is.
bool IsUnflipped(OSType inType);

// Turns what was just read from a file into native order, by the installed flipper or else the platform's.
OSStatus FlipLoaded(OSType inType, SInt16 inID, void* ioData, size_t inSize);
// The other way: what is about to be written.
OSStatus FlipStored(OSType inType, SInt16 inID, void* ioData, size_t inSize);

} // namespace lampblack::resources

#endif
