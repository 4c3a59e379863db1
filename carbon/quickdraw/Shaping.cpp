#include "Shaping.h"

#include "FontFamilies.h"
#include "Pango.h"

#include <foundation/MacRoman.h>

#include <algorithm>
#include <iterator>

namespace lampblack::quickdraw {

struct CharacterRange {
    char32_t first, last;
};

// Characters whose picture or place depends on their neighbours, in ascending order: marks, joiners,
// variation selectors, and all scripts that join, reorder or run right to left.
static constexpr CharacterRange kComplex[] = {
    { 0x0300, 0x036F },   { 0x0483, 0x0489 },   { 0x0590, 0x109F },   { 0x1100, 0x11FF },
    { 0x135D, 0x135F },   { 0x1700, 0x18AF },   { 0x1900, 0x1CFF },   { 0x1DC0, 0x1DFF },
    { 0x200B, 0x200F },   { 0x202A, 0x202E },   { 0x2060, 0x206F },   { 0x20D0, 0x20FF },
    { 0x302A, 0x302F },   { 0x3099, 0x309A },   { 0xA66F, 0xA69F },   { 0xA800, 0xABFF },
    { 0xD7B0, 0xD7FF },   { 0xFB1D, 0xFDFF },   { 0xFE00, 0xFE2F },   { 0xFE70, 0xFEFF },
    { 0x10800, 0x11FFF }, { 0x1E800, 0x1EFFF }, { 0x1F1E6, 0x1F1FF }, { 0x1F3FB, 0x1F3FF },
    { 0xE0000, 0xE0FFF },
};

// Strikes have a picture of their own for it.
static constexpr char32_t kSystemSign = 0xF8FF;

static bool IsComplex(char32_t inCharacter)
{
    const auto* range = std::lower_bound(
        std::begin(kComplex), std::end(kComplex), inCharacter,
        [](const CharacterRange& inRange, char32_t character) { return inRange.last < character; });
    return range != std::end(kComplex) && range->first <= inCharacter;
}

bool NeedsShaping(std::string_view inText, const Strike& inStrike)
{
    for (size_t at = 0; at < inText.size();) {
        if ((uint8_t)inText[at] < 0x80) {
            ++at;
            continue;
        }
        const char32_t character = foundation::NextUtf8(inText, &at);
        const bool isSign = character == kSystemSign;
        if (IsComplex(character) || (!isSign && !inStrike.Has(character)))
            return true;
    }
    return false;
}

static constexpr size_t kLongestPiece = 512; // bytes

size_t PieceToShape(std::string_view inText)
{
    if (inText.size() <= kLongestPiece)
        return inText.size();
    const size_t space = inText.rfind(' ', kLongestPiece - 1);
    if (space != inText.npos)
        return space + 1;
    size_t end = 0, next = 0;
    while (next <= kLongestPiece) {
        end = next;
        foundation::NextUtf8(inText, &next);
    }
    return end;
}

// A layout that is used for all texts, one after the other.
static PangoLayout* SharedLayout(const PangoCalls& inPango)
{
    static PangoLayout* const layout = [&] {
        PangoFontMap* fonts = inPango.pango_ft2_font_map_new();
        inPango.pango_ft2_font_map_set_resolution(reinterpret_cast<PangoFT2FontMap*>(fonts), 72, 72);
        PangoLayout* made = inPango.pango_layout_new(inPango.pango_font_map_create_context(fonts));
        inPango.pango_layout_set_single_paragraph_mode(made, true);
        return made;
    }();
    return layout;
}

static void SetFont(const PangoCalls& inPango, PangoLayout* ioLayout, const TextFontStyle& inStyle)
{
    const SInt16 size = inStyle.size < 1 ? 12 : std::min<SInt16>(inStyle.size, 1024);
    PangoFontDescription* font = inPango.pango_font_description_new();
    inPango.pango_font_description_set_family(font, InstalledFamily(inStyle.font).c_str());
    inPango.pango_font_description_set_absolute_size(font, SizeOfStandIn(inStyle.font, size) * PANGO_SCALE);
    if (inStyle.face & bold)
        inPango.pango_font_description_set_weight(font, PANGO_WEIGHT_BOLD);
    if (inStyle.face & italic)
        inPango.pango_font_description_set_style(font, PANGO_STYLE_ITALIC);
    inPango.pango_layout_set_font_description(ioLayout, font);
    inPango.pango_font_description_free(font);
}

// Outlines, shadows and the narrow and wide styles change the distance of letters.
static void SetSpacing(const PangoCalls& inPango, PangoLayout* ioLayout, const TextFontStyle& inStyle)
{
    const int extra = ExtraAdvance(inStyle.face, normal);
    PangoAttrList* attributes = inPango.pango_attr_list_new();
    if (extra)
        inPango.pango_attr_list_insert(attributes,
                                       inPango.pango_attr_letter_spacing_new(extra * PANGO_SCALE));
    inPango.pango_layout_set_attributes(ioLayout, attributes);
    inPango.pango_attr_list_unref(attributes);
}

static int Pixels(int inPangoUnits)
{
    return (inPangoUnits + PANGO_SCALE / 2) >> 10;
}

// Clusters come in the order in which they stand; sorted by where they begin in the text, each ends where the
// next one begins.
static void ListClusters(const PangoCalls& inPango, PangoLayout* inLayout, size_t inLength, ShapedText* out)
{
    PangoLayoutIter* at = inPango.pango_layout_get_iter(inLayout);
    do {
        PangoRectangle logical;
        inPango.pango_layout_iter_get_cluster_extents(at, nullptr, &logical);
        const int index = inPango.pango_layout_iter_get_index(at);
        if (index >= 0 && (size_t)index < inLength)
            out->clusters.push_back({ (size_t)index, Pixels(logical.width) });
    } while (inPango.pango_layout_iter_next_cluster(at));
    inPango.pango_layout_iter_free(at);
    std::stable_sort(out->clusters.begin(), out->clusters.end(),
                     [](const Cluster& a, const Cluster& b) { return a.end < b.end; });
    for (size_t i = 0; i < out->clusters.size(); ++i)
        out->clusters[i].end = i + 1 < out->clusters.size() ? out->clusters[i + 1].end : inLength;
}

static constexpr int kWidest = 16384, kTallest = 4096, kMostPixels = 8 << 20;

static CoverageMap Render(const PangoCalls& inPango, PangoLayoutLine* inLine, const PangoRectangle& inInk)
{
    CoverageMap map;
    map.left = inInk.x;
    map.top = inInk.y;
    map.width = inInk.width;
    map.height = inInk.height;
    map.bits.assign((size_t)map.width * (size_t)map.height, 0);
    FT_Bitmap bitmap = {};
    bitmap.rows = (unsigned)map.height;
    bitmap.width = (unsigned)map.width;
    bitmap.pitch = map.width;
    bitmap.buffer = map.bits.data();
    bitmap.num_grays = 256;
    bitmap.pixel_mode = FT_PIXEL_MODE_GRAY;
    if (map.width > 0 && map.height > 0)
        inPango.pango_ft2_render_layout_line(&bitmap, inLine, -inInk.x, -inInk.y);
    return map;
}

static void SetInk(CoverageMap&& ioMap, Style inFace, ShapedText* out)
{
    if (inFace & (outline | shadow))
        Hollow(ioMap, inFace & shadow ? (inFace & outline ? 2 : 1) : 0);
    out->coverage = std::move(ioMap.bits);
    out->ink.left = (SInt16)ioMap.left;
    out->ink.top = (SInt16)ioMap.top;
    out->ink.width = (SInt16)ioMap.width;
    out->ink.height = (SInt16)ioMap.height;
    out->ink.coverage = out->coverage.data();
}

static bool ShapeAnew(const TextFontStyle& inStyle, std::string_view inText, ShapedText* out)
{
    const PangoCalls* pango = FindPango();
    if (!pango || !foundation::IsValidUtf8(inText))
        return false;
    PangoLayout* layout = SharedLayout(*pango);
    SetFont(*pango, layout, inStyle);
    SetSpacing(*pango, layout, inStyle);
    pango->pango_layout_set_text(layout, inText.data(), (int)inText.size());
    PangoLayoutLine* line = pango->pango_layout_get_line_readonly(layout, 0);
    PangoRectangle ink, logical;
    pango->pango_layout_line_get_pixel_extents(line, &ink, &logical);
    if (ink.width < 0 || ink.height < 0 || ink.width > kWidest || ink.height > kTallest ||
        ink.width * ink.height > kMostPixels || std::abs(ink.x) > kWidest || std::abs(ink.y) > kWidest ||
        logical.width > kWidest)
        return false;
    // Spacing is between letters there, and behind every letter here.
    out->width = std::max(0, logical.width + (inText.empty() ? 0 : ExtraAdvance(inStyle.face, normal)));
    ListClusters(*pango, layout, inText.size(), out);
    SetInk(Render(*pango, line, ink), inStyle.face, out);
    return true;
}

// A text that was shaped a while ago; an empty result for one that cannot be.
struct KeptText {
    TextFontStyle style;
    std::string text;
    unsigned stamp = 0;   // StrikeStamp of then: families may have changed since
    unsigned lastUse = 0; // 0: free
    bool isShaped = false;
    ShapedText shaped;

    bool IsOf(const TextFontStyle& inStyle, std::string_view inText, unsigned inStamp) const
    {
        return lastUse && stamp == inStamp && style.font == inStyle.font && style.size == inStyle.size &&
               style.face == inStyle.face && text == inText;
    }
};

static constexpr size_t kKeptTexts = 128, kMostKeptCoverage = 4 << 20;

static KeptText& PlaceForNew(std::vector<KeptText>& ioKept)
{
    size_t coverage = 0;
    for (const KeptText& kept : ioKept)
        coverage += kept.shaped.coverage.size();
    if (coverage > kMostKeptCoverage)
        std::fill(ioKept.begin(), ioKept.end(), KeptText());
    return *std::min_element(ioKept.begin(), ioKept.end(),
                             [](const KeptText& a, const KeptText& b) { return a.lastUse < b.lastUse; });
}

const ShapedText* Shape(const TextFontStyle& inStyle, std::string_view inText)
{
    static std::vector<KeptText> kept(kKeptTexts);
    static unsigned now = 0;
    const unsigned stamp = StrikeStamp();
    const TextFontStyle style = { inStyle.font, inStyle.size, (Style)(inStyle.face & ~underline) };
    auto found = std::find_if(kept.begin(), kept.end(),
                              [&](const KeptText& one) { return one.IsOf(style, inText, stamp); });
    if (found == kept.end()) {
        KeptText& place = PlaceForNew(kept);
        place = { style, std::string(inText), stamp, 0, false, {} };
        place.isShaped = ShapeAnew(style, inText, &place.shaped);
        found = kept.begin() + (&place - kept.data());
    }
    found->lastUse = ++now;
    return found->isShaped ? &found->shaped : nullptr;
}

} // namespace lampblack::quickdraw
