// The mouse while its button is held down in a control.
#ifndef LAMPBLACK_CONTROLS_MOUSE_H
#define LAMPBLACK_CONTROLS_MOUSE_H

#include <Carbon/CarbonEvents.h>
#include <Carbon/MacTypes.h>

namespace lampblack::controls {

class StMouse {
public:
    [[nodiscard]] StMouse(WindowRef inWindow, Point inStart) : fWindow(inWindow), fWhere(inStart) {}

    // Waits until the mouse moves, is released, or inTimeout seconds passed; false once it was released.
    bool StillDown(double inTimeout = kEventDurationForever);
    Point Where() const { return fWhere; } // local to the window
    bool TimedOut() const { return fTimedOut; }

private:
    WindowRef fWindow;
    Point fWhere;
    bool fTimedOut = false;
};

} // namespace lampblack::controls

#endif
