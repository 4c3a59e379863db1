resource 'DLOG' (128) { {100, 100, 200, 300}, documentProc, visible, goAway, 0x0, 0, "Outside", noAutoCenter };
