// Universal procedure pointers are the procedures themselves here; making one and disposing of it costs
// nothing.
#include <Carbon/Controls.h>

LAMPBLACK_BEGIN_C

ControlActionUPP NewControlActionUPP(ControlActionProcPtr inProc)
{
    return inProc;
}
void DisposeControlActionUPP(ControlActionUPP) {}
void InvokeControlActionUPP(ControlRef inControl, ControlPartCode inPart, ControlActionUPP inUPP)
{
    return inUPP(inControl, inPart);
}

ControlKeyFilterUPP NewControlKeyFilterUPP(ControlKeyFilterProcPtr inProc)
{
    return inProc;
}
void DisposeControlKeyFilterUPP(ControlKeyFilterUPP) {}
ControlKeyFilterResult InvokeControlKeyFilterUPP(ControlRef inControl, SInt16* ioKeyCode, SInt16* ioCharCode,
                                                 EventModifiers* ioModifiers, ControlKeyFilterUPP inUPP)
{
    return inUPP(inControl, ioKeyCode, ioCharCode, ioModifiers);
}

ControlColorUPP NewControlColorUPP(ControlColorProcPtr inProc)
{
    return inProc;
}
void DisposeControlColorUPP(ControlColorUPP) {}
OSStatus InvokeControlColorUPP(ControlRef inControl, SInt16 inMessage, SInt16 inDrawDepth,
                               Boolean inDrawInColor, ControlColorUPP inUPP)
{
    return inUPP(inControl, inMessage, inDrawDepth, inDrawInColor);
}

ControlEditTextValidationUPP NewControlEditTextValidationUPP(ControlEditTextValidationProcPtr inProc)
{
    return inProc;
}
void DisposeControlEditTextValidationUPP(ControlEditTextValidationUPP) {}
void InvokeControlEditTextValidationUPP(ControlRef inControl, ControlEditTextValidationUPP inUPP)
{
    return inUPP(inControl);
}

ControlUserPaneDrawUPP NewControlUserPaneDrawUPP(ControlUserPaneDrawProcPtr inProc)
{
    return inProc;
}
void DisposeControlUserPaneDrawUPP(ControlUserPaneDrawUPP) {}
ControlUserPaneHitTestUPP NewControlUserPaneHitTestUPP(ControlUserPaneHitTestProcPtr inProc)
{
    return inProc;
}
void DisposeControlUserPaneHitTestUPP(ControlUserPaneHitTestUPP) {}
ControlUserPaneTrackingUPP NewControlUserPaneTrackingUPP(ControlUserPaneTrackingProcPtr inProc)
{
    return inProc;
}
void DisposeControlUserPaneTrackingUPP(ControlUserPaneTrackingUPP) {}
ControlUserPaneIdleUPP NewControlUserPaneIdleUPP(ControlUserPaneIdleProcPtr inProc)
{
    return inProc;
}
void DisposeControlUserPaneIdleUPP(ControlUserPaneIdleUPP) {}
ControlUserPaneKeyDownUPP NewControlUserPaneKeyDownUPP(ControlUserPaneKeyDownProcPtr inProc)
{
    return inProc;
}
void DisposeControlUserPaneKeyDownUPP(ControlUserPaneKeyDownUPP) {}
ControlUserPaneActivateUPP NewControlUserPaneActivateUPP(ControlUserPaneActivateProcPtr inProc)
{
    return inProc;
}
void DisposeControlUserPaneActivateUPP(ControlUserPaneActivateUPP) {}
ControlUserPaneFocusUPP NewControlUserPaneFocusUPP(ControlUserPaneFocusProcPtr inProc)
{
    return inProc;
}
void DisposeControlUserPaneFocusUPP(ControlUserPaneFocusUPP) {}
ControlUserPaneBackgroundUPP NewControlUserPaneBackgroundUPP(ControlUserPaneBackgroundProcPtr inProc)
{
    return inProc;
}
void DisposeControlUserPaneBackgroundUPP(ControlUserPaneBackgroundUPP) {}

LAMPBLACK_END_C
