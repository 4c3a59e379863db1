// Offscreen worlds made with an eye on memory, worlds and pictures out of image
// files, pictures out of worlds, JPEG out of pictures and back; and what a port
// or world is asked for most. Begin with NewGWorldEnhanced.
//
// Who receives a world, picture or handle owns it: DisposeGWorld, KillPicture,
// DisposeHandle. After a failure the result is NULL. The current world is as
// before after every call but SetGWorldWindow.
#ifndef LAMPBLACK_GRAPHICS_OFFSCREENWORLDS_H
#define LAMPBLACK_GRAPHICS_OFFSCREENWORLDS_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// NewGWorldEnhanced
//
// NewGWorld, in temporary memory (useTempMem) when the application's own is too
// small for it. With Aqua temporary memory is never asked for, even if the
// flags wish it.
//
// Shape:      inDepth 0 is the deepest device, and counts as 32 when memory is estimated; inTable and
//             inDevice may be NULL.
// Errors:     paramErr  a NULL result or rectangle, bounds without a pixel; else what NewGWorld answers.
OSErr NewGWorldEnhanced(GWorldPtr* outWorld, SInt16 inDepth, const Rect* inBounds, CTabHandle inTable,
                        GDHandle inDevice, GWorldFlags inFlags);

// NewGWorldFromFile
//
// A world of an image file's size with the image drawn in it.
//
// Errors:     paramErr  a NULL argument; else what the graphics importer or NewGWorldEnhanced answers. An
//             image that was found but does not draw leaves the world as new.
OSErr NewGWorldFromFile(const FSSpec* inFile, GWorldPtr* outWorld, SInt16 inDepth);

// NewPictureFromFile
//
// Errors:     paramErr  a NULL argument; else what the graphics importer answers.
OSErr NewPictureFromFile(const FSSpec* inFile, PicHandle* outPicture);

// GWorldToPicture
//
// A picture that draws the world's pixels, at 72 dots per inch. inMode is the
// transfer mode recorded with them. NULL when no picture could be opened.
PicHandle GWorldToPicture(GWorldPtr inWorld, SInt16 inMode);

// ConvertJPEGToPicture, ConvertPictureToJPEG
//
// The handle and the picture given stay the caller's.
//
// Errors:     paramErr  a NULL result; else what the importer or exporter component answers.
OSErr ConvertJPEGToPicture(Handle inJPEG, PicHandle* outPicture);
OSErr ConvertPictureToJPEG(PicHandle inPicture, Handle* outJPEG);

// 0 for NULL and for a world without pixels.
SInt16 GetGWorldBitDepth(GWorldPtr inWorld);

// Answers outBounds.
Rect* GetGWorldPortBounds(GWorldPtr inWorld, Rect* outBounds);
SInt16 GetPortWidth(CGrafPtr inPort);
SInt16 GetPortHeight(CGrafPtr inPort);

// The main screen, in global coordinates.
Rect GetQDGlobalScreenBitsBounds();

// SetGWorldWindow
//
// Makes the window's port the current port and world.
void SetGWorldWindow(WindowRef inWindow);

LAMPBLACK_END

#endif
