// Pixel maps of the application's own.
#include "ColorTables.h"
#include "Devices.h"
#include "PortRecord.h"

#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>

#include <memory/HandleBlock.h>

using namespace lampblack::quickdraw;

namespace lampblack::quickdraw {

// A copy of one table in place of what another holds; the other reference stays good.
static void CopyTable(CTabHandle inFrom, CTabHandle ioTo)
{
    const auto from = reinterpret_cast<Handle>(inFrom), to = reinterpret_cast<Handle>(ioTo);
    if (from == to || !lampblack::memory::FindHandle(from) || !lampblack::memory::FindHandle(to))
        return;
    const Size size = GetHandleSize(from);
    SetHandleSize(to, size);
    if (GetHandleSize(to) == size)
        BlockMoveData(*from, *to, size);
}

} // namespace lampblack::quickdraw

PixMapHandle NewPixMap(void)
{
    const auto handle = reinterpret_cast<PixMapHandle>(NewHandleClear(sizeof(PixMap)));
    const auto table = handle ? reinterpret_cast<CTabHandle>(NewHandleClear(sizeof(ColorTable))) : nullptr;
    SetQDError(table ? noErr : cNoMemErr);
    if (!table) {
        DisposeHandle(reinterpret_cast<Handle>(handle));
        return nullptr;
    }
    const PixMap* device = FindPixMap(DeviceMap(GetGDevice()));
    DescribePixels(**handle, device && IsDepth(device->pixelSize) ? device->pixelSize : 32);
    (**table).ctSize = -1;
    (**handle).pmTable = table;
    return handle;
}

void DisposePixMap(PixMapHandle pm)
{
    if (FindPort(pm) || FindDeviceMap(pm))
        return;
    if (const PixMap* map = FindPixMap(pm)) {
        DisposeCTable(map->pmTable);
        DisposeHandle(reinterpret_cast<Handle>(pm));
    }
}

void CopyPixMap(PixMapHandle srcPM, PixMapHandle dstPM)
{
    const PixMap* from = FindPixMap(srcPM);
    PixMap* to = FindPixMap(dstPM);
    if (!from || !to || from == to)
        return;
    const CTabHandle table = to->pmTable;
    *to = *from;
    to->pmTable = table;
    CopyTable(from->pmTable, table);
}
