// Alias records as bytes: the published layout of version 2, and of version 3, which newer systems write.
// Pure: knows no file. Begin at ReadAlias. Layout: docs/formats/alis.md.
#ifndef LAMPBLACK_FILES_ALIASRECORD_H
#define LAMPBLACK_FILES_ALIASRECORD_H

#include <Carbon/MacTypes.h>
#include <foundation/BigEndian.h>

#include <string>
#include <vector>

namespace lampblack::files {

using foundation::Bytes;

// The record's ways to its target, each of which may be missing. Names are Mac Roman unless said otherwise.
struct AliasContents {
    OSType userType = 0;
    bool isFolder = false;
    std::string volumeName;
    UInt32 volumeDate = 0; // local, since 1904
    UInt16 volumeSignature = 0;
    UInt32 parentID = 0, fileID = 0; // of the system that wrote it
    std::string fileName;
    UInt32 fileDate = 0;
    UInt64 birth = 0; // of the file: 48 bits of seconds, UTC, and 16 of their fraction
    OSType fileType = 0, creator = 0;
    // Up from the file that the record was made for, and down again to the target, in folders; -1: not kept.
    SInt16 levelsFrom = -1, levelsTo = -1;

    std::string parentName;
    std::vector<UInt32> folderIDs; // from the parent upward, without the volume
    std::string macPath;           // "Disk:folder:file"
    std::string zoneName, serverName;
    std::u16string unicodeName, unicodeVolumeName;
    std::string posixPath; // UTF-8, from where the volume is mounted
    std::string mountPoint;
};

// ReadAlias
//
// False when the bytes are no record: too short, longer said to be than they are, or of an unknown version.
// What follows a damaged entry is passed over.
bool ReadAlias(Bytes, AliasContents* outContents);

// A record of version 2. Entries that would not fit are left out; names in the fixed part are cut to 27 and
// 63 bytes.
std::vector<UInt8> WriteAlias(const AliasContents&);

} // namespace lampblack::files

#endif
