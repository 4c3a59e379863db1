// Any letters as BinHex; and any bytes encoded, to be decoded again.
#include "ContainerRoundTrip.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    using namespace lampblack::files;
    const Container container = ReadContainer({ inData, inSize });
    if (container.form == Form::BinHex && container.problems.empty())
        CheckEveryForm(container);
    const size_t half = inSize / 2;
    FileParts parts;
    parts.name.assign((const char*)inData, std::min<size_t>(half, 20));
    parts.dataFork = { inData, half };
    parts.resourceFork = { inData + half, inSize - half };
    const std::vector<uint8_t> bytes = WriteBinHex(parts);
    const Container again = ReadContainer(bytes);
    RequireSame(parts, again, false);
    Require(std::ranges::equal(again.dataFork, parts.dataFork));
    return 0;
}
