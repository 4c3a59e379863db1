// The window and its surface. Only damaged pixels travel; what the desktop uncovers is shown again from the
// surface.
#include "Window.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>

namespace lampblack::host {

namespace {

constexpr int kBatch = 64; // rectangles told to the window at once

// LAMPBLACK_SCALE: window pixels for each screen pixel at first.
double ScaleFromOutside()
{
    const char* value = getenv("LAMPBLACK_SCALE");
    const double scale = value ? strtod(value, nullptr) : 1;
    return scale >= 0.25 && scale <= 16 ? scale : 1;
}

// The scale at which the window is on the display as a whole.
double FittingScale(int inWidth, int inHeight)
{
    SDL_Rect usable;
    const double wanted = ScaleFromOutside();
    if (SDL_GetDisplayUsableBounds(0, &usable) != 0 || usable.w < 64 || usable.h < 64)
        return wanted;
    return std::min(
        { wanted, static_cast<double>(usable.w) / inWidth, static_cast<double>(usable.h) / inHeight });
}

bool FormatOf(const SDL_Surface& inSurface, pixman_format_code_t* outFormat)
{
    switch (inSurface.format->format) {
    case SDL_PIXELFORMAT_RGB888:
    case SDL_PIXELFORMAT_ARGB8888: *outFormat = PIXMAN_x8r8g8b8; return true;
    case SDL_PIXELFORMAT_BGR888:
    case SDL_PIXELFORMAT_ABGR8888: *outFormat = PIXMAN_x8b8g8r8; return true;
    case SDL_PIXELFORMAT_RGB565: *outFormat = PIXMAN_r5g6b5; return true;
    default: return false;
    }
}

// All pages at once: one by one, each first touch costs a fault, which is a good part of a short start.
void Populate(const SDL_Surface& inSurface)
{
#ifdef MADV_POPULATE_WRITE
    const auto page = static_cast<uintptr_t>(sysconf(_SC_PAGESIZE));
    const uintptr_t first = (reinterpret_cast<uintptr_t>(inSurface.pixels) + page - 1) / page * page;
    const uintptr_t end =
        reinterpret_cast<uintptr_t>(inSurface.pixels) + static_cast<uintptr_t>(inSurface.pitch) * inSurface.h;
    if (end / page * page > first)
        madvise(reinterpret_cast<void*>(first), end / page * page - first, MADV_POPULATE_WRITE);
#else
    static_cast<void>(inSurface);
#endif
}

Target TargetOf(const SDL_Surface& inSurface)
{
    Target target = { inSurface.pixels, inSurface.w, inSurface.h, inSurface.pitch, PIXMAN_x8r8g8b8 };
    FormatOf(inSurface, &target.format);
    return target;
}

} // namespace

bool Window::Open(int inWidth, int inHeight, const char* inTitle)
{
    const double scale = FittingScale(inWidth, inHeight);
    fWidth = inWidth;
    fHeight = inHeight;
    fWindow = SDL_CreateWindow(inTitle ? inTitle : "", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                               std::max(1, static_cast<int>(inWidth * scale)),
                               std::max(1, static_cast<int>(inHeight * scale)),
                               SDL_WINDOW_RESIZABLE | SDL_WINDOW_ALLOW_HIGHDPI);
    if (!fWindow)
        return false;
    fOpening = true;
    fWasShown = false;
    if (UsableSurface())
        return true;
    Close();
    return false;
}

void Window::FinishOpening()
{
    if (!fWindow || !fOpening)
        return;
    fOpening = false;
    SDL_SetWindowMinimumSize(fWindow, std::max(1, fWidth / 4), std::max(1, fHeight / 4));
}

void Window::Close()
{
    fScaler.Forget();
    fSurface = nullptr;
    if (fWindow)
        SDL_DestroyWindow(fWindow);
    fWindow = nullptr;
}

SDL_Surface* Window::UsableSurface()
{
    if (fSurface || !fWindow)
        return fSurface;
    pixman_format_code_t format;
    SDL_Surface* surface = SDL_GetWindowSurface(fWindow);
    if (!surface)
        return nullptr;
    if (!FormatOf(*surface, &format)) {
        SDL_SetError("the display has pixels of an unknown form");
        return nullptr;
    }
    fSurface = surface;
    fScaler.Forget();
    fViewport = Viewport(fWidth, fHeight, surface->w, surface->h);
    Populate(*surface);
    ClearMargins(surface);
    return surface;
}

void Window::ClearMargins(SDL_Surface* ioSurface)
{
    const Area& shown = fViewport.Shown();
    if (shown.width < ioSurface->w || shown.height < ioSurface->h)
        SDL_FillRect(ioSurface, nullptr, SDL_MapRGB(ioSurface->format, 0, 0, 0));
    fMarginsStale = true;
}

uint32_t* Window::Memory(int* outRowPixels)
{
    SDL_Surface* surface = UsableSurface();
    if (!surface || SDL_MUSTLOCK(surface) || fViewport.IntegerScale() != 1)
        return nullptr;
    const Target target = TargetOf(*surface);
    if (target.format != PIXMAN_x8r8g8b8 || target.rowBytes % 4)
        return nullptr;
    *outRowPixels = target.rowBytes / 4;
    const Area& shown = fViewport.Shown();
    return static_cast<uint32_t*>(target.pixels) + static_cast<ptrdiff_t>(shown.y) * *outRowPixels + shown.x;
}

void Window::Present(const Frame& inFrame, const Rect* inDamaged, int inCount)
{
    SDL_Surface* surface = UsableSurface();
    if (!surface || !inFrame.pixels || SDL_LockSurface(surface) != 0)
        return;
    SDL_Rect drawn[kBatch];
    const Target target = TargetOf(*surface);
    int count = 0;
    for (int i = 0; i < inCount; ++i) {
        const Area area = fScaler.Draw(inFrame, inDamaged[i], fViewport, target);
        if (area.width > 0 && !fMarginsStale)
            drawn[count++] = { area.x, area.y, area.width, area.height };
        if (count == kBatch || (count && i + 1 == inCount)) {
            SDL_UpdateWindowSurfaceRects(fWindow, drawn, count);
            count = 0;
        }
    }
    if (count)
        SDL_UpdateWindowSurfaceRects(fWindow, drawn, count);
    if (fMarginsStale)
        SDL_UpdateWindowSurface(fWindow);
    fMarginsStale = false;
    fWasShown = true;
    SDL_UnlockSurface(surface);
}

bool Window::Read(Frame* outFrame)
{
    SDL_Surface* surface = fWindow ? UsableSurface() : nullptr;
    if (!surface || SDL_LockSurface(surface) != 0)
        return false;
    fRead.resize(static_cast<size_t>(fWidth) * fHeight);
    for (int y = 0; y < fHeight; ++y)
        for (int x = 0; x < fWidth; ++x) {
            int column, row;
            uint32_t value = 0;
            uint8_t red, green, blue;
            fViewport.WindowPixelOf(x, y, &column, &row);
            const int bytes = surface->format->BytesPerPixel;
            memcpy(&value, static_cast<uint8_t*>(surface->pixels) + row * surface->pitch + column * bytes,
                   bytes);
            SDL_GetRGB(value, surface->format, &red, &green, &blue);
            fRead[static_cast<size_t>(y) * fWidth + x] = static_cast<uint32_t>(red << 16 | green << 8 | blue);
        }
    SDL_UnlockSurface(surface);
    *outFrame = { fRead.data(), fWidth, fWidth, fHeight };
    return true;
}

bool Window::HandleEvent(const SDL_WindowEvent& inEvent)
{
    if (!fWindow)
        return false;
    if (inEvent.event == SDL_WINDOWEVENT_SIZE_CHANGED) {
        // The pixels stay where they are until somebody asks for the new ones.
        int width = 0, height = 0;
        SDL_GetWindowSizeInPixels(fWindow, &width, &height);
        fViewport = Viewport(fWidth, fHeight, width, height);
        fSurface = nullptr;
        return true;
    }
    const bool hasFrame = fSurface && !fMarginsStale;
    if (inEvent.event == SDL_WINDOWEVENT_EXPOSED && hasFrame)
        SDL_UpdateWindowSurface(fWindow);
    return false;
}

Point Window::ScreenPointAt(int inX, int inY) const
{
    int width = 0, height = 0;
    if (fWindow)
        SDL_GetWindowSize(fWindow, &width, &height);
    if (width <= 0 || height <= 0)
        return { 0, 0 };
    // The middle of a window unit, in window pixels, which are smaller on a dense display.
    return fViewport.ScreenPointAt((inX + 0.5) * fViewport.WindowWidth() / width,
                                   (inY + 0.5) * fViewport.WindowHeight() / height);
}

double Window::RefreshInterval() const
{
    SDL_DisplayMode mode;
    const int display = fWindow ? SDL_GetWindowDisplayIndex(fWindow) : 0;
    if (display < 0 || SDL_GetCurrentDisplayMode(display, &mode) != 0 || mode.refresh_rate < 20)
        return 1.0 / 60;
    return 1.0 / mode.refresh_rate;
}

bool Window::HasFocus() const
{
    return fWindow && (SDL_GetWindowFlags(fWindow) & SDL_WINDOW_INPUT_FOCUS);
}

void Window::Raise()
{
    if (fWindow)
        SDL_RaiseWindow(fWindow);
}

void Window::SetTitle(const char* inTitle)
{
    if (fWindow)
        SDL_SetWindowTitle(fWindow, inTitle ? inTitle : "");
}

void Window::SetTextInputArea(const Rect& inGlobal)
{
    int width = 1, height = 1;
    if (!fWindow || inGlobal.right <= inGlobal.left || inGlobal.bottom <= inGlobal.top)
        return;
    SDL_GetWindowSize(fWindow, &width, &height);
    const Area area = fViewport.AreaOf(inGlobal);
    const SDL_Rect units = { area.x * width / fViewport.WindowWidth(),
                             area.y * height / fViewport.WindowHeight(),
                             area.width * width / fViewport.WindowWidth(),
                             area.height * height / fViewport.WindowHeight() };
    SDL_SetTextInputRect(&units);
}

void Window::ToggleFullScreen()
{
    if (!fWindow)
        return;
    const bool full = SDL_GetWindowFlags(fWindow) & SDL_WINDOW_FULLSCREEN_DESKTOP;
    SDL_SetWindowFullscreen(fWindow, full ? 0 : SDL_WINDOW_FULLSCREEN_DESKTOP);
}

} // namespace lampblack::host
