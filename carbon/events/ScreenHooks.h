// What windows/ hears of the screen.
#ifndef LAMPBLACK_EVENTS_SCREENHOOKS_H
#define LAMPBLACK_EVENTS_SCREENHOOKS_H

namespace lampblack::events {

struct ScreenHooks {
    // The screen has this size now.
    void (*screenChanged)(int width, int height) = nullptr;
    // What was presented is lost: everything must be presented again.
    void (*screenExposed)() = nullptr;
};

ScreenHooks& TheScreenHooks();

} // namespace lampblack::events

#endif
