// Which press is the second of a double click: near the one before, soon enough, with the same button.
#ifndef LAMPBLACK_HOST_CLICKCOUNTER_H
#define LAMPBLACK_HOST_CLICKCOUNTER_H

#include <Carbon/MacTypes.h>

#include <cstdlib>

namespace lampblack::host {

class ClickCounter {
public:
    UInt32 Press(double inTime, Point inWhere, UInt16 inButton)
    {
        const bool near = abs(inWhere.h - fWhere.h) <= kDistance && abs(inWhere.v - fWhere.v) <= kDistance;
        fCount = near && inButton == fButton && inTime - fTime <= kSeconds ? fCount + 1 : 1;
        fTime = inTime;
        fWhere = inWhere;
        fButton = inButton;
        return fCount;
    }
    UInt32 Count() const { return fCount; }

private:
    static constexpr double kSeconds = 0.5;
    static constexpr int kDistance = 4; // screen pixels

    double fTime = -1;
    Point fWhere = { 0, 0 };
    UInt16 fButton = 0;
    UInt32 fCount = 1;
};

} // namespace lampblack::host

#endif
