// Which of the desktop cursors stands for which theme cursor.
#include "Cursors.h"

#include <algorithm>
#include <vector>

namespace lampblack::host {

namespace {

// By theme cursor: arrow, copy, alias, contextual menu, I-beam, cross, plus, watch, closed hand, open hand,
// pointing hand, the three counting hands, spinning, resize left, right, left and right, not allowed,
// resize up, down, up and down, poof.
constexpr SDL_SystemCursor kOfTheme[] = {
    SDL_SYSTEM_CURSOR_ARROW,     SDL_SYSTEM_CURSOR_ARROW,  SDL_SYSTEM_CURSOR_ARROW,
    SDL_SYSTEM_CURSOR_ARROW,     SDL_SYSTEM_CURSOR_IBEAM,  SDL_SYSTEM_CURSOR_CROSSHAIR,
    SDL_SYSTEM_CURSOR_CROSSHAIR, SDL_SYSTEM_CURSOR_WAIT,   SDL_SYSTEM_CURSOR_SIZEALL,
    SDL_SYSTEM_CURSOR_HAND,      SDL_SYSTEM_CURSOR_HAND,   SDL_SYSTEM_CURSOR_WAIT,
    SDL_SYSTEM_CURSOR_WAIT,      SDL_SYSTEM_CURSOR_WAIT,   SDL_SYSTEM_CURSOR_WAIT,
    SDL_SYSTEM_CURSOR_SIZEWE,    SDL_SYSTEM_CURSOR_SIZEWE, SDL_SYSTEM_CURSOR_SIZEWE,
    SDL_SYSTEM_CURSOR_NO,        SDL_SYSTEM_CURSOR_SIZENS, SDL_SYSTEM_CURSOR_SIZENS,
    SDL_SYSTEM_CURSOR_SIZENS,    SDL_SYSTEM_CURSOR_ARROW,
};

// A cursor's own pixels carry their colour undiminished by their alpha.
uint32_t Straight(uint32_t inPixel)
{
    const uint32_t alpha = inPixel >> 24;
    if (alpha == 0 || alpha == 255)
        return inPixel;
    const auto part = [&](int shift) {
        return std::min(255u, ((inPixel >> shift & 0xFF) * 255 + alpha / 2) / alpha);
    };
    return alpha << 24 | part(16) << 16 | part(8) << 8 | part(0);
}

std::vector<uint32_t> Enlarged(const CursorImage& inImage, int inTimes)
{
    const int width = inImage.width * inTimes, height = inImage.height * inTimes;
    std::vector<uint32_t> pixels(static_cast<size_t>(width) * height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            pixels[static_cast<size_t>(y) * width + x] =
                Straight(inImage.pixels[(y / inTimes) * inImage.width + x / inTimes]);
    return pixels;
}

} // namespace

void Cursors::SetTheme(SInt32 inCursor)
{
    const bool known = inCursor >= 0 && inCursor < static_cast<SInt32>(std::size(kOfTheme));
    const SDL_SystemCursor system = known ? kOfTheme[inCursor] : SDL_SYSTEM_CURSOR_ARROW;
    fTheme = inCursor;
    if (system == SDL_SYSTEM_CURSOR_ARROW) // it is there without being loaded
        return SDL_SetCursor(SDL_GetDefaultCursor());
    if (!fSystem[system])
        fSystem[system] = SDL_CreateSystemCursor(system);
    if (fSystem[system])
        SDL_SetCursor(fSystem[system]);
}

void Cursors::SetImage(const CursorImage& inImage, double inScale)
{
    if (!inImage.pixels || inImage.width < 1 || inImage.height < 1 || inImage.width > 256 ||
        inImage.height > 256)
        return;
    const int times = std::clamp(static_cast<int>(inScale + 0.5), 1, 4);
    std::vector<uint32_t> pixels = Enlarged(inImage, times);
    SDL_Surface* surface =
        SDL_CreateRGBSurfaceWithFormatFrom(pixels.data(), inImage.width * times, inImage.height * times, 32,
                                           inImage.width * times * 4, SDL_PIXELFORMAT_ARGB8888);
    if (!surface)
        return;
    SDL_Cursor* cursor =
        SDL_CreateColorCursor(surface, std::clamp<int>(inImage.hotSpot.h, 0, inImage.width - 1) * times,
                              std::clamp<int>(inImage.hotSpot.v, 0, inImage.height - 1) * times);
    SDL_FreeSurface(surface);
    if (!cursor)
        return;
    SDL_SetCursor(cursor);
    if (fImage)
        SDL_FreeCursor(fImage);
    fImage = cursor;
}

void Cursors::Show(bool inVisible)
{
    SDL_ShowCursor(inVisible ? SDL_ENABLE : SDL_DISABLE);
}

} // namespace lampblack::host
