// A user pane's value says what it can do: 2, it embeds others.
// A window with one control of each kind that its tests touch, and lists made to try the rules of the builder.

resource 'DLOG' (128, "Main") {
    {100, 100, 340, 500}, documentProc, visible, goAway, 0x0, 128, "Main window", noAutoCenter
};

resource 'CNTL' (1000) { {200, 310, 220, 390}, 0, visible, 1, 0, 368, 0, "OK" };
resource 'CNTL' (1001) { {200, 220, 220, 300}, 0, visible, 1, 0, 368, 0, "Cancel" };
resource 'CNTL' (1002) { {20, 20, 38, 200}, 0, visible, 1, 0, 371, 0, "Check" };
resource 'CNTL' (1003) { {50, 20, 66, 200}, 0, visible, 1, 0, 288, 0, "Some text" };
resource 'CNTL' (1004) { {80, 20, 96, 200}, 0, visible, 1, 0, 272, 0, "" };
resource 'CNTL' (1005) { {110, 20, 126, 200}, 0, visible, 1, 0, 272, 0, "" };
resource 'CNTL' (1006) { {140, 20, 190, 200}, 2, visible, 1, 0, 256, 0, "" };
resource 'CNTL' (1007) { {150, 30, 168, 150}, 0, visible, 1, 0, 369, 1006, "Embedded" };
data 'CTL#' (128) { $"03E8 03E9 03EA 03EB 03EC 03ED 03EE 03EF" };
data 'xBTN' (1000) { $"02" };
data 'xBTN' (1001) { $"01" };

// A list of five bytes: two words are swapped, the last byte is left alone.
data 'CTL#' (129) { $"0102 0304 05" };

// An empty list.
data 'CTL#' (130) { };

// Parked controls, and a parent that comes later in the list.
resource 'DLOG' (131) { {100, 100, 300, 400}, documentProc, visible, goAway, 0x0, 0, "Parked", noAutoCenter };
resource 'CNTL' (1100) { {10, 16400, 30, 16500}, 0, visible, 1, 0, 369, 0, "Parked" };
resource 'CNTL' (1101) { {40, 100, 60, 16390}, 0, visible, 1, 0, 369, 0, "Half parked" };
resource 'CNTL' (1102) { {70, 20, 90, 120}, 0, visible, 1, 0, 369, 1103, "Too early" };
resource 'CNTL' (1103) { {70, 10, 120, 200}, 2, visible, 1, 0, 256, 0, "" };
data 'CTL#' (131) { $"044C 044D 044E 270F 044F" };

// Fonts: 12345 with no flags gives the big system font; with the font flag it is Monaco.
data 'CNTF' (1200) { $"0000 3930 0000 0000 0000 0000 0000 0000 0000 0000 0000 0000" };
data 'CNTF' (1201) { $"0100 3930 0000 0000 0000 0000 0000 0000 0000 0000 0000 0000" };
data 'CNTF' (1202) { $"0100 FBFF 0000 0000 0000 0000 0000 0000 0000 0000 0000 0000" };
data 'CNTF' (1203) { $"0100 3930" };
