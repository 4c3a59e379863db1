// The user's own cursors for the theme's, and cursors from pictures.
#ifndef LAMPBLACK_HOST_CURSORS_H
#define LAMPBLACK_HOST_CURSORS_H

#include <Host.h>

#include <SDL.h>

namespace lampblack::host {

class Cursors {
public:
    void SetTheme(SInt32 themeCursor);
    void SetImage(const CursorImage&, double scale); // enlarged with the screen, by whole steps
    void Show(bool visible);
    SInt32 Theme() const { return fTheme; }

private:
    SDL_Cursor* fSystem[SDL_NUM_SYSTEM_CURSORS] = {}; // made when first asked for
    SDL_Cursor* fImage = nullptr;
    SInt32 fTheme = 0;
};

} // namespace lampblack::host

#endif
