// Every opcode by hand: how long it is, and what it does.
#include "TestPictures.h"

#include <doctest/doctest.h>

using namespace lampblack::pictures;

namespace {

const Rect kFrame = { 0, 0, 40, 60 };
const Rect kSpot = { 10, 10, 20, 30 };
constexpr int kSpotPixels = 200;

// The bytes of data that are all zero but where a count or a size has to be.
MadePicture& AddData(MadePicture& made, int opcode, int version)
{
    const auto between = [opcode](int first, int last) { return opcode >= first && opcode <= last; };
    made.Op(opcode);
    if (opcode == 0x01 || between(0x80, 0x87))
        return made.Words({ 10, 0, 0, 40, 60 });
    if (between(0x70, 0x77))
        return made.Words({ 10, 0, 0, 0, 0 });
    if (between(0x12, 0x14))
        return made.Words({ 2, 0, 0, 0, 0, 0, 0, 0 });
    if (between(0x90, 0x91) || between(0x98, 0x99)) {
        made.Map(2, MakeRect(0, 0, 8, 1)).Rects(MakeRect(0, 0, 0, 0), MakeRect(0, 0, 0, 0));
        return (opcode & 1 ? made.Words({ 10, 0, 0, 0, 0 }) : made).Words({ 0 });
    }
    if (between(0x9A, 0x9B)) {
        made.Words({ 0, 0xFF }).Map(0x8002, MakeRect(0, 0, 1, 1)).PixMap(16, 1, 3);
        made.Rects(MakeRect(0, 0, 0, 0), MakeRect(0, 0, 0, 0));
        return (opcode & 1 ? made.Words({ 10, 0, 0, 0, 0 }) : made).Words({ 0 });
    }
    if (opcode == 0x28)
        return made.Words({ 0, 0 }).Text("");
    if (opcode == 0x29 || opcode == 0x2A)
        return made.Bytes({ 0 }).Text("");
    if (opcode == 0x2B)
        return made.Bytes({ 0, 0 }).Text("");
    if (between(0x24, 0x27) || between(0x2C, 0x2F) || between(0x92, 0x97) || between(0x9C, 0x9F) ||
        between(0xA2, 0xAF))
        return made.Words({ 5 }).Zeros(5);
    if (opcode == 0xA1)
        return made.Words({ 130, 7 }).Zeros(7);
    if (between(0xD0, 0xFE) || opcode >= 0x8100)
        return made.Words({ 0, 70 }).Zeros(70);
    if (between(0x30, 0x6F)) {
        const bool isArc = opcode >= 0x60, isRepeated = opcode & 8;
        return made.Zeros(isRepeated ? (isArc ? 4 : 0) : isArc ? 12 : 8);
    }
    static const int lengths[0x24] = { 0, 0, 8, 2, 1, 2, 4, 4, 2, 8, 8, 4, 4, 2, 4, 4, 8, 2,
                                       0, 0, 0, 2, 2, 0, 0, 0, 6, 6, 0, 6, 0, 6, 8, 4, 6, 2 };
    if (opcode < 0x24)
        return made.Zeros((size_t)(opcode == 0x11 && version == 1 ? 1 : lengths[opcode]));
    if (between(0x100, 0x7FFF))
        return made.Zeros((size_t)(opcode >> 8) * 2);
    return made;
}

// Whatever the opcode left behind, the spot is painted plainly.
MadePicture& AddSpot(MadePicture& made)
{
    made.Op(0x01, { 10, 0, 0, 40, 60 }).Op(0x08, { patCopy }).Op(0x09, { -1, -1, -1, -1 });
    made.Op(0x0E, { 0, blackColor });
    return made.RectOp(0x31, kSpot);
}

// A picture with one opcode of interest, played in a white world of its size.
class Played : public TestWorld {
public:
    explicit Played(MadePicture& made) : TestWorld(60, 40), error(PlayHere(made.End())) {}
    QDErr error;
};

} // namespace

TEST_CASE("DrawPicture: every opcode of version 2 has its published length")
{
    std::vector<int> opcodes;
    for (int i = 0; i < 0xFF; ++i)
        opcodes.push_back(i);
    for (const int i : { 0x100, 0x1FF, 0x200, 0x2FF, 0xBFF, 0xC01, 0x7EFF, 0x7F00, 0x7FFF, 0x8000, 0x80FF,
                         0x8100, 0x81FF, 0x8202, 0xFFFF })
        opcodes.push_back(i);
    for (const int opcode : opcodes) {
        CAPTURE(opcode);
        MadePicture made(kFrame);
        AddData(made, opcode, 2);
        AddSpot(made);
        const Played played(made);
        CHECK(played.error == noErr);
        CHECK(played.IsBlack(10, 10));
        CHECK(played.IsBlack(29, 19));
    }
}

TEST_CASE("DrawPicture: every opcode of version 1 has its published length")
{
    for (int opcode = 0; opcode < 0xB0; ++opcode) {
        CAPTURE(opcode);
        MadePicture made(kFrame, 1);
        AddData(made, opcode, 1);
        AddSpot(made);
        const Played played(made);
        CHECK(played.error == noErr);
        CHECK(played.IsBlack(10, 10));
        CHECK(played.IsBlack(29, 19));
    }
}

TEST_CASE("DrawPicture: shapes, again with the opcodes that repeat them")
{
    MadePicture made(kFrame);
    made.RectOp(0x31, kSpot);
    CHECK(Played(made).CountBlack() == kSpotPixels);
    made.Op(0x3B); // inverts the same rectangle
    CHECK(Played(made).CountBlack() == 0);
    MadePicture oval(kFrame);
    oval.RectOp(0x51, kSpot);
    const int count = Played(oval).CountBlack();
    CHECK((count > 120 && count < kSpotPixels));
    oval.Op(0x5A);
    CHECK(Played(oval).CountBlack() == 0);
    MadePicture round(kFrame);
    round.Op(0x0B, { 6, 6 }).RectOp(0x41, kSpot);
    CHECK(Played(round).CountBlack() > kSpotPixels - 20);
    CHECK(Played(round).CountBlack() < kSpotPixels);
    MadePicture arc(kFrame);
    arc.RectOp(0x61, kSpot).Words({ 0, 180 }).Op(0x69, { 180, 180 });
    CHECK(Played(arc).CountBlack() == count);
    MadePicture region(kFrame);
    region.Op(0x81, { 10, 10, 10, 20, 30 });
    CHECK(Played(region).CountBlack() == kSpotPixels);
    MadePicture polygon(kFrame);
    polygon.Op(0x71, { 26, 10, 10, 20, 30, 10, 10, 10, 30, 20, 30, 20, 10 });
    CHECK(Played(polygon).CountBlack() == kSpotPixels);
}

TEST_CASE("DrawPicture: lines of all four forms go on from each other")
{
    MadePicture made(kFrame);
    made.Op(0x20, { 5, 5, 5, 15 })
        .Op(0x21, { 15, 15 })
        .Op(0x22, { 20, 5 })
        .Bytes({ 10, 0 })
        .Op(0x23)
        .Bytes({ 0, 10 });
    const Played played(made);
    CHECK(played.IsBlack(5, 5));
    CHECK(played.IsBlack(15, 15));
    CHECK(played.IsBlack(5, 20));
    CHECK(played.IsBlack(15, 30));
    CHECK(played.CountBlack() == 11 + 10 + 11 + 10);
}

TEST_CASE("DrawPicture: patterns, pens and colours")
{
    MadePicture made(kFrame);
    made.Op(0x09, { 0xAA55, 0xAA55, 0xAA55, 0xAA55 }).RectOp(0x31, kSpot);
    CHECK(Played(made).CountBlack() == kSpotPixels / 2);
    MadePicture fill(kFrame);
    fill.Op(0x0A, { 0xFF00, 0xFF00, 0xFF00, 0xFF00 }).RectOp(0x34, kSpot);
    CHECK(Played(fill).CountBlack() == kSpotPixels / 2);
    MadePicture back(kFrame);
    back.Op(0x02, { -1, -1, -1, -1 }).RectOp(0x32, kSpot);
    CHECK(Played(back).CountBlack() == kSpotPixels);
    MadePicture pen(kFrame);
    pen.Op(0x07, { 3, 2 }).Op(0x20, { 5, 5, 5, 5 });
    CHECK(Played(pen).CountBlack() == 6);
    MadePicture color(kFrame);
    color.Op(0x1A, { -1, 0, 0 }).RectOp(0x31, kSpot);
    CHECK(Played(color).At(10, 10) == 0xFF0000);
    MadePicture ground(kFrame);
    ground.Op(0x1B, { 0, 0, -1 }).RectOp(0x32, kSpot);
    CHECK(Played(ground).At(10, 10) == 0x0000FF);
    MadePicture pixels(kFrame);
    pixels.Op(0x13, { 2, 0, 0, 0, 0, 0, -1, 0 }).RectOp(0x31, kSpot);
    CHECK(Played(pixels).At(10, 10) == 0x00FF00);
}

TEST_CASE("DrawPicture: a pixel pattern with its own table and rows")
{
    MadePicture made(kFrame);
    made.Op(0x14, { 1, 0, 0, 0, 0 }).Map(0x8002, MakeRect(0, 0, 8, 2)).PixMap(1, 0, 1);
    made.Table(0, { { 0, 0, -1, 0 }, { 1, -1, 0, 0 } }).Bytes({ 0xF0, 0, 0x0F, 0 });
    made.RectOp(0x34, MakeRect(8, 8, 24, 24));
    const Played played(made);
    CHECK(played.error == noErr);
    CHECK(played.At(8, 8) == 0xFF0000);
    CHECK(played.At(12, 8) == 0x00FF00);
    CHECK(played.At(8, 9) == 0x00FF00);
    CHECK(played.At(23, 23) == 0xFF0000);
}

TEST_CASE("DrawPicture: an origin that moves takes the coordinates with it")
{
    MadePicture made(kFrame);
    made.Op(0x0C, { 5, 7 }).RectOp(0x31, MakeRect(15, 17, 35, 27));
    const Played played(made);
    CHECK(played.CountBlack() == kSpotPixels);
    CHECK(played.IsBlack(10, 10));
}

TEST_CASE("DrawPicture: a clip region clips, and one that makes no sense does not")
{
    MadePicture made(kFrame);
    made.Op(0x01, { 10, 0, 0, 15, 60 }).RectOp(0x31, kSpot);
    CHECK(Played(made).CountBlack() == kSpotPixels / 2);
    MadePicture broken(kFrame);
    broken.Op(0x01, { 4, 0 }).RectOp(0x31, kSpot);
    CHECK(Played(broken).CountBlack() == kSpotPixels);
}

TEST_CASE("DrawPicture: text of all four forms")
{
    MadePicture made(kFrame);
    made.Op(0x0D, { 9 })
        .Op(0x28, { 10, 2 })
        .Text("I")
        .Op(0x29)
        .Bytes({ 20 })
        .Text("I")
        .Op(0x2A)
        .Bytes({ 20 })
        .Text("I");
    made.Op(0x2B).Bytes({ 20, 5 }).Text("I");
    const Played played(made);
    const auto darkIn = [&](const Rect& r) {
        for (int v = r.top; v < r.bottom; ++v)
            for (int h = r.left; h < r.right; ++h)
                if ((played.At(h, v) & 0xFF) < 0x80)
                    return true;
        return false;
    };
    CHECK(darkIn(MakeRect(2, 1, 8, 11)));
    CHECK(darkIn(MakeRect(22, 1, 28, 11)));
    CHECK(darkIn(MakeRect(22, 21, 28, 31)));
    CHECK(darkIn(MakeRect(42, 25, 48, 36)));
    CHECK(!darkIn(MakeRect(30, 1, 60, 20)));
}

TEST_CASE("DrawPicture: fonts go by their names")
{
    for (const char* name : { "Courier", "Times" }) {
        MadePicture named(kFrame), numbered(kFrame);
        const std::string text = name;
        named.Op(0x2C, { (int)text.size() + 3, 999 }).Text(text).Op(0x03, { 999 });
        numbered.Op(0x03, { text == "Courier" ? 22 : 20 });
        named.Op(0x0D, { 18 }).Op(0x28, { 30, 4 }).Text("wiw");
        numbered.Op(0x0D, { 18 }).Op(0x28, { 30, 4 }).Text("wiw");
        const Played left(named), right(numbered);
        CHECK(Differences(left, right) == 0);
        CHECK(left.Colors() != std::vector<uint32_t>(60 * 40, 0xFFFFFF));
    }
}

TEST_CASE("DrawPicture: the header of an extended picture says its coordinates")
{
    MadePicture made(kFrame, 2);
    std::vector<uint8_t> bytes = made.writer.Data();
    const std::vector<uint8_t> header = { 0xFF, 0xFE, 0, 0, 0, 0x90, 0, 0,  0, 0x90,
                                          0,    0,    0, 0, 0, 0,    0, 80, 0, 120 };
    std::copy(header.begin(), header.end(), bytes.begin() + 16);
    made.writer.Data() = bytes;
    made.RectOp(0x31, MakeRect(20, 20, 60, 40));
    CHECK(Played(made).CountBlack() == kSpotPixels);
}

TEST_CASE("DrawPicture: data that end early are drawn as far as they go, and are pictureDataErr")
{
    MadePicture made(kFrame);
    made.RectOp(0x31, kSpot).RectOp(0x31, MakeRect(0, 0, 60, 40));
    std::vector<uint8_t> bytes = made.writer.Data();
    bytes.resize(bytes.size() - 3);
    TestWorld world(60, 40);
    CHECK(PlayHere(bytes) == pictureDataErr);
    CHECK(world.CountBlack() == kSpotPixels);
}

TEST_CASE("DrawPicture: every cut of a picture ends in bounds")
{
    MadePicture made(kFrame);
    for (int opcode = 0; opcode < 0xFF; ++opcode)
        AddData(made, opcode, 2);
    const std::vector<uint8_t> whole = made.End();
    TestWorld world(60, 40);
    for (size_t size = 0; size < whole.size(); ++size) {
        const std::vector<uint8_t> cut(whole.begin(), whole.begin() + (ptrdiff_t)size);
        CHECK(PlayAt(cut, kFrame) != noErr);
    }
    CHECK(PlayAt(whole, kFrame) == noErr);
}
