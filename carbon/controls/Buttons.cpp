// Push buttons, check boxes and radio buttons; the disclosure triangle and the bevel button beside them.
#include "controls/ButtonImage.h"
#include "controls/ControlText.h"
#include "controls/Drawing.h"
#include "controls/Kind.h"

#include <Carbon/Appearance.h>

#include <algorithm>

namespace lampblack::controls {

namespace {

ThemeDrawState StateOf(const Control& inControl)
{
    if (!IsActive(inControl))
        return IsEnabled(inControl) ? kThemeStateInactive : kThemeStateUnavailableInactive;
    if (!IsEnabled(inControl))
        return kThemeStateUnavailable;
    return inControl.hilite != kControlNoPart ? kThemeStatePressed : kThemeStateActive;
}

ThemeButtonValue ValueOf(const Control& inControl)
{
    return (ThemeButtonValue)std::clamp<SInt32>(inControl.value, 0, 2);
}

ControlPartCode PartIfInside(const Control& inControl, Point inPoint, ControlPartCode inPart)
{
    return PtInRect(inPoint, &inControl.bounds) ? inPart : (ControlPartCode)kControlNoPart;
}

// What the three kinds have in common: a theme button with a title.
class ThemeButton : public Kind {
public:
    using Kind::Kind;

    ControlPartCode HitTest(Point inPoint) const override
    {
        return PartIfInside(fControl, inPoint, DefaultPart());
    }
    bool HasSizes() const override { return true; }
    Rect StructureBounds() const override
    {
        const ThemeButtonDrawInfo info = DrawInfo();
        Rect bounds = fControl.bounds;
        GetThemeButtonBackgroundBounds(&fControl.bounds, ThemeKind(), &info, &bounds);
        return bounds;
    }

    void Draw(ControlPartCode) override
    {
        const ThemeButtonDrawInfo info = DrawInfo();
        DrawThemeButton(&fControl.bounds, ThemeKind(), &info, nullptr, nullptr, nullptr, 0);
        Rect content = fControl.bounds;
        GetThemeButtonContentBounds(&fControl.bounds, ThemeKind(), &info, &content);
        DrawContent(content, info.state);
    }

    UInt32 Features() const override { return kControlSupportsDataAccess | kControlSupportsCalcBestRect; }

protected:
    virtual ThemeButtonKind ThemeKind() const = 0;
    virtual ThemeButtonAdornment Adornment() const { return kThemeAdornmentNone; }
    virtual ThemeTextColor UsableTextColor(ThemeDrawState) const { return kThemeTextColorDialogActive; }
    virtual ThemeTextColor DimmedTextColor() const { return kThemeTextColorDialogInactive; }
    virtual SInt16 TitleJust() const { return 0; }
    virtual void DrawContent(const Rect& inContent, ThemeDrawState inState)
    {
        DrawTitle(inContent, inState, TitleJust());
    }
    void DrawTitle(const Rect& inContent, ThemeDrawState inState, SInt16 inJust)
    {
        if (fControl.title.empty())
            return;
        UseControlFont(fControl);
        UseControlTextColor(fControl, UsableTextColor(inState), DimmedTextColor());
        DrawFittedLine(fControl.title, inContent, inJust);
    }

    ThemeButtonDrawInfo DrawInfo() const { return { StateOf(fControl), ValueOf(fControl), Adornment() }; }

    SInt16 TitleWidth() const
    {
        StDrawing drawing(fControl);
        UseControlFont(fControl);
        return WidthOf(fControl.title);
    }
    SInt16 BaseLine(const Rect& inBox) const // below the bottom of the box, so negative
    {
        StDrawing drawing(fControl);
        UseControlFont(fControl);
        FontInfo info;
        GetFontInfo(&info);
        const int height = inBox.bottom - inBox.top;
        return (SInt16)((height - info.ascent - info.descent + 1) / 2 + info.ascent - height);
    }
    static SInt16 Metric(ThemeMetric inMetric)
    {
        SInt32 value = 0;
        GetThemeMetric(inMetric, &value);
        return (SInt16)value;
    }
};

// A theme kind, and its metrics, for each control size.
ControlSize KnownSize(ControlSize inSize)
{
    return inSize == kControlSizeSmall || inSize == kControlSizeMini ? inSize
                                                                     : (ControlSize)kControlSizeNormal;
}
template <class T>
T BySize(ControlSize inSize, T inNormal, T inSmall, T inMini)
{
    const ControlSize size = KnownSize(inSize);
    return size == kControlSizeSmall ? inSmall : size == kControlSizeMini ? inMini : inNormal;
}

class PushButton final : public ThemeButton {
public:
    using ThemeButton::ThemeButton;
    OSType Code() const override { return kControlKindPushButton; }
    ControlPartCode DefaultPart() const override { return kControlButtonPart; }

    std::span<const DataField> Fields() const override
    {
        static constexpr DataField kFields[] = {
            FieldFor<PushButton, Boolean, &PushButton::fIsDefault>(kControlPushButtonDefaultTag),
            FieldFor<PushButton, Boolean, &PushButton::fIsCancel>(kControlPushButtonCancelTag),
        };
        return kFields;
    }
    void DataChanged(ResType inTag) override
    {
        if (inTag == kControlPushButtonDefaultTag)
            RedrawErased(fControl);
    }

    OSErr BestRect(Rect* outRect, SInt16* outBaseLine) override
    {
        const SInt16 height =
            Metric(BySize<ThemeMetric>(fControl.size, kThemeMetricPushButtonHeight,
                                       kThemeMetricSmallPushButtonHeight, kThemeMetricMiniPushButtonHeight));
        const int width = std::max(TitleWidth() + 2 * kSideMargin, (int)kLeastWidth);
        *outRect = fControl.bounds;
        outRect->right = (SInt16)(outRect->left + width);
        outRect->bottom = (SInt16)(outRect->top + height);
        *outBaseLine = BaseLine(*outRect);
        return noErr;
    }

protected:
    ThemeButtonKind ThemeKind() const override
    {
        return BySize<ThemeButtonKind>(fControl.size, kThemePushButton, kThemePushButtonSmall,
                                       kThemePushButtonMini);
    }
    ThemeButtonAdornment Adornment() const override
    {
        return fIsDefault ? kThemeAdornmentDefault : kThemeAdornmentNone;
    }
    ThemeTextColor UsableTextColor(ThemeDrawState inState) const override
    {
        return inState == kThemeStatePressed ? kThemeTextColorPushButtonPressed
                                             : kThemeTextColorPushButtonActive;
    }
    ThemeTextColor DimmedTextColor() const override { return kThemeTextColorPushButtonInactive; }
    SInt16 TitleJust() const override { return 1; }
    // A long title may come closer to the round ends than the content does.
    void DrawContent(const Rect& inContent, ThemeDrawState inState) override
    {
        Rect title = inContent;
        InsetRect(&title, -kNearEnds, 0);
        DrawTitle(title, inState, TitleJust());
    }

private:
    static constexpr SInt16 kSideMargin = 14, kLeastWidth = 58, kNearEnds = 4;
    Boolean fIsDefault = false;
    Boolean fIsCancel = false;
};

// A check box or a radio button.
class ToggleButton : public ThemeButton {
public:
    using ThemeButton::ThemeButton;

    OSStatus Initialize(const NewControlInfo&) override
    {
        fAutoToggle = fControl.procID == kControlCheckBoxAutoToggleProc ||
                      fControl.procID == kControlRadioButtonAutoToggleProc;
        return noErr;
    }
    OSErr BestRect(Rect* outRect, SInt16* outBaseLine) override
    {
        const ThemeButtonDrawInfo info = DrawInfo();
        Rect content = fControl.bounds;
        GetThemeButtonContentBounds(&fControl.bounds, ThemeKind(), &info, &content);
        *outRect = fControl.bounds;
        outRect->right = (SInt16)(content.left + TitleWidth() + kTrailingMargin);
        outRect->bottom = (SInt16)(outRect->top + LeastHeight());
        *outBaseLine = BaseLine(*outRect);
        return noErr;
    }

protected:
    virtual SInt16 LeastHeight() const = 0;
    bool fAutoToggle = false;

private:
    static constexpr SInt16 kTrailingMargin = 4;
};

void SetValueAndRedraw(Control& ioControl, SInt32 inValue)
{
    SetControl32BitValue(ioControl.Ref(), inValue);
}

class CheckBox final : public ToggleButton {
public:
    using ToggleButton::ToggleButton;
    OSType Code() const override { return kControlKindCheckBox; }
    ControlPartCode DefaultPart() const override { return kControlCheckBoxPart; }
    void WasHit(ControlPartCode) override
    {
        if (fAutoToggle)
            SetValueAndRedraw(fControl, fControl.value == kControlCheckBoxCheckedValue ? 0 : 1);
    }

protected:
    ThemeButtonKind ThemeKind() const override
    {
        return BySize<ThemeButtonKind>(fControl.size, kThemeCheckBox, kThemeSmallCheckBox,
                                       kThemeMiniCheckBox);
    }
    SInt16 LeastHeight() const override
    {
        return Metric(BySize<ThemeMetric>(fControl.size, kThemeMetricCheckBoxHeight,
                                          kThemeMetricSmallCheckBoxHeight, kThemeMetricMiniCheckBoxHeight));
    }
};

class RadioButton final : public ToggleButton {
public:
    using ToggleButton::ToggleButton;
    OSType Code() const override { return kControlKindRadioButton; }
    ControlPartCode DefaultPart() const override { return kControlRadioButtonPart; }
    void WasHit(ControlPartCode) override
    {
        if (fAutoToggle)
            SetValueAndRedraw(fControl, kControlRadioButtonCheckedValue);
    }

protected:
    ThemeButtonKind ThemeKind() const override
    {
        return BySize<ThemeButtonKind>(fControl.size, kThemeRadioButton, kThemeSmallRadioButton,
                                       kThemeMiniRadioButton);
    }
    SInt16 LeastHeight() const override
    {
        return Metric(BySize<ThemeMetric>(fControl.size, kThemeMetricRadioButtonHeight,
                                          kThemeMetricSmallRadioButtonHeight,
                                          kThemeMetricMiniRadioButtonHeight));
    }
};

// Variants of the definition ID: 1 points left, 2 opens by itself.
class DisclosureTriangle final : public ThemeButton {
public:
    using ThemeButton::ThemeButton;
    OSType Code() const override { return kControlKindDisclosureTriangle; }
    ControlPartCode DefaultPart() const override { return kControlTrianglePart; }
    void WasHit(ControlPartCode) override
    {
        fLastValue = (SInt16)fControl.value;
        if (fControl.procID & 2)
            SetValueAndRedraw(fControl, !fControl.value);
    }
    std::span<const DataField> Fields() const override
    {
        static constexpr DataField kFields[] = {
            FieldFor<DisclosureTriangle, SInt16, &DisclosureTriangle::fLastValue>(
                kControlTriangleLastValueTag),
        };
        return kFields;
    }

protected:
    ThemeButtonKind ThemeKind() const override { return kThemeDisclosureTriangle; }

private:
    SInt16 fLastValue = 0;
};

// The low two bits of the definition ID are the size of the bevel; bit 2 lets it toggle, bit 3 keeps it down.
class BevelButton final : public ThemeButton {
public:
    using ThemeButton::ThemeButton;
    OSType Code() const override { return kControlKindBevelButton; }
    ControlPartCode DefaultPart() const override { return kControlButtonPart; }

    // The value, minimum and maximum that it is made with are its menu, its behaviour and kind of content,
    // and the content's resource. A menu is passed over.
    OSStatus Initialize(const NewControlInfo& inInfo) override
    {
        fBehavior = (SInt16)(inInfo.minimum & 0xFF00);
        fImage.Load((SInt16)(inInfo.minimum & 0x00FF), (SInt16)inInfo.maximum);
        fControl.value = 0;
        fControl.minimum = 0;
        fControl.maximum = 1;
        return noErr;
    }
    void WasHit(ControlPartCode) override
    {
        if (fBehavior & kControlBehaviorToggles)
            SetValueAndRedraw(fControl, !fControl.value);
        else if (fBehavior & kControlBehaviorSticky)
            SetValueAndRedraw(fControl, 1);
    }

protected:
    ThemeButtonKind ThemeKind() const override
    {
        switch (fControl.procID & 3) {
        case 0: return kThemeSmallBevelButton;
        case 2: return kThemeLargeBevelButton;
        default: return kThemeMediumBevelButton;
        }
    }
    SInt16 TitleJust() const override { return 1; }
    ThemeTextColor UsableTextColor(ThemeDrawState inState) const override
    {
        return inState == kThemeStatePressed ? kThemeTextColorBevelButtonPressed
                                             : kThemeTextColorBevelButtonActive;
    }
    ThemeTextColor DimmedTextColor() const override { return kThemeTextColorBevelButtonInactive; }

    // A title stands to the right of an image, and both amid the button.
    void DrawContent(const Rect& inContent, ThemeDrawState inState) override
    {
        if (!fImage.IsThere())
            return DrawTitle(inContent, inState, TitleJust());
        UseControlFont(fControl);
        const Point size = fImage.Size(inContent);
        const int title = fControl.title.empty() ? 0 : kTitleGap + WidthOf(fControl.title);
        const int slack = inContent.right - inContent.left - size.h - title;
        const auto left = (SInt16)(inContent.left + (title ? std::max(slack, 0) : slack) / 2);
        const auto top = (SInt16)(inContent.top + (inContent.bottom - inContent.top - size.v) / 2);
        const Rect place = { top, left, (SInt16)(top + size.v), (SInt16)(left + size.h) };
        StClip clip(inContent);
        fImage.Draw(place, TransformFor(inState));
        Rect text = inContent;
        text.left = std::min<SInt16>((SInt16)(place.right + kTitleGap), text.right);
        DrawTitle(text, inState, 0);
    }

private:
    static constexpr SInt16 kTitleGap = 4;
    static IconTransformType TransformFor(ThemeDrawState inState)
    {
        switch (inState) {
        case kThemeStatePressed: return kTransformSelected;
        case kThemeStateUnavailable:
        case kThemeStateUnavailableInactive: return kTransformDisabled;
        default: return kTransformNone;
        }
    }

    SInt16 fBehavior = 0;
    ButtonImage fImage;
};

} // namespace

std::unique_ptr<Kind> NewPushButton(Control& c)
{
    return std::make_unique<PushButton>(c);
}
std::unique_ptr<Kind> NewCheckBox(Control& c)
{
    return std::make_unique<CheckBox>(c);
}
std::unique_ptr<Kind> NewRadioButton(Control& c)
{
    return std::make_unique<RadioButton>(c);
}
std::unique_ptr<Kind> NewDisclosureTriangle(Control& c)
{
    return std::make_unique<DisclosureTriangle>(c);
}
std::unique_ptr<Kind> NewBevelButton(Control& c)
{
    return std::make_unique<BevelButton>(c);
}

} // namespace lampblack::controls
