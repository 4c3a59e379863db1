// The viewer: shows each 'DLOG' of a resource file as the window it describes, with its items.
//
//     view FILE                      one after the other, on the screen
//     view                           the file of the last time
//     view FILE --screenshots DIR    all of them as DIR/DLOG_ID.png, without a display
#include "LastFile.h"
#include "ViewerWindow.h"

#include <lampblack/host.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

namespace host = lampblack::host;

constexpr char kUsage[] = "usage: view [FILE] | view FILE --screenshots DIR\n";
constexpr unsigned char kPreferencesName[] = "\033Resource Viewer Preferences";
constexpr OSType kViewerSignature = 'LBvw', kPreferencesFileType = 'pref';
constexpr Point kPicturePlace = { 60, 40 };
constexpr double kSeconds = 0.1; // shown before a screenshot is taken

bool IsSet(const char* inName)
{
    const char* value = std::getenv(inName);
    return value && *value;
}

bool HasDisplay()
{
    const char* screen = std::getenv("LAMPBLACK_SCREEN");
    if (screen && *screen)
        return std::strcmp(screen, "headless") != 0;
    return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY");
}

bool OpenOrComplain(const std::filesystem::path& inPath, DialogFile* outFile)
{
    const OSStatus status = outFile->Open(inPath);
    if (status != noErr)
        std::fprintf(stderr, "view: %s: no resources can be read (error %d)\n", inPath.c_str(), (int)status);
    return status == noErr;
}

// Answers whether the picture was written; a dialog that cannot be made is told and left out.
bool SavePicture(const DialogFile& inFile, size_t inIndex, const std::filesystem::path& inFolder)
{
    const SInt16 id = inFile.Dialogs()[inIndex].id;
    const DialogRef dialog = inFile.Show(inIndex, kPicturePlace);
    if (!dialog) {
        std::fprintf(stderr, "view: DLOG %d cannot be made (error %d)\n", id, ResError());
        return true;
    }
    host::RunFor(kSeconds);
    const std::filesystem::path picture = inFolder / ("DLOG_" + std::to_string(id) + ".png");
    const bool saved = host::SaveScreenshot(picture);
    if (saved)
        std::printf("%s\n", picture.c_str());
    else
        std::fprintf(stderr, "view: cannot write %s\n", picture.c_str());
    DisposeDialog(dialog);
    return saved;
}

int SavePictures(const std::filesystem::path& inPath, const std::filesystem::path& inFolder)
{
    std::error_code error;
    std::filesystem::create_directories(inFolder, error);
    DialogFile file;
    if (!OpenOrComplain(inPath, &file))
        return 1;
    if (file.Dialogs().empty())
        std::fprintf(stderr, "view: %s holds no dialogs\n", inPath.c_str());
    for (size_t i = 0; i < file.Dialogs().size(); ++i)
        if (!SavePicture(file, i, inFolder))
            return 1;
    return 0;
}

void ConfigureHeadless()
{
    host::Settings settings;
    settings.screen = host::Screen::Headless;
    settings.clock = host::Clock::Virtual;
    host::Configure(settings);
}

int ShowFile(const std::filesystem::path& inPath)
{
    ViewerWindow window;
    window.StandardSetup();
    DialogFile file;
    if (!OpenOrComplain(inPath, &file))
        return 1;
    RememberFile(inPath);
    window.Show();
    window.ShowFile(inPath, file);
    RunApplicationEventLoop();
    window.StandardTeardown();
    return 0;
}

int Show(const std::filesystem::path& inPath, const std::filesystem::path& inFolder)
{
    if (inPath.empty()) {
        std::fprintf(stderr, "view: there is no file of the last time\n%s", kUsage);
        return 2;
    }
    return inFolder.empty() ? ShowFile(inPath) : SavePictures(inPath, inFolder);
}

// An empty path is the file of the last time.
int Run(const std::filesystem::path& inPath, std::filesystem::path inFolder)
{
    if (inFolder.empty() && !HasDisplay()) {
        inFolder = std::filesystem::temp_directory_path() / "lampblack-view";
        std::printf("There is no display (DISPLAY, WAYLAND_DISPLAY), so the dialogs are drawn into %s\n",
                    inFolder.c_str());
    }
    if (!inFolder.empty())
        ConfigureHeadless();
    InitializeMacOSHelpers();
    DefinePreferenceFile(kPreferencesName, kViewerSignature, kPreferencesFileType, false);
    const int result = Show(inPath.empty() ? RememberedFile() : inPath, inFolder);
    ExitMacOSHelpers();
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    const bool pictures = argc == 4 && std::strcmp(argv[2], "--screenshots") == 0;
    if (argc > 2 && !pictures) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    try {
        return Run(argc > 1 ? std::filesystem::absolute(argv[1]) : "", pictures ? argv[3] : "");
    } catch (long status) {
        std::fprintf(stderr, "view: its window cannot be made (error %ld); is view.rsrc beside it?\n",
                     status);
        return 1;
    }
}
