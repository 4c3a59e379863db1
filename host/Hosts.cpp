// Which machine this process runs on: the settings, the choice of a host, and what Gestalt has been told to
// say.
#include "Parts.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <optional>

namespace lampblack::host {

namespace {

struct Process {
    Settings settings;
    std::optional<Table> machine;
    bool headless = false;
};

// Left alive at exit, for exit handlers that still call a manager.
Process& ThisProcess()
{
    static Process* process = new Process;
    return *process;
}

std::filesystem::path RunningExecutable()
{
    std::error_code error;
    auto path = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path("/") : path;
}

std::filesystem::path HomeFolder()
{
    if (const char* home = getenv("HOME"); home && *home)
        return home;
    const passwd* user = getpwuid(getuid());
    return user && user->pw_dir && *user->pw_dir ? user->pw_dir : "/";
}

bool IsSet(const char* variable)
{
    const char* value = getenv(variable);
    return value && *value;
}

Screen ScreenFromOutside()
{
    const char* asked = getenv("LAMPBLACK_SCREEN");
    if (asked && std::string_view(asked) == "headless")
        return Screen::Headless;
    if (asked && std::string_view(asked) == "desktop")
        return Screen::Desktop;
    return IsSet("DISPLAY") || IsSet("WAYLAND_DISPLAY") ? Screen::Desktop : Screen::Automatic;
}

bool EndForWantOfADisplay(int, int, const char*)
{
    fputs("lampblack: no display to open a window on; set LAMPBLACK_SCREEN=headless to run without one\n",
          stderr);
    exit(1);
}

Table Choose(Process& process)
{
    Screen screen = process.settings.screen;
    if (screen == Screen::Automatic)
        screen = ScreenFromOutside();
    if (screen == Screen::Desktop)
        return DesktopTable(process.settings);
    process.headless = true;
    Table table = HeadlessTable(process.settings);
    if (screen == Screen::Automatic)
        table.openScreen = EndForWantOfADisplay;
    return table;
}

void Complete(Settings& settings)
{
    if (settings.application.empty())
        settings.application = RunningExecutable();
    if (settings.home.empty())
        settings.home = HomeFolder();
    std::error_code error; // the program may change its folder later
    settings.application = std::filesystem::absolute(settings.application, error);
    settings.home = std::filesystem::absolute(settings.home, error);
    if (settings.width < 1 || settings.width > 16384)
        settings.width = Settings().width;
    if (settings.height < 1 || settings.height > 16384)
        settings.height = Settings().height;
}

using Answers = std::map<OSType, std::optional<SInt32>>;

Answers& GestaltAnswers()
{
    static Answers* answers = new Answers;
    return *answers;
}

} // namespace

bool Configure(const Settings& inSettings)
{
    if (ThisProcess().machine)
        return false;
    ThisProcess().settings = inSettings;
    return true;
}

const Table& Machine()
{
    Process& process = ThisProcess();
    if (!process.machine) {
        Complete(process.settings);
        process.machine = Choose(process);
    }
    return *process.machine;
}

const Settings& CurrentSettings()
{
    Machine();
    return ThisProcess().settings;
}

bool HeadlessIsChosen()
{
    Machine();
    return ThisProcess().headless;
}

void SetGestalt(OSType inSelector, SInt32 inValue)
{
    GestaltAnswers()[inSelector] = inValue;
}

void FailGestalt(OSType inSelector)
{
    GestaltAnswers()[inSelector] = std::nullopt;
}

bool GestaltOverride(OSType inSelector, bool* outFails, SInt32* outValue)
{
    const Answers& answers = GestaltAnswers();
    const auto found = answers.find(inSelector);
    if (found == answers.end())
        return false;
    *outFails = !found->second;
    *outValue = found->second.value_or(0);
    return true;
}

Upward& UpwardHooks()
{
    static Upward hooks;
    return hooks;
}

bool HasScheme(std::string_view inText)
{
    size_t length = 0;
    for (; length < inText.size() && inText[length] != ':'; ++length) {
        const char c = static_cast<char>(inText[length] | 0x20);
        const bool letter = c >= 'a' && c <= 'z';
        const bool later = (inText[length] >= '0' && inText[length] <= '9') || inText[length] == '+' ||
                           inText[length] == '-' || inText[length] == '.';
        if (!letter && (length == 0 || !later))
            return false;
    }
    if (length == 0 || length + 1 >= inText.size())
        return false;
    for (const char c : inText)
        if (static_cast<unsigned char>(c) <= ' ' || c == 127)
            return false;
    return true;
}

} // namespace lampblack::host
