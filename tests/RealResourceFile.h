// A resource file that others made, open in the chain while this lives. They lie beside the source folder
// where the developers keep them; without them a test says so and passes.
#ifndef LAMPBLACK_TESTS_REALRESOURCEFILE_H
#define LAMPBLACK_TESTS_REALRESOURCEFILE_H

#include <Carbon/Files.h>
#include <Carbon/Resources.h>

#include <doctest/doctest.h>
#include <filesystem>
#include <string>

class RealResourceFile {
public:
    explicit RealResourceFile(const std::string& inName)
    {
        const std::filesystem::path path =
            std::filesystem::path(LAMPBLACK_SOURCE_DIR).parent_path() / "shared/data/real/public" / inName;
        FSRef ref;
        if (FSPathMakeRef((const UInt8*)path.c_str(), &ref, nullptr) == noErr)
            fFile = FSOpenResFile(&ref, fsRdPerm);
        if (fFile == -1)
            MESSAGE("skipped: no " << path.string());
    }
    ~RealResourceFile()
    {
        if (fFile != -1)
            CloseResFile(fFile);
    }
    RealResourceFile(const RealResourceFile&) = delete;

    bool IsOpen() const { return fFile != -1; }
    SInt16 Number() const { return fFile; }

private:
    SInt16 fFile = -1;
};

#endif
