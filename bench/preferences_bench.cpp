// Preferences: one value out of a hundred is written so that it survives a power failure, or read. The limits
// do the least that each asks of the machine: four bytes written in place and flushed; a file opened, read
// and closed; a table in memory.
//
// All files lie in the build's own folder: the file system of a temporary folder may be memory.
#include <benchmark/benchmark.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <unistd.h>
#include <unordered_map>
#include <vector>

#ifdef LAMPBLACK_BENCH_SQLITE
#include <sqlite3.h>
#endif
#ifdef LAMPBLACK_BENCH_QT
#include <QSettings>
#endif
#ifdef LAMPBLACK_BENCH_GLIB
#include <glib.h>
#endif

namespace {

namespace fs = std::filesystem;

constexpr int kEntries = 100;
constexpr SInt16 kFirstID = 128;
constexpr OSType kType = 'PREF';

// A folder of the bench's own beside its program.
const fs::path& Folder()
{
    static const fs::path folder = [] {
        fs::path path = fs::read_symlink("/proc/self/exe").parent_path() / "preferences_bench.files";
        fs::remove_all(path);
        fs::create_directories(path);
        return path;
    }();
    return folder;
}

std::string PathOf(const char* inName)
{
    return (Folder() / inName).string();
}

// --- The limit

void Fail(const char* inWhat)
{
    std::perror(inWhat);
    std::exit(1);
}

// A file of a hundred records: an ID and a value.
std::string FlatFile()
{
    const std::string path = PathOf("flat");
    std::vector<SInt32> records;
    for (int i = 0; i < kEntries; ++i) {
        records.push_back(kFirstID + i);
        records.push_back(i);
    }
    const int file = open(path.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0600);
    const size_t size = records.size() * sizeof(SInt32);
    if (file < 0 || write(file, records.data(), size) != (ssize_t)size || fsync(file) != 0)
        Fail("flat");
    close(file);
    return path;
}

void WriteLimit(benchmark::State& ioState)
{
    const int file = open(FlatFile().c_str(), O_RDWR);
    SInt32 value = 0;
    for (auto _ : ioState) {
        ++value;
        const off_t at = (off_t)(value % kEntries) * 8 + 4;
        if (pwrite(file, &value, sizeof value, at) != sizeof value || fdatasync(file) != 0)
            Fail("in place");
    }
    close(file);
}

void WriteReplacing(benchmark::State& ioState)
{
    const std::string path = FlatFile(), temporary = path + ".new";
    const int folder = open(Folder().c_str(), O_RDONLY | O_DIRECTORY);
    std::vector<SInt32> records(kEntries * 2);
    for (auto _ : ioState) {
        ++records[1];
        const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        const size_t size = records.size() * sizeof(SInt32);
        if (file < 0 || write(file, records.data(), size) != (ssize_t)size || fsync(file) != 0)
            Fail("replace");
        close(file);
        if (rename(temporary.c_str(), path.c_str()) != 0 || fsync(folder) != 0)
            Fail("rename");
    }
    close(folder);
}

void ReadClosedLimit(benchmark::State& ioState)
{
    const std::string path = FlatFile();
    SInt32 records[kEntries * 2];
    int key = 0;
    for (auto _ : ioState) {
        const int file = open(path.c_str(), O_RDONLY);
        if (read(file, records, sizeof records) != (ssize_t)sizeof records)
            Fail("read");
        close(file);
        benchmark::DoNotOptimize(records[(key++ % kEntries) * 2 + 1]);
    }
}

void ReadHeldLimit(benchmark::State& ioState)
{
    std::unordered_map<UInt64, SInt32> table;
    for (int i = 0; i < kEntries; ++i)
        table[(UInt64)kType << 16 | (UInt16)(kFirstID + i)] = i;
    int key = 0;
    for (auto _ : ioState) {
        const auto found = table.find((UInt64)kType << 16 | (UInt16)(kFirstID + key++ % kEntries));
        SInt32 value = found != table.end() ? found->second : 0;
        benchmark::DoNotOptimize(value);
    }
}

// --- Ours

void MakePreferences()
{
    static bool isMade = false;
    if (!isMade) {
        setenv("XDG_CONFIG_HOME", Folder().c_str(), true);
        lampblack::host::Settings settings;
        settings.screen = lampblack::host::Screen::Headless;
        settings.home = Folder();
        lampblack::host::Configure(settings);
        InitializeMacOSHelpers();
        isMade = true;
    }
    DefinePreferenceFile((ConstStr255Param) "\013Preferences", 'LBbn', 'pref', false);
    DeletePreferenceFile();
    for (int i = 0; i < kEntries; ++i)
        if (AddSInt32Preference(i, kType, (SInt16)(kFirstID + i), nullptr) != noErr)
            Fail("AddSInt32Preference");
}

// Held open or not, as the argument says.
void WriteOurs(benchmark::State& ioState)
{
    MakePreferences();
    if (ioState.range(0))
        OpenPreferenceFile(fsRdWrPerm);
    SInt32 value = 0;
    for (auto _ : ioState) {
        ++value;
        if (AddSInt32Preference(value, kType, (SInt16)(kFirstID + value % kEntries), nullptr) != noErr)
            ioState.SkipWithError("not written");
    }
    ClosePreferenceFile();
}

void ReadOurs(benchmark::State& ioState)
{
    MakePreferences();
    if (ioState.range(0))
        OpenPreferenceFile(fsRdPerm);
    int key = 0;
    for (auto _ : ioState) {
        const int entry = key++ % kEntries;
        if (GetSInt32Preference(kType, (SInt16)(kFirstID + entry), -1) != entry)
            ioState.SkipWithError("another value");
    }
    ClosePreferenceFile();
}

// --- Peers

#ifdef LAMPBLACK_BENCH_SQLITE
void Check(int inResult, sqlite3* inDatabase)
{
    if (inResult == SQLITE_OK || inResult == SQLITE_DONE || inResult == SQLITE_ROW)
        return;
    std::fprintf(stderr, "SQLite: %s\n", sqlite3_errmsg(inDatabase));
    std::exit(1);
}

void WriteSqlite(benchmark::State& ioState)
{
    const std::string path = PathOf("preferences.sqlite");
    fs::remove(path);
    sqlite3* database = nullptr;
    Check(sqlite3_open(path.c_str(), &database), database);
    Check(sqlite3_exec(database,
                       "PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL;"
                       "CREATE TABLE preferences (id INTEGER PRIMARY KEY, value INTEGER)",
                       nullptr, nullptr, nullptr),
          database);
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(database, "INSERT OR REPLACE INTO preferences VALUES (?, ?)", -1, &statement,
                             nullptr),
          database);
    int value = 0;
    const auto put = [&] {
        ++value;
        sqlite3_bind_int(statement, 1, kFirstID + value % kEntries);
        sqlite3_bind_int(statement, 2, value);
        Check(sqlite3_step(statement), database);
        sqlite3_reset(statement);
    };
    for (int i = 0; i < kEntries; ++i)
        put();
    for (auto _ : ioState)
        put();
    sqlite3_finalize(statement);
    sqlite3_close(database);
}
#endif

#ifdef LAMPBLACK_BENCH_QT
QString KeyName(int inEntry)
{
    return QStringLiteral("entry%1").arg(kFirstID + inEntry);
}

std::vector<QString> FillSettings(const QString& inPath)
{
    QSettings settings(inPath, QSettings::IniFormat);
    std::vector<QString> keys;
    for (int i = 0; i < kEntries; ++i) {
        keys.push_back(KeyName(i));
        settings.setValue(keys.back(), i);
    }
    settings.sync();
    return keys;
}

// Writes the file, without a flush: less than what the others do.
void WriteQSettings(benchmark::State& ioState)
{
    const QString path = QString::fromStdString(PathOf("preferences.ini"));
    const std::vector<QString> keys = FillSettings(path);
    QSettings settings(path, QSettings::IniFormat);
    int value = 0;
    for (auto _ : ioState) {
        ++value;
        settings.setValue(keys[(size_t)(value % kEntries)], value);
        settings.sync();
    }
}

void ReadQSettings(benchmark::State& ioState)
{
    const QString path = QString::fromStdString(PathOf("preferences.ini"));
    const std::vector<QString> keys = FillSettings(path);
    QSettings held(path, QSettings::IniFormat);
    int key = 0;
    for (auto _ : ioState) {
        const size_t entry = (size_t)(key++ % kEntries);
        int value = 0;
        if (ioState.range(0))
            value = held.value(keys[entry]).toInt();
        else
            value = QSettings(path, QSettings::IniFormat).value(keys[entry]).toInt(); // parsed once, cached
        benchmark::DoNotOptimize(value);
    }
}
#endif

#ifdef LAMPBLACK_BENCH_GLIB
std::string EntryName(int inEntry)
{
    return "entry" + std::to_string(kFirstID + inEntry);
}

GKeyFile* NewKeyFile()
{
    GKeyFile* file = g_key_file_new();
    for (int i = 0; i < kEntries; ++i)
        g_key_file_set_integer(file, "preferences", EntryName(i).c_str(), i);
    return file;
}

// Replaces the file by rename, and flushes it as GLib does.
void WriteKeyFile(benchmark::State& ioState)
{
    GKeyFile* const file = NewKeyFile();
    const std::string path = PathOf("preferences.keys");
    int value = 0;
    for (auto _ : ioState) {
        ++value;
        g_key_file_set_integer(file, "preferences", EntryName(value % kEntries).c_str(), value);
        g_key_file_save_to_file(file, path.c_str(), nullptr);
    }
    g_key_file_free(file);
}

void ReadKeyFile(benchmark::State& ioState)
{
    GKeyFile* file = NewKeyFile();
    const std::string path = PathOf("preferences.keys");
    g_key_file_save_to_file(file, path.c_str(), nullptr);
    std::vector<std::string> names;
    for (int i = 0; i < kEntries; ++i)
        names.push_back(EntryName(i));
    int key = 0;
    for (auto _ : ioState) {
        if (!ioState.range(0)) {
            g_key_file_free(file);
            file = g_key_file_new();
            g_key_file_load_from_file(file, path.c_str(), G_KEY_FILE_NONE, nullptr);
        }
        const char* const name = names[(size_t)(key++ % kEntries)].c_str();
        benchmark::DoNotOptimize(g_key_file_get_integer(file, "preferences", name, nullptr));
    }
    g_key_file_free(file);
}
#endif

} // namespace

// clang-format off
BENCHMARK(WriteLimit)->Name("write/limit: in place, fdatasync")->UseRealTime();
BENCHMARK(WriteOurs)->Name("write/ours")->ArgName("held open")->Arg(0)->Arg(1)->UseRealTime();
BENCHMARK(WriteReplacing)->Name("write/peer: temporary file, fsync, rename, fsync")->UseRealTime();
#ifdef LAMPBLACK_BENCH_SQLITE
BENCHMARK(WriteSqlite)->Name("write/peer: SQLite, WAL, FULL")->UseRealTime();
#endif
#ifdef LAMPBLACK_BENCH_QT
BENCHMARK(WriteQSettings)->Name("write/peer: QSettings, not durable")->UseRealTime();
#endif
#ifdef LAMPBLACK_BENCH_GLIB
BENCHMARK(WriteKeyFile)->Name("write/peer: GKeyFile")->UseRealTime();
#endif
BENCHMARK(ReadClosedLimit)->Name("read/limit: open, read, close");
BENCHMARK(ReadHeldLimit)->Name("read/limit: memory");
BENCHMARK(ReadOurs)->Name("read/ours")->ArgName("held open")->Arg(0)->Arg(1);
#ifdef LAMPBLACK_BENCH_QT
BENCHMARK(ReadQSettings)->Name("read/peer: QSettings")->ArgName("held open")->Arg(0)->Arg(1);
#endif
#ifdef LAMPBLACK_BENCH_GLIB
BENCHMARK(ReadKeyFile)->Name("read/peer: GKeyFile")->ArgName("held open")->Arg(0)->Arg(1);
#endif
// clang-format on

BENCHMARK_MAIN();
