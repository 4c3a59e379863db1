// The Process Manager: which process this is, what it was started from, and who is in front.
// Begin with GetCurrentProcess and GetProcessInformation.
#ifndef LAMPBLACK_CARBON_PROCESSES_H
#define LAMPBLACK_CARBON_PROCESSES_H

#include <Carbon/Files.h>
#include <Carbon/MacTypes.h>

#include <sys/types.h>

enum { kNoProcess = 0, kSystemProcess = 1, kCurrentProcess = 2 };

// Bits of ProcessInfoRec.processMode.
enum {
    modeReserved = 0x01000000,
    modeControlPanel = 0x00080000,
    modeLaunchDontSwitch = 0x00040000,
    modeDeskAccessory = 0x00020000,
    modeMultiLaunch = 0x00010000,
    modeNeedSuspendResume = 0x00004000,
    modeCanBackground = 0x00001000,
    modeDoesActivateOnFGSwitch = 0x00000800,
    modeOnlyBackground = 0x00000400,
    modeGetFrontClicks = 0x00000200,
    modeGetAppDiedMsg = 0x00000100,
    mode32BitCompatible = 0x00000080,
    modeHighLevelEventAware = 0x00000040,
    modeLocalAndRemoteHLEvents = 0x00000020,
    modeStationeryAware = 0x00000010,
    modeUseTextEditServices = 0x00000008,
    modeDisplayManagerAware = 0x00000004
};

struct ProcessInfoRec {
    UInt32 processInfoLength; // set by the caller: the size of this record
    StringPtr processName;    // a Str31 of the caller's, or NULL
    ProcessSerialNumber processNumber;
    UInt32 processType;      // 'APPL'
    OSType processSignature; // the creator in the application's Finder info
    UInt32 processMode;
    Ptr processLocation;
    UInt32 processSize;    // bytes in use
    UInt32 processFreeMem; // bytes free on the machine
    ProcessSerialNumber processLauncher;
    UInt32 processLaunchDate; // ticks
    UInt32 processActiveTime; // ticks of processor time
    FSSpecPtr processAppSpec; // the caller's, or NULL
};
typedef struct ProcessInfoRec ProcessInfoRec;
typedef ProcessInfoRec* ProcessInfoRecPtr;

LAMPBLACK_BEGIN_C

OSErr GetCurrentProcess(ProcessSerialNumber* outPSN);

// GetFrontProcess
//
// Errors:  procNotFound  another program has the keyboard; *outPSN is then kNoProcess.
OSErr GetFrontProcess(ProcessSerialNumber* outPSN);

// SetFrontProcess
//
// Asks the desktop to bring the screen of this process to the front.
// Errors:  procNotFound  any process but this one.
OSErr SetFrontProcess(const ProcessSerialNumber* inPSN);

// GetNextProcess
//
// Walks the processes of this machine: from kNoProcess to this process, from there to the end.
// Errors:  procNotFound  the end of the walk (*ioPSN is then kNoProcess).  paramErr  an unknown process.
OSErr GetNextProcess(ProcessSerialNumber* ioPSN);

// GetProcessInformation
//
// Fills the record; kCurrentProcess is understood. processName and processAppSpec may be NULL, and
// processInfoLength may be the 60 of a record with short pointers.
// Errors:  paramErr  NULL or a record that is too short.  procNotFound  any process but this one.
OSErr GetProcessInformation(const ProcessSerialNumber* inPSN, ProcessInfoRec* ioInfo);

// GetProcessBundleLocation
//
// The file that the application was started from.
OSStatus GetProcessBundleLocation(const ProcessSerialNumber* inPSN, FSRef* outLocation);

// SameProcess
//
// kCurrentProcess is the same as this process; the fields are not for comparing.
OSErr SameProcess(const ProcessSerialNumber* inPSN1, const ProcessSerialNumber* inPSN2, Boolean* outResult);

// WakeUpProcess
//
// Ends the wait of the event loop, if it waits.
OSErr WakeUpProcess(const ProcessSerialNumber* inPSN);

OSStatus GetProcessPID(const ProcessSerialNumber* inPSN, pid_t* outPID);
OSStatus GetProcessForPID(pid_t inPID, ProcessSerialNumber* outPSN);

// ExitToShell
//
// Ends the process with status 0, after its exit handlers.
[[noreturn]] void ExitToShell(void);

LAMPBLACK_END_C

#endif
