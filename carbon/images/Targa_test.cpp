// Targa data of every kind: tables of colours, direct pixels and greys, plain and in runs, from every corner.
#include "TestImages.h"

using namespace lampblack::images;

namespace {

struct Kind {
    int code, bits; // of a pixel, or of a colour of the table
    int first = 0;  // the number of the table's first colour
    bool IsIndexed() const { return (code & 7) == 1; }
    bool IsGrey() const { return (code & 7) == 3; }
};

// Five columns of one colour in each row, so that runs have something to say.
uint32_t PixelAt(int x, int y)
{
    return ColorAt(x > 3 && x < 9 ? 4 : x, y);
}

std::string Encoded(uint32_t inColor, int inBits)
{
    const int red = inColor >> 16 & 0xFF, green = inColor >> 8 & 0xFF, blue = inColor & 0xFF;
    if (inBits >= 24)
        return std::string({ (char)blue, (char)green, (char)red }) + std::string(inBits == 32, 'a');
    const int word = red >> 3 << 10 | green >> 3 << 5 | blue >> 3;
    return { (char)word, (char)(word >> 8) };
}

// What 15 or 16 bits leave of a colour.
uint32_t Shown(uint32_t inColor, const Kind& inKind)
{
    if (inKind.IsGrey())
        return (inColor & 0xFF) * 0x010101;
    if (inKind.bits >= 24)
        return inColor;
    const uint32_t five = inColor & 0xF8F8F8;
    return five | (five >> 5 & 0x070707);
}

// Runs of two and more, and single pixels.
std::string InRuns(const std::string& inRow, size_t inSize)
{
    std::string runs;
    for (size_t at = 0; at < inRow.size();) {
        size_t count = 1;
        while (inRow.compare(at + count * inSize, inSize, inRow, at, inSize) == 0)
            ++count;
        runs += (char)(count > 1 ? 0x80 | (int)(count - 1) : 0);
        runs += inRow.substr(at, inSize);
        at += count * inSize;
    }
    return runs;
}

std::string StoredPixel(const Kind& inKind, int x, int y)
{
    if (inKind.IsIndexed())
        return { (char)(PixelAt(x, y) % 31 + (uint32_t)inKind.first) };
    return inKind.IsGrey() ? std::string(1, (char)PixelAt(x, y)) : Encoded(PixelAt(x, y), inKind.bits);
}

uint32_t TableColor(uint32_t inIndex)
{
    return inIndex * 0x071103;
}

std::string File(const Kind& inKind, int inCorner)
{
    const int count = inKind.IsIndexed() ? 31 : 0, bits = inKind.IsIndexed() ? 8 : inKind.bits;
    std::string file = { 3,
                         (char)(count > 0),
                         (char)inKind.code,
                         (char)inKind.first,
                         0,
                         (char)count,
                         0,
                         (char)(count > 0 ? inKind.bits : 0),
                         0,
                         0,
                         0,
                         0,
                         kWidth,
                         0,
                         kHeight,
                         0,
                         (char)bits,
                         (char)inCorner };
    file += "Nam";
    for (int i = 0; i < count; ++i)
        file += Encoded(TableColor((uint32_t)i), inKind.bits);
    for (int row = 0; row < kHeight; ++row) {
        std::string pixels;
        for (int column = 0; column < kWidth; ++column)
            pixels += StoredPixel(inKind, inCorner & 0x10 ? kWidth - 1 - column : column,
                                  inCorner & 0x20 ? row : kHeight - 1 - row);
        file += inKind.code & 8 ? InRuns(pixels, pixels.size() / kWidth) : pixels;
    }
    return file;
}

int Mistakes(const Kind& inKind, int inCorner)
{
    const TestPort port;
    const TestImporter importer('TPIC', File(inKind, inCorner));
    CHECK(GraphicsImportDraw(importer) == noErr);
    int mistakes = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            const uint32_t color = inKind.IsIndexed() ? TableColor(PixelAt(x, y) % 31) : PixelAt(x, y);
            mistakes += port.At(x, y) != Shown(color, inKind);
        }
    return mistakes;
}

} // namespace

TEST_CASE("GraphicsImportDraw: Targa data of every kind, whose first pixel is in any corner")
{
    for (const int runs : { 0, 8 })
        for (const Kind& kind :
             { Kind{ 1, 15 }, Kind{ 1, 16 }, Kind{ 1, 24 }, Kind{ 1, 32 }, Kind{ 1, 24, 9 }, Kind{ 2, 15 },
               Kind{ 2, 16 }, Kind{ 2, 24 }, Kind{ 2, 32 }, Kind{ 3, 8 } })
            for (const int corner : { 0x00, 0x10, 0x20, 0x30 }) {
                CAPTURE(kind.code + runs);
                CAPTURE(kind.bits);
                CAPTURE(corner);
                CHECK(Mistakes({ kind.code | runs, kind.bits, kind.first }, corner) == 0);
            }
}

TEST_CASE(
    "GraphicsImportDraw: Targa data that end early are codecBadDataErr, and what there is of them shows")
{
    const std::string whole = File({ 10, 24 }, 0);
    for (size_t size = 19; size < whole.size(); ++size) {
        const TestPort port;
        const TestImporter importer('TPIC', whole.substr(0, size));
        CHECK(GraphicsImportDraw(importer) == codecBadDataErr);
        if (size > whole.size() / 2)
            CHECK(port.At(0, kHeight - 1) == PixelAt(0, kHeight - 1));
    }
}
