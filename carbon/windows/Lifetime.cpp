// Making and ending windows.
#include "Lifetime.h"

#include "Activation.h"
#include "Bounds.h"
#include "Modality.h"
#include "Presenter.h"
#include "Sheets.h"
#include "StandardHandler.h"
#include "Surface.h"
#include "Updates.h"
#include "Visibility.h"
#include "WindowEvents.h"
#include "WindowFrame.h"
#include "WindowList.h"

#include <events/EventTargets.h>
#include <quickdraw/Port.h>

namespace lampblack::windows {

memory::ReferenceTable<WindowRecord>& Windows()
{
    static memory::ReferenceTable<WindowRecord> table;
    return table;
}

Point LocalOrigin(const WindowRecord& inWindow)
{
    Rect bounds;
    GetPortBounds(inWindow.port, &bounds);
    return { bounds.top, bounds.left };
}

StWindowPort::StWindowPort(CGrafPtr inPort) : fPort(inPort), fClip(NewRgn())
{
    static const Rect kWideOpen = { -32767, -32767, 32767, 32767 };
    GetGWorld(&fSaved, &fDevice);
    SetGWorld(inPort, nullptr);
    GetPortClipRegion(inPort, fClip);
    ClipRect(&kWideOpen);
}

StWindowPort::~StWindowPort()
{
    SetPortClipRegion(fPort, fClip);
    DisposeRgn(fClip);
    SetGWorld(fSaved, fDevice);
}

namespace {

// A window is heard of by its own target, then by the application.
EventTargetRef AfterWindow(void*)
{
    return GetApplicationEventTarget();
}

void ContentDrawn(void* inOwner, CGrafPtr, const Rect& inLocal)
{
    auto& window = *static_cast<WindowRecord*>(inOwner);
    const Point origin = LocalOrigin(window);
    Screen().ContentDamaged(window, Shifted(inLocal, -origin.h, -origin.v));
}

void GiveParts(WindowRecord& ioWindow)
{
    ioWindow.port = quickdraw::NewPixelPort(Width(ioWindow.content), Height(ioWindow.content));
    quickdraw::PlacePort(ioWindow.port, { ioWindow.content.top, ioWindow.content.left });
    quickdraw::SetPortOwner(ioWindow.port, &ioWindow, ContentDrawn);
    ioWindow.target = events::NewEventTarget(&ioWindow, AfterWindow);
    MeasureTitle(ioWindow);
    UpdateGeometry(ioWindow);
    if (ioWindow.Has(kWindowFullZoomAttribute)) // out to the whole screen, until the application says where
        ioWindow.standardState = ContentForStructure(ioWindow, AvailableBounds());
    UpdateVisibleRegion(ioWindow);
    List().AddInFront(ioWindow);
}

// Opens the screen, once, and lets the floor above put up its menu bar.
void Start()
{
    static bool started = false;
    if (started)
        return;
    started = true;
    Screen();
    InstallWindowRouting();
    if (TheSurfaceHooks().started)
        TheSurfaceHooks().started();
}

WindowRecord* NewRecord(const ClassTraits& inTraits, WindowAttributes inAttributes, const Rect& inContent)
{
    Start();
    WindowRecord* window = Windows().New();
    window->traits = &inTraits;
    window->attributes = inAttributes;
    window->modality = inTraits.modality;
    window->scope = inTraits.scope;
    window->layer = inTraits.layer;
    window->content = inContent;
    window->userState = window->standardState = inContent;
    return window;
}

// The port that is current when its window goes away is replaced by one that lasts.
void LeavePort(CGrafPtr inPort)
{
    CGrafPtr current = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&current, &device);
    if (current != inPort)
        return;
    static const CGrafPtr last = quickdraw::NewPixelPort(1, 1);
    SetGWorld(last, nullptr);
}

void Destroy(WindowRecord& ioWindow)
{
    CancelUpdate(ioWindow);
    CancelActivation(ioWindow);
    LeaveModality(ioWindow.Ref());
    List().Remove(ioWindow);
    events::DisposeEventTarget(ioWindow.target);
    LeavePort(ioWindow.port);
    quickdraw::SetPortOwner(ioWindow.port, nullptr, nullptr);
    quickdraw::DisposePixelPort(ioWindow.port);
    DisposeFrame(ioWindow);
    if (ioWindow.fullVisible)
        DisposeRgn(ioWindow.fullVisible);
    Windows().Delete(&ioWindow);
    Screen().LayoutChanged();
}

bool IsSane(const Rect& inBounds)
{
    return !IsEmptyRect(inBounds) && Width(inBounds) < 4096 && Height(inBounds) < 16384;
}

} // namespace

void Release(WindowRef inWindow)
{
    WindowRecord* window = Find(inWindow);
    if (!window || window->disposing || --window->owners)
        return;
    // Handlers of what follows may look at the window; it is alive until they have heard all of it.
    window->disposing = true;
    HideWindow(inWindow);
    Deactivate(*window);
    SettleActivation();
    SendWindowEvent(inWindow, kEventWindowClosed);
    SendWindowEvent(inWindow, kEventWindowDispose);
    Destroy(*window);
}

WindowRef NewSurface(Layer inLayer, const Rect& inBounds, bool inShadow)
{
    static const ClassTraits kSurface = { kSimpleWindowClass,
                                          Layer::Menu,
                                          FrameKind::None,
                                          kThemePlainDialogWindow,
                                          false,
                                          kWindowModalityNone,
                                          kWindowActivationScopeNone,
                                          0 };
    if (!IsSane(inBounds))
        return nullptr;
    WindowRecord* window =
        NewRecord(kSurface, inShadow ? kWindowNoAttributes : kWindowNoShadowAttribute, inBounds);
    window->layer = inLayer;
    window->internal = true;
    GiveParts(*window);
    return window->Ref();
}

SurfaceHooks& TheSurfaceHooks()
{
    static SurfaceHooks hooks;
    return hooks;
}

void SurfaceIsStale(WindowRef inSurface)
{
    if (WindowRecord* window = Find(inSurface))
        Screen().WindowDamaged(*window);
}

void SetSurfaceCorners(WindowRef inSurface, short inTopRadius, short inBottomRadius)
{
    WindowRecord* window = Find(inSurface);
    if (!window)
        return;
    window->topRadius = inTopRadius;
    window->bottomRadius = inBottomRadius;
    Screen().LayoutChanged();
    Screen().WindowDamaged(*window);
}

} // namespace lampblack::windows

using namespace lampblack::windows;

OSStatus CreateNewWindow(WindowClass inClass, WindowAttributes inAttributes, const Rect* inContentBounds,
                         WindowRef* outWindow)
{
    if (outWindow)
        *outWindow = nullptr;
    if (!outWindow || !inContentBounds || !IsSane(*inContentBounds))
        return paramErr;
    const ClassTraits* traits = FindClass(inClass);
    if (!traits)
        return errUnrecognizedWindowClass;
    if (inAttributes & ~traits->available)
        return errUnsupportedWindowAttributesForClass;
    WindowRecord* window = NewRecord(*traits, inAttributes, *inContentBounds);
    GiveParts(*window);
    if (inAttributes & kWindowStandardHandlerAttribute)
        InstallStandardHandler(*window);
    *outWindow = window->Ref();
    return noErr;
}

void DisposeWindow(WindowRef inWindow)
{
    Release(inWindow);
}

OSStatus ReleaseWindow(WindowRef inWindow)
{
    if (!Find(inWindow))
        return errInvalidWindowRef;
    Release(inWindow);
    return noErr;
}

OSStatus RetainWindow(WindowRef inWindow)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    ++window->owners;
    return noErr;
}

OSStatus CloneWindow(WindowRef inWindow)
{
    return RetainWindow(inWindow);
}

ItemCount GetWindowRetainCount(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window ? window->owners : 0;
}

OSStatus GetWindowOwnerCount(WindowRef inWindow, ItemCount* outCount)
{
    const WindowRecord* window = Find(inWindow);
    if (!window || !outCount)
        return window ? (OSStatus)paramErr : (OSStatus)errInvalidWindowRef;
    *outCount = window->owners;
    return noErr;
}

Boolean IsValidWindowPtr(WindowRef inWindow)
{
    const WindowRecord* window = Find(inWindow);
    return window && !window->internal;
}
