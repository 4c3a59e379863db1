// Start-up and shut-down of the toolkit.
#include "window/Startup.h"

#include "controls/Focus.h"
#include "prefs/ApplicationResources.h"
#include "util/ProcessHelpers.h"

CGrafPtr fgScratchPort = nullptr;

OSStatus InitializeMacOSHelpers()
{
    static bool firstTime = true;
    if (!firstTime)
        return noErr;
    SetCursorUnknown();
    GetCurrentProcess(&fgPSN);
    GetCurrentResourceFileID();
    InitResourceHelpers();
    fgScratchPort = nullptr;
    firstTime = false;
    return noErr;
}

OSStatus ExitMacOSHelpers()
{
    if (fgScratchPort)
        DisposePort(fgScratchPort);
    fgScratchPort = nullptr;
    return noErr;
}
