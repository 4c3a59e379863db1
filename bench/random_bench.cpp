// Random words of MT19937, drawn one by one in a loop that adds them up, and in blocks of 624 words that are
// kept. The limit tempers a block that is ready: no word comes with less. Every row makes as many words, and
// reports the time of one block.
#include <benchmark/benchmark.h>
#include <lampblack/lampblack.h>

#include <cstdint>
#include <random>

#ifdef LAMPBLACK_BENCH_BOOST
#include <boost/random/mersenne_twister.hpp>
#endif

namespace {

constexpr int kWords = 624;

// The limit

struct Tempering {
    uint32_t words[kWords];
    int index = 0;

    Tempering()
    {
        std::mt19937 random;
        for (uint32_t& word : words)
            word = (uint32_t)random();
    }
    static uint32_t Temper(uint32_t y)
    {
        y ^= y >> 11;
        y ^= (y << 7) & 0x9D2C5680u;
        y ^= (y << 15) & 0xEFC60000u;
        return y ^ (y >> 18);
    }
    void Block(uint32_t* out)
    {
        for (int i = 0; i < kWords; ++i)
            out[i] = Temper(words[i]);
    }
};

// As a generator is drawn from: one word a call.
struct TemperingOneByOne : Tempering {
    uint32_t operator()()
    {
        if (index == kWords)
            index = 0;
        return Temper(words[index++]);
    }
};

struct Lampblack {
    mt_random random;
    uint32_t operator()() { return random.rand_long(); }
};

template <class Generator>
void Loop(benchmark::State& state)
{
    Generator generator;
    for (auto _ : state) {
        uint32_t sum = 0;
        for (int i = 0; i < kWords; ++i)
            sum += (uint32_t)generator();
        benchmark::DoNotOptimize(sum);
    }
}

template <class Generator>
void Block(benchmark::State& state)
{
    Generator generator;
    uint32_t block[kWords];
    for (auto _ : state) {
        for (uint32_t& word : block)
            word = (uint32_t)generator();
        benchmark::DoNotOptimize(block);
        benchmark::ClobberMemory();
    }
}

void BlockOfTempering(benchmark::State& state)
{
    Tempering tempering;
    uint32_t block[kWords];
    for (auto _ : state) {
        benchmark::DoNotOptimize(tempering);
        tempering.Block(block);
        benchmark::DoNotOptimize(block);
        benchmark::ClobberMemory();
    }
}

// The tempering of a ready block, added up: what the compiler makes of the leanest loop.
void LoopOfTempering(benchmark::State& state)
{
    Tempering tempering;
    for (auto _ : state) {
        benchmark::DoNotOptimize(tempering);
        uint32_t sum = 0;
        for (uint32_t word : tempering.words)
            sum += Tempering::Temper(word);
        benchmark::DoNotOptimize(sum);
    }
}

BENCHMARK(LoopOfTempering);
BENCHMARK(Loop<TemperingOneByOne>);
BENCHMARK(Loop<Lampblack>);
BENCHMARK(Loop<std::mt19937>);
#ifdef LAMPBLACK_BENCH_BOOST
BENCHMARK(Loop<boost::random::mt19937>);
#endif
BENCHMARK(BlockOfTempering);
BENCHMARK(Block<Lampblack>);
BENCHMARK(Block<std::mt19937>);
#ifdef LAMPBLACK_BENCH_BOOST
BENCHMARK(Block<boost::random::mt19937>);
#endif

} // namespace

BENCHMARK_MAIN();
