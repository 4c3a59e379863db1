// BinHex 4.0: text of 64 letters, run-length coded, that holds a file with its forks and three check sums.
#ifndef LAMPBLACK_FILES_BINHEX_H
#define LAMPBLACK_FILES_BINHEX_H

#include "Container.h"

namespace lampblack::files {

// The letters of six bits, in the order of their values.
constexpr char kBinHexLetters[] = "!\"#$%&'()*+,-012345689@ABCDEFGHIJKLMNPQRSTUVXYZ[`abcdefhijklmpqr";

// Where the coded text begins, behind the ':' that follows the line of introduction; 0 when there is none.
size_t FindBinHex(Bytes);

// Decodes the text from there on.
Container ReadBinHex(Bytes inCoded);

} // namespace lampblack::files

#endif
