// FreeType, opened with the first glyph. Advances are whole pixels, hinting is slight, edges are grey.
#include "Strike.h"

#include "FontFamilies.h"
#include "GlyphStyles.h"

#include <foundation/MacRoman.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>
#include <cstring>
#include <map>
#include <string>

namespace lampblack::quickdraw {

static FT_Library Library()
{
    static const FT_Library library = [] {
        FT_Library opened = nullptr;
        return FT_Init_FreeType(&opened) == 0 ? opened : nullptr;
    }();
    return library;
}

class FontFace {
public:
    explicit FontFace(FT_Face face) : fFace(face) {}
    FontFace(const FontFace&) = delete;
    ~FontFace() { FT_Done_Face(fFace); }

    FT_Face At(int inSize)
    {
        if (fSize != inSize && FT_Set_Pixel_Sizes(fFace, 0, (FT_UInt)inSize) == 0)
            fSize = inSize;
        return fFace;
    }
    bool Has(char32_t inCharacter) const { return FT_Get_Char_Index(fFace, inCharacter) != 0; }

private:
    FT_Face fFace;
    int fSize = 0;
};

// Each file is opened once and stays open, whichever fonts and sizes use it.
static FontFace* OpenFace(const FaceFile& inFile)
{
    static std::map<std::pair<std::string, int>, std::unique_ptr<FontFace>> faces;
    if (inFile.path.empty() || !Library())
        return nullptr;
    std::unique_ptr<FontFace>& face = faces[{ inFile.path, inFile.index }];
    FT_Face opened = nullptr;
    if (!face && FT_New_Face(Library(), inFile.path.c_str(), inFile.index, &opened) == 0)
        face = std::make_unique<FontFace>(opened);
    return face.get();
}

Strike::Strike(SInt16 font, SInt16 size, Style face) : fSize(size), fFace(face)
{
    std::fill(std::begin(fAdvances), std::end(fAdvances), kUnknown);
    const FaceFile file = FileOfFace(font, face & bold, face & italic);
    fMain = OpenFace(file);
    fSmears = (face & bold) && !file.hasBold;
    fSlants = (face & italic) && !file.hasItalic;
    MakeInfo();
}

Strike::~Strike() = default;

static SInt16 Rounded(FT_Pos in26Dot6)
{
    return (SInt16)((in26Dot6 + 32) >> 6);
}

void Strike::MakeInfo()
{
    if (!fMain) {
        fInfo = { fSize, (short)(fSize / 4), fSize, 0 };
        return;
    }
    const FT_Face face = fMain->At(fSize);
    const FT_Size_Metrics& metrics = face->size->metrics;
    const auto scaled = [&](int units) { return FT_MulFix(units, metrics.y_scale); };
    fInfo.ascent = Rounded(scaled(face->ascender));
    fInfo.descent = Rounded(-scaled(face->descender));
    fInfo.leading = std::max<short>(0, (short)(Rounded(scaled(face->height)) - fInfo.ascent - fInfo.descent));
    fInfo.widMax = (short)(Rounded(metrics.max_advance) + std::max(0, ExtraAdvance(fFace, fSmears)));
}

// The strike's own face, or any that has the character, or the strike's own with its sign for a missing one.
FontFace* Strike::FaceWith(char32_t inCharacter, bool* outBold, bool* outItalic)
{
    *outBold = fSmears;
    *outItalic = fSlants;
    if (!fMain || fMain->Has(inCharacter) || inCharacter < 0x80)
        return fMain;
    const FaceFile file = FileWithCharacter(inCharacter, fFace & bold, fFace & italic);
    FontFace* other = OpenFace(file);
    if (!other || !other->Has(inCharacter))
        return fMain;
    *outBold = (fFace & bold) && !file.hasBold;
    *outItalic = (fFace & italic) && !file.hasItalic;
    return other;
}

static constexpr FT_Int32 kLoadFlags = FT_LOAD_TARGET_LIGHT | FT_LOAD_NO_BITMAP;

static CoverageMap CoverageOf(FT_GlyphSlot inSlot)
{
    const FT_Bitmap& bitmap = inSlot->bitmap;
    CoverageMap map;
    map.left = inSlot->bitmap_left;
    map.top = -inSlot->bitmap_top;
    map.width = (int)bitmap.width;
    map.height = (int)bitmap.rows;
    map.bits.resize((size_t)map.width * (size_t)map.height);
    for (int row = 0; row < map.height; ++row)
        std::memcpy(map.bits.data() + (ptrdiff_t)row * map.width,
                    bitmap.buffer + (ptrdiff_t)row * bitmap.pitch, (size_t)map.width);
    return map;
}

static CoverageMap Render(FT_GlyphSlot inSlot, bool inSlants)
{
    FT_Matrix slant = { 0x10000, 0x4000, 0, 0x10000 };
    if (inSlants && inSlot->format == FT_GLYPH_FORMAT_OUTLINE)
        FT_Outline_Transform(&inSlot->outline, &slant);
    if (FT_Render_Glyph(inSlot, FT_RENDER_MODE_NORMAL) != 0 ||
        inSlot->bitmap.pixel_mode != FT_PIXEL_MODE_GRAY)
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

const Glyph& Strike::MakeGlyph(char32_t inCharacter)
{
    const char32_t character = Shown(inCharacter);
    Glyph& glyph = fStorage.emplace_back();
    if (!fMain) {
        glyph.advance = (SInt16)(fSize / 2);
        return glyph;
    }
    const bool control = IsControl(character);
    if (control && character != '\t')
        return glyph;
    bool smears, slants;
    FontFace* found = FaceWith(control ? U' ' : character, &smears, &slants);
    const FT_Face face = found->At(fSize);
    if (FT_Load_Glyph(face, FT_Get_Char_Index(face, control ? U' ' : character), kLoadFlags) != 0)
        return glyph;
    glyph.advance = (SInt16)std::max(0, Rounded(face->glyph->advance.x) + ExtraAdvance(fFace, smears));
    CoverageMap map = Render(face->glyph, slants);
    if (smears)
        Smear(map);
    if (fFace & (outline | shadow))
        Hollow(map, fFace & shadow ? (fFace & outline ? 2 : 1) : 0);
    glyph.left = (SInt16)map.left;
    glyph.top = (SInt16)map.top;
    glyph.width = (SInt16)map.width;
    glyph.height = (SInt16)map.height;
    glyph.coverage = fCoverage.emplace_back(std::move(map.bits)).data();
    return glyph;
}

const Glyph& Strike::GlyphOfCharacter(char32_t inCharacter)
{
    const Glyph*& known = fByCharacter[inCharacter];
    if (!known)
        known = &MakeGlyph(inCharacter);
    return *known;
}

const Glyph& Strike::LoadGlyph(uint8_t inByte)
{
    const Glyph& glyph = GlyphOfCharacter(foundation::MacRomanToUnicode(inByte));
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

static constexpr SInt16 kSystemSize = 12, kLargestSize = 1024;

Strike& StrikeFor(SInt16 inFont, SInt16 inSize, Style inFace)
{
    static std::unordered_map<uint64_t, std::unique_ptr<Strike>> strikes;
    static uint64_t lastKey = ~(uint64_t)0;
    static Strike* last = nullptr;
    const SInt16 size = inSize < 1 ? kSystemSize : std::min(inSize, kLargestSize);
    const Style face = (Style)(inFace & ~underline); // drawn with the text, not with its glyphs
    const uint64_t key = (uint64_t)(UInt16)inFont << 32 | (uint64_t)(UInt16)size << 16 | face;
    if (key == lastKey)
        return *last;
    std::unique_ptr<Strike>& strike = strikes[key];
    if (!strike)
        strike = std::make_unique<Strike>(inFont, SizeOfStandIn(inFont, size), face);
    lastKey = key;
    last = strike.get();
    return *last;
}

} // namespace lampblack::quickdraw
