// A window of 400 by 240 without a single control.
resource 'DLOG' (128) { {100, 100, 340, 500}, documentProc, visible, goAway, 0x0, 0, "Somewhere", noAutoCenter };
data 'CTL#' (128) { };
