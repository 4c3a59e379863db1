// What the tests of pictures share: worlds to draw in and pictures made by hand.
#ifndef LAMPBLACK_PICTURES_TESTPICTURES_H
#define LAMPBLACK_PICTURES_TESTPICTURES_H

#include "Playback.h"

#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>
#include <Carbon/Quickdraw.h>
#include <foundation/BigEndian.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace lampblack::pictures {

inline Rect MakeRect(int left, int top, int right, int bottom)
{
    return { (short)top, (short)left, (short)bottom, (short)right };
}

// A world that is current and white while it is the newest one.
class TestWorld {
public:
    TestWorld(int width, int height, int depth = 32) : bounds{ 0, 0, (short)height, (short)width }
    {
        NewGWorld(&world, (SInt16)depth, &bounds, nullptr, nullptr, 0);
        Use();
        EraseRect(&bounds);
    }
    ~TestWorld() { DisposeGWorld(world); }
    TestWorld(const TestWorld&) = delete;
    TestWorld& operator=(const TestWorld&) = delete;

    void Use() const { SetGWorld(world, nullptr); }

    uint32_t At(int h, int v) const
    {
        Use();
        RGBColor color = {};
        GetCPixel((short)h, (short)v, &color);
        return (uint32_t)(color.red >> 8) << 16 | (uint32_t)(color.green >> 8) << 8 | color.blue >> 8;
    }
    bool IsBlack(int h, int v) const { return At(h, v) == 0; }
    bool IsWhite(int h, int v) const { return At(h, v) == 0xFFFFFF; }

    std::vector<uint32_t> Colors() const
    {
        std::vector<uint32_t> colors;
        for (int v = 0; v < bounds.bottom; ++v)
            for (int h = 0; h < bounds.right; ++h)
                colors.push_back(At(h, v));
        return colors;
    }
    int CountBlack() const
    {
        int count = 0;
        for (const uint32_t color : Colors())
            count += color == 0;
        return count;
    }

    const BitMap* Bits() const { return GetPortBitMapForCopyBits(world); }

    GWorldPtr world = nullptr;
    Rect bounds;
};

inline int Differences(const TestWorld& a, const TestWorld& b)
{
    const std::vector<uint32_t> left = a.Colors(), right = b.Colors();
    if (left.size() != right.size())
        return -1;
    int count = 0;
    for (size_t i = 0; i < left.size(); ++i)
        count += left[i] != right[i];
    return count;
}

// A picture made by hand, opcode after opcode.
class MadePicture {
public:
    explicit MadePicture(const Rect& frame, int version = 2) : fVersion(version)
    {
        Words({ 0, frame.top, frame.left, frame.bottom, frame.right });
        if (version == 2)
            Words({ 0x0011, 0x02FF, 0x0C00, -1, -1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 });
        else
            Words({ 0x1101 });
    }

    MadePicture& Op(int opcode)
    {
        if (fVersion == 1)
            writer.U8((uint8_t)opcode);
        else {
            if (writer.Size() & 1)
                writer.U8(0);
            writer.U16((uint16_t)opcode);
        }
        return *this;
    }
    MadePicture& Op(int opcode, std::initializer_list<int> words) { return Op(opcode).Words(words); }
    MadePicture& Words(std::initializer_list<int> words)
    {
        for (const int word : words)
            writer.U16((uint16_t)word);
        return *this;
    }
    MadePicture& Bytes(std::initializer_list<int> bytes)
    {
        for (const int byte : bytes)
            writer.U8((uint8_t)byte);
        return *this;
    }
    MadePicture& Zeros(size_t count)
    {
        writer.Zeros(count);
        return *this;
    }
    MadePicture& Text(const std::string& text)
    {
        writer.Pascal(text);
        return *this;
    }
    MadePicture& RectOp(int opcode, const Rect& r)
    {
        return Op(opcode, { r.top, r.left, r.bottom, r.right });
    }
    // A bit map or pixel map up to its rows.
    MadePicture& Map(int rowBytes, const Rect& r)
    {
        return Words({ rowBytes, r.top, r.left, r.bottom, r.right });
    }
    MadePicture& PixMap(int depth, int packType, int channels)
    {
        return Words({ 0, packType, 0, 0, 0x48, 0, 0x48, 0, depth > 8 ? 16 : 0, depth, channels,
                       depth / channels, 0, 0, 0, 0, 0, 0 });
    }
    MadePicture& Table(int flags, std::initializer_list<std::initializer_list<int>> entries)
    {
        Words({ 0, 1, flags, (int)entries.size() - 1 });
        for (const auto& entry : entries)
            Words(entry);
        return *this;
    }
    MadePicture& Rects(const Rect& from, const Rect& to, int mode = srcCopy)
    {
        return Words(
            { from.top, from.left, from.bottom, from.right, to.top, to.left, to.bottom, to.right, mode });
    }

    // The picture so far, with its end.
    std::vector<uint8_t> End() const
    {
        MadePicture whole = *this;
        whole.Op(0xFF);
        return whole.writer.Data();
    }

    foundation::BigEndianWriter writer;

private:
    int fVersion;
};

inline QDErr PlayAt(const std::vector<uint8_t>& picture, const Rect& to)
{
    return PlayPicture(picture, to);
}
inline QDErr PlayHere(const std::vector<uint8_t>& picture)
{
    return PlayPicture(picture, FrameOf(picture));
}

// The bytes of a picture that was recorded.
inline std::vector<uint8_t> BytesOf(PicHandle inPicture)
{
    const Handle handle = reinterpret_cast<Handle>(inPicture);
    return { reinterpret_cast<uint8_t*>(*handle),
             reinterpret_cast<uint8_t*>(*handle) + GetHandleSize(handle) };
}

inline bool ContainsOpcode(const std::vector<uint8_t>& picture, int opcode)
{
    for (size_t i = 10; i + 1 < picture.size(); i += 2)
        if ((picture[i] << 8 | picture[i + 1]) == opcode)
            return true;
    return false;
}

} // namespace lampblack::pictures

#endif
