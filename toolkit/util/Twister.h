// One round of MT19937: 624 new words of state in place, and the same words tempered. A template over vectors
// of words, because the recurrence reaches 227 words back at the nearest: as many as fit may be made at once.
// Random.cpp chooses the width for the machine; any width gives the same bits.
#ifndef LAMPBLACK_UTIL_TWISTER_H
#define LAMPBLACK_UTIL_TWISTER_H

#include <Carbon/MacTypes.h>

namespace lampblack::util {

struct Twister {
    static constexpr int kWords = 624;
    static constexpr int kReach = 397; // word k is made of words k, k + 1 and k + kReach, modulo kWords

    typedef UInt32 One __attribute__((vector_size(4)));
    typedef UInt32 Four __attribute__((vector_size(16)));
    typedef UInt32 Eight __attribute__((vector_size(32)));

    template <class Vector>
    [[gnu::always_inline]] static inline void Round(UInt32* ioState, UInt32* outReady)
    {
        constexpr int kBack = kWords - kReach;
        Words<Vector>(ioState, outReady, 0, kBack, kReach);
        Words<Vector>(ioState, outReady, kBack, kWords - 1, -kBack);
        Step<One>(ioState, outReady, kWords - 1, ioState, -kBack);
    }

private:
    // The words from inFirst to before inEnd; what is left over from whole vectors is made singly.
    template <class Vector>
    [[gnu::always_inline]] static inline void Words(UInt32* ioState, UInt32* outReady, int inFirst, int inEnd,
                                                    int inReach)
    {
        constexpr int kStep = sizeof(Vector) / sizeof(UInt32);
        int k = inFirst;
        for (; k + kStep <= inEnd; k += kStep)
            Step<Vector>(ioState, outReady, k, ioState + k + 1, inReach);
        for (; k < inEnd; ++k)
            Step<One>(ioState, outReady, k, ioState + k + 1, inReach);
    }

    template <class Vector>
    [[gnu::always_inline]] static inline void Step(UInt32* ioState, UInt32* outReady, int inIndex,
                                                   const UInt32* inNext, int inReach)
    {
        Vector word, next, made;
        Load(word, ioState + inIndex);
        Load(next, inNext);
        Load(made, ioState + inIndex + inReach);
        const Vector y = (word & 0x80000000u) | (next & 0x7FFFFFFFu);
        made ^= (y >> 1) ^ (-(next & 1u) & 0x9908B0DFu);
        Store(ioState + inIndex, made);
        made ^= made >> 11;
        made ^= (made << 7) & 0x9D2C5680u;
        made ^= (made << 15) & 0xEFC60000u;
        made ^= made >> 18;
        Store(outReady + inIndex, made);
    }

    template <class Vector>
    [[gnu::always_inline]] static inline void Load(Vector& outVector, const UInt32* inWords)
    {
        __builtin_memcpy(&outVector, inWords, sizeof outVector);
    }

    template <class Vector>
    [[gnu::always_inline]] static inline void Store(UInt32* outWords, const Vector& inVector)
    {
        __builtin_memcpy(outWords, &inVector, sizeof inVector);
    }
};

} // namespace lampblack::util

#endif
