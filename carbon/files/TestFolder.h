// For the tests of this folder: a scratch folder with FSSpecs, what lies in it, and a second process.
#ifndef LAMPBLACK_FILES_TESTFOLDER_H
#define LAMPBLACK_FILES_TESTFOLDER_H

#include "Catalog.h"
#include "ForkLocator.h"

#include <FreshProcess.h>
#include <ScratchFolder.h>
#include <algorithm>
#include <cstring>
#include <doctest/doctest.h>
#include <fstream>
#include <functional>
#include <iterator>

namespace lampblack {

struct PascalName {
    Str255 text;
    PascalName(std::string_view inText)
    {
        text[0] = (unsigned char)inText.size();
        std::memcpy(text + 1, inText.data(), inText.size());
    }
    PascalName(const char* inText) : PascalName(std::string_view(inText)) {}
    operator ConstStr255Param() const { return text; }
};

struct TestFolder : ScratchFolder {
    files::Folder folder;

    TestFolder()
    {
        files::Item item;
        REQUIRE(files::ItemAtPath(Path(), &item));
        folder = files::NodeOf(item);
    }

    // The file may be missing.
    FSSpec Spec(std::string_view inName) const
    {
        FSSpec spec = {};
        const OSErr error = FSMakeFSSpec(folder.volume, folder.id, PascalName(inName), &spec);
        CHECK((error == noErr || error == fnfErr));
        return spec;
    }

    FSRef Ref(std::string_view inName) const
    {
        FSRef ref = {};
        const FSSpec spec = Spec(inName);
        CHECK(FSpMakeFSRef(&spec, &ref) == noErr);
        return ref;
    }

    files::Item Item(std::string_view inName) const
    {
        files::Item item;
        CHECK(files::Resolve(folder.volume, folder.id, PascalName(inName), &item) == noErr);
        return item;
    }

    SInt32 IDOf(std::string_view inFolder) const { return files::NodeOf(Item(inFolder)).id; }

    std::string Bytes(const std::string& inName) const
    {
        std::ifstream file(Path() / inName, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    }

    // The resource fork as a reader finds it.
    std::string Fork(const std::string& inName) const
    {
        const files::LocatedForks forks = files::LocateForks(Path() / inName);
        return std::string((const char*)forks.resourceFork.data(), forks.resourceFork.size());
    }

    std::string Data(const std::string& inName) const
    {
        const files::LocatedForks forks = files::LocateForks(Path() / inName);
        return std::string((const char*)forks.dataFork.data(), forks.dataFork.size());
    }

    bool Has(const std::string& inName) const { return std::filesystem::exists(Path() / inName); }

    // All names on the host, in one line.
    std::string Names() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(Path()))
            names.push_back(entry.path().filename());
        std::sort(names.begin(), names.end());
        std::string line;
        for (const std::string& name : names)
            line += (line.empty() ? "" : " ") + name;
        return line;
    }
};

inline std::string Seed(const std::string& inName)
{
    std::ifstream file(LAMPBLACK_SOURCE_DIR "/tests/fuzz/corpus/ResourceFile/" + inName, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

// Another process that does something, keeps the result alive, and ends when this goes.
class OtherProcess {
public:
    explicit OtherProcess(const std::function<bool()>& inDo)
    {
        int ready[2], end[2];
        REQUIRE(pipe(ready) == 0);
        REQUIRE(pipe(end) == 0);
        std::fflush(nullptr);
        fChild = fork();
        if (fChild == 0) {
            close(ready[0]);
            close(end[1]);
            char byte = inDo() ? 1 : 0;
            byte = write(ready[1], &byte, 1) == 1 ? byte : 0;
            _exit(read(end[0], &byte, 1) == 0 ? 0 : 1);
        }
        close(ready[1]);
        close(end[0]);
        char byte = 0;
        CHECK(read(ready[0], &byte, 1) == 1);
        CHECK(byte == 1);
        close(ready[0]);
        fEnd = end[1];
    }
    ~OtherProcess()
    {
        close(fEnd);
        waitpid(fChild, nullptr, 0);
    }
    OtherProcess(const OtherProcess&) = delete;

private:
    pid_t fChild;
    int fEnd;
};

} // namespace lampblack

#endif
