// A window with a button and a static text, which is deleted from each of its handlers in turn.

resource 'DLOG' (128) { {100, 100, 340, 500}, documentProc, visible, goAway, 0, 0, "Dying" };
resource 'CTL#' (128) { { 1000; 1001 } };
resource 'CNTL' (1000) { {10, 10, 30, 90}, 0, visible, 1, 0, kControlPushButtonProc, 0, "OK" };
resource 'CNTL' (1001) { {40, 10, 56, 190}, 0, visible, 1, 0, kControlStaticTextProc, 0, "Static" };
