// Focus, cursor kinds and the idle timer.
#include "controls/Focus.h"

#include "controls/ControlData.h"
#include "graphics/StateSavers.h"
#include "util/SystemChecks.h"

namespace {

enum CursorKind : SInt32 {
    kPointingHandKind = 502,
    kArrowKind = -1,
    kIBeamKind = -2,
    kWatchKind = -5,
    kUnknownKind = -99
};

SInt32 fgCursorKind = kUnknownKind;

bool TakeCursorKind(SInt32 inKind, bool inForce)
{
    if (!inForce && fgCursorKind == inKind)
        return false;
    fgCursorKind = inKind;
    return true;
}

constexpr PropertyCreator kIdleCreator = 'SDLX';
constexpr PropertyTag kIdleTag = '+ICT';

OSStatus GetIdleTimer(WindowRef inWindow, EventLoopTimerRef* outTimer)
{
    return GetWindowProperty(inWindow, kIdleCreator, kIdleTag, sizeof *outTimer, nullptr, outTimer);
}

OSErr SelectAllText(ControlRef inControl)
{
    const ControlEditTextSelectionRec all = { 0, -1 };
    return SetControlData(inControl, kControlEntireControl, kControlEditTextSelectionTag, sizeof all, &all);
}

} // namespace

OSErr ChangeKeyboardFocus(WindowRef inWindow, FocusChangeMethod inMethod)
{
    if (!inWindow)
        return noErr;
    switch (inMethod) {
    case kFocusAdvance: AdvanceKeyboardFocus(inWindow); break;
    case kFocusReverse: ReverseKeyboardFocus(inWindow); break;
    default: ClearKeyboardFocus(inWindow); break;
    }
    return noErr;
}

OSErr ChangeKeyboardFocus(WindowRef inWindow, ControlRef inControl, bool inSelectAll)
{
    if (!inWindow || !inControl)
        return paramErr;
    if (!IsControlKeyboardFocus(inWindow, inControl)) {
        const OSErr err = SetKeyboardFocus(inWindow, inControl, kControlFocusNextPart);
        if (err != noErr)
            return err;
    }
    if (!inSelectAll || !IsEditTextDefID(GetControlDefProcID(inControl)))
        return noErr;
    return SelectAllText(inControl);
}

void SetPointingHandCursor(bool inForce)
{
    if (TakeCursorKind(kPointingHandKind, inForce))
        SetThemeCursor(kThemePointingHandCursor);
}

void SetIBeamCursor(bool inForce)
{
    if (TakeCursorKind(kIBeamKind, inForce))
        SetThemeCursor(kThemeIBeamCursor);
}

void SetWatchCursor(bool inForce)
{
    if (TakeCursorKind(kWatchKind, inForce))
        SetThemeCursor(kThemeWatchCursor);
}

void SetArrowCursor(bool inForce)
{
    if (!TakeCursorKind(kArrowKind, inForce))
        return;
    InitCursor();
    SetThemeCursor(kThemeArrowCursor);
}

void SetCursorUnknown()
{
    fgCursorKind = kUnknownKind;
}

OSStatus InstallIdleControlsTimer(WindowRef inWindow)
{
    EventLoopTimerRef timer = nullptr;
    if (HasMacOSX() || GetIdleTimer(inWindow, &timer) == noErr)
        return noErr;
    static const EventLoopTimerUPP timerUPP = NewEventLoopTimerUPP(IdleControlsTimer);
    const OSStatus err =
        InstallEventLoopTimer(GetCurrentEventLoop(), 0.0, GetCaretTime() / 60.0, timerUPP, inWindow, &timer);
    if (err == noErr)
        SetWindowProperty(inWindow, kIdleCreator, kIdleTag, sizeof timer, &timer);
    return err;
}

OSStatus RemoveIdleControlsTimer(WindowRef inWindow)
{
    if (HasMacOSX())
        return noErr;
    EventLoopTimerRef timer = nullptr;
    const OSStatus err = GetIdleTimer(inWindow, &timer);
    if (err == noErr)
        RemoveEventLoopTimer(timer);
    return err;
}

void IdleControlsTimer(EventLoopTimerRef, void* inWindow)
{
    if (!inWindow)
        return;
    const WindowRef window = static_cast<WindowRef>(inWindow);
    const StPortSaver port(window);
    IdleControls(window);
}
