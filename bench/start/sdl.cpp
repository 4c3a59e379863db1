// A plain window of the library under the desktop host, for what of a start is that library's.
#include <SDL.h>

int main()
{
    SDL_SetMainReady();
    SDL_SetHint(SDL_HINT_FRAMEBUFFER_ACCELERATION, "0");
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0)
        return 1;
    SDL_Window* window = SDL_CreateWindow("Start", 20, 20, 300, 120, 0);
    SDL_Surface* surface = window ? SDL_GetWindowSurface(window) : nullptr;
    if (!surface)
        return 1;
    const SDL_Rect button = { 210, 80, 70, 20 }, text = { 20, 24, 80, 2 };
    SDL_FillRect(surface, nullptr, 0xFFFFFF);
    SDL_FillRect(surface, &button, 0xDDDDDD);
    SDL_FillRect(surface, &text, 0x202020);
    SDL_UpdateWindowSurface(window);
    for (SDL_Event event; SDL_WaitEvent(&event) && event.type != SDL_QUIT;)
        if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_EXPOSED)
            SDL_UpdateWindowSurface(window);
    SDL_Quit();
    return 0;
}
