// Replacing and making host files so that at every instant the old bytes or the new ones are there whole, and
// stay there when the power goes. Begin at Replacement.
#ifndef LAMPBLACK_FILES_DURABLE_H
#define LAMPBLACK_FILES_DURABLE_H

#include <Carbon/Files.h>
#include <foundation/BigEndian.h>

#include <filesystem>
#include <string>
#include <sys/stat.h>

namespace lampblack::files {

using foundation::Bytes;

// What a failed host call means here: ENOSPC and EDQUOT dskFulErr, EROFS wPrErr, EACCES and EPERM permErr,
// EMFILE and ENFILE tmfoErr, ENOENT fnfErr, ENOTDIR dirNFErr, EEXIST dupFNErr, ETXTBSY and EBUSY fBsyErr,
// ENOMEM memFullErr, all others ioErr.
OSErr ErrorOfHost(int inErrno);

// A descriptor of the host, closed at the end.
class Descriptor {
public:
    explicit Descriptor(int inNumber = -1) : fNumber(inNumber) {}
    Descriptor(Descriptor&& ioOther) noexcept : fNumber(ioOther.Release()) {}
    Descriptor& operator=(Descriptor&& ioOther) noexcept;
    ~Descriptor() { Close(); }

    int Get() const { return fNumber; }
    explicit operator bool() const { return fNumber >= 0; }
    int Release();
    void Close();

private:
    int fNumber;
};

// Writes all of the bytes at an offset, however many calls that takes. Errors: as ErrorOfHost.
OSErr WriteAll(int inFile, Bytes, SInt64 inOffset);

// Reads all of the bytes; false when the file ends before, or cannot be read.
bool ReadAll(int inFile, void* outBytes, size_t inSize, SInt64 inOffset);

// Has the entries of a folder on the disk: what was made, renamed or deleted in it.
OSErr FlushFolder(const std::filesystem::path& inFolder);

// Renames where nothing is; false, with errno set, also when something is (EEXIST). A file system that knows no
// such renaming may know links, which fail where something is; else it is looked first.
bool RenameToNothing(const std::filesystem::path& inFrom, const std::filesystem::path& inTo);

// Renames a file that is in the way and must not be lost: to "NAME.damaged", or with a number.
OSErr KeepAside(const std::filesystem::path&);

// Replacement
//
// A file that will stand in for another, or be a new one. It has no name until it is whole and on the disk;
// one that was begun and not put in place leaves nothing behind.
//
//     Replacement file;
//     OSErr error = file.Begin(path, &statusOfOld);
//     if (error == noErr) error = WriteAll(file.File(), bytes, 0);
//     if (error == noErr) error = file.PutInPlace();
class Replacement {
public:
    // Begin
    //
    // Makes the file in the folder of inTarget. inLike, which may be null, is the file whose mode and owner
    // it gets.
    OSErr Begin(const std::filesystem::path& inTarget, const struct stat* inLike);

    int File() const { return fFile.Get(); }

    // PutInPlace replaces what has the name, PutWhereNothingIs answers dupFNErr when something has it. Both
    // have the file and then the folder's entry on the disk; an error before the renaming leaves all as it
    // was. outIsInPlace, which may be null, says whether the renaming took place: only the last flush can
    // fail after it.
    OSErr PutInPlace(bool* outIsInPlace = nullptr);
    OSErr PutWhereNothingIs();

    Descriptor TakeFile() { return std::move(fFile); }

    ~Replacement();

private:
    OSErr BeginWithName();
    OSErr GiveTemporaryName();
    void LeaveTemporaryName();

    std::filesystem::path fTarget;
    std::filesystem::path fTemporary; // empty while the file has no name
    Descriptor fFile;
};

} // namespace lampblack::files

#endif
