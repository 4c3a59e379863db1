// The wait of a process without a window, in real time.
#include "Waiter.h"

#include <doctest/doctest.h>

#include <limits>
#include <thread>

using lampblack::host::RealNow;
using lampblack::host::Waiter;

TEST_CASE("Waiter: lasts to its second and not less")
{
    Waiter waiter;
    const double start = RealNow();
    waiter.Block(start + 0.03);
    CHECK(RealNow() >= start + 0.03);
    waiter.Block(start - 5); // the past
    CHECK(RealNow() < start + 5);
    CHECK_FALSE(waiter.TakeWake());
}

TEST_CASE("Waiter: another thread ends a wait for ever, and a wake before the wait counts once")
{
    Waiter waiter;
    std::thread other([&] { waiter.Wake(); });
    waiter.Block(std::numeric_limits<double>::infinity());
    other.join();
    CHECK(waiter.TakeWake());
    waiter.Wake();
    waiter.Wake();
    waiter.Block(std::numeric_limits<double>::infinity());
    CHECK(waiter.TakeWake());
    CHECK_FALSE(waiter.TakeWake());
}
