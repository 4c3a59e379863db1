// Numbers of text encodings, the same as those of CFString.h.
#ifndef LAMPBLACK_CARBON_TEXTCOMMON_H
#define LAMPBLACK_CARBON_TEXTCOMMON_H

#include <Carbon/MacTypes.h>

typedef UInt32 TextEncoding;

enum : TextEncoding {
    kTextEncodingMacRoman = 0,
    kTextEncodingWindowsLatin1 = 0x0500,
    kTextEncodingISOLatin1 = 0x0201,
    kTextEncodingUS_ASCII = 0x0600
};

#endif
