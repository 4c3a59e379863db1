// The data behind a DialogRef: a window and its numbered items. Every button, control and text item is a
// control of the window, embedded in its root.
#ifndef LAMPBLACK_DIALOGS_DIALOGRECORD_H
#define LAMPBLACK_DIALOGS_DIALOGRECORD_H

#include "dialogs/ItemList.h"

#include <Carbon/Dialogs.h>

#include <array>
#include <string>
#include <vector>

namespace lampblack::dialogs {

struct Item {
    DialogItemType type = kUserDialogItem; // with the disable bit
    Rect box = { 0, 0, 0, 0 };             // moved aside while the item is hidden
    ControlRef control = nullptr;          // of control and text items
    Handle handle = nullptr; // of the others: a user item's procedure, or what the application set
    std::string text;        // of a static text item, before ^0 to ^3 are replaced

    DialogItemType Kind() const { return (DialogItemType)(type & ~kItemDisableBit); }
    bool IsEnabled() const { return !(type & kItemDisableBit); }
};

struct Dialog {
    WindowRef window = nullptr;
    std::vector<Item> items;
    DialogItemIndex defaultItem = kStdOkItemIndex;
    DialogItemIndex cancelItem = 0;
    DialogItemIndex hitItem = 0; // by the event that ModalDialog is at
    bool tracksCursor = false;

    DialogRef Ref() { return (DialogRef)this; }
    Item* ItemAt(DialogItemIndex inItem)
    {
        return inItem >= 1 && (size_t)inItem <= items.size() ? &items[(size_t)inItem - 1] : nullptr;
    }
    DialogItemIndex IndexOf(ControlRef inControl) const; // 0: no item
};

Dialog* Find(DialogRef inDialog);
Dialog* FindByWindow(WindowRef inWindow);
Dialog* NewRecord(WindowRef inWindow);
void DeleteRecord(Dialog* ioDialog);
// The dialog and the item that a control belongs to; null when none.
Item* FindItemOfControl(ControlRef inControl);

// Adds items, moved by an offset; their controls are made as they come.
void AddItems(Dialog& ioDialog, const std::vector<ItemTemplate>& inItems, Point inOffset);
void RemoveItems(Dialog& ioDialog, size_t inFirst, size_t inCount, bool inDisposeControls);
std::vector<ItemTemplate> ItemsOf(Handle inItemList);

// The current texts of ParamText put in the place of ^0 to ^3.
std::string WithParameters(const std::string& inText);
void ShowParameters(Dialog& inDialog); // in all static text items that have them

// Draws items that are no controls.
void DrawUserItems(Dialog& inDialog);
void PressItem(Dialog& inDialog, DialogItemIndex inItem); // as a key does: the button flashes

} // namespace lampblack::dialogs

#endif
