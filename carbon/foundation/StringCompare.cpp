// Comparing Mac Roman text, in the order in which users sort and as the file system does.
#include "RomanText.h"

#include <Carbon/StringCompare.h>

#include <algorithm>
#include <utility>

using namespace lampblack::foundation;

namespace {

// Hands out the letters of a text one by one, a ligature as two.
class Letters {
public:
    explicit Letters(std::string_view inText) : fText(inText) {}

    bool AtEnd() const { return !fSecond && fNext == fText.size(); }

    UInt8 Next(UInt8* outVariant)
    {
        if (fSecond) {
            *outVariant = fVariant;
            return std::exchange(fSecond, 0);
        }
        const SortKey& key = Roman().sort[(UInt8)fText[fNext++]];
        fSecond = key.second;
        *outVariant = fVariant = key.variant;
        return key.first;
    }

private:
    std::string_view fText;
    size_t fNext = 0;
    UInt8 fSecond = 0;
    UInt8 fVariant = 0;
};

SInt16 Sign(int inDifference)
{
    return (SInt16)((inDifference > 0) - (inDifference < 0));
}

struct Order {
    SInt16 primary = 0;
    SInt16 secondary = 0;
};

Order Compare(std::string_view inA, std::string_view inB)
{
    Letters a(inA), b(inB);
    Order order;
    while (!a.AtEnd() && !b.AtEnd()) {
        UInt8 variantA, variantB;
        const UInt8 letterA = a.Next(&variantA), letterB = b.Next(&variantB);
        if (letterA != letterB)
            return { Sign(letterA - letterB), 0 };
        if (!order.secondary)
            order.secondary = Sign(variantA - variantB);
    }
    order.primary = Sign((int)b.AtEnd() - (int)a.AtEnd());
    return order;
}

SInt16 CompareFully(std::string_view inA, std::string_view inB)
{
    const Order order = Compare(inA, inB);
    return order.primary ? order.primary : order.secondary;
}

// The published text on equality: secondary order, which is that of case and diacritical marks, is ignored.
SInt16 Differ(std::string_view inA, std::string_view inB)
{
    return Compare(inA, inB).primary != 0;
}

std::string_view TextOf(const void* inText, SInt16 inLength)
{
    return std::string_view((const char*)inText, inText && inLength > 0 ? (size_t)inLength : 0);
}

const ByteMap* FileMap(Boolean inCaseSens, Boolean inDiacSens)
{
    const RomanTables& roman = Roman();
    if (inCaseSens)
        return inDiacSens ? nullptr : &roman.stripped;
    return inDiacSens ? &roman.fileUpper : &roman.fileUpperStripped;
}

} // namespace

SInt16 CompareText(const void* aPtr, const void* bPtr, SInt16 aLen, SInt16 bLen, Handle)
{
    return CompareFully(TextOf(aPtr, aLen), TextOf(bPtr, bLen));
}

SInt16 CompareString(ConstStr255Param aStr, ConstStr255Param bStr, Handle)
{
    return CompareFully(TextOf(aStr), TextOf(bStr));
}

SInt16 IdenticalText(const void* aPtr, const void* bPtr, SInt16 aLen, SInt16 bLen, Handle)
{
    return Differ(TextOf(aPtr, aLen), TextOf(bPtr, bLen));
}

SInt16 IdenticalString(ConstStr255Param aStr, ConstStr255Param bStr, Handle)
{
    return Differ(TextOf(aStr), TextOf(bStr));
}

SInt16 RelString(ConstStr255Param str1, ConstStr255Param str2, Boolean caseSens, Boolean diacSens)
{
    const std::string_view a = TextOf(str1), b = TextOf(str2);
    const ByteMap* map = FileMap(caseSens, diacSens);
    const size_t common = std::min(a.size(), b.size());
    for (size_t i = 0; i < common; ++i) {
        const UInt8 left = (UInt8)a[i], right = (UInt8)b[i];
        const int difference = map ? (*map)[left] - (*map)[right] : left - right;
        if (difference)
            return Sign(difference);
    }
    return Sign((int)a.size() - (int)b.size());
}

Boolean EqualString(ConstStr255Param str1, ConstStr255Param str2, Boolean caseSens, Boolean diacSens)
{
    return RelString(str1, str2, caseSens, diacSens) == 0;
}
