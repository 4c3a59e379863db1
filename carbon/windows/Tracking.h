// Following the mouse while its button is down.
#ifndef LAMPBLACK_WINDOWS_TRACKING_H
#define LAMPBLACK_WINDOWS_TRACKING_H

#include "WindowRecord.h"

namespace lampblack::windows {

// The next thing that the mouse does.
struct MouseStep {
    Point where = { 0, 0 }; // global
    UInt32 modifiers = 0;
    MouseTrackingResult result = kMouseTrackingMouseUp;
};

// Waits for it. A button that is up already, with nothing left to hear of it, is a release too.
MouseStep NextMouseStep();

// A frame of thin lines on the screen, for what is tracked in outline.
class Outline {
public:
    Outline();
    ~Outline();
    Outline(const Outline&) = delete;
    Outline& operator=(const Outline&) = delete;
    void MoveTo(const Rect& inBounds);

private:
    WindowRef fSides[4];
};

} // namespace lampblack::windows

#endif
