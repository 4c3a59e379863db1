// Bounded copies, case, comparison and search of C and Pascal strings; see the header.
#include "util/Strings.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr ScriptCode kSystemScript = -1;
constexpr size_t kLongestText = 32767; // that a 16-bit length can say

void CopyCharacters(StringPtr outText, const unsigned char* inCharacters, size_t inCount)
{
    std::memmove(outText + 1, inCharacters, inCount);
    outText[0] = static_cast<unsigned char>(inCount);
}

// A byte of a string against a character: the one unsigned, the other not, so that 0x80 and above never
// match.
bool Matches(unsigned char inByte, char inCharacter)
{
    return int{ inByte } == int{ static_cast<signed char>(inCharacter) };
}

// The index of a character among the first inCount of a Pascal string; inCount + 1 when it is not there.
int IndexOf(ConstStr255Param inText, int inCount, char inCharacter)
{
    int index = 1;
    while (index <= inCount && !Matches(inText[index], inCharacter))
        ++index;
    return index;
}

signed char Folded(unsigned char inByte, bool inCaseSensitive)
{
    const char character = static_cast<char>(inByte);
    return static_cast<signed char>(inCaseSensitive ? character : UpperChar(character));
}

} // namespace

void strcpysafe(char* outText, const char* inText, UInt32 inSize)
{
    if (!outText || !inText || inSize == 0)
        return;
    const size_t length = strnlen(inText, inSize - 1);
    std::memmove(outText, inText, length);
    outText[length] = 0;
}

SInt32 PLstrcpysafe(StringPtr outText, ConstStr255Param inText, UInt32 inSize)
{
    if (!outText || !inText || inSize == 0)
        return 0;
    const UInt32 count = std::min<UInt32>(inText[0], inSize - 1);
    CopyCharacters(outText, inText + 1, count);
    return static_cast<SInt32>(count);
}

char* strncpyterm(char* outText, const char* inText, SInt32 inCount)
{
    if (!outText || !inText)
        return outText;
    const size_t limit = inCount < 0 ? 0 : std::min(static_cast<size_t>(inCount), kLongestText);
    const size_t length = strnlen(inText, limit);
    std::memmove(outText, inText, length);
    outText[length] = 0;
    return outText;
}

char UpperChar(char inCharacter)
{
    if (static_cast<unsigned char>(inCharacter) >= 0x80)
        UppercaseText(&inCharacter, 1, kSystemScript);
    else if (inCharacter >= 'a' && inCharacter <= 'z')
        inCharacter = static_cast<char>(inCharacter - 'a' + 'A');
    return inCharacter;
}

void PStringToUppercase(StringPtr ioText)
{
    if (ioText)
        UppercaseText(reinterpret_cast<Ptr>(ioText + 1), PLstrlen(ioText), kSystemScript);
}

void PStringToLowercase(StringPtr ioText)
{
    if (ioText)
        LowercaseText(reinterpret_cast<Ptr>(ioText + 1), PLstrlen(ioText), kSystemScript);
}

bool CharacterIsNumber(char inCharacter)
{
    return inCharacter >= '0' && inCharacter <= '9';
}

bool CharacterIsHexDigit(char inCharacter)
{
    return CharacterIsNumber(inCharacter) || (inCharacter >= 'A' && inCharacter <= 'F') ||
           (inCharacter >= 'a' && inCharacter <= 'f');
}

SInt16 PStringCompare(ConstStr255Param inA, ConstStr255Param inB, bool inCaseSensitive)
{
    if (!inA || !inB)
        return -2;
    const int common = std::min(inA[0], inB[0]);
    for (int i = 1; i <= common; ++i) {
        const signed char a = Folded(inA[i], inCaseSensitive);
        const signed char b = Folded(inB[i], inCaseSensitive);
        if (a != b)
            return a > b ? 1 : -1;
    }
    return static_cast<SInt16>((inA[0] > inB[0]) - (inA[0] < inB[0]));
}

bool PStringEqual(ConstStr255Param inA, ConstStr255Param inB, bool inCaseSensitive)
{
    if (!inA || !inB || inA[0] != inB[0])
        return false;
    for (int i = 1; i <= inA[0]; ++i)
        if (Folded(inA[i], inCaseSensitive) != Folded(inB[i], inCaseSensitive))
            return false;
    return true;
}

bool CStringContains(const char* inText, const char* inPattern, SInt32* outOffset)
{
    SInt32 unwanted = 0;
    SInt32& offset = outOffset ? *outOffset : unwanted;
    offset = 0;
    if (!inText || !inPattern)
        return false;
    const size_t textLength = std::strlen(inText);
    const size_t patternLength = std::strlen(inPattern);
    const auto length = static_cast<SInt16>(patternLength);
    // A pattern whose length the comparison cannot be told is one that is not found.
    for (size_t p = 0; patternLength <= kLongestText && p + patternLength <= textLength; ++p)
        if (IdenticalText(inText + p, inPattern, length, length, nullptr) == 0) {
            offset = static_cast<SInt32>(p);
            return true;
        }
    offset = static_cast<SInt32>(textLength);
    return false;
}

bool PStringContains(ConstStr255Param inText, ConstStr255Param inPattern, SInt32* outOffset)
{
    if (!inText || !inPattern)
        return CStringContains(nullptr, nullptr, outOffset);
    char text[256];
    char pattern[256];
    CopyPascalStringToC(inText, text);
    CopyPascalStringToC(inPattern, pattern);
    return CStringContains(text, pattern, outOffset);
}

bool PStringContainsCharacter(ConstStr255Param inText, char inCharacter, SInt16* outIndex)
{
    if (!inText)
        return false;
    const int index = IndexOf(inText, inText[0], inCharacter);
    if (outIndex)
        *outIndex = static_cast<SInt16>(index);
    return index <= inText[0];
}

void PStringCopyUptoCharacter(ConstStr255Param inText, StringPtr outText, char inDelimiter)
{
    if (!outText)
        return;
    if (!inText) {
        outText[0] = 0;
        return;
    }
    // The byte behind the string is scanned too, except that behind 255 characters a Str255 has none: what
    // would be the 256th character is then counted and not copied.
    const int length = inText[0];
    const int scanned = std::min(length + 1, 255);
    int count = IndexOf(inText, scanned, inDelimiter) - 1;
    if (length == 255 && count == 255)
        ++count;
    std::memmove(outText + 1, inText + 1, static_cast<size_t>(std::min(count, 255)));
    outText[0] = static_cast<unsigned char>(count);
}

void PStringCopyStartingAfterCharacter(ConstStr255Param inText, StringPtr outText, char inDelimiter)
{
    if (!outText)
        return;
    if (!inText) {
        outText[0] = 0;
        return;
    }
    const int length = inText[0];
    const int index = IndexOf(inText, length, inDelimiter);
    if (index <= length)
        CopyCharacters(outText, inText + index + 1, static_cast<size_t>(length - index));
}
