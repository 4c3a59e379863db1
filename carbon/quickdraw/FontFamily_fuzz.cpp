// Any bytes as a font family: what is listed lies within the bytes, and what is chosen is of the list.
#include "FontFamilyRecord.h"

#include <cstdlib>

using namespace lampblack::quickdraw;

static void Require(bool inHolds)
{
    if (!inHolds)
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    const std::vector<uint8_t> bytes(inData, inData + inSize); // its end is where a sanitizer sees it
    const std::vector<FontAssociation> fonts = ReadFontFamily(bytes);
    Require(fonts.size() * 6 <= inSize);
    for (int size = 1; size < 130; size += 7)
        for (const Style style : { (Style)normal, (Style)(bold | italic) }) {
            const FontAssociation* best = BestAssociation(fonts, size, style, size & 1);
            Require(best ? best >= fonts.data() && best < fonts.data() + fonts.size() : fonts.empty());
            Require(!best || best->size >= 0);
        }
    return 0;
}
