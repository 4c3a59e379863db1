// From the start of a process to its first frame on a display of its own, and the memory it holds then: a
// window with a text and a button, by this platform and by its peers. The starts of all programs take turns.
//
//     start_bench [STARTS [PICTURE-FOLDER]]
//
// The frame is seen from outside, as a user sees it: the display shows at least three colours that it did not
// show before (ground, button and text), whoever draws them.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XShm.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <fcntl.h>
#include <pwd.h>
#include <spawn.h>
#include <sys/ipc.h>
#include <sys/resource.h>
#include <sys/shm.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kWidth = 1024, kHeight = 768;
constexpr double kPatience = 10000; // milliseconds for one start

double Milliseconds(Clock::time_point from)
{
    return std::chrono::duration<double, std::milli>(Clock::now() - from).count();
}

pid_t Spawn(const std::string& program, std::vector<std::string> arguments, int descriptorThree = -1)
{
    std::vector<char*> pointers = { const_cast<char*>(program.c_str()) };
    for (auto& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (descriptorThree >= 0)
        posix_spawn_file_actions_adddup2(&actions, descriptorThree, 3);
    posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
    pid_t pid = -1;
    const int result = posix_spawnp(&pid, program.c_str(), &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    return result == 0 ? pid : -1;
}

void End(pid_t pid)
{
    kill(pid, SIGKILL);
    waitpid(pid, nullptr, 0);
}

// A display of our own, so that nothing else is seen.
class Server {
public:
    Server()
    {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0)
            return;
        fPid =
            Spawn("Xvfb", { "-displayfd", "3", "-screen", "0", "1024x768x24", "-nolisten", "tcp" }, ends[1]);
        close(ends[1]);
        std::string number; // to the end of its line: the server ends when nobody reads all of it
        for (char digit; fPid > 0 && read(ends[0], &digit, 1) == 1 && digit != '\n';)
            number += digit;
        if (!number.empty())
            fName = ":" + number;
        close(ends[0]);
    }
    ~Server()
    {
        if (fPid > 0)
            End(fPid);
    }
    const std::string& Name() const { return fName; } // empty: there is none

private:
    pid_t fPid = -1;
    std::string fName;
};

// The display as a picture in shared memory.
class Eye {
public:
    bool Open(const char* name)
    {
        for (int tries = 0; !fDisplay && tries < 100; ++tries, usleep(20000))
            fDisplay = XOpenDisplay(name);
        if (!fDisplay || !XShmQueryExtension(fDisplay))
            return false;
        fImage = XShmCreateImage(fDisplay, DefaultVisual(fDisplay, 0), 24, ZPixmap, nullptr, &fMemory, kWidth,
                                 kHeight);
        fMemory.shmid =
            shmget(IPC_PRIVATE, static_cast<size_t>(fImage->bytes_per_line) * kHeight, IPC_CREAT | 0600);
        fMemory.shmaddr = fImage->data = static_cast<char*>(shmat(fMemory.shmid, nullptr, 0));
        const bool attached = XShmAttach(fDisplay, &fMemory) != 0;
        XSync(fDisplay, False);
        shmctl(fMemory.shmid, IPC_RMID, nullptr);
        return attached;
    }

    // Whether three colours are there that are not the desk's.
    bool SeesFrame()
    {
        XShmGetImage(fDisplay, DefaultRootWindow(fDisplay), fImage, 0, 0, AllPlanes);
        const auto* pixels = reinterpret_cast<const uint32_t*>(fImage->data);
        uint32_t seen[4] = { kDesk, kDesk, kDesk, kDesk };
        int count = 0;
        for (int i = 0; i < kWidth * kHeight; ++i) {
            const uint32_t colour = pixels[i] & 0xFFFFFF;
            if (colour == kDesk || colour == seen[0] || colour == seen[1] || colour == seen[2])
                continue;
            seen[count++] = colour;
            if (count == 3)
                return true;
        }
        return false;
    }

    void ClearDesk()
    {
        XSetWindowBackground(fDisplay, DefaultRootWindow(fDisplay), kDesk);
        XClearWindow(fDisplay, DefaultRootWindow(fDisplay));
        XSync(fDisplay, False);
    }

    void Save(const std::string& path) const
    {
        std::ofstream file(path, std::ios::binary);
        file << "P6\n" << kWidth << " " << kHeight << "\n255\n";
        const auto* pixels = reinterpret_cast<const uint32_t*>(fImage->data);
        for (int i = 0; i < kWidth * kHeight; ++i)
            file.put(static_cast<char>(pixels[i] >> 16))
                .put(static_cast<char>(pixels[i] >> 8))
                .put(static_cast<char>(pixels[i]));
    }

private:
    static constexpr uint32_t kDesk = 0x123456;

    Display* fDisplay = nullptr;
    XImage* fImage = nullptr;
    XShmSegmentInfo fMemory = {};
};

struct Program {
    std::string name, path;
    std::vector<double> milliseconds, processor, faults, residentMiB, privateMiB;
};

void ForgetFigures(Program& program)
{
    program = { program.name, program.path, {}, {}, {}, {}, {} };
}

// What the process has used until it ended: milliseconds of processor, and pages that it touched first.
struct Use {
    double milliseconds, faults;
};

Use EndAndCount(pid_t pid)
{
    rusage use = {};
    kill(pid, SIGKILL);
    wait4(pid, nullptr, 0, &use);
    const auto milliseconds = [](const timeval& time) { return 1e3 * time.tv_sec + 1e-3 * time.tv_usec; };
    return { milliseconds(use.ru_utime) + milliseconds(use.ru_stime), static_cast<double>(use.ru_minflt) };
}

double MemoryOf(pid_t pid, const std::vector<std::string>& labels)
{
    std::ifstream file("/proc/" + std::to_string(pid) + "/smaps_rollup");
    double kilobytes = 0;
    for (std::string line; std::getline(file, line);)
        for (const auto& label : labels)
            if (line.rfind(label, 0) == 0)
                kilobytes += atof(line.c_str() + label.size());
    return kilobytes / 1024;
}

bool Start(Program& program, Eye& eye, const std::string& picture)
{
    eye.ClearDesk();
    const auto start = Clock::now();
    const pid_t pid = Spawn(program.path, {});
    bool seen = false;
    while (pid > 0 && !seen && Milliseconds(start) < kPatience) {
        usleep(300);
        seen = eye.SeesFrame();
    }
    if (seen) {
        program.milliseconds.push_back(Milliseconds(start));
        program.residentMiB.push_back(MemoryOf(pid, { "Rss:" }));
        program.privateMiB.push_back(MemoryOf(pid, { "Private_Clean:", "Private_Dirty:" }));
        if (!picture.empty())
            eye.Save(picture);
    }
    if (pid > 0) {
        const Use use = EndAndCount(pid);
        program.processor.push_back(use.milliseconds);
        program.faults.push_back(use.faults);
    }
    usleep(50000); // the display takes the window away
    return seen;
}

double Median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void Print(const std::vector<Program>& programs)
{
    const Program& limit = programs.front();
    const double time = Median(limit.milliseconds), memory = Median(limit.residentMiB);
    printf("%-12s %10s %8s %12s %8s %12s %8s %12s\n", "program", "start ms", "x limit", "processor ms",
           "faults", "resident MiB", "x limit", "private MiB");
    for (const Program& program : programs) {
        const double t = Median(program.milliseconds), m = Median(program.residentMiB);
        printf("%-12s %10.1f %8.2f %12.1f %8.0f %12.1f %8.2f %12.1f\n", program.name.c_str(), t, t / time,
               Median(program.processor), Median(program.faults), m, m / memory, Median(program.privateMiB));
    }
}

std::vector<Program> BuiltPrograms()
{
    std::vector<Program> programs;
    for (const char* name : { "limit", "sdl", "lampblack", "fltk", "qt", "gtk" }) {
        const std::string path = std::string(START_PROGRAMS) + "/start_" + name;
        if (access(path.c_str(), X_OK) == 0)
            programs.push_back({ name, path, {}, {}, {}, {}, {} });
        else
            printf("%s is not built here\n", name);
    }
    return programs;
}

void LeaveTheDesktop()
{
    for (const char* name :
         { "WAYLAND_DISPLAY", "LAMPBLACK_SCREEN", "LAMPBLACK_SCALE", "DBUS_SESSION_BUS_ADDRESS" })
        unsetenv(name);
    setenv("GDK_BACKEND", "x11", 1);
    setenv("QT_QPA_PLATFORM", "xcb", 1);
    setenv("NO_AT_BRIDGE", "1", 1);
}

// A home of its own for what programs keep from one start to the next, and an ordinary user in it: for the
// administrator the libraries keep nothing.
class StUser {
public:
    StUser()
    {
        if (!mkdtemp(fHome))
            fHome[0] = 0;
        const passwd* user = geteuid() == 0 ? getpwnam("nobody") : nullptr;
        if (user && (chown(fHome, user->pw_uid, user->pw_gid) != 0 || setgid(user->pw_gid) != 0 ||
                     setuid(user->pw_uid) != 0))
            puts("start_bench: these are the administrator's starts");
        setenv("HOME", fHome, 1);
        for (const char* name : { "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XCOMPOSECACHE" })
            unsetenv(name);
    }
    ~StUser()
    {
        std::error_code error;
        if (fHome[0])
            std::filesystem::remove_all(fHome, error);
    }

private:
    char fHome[32] = "/tmp/start_bench.XXXXXX";
};

} // namespace

int main(int argc, char** argv)
{
    const int starts = argc > 1 ? std::max(1, atoi(argv[1])) : 9;
    const std::string folder = argc > 2 ? argv[2] : "";
    LeaveTheDesktop();
    const StUser user;
    Server server;
    Eye eye;
    if (server.Name().empty() || !eye.Open(server.Name().c_str())) {
        puts("start_bench: there is no Xvfb");
        return 77;
    }
    setenv("DISPLAY", server.Name().c_str(), 1);
    std::vector<Program> programs = BuiltPrograms();
    if (programs.empty())
        return 1;
    for (int i = -1; i < starts; ++i) // the first round only fills the caches
        for (Program& program : programs) {
            if (i == 0)
                ForgetFigures(program);
            if (!Start(program, eye, folder.empty() ? "" : folder + "/" + program.name + ".ppm"))
                printf("%s showed no frame\n", program.name.c_str());
        }
    Print(programs);
    return 0;
}
