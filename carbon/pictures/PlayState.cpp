// The opcodes that set the state: clip, origin, pen, patterns, colours.
#include "Opcodes.h"
#include "PixelPatterns.h"
#include "Player.h"

#include <quickdraw/Recorder.h>
#include <quickdraw/RegionBytes.h>

#include <cstring>

namespace lampblack::pictures {

using namespace quickdraw;

void PlayEnd(Player& ioPlayer, int, BigEndianReader&)
{
    ioPlayer.End();
}

// The extended header says in which coordinates the picture was made; its own frame is that at 72 pixels an
// inch. The plain header says nothing that is needed.
void PlayHeader(Player& ioPlayer, int, BigEndianReader& ioData)
{
    static constexpr int kExtended = -2;
    const int version = ioData.S16();
    ioData.Skip(2 + 4 + 4); // resolutions
    const Rect frame = ioData.ReadRect();
    if (version == kExtended && !IsEmpty(frame))
        ioPlayer.SetFrame(frame);
}

// A region that makes no sense clips nothing.
void PlayClip(Player& ioPlayer, int, BigEndianReader& ioData)
{
    Region region;
    if (ReadRegionBytes(ioData.ReadBytes(ioData.Remaining()), &region, nullptr) &&
        ioPlayer.CanAfford((int64_t)region.Boxes().size() * 16))
        ioPlayer.ClipTo(region);
}

void PlayOrigin(Player& ioPlayer, int, BigEndianReader& ioData)
{
    const int dh = ioData.S16(), dv = ioData.S16();
    ioPlayer.MoveOrigin(dh, dv);
}

void PlayPattern(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    Pattern pattern;
    std::memcpy(&pattern, ioData.ReadBytes(sizeof pattern).data(), sizeof pattern);
    switch (inOpcode) {
    case 0x02: return BackPat(&pattern);
    case 0x09: return PenPat(&pattern);
    default: ioPlayer.fFillPattern = pattern; ioPlayer.OwnPixels(&ioPlayer.fFillPixels, nullptr);
    }
}

// A pattern that is not understood ends the picture: nobody knows how long it is.
void PlayPixelPattern(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    const PixPatHandle pattern = ReadPixelPattern(ioData);
    if (!pattern)
        return ioPlayer.Fail(pictureDataErr);
    if (const PixMapHandle map = (**pattern).patMap)
        ioPlayer.CanAfford((int64_t)((**map).bounds.right - (**map).bounds.left) *
                           ((**map).bounds.bottom - (**map).bounds.top));
    switch (inOpcode) {
    case 0x12: BackPixPat(pattern); return ioPlayer.OwnPixels(&ioPlayer.fBackPixels, pattern);
    case 0x13: PenPixPat(pattern); return ioPlayer.OwnPixels(&ioPlayer.fPenPixels, pattern);
    default: ioPlayer.OwnPixels(&ioPlayer.fFillPixels, pattern);
    }
}

// Nothing is drawn by a comment; a picture that is open takes it over.
void PlayComment(Player& ioPlayer, int inOpcode, BigEndianReader& ioData)
{
    Recorder* recorder = RecorderOf(&ioPlayer.Port());
    if (!recorder)
        return;
    const short kind = ioData.S16();
    ioData.Skip(inOpcode & 1 ? 2 : 0);
    recorder->Comment(ioPlayer.Port(), kind, ioData.ReadBytes(ioData.Remaining()));
}

void PlayPenSize(Player& ioPlayer, int, BigEndianReader& ioData)
{
    const Point size = ioPlayer.Map().Size(ioData.ReadPoint());
    PenSize(size.h, size.v);
}

void PlayPenMode(Player&, int, BigEndianReader& ioData)
{
    PenMode(ioData.S16());
}

void PlayOvalSize(Player& ioPlayer, int, BigEndianReader& ioData)
{
    ioPlayer.fOval = ioData.ReadPoint();
}

void PlayClassicColor(Player&, int inOpcode, BigEndianReader& ioData)
{
    const SInt32 color = ioData.S32();
    if (inOpcode == 0x0E)
        ForeColor(color);
    else
        BackColor(color);
}

void PlayColor(Player&, int inOpcode, BigEndianReader& ioData)
{
    const RGBColor color = { ioData.U16(), ioData.U16(), ioData.U16() };
    switch (inOpcode) {
    case 0x1A: return RGBForeColor(&color);
    case 0x1B: return RGBBackColor(&color);
    case 0x1D: return HiliteColor(&color);
    default: OpColor(&color);
    }
}

void PlayHiliteMode(Player&, int, BigEndianReader&)
{
    LMSetHiliteMode((UInt8)(LMGetHiliteMode() & ~(1 << hiliteBit)));
}

void PlayDefaultHilite(Player&, int, BigEndianReader&)
{
    RGBColor color = {};
    LMGetHiliteRGB(&color);
    HiliteColor(&color);
}

} // namespace lampblack::pictures
