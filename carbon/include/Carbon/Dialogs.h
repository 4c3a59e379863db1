// The Dialog Manager: windows with a numbered list of items, made from 'DLOG' and 'DITL' resources.
// Begin at GetNewDialog and ModalDialog. Items are numbered from 1.
#ifndef LAMPBLACK_CARBON_DIALOGS_H
#define LAMPBLACK_CARBON_DIALOGS_H

#include <Carbon/Controls.h>
#include <Carbon/MacWindows.h>

typedef SInt16 DialogItemIndex;
typedef DialogItemIndex DialogItemIndexZeroBased;
typedef SInt16 DialogItemType;

enum {
    kControlDialogItem = 4,
    kButtonDialogItem = kControlDialogItem | 0,
    kCheckBoxDialogItem = kControlDialogItem | 1,
    kRadioButtonDialogItem = kControlDialogItem | 2,
    kResourceControlDialogItem = kControlDialogItem | 3,
    kStaticTextDialogItem = 8,
    kEditTextDialogItem = 16,
    kIconDialogItem = 32,
    kPictureDialogItem = 64,
    kUserDialogItem = 0,
    kHelpDialogItem = 1,
    kItemDisableBit = 128,

    ctrlItem = 4,
    btnCtrl = 0,
    chkCtrl = 1,
    radCtrl = 2,
    resCtrl = 3,
    statText = 8,
    editText = 16,
    iconItem = 32,
    picItem = 64,
    userItem = 0,
    itemDisable = 128
};
enum { kStdOkItemIndex = 1, kStdCancelItemIndex = 2, ok = kStdOkItemIndex, cancel = kStdCancelItemIndex };

// Where AppendDITL puts the new items; a negative method is an item to stand relative to.
typedef SInt16 DITLMethod;
enum { overlayDITL = 0, appendDITLRight = 1, appendDITLBottom = 2 };

enum {
    kDialogFlagsUseThemeBackground = 1 << 0,
    kDialogFlagsUseControlHierarchy = 1 << 1,
    kDialogFlagsHandleMovableModal = 1 << 2,
    kDialogFlagsUseThemeControls = 1 << 3
};

typedef Boolean (*ModalFilterProcPtr)(DialogRef inDialog, EventRecord* ioEvent, DialogItemIndex* outItemHit);
typedef void (*UserItemProcPtr)(DialogRef inDialog, DialogItemIndex inItem);
typedef ModalFilterProcPtr ModalFilterUPP;
typedef UserItemProcPtr UserItemUPP;

LAMPBLACK_BEGIN_C

ModalFilterUPP NewModalFilterUPP(ModalFilterProcPtr inProc);
void DisposeModalFilterUPP(ModalFilterUPP inUPP);
Boolean InvokeModalFilterUPP(DialogRef inDialog, EventRecord* ioEvent, DialogItemIndex* outItemHit,
                             ModalFilterUPP inUPP);
UserItemUPP NewUserItemUPP(UserItemProcPtr inProc);
void DisposeUserItemUPP(UserItemUPP inUPP);
void InvokeUserItemUPP(DialogRef inDialog, DialogItemIndex inItem, UserItemUPP inUPP);

// GetNewDialog
//
// Makes a dialog from 'DLOG' inDialogID and the 'DITL' that it names. NULL when the 'DLOG' is missing or too
// short; an item list that ends early gives the items before its end.
//
// Ownership:  release with DisposeDialog. inStorage is ignored.
DialogRef GetNewDialog(SInt16 inDialogID, void* inStorage, WindowRef inBehind);

// The item list is copied; the caller keeps its handle.
DialogRef NewDialog(void* inStorage, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible,
                    SInt16 inProcID, WindowRef inBehind, Boolean inGoAway, SInt32 inReference,
                    Handle inItemList);
DialogRef NewColorDialog(void* inStorage, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible,
                         SInt16 inProcID, WindowRef inBehind, Boolean inGoAway, SInt32 inReference,
                         Handle inItemList);
OSErr NewFeaturesDialog(void* inStorage, const Rect* inBounds, ConstStr255Param inTitle, Boolean inVisible,
                        SInt16 inProcID, WindowRef inBehind, Boolean inGoAway, SInt32 inReference,
                        Handle inItemList, UInt32 inFlags, DialogRef* outDialog);
void DisposeDialog(DialogRef inDialog);

// A dialog and its window
WindowRef GetDialogWindow(DialogRef inDialog);
DialogRef GetDialogFromWindow(WindowRef inWindow);
CGrafPtr GetDialogPort(DialogRef inDialog);
void SetPortDialogPort(DialogRef inDialog);

// Items
DialogItemIndex CountDITL(DialogRef inDialog);
void GetDialogItem(DialogRef inDialog, DialogItemIndex inItem, DialogItemType* outType, Handle* outItem,
                   Rect* outBox);
void SetDialogItem(DialogRef inDialog, DialogItemIndex inItem, DialogItemType inType, Handle inItemHandle,
                   const Rect* inBox);
OSErr GetDialogItemAsControl(DialogRef inDialog, DialogItemIndex inItem, ControlRef* outControl);
void GetDialogItemText(Handle inItem, Str255 outText);
void SetDialogItemText(Handle inItem, ConstStr255Param inText);
void SelectDialogItemText(DialogRef inDialog, DialogItemIndex inItem, SInt16 inStart, SInt16 inEnd);
void HideDialogItem(DialogRef inDialog, DialogItemIndex inItem);
void ShowDialogItem(DialogRef inDialog, DialogItemIndex inItem);
DialogItemIndexZeroBased FindDialogItem(DialogRef inDialog, Point inPoint); // -1: none
SInt16 GetDialogKeyboardFocusItem(DialogRef inDialog);                      // -1: none
void AppendDITL(DialogRef inDialog, Handle inItemList, DITLMethod inMethod);
OSErr AppendDialogItemList(DialogRef inDialog, SInt16 inItemListID, DITLMethod inMethod);
void ShortenDITL(DialogRef inDialog, DialogItemIndex inCount);
// After item 0: before all others. The item's data is a control, or what SetDialogItem takes.
OSStatus InsertDialogItem(DialogRef inDialog, DialogItemIndex inAfterItem, DialogItemType inType,
                          Handle inItemHandle, const Rect* inBox);
OSStatus RemoveDialogItems(DialogRef inDialog, DialogItemIndex inItem, DialogItemIndex inCount,
                           Boolean inDisposeItemData);
OSErr MoveDialogItem(DialogRef inDialog, DialogItemIndex inItem, SInt16 inH, SInt16 inV);
OSErr SizeDialogItem(DialogRef inDialog, DialogItemIndex inItem, SInt16 inWidth, SInt16 inHeight);

// Default and cancel items, and the tracking of the cursor over edit text
OSErr SetDialogDefaultItem(DialogRef inDialog, DialogItemIndex inItem);
OSErr SetDialogCancelItem(DialogRef inDialog, DialogItemIndex inItem);
SInt16 GetDialogDefaultItem(DialogRef inDialog);
SInt16 GetDialogCancelItem(DialogRef inDialog);
OSErr SetDialogTracksCursor(DialogRef inDialog, Boolean inTracks);

// Text for ^0 to ^3 in static text items. A NULL string is left as it was.
void ParamText(ConstStr255Param inText0, ConstStr255Param inText1, ConstStr255Param inText2,
               ConstStr255Param inText3);
void GetParamText(StringPtr outText0, StringPtr outText1, StringPtr outText2, StringPtr outText3);

// Running a dialog
void ModalDialog(ModalFilterUPP inFilter, DialogItemIndex* outItemHit);
Boolean IsDialogEvent(const EventRecord* inEvent);
Boolean DialogSelect(const EventRecord* inEvent, DialogRef* outDialog, DialogItemIndex* outItemHit);
OSErr GetStdFilterProc(ModalFilterUPP* outFilter);
Boolean StdFilterProc(DialogRef inDialog, EventRecord* ioEvent, DialogItemIndex* outItemHit);
void DrawDialog(DialogRef inDialog);
void UpdateDialog(DialogRef inDialog, RgnHandle inUpdateRegion);
void DialogCut(DialogRef inDialog);
void DialogCopy(DialogRef inDialog);
void DialogPaste(DialogRef inDialog);
void DialogDelete(DialogRef inDialog);

LAMPBLACK_END_C

#endif
