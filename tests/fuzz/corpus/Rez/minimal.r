// The window of the minimal application: its frame, the list of its controls, and each of them.

resource 'DLOG' (128, "Main window") {
    {120, 180, 220, 480}, documentProc, visible, goAway, 0, 0, "Minimal", noAutoCenter
};

resource 'CTL#' (128) { { 1000; 1001 } };

resource 'CNTL' (1000) { {20, 20, 36, 280}, 0, visible, 0, 0, kControlStaticTextProc, 0, "Hello, world." };
resource 'CNTL' (1001) { {60, 210, 80, 280}, 0, visible, 1, 0, kControlPushButtonProc, 0, "OK" };
resource 'xBTN' (1001) { defaultButton, notCancel };
