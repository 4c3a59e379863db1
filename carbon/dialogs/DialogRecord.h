// The data behind a DialogRef: a window and its numbered items. Every button, control and text item is a
// control of the window, embedded in its root.
#ifndef LAMPBLACK_DIALOGS_DIALOGRECORD_H
#define LAMPBLACK_DIALOGS_DIALOGRECORD_H

#include "dialogs/ItemList.h"

#include <Carbon/Dialogs.h>
#include <Carbon/Icons.h>

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace lampblack::dialogs {

struct ColorIconRelease {
    void operator()(CIconHandle inIcon) const { DisposeCIcon(inIcon); }
};

struct Item {
    DialogItemType type = kUserDialogItem; // with the disable bit
    Rect box = { 0, 0, 0, 0 };             // moved aside while the item is hidden
    ControlRef control = nullptr;          // of control and text items
    Handle handle = nullptr;               // of the others: a user item's procedure, an icon, a picture
    std::string text;                      // of a static text item, before ^0 to ^3 are replaced

    ControlRef view = nullptr; // what shows an icon or a picture
    OSType systemIcon = 0;     // in the place of an icon that is not there
    // The record that was made of a 'cicn'. It lasts as long as the item, since an application that puts
    // another in its place may put it back.
    std::unique_ptr<CIconPtr, ColorIconRelease> colorIcon;

    DialogItemType Kind() const { return (DialogItemType)(type & ~kItemDisableBit); }
    bool IsEnabled() const { return !(type & kItemDisableBit); }
    ControlRef Shown() const { return control ? control : view; }
};

// Hidden items lie far to the right.
inline bool IsAside(const Rect& inBox)
{
    constexpr SInt16 kHiddenFrom = 8192;
    return inBox.left > kHiddenFrom;
}

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

// Takes the icon or picture with this ID, if the item is of such a kind.
void LoadImage(Item& ioItem, SInt16 inID);
// Gives an item the view that its kind and box ask for, or takes it away. It draws nothing.
void FitView(const Dialog& inDialog, Item& ioItem);
void DisposeView(Item& ioItem);

void DrawUserItems(Dialog& inDialog);
// The item that answers a click at a local point where no control does; 0 for none.
DialogItemIndex ItemForClick(Dialog& inDialog, Point inWhere);
Point ToLocal(const Dialog& inDialog, Point inGlobal);
void PressItem(Dialog& inDialog, DialogItemIndex inItem); // as a key does: the button flashes

} // namespace lampblack::dialogs

#endif
