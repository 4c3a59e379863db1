// Sheets. A sheet lies just in front of its parent, centred below its title bar.
#include "Sheets.h"

#include "Activation.h"
#include "Bounds.h"
#include "Presenter.h"
#include "Visibility.h"
#include "WindowList.h"

namespace lampblack::windows {

namespace {

bool IsSheetClass(const WindowRecord& inWindow)
{
    const WindowClass windowClass = inWindow.traits->windowClass;
    return windowClass == kSheetWindowClass || windowClass == kSheetAlertWindowClass;
}

bool IsSheetOf(const WindowRecord& inWindow, WindowRef inParent)
{
    return inParent && inWindow.unavailable == inParent && IsSheetClass(inWindow);
}

void Place(WindowRecord& inSheet, const WindowRecord& inParent)
{
    const int left = inParent.content.left + (Width(inParent.content) - Width(inSheet.content)) / 2;
    const Rect place =
        Shifted(inSheet.content, left - inSheet.content.left, inParent.content.top - inSheet.content.top);
    ChangeBounds(inSheet.Ref(), place, 0);
}

std::vector<WindowRef> SheetsOf(WindowRef inParent)
{
    std::vector<WindowRef> sheets;
    for (WindowRecord* window : List().Order())
        if (IsSheetOf(*window, inParent))
            sheets.push_back(window->Ref());
    return sheets;
}

} // namespace

void PlaceSheetsOf(WindowRef inParent)
{
    for (WindowRef sheet : SheetsOf(inParent)) {
        const WindowRecord* parent = Find(inParent);
        WindowRecord* window = Find(sheet);
        if (window && parent)
            Place(*window, *parent);
    }
}

void RaiseSheetsOf(WindowRecord& inParent)
{
    const std::vector<WindowRef> sheets = SheetsOf(inParent.Ref());
    for (WindowRef sheet : sheets) {
        WindowRecord* window = Find(sheet);
        if (!window || !List().MoveInFrontOf(*window, inParent))
            continue;
        Screen().LayoutChanged();
        Screen().WindowDamaged(*window);
    }
}

void HideSheetsOf(WindowRef inParent)
{
    for (WindowRef sheet : SheetsOf(inParent))
        HideSheetWindow(sheet);
}

WindowRecord* SheetOf(WindowRef inParent)
{
    return FirstWindow(
        [=](const WindowRecord& window) { return IsSheetOf(window, inParent) && window.OnScreen(); });
}

bool HasSheet(const WindowRecord& inParent)
{
    return SheetOf(const_cast<WindowRecord&>(inParent).Ref()) != nullptr;
}

} // namespace lampblack::windows

using namespace lampblack::windows;

OSStatus ShowSheetWindow(WindowRef inSheet, WindowRef inParent)
{
    WindowRecord* sheet = Find(inSheet);
    WindowRecord* parent = Find(inParent);
    if (!sheet || !parent)
        return errInvalidWindowRef;
    if (sheet == parent || !IsSheetClass(*sheet) || sheet->visible)
        return paramErr;
    sheet->modality = kWindowModalityWindowModal;
    sheet->unavailable = inParent;
    sheet->layer = parent->layer;
    List().Remove(*sheet);
    List().AddInFront(*sheet);
    List().MoveInFrontOf(*sheet, *parent);
    Place(*sheet, *parent);
    ShowWindow(inSheet);
    return noErr;
}

OSStatus HideSheetWindow(WindowRef inSheet)
{
    WindowRecord* sheet = Find(inSheet);
    if (!sheet)
        return errInvalidWindowRef;
    if (!sheet->unavailable || !IsSheetClass(*sheet))
        return paramErr;
    sheet->unavailable = nullptr;
    sheet->modality = kWindowModalityNone;
    HideWindow(inSheet);
    return noErr;
}

OSStatus GetSheetWindowParent(WindowRef inSheet, WindowRef* outParent)
{
    const WindowRecord* sheet = Find(inSheet);
    if (!sheet)
        return errInvalidWindowRef;
    if (!outParent || !IsSheetClass(*sheet) || !sheet->unavailable)
        return paramErr;
    *outParent = sheet->unavailable;
    return noErr;
}
