// Any bytes as a region: what is read is within its bounds, and written and read again it is the same.
#include "RegionBytes.h"

#include <cstdlib>

using namespace lampblack::quickdraw;

static void Require(bool inHolds)
{
    if (!inHolds)
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    const std::vector<uint8_t> bytes(inData, inData + inSize); // its end is where a sanitizer sees it
    Region region;
    size_t used = 0;
    if (!ReadRegionBytes(bytes, &region, &used))
        return 0;
    Require(used >= 10 && used <= inSize);
    const std::vector<uint8_t> written = RegionBytes(region);
    if (written.empty())
        return 0;
    Region again;
    Require(ReadRegionBytes(written, &again, &used) && used == written.size());
    Region representable = region;
    if (!region.IsRectangle())
        representable.Intersect(Box{ -32768, -32768, 32766, 32766 });
    Require(again == representable);
    return 0;
}
