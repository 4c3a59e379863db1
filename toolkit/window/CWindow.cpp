// CWindow: construction, setup, timers and the thin accessors. Its events are in CWindowEvents.cpp.
#include "window/CWindow.h"

#include "controls/ControlData.h"
#include "controls/ControlsByID.h"
#include "controls/ControlsFromResources.h"
#include "controls/Focus.h"
#include "graphics/StateSavers.h"
#include "prefs/Preferences.h"
#include "window/CTimer.h"
#include "window/WindowUtilities.h"

namespace {

// The port to make current while inWindow goes away: the caller's, or a spare one when that is the window's.
CGrafPtr PortToKeep(CGrafPtr inCurrent, WindowRef inWindow)
{
    if (inCurrent != GetWindowPort(inWindow))
        return inCurrent;
    static const CGrafPtr validPort = CreateNewPort();
    return validPort;
}

} // namespace

CWindow::CWindow(long inID, unsigned long inWindowClass)
    : CWindow(inID, inWindowClass, kWindowStandardHandlerAttribute)
{
}

CWindow::CWindow(long inID, unsigned long inWindowClass, unsigned long inAttributes)
    : fWindow(nullptr), fFocusControlID(0), fCreationPort(nullptr), fSetupTimer(nullptr), fTimer(nullptr)
{
    const StPortSaver port;
    GetPort(&fCreationPort);
    if (static_cast<UInt32>(inWindowClass) != kDeferWindowCreation) // -1 as a long means it too
        CWindow::Create(inID, inWindowClass, inAttributes);
}

CWindow::~CWindow()
{
    CGrafPtr port = nullptr;
    GetPort(&port);
    delete fSetupTimer;
    fSetupTimer = nullptr;
    delete fTimer;
    fTimer = nullptr;
    if (!fWindow)
        return;
    RemoveIdleControlsTimer(fWindow);
    port = PortToKeep(port, fWindow);
    ::SetPort(port);
    const WindowRef window = fWindow;
    fWindow = nullptr;
    ReleaseWindow(window);
    ::SetPort(port);
}

void CWindow::Create(long inID, unsigned long inWindowClass, unsigned long inAttributes)
{
    const OSStatus err = CreateWindowFromDLOGResource(
        static_cast<WindowClass>(inWindowClass), static_cast<WindowAttributes>(inAttributes), inID, &fWindow);
    if (!fWindow || err != noErr)
        throw static_cast<long>(err);
}

void CWindow::Show()
{
    if (fWindow)
        ShowWindow(fWindow);
}

void CWindow::Hide()
{
    if (fWindow)
        HideWindow(fWindow);
}

void CWindow::StandardSetup()
{
    SetupThemeFont();
    SetupWindowBackground();
    SetupControls();
    SetupWindowPosition();
    SetupEventHandlers();
}

void CWindow::StandardTeardown()
{
    StoreWindowPosition();
}

void CWindow::SetupControls() const
{
    const OSStatus err = GetNewControls(fWindow, static_cast<short>(GetWindowID(fWindow)));
    if (err != noErr)
        throw static_cast<long>(err);
}

void CWindow::SetupThemeFont() const {}

void CWindow::SetupWindowBackground() const {}

void CWindow::SetupWindowPosition() const
{
    RestoreWindowPosition(fWindow, static_cast<short>(GetWindowID(fWindow)));
}

void CWindow::StoreWindowPosition() const
{
    ::StoreWindowPosition(fWindow, static_cast<short>(GetWindowID(fWindow)));
}

void CWindow::SetupTimer(EventLoopTimerProcPtr inProc, double inDelay, double inInterval)
{
    if (!fSetupTimer)
        fSetupTimer = new CTimer(inProc, inDelay, inInterval, this);
}

void CWindow::RemoveTimer()
{
    delete fSetupTimer;
    fSetupTimer = nullptr;
}

void CWindow::StartTimer(double inDelay, double inInterval)
{
    // An earlier timer keeps running unreferenced: games restart a window's timer and rely on both ticking.
    fTimer = new CTimer(CWindowTimer, inDelay, inInterval, this);
}

void CWindow::StopTimer()
{
    delete fTimer;
    fTimer = nullptr;
}

void CWindow::Timer() {}

void CWindow::CWindowTimer(EventLoopTimerRef, void* inWindow)
{
    if (inWindow)
        static_cast<CWindow*>(inWindow)->Timer();
}

void CWindow::SetPort() const
{
    if (fWindow)
        SetPortWindowPort(fWindow);
}

void CWindow::SetTitle(const char* inTitle)
{
    if (!inTitle)
        return;
    Str255 title;
    c2pstrcpy(title, inTitle);
    SetTitle(static_cast<const unsigned char*>(title));
}

void CWindow::SetTitle(const unsigned char* inTitle)
{
    if (fWindow && inTitle)
        SetWTitle(fWindow, inTitle);
}

void CWindow::Activate(long inControlID) const
{
    EnableControl(fWindow, static_cast<SInt32>(inControlID));
}

void CWindow::Deactivate(long inControlID) const
{
    DisableControl(fWindow, static_cast<SInt32>(inControlID));
}

void CWindow::SetValue(long inControlID, short inValue) const
{
    SetControlValueByID(fWindow, static_cast<SInt32>(inControlID), inValue);
}

long CWindow::GetValue(long inControlID) const
{
    return GetControlValueByID(fWindow, static_cast<SInt32>(inControlID));
}

void CWindow::SetContents(long inControlID, const char* inText) const
{
    SetEditTextControlContents(fWindow, static_cast<SInt32>(inControlID), inText);
}

void CWindow::SetPassword(long inControlID, const char* inText) const
{
    SetEditTextControlPassword(fWindow, static_cast<SInt32>(inControlID), inText);
}
