// What the user does in dialogs: the modal loop, the filter, and the calls that take single event records.
#include "dialogs/DialogRecord.h"

#include <Carbon/Appearance.h>
#include <Carbon/CarbonEvents.h>
#include <Carbon/MacWindows.h>
#include <Carbon/Sound.h>

namespace lampblack::dialogs {

namespace {

constexpr UInt32 kPressTicks = 8;

Dialog* FrontDialog()
{
    return FindByWindow(FrontNonFloatingWindow());
}

bool HasStandardHandler(WindowRef inWindow)
{
    WindowAttributes attributes = 0;
    return GetWindowAttributes(inWindow, &attributes) == noErr &&
           (attributes & kWindowStandardHandlerAttribute);
}

UInt8 CharacterOf(const EventRecord& inEvent)
{
    return (UInt8)(inEvent.message & charCodeMask);
}
SInt16 KeyCodeOf(const EventRecord& inEvent)
{
    return (SInt16)((inEvent.message & keyCodeMask) >> 8);
}

bool IsPressable(const Item* inItem)
{
    return inItem && inItem->control && IsControlVisible(inItem->control) &&
           IsControlEnabled(inItem->control) && IsControlActive(inItem->control);
}

// --- Events of one dialog, in the classic form. Each answers the item that was hit, 0 for none.

DialogItemIndex ClickIn(Dialog& inDialog, const EventRecord& inEvent)
{
    const DialogRef reference = inDialog.Ref();
    const Point where = ToLocal(inDialog, inEvent.where);
    ControlPartCode part = kControlNoPart;
    const ControlRef control = FindControlUnderMouse(where, inDialog.window, &part);
    const DialogItemIndex index = control ? inDialog.IndexOf(control) : (DialogItemIndex)0;
    if (control && part != kControlNoPart) {
        const ControlPartCode hit =
            HandleControlClick(control, where, inEvent.modifiers, (ControlActionUPP)(intptr_t)-1);
        Dialog* dialog = Find(reference);
        const Item* item = dialog ? dialog->ItemAt(index) : nullptr;
        return hit != kControlNoPart && item && item->IsEnabled() ? index : (DialogItemIndex)0;
    }
    return ItemForClick(inDialog, where);
}

DialogItemIndex KeyIn(Dialog& inDialog, const EventRecord& inEvent)
{
    const DialogRef reference = inDialog.Ref();
    if (CharacterOf(inEvent) == kTabCharCode) {
        if (inEvent.modifiers & shiftKey)
            ReverseKeyboardFocus(inDialog.window);
        else
            AdvanceKeyboardFocus(inDialog.window);
        return 0;
    }
    ControlRef focus = nullptr;
    if (GetKeyboardFocus(inDialog.window, &focus) != noErr || !focus)
        return 0;
    const SInt16 part = HandleControlKey(focus, KeyCodeOf(inEvent), CharacterOf(inEvent), inEvent.modifiers);
    Dialog* dialog = Find(reference);
    const DialogItemIndex index = dialog ? dialog->IndexOf(focus) : (DialogItemIndex)0;
    const Item* item = dialog ? dialog->ItemAt(index) : nullptr;
    return part != kControlNoPart && item && item->IsEnabled() ? index : (DialogItemIndex)0;
}

void UpdateIn(Dialog& inDialog)
{
    const WindowRef window = inDialog.window;
    CGrafPtr port = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&port, &device);
    SetPortWindowPort(window);
    BeginUpdate(window);
    Rect bounds;
    GetWindowPortBounds(window, &bounds);
    EraseRect(&bounds);
    DrawDialog(inDialog.Ref());
    EndUpdate(window);
    SetGWorld(port, device);
}

void ActivateIn(Dialog& inDialog, bool inActive)
{
    ControlRef root = nullptr;
    if (GetRootControl(inDialog.window, &root) == noErr)
        inActive ? ActivateControl(root) : DeactivateControl(root);
}

// Whose event it is; null for events of other windows.
Dialog* DialogOf(const EventRecord& inEvent)
{
    WindowRef window = nullptr;
    switch (inEvent.what) {
    case mouseDown:
        if (FindWindow(inEvent.where, &window) != inContent)
            return nullptr;
        return window == FrontWindow() || FindByWindow(window) == FrontDialog() ? FindByWindow(window)
                                                                                : nullptr;
    case updateEvt:
    case activateEvt: return FindByWindow((WindowRef)inEvent.message);
    default: return FrontDialog();
    }
}

void TrackCursor(Dialog& inDialog)
{
    Point where;
    GetGlobalMouse(&where);
    where = ToLocal(inDialog, where);
    const Item* item = inDialog.ItemAt((DialogItemIndex)(FindDialogItem(inDialog.Ref(), where) + 1));
    const bool overText = item && item->Kind() == kEditTextDialogItem && IsPressable(item);
    SetThemeCursor(overText ? kThemeIBeamCursor : kThemeArrowCursor);
}

// --- The modal loop

void ClickElsewhere(Dialog& inDialog, const EventRecord& inEvent)
{
    WindowRef window = nullptr;
    const WindowPartCode part = FindWindow(inEvent.where, &window);
    if (window != inDialog.window)
        SysBeep(30);
    else if (part == inDrag)
        DragWindow(window, inEvent.where, nullptr);
}

// An event that the dialog has no use for goes where it would go without a dialog.
DialogItemIndex Handle(Dialog& inDialog, EventRef inEvent, EventRecord& ioRecord, bool inIsRecord)
{
    const DialogRef reference = inDialog.Ref();
    const bool standard = HasStandardHandler(inDialog.window);
    const bool mine = inIsRecord && !standard && DialogOf(ioRecord) == &inDialog;
    if (!mine) {
        const OSStatus status = SendEventToEventTarget(inEvent, GetEventDispatcherTarget());
        Dialog* dialog = Find(reference);
        if (dialog && !standard && status == eventNotHandledErr && inIsRecord && ioRecord.what == mouseDown)
            ClickElsewhere(*dialog, ioRecord);
        return dialog ? dialog->hitItem : (DialogItemIndex)0;
    }
    DialogRef whose = nullptr;
    DialogItemIndex item = 0;
    return DialogSelect(&ioRecord, &whose, &item) && whose == reference ? item : (DialogItemIndex)0;
}

DialogItemIndex Take(Dialog& inDialog, EventRef inEvent, ModalFilterUPP inFilter)
{
    const DialogRef reference = inDialog.Ref();
    inDialog.hitItem = 0;
    EventRecord record = {};
    const bool isRecord = ConvertEventRefToEventRecord(inEvent, &record);
    DialogItemIndex item = 0;
    if (isRecord && (inFilter ? inFilter : StdFilterProc)(reference, &record, &item))
        return item;
    Dialog* dialog = Find(reference);
    if (!dialog)
        return 0;
    if (dialog->tracksCursor && GetEventClass(inEvent) == kEventClassMouse)
        TrackCursor(*dialog);
    return Handle(*dialog, inEvent, record, isRecord);
}

// The standard filter's keys: the item that the key stands for, 0 for none.
DialogItemIndex ItemForKey(const Dialog& inDialog, const EventRecord& inEvent)
{
    const UInt8 character = CharacterOf(inEvent);
    if (character == kReturnCharCode || character == kEnterCharCode)
        return inDialog.defaultItem;
    const bool cancels = (character == kEscapeCharCode && KeyCodeOf(inEvent) == kVK_Escape) ||
                         (character == '.' && (inEvent.modifiers & cmdKey));
    return cancels ? inDialog.cancelItem : (DialogItemIndex)0;
}

} // namespace

Point ToLocal(const Dialog& inDialog, Point inGlobal)
{
    CGrafPtr port = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&port, &device);
    SetPortWindowPort(inDialog.window);
    GlobalToLocal(&inGlobal);
    SetGWorld(port, device);
    return inGlobal;
}

DialogItemIndex ItemForClick(Dialog& inDialog, Point inWhere)
{
    const DialogItemIndex under = (DialogItemIndex)(FindDialogItem(inDialog.Ref(), inWhere) + 1);
    const Item* item = inDialog.ItemAt(under);
    const bool takesClick =
        item && item->IsEnabled() && (!item->control || item->Kind() == kStaticTextDialogItem);
    return takesClick ? under : (DialogItemIndex)0;
}

void PressItem(Dialog& inDialog, DialogItemIndex inItem)
{
    const Item* item = inDialog.ItemAt(inItem);
    if (!IsPressable(item))
        return;
    const ControlRef control = item->control;
    HiliteControl(control, kControlButtonPart);
    UInt32 ended = 0;
    Delay(kPressTicks, &ended);
    HiliteControl(control, kControlNoPart);
}

} // namespace lampblack::dialogs

using namespace lampblack::dialogs;

LAMPBLACK_BEGIN_C

void ModalDialog(ModalFilterUPP inFilter, DialogItemIndex* outItemHit)
{
    if (outItemHit)
        *outItemHit = 0;
    Dialog* dialog = FrontDialog();
    if (!dialog || !outItemHit)
        return;
    const DialogRef reference = dialog->Ref();
    const WindowRef window = dialog->window;
    BeginAppModalStateForWindow(window);
    EventRef event = nullptr;
    while (*outItemHit == 0 && (dialog = Find(reference)) &&
           ReceiveNextEvent(0, nullptr, kEventDurationForever, true, &event) == noErr) {
        *outItemHit = Find(reference) ? Take(*dialog, event, inFilter) : (DialogItemIndex)0;
        ReleaseEvent(event);
    }
    EndAppModalStateForWindow(window);
}

Boolean IsDialogEvent(const EventRecord* inEvent)
{
    return inEvent && DialogOf(*inEvent) != nullptr;
}

Boolean DialogSelect(const EventRecord* inEvent, DialogRef* outDialog, DialogItemIndex* outItemHit)
{
    if (outItemHit)
        *outItemHit = 0;
    Dialog* dialog = inEvent ? DialogOf(*inEvent) : nullptr;
    if (!dialog)
        return false;
    const DialogRef reference = dialog->Ref();
    DialogItemIndex hit = 0;
    switch (inEvent->what) {
    case mouseDown: hit = ClickIn(*dialog, *inEvent); break;
    case keyDown:
    case autoKey: hit = KeyIn(*dialog, *inEvent); break;
    case updateEvt: UpdateIn(*dialog); break;
    case activateEvt: ActivateIn(*dialog, inEvent->modifiers & activeFlag); break;
    case nullEvent: IdleControls(dialog->window); break;
    default: break;
    }
    if (outDialog)
        *outDialog = Find(reference) ? reference : nullptr;
    if (outItemHit)
        *outItemHit = hit;
    return hit != 0;
}

OSErr GetStdFilterProc(ModalFilterUPP* outFilter)
{
    if (!outFilter)
        return paramErr;
    *outFilter = StdFilterProc;
    return noErr;
}

Boolean StdFilterProc(DialogRef inDialog, EventRecord* ioEvent, DialogItemIndex* outItemHit)
{
    Dialog* dialog = Find(inDialog);
    if (!dialog || !ioEvent || !outItemHit || ioEvent->what != keyDown)
        return false;
    const DialogItemIndex index = ItemForKey(*dialog, *ioEvent);
    const Item* item = dialog->ItemAt(index);
    if (!IsPressable(item) || item->Kind() == kEditTextDialogItem)
        return false;
    PressItem(*dialog, index);
    *outItemHit = index;
    return true;
}

void DrawDialog(DialogRef inDialog)
{
    Dialog* dialog = Find(inDialog);
    if (!dialog)
        return;
    CGrafPtr port = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&port, &device);
    SetPortWindowPort(dialog->window);
    ShowParameters(*dialog);
    DrawControls(dialog->window);
    if (Find(inDialog))
        DrawUserItems(*dialog);
    SetGWorld(port, device);
}

void UpdateDialog(DialogRef inDialog, RgnHandle inUpdateRegion)
{
    Dialog* dialog = Find(inDialog);
    if (!dialog)
        return;
    CGrafPtr port = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&port, &device);
    SetPortWindowPort(dialog->window);
    ShowParameters(*dialog);
    UpdateControls(dialog->window, inUpdateRegion);
    if (Find(inDialog))
        DrawUserItems(*dialog);
    SetGWorld(port, device);
}

LAMPBLACK_END_C

namespace {

// The edit commands go to the text that has the focus, as its own Command keys would.
void CommandKeyToFocus(DialogRef inDialog, char inKey)
{
    ControlRef focus = nullptr;
    if (GetKeyboardFocus(GetDialogWindow(inDialog), &focus) == noErr && focus)
        HandleControlKey(focus, 0, inKey, cmdKey);
}

} // namespace

LAMPBLACK_BEGIN_C

void DialogCut(DialogRef inDialog)
{
    CommandKeyToFocus(inDialog, 'x');
}
void DialogCopy(DialogRef inDialog)
{
    CommandKeyToFocus(inDialog, 'c');
}
void DialogPaste(DialogRef inDialog)
{
    CommandKeyToFocus(inDialog, 'v');
}

void DialogDelete(DialogRef inDialog)
{
    ControlRef focus = nullptr;
    if (GetKeyboardFocus(GetDialogWindow(inDialog), &focus) != noErr || !focus)
        return;
    ControlEditTextSelectionRec selection = { 0, 0 };
    GetControlData(focus, kControlEntireControl, kControlEditTextSelectionTag, sizeof selection, &selection,
                   nullptr);
    if (selection.selEnd > selection.selStart)
        HandleControlKey(focus, kVK_Delete, kBackspaceCharCode, 0);
}

LAMPBLACK_END_C
