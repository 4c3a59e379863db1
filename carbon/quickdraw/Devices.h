// Graphics devices: the main screen, and one for each offscreen world.
#ifndef LAMPBLACK_QUICKDRAW_DEVICES_H
#define LAMPBLACK_QUICKDRAW_DEVICES_H

#include <Carbon/Quickdraw.h>

namespace lampblack::quickdraw {

bool IsDevice(GDHandle);
GDHandle NewWorldDevice(PixMapHandle, const Rect& bounds, int depth);
void DeviceDepthChanged(GDHandle, int depth);
void MoveWorldDevice(GDHandle, const Rect& bounds);
void DisposeWorldDevice(GDHandle); // null is fine; a current one gives way to the main device

PixMapHandle DeviceMap(GDHandle);    // null for what is no device
PixMap* FindDeviceMap(PixMapHandle); // the main device's own

Rect ScreenBounds();       // global
const PixMap& ScreenMap(); // without pixels while nobody composes them

} // namespace lampblack::quickdraw

#endif
