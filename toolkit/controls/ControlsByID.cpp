// The by-ID layer: look the control up, then forward.
#include "controls/ControlsByID.h"

#include "controls/ControlData.h"

namespace {

ControlRef Find(WindowRef inWindow, SInt32 inID)
{
    return inWindow ? GetControlByID(inWindow, inID) : nullptr;
}

} // namespace

OSErr EnableControl(WindowRef inWindow, SInt32 inID)
{
    return EnableControlX(Find(inWindow, inID));
}

OSErr DisableControl(WindowRef inWindow, SInt32 inID)
{
    return DisableControlX(Find(inWindow, inID));
}

bool IsControlEnabledX(WindowRef inWindow, SInt32 inID)
{
    return IsControlEnabledX(Find(inWindow, inID));
}

SInt16 GetControlValueByID(WindowRef inWindow, SInt32 inID)
{
    const ControlRef control = Find(inWindow, inID);
    return control ? GetControlValue(control) : 0;
}

void SetControlValueByID(WindowRef inWindow, SInt32 inID, SInt16 inValue)
{
    if (const ControlRef control = Find(inWindow, inID))
        SetControlValue(control, inValue);
}

SInt32 GetControl32BitValueByID(WindowRef inWindow, SInt32 inID)
{
    const ControlRef control = Find(inWindow, inID);
    return control ? GetControl32BitValue(control) : 0;
}

void SetControl32BitValueByID(WindowRef inWindow, SInt32 inID, SInt32 inValue)
{
    if (const ControlRef control = Find(inWindow, inID))
        SetControl32BitValue(control, inValue);
}

OSErr SetEditTextControlContents(WindowRef inWindow, SInt32 inID, ConstStr255Param inText)
{
    return SetEditTextControlContents(Find(inWindow, inID), inText);
}

OSErr SetEditTextControlContents(WindowRef inWindow, SInt32 inID, const char* inText)
{
    return SetEditTextControlContents(Find(inWindow, inID), inText);
}

OSErr GetEditTextControlContents(WindowRef inWindow, SInt32 inID, Str255 outText)
{
    return GetEditTextControlContents(Find(inWindow, inID), outText);
}

OSErr GetEditTextControlContents(WindowRef inWindow, SInt32 inID, char* outText)
{
    return GetEditTextControlContents(Find(inWindow, inID), outText);
}

OSErr SetEditTextControlPassword(WindowRef inWindow, SInt32 inID, const char* inText)
{
    return SetEditTextControlPassword(Find(inWindow, inID), inText);
}

OSErr SetStaticTextControlTitle(WindowRef inWindow, SInt32 inID, ConstStr255Param inText)
{
    return SetStaticTextControlTitle(Find(inWindow, inID), inText);
}

OSErr SetStaticTextControlTitle(WindowRef inWindow, SInt32 inID, const char* inText)
{
    return SetStaticTextControlTitle(Find(inWindow, inID), inText);
}

OSErr HideControlByID(WindowRef inWindow, SInt32 inID)
{
    const ControlRef control = Find(inWindow, inID);
    if (!control || !IsControlVisible(control))
        return paramErr;
    HideControl(control);
    return noErr;
}

OSErr ShowControlByID(WindowRef inWindow, SInt32 inID)
{
    const ControlRef control = Find(inWindow, inID);
    if (!control || IsControlVisible(control))
        return paramErr;
    ShowControl(control);
    return noErr;
}
