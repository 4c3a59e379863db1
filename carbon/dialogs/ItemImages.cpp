// Icon and picture items: where their handles come from, the views that show them, and their drawing.
#include "controls/ItemView.h"
#include "dialogs/DialogRecord.h"

#include <Carbon/MacMemory.h>
#include <Carbon/QDCopying.h>
#include <Carbon/QDPictures.h>
#include <Carbon/Resources.h>

#include <cstring>

namespace lampblack::dialogs {

namespace {

// Icons 0 to 2 are those of alerts; a file that uses them need not bring its own.
OSType SystemIconFor(SInt16 inID)
{
    static constexpr OSType kIcons[] = { kAlertStopIcon, kAlertNoteIcon, kAlertCautionIcon };
    return inID >= 0 && inID < (SInt16)std::size(kIcons) ? kIcons[inID] : 0;
}

void DrawSystemIcon(const Rect& inBox, OSType inIcon)
{
    IconRef icon = nullptr;
    if (GetIconRef(kOnSystemDisk, kSystemIconsCreator, inIcon, &icon) != noErr)
        return;
    PlotIconRef(&inBox, kAlignNone, kTransformNone, kIconServicesNormalUsageFlag, icon);
    ReleaseIconRef(icon);
}

// A purged resource is read again.
bool IsLoaded(Handle inHandle)
{
    if (!inHandle || !IsHandleValid(inHandle))
        return false;
    if (!*inHandle)
        LoadResource(inHandle);
    return *inHandle != nullptr;
}

// An 'ICON' has no mask, and its white square would stand out from a dialog: what lies outside of its outline
// is left alone.
void DrawPlainIcon(const Rect& inBox, Handle inIcon)
{
    constexpr Size kBytes = 128; // 32 rows of four; what is longer brings its mask
    static const Handle outlined = NewHandle(2 * kBytes);
    if (!outlined || GetHandleSize(inIcon) != kBytes) {
        PlotIconHandle(&inBox, kAlignNone, kTransformNone, inIcon);
        return;
    }
    std::memcpy(*outlined, *inIcon, kBytes);
    CalcMask(*inIcon, *outlined + kBytes, 4, 4, 32, 2);
    PlotIconHandle(&inBox, kAlignNone, kTransformNone, outlined);
}

// Which kind of icon a handle holds its bytes tell.
void DrawIconItem(const Item& inItem)
{
    if (!inItem.handle && inItem.systemIcon)
        return DrawSystemIcon(inItem.box, inItem.systemIcon);
    if (!IsLoaded(inItem.handle))
        return;
    if (PlotCIconHandle(&inItem.box, kAlignNone, kTransformNone, (CIconHandle)inItem.handle) != noErr)
        DrawPlainIcon(inItem.box, inItem.handle);
}

void DrawView(ControlRef inView)
{
    Dialog* dialog = FindByWindow(GetControlOwner(inView));
    if (!dialog)
        return;
    for (const Item& item : dialog->items) {
        if (item.view != inView)
            continue;
        if (item.Kind() == kIconDialogItem)
            DrawIconItem(item);
        else if (IsLoaded(item.handle))
            DrawPicture((PicHandle)item.handle, &item.box);
        return;
    }
}

} // namespace

void LoadImage(Item& ioItem, SInt16 inID)
{
    if (ioItem.Kind() == kPictureDialogItem)
        ioItem.handle = (Handle)GetPicture(inID);
    if (ioItem.Kind() != kIconDialogItem)
        return;
    ioItem.colorIcon.reset(GetCIcon(inID));
    ioItem.handle = ioItem.colorIcon ? (Handle)ioItem.colorIcon.get() : GetIcon(inID);
    ioItem.systemIcon = SystemIconFor(inID);
}

void FitView(const Dialog& inDialog, Item& ioItem)
{
    const bool image = ioItem.Kind() == kIconDialogItem || ioItem.Kind() == kPictureDialogItem;
    if (!image || ioItem.control) {
        DisposeView(ioItem);
        return;
    }
    if (!IsValidControlHandle(ioItem.view))
        ioItem.view = controls::NewItemView(inDialog.window, ioItem.box, DrawView);
    SetControlBounds(ioItem.view, &ioItem.box);
    SetControlVisibility(ioItem.view, !IsAside(ioItem.box), false);
}

void DisposeView(Item& ioItem)
{
    if (const ControlRef view = std::exchange(ioItem.view, nullptr))
        DisposeControl(view);
}

} // namespace lampblack::dialogs
