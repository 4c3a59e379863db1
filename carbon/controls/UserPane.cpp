// User panes: the application's procedures do the work.
#include "controls/Drawing.h"
#include "controls/Kind.h"

namespace lampblack::controls {

namespace {

class UserPane final : public Kind {
public:
    using Kind::Kind;
    OSType Code() const override { return kControlKindUserPane; }

    // A pane made by definition ID asks for its features with the value that it is made with.
    OSStatus Initialize(const NewControlInfo& inInfo) override
    {
        fFeatures = inInfo.features ? inInfo.features : (UInt32)inInfo.value;
        fControl.value = 0;
        return noErr;
    }
    UInt32 Features() const override { return fFeatures | kControlSupportsDataAccess; }

    bool IsErased() const override { return false; }
    void Draw(ControlPartCode inPart) override
    {
        if (fDraw)
            fDraw(fControl.Ref(), inPart);
    }
    ControlPartCode HitTest(Point inPoint) const override
    {
        if (!PtInRect(inPoint, &fControl.bounds))
            return kControlNoPart;
        return fHitTest ? fHitTest(fControl.Ref(), inPoint) : (ControlPartCode)kControlNoPart;
    }
    ControlPartCode Track(const TrackInfo& inInfo) override
    {
        return fTracking ? fTracking(fControl.Ref(), inInfo.where, inInfo.action) : Kind::Track(inInfo);
    }
    ControlFocusPart Focus(ControlFocusPart inPart) override
    {
        return fFocus ? fFocus(fControl.Ref(), inPart) : (ControlFocusPart)kControlFocusNoPart;
    }
    ControlPartCode Key(SInt16 inKeyCode, SInt16 inCharCode, EventModifiers inModifiers) override
    {
        return fKeyDown ? fKeyDown(fControl.Ref(), inKeyCode, inCharCode, (SInt16)inModifiers)
                        : (ControlPartCode)kControlNoPart;
    }
    bool WantsKeyEvents() const override { return true; }
    OSStatus RawKey(EventRef inEvent) override
    {
        if (!fKeyDown)
            return eventNotHandledErr;
        UInt32 keyCode = 0, modifiers = 0;
        char character = 0;
        GetEventParameter(inEvent, kEventParamKeyCode, typeUInt32, nullptr, sizeof keyCode, nullptr,
                          &keyCode);
        GetEventParameter(inEvent, kEventParamKeyModifiers, typeUInt32, nullptr, sizeof modifiers, nullptr,
                          &modifiers);
        GetEventParameter(inEvent, kEventParamKeyMacCharCodes, typeChar, nullptr, sizeof character, nullptr,
                          &character);
        const ControlPartCode part =
            HandleControlKey(fControl.Ref(), (SInt16)keyCode, (UInt8)character, (EventModifiers)modifiers);
        return part == kControlNoPart ? (OSStatus)eventNotHandledErr : (OSStatus)noErr;
    }
    void Idle() override
    {
        if (fIdle)
            fIdle(fControl.Ref());
    }
    void StateChanged() override
    {
        const bool active = IsActive(fControl);
        if (active == fWasActive)
            return;
        fWasActive = active;
        if (fActivate)
            fActivate(fControl.Ref(), active);
    }
    bool SetUpBackground(SInt16 inDepth, Boolean inIsColor) override
    {
        if (!fBackground)
            return false;
        ControlBackgroundRec info = { inDepth, inIsColor };
        fBackground(fControl.Ref(), &info);
        return true;
    }

    std::span<const DataField> Fields() const override
    {
        using P = UserPane;
        static constexpr DataField kFields[] = {
            FieldFor<P, ControlUserPaneDrawUPP, &P::fDraw>(kControlUserPaneDrawProcTag),
            FieldFor<P, ControlUserPaneHitTestUPP, &P::fHitTest>(kControlUserPaneHitTestProcTag),
            FieldFor<P, ControlUserPaneTrackingUPP, &P::fTracking>(kControlUserPaneTrackingProcTag),
            FieldFor<P, ControlUserPaneIdleUPP, &P::fIdle>(kControlUserPaneIdleProcTag),
            FieldFor<P, ControlUserPaneKeyDownUPP, &P::fKeyDown>(kControlUserPaneKeyDownProcTag),
            FieldFor<P, ControlUserPaneActivateUPP, &P::fActivate>(kControlUserPaneActivateProcTag),
            FieldFor<P, ControlUserPaneFocusUPP, &P::fFocus>(kControlUserPaneFocusProcTag),
            FieldFor<P, ControlUserPaneBackgroundUPP, &P::fBackground>(kControlUserPaneBackgroundProcTag),
        };
        return kFields;
    }

private:
    UInt32 fFeatures = 0;
    bool fWasActive = true;
    ControlUserPaneDrawUPP fDraw = nullptr;
    ControlUserPaneHitTestUPP fHitTest = nullptr;
    ControlUserPaneTrackingUPP fTracking = nullptr;
    ControlUserPaneIdleUPP fIdle = nullptr;
    ControlUserPaneKeyDownUPP fKeyDown = nullptr;
    ControlUserPaneActivateUPP fActivate = nullptr;
    ControlUserPaneFocusUPP fFocus = nullptr;
    ControlUserPaneBackgroundUPP fBackground = nullptr;
};

} // namespace

std::unique_ptr<Kind> NewUserPane(Control& c)
{
    return std::make_unique<UserPane>(c);
}

} // namespace lampblack::controls
