// Any bytes as a pixel pattern: what is taken is drawn at an indexed and at a direct depth, and disposed of.
#include "PixelPatterns.h"

using namespace lampblack::quickdraw;

static GWorldPtr WorldOf(short inDepth)
{
    GWorldPtr world = nullptr;
    const Rect bounds = { 0, 0, 20, 40 };
    NewGWorld(&world, inDepth, &bounds, nullptr, nullptr, 0);
    return world;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    static const GWorldPtr worlds[] = { WorldOf(2), WorldOf(32) };
    const PixPatHandle pattern = PatternFromBytes({ inData, inSize });
    const Rect all = { 0, 0, 20, 40 };
    for (const GWorldPtr world : worlds) {
        SetGWorld(world, nullptr);
        FillCOval(&all, pattern);
    }
    DisposePixPat(pattern);
    return 0;
}
