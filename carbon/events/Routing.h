// How an event that was taken from the queue finds its target: slots for the floors that know. An empty slot
// sends to the application.
#ifndef LAMPBLACK_EVENTS_ROUTING_H
#define LAMPBLACK_EVENTS_ROUTING_H

#include <Carbon/MacTypes.h>

namespace lampblack::events {

struct Routing {
    EventTargetRef (*mouseTarget)(EventRef) = nullptr; // windows/: adds window, part and local point
    // windows/: the window with the user focus. Also asked with null, by GetUserFocusEventTarget.
    EventTargetRef (*keyboardTarget)(EventRef) = nullptr;
    bool (*filterKey)(EventRef) = nullptr; // menus/: a command key that was a menu item

    // Whose target an event goes to that is about an object and was posted without a target.
    EventTargetRef (*windowTarget)(WindowRef) = nullptr;
    EventTargetRef (*controlTarget)(ControlRef) = nullptr;
    EventTargetRef (*menuTarget)(MenuRef) = nullptr;

    // windows/: whether a global point lies in a region; WaitNextEvent asks about its mouse region.
    bool (*pointInRegion)(Point global, RgnHandle) = nullptr;
};

Routing& EventRouting();

} // namespace lampblack::events

#endif
