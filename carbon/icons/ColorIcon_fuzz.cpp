// Any bytes as a 'cicn' resource: read, drawn at two depths and disposed of.
#include "icons/ColorIcons.h"

using namespace lampblack::icons;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    const CIconHandle icon = NewColorIcon({ inData, inSize });
    IconPicture picture;
    ReadColorIcon(icon, 32, &picture);
    ReadColorIcon(icon, 1, &picture);
    MaskOf(picture, { 0, 0, 50, 50 });
    DisposeCIcon(icon);
    return 0;
}
