// Glyphs of outlines by FreeType, and of bitmaps. Advances are whole pixels; outlines are hinted slightly and
// have grey edges.
#include "Strike.h"

#include "BitmapFont.h"
#include "FontFaces.h"

#include <foundation/MacRoman.h>

#include FT_OUTLINE_H

#include <algorithm>
#include <cstring>
#include <string>

namespace lampblack::quickdraw {

Strike::Strike(StrikeSource inSource) : fFrom(std::move(inSource))
{
    std::fill(std::begin(fAdvances), std::end(fAdvances), kUnknown);
    if (fFrom.bitmaps)
        MakeBitmapInfo();
    else
        MakeInfo();
}

Strike::~Strike() = default;

static SInt16 Rounded(FT_Pos in26Dot6)
{
    return (SInt16)((in26Dot6 + 32) >> 6);
}

// The same however the picture is hinted: texts are as wide in every style and depth.
static int UnhintedAdvance(FT_GlyphSlot inSlot)
{
    return (int)((inSlot->linearHoriAdvance + 0x8000) >> 16);
}

void Strike::MakeInfo()
{
    if (!fFrom.outlines) {
        fInfo = { fFrom.size, (short)(fFrom.size / 4), fFrom.size, 0 };
        return;
    }
    const FT_Face face = fFrom.outlines->At(fFrom.size, fFrom.stretch);
    const FT_Size_Metrics& metrics = face->size->metrics;
    const auto scaled = [&](int units) { return FT_MulFix(units, metrics.y_scale); };
    fInfo.ascent = Rounded(scaled(face->ascender));
    fInfo.descent = Rounded(-scaled(face->descender));
    fInfo.leading = std::max<short>(0, (short)(Rounded(scaled(face->height)) - fInfo.ascent - fInfo.descent));
    fInfo.widMax = (short)(Rounded(metrics.max_advance) + std::max(0, ExtraAdvance(fFrom.face, fFrom.made)));
}

// Sizes of a bitmap in those of the strike, rounded to the nearest.
int Strike::DownFromBitmap(int inRows) const
{
    const int scaled = (2 * std::abs(inRows) * fFrom.size + fFrom.bitmapSize) / (2 * fFrom.bitmapSize);
    return inRows < 0 ? -scaled : scaled;
}

int Strike::AcrossFromBitmap(int inColumns) const
{
    const int64_t whole = (int64_t)fFrom.bitmapSize * kUnstretched;
    const int64_t scaled =
        (2 * (int64_t)std::abs(inColumns) * fFrom.size * fFrom.stretch + whole) / (2 * whole);
    const int columns = (int)std::min<int64_t>(scaled, 16384);
    return inColumns < 0 ? -columns : columns;
}

void Strike::MakeBitmapInfo()
{
    const BitmapFont& font = *fFrom.bitmaps;
    fInfo.ascent = (short)DownFromBitmap(font.Ascent());
    fInfo.descent = (short)DownFromBitmap(font.Descent());
    fInfo.leading = (short)std::clamp(DownFromBitmap(std::clamp(font.Leading(), 0, 1024)), 0, 16384);
    fInfo.widMax = (short)(AcrossFromBitmap(std::clamp(font.WidMax(), 0, 4096)) +
                           std::max(0, ExtraAdvance(fFrom.face, fFrom.made)));
}

bool Strike::Has(char32_t inCharacter) const
{
    UInt8 byte;
    if (fFrom.bitmaps)
        return foundation::UnicodeToMacRoman(inCharacter, &byte);
    return fFrom.outlines && fFrom.outlines->Has(inCharacter);
}

// The strike's own face, or any that has the character, or the strike's own with its sign for a missing one.
FontFace* Strike::FaceWith(char32_t inCharacter, Style* outMade)
{
    *outMade = fFrom.made;
    FontFace* own = fFrom.outlines;
    if (own && (own->Has(inCharacter) || inCharacter < 0x80))
        return own;
    const FaceFile file = FileWithCharacter(inCharacter, fFrom.face & bold, fFrom.face & italic);
    FontFace* other = OpenFace(file);
    if (!other || !other->Has(inCharacter))
        return own;
    *outMade = MadeStyle(fFrom.face, file);
    return other;
}

// Hostile outlines reach far: a glyph of more pixels than this is not drawn.
static constexpr FT_Pos kLargestGlyph = 4 << 20;

static bool IsReasonable(FT_GlyphSlot inSlot)
{
    FT_BBox box;
    FT_Outline_Get_CBox(&inSlot->outline, &box);
    const FT_Pos width = (box.xMax - box.xMin) / 64 + 2, height = (box.yMax - box.yMin) / 64 + 2;
    return width < 16384 && height < 16384 && width * height <= kLargestGlyph;
}

static CoverageMap CoverageOf(FT_GlyphSlot inSlot)
{
    const FT_Bitmap& bitmap = inSlot->bitmap;
    CoverageMap map;
    map.left = inSlot->bitmap_left;
    map.top = -inSlot->bitmap_top;
    map.width = (int)bitmap.width;
    map.height = (int)bitmap.rows;
    map.bits.resize((size_t)map.width * (size_t)map.height);
    for (int row = 0; row < map.height; ++row) {
        const uint8_t* from = bitmap.buffer + (ptrdiff_t)row * bitmap.pitch;
        uint8_t* to = map.bits.data() + (ptrdiff_t)row * map.width;
        if (bitmap.pixel_mode == FT_PIXEL_MODE_GRAY)
            std::memcpy(to, from, (size_t)map.width);
        else
            for (int column = 0; column < map.width; ++column)
                to[column] = from[column / 8] & 0x80 >> column % 8 ? 255 : 0;
    }
    return map;
}

static CoverageMap Render(FT_GlyphSlot inSlot, bool inSlants, bool inIsPlain)
{
    FT_Matrix slant = { 0x10000, 0x4000, 0, 0x10000 };
    if (inSlot->format != FT_GLYPH_FORMAT_OUTLINE)
        return {};
    if (inSlants)
        FT_Outline_Transform(&inSlot->outline, &slant);
    if (!IsReasonable(inSlot) ||
        FT_Render_Glyph(inSlot, inIsPlain ? FT_RENDER_MODE_MONO : FT_RENDER_MODE_NORMAL) != 0)
        return {};
    return CoverageOf(inSlot);
}

// Control characters have no picture; a tab and a carriage return move as a space and not at all.
static bool IsControl(char32_t inCharacter)
{
    return inCharacter < 0x20 || inCharacter == 0x7F;
}

// Control characters that the system font drew in menus, and the characters that show them. The system's own
// sign (0x14, and 0xF0 of Mac Roman) is a trademark: a plain dot takes its place.
static char32_t Shown(char32_t inCharacter)
{
    switch (inCharacter) {
    case 0x11: return U'\u2318'; // command
    case 0x12: return U'\u2713'; // check mark
    case 0x13: return U'\u25C6'; // diamond
    case 0x14:
    case 0xF8FF: return U'\u25CF';
    default: return inCharacter;
    }
}

// A strike keeps no more than this of coverage, and makes its glyphs anew then.
static constexpr size_t kMostCoverage = 8 << 20;

void Strike::ForgetGlyphs()
{
    std::fill(std::begin(fGlyphs), std::end(fGlyphs), nullptr);
    fByCharacter.clear();
    fStorage.clear();
    fCoverage.clear();
    fCoverageSize = 0;
}

const Glyph& Strike::Keep(int inAdvance, CoverageMap&& ioMap)
{
    if (fFrom.face & (outline | shadow))
        Hollow(ioMap, fFrom.face & shadow ? (fFrom.face & outline ? 2 : 1) : 0);
    if (fCoverageSize + ioMap.bits.size() > kMostCoverage)
        ForgetGlyphs();
    Glyph& glyph = fStorage.emplace_back();
    glyph.advance = (SInt16)std::clamp(inAdvance, 0, 16384);
    glyph.left = (SInt16)ioMap.left;
    glyph.top = (SInt16)ioMap.top;
    glyph.width = (SInt16)ioMap.width;
    glyph.height = (SInt16)ioMap.height;
    fCoverageSize += ioMap.bits.size();
    glyph.coverage = fCoverage.emplace_back(std::move(ioMap.bits)).data();
    return glyph;
}

// The lines of small hollow letters would be lost in half-tones.
static constexpr int kFirstSmoothHollow = 24;

const Glyph& Strike::MakeGlyph(char32_t inCharacter)
{
    const char32_t character = Shown(inCharacter);
    const bool control = IsControl(character);
    if (control && character != '\t')
        return Keep(0, {});
    Style made;
    FontFace* found = FaceWith(control ? U' ' : character, &made);
    if (!found)
        return Keep(fFrom.size / 2, {});
    const FT_Face face = found->At(fFrom.size, fFrom.stretch);
    const bool isHollow = (fFrom.face & (outline | shadow)) && fFrom.size < kFirstSmoothHollow;
    const bool isPlain = fFrom.isPlain || isHollow;
    const FT_Int32 target = isPlain ? FT_LOAD_TARGET_MONO : FT_LOAD_TARGET_LIGHT;
    if (FT_Load_Glyph(face, found->IndexOf(control ? U' ' : character), target | FT_LOAD_NO_BITMAP) != 0)
        return Keep(0, {});
    const int advance = UnhintedAdvance(face->glyph) + ExtraAdvance(fFrom.face, made);
    CoverageMap map = Render(face->glyph, made & italic, isPlain);
    if (made & bold)
        Smear(map);
    return Keep(advance, std::move(map));
}

const Glyph& Strike::MakeBitmapGlyph(uint8_t inByte)
{
    const BitmapFont& font = *fFrom.bitmaps;
    const BitmapGlyph found = font.GlyphOf(inByte);
    CoverageMap map;
    map.left = AcrossFromBitmap(found.left);
    map.top = -DownFromBitmap(font.Ascent());
    map.width = found.width > 0 ? std::max(1, AcrossFromBitmap(found.width)) : 0;
    map.height = DownFromBitmap(font.Height());
    if ((int64_t)map.width * map.height > kLargestGlyph)
        map.width = 0;
    map.bits.resize((size_t)map.width * (size_t)map.height);
    for (int row = 0; row < map.height; ++row)
        for (int column = 0; column < map.width; ++column)
            map.bits[(size_t)row * (size_t)map.width + (size_t)column] =
                font.CoverageAt(found.column + (2 * column + 1) * found.width / (2 * map.width),
                                (int)((2 * (int64_t)row + 1) * font.Height() / (2 * map.height)));
    Trim(map);
    if (fFrom.made & italic)
        Slant(map);
    if (fFrom.made & bold)
        Smear(map);
    // What moves nothing and shows nothing stays so in every style.
    const bool isNothing = found.advance == 0 && map.width == 0;
    const int extra = isNothing ? 0 : ExtraAdvance(fFrom.face, fFrom.made);
    return Keep(AcrossFromBitmap(found.advance) + extra, std::move(map));
}

const Glyph& Strike::GlyphOfCharacter(char32_t inCharacter)
{
    UInt8 byte;
    if (fFrom.bitmaps && (inCharacter < 0x20 || foundation::UnicodeToMacRoman(inCharacter, &byte)))
        return GlyphOf(inCharacter < 0x20 ? (uint8_t)inCharacter : byte);
    const auto known = fByCharacter.find(inCharacter);
    if (known != fByCharacter.end())
        return *known->second;
    const Glyph& glyph = MakeGlyph(inCharacter);
    fByCharacter[inCharacter] = &glyph;
    return glyph;
}

const Glyph& Strike::LoadGlyph(uint8_t inByte)
{
    const Glyph& glyph =
        fFrom.bitmaps ? MakeBitmapGlyph(inByte) : GlyphOfCharacter(foundation::MacRomanToUnicode(inByte));
    fGlyphs[inByte] = &glyph;
    fAdvances[inByte] = glyph.advance;
    return glyph;
}

SInt16 Strike::LoadAdvance(uint8_t inByte)
{
    return LoadGlyph(inByte).advance;
}

int Strike::LoadWidth(const uint8_t* inBytes, size_t inCount)
{
    int width = 0;
    for (size_t i = 0; i < inCount; ++i)
        width += AdvanceOf(inBytes[i]);
    return width;
}

Strike& Strike::Plain()
{
    if (fFrom.isPlain || fFrom.bitmaps)
        return *this;
    if (!fPlain) {
        StrikeSource source = fFrom;
        source.isPlain = true;
        fPlain = std::make_unique<Strike>(std::move(source));
    }
    return *fPlain;
}

} // namespace lampblack::quickdraw
