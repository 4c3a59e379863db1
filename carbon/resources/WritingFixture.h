// What the tests of writing share: resource files in a scratch folder, and what a newcomer reads of them.
// For tests alone.
#ifndef LAMPBLACK_RESOURCES_WRITINGFIXTURE_H
#define LAMPBLACK_RESOURCES_WRITINGFIXTURE_H

#include <Carbon/Resources.h>
#include <Carbon/Script.h>

#include <ScratchFolder.h>
#include <algorithm>
#include <doctest/doctest.h>
#include <files/Catalog.h>
#include <files/FileReferences.h>
#include <files/ForkHome.h>
#include <fstream>
#include <iterator>
#include <resources/ResourceFork.h>
#include <string>
#include <string_view>

namespace lampblack::writing {

using resources::Bytes;

struct PascalString {
    Str255 text;
    PascalString(std::string_view inText)
    {
        text[0] = (unsigned char)inText.size();
        std::copy(inText.begin(), inText.end(), text + 1);
    }
    operator ConstStr255Param() const { return text; }
};

inline std::string TextOf(Handle inHandle)
{
    return inHandle && *inHandle ? std::string(*inHandle, (size_t)GetHandleSize(inHandle)) : "(none)";
}

inline Handle HandleOf(std::string_view inText)
{
    Handle handle = nullptr;
    PtrToHand(inText.data(), &handle, (long)inText.size());
    return handle;
}

inline void SetText(Handle inHandle, std::string_view inText)
{
    SetHandleSize(inHandle, (Size)inText.size());
    std::copy(inText.begin(), inText.end(), *inHandle);
}

inline void AddText(std::string_view inText, OSType inType, SInt16 inID, std::string_view inName = {})
{
    AddResource(HandleOf(inText), inType, inID, PascalString(inName));
}

inline std::string ReadFile(const std::filesystem::path& inPath)
{
    std::ifstream stream(inPath, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {});
}

struct Place : ScratchFolder {
    FSSpec Spec(std::string_view inName) const
    {
        files::Item folder;
        REQUIRE(files::ItemAtPath(Path(), &folder));
        const files::Folder node = files::NodeOf(folder);
        FSSpec spec = {};
        FSMakeFSSpec(node.volume, node.id, PascalString(inName), &spec);
        return spec;
    }
    FSRef Ref(std::string_view inName = {}) const
    {
        FSRef ref = {};
        const std::filesystem::path path = inName.empty() ? Path() : Path() / inName;
        REQUIRE(FSPathMakeRef((const UInt8*)path.c_str(), &ref, nullptr) == noErr);
        return ref;
    }
    SInt16 Open(std::string_view inName, SignedByte inPermission = fsRdWrPerm) const
    {
        const FSSpec spec = Spec(inName);
        return FSpOpenResFile(&spec, inPermission);
    }
    void Create(std::string_view inName) const
    {
        const FSSpec spec = Spec(inName);
        FSpCreateResFile(&spec, 'test', 'rsrc', smSystemScript);
        REQUIRE(ResError() == noErr);
    }
    // What a newcomer reads of a resource.
    std::string OnDisk(std::string_view inName, OSType inType, SInt16 inID) const
    {
        const files::LocatedForks forks = files::LocateForks(Path() / inName);
        resources::ResourceFork fork;
        if (fork.Open(forks.resourceFork))
            return "(damaged)";
        Bytes data;
        if (!fork.Data(fork.Find(inType, inID), &data))
            return "(none)";
        return std::string((const char*)data.data(), data.size());
    }
};

// A file "File" with a few resources, open for writing.
struct WritableFile : Place {
    SInt16 refNum;

    WritableFile()
    {
        Create("File");
        refNum = Place::Open("File");
        AddText("one", 'TEXT', 1, "first");
        AddText("two", 'TEXT', 2);
        AddText("three", 'TEXT', 3, "third");
        AddText("x", 'othr', 1);
        UpdateResFile(refNum);
        REQUIRE(ResError() == noErr);
    }
    ~WritableFile()
    {
        if (refNum > 0)
            CloseResFile(refNum);
    }
    void Reopen(SignedByte inPermission = fsRdWrPerm)
    {
        CloseResFile(refNum);
        refNum = Place::Open("File", inPermission);
        REQUIRE(refNum > 0);
    }
    std::string OnDisk(OSType inType, SInt16 inID) const { return Place::OnDisk("File", inType, inID); }
};

} // namespace lampblack::writing

#endif
