// Copying of pixels beyond CopyBits: arithmetic modes, masks. Begin with CopyMask. Quickdraw.h includes this.
#ifndef LAMPBLACK_CARBON_QDCOPYING_H
#define LAMPBLACK_CARBON_QDCOPYING_H

#include <Carbon/MacTypes.h>

// Arithmetic modes, channel by channel; into pixels of one bit the nearest boolean mode takes their place.
enum {
    blend = 32,   // the operation colour weighs the source
    addPin = 33,  // no more than the operation colour
    addOver = 34, // wraps around
    subPin = 35,  // destination - source, no less than the operation colour
    addMax = 37,
    adMax = 37,
    subOver = 38, // destination - source, wraps around
    adMin = 39,
    hilite = 50, // exchanges the background and the highlight colour where the source is not white
    hilitetransfermode = 50
};

#endif
