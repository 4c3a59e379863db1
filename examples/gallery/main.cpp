// The gallery: one window with a control of every kind. With --screenshot, or without a display, it draws
// itself on the headless screen, saves the picture and ends.
#include "GalleryWindow.h"

#include <lampblack/host.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

namespace host = lampblack::host;

constexpr char kUsage[] = "usage: gallery [--screenshot FILE.png]\n";
constexpr double kSeconds = 0.5; // shown before a screenshot is taken

bool IsSet(const char* inName)
{
    const char* value = std::getenv(inName);
    return value && *value;
}

bool WantsHeadless()
{
    const char* screen = std::getenv("LAMPBLACK_SCREEN");
    if (screen && *screen)
        return std::strcmp(screen, "headless") == 0;
    return !IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY");
}

std::filesystem::path PictureInWritableFolder()
{
    std::error_code error;
    const auto here = std::filesystem::current_path(error);
    const bool writable = !error && access(here.c_str(), W_OK) == 0;
    return (writable ? here : std::filesystem::temp_directory_path()) / "gallery.png";
}

void ConfigureHeadless()
{
    host::Settings settings;
    settings.screen = host::Screen::Headless;
    settings.clock = host::Clock::Virtual;
    settings.width = 720;
    settings.height = 560;
    host::Configure(settings);
}

int SavePicture(const std::filesystem::path& inFile)
{
    host::RunFor(kSeconds);
    if (!host::SaveScreenshot(inFile)) {
        std::fprintf(stderr, "gallery: cannot write %s\n", inFile.c_str());
        return 1;
    }
    std::printf("%s\n", inFile.c_str());
    return 0;
}

int Run(const std::filesystem::path& inPicture)
{
    InitializeMacOSHelpers();
    GalleryWindow window;
    window.StandardSetup();
    window.Show();
    if (!inPicture.empty())
        return SavePicture(inPicture);
    RunApplicationEventLoop();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const bool named = argc == 3 && std::strcmp(argv[1], "--screenshot") == 0;
    if (argc != 1 && !named) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    std::filesystem::path picture = named ? argv[2] : "";
    if (!named && WantsHeadless()) {
        picture = PictureInWritableFolder();
        std::printf(
            "There is no display, so the gallery draws itself on the headless screen. With DISPLAY or\n"
            "WAYLAND_DISPLAY set it opens a window. The picture:\n");
    }
    if (!picture.empty())
        ConfigureHeadless();
    try {
        const int result = Run(picture);
        ExitMacOSHelpers();
        return result;
    } catch (long status) {
        std::fprintf(stderr, "gallery: its windows cannot be made (error %ld); is gallery.rsrc beside it?\n",
                     status);
        return 1;
    }
}
