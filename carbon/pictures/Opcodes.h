// The opcodes of pictures: how long the data of each are and what plays them. The table is in Opcodes.cpp;
// docs/formats/PICT.md has it in words.
#ifndef LAMPBLACK_PICTURES_OPCODES_H
#define LAMPBLACK_PICTURES_OPCODES_H

#include <foundation/BigEndian.h>

namespace lampblack::pictures {

class Player;

// How the length of an opcode's data is known.
enum class Length : uint8_t {
    Fixed,
    Counted,     // a count of 16 bits, then as many bytes
    CountedLong, // the same with 32 bits
    Sized,       // a size of 16 bits that counts itself: regions, polygons
    Text,        // `bytes` and a Pascal string
    Comment,     // a kind, a count of 16 bits, as many bytes
    Own          // what plays it reads to its end: rows of pixels
};

// Plays the data of one opcode. A reader that is no longer Ok() afterwards was too short.
using Play = void (*)(Player&, int opcode, foundation::BigEndianReader& data);

struct Opcode {
    Length length = Length::Fixed;
    uint16_t bytes = 0;
    Play play = nullptr; // null: skipped
};

Opcode OpcodeOf(int opcode, int version);

// The data of an opcode where the reader stands, which is left behind them; false when they end early or make
// no sense. Not for Length::Own.
bool ReadData(const Opcode&, foundation::BigEndianReader& ioReader, foundation::Bytes* outData);

// What plays them, by subject.
void PlayEnd(Player&, int, foundation::BigEndianReader&);
void PlayHeader(Player&, int, foundation::BigEndianReader&);
void PlayClip(Player&, int, foundation::BigEndianReader&);
void PlayOrigin(Player&, int, foundation::BigEndianReader&);
void PlayPattern(Player&, int, foundation::BigEndianReader&);
void PlayPixelPattern(Player&, int, foundation::BigEndianReader&);
void PlayPenSize(Player&, int, foundation::BigEndianReader&);
void PlayPenMode(Player&, int, foundation::BigEndianReader&);
void PlayOvalSize(Player&, int, foundation::BigEndianReader&);
void PlayClassicColor(Player&, int, foundation::BigEndianReader&);
void PlayColor(Player&, int, foundation::BigEndianReader&);
void PlayHiliteMode(Player&, int, foundation::BigEndianReader&);
void PlayDefaultHilite(Player&, int, foundation::BigEndianReader&);

void PlayTextSetting(Player&, int, foundation::BigEndianReader&); // font, face, mode, size, extra space
void PlayTextRatio(Player&, int, foundation::BigEndianReader&);
void PlayComment(Player&, int, foundation::BigEndianReader&);

void PlayFontName(Player&, int, foundation::BigEndianReader&);
void PlayLineJustification(Player&, int, foundation::BigEndianReader&);
void PlayGlyphState(Player&, int, foundation::BigEndianReader&);
void PlayText(Player&, int, foundation::BigEndianReader&);

void PlayLine(Player&, int, foundation::BigEndianReader&);
void PlayRectangle(Player&, int, foundation::BigEndianReader&);
void PlayRoundRectangle(Player&, int, foundation::BigEndianReader&);
void PlayOval(Player&, int, foundation::BigEndianReader&);
void PlayArc(Player&, int, foundation::BigEndianReader&);
void PlayPolygon(Player&, int, foundation::BigEndianReader&);
void PlayRegion(Player&, int, foundation::BigEndianReader&);

void PlayBits(Player&, int, foundation::BigEndianReader&);
void PlayCompressedImage(Player&, int, foundation::BigEndianReader&);
void PlayUncompressedImage(Player&, int, foundation::BigEndianReader&);

} // namespace lampblack::pictures

#endif
