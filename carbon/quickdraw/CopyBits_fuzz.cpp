// Any bytes as a copy: records of three pixel maps with little memory, whatever they claim, rectangles, a
// mode, a region. Memory blocks have their exact sizes, so that a sanitizer sees a step past an end.
#include "Port.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>

using namespace lampblack;

namespace {

class Bytes {
public:
    Bytes(const uint8_t* inData, size_t inSize) : fNext(inData), fEnd(inData + inSize) {}
    int Byte() { return fNext < fEnd ? *fNext++ : 0; }
    short Short() // small ones more often than others
    {
        const int high = Byte(), low = Byte();
        return high < 0x40 ? (short)((int8_t)low) : (short)(high << 8 | low);
    }
    Rect Rectangle()
    {
        Rect r;
        r.top = Short();
        r.left = Short();
        r.bottom = Short();
        r.right = Short();
        return r;
    }

private:
    const uint8_t *fNext, *fEnd;
};

// A map whose rows are all there, up to a size; what claims more has no memory at all.
struct Map {
    PixMap map = {};
    std::unique_ptr<uint8_t[]> memory;

    explicit Map(Bytes& ioBytes)
    {
        static constexpr short kDepths[] = { 1, 2, 4, 8, 16, 32, 3, 0 };
        map.pixelSize = kDepths[ioBytes.Byte() & 7];
        map.rowBytes = (short)(ioBytes.Short() & 0x41FF);
        map.bounds = ioBytes.Rectangle();
        if (ioBytes.Byte() & 7)
            map.rowBytes = (short)(map.rowBytes | 0x8000);
        const int64_t rows = std::max(0, map.bounds.bottom - map.bounds.top),
                      size = rows * (map.rowBytes & 0x3FFF);
        if (size > 1 << 18)
            return;
        memory.reset(new uint8_t[(size_t)size]);
        const int seed = ioBytes.Byte();
        for (int64_t i = 0; i < size; ++i)
            memory[(size_t)i] = (uint8_t)(i * seed);
        map.baseAddr = reinterpret_cast<Ptr>(memory.get());
    }
    const BitMap* Bits() const { return reinterpret_cast<const BitMap*>(&map); }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static CGrafPtr port = quickdraw::NewPixelPort(64, 48);
    SetPort(port);
    Bytes bytes(data, size);
    const int what = bytes.Byte();
    const short mode = bytes.Short();
    const RGBColor fore = { (UInt16)bytes.Short(), 0, 0xFFFF };
    RGBForeColor(&fore);
    const Map from(bytes), mask(bytes), to(bytes);
    const Rect fromRect = bytes.Rectangle(), maskRect = bytes.Rectangle(), toRect = bytes.Rectangle(),
               part = bytes.Rectangle();
    RgnHandle region = NewRgn(), piece = NewRgn();
    RectRgn(region, &part);
    RectRgn(piece, &maskRect);
    XorRgn(region, piece, region);
    const BitMap* into = what & 8 ? GetPortBitMapForCopyBits(port) : what & 16 ? from.Bits() : to.Bits();
    switch (what & 3) {
    case 0: CopyDeepMask(from.Bits(), mask.Bits(), into, &fromRect, &maskRect, &toRect, mode, region); break;
    case 1: CopyMask(from.Bits(), mask.Bits(), into, &fromRect, &maskRect, &toRect); break;
    case 2: SeedCFill(from.Bits(), into, &fromRect, &toRect, part.left, part.top, nullptr, 0); break;
    default: CopyBits(from.Bits(), into, &fromRect, &toRect, mode, what & 4 ? region : nullptr);
    }
    ScrollRect(&part, mode, bytes.Short(), region);
    DisposeRgn(region);
    DisposeRgn(piece);
    return 0;
}
