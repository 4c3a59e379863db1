#include "controls/ButtonImage.h"

#include "controls/Drawing.h"

#include <Carbon/Quickdraw.h>

#include <algorithm>

namespace lampblack::controls {

namespace {

constexpr short kLarge = 32, kSmall = 16;

Point SizeOf(const Rect& inRect)
{
    return { (short)(inRect.bottom - inRect.top), (short)(inRect.right - inRect.left) };
}

} // namespace

ButtonImage::~ButtonImage()
{
    if (fType == kControlContentIconSuiteRes)
        DisposeIconSuite(fData.suite, false);
    if (fType == kControlContentCIconRes)
        DisposeCIcon(fData.colorIcon);
}

bool ButtonImage::Take(SInt16 inType, SInt16 inID)
{
    switch (inType) {
    case kControlContentIconSuiteRes:
        return GetIconSuite(&fData.suite, inID, kSelectorAllAvailableData) == noErr;
    case kControlContentCIconRes: return (fData.colorIcon = GetCIcon(inID)) != nullptr;
    case kControlContentICONRes: return (fData.plainIcon = GetIcon(inID)) != nullptr;
    case kControlContentPictRes: return (fData.picture = GetPicture(inID)) != nullptr;
    default: return false;
    }
}

void ButtonImage::Load(SInt16 inType, SInt16 inID)
{
    if (Take(inType, inID))
        fType = inType;
}

Point ButtonImage::Size(const Rect& inBox) const
{
    const Point room = SizeOf(inBox);
    const short side = std::min(room.h, room.v) >= kLarge ? kLarge : kSmall;
    Rect frame = { 0, 0, 0, 0 };
    switch (fType) {
    case kControlContentIconSuiteRes:
    case kControlContentICONRes: return { side, side };
    case kControlContentCIconRes: return SizeOf((*fData.colorIcon)->iconPMap.bounds);
    case kControlContentPictRes: QDGetPictureBounds(fData.picture, &frame); return SizeOf(frame);
    default: return { 0, 0 };
    }
}

void ButtonImage::Draw(const Rect& inPlace, IconTransformType inTransform) const
{
    switch (fType) {
    case kControlContentIconSuiteRes: PlotIconSuite(&inPlace, kAlignNone, inTransform, fData.suite); return;
    case kControlContentCIconRes: PlotCIconHandle(&inPlace, kAlignNone, inTransform, fData.colorIcon); return;
    case kControlContentICONRes: PlotIconHandle(&inPlace, kAlignNone, inTransform, fData.plainIcon); return;
    case kControlContentPictRes: DrawPicture(fData.picture, &inPlace); return;
    default: return;
    }
}

} // namespace lampblack::controls
