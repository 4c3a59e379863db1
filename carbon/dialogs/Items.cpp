// The items of a dialog: reading and changing them, their texts, their places.
#include "dialogs/DialogRecord.h"

#include <Carbon/MacMemory.h>
#include <Carbon/MacWindows.h>
#include <Carbon/Resources.h>

#include <algorithm>
#include <cstring>

namespace lampblack::dialogs {

namespace {

constexpr SInt16 kAside = 16384; // how far a hidden item is moved to the right

Item* ItemOf(DialogRef inDialog, DialogItemIndex inItem)
{
    Dialog* dialog = Find(inDialog);
    return dialog ? dialog->ItemAt(inItem) : nullptr;
}

std::string TextOf(ControlRef inControl)
{
    Size size = 0;
    if (GetControlDataSize(inControl, kControlEntireControl, kControlEditTextTextTag, &size) == noErr) {
        std::string text((size_t)size, '\0');
        GetControlData(inControl, kControlEntireControl, kControlEditTextTextTag, size, text.data(), nullptr);
        return text;
    }
    Str255 title;
    GetControlTitle(inControl, title);
    return { (const char*)title + 1, title[0] };
}

void SetTextOf(ControlRef inControl, ConstStr255Param inText)
{
    std::string text((const char*)inText + 1, inText[0]);
    if (Item* item = FindItemOfControl(inControl)) {
        if (item->Kind() == kStaticTextDialogItem) {
            item->text = text;
            text = WithParameters(text);
        }
    }
    if (SetControlData(inControl, kControlEntireControl, kControlEditTextTextTag, (Size)text.size(),
                       text.data()) == noErr)
        Draw1Control(inControl);
    else
        SetControlTitle(inControl, inText);
}

void InvalidateItem(const Dialog& inDialog, const Item& inItem)
{
    if (!inItem.control)
        InvalWindowRect(inDialog.window, &inItem.box);
}

void PlaceItem(Dialog& inDialog, Item& ioItem, const Rect& inBox)
{
    InvalidateItem(inDialog, ioItem);
    ioItem.box = inBox;
    if (ioItem.control && !IsAside(inBox))
        SetControlBounds(ioItem.control, &inBox);
    FitView(inDialog, ioItem);
    InvalidateItem(inDialog, ioItem);
}

// The corner that appended items count from, and the size that the window needs for all of them.
Point AppendOrigin(Dialog& inDialog, DITLMethod inMethod)
{
    Rect port;
    GetWindowPortBounds(inDialog.window, &port);
    if (inMethod == appendDITLRight)
        return { 0, port.right };
    if (inMethod == appendDITLBottom)
        return { port.bottom, 0 };
    const Item* beside = inMethod < 0 ? inDialog.ItemAt((DialogItemIndex)-inMethod) : nullptr;
    return beside ? Point{ beside->box.top, beside->box.left } : Point{ 0, 0 };
}

void GrowFor(Dialog& inDialog, size_t inFirst)
{
    constexpr int kMargin = 5;
    Rect port;
    GetWindowPortBounds(inDialog.window, &port);
    int right = port.right, bottom = port.bottom;
    for (size_t i = inFirst; i < inDialog.items.size(); ++i) {
        const Rect& box = inDialog.items[i].box;
        if (IsAside(box))
            continue;
        right = std::max(right, box.right + kMargin);
        bottom = std::max(bottom, box.bottom + kMargin);
    }
    if (right > port.right || bottom > port.bottom)
        SizeWindow(inDialog.window, (short)std::min(right - port.left, 4000),
                   (short)std::min(bottom - port.top, 4000), true);
}

void Append(Dialog& ioDialog, const std::vector<ItemTemplate>& inItems, DITLMethod inMethod)
{
    const size_t first = ioDialog.items.size();
    AddItems(ioDialog, inItems, AppendOrigin(ioDialog, inMethod));
    if (inMethod != overlayDITL)
        GrowFor(ioDialog, first);
}

} // namespace

void DrawUserItems(Dialog& inDialog)
{
    const DialogRef reference = inDialog.Ref();
    for (DialogItemIndex i = 1; Find(reference) && i <= (DialogItemIndex)inDialog.items.size(); ++i) {
        const Item& item = *inDialog.ItemAt(i);
        if (item.Kind() == kUserDialogItem && item.handle && !IsAside(item.box))
            InvokeUserItemUPP(reference, i, (UserItemUPP)item.handle);
    }
}

} // namespace lampblack::dialogs

using namespace lampblack::dialogs;

LAMPBLACK_BEGIN_C

DialogItemIndex CountDITL(DialogRef inDialog)
{
    const Dialog* dialog = Find(inDialog);
    return dialog ? (DialogItemIndex)dialog->items.size() : (DialogItemIndex)0;
}

void GetDialogItem(DialogRef inDialog, DialogItemIndex inItem, DialogItemType* outType, Handle* outItem,
                   Rect* outBox)
{
    const Item* item = ItemOf(inDialog, inItem);
    if (outType)
        *outType = item ? item->type : (DialogItemType)0;
    if (outItem)
        *outItem = !item ? nullptr : item->control ? (Handle)item->control : item->handle;
    if (outBox)
        *outBox = item ? item->box : Rect{ 0, 0, 0, 0 };
}

void SetDialogItem(DialogRef inDialog, DialogItemIndex inItem, DialogItemType inType, Handle inItemHandle,
                   const Rect* inBox)
{
    Dialog* dialog = Find(inDialog);
    Item* item = dialog ? dialog->ItemAt(inItem) : nullptr;
    if (!item)
        return;
    item->type = inType;
    if (IsValidControlHandle((ControlRef)inItemHandle))
        item->control = (ControlRef)inItemHandle;
    else if (!item->control)
        item->handle = inItemHandle;
    const Rect box = inBox ? *inBox : item->box;
    PlaceItem(*dialog, *item, box);
}

OSErr GetDialogItemAsControl(DialogRef inDialog, DialogItemIndex inItem, ControlRef* outControl)
{
    if (outControl)
        *outControl = nullptr;
    if (!Find(inDialog))
        return inDialog ? (OSErr)errNotDialogRef : (OSErr)paramErr;
    const Item* item = ItemOf(inDialog, inItem);
    if (!item || !outControl)
        return paramErr;
    *outControl = item->control;
    return item->control ? (OSErr)noErr : (OSErr)errItemNotControl;
}

void GetDialogItemText(Handle inItem, Str255 outText)
{
    if (!outText)
        return;
    std::string text;
    if (IsValidControlHandle((ControlRef)inItem))
        text = TextOf((ControlRef)inItem);
    else if (IsHandleValid(inItem) && *inItem)
        text.assign(*inItem, (size_t)GetHandleSize(inItem));
    outText[0] = (unsigned char)std::min<size_t>(text.size(), 255);
    std::copy_n(text.begin(), outText[0], outText + 1);
}

void SetDialogItemText(Handle inItem, ConstStr255Param inText)
{
    if (!inText)
        return;
    if (IsValidControlHandle((ControlRef)inItem))
        SetTextOf((ControlRef)inItem, inText);
    else if (IsHandleValid(inItem))
        PtrToXHand(inText + 1, inItem, inText[0]);
}

void SelectDialogItemText(DialogRef inDialog, DialogItemIndex inItem, SInt16 inStart, SInt16 inEnd)
{
    Dialog* dialog = Find(inDialog);
    const Item* item = dialog ? dialog->ItemAt(inItem) : nullptr;
    if (!item || item->Kind() != kEditTextDialogItem || !item->control)
        return;
    ControlRef focus = nullptr;
    GetKeyboardFocus(dialog->window, &focus);
    if (focus != item->control)
        SetKeyboardFocus(dialog->window, item->control, kControlFocusNextPart);
    const ControlEditTextSelectionRec selection = { inStart, inEnd };
    SetControlData(item->control, kControlEntireControl, kControlEditTextSelectionTag, sizeof selection,
                   &selection);
}

void HideDialogItem(DialogRef inDialog, DialogItemIndex inItem)
{
    Dialog* dialog = Find(inDialog);
    Item* item = dialog ? dialog->ItemAt(inItem) : nullptr;
    if (!item || IsAside(item->box))
        return;
    if (item->Shown())
        HideControl(item->Shown());
    InvalidateItem(*dialog, *item);
    OffsetRect(&item->box, kAside, 0);
}

void ShowDialogItem(DialogRef inDialog, DialogItemIndex inItem)
{
    Dialog* dialog = Find(inDialog);
    Item* item = dialog ? dialog->ItemAt(inItem) : nullptr;
    if (!item || !IsAside(item->box))
        return;
    OffsetRect(&item->box, -kAside, 0);
    if (item->Shown()) {
        SetControlBounds(item->Shown(), &item->box);
        ShowControl(item->Shown());
    }
    InvalidateItem(*dialog, *item);
}

DialogItemIndexZeroBased FindDialogItem(DialogRef inDialog, Point inPoint)
{
    const Dialog* dialog = Find(inDialog);
    for (size_t i = 0; dialog && i < dialog->items.size(); ++i)
        if (PtInRect(inPoint, &dialog->items[i].box))
            return (DialogItemIndexZeroBased)i;
    return -1;
}

SInt16 GetDialogKeyboardFocusItem(DialogRef inDialog)
{
    const Dialog* dialog = Find(inDialog);
    ControlRef focus = nullptr;
    if (!dialog || GetKeyboardFocus(dialog->window, &focus) != noErr || !focus)
        return -1;
    const DialogItemIndex index = dialog->IndexOf(focus);
    return index ? index : (SInt16)-1;
}

void AppendDITL(DialogRef inDialog, Handle inItemList, DITLMethod inMethod)
{
    if (Dialog* dialog = Find(inDialog))
        Append(*dialog, ItemsOf(inItemList), inMethod);
}

OSErr AppendDialogItemList(DialogRef inDialog, SInt16 inItemListID, DITLMethod inMethod)
{
    Dialog* dialog = Find(inDialog);
    if (!dialog)
        return inDialog ? (OSErr)errNotDialogRef : (OSErr)paramErr;
    const Handle list = GetResource('DITL', inItemListID);
    if (!list)
        return resNotFound;
    Append(*dialog, ItemsOf(list), inMethod);
    return noErr;
}

void ShortenDITL(DialogRef inDialog, DialogItemIndex inCount)
{
    Dialog* dialog = Find(inDialog);
    if (!dialog || inCount <= 0)
        return;
    const size_t count = std::min((size_t)inCount, dialog->items.size());
    RemoveItems(*dialog, dialog->items.size() - count, count, true);
}

OSStatus InsertDialogItem(DialogRef inDialog, DialogItemIndex inAfterItem, DialogItemType inType,
                          Handle inItemHandle, const Rect* inBox)
{
    Dialog* dialog = Find(inDialog);
    if (!dialog)
        return inDialog ? (OSStatus)errNotDialogRef : (OSStatus)paramErr;
    if (!inBox || inAfterItem < 0 || (size_t)inAfterItem > dialog->items.size())
        return paramErr;
    Item item;
    item.type = inType;
    item.box = *inBox;
    if (IsValidControlHandle((ControlRef)inItemHandle))
        item.control = (ControlRef)inItemHandle;
    else
        item.handle = inItemHandle;
    FitView(*dialog, item);
    InvalidateItem(*dialog, item);
    dialog->items.insert(dialog->items.begin() + inAfterItem, std::move(item));
    return noErr;
}

OSStatus RemoveDialogItems(DialogRef inDialog, DialogItemIndex inItem, DialogItemIndex inCount,
                           Boolean inDisposeItemData)
{
    Dialog* dialog = Find(inDialog);
    if (!dialog)
        return inDialog ? (OSStatus)errNotDialogRef : (OSStatus)paramErr;
    if (inItem < 1 || inCount < 0 || (size_t)inItem + (size_t)inCount - 1 > dialog->items.size())
        return paramErr;
    RemoveItems(*dialog, (size_t)inItem - 1, (size_t)inCount, inDisposeItemData);
    return noErr;
}

OSErr MoveDialogItem(DialogRef inDialog, DialogItemIndex inItem, SInt16 inH, SInt16 inV)
{
    Dialog* dialog = Find(inDialog);
    Item* item = dialog ? dialog->ItemAt(inItem) : nullptr;
    if (!item)
        return paramErr;
    Rect box = item->box;
    OffsetRect(&box, (short)(inH - box.left), (short)(inV - box.top));
    PlaceItem(*dialog, *item, box);
    return noErr;
}

OSErr SizeDialogItem(DialogRef inDialog, DialogItemIndex inItem, SInt16 inWidth, SInt16 inHeight)
{
    Dialog* dialog = Find(inDialog);
    Item* item = dialog ? dialog->ItemAt(inItem) : nullptr;
    if (!item)
        return paramErr;
    Rect box = item->box;
    box.right = (short)(box.left + inWidth);
    box.bottom = (short)(box.top + inHeight);
    PlaceItem(*dialog, *item, box);
    return noErr;
}

OSErr SetDialogDefaultItem(DialogRef inDialog, DialogItemIndex inItem)
{
    Dialog* dialog = Find(inDialog);
    const Item* item = dialog ? dialog->ItemAt(inItem) : nullptr;
    if (!dialog || (inItem != 0 && !item))
        return paramErr;
    dialog->defaultItem = inItem;
    return (OSErr)SetWindowDefaultButton(dialog->window, item ? item->control : nullptr);
}

OSErr SetDialogCancelItem(DialogRef inDialog, DialogItemIndex inItem)
{
    Dialog* dialog = Find(inDialog);
    const Item* item = dialog ? dialog->ItemAt(inItem) : nullptr;
    if (!dialog || (inItem != 0 && !item))
        return paramErr;
    dialog->cancelItem = inItem;
    return (OSErr)SetWindowCancelButton(dialog->window, item ? item->control : nullptr);
}

SInt16 GetDialogDefaultItem(DialogRef inDialog)
{
    const Dialog* dialog = Find(inDialog);
    return dialog ? dialog->defaultItem : (SInt16)0;
}

SInt16 GetDialogCancelItem(DialogRef inDialog)
{
    const Dialog* dialog = Find(inDialog);
    return dialog ? dialog->cancelItem : (SInt16)0;
}

OSErr SetDialogTracksCursor(DialogRef inDialog, Boolean inTracks)
{
    Dialog* dialog = Find(inDialog);
    if (!dialog)
        return inDialog ? (OSErr)errNotDialogRef : (OSErr)paramErr;
    dialog->tracksCursor = inTracks;
    return noErr;
}

LAMPBLACK_END_C
