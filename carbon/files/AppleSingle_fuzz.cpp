// Any bytes behind the magic number of AppleSingle or AppleDouble: read, and written in every form.
#include "ContainerRoundTrip.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    using namespace lampblack::files;
    if (inSize < 1)
        return 0;
    std::vector<uint8_t> bytes = { 0, 5, 0x16, (uint8_t)(inData[0] & 1 ? 7 : 0) };
    bytes.insert(bytes.end(), inData + 1, inData + inSize);
    const Container container = ReadContainer(bytes);
    const bool isApple = container.form == Form::AppleSingle || container.form == Form::AppleDouble;
    Require(isApple || IsMacBinary(bytes));
    CheckEveryForm(container);
    return 0;
}
