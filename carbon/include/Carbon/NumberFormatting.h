// Whole numbers and their decimal text.
#ifndef LAMPBLACK_CARBON_NUMBERFORMATTING_H
#define LAMPBLACK_CARBON_NUMBERFORMATTING_H

#include <Carbon/MacTypes.h>

LAMPBLACK_BEGIN_C

void NumToString(SInt32 theNum, Str255 theString);

// StringToNum
//
// An optional sign and digits. Characters are not checked: the low four bits of each are its digit, so that a
// blank counts as 0; what passes 32 bits is lost. A null string is 0.
void StringToNum(ConstStr255Param theString, SInt32* theNum);

LAMPBLACK_END_C

#ifdef __cplusplus
// For sources that keep the number in a long.
inline void StringToNum(ConstStr255Param theString, long* theNum)
{
    SInt32 number = 0;
    StringToNum(theString, &number);
    if (theNum)
        *theNum = number;
}
#endif

#endif
