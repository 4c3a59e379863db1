// Any bytes as Targa data.
#include "ImageFuzzing.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    return lampblack::images::FuzzImage(kQTFileTypeTargaImage, inData, inSize);
}
