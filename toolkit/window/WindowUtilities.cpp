// Window IDs, creation from 'DLOG', placement and queries.
#include "window/WindowUtilities.h"

#include <algorithm>
#include <cstring>

#include "graphics/Geometry.h"
#include "graphics/StateSavers.h"
#include "util/SystemChecks.h"

namespace {

constexpr PropertyTag kIDTag = 'ID  ';
constexpr Size kTitleOffset = 20;

// What a 'DLOG' says of the window itself.
struct Template {
    Rect fBounds;
    Str255 fTitle;
};

// A title that claims more bytes than there are is cut at the resource's end.
bool ReadTemplate(Handle inResource, Template* outTemplate)
{
    const Size size = GetHandleSize(inResource);
    if (size < static_cast<Size>(sizeof(Rect)))
        return false;
    std::memcpy(&outTemplate->fBounds, *inResource, sizeof(Rect));
    outTemplate->fTitle[0] = 0;
    if (size > kTitleOffset) {
        const UInt8* const title = reinterpret_cast<const UInt8*>(*inResource) + kTitleOffset;
        const Size length = std::min<Size>(title[0], size - kTitleOffset - 1);
        outTemplate->fTitle[0] = static_cast<UInt8>(length);
        std::memcpy(outTemplate->fTitle + 1, title + 1, length);
    }
    return true;
}

WindowClass ClassOf(WindowRef inWindow)
{
    WindowClass windowClass = 0;
    if (!inWindow || GetWindowClass(inWindow, &windowClass) != noErr)
        return 0;
    return windowClass;
}

WindowAttributes AttributesOf(WindowRef inWindow)
{
    WindowAttributes attributes = 0;
    if (!inWindow || GetWindowAttributes(inWindow, &attributes) != noErr)
        return 0;
    return attributes;
}

// Damaged records come out with a width of 72 and a height of 144: kept, since stored positions rely on it.
void RepairBounds(Rect* ioBounds)
{
    if (ioBounds->right < ioBounds->left)
        ioBounds->right = static_cast<SInt16>(ioBounds->left + 72);
    if (ioBounds->bottom < ioBounds->top)
        ioBounds->bottom = static_cast<SInt16>(ioBounds->top + 144);
}

bool HasPortSize(WindowRef inWindow, const Rect& inBounds)
{
    Rect port;
    GetWindowPortBounds(inWindow, &port);
    return port.right - port.left == inBounds.right - inBounds.left &&
           port.bottom - port.top == inBounds.bottom - inBounds.top;
}

void PlaceWindow(WindowRef inWindow, const Rect& inBounds)
{
    if (IsWindowCollapsed(inWindow)) {
        SetWindowBounds(inWindow, kWindowGlobalPortRgn, &inBounds);
        return;
    }
    SetWindowBounds(inWindow, kWindowContentRgn, &inBounds);
    ConstrainWindowToScreen(inWindow, kWindowStructureRgn, kWindowConstrainAllowPartial, nullptr, nullptr);
}

} // namespace

OSStatus SetWindowID(WindowRef inWindow, long inID)
{
    const SInt32 value = static_cast<SInt32>(inID);
    return SetWindowProperty(inWindow, kToolkitSignature, kIDTag, sizeof value, &value);
}

long GetWindowID(WindowRef inWindow)
{
    SInt32 value = 0;
    if (GetWindowProperty(inWindow, kToolkitSignature, kIDTag, sizeof value, nullptr, &value) != noErr)
        return 0;
    return value;
}

WindowRef GetWindowByID(long inID)
{
    WindowRef window = GetWindowList();
    while (window && GetWindowID(window) != inID)
        window = GetNextWindow(window);
    return window;
}

OSStatus CreateWindowFromDLOGResource(WindowClass inClass, WindowAttributes inAttributes, long inDialogID,
                                      WindowRef* outWindow)
{
    const Handle resource = GetResource('DLOG', static_cast<short>(inDialogID));
    Template dialog;
    if (!outWindow || !resource || !ReadTemplate(resource, &dialog))
        return paramErr;
    *outWindow = nullptr;
    OSStatus err = CreateNewWindow(inClass, inAttributes, &dialog.fBounds, outWindow);
    if (!*outWindow)
        return err != noErr ? err : paramErr;
    if (err != noErr)
        return err;
    SetPortWindowPort(*outWindow);
    SetWTitle(*outWindow, dialog.fTitle);
    SetWindowID(*outWindow, inDialogID);
    ControlRef root = nullptr;
    return CreateRootControl(*outWindow, &root);
}

OSStatus GetWindowPortGlobalBounds(WindowRef inWindow, Rect* outBounds)
{
    if (!inWindow || !outBounds)
        return paramErr;
    const StPortSaver port(inWindow);
    GetWindowPortBounds(inWindow, outBounds);
    LocalRectToGlobalRect(outBounds);
    return noErr;
}

WindowPositionRecord** GetWindowPosition(WindowRef inWindow)
{
    if (!inWindow) {
        LMSetMemErr(errInvalidWindowRef);
        return nullptr;
    }
    Rect bounds = { 0, 0, 0, 0 };
    GetWindowPortGlobalBounds(inWindow, &bounds);
    const Handle handle = NewHandle(sizeof(WindowPositionRecord));
    const OSErr err = MemError();
    if (handle)
        std::memcpy(*handle, &bounds, sizeof bounds);
    LMSetMemErr(err);
    return reinterpret_cast<WindowPositionRecord**>(handle);
}

OSErr SetWindowPosition(WindowRef inWindow, WindowPositionRecord** inPosition)
{
    if (!inWindow) {
        LMSetMemErr(errInvalidWindowRef);
        return errInvalidWindowRef;
    }
    const StPortSaver port(inWindow);
    const bool hasRecord = inPosition && *inPosition;
    OSErr status = hasRecord ? noErr : nilHandleErr;
    Rect bounds = hasRecord ? (*inPosition)->bounds : Rect{};
    RepairBounds(&bounds);
    if (hasRecord && !WindowIsResizeable(inWindow) && !HasPortSize(inWindow, bounds))
        status = -1;
    if (status == noErr)
        PlaceWindow(inWindow, bounds);
    else
        RepositionWindow(inWindow, nullptr,
                         WindowIsModal(inWindow) ? kWindowAlertPositionOnMainScreen
                                                 : kWindowCenterOnMainScreen);
    LMSetMemErr(status);
    return status;
}

void SetWindowTitleCString(WindowRef inWindow, const char* inTitle)
{
    if (!inWindow)
        return;
    Str255 title;
    CopyCStringToPascal(inTitle, title);
    SetWTitle(inWindow, title);
}

bool WindowIsFloating(WindowRef inWindow)
{
    return ClassOf(inWindow) == kFloatingWindowClass;
}

bool WindowIsModal(WindowRef inWindow)
{
    const WindowClass windowClass = ClassOf(inWindow);
    return windowClass >= kAlertWindowClass && windowClass <= kMovableModalWindowClass;
}

bool WindowIsMovableModal(WindowRef inWindow)
{
    return ClassOf(inWindow) == kMovableModalWindowClass;
}

bool WindowIsResizeable(WindowRef inWindow)
{
    return (AttributesOf(inWindow) & kWindowResizableAttribute) != 0;
}

bool WindowHasZoomBox(WindowRef inWindow)
{
    return (AttributesOf(inWindow) & kWindowFullZoomAttribute) != 0;
}

void OffsetWindow(WindowRef inWindow, short inDH, short inDV)
{
    if (!inWindow || (inDH == 0 && inDV == 0))
        return;
    Rect bounds;
    if (GetWindowBounds(inWindow, kWindowGlobalPortRgn, &bounds) != noErr)
        return;
    MoveWindow(inWindow, static_cast<short>(bounds.left + inDH), static_cast<short>(bounds.top + inDV),
               false);
}

void InvalWindow(WindowRef inWindow)
{
    if (!inWindow || !IsWindowVisible(inWindow))
        return;
    Rect bounds;
    GetWindowPortBounds(inWindow, &bounds);
    InvalWindowRect(inWindow, &bounds);
}

void ValidWindow(WindowRef inWindow)
{
    if (!inWindow || !IsWindowVisible(inWindow))
        return;
    Rect bounds;
    GetWindowPortBounds(inWindow, &bounds);
    ValidWindowRect(inWindow, &bounds);
}
