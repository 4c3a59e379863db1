// The table from definition IDs to kinds, and what most kinds share.
#include "controls/Kind.h"

#include "controls/Drawing.h"
#include "controls/Mouse.h"

#include <algorithm>

namespace lampblack::controls {

namespace {

struct KindEntry {
    SInt16 first, last; // definition IDs
    KindMaker make;
};

constexpr KindEntry kKinds[] = {
    { 0, 0, NewPushButton },        { 8, 8, NewPushButton },      { 1, 1, NewCheckBox },
    { 9, 9, NewCheckBox },          { 2, 2, NewRadioButton },     { 10, 10, NewRadioButton },
    { 16, 16, NewScrollBar },       { 48, 63, NewSlider },        { 64, 67, NewDisclosureTriangle },
    { 80, 81, NewProgressBar },     { 96, 96, NewLittleArrows },  { 112, 112, NewChasingArrows },
    { 144, 144, NewSeparator },     { 160, 161, NewGroupBox },    { 164, 165, NewGroupBox },
    { 224, 224, NewPlacard },       { 256, 256, NewUserPane },    { 272, 272, NewEditText },
    { 274, 274, NewEditText },      { 288, 288, NewStaticText },  { 336, 337, NewWindowHeader },
    { 368, 368, NewPushButton },    { 369, 369, NewCheckBox },    { 371, 371, NewCheckBox },
    { 370, 370, NewRadioButton },   { 372, 372, NewRadioButton }, { 384, 384, NewScrollBar },
    { 386, 386, NewScrollBar },     { 32, 47, NewBevelButton },   { 400, 415, NewPopupButton },
    { 1008, 1023, NewPopupButton },
};

const KindEntry* EntryFor(SInt16 inProcID)
{
    for (const KindEntry& entry : kKinds)
        if (inProcID >= entry.first && inProcID <= entry.last)
            return &entry;
    return nullptr;
}

} // namespace

bool HasKind(SInt16 inProcID)
{
    return EntryFor(inProcID) != nullptr;
}

std::unique_ptr<Kind> NewKind(SInt16 inProcID, Control& inControl)
{
    const KindEntry* entry = EntryFor(inProcID);
    return entry ? entry->make(inControl) : nullptr;
}

OSErr CopyOut(const std::string& inText, void* outData, Size inBufferSize)
{
    std::memcpy(outData, inText.data(), std::min(inText.size(), (size_t)inBufferSize));
    return noErr;
}

OSStatus Kind::PartBounds(ControlPartCode inPart, Rect* outBounds) const
{
    if (inPart == kControlEntireControl || inPart == kControlContentMetaPart)
        *outBounds = fControl.bounds;
    else if (inPart == kControlStructureMetaPart)
        *outBounds = StructureBounds();
    else
        return errInvalidPartCode;
    return noErr;
}

// The tracking of everything that is pressed and let go: the part is lit while the mouse is over it.
ControlPartCode Kind::Track(const TrackInfo& inInfo)
{
    const ControlPartCode part = HitTest(inInfo.where);
    if (part == kControlNoPart)
        return kControlNoPart;
    StPin pin(&fControl);
    bool over = false;
    StMouse mouse(fControl.window, inInfo.where);
    do {
        const bool now = HitTest(mouse.Where()) == part;
        if (now != over) {
            over = now;
            fControl.hilite = over ? part : (ControlPartCode)kControlNoPart;
            RedrawErased(fControl);
        }
        if (over && inInfo.action)
            InvokeControlActionUPP(fControl.Ref(), part, inInfo.action);
    } while (pin.Alive() && mouse.StillDown());
    if (!pin.Alive())
        return kControlNoPart;
    over = over && HitTest(mouse.Where()) == part;
    fControl.hilite = kControlNoPart;
    RedrawErased(fControl);
    return over ? part : (ControlPartCode)kControlNoPart;
}

} // namespace lampblack::controls
