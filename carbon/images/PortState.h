// The current port and device, put back at the end.
#ifndef LAMPBLACK_IMAGES_PORTSTATE_H
#define LAMPBLACK_IMAGES_PORTSTATE_H

#include <Carbon/Quickdraw.h>

namespace lampblack::images {

class StPortState {
public:
    [[nodiscard]] StPortState() { GetGWorld(&fPort, &fDevice); }
    ~StPortState() { SetGWorld(fPort, fDevice); }
    StPortState(const StPortState&) = delete;
    StPortState& operator=(const StPortState&) = delete;

private:
    CGrafPtr fPort = nullptr;
    GDHandle fDevice = nullptr;
};

} // namespace lampblack::images

#endif
