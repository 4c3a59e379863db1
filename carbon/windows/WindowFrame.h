// Structure, parts and pixels of a window's frame; drawn and measured by the theme.
#ifndef LAMPBLACK_WINDOWS_WINDOWFRAME_H
#define LAMPBLACK_WINDOWS_WINDOWFRAME_H

#include "WindowRecord.h"

namespace lampblack::windows {

// After a change of place, size, class, attributes, title or collapse: insets, structure and strips anew.
void UpdateGeometry(WindowRecord& ioWindow);
// After a mere move.
void MoveGeometry(WindowRecord& ioWindow, int inH, int inV);
void MeasureTitle(WindowRecord& ioWindow);
void DrawFrameIfStale(WindowRecord& ioWindow);
void DisposeFrame(WindowRecord& ioWindow);
// The grow box in the corner of the content, in the content's port.
void DrawGrowBox(WindowRecord& inWindow);
Rect GrowBoxRect(const WindowRecord& inWindow); // relative to the content; empty for a window without one

// A part in global pixels; empty where the window has no such part. False for an unknown code.
bool PartRegion(const WindowRecord& inWindow, WindowRegionCode inPart, Region* outRegion);
// Which part a global point within the structure hits: inContent, inDrag, inGrow, ...
WindowPartCode HitPart(const WindowRecord& inWindow, Point inPoint);

// The rectangle that the content takes on screen: nothing when it is collapsed.
Rect VisibleContent(const WindowRecord& inWindow);

} // namespace lampblack::windows

#endif
