// Runs one piece of a test in a process of its own, for calls whose first answer lasts as long as a process.
#ifndef LAMPBLACK_TESTS_FRESHPROCESS_H
#define LAMPBLACK_TESTS_FRESHPROCESS_H

#include <cstdio>
#include <sys/wait.h>
#include <unistd.h>

// InFreshProcess
//
// The result of inWork, a function of nothing to an int, in a forked process; -9999 when that process dies.
template <typename Work>
int InFreshProcess(Work inWork)
{
    constexpr int kDied = -9999;
    int ends[2];
    if (pipe(ends) != 0)
        return kDied;
    std::fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const int result = inWork();
        const bool written = write(ends[1], &result, sizeof result) == sizeof result;
        _exit(written ? 0 : 1);
    }
    close(ends[1]);
    int result = kDied;
    if (read(ends[0], &result, sizeof result) != sizeof result)
        result = kDied;
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0 ? result : kDied;
}

#endif
