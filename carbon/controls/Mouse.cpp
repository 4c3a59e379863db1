#include "controls/Mouse.h"

#include <Carbon/MacWindows.h>

namespace lampblack::controls {

bool StMouse::StillDown(double inTimeout)
{
    MouseTrackingResult result = kMouseTrackingMouseUp;
    UInt32 modifiers = 0;
    fTimedOut = false;
    const OSStatus status =
        TrackMouseLocationWithOptions(GetWindowPort(fWindow), 0, inTimeout, &fWhere, &modifiers, &result);
    fTimedOut = status == eventLoopTimedOutErr || result == kMouseTrackingTimedOut;
    if (status != noErr && !fTimedOut)
        return false;
    return result != kMouseTrackingMouseUp && result != kMouseTrackingMouseReleased;
}

} // namespace lampblack::controls
