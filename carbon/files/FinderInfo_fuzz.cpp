// Any 32 bytes as Finder information come back as they were, alone and within AppleDouble; an entry of any
// length is read.
#include "ContainerRoundTrip.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    using namespace lampblack::files;
    uint8_t bytes[32] = {}, again[32];
    if (inSize > 0)
        std::memcpy(bytes, inData, std::min<size_t>(inSize, 32));
    FileParts parts;
    parts.finderInfo = FinderInfoFromBytes(bytes);
    parts.extendedFinderInfo = ExtendedInfoFromBytes(bytes + 16);
    FinderInfoToBytes(parts.finderInfo, again);
    ExtendedInfoToBytes(parts.extendedFinderInfo, again + 16);
    Require(std::memcmp(bytes, again, 32) == 0);

    std::vector<uint8_t> file = WriteAppleDouble(parts);
    RequireSame(parts, ReadContainer(file), true);
    file.resize(50); // the entry as long as the input, behind the header
    file.insert(file.end(), inData, inData + inSize);
    lampblack::foundation::StoreBE32(file.data() + 34, (uint32_t)inSize);
    lampblack::foundation::StoreBE32(file.data() + 46, 0);
    ReadContainer(file);
    return 0;
}
