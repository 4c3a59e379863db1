// Whole numbers and their decimal text.
#include "MacRoman.h"
#include "RomanText.h"

#include <Carbon/NumberFormatting.h>

#include <charconv>

using namespace lampblack::foundation;

void NumToString(SInt32 theNum, Str255 theString)
{
    char digits[12];
    const std::to_chars_result end = std::to_chars(digits, digits + sizeof digits, theNum);
    if (theString)
        PascalFromMacRoman(std::string_view(digits, (size_t)(end.ptr - digits)), theString);
}

void StringToNum(ConstStr255Param theString, SInt32* theNum)
{
    if (!theNum)
        return;
    std::string_view digits = TextOf(theString);
    const bool isNegative = digits.starts_with('-');
    if (isNegative || digits.starts_with('+'))
        digits.remove_prefix(1);
    UInt32 number = 0;
    for (const char digit : digits)
        number = number * 10 + ((UInt8)digit & 15);
    *theNum = (SInt32)(isNegative ? 0 - number : number);
}
