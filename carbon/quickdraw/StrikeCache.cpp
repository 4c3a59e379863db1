// Which font a strike is made of, and the strikes that were made.
#include "FontFaces.h"
#include "ResourceFonts.h"

#include <algorithm>
#include <unordered_map>

namespace lampblack::quickdraw {

static constexpr SInt16 kSystemSize = 12, kLargestSize = 1024;
static constexpr int kLeastStretch = 16, kMostStretch = 4096;
static constexpr size_t kMostStrikes = 64; // all are forgotten then

static std::unordered_map<uint64_t, std::unique_ptr<Strike>>& Strikes()
{
    static auto& strikes = *new std::unordered_map<uint64_t, std::unique_ptr<Strike>>;
    return strikes;
}

constinit unsigned gStrikeStamp = 1, gSeenResources = 0;
static uint64_t gLastKey = ~(uint64_t)0;
static Strike* gLast = nullptr;

// Whoever holds a strike while he asks for the next one may go on with it: strikes live on until this has
// happened twice.
void ForgetStrikes()
{
    static auto& retired = *new std::unordered_map<uint64_t, std::unique_ptr<Strike>>;
    retired = std::move(Strikes());
    Strikes().clear();
    gLastKey = ~(uint64_t)0;
    gLast = nullptr;
    ++gStrikeStamp;
}

void LookAtResourceFonts()
{
    if (ResourceFontsChanged())
        ForgetStrikes();
    gSeenResources =
        resources::gChainChanges + resources::gChainEdits; // asking may have opened the first file
}

static StrikeSource SourceOf(SInt16 inFont, SInt16 inSize, Style inFace)
{
    StrikeSource source;
    if (FindResourceFont(inFont, inSize, inFace, &source))
        return source;
    const FaceFile file = FileOfFace(inFont, inFace & bold, inFace & italic);
    source = {};
    source.outlines = OpenFace(file);
    source.size = SizeOfStandIn(inFont, inSize);
    source.stretch = StretchOfStandIn(inFont);
    source.face = inFace;
    source.made = MadeStyle(inFace, file);
    return source;
}

static std::unique_ptr<Strike> NewStrike(SInt16 inFont, SInt16 inSize, Style inFace, int inStretch)
{
    StrikeSource source = SourceOf(inFont, inSize, inFace);
    source.stretch = std::clamp(source.stretch * inStretch / kUnstretched, kLeastStretch, kMostStretch);
    return std::make_unique<Strike>(std::move(source));
}

Strike& StrikeFor(SInt16 inFont, SInt16 inSize, Style inFace, int inStretch)
{
    StrikeStamp(); // forgets what is not good any longer
    const SInt16 size = inSize < 1 ? kSystemSize : std::min(inSize, kLargestSize);
    const Style face = (Style)(inFace & ~underline); // drawn with the text, not with its glyphs
    const int stretch = std::clamp(inStretch, kLeastStretch, kMostStretch);
    const uint64_t key =
        (uint64_t)(UInt16)inFont << 48 | (uint64_t)(UInt16)size << 32 | (uint64_t)stretch << 8 | face;
    if (key == gLastKey)
        return *gLast;
    if (Strikes().size() >= kMostStrikes && Strikes().find(key) == Strikes().end())
        ForgetStrikes();
    std::unique_ptr<Strike>& strike = Strikes()[key];
    if (!strike)
        strike = NewStrike(inFont, size, face, stretch);
    gLastKey = key;
    gLast = strike.get();
    return *gLast;
}

} // namespace lampblack::quickdraw
