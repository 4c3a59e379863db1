// What is behind a CGrafPtr. Begin with CurrentPort.
#ifndef LAMPBLACK_QUICKDRAW_PORTRECORD_H
#define LAMPBLACK_QUICKDRAW_PORTRECORD_H

#include "Polygon.h"
#include "Port.h"
#include "Region.h"

#include <cstdlib>
#include <memory>

namespace lampblack::quickdraw {

struct FreeStorage {
    void operator()(uint32_t* inPixels) const { std::free(inPixels); }
};
using PixelStorage = std::unique_ptr<uint32_t[], FreeStorage>;

inline constexpr uint32_t kWhitePixel = 0x00FFFFFF;
inline constexpr uint32_t kBlackPixel = 0;
inline constexpr uint32_t kColorBits = 0x00FFFFFF;

// Rows are packed without slack, so that row bytes divided by the width is the size of a pixel.
inline constexpr int kMaxRowPixels = 0x3FFE / 4;

inline uint32_t PixelOf(const RGBColor& c)
{
    return (uint32_t)(c.red >> 8) << 16 | (uint32_t)(c.green >> 8) << 8 | c.blue >> 8;
}
inline RGBColor ColorOf(uint32_t inPixel)
{
    const auto wide = [](uint32_t byte) { return (UInt16)(byte & 0xFF) * 0x101; };
    return { (UInt16)wide(inPixel >> 16), (UInt16)wide(inPixel >> 8), (UInt16)wide(inPixel) };
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
};

struct Pen {
    Point location = { 0, 0 };
    Point size = { 1, 1 };
    SInt16 mode = patCopy;
    SInt16 visibility = 0;
    Pattern pattern = { { 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF } };
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
    uint32_t* fPixels = nullptr;
    int fRowPixels = 0;
    Rect fMapBounds = { 0, 0, 0, 0 };
    Point fGlobal = { 0, 0 }; // where the top-left pixel is on the screen

    Rect fBounds = { 0, 0, 0, 0 };
    Region fClip, fVisible;

    Pen fPen;
    Pattern fBackPattern = { { 0, 0, 0, 0, 0, 0, 0, 0 } };
    RGBColor fFore = { 0, 0, 0 }, fBack = { 0xFFFF, 0xFFFF, 0xFFFF };
    uint32_t fForePixel = kBlackPixel, fBackPixel = kWhitePixel;
    TextSettings fText;

    std::unique_ptr<Outline> fOpenRegion, fOpenPolygon;
    Recorder* fRecorder = nullptr; // of the open picture, which owns it

    void* fOwner = nullptr;
    DamageProc fDamage = nullptr;
    Region fDirty;
    Box fLastDirty = { 0, 0, 0, 0 };

    GDHandle fDevice = nullptr; // a world's own
    GWorldFlags fPixelState = 0;

    void SetPixels(PixelStorage inPixels, const Rect& inBounds);
    void SetMapBounds(const Rect& inBounds); // the same pixels under other coordinates
    uint32_t* PixelAt(int h, int v) const
    {
        return fPixels + (ptrdiff_t)(v - fMapBounds.top) * fRowPixels + (h - fMapBounds.left);
    }

    // Where drawing may change pixels: bounds, clip and visible region together.
    const Region& Drawable();
    void ClippingChanged() { fDrawableKnown = false; }

    // Tells the owner. The box is clipped already.
    void Damage(const Box&);

private:
    Region fDrawable;
    bool fDrawableKnown = false;
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

// Null when there is no memory for them. Black.
PixelStorage NewPixels(int width, int height);

inline bool CanHoldPixels(int width, int height)
{
    return width >= 0 && height >= 0 && width <= kMaxRowPixels && height <= 32767;
}

// For calls that can fail.
void SetQDError(QDErr);

} // namespace lampblack::quickdraw

#endif
