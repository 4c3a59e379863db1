// The writes that are tortured: what stands before, what is done, and what may be found afterwards. Each part
// runs in a process of its own, in a folder of its own. Begin at Scenarios.
#ifndef LAMPBLACK_TESTS_TORTURE_SCENARIO_H
#define LAMPBLACK_TESTS_TORTURE_SCENARIO_H

#include <filesystem>
#include <vector>

namespace torture {

enum class Found { Old = 0, New = 1, Neither = 2 };

struct Scenario {
    const char* name;
    void (*prepare)(const std::filesystem::path& folder); // makes the old state
    int (*act)(const std::filesystem::path& folder);      // 0: done; else the caller was told of a failure
    Found (*look)(const std::filesystem::path& folder);
};

const std::vector<Scenario>& Scenarios();

} // namespace torture

#endif
