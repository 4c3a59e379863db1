// The gallery: one window with a control of every kind. With --screenshot, or without a display, it draws
// itself on the headless screen, saves the picture and ends.
#include "GalleryWindow.h"

#include <lampblack/host.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <unistd.h>

namespace {

namespace host = lampblack::host;

constexpr char kUsage[] = "usage: gallery [--page about|sprites|fonts|picture] [--picture FILE] "
                          "[--screenshot FILE.png]\n";
constexpr double kSeconds = 0.5; // shown before a screenshot is taken

struct Options {
    std::string page;
    std::string picture; // the file to be shown on the picture page
    std::filesystem::path screenshot;
};

// False for what is no option.
bool Read(int argc, char** argv, Options* outOptions)
{
    for (int i = 1; i + 1 < argc; i += 2) {
        if (std::strcmp(argv[i], "--page") == 0)
            outOptions->page = argv[i + 1];
        else if (std::strcmp(argv[i], "--picture") == 0)
            outOptions->picture = std::filesystem::absolute(argv[i + 1]);
        else if (std::strcmp(argv[i], "--screenshot") == 0)
            outOptions->screenshot = argv[i + 1];
        else
            return false;
    }
    return argc % 2 == 1;
}

struct NamedPage {
    const char* name;
    void (GalleryWindow::*show)(SInt32);
};

constexpr NamedPage kPages[] = {
    { "about", &GalleryWindow::ShowAbout },
    { "sprites", &GalleryWindow::ShowSprites },
    { "fonts", &GalleryWindow::ShowFonts },
    { "picture", &GalleryWindow::ShowPicture },
};

const NamedPage* PageNamed(const std::string& inName)
{
    for (const NamedPage& page : kPages)
        if (inName == page.name)
            return &page;
    return nullptr;
}

void ShowWhatWasAskedFor(GalleryWindow& ioWindow, const Options& inOptions)
{
    if (const NamedPage* page = PageNamed(inOptions.page))
        (ioWindow.*page->show)(0);
    if (!inOptions.picture.empty())
        ioWindow.ShowPicture(inOptions.picture);
}

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

int Run(const Options& inOptions)
{
    InitializeMacOSHelpers();
    GalleryWindow window;
    window.StandardSetup();
    window.Show();
    ShowWhatWasAskedFor(window, inOptions);
    if (!inOptions.screenshot.empty())
        return SavePicture(inOptions.screenshot);
    RunApplicationEventLoop();
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    Options options;
    if (!Read(argc, argv, &options) || (!options.page.empty() && !PageNamed(options.page))) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    if (options.screenshot.empty() && WantsHeadless()) {
        options.screenshot = PictureInWritableFolder();
        std::printf(
            "There is no display, so the gallery draws itself on the headless screen. With DISPLAY or\n"
            "WAYLAND_DISPLAY set it opens a window. The picture:\n");
    }
    if (!options.screenshot.empty())
        ConfigureHeadless();
    try {
        const int result = Run(options);
        ExitMacOSHelpers();
        return result;
    } catch (long status) {
        std::fprintf(stderr, "gallery: its windows cannot be made (error %ld); is gallery.rsrc beside it?\n",
                     status);
        return 1;
    }
}
