// A preference file of a test's own: defined, and not there yet.
#ifndef LAMPBLACK_TESTS_FRESHPREFERENCES_H
#define LAMPBLACK_TESTS_FRESHPREFERENCES_H

#include <lampblack/lampblack.h>

#include <filesystem>
#include <string>

#include "CallLog.h"
#include "PascalText.h"
#include "ScratchHome.h"

struct FreshPreferences {
    explicit FreshPreferences(bool inInvisible = false)
    {
        InitializeMacOSHelpers();
        CallLog::gFailures.clear();
        ClosePreferenceFile();
        std::filesystem::remove_all(gHome.Preferences());
        SetPreferenceFileDomain(kOnAppropriateDisk);
        DefinePreferenceFile(P(kName), 'LBts', 'pref', inInvisible);
    }
    ~FreshPreferences() { ClosePreferenceFile(); }

    static constexpr char kName[] = "Test Preferences";
    // The two files on the host.
    static std::filesystem::path File() { return gHome.Preferences() / kName; }
    static std::filesystem::path Sidecar() { return gHome.Preferences() / (std::string("._") + kName); }
};

#endif
