// Any bytes as a colour table: what is read becomes a handle, a space, and finds the nearest of its entries.
#include "ColorTables.h"

#include <cstdlib>

using namespace lampblack;
using namespace lampblack::quickdraw;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    foundation::BigEndianReader reader(inData, inSize);
    const std::optional<TableEntries> entries = ReadTable(reader);
    const CTabHandle table = entries ? NewTable(*entries) : nullptr;
    if (!table)
        return 0;
    const SpacePointer space = SpaceOf(table);
    if (space != SpaceOf(*entries))
        std::abort();
    for (int i = 0; i < space->Count(); ++i)
        if (space->At(space->IndexOf(space->At(i))) != space->At(i))
            std::abort();
    DisposeCTable(table);
    return 0;
}
