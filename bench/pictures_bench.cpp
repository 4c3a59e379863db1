// Packed rows and pictures. The limit of unpacking is memcpy of as many bytes, in one piece; Plain reads packet
// by packet. The peer is libtiff, which finds the same packets in a file in memory.
#include <Carbon/Quickdraw.h>

#include <benchmark/benchmark.h>
#include <lampblack/host.h>
#ifdef LAMPBLACK_BENCH_TIFF
#include <tiffio.h>
#endif

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

namespace {

constexpr int kBlock = 32000;

enum Data { kFlat, kPicture };

// Rows of an image with flat areas, edges and noise: 25 bytes a packet.
std::vector<char> MakeFlat(size_t size)
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

// The same lengths of runs and of plain bytes as in pictures of 8 bits, 13 bytes a packet: 32 quantiles each of
// 334,000 packets in 177 images that came with published games. Three runs in four have plain bytes behind them.
std::vector<char> MakePicture(size_t size)
{
    static const uint8_t kRuns[32] = { 3, 3, 3, 3, 3, 3,  3,  3,  3,  4,  4,  4,  4,  5,  5,   5,
                                       6, 6, 7, 7, 8, 10, 11, 13, 15, 19, 26, 31, 51, 62, 122, 128 };
    static const uint8_t kPlain[32] = { 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2,  2,  3,  3,  3,
                                        3, 4, 4, 4, 5, 5, 5, 6, 7, 8, 9, 10, 12, 16, 20, 34 };
    std::mt19937 random(1);
    std::vector<char> image;
    char last = 0;
    const auto other = [&] { return last = (char)(last + 1 + random() % 200); }; // than the one before
    while (image.size() < size) {
        image.insert(image.end(), kRuns[random() % 32], other());
        if (random() % 4 != 0)
            for (int n = kPlain[random() % 32]; n > 0; --n)
                image.push_back(other());
    }
    image.resize(size);
    return image;
}

std::vector<char> MakeImage(int data, size_t size = kBlock)
{
    return data == kFlat ? MakeFlat(size) : MakePicture(size);
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
    const std::vector<char> image = MakeImage(kFlat);
    std::vector<char> out(kBlock);
    for (auto _ : state) {
        std::memcpy(out.data(), image.data(), kBlock);
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed((int64_t)state.iterations() * kBlock);
}

void Unpack(benchmark::State& state)
{
    const size_t row = (size_t)state.range(1);
    const std::vector<char> image = MakeImage((int)state.range(0));
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

#ifdef LAMPBLACK_BENCH_TIFF
// A file of one strip in memory.
struct TiffFile {
    std::vector<char> bytes;
    size_t at = 0;
};
tmsize_t ReadTiff(thandle_t file, void* out, tmsize_t size)
{
    auto& tiff = *static_cast<TiffFile*>(file);
    size = std::min<tmsize_t>(size, (tmsize_t)(tiff.bytes.size() - std::min(tiff.at, tiff.bytes.size())));
    std::memcpy(out, tiff.bytes.data() + tiff.at, (size_t)size);
    tiff.at += (size_t)size;
    return size;
}
tmsize_t WriteTiff(thandle_t file, void* bytes, tmsize_t size)
{
    auto& tiff = *static_cast<TiffFile*>(file);
    tiff.bytes.resize(std::max(tiff.bytes.size(), tiff.at + (size_t)size));
    std::memcpy(tiff.bytes.data() + tiff.at, bytes, (size_t)size);
    tiff.at += (size_t)size;
    return size;
}
toff_t SeekTiff(thandle_t file, toff_t offset, int whence)
{
    auto& tiff = *static_cast<TiffFile*>(file);
    tiff.at = (size_t)offset + (whence == SEEK_CUR ? tiff.at : whence == SEEK_END ? tiff.bytes.size() : 0);
    return tiff.at;
}
int CloseTiff(thandle_t)
{
    return 0;
}
toff_t SizeOfTiff(thandle_t file)
{
    return static_cast<TiffFile*>(file)->bytes.size();
}
int MapTiff(thandle_t file, void** base, toff_t* size)
{
    auto& tiff = *static_cast<TiffFile*>(file);
    *base = tiff.bytes.data();
    *size = tiff.bytes.size();
    return 1;
}
void UnmapTiff(thandle_t, void*, toff_t) {}
TIFF* OpenTiff(TiffFile& file, const char* mode)
{
    file.at = 0;
    return TIFFClientOpen("memory", mode, &file, ReadTiff, WriteTiff, SeekTiff, CloseTiff, SizeOfTiff,
                          MapTiff, UnmapTiff);
}

// The packets that it unpacks are ours, so that both read the same.
void WriteStrip(TiffFile& file, std::vector<char>& packed, size_t row)
{
    TIFF* tiff = OpenTiff(file, "w");
    TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, (uint32_t)row);
    TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, (uint32_t)(kBlock / row));
    TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, (uint32_t)(kBlock / row));
    TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 8);
    TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK);
    TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_PACKBITS);
    TIFFWriteRawStrip(tiff, 0, packed.data(), (tmsize_t)packed.size());
    TIFFClose(tiff);
}

void UnpackTiff(benchmark::State& state)
{
    const size_t row = (size_t)state.range(1);
    const std::vector<char> image = MakeImage((int)state.range(0));
    std::vector<char> packed = Packed(image, row), out(kBlock);
    TiffFile file;
    WriteStrip(file, packed, row);
    TIFF* tiff = OpenTiff(file, "r");
    for (auto _ : state) {
        TIFFReadEncodedStrip(tiff, 0, out.data(), kBlock);
        benchmark::ClobberMemory();
    }
    if (out != image)
        state.SkipWithError("not what was packed");
    TIFFClose(tiff);
    state.SetBytesProcessed((int64_t)state.iterations() * kBlock);
}
#endif

// Packet by packet, with a branch for each kind.
void UnpackPlain(benchmark::State& state)
{
    const std::vector<char> image = MakeImage((int)state.range(0)), packed = Packed(image, kBlock);
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
    std::vector<char> image = MakeImage((int)state.range(0)), packed(kBlock * 2);
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
    const std::vector<char> image = MakeImage(kPicture, 640 * 480);
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

void DataAndRows(benchmark::internal::Benchmark* bench)
{
    for (const int data : { kFlat, kPicture })
        for (const int row : { kBlock, 640, 80 })
            bench->Args({ data, row });
}

BENCHMARK(Limit);
BENCHMARK(UnpackPlain)->Arg(kFlat)->Arg(kPicture);
BENCHMARK(Unpack)->Apply(DataAndRows);
#ifdef LAMPBLACK_BENCH_TIFF
BENCHMARK(UnpackTiff)->Apply(DataAndRows);
#endif
BENCHMARK(Pack)->Arg(kFlat)->Arg(kPicture);
BENCHMARK(DrawPicture640x480)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
