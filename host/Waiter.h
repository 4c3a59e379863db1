// A wait that any thread can end, on the machine's monotonic clock.
#ifndef LAMPBLACK_HOST_WAITER_H
#define LAMPBLACK_HOST_WAITER_H

#include <chrono>
#include <cmath>
#include <condition_variable>
#include <mutex>
#include <utility>

namespace lampblack::host {

inline double RealNow()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

class Waiter {
public:
    void Wake()
    {
        const std::lock_guard lock(fMutex);
        fWoken = true;
        fCondition.notify_one();
    }

    // Whether Wake was called since the last wait; forgets it.
    bool TakeWake()
    {
        const std::lock_guard lock(fMutex);
        return std::exchange(fWoken, false);
    }

    // Blocks until Wake or until that second of RealNow; leaves the wake for TakeWake.
    void Block(double inSecond)
    {
        std::unique_lock lock(fMutex);
        const auto woken = [this] { return fWoken; };
        const double seconds = inSecond - RealNow();
        if (seconds > kLongest)
            fCondition.wait(lock, woken);
        else if (seconds > 0)
            fCondition.wait_for(lock, std::chrono::duration<double>(seconds), woken);
    }

private:
    static constexpr double kLongest = 1e8; // seconds; more than the clock's type can carry is for ever

    std::mutex fMutex;
    std::condition_variable fCondition;
    bool fWoken = false;
};

} // namespace lampblack::host

#endif
