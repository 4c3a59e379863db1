// Drawing in a window's port without a trace.
#ifndef LAMPBLACK_WINDOWS_PORTSAVER_H
#define LAMPBLACK_WINDOWS_PORTSAVER_H

#include <Carbon/Quickdraw.h>

namespace lampblack::windows {

// Makes a port current with a wide-open clip, and puts everything back.
class StWindowPort {
public:
    [[nodiscard]] explicit StWindowPort(CGrafPtr inPort);
    ~StWindowPort();
    StWindowPort(const StWindowPort&) = delete;
    StWindowPort& operator=(const StWindowPort&) = delete;

private:
    CGrafPtr fSaved = nullptr, fPort;
    GDHandle fDevice = nullptr;
    RgnHandle fClip;
};

} // namespace lampblack::windows

#endif
