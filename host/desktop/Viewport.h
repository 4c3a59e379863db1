// Where the Macintosh screen lies within the window, and at which scale: pure geometry.
#ifndef LAMPBLACK_HOST_VIEWPORT_H
#define LAMPBLACK_HOST_VIEWPORT_H

#include <Carbon/MacTypes.h>

namespace lampblack::host {

// A rectangle of window pixels.
struct Area {
    int x = 0, y = 0, width = 0, height = 0;
};

class Viewport {
public:
    Viewport() = default;
    // Centres the screen in the window at the largest scale that shows all of it, or a whole one just below.
    Viewport(int screenWidth, int screenHeight, int windowWidth, int windowHeight);

    double Scale() const { return fScale; }
    int IntegerScale() const; // 0 unless every screen pixel is a square of that many window pixels
    const Area& Shown() const { return fShown; }
    int WindowWidth() const { return fWindowWidth; }
    int WindowHeight() const { return fWindowHeight; }

    // The window pixels that a change of these screen pixels can reach, within Shown().
    Area AreaOf(const Rect& screen) const;
    // The screen pixel under a window position; the nearest one outside of Shown().
    Point ScreenPointAt(double windowX, double windowY) const;
    // The window pixel in the middle of a screen pixel.
    void WindowPixelOf(int screenX, int screenY, int* outX, int* outY) const;

private:
    int fScreenWidth = 1, fScreenHeight = 1;
    int fWindowWidth = 1, fWindowHeight = 1;
    double fScale = 1;
    Area fShown;
};

} // namespace lampblack::host

#endif
