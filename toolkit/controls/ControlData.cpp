// Control data and properties, one value in or out at a time.
#include "controls/ControlData.h"

#include <algorithm>
#include <cstring>

#include "util/SystemChecks.h"

namespace {

template <typename Value>
OSErr GetData(ControlRef inControl, ResType inTag, Value* outValue)
{
    return inControl
               ? GetControlData(inControl, kControlEntireControl, inTag, sizeof *outValue, outValue, nullptr)
               : static_cast<OSErr>(paramErr);
}

template <typename Value>
OSErr SetData(ControlRef inControl, ResType inTag, const Value& inValue)
{
    return inControl ? SetControlData(inControl, kControlEntireControl, inTag, sizeof inValue, &inValue)
                     : static_cast<OSErr>(paramErr);
}

OSErr TextSize(ControlRef inControl, Size* outSize)
{
    *outSize = 0;
    return inControl ? GetControlDataSize(inControl, kControlEntireControl, kControlEditTextTextTag, outSize)
                     : static_cast<OSErr>(paramErr);
}

OSErr ReadText(ControlRef inControl, Size inSize, void* outText)
{
    return GetControlData(inControl, kControlEntireControl, kControlEditTextTextTag, inSize, outText,
                          nullptr);
}

OSErr ReadWholeText(ControlRef inControl, char* outText)
{
    if (!outText)
        return paramErr;
    Size size = 0;
    OSErr err = TextSize(inControl, &size);
    if (err == noErr)
        err = ReadText(inControl, size, outText);
    outText[err == noErr ? size : 0] = 0;
    return err;
}

// Visible text is redrawn only when it changed.
OSErr WriteText(ControlRef inControl, ResType inTag, const void* inText, Size inSize)
{
    if (!inControl)
        return paramErr;
    const OSErr err = SetControlData(inControl, kControlEntireControl, inTag, inSize, inText);
    if (err == noErr)
        Draw1Control(inControl);
    return err;
}

OSErr WritePascalText(ControlRef inControl, ResType inTag, ConstStr255Param inText)
{
    return inText ? WriteText(inControl, inTag, inText + 1, inText[0]) : static_cast<OSErr>(paramErr);
}

OSErr WriteCText(ControlRef inControl, ResType inTag, const char* inText)
{
    return inText ? WriteText(inControl, inTag, inText, static_cast<Size>(std::strlen(inText)))
                  : static_cast<OSErr>(paramErr);
}

bool HasFlag(ControlRef inControl, PropertyCreator inCreator, PropertyTag inTag)
{
    Boolean flag = false;
    return inControl &&
           GetControlProperty(inControl, inCreator, inTag, sizeof flag, nullptr, &flag) == noErr && flag;
}

ControlRef FocusOf(WindowRef inWindow)
{
    ControlRef focus = nullptr;
    if (GetKeyboardFocus(inWindow, &focus) != noErr)
        return nullptr;
    return focus;
}

} // namespace

bool IsEditTextDefID(SInt32 inDefID)
{
    return inDefID == kEditTextDefID || inDefID == kPasswordEditTextDefID ||
           inDefID == kUnicodeEditTextDefID || inDefID == kUnicodePasswordEditTextDefID;
}

SInt32 GetControlDefProcID(ControlRef inControl)
{
    SInt32 defID = 0;
    if (!inControl ||
        GetControlProperty(inControl, kToolkitSignature, 'DFID', sizeof defID, nullptr, &defID) != noErr)
        return 0;
    return defID;
}

OSErr SetControlDefProcID(ControlRef inControl, SInt32 inDefID)
{
    return inControl ? SetControlProperty(inControl, kToolkitSignature, 'DFID', sizeof inDefID, &inDefID)
                     : static_cast<OSErr>(paramErr);
}

OSErr SetControlID(ControlRef inControl, SInt32 inID)
{
    const ControlID id = { kToolkitSignature, inID };
    return inControl ? SetControlID(inControl, &id) : static_cast<OSErr>(paramErr);
}

SInt32 GetControlID(ControlRef inControl)
{
    ControlID id = {};
    if (!inControl || GetControlID(inControl, &id) != noErr)
        return -1;
    return id.id;
}

ControlRef GetControlByID(WindowRef inWindow, SInt32 inID)
{
    const ControlID id = { kToolkitSignature, inID };
    ControlRef control = nullptr;
    GetControlByID(inWindow, &id, &control);
    return control;
}

OSErr InvalControl(ControlRef inControl)
{
    const WindowRef owner = inControl ? GetControlOwner(inControl) : nullptr;
    if (!owner)
        return paramErr;
    Rect bounds;
    GetControlBounds(inControl, &bounds);
    return InvalWindowRect(owner, &bounds);
}

OSErr ActivateRootControl(WindowRef inWindow)
{
    ControlRef root = nullptr;
    const OSErr err = inWindow ? GetRootControl(inWindow, &root) : static_cast<OSErr>(paramErr);
    return err == noErr ? ActivateControl(root) : err;
}

OSErr DeactivateRootControl(WindowRef inWindow)
{
    ControlRef root = nullptr;
    const OSErr err = inWindow ? GetRootControl(inWindow, &root) : static_cast<OSErr>(paramErr);
    return err == noErr ? DeactivateControl(root) : err;
}

bool IsControlKeyboardFocus(WindowRef inWindow, ControlRef inControl)
{
    return inWindow && FocusOf(inWindow) == inControl;
}

bool HasKeyboardFocus(WindowRef inWindow, ControlRef* outControl)
{
    if (!inWindow)
        return false;
    const ControlRef focus = FocusOf(inWindow);
    if (outControl)
        *outControl = focus;
    return focus != nullptr;
}

OSErr GetEditTextControlContents(ControlRef inControl, Str255 outText)
{
    if (!outText)
        return paramErr;
    Size size = 0;
    OSErr err = TextSize(inControl, &size);
    size = std::min<Size>(size, 255);
    if (err == noErr)
        err = ReadText(inControl, size, outText + 1);
    outText[0] = static_cast<unsigned char>(err == noErr ? size : 0);
    return err;
}

OSErr GetEditTextControlContents(ControlRef inControl, char* outText)
{
    return ReadWholeText(inControl, outText);
}

OSErr GetEditTextControlContentsLength(ControlRef inControl, UInt32* outLength)
{
    if (!outLength)
        return paramErr;
    Size size = 0;
    const OSErr err = TextSize(inControl, &size);
    *outLength = static_cast<UInt32>(size);
    return err;
}

OSErr SetEditTextControlContents(ControlRef inControl, ConstStr255Param inText)
{
    return WritePascalText(inControl, kControlEditTextTextTag, inText);
}

OSErr SetEditTextControlContents(ControlRef inControl, const char* inText)
{
    return WriteCText(inControl, kControlEditTextTextTag, inText);
}

OSErr SetEditTextControlPassword(ControlRef inControl, const char* inText)
{
    return WriteCText(inControl, kControlEditTextPasswordTag, inText);
}

bool IsEditTextControlLocked(ControlRef inControl)
{
    Boolean isLocked = false;
    return GetData(inControl, kControlEditTextLockedTag, &isLocked) == noErr && isLocked;
}

OSErr SetEditTextControlIsLocked(ControlRef inControl, bool inIsLocked)
{
    return SetData(inControl, kControlEditTextLockedTag, Boolean(inIsLocked));
}

OSErr SetEditTextControlFontStyle(ControlRef inControl, const ControlFontStyleRec* inStyle)
{
    return inStyle ? SetData(inControl, kControlFontStyleTag, *inStyle) : static_cast<OSErr>(paramErr);
}

OSErr SetControlFont(ControlRef inControl, SInt16 inFont)
{
    if (!inControl)
        return paramErr;
    ControlFontStyleRec style = {};
    style.flags = kControlUseFontMask;
    style.font = inFont;
    if (IsEditTextDefID(GetControlDefProcID(inControl)))
        return SetData(inControl, kControlFontStyleTag, style);
    return SetControlFontStyle(inControl, &style);
}

OSErr GetStaticTextControlTitle(ControlRef inControl, char* outText)
{
    return ReadWholeText(inControl, outText);
}

OSErr SetStaticTextControlTitle(ControlRef inControl, ConstStr255Param inText)
{
    return WritePascalText(inControl, kControlStaticTextTextTag, inText);
}

OSErr SetStaticTextControlTitle(ControlRef inControl, const char* inText)
{
    return WriteCText(inControl, kControlStaticTextTextTag, inText);
}

OSErr SetProgressBarControlIsIndeterminate(ControlRef inControl, bool inIsIndeterminate)
{
    return SetData(inControl, kControlProgressBarIndeterminateTag, Boolean(inIsIndeterminate));
}

OSErr SetPushButtonControlAsCancel(ControlRef inControl, bool inIsCancel)
{
    return SetData(inControl, kControlPushButtonCancelTag, Boolean(inIsCancel));
}

OSErr SetPushButtonControlAsDefault(ControlRef inControl, bool inIsDefault)
{
    return SetData(inControl, kControlPushButtonDefaultTag, Boolean(inIsDefault));
}

bool IsControlURL(ControlRef inControl)
{
    return HasFlag(inControl, kBehaviourCreator, 'URL?');
}

bool IsControlHandlingClicks(ControlRef inControl)
{
    return HasFlag(inControl, kBehaviourCreator, 'CLIK');
}

OSErr SetControlIsHandlingClicks(ControlRef inControl, bool inIsHandling)
{
    if (!inControl)
        return paramErr;
    if (!inIsHandling) {
        RemoveControlProperty(inControl, kBehaviourCreator, 'CLIK');
        return noErr;
    }
    const Boolean flag = true;
    return SetControlProperty(inControl, kBehaviourCreator, 'CLIK', sizeof flag, &flag);
}

bool IsControlEnabledX(ControlRef inControl)
{
    if (!inControl)
        return false;
    return HasAqua() ? IsControlEnabled(inControl) : IsControlActive(inControl);
}

OSErr EnableControlX(ControlRef inControl)
{
    if (!inControl)
        return paramErr;
    if (IsControlEnabledX(inControl))
        return noErr;
    return HasAqua() ? EnableControl(inControl) : ActivateControl(inControl);
}

OSErr DisableControlX(ControlRef inControl)
{
    if (!inControl)
        return paramErr;
    if (!IsControlEnabledX(inControl))
        return noErr;
    return HasAqua() ? DisableControl(inControl) : DeactivateControl(inControl);
}

void FlashControl(ControlRef inControl, SInt16 inPart)
{
    if (!IsControlEnabledX(inControl))
        return;
    HiliteControl(inControl, inPart);
    UInt32 ticks = 0;
    Delay(8, &ticks);
    HiliteControl(inControl, 0);
}
