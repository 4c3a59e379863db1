// Windows by definition number and from 'WIND' resources.
#include "WindowRecord.h"

#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>

#include <cstring>

namespace lampblack::windows {

namespace {

struct Definition {
    short procID;
    WindowClass windowClass;
    WindowAttributes attributes;
};

constexpr WindowAttributes kGrow = kWindowResizableAttribute;
constexpr WindowAttributes kVert = kWindowVerticalZoomAttribute;
constexpr WindowAttributes kHoriz = kWindowHorizontalZoomAttribute;
constexpr WindowAttributes kFull = kWindowFullZoomAttribute;
constexpr WindowAttributes kCollapse = kWindowCollapseBoxAttribute;
constexpr WindowAttributes kSide = kWindowCollapseBoxAttribute | kWindowSideTitlebarAttribute;

constexpr Definition kDefinitions[] = {
    { documentProc, kDocumentWindowClass, kCollapse | kGrow },
    { dBoxProc, kModalWindowClass, 0 },
    { plainDBox, kPlainWindowClass, 0 },
    { altDBoxProc, kAltPlainWindowClass, 0 },
    { noGrowDocProc, kDocumentWindowClass, kCollapse },
    { movableDBoxProc, kMovableModalWindowClass, 0 },
    { zoomDocProc, kDocumentWindowClass, kCollapse | kGrow | kFull },
    { zoomNoGrow, kDocumentWindowClass, kCollapse | kFull },
    { rDocProc, kDocumentWindowClass, 0 },
    { floatProc, kFloatingWindowClass, kCollapse },
    { floatGrowProc, kFloatingWindowClass, kCollapse | kGrow },
    { floatZoomProc, kFloatingWindowClass, kCollapse | kFull },
    { floatZoomGrowProc, kFloatingWindowClass, kCollapse | kFull | kGrow },
    { floatSideProc, kFloatingWindowClass, kSide },
    { floatSideGrowProc, kFloatingWindowClass, kSide | kGrow },
    { floatSideZoomProc, kFloatingWindowClass, kSide | kFull },
    { floatSideZoomGrowProc, kFloatingWindowClass, kSide | kFull | kGrow },
    { kWindowDocumentProc, kDocumentWindowClass, kCollapse },
    { kWindowGrowDocumentProc, kDocumentWindowClass, kCollapse | kGrow },
    { kWindowVertZoomDocumentProc, kDocumentWindowClass, kCollapse | kVert },
    { kWindowVertZoomGrowDocumentProc, kDocumentWindowClass, kCollapse | kVert | kGrow },
    { kWindowHorizZoomDocumentProc, kDocumentWindowClass, kCollapse | kHoriz },
    { kWindowHorizZoomGrowDocumentProc, kDocumentWindowClass, kCollapse | kHoriz | kGrow },
    { kWindowFullZoomDocumentProc, kDocumentWindowClass, kCollapse | kFull },
    { kWindowFullZoomGrowDocumentProc, kDocumentWindowClass, kCollapse | kFull | kGrow },
    { kWindowPlainDialogProc, kPlainWindowClass, 0 },
    { kWindowShadowDialogProc, kAltPlainWindowClass, 0 },
    { kWindowModalDialogProc, kModalWindowClass, 0 },
    { kWindowMovableModalDialogProc, kMovableModalWindowClass, 0 },
    { kWindowAlertProc, kAlertWindowClass, 0 },
    { kWindowMovableAlertProc, kMovableAlertWindowClass, 0 },
    { kWindowMovableModalGrowProc, kMovableModalWindowClass, kGrow },
    { kWindowFloatProc, kFloatingWindowClass, kCollapse },
    { kWindowFloatGrowProc, kFloatingWindowClass, kCollapse | kGrow },
    { kWindowFloatVertZoomProc, kFloatingWindowClass, kCollapse | kVert },
    { kWindowFloatVertZoomGrowProc, kFloatingWindowClass, kCollapse | kVert | kGrow },
    { kWindowFloatHorizZoomProc, kFloatingWindowClass, kCollapse | kHoriz },
    { kWindowFloatHorizZoomGrowProc, kFloatingWindowClass, kCollapse | kHoriz | kGrow },
    { kWindowFloatFullZoomProc, kFloatingWindowClass, kCollapse | kFull },
    { kWindowFloatFullZoomGrowProc, kFloatingWindowClass, kCollapse | kFull | kGrow },
    { kWindowFloatSideProc, kFloatingWindowClass, kSide },
    { kWindowFloatSideGrowProc, kFloatingWindowClass, kSide | kGrow },
    { kWindowFloatSideVertZoomProc, kFloatingWindowClass, kSide | kVert },
    { kWindowFloatSideVertZoomGrowProc, kFloatingWindowClass, kSide | kVert | kGrow },
    { kWindowFloatSideHorizZoomProc, kFloatingWindowClass, kSide | kHoriz },
    { kWindowFloatSideHorizZoomGrowProc, kFloatingWindowClass, kSide | kHoriz | kGrow },
    { kWindowFloatSideFullZoomProc, kFloatingWindowClass, kSide | kFull },
    { kWindowFloatSideFullZoomGrowProc, kFloatingWindowClass, kSide | kFull | kGrow },
    { kWindowSheetProc, kSheetWindowClass, 0 },
    { kWindowSimpleProc, kSimpleWindowClass, 0 },
    { kWindowSimpleFrameProc, kPlainWindowClass, 0 },
    { kWindowSheetAlertProc, kSheetAlertWindowClass, 0 }
};

// The low four bits of a definition ID are the variant of a definition. Rounded windows have a corner radius
// there, which the theme decides; and the zoom bit means nothing to shapes without a zoom box, yet there are
// files that set it.
short ProperProcID(short inProcID)
{
    constexpr short kVariantBits = 15, kRoundness = 7;
    const auto definition = (short)(inProcID & ~kVariantBits), variant = (short)(inProcID & kVariantBits);
    if (definition == rDocProc && variant <= kRoundness)
        return rDocProc;
    const bool zooms = definition == documentProc && (variant & zoomDocProc);
    return zooms && inProcID != zoomDocProc && inProcID != zoomNoGrow ? (short)(variant & kRoundness)
                                                                      : inProcID;
}

const Definition* FindDefinition(short inProcID)
{
    const short procID = ProperProcID(inProcID);
    for (const Definition& definition : kDefinitions)
        if (definition.procID == procID)
            return &definition;
    return nullptr;
}

bool TakesCloseBox(WindowClass inClass)
{
    return GetAvailableWindowAttributes(inClass) & kWindowCloseBoxAttribute;
}

// The resource as it lies in memory: numbers in native order.
struct WindTemplate {
    Rect bounds;
    short procID, visible, goAway;
    SInt32 refCon;
    Str255 title;
    UInt16 position;
};

// Answers false for a resource that is too short for its record.
bool ReadTemplate(Handle inResource, WindTemplate* outTemplate)
{
    const Size size = GetHandleSize(inResource);
    if (size < 19)
        return false;
    const auto* bytes = reinterpret_cast<const UInt8*>(*inResource);
    std::memcpy(&outTemplate->bounds, bytes, 8);
    std::memcpy(&outTemplate->procID, bytes + 8, 2);
    std::memcpy(&outTemplate->visible, bytes + 10, 2);
    std::memcpy(&outTemplate->goAway, bytes + 12, 2);
    std::memcpy(&outTemplate->refCon, bytes + 14, 4);
    if (size < 19 + bytes[18])
        return false;
    std::memcpy(outTemplate->title, bytes + 18, bytes[18] + 1u);
    const Size position = (19 + bytes[18] + 1) & ~1;
    outTemplate->position = kWindowNoPosition;
    if (size >= position + 2)
        std::memcpy(&outTemplate->position, bytes + position, 2);
    return true;
}

WindowPositionMethod MethodFor(UInt16 inPosition)
{
    struct Pair {
        UInt16 position;
        WindowPositionMethod method;
    };
    static constexpr Pair kPairs[] = {
        { kWindowCenterMainScreen, kWindowCenterOnMainScreen },
        { kWindowAlertPositionMainScreen, kWindowAlertPositionOnMainScreen },
        { kWindowStaggerMainScreen, kWindowCascadeOnMainScreen },
        { kWindowCenterParentWindow, kWindowCenterOnParentWindow },
        { kWindowAlertPositionParentWindow, kWindowAlertPositionOnParentWindow },
        { kWindowStaggerParentWindow, kWindowCascadeOnParentWindow },
        { kWindowCenterParentWindowScreen, kWindowCenterOnParentWindowScreen },
        { kWindowAlertPositionParentWindowScreen, kWindowAlertPositionOnParentWindowScreen },
        { kWindowStaggerParentWindowScreen, kWindowCascadeOnParentWindowScreen }
    };
    for (const Pair& pair : kPairs)
        if (pair.position == inPosition)
            return pair.method;
    return 0;
}

// Without a window to be put beside, the screen serves.
void ApplyPosition(WindowRef inWindow, UInt16 inPosition)
{
    WindowPositionMethod method = MethodFor(inPosition);
    if (!method)
        return;
    const WindowRef parent = FrontNonFloatingWindow();
    if (!parent && method != kWindowAlertPositionOnMainScreen && method != kWindowCascadeOnMainScreen)
        method = kWindowCenterOnMainScreen;
    RepositionWindow(inWindow, parent == inWindow ? nullptr : parent, method);
}

void PutBehind(WindowRef inWindow, WindowRef inBehind)
{
    if (inBehind == (WindowRef)(intptr_t)-1)
        return;
    SendBehind(inWindow, inBehind);
}

WindowRef MakeHidden(const Rect* inBounds, ConstStr255Param inTitle, short inProcID, WindowRef inBehind,
                     Boolean inGoAway, SInt32 inRefCon)
{
    const Definition* definition = FindDefinition(inProcID);
    if (!definition)
        return nullptr;
    WindowAttributes attributes =
        definition->attributes & GetAvailableWindowAttributes(definition->windowClass);
    if (inGoAway && TakesCloseBox(definition->windowClass))
        attributes |= kWindowCloseBoxAttribute;
    WindowRef window = nullptr;
    if (CreateNewWindow(definition->windowClass, attributes, inBounds, &window) != noErr)
        return nullptr;
    SetWTitle(window, inTitle);
    SetWRefCon(window, inRefCon);
    PutBehind(window, inBehind);
    return window;
}

} // namespace

} // namespace lampblack::windows

using namespace lampblack::windows;

WindowRef NewCWindow(void*, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible, short inProcID,
                     WindowRef inBehind, Boolean inGoAway, SInt32 inRefCon)
{
    const WindowRef window = MakeHidden(inBounds, inTitle, inProcID, inBehind, inGoAway, inRefCon);
    if (window && inVisible)
        ShowWindow(window);
    return window;
}

WindowRef NewWindow(void* inStorage, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible,
                    short inProcID, WindowRef inBehind, Boolean inGoAway, SInt32 inRefCon)
{
    return NewCWindow(inStorage, inBounds, inTitle, inVisible, inProcID, inBehind, inGoAway, inRefCon);
}

WindowRef GetNewCWindow(short inWindowID, void*, WindowRef inBehind)
{
    const Handle resource = GetResource('WIND', inWindowID);
    WindTemplate record;
    if (!resource || !*resource || !ReadTemplate(resource, &record))
        return nullptr;
    const WindowRef window =
        MakeHidden(&record.bounds, record.title, record.procID, inBehind, record.goAway != 0, record.refCon);
    if (!window)
        return nullptr;
    ApplyPosition(window, record.position);
    if (record.visible)
        ShowWindow(window);
    return window;
}

WindowRef GetNewWindow(short inWindowID, void* inStorage, WindowRef inBehind)
{
    return GetNewCWindow(inWindowID, inStorage, inBehind);
}
