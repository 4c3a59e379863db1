// The windows of the gallery. A window is a 'DLOG'; the 'CTL#' of the same ID lists its controls; each control
// is a 'CNTL', whose reference constant names the control that it lies in. Rectangles are top, left, bottom,
// right in the window. Margins are 20 pixels, buttons are 20 high and 12 apart.
#include "GalleryIDs.h"

resource 'DLOG' (kGalleryWindow, "Gallery") {
    {80, 120, 516, 600}, documentProc, visible, goAway, 0, 0, "Lampblack Gallery", noAutoCenter
};

resource 'CTL#' (kGalleryWindow) { {
    kIntroText;
    kBallGroup; kMoveBox; kTrailBox; kLargeBox;
    kColourGroup; kRedButton; kGreenButton; kBlueButton;
    kNameLabel; kNameField; kGreetButton; kGreetingText;
    kSpeedLabel; kSpeedBar; kSpeedText;
    kProgressLabel; kProgressBar; kArrows;
    kPlayground;
    kPagesLabel; kSpritesButton; kFontsButton; kPictureButton;
    kAboutButton; kBeepButton; kOKButton
} };

resource 'CNTL' (kIntroText) {
    {16, 20, 32, 460}, 0, visible, 0, 0, kControlStaticTextProc, 0,
    "Every control here comes from a readable resource file."
};

resource 'CNTL' (kBallGroup) { {44, 20, 138, 232}, 0, visible, 0, 0, kControlGroupBoxTextTitleProc, 0, "Ball" };
resource 'CNTL' (kMoveBox) { {66, 34, 84, 220}, 1, visible, 1, 0, kControlCheckBoxAutoToggleProc, kBallGroup, "Moves" };
resource 'CNTL' (kTrailBox) { {88, 34, 106, 220}, 1, visible, 1, 0, kControlCheckBoxAutoToggleProc, kBallGroup, "Leaves a trail" };
resource 'CNTL' (kLargeBox) { {110, 34, 128, 220}, 0, visible, 1, 0, kControlCheckBoxAutoToggleProc, kBallGroup, "Is large" };

resource 'CNTL' (kColourGroup) { {44, 248, 138, 460}, 0, visible, 0, 0, kControlGroupBoxTextTitleProc, 0, "Colour" };
resource 'CNTL' (kRedButton) { {66, 262, 84, 448}, 1, visible, 1, 0, kControlRadioButtonProc, kColourGroup, "Red" };
resource 'CNTL' (kGreenButton) { {88, 262, 106, 448}, 0, visible, 1, 0, kControlRadioButtonProc, kColourGroup, "Green" };
resource 'CNTL' (kBlueButton) { {110, 262, 128, 448}, 0, visible, 1, 0, kControlRadioButtonProc, kColourGroup, "Blue" };

resource 'CNTL' (kNameLabel) { {156, 20, 172, 92}, 0, visible, 0, 0, kControlStaticTextProc, 0, "Name:" };
resource 'CNTL' (kNameField) { {156, 100, 172, 229}, 0, visible, 0, 0, kControlEditTextProc, 0, "" };
resource 'CNTL' (kGreetButton) { {154, 248, 174, 318}, 0, visible, 1, 0, kControlPushButtonProc, 0, "Greet" };
resource 'CNTL' (kGreetingText) { {156, 330, 172, 460}, 0, visible, 0, 0, kControlStaticTextProc, 0, "" };

resource 'CNTL' (kSpeedLabel) { {190, 20, 206, 92}, 0, visible, 0, 0, kControlStaticTextProc, 0, "Speed:" };
resource 'CNTL' (kSpeedBar) { {190, 97, 206, 416}, 6, visible, 20, 1, kControlScrollBarLiveProc, 0, "" };
resource 'CNTL' (kSpeedText) { {190, 428, 206, 460}, 0, visible, 0, 0, kControlStaticTextProc, 0, "6" };

resource 'CNTL' (kProgressLabel) { {220, 20, 236, 92}, 0, visible, 0, 0, kControlStaticTextProc, 0, "Progress:" };
resource 'CNTL' (kProgressBar) { {222, 97, 234, 416}, 0, visible, 100, 0, kControlProgressBarProc, 0, "" };
resource 'CNTL' (kArrows) { {220, 428, 236, 444}, 0, visible, 0, 0, kControlChasingArrowsProc, 0, "" };

resource 'CNTL' (kPlayground) { {250, 20, 350, 460}, 0, visible, 0, 0, kControlUserPaneProc, 0, "" };

resource 'CNTL' (kPagesLabel) { {366, 20, 382, 92}, 0, visible, 0, 0, kControlStaticTextProc, 0, "Pages:" };
resource 'CNTL' (kSpritesButton) { {364, 97, 384, 210}, 0, visible, 1, 0, kControlPushButtonProc, 0, "Sprites" };
resource 'CNTL' (kFontsButton) { {364, 222, 384, 335}, 0, visible, 1, 0, kControlPushButtonProc, 0, "Theme fonts" };
resource 'CNTL' (kPictureButton) { {364, 347, 384, 460}, 0, visible, 1, 0, kControlPushButtonProc, 0, "A picture" };

resource 'CNTL' (kAboutButton) { {396, 20, 416, 100}, 0, visible, 1, 0, kControlPushButtonProc, 0, "About\0xC9" };
resource 'CNTL' (kBeepButton) { {396, 308, 416, 378}, 0, visible, 1, 0, kControlPushButtonProc, 0, "Beep" };
resource 'CNTL' (kOKButton) { {396, 390, 416, 460}, 0, visible, 1, 0, kControlPushButtonProc, 0, "OK" };
resource 'xBTN' (kOKButton) { defaultButton, notCancel };

resource 'DLOG' (kAboutWindow, "About") {
    {160, 220, 300, 520}, documentProc, visible, goAway, 0, 0, "About the Gallery", noAutoCenter
};

resource 'CTL#' (kAboutWindow) { { kAboutTitle; kAboutText; kAboutOK } };

resource 'CNTL' (kAboutTitle) { {16, 20, 32, 280}, 0, visible, 0, 0, kControlStaticTextProc, 0, "Lampblack" };
resource 'CNTF' (kAboutTitle) {
    useFont + useFace, bigSystemFont, 0, bold, srcOr, teJustLeft, 0, 0, 0, 0, 0, 0
};
resource 'CNTL' (kAboutText) {
    {40, 20, 88, 280}, 0, visible, 0, 0, kControlStaticTextProc, 0,
    "A support toolkit for Carbon-era applications, and the platform under it."
};
resource 'CNTL' (kAboutOK) { {100, 210, 120, 280}, 0, visible, 1, 0, kControlPushButtonProc, 0, "OK" };
resource 'xBTN' (kAboutOK) { defaultButton, notCancel };

resource 'DLOG' (kSpriteWindow, "Sprites") {
    {60, 60, 540, 700}, documentProc, visible, goAway, 0, 0, "Sprites", noAutoCenter
};
read 'JPEG' (kBackdrop, "An evening at sea") "backdrop.jpg";

resource 'DLOG' (kFontWindow, "Theme fonts") {
    {80, 140, 446, 560}, documentProc, visible, goAway, 0, 0, "Theme Fonts", noAutoCenter
};

resource 'DLOG' (kPictureWindow, "Picture") {
    {70, 100, 530, 580}, documentProc, visible, goAway, 0, 0, "A Picture", noAutoCenter
};

resource 'CTL#' (kPictureWindow) { { kPathLabel; kPathField; kOpenButton; kPictureText; kPicturePane } };

resource 'CNTL' (kPathLabel) { {22, 20, 38, 62}, 0, visible, 0, 0, kControlStaticTextProc, 0, "File:" };
resource 'CNTL' (kPathField) { {22, 65, 38, 375}, 0, visible, 0, 0, kControlEditTextProc, 0, "" };
resource 'CNTL' (kOpenButton) { {20, 390, 40, 460}, 0, visible, 1, 0, kControlPushButtonProc, 0, "Open" };
resource 'xBTN' (kOpenButton) { defaultButton, notCancel };
resource 'CNTL' (kPictureText) {
    {50, 20, 66, 460}, 0, visible, 0, 0, kControlStaticTextProc, 0,
    "The whole name of a picture file: JPEG, PNG, GIF, TIFF, BMP, Targa or PICT."
};
resource 'CNTL' (kPicturePane) { {78, 20, 440, 460}, 0, visible, 0, 0, kControlUserPaneProc, 0, "" };

resource 'vers' (1) { 0x00, 0x10, development, 0x00, verUS, "0.1", "0.1, part of Lampblack" };
