// Any bytes as an alias record: read, written anew and read again, which must be the same.
#include "AliasRecord.h"

#include <cstdlib>

using namespace lampblack::files;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    AliasContents contents, again;
    if (!ReadAlias(Bytes(inData, inSize), &contents))
        return 0;
    const std::vector<UInt8> bytes = WriteAlias(contents);
    if (!ReadAlias(bytes, &again) || WriteAlias(again) != bytes)
        std::abort();
    return 0;
}
