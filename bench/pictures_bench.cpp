// Packed rows and pictures. The limit of unpacking is memcpy of as many bytes; Plain rows read packet by
// packet.
#include <Carbon/Quickdraw.h>

#include <benchmark/benchmark.h>
#include <lampblack/host.h>

#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr int kBlock = 32000;

// Rows of an image with flat areas, edges and noise.
std::vector<char> MakeImage(size_t size)
{
    std::mt19937 random(1);
    std::vector<char> image;
    while (image.size() < size) {
        if (random() % 2)
            image.insert(image.end(), 3 + random() % 60, (char)random());
        else
            for (unsigned n = 2 + random() % 30; n > 0; --n)
                image.push_back((char)random());
    }
    image.resize(size);
    return image;
}

std::vector<char> Packed(const std::vector<char>& image, size_t row)
{
    std::vector<char> packed(image.size() * 2);
    Ptr to = packed.data();
    for (size_t at = 0; at < image.size(); at += row) {
        Ptr from = const_cast<Ptr>(image.data() + at);
        PackBits(&from, &to, (short)row);
    }
    packed.resize((size_t)(to - packed.data()) + 64);
    return packed;
}

void Limit(benchmark::State& state)
{
    const std::vector<char> image = MakeImage(kBlock);
    std::vector<char> out(kBlock);
    for (auto _ : state) {
        std::memcpy(out.data(), image.data(), kBlock);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed((int64_t)state.iterations() * kBlock);
}

void Unpack(benchmark::State& state)
{
    const size_t row = (size_t)state.range(0);
    const std::vector<char> image = MakeImage(kBlock);
    std::vector<char> packed = Packed(image, row), out(kBlock);
    for (auto _ : state) {
        Ptr from = packed.data(), to = out.data();
        for (size_t at = 0; at < kBlock; at += row)
            UnpackBits(&from, &to, (short)row);
        benchmark::ClobberMemory();
    }
    if (out != image)
        state.SkipWithError("not what was packed");
    state.SetBytesProcessed((int64_t)state.iterations() * kBlock);
}

// Packet by packet, with a branch for each kind.
void UnpackPlain(benchmark::State& state)
{
    const std::vector<char> image = MakeImage(kBlock), packed = Packed(image, kBlock);
    std::vector<char> out(kBlock);
    for (auto _ : state) {
        const char* from = packed.data();
        char* to = out.data();
        while (to < out.data() + kBlock) {
            const int n = (signed char)*from++;
            if (n >= 0) {
                std::memcpy(to, from, (size_t)n + 1);
                from += n + 1;
                to += n + 1;
            } else {
                std::memset(to, *from++, (size_t)(1 - n));
                to += 1 - n;
            }
        }
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed((int64_t)state.iterations() * kBlock);
}

void Pack(benchmark::State& state)
{
    std::vector<char> image = MakeImage(kBlock), packed(kBlock * 2);
    for (auto _ : state) {
        Ptr from = image.data(), to = packed.data();
        PackBits(&from, &to, kBlock);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed((int64_t)state.iterations() * kBlock);
}

// A picture of 640 x 480 pixels of 8 bits into a world of 32.
void DrawPicture640x480(benchmark::State& state)
{
    const Rect bounds = { 0, 0, 480, 640 };
    GWorldPtr source = nullptr, target = nullptr;
    NewGWorld(&source, 8, &bounds, nullptr, nullptr, 0);
    NewGWorld(&target, 32, &bounds, nullptr, nullptr, 0);
    const PixMapHandle map = GetGWorldPixMap(source);
    const std::vector<char> image = MakeImage(640 * 480);
    for (size_t row = 0; row < 480; ++row)
        std::memcpy(GetPixBaseAddr(map) + row * (size_t)((**map).rowBytes & 0x3FFF), image.data() + row * 640,
                    640);
    SetGWorld(source, nullptr);
    const PicHandle picture = OpenPicture(&bounds);
    CopyBits(GetPortBitMapForCopyBits(source), GetPortBitMapForCopyBits(source), &bounds, &bounds, srcCopy,
             nullptr);
    ClosePicture();
    SetGWorld(target, nullptr);
    for (auto _ : state)
        DrawPicture(picture, &bounds);
    if (QDError() != 0)
        state.SkipWithError("the picture did not play");
    state.SetItemsProcessed((int64_t)state.iterations() * 640 * 480);
    KillPicture(picture);
    DisposeGWorld(source);
    DisposeGWorld(target);
}

BENCHMARK(Limit);
BENCHMARK(UnpackPlain);
BENCHMARK(Unpack)->Arg(kBlock)->Arg(640)->Arg(80);
BENCHMARK(Pack);
BENCHMARK(DrawPicture640x480)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
