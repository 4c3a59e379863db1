// An open fork: what its reference numbers read and write. All numbers of one fork in this process share one
// OpenFork, so that they see one end and the same bytes. Begin at OpenFork.
#ifndef LAMPBLACK_FILES_OPENFORK_H
#define LAMPBLACK_FILES_OPENFORK_H

#include <Carbon/Files.h>

#include <filesystem>
#include <memory>

namespace lampblack::files {

enum class WriteAccess : uint8_t { None, Shared, Exclusive };

class OpenFork {
public:
    virtual ~OpenFork() = default;

    // StartWriting, StopWriting
    //
    // Between them the fork may be written, and no other process may write it (or only others that share).
    // StopWriting puts in place what was written; whatever it answers, writing has ended.
    //
    // Errors:     opWrErr, permErr, wPrErr and others of the host; StopWriting also dskFulErr.
    virtual OSErr StartWriting(WriteAccess) = 0;
    virtual OSErr StopWriting() = 0;

    virtual OSErr GetSize(SInt64* outSize) = 0;

    // Reads into the caller's bytes; fewer than asked for only where the fork ends.
    virtual OSErr Read(void* outBytes, size_t inSize, SInt64 inOffset, size_t* outDone) = 0;

    // Writes; an offset beyond the end leaves zeros before it. On an error *outDone bytes were written.
    virtual OSErr Write(const void* inBytes, size_t inSize, SInt64 inOffset, size_t* outDone) = 0;

    virtual OSErr SetSize(SInt64 inSize) = 0;

    // Makes sure of room behind the end without moving it.
    virtual OSErr Reserve(SInt64 inBytes) = 0;

    // Has what was written on the disk, for good.
    virtual OSErr Flush() = 0;

    // Whether the host file must keep its name for the time being.
    virtual bool NeedsItsName() const = 0;
    virtual void DidMove(const std::filesystem::path& inNow) = 0;
};

// Errors: fnfErr, permErr, tmfoErr and the like.
OSErr OpenDataFork(const std::filesystem::path&, std::shared_ptr<OpenFork>* outFork);
OSErr OpenResourceFork(const std::filesystem::path&, std::shared_ptr<OpenFork>* outFork);

// Whether the file is locked: nobody may write it. Permissions alone do not tell, for a superuser may write
// all.
bool IsLocked(const std::filesystem::path&);

} // namespace lampblack::files

#endif
