// Fonts as resources hold them: bitmaps read, families listed, and the best of a family chosen.
#include "BitmapFont.h"
#include "FontFamilyRecord.h"
#include "Strike.h"
#include "TestFont.h"

#include <doctest/doctest.h>

using namespace lampblack::quickdraw;

static std::string PictureOf(const BitmapFont& font, uint8_t character)
{
    const BitmapGlyph glyph = font.GlyphOf(character);
    std::string picture;
    for (int row = 0; row < font.Height(); ++row) {
        for (int column = 0; column < glyph.width; ++column)
            picture += font.CoverageAt(glyph.column + column, row) ? '#' : '.';
        picture += '/';
    }
    return picture;
}

static std::string PictureOf(const Glyph& glyph)
{
    std::string picture;
    for (int row = 0; row < glyph.height; ++row) {
        for (int column = 0; column < glyph.width; ++column)
            picture += glyph.coverage[row * glyph.width + column] ? '#' : '.';
        picture += '/';
    }
    return picture;
}

TEST_CASE("BitmapFont: images, places and widths of its characters; what is missing shows its sign")
{
    BitmapFont font;
    REQUIRE(font.Read(SmallFont().Bytes()));
    CHECK(font.Ascent() == 3);
    CHECK(font.Descent() == 1);
    CHECK(PictureOf(font, 'A') == "###/#.#/#.#/.../");
    CHECK(font.GlyphOf('A').left == 0);
    CHECK(font.GlyphOf('A').advance == 4);
    CHECK(font.GlyphOf('C').left == -1);
    CHECK(font.GlyphOf('C').advance == 5);
    for (const char missing : { 'B', 'D', '\0' })
        CHECK(PictureOf(font, (uint8_t)missing) == "##/##/##/../");
}

TEST_CASE("BitmapFont: a strike of two bits a pixel has half-tones")
{
    std::vector<uint8_t> bytes = SmallFont().Bytes();
    bytes[1] = 4; // the same bits, two of them a pixel: the A's first row is 11 11 (11 ...)
    BitmapFont font;
    REQUIRE(font.Read(bytes));
    const BitmapGlyph glyph = font.GlyphOf('A');
    CHECK(glyph.width == 3);
    CHECK(font.CoverageAt(0, 0) == 255);
    CHECK(font.CoverageAt(0, 1) == 170); // "#." is 2 of 3
}

TEST_CASE("BitmapFont: bytes that are cut off anywhere are refused, and changed ones never read outside")
{
    const std::vector<uint8_t> whole = SmallFont().Bytes();
    for (size_t size = 0; size < whole.size(); ++size) {
        BitmapFont font;
        CAPTURE(size);
        CHECK(!font.Read(std::vector<uint8_t>(whole.begin(), whole.begin() + (ptrdiff_t)size)));
        CHECK(font.GlyphOf('A').width == 0);
    }
    for (size_t at = 0; at < whole.size(); ++at) {
        std::vector<uint8_t> changed = whole;
        changed[at] ^= 0x7F;
        BitmapFont font;
        if (font.Read(changed))
            for (int c = 0; c < 256; ++c)
                CHECK(font.GlyphOf((uint8_t)c).width <= 16);
    }
}

TEST_CASE("ReadFontFamily: lists what lies within the bytes")
{
    const std::vector<FontAssociation> fonts = { { 0, normal, 7 }, { 9, normal, 8 }, { 12, bold, 9 } };
    std::vector<uint8_t> bytes = FamilyBytes(fonts);
    const auto read = ReadFontFamily(bytes);
    REQUIRE(read.size() == 3);
    CHECK(read[2].size == 12);
    CHECK(read[2].style == bold);
    CHECK(read[2].id == 9);
    bytes.pop_back();
    CHECK(ReadFontFamily(bytes).size() == 2);
    CHECK(ReadFontFamily({}).empty());
    CHECK(ReadFontFamily(FamilyBytes({})).empty());
}

TEST_CASE("BestAssociation: the size, outlines, twice, half, the next larger, the next smaller")
{
    const std::vector<FontAssociation> bitmaps = {
        { 9, normal, 1 }, { 10, normal, 2 }, { 18, normal, 3 }, { 24, normal, 4 }, { 10, bold, 5 }
    };
    const auto chosen = [&](int size, Style style = normal) {
        return BestAssociation(bitmaps, size, style, false)->id;
    };
    CHECK(chosen(10) == 2);
    CHECK(chosen(10, bold) == 5);
    CHECK(chosen(10, bold | italic) == 5);
    CHECK(chosen(10, italic) == 2);
    CHECK(chosen(12) == 4);
    CHECK(chosen(20) == 2);
    CHECK(chosen(11) == 3);
    CHECK(chosen(40) == 4);
    std::vector<FontAssociation> both = bitmaps;
    both.push_back({ 0, normal, 6 });
    CHECK(BestAssociation(both, 10, normal, false)->id == 2);
    CHECK(BestAssociation(both, 12, normal, false)->id == 6);
    CHECK(BestAssociation(both, 10, normal, true)->id == 6);
    CHECK(BestAssociation({}, 10, normal, true) == nullptr);
}

TEST_CASE("Strike: bitmaps as they are, doubled, and with styles made of them")
{
    auto font = std::make_shared<BitmapFont>();
    REQUIRE(font->Read(SmallFont().Bytes()));
    StrikeSource source;
    source.bitmaps = font;
    source.bitmapSize = source.size = 4;
    CHECK(PictureOf(Strike(source).GlyphOf('A')) == "###/#.#/#.#/");
    source.made = source.face = bold;
    Strike heavy(source);
    CHECK(PictureOf(heavy.GlyphOf('A')) == "####/####/####/");
    CHECK(heavy.AdvanceOf('A') == 5);
    source.made = source.face = italic;
    Strike slanted(source);
    CHECK(PictureOf(slanted.GlyphOf('A')) == ".###/#.#./#.#./");
    CHECK(slanted.AdvanceOf('A') == 4);
    source.made = source.face = normal;
    source.size = 8;
    Strike doubled(source);
    CHECK(PictureOf(doubled.GlyphOf('A')) == "######/######/##..##/##..##/##..##/##..##/");
    CHECK(doubled.AdvanceOf('A') == 8);
    CHECK(doubled.Info().ascent == 6);
    CHECK(doubled.GlyphOf('C').left == -2);
}
