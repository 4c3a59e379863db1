// Static text: a few lines, wrapped to the bounds.
#include "controls/ControlText.h"
#include "controls/Drawing.h"
#include "controls/Kind.h"

#include <algorithm>

namespace lampblack::controls {

namespace {

class StaticText final : public Kind {
public:
    using Kind::Kind;
    OSType Code() const override { return kControlKindStaticText; }
    UInt32 Features() const override { return kControlSupportsDataAccess | kControlSupportsCalcBestRect; }

    // A title is a text until another is set.
    OSStatus Initialize(const NewControlInfo&) override
    {
        fText = fControl.title;
        return noErr;
    }

    void Draw(ControlPartCode) override
    {
        StClip clip(fControl.bounds);
        UseControlFont(fControl);
        UseControlTextColor(fControl, kThemeTextColorDialogActive, kThemeTextColorDialogInactive);
        if (fControl.font.flags & kControlUseBackColorMask)
            EraseRect(&fControl.bounds);
        DrawWrapped(fText, fControl.bounds, Justification());
    }

    OSErr BestRect(Rect* outRect, SInt16* outBaseLine) override
    {
        StDrawing drawing(fControl);
        UseControlFont(fControl);
        *outRect = fControl.bounds;
        const SInt16 width = (SInt16)(fControl.bounds.right - fControl.bounds.left);
        outRect->bottom = (SInt16)(outRect->top + WrappedHeight(fText, width));
        *outBaseLine = (SInt16)(FontAscent() - FontLineHeight());
        return noErr;
    }

    std::span<const DataField> Fields() const override
    {
        static constexpr DataField kFields[] = {
            { kControlStaticTextTextTag, TextSize, GetText, SetText },
            { kControlStaticTextTextHeightTag, HeightSize, GetHeight, nullptr },
        };
        return kFields;
    }

private:
    SInt16 Justification() const
    {
        return fControl.font.flags & kControlUseJustMask ? fControl.font.just : (SInt16)0;
    }

    static StaticText& Self(Kind& inKind) { return static_cast<StaticText&>(inKind); }
    static Size TextSize(Kind& inKind) { return (Size)Self(inKind).fText.size(); }
    static OSErr GetText(Kind& inKind, void* outData, Size inSize)
    {
        return CopyOut(Self(inKind).fText, outData, inSize);
    }
    static OSErr SetText(Kind& inKind, const void* inData, Size inSize)
    {
        Self(inKind).fText.assign((const char*)inData, (size_t)inSize);
        return noErr;
    }
    static Size HeightSize(Kind&) { return sizeof(SInt16); }
    static OSErr GetHeight(Kind& inKind, void* outData, Size inSize)
    {
        if (inSize < (Size)sizeof(SInt16))
            return errDataSizeMismatch;
        Rect best;
        SInt16 baseLine = 0;
        Self(inKind).BestRect(&best, &baseLine);
        const SInt16 height = (SInt16)(best.bottom - best.top);
        std::memcpy(outData, &height, sizeof height);
        return noErr;
    }

    std::string fText;
};

} // namespace

std::unique_ptr<Kind> NewStaticText(Control& c)
{
    return std::make_unique<StaticText>(c);
}

} // namespace lampblack::controls
