// The standard window handler, and how events find windows.
#ifndef LAMPBLACK_WINDOWS_STANDARDHANDLER_H
#define LAMPBLACK_WINDOWS_STANDARDHANDLER_H

#include "WindowRecord.h"

namespace lampblack::windows {

void InstallStandardHandler(WindowRecord& inWindow);
void InstallWindowRouting(); // once; further calls do nothing

} // namespace lampblack::windows

#endif
