// What the tests of the catalog share: a scratch folder with its numbers, Pascal strings, parameter blocks.
// For tests alone.
#ifndef LAMPBLACK_FILES_CATALOGFIXTURE_H
#define LAMPBLACK_FILES_CATALOGFIXTURE_H

#include "TestFolder.h"

namespace lampblack::files {

using PascalText = PascalName;

inline std::string TextOf(ConstStr255Param inString)
{
    return std::string((const char*)inString + 1, inString[0]);
}

struct CatalogFolder : TestFolder {
    FSRef OwnRef() const
    {
        FSRef ref = {};
        CHECK(FSPathMakeRef((const UInt8*)Path().c_str(), &ref, nullptr) == noErr);
        return ref;
    }
};

inline std::string PathOfRef(const FSRef& inRef)
{
    UInt8 path[4096] = {};
    CHECK(FSRefMakePath(&inRef, path, sizeof path) == noErr);
    return (const char*)path;
}

// A block for PBGetCatInfo: an index, or 0 and a name, in a folder.
struct CatalogBlock {
    CInfoPBRec block = {};
    Str255 name = {};

    CatalogBlock(Folder inFolder, SInt16 inIndex, std::string_view inName = {})
    {
        name[0] = (unsigned char)inName.size();
        std::copy(inName.begin(), inName.end(), name + 1);
        block.hFileInfo.ioNamePtr = name;
        block.hFileInfo.ioVRefNum = inFolder.volume;
        block.hFileInfo.ioDirID = inFolder.id;
        block.hFileInfo.ioFDirIndex = inIndex;
    }

    OSErr Get() { return PBGetCatInfoSync(&block); }
    std::string Name() const { return TextOf(name); }
    HFileInfo& File() { return block.hFileInfo; }
    DirInfo& Directory() { return block.dirInfo; }
};

} // namespace lampblack::files

#endif
