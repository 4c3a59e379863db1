#include "dialogs/DialogRecord.h"

#include "memory/ReferenceTable.h"

#include <Carbon/MacMemory.h>
#include <Carbon/MacWindows.h>
#include <Carbon/Quickdraw.h>

#include <algorithm>
#include <utility>

namespace lampblack::dialogs {

namespace {

memory::ReferenceTable<Dialog>& Table()
{
    static auto& table = *new memory::ReferenceTable<Dialog>;
    return table;
}

void SetText(ControlRef inControl, ResType inTag, const std::string& inText)
{
    SetControlData(inControl, kControlEntireControl, inTag, (Size)inText.size(), inText.data());
}

// Made hidden, so that nothing is drawn before all of it is known, and shown at the end.
ControlRef MakeControl(WindowRef inWindow, const Rect& inBox, const std::string& inTitle, SInt16 inProcID,
                       SInt16 inMaximum)
{
    Str255 title;
    title[0] = (unsigned char)inTitle.size();
    std::copy(inTitle.begin(), inTitle.end(), title + 1);
    return NewControl(inWindow, &inBox, title, false, 0, 0, inMaximum, inProcID, 0);
}

ControlRef ControlFromResource(WindowRef inWindow, SInt16 inID, const Rect& inBox)
{
    const ControlRef control = GetNewControl(inID, inWindow);
    if (control)
        SetControlBounds(control, &inBox);
    return control;
}

ControlRef TextControl(WindowRef inWindow, const Rect& inBox, const std::string& inText, SInt16 inProcID)
{
    const ControlRef control = MakeControl(inWindow, inBox, {}, inProcID, 0);
    if (control)
        SetText(control, kControlEditTextTextTag, inText);
    return control;
}

ControlRef ControlFor(WindowRef inWindow, DialogItemType inKind, const Rect& inBox,
                      const ItemTemplate& inTemplate)
{
    switch (inKind) {
    case kButtonDialogItem: return MakeControl(inWindow, inBox, inTemplate.text, kControlPushButtonProc, 1);
    case kCheckBoxDialogItem: return MakeControl(inWindow, inBox, inTemplate.text, kControlCheckBoxProc, 1);
    case kRadioButtonDialogItem:
        return MakeControl(inWindow, inBox, inTemplate.text, kControlRadioButtonProc, 1);
    case kResourceControlDialogItem: return ControlFromResource(inWindow, inTemplate.resourceID, inBox);
    case kStaticTextDialogItem:
        return TextControl(inWindow, inBox, WithParameters(inTemplate.text), kControlStaticTextProc);
    case kEditTextDialogItem: return TextControl(inWindow, inBox, inTemplate.text, kControlEditTextProc);
    default: return nullptr;
    }
}

void AddItem(Dialog& ioDialog, const ItemTemplate& inTemplate, Point inOffset)
{
    Item item;
    item.type = inTemplate.type;
    item.box = inTemplate.box;
    OffsetRect(&item.box, inOffset.h, inOffset.v);
    if (item.Kind() == kStaticTextDialogItem)
        item.text = inTemplate.text;
    item.control = ControlFor(ioDialog.window, item.Kind(), item.box, inTemplate);
    LoadImage(item, inTemplate.resourceID);
    FitView(ioDialog, item);
    const ControlRef control = item.control;
    const bool fromResource = item.Kind() == kResourceControlDialogItem;
    ioDialog.items.push_back(std::move(item));
    if (control && !fromResource)
        ShowControl(control);
}

// The first edit text is where typing goes.
void FocusFirstText(Dialog& inDialog)
{
    ControlRef focus = nullptr;
    if (GetKeyboardFocus(inDialog.window, &focus) != noErr || focus)
        return;
    for (const Item& item : inDialog.items)
        if (item.Kind() == kEditTextDialogItem && item.control &&
            SetKeyboardFocus(inDialog.window, item.control, kControlFocusNextPart) == noErr) {
            const ControlEditTextSelectionRec all = { 0, 32767 };
            SetControlData(item.control, kControlEntireControl, kControlEditTextSelectionTag, sizeof all,
                           &all);
            return;
        }
}

} // namespace

DialogItemIndex Dialog::IndexOf(ControlRef inControl) const
{
    for (size_t i = 0; inControl && i < items.size(); ++i)
        if (items[i].control == inControl)
            return (DialogItemIndex)(i + 1);
    return 0;
}

Dialog* Find(DialogRef inDialog)
{
    return Table().Find(inDialog);
}

Dialog* FindByWindow(WindowRef inWindow)
{
    Dialog* found = nullptr;
    if (inWindow)
        Table().ForEach([&](Dialog* dialog) {
            if (dialog->window == inWindow)
                found = dialog;
        });
    return found;
}

Dialog* NewRecord(WindowRef inWindow)
{
    Dialog* dialog = Table().New();
    dialog->window = inWindow;
    return dialog;
}

void DeleteRecord(Dialog* ioDialog)
{
    Table().Delete(ioDialog);
}

Item* FindItemOfControl(ControlRef inControl)
{
    Dialog* dialog = FindByWindow(GetControlOwner(inControl));
    return dialog ? dialog->ItemAt(dialog->IndexOf(inControl)) : nullptr;
}

void AddItems(Dialog& ioDialog, const std::vector<ItemTemplate>& inItems, Point inOffset)
{
    for (const ItemTemplate& item : inItems)
        AddItem(ioDialog, item, inOffset);
    FocusFirstText(ioDialog);
}

void RemoveItems(Dialog& ioDialog, size_t inFirst, size_t inCount, bool inDisposeControls)
{
    const size_t first = std::min(inFirst, ioDialog.items.size());
    const size_t last = first + std::min(inCount, ioDialog.items.size() - first);
    std::vector<ControlRef> controls;
    for (size_t i = first; i < last; ++i) {
        controls.push_back(ioDialog.items[i].control);
        if (!inDisposeControls)
            ioDialog.items[i].colorIcon.release(); // the application's from now on
        DisposeView(ioDialog.items[i]);
    }
    ioDialog.items.erase(ioDialog.items.begin() + (ptrdiff_t)first, ioDialog.items.begin() + (ptrdiff_t)last);
    for (ControlRef control : controls)
        if (inDisposeControls)
            DisposeControl(control);
}

std::vector<ItemTemplate> ItemsOf(Handle inItemList)
{
    if (!inItemList || !IsHandleValid(inItemList) || !*inItemList)
        return {};
    return ParseItemList({ (const uint8_t*)*inItemList, (size_t)GetHandleSize(inItemList) });
}

// --- ParamText

namespace {

std::array<std::string, 4>& Parameters()
{
    static auto& parameters = *new std::array<std::string, 4>;
    return parameters;
}

bool HasParameters(const std::string& inText)
{
    for (size_t at = 0; (at = inText.find('^', at)) != std::string::npos; ++at)
        if (at + 1 < inText.size() && inText[at + 1] >= '0' && inText[at + 1] <= '3')
            return true;
    return false;
}

} // namespace

std::string WithParameters(const std::string& inText)
{
    std::string text;
    for (size_t i = 0; i < inText.size(); ++i) {
        const bool parameter =
            inText[i] == '^' && i + 1 < inText.size() && inText[i + 1] >= '0' && inText[i + 1] <= '3';
        if (parameter)
            text += Parameters()[(size_t)(inText[++i] - '0')];
        else
            text += inText[i];
    }
    return text;
}

void ShowParameters(Dialog& inDialog)
{
    for (const Item& item : inDialog.items)
        if (item.control && item.Kind() == kStaticTextDialogItem && HasParameters(item.text))
            SetText(item.control, kControlStaticTextTextTag, WithParameters(item.text));
}

} // namespace lampblack::dialogs

using namespace lampblack::dialogs;

LAMPBLACK_BEGIN_C

void ParamText(ConstStr255Param inText0, ConstStr255Param inText1, ConstStr255Param inText2,
               ConstStr255Param inText3)
{
    const ConstStr255Param texts[] = { inText0, inText1, inText2, inText3 };
    for (size_t i = 0; i < std::size(texts); ++i)
        if (texts[i])
            Parameters()[i].assign((const char*)texts[i] + 1, texts[i][0]);
}

void GetParamText(StringPtr outText0, StringPtr outText1, StringPtr outText2, StringPtr outText3)
{
    const StringPtr texts[] = { outText0, outText1, outText2, outText3 };
    for (size_t i = 0; i < std::size(texts); ++i) {
        if (!texts[i])
            continue;
        const std::string& text = Parameters()[i];
        texts[i][0] = (unsigned char)text.size();
        std::copy(text.begin(), text.end(), texts[i] + 1);
    }
}

LAMPBLACK_END_C
