// The tables are made from one list of letters with their marked forms, in the order in which they sort.
#include "RomanText.h"

namespace lampblack::foundation {
namespace {

// Forms of a letter in Mac Roman: capital and small side by side, plain first, then acute, grave, circumflex,
// dieresis, tilde, ring or stroke. 0 where the character set has no such form.
struct Letter {
    UInt8 capitals[7];
    UInt8 smalls[7];
};

constexpr Letter kMarkedLetters[] = {
    { { 'A', 0xE7, 0xCB, 0xE5, 0x80, 0xCC, 0x81 }, { 'a', 0x87, 0x88, 0x89, 0x8A, 0x8B, 0x8C } },
    { { 'C', 0x82 }, { 'c', 0x8D } },
    { { 'E', 0x83, 0xE9, 0xE6, 0xE8 }, { 'e', 0x8E, 0x8F, 0x90, 0x91 } },
    { { 'I', 0xEA, 0xED, 0xEB, 0xEC }, { 'i', 0x92, 0x93, 0x94, 0x95 } },
    { { 'N', 0, 0, 0, 0, 0x84 }, { 'n', 0, 0, 0, 0, 0x96 } },
    { { 'O', 0xEE, 0xF1, 0xEF, 0x85, 0xCD, 0xAF }, { 'o', 0x97, 0x98, 0x99, 0x9A, 0x9B, 0xBF } },
    { { 'U', 0xF2, 0xF4, 0xF3, 0x86 }, { 'u', 0x9C, 0x9D, 0x9E, 0x9F } },
    { { 'Y', 0, 0, 0, 0xD9 }, { 'y', 0, 0, 0, 0xD8 } },
};

struct Pair {
    UInt8 capital;
    UInt8 small;
};

constexpr Pair kLigatures[] = { { 0xAE, 0xBE }, { 0xCE, 0xCF } }; // AE, OE
constexpr UInt8 kDotlessI = 0xF5;
constexpr UInt8 kFeminine = 0xBB, kMasculine = 0xBC; // the raised a and o of ordinals

// The small letters whose capitals were in the character set of 1984; those of the other accented letters
// came later, and the file system does not know them.
constexpr UInt8 kFileSmalls[] = {
    0x88, 0x8A, 0x8B, 0x8C, 0x8D, 0x8E, 0x96, 0x9A, 0x9B, 0x9F, 0xBE, 0xBF, 0xCF
};

constexpr ByteMap Identity()
{
    ByteMap map = {};
    for (unsigned byte = 0; byte < 256; ++byte)
        map[byte] = (UInt8)byte;
    return map;
}

constexpr ByteMap Chain(const ByteMap& inFirst, const ByteMap& inSecond)
{
    ByteMap map = {};
    for (unsigned byte = 0; byte < 256; ++byte)
        map[byte] = inSecond[inFirst[byte]];
    return map;
}

constexpr void AddCase(RomanTables& ioTables, UInt8 inCapital, UInt8 inSmall)
{
    if (!inCapital || !inSmall)
        return;
    ioTables.upper[inSmall] = inCapital;
    ioTables.lower[inCapital] = inSmall;
}

constexpr void AddCases(RomanTables& ioTables)
{
    for (UInt8 letter = 'A'; letter <= 'Z'; ++letter)
        AddCase(ioTables, letter, (UInt8)(letter + 32));
    for (const Letter& letter : kMarkedLetters)
        for (int mark = 0; mark < 7; ++mark)
            AddCase(ioTables, letter.capitals[mark], letter.smalls[mark]);
    for (const Pair& ligature : kLigatures)
        AddCase(ioTables, ligature.capital, ligature.small);
    ioTables.upper[kDotlessI] = 'I'; // one way: the small letter of I has its dot
}

constexpr void AddStripping(RomanTables& ioTables)
{
    for (const Letter& letter : kMarkedLetters)
        for (int mark = 1; mark < 7; ++mark) {
            if (letter.capitals[mark])
                ioTables.stripped[letter.capitals[mark]] = letter.capitals[0];
            if (letter.smalls[mark])
                ioTables.stripped[letter.smalls[mark]] = letter.smalls[0];
        }
}

constexpr void AddFileCases(RomanTables& ioTables)
{
    for (UInt8 letter = 'a'; letter <= 'z'; ++letter)
        ioTables.fileUpper[letter] = (UInt8)(letter - 32);
    for (const UInt8 small : kFileSmalls)
        ioTables.fileUpper[small] = ioTables.upper[small];
}

constexpr void AddSortedLetters(RomanTables& ioTables)
{
    for (UInt8 letter = 'A'; letter <= 'Z'; ++letter)
        ioTables.sort[(UInt8)(letter + 32)] = { letter, 0, 8 };
    for (const Letter& letter : kMarkedLetters)
        for (UInt8 mark = 1; mark < 7; ++mark) {
            if (letter.capitals[mark])
                ioTables.sort[letter.capitals[mark]] = { letter.capitals[0], 0, mark };
            if (letter.smalls[mark])
                ioTables.sort[letter.smalls[mark]] = { letter.capitals[0], 0, (UInt8)(8 + mark) };
        }
    ioTables.sort[kDotlessI] = { 'I', 0, 15 };
    ioTables.sort[kFeminine] = { 'A', 0, 15 };
    ioTables.sort[kMasculine] = { 'O', 0, 15 };
}

// A ligature's variant comes after that of the two letters written out.
constexpr void AddSortedLigatures(RomanTables& ioTables)
{
    ioTables.sort[0xAE] = { 'A', 'E', 7 };
    ioTables.sort[0xBE] = { 'A', 'E', 16 };
    ioTables.sort[0xCE] = { 'O', 'E', 7 };
    ioTables.sort[0xCF] = { 'O', 'E', 16 };
    ioTables.sort[0xA7] = { 'S', 'S', 16 }; // sharp s
    ioTables.sort[0xDE] = { 'F', 'I', 16 };
    ioTables.sort[0xDF] = { 'F', 'L', 16 };
}

constexpr void AddSortedMarks(RomanTables& ioTables)
{
    ioTables.sort[0xCA] = { ' ', 0, 1 }; // the space that does not break
    constexpr UInt8 kDoubleQuotes[] = { 0xC7, 0xC8, 0xD2, 0xD3 };
    for (UInt8 i = 0; i < 4; ++i)
        ioTables.sort[kDoubleQuotes[i]] = { '"', 0, (UInt8)(i + 1) };
    ioTables.sort[0xD4] = { '\'', 0, 1 };
    ioTables.sort[0xD5] = { '\'', 0, 2 };
}

constexpr RomanTables MakeTables()
{
    RomanTables tables = {};
    tables.upper = tables.lower = tables.stripped = tables.fileUpper = Identity();
    for (unsigned byte = 0; byte < 256; ++byte)
        tables.sort[byte] = { (UInt8)byte, 0, 0 };
    AddCases(tables);
    AddStripping(tables);
    AddFileCases(tables);
    AddSortedLetters(tables);
    AddSortedLigatures(tables);
    AddSortedMarks(tables);
    tables.upperStripped = Chain(tables.upper, tables.stripped);
    tables.fileUpperStripped = Chain(tables.stripped, tables.fileUpper);
    return tables;
}

constexpr RomanTables kTables = MakeTables();

} // namespace

const RomanTables& Roman()
{
    return kTables;
}

} // namespace lampblack::foundation
