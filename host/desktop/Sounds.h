// Short sounds made on the spot. The audio device is open only while one is heard, so that silence costs
// nothing.
#ifndef LAMPBLACK_HOST_SOUNDS_H
#define LAMPBLACK_HOST_SOUNDS_H

#include <Host.h>

#include <SDL.h>

namespace lampblack::host {

class Sounds {
public:
    void Beep(double now);
    void Tick(double now); // what theme sounds are here
    // When the device is to be closed; kForever while it is.
    double End() const { return fEnd; }
    void CloseIfOver(double now);

private:
    void Play(double now, double hertz, double seconds, double loudness);

    SDL_AudioDeviceID fDevice = 0;
    double fEnd = kForever;
};

} // namespace lampblack::host

#endif
