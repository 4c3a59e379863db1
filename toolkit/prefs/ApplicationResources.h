// The application's own resource file, the current-file saver, and the flipper of 'CTL#' lists. Values kept
// in resources are in ResourceValues.h.
//
// Every call here that answers an OSStatus leaves it in ResError too.
#ifndef LAMPBLACK_PREFS_APPLICATIONRESOURCES_H
#define LAMPBLACK_PREFS_APPLICATIONRESOURCES_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// StResFile
//
// Makes a resource file current for the scope; -1 only saves and restores.
class StResFile {
public:
    [[nodiscard]] explicit StResFile(SInt16 inRefNum);
    virtual ~StResFile();

    StResFile(const StResFile&) = delete;
    StResFile& operator=(const StResFile&) = delete;

private:
    SInt16 fSaved;
};

// InitResourceHelpers
//
// Remembers the application's resource file (on the first call) and installs the 'CTL#' flipper (on every
// call). Always noErr; a flipper that cannot be installed is told in a line on standard output.
OSStatus InitResourceHelpers();

// GetCurrentResourceFileID
//
// The reference of the application's resource file: the first open one whose creator is the application's. 0
// while none matches; an answer other than 0 is remembered.
SInt16 GetCurrentResourceFileID();

// GetApplicationResFile
//
// What InitResourceHelpers remembered; -1 before it.
SInt16 GetApplicationResFile();

// GetApplicationResource
//
// A resource of the application's file and of no other.
// Ownership: the Resource Manager's.
// Errors:     null, and ResError is fnfErr while the file is unknown, resNotFound, or what the Resource or
//             Memory Manager answered.
Handle GetApplicationResource(OSType inType, SInt16 inID);

// AddApplicationResource
//
// Adds to the application's file and writes it. inName may be null.
// Errors:     fnfErr while the file is unknown; those of AddResource.
OSStatus AddApplicationResource(Handle inData, OSType inType, SInt16 inID, ConstStr255Param inName);

// CopyApplicationResource
//
// Copies one of the application's resources into the current resource file. inName, the copy's name, may be
// null.
// Errors:     those of GetApplicationResource and AddResource; after the latter the handle is nobody's.
OSStatus CopyApplicationResource(OSType inType, SInt16 inID, ConstStr255Param inName);

// RemoveResourceByID
//
// Removes a resource from the current file and writes the file; noErr when there is none.
// Errors:     those of RemoveResource.
OSStatus RemoveResourceByID(OSType inType, SInt16 inID);

// flipCustomResources, flipCTLHashResource
//
// CoreEndian flippers.
// Shape: 'CTL#' is a run of 16-bit words, big-endian on disk; an odd last byte is left alone. Data on its
// way back to disk is left alone too: 'CTL#' lists are never written.
// Errors: handlerNotFoundErr for any other type.
OSStatus flipCustomResources(OSType inDomain, OSType inType, SInt16 inID, void* ioData, ByteCount inSize,
                             Boolean inCurrentlyNative, void* inRefCon);
OSStatus flipCTLHashResource(OSType inDomain, OSType inType, SInt16 inID, void* ioData, ByteCount inSize,
                             Boolean inCurrentlyNative, void* inRefCon);

LAMPBLACK_END

#endif
