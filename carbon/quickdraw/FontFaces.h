// Open outline fonts. Begin with OpenFace.
#ifndef LAMPBLACK_QUICKDRAW_FONTFACES_H
#define LAMPBLACK_QUICKDRAW_FONTFACES_H

#include "FontFamilies.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <cstdint>
#include <memory>
#include <vector>

namespace lampblack::quickdraw {

class FontFace {
public:
    // Null for what is no outline font.
    static std::unique_ptr<FontFace> Open(const FaceFile&);
    static std::unique_ptr<FontFace> Open(std::vector<uint8_t> sfnt);
    ~FontFace() { FT_Done_Face(fFace); }
    FontFace(const FontFace&) = delete;
    FontFace& operator=(const FontFace&) = delete;

    // At a size in pixels, widths being stretched.
    FT_Face At(int size, int stretch);
    // 0: the font does not have the character.
    FT_UInt IndexOf(char32_t) const;
    bool Has(char32_t inCharacter) const { return IndexOf(inCharacter) != 0; }

private:
    FontFace(FT_Face, std::vector<uint8_t> bytes);

    std::vector<uint8_t> fBytes; // read by fFace
    FT_Face fFace;
    bool fIsRoman = false; // characters go by their Mac Roman bytes
    int fSize = 0, fStretch = 0;
};

// Each file is opened once and stays open, whichever fonts and sizes use it. Null when it cannot be read.
FontFace* OpenFace(const FaceFile&);

} // namespace lampblack::quickdraw

#endif
