// A file of ten thousand entries: opened until any can be found, looked into, and one entry replaced for
// good. The limit of opening is a mapped file with a sorted index, that of a look-up a probe of a hash table,
// that of replacing bytes written over where they are and flushed.
#include <Carbon/Resources.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <string>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#ifdef LAMPBLACK_BENCH_SQLITE
#include <sqlite3.h>
#endif

namespace {

constexpr int kEntries = 10000;
constexpr int kTypes = 2; // more do not fit: a list of references begins within 64 KB
constexpr size_t kLength = 64;

OSType TypeOf(int inEntry)
{
    return 'typ0' + (OSType)(inEntry % kTypes);
}

SInt16 IDOf(int inEntry)
{
    return (SInt16)(128 + inEntry / kTypes);
}

[[noreturn]] void Fail(const char* inWhat)
{
    std::fprintf(stderr, "resources_bench: %s failed\n", inWhat);
    std::exit(1);
}

struct Folder {
    std::filesystem::path path;
    Folder()
    {
        std::string pattern = (std::filesystem::current_path() / "resources-bench-XXXXXX").string();
        path = mkdtemp(pattern.data());
    }
    ~Folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
};

const std::filesystem::path& FolderPath()
{
    static Folder folder;
    return folder.path;
}

const std::vector<int>& Order()
{
    static const std::vector<int> order = [] {
        std::vector<int> all(kEntries);
        for (int i = 0; i < kEntries; ++i)
            all[(size_t)i] = i;
        std::shuffle(all.begin(), all.end(), std::mt19937(1));
        return all;
    }();
    return order;
}

// Ours

const FSRef& File()
{
    static const FSRef ref = [] {
        FSRef folder, file;
        const std::u16string name = u"Ours";
        if (FSPathMakeRef((const UInt8*)FolderPath().c_str(), &folder, nullptr) != noErr)
            Fail("FSPathMakeRef");
        FSCreateResFile(&folder, name.size(), (const UniChar*)name.data(), kFSCatInfoNone, nullptr, &file,
                        nullptr);
        const SInt16 refNum = FSOpenResFile(&file, fsRdWrPerm);
        for (int i = 0; i < kEntries; ++i) {
            const Handle handle = NewHandleClear(kLength);
            AddResource(handle, TypeOf(i), IDOf(i), nullptr);
        }
        CloseResFile(refNum);
        if (ResError() != noErr)
            Fail("writing");
        usleep(50000); // so that its times are past
        return file;
    }();
    return ref;
}

void OpenKnown(benchmark::State& state)
{
    const FSRef& file = File();
    for (auto _ : state) {
        const SInt16 refNum = FSOpenResFile(&file, fsRdPerm);
        CloseResFile(refNum);
    }
}
BENCHMARK(OpenKnown);

// Each time as if another process had just written it.
void OpenAnew(benchmark::State& state)
{
    const FSRef& file = File();
    const std::string sidecar = FolderPath() / "._Ours";
    for (auto _ : state) {
        utimensat(AT_FDCWD, sidecar.c_str(), nullptr, 0);
        const SInt16 refNum = FSOpenResFile(&file, fsRdPerm);
        CloseResFile(refNum);
    }
}
BENCHMARK(OpenAnew);

void LookUp(benchmark::State& state)
{
    const SInt16 refNum = FSOpenResFile(&File(), fsRdPerm);
    for (const int entry : Order())
        benchmark::DoNotOptimize(Get1Resource(TypeOf(entry), IDOf(entry)));
    size_t i = 0;
    for (auto _ : state) {
        const int entry = Order()[i = i + 1 < kEntries ? i + 1 : 0];
        benchmark::DoNotOptimize(Get1Resource(TypeOf(entry), IDOf(entry)));
    }
    CloseResFile(refNum);
}
BENCHMARK(LookUp);

void Replace(benchmark::State& state)
{
    const SInt16 refNum = FSOpenResFile(&File(), fsRdWrPerm);
    size_t i = 0;
    for (auto _ : state) {
        const int entry = Order()[i = i + 1 < kEntries ? i + 1 : 0];
        const Handle handle = Get1Resource(TypeOf(entry), IDOf(entry));
        std::memset(*handle, (int)i, kLength);
        ChangedResource(handle);
        WriteResource(handle);
        if (ResError() != noErr)
            Fail("WriteResource");
    }
    CloseResFile(refNum);
}
BENCHMARK(Replace);

// The limits

struct IndexEntry {
    uint64_t key;
    uint32_t offset, length;
};

uint64_t KeyOf(int inEntry)
{
    return (uint64_t)TypeOf(inEntry) << 16 | (uint16_t)IDOf(inEntry);
}

const std::string& Mapped()
{
    static const std::string path = [] {
        std::vector<IndexEntry> index;
        for (int i = 0; i < kEntries; ++i)
            index.push_back(
                { KeyOf(i), (uint32_t)(kEntries * sizeof(IndexEntry) + (size_t)i * kLength), kLength });
        std::sort(index.begin(), index.end(), [](const auto& a, const auto& b) { return a.key < b.key; });
        const std::string name = FolderPath() / "limit";
        std::FILE* file = std::fopen(name.c_str(), "wb");
        std::fwrite(index.data(), sizeof(IndexEntry), index.size(), file);
        const std::string data(kEntries * kLength, 'x');
        std::fwrite(data.data(), 1, data.size(), file);
        std::fclose(file);
        return name;
    }();
    return path;
}

// Whoever opens it reads the index once, to be sure that all of it lies within the file and is sorted.
void OpenLimit(benchmark::State& state)
{
    const std::string& path = Mapped();
    for (auto _ : state) {
        const int file = open(path.c_str(), O_RDONLY);
        struct stat status;
        fstat(file, &status);
        void* base = mmap(nullptr, (size_t)status.st_size, PROT_READ, MAP_PRIVATE, file, 0);
        const IndexEntry* index = (const IndexEntry*)base;
        uint64_t bad = 0;
        for (int i = 0; i < kEntries; ++i)
            bad |= (uint64_t)(index[i].offset + index[i].length > (size_t)status.st_size) |
                   (uint64_t)(i > 0 && index[i - 1].key >= index[i].key);
        benchmark::DoNotOptimize(bad);
        munmap(base, (size_t)status.st_size);
        close(file);
    }
}
BENCHMARK(OpenLimit);

struct Table {
    std::vector<IndexEntry> slots = std::vector<IndexEntry>(16384);

    Table()
    {
        for (int i = 0; i < kEntries; ++i) {
            size_t at = Hash(KeyOf(i));
            while (slots[at].length)
                at = (at + 1) & 16383;
            slots[at] = { KeyOf(i), (uint32_t)((size_t)i * kLength), kLength };
        }
    }
    static size_t Hash(uint64_t inKey) { return (size_t)((inKey * 0x9E3779B97F4A7C15u) >> 50); }
    const IndexEntry* Find(uint64_t inKey) const
    {
        for (size_t at = Hash(inKey);; at = (at + 1) & 16383)
            if (slots[at].key == inKey || !slots[at].length)
                return &slots[at];
    }
};

void LookUpLimit(benchmark::State& state)
{
    static const Table table;
    size_t i = 0;
    for (auto _ : state) {
        const int entry = Order()[i = i + 1 < kEntries ? i + 1 : 0];
        benchmark::DoNotOptimize(table.Find(KeyOf(entry)));
    }
}
BENCHMARK(LookUpLimit);

void ReplaceLimit(benchmark::State& state)
{
    const int file = open(Mapped().c_str(), O_RDWR);
    size_t i = 0;
    char data[kLength];
    for (auto _ : state) {
        const int entry = Order()[i = i + 1 < kEntries ? i + 1 : 0];
        std::memset(data, (int)i, kLength);
        const off_t place = (off_t)(kEntries * sizeof(IndexEntry) + (size_t)entry * kLength);
        if (pwrite(file, data, kLength, place) != kLength || fdatasync(file) != 0)
            Fail("pwrite");
    }
    close(file);
}
BENCHMARK(ReplaceLimit);

#ifdef LAMPBLACK_BENCH_SQLITE
void Check(int inResult)
{
    if (inResult != SQLITE_OK && inResult != SQLITE_DONE && inResult != SQLITE_ROW)
        Fail("SQLite");
}

sqlite3* OpenDatabase()
{
    sqlite3* database = nullptr;
    Check(sqlite3_open((FolderPath() / "peer").c_str(), &database));
    return database;
}

sqlite3* Database()
{
    static const bool isMade = [] {
        sqlite3* database = OpenDatabase();
        Check(sqlite3_exec(
            database, "PRAGMA journal_mode=WAL; CREATE TABLE r(key INTEGER PRIMARY KEY, data BLOB); BEGIN",
            nullptr, nullptr, nullptr));
        for (int i = 0; i < kEntries; ++i) {
            const std::string sql = "INSERT INTO r VALUES(" + std::to_string(KeyOf(i)) + ", zeroblob(" +
                                    std::to_string(kLength) + "))";
            Check(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr));
        }
        Check(sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr));
        Check(sqlite3_close(database));
        return true;
    }();
    (void)isMade;
    return OpenDatabase();
}

sqlite3_stmt* Prepare(sqlite3* inDatabase, const char* inText)
{
    sqlite3_stmt* statement = nullptr;
    Check(sqlite3_prepare_v2(inDatabase, inText, -1, &statement, nullptr));
    return statement;
}

void OpenSqlite(benchmark::State& state)
{
    sqlite3_close(Database());
    for (auto _ : state) {
        sqlite3* database = OpenDatabase();
        sqlite3_stmt* statement = Prepare(database, "SELECT data FROM r WHERE key=?");
        sqlite3_bind_int64(statement, 1, (sqlite3_int64)KeyOf(5));
        Check(sqlite3_step(statement));
        sqlite3_finalize(statement);
        sqlite3_close(database);
    }
}
BENCHMARK(OpenSqlite);

void LookUpSqlite(benchmark::State& state)
{
    sqlite3* database = Database();
    sqlite3_stmt* statement = Prepare(database, "SELECT data FROM r WHERE key=?");
    size_t i = 0;
    for (auto _ : state) {
        const int entry = Order()[i = i + 1 < kEntries ? i + 1 : 0];
        sqlite3_bind_int64(statement, 1, (sqlite3_int64)KeyOf(entry));
        Check(sqlite3_step(statement));
        benchmark::DoNotOptimize(sqlite3_column_blob(statement, 0));
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
}
BENCHMARK(LookUpSqlite);

void ReplaceSqlite(benchmark::State& state)
{
    sqlite3* database = Database();
    Check(sqlite3_exec(database, "PRAGMA synchronous=FULL", nullptr, nullptr, nullptr));
    sqlite3_stmt* statement = Prepare(database, "UPDATE r SET data=? WHERE key=?");
    size_t i = 0;
    char data[kLength];
    for (auto _ : state) {
        const int entry = Order()[i = i + 1 < kEntries ? i + 1 : 0];
        std::memset(data, (int)i, kLength);
        sqlite3_bind_blob(statement, 1, data, kLength, SQLITE_STATIC);
        sqlite3_bind_int64(statement, 2, (sqlite3_int64)KeyOf(entry));
        Check(sqlite3_step(statement));
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
    sqlite3_close(database);
}
BENCHMARK(ReplaceSqlite);
#endif

} // namespace

BENCHMARK_MAIN();
