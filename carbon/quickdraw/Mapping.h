// Mapping of coordinates from one rectangle to another, as MapPt and MapRect do it.
#ifndef LAMPBLACK_QUICKDRAW_MAPPING_H
#define LAMPBLACK_QUICKDRAW_MAPPING_H

#include <Carbon/Quickdraw.h>

namespace lampblack::quickdraw {

class Region;

Point Mapped(Point, const Rect& from, const Rect& to);
Rect Mapped(const Rect&, const Rect& from, const Rect& to);
Region Inset(const Region&, int dh, int dv);

} // namespace lampblack::quickdraw

#endif
