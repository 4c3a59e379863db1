// Any bytes as a 'crsr' resource: read, shown and disposed of.
#include "CursorImage.h"

#include <Carbon/Quickdraw.h>

#include <lampblack/host.h>

using namespace lampblack::quickdraw;

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    lampblack::host::Settings settings;
    settings.screen = lampblack::host::Screen::Headless;
    return lampblack::host::Configure(settings) ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    const CCrsrHandle cursor = ReadColorCursor({ inData, inSize });
    SetCCursor(cursor);
    DisposeCCursor(cursor);
    return 0;
}
