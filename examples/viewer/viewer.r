// The window with which the viewer walks through the dialogs of a file.
#include "ViewerIDs.h"

resource 'DLOG' (kViewerWindow, "Viewer") {
    {560, 40, 668, 480}, documentProc, visible, goAway, 0, 0, "Resource Viewer", noAutoCenter
};

resource 'CTL#' (kViewerWindow) { {
    kFileText; kDialogText; kDialogList; kPreviousButton; kNextButton; kQuitButton
} };

resource 'CNTL' (kFileText) { {12, 20, 28, 420}, 0, visible, 0, 0, kControlStaticTextProc, 0, "" };
resource 'CNTL' (kDialogText) { {40, 20, 56, 140}, 0, visible, 0, 0, kControlStaticTextProc, 0, "" };

// A popup button keeps the ID of its menu in the place of its minimum and the width of its title in that of
// its maximum.
resource 'MENU' (kDialogList) { kDialogList, textMenuProc, allEnabled, enabled, "Dialogs", { } };
resource 'CNTL' (kDialogList) {
    {38, 140, 58, 420}, 0, visible, 0, kDialogList, kControlPopupButtonProc, 0, ""
};

resource 'CNTL' (kPreviousButton) { {72, 20, 92, 110}, 0, visible, 1, 0, kControlPushButtonProc, 0, "Previous" };
resource 'CNTL' (kNextButton) { {72, 122, 92, 212}, 0, visible, 1, 0, kControlPushButtonProc, 0, "Next" };
resource 'xBTN' (kNextButton) { defaultButton, notCancel };
resource 'CNTL' (kQuitButton) { {72, 350, 92, 420}, 0, visible, 1, 0, kControlPushButtonProc, 0, "Quit" };
resource 'xBTN' (kQuitButton) { notDefault, cancelButton };
