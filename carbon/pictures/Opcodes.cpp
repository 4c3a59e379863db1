#include "Opcodes.h"

#include <array>

namespace lampblack::pictures {

using foundation::BigEndianReader;
using foundation::Bytes;

using Table = std::array<Opcode, 256>;

static constexpr void Set(Table& ioTable, int inFirst, int inLast, Opcode inOpcode)
{
    for (int i = inFirst; i <= inLast; ++i)
        ioTable[(size_t)i] = inOpcode;
}

static constexpr void AddState(Table& t)
{
    Set(t, 0x01, 0x01, { Length::Sized, 0, PlayClip });
    Set(t, 0x02, 0x02, { Length::Fixed, 8, PlayPattern });
    Set(t, 0x03, 0x03, { Length::Fixed, 2, PlayTextSetting });
    Set(t, 0x04, 0x04, { Length::Fixed, 1, PlayTextSetting });
    Set(t, 0x05, 0x05, { Length::Fixed, 2, PlayTextSetting });
    Set(t, 0x06, 0x06, { Length::Fixed, 4, PlayTextSetting });
    Set(t, 0x07, 0x07, { Length::Fixed, 4, PlayPenSize });
    Set(t, 0x08, 0x08, { Length::Fixed, 2, PlayPenMode });
    Set(t, 0x09, 0x0A, { Length::Fixed, 8, PlayPattern });
    Set(t, 0x0B, 0x0B, { Length::Fixed, 4, PlayOvalSize });
    Set(t, 0x0C, 0x0C, { Length::Fixed, 4, PlayOrigin });
    Set(t, 0x0D, 0x0D, { Length::Fixed, 2, PlayTextSetting });
    Set(t, 0x0E, 0x0F, { Length::Fixed, 4, PlayClassicColor });
    Set(t, 0x10, 0x10, { Length::Fixed, 8, PlayTextRatio });
    Set(t, 0x11, 0x11, { Length::Fixed, 2, nullptr }); // the version, which was read already
    Set(t, 0x12, 0x14, { Length::Own, 0, PlayPixelPattern });
    Set(t, 0x15, 0x15, { Length::Fixed, 2, nullptr }); // the fraction of the pen's place
    Set(t, 0x16, 0x16, { Length::Fixed, 2, PlayTextSetting });
    Set(t, 0x17, 0x19, { Length::Fixed, 0, nullptr });
    Set(t, 0x1A, 0x1B, { Length::Fixed, 6, PlayColor });
    Set(t, 0x1C, 0x1C, { Length::Fixed, 0, PlayHiliteMode });
    Set(t, 0x1D, 0x1D, { Length::Fixed, 6, PlayColor });
    Set(t, 0x1E, 0x1E, { Length::Fixed, 0, PlayDefaultHilite });
    Set(t, 0x1F, 0x1F, { Length::Fixed, 6, PlayColor });
}

static constexpr void AddLinesAndTexts(Table& t)
{
    Set(t, 0x20, 0x20, { Length::Fixed, 8, PlayLine });
    Set(t, 0x21, 0x21, { Length::Fixed, 4, PlayLine });
    Set(t, 0x22, 0x22, { Length::Fixed, 6, PlayLine });
    Set(t, 0x23, 0x23, { Length::Fixed, 2, PlayLine });
    Set(t, 0x24, 0x27, { Length::Counted, 0, nullptr });
    Set(t, 0x28, 0x28, { Length::Text, 4, PlayText });
    Set(t, 0x29, 0x2A, { Length::Text, 1, PlayText });
    Set(t, 0x2B, 0x2B, { Length::Text, 2, PlayText });
    Set(t, 0x2C, 0x2C, { Length::Counted, 0, PlayFontName });
    Set(t, 0x2D, 0x2D, { Length::Counted, 0, PlayLineJustification });
    Set(t, 0x2E, 0x2E, { Length::Counted, 0, PlayGlyphState });
    Set(t, 0x2F, 0x2F, { Length::Counted, 0, nullptr });
}

// Eight opcodes with their data, of which the first five are verbs, and eight that repeat the last shape.
static constexpr void AddShape(Table& t, int inFirst, Length inLength, uint16_t inBytes, uint16_t inRepeated,
                               Play inPlay)
{
    Set(t, inFirst, inFirst + 4, { inLength, inBytes, inPlay });
    Set(t, inFirst + 5, inFirst + 7, { inLength, inBytes, nullptr });
    Set(t, inFirst + 8, inFirst + 12, { Length::Fixed, inRepeated, inPlay });
    Set(t, inFirst + 13, inFirst + 15, { Length::Fixed, inRepeated, nullptr });
}

static constexpr void AddPixels(Table& t)
{
    Set(t, 0x90, 0x91, { Length::Own, 0, PlayBits });
    Set(t, 0x92, 0x97, { Length::Counted, 0, nullptr });
    Set(t, 0x98, 0x9B, { Length::Own, 0, PlayBits });
    Set(t, 0x9C, 0x9F, { Length::Counted, 0, nullptr });
}

static constexpr Table MakeTable()
{
    Table t = {}; // the others, 0x00 among them, have no data
    AddState(t);
    AddLinesAndTexts(t);
    AddShape(t, 0x30, Length::Fixed, 8, 0, PlayRectangle);
    AddShape(t, 0x40, Length::Fixed, 8, 0, PlayRoundRectangle);
    AddShape(t, 0x50, Length::Fixed, 8, 0, PlayOval);
    AddShape(t, 0x60, Length::Fixed, 12, 4, PlayArc);
    AddShape(t, 0x70, Length::Sized, 0, 0, PlayPolygon);
    AddShape(t, 0x80, Length::Sized, 0, 0, PlayRegion);
    AddPixels(t);
    Set(t, 0xA0, 0xA0, { Length::Fixed, 2, PlayComment });
    Set(t, 0xA1, 0xA1, { Length::Comment, 0, PlayComment });
    Set(t, 0xA2, 0xAF, { Length::Counted, 0, nullptr });
    Set(t, 0xD0, 0xFE, { Length::CountedLong, 0, nullptr });
    Set(t, 0xFF, 0xFF, { Length::Fixed, 0, PlayEnd });
    return t;
}

static constexpr Table kTable = MakeTable();

static constexpr int kHeaderOpcode = 0x0C00, kFirstWithoutData = 0x8000, kFirstLong = 0x8100;
static constexpr int kCompressedImage = 0x8200, kUncompressedImage = 0x8201;

Opcode OpcodeOf(int inOpcode, int inVersion)
{
    if (inVersion == 1 && inOpcode == 0x11)
        return { Length::Fixed, 1, nullptr };
    if (inOpcode <= 0xFF)
        return kTable[(size_t)inOpcode];
    if (inOpcode < kFirstWithoutData)
        return { Length::Fixed, (uint16_t)(inOpcode / 0x100 * 2),
                 inOpcode == kHeaderOpcode ? PlayHeader : nullptr };
    if (inOpcode < kFirstLong)
        return {};
    const Play play = inOpcode == kCompressedImage     ? PlayCompressedImage
                      : inOpcode == kUncompressedImage ? PlayUncompressedImage
                                                       : nullptr;
    return { Length::CountedLong, 0, play };
}

// A size that counts itself cannot be less than two; such an opcode goes on behind the size.
static size_t BytesOf(const Opcode& inOpcode, BigEndianReader ahead)
{
    switch (inOpcode.length) {
    case Length::Fixed:
    case Length::Own: break;
    case Length::Counted: return 2 + (size_t)ahead.U16();
    case Length::CountedLong: return 4 + (size_t)ahead.U32();
    case Length::Sized: return std::max<size_t>(2, ahead.U16());
    case Length::Text: ahead.Skip(inOpcode.bytes); return inOpcode.bytes + 1 + (size_t)ahead.U8();
    case Length::Comment: ahead.Skip(2); return 4 + (size_t)ahead.U16();
    }
    return inOpcode.bytes;
}

bool ReadData(const Opcode& inOpcode, BigEndianReader& ioReader, Bytes* outData)
{
    *outData = ioReader.ReadBytes(BytesOf(inOpcode, ioReader));
    return ioReader.Ok();
}

} // namespace lampblack::pictures
