#include "FontFaces.h"

#include <foundation/MacRoman.h>

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

static constexpr FT_Long kLargestFont = 64 << 20;

static FT_Face IfScalable(FT_Face inFace)
{
    if (FT_IS_SCALABLE(inFace))
        return inFace;
    FT_Done_Face(inFace);
    return nullptr;
}

std::unique_ptr<FontFace> FontFace::Open(const FaceFile& inFile)
{
    FT_Face face = nullptr;
    if (inFile.path.empty() || !Library() ||
        FT_New_Face(Library(), inFile.path.c_str(), inFile.index, &face) != 0)
        return nullptr;
    face = IfScalable(face);
    return face ? std::unique_ptr<FontFace>(new FontFace(face, {})) : nullptr;
}

std::unique_ptr<FontFace> FontFace::Open(std::vector<uint8_t> inBytes)
{
    FT_Face face = nullptr;
    const auto size = (FT_Long)inBytes.size();
    if (size > kLargestFont || !Library() ||
        FT_New_Memory_Face(Library(), inBytes.data(), size, 0, &face) != 0)
        return nullptr;
    face = IfScalable(face);
    return face ? std::unique_ptr<FontFace>(new FontFace(face, std::move(inBytes))) : nullptr;
}

// FreeType chooses a Unicode table by itself; older fonts have one for Mac Roman only.
FontFace::FontFace(FT_Face inFace, std::vector<uint8_t> inBytes) : fBytes(std::move(inBytes)), fFace(inFace)
{
    fIsRoman = !fFace->charmap && FT_Select_Charmap(fFace, FT_ENCODING_APPLE_ROMAN) == 0;
}

FT_Face FontFace::At(int inSize, int inStretch)
{
    if (fSize == inSize && fStretch == inStretch)
        return fFace;
    const auto width = (FT_F26Dot6)((int64_t)inSize * 64 * inStretch / kUnstretched);
    if (FT_Set_Char_Size(fFace, std::max<FT_F26Dot6>(width, 64), (FT_F26Dot6)inSize * 64, 72, 72) == 0) {
        fSize = inSize;
        fStretch = inStretch;
    }
    return fFace;
}

FT_UInt FontFace::IndexOf(char32_t inCharacter) const
{
    UInt8 byte = 0;
    if (!fIsRoman)
        return FT_Get_Char_Index(fFace, inCharacter);
    if (inCharacter < 0x20)
        byte = (UInt8)inCharacter;
    else if (!foundation::UnicodeToMacRoman(inCharacter, &byte))
        return 0;
    return FT_Get_Char_Index(fFace, byte);
}

FontFace* OpenFace(const FaceFile& inFile)
{
    static std::map<std::pair<std::string, int>, std::unique_ptr<FontFace>> faces;
    if (inFile.path.empty())
        return nullptr;
    std::unique_ptr<FontFace>& face = faces[{ inFile.path, inFile.index }];
    if (!face)
        face = FontFace::Open(inFile);
    return face.get();
}

} // namespace lampblack::quickdraw
