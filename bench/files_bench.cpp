// Copying a file of 100 MB as an application does it: FSpOpenDF twice, SetEOF, then FSRead and FSWrite with a
// buffer of 512 KB. Beside it read and write with that buffer (the limit), copy_file_range, and cp as a
// process of its own. The copy is made anew each time, in a scratch folder beside the working directory.
//
// And listing a folder of 1,000 files, every second with a sidecar: PBGetCatInfo by index, beside readdir and
// stat, which tell less (the limit).
#include <Carbon/Carbon.h>
#include <benchmark/benchmark.h>
#include <lampblack/host.h>

#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr size_t kSize = 100u << 20, kBuffer = 512u << 10;

struct Folder {
    std::filesystem::path path, source, copy;

    Folder()
    {
        std::string pattern = (std::filesystem::current_path() / "files-bench-XXXXXX").native();
        path = mkdtemp(pattern.data());
        source = path / "Source";
        copy = path / "Copy";
        std::vector<uint32_t> words(kSize / 4);
        for (size_t i = 0; i < words.size(); ++i)
            words[i] = (uint32_t)i * 2654435761u;
        std::ofstream(source, std::ios::binary).write((const char*)words.data(), (std::streamsize)kSize);
    }
    ~Folder() { std::filesystem::remove_all(path); }
};

Folder& Files()
{
    static Folder folder;
    return folder;
}

FSSpec SpecOf(const std::filesystem::path& inPath)
{
    FSRef ref;
    FSSpec spec = {};
    const std::filesystem::path folder = inPath.parent_path();
    FSPathMakeRef((const UInt8*)folder.c_str(), &ref, nullptr);
    FSGetCatalogInfo(&ref, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr);
    CInfoPBRec block = {};
    block.dirInfo.ioNamePtr = spec.name;
    block.dirInfo.ioVRefNum = spec.vRefNum;
    block.dirInfo.ioDrDirID = spec.parID;
    PBGetCatInfoSync(&block);
    const std::string name = inPath.filename();
    Str255 text;
    text[0] = (unsigned char)name.size();
    name.copy((char*)text + 1, name.size());
    FSMakeFSSpec(block.dirInfo.ioVRefNum, block.dirInfo.ioDrDirID, text, &spec);
    return spec;
}

void Check(benchmark::State& ioState, bool inIsDone)
{
    std::error_code ignored;
    if (!inIsDone || std::filesystem::file_size(Files().copy, ignored) != kSize)
        ioState.SkipWithError("the copy failed");
}

template <class Copy>
void Measure(benchmark::State& ioState, Copy inCopy)
{
    Files();
    for (auto _ : ioState) {
        ioState.PauseTiming();
        unlink(Files().copy.c_str());
        ioState.ResumeTiming();
        const bool isDone = inCopy();
        ioState.PauseTiming();
        Check(ioState, isDone);
        ioState.ResumeTiming();
    }
    ioState.SetBytesProcessed((int64_t)ioState.iterations() * (int64_t)kSize);
}

void ReadWriteLoop(benchmark::State& ioState)
{
    std::vector<char> buffer(kBuffer);
    Measure(ioState, [&] {
        const int from = open(Files().source.c_str(), O_RDONLY);
        const int to = open(Files().copy.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        bool isDone = true;
        ssize_t count;
        while ((count = read(from, buffer.data(), buffer.size())) > 0)
            isDone = isDone && write(to, buffer.data(), (size_t)count) == count;
        close(from);
        close(to);
        return isDone;
    });
}

bool CopyByFileManager(const FSSpec& inFrom, const FSSpec& inTo, Ptr inBuffer)
{
    FSIORefNum from = 0, to = 0;
    SInt32 left = 0;
    OSErr error = FSpOpenDF(&inFrom, fsRdPerm, &from);
    error = error == noErr ? FSpOpenDF(&inTo, fsWrPerm, &to) : error;
    error = error == noErr ? GetEOF(from, &left) : error;
    error = error == noErr ? SetEOF(to, left) : error;
    while (error == noErr && left > 0) {
        SInt32 count = kBuffer;
        error = FSRead(from, &count, inBuffer);
        error = error == eofErr ? (OSErr)noErr : error;
        left -= count;
        error = error == noErr ? FSWrite(to, &count, inBuffer) : error;
    }
    return FSClose(from) == noErr && FSClose(to) == noErr && error == noErr;
}

void FileManager(benchmark::State& ioState)
{
    std::vector<char> buffer(kBuffer);
    const FSSpec from = SpecOf(Files().source), to = SpecOf(Files().copy);
    Measure(ioState, [&] {
        return FSpCreate(&to, 'lamp', 'BINA', -1) == noErr && CopyByFileManager(from, to, buffer.data());
    });
}

// The same onto a file that is there already, without the flushes that a new file costs.
void FileManagerOntoOld(benchmark::State& ioState)
{
    std::vector<char> buffer(kBuffer);
    const FSSpec from = SpecOf(Files().source), to = SpecOf(Files().copy);
    Measure(ioState, [&] {
        close(open(Files().copy.c_str(), O_WRONLY | O_CREAT, 0666));
        return CopyByFileManager(from, to, buffer.data());
    });
}

void CopyFileRange(benchmark::State& ioState)
{
    Measure(ioState, [&] {
        const int from = open(Files().source.c_str(), O_RDONLY);
        const int to = open(Files().copy.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
        ssize_t count;
        while ((count = copy_file_range(from, nullptr, to, nullptr, kSize, 0)) > 0) {
        }
        close(from);
        close(to);
        return count == 0;
    });
}

void CopyProgram(benchmark::State& ioState)
{
    Measure(ioState, [&] {
        std::string program = "cp", from = Files().source, to = Files().copy;
        char* arguments[] = { program.data(), from.data(), to.data(), nullptr };
        pid_t child;
        int status = 1;
        return posix_spawnp(&child, "cp", nullptr, nullptr, arguments, environ) == 0 &&
               waitpid(child, &status, 0) == child && status == 0;
    });
}

constexpr int kListed = 1000;

// Made once; its times are past when it is listed.
const std::filesystem::path& ListedFolder()
{
    static const std::filesystem::path folder = [] {
        const std::filesystem::path path = Files().path / "Listed";
        std::filesystem::create_directory(path);
        const FSSpec first = SpecOf(path / "File 0");
        FSpCreate(&first, 'lamp', 'TEXT', -1);
        for (int i = 1; i < kListed; ++i) {
            const std::string name = "File " + std::to_string(i);
            std::ofstream(path / name) << "text";
            if (i % 2 == 0)
                std::filesystem::copy_file(path / "._File 0", path / ("._" + name));
        }
        usleep(100000);
        return path;
    }();
    return folder;
}

void ListByCatalog(benchmark::State& ioState)
{
    const FSSpec first = SpecOf(ListedFolder() / "File 0");
    for (auto _ : ioState) {
        int texts = 0, files = 0;
        for (SInt16 index = 1;; ++index, ++files) {
            Str255 name;
            CInfoPBRec block = {};
            block.hFileInfo.ioNamePtr = name;
            block.hFileInfo.ioVRefNum = first.vRefNum;
            block.hFileInfo.ioDirID = first.parID;
            block.hFileInfo.ioFDirIndex = index;
            if (PBGetCatInfoSync(&block) != noErr)
                break;
            texts += block.hFileInfo.ioFlFndrInfo.fdType == 'TEXT' ? 1 : 0;
        }
        if (files != kListed || texts != kListed / 2)
            ioState.SkipWithError("not what is there");
    }
    ioState.SetItemsProcessed((int64_t)ioState.iterations() * kListed);
}

void ListByHost(benchmark::State& ioState)
{
    const std::string path = ListedFolder();
    for (auto _ : ioState) {
        int files = 0;
        DIR* folder = opendir(path.c_str());
        while (const dirent* entry = readdir(folder)) {
            struct stat status;
            const bool isThere =
                entry->d_name[0] != '.' && stat((path + "/" + entry->d_name).c_str(), &status) == 0;
            files += isThere && S_ISREG(status.st_mode) ? 1 : 0;
        }
        closedir(folder);
        if (files != kListed)
            ioState.SkipWithError("not what is there");
    }
    ioState.SetItemsProcessed((int64_t)ioState.iterations() * kListed);
}

BENCHMARK(ReadWriteLoop)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FileManager)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(FileManagerOntoOld)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(CopyFileRange)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(CopyProgram)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(ListByHost)->Unit(benchmark::kMicrosecond);
BENCHMARK(ListByCatalog)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv)
{
    lampblack::host::Settings settings;
    settings.screen = lampblack::host::Screen::Headless;
    lampblack::host::Configure(settings);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
