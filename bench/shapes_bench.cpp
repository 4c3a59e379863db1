// Shapes at every depth beside the plain loop that fills the same rows of depth 32.
#include <Carbon/Carbon.h>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

struct World {
    World(int depth, short width, short height)
    {
        const Rect bounds = { 0, 0, height, width };
        NewGWorld(&port, (short)depth, &bounds, nullptr, nullptr, 0);
        SetGWorld(port, nullptr);
    }
    ~World() { DisposeGWorld(port); }
    uint32_t* Pixels() const { return reinterpret_cast<uint32_t*>(GetPixBaseAddr(GetGWorldPixMap(port))); }

    GWorldPtr port = nullptr;
};

void FillLimit(benchmark::State& state)
{
    const int side = (int)state.range(0);
    const World world(32, (short)side, (short)side);
    uint32_t* pixels = world.Pixels();
    for (auto _ : state) {
        for (int v = 0; v < side; ++v)
            std::fill_n(pixels + v * side, side, 0x00123456u);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(FillLimit)->Arg(16)->Arg(64)->Arg(512);

void Fill(benchmark::State& state)
{
    const auto side = (short)state.range(1);
    const World world((int)state.range(0), side, side);
    const Rect r = { 0, 0, side, side };
    for (auto _ : state) {
        PaintRect(&r);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Fill)->ArgsProduct({ { 32, 16, 8, 4, 1 }, { 16, 64, 512 } });

void FillPattern(benchmark::State& state)
{
    const World world((int)state.range(0), 512, 512);
    const Rect r = { 0, 0, 512, 512 };
    Pattern gray;
    GetQDGlobalsGray(&gray);
    for (auto _ : state) {
        FillRect(&r, &gray);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(FillPattern)->Arg(32)->Arg(16)->Arg(8)->Arg(4)->Arg(1);

void Mode(benchmark::State& state, short mode)
{
    const World world((int)state.range(0), 512, 512);
    const Rect r = { 0, 0, 512, 512 };
    const RGBColor half = { 0x8000, 0x8000, 0x8000 };
    OpColor(&half);
    PenMode(mode);
    for (auto _ : state) {
        PaintRect(&r);
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(Mode, Xor, patXor)->Arg(32)->Arg(8)->Arg(1);
BENCHMARK_CAPTURE(Mode, Blend, blend)->Arg(32)->Arg(16)->Arg(8);
BENCHMARK_CAPTURE(Mode, Hilite, hilite)->Arg(32)->Arg(8);

void Ovals(benchmark::State& state)
{
    const World world((int)state.range(0), 64, 64);
    const Rect r = { 0, 0, 64, 64 };
    for (auto _ : state) {
        PaintOval(&r);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(Ovals)->Arg(32)->Arg(8)->Arg(1);

} // namespace

BENCHMARK_MAIN();
