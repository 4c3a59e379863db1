// The ball that bounces in the gallery's user pane: where it is, where it was, and how it is drawn.
#ifndef LAMPBLACK_GALLERY_PLAYGROUND_H
#define LAMPBLACK_GALLERY_PLAYGROUND_H

#include <Carbon/Carbon.h>

#include <array>

struct BallLook {
    RGBColor colour = { 0xCCCC, 0x2222, 0x2222 };
    bool trail = true;
    bool large = false;
};

class Playground {
public:
    // Moves the ball inside the pane, inSpeed half pixels along each axis.
    void Step(const Rect& inPane, short inSpeed, bool inLarge);

    // Draws into the current port.
    void Draw(const Rect& inPane, const BallLook&) const;

private:
    static constexpr size_t kTrail = 12;

    // Half pixels from the pane's top left to the ball's.
    std::array<Point, kTrail> fPast{}; // the newest first
    short fTurnH = 1, fTurnV = 1;
};

#endif
