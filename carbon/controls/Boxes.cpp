// What frames, divides and underlies: the root, group boxes, separators, placards and window headers.
#include "controls/ControlText.h"
#include "controls/Drawing.h"
#include "controls/Kind.h"

#include <Carbon/Appearance.h>
#include <Carbon/MacWindows.h>

#include <algorithm>

namespace lampblack::controls {

namespace {

ThemeDrawState FrameState(const Control& inControl)
{
    if (!IsActive(inControl))
        return kThemeStateInactive;
    if (!IsEnabled(inControl))
        return kThemeStateUnavailable;
    return inControl.hilite != kControlNoPart ? kThemeStatePressed : kThemeStateActive;
}

constexpr UInt32 kContainer = kControlSupportsEmbedding | kControlSupportsDataAccess;

class Root final : public Kind {
public:
    using Kind::Kind;
    OSType Code() const override { return kControlKindUserPane; }
    UInt32 Features() const override { return kContainer; }
    bool IsErased() const override { return false; }
    void Draw(ControlPartCode) override {}
};

// Variants of the definition ID: 1 has a check box for a title, 4 is a secondary group.
class GroupBox final : public Kind {
public:
    using Kind::Kind;
    OSType Code() const override { return HasCheckBox() ? kControlKindCheckGroupBox : kControlKindGroupBox; }
    UInt32 Features() const override { return kContainer; }

    void Draw(ControlPartCode) override
    {
        UseControlFont(fControl);
        const Rect title = TitleRect(), frame = FrameRect(title);
        DrawFrame(frame);
        if (HasCheckBox())
            DrawCheckBox(title);
        UseControlTextColor(fControl, kThemeTextColorDialogActive, kThemeTextColorDialogInactive);
        DrawLine(fControl.title, TextRect(title), 0);
    }

    bool IsSurface() const override { return true; }

    ControlPartCode HitTest(Point inPoint) const override
    {
        if (!HasCheckBox())
            return kControlNoPart;
        StDrawing drawing(fControl);
        UseControlFont(fControl);
        const Rect title = TitleRect();
        return PtInRect(inPoint, &title) ? (ControlPartCode)kControlButtonPart
                                         : (ControlPartCode)kControlNoPart;
    }
    ControlPartCode DefaultPart() const override
    {
        return HasCheckBox() ? kControlButtonPart : kControlNoPart;
    }

    std::span<const DataField> Fields() const override
    {
        static constexpr DataField kFields[] = {
            { kControlGroupBoxTitleRectTag, [](Kind&) { return (Size)sizeof(Rect); }, GetTitleRect, nullptr },
        };
        return kFields;
    }

private:
    static constexpr SInt16 kTitleInset = 3, kTitleMargin = 3, kCheckBoxWidth = 20;

    bool HasCheckBox() const { return fControl.procID & 1; }
    bool IsSecondary() const { return fControl.procID & 4; }

    // The title stands above the frame's upper left corner.
    Rect TitleRect() const
    {
        const Rect& b = fControl.bounds;
        if (fControl.title.empty())
            return { b.top, b.left, b.top, b.left };
        const int width = WidthOf(fControl.title) + 2 * kTitleMargin + (HasCheckBox() ? kCheckBoxWidth : 0);
        const int room = b.right - b.left - kTitleInset;
        const SInt16 left = (SInt16)(b.left + kTitleInset);
        return { b.top, left, (SInt16)(b.top + FontLineHeight()),
                 (SInt16)(left + std::clamp(width, 0, std::max(room, 0))) };
    }
    Rect FrameRect(const Rect& inTitle) const
    {
        Rect frame = fControl.bounds;
        frame.top = inTitle.bottom;
        return frame;
    }
    Rect TextRect(const Rect& inTitle) const
    {
        Rect text = inTitle;
        text.left = (SInt16)(text.left + kTitleMargin + (HasCheckBox() ? kCheckBoxWidth : 0));
        return text;
    }
    void DrawFrame(const Rect& inFrame)
    {
        if (IsSecondary())
            DrawThemeSecondaryGroup(&inFrame, FrameState(fControl));
        else
            DrawThemePrimaryGroup(&inFrame, FrameState(fControl));
    }
    void DrawCheckBox(const Rect& inTitle)
    {
        Rect box = inTitle;
        box.right = (SInt16)(box.left + kCheckBoxWidth);
        const ThemeButtonDrawInfo info = { FrameState(fControl), (ThemeButtonValue)fControl.value,
                                           kThemeAdornmentNone };
        DrawThemeButton(&box, kThemeCheckBox, &info, nullptr, nullptr, nullptr, 0);
    }
    static OSErr GetTitleRect(Kind& inKind, void* outData, Size inSize)
    {
        if (inSize < (Size)sizeof(Rect))
            return errDataSizeMismatch;
        GroupBox& self = static_cast<GroupBox&>(inKind);
        StDrawing drawing(self.fControl);
        UseControlFont(self.fControl);
        const Rect title = self.TitleRect();
        std::memcpy(outData, &title, sizeof title);
        return noErr;
    }
};

class Separator final : public Kind {
public:
    using Kind::Kind;
    OSType Code() const override { return kControlKindSeparator; }
    void Draw(ControlPartCode) override { DrawThemeSeparator(&fControl.bounds, FrameState(fControl)); }
};

class Placard final : public Kind {
public:
    using Kind::Kind;
    OSType Code() const override { return kControlKindPlacard; }
    UInt32 Features() const override { return kContainer; }
    bool IsSurface() const override { return true; }
    void Draw(ControlPartCode) override { DrawThemePlacard(&fControl.bounds, FrameState(fControl)); }
    bool SetUpBackground(SInt16 inDepth, Boolean inIsColor) override
    {
        return ApplyThemeBackground(kThemeBackgroundPlacard, &fControl.bounds, FrameState(fControl), inDepth,
                                    inIsColor) == noErr;
    }
};

class WindowHeader final : public Kind {
public:
    using Kind::Kind;
    OSType Code() const override { return kControlKindWindowHeader; }
    UInt32 Features() const override { return kContainer; }
    bool IsSurface() const override { return true; }
    void Draw(ControlPartCode) override
    {
        if (IsForListView())
            DrawThemeWindowListViewHeader(&fControl.bounds, FrameState(fControl));
        else
            DrawThemeWindowHeader(&fControl.bounds, FrameState(fControl));
    }
    bool SetUpBackground(SInt16 inDepth, Boolean inIsColor) override
    {
        const ThemeBackgroundKind kind =
            IsForListView() ? kThemeBackgroundListViewWindowHeader : kThemeBackgroundWindowHeader;
        return ApplyThemeBackground(kind, &fControl.bounds, FrameState(fControl), inDepth, inIsColor) ==
               noErr;
    }

private:
    bool IsForListView() const { return fControl.procID & 1; }
};

} // namespace

std::unique_ptr<Kind> NewRoot(Control& c)
{
    return std::make_unique<Root>(c);
}
std::unique_ptr<Kind> NewGroupBox(Control& c)
{
    return std::make_unique<GroupBox>(c);
}
std::unique_ptr<Kind> NewSeparator(Control& c)
{
    return std::make_unique<Separator>(c);
}
std::unique_ptr<Kind> NewPlacard(Control& c)
{
    return std::make_unique<Placard>(c);
}
std::unique_ptr<Kind> NewWindowHeader(Control& c)
{
    return std::make_unique<WindowHeader>(c);
}

} // namespace lampblack::controls
