// Coercions of descriptors: those that are installed, then those that are provided.
#ifndef LAMPBLACK_PROCESS_DESCRIPTORCOERCIONS_H
#define LAMPBLACK_PROCESS_DESCRIPTORCOERCIONS_H

#include "Descriptors.h"

namespace lampblack::process {

// A value as another type. *outValue is left alone on an error. Errors: those of AECoerceDesc.
OSErr Coerce(const Typed&, DescType inTo, Typed* outValue);

// The handlers of the application, then those of the system; errAECoercionFail when none does it.
OSErr CoerceByHandlers(const Typed&, DescType inTo, Typed* outValue);

// Numbers, texts, codes and truth values; errAECoercionFail for anything else.
OSErr CoerceData(const Typed&, DescType inTo, Typed* outValue);
bool IsDataType(DescType);

// The types that name files.
bool IsFileType(DescType);
OSErr CoerceFile(const Typed&, DescType inTo, Typed* outValue);

} // namespace lampblack::process

#endif
