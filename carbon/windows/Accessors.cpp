// What a window says of itself, and its place in the list.
#include "Presenter.h"
#include "StandardHandler.h"
#include "Updates.h"
#include "WindowFrame.h"
#include "WindowList.h"

#include <quickdraw/Port.h>

#include <algorithm>
#include <cstring>

namespace lampblack::windows {

namespace {

// Reads one field of a window into *outValue, with the published errors.
template <class Value, class Read>
OSStatus Answer(WindowRef inWindow, Value* outValue, Read inRead)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (!outValue)
        return paramErr;
    *outValue = inRead(*window);
    return noErr;
}

WindowRef RefOf(WindowRecord* inWindow)
{
    return inWindow ? inWindow->Ref() : nullptr;
}

WindowRecord* SkipInternal(WindowRecord* inWindow, bool inForward)
{
    while (inWindow && inWindow->internal)
        inWindow = inForward ? List().Next(*inWindow) : List().Previous(*inWindow);
    return inWindow;
}

bool Matches(const WindowRecord& inWindow, WindowClass inClass, bool inMustBeVisible)
{
    return (inClass == (WindowClass)kAllWindowClasses || inWindow.traits->windowClass == inClass) &&
           (!inMustBeVisible || inWindow.visible) && !inWindow.internal;
}

WindowRecord* FirstMatch(WindowRecord* inFrom, WindowClass inClass, bool inMustBeVisible)
{
    for (; inFrom; inFrom = List().Next(*inFrom))
        if (Matches(*inFrom, inClass, inMustBeVisible))
            return inFrom;
    return nullptr;
}

bool IsFloatingLayer(const WindowRecord& inWindow)
{
    return inWindow.layer == Layer::Floating || inWindow.layer >= Layer::Utility;
}

void GeometryChanged(WindowRecord& ioWindow)
{
    Screen().WindowDamaged(ioWindow);
    UpdateGeometry(ioWindow);
    Screen().LayoutChanged();
    Screen().WindowDamaged(ioWindow);
}

} // namespace

} // namespace lampblack::windows

using namespace lampblack::windows;

OSStatus GetWindowClass(WindowRef inWindow, WindowClass* outClass)
{
    return Answer(inWindow, outClass, [](const WindowRecord& window) { return window.traits->windowClass; });
}

OSStatus SetWindowClass(WindowRef inWindow, WindowClass inClass)
{
    WindowRecord* window = Find(inWindow);
    const ClassTraits* traits = FindClass(inClass);
    if (!window)
        return errInvalidWindowRef;
    if (!traits)
        return errUnrecognizedWindowClass;
    if (window->visible)
        return paramErr;
    window->traits = traits;
    window->attributes &= traits->available;
    window->modality = traits->modality;
    window->scope = traits->scope;
    window->layer = traits->layer;
    List().Remove(*window);
    List().AddInFront(*window);
    MeasureTitle(*window);
    GeometryChanged(*window);
    return noErr;
}

OSStatus GetWindowAttributes(WindowRef inWindow, WindowAttributes* outAttributes)
{
    return Answer(inWindow, outAttributes, [](const WindowRecord& window) { return window.attributes; });
}

WindowAttributes GetAvailableWindowAttributes(WindowClass inClass)
{
    const ClassTraits* traits = FindClass(inClass);
    return traits ? traits->available : 0;
}

OSStatus ChangeWindowAttributes(WindowRef inWindow, WindowAttributes inSet, WindowAttributes inClear)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (inSet & inClear)
        return windowAttributesConflictErr;
    if (inSet & ~window->traits->available)
        return errUnsupportedWindowAttributesForClass;
    const WindowAttributes old = window->attributes;
    window->attributes = (old | inSet) & ~inClear;
    if (~old & window->attributes & kWindowStandardHandlerAttribute)
        InstallStandardHandler(*window);
    GeometryChanged(*window);
    return noErr;
}

OSStatus InstallStandardEventHandler(EventTargetRef inTarget)
{
    if (inTarget && inTarget == GetApplicationEventTarget())
        return noErr;
    WindowRecord* window =
        FirstWindow([inTarget](const WindowRecord& each) { return each.target == inTarget; });
    if (!inTarget || !window)
        return paramErr;
    return ChangeWindowAttributes(window->Ref(), kWindowStandardHandlerAttribute, 0);
}

void SetWRefCon(WindowRef inWindow, long inData)
{
    if (WindowRecord* window = Find(inWindow))
        window->refCon = inData;
}

long GetWRefCon(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window ? window->refCon : 0;
}

void SetWindowKind(WindowRef inWindow, short inKind)
{
    if (WindowRecord* window = Find(inWindow))
        window->kind = inKind;
}

short GetWindowKind(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window ? window->kind : 0;
}

void SetWTitle(WindowRef inWindow, ConstStr255Param inTitle)
{
    WindowRecord* window = Find(inWindow);
    if (!window || !inTitle)
        return;
    std::memmove(window->title, inTitle, inTitle[0] + 1u);
    MeasureTitle(*window);
    window->frameStale = true;
    Screen().FrameDamaged(*window);
}

void GetWTitle(WindowRef inWindow, Str255 outTitle)
{
    const WindowRecord* window = Find(inWindow);
    if (!outTitle)
        return;
    outTitle[0] = 0;
    if (window)
        std::memcpy(outTitle, window->title, window->title[0] + 1u);
}

OSStatus SetWindowTitleWithCFString(WindowRef inWindow, CFStringRef inTitle)
{
    if (!Find(inWindow))
        return errInvalidWindowRef;
    if (!inTitle || CFGetTypeID(inTitle) != CFStringGetTypeID())
        return paramErr;
    Str255 title;
    CFIndex length = 0;
    const CFRange first = { 0, std::min<CFIndex>(CFStringGetLength(inTitle), 255) };
    CFStringGetBytes(inTitle, first, kCFStringEncodingMacRoman, '?', false, title + 1, 255, &length);
    title[0] = static_cast<unsigned char>(length);
    SetWTitle(inWindow, title);
    return noErr;
}

OSStatus CopyWindowTitleAsCFString(WindowRef inWindow, CFStringRef* outTitle)
{
    return Answer(inWindow, outTitle, [](const WindowRecord& window) {
        return CFStringCreateWithPascalString(nullptr, window.title, kCFStringEncodingMacRoman);
    });
}

OSStatus SetWindowModified(WindowRef inWindow, Boolean inModified)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    window->modified = inModified;
    window->frameStale = true;
    Screen().FrameDamaged(*window);
    return noErr;
}

Boolean IsWindowModified(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window && window->modified;
}

// The list

WindowRef GetWindowList(void)
{
    return RefOf(SkipInternal(List().Front(), true));
}

WindowRef GetNextWindow(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window ? RefOf(SkipInternal(List().Next(*window), true)) : nullptr;
}

WindowRef GetPreviousWindow(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window ? RefOf(SkipInternal(List().Previous(*window), false)) : nullptr;
}

WindowRef GetFrontWindowOfClass(WindowClass inClass, Boolean inMustBeVisible)
{
    return RefOf(FirstMatch(List().Front(), inClass, inMustBeVisible));
}

WindowRef GetNextWindowOfClass(WindowRef inWindow, WindowClass inClass, Boolean inMustBeVisible)
{
    const WindowRecord* window = Find(inWindow);
    return window ? RefOf(FirstMatch(List().Next(*window), inClass, inMustBeVisible)) : nullptr;
}

WindowRef FrontWindow(void)
{
    return RefOf(FirstWindow([](const WindowRecord& window) {
        return !window.internal && window.visible && window.layer != Layer::Help;
    }));
}

WindowRef FrontNonFloatingWindow(void)
{
    return RefOf(FirstWindow([](const WindowRecord& window) {
        return !window.internal && window.visible && !IsFloatingLayer(window);
    }));
}

// Ports

CGrafPtr GetWindowPort(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window ? window->port : nullptr;
}

WindowRef GetWindowFromPort(CGrafPtr inPort)
{
    WindowRecord* window =
        Windows().Find(static_cast<WindowRecord*>(lampblack::quickdraw::PortOwner(inPort)));
    return window && window->port == inPort ? window->Ref() : nullptr;
}

void SetPortWindowPort(WindowRef inWindow)
{
    if (const WindowRecord* window = Find(inWindow))
        SetPort(window->port);
}

Rect* GetWindowPortBounds(WindowRef inWindow, Rect* outBounds)
{
    const WindowRecord* window = Find(inWindow);
    if (window && outBounds)
        GetPortBounds(window->port, outBounds);
    return outBounds;
}

// Background and transparency

OSStatus SetThemeWindowBackground(WindowRef inWindow, ThemeBrush inBrush, Boolean inUpdate)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    OSStatus status;
    {
        const StWindowPort port(window->port);
        status = SetThemeBackground(inBrush, 32, true);
    }
    if (status == noErr && inUpdate)
        RedrawContent(*window);
    return status;
}

OSStatus SetThemeTextColorForWindow(WindowRef inWindow, Boolean inActive, SInt16 inDepth, Boolean inColor)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    struct Colors {
        WindowClass windowClass;
        ThemeTextColor active, inactive;
    };
    static constexpr Colors kColors[] = {
        { kAlertWindowClass, kThemeTextColorAlertActive, kThemeTextColorAlertInactive },
        { kMovableAlertWindowClass, kThemeTextColorAlertActive, kThemeTextColorAlertInactive },
        { kModalWindowClass, kThemeTextColorDialogActive, kThemeTextColorDialogInactive },
        { kMovableModalWindowClass, kThemeTextColorDialogActive, kThemeTextColorDialogInactive }
    };
    for (const Colors& colors : kColors)
        if (colors.windowClass == window->traits->windowClass)
            return SetThemeTextColor(inActive ? colors.active : colors.inactive, inDepth, inColor);
    return SetThemeTextColor(inActive ? kThemeTextColorModelessDialogActive
                                      : kThemeTextColorModelessDialogInactive,
                             inDepth, inColor);
}

OSStatus SetWindowContentColor(WindowRef inWindow, const RGBColor* inColor)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (!inColor)
        return paramErr;
    window->contentColor = *inColor;
    {
        const StWindowPort port(window->port);
        SetThemeBackground(kThemeBrushWhite, 32, true); // takes a pattern away
        RGBBackColor(inColor);
    }
    RedrawContent(*window);
    return noErr;
}

OSStatus GetWindowContentColor(WindowRef inWindow, RGBColor* outColor)
{
    return Answer(inWindow, outColor, [](const WindowRecord& window) { return window.contentColor; });
}

OSStatus SetWindowAlpha(WindowRef inWindow, float inAlpha)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (!(inAlpha >= 0 && inAlpha <= 1))
        return paramErr;
    window->alpha = inAlpha;
    Screen().LayoutChanged();
    Screen().WindowDamaged(*window);
    return noErr;
}

OSStatus GetWindowAlpha(WindowRef inWindow, float* outAlpha)
{
    return Answer(inWindow, outAlpha, [](const WindowRecord& window) { return window.alpha; });
}

EventTargetRef GetWindowEventTarget(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window ? window->target : nullptr;
}
