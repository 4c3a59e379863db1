// Any bytes as an AppleDouble into which an entry is put: the result is sound and has the entry.
#include "DoubleEntries.h"

#include <cstdlib>

using namespace lampblack::files;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    const uint8_t entry[16] = { 1, 2, 3 };
    const Bytes bytes(inData, inSize);
    const std::vector<uint8_t> once = WithEntry(bytes, kDatesEntry, entry, {});
    const std::vector<uint8_t> twice = WithEntry(once, kDatesEntry, entry, {});
    if (!PlaceOfEntry(once, kDatesEntry, sizeof entry) || once.size() != twice.size())
        std::abort();
    PlaceOfEntry(bytes, kFinderInfoEntry, 32);
    return 0;
}
