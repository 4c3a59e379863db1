// For the tests of open forks: opening, reading and writing that must succeed.
#ifndef LAMPBLACK_FILES_TESTFORKS_H
#define LAMPBLACK_FILES_TESTFORKS_H

#include "TestFolder.h"

namespace lampblack {

inline SInt16 OpenData(const FSSpec& inSpec, SInt8 inPermission)
{
    SInt16 refNum = 0;
    REQUIRE(FSpOpenDF(&inSpec, inPermission, &refNum) == noErr);
    return refNum;
}

inline SInt16 OpenResource(const FSSpec& inSpec, SInt8 inPermission)
{
    SInt16 refNum = 0;
    REQUIRE(FSpOpenRF(&inSpec, inPermission, &refNum) == noErr);
    return refNum;
}

inline std::string ReadAllOf(SInt16 inRefNum)
{
    SInt32 size = 0;
    CHECK(GetEOF(inRefNum, &size) == noErr);
    CHECK(SetFPos(inRefNum, fsFromStart, 0) == noErr);
    std::string bytes((size_t)size, 0);
    CHECK(FSRead(inRefNum, &size, bytes.data()) == noErr);
    return bytes;
}

inline OSErr WriteTo(SInt16 inRefNum, std::string_view inBytes)
{
    SInt32 count = (SInt32)inBytes.size();
    const OSErr error = FSWrite(inRefNum, &count, inBytes.data());
    CHECK((error != noErr || count == (SInt32)inBytes.size()));
    return error;
}

inline SInt32 MarkOf(SInt16 inRefNum)
{
    SInt32 mark = -1;
    CHECK(GetFPos(inRefNum, &mark) == noErr);
    return mark;
}

inline SInt32 EndOf(SInt16 inRefNum)
{
    SInt32 end = -1;
    CHECK(GetEOF(inRefNum, &end) == noErr);
    return end;
}

} // namespace lampblack

#endif
