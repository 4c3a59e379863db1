// Suites, methods and resource IDs drawn, and hit.
#include "icons/Suites.h"
#include "icons/SystemIcons.h"

#include <Carbon/Resources.h>

using namespace lampblack::icons;
using lampblack::quickdraw::FindRegion;
using lampblack::quickdraw::Region;

namespace lampblack::icons {

Getter GetterOf(const Suite& inSuite)
{
    return [&inSuite](Kind kind) { return BytesOf(inSuite.data[kind.Place()]); };
}

Getter GetterOf(IconGetterProcPtr inMethod, void* inData)
{
    return [=](Kind kind) { return BytesOf(inMethod(kind.Type(), inData)); };
}

Getter GetterOfID(SInt16 inResourceID)
{
    return [=](Kind kind) { return BytesOf(GetResource(kind.Type(), inResourceID)); };
}

OSErr PlotPicture(IconPicture& ioPicture, const Rect* inRect, IconAlignmentType inAlignment,
                  IconTransformType inTransform)
{
    if (!inRect)
        return paramErr;
    Transform(ioPicture, inTransform, PortDepth());
    Draw(ioPicture, Aligned(*inRect, inAlignment, ioPicture.width, ioPicture.height));
    return noErr;
}

OSErr PlotMembers(const Getter& inGetter, const Rect* inRect, IconAlignmentType inAlignment,
                  IconTransformType inTransform, OSErr inNone)
{
    if (!inRect)
        return paramErr;
    IconPicture& picture = ScratchPicture();
    if (!ReadBest(inGetter, *inRect, PortDepth(), &picture))
        return inNone;
    return PlotPicture(picture, inRect, inAlignment, inTransform);
}

OSErr FindMask(const IconPicture& inPicture, const Rect* inRect, IconAlignmentType inAlignment, Region* out)
{
    if (!inPicture.hasMask)
        return noMaskFoundErr;
    *out = MaskOf(inPicture, Aligned(*inRect, inAlignment, inPicture.width, inPicture.height));
    return noErr;
}

// Masks are asked of the members with the fewest colours, which have them at their best.
OSErr FindMask(const Getter& inGetter, const Rect* inRect, IconAlignmentType inAlignment, OSErr inNone,
               Region* out)
{
    if (!inRect)
        return paramErr;
    IconPicture& picture = ScratchPicture();
    if (!ReadBest(inGetter, *inRect, 1, &picture))
        return inNone;
    return FindMask(picture, inRect, inAlignment, out);
}

static OSErr StoreMask(RgnHandle outRegion, OSErr inError, const Region& inMask)
{
    Region* region = FindRegion(outRegion);
    if (inError == noErr && !region)
        return paramErr;
    if (inError == noErr)
        *region = inMask;
    return inError;
}

// Of the icon with an ID: a resource, or one of the system's.
static OSErr FindMaskOfID(SInt16 inID, const Rect* inRect, IconAlignmentType inAlignment, Region* out)
{
    const OSErr error = FindMask(GetterOfID(inID), inRect, inAlignment, resNotFound, out);
    const SystemIcon* icon = error == resNotFound ? SystemIconNumbered(inID) : nullptr;
    return icon ? FindMask(PaintSystemIcon(*icon, *inRect, inAlignment), inRect, inAlignment, out) : error;
}

static bool IsTouched(OSErr inError, const Region& inMask, const Rect* inTest)
{
    return inError == noErr && inTest && inMask.Touches(quickdraw::BoxOf(*inTest));
}

} // namespace lampblack::icons

OSErr PlotIconID(const Rect* theRect, IconAlignmentType align, IconTransformType transform, SInt16 theResID)
{
    const OSErr error = PlotMembers(GetterOfID(theResID), theRect, align, transform, resNotFound);
    const SystemIcon* icon = error == resNotFound ? SystemIconNumbered(theResID) : nullptr;
    return icon ? PlotPicture(PaintSystemIcon(*icon, *theRect, align), theRect, align, transform) : error;
}

OSErr PlotIconSuite(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                    IconSuiteRef theIconSuite)
{
    const Suite* suite = FindSuite(theIconSuite);
    if (!suite)
        return paramErr;
    if ((transform & 0x0700) == 0)
        transform = (IconTransformType)(transform | suite->label << 8);
    return PlotMembers(GetterOf(*suite), theRect, align, transform, paramErr);
}

OSErr PlotIconMethod(const Rect* theRect, IconAlignmentType align, IconTransformType transform,
                     IconGetterUPP theMethod, void* yourDataPtr)
{
    if (!theMethod)
        return paramErr;
    return PlotMembers(GetterOf(theMethod, yourDataPtr), theRect, align, transform, paramErr);
}

OSErr IconIDToRgn(RgnHandle theRgn, const Rect* iconRect, IconAlignmentType align, SInt16 iconID)
{
    Region mask;
    return StoreMask(theRgn, FindMaskOfID(iconID, iconRect, align, &mask), mask);
}

OSErr IconSuiteToRgn(RgnHandle theRgn, const Rect* iconRect, IconAlignmentType align,
                     IconSuiteRef theIconSuite)
{
    const Suite* suite = FindSuite(theIconSuite);
    Region mask;
    const OSErr error =
        suite ? FindMask(GetterOf(*suite), iconRect, align, noMaskFoundErr, &mask) : (OSErr)paramErr;
    return StoreMask(theRgn, error, mask);
}

OSErr IconMethodToRgn(RgnHandle theRgn, const Rect* iconRect, IconAlignmentType align,
                      IconGetterUPP theMethod, void* yourDataPtr)
{
    if (!theMethod)
        return paramErr;
    Region mask;
    const OSErr error = FindMask(GetterOf(theMethod, yourDataPtr), iconRect, align, noMaskFoundErr, &mask);
    return StoreMask(theRgn, error, mask);
}

Boolean PtInIconID(Point testPt, const Rect* iconRect, IconAlignmentType align, SInt16 iconID)
{
    Region mask;
    return FindMaskOfID(iconID, iconRect, align, &mask) == noErr && mask.Contains(testPt.h, testPt.v);
}

Boolean PtInIconSuite(Point testPt, const Rect* iconRect, IconAlignmentType align, IconSuiteRef theIconSuite)
{
    const Suite* suite = FindSuite(theIconSuite);
    Region mask;
    return suite && FindMask(GetterOf(*suite), iconRect, align, noMaskFoundErr, &mask) == noErr &&
           mask.Contains(testPt.h, testPt.v);
}

Boolean PtInIconMethod(Point testPt, const Rect* iconRect, IconAlignmentType align, IconGetterUPP theMethod,
                       void* yourDataPtr)
{
    Region mask;
    return theMethod &&
           FindMask(GetterOf(theMethod, yourDataPtr), iconRect, align, noMaskFoundErr, &mask) == noErr &&
           mask.Contains(testPt.h, testPt.v);
}

Boolean RectInIconID(const Rect* testRect, const Rect* iconRect, IconAlignmentType align, SInt16 iconID)
{
    Region mask;
    return IsTouched(FindMaskOfID(iconID, iconRect, align, &mask), mask, testRect);
}

Boolean RectInIconSuite(const Rect* testRect, const Rect* iconRect, IconAlignmentType align,
                        IconSuiteRef theIconSuite)
{
    const Suite* suite = FindSuite(theIconSuite);
    Region mask;
    return suite &&
           IsTouched(FindMask(GetterOf(*suite), iconRect, align, noMaskFoundErr, &mask), mask, testRect);
}

Boolean RectInIconMethod(const Rect* testRect, const Rect* iconRect, IconAlignmentType align,
                         IconGetterUPP theMethod, void* yourDataPtr)
{
    Region mask;
    return theMethod &&
           IsTouched(FindMask(GetterOf(theMethod, yourDataPtr), iconRect, align, noMaskFoundErr, &mask), mask,
                     testRect);
}
