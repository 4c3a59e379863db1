// Making dialogs and ending them.
#include "dialogs/DialogRecord.h"
#include "events/EventTargets.h"

#include <Carbon/Appearance.h>
#include <Carbon/CarbonEvents.h>
#include <Carbon/MacMemory.h>
#include <Carbon/MacWindows.h>
#include <Carbon/Resources.h>

#include <algorithm>
#include <cstring>

namespace lampblack::dialogs {

namespace {

struct PositionWord {
    UInt16 word;
    WindowPositionMethod method;
};
constexpr PositionWord kPositions[] = {
    { kWindowCenterMainScreen, kWindowCenterOnMainScreen },
    { kWindowAlertPositionMainScreen, kWindowAlertPositionOnMainScreen },
    { kWindowStaggerMainScreen, kWindowCascadeOnMainScreen },
    { kWindowCenterParentWindow, kWindowCenterOnParentWindow },
    { kWindowAlertPositionParentWindow, kWindowAlertPositionOnParentWindow },
    { kWindowStaggerParentWindow, kWindowCascadeOnParentWindow },
    { kWindowCenterParentWindowScreen, kWindowCenterOnParentWindowScreen },
    { kWindowAlertPositionParentWindowScreen, kWindowAlertPositionOnParentWindowScreen },
    { kWindowStaggerParentWindowScreen, kWindowCascadeOnParentWindowScreen },
};

void Position(WindowRef inWindow, WindowRef inParent, UInt16 inWord)
{
    for (const PositionWord& entry : kPositions)
        if (entry.word == inWord)
            RepositionWindow(inWindow, inParent, entry.method);
}

bool IsModal(WindowRef inWindow)
{
    WindowClass windowClass = kDocumentWindowClass;
    GetWindowClass(inWindow, &windowClass);
    return windowClass <= kMovableModalWindowClass;
}

// The items that are no controls are drawn with those that are, wherever the window's content is drawn by
// default.
OSStatus DrawContent(EventHandlerCallRef, EventRef, void* inWindow)
{
    Dialog* dialog = FindByWindow((WindowRef)inWindow);
    if (!dialog)
        return eventNotHandledErr;
    DrawDialog(dialog->Ref());
    return noErr;
}

// A window that is disposed of by itself ends its dialog.
OSStatus WindowEnds(EventHandlerCallRef, EventRef, void* inWindow)
{
    if (Dialog* dialog = FindByWindow((WindowRef)inWindow))
        DeleteRecord(dialog);
    return eventNotHandledErr;
}

// Tells ModalDialog, whichever way the hit came.
OSStatus ControlHit(EventHandlerCallRef, EventRef inEvent, void* inWindow)
{
    Dialog* dialog = FindByWindow((WindowRef)inWindow);
    ControlRef control = nullptr;
    GetEventParameter(inEvent, kEventParamDirectObject, typeControlRef, nullptr, sizeof control, nullptr,
                      &control);
    const DialogItemIndex index = dialog ? dialog->IndexOf(control) : (DialogItemIndex)0;
    if (index && dialog->ItemAt(index)->IsEnabled())
        dialog->hitItem = index;
    return eventNotHandledErr;
}

// Clicks where no control is, in a window with the standard handler: user items, icons, pictures, texts.
OSStatus ClickContent(EventHandlerCallRef, EventRef inEvent, void* inWindow)
{
    Dialog* dialog = FindByWindow((WindowRef)inWindow);
    Point where = { 0, 0 };
    if (!dialog || GetEventParameter(inEvent, kEventParamMouseLocation, typeQDPoint, nullptr, sizeof where,
                                     nullptr, &where) != noErr)
        return eventNotHandledErr;
    where = ToLocal(*dialog, where);
    ControlPartCode part = kControlNoPart;
    FindControlUnderMouse(where, dialog->window, &part);
    const DialogItemIndex index = part == kControlNoPart ? ItemForClick(*dialog, where) : (DialogItemIndex)0;
    if (index == 0)
        return eventNotHandledErr;
    dialog->hitItem = index;
    return noErr;
}

void InstallHandlers(WindowRef inWindow)
{
    constexpr EventTypeSpec kClick = { kEventClassWindow, kEventWindowHandleContentClick };
    constexpr EventTypeSpec kHit = { kEventClassControl, kEventControlHit };
    constexpr EventTypeSpec kDraw = { kEventClassWindow, kEventWindowDrawContent };
    constexpr EventTypeSpec kEnds = { kEventClassWindow, kEventWindowDispose };
    const EventTargetRef target = GetWindowEventTarget(inWindow);
    events::InstallDefaultHandler(target, 1, &kDraw, DrawContent, inWindow);
    events::InstallDefaultHandler(target, 1, &kHit, ControlHit, inWindow);
    events::InstallDefaultHandler(target, 1, &kClick, ClickContent, inWindow);
    events::InstallDefaultHandler(target, 1, &kEnds, WindowEnds, inWindow);
}

struct NewDialogInfo {
    Rect bounds = { 0, 0, 0, 0 };
    ConstStr255Param title = nullptr;
    bool visible = false;
    SInt16 procID = 0;
    WindowRef behind = nullptr;
    bool goAway = false;
    SInt32 reference = 0;
    std::vector<ItemTemplate> items;
    UInt32 flags = 0;
    UInt16 position = 0;
};

Dialog* Make(const NewDialogInfo& inInfo)
{
    const WindowRef parent = FrontNonFloatingWindow();
    const unsigned char untitled[] = { 0 };
    const WindowRef window = NewCWindow(nullptr, &inInfo.bounds, inInfo.title ? inInfo.title : untitled,
                                        false, inInfo.procID, inInfo.behind, inInfo.goAway, inInfo.reference);
    if (!window)
        return nullptr;
    SetWindowKind(window, kDialogWindowKind);
    if (inInfo.flags & kDialogFlagsUseThemeBackground)
        SetThemeWindowBackground(window,
                                 IsModal(window) ? kThemeBrushDialogBackgroundActive
                                                 : kThemeBrushModelessDialogBackgroundActive,
                                 false);
    Dialog* dialog = NewRecord(window);
    ControlRef root = nullptr;
    CreateRootControl(window, &root);
    InstallHandlers(window); // newer than the controls' own, so that it runs before theirs
    AddItems(*dialog, inInfo.items, { 0, 0 });
    Position(window, parent, inInfo.position);
    if (inInfo.visible)
        ShowWindow(window);
    return dialog;
}

// 'dlgx' of the same ID, which is kept as the file has it: version (2), flags (4), big-endian.
UInt32 FlagsFor(SInt16 inDialogID)
{
    const Handle resource = GetResource('dlgx', inDialogID);
    if (!resource || GetHandleSize(resource) < 6)
        return kDialogFlagsUseThemeBackground | kDialogFlagsUseControlHierarchy;
    const auto* bytes = (const uint8_t*)*resource;
    return (UInt32)bytes[2] << 24 | (UInt32)bytes[3] << 16 | (UInt32)bytes[4] << 8 | bytes[5];
}

} // namespace

} // namespace lampblack::dialogs

using namespace lampblack::dialogs;

LAMPBLACK_BEGIN_C

DialogRef GetNewDialog(SInt16 inDialogID, void*, WindowRef inBehind)
{
    const Handle resource = GetResource('DLOG', inDialogID);
    DialogTemplate t;
    if (!resource || !*resource ||
        !ParseDialogTemplate({ (const uint8_t*)*resource, (size_t)GetHandleSize(resource) }, &t))
        return nullptr;
    Str255 title;
    title[0] = (unsigned char)t.title.size();
    std::copy(t.title.begin(), t.title.end(), title + 1);
    NewDialogInfo info;
    info.bounds = t.bounds;
    info.title = title;
    info.visible = t.visible;
    info.procID = t.procID;
    info.behind = inBehind;
    info.goAway = t.goAway;
    info.reference = t.reference;
    info.items = ItemsOf(GetResource('DITL', t.itemsID));
    info.flags = FlagsFor(inDialogID);
    info.position = t.position;
    Dialog* dialog = Make(info);
    return dialog ? dialog->Ref() : nullptr;
}

OSErr NewFeaturesDialog(void*, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible,
                        SInt16 inProcID, WindowRef inBehind, Boolean inGoAway, SInt32 inReference,
                        Handle inItemList, UInt32 inFlags, DialogRef* outDialog)
{
    if (!inBounds || !outDialog)
        return paramErr;
    NewDialogInfo info;
    info.bounds = *inBounds;
    info.title = inTitle;
    info.visible = inVisible;
    info.procID = inProcID;
    info.behind = inBehind;
    info.goAway = inGoAway;
    info.reference = inReference;
    info.items = ItemsOf(inItemList);
    info.flags = inFlags;
    Dialog* dialog = Make(info);
    *outDialog = dialog ? dialog->Ref() : nullptr;
    return dialog ? (OSErr)noErr : (OSErr)paramErr;
}

DialogRef NewDialog(void* inStorage, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible,
                    SInt16 inProcID, WindowRef inBehind, Boolean inGoAway, SInt32 inReference,
                    Handle inItemList)
{
    DialogRef dialog = nullptr;
    NewFeaturesDialog(inStorage, inBounds, inTitle, inVisible, inProcID, inBehind, inGoAway, inReference,
                      inItemList, kDialogFlagsUseThemeBackground | kDialogFlagsUseControlHierarchy, &dialog);
    return dialog;
}

DialogRef NewColorDialog(void* inStorage, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible,
                         SInt16 inProcID, WindowRef inBehind, Boolean inGoAway, SInt32 inReference,
                         Handle inItemList)
{
    return NewDialog(inStorage, inBounds, inTitle, inVisible, inProcID, inBehind, inGoAway, inReference,
                     inItemList);
}

void DisposeDialog(DialogRef inDialog)
{
    Dialog* dialog = Find(inDialog);
    if (!dialog)
        return;
    const WindowRef window = dialog->window;
    DeleteRecord(dialog);
    DisposeWindow(window);
}

WindowRef GetDialogWindow(DialogRef inDialog)
{
    const Dialog* dialog = Find(inDialog);
    return dialog ? dialog->window : nullptr;
}

DialogRef GetDialogFromWindow(WindowRef inWindow)
{
    Dialog* dialog = FindByWindow(inWindow);
    return dialog ? dialog->Ref() : nullptr;
}

CGrafPtr GetDialogPort(DialogRef inDialog)
{
    const Dialog* dialog = Find(inDialog);
    return dialog ? GetWindowPort(dialog->window) : nullptr;
}

void SetPortDialogPort(DialogRef inDialog)
{
    if (const Dialog* dialog = Find(inDialog))
        SetPortWindowPort(dialog->window);
}

ModalFilterUPP NewModalFilterUPP(ModalFilterProcPtr inProc)
{
    return inProc;
}
void DisposeModalFilterUPP(ModalFilterUPP) {}
Boolean InvokeModalFilterUPP(DialogRef inDialog, EventRecord* ioEvent, DialogItemIndex* outItemHit,
                             ModalFilterUPP inUPP)
{
    return inUPP(inDialog, ioEvent, outItemHit);
}
UserItemUPP NewUserItemUPP(UserItemProcPtr inProc)
{
    return inProc;
}
void DisposeUserItemUPP(UserItemUPP) {}
void InvokeUserItemUPP(DialogRef inDialog, DialogItemIndex inItem, UserItemUPP inUPP)
{
    inUPP(inDialog, inItem);
}

LAMPBLACK_END_C
