// The generator of random numbers.
#include <Carbon/Quickdraw.h>

#include <doctest/doctest.h>

namespace {

// A seed whose successor is the given one.
SInt32 SeedBefore(SInt32 inNext)
{
    return (SInt32)((long long)inNext * 1407677000 % 0x7FFFFFFF); // the inverse of 16807
}

} // namespace

TEST_CASE("Random: ten thousand steps from seed 1 end at the generator's known value")
{
    SetQDGlobalsRandomSeed(1);
    for (int i = 0; i < 10000; ++i)
        Random();
    CHECK(GetQDGlobalsRandomSeed() == 1043618065);
}

TEST_CASE("Random: the low word, signed; -32768 is answered as 0")
{
    SetQDGlobalsRandomSeed(SeedBefore(0x12348001));
    CHECK(Random() == -32767);
    SetQDGlobalsRandomSeed(SeedBefore(0x12348000));
    CHECK(Random() == 0);
    CHECK(GetQDGlobalsRandomSeed() == 0x12348000);
}

TEST_CASE("Random: a negative seed gives a seed within the generator's range")
{
    SetQDGlobalsRandomSeed(-5);
    Random();
    CHECK(GetQDGlobalsRandomSeed() > 0);
    CHECK(GetQDGlobalsRandomSeed() < 0x7FFFFFFF);
    SetQDGlobalsRandomSeed(1);
}
