// The one window that is the Macintosh screen: its pixels, its scale, its cursor.
#ifndef LAMPBLACK_HOST_WINDOW_H
#define LAMPBLACK_HOST_WINDOW_H

#include "Scaler.h"
#include "Viewport.h"
#include <Host.h>

#include <SDL.h>

#include <vector>

namespace lampblack::host {

class Window {
public:
    bool Open(int width, int height, const char* utf8Title); // the reason of a failure is SDL_GetError
    void FinishOpening(); // what the user does not see, once there is time for it
    void Close();
    bool IsOpen() const { return fWindow != nullptr; }

    uint32_t* Memory(int* rowPixels);
    void Present(const Frame&, const Rect* damaged, int count);
    bool WasShown() const { return fWasShown; } // a frame has been presented
    bool Read(Frame* out);                      // as it is shown
    // Takes what concerns the pixels. Answers whether the whole screen must be presented again.
    bool HandleEvent(const SDL_WindowEvent&);

    Point ScreenPointAt(int windowX, int windowY) const; // window units, as in mouse events
    int Width() const { return fWidth; }
    int Height() const { return fHeight; }
    double Scale() const { return fViewport.Scale(); }
    double RefreshInterval() const;

    bool HasFocus() const;
    void Raise();
    void SetTitle(const char* utf8Title);
    void SetTextInputArea(const Rect& global);
    void ToggleFullScreen();

private:
    SDL_Surface* UsableSurface();
    void ClearMargins(SDL_Surface*);

    SDL_Window* fWindow = nullptr;
    SDL_Surface* fSurface = nullptr; // the window's; null after a change of its size
    bool fMarginsStale = false;      // nothing around the screen was shown since the window has this size
    bool fOpening = false, fWasShown = false;
    int fWidth = 0, fHeight = 0; // of the Macintosh screen
    Viewport fViewport;
    Scaler fScaler;
    std::vector<uint32_t> fRead;
};

} // namespace lampblack::host

#endif
