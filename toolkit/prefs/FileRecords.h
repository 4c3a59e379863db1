// Asking the catalog about one thing; private to this folder.
#ifndef LAMPBLACK_PREFS_FILERECORDS_H
#define LAMPBLACK_PREFS_FILERECORDS_H

#include <Carbon/Carbon.h>

#include <cstring>

namespace lampblack::prefs {

inline void CopyName(ConstStr255Param inName, Str255 outName)
{
    outName[0] = 0;
    if (inName)
        std::memcpy(outName, inName, inName[0] + 1);
}

// Appends as far as 255 bytes reach.
void AppendName(StringPtr ioText, ConstStr255Param inName);

// A catalog block with room for the name. A null or empty name asks for the directory itself.
struct CatalogRecord {
    CatalogRecord(SInt16 inVRefNum, SInt32 inDirID, ConstStr255Param inName)
    {
        CopyName(inName, fName);
        fBlock.hFileInfo.ioNamePtr = fName;
        fBlock.hFileInfo.ioVRefNum = inVRefNum;
        fBlock.hFileInfo.ioFDirIndex = fName[0] == 0 ? kTheDirectory : 0;
        fBlock.hFileInfo.ioDirID = inDirID;
    }
    CatalogRecord(const CatalogRecord&) = delete; // the block points at the name

    OSErr Get() { return PBGetCatInfoSync(&fBlock); }
    bool IsDirectory() const { return (fBlock.hFileInfo.ioFlAttrib & kioFlAttribDirMask) != 0; }

    static constexpr SInt16 kTheDirectory = -1;
    CInfoPBRec fBlock = {};
    Str255 fName;
};

} // namespace lampblack::prefs

#endif
