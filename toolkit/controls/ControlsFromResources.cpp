// Building a window's controls from 'CTL#', 'CNTL' and their side resources.
#include "controls/ControlsFromResources.h"

#include <cstring>

#include "controls/ControlData.h"
#include "controls/Focus.h"
#include "util/SystemChecks.h"
#include "window/WindowUtilities.h"

namespace {

// One byte of a resource; 0 when the resource is missing or shorter.
UInt8 ResourceByte(ResType inType, SInt32 inID, Size inOffset = 0)
{
    const Handle resource = GetResource(inType, static_cast<SInt16>(inID));
    if (!resource || GetHandleSize(resource) <= inOffset)
        return 0;
    return static_cast<UInt8>((*resource)[inOffset]);
}

// One 16-bit word of a resource as it lies in memory; false when the resource is missing or shorter.
bool ResourceWord(ResType inType, SInt32 inID, Size inOffset, SInt16* outWord)
{
    const Handle resource = GetResource(inType, static_cast<SInt16>(inID));
    if (!resource || GetHandleSize(resource) < inOffset + 2)
        return false;
    std::memcpy(outWord, *resource + inOffset, sizeof *outWord);
    return true;
}

SInt16 ProcIDOfTemplate(SInt16 inID)
{
    constexpr Size kProcIDOffset = 16;
    SInt16 procID = 0;
    ResourceWord('CNTL', inID, kProcIDOffset, &procID);
    return procID;
}

void SetupPushButton(WindowRef inWindow, ControlRef inControl, SInt16 inID)
{
    constexpr UInt8 kCancelBit = 1, kDefaultBit = 2;
    const UInt8 bits = ResourceByte('xBTN', inID);
    if (bits & kCancelBit) {
        SetPushButtonControlAsCancel(inControl, true);
        SetWindowCancelButton(inWindow, inControl);
    }
    if (bits & kDefaultBit) {
        SetPushButtonControlAsDefault(inControl, true);
        SetWindowDefaultButton(inWindow, inControl);
    }
}

// The 'CNTL' title is what the static text shows.
void SetupStaticText(ControlRef inControl)
{
    Str255 title;
    GetControlTitle(inControl, title);
    SetStaticTextControlTitle(inControl, title);
}

void SetupKind(WindowRef inWindow, ControlRef inControl, SInt16 inID)
{
    switch (GetControlDefProcID(inControl)) {
    case kEditTextDefID:
    case kPasswordEditTextDefID: InstallIdleControlsTimer(inWindow); break;
    case kProgressBarDefID:
        if (ResourceByte('PBAR', inID) != 0)
            SetProgressBarControlIsIndeterminate(inControl, true);
        break;
    case kStaticTextDefID: SetupStaticText(inControl); break;
    case kPushButtonDefID: SetupPushButton(inWindow, inControl, inID); break;
    }
}

void SetupSize(WindowRef inWindow, ControlRef inControl, SInt16 inID)
{
    SInt16 size = 0;
    if (!ResourceWord('CNTS', inID, 0, &size) && !ResourceWord('CNTS', GetWindowID(inWindow), 0, &size))
        return;
    if (SetControlData(inControl, kControlEntireControl, kControlSizeTag, sizeof size, &size) == noErr)
        return;
    if (size == 0)
        SetControlFont(inControl, kControlFontBigSystemFont);
    else if (size == 1)
        SetControlFont(inControl, kControlFontSmallSystemFont);
}

// Designers park a control that must start hidden 16384 pixels to the right. The test is on either edge, the
// shift on both: kept so, since shipped layouts were drawn against it.
void UnparkControl(ControlRef inControl)
{
    constexpr SInt16 kParkedFrom = 16383, kParkingDistance = 16384;
    Rect bounds;
    GetControlBounds(inControl, &bounds);
    if (bounds.left <= kParkedFrom && bounds.right <= kParkedFrom)
        return;
    bounds.left = static_cast<SInt16>(bounds.left - kParkingDistance);
    bounds.right = static_cast<SInt16>(bounds.right - kParkingDistance);
    SetControlBounds(inControl, &bounds);
    HideControl(inControl);
}

OSErr EmbedInItsParent(WindowRef inWindow, ControlRef inControl)
{
    const SInt32 parentID = static_cast<SInt32>(GetControlReference(inControl));
    ControlRef parent = parentID != 0 ? GetControlByID(inWindow, parentID) : nullptr;
    OSErr status = noErr;
    if (!parent)
        status = GetRootControl(inWindow, &parent);
    return parent ? EmbedControl(inControl, parent) : status;
}

OSErr SetupNewControl(WindowRef inWindow, ControlRef inControl, SInt16 inID)
{
    SetControlID(inControl, inID);
    SetControlDefProcID(inControl, ProcIDOfTemplate(inID));
    SetupKind(inWindow, inControl, inID);
    SetupSize(inWindow, inControl, inID);
    SetupNewControlFontStyle(inWindow, inControl, inID);
    UnparkControl(inControl);
    return EmbedInItsParent(inWindow, inControl);
}

bool IsClassicEditText(ControlRef inControl)
{
    const SInt32 defID = GetControlDefProcID(inControl);
    return defID == kEditTextDefID || defID == kPasswordEditTextDefID;
}

SInt16 FontNumberOf(ConstStr255Param inName)
{
    SInt16 font = 0;
    GetFNum(inName, &font);
    return font;
}

// The fonts that a 'CNTF' may ask for by a number of ours.
void ResolveFont(ControlFontStyleRec* ioStyle)
{
    constexpr SInt16 kBoldSystem = -5, kMonaco = 12345, kGeneva = 12346;
    if (ioStyle->font == kBoldSystem) {
        ioStyle->font = 0; // before Mac OS X, where there is no such font, it is the system font
        if (HasMacOSX()) {
            static const SInt16 lucidaGrande =
                FontNumberOf(reinterpret_cast<ConstStr255Param>("\15Lucida Grande"));
            ioStyle->flags |= kControlUseFaceMask | kControlUseSizeMask;
            ioStyle->style |= bold;
            ioStyle->size = 14;
            ioStyle->font = lucidaGrande;
        }
    } else if (ioStyle->font == kMonaco) {
        static const SInt16 monaco = FontNumberOf(reinterpret_cast<ConstStr255Param>("\6Monaco"));
        ioStyle->font = monaco;
    } else if (ioStyle->font == kGeneva) {
        static const SInt16 geneva = FontNumberOf(reinterpret_cast<ConstStr255Param>("\6Geneva"));
        ioStyle->font = geneva;
    }
}

void InstallColorProcOnce(ControlRef inControl)
{
    Boolean hasProc = false;
    if (GetControlProperty(inControl, kToolkitSignature, 'COLR', sizeof hasProc, nullptr, &hasProc) ==
            noErr &&
        hasProc)
        return;
    static const ControlColorUPP colorUPP = NewControlColorUPP(ControlColorProc);
    SetControlColorProc(inControl, colorUPP);
    hasProc = true;
    SetControlProperty(inControl, kToolkitSignature, 'COLR', sizeof hasProc, &hasProc);
}

bool IsInsideColorProc(ControlRef inControl)
{
    Boolean isInside = false;
    return GetControlProperty(inControl, kToolkitSignature, 'CLR!', sizeof isInside, nullptr, &isInside) ==
               noErr &&
           isInside;
}

void SetUpPlatformTextColor(ControlRef inControl, SInt16 inDepth, Boolean inIsColor)
{
    const Boolean isInside = true;
    SetControlProperty(inControl, kToolkitSignature, 'CLR!', sizeof isInside, &isInside);
    SetUpControlTextColor(inControl, inDepth, inIsColor);
    RemoveControlProperty(inControl, kToolkitSignature, 'CLR!');
}

} // namespace

OSErr GetNewControls(WindowRef inWindow, SInt16 inListID)
{
    const Handle list = GetResource('CTL#', inListID);
    if (!list || ResError() != noErr)
        return noErr;
    HLock(list);
    const Size count = GetHandleSize(list) / 2;
    ControlRef firstEdit = nullptr;
    OSErr status = noErr;
    for (Size i = 0; i < count; ++i) {
        SInt16 id = 0;
        std::memcpy(&id, *list + 2 * i, sizeof id);
        const ControlRef control = GetNewControl(id, inWindow);
        if (!control)
            continue;
        status = SetupNewControl(inWindow, control, id);
        if (!firstEdit && IsClassicEditText(control))
            firstEdit = control;
    }
    HUnlock(list);
    if (status != noErr)
        return status;
    if (firstEdit && !IsControlKeyboardFocus(inWindow, firstEdit))
        ChangeKeyboardFocus(inWindow, firstEdit, false);
    return noErr;
}

ControlRef GetNewControlEnhanced(SInt16 inID, WindowRef inWindow)
{
    const ControlRef control = GetNewControl(inID, inWindow);
    if (control)
        SetControlID(control, inID);
    return control;
}

OSErr GetControlFontStyleFromResource(SInt32 inID, ControlFontStyleRec* outStyle)
{
    const Handle resource = GetResource('CNTF', static_cast<SInt16>(inID));
    if (!resource || GetHandleSize(resource) < static_cast<Size>(sizeof *outStyle))
        return resNotFound;
    std::memcpy(outStyle, *resource, sizeof *outStyle);
    ResolveFont(outStyle);
    if (!(outStyle->flags & kControlUseFontMask)) {
        outStyle->flags |= kControlUseFontMask;
        outStyle->font = kControlFontBigSystemFont;
    }
    return noErr;
}

void SetupNewControlFontStyle(WindowRef inWindow, ControlRef inControl, SInt32 inID)
{
    const SInt32 defID = GetControlDefProcID(inControl);
    if (defID == kUnicodeEditTextDefID || defID == kUnicodePasswordEditTextDefID)
        return;
    ControlFontStyleRec style;
    if (GetControlFontStyleFromResource(inID, &style) != noErr &&
        GetControlFontStyleFromResource(static_cast<SInt32>(GetWindowID(inWindow)), &style) != noErr)
        return;
    if (style.flags & (kControlUseFaceMask | kControlUseForeColorMask))
        InstallColorProcOnce(inControl);
    SetControlFontStyle(inControl, &style);
}

OSStatus ControlColorProc(ControlRef inControl, SInt16 inMessage, SInt16 inDepth, Boolean inIsColor)
{
    constexpr OSStatus kNotMine = -1;
    if (IsInsideColorProc(inControl))
        return kNotMine;
    ControlFontStyleRec style = {};
    const OSErr err =
        GetControlData(inControl, kControlEntireControl, kControlFontStyleTag, sizeof style, &style, nullptr);
    constexpr SInt16 kStyled = kControlUseFaceMask | kControlUseForeColorMask | kControlUseModeMask;
    if (err != noErr || inMessage != kControlMsgApplyTextColor || !(style.flags & kStyled))
        return kNotMine;
    SetUpPlatformTextColor(inControl, inDepth, inIsColor);
    if (style.flags & kControlUseForeColorMask)
        RGBForeColor(&style.foreColor);
    if (style.flags & kControlUseFaceMask)
        TextFace(static_cast<StyleParameter>(style.style));
    if (style.flags & kControlUseModeMask)
        TextMode(style.mode);
    if (!IsControlEnabledX(inControl) || !IsControlActive(inControl))
        TextMode(grayishTextOr);
    return noErr;
}
