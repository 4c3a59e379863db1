// Random numbers: the published generator word for word, what its ranges keep, and how often Random is drawn.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include <random>
#include <vector>

#include "Interpose.h"
#include "util/Twister.h"

namespace {

int gDraws = 0;
bool gFixed = false; // Random answers gAnswer instead of its own
SInt16 gAnswer = 0;

// What Random's bits are for one call of inWork.
template <typename Work>
auto WithRandom(UInt16 inBits, Work inWork)
{
    gFixed = true;
    gAnswer = static_cast<SInt16>(inBits);
    const auto result = inWork();
    gFixed = false;
    return result;
}

// The published algorithm, one word after another.
struct Reference {
    UInt32 mt[624];
    int index = 625;

    void Seed(UInt32 s)
    {
        mt[0] = s;
        for (index = 1; index < 624; ++index)
            mt[index] = 1812433253u * (mt[index - 1] ^ (mt[index - 1] >> 30)) + static_cast<UInt32>(index);
    }
    void Seed(const UInt32* key, int length)
    {
        Seed(19650218);
        int i = 1, j = 0;
        for (int k = length > 624 ? length : 624; k; --k) {
            mt[i] = (mt[i] ^ ((mt[i - 1] ^ (mt[i - 1] >> 30)) * 1664525u)) + key[j] + static_cast<UInt32>(j);
            if (++i >= 624) {
                mt[0] = mt[623];
                i = 1;
            }
            if (++j >= length)
                j = 0;
        }
        for (int k = 623; k; --k) {
            mt[i] = (mt[i] ^ ((mt[i - 1] ^ (mt[i - 1] >> 30)) * 1566083941u)) - static_cast<UInt32>(i);
            if (++i >= 624) {
                mt[0] = mt[623];
                i = 1;
            }
        }
        mt[0] = 0x80000000u;
    }
    void Twist()
    {
        for (int k = 0; k < 624; ++k) {
            const UInt32 y = (mt[k] & 0x80000000u) | (mt[(k + 1) % 624] & 0x7FFFFFFFu);
            mt[k] = mt[(k + 397) % 624] ^ (y >> 1) ^ (y & 1 ? 0x9908B0DFu : 0);
        }
        index = 0;
    }
    static UInt32 Temper(UInt32 y)
    {
        y ^= y >> 11;
        y ^= (y << 7) & 0x9D2C5680u;
        y ^= (y << 15) & 0xEFC60000u;
        return y ^ (y >> 18);
    }
    UInt32 Next()
    {
        if (index >= 624)
            Twist();
        return Temper(mt[index++]);
    }
};

bool SameWords(mt_random& ioRandom, Reference& ioReference, int inCount)
{
    for (int i = 0; i < inCount; ++i)
        if (ioRandom.rand_long() != ioReference.Next())
            return false;
    return true;
}

template <class Vector>
bool RoundsAreTheReference()
{
    Reference reference;
    reference.Seed(4357);
    std::vector<UInt32> state(reference.mt, reference.mt + 624), ready(624 + 8, 0xA5A5A5A5u);
    for (int round = 0; round < 20; ++round) {
        lampblack::util::Twister::Round<Vector>(state.data(), ready.data());
        reference.Twist();
        for (size_t i = 0; i < 624; ++i)
            if (state[i] != reference.mt[i] || ready[i] != Reference::Temper(reference.mt[i]))
                return false;
    }
    return ready[624] == 0xA5A5A5A5u;
}

} // namespace

LAMPBLACK_INTERPOSE SInt16 Random()
{
    ++gDraws;
    return gFixed ? gAnswer : Next<decltype(Random)>("Random")();
}

TEST_CASE("rand_long: without a seed, and after srand(5489), the published first words")
{
    mt_random unseeded, seeded;
    seeded.srand(5489);
    for (const UInt32 expected : { 3499211612u, 581869302u, 3890346734u, 3586334585u, 545404204u }) {
        CHECK(unseeded.rand_long() == expected);
        CHECK(seeded.rand_long() == expected);
    }
}

TEST_CASE("rand_long: the 10,000th word of the default seed is the one that the C++ standard names")
{
    mt_random random;
    for (int i = 1; i < 10000; ++i)
        random.rand_long();
    CHECK(random.rand_long() == 4123659995u);
}

TEST_CASE("srand: 10,000 words of every seed are those of std::mt19937")
{
    for (const UInt32 seed : { 0u, 1u, 4357u, 5489u, 0x80000000u, 0xFFFFFFFFu }) {
        mt_random random;
        random.srand(seed);
        std::mt19937 expected(seed);
        bool same = true;
        for (int i = 0; i < 10000; ++i)
            same = same && random.rand_long() == expected();
        CHECK(same);
    }
}

TEST_CASE("lsrand: the published words of the key 0x123, 0x234, 0x345, 0x456")
{
    const UInt32 key[] = { 0x123, 0x234, 0x345, 0x456 };
    mt_random random;
    random.lsrand(key, 4);
    for (const UInt32 expected : { 1067595299u, 955945823u, 477289528u, 4107218783u, 4228976476u })
        CHECK(random.rand_long() == expected);
}

TEST_CASE("lsrand: keys shorter than the state, as long, and longer")
{
    std::vector<UInt32> key(1500);
    for (size_t i = 0; i < key.size(); ++i)
        key[i] = static_cast<UInt32>(i * 2654435761u);
    for (const int length : { 1, 2, 623, 624, 625, 1500 }) {
        mt_random random;
        Reference reference;
        random.lsrand(key.data(), length);
        reference.Seed(key.data(), length);
        CHECK(SameWords(random, reference, 2000));
    }
}

TEST_CASE("lsrand: a count of 0 or less reads the first word only")
{
    const UInt32 key[] = { 99 };
    mt_random one, zero, negative;
    one.lsrand(key, 1);
    zero.lsrand(key, 0);
    negative.lsrand(key, -7);
    const UInt32 expected = one.rand_long();
    CHECK(zero.rand_long() == expected);
    CHECK(negative.rand_long() == expected);
}

TEST_CASE("mt_random: a copy goes on where the original stands, each on its own")
{
    mt_random original;
    original.srand(42);
    for (int i = 0; i < 700; ++i)
        original.rand_long();
    mt_random copy = original;
    std::vector<UInt32> words;
    for (int i = 0; i < 1300; ++i)
        words.push_back(original.rand_long());
    bool same = true;
    for (const UInt32 word : words)
        same = same && copy.rand_long() == word;
    CHECK(same);
}

TEST_CASE("mt_random: a copy of one that was never drawn from behaves like it")
{
    const mt_random unseeded;
    mt_random copy = unseeded;
    CHECK(copy.rand_long() == 3499211612u);
}

TEST_CASE("srand: in the middle of a stream starts it anew")
{
    mt_random random;
    random.rand_long();
    random.srand(5489);
    CHECK(random.rand_long() == 3499211612u);
}

TEST_CASE("Round: four words at a time are the words of the plain loop")
{
    CHECK(RoundsAreTheReference<lampblack::util::Twister::One>());
    CHECK(RoundsAreTheReference<lampblack::util::Twister::Four>());
}

TEST_CASE("Round: eight words at a time are the words of the plain loop")
{
    CHECK(RoundsAreTheReference<lampblack::util::Twister::Eight>());
}

TEST_CASE("rand_double: the next word times 2^-32, below 1")
{
    mt_random doubles, words;
    bool same = true;
    for (int i = 0; i < 5000; ++i) {
        const double value = doubles.rand_double();
        same = same && value == words.rand_long() / 4294967296.0 && value < 1;
    }
    CHECK(same);
}

TEST_CASE("ranged_long: a range without room answers the low bound and draws nothing")
{
    mt_random random;
    CHECK(random.ranged_long(5, 5) == 5);
    CHECK(random.ranged_long(7, 3) == 7);
    CHECK(random.rand_long() == 3499211612u);
}

TEST_CASE("ranged_long: the word times the count, divided by 2^32 - 1")
{
    mt_random ranged, words;
    bool same = true;
    for (int i = 0; i < 5000; ++i) {
        const UInt32 value = ranged.ranged_long(10, 1009);
        same = same && value == 10 + words.rand_long() * UInt64{ 1000 } / 4294967295u;
    }
    CHECK(same);
}

TEST_CASE("ranged_long: the full range always answers its low end")
{
    mt_random random;
    for (int i = 0; i < 10; ++i)
        CHECK(random.ranged_long(0, 0xFFFFFFFFu) == 0);
    mt_random skipped;
    for (int i = 0; i < 10; ++i)
        skipped.rand_long();
    CHECK(random.rand_long() == skipped.rand_long());
}

TEST_CASE("ranged_long: the word 0xFFFFFFFF answers one above the high bound")
{
    mt_random random; // a stream that has that word soon
    random.srand(573778);
    for (int i = 0; i < 1091; ++i)
        random.rand_long();
    mt_random same = random;
    REQUIRE(same.rand_long() == 0xFFFFFFFFu);
    CHECK(random.ranged_long(3, 10) == 11);
}

TEST_CASE("RangedRandomUInt16: a range without room answers the low bound and draws nothing")
{
    gDraws = 0;
    CHECK(RangedRandomUInt16(10, 10) == 10);
    CHECK(RangedRandomUInt16(11, 10) == 11);
    CHECK(RangedRandomUInt16(65535, 65535) == 65535);
    CHECK(gDraws == 0);
}

TEST_CASE("RangedRandomUInt16: Random's bits, unsigned, spread over the range in one draw")
{
    gDraws = 0;
    CHECK(WithRandom(0, [] { return RangedRandomUInt16(10, 19); }) == 10);
    CHECK(WithRandom(0x7FFF, [] { return RangedRandomUInt16(10, 19); }) == 14);
    CHECK(WithRandom(0x8000, [] { return RangedRandomUInt16(10, 19); }) == 15);
    CHECK(WithRandom(0xFFFF, [] { return RangedRandomUInt16(10, 19); }) == 19);
    CHECK(WithRandom(0xFFFF, [] { return RangedRandomUInt16(0, 65534); }) == 65534);
    CHECK(gDraws == 5);
}

TEST_CASE("RangedRandomUInt16: with 65535 as the high bound the count wraps and results leave the range")
{
    // The span is -1000: a quarter of it, rounded down, below 1000.
    CHECK(WithRandom(0x4000, [] { return RangedRandomUInt16(1000, 65535); }) == 750);
    CHECK(WithRandom(0x4001, [] { return RangedRandomUInt16(1000, 65535); }) == 749);
    CHECK(WithRandom(0xFFFF, [] { return RangedRandomUInt16(0, 65535); }) == 0);
}

TEST_CASE("RangedRandomSInt16: a range without room answers the low bound and draws nothing")
{
    gDraws = 0;
    CHECK(RangedRandomSInt16(-3, -3) == -3);
    CHECK(RangedRandomSInt16(7, 3) == 7);
    CHECK(gDraws == 0);
}

TEST_CASE("RangedRandomSInt16: from the low bound to the high one, across zero and on either side")
{
    CHECK(WithRandom(0, [] { return RangedRandomSInt16(-5, 5); }) == -5);
    CHECK(WithRandom(0x8000, [] { return RangedRandomSInt16(-5, 5); }) == 0);
    CHECK(WithRandom(0xFFFF, [] { return RangedRandomSInt16(-5, 5); }) == 5);
    CHECK(WithRandom(0xFFFF, [] { return RangedRandomSInt16(-20, -10); }) == -10);
    CHECK(WithRandom(0xFFFF, [] { return RangedRandomSInt16(3, 9); }) == 9);
}

TEST_CASE("RangedRandomSInt16: a high bound below a negative low one counts as far above it")
{
    gDraws = 0;
    CHECK(WithRandom(0x8000, [] { return RangedRandomSInt16(-5, -10); }) == SInt16(32766 - 5));
    CHECK(gDraws == 1);
}

TEST_CASE("RangedRandomSInt16: the whole signed range always answers its low end")
{
    gDraws = 0;
    CHECK(WithRandom(0xABCD, [] { return RangedRandomSInt16(-32768, 32767); }) == -32768);
    CHECK(gDraws == 1);
}

TEST_CASE("RangedRandomSInt16: by the platform's Random it stays within the range and meets both ends")
{
    int counts[11] = {};
    for (int i = 0; i < 2000; ++i) {
        const SInt16 value = RangedRandomSInt16(-5, 5);
        REQUIRE(value >= -5);
        REQUIRE(value <= 5);
        ++counts[value + 5];
    }
    for (const int count : counts)
        CHECK(count > 0);
}

TEST_CASE("Chance: never at 0 and below, always at 100 and above, one draw each")
{
    gDraws = 0;
    for (const UInt16 bits : { 0x0000, 0x7FFF, 0x8000, 0xFFFF }) {
        CHECK_FALSE(WithRandom(bits, [] { return Chance(0); }));
        CHECK_FALSE(WithRandom(bits, [] { return Chance(-5); }));
        CHECK(WithRandom(bits, [] { return Chance(100); }));
        CHECK(WithRandom(bits, [] { return Chance(32767); }));
    }
    CHECK(gDraws == 16);
}

TEST_CASE("Chance: the bits times 100, in hundredths from 1, are at most the percentage")
{
    CHECK(WithRandom(0, [] { return Chance(1); }));
    CHECK(WithRandom(655, [] { return Chance(1); }));
    CHECK_FALSE(WithRandom(656, [] { return Chance(1); })); // 656 * 100 / 65536 + 1 is 2
    CHECK(WithRandom(0x8000, [] { return Chance(51); }));
    CHECK_FALSE(WithRandom(0x8000, [] { return Chance(50); }));
    CHECK_FALSE(WithRandom(0xFFFF, [] { return Chance(99); }));
}
