// The seeds of mt_random (MT19937, M. Matsumoto and T. Nishimura, 1998), its rounds at the width that the
// machine has, and the decisions by Random.
#include "util/Random.h"

#include "util/Twister.h"

#include <algorithm>

using lampblack::util::Twister;

namespace {

constexpr int kWords = Twister::kWords;

#ifdef __x86_64__
[[gnu::target("avx2")]] void RoundOfEights(UInt32* ioState, UInt32* outReady)
{
    Twister::Round<Twister::Eight>(ioState, outReady);
}
#endif

void Round(UInt32* ioState, UInt32* outReady)
{
#ifdef __x86_64__
    if (__builtin_cpu_supports("avx2"))
        return RoundOfEights(ioState, outReady);
#endif
    Twister::Round<Twister::Four>(ioState, outReady);
}

// A walk over words 1 to 623 again and again, each mixed with the one before it.
class Mixer {
public:
    explicit Mixer(UInt32* ioState) : fState(ioState) {}

    void Mix(UInt32 inMultiplier, UInt32 inAddend)
    {
        const UInt32 before = fState[fPlace - 1];
        fState[fPlace] = (fState[fPlace] ^ ((before ^ (before >> 30)) * inMultiplier)) + inAddend;
        if (++fPlace == kWords) {
            fState[0] = fState[kWords - 1];
            fPlace = 1;
        }
    }
    UInt32 Place() const { return fPlace; }

private:
    UInt32* fState;
    UInt32 fPlace = 1;
};

// Random's bits mapped onto inLow to inHigh, in the 16 bits that keep its wraps.
UInt16 Ranged(UInt16 inLow, UInt16 inHigh)
{
    const SInt64 random = static_cast<UInt16>(Random());
    const SInt32 span = static_cast<UInt16>(inHigh + 1) - inLow;
    return static_cast<UInt16>(inLow + ((random * span) >> 16));
}

} // namespace

void mt_random::srand(UInt32 inSeed)
{
    fState[0] = inSeed;
    for (UInt32 i = 1; i < kWords; ++i)
        fState[i] = 1812433253u * (fState[i - 1] ^ (fState[i - 1] >> 30)) + i;
    fIndex = kWords;
}

void mt_random::lsrand(const UInt32* inKey, SInt32 inCount)
{
    constexpr SInt32 kAll = kWords;
    srand(19650218);
    Mixer mixer(fState);
    SInt32 j = 0;
    for (SInt32 left = std::max(kAll, inCount); left > 0; --left) {
        mixer.Mix(1664525, inKey[j] + static_cast<UInt32>(j));
        if (++j >= inCount)
            j = 0;
    }
    for (SInt32 left = kAll - 1; left > 0; --left)
        mixer.Mix(1566083941, -mixer.Place());
    fState[0] = 0x80000000; // a state that is not all zero
}

void mt_random::Refill()
{
    if (fIndex == kUnseeded)
        srand(5489);
    Round(fState, fReady);
    fIndex = 0;
}

UInt16 RangedRandomUInt16(UInt16 inLow, UInt16 inHigh)
{
    return inLow >= inHigh ? inLow : Ranged(inLow, inHigh);
}

SInt16 RangedRandomSInt16(SInt16 inLow, SInt16 inHigh)
{
    const SInt32 offset = inLow < 0 ? -SInt32{ inLow } : 0;
    const auto low = static_cast<UInt16>(inLow + offset);
    const auto high = static_cast<UInt16>(inHigh + offset);
    return low >= high ? inLow : static_cast<SInt16>(Ranged(low, high) - offset);
}

bool Chance(SInt16 inPercent)
{
    const SInt32 random = static_cast<UInt16>(Random());
    return ((random * 100) >> 16) + 1 <= inPercent;
}
