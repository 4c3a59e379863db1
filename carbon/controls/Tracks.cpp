// Everything that slides along a track: scroll bars, sliders and progress bars; and the little arrows.
#include "controls/Drawing.h"
#include "controls/Idling.h"
#include "controls/Kind.h"
#include "controls/Mouse.h"

#include <Carbon/Appearance.h>
#include <Carbon/CarbonEvents.h>

#include <algorithm>

namespace lampblack::controls {

namespace {

bool IsHorizontal(const Rect& inBounds)
{
    return inBounds.right - inBounds.left > inBounds.bottom - inBounds.top;
}

ThemeTrackEnableState EnableStateOf(const Control& inControl, bool inScrolls)
{
    if (!IsActive(inControl))
        return kThemeTrackInactive;
    if (!IsEnabled(inControl))
        return kThemeTrackDisabled;
    return inScrolls && inControl.maximum <= inControl.minimum ? kThemeTrackNothingToScroll
                                                               : kThemeTrackActive;
}

SInt16 Thickness(const Rect& inBounds)
{
    return (SInt16)std::min(inBounds.right - inBounds.left, inBounds.bottom - inBounds.top);
}

// A track with a thumb that can be dragged.
class ThumbTrack : public Kind {
public:
    using Kind::Kind;

    ControlPartCode HitTest(Point inPoint) const override
    {
        if (!PtInRect(inPoint, &fControl.bounds))
            return kControlNoPart;
        return PartAt(inPoint);
    }
    bool TracksItself() const override { return true; }
    bool HasSizes() const override { return true; }

    ControlPartCode Track(const TrackInfo& inInfo) override
    {
        const ControlPartCode part = HitTest(inInfo.where);
        if (part == kControlNoPart)
            return kControlNoPart;
        return part == kControlIndicatorPart ? Drag(inInfo) : Repeat(part, inInfo);
    }

protected:
    static constexpr double kFirstRepeat = 0.3, kNextRepeats = 0.05; // seconds

    virtual ThemeTrackDrawInfo DrawInfo() const = 0;
    virtual ControlPartCode PartAt(Point inPoint) const = 0;
    virtual bool IsLive() const { return true; }

    // Without an action of the application's, the kind's own step.
    virtual void Step(ControlPartCode) {}

    ControlPartCode Drag(const TrackInfo& inInfo)
    {
        StPin pin(&fControl);
        const ThemeTrackDrawInfo start = DrawInfo();
        const SInt32 old = fControl.value;
        Light(kControlIndicatorPart);
        StMouse mouse(fControl.window, inInfo.where);
        SInt32 wanted = old;
        while (mouse.StillDown()) {
            wanted = ValueAt(start, inInfo.where, mouse.Where());
            if (!IsLive() || wanted == fControl.value)
                continue;
            SetControl32BitValue(fControl.Ref(), wanted);
            if (inInfo.action)
                InvokeControlActionUPP(fControl.Ref(), kControlIndicatorPart, inInfo.action);
            if (!pin.Alive())
                return kControlNoPart;
        }
        if (!pin.Alive())
            return kControlNoPart;
        wanted = ValueAt(start, inInfo.where, mouse.Where());
        Light(kControlNoPart);
        if (wanted != fControl.value)
            SetControl32BitValue(fControl.Ref(), wanted);
        return fControl.value == old ? (ControlPartCode)kControlNoPart
                                     : (ControlPartCode)kControlIndicatorPart;
    }

    ControlPartCode Repeat(ControlPartCode inPart, const TrackInfo& inInfo)
    {
        StPin pin(&fControl);
        StMouse mouse(fControl.window, inInfo.where);
        double wait = kFirstRepeat;
        bool over = true, due = true;
        Light(inPart);
        do {
            if (over && due) {
                Act(inPart, inInfo.action);
                if (!pin.Alive())
                    return kControlNoPart;
                wait = fRepeated ? kNextRepeats : kFirstRepeat;
                fRepeated = true;
            }
            if (!mouse.StillDown(wait))
                break;
            due = mouse.TimedOut();
            const bool now = HitTest(mouse.Where()) == inPart;
            if (now != over)
                Light(now ? inPart : (ControlPartCode)kControlNoPart);
            over = now;
        } while (pin.Alive());
        fRepeated = false;
        if (!pin.Alive())
            return kControlNoPart;
        Light(kControlNoPart);
        return over ? inPart : (ControlPartCode)kControlNoPart;
    }

    void Light(ControlPartCode inPart)
    {
        if (fControl.hilite == inPart)
            return;
        fControl.hilite = inPart;
        RedrawErased(fControl);
    }

private:
    void Act(ControlPartCode inPart, ControlActionUPP inAction)
    {
        if (inAction)
            InvokeControlActionUPP(fControl.Ref(), inPart, inAction);
        else
            Step(inPart);
    }

    // The value where the thumb would be, had it moved with the mouse from where the drag began.
    SInt32 ValueAt(const ThemeTrackDrawInfo& inStart, Point inFrom, Point inTo) const
    {
        Rect slop = fControl.bounds;
        InsetRect(&slop, -kSlop, -kSlop);
        if (!PtInRect(inTo, &slop))
            return inStart.value;
        const Point offset = { (SInt16)(inTo.v - inFrom.v), (SInt16)(inTo.h - inFrom.h) };
        SInt32 position = 0, value = inStart.value;
        if (GetThemeTrackThumbPositionFromOffset(&inStart, offset, &position) != noErr ||
            GetThemeTrackLiveValue(&inStart, position, &value) != noErr)
            return inStart.value;
        const SInt32 least = inStart.min, most = inStart.max; // copies: the record's fields are not aligned
        return std::clamp(value, std::min(least, most), std::max(least, most));
    }

    static constexpr SInt16 kSlop = 60; // the mouse further away lets the thumb spring back
    bool fRepeated = false;
};

class ScrollBar final : public ThumbTrack {
public:
    using ThumbTrack::ThumbTrack;
    OSType Code() const override { return kControlKindScrollBar; }

    void Draw(ControlPartCode) override
    {
        if (EmptyRect(&fControl.bounds))
            return;
        const ThemeTrackDrawInfo info = DrawInfo();
        if (fShowsArrows) {
            Rect track;
            DrawThemeScrollBarArrows(&fControl.bounds, info.enableState, info.trackInfo.scrollbar.pressState,
                                     IsHorizontal(fControl.bounds), &track);
        }
        DrawThemeTrack(&info, nullptr, nullptr, 0);
    }

    std::span<const DataField> Fields() const override
    {
        static constexpr DataField kFields[] = {
            FieldFor<ScrollBar, Boolean, &ScrollBar::fShowsArrows>(kControlScrollBarShowsArrowsTag),
        };
        return kFields;
    }

    OSErr BestRect(Rect* outRect, SInt16* outBaseLine) override
    {
        SInt32 width = 0;
        GetThemeMetric(IsSmall() ? kThemeMetricSmallScrollBarWidth : kThemeMetricScrollBarWidth, &width);
        *outRect = fControl.bounds;
        if (IsHorizontal(*outRect))
            outRect->bottom = (SInt16)(outRect->top + width);
        else
            outRect->right = (SInt16)(outRect->left + width);
        *outBaseLine = 0;
        return noErr;
    }

protected:
    ThemeTrackDrawInfo DrawInfo() const override
    {
        ThemeTrackDrawInfo info = {};
        const bool horizontal = IsHorizontal(fControl.bounds);
        info.kind = IsSmall() ? kThemeScrollBarSmall : kThemeScrollBarMedium;
        info.bounds = fControl.bounds;
        info.enableState = EnableStateOf(fControl, true);
        info.attributes =
            (ThemeTrackAttributes)((horizontal ? kThemeTrackHorizontal : 0) |
                                   (fControl.maximum > fControl.minimum ? kThemeTrackShowThumb : 0) |
                                   (fShowsArrows ? 0 : kThemeTrackNoScrollBarArrows));
        info.min = fControl.minimum;
        info.max = fControl.maximum;
        info.value = fControl.value;
        info.trackInfo.scrollbar.viewsize = fControl.viewSize;
        info.trackInfo.scrollbar.pressState = PressState();
        return info;
    }

    ControlPartCode PartAt(Point inPoint) const override
    {
        const ThemeTrackDrawInfo info = DrawInfo();
        if (info.enableState != kThemeTrackActive)
            return kControlNoPart;
        AppearancePartCode part = kAppearancePartMetaNone;
        Rect track;
        if (fShowsArrows &&
            HitTestThemeScrollBarArrows(&fControl.bounds, info.enableState, 0, IsHorizontal(fControl.bounds),
                                        &track, inPoint, &part))
            return part;
        return HitTestThemeTrack(&info, inPoint, &part) ? part : (ControlPartCode)kControlNoPart;
    }

    bool IsLive() const override { return fControl.procID == kControlScrollBarLiveProc; }

private:
    bool IsSmall() const
    {
        constexpr SInt16 kSmallLimit = 14; // pixels; what is narrower is a small scroll bar
        return fControl.size == kControlSizeSmall || Thickness(fControl.bounds) < kSmallLimit;
    }
    ThemeTrackPressState PressState() const
    {
        switch (fControl.hilite) {
        case kControlUpButtonPart: return kThemeLeftOutsideArrowPressed;
        case kControlDownButtonPart: return kThemeRightOutsideArrowPressed;
        case kControlPageUpPart: return kThemeLeftTrackPressed;
        case kControlPageDownPart: return kThemeRightTrackPressed;
        case kControlIndicatorPart: return kThemeThumbPressed;
        default: return 0;
        }
    }
    Boolean fShowsArrows = true;
};

// Variants of the definition ID: 1 live, 2 tick marks, 4 points the other way, 8 no point.
class Slider final : public ThumbTrack {
public:
    using ThumbTrack::ThumbTrack;
    OSType Code() const override { return kControlKindSlider; }

    OSStatus Initialize(const NewControlInfo& inInfo) override
    {
        if (!HasTicks())
            return noErr;
        fTicks = std::max<SInt32>(inInfo.value, 0); // the value that it is made with counts the marks
        fControl.value = fControl.minimum;
        return noErr;
    }

    void Draw(ControlPartCode) override
    {
        const ThemeTrackDrawInfo info = DrawInfo();
        DrawThemeTrack(&info, nullptr, nullptr, 0);
        if (HasTicks() && fTicks > 0)
            DrawThemeTrackTickMarks(&info, (ItemCount)fTicks, nullptr, 0);
    }

protected:
    ThemeTrackDrawInfo DrawInfo() const override
    {
        ThemeTrackDrawInfo info = {};
        info.kind = fControl.size == kControlSizeSmall ? kThemeSliderSmall : kThemeSliderMedium;
        info.bounds = fControl.bounds;
        info.enableState = EnableStateOf(fControl, false);
        info.attributes = (ThemeTrackAttributes)((IsHorizontal(fControl.bounds) ? kThemeTrackHorizontal : 0) |
                                                 kThemeTrackShowThumb);
        info.min = fControl.minimum;
        info.max = fControl.maximum;
        info.value = fControl.value;
        info.trackInfo.slider.thumbDir = Direction();
        info.trackInfo.slider.pressState =
            fControl.hilite == kControlIndicatorPart ? (ThemeTrackPressState)kThemeThumbPressed : (UInt8)0;
        return info;
    }
    // A slider jumps to where it is clicked, so that all of it is its indicator, or pages towards the mouse.
    ControlPartCode PartAt(Point inPoint) const override
    {
        const ThemeTrackDrawInfo info = DrawInfo();
        AppearancePartCode part = kAppearancePartMetaNone;
        if (!IsUsable(fControl) || !HitTestThemeTrack(&info, inPoint, &part))
            return kControlNoPart;
        return part;
    }
    bool IsLive() const override { return fControl.procID & kControlSliderLiveFeedback; }
    void Step(ControlPartCode inPart) override
    {
        const SInt32 range = fControl.maximum - fControl.minimum;
        const SInt32 page = std::max<SInt32>(1, fTicks > 1 ? range / (fTicks - 1) : range / 10);
        const bool up = inPart == kControlPageUpPart || inPart == kControlUpButtonPart;
        SetControl32BitValue(fControl.Ref(), fControl.value + (up ? -page : page));
    }

private:
    bool HasTicks() const { return fControl.procID & kControlSliderHasTickMarks; }
    ThemeThumbDirection Direction() const
    {
        if (fControl.procID & kControlSliderNonDirectional)
            return kThemeThumbPlain;
        return fControl.procID & kControlSliderReverseDirection ? kThemeThumbUpward : kThemeThumbDownward;
    }
    SInt32 fTicks = 0;
};

class ProgressBar final : public Kind {
public:
    using Kind::Kind;
    OSType Code() const override { return kControlKindProgressBar; }
    bool HasSizes() const override { return true; }

    void Draw(ControlPartCode) override
    {
        ThemeTrackDrawInfo info = {};
        info.kind = TrackKind();
        info.bounds = fControl.bounds;
        info.enableState = EnableStateOf(fControl, false);
        info.attributes = IsHorizontal(fControl.bounds) ? kThemeTrackHorizontal : 0;
        info.min = fControl.minimum;
        info.max = fControl.maximum;
        info.value = fControl.value;
        info.trackInfo.progress.phase = fPhase;
        DrawThemeTrack(&info, nullptr, nullptr, 0);
        Animate();
    }
    std::span<const DataField> Fields() const override
    {
        static constexpr DataField kFields[] = {
            FieldFor<ProgressBar, Boolean, &ProgressBar::fIndeterminate>(kControlProgressBarIndeterminateTag),
            FieldFor<ProgressBar, Boolean, &ProgressBar::fAnimating>(kControlProgressBarAnimatingTag),
        };
        return kFields;
    }
    void DataChanged(ResType) override { RedrawErased(fControl); }
    void Idle() override
    {
        ++fPhase;
        RedrawErased(fControl);
    }

private:
    static constexpr double kFrame = 1.0 / 15;

    ThemeTrackKind TrackKind() const
    {
        const bool large = fControl.size == kControlSizeLarge;
        if (fIndeterminate)
            return large ? kThemeIndeterminateBarLarge : kThemeIndeterminateBarMedium;
        return large ? kThemeProgressBarLarge : kThemeProgressBarMedium;
    }
    void Animate()
    {
        if (fIndeterminate && fAnimating)
            StartIdling(fControl, kFrame);
        else
            StopIdling(fControl);
    }

    Boolean fIndeterminate = false;
    Boolean fAnimating = true;
    UInt8 fPhase = 0;
};

class ChasingArrows final : public Kind {
public:
    using Kind::Kind;
    OSType Code() const override { return kControlKindChasingArrows; }
    void Draw(ControlPartCode) override
    {
        DrawThemeChasingArrows(&fControl.bounds, fIndex,
                               IsUsable(fControl) ? kThemeStateActive : kThemeStateInactive, nullptr, 0);
        if (fAnimating)
            StartIdling(fControl, kFrame);
        else
            StopIdling(fControl);
    }
    std::span<const DataField> Fields() const override
    {
        static constexpr DataField kFields[] = {
            FieldFor<ChasingArrows, Boolean, &ChasingArrows::fAnimating>(kControlChasingArrowsAnimatingTag),
        };
        return kFields;
    }
    void DataChanged(ResType) override { RedrawErased(fControl); }
    void Idle() override
    {
        ++fIndex;
        RedrawErased(fControl);
    }

private:
    static constexpr double kFrame = 1.0 / 12;
    Boolean fAnimating = true;
    UInt32 fIndex = 0;
};

class LittleArrows final : public ThumbTrack {
public:
    using ThumbTrack::ThumbTrack;
    OSType Code() const override { return kControlKindLittleArrows; }

    void Draw(ControlPartCode) override
    {
        const ThemeButtonDrawInfo info = { State(), kThemeButtonOff, kThemeAdornmentNone };
        DrawThemeButton(&fControl.bounds, kThemeIncDecButton, &info, nullptr, nullptr, nullptr, 0);
    }

protected:
    ThemeTrackDrawInfo DrawInfo() const override { return {}; }
    ControlPartCode PartAt(Point inPoint) const override
    {
        const int middle = (fControl.bounds.top + fControl.bounds.bottom) / 2;
        return inPoint.v < middle ? kControlUpButtonPart : kControlDownButtonPart;
    }

private:
    ThemeDrawState State() const
    {
        if (!IsUsable(fControl))
            return IsActive(fControl) ? kThemeStateUnavailable : kThemeStateInactive;
        if (fControl.hilite == kControlUpButtonPart)
            return kThemeStatePressedUp;
        return fControl.hilite == kControlDownButtonPart ? kThemeStatePressedDown : kThemeStateActive;
    }
};

} // namespace

std::unique_ptr<Kind> NewScrollBar(Control& c)
{
    return std::make_unique<ScrollBar>(c);
}
std::unique_ptr<Kind> NewSlider(Control& c)
{
    return std::make_unique<Slider>(c);
}
std::unique_ptr<Kind> NewProgressBar(Control& c)
{
    return std::make_unique<ProgressBar>(c);
}
std::unique_ptr<Kind> NewChasingArrows(Control& c)
{
    return std::make_unique<ChasingArrows>(c);
}
std::unique_ptr<Kind> NewLittleArrows(Control& c)
{
    return std::make_unique<LittleArrows>(c);
}

} // namespace lampblack::controls
