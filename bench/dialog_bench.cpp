// A dialog of 100 controls (40 buttons, 30 check boxes, 30 texts): created, shown, drawn once, drawn again
// into an image, destroyed. The limit draws flat records with cached glyphs into one image and puts it once.
// Qt runs on its own headless platform; FLTK needs a display and is left out without one.
#include "dialog/Places.h"

#include <Carbon/Carbon.h>
#include <Carbon/QDOffscreen.h>
#include <benchmark/benchmark.h>
#include <lampblack/host.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

namespace {

// --- The limit

struct Glyph {
    int left, top, width, rows, advance;
    std::vector<uint8_t> mask;
};

std::vector<Glyph> LoadGlyphs()
{
    FcPattern* pattern = FcNameParse((const FcChar8*)"sans-serif");
    FcConfigSubstitute(nullptr, pattern, FcMatchPattern);
    FcDefaultSubstitute(pattern);
    FcResult result;
    FcPattern* match = FcFontMatch(nullptr, pattern, &result);
    FcChar8* file = nullptr;
    FcPatternGetString(match, FC_FILE, 0, &file);
    FT_Library library;
    FT_Face face;
    FT_Init_FreeType(&library);
    std::vector<Glyph> glyphs(128);
    if (FT_New_Face(library, (const char*)file, 0, &face) == 0) {
        FT_Set_Pixel_Sizes(face, 0, 13);
        for (int c = 32; c < 127; ++c) {
            FT_Load_Char(face, (FT_ULong)c, FT_LOAD_RENDER);
            const FT_GlyphSlot slot = face->glyph;
            Glyph& glyph = glyphs[(size_t)c];
            glyph = { slot->bitmap_left,           slot->bitmap_top,
                      (int)slot->bitmap.width,     (int)slot->bitmap.rows,
                      (int)(slot->advance.x >> 6), {} };
            for (int y = 0; y < glyph.rows; ++y)
                glyph.mask.insert(glyph.mask.end(), slot->bitmap.buffer + y * slot->bitmap.pitch,
                                  slot->bitmap.buffer + y * slot->bitmap.pitch + glyph.width);
        }
        FT_Done_Face(face);
    }
    FT_Done_FreeType(library);
    FcPatternDestroy(match);
    FcPatternDestroy(pattern);
    return glyphs;
}

void PutText(std::vector<uint32_t>& ioImage, const std::vector<Glyph>& inGlyphs, const char* inText, int inX,
             int inY)
{
    for (; *inText; ++inText) {
        const Glyph& glyph = inGlyphs[(size_t)*inText];
        for (int y = 0; y < glyph.rows; ++y)
            for (int x = 0; x < glyph.width; ++x) {
                uint32_t& pixel = ioImage[(size_t)((inY - glyph.top + y) * kWidth + inX + glyph.left + x)];
                const uint32_t cover = 255 - glyph.mask[(size_t)(y * glyph.width + x)];
                pixel =
                    ((pixel & 0xFF00FF) * cover >> 8 & 0xFF00FF) | ((pixel & 0xFF00) * cover >> 8 & 0xFF00);
            }
        inX += glyph.advance;
    }
}

void DrawPlaces(std::vector<uint32_t>& ioImage, const std::vector<Glyph>& inGlyphs,
                const std::vector<Place>& inPlaces)
{
    std::fill(ioImage.begin(), ioImage.end(), 0xEEEEEE);
    for (const Place& place : inPlaces) {
        const int size = place.shape == Shape::CheckBox ? 14 : place.width;
        if (place.shape != Shape::Text)
            for (int y = 0; y < place.height; ++y)
                for (int x = 0; x < size; ++x) {
                    const bool edge = x == 0 || y == 0 || x == size - 1 || y == place.height - 1;
                    ioImage[(size_t)((place.y + y) * kWidth + place.x + x)] =
                        edge ? 0x808080 : 0xFFFFFFu - (uint32_t)y * 0x020202;
                }
        PutText(ioImage, inGlyphs, place.text, place.x + 18, place.y + 14);
    }
}

void Limit(benchmark::State& state)
{
    const std::vector<Glyph> glyphs = LoadGlyphs();
    std::vector<uint32_t> screen((size_t)kWidth * kHeight);
    for (auto _ : state) {
        const std::vector<Place> places = Places();
        std::vector<uint32_t> window(screen.size()), picture(screen.size());
        DrawPlaces(window, glyphs, places);
        std::memcpy(screen.data(), window.data(), screen.size() * sizeof screen[0]);
        DrawPlaces(picture, glyphs, places);
        benchmark::DoNotOptimize(screen.data());
        benchmark::DoNotOptimize(picture.data());
    }
}
BENCHMARK(Limit)->Unit(benchmark::kMicrosecond);

// --- This platform

void AddControls(WindowRef inWindow)
{
    constexpr SInt16 kProcIDs[] = { kControlPushButtonProc, kControlCheckBoxProc, kControlStaticTextProc };
    for (const Place& place : Places()) {
        const Rect bounds = { (short)place.y, (short)place.x, (short)(place.y + place.height),
                              (short)(place.x + place.width) };
        Str255 title;
        title[0] = (unsigned char)std::strlen(place.text);
        std::memcpy(title + 1, place.text, title[0]);
        NewControl(inWindow, &bounds, title, true, 0, 0, 1, kProcIDs[(int)place.shape], 0);
    }
}

// Answers what is seen in the middle of the first button's top edge, of the screen and of the picture.
struct Seen {
    UInt32 screen = 0;
    RGBColor picture = {};
};

void OneDialog(GWorldPtr inPicture, Seen* outSeen)
{
    const Rect bounds = { 60, 60, 60 + kHeight, 60 + kWidth }, size = { 0, 0, kHeight, kWidth };
    WindowRef window = nullptr;
    CreateNewWindow(kDocumentWindowClass, kWindowStandardHandlerAttribute, &bounds, &window);
    ControlRef root = nullptr;
    CreateRootControl(window, &root);
    AddControls(window);
    ShowWindow(window);
    lampblack::host::RunFor(0.02); // of the virtual clock: the update and one frame
    CGrafPtr port = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&port, &device);
    SetGWorld(inPicture, nullptr);
    EraseRect(&size);
    DrawControlInCurrentPort(root);
    if (outSeen) {
        GetCPixel(60, 10, &outSeen->picture);
        outSeen->screen = lampblack::host::ScreenPixel({ 70, 120 });
    }
    SetGWorld(port, device);
    DisposeWindow(window);
}

void Lampblack(benchmark::State& state)
{
    const Rect size = { 0, 0, kHeight, kWidth };
    GWorldPtr picture = nullptr;
    NewGWorld(&picture, 32, &size, nullptr, nullptr, 0);
    for (auto _ : state)
        OneDialog(picture, nullptr);
    Seen seen;
    OneDialog(picture, &seen);
    if (seen.screen == 0xFFFFFF || seen.picture.red == 0xFFFF)
        state.SkipWithError("the button's edge is missing");
    DisposeGWorld(picture);
}
BENCHMARK(Lampblack)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    lampblack::host::Settings settings;
    settings.screen = lampblack::host::Screen::Headless;
    settings.clock = lampblack::host::Clock::Virtual;
    if (!lampblack::host::Configure(settings))
        return 2;
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
