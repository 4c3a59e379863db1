// Any bytes as an icon family: read, drawn, written and read again.
#include "icons/Family.h"

#include <cstdlib>

using namespace lampblack::icons;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    const std::optional<Members> members = ReadFamily({ inData, inSize });
    if (!members)
        return 0;
    IconPicture picture;
    const Getter getter = [&](Kind kind) { return members->At(kind); };
    for (const short side : { 12, 16, 32, 48, 128 })
        ReadBest(getter, { 0, 0, side, side }, side == 32 ? 8 : 32, &picture);
    const std::optional<Members> again = ReadFamily(FamilyOf(*members));
    if (!again || again->data != members->data)
        std::abort();
    return 0;
}
