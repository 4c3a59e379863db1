// What controls carry: data under tags, properties, IDs, commands, fonts, references.
#include "controls/ControlRecord.h"
#include "controls/Drawing.h"
#include "controls/Kind.h"

#include <algorithm>
#include <cstring>

namespace lampblack::controls {

namespace {

// --- The tags that every kind understands

Size StyleSize(Kind&)
{
    return sizeof(ControlFontStyleRec);
}
OSErr GetStyle(Kind& inKind, void* outData, Size inSize)
{
    if (inSize < (Size)sizeof(ControlFontStyleRec))
        return errDataSizeMismatch;
    std::memcpy(outData, &inKind.Owner().font, sizeof(ControlFontStyleRec));
    return noErr;
}
OSErr SetStyle(Kind& inKind, const void* inData, Size inSize)
{
    if (inSize != (Size)sizeof(ControlFontStyleRec))
        return errDataSizeMismatch;
    std::memcpy(&inKind.Owner().font, inData, sizeof(ControlFontStyleRec));
    inKind.FontChanged();
    return noErr;
}

Size KindSize(Kind&)
{
    return sizeof(ControlKind);
}
OSErr GetKind(Kind& inKind, void* outData, Size inSize)
{
    if (inSize < (Size)sizeof(ControlKind))
        return errDataSizeMismatch;
    const ControlKind kind = { kControlKindSignatureApple, inKind.Code() };
    std::memcpy(outData, &kind, sizeof kind);
    return noErr;
}

Size SizeSize(Kind&)
{
    return sizeof(ControlSize);
}
OSErr GetSize(Kind& inKind, void* outData, Size inSize)
{
    if (inSize < (Size)sizeof(ControlSize))
        return errDataSizeMismatch;
    std::memcpy(outData, &inKind.Owner().size, sizeof(ControlSize));
    return noErr;
}
OSErr SetSize(Kind& inKind, const void* inData, Size inSize)
{
    if (inSize != (Size)sizeof(ControlSize))
        return errDataSizeMismatch;
    std::memcpy(&inKind.Owner().size, inData, sizeof(ControlSize));
    inKind.FontChanged();
    RedrawErased(inKind.Owner());
    return noErr;
}

constexpr DataField kStyleField = { kControlFontStyleTag, StyleSize, GetStyle, SetStyle };
constexpr DataField kKindField = { kControlKindTag, KindSize, GetKind, nullptr };
constexpr DataField kSizeField = { kControlSizeTag, SizeSize, GetSize, SetSize };

const DataField* FieldOf(const Kind& inKind, ResType inTag)
{
    for (const DataField& field : inKind.Fields())
        if (field.tag == inTag)
            return &field;
    if (inTag == kControlFontStyleTag)
        return &kStyleField;
    if (inTag == kControlKindTag)
        return &kKindField;
    return inTag == kControlSizeTag && inKind.HasSizes() ? &kSizeField : nullptr;
}

// --- Properties

Property* FindProperty(Control& inControl, OSType inCreator, OSType inTag)
{
    for (Property& property : inControl.properties)
        if (property.creator == inCreator && property.tag == inTag)
            return &property;
    return nullptr;
}

// The system keeps this creator for itself.
bool IsReserved(OSType inCreator)
{
    return inCreator == 0 || inCreator == kControlKindSignatureApple;
}

OSStatus FindPropertyOf(ControlRef inControl, OSType inCreator, OSType inTag, Property** outProperty)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    if (IsReserved(inCreator))
        return controlPropertyInvalid;
    *outProperty = FindProperty(*control, inCreator, inTag);
    return *outProperty ? (OSStatus)noErr : (OSStatus)controlPropertyNotFoundErr;
}

// The part that data belongs to: kinds have none but the whole of them.
bool IsDataPart(ControlPartCode inPart)
{
    return inPart >= kControlEntireControl;
}

} // namespace

} // namespace lampblack::controls

using namespace lampblack::controls;

LAMPBLACK_BEGIN_C

OSErr SetControlData(ControlRef inControl, ControlPartCode inPart, ResType inTag, Size inSize,
                     const void* inData)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    if (inSize < 0 || (!inData && inSize > 0) || !IsDataPart(inPart))
        return paramErr;
    const DataField* field = FieldOf(*control->kind, inTag);
    if (!field || !field->set)
        return errDataNotSupported;
    StPin pin(control);
    const OSErr status = field->set(*control->kind, inSize ? inData : "", inSize);
    if (status == noErr && pin.Alive())
        control->kind->DataChanged(inTag);
    return status;
}

OSErr GetControlData(ControlRef inControl, ControlPartCode inPart, ResType inTag, Size inBufferSize,
                     void* outData, Size* outActualSize)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    if (inBufferSize < 0 || !IsDataPart(inPart) || (!outData && !outActualSize))
        return paramErr;
    const DataField* field = FieldOf(*control->kind, inTag);
    if (!field || !field->get)
        return errDataNotSupported;
    if (outActualSize)
        *outActualSize = field->size(*control->kind);
    return outData ? field->get(*control->kind, outData, inBufferSize) : (OSErr)noErr;
}

OSErr GetControlDataSize(ControlRef inControl, ControlPartCode inPart, ResType inTag, Size* outSize)
{
    if (!outSize)
        return paramErr;
    return GetControlData(inControl, inPart, inTag, 0, nullptr, outSize);
}

OSErr SetControlFontStyle(ControlRef inControl, const ControlFontStyleRec* inStyle)
{
    Control* control = Find(inControl);
    if (!control || !inStyle)
        return control ? (OSErr)paramErr : InvalidControl(inControl);
    const OSErr status =
        SetControlData(inControl, kControlEntireControl, kControlFontStyleTag, sizeof *inStyle, inStyle);
    if (status == noErr)
        RedrawErased(*control);
    return status;
}

OSStatus SetControlProperty(ControlRef inControl, OSType inCreator, OSType inTag, ByteCount inSize,
                            const void* inData)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    if (!inData && inSize > 0)
        return paramErr;
    if (IsReserved(inCreator))
        return controlPropertyInvalid;
    Property* property = FindProperty(*control, inCreator, inTag);
    if (!property)
        property = &control->properties.emplace_back(Property{ inCreator, inTag, 0, {} });
    const auto* bytes = (const uint8_t*)inData;
    property->bytes.assign(bytes, bytes + inSize);
    return noErr;
}

OSStatus GetControlProperty(ControlRef inControl, OSType inCreator, OSType inTag, ByteCount inBufferSize,
                            ByteCount* outActualSize, void* outData)
{
    Property* property = nullptr;
    const OSStatus status = FindPropertyOf(inControl, inCreator, inTag, &property);
    if (status != noErr)
        return status;
    if (!outData)
        return paramErr;
    const size_t size = std::min<size_t>(property->bytes.size(), inBufferSize);
    std::copy_n(property->bytes.begin(), size, (uint8_t*)outData);
    if (outActualSize)
        *outActualSize = size;
    return noErr;
}

OSStatus GetControlPropertySize(ControlRef inControl, OSType inCreator, OSType inTag, ByteCount* outSize)
{
    Property* property = nullptr;
    const OSStatus status = FindPropertyOf(inControl, inCreator, inTag, &property);
    if (status != noErr)
        return status;
    if (!outSize)
        return paramErr;
    *outSize = property->bytes.size();
    return noErr;
}

OSStatus RemoveControlProperty(ControlRef inControl, OSType inCreator, OSType inTag)
{
    Property* property = nullptr;
    const OSStatus status = FindPropertyOf(inControl, inCreator, inTag, &property);
    if (status != noErr)
        return status;
    auto& properties = Find(inControl)->properties;
    properties.erase(properties.begin() + (property - properties.data()));
    return noErr;
}

OSStatus GetControlPropertyAttributes(ControlRef inControl, OSType inCreator, OSType inTag,
                                      UInt32* outAttributes)
{
    Property* property = nullptr;
    const OSStatus status = FindPropertyOf(inControl, inCreator, inTag, &property);
    if (status != noErr)
        return status;
    if (!outAttributes)
        return paramErr;
    *outAttributes = property->attributes;
    return noErr;
}

OSStatus ChangeControlPropertyAttributes(ControlRef inControl, OSType inCreator, OSType inTag,
                                         UInt32 inAttributesToSet, UInt32 inAttributesToClear)
{
    Property* property = nullptr;
    const OSStatus status = FindPropertyOf(inControl, inCreator, inTag, &property);
    if (status != noErr)
        return status;
    property->attributes = (property->attributes | inAttributesToSet) & ~inAttributesToClear;
    return noErr;
}

OSStatus SetControlID(ControlRef inControl, const ControlID* inID)
{
    Control* control = Find(inControl);
    if (!control || !inID)
        return control ? (OSStatus)paramErr : InvalidControl(inControl);
    control->id = *inID;
    return noErr;
}

OSStatus GetControlID(ControlRef inControl, ControlID* outID)
{
    Control* control = Find(inControl);
    if (!control || !outID)
        return control ? (OSStatus)paramErr : InvalidControl(inControl);
    *outID = control->id;
    return noErr;
}

OSStatus GetControlByID(const WindowRef inWindow, const ControlID* inID, ControlRef* outControl)
{
    if (!inWindow || !inID || !outControl)
        return paramErr;
    WindowControls* controls = FindWindowControls(inWindow);
    if (!controls)
        return errControlNotFound;
    Control* found = nullptr;
    ForEachControl(*controls, [&](Control& control) {
        if (!found && control.id.signature == inID->signature && control.id.id == inID->id)
            found = &control;
    });
    if (!found)
        return errControlNotFound;
    *outControl = found->Ref();
    return noErr;
}

OSStatus SetControlCommandID(ControlRef inControl, UInt32 inCommandID)
{
    Control* control = Find(inControl);
    if (!control)
        return InvalidControl(inControl);
    control->commandID = inCommandID;
    return noErr;
}

OSStatus GetControlCommandID(ControlRef inControl, UInt32* outCommandID)
{
    Control* control = Find(inControl);
    if (!control || !outCommandID)
        return control ? (OSStatus)paramErr : InvalidControl(inControl);
    *outCommandID = control->commandID;
    return noErr;
}

void SetControlAction(ControlRef inControl, ControlActionUPP inAction)
{
    if (Control* control = Find(inControl))
        control->action = inAction;
}

ControlActionUPP GetControlAction(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control ? control->action : nullptr;
}

long GetControlReference(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control ? control->reference : 0;
}

void SetControlReference(ControlRef inControl, long inReference)
{
    if (Control* control = Find(inControl))
        control->reference = inReference;
}

WindowRef GetControlOwner(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control ? control->window : nullptr;
}

OSStatus GetControlKind(ControlRef inControl, ControlKind* outKind)
{
    Control* control = Find(inControl);
    if (!control || !outKind)
        return control ? (OSStatus)paramErr : InvalidControl(inControl);
    *outKind = { kControlKindSignatureApple, control->kind->Code() };
    return noErr;
}

OSErr GetControlFeatures(ControlRef inControl, UInt32* outFeatures)
{
    Control* control = Find(inControl);
    if (!control || !outFeatures)
        return control ? (OSErr)paramErr : InvalidControl(inControl);
    *outFeatures = control->kind->Features();
    return noErr;
}

MenuRef GetControlPopupMenuHandle(ControlRef inControl)
{
    const Control* control = Find(inControl);
    return control ? control->kind->Menu() : nullptr;
}

void SetControlPopupMenuHandle(ControlRef inControl, MenuRef inMenu)
{
    Control* control = Find(inControl);
    if (control && control->kind->SetMenu(inMenu) == noErr)
        RedrawErased(*control);
}

short GetControlPopupMenuID(ControlRef inControl)
{
    short id = 0;
    GetControlData(inControl, kControlEntireControl, kControlPopupButtonMenuIDTag, sizeof id, &id, nullptr);
    return id;
}

void SetControlPopupMenuID(ControlRef inControl, short inMenuID)
{
    if (SetControlData(inControl, kControlEntireControl, kControlPopupButtonMenuIDTag, sizeof inMenuID,
                       &inMenuID) == noErr)
        Draw1Control(inControl);
}

LAMPBLACK_END_C
