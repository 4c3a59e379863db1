// A JPEG of 1024 x 768 pixels decoded into a world of depth 32, and such a world encoded. The limit is
// libjpeg-turbo called directly, on plain memory.
#include <Carbon/Carbon.h>
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <jpeglib.h>

#ifdef LAMPBLACK_BENCH_SDL_IMAGE
#include <SDL_image.h>
#endif
#ifdef LAMPBLACK_BENCH_GDK_PIXBUF
#include <gdk-pixbuf/gdk-pixbuf.h>
#endif

namespace {

constexpr int kWidth = 1024, kHeight = 768, kQuality = 75; // codecNormalQuality

[[noreturn]] void Fail(const char* inWhat)
{
    std::fprintf(stderr, "images_bench: %s failed\n", inWhat);
    std::exit(1);
}

// Slopes, edges and some noise, as in a photograph.
const std::vector<uint32_t>& Photograph()
{
    static const std::vector<uint32_t> pixels = [] {
        std::vector<uint32_t> image((size_t)kWidth * kHeight);
        std::mt19937 random(1904);
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x) {
                const int shade = ((x / 64 + y / 48) & 1) * 60 + (int)(random() % 16);
                image[(size_t)y * kWidth + (size_t)x] = (uint32_t)(x / 6 + shade) % 256 << 16 |
                                                        (uint32_t)(y / 5 + shade) % 256 << 8 |
                                                        (uint32_t)((x + y) / 12 + shade) % 256;
            }
        return image;
    }();
    return pixels;
}

std::string EncodeDirectly(const uint32_t* inPixels)
{
    jpeg_compress_struct info;
    jpeg_error_mgr errors;
    info.err = jpeg_std_error(&errors);
    jpeg_create_compress(&info);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&info, &bytes, &size);
    info.image_width = kWidth;
    info.image_height = kHeight;
    info.input_components = 4;
    info.in_color_space = JCS_EXT_BGRX;
    jpeg_set_defaults(&info);
    jpeg_set_quality(&info, kQuality, TRUE);
    jpeg_start_compress(&info, TRUE);
    while (info.next_scanline < info.image_height) {
        auto* row = (JSAMPROW)(inPixels + (size_t)info.next_scanline * kWidth);
        jpeg_write_scanlines(&info, &row, 1);
    }
    jpeg_finish_compress(&info);
    jpeg_destroy_compress(&info);
    std::string result(reinterpret_cast<char*>(bytes), size);
    std::free(bytes);
    return result;
}

const std::string& Jpeg()
{
    static const std::string bytes = EncodeDirectly(Photograph().data());
    return bytes;
}

// The rows straight into the pixels.
void DecodeDirectly(const std::string& inBytes, uint32_t* outPixels)
{
    jpeg_decompress_struct info;
    jpeg_error_mgr errors;
    info.err = jpeg_std_error(&errors);
    jpeg_create_decompress(&info);
    jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(inBytes.data()), inBytes.size());
    jpeg_read_header(&info, TRUE);
    info.out_color_space = JCS_EXT_BGRX;
    jpeg_start_decompress(&info);
    while (info.output_scanline < info.output_height) {
        JSAMPROW rows[16];
        for (int i = 0; i < 16; ++i)
            rows[i] = (JSAMPROW)(outPixels + ((size_t)info.output_scanline + (size_t)i) * kWidth);
        jpeg_read_scanlines(&info, rows, 16);
    }
    jpeg_finish_decompress(&info);
    jpeg_destroy_decompress(&info);
}

struct World {
    World()
    {
        const Rect bounds = { 0, 0, kHeight, kWidth };
        if (NewGWorld(&world, 32, &bounds, nullptr, nullptr, 0) != noErr)
            Fail("NewGWorld");
        SetGWorld(world, nullptr);
        std::memcpy(GetPixBaseAddr(GetGWorldPixMap(world)), Photograph().data(), Photograph().size() * 4);
    }
    ~World()
    {
        SetGWorld(nullptr, nullptr);
        DisposeGWorld(world);
    }
    GWorldPtr world = nullptr;
};

Handle NewData(const std::string& inBytes)
{
    Handle handle = nullptr;
    if (PtrToHand(inBytes.data(), &handle, (long)inBytes.size()) != noErr)
        Fail("PtrToHand");
    return handle;
}

void JpegDecodeLimit(benchmark::State& state)
{
    std::vector<uint32_t> pixels((size_t)kWidth * (kHeight + 16));
    for (auto _ : state)
        DecodeDirectly(Jpeg(), pixels.data());
}
BENCHMARK(JpegDecodeLimit)->Unit(benchmark::kMillisecond);

void JpegDecode(benchmark::State& state)
{
    const World world;
    const Handle data = NewData(Jpeg());
    for (auto _ : state) {
        ComponentInstance importer = nullptr;
        if (OpenADefaultComponent('grip', 'JPEG', &importer) || GraphicsImportSetDataHandle(importer, data) ||
            GraphicsImportDraw(importer))
            Fail("GraphicsImportDraw");
        CloseComponent(importer);
    }
    DisposeHandle(data);
}
BENCHMARK(JpegDecode)->Unit(benchmark::kMillisecond);

void JpegEncodeLimit(benchmark::State& state)
{
    for (auto _ : state)
        benchmark::DoNotOptimize(EncodeDirectly(Photograph().data()));
}
BENCHMARK(JpegEncodeLimit)->Unit(benchmark::kMillisecond);

void JpegEncode(benchmark::State& state)
{
    const World world;
    const Handle out = NewHandle(0);
    for (auto _ : state) {
        ComponentInstance exporter = nullptr;
        if (OpenADefaultComponent('grex', 'JPEG', &exporter) ||
            GraphicsExportSetInputGWorld(exporter, world.world) ||
            GraphicsExportSetOutputHandle(exporter, out) || GraphicsExportDoExport(exporter, NULL))
            Fail("GraphicsExportDoExport");
        CloseComponent(exporter);
    }
    DisposeHandle(out);
}
BENCHMARK(JpegEncode)->Unit(benchmark::kMillisecond);

#ifdef LAMPBLACK_BENCH_SDL_IMAGE
void JpegDecodeSdlImage(benchmark::State& state)
{
    for (auto _ : state) {
        SDL_RWops* stream = SDL_RWFromConstMem(Jpeg().data(), (int)Jpeg().size());
        SDL_Surface* image = IMG_LoadJPG_RW(stream);
        SDL_Surface* pixels = SDL_ConvertSurfaceFormat(image, SDL_PIXELFORMAT_RGB888, 0);
        SDL_FreeSurface(pixels);
        SDL_FreeSurface(image);
        SDL_RWclose(stream);
    }
}
BENCHMARK(JpegDecodeSdlImage)->Unit(benchmark::kMillisecond);

void JpegEncodeSdlImage(benchmark::State& state)
{
    auto* pixels = const_cast<uint32_t*>(Photograph().data());
    SDL_Surface* image =
        SDL_CreateRGBSurfaceWithFormatFrom(pixels, kWidth, kHeight, 32, kWidth * 4, SDL_PIXELFORMAT_RGB888);
    std::vector<char> out((size_t)kWidth * kHeight * 4);
    for (auto _ : state) {
        SDL_RWops* stream = SDL_RWFromMem(out.data(), (int)out.size());
        if (IMG_SaveJPG_RW(image, stream, 0, kQuality) != 0)
            Fail("IMG_SaveJPG_RW");
        SDL_RWclose(stream);
    }
    SDL_FreeSurface(image);
}
BENCHMARK(JpegEncodeSdlImage)->Unit(benchmark::kMillisecond);
#endif

#ifdef LAMPBLACK_BENCH_GDK_PIXBUF
void JpegDecodeGdkPixbuf(benchmark::State& state)
{
    for (auto _ : state) {
        GdkPixbufLoader* loader = gdk_pixbuf_loader_new();
        gdk_pixbuf_loader_write(loader, reinterpret_cast<const guchar*>(Jpeg().data()), Jpeg().size(),
                                nullptr);
        gdk_pixbuf_loader_close(loader, nullptr);
        g_object_unref(loader);
    }
}
BENCHMARK(JpegDecodeGdkPixbuf)->Unit(benchmark::kMillisecond);
#endif

} // namespace

BENCHMARK_MAIN();
