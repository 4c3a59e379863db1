// 'MENU' and 'xmnu' bytes of any kind: the first byte says where one ends and the other begins.
#include "MenuFormat.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    if (!inSize)
        return 0;
    const size_t cut = std::min<size_t>(inData[0], inSize - 1);
    lampblack::menus::MenuRecord menu;
    lampblack::menus::ReadMenu(inData + 1, cut, menu);
    lampblack::menus::ReadExtensions(inData + 1 + cut, inSize - 1 - cut, menu);
    return 0;
}
