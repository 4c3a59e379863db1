// Images within pictures: pixels at every depth and packing, raw and run-length data, mattes, fallbacks, and
// the seam to other decoders.
#include "CompressedImages.h"
#include "RawImages.h"
#include "TestPictures.h"

#include <doctest/doctest.h>

#include <chrono>
#include <memory>

using namespace lampblack::pictures;

namespace {

const Rect kFrame = { 0, 0, 40, 60 };

class Played : public TestWorld {
public:
    explicit Played(MadePicture& made) : TestWorld(60, 40), error(PlayHere(made.End())) {}
    QDErr error;
};

// Version, an identity matrix with a shift, and the size of the matte.
MadePicture& AddHead(MadePicture& made, int h, int v, int matteSize)
{
    made.Words({ 0, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, h, 0, v, 0, 0x4000, 0, 0, matteSize });
    return made.Zeros(8);
}

struct Size {
    int width, height;
};

std::vector<uint8_t> Description(const char* type, Size size, int depth, int table, size_t dataSize)
{
    lampblack::foundation::BigEndianWriter writer;
    writer.U32(86);
    for (int i = 0; i < 4; ++i)
        writer.U8((uint8_t)type[i]);
    writer.Zeros(24);
    writer.U16((uint16_t)size.width);
    writer.U16((uint16_t)size.height);
    writer.Zeros(8);
    writer.U32((uint32_t)dataSize);
    writer.U16(1);
    writer.Zeros(32);
    writer.U16((uint16_t)depth);
    writer.U16((uint16_t)table);
    return writer.Data();
}

// The opcode of a compressed image at (h, v).
MadePicture& AddCompressed(MadePicture& made, const char* type, Size size, int depth,
                           const std::vector<uint8_t>& data, int h = 0, int v = 0,
                           const std::vector<uint8_t>& mask = {})
{
    const size_t total = 2 + 36 + 4 + 8 + 2 + 8 + 4 + 4 + mask.size() + 86 + data.size();
    made.Op(0x8200, { 0, (int)total });
    AddHead(made, h, v, 0).Words({ srcCopy, 0, 0, size.height, size.width, 0, 0, 0, (int)mask.size() });
    made.writer.Write(mask);
    made.writer.Write(Description(type, size, depth, -1, data.size()));
    made.writer.Write(data);
    return made;
}

PixelValues Decoded(const char* type, Size size, int depth, const std::vector<uint8_t>& data)
{
    const std::vector<uint8_t> description = Description(type, size, depth, -1, data.size());
    lampblack::foundation::BigEndianReader reader(description);
    ImageDescription image;
    REQUIRE(ReadImageDescription(reader, &image));
    PixelValues values;
    REQUIRE(DecodeRaw(image, data, &values));
    return values;
}

// A decoder that knows one type and paints what it is asked for.
bool DecodeTest(const CompressedImage& inImage, DecodedImage* out)
{
    if (inImage.type != 'test' || inImage.data.size() != 4)
        return false;
    out->width = inImage.width;
    out->height = inImage.height;
    const size_t count = (size_t)out->width * (size_t)out->height;
    out->pixels = std::make_unique<uint32_t[]>(count);
    std::fill_n(out->pixels.get(), count, lampblack::foundation::LoadBE32(inImage.data.data()));
    out->hasAlpha = (inImage.data[0] != 0);
    return true;
}

} // namespace

TEST_CASE("DrawPicture: bit maps, packed and plain, in the colours of the picture")
{
    MadePicture plain(kFrame);
    plain.Op(0x1A, { -1, 0, 0 })
        .Op(0x90)
        .Map(2, MakeRect(0, 0, 16, 2))
        .Rects(MakeRect(0, 0, 16, 2), MakeRect(5, 5, 21, 7));
    plain.Words({ 0xFF00, 0x8001 });
    const Played first(plain);
    CHECK(first.At(5, 5) == 0xFF0000);
    CHECK(first.At(12, 5) == 0xFF0000);
    CHECK(first.At(13, 5) == 0xFFFFFF);
    CHECK(first.At(20, 6) == 0xFF0000);
    MadePicture packed(kFrame, 1);
    packed.Op(0x98).Map(8, MakeRect(0, 0, 60, 3)).Rects(MakeRect(0, 0, 60, 3), MakeRect(0, 10, 60, 13));
    packed.Bytes({ 2, 0xF9, 0xFF, 5, 0xFD, 0, 0x80, 0xFD, 0xFF, 1, 0xFF });
    const Played second(packed);
    CHECK(second.CountBlack() == 60 + 28);
    CHECK(second.IsBlack(59, 10));
    CHECK(second.IsBlack(32, 11));
    CHECK(second.IsWhite(0, 12));
}

TEST_CASE("DrawPicture: colour tables by value and by order")
{
    for (const int flags : { 0, 0x8000 }) {
        CAPTURE(flags);
        MadePicture made(kFrame);
        made.Op(0x90).Map(0x8002, MakeRect(0, 0, 2, 1)).PixMap(8, 0, 1);
        made.Table(flags, { { 9, -1, 0, 0 }, { 0, 0, -1, 0 }, { 1, 0, 0, -1 } });
        made.Rects(MakeRect(0, 0, 2, 1), MakeRect(3, 3, 5, 4)).Bytes({ 0, 1 });
        const Played played(made);
        CHECK(played.At(3, 3) == (flags ? 0xFF0000u : 0x00FF00u));
        CHECK(played.At(4, 3) == (flags ? 0x00FF00u : 0x0000FFu));
    }
}

TEST_CASE("DrawPicture: direct pixels in every packing")
{
    const Rect map = MakeRect(0, 0, 4, 1), to = MakeRect(6, 6, 10, 7);
    const auto check = [&](MadePicture& made) {
        const Played played(made);
        CHECK(played.error == noErr);
        CHECK(played.At(6, 6) == 0xFF0000);
        CHECK(played.At(7, 6) == 0xFF0000);
        CHECK(played.At(8, 6) == 0x0000FF);
        CHECK(played.At(9, 6) == 0xFFFFFF);
    };
    MadePicture plain32(kFrame), triples(kFrame), alpha(kFrame), plain16(kFrame), words(kFrame);
    const auto start = [&](MadePicture& made, int rowBytes, int depth, int packType,
                           int channels) -> MadePicture& {
        return made.Op(0x9A, { 0, 0xFF })
            .Map(0x8000 | rowBytes, map)
            .PixMap(depth, packType, channels)
            .Rects(map, to);
    };
    start(plain32, 16, 32, 1, 3).Words({ 0x55FF, 0, 0xFF, 0, 0, 0xFF, 0xFF, 0xFFFF });
    start(triples, 16, 32, 2, 3).Bytes({ 255, 0, 0, 255, 0, 0, 0, 0, 255, 255, 255, 255 });
    start(alpha, 16, 32, 0, 4).Bytes({ 17, 15, 1, 2, 3, 4, 255, 255, 0, 255, 0, 0, 0, 255, 0, 0, 255, 255 });
    start(plain16, 8, 16, 1, 3).Words({ 0x7C00, 0xFC00, 0x001F, 0x7FFF });
    start(words, 8, 16, 0, 3).Bytes({ 8, 0xFF, 0x7C, 0, 1, 0, 0x1F, 0x7F, 0xFF });
    check(plain32);
    check(triples);
    check(alpha);
    check(plain16);
    check(words);
    MadePicture counted(kFrame);
    start(counted, 16, 32, 4, 3).Bytes({ 13, 11, 255, 255, 0, 255, 0, 0, 0, 255, 0, 0, 255, 255 });
    check(counted);
}

TEST_CASE("DrawPicture: rows longer than 250 bytes have counts of two bytes")
{
    const Rect frame = MakeRect(0, 0, 260, 2);
    for (const int rowBytes : { 250, 252 }) {
        CAPTURE(rowBytes);
        MadePicture made(frame);
        made.Op(0x98)
            .Map(0x8000 | rowBytes, MakeRect(0, 0, rowBytes, 2))
            .PixMap(8, 0, 1)
            .Table(0, { { 0, 0, 0, 0 }, { 1, -1, -1, -1 } });
        made.Rects(MakeRect(0, 0, rowBytes, 2), MakeRect(0, 0, rowBytes, 2));
        for (int row = 0; row < 2; ++row) {
            if (rowBytes > 250)
                made.Bytes({ 0 });
            made.Bytes({ 4, 0x81, row, 0x100 - (rowBytes - 128 - 1), 1 - row });
        }
        TestWorld world(260, 2);
        CHECK(PlayHere(made.End()) == noErr);
        CHECK(world.IsBlack(0, 0));
        CHECK(world.IsWhite(200, 0));
        CHECK(world.IsWhite(0, 1));
        CHECK(world.IsBlack(rowBytes - 1, 1));
    }
}

TEST_CASE("DrawPicture: pixels through a mask region; one that makes no sense draws nothing and goes on")
{
    MadePicture made(kFrame);
    made.Op(0x91).Map(2, MakeRect(0, 0, 16, 2)).Rects(MakeRect(0, 0, 16, 2), MakeRect(0, 0, 16, 2));
    made.Words({ 10, 0, 4, 1, 8, -1, -1 });
    CHECK(Played(made).CountBlack() == 4);
    MadePicture broken(kFrame);
    broken.Op(0x91).Map(2, MakeRect(0, 0, 16, 2)).Rects(MakeRect(0, 0, 16, 2), MakeRect(0, 0, 16, 2));
    broken.Words({ 6, 1, 2, -1, -1 }).RectOp(0x31, MakeRect(1, 1, 2, 2));
    CHECK(Played(broken).CountBlack() == 1);
}

TEST_CASE("DrawPicture: several bands make one image")
{
    MadePicture made(kFrame);
    for (int band = 0; band < 4; ++band) {
        const Rect rows = MakeRect(0, band * 10, 16, band * 10 + 10);
        made.Op(0x90).Map(2, rows).Rects(rows, rows);
        for (int row = 0; row < 10; ++row)
            made.Words({ -1 });
    }
    CHECK(Played(made).CountBlack() == 16 * 40);
}

TEST_CASE("DrawPicture: raw images at every depth")
{
    const std::vector<uint8_t> direct32 = { 0, 255, 0, 0, 0, 0, 0, 255 }, direct24 = { 255, 0, 0, 0, 0, 255 };
    const std::vector<uint8_t> direct16 = { 0x7C, 0, 0, 0x1F };
    for (const auto& [depth, data] : { std::pair{ 32, direct32 }, { 24, direct24 }, { 16, direct16 } }) {
        CAPTURE(depth);
        MadePicture made(kFrame);
        AddCompressed(made, "raw ", { 2, 1 }, depth, data, 7, 9);
        const Played played(made);
        CHECK(played.error == noErr);
        CHECK(played.At(7, 9) == 0xFF0000);
        CHECK(played.At(8, 9) == 0x0000FF);
        CHECK(played.At(9, 9) == 0xFFFFFF);
    }
    CHECK(Decoded("raw ", { 4, 1 }, 1, { 0xA0 }).values == std::vector<uint32_t>{ 1, 0, 1, 0 });
    CHECK(Decoded("raw ", { 4, 1 }, 2, { 0x1B }).values == std::vector<uint32_t>{ 0, 1, 2, 3 });
    CHECK(Decoded("raw ", { 3, 2 }, 4, { 0x12, 0x30, 0x45, 0x60 }).values ==
          std::vector<uint32_t>{ 1, 2, 3, 4, 5, 6 });
    CHECK(Decoded("raw ", { 2, 2 }, 40, { 1, 2, 0, 0, 3, 4, 0, 0 }).values ==
          std::vector<uint32_t>{ 1, 2, 3, 4 });
    MadePicture gray(kFrame);
    AddCompressed(gray, "raw ", { 2, 1 }, 40, { 0, 255 }, 0, 0);
    CHECK(Played(gray).At(0, 0) == 0xFFFFFF);
    CHECK(Played(gray).At(1, 0) == 0);
}

TEST_CASE("DrawPicture: run-length images skip, repeat and copy")
{
    // Row 0: skip 1, two of red, end. Row 1: one of blue; skip 1; one of green.
    const std::vector<uint8_t> data = { 0, 0, 0, 30,   0, 0, 2, 0xFE, 0x7C, 0,    0xFF,
                                        1, 1, 0, 0x1F, 0, 2, 1, 3,    0xE0, 0xFF, 0 };
    MadePicture made(kFrame);
    AddCompressed(made, "rle ", { 4, 2 }, 16, data, 10, 10);
    const Played played(made);
    CHECK(played.error == noErr);
    CHECK(played.At(11, 10) == 0xFF0000);
    CHECK(played.At(12, 10) == 0xFF0000);
    CHECK(played.At(10, 11) == 0x0000FF);
    CHECK(played.At(12, 11) == 0x00FF00);
    const PixelValues indexes =
        Decoded("rle ", { 8, 1 }, 8, { 0, 0, 0, 16, 0, 0, 1, 2, 1, 2, 3, 4, 5, 6, 7, 8, 0xFF });
    CHECK(indexes.values == std::vector<uint32_t>{ 1, 2, 3, 4, 5, 6, 7, 8 });
    const PixelValues bits =
        Decoded("rle ", { 16, 2 }, 1, { 0, 0, 0, 14, 0, 0, 0x80, 1, 0x80, 0, 0x80, 1, 0, 1, 0, 0 });
    CHECK(bits.values[0] == 1);
    CHECK(bits.values[1] == 0);
    CHECK(bits.values[31] == 1);
    const PixelValues part = Decoded(
        "rle ", { 2, 3 }, 32, { 0, 0, 0, 22, 0, 8, 0, 1, 0, 0, 0, 1, 0, 0, 1, 0xFE, 0, 1, 2, 3, 0xFF, 0 });
    CHECK(part.values == std::vector<uint32_t>{ 0, 0, 0x010203, 0x010203, 0, 0 });
}

TEST_CASE("DrawPicture: a matte says how much of each pixel is seen")
{
    const std::vector<uint8_t> description = Description("raw ", { 2, 1 }, 40, 40, 2);
    MadePicture made(kFrame);
    made.RectOp(0x31, MakeRect(0, 0, 60, 40));
    made.Op(0x8201, { 0, 2 + 36 + 4 + 8 + 88 });
    AddHead(made, 20, 0, 88);
    made.writer.Write(description);
    made.Bytes({ 255, 0 });
    made.Op(0x9A, { 0, 0xFF }).Map(0x8004, MakeRect(0, 0, 2, 1)).PixMap(16, 1, 3);
    made.Rects(MakeRect(0, 0, 2, 1), MakeRect(0, 0, 2, 1)).Words({ 0x7C00, 0x7C00 });
    made.RectOp(0x31, MakeRect(0, 39, 1, 40));
    const Played played(made);
    CHECK(played.error == noErr);
    CHECK(played.At(20, 0) == 0xFF0000); // where the matrix puts it
    CHECK(played.At(21, 0) == 0);
    CHECK(played.At(0, 0) == 0);
}

TEST_CASE("DrawPicture: pixels that are counted in with their matrix are drawn, too")
{
    MadePicture made(kFrame);
    made.Op(0x8201, { 0, 2 + 36 + 4 + 8 + 2 + 4 + 46 + 18 + 4 });
    AddHead(made, 20, 0, 0);
    made.Op(0x9A, { 0, 0xFF }).Map(0x8004, MakeRect(0, 0, 2, 1)).PixMap(16, 1, 3);
    made.Rects(MakeRect(0, 0, 2, 1), MakeRect(0, 0, 2, 1)).Words({ 0x7C00, 0x03E0 });
    made.RectOp(0x31, MakeRect(0, 39, 1, 40));
    const Played played(made);
    CHECK(played.error == noErr);
    CHECK(played.At(20, 0) == 0xFF0000);
    CHECK(played.At(21, 0) == 0x00FF00);
    CHECK(played.IsBlack(0, 39));
}

TEST_CASE("DrawPicture: an image under a matte is part of the picture that is open while it is played")
{
    MadePicture made(kFrame);
    made.RectOp(0x31, MakeRect(0, 0, 30, 40)).Op(0x8201, { 0, 2 + 36 + 4 + 8 + 88 });
    AddHead(made, 20, 0, 88);
    made.writer.Write(Description("raw ", { 2, 1 }, 40, 40, 2));
    made.Bytes({ 255, 100 });
    made.Op(0x9A, { 0, 0xFF }).Map(0x8004, MakeRect(0, 0, 2, 1)).PixMap(16, 1, 3);
    made.Rects(MakeRect(0, 0, 2, 1), MakeRect(5, 5, 25, 30)).Words({ 0x7C00, 0x03FF });
    made.Op(0x07, { 1, 6 }).Op(0x20, { 35, 0, 39, 50 }); // a pen as wide as a fallback could be long
    const TestWorld drawn(60, 40);
    CHECK(PlayHere(made.End()) == noErr);
    CHECK(drawn.At(26, 10) == 0xFF0000);
    CHECK(!drawn.IsBlack(44, 10));
    CHECK(!drawn.IsWhite(2, 35));
    const TestWorld played(60, 40);
    const PicHandle picture = OpenPicture(&kFrame);
    CHECK(PlayHere(made.End()) == noErr);
    ClosePicture();
    DrawPicture(picture, &kFrame);
    CHECK(Differences(played, drawn) == 0);
    KillPicture(picture);
}

TEST_CASE("DrawPicture: a decoder is asked for other types, and its alpha counts when it has any")
{
    SetImageDecoder(DecodeTest);
    MadePicture made(kFrame);
    AddCompressed(made, "test", { 6, 5 }, 32, { 0, 1, 2, 3 }, 10, 10);
    CHECK(Played(made).At(15, 14) == 0x010203);
    CHECK(Played(made).IsWhite(16, 14));
    MadePicture clear(kFrame);
    AddCompressed(clear, "test", { 6, 5 }, 32, { 0x80, 0, 0, 0 }, 10, 10);
    const uint32_t gray = Played(clear).At(12, 12) & 0xFF;
    CHECK((gray > 0x70 && gray < 0x90));
    MadePicture masked(kFrame);
    AddCompressed(masked, "test", { 6, 5 }, 32, { 0, 0, 0, 0 }, 10, 10,
                  { 0, 10, 0, 10, 0, 10, 0, 12, 0, 12 });
    CHECK(Played(masked).CountBlack() == 4);
    MadePicture unknown(kFrame);
    AddCompressed(unknown, "none", { 6, 5 }, 32, { 0, 0, 0, 0 }, 10, 10).RectOp(0x31, MakeRect(0, 0, 1, 1));
    CHECK(Played(unknown).CountBlack() == 1);
    SetImageDecoder(nullptr);
}

namespace {

// What stands behind a compressed image: three lines of text under a pen size that is their length, and a
// rectangle that is not part of it.
MadePicture& AddTextFallback(MadePicture& made, bool isMarked)
{
    MadePicture lines(kFrame);
    const size_t start = lines.writer.Size();
    lines.Op(0x07, { 1, 1 }).Op(0x0D, { 12 });
    for (const char* line : { "QuickTime\xAA and a", "decompressor", "are needed" })
        lines.Op(0x28, { 20, 5 }).Text(line);
    lines.Op(0x00);
    std::vector<uint8_t> bytes(lines.writer.Data().begin() + (ptrdiff_t)start, lines.writer.Data().end());
    made.Op(0x00);
    if (isMarked)
        made.Op(0x07, { 30, (int)bytes.size() });
    else
        made.Op(0x00);
    made.writer.Write(bytes);
    return made.RectOp(0x31, MakeRect(50, 30, 60, 40));
}

} // namespace

TEST_CASE("DrawPicture: the fallback of an image that was shown is not drawn")
{
    for (const bool isMarked : { true, false }) {
        CAPTURE(isMarked);
        MadePicture made(kFrame);
        AddCompressed(made, "raw ", { 1, 1 }, 32, { 0, 0, 0, 0 });
        AddTextFallback(made, isMarked);
        CHECK(Played(made).CountBlack() == 1 + 100);
        MadePicture unread(kFrame);
        AddCompressed(unread, "none", { 1, 1 }, 32, { 0, 0, 0, 0 });
        AddTextFallback(unread, isMarked);
        const Played played(unread);
        CHECK(played.error == noErr);
        CHECK(played.Colors()[5 * 60] == 0xFFFFFF);
        CHECK(played.CountBlack() > 100);
    }
}

TEST_CASE("DrawPicture: a bit map in the place of a shown image is its fallback")
{
    for (const char* type : { "raw ", "none" }) {
        const std::string name = type;
        CAPTURE(name);
        MadePicture made(kFrame);
        AddCompressed(made, type, { 16, 2 }, 1, { 0, 0, 0, 0 });
        made.Op(0x90)
            .Map(2, MakeRect(0, 0, 16, 2))
            .Rects(MakeRect(0, 0, 16, 2), MakeRect(0, 0, 16, 2))
            .Words({ -1, -1 });
        made.RectOp(0x31, MakeRect(50, 30, 60, 40));
        CHECK(Played(made).CountBlack() == (name == "none" ? 132 : 100));
    }
}

TEST_CASE("DrawPicture: an image that claims 32,000 x 32,000 pixels ends soon")
{
    const auto start = std::chrono::steady_clock::now();
    const Rect huge = MakeRect(0, 0, 16000, 32000);
    MadePicture made(kFrame);
    made.Op(0x98).Map(0x8000 | 16000, huge).PixMap(8, 0, 1).Table(0x8000, { { 0, 0, 0, 0 } });
    made.Rects(huge, MakeRect(0, 0, 60, 40)).Zeros(64000);
    TestWorld world(60, 40);
    CHECK(PlayHere(made.writer.Data()) == pictureDataErr);
    CHECK(world.IsBlack(30, 20)); // what could be read
    MadePicture wide(kFrame);
    wide.Op(0x9A, { 0, 0xFF })
        .Map(0x8000 | 0x3FFF, MakeRect(0, 0, 32000, 32000))
        .PixMap(32, 4, 4)
        .Rects(huge, kFrame)
        .Zeros(1000);
    CHECK(PlayHere(wide.writer.Data()) == pictureDataErr);
    MadePicture runs(kFrame);
    AddCompressed(runs, "rle ", { 32000, 32000 }, 32, { 0, 0, 0, 10, 0, 0, 1, 0xFF, 0, 0 });
    CHECK(Played(runs).error == noErr); // it cannot be shown, and the picture goes on
    CHECK(std::chrono::steady_clock::now() - start < std::chrono::seconds(5));
}

TEST_CASE("DrawPicture: images that claim much and hold little are not decoded without end")
{
    const auto start = std::chrono::steady_clock::now();
    MadePicture made(kFrame);
    for (int i = 0; i < 2000; ++i)
        AddCompressed(made, "rle ", { 4000, 4000 }, 32, { 0, 0, 0, 10, 0, 0, 1, 0xFF, 0, 0 });
    CHECK(Played(made).error == pictureDataErr);
    CHECK(std::chrono::steady_clock::now() - start < std::chrono::seconds(20));
}

TEST_CASE("DrawPicture: a picture that draws over everything again and again ends soon")
{
    const auto start = std::chrono::steady_clock::now();
    MadePicture made(MakeRect(0, 0, 1000, 1000));
    made.RectOp(0x33, MakeRect(0, 0, 1000, 1000));
    for (int i = 0; i < 100000; ++i)
        made.Op(0x3B);
    TestWorld world(1000, 1000);
    CHECK(PlayHere(made.End()) == pictureDataErr);
    CHECK(std::chrono::steady_clock::now() - start < std::chrono::seconds(20));
}
