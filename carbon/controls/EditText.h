// The kind behind edit text and password fields.
#ifndef LAMPBLACK_CONTROLS_EDITTEXT_H
#define LAMPBLACK_CONTROLS_EDITTEXT_H

#include "controls/Kind.h"

#include <Carbon/CarbonEvents.h>
#include <Carbon/TextEdit.h>

#include <string_view>

namespace lampblack::controls {

class EditText final : public Kind {
public:
    using Kind::Kind;
    ~EditText() override;

    OSType Code() const override { return kControlKindEditText; }
    UInt32 Features() const override
    {
        return kControlSupportsDataAccess | kControlSupportsFocus | kControlGetsFocusOnClick |
               kControlWantsIdle | kControlSupportsCalcBestRect;
    }
    OSStatus Initialize(const NewControlInfo&) override;

    void Draw(ControlPartCode) override;
    Rect StructureBounds() const override;
    ControlPartCode HitTest(Point) const override;
    ControlPartCode Track(const TrackInfo&) override;
    bool TracksItself() const override { return true; }

    ControlFocusPart Focus(ControlFocusPart) override;
    void FocusChanged(bool inByTab) override;
    void StateChanged() override;
    void BoundsChanged() override;
    void FontChanged() override;
    void DataChanged(ResType) override;

    ControlPartCode Key(SInt16 inKeyCode, SInt16 inCharCode, EventModifiers) override;
    bool WantsKeyEvents() const override { return true; }
    OSStatus RawKey(EventRef) override;
    OSStatus TextInput(EventRef) override;
    OSStatus Command(EventRef) override;
    void Idle() override;
    bool SetCursor(Point, EventModifiers) override;
    OSErr BestRect(Rect*, SInt16*) override;
    SInt16 DefaultJust() const override { return 0; }
    std::span<const DataField> Fields() const override;

    TEHandle Text() const { return fText; }
    std::string ShownText() const; // bullets in a password field
    std::string Password();
    void SetText(std::string_view);
    void Select(long inStart, long inEnd);
    bool CanDo(UInt32 inCommand) const; // cut, copy, paste, clear, select all, undo
    void Do(UInt32 inCommand);

private:
    class StEditing;
    enum class UndoRun : UInt8 { None, Typing, Edited, Undone };
    struct UndoState {
        UndoRun run = UndoRun::None;
        std::string text;
        short selStart = 0, selEnd = 0;
    };

    bool IsPassword() const { return fControl.procID == kControlEditTextPasswordProc; }
    bool IsOneLine() const;
    SInt16 Justification() const;
    Rect FrameRect() const;
    void Lay();
    void Reveal();
    void UpdateCaret();
    bool SyncCaret(); // without drawing; answers whether it changed
    void TellInputMethod() const;
    void SyncPassword();
    void Replace(std::string_view);
    void DeletePassword(SInt16 inCharacter);
    void KeepForUndo(UndoRun);
    void Undo();
    void Copy();
    void Paste();
    ControlPartCode CommandKey(SInt16 inCharCode);
    ControlPartCode Type(SInt16 inCharCode);
    OSStatus UpdateStatus(const HICommand&) const;
    static UInt32 CommandForKey(char);

    TEHandle fText = nullptr;
    std::string fPassword; // what the bullets stand for
    Boolean fLocked = false;
    Boolean fSingleLine = false;
    bool fCaretOn = false;
    ControlKeyFilterUPP fFilter = nullptr;
    ControlEditTextValidationUPP fValidate = nullptr;
    UndoState fUndo;
};

} // namespace lampblack::controls

#endif
