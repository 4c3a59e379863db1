// Sheets: windows that hang from the title bar of another.
#ifndef LAMPBLACK_WINDOWS_SHEETS_H
#define LAMPBLACK_WINDOWS_SHEETS_H

#include "WindowRecord.h"

namespace lampblack::windows {

void PlaceSheetsOf(WindowRef inParent);     // after the parent was moved or resized
void RaiseSheetsOf(WindowRecord& inParent); // after the parent was brought forward
void HideSheetsOf(WindowRef inParent);      // before the parent goes away
bool HasSheet(const WindowRecord& inParent);
WindowRecord* SheetOf(WindowRef inParent); // the front one shown, or null

} // namespace lampblack::windows

#endif
