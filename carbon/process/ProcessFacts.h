// What is known of the running application: its file, its creator, what it uses.
#ifndef LAMPBLACK_PROCESS_PROCESSFACTS_H
#define LAMPBLACK_PROCESS_PROCESSFACTS_H

#include <Carbon/Files.h>

#include <string>

namespace lampblack::process {

const std::string& ApplicationName(); // Mac Roman, at most 31 bytes
OSType ApplicationSignature(); // from the Finder info of the file or of its resource file; '????' when none
OSErr ApplicationSpec(FSSpec* out);
OSStatus ApplicationRef(FSRef* out);

struct Usage {
    UInt64 residentBytes = 0, freeBytes = 0;
    double secondsSinceLaunch = 0, processorSeconds = 0;
};
Usage CurrentUsage();

} // namespace lampblack::process

#endif
