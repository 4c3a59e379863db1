// What is behind a CGrafPtr. Begin with CurrentPort.
#ifndef LAMPBLACK_QUICKDRAW_PORTRECORD_H
#define LAMPBLACK_QUICKDRAW_PORTRECORD_H

#include "Polygon.h"
#include "Port.h"
#include "Region.h"
#include "Surface.h"

#include <Carbon/QDColors.h>

#include <cstdlib>
#include <memory>

namespace lampblack::quickdraw {

struct FreeStorage {
    void operator()(uint8_t* inPixels) const { std::free(inPixels); }
};
using PixelStorage = std::unique_ptr<uint8_t[], FreeStorage>;

inline constexpr uint32_t kWhitePixel = 0x00FFFFFF;
inline constexpr uint32_t kBlackPixel = 0;
inline constexpr uint32_t kColorBits = 0x00FFFFFF;

// What a PixMap can say of a row.
inline constexpr int kMaxRowBytes = 0x3FFE;

// Direct rows are packed without slack, so that row bytes divided by the width is the size of a pixel; rows
// of indexes are whole words.
inline int RowBytesFor(int inWidth, int inDepth)
{
    return inDepth >= 16 ? inWidth * (inDepth / 8) : (inWidth * inDepth + 31) / 32 * 4;
}

// The bits of a pixel that mean something.
inline uint32_t PixelBits(int inDepth)
{
    return inDepth == 32 ? kColorBits : inDepth == 16 ? 0x7FFF : (1u << inDepth) - 1;
}

enum class PortKind : uint8_t { Bare, Pixels, World };

class Strike;
class Recorder;

struct TextSettings {
    SInt16 font = 0;
    SInt16 size = 0; // 0: the system font's size
    Style face = 0;
    SInt16 mode = srcOr;
    Fixed spaceExtra = 0;
    Strike* strike =
        nullptr; // of these settings, once it was needed; a change of font, size or face clears it
    unsigned strikeStamp = 0; // StrikeStamp when it was found
    Fixed charExtra = 0;      // for every character that is no space
    int stretch = 256;        // of widths, in 256ths
};

struct Pen {
    Point location = { 0, 0 };
    Point size = { 1, 1 };
    SInt16 mode = patCopy;
    SInt16 visibility = 0;
    Pattern pattern = { { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF } };
    PixPatHandle pixels = nullptr; // instead of the pattern while it is alive
};

struct PortRecord {
    PortRecord() = default;
    PortRecord(const PortRecord&) = delete;
    PortRecord& operator=(const PortRecord&) = delete;

    // What an application may look at; drawing trusts only the fields below, which an application cannot
    // reach.
    PixMap fMap = {};
    PixMapPtr fMapPointer = &fMap;

    PortKind fKind = PortKind::Bare;
    PixelStorage fStorage;
    Surface fSurface;         // of depth 32 while there are no pixels
    Point fGlobal = { 0, 0 }; // where the top-left pixel is on the screen

    Rect fBounds = { 0, 0, 0, 0 };
    Region fClip, fVisible;

    Pen fPen;
    Pattern fBackPattern = { { 0, 0, 0, 0, 0, 0, 0, 0 } };
    PixPatHandle fBackPixels = nullptr; // instead of it
    PixPatHandle fFillPixels = nullptr; // instead of a Fill's pattern, while FillCRect and its sisters draw
    Point fPatternOrigin = { 0, 0 };
    RGBColor fFore = { 0, 0, 0 }, fBack = { 0xFFFF, 0xFFFF, 0xFFFF };
    uint32_t fForePixel = kBlackPixel, fBackPixel = kWhitePixel; // what the surface makes of them
    RGBColor fOpColor = { 0, 0, 0 }, fHiliteColor = { 0, 0, 0 };
    TextSettings fText;

    std::unique_ptr<Outline> fOpenRegion, fOpenPolygon;
    Recorder* fRecorder = nullptr; // of the open picture, which owns it

    void* fOwner = nullptr;
    DamageProc fDamage = nullptr;
    Region fDirty;
    Box fLastDirty = { 0, 0, 0, 0 };

    GDHandle fDevice = nullptr;     // a world's own
    GDHandle fLentDevice = nullptr; // or the one that it was given
    GWorldFlags fPixelState = 0;

    // Takes the pixels of RowBytesFor(width, depth) a row.
    void SetPixels(PixelStorage inPixels, const Rect& inBounds, int inDepth = 32);
    // Pixels of somebody else's, which stay where they are.
    void LendPixels(uint8_t* inPixels, int inRowBytes, const Rect& inBounds, int inDepth);
    // What indexes mean; the port owns the table from now on. Null for direct pixels.
    void SetTable(CTabHandle);
    // The pixels, with the colours of their table as it is now. Whoever reads a port that is not being drawn
    // in asks here; Drawable() has done it for whoever draws.
    const Surface& Pixels()
    {
        if (fSurface.depth <= 8)
            FollowTable();
        return fSurface;
    }
    void SetFore(const RGBColor&);
    void SetBack(const RGBColor&);
    void SetMapBounds(const Rect& inBounds); // the same pixels under other coordinates
    int Depth() const { return fSurface.depth; }
    int RowPixels() const { return fSurface.rowBytes / 4; } // of depth 32
    uint32_t* PixelAt(int h, int v) const                   // of depth 32
    {
        return reinterpret_cast<uint32_t*>(fSurface.RowAt(v)) + (h - fSurface.bounds.left);
    }

    // Where drawing may change pixels: bounds, clip and visible region together.
    const Region& Drawable();
    void ClippingChanged() { fDrawableKnown = false; }

    // Tells the owner. The box is clipped already.
    void Damage(const Box&);

    ~PortRecord();

private:
    void FollowTable();
    void FindPixels();

    Region fDrawable;
    bool fDrawableKnown = false;
    CTabHandle fTable = nullptr;     // the port's own
    CTabHandle fSeenTable = nullptr; // whose colours fSpace has
    SInt32 fSeenSeed = 0;
    std::shared_ptr<const ColorSpace> fSpace;
};

// The live port behind a reference, or null.
PortRecord* FindPort(CGrafPtr);
PortRecord* FindPortOfMap(const void* inBitMapOrPixMap); // the port whose pixel map is at this address
PortRecord* FindPort(PixMapHandle);
CGrafPtr ReferenceOf(PortRecord*);

PortRecord* CurrentPort(); // null when none is
void MakeCurrent(PortRecord*);

PortRecord* NewPortRecord(PortKind);
void DeletePortRecord(PortRecord*);

// The fields of a pixel map that follow from its depth; no row bytes yet.
void DescribePixels(PixMap&, int depth);

// Null when there is no memory for them. All bits are clear.
PixelStorage NewPixels(int width, int height, int depth = 32);

inline bool CanHoldPixels(int width, int height, int depth = 32)
{
    return width >= 0 && height >= 0 && height <= 32767 && width <= 65535 &&
           RowBytesFor(width, depth) <= kMaxRowBytes;
}

// What the eight colours of old are in colour ports; a number that is none of them counts as black.
const RGBColor& ClassicColor(SInt32 number);

// Whether the next Invert highlights instead; it does so once.
bool TakeHiliteMode();

// For calls that can fail.
void SetQDError(QDErr);

} // namespace lampblack::quickdraw

#endif
