// Copies between offscreen worlds and windows: plain, through a mask, and blended through a grey mask; how to
// suppress drawing for a while, and how what was drawn in a window comes to the screen. Begin with
// CopyPixels.
//
// None of these answers an error: what cannot be copied is left alone.
#ifndef LAMPBLACK_GRAPHICS_PIXELCOPIES_H
#define LAMPBLACK_GRAPHICS_PIXELCOPIES_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// CopyPixels, CopyPixelsToWindow
//
// CopyBits from one port to another with the pixels locked meanwhile; pixels that the caller had locked stay
// locked. The second flushes the window's port to the screen.
//
// Shape:      inMode is a transfer mode of CopyBits; inMask, in the destination's coordinates, may be NULL.
//             Pixel maps of depth 1 are not locked (kept: they counted as bit maps).
void CopyPixels(CGrafPtr inSource, CGrafPtr inDestination, const Rect* inSourceRect,
                const Rect* inDestinationRect, SInt16 inMode, RgnHandle inMask);
void CopyPixelsToWindow(CGrafPtr inSource, WindowRef inDestination, const Rect* inSourceRect,
                        const Rect* inDestinationRect, SInt16 inMode, RgnHandle inMask);

// CopyPixelsMask, CopyPixelsMaskToWindow
//
// The same by MyCopyMask.
void CopyPixelsMask(CGrafPtr inSource, CGrafPtr inMask, CGrafPtr inDestination, const Rect* inSourceRect,
                    const Rect* inMaskRect, const Rect* inDestinationRect);
void CopyPixelsMaskToWindow(CGrafPtr inSource, CGrafPtr inMask, WindowRef inDestination,
                            const Rect* inSourceRect, const Rect* inMaskRect, const Rect* inDestinationRect);

// gUseOSCopyMask
//
// MyCopyMask leaves all its work to CopyMask when an application sets this. False at first.
extern bool gUseOSCopyMask;

// MyCopyMask
//
// CopyMask, by way of two scratch worlds of 620 by 420 pixels when the system is Mac OS X and a rectangle
// does not start at (0,0). A copy of odd width by that way is a column wider, which the mask leaves out
// (kept).
void MyCopyMask(const BitMap* inSource, const BitMap* inMask, const BitMap* inDestination,
                const Rect* inSourceRect, const Rect* inMaskRect, const Rect* inDestinationRect);

// CopyPixelsTransparentMask16, CopyPixelsTransparentMask32
//
// Blend the source into the destination, its top-left pixel at the top left of inRect, clipped to inRect and
// the destination's bounds. The mask's blue channel is the weight of the destination: black copies, an
// exactly white pixel (0x7FFF, 0x00FFFFFF) leaves the destination as it is. Source and mask are of one
// layout, and all three worlds are of depth 16 or 32.
//
// Source:     16 bits: D * a / 32 + S * (32 - a) / 32 a channel; 32 bits: D * a / 256 + S * (255 - a) / 256,
//             each quotient rounded down, so that a black mask makes 254 of 255 (kept).
void CopyPixelsTransparentMask16(GWorldPtr inSource, GWorldPtr inMask, GWorldPtr inDestination,
                                 const Rect* inRect);
void CopyPixelsTransparentMask32(GWorldPtr inSource, GWorldPtr inMask, GWorldPtr inDestination,
                                 const Rect* inRect);

// DrawingOff, DrawingOn
//
// Between the two nothing shows that is drawn in the current port, which must be the same at both calls. They
// do not nest: a second DrawingOff does nothing.
void DrawingOff();
void DrawingOn();

// FlushPortDirtyRegion, FlushWindowDirtyRegion
//
// Bring what was drawn to the screen. A NULL window does nothing.
void FlushPortDirtyRegion(CGrafPtr inPort);
void FlushWindowDirtyRegion(WindowRef inWindow);

LAMPBLACK_END

#endif
