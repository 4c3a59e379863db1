// How windows reach the eye. Everything above speaks to this interface, so that another presenter, one native
// window for each of the application's for instance, can stand in for the one that paints a single screen.
#ifndef LAMPBLACK_WINDOWS_PRESENTER_H
#define LAMPBLACK_WINDOWS_PRESENTER_H

#include "Surface.h"
#include "WindowRecord.h"

namespace lampblack::windows {

class Presenter {
public:
    virtual ~Presenter() = default;

    // Pixels changed: of the content, relative to its top left; of the frame; of all that the window covers.
    virtual void ContentDamaged(WindowRecord& inWindow, const Rect& inRect) = 0;
    virtual void FrameDamaged(WindowRecord& inWindow) = 0;
    virtual void WindowDamaged(WindowRecord& inWindow) = 0; // before and after a change of place or shape
    // Order, visibility, place or shape of windows changed.
    virtual void LayoutChanged() = 0;
    virtual void EverythingDamaged() = 0;
    virtual void SizeChanged() = 0; // of the screen

    // Presents what is due at `inNow`; answers when to be called again, kForever when there is nothing to
    // show.
    virtual double PresentIfDue(double inNow) = 0;
    virtual void PresentNow() = 0;

    virtual Rect ScreenBounds() = 0;
};

// The presenter of this process. The first call opens the screen.
Presenter& Screen();

} // namespace lampblack::windows

#endif
