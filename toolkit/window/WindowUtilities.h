// Free functions on windows: a numeric ID, creation from a 'DLOG' resource, placement from a stored position.
#ifndef LAMPBLACK_WINDOW_WINDOWUTILITIES_H
#define LAMPBLACK_WINDOW_WINDOWUTILITIES_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// Where a window stood: its content bounds in global coordinates.
struct WindowPositionRecord {
    Rect bounds;
};

// SetWindowID, GetWindowID
//
// A window's ID, kept as a 32-bit window property. GetWindowID answers 0 when there is none.
// Errors: what SetWindowProperty answers.
OSStatus SetWindowID(WindowRef inWindow, long inID);
long GetWindowID(WindowRef inWindow);

// GetWindowByID
//
// The frontmost window with that ID; a window without an ID counts as 0. NULL when there is none.
WindowRef GetWindowByID(long inID);

// CreateWindowFromDLOGResource
//
// Makes a window of the given class from a 'DLOG' resource, without its item list, and makes its port
// current.
//
// Shape:      'DLOG' record as the resource manager flips it: bounds Rect at 0, Pascal title at 20.
// Units:      bounds are global QuickDraw pixels; (0,0) is the main screen's top left.
// Ownership:  the caller owns *outWindow, even when an error comes with it; release it with ReleaseWindow.
// Errors:     paramErr  no 'DLOG' with this ID in the resource chain, one too short for its bounds,
//                       or a NULL outWindow;
//                       else what the Window Manager or CreateRootControl answers.
// Source:     layout [IM-DM, documented]; the item list is left unread [ours].
OSStatus CreateWindowFromDLOGResource(WindowClass inClass, WindowAttributes inAttributes, long inDialogID,
                                      WindowRef* outWindow);

// GetWindowPortGlobalBounds
//
// A window's content bounds in global coordinates. Errors: paramErr when either argument is NULL.
OSStatus GetWindowPortGlobalBounds(WindowRef inWindow, Rect* outBounds);

// GetWindowPosition
//
// The window's position in a new handle, for keeping. Ownership: the caller's. NULL on failure, and MemError
// says why: errInvalidWindowRef for a null window.
WindowPositionRecord** GetWindowPosition(WindowRef inWindow);

// SetWindowPosition
//
// Puts a window where a record says, kept on screen; centres it when there is no record, or when its size is
// not that of a window that cannot be resized. The result is also left in MemError.
// Errors:     -1                   the sizes differ, the window was centred
//             nilHandleErr         no record, the window was centred
//             errInvalidWindowRef  NULL window
OSErr SetWindowPosition(WindowRef inWindow, WindowPositionRecord** inPosition);

// SetWindowTitleCString
//
// Sets the title from Mac Roman text, cut at 255 bytes. A null window does nothing.
void SetWindowTitleCString(WindowRef inWindow, const char* inTitle);

// Class and attribute queries; all false for a null window.
bool WindowIsFloating(WindowRef inWindow);
bool WindowIsModal(WindowRef inWindow);
bool WindowIsMovableModal(WindowRef inWindow);
bool WindowIsResizeable(WindowRef inWindow);
bool WindowHasZoomBox(WindowRef inWindow);

// OffsetWindow
//
// Moves a window by that many pixels; (0, 0) does not call the Window Manager.
void OffsetWindow(WindowRef inWindow, short inDH, short inDV);

// InvalWindow, ValidWindow
//
// All of a visible window's content needs drawing, or no longer does.
void InvalWindow(WindowRef inWindow);
void ValidWindow(WindowRef inWindow);

LAMPBLACK_END

#endif
