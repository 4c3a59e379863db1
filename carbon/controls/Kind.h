// What makes a push button a push button: one subclass of Kind for each kind of control, and the table that
// finds the kind for a definition ID. Everything here works in the control's window port, which the caller
// made current.
#ifndef LAMPBLACK_CONTROLS_KIND_H
#define LAMPBLACK_CONTROLS_KIND_H

#include "controls/ControlRecord.h"

#include <cstring>
#include <span>

namespace lampblack::controls {

class Kind;

// One data tag: how many bytes it has now, and how they go out and come in. A missing `set` means read only.
struct DataField {
    ResType tag;
    Size (*size)(Kind&);
    OSErr (*get)(Kind&, void* outData, Size inBufferSize);
    OSErr (*set)(Kind&, const void* inData, Size inSize);
};

// What a click carries, and what the tracking of it came to.
struct TrackInfo {
    Point where = { 0, 0 };
    EventModifiers modifiers = 0;
    ControlActionUPP action = nullptr;
    UInt32 clickCount = 1;
};

class Kind {
public:
    explicit Kind(Control& inControl) : fControl(inControl) {}
    virtual ~Kind() = default;
    Kind(const Kind&) = delete;
    Kind& operator=(const Kind&) = delete;

    virtual OSType Code() const = 0;
    virtual UInt32 Features() const { return kControlSupportsDataAccess; }

    // Called once, when the record has its window, bounds and values.
    virtual OSStatus Initialize(const NewControlInfo&) { return noErr; }

    virtual void Draw(ControlPartCode inPart) = 0;
    virtual Rect StructureBounds() const { return fControl.bounds; } // all that it draws
    // What has a surface of its own that other controls may lie on; it is drawn again behind them.
    virtual bool IsSurface() const { return false; }
    // Containers that are not seen themselves, and panes whose procedure covers what it drew, are never
    // erased.
    virtual bool IsErased() const { return true; }
    virtual ControlPartCode HitTest(Point) const { return kControlNoPart; }
    virtual bool TakesMouse() const { return true; } // false: what lies below is under the mouse
    virtual OSStatus PartBounds(ControlPartCode inPart, Rect* outBounds) const;

    // Follows the mouse until it is released; answers the part that was hit, or none.
    virtual ControlPartCode Track(const TrackInfo& inInfo);
    virtual bool TracksItself() const { return false; } // true: presses need not end in a redraw
    virtual ControlPartCode DefaultPart() const { return kControlNoPart; } // hit by Return and Escape
    virtual void WasHit(ControlPartCode) {}

    // Told after the record changed. They redraw nothing; the caller does.
    virtual void ValueChanged() {}
    virtual void TitleChanged() {}
    virtual void BoundsChanged() {}
    virtual void FontChanged() {}
    virtual void StateChanged() {} // enabled, active, visible or hilite
    virtual void DataChanged(ResType) {}

    // Keyboard focus: answers the part that took it, kControlFocusNoPart when none does.
    virtual ControlFocusPart Focus(ControlFocusPart) { return kControlFocusNoPart; }
    virtual void FocusChanged(bool) {}
    virtual ControlPartCode Key(SInt16, SInt16, EventModifiers) { return kControlNoPart; }
    virtual bool WantsKeyEvents() const { return false; }
    virtual OSStatus RawKey(EventRef) { return eventNotHandledErr; }
    virtual OSStatus TextInput(EventRef) { return eventNotHandledErr; }
    virtual OSStatus Command(EventRef) { return eventNotHandledErr; }
    virtual void Idle() {}
    virtual bool SetCursor(Point, EventModifiers) { return false; }

    virtual OSErr BestRect(Rect*, SInt16*) { return errMessageNotSupported; }
    virtual bool SetUpBackground(SInt16, Boolean) { return false; }
    virtual bool HasSizes() const { return false; } // takes kControlSizeTag
    virtual SInt16 DefaultThemeFont() const;
    virtual SInt16 DefaultJust() const { return 0; }
    virtual std::span<const DataField> Fields() const { return {}; }
    virtual MenuRef Menu() const { return nullptr; }
    virtual OSStatus SetMenu(MenuRef) { return errMessageNotSupported; }

    Control& Owner() { return fControl; }
    const Control& Owner() const { return fControl; }

protected:
    Control& fControl;
};

// A kind for a definition ID; null when there is none.
std::unique_ptr<Kind> NewKind(SInt16 inProcID, Control& inControl);
bool HasKind(SInt16 inProcID);

// Makers of the kinds, one a family; the low bits of the definition ID tell the variant.
using KindMaker = std::unique_ptr<Kind> (*)(Control&);
std::unique_ptr<Kind> NewPushButton(Control&);
std::unique_ptr<Kind> NewCheckBox(Control&);
std::unique_ptr<Kind> NewRadioButton(Control&);
std::unique_ptr<Kind> NewScrollBar(Control&);
std::unique_ptr<Kind> NewStaticText(Control&);
std::unique_ptr<Kind> NewEditText(Control&);
std::unique_ptr<Kind> NewProgressBar(Control&);
std::unique_ptr<Kind> NewUserPane(Control&);
std::unique_ptr<Kind> NewGroupBox(Control&);
std::unique_ptr<Kind> NewSeparator(Control&);
std::unique_ptr<Kind> NewPopupButton(Control&);
std::unique_ptr<Kind> NewPlacard(Control&);
std::unique_ptr<Kind> NewWindowHeader(Control&);
std::unique_ptr<Kind> NewLittleArrows(Control&);
std::unique_ptr<Kind> NewChasingArrows(Control&);
std::unique_ptr<Kind> NewDisclosureTriangle(Control&);
std::unique_ptr<Kind> NewSlider(Control&);
std::unique_ptr<Kind> NewBevelButton(Control&);
std::unique_ptr<Kind> NewRoot(Control&);

// A DataField for a member of a kind with a fixed size: DataMember<PushButton, Boolean,
// &PushButton::fIsDefault>.
template <class K, class T, T K::*Member>
Size MemberSize(Kind&)
{
    return sizeof(T);
}
template <class K, class T, T K::*Member>
OSErr GetMember(Kind& inKind, void* outData, Size inBufferSize)
{
    if (inBufferSize < (Size)sizeof(T))
        return errDataSizeMismatch;
    std::memcpy(outData, &(static_cast<K&>(inKind).*Member), sizeof(T));
    return noErr;
}
template <class K, class T, T K::*Member>
OSErr SetMember(Kind& inKind, const void* inData, Size inSize)
{
    if (inSize != (Size)sizeof(T))
        return errDataSizeMismatch;
    std::memcpy(&(static_cast<K&>(inKind).*Member), inData, sizeof(T));
    return noErr;
}
template <class K, class T, T K::*Member>
constexpr DataField FieldFor(ResType inTag)
{
    return { inTag, MemberSize<K, T, Member>, GetMember<K, T, Member>, SetMember<K, T, Member> };
}
template <class K, class T, T K::*Member>
constexpr DataField ReadOnlyFieldFor(ResType inTag)
{
    return { inTag, MemberSize<K, T, Member>, GetMember<K, T, Member>, nullptr };
}

// Copies as much of a text as the buffer holds, as the text tags do.
OSErr CopyOut(const std::string& inText, void* outData, Size inBufferSize);

} // namespace lampblack::controls

#endif
