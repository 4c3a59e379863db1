// The pixels within a picture: what the bit map opcodes say before the rows, and the rows one by one, so that
// a picture that claims a huge image costs no more than the rows that are there and shown.
#ifndef LAMPBLACK_PICTURES_PICTUREBITS_H
#define LAMPBLACK_PICTURES_PICTUREBITS_H

#include <foundation/BigEndian.h>
#include <quickdraw/ColorSpace.h>
#include <quickdraw/Region.h>

#include <memory>
#include <optional>
#include <vector>

namespace lampblack::pictures {

using foundation::BigEndianReader;
using foundation::Bytes;

enum class RowCoding : uint8_t {
    Plain,         // rowBytes each
    Triples,       // red, green, blue, without the byte that is not used
    PackedBytes,   // a count and packets
    PackedWords,   // the same of 16-bit units
    PackedChannels // packets that give one channel after the other
};

// A bit map or a pixel map as pictures and pixel patterns describe it.
struct MapHeader {
    int rowBytes = 0;
    Rect bounds = { 0, 0, 0, 0 };
    int depth = 1;
    int packType = 0;
    int channels = 3; // of direct pixels
    bool isPixMap = false;

    int Width() const { return bounds.right - bounds.left; }
    int Height() const { return bounds.bottom - bounds.top; }
};

struct PictureBits {
    MapHeader map;
    RowCoding coding = RowCoding::Plain;
    std::unique_ptr<quickdraw::ColorSpace> colors; // of indexed pixel maps
    Rect from = { 0, 0, 0, 0 }, to = { 0, 0, 0, 0 };
    short mode = srcCopy;
    std::optional<quickdraw::Region> mask; // in the coordinates of `to`
    bool isBroken = false;                 // the mask made no sense: nothing is to be drawn
};

enum {
    kBitsRect = 0x90,
    kBitsRgn = 0x91,
    kPackBitsRect = 0x98,
    kPackBitsRgn = 0x99,
    kDirectBitsRect = 0x9A,
    kDirectBitsRgn = 0x9B
};

// Reads what stands before the rows; false for what cannot be drawn. The reader is left at the first row.
bool ReadPictureBits(int opcode, BigEndianReader& ioReader, PictureBits* out);

// Reads a pixel map without its pixels, as in a pixel pattern: rowBytes, bounds and what follows.
bool ReadMapHeader(BigEndianReader& ioReader, bool isDirect, MapHeader* out);
RowCoding CodingOf(const MapHeader&, bool isPacked);

// A colour table; null when its bytes end early. Values count unless the flags say that the order does.
std::unique_ptr<quickdraw::ColorSpace> ReadColorTable(BigEndianReader& ioReader);

// The bytes of a native row (Surface.h) of a map.
int NativeRowBytes(const MapHeader&);

// Rows from the first one on.
class RowReader {
public:
    RowReader(const MapHeader&, RowCoding, const BigEndianReader& at);

    bool Skip();                   // false at the end of the data
    bool Read(uint8_t* outNative); // NativeRowBytes; a row that is packed too short ends in zeros
    size_t Offset() const { return fReader.Offset(); }

private:
    bool Next(Bytes* outRow);
    void Decode(Bytes row, uint8_t* outNative);
    void DecodePlain(Bytes row, uint8_t* outNative) const;
    void DecodeChannels(const uint8_t* channels, uint8_t* outNative) const;

    const MapHeader& fMap;
    RowCoding fCoding;
    BigEndianReader fReader;
    const uint8_t* fReadable; // the end of the picture
    std::vector<uint8_t> fRow;
};

} // namespace lampblack::pictures

#endif
