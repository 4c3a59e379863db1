// Values of one type read as another.
#ifndef LAMPBLACK_EVENTS_COERCIONS_H
#define LAMPBLACK_EVENTS_COERCIONS_H

#include "events/EventRecord.h"

namespace lampblack::events {

// Reads a value of type inFrom as inTo: integers and reals of any width, points and rectangles with and
// without fractions, Mac Roman, UTF-16 and UTF-8 text, untyped pointers. Answers errAECoercionFail where the
// types are no kin, where the bytes are not a value of their type, and where an integer does not fit.
//
// Copies at most inBufferSize bytes to outData, which may be null; *outSize is the size of the whole result.
OSStatus Coerce(const Found& inValue, EventParamType inTo, size_t inBufferSize, void* outData,
                size_t* outSize);

} // namespace lampblack::events

#endif
