#include "ViewerWindow.h"

#include "ViewerIDs.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr Point kDialogPlace = { 60, 40 };
constexpr short kMargin = 24;
constexpr ResType kWindowPositionType = 'wpos';        // as the toolkit keeps places
constexpr UInt32 kPageUpKey = 116, kPageDownKey = 121; // virtual keys

void PascalFrom(const std::string& inText, Str255 outText)
{
    outText[0] = (unsigned char)std::min<size_t>(inText.size(), 255);
    std::memcpy(outText + 1, inText.data(), outText[0]);
}

} // namespace

ViewerWindow::ViewerWindow()
    : CWindow(kViewerWindow, kDocumentWindowClass, kWindowStandardHandlerAttribute | kWindowCloseBoxAttribute)
{
    SetWindowActivationScope(fWindow, kWindowActivationScopeIndependent); // in use below a modal dialog, too
    SetThemeWindowBackground(fWindow, kThemeBrushDialogBackgroundActive, true);
    constexpr EventTypeSpec kKeys[] = { { kEventClassKeyboard, kEventRawKeyDown },
                                        { kEventClassKeyboard, kEventRawKeyRepeat } };
    InstallApplicationEventHandler(NewEventHandlerUPP(HandleKey), 2, kKeys, this, nullptr);
}

ViewerWindow::~ViewerWindow()
{
    if (fDialog)
        DisposeDialog(fDialog);
}

void ViewerWindow::ShowFile(const std::filesystem::path& inPath, const DialogFile& inFile)
{
    fFile = &inFile;
    SetStaticTextControlTitle(fWindow, kFileText, inPath.filename().c_str());
    FillList();
    Go(0);
}

// Where it was the last time; at first low on the screen, where few dialogs reach it. The middle of the
// screen, which is what a window without a place gets, would be behind them.
void ViewerWindow::SetupWindowPosition() const
{
    const Handle kept = GetPreferenceResource(kWindowPositionType, kViewerWindow);
    if (kept) {
        DisposeHandle(kept);
        return CWindow::SetupWindowPosition();
    }
    Rect space = {}, content = {};
    GetAvailableWindowPositioningBounds(GetMainDevice(), &space);
    GetWindowBounds(fWindow, kWindowContentRgn, &content);
    const short height = (short)(content.bottom - content.top);
    MoveWindow(fWindow, kDialogPlace.h, (short)(space.bottom - height - kMargin), false);
}

// What a dialog is called is plain text, so it must not pass through AppendMenu, which reads signs in it.
void ViewerWindow::FillList()
{
    const ControlRef list = GetControlByID(fWindow, kDialogList);
    MenuRef menu = nullptr;
    GetControlData(list, kControlEntireControl, kControlPopupButtonMenuHandleTag, sizeof menu, &menu,
                   nullptr);
    if (!menu)
        return;
    for (const DialogEntry& entry : fFile->Dialogs()) {
        Str255 label;
        PascalFrom(entry.label, label);
        AppendMenuItemText(menu, label);
    }
    SetControlMinimum(list, 1);
    SetControlMaximum(list, (SInt16)fFile->Dialogs().size());
}

void ViewerWindow::Go(long inIndex)
{
    const long count = (long)fFile->Dialogs().size();
    if (fDialog)
        DisposeDialog(fDialog);
    fDialog = nullptr;
    if (count > 0) {
        fIndex = (inIndex + count) % count;
        fDialog = fFile->Show((size_t)fIndex, kDialogPlace);
    }
    Describe();
}

void ViewerWindow::Describe()
{
    const size_t count = fFile->Dialogs().size();
    std::string text = "This file holds no dialogs.";
    if (count > 0)
        text =
            std::to_string(fIndex + 1) + " of " + std::to_string(count) + (fDialog ? "" : " cannot be made");
    SetStaticTextControlTitle(fWindow, kDialogText, text.c_str());
    SetValue(kDialogList, (short)(fIndex + 1));
}

OSStatus ViewerWindow::DoControlHit(EventRef inEvent)
{
    switch (GetControlID(GetCarbonEventControl(inEvent))) {
    case kPreviousButton: Go(fIndex - 1); break;
    case kNextButton: Go(fIndex + 1); break;
    case kDialogList: Go(GetValue(kDialogList) - 1); break;
    case kQuitButton: QuitApplicationEventLoop(); break;
    default: return eventNotHandledErr;
    }
    return noErr;
}

OSStatus ViewerWindow::DoWindowClose(EventRef) const
{
    QuitApplicationEventLoop();
    return noErr;
}

// Page Up and Page Down, wherever the focus is, unless a control of the dialog uses them.
OSStatus ViewerWindow::HandleKey(EventHandlerCallRef, EventRef inEvent, void* inViewer)
{
    ViewerWindow& viewer = *(ViewerWindow*)inViewer;
    UInt32 key = 0;
    GetEventParameter(inEvent, kEventParamKeyCode, typeUInt32, nullptr, sizeof key, nullptr, &key);
    if (!viewer.fFile || (key != kPageUpKey && key != kPageDownKey))
        return eventNotHandledErr;
    viewer.Go(viewer.fIndex + (key == kPageDownKey ? 1 : -1));
    return noErr;
}
