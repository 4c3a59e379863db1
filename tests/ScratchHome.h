// A home folder of the test's own, before anything asks for one: preferences go there.
#ifndef LAMPBLACK_TESTS_SCRATCHHOME_H
#define LAMPBLACK_TESTS_SCRATCHHOME_H

#include <cstdlib>

#include "ScratchFolder.h"

struct ScratchHome : ScratchFolder {
    ScratchHome() { setenv("XDG_CONFIG_HOME", MakeFolder(".config").c_str(), true); }

    std::filesystem::path Preferences() const { return Path() / ".config" / "Preferences"; }
};

inline const ScratchHome gHome; // made before main

#endif
