// Brings rectangles of the Macintosh screen into the window's pixels, at the viewport's scale.
#ifndef LAMPBLACK_HOST_SCALER_H
#define LAMPBLACK_HOST_SCALER_H

#include "Viewport.h"
#include <Host.h>

#include <pixman.h>

#include <memory>

namespace lampblack::host {

// Pixels of a window: x8r8g8b8, x8b8g8r8 or r5g6b5.
struct Target {
    void* pixels = nullptr;
    int width = 0, height = 0, rowBytes = 0;
    pixman_format_code_t format = PIXMAN_x8r8g8b8;

    bool operator==(const Target&) const = default;
};

class Scaler {
public:
    // Draws what a change of these screen pixels reaches; answers the window pixels drawn.
    Area Draw(const Frame&, const Rect& screen, const Viewport&, const Target&);
    void Forget(); // the target's pixels are gone

private:
    struct Release {
        void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
    };
    using Image = std::unique_ptr<pixman_image_t, Release>;

    bool Prepare(const Frame&, const Viewport&, const Target&);
    void ChooseFilter(double scale, bool integer);

    // Kept from one frame to the next: a present allocates nothing.
    Image fSource, fTarget;
    Frame fFrame;
    Target fTo;
    Area fShown;
};

} // namespace lampblack::host

#endif
