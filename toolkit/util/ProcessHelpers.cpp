// Queries on the application's own process.
#include "util/ProcessHelpers.h"

ProcessSerialNumber fgPSN = { 0, kNoProcess };

namespace {

OSErr AskProcess(ProcessInfoRec* outInfo, FSSpec* outSpec)
{
    *outInfo = {};
    outInfo->processInfoLength = sizeof *outInfo;
    outInfo->processAppSpec = outSpec;
    return GetProcessInformation(&fgPSN, outInfo);
}

} // namespace

const ProcessSerialNumber& GetCurrentProcessSerialNumber()
{
    return fgPSN;
}

OSErr GetCurrentSignature(OSType* outSignature)
{
    ProcessInfoRec info;
    const OSErr err = AskProcess(&info, nullptr);
    if (err == noErr)
        *outSignature = info.processSignature;
    return err;
}

OSErr GetCurrentFSSpec(FSSpec* outSpec)
{
    static FSSpec spec;
    static bool isFilled = false;
    if (!isFilled) {
        ProcessInfoRec info;
        const OSErr err = AskProcess(&info, &spec);
        if (err != noErr)
            return err;
        isFilled = true;
    }
    *outSpec = spec;
    return noErr;
}
