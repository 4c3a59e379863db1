// Ports for the floors that own them (windows, dialogs) or bring pixels (appearance). Begin with
// NewPixelPort.
#ifndef LAMPBLACK_QUICKDRAW_PORT_H
#define LAMPBLACK_QUICKDRAW_PORT_H

#include <Carbon/Quickdraw.h>

#include <cstdint>

namespace lampblack::quickdraw {

// The pixels of a port, native words 0x00RRGGBB, the first one at the top left of bounds.
struct PixelView {
    uint32_t* base = nullptr; // null: the port has no pixels
    int rowPixels = 0;
    Rect bounds = { 0, 0, 0, 0 }; // local coordinates of all pixels
};

// Told each rectangle that was drawn, clipped, in the port's local coordinates, after the drawing. It must
// not draw.
using DamageProc = void (*)(void* owner, CGrafPtr port, const Rect& local);

// NewPixelPort
//
// Makes a port with pixels of depth 32, white, whose top left is local and global (0,0). Answers null when a
// size is negative or wider than a PixMap can say (4,095 pixels), or memory is short. An empty port is fine.
//
// Ownership:  the caller's; release it with DisposePixelPort.
CGrafPtr NewPixelPort(int width, int height);
void DisposePixelPort(CGrafPtr);

// Keeps what overlaps, from the top left; new pixels are white. The port bounds take the new size, the
// visible region becomes all of the port. Answers false, and changes nothing, for what NewPixelPort would not
// make.
bool ResizePixelPort(CGrafPtr, int width, int height);

// Says where the port's top-left pixel is on the screen.
void PlacePort(CGrafPtr, Point globalTopLeft);

// A port with an owner is buffered: it has a dirty region, and QDFlushPortBuffer asks for a present.
void SetPortOwner(CGrafPtr, void* owner, DamageProc);
void* PortOwner(CGrafPtr); // null for none, and for what is no port

PixelView PortPixels(CGrafPtr);

// What BackPat set; all white for what is no port.
Pattern PortBackPattern(CGrafPtr);

// Tells that all of the port is on the screen: its dirty region becomes empty.
void PortWasPresented(CGrafPtr);

// DrawPremultiplied
//
// Draws premultiplied 0xAARRGGBB pixels over the current port, clipped as a shape is. The first pixel comes
// to the top left of local; local also says how many there are.
void DrawPremultiplied(const uint32_t* argb, int rowPixels, const Rect& local);

// Makes the screen's composed pixels known as the main device's, so that CopyBits can read them. Null takes
// them away.
void SetScreenPixels(const uint32_t* base, int rowPixels, int width, int height);

// Ends ObscureCursor; to be called when the mouse moves.
void MouseDidMove();

} // namespace lampblack::quickdraw

#endif
