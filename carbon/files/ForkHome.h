// The place where a file's resource fork and Finder information are kept, held for change: one writer at a
// time among all processes, and every change whole or not at all. Begin at ForkHome::Open; for the Finder
// information alone SetFinderInfo, for a new file CreateFile.
//
// Where a change goes: a file that is itself a bare resource fork or an AppleDouble keeps its fork in that
// form. A file that is itself MacBinary, AppleSingle or BinHex is unwrapped by the first change: the sidecar
// "._name" gets fork and Finder information first, then the plain data fork replaces the file. All others
// have the sidecar: AppleDouble version 2, Finder information first and resource fork last; entries of other
// kinds and longer Finder information that were there stay, byte for byte.
#ifndef LAMPBLACK_FILES_FORKHOME_H
#define LAMPBLACK_FILES_FORKHOME_H

#include "Durable.h"
#include "ForkLocator.h"

#include <memory>

namespace lampblack::files {

// What a change writes; what is null stays as it is.
struct ForkChange {
    const Bytes* resourceFork = nullptr;
    const FInfo* finderInfo = nullptr;
    const FXInfo* extendedFinderInfo = nullptr;
};

// Where the fork lies in a host file that may be written in place: bytes `offset` to `offset + length`. The
// bytes behind the fork's own end, up to there, are free.
struct ForkPlace {
    int file = -1; // -1: the form allows no writing in place
    SInt64 offset = 0;
    size_t length = 0;
};

// What LocateForks found before, when whoever asked for it was sure that it would notice a change; null:
// nothing is known. Unless `fork` is empty, a small fork is compared with that, whatever its file's times.
struct KnownForks {
    const LocatedForks* located = nullptr;
    Bytes fork;
};

// The sidecar of a file: "._name" beside it.
std::filesystem::path SidecarOf(const std::filesystem::path& inFile);

class ForkHome {
public:
    // Which fork of the file: the resource fork that there is, or a new one where there is none. For Data the
    // file itself is the home, whatever it holds.
    enum class Fork : UInt8 { Resource, NewResource, Data };

    // Open
    //
    // Takes the lock of the file that keeps the fork. Where there is no such file yet, NewResource makes the
    // sidecar, and keeps aside what has its name and is none; if nothing is written to it, it goes again at
    // the end. If nothing has changed since what is known was found, *outKnownHolds is true, and it serves
    // as before.
    //
    // Errors:     fnfErr  no such file; permErr  it may not be written; wPrErr  read-only file system;
    //             opWrErr  open for writing: in this process (answered at once), or in another, which was
    //             waited for about a second; mapReadErr  the container that holds the fork is damaged, or,
    //             without NewResource, what has the sidecar's name is none: it is left as it is; eofErr
    //             without NewResource, there is no fork; else as ErrorOfHost.
    static OSErr Open(const std::filesystem::path& inFile, std::unique_ptr<ForkHome>* outHome,
                      Fork = Fork::NewResource, const KnownForks& = {}, bool* outKnownHolds = nullptr);
    ~ForkHome(); // gives the lock back

    // Whether this process holds a fork of the file open for writing.
    static bool IsOpenHere(const std::filesystem::path& inFile);

    const std::filesystem::path& Path() const { return fPath; } // the named file
    const std::filesystem::path& HomePath() const { return fHomePath; }

    // What is kept now, read anew after a change. Lasts until the next call that changes something or asks
    // for HasNoReaders.
    const LocatedForks& Forks();

    // Replace
    //
    // Writes the file that keeps the parts anew and puts it in the old one's place. inRoom zero bytes are
    // added behind the new resource fork and count as part of it.
    //
    // Errors:     dskFulErr, wPrErr, permErr, ioErr and the like: then all is as it was, in the file and
    //             here.
    OSErr Replace(const ForkChange&, size_t inRoom = 0);

    // Where the fork may be written in place. Whoever does so must leave the old state or the new one at
    // every instant, and calls WroteInPlace afterwards. Changed by Replace, also when SetFinderInfo needs it.
    ForkPlace Place() const { return fPlace; }
    void WroteInPlace();

    // Whether the file that is held still has its name: else somebody without regard for locks has moved it,
    // or put another in its place, and what is written to it would be lost. Replace asks, too: then it is
    // opWrErr.
    bool IsStillHome() const;

    // Whether any two changes of the home's file differ in its times.
    bool ShowsEachChange() const;

    // What the home's file will be known by once it is let go. The times of a file whose fork can as well be
    // compared are not asked for: writing it again would take longer.
    FileIdentity LastIdentity() const;

    // Grows with each Replace: the home is another host file then.
    unsigned Generation() const { return fGeneration; }

    // Whether nobody reads the home file in place: then space that the state before the present one used may
    // be overwritten. Readers that come later see the present state.
    bool HasNoReaders();

private:
    friend OSErr SetFinderInfo(const std::filesystem::path&, const FInfo*, const FXInfo*);

    enum class Kind : UInt8 { Sidecar, RawFork, AppleDouble, Wrapped };

    ForkHome() = default;
    OSErr TryOpen(const KnownForks&, bool* outKnownHolds, bool* outAgain);
    OSErr Locate(const LocatedForks* inKnown);
    OSErr FindHome();
    OSErr OpenHomeFile(bool inFromKnown, bool* outAgain);
    OSErr CheckSidecar(bool* outAgain);
    OSErr LookAgain(bool inFromKnown, bool* outAgain);
    bool LockInTurn();
    void LeaveTurn();
    OSErr MakeSidecar(bool* outAgain);
    bool IsCurrent() const;
    bool Holds(const KnownForks&) const;
    bool HasFork(Bytes) const;
    void Register(bool inIsOpen);
    void Adopt(Descriptor&&);
    void FindPlace();
    OSErr ReplaceRaw(const ForkChange&, size_t inRoom);
    OSErr ReplaceDouble(const ForkChange&, size_t inRoom);
    OSErr Unwrap();

    std::filesystem::path fPath, fHomePath;
    Fork fFork = Fork::NewResource;
    Kind fKind = Kind::Sidecar;
    Descriptor fFile;
    Descriptor fTurn;       // while this one waits for the lock before all others
    FileIdentity fIdentity; // of fFile: device and inode count
    LocatedForks fForks;
    ForkPlace fPlace;
    unsigned fGeneration = 0;
    bool fIsStale = true; // fForks is older than the file
    bool fIsNew = false;  // the sidecar was made by Open and is still empty
};

// SetFinderInfo
//
// Writes the Finder information of a file, also while its resource fork is open for writing, here or
// elsewhere. Either may be null.
//
// Errors:     as ForkHome::Open and Replace.
OSErr SetFinderInfo(const std::filesystem::path& inFile, const FInfo*, const FXInfo*);

// CreateFile
//
// Makes a file with an empty data fork and a sidecar that holds Finder information and, when inFork is not
// empty, that resource fork. What an earlier file of that name left as a sidecar is replaced. The data fork's
// file comes last: it is there only when all is.
//
// Errors:     dupFNErr  something has that name; else as ErrorOfHost.
OSErr CreateFile(const std::filesystem::path& inFile, const FInfo&, const FXInfo&, Bytes inFork = {});

} // namespace lampblack::files

#endif
