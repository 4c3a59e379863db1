#include "TestPictures.h"

#include <Carbon/Files.h>
#include <Carbon/Resources.h>

#include <ScratchFolder.h>
#include <doctest/doctest.h>
#include <resources/ResourceFork.h>

#include <cstring>

using namespace lampblack::pictures;

namespace {

const Rect kFrame = { 0, 0, 40, 50 };

PicHandle RecordedSpot()
{
    const PicHandle picture = OpenPicture(&kFrame);
    const Rect spot = MakeRect(10, 10, 20, 20);
    PaintRect(&spot);
    ClosePicture();
    return picture;
}

} // namespace

TEST_CASE("OpenPicture: without a current port, or without a frame, there is no picture")
{
    SetPort(nullptr);
    CHECK(OpenPicture(&kFrame) == nullptr);
    CHECK(OpenPicture(nullptr) == nullptr);
    CHECK(OpenCPicture(nullptr) == nullptr);
    ClosePicture();
    PicComment(1, 0, nullptr);
}

TEST_CASE("OpenPicture: one picture at a time, and the port says that it is open")
{
    TestWorld world(50, 40);
    CHECK(!IsPortPictureBeingDefined(world.world));
    const PicHandle picture = OpenPicture(&kFrame);
    CHECK(IsPortPictureBeingDefined(world.world));
    CHECK(GetPortPenVisibility(world.world) == -1);
    CHECK(OpenPicture(&kFrame) == nullptr);
    ClosePicture();
    CHECK(!IsPortPictureBeingDefined(world.world));
    CHECK(GetPortPenVisibility(world.world) == 0);
    KillPicture(picture);
}

TEST_CASE("OpenPicture: after ShowPen what is drawn is recorded and shows")
{
    TestWorld world(50, 40);
    const PicHandle picture = OpenPicture(&kFrame);
    const Rect spot = MakeRect(10, 10, 20, 20);
    ShowPen();
    PaintRect(&spot);
    HidePen();
    ClosePicture();
    CHECK(world.CountBlack() == 100);
    EraseRect(&kFrame);
    DrawPicture(picture, &kFrame);
    CHECK(world.CountBlack() == 100);
    KillPicture(picture);
}

TEST_CASE("ClosePicture: the data are those of version 2 and begin with the frame")
{
    TestWorld world(50, 40);
    const PicHandle picture = RecordedSpot();
    const std::vector<uint8_t> bytes = BytesOf(picture);
    CHECK((size_t)(bytes[0] << 8 | bytes[1]) == bytes.size());
    const std::vector<uint8_t> start = { 0, 0, 0, 0, 0, 40, 0, 50, 0, 0x11, 2, 0xFF, 0x0C, 0, 0xFF, 0xFF };
    CHECK(std::equal(start.begin(), start.end(), bytes.begin() + 2));
    CHECK(bytes[bytes.size() - 2] == 0);
    CHECK(bytes[bytes.size() - 1] == 0xFF);
    Rect frame;
    CHECK(QDGetPictureBounds(picture, &frame) == &frame);
    CHECK(EqualRect(&frame, &kFrame));
    KillPicture(picture);
}

TEST_CASE("ClosePicture: what does not change is not recorded again")
{
    TestWorld world(50, 40);
    const PicHandle picture = OpenPicture(&kFrame);
    const Rect r = MakeRect(1, 1, 5, 5);
    for (int i = 0; i < 100; ++i)
        PaintRect(&r);
    ClosePicture();
    CHECK(BytesOf(picture).size() < 100 + 2 * 100);
    KillPicture(picture);
}

TEST_CASE("DrawPicture: into a frame of another size everything is scaled")
{
    TestWorld world(100, 80);
    const PicHandle picture = RecordedSpot();
    DrawPicture(picture, &world.bounds);
    CHECK(world.CountBlack() == 20 * 20);
    CHECK(world.IsBlack(20, 20));
    CHECK(world.IsBlack(39, 39));
    CHECK(world.IsWhite(40, 40));
    KillPicture(picture);
}

TEST_CASE("DrawPicture: a frame off the origin comes to where it is drawn")
{
    TestWorld world(60, 60);
    const Rect frame = MakeRect(-100, 200, -50, 240), spot = MakeRect(-90, 210, -80, 220),
               to = MakeRect(5, 5, 55, 45);
    const PicHandle picture = OpenPicture(&frame);
    PaintRect(&spot);
    ClosePicture();
    DrawPicture(picture, &to);
    CHECK(world.CountBlack() == 100);
    CHECK(world.IsBlack(15, 15));
    CHECK(world.IsBlack(24, 24));
    KillPicture(picture);
}

TEST_CASE("DrawPicture: the port's clip region holds")
{
    TestWorld world(50, 40);
    const PicHandle picture = RecordedSpot();
    const Rect clip = MakeRect(0, 0, 15, 40);
    ClipRect(&clip);
    DrawPicture(picture, &kFrame);
    CHECK(world.CountBlack() == 50);
    KillPicture(picture);
}

TEST_CASE("DrawPicture: the port's state is as before")
{
    TestWorld world(50, 40);
    const RGBColor color = { 0x1111, 0x2222, 0x3333 };
    const Rect clip = MakeRect(2, 3, 40, 30);
    RGBForeColor(&color);
    PenSize(5, 6);
    PenMode(patXor);
    MoveTo(7, 8);
    TextFont(3);
    TextSize(18);
    TextFace(bold);
    TextMode(srcBic);
    ClipRect(&clip);
    MadePicture made(kFrame);
    made.Op(0x07, { 9, 9 })
        .Op(0x08, { 1 })
        .Op(0x1A, { 1, 2, 3 })
        .Op(0x0D, { 33 })
        .Op(0x03, { 22 })
        .Op(0x01, { 10, 0, 0, 5, 5 });
    made.Op(0x1C);
    PlayHere(made.End());
    RGBColor now;
    GetForeColor(&now);
    CHECK(std::memcmp(&now, &color, sizeof now) == 0);
    PenState pen;
    GetPenState(&pen);
    CHECK((pen.pnSize.h == 5 && pen.pnSize.v == 6 && pen.pnMode == patXor && pen.pnLoc.h == 7 &&
           pen.pnLoc.v == 8));
    CHECK(GetPortTextFont(world.world) == 3);
    CHECK(GetPortTextSize(world.world) == 18);
    CHECK(GetPortTextFace(world.world) == bold);
    CHECK(GetPortTextMode(world.world) == srcBic);
    CHECK((LMGetHiliteMode() & (1 << hiliteBit)) != 0);
    const RgnHandle region = NewRgn();
    Rect bounds;
    GetClip(region);
    GetRegionBounds(region, &bounds);
    CHECK(EqualRect(&bounds, &clip));
    DisposeRgn(region);
}

TEST_CASE("DrawPicture: what is no picture is paramErr, an empty one is nothing")
{
    TestWorld world(50, 40);
    DrawPicture(nullptr, &kFrame);
    CHECK(QDError() == paramErr);
    const Handle small = NewHandleClear(5), zeros = NewHandleClear(10);
    DrawPicture(reinterpret_cast<PicHandle>(small), &kFrame);
    CHECK(QDError() == paramErr);
    DrawPicture(reinterpret_cast<PicHandle>(zeros), &kFrame);
    CHECK(QDError() == noErr);
    Rect frame;
    QDGetPictureBounds(reinterpret_cast<PicHandle>(zeros), &frame);
    CHECK(EmptyRect(&frame));
    DisposeHandle(small);
    DisposeHandle(zeros);
    DrawPicture(reinterpret_cast<PicHandle>(zeros), &kFrame);
    CHECK(QDError() == paramErr);
    CHECK(world.CountBlack() == 0);
    SetPort(nullptr);
    const Handle other = NewHandleClear(10);
    DrawPicture(reinterpret_cast<PicHandle>(other), &kFrame);
    CHECK(QDError() == paramErr);
    DisposeHandle(other);
}

TEST_CASE("ClosePicture: a picture that cannot grow is left with an empty frame")
{
    TestWorld world(50, 40);
    const PicHandle picture = OpenPicture(&kFrame);
    PaintRect(&kFrame);
    HLock(reinterpret_cast<Handle>(picture));
    ClosePicture();
    CHECK(QDError() == memFullErr);
    Rect frame;
    QDGetPictureBounds(picture, &frame);
    CHECK(EmptyRect(&frame));
    DrawPicture(picture, &kFrame);
    CHECK(QDError() == noErr);
    CHECK(world.CountBlack() == 0);
    KillPicture(picture);
}

TEST_CASE("KillPicture: an open picture that is killed takes no harm")
{
    TestWorld world(50, 40);
    const PicHandle picture = OpenPicture(&kFrame);
    KillPicture(picture);
    PaintRect(&kFrame);
    ClosePicture();
    CHECK(QDError() == noErr);
    CHECK(!IsPortPictureBeingDefined(world.world));
}

TEST_CASE("DisposeGWorld: a world with an open picture goes with its recording")
{
    const Rect bounds = { 0, 0, 10, 10 };
    GWorldPtr world = nullptr;
    NewGWorld(&world, 32, &bounds, nullptr, nullptr, 0);
    SetGWorld(world, nullptr);
    const PicHandle picture = OpenPicture(&bounds);
    DisposeGWorld(world);
    Rect frame;
    QDGetPictureBounds(picture, &frame);
    CHECK(EmptyRect(&frame));
    KillPicture(picture);
}

TEST_CASE("PicComment: comments of both kinds are recorded and skipped")
{
    TestWorld world(50, 40);
    const Handle data = NewHandleClear(7);
    const PicHandle picture = OpenPicture(&kFrame);
    PicComment(130, 0, nullptr);
    PicComment(140, 7, data);
    PicComment(141, 8, data); // more than there is
    PicComment(142, -1, data);
    const Rect spot = MakeRect(10, 10, 20, 20);
    PaintRect(&spot);
    ClosePicture();
    const std::vector<uint8_t> bytes = BytesOf(picture);
    CHECK(ContainsOpcode(bytes, 0xA0));
    CHECK(ContainsOpcode(bytes, 0xA1));
    CHECK(!ContainsOpcode(bytes, 141));
    DrawPicture(picture, &kFrame);
    CHECK(world.CountBlack() == 100);
    KillPicture(picture);
    DisposeHandle(data);
}

TEST_CASE("PictureInFile: the picture is behind 512 bytes, or the file is one")
{
    MadePicture made(kFrame);
    const std::vector<uint8_t> picture = made.End();
    std::vector<uint8_t> file(512);
    file.insert(file.end(), picture.begin(), picture.end());
    CHECK(PictureInFile(file).size() == picture.size());
    CHECK(PictureInFile(picture).size() == picture.size());
    CHECK(PictureInFile({}).empty());
    CHECK(PictureInFile(std::vector<uint8_t>(600)).empty());
}

TEST_CASE("GetPicture: no such resource is NULL")
{
    CHECK(GetPicture(31999) == nullptr);
}

TEST_CASE("GetPicture: a resource is a picture, and its bounds are numbers")
{
    const ScratchFolder folder;
    MadePicture made(kFrame);
    const std::vector<uint8_t> picture = made.RectOp(0x31, MakeRect(10, 10, 20, 20)).End();
    lampblack::resources::ForkBuilder builder;
    builder.Add({ 'PICT', 128, 0, false, "", picture });
    std::vector<uint8_t> fork;
    REQUIRE(builder.Build(&fork) == nullptr);
    const std::string path =
        folder.Write("art.rsrc", { reinterpret_cast<const char*>(fork.data()), fork.size() });
    FSRef ref;
    REQUIRE(FSPathMakeRef(reinterpret_cast<const UInt8*>(path.c_str()), &ref, nullptr) == noErr);
    const SInt16 file = FSOpenResFile(&ref, fsRdPerm);
    REQUIRE(file > 0);
    const PicHandle found = GetPicture(128);
    REQUIRE(found != nullptr);
    Rect bounds;
    QDGetPictureBounds(found, &bounds);
    CHECK(EqualRect(&bounds, &kFrame));
    TestWorld world(50, 40);
    DrawPicture(found, &kFrame);
    CHECK(world.CountBlack() == 100);
    CloseResFile(file);
    DrawPicture(found, &kFrame);
    CHECK(QDError() == paramErr); // the file took it along
}
