// Ports, worlds, devices and buffers.
#include "TestPort.h"

#include <Carbon/MacErrors.h>
#include <Host.h>

using namespace lampblack::quickdraw;

TEST_CASE("NewGWorld: bounds, depth, rows and device are what was asked for")
{
    GWorldPtr world = nullptr;
    const Rect bounds = MakeRect(10, 20, 47, 50);
    REQUIRE(NewGWorld(&world, 0, &bounds, nullptr, nullptr, 0) == noErr);
    Rect read;
    CHECK(EqualRect(GetPortBounds(world, &read), &bounds));
    PixMapHandle map = GetGWorldPixMap(world);
    REQUIRE(map);
    CHECK((*map)->pixelSize == 32);
    CHECK(((*map)->rowBytes & 0x3FFF) == 37 * 4);
    CHECK((*map)->rowBytes < 0);
    CHECK(GetPixBaseAddr(map) == (*map)->baseAddr);
    CHECK(GetGWorldDevice(world) != GetMainDevice());
    CGrafPtr oldPort;
    GDHandle oldDevice, device;
    GetGWorld(&oldPort, &oldDevice);
    SetGWorld(world, nullptr);
    GetGWorld(nullptr, &device);
    CHECK(device == GetGWorldDevice(world));
    Point corner = { 20, 10 };
    LocalToGlobal(&corner);
    CHECK(corner.h == 0);
    CHECK(corner.v == 0);
    SetGWorld(oldPort, oldDevice);
    DisposeGWorld(world);
    CHECK(!IsValidPort(world));
    CHECK(GetGWorldPixMap(world) == nullptr);
    CHECK(!LockPixels(map));
}

TEST_CASE("NewGWorld: errors leave null")
{
    GWorldPtr world = reinterpret_cast<GWorldPtr>(1);
    const Rect empty = MakeRect(5, 5, 5, 9), fine = MakeRect(0, 0, 4, 4), wide = MakeRect(0, 0, 30000, 4);
    CHECK(NewGWorld(&world, 32, &empty, nullptr, nullptr, 0) == paramErr);
    CHECK(world == nullptr);
    CHECK(NewGWorld(&world, 32, nullptr, nullptr, nullptr, 0) == paramErr);
    CHECK(NewGWorld(nullptr, 32, &fine, nullptr, nullptr, 0) == paramErr);
    CHECK(NewGWorld(&world, 7, &fine, nullptr, nullptr, 0) == cDepthErr);
    CHECK(QDError() == cDepthErr);
    CHECK(NewGWorld(&world, 32, &wide, nullptr, nullptr, 0) == paramErr);
}

TEST_CASE("LockPixels: the state is kept and can be put back")
{
    GWorldPtr world = nullptr;
    const Rect bounds = MakeRect(0, 0, 4, 4);
    NewGWorld(&world, 32, &bounds, nullptr, nullptr, 0);
    PixMapHandle map = GetGWorldPixMap(world);
    const GWorldFlags before = GetPixelsState(map);
    CHECK((before & pixelsLocked) == 0);
    CHECK(LockPixels(map));
    CHECK((GetPixelsState(map) & pixelsLocked) != 0);
    SetPixelsState(map, before);
    CHECK((GetPixelsState(map) & pixelsLocked) == 0);
    DisposeGWorld(world);
}

TEST_CASE("UpdateGWorld: clips or stretches the old pixels; moving alone keeps them")
{
    GWorldPtr world = nullptr;
    const Rect bounds = MakeRect(0, 0, 4, 4), moved = MakeRect(10, 10, 14, 14), larger = MakeRect(0, 0, 8, 8);
    NewGWorld(&world, 32, &bounds, nullptr, nullptr, 0);
    PortPixels(world).base[5] = 0x123456;
    CHECK(UpdateGWorld(&world, 0, &moved, nullptr, nullptr, 0) == 0);
    CHECK(PortPixels(world).base[5] == 0x123456);
    CHECK((UpdateGWorld(&world, 0, &larger, nullptr, nullptr, stretchPix) & stretchPix) != 0);
    CHECK(PortPixels(world).base[3 * 8 + 3] == 0x123456);
    CHECK((UpdateGWorld(&world, 0, &bounds, nullptr, nullptr, clipPix) & clipPix) != 0);
    CHECK(PortPixels(world).base[3 * 4 + 3] == 0x123456);
    CHECK(UpdateGWorld(&world, 3, &bounds, nullptr, nullptr, 0) == (GWorldFlags)gwFlagErr);
    CHECK(QDError() == cDepthErr);
    DisposeGWorld(world);
    CHECK(UpdateGWorld(&world, 0, &bounds, nullptr, nullptr, 0) == (GWorldFlags)gwFlagErr);
}

TEST_CASE("DisposePort: a disposed current port leaves none, and drawing does nothing")
{
    CGrafPtr port = CreateNewPort();
    SetPort(port);
    DisposePort(port);
    GrafPtr now = port;
    GetPort(&now);
    CHECK(now == nullptr);
    const Rect r = MakeRect(0, 0, 5, 5);
    PaintRect(&r);
    FrameOval(&r);
    MoveTo(1, 1);
    LineTo(3, 3);
    DrawString((ConstStr255Param) "\7nothing");
    ScrollRect(&r, 1, 1, nullptr);
    OpenRgn();
    CloseRgn(nullptr);
    CHECK(OpenPoly() == nullptr);
    Rect bounds = MakeRect(1, 2, 3, 4);
    CHECK(GetPortBounds(port, &bounds)->right == 0);
    CHECK(GetPortPixMap(port) == nullptr);
    int something = 0;
    CHECK(!IsValidPort(reinterpret_cast<CGrafPtr>(&something)));
    SetPort(reinterpret_cast<CGrafPtr>(&something));
    CHECK(GetQDGlobalsThePort() == nullptr);
}

TEST_CASE("DisposeGWorld, DisposePort: neither disposes of the other's, nor of a window's")
{
    TestPort pixels;
    DisposePort(pixels.port);
    DisposeGWorld(pixels.port);
    CHECK(IsValidPort(pixels.port));
    CGrafPtr bare = CreateNewPort();
    DisposeGWorld(bare);
    CHECK(IsValidPort(bare));
    DisposePort(bare);
}

TEST_CASE("SetOrigin: pixels and visible region keep their place, the clip region its coordinates")
{
    TestPort port;
    const Rect clip = MakeRect(0, 0, 10, 10);
    ClipRect(&clip);
    SetOrigin(100, 200);
    const Rect inOld = MakeRect(0, 0, 10, 10);
    PaintRect(&inOld);
    CHECK(BlackDifferences(port, [](int, int) { return false; }) == 0);
    const Rect all = MakeRect(-1000, -1000, 1000, 1000), corner = MakeRect(100, 200, 101, 201);
    ClipRect(&all);
    PaintRect(&corner);
    CHECK(BlackDifferences(port, [](int h, int v) { return h == 100 && v == 200; }) == 0);
    CHECK(PortPixels(port.port).base[0] == 0);
}

TEST_CASE("SetOrigin, MovePortTo: a port that was moved past the end of the coordinates comes back whole")
{
    TestPort port(40, 30);
    const Rect all = MakeRect(-32768, -32768, 32767, 32767), corner = MakeRect(39, 29, 40, 30);
    Rect bounds;
    RgnHandle visible = NewRgn();
    for (const Point origin : { Point{ 32760, 32760 }, Point{ 0, 32767 }, Point{ -32768, -32768 } }) {
        SetOrigin(origin.h, origin.v);
        CHECK(GetPortBounds(port.port, &bounds)->left == origin.h);
        CHECK(bounds.top == origin.v);
        SetOrigin(0, 0);
        CHECK(EqualRect(GetPortBounds(port.port, &bounds), &(*GetPortPixMap(port.port))->bounds));
        CHECK(bounds.right == 40);
        CHECK(bounds.bottom == 30);
        CHECK(EqualRect(GetRegionBounds(GetPortVisibleRegion(port.port, visible), &bounds),
                        &(*GetPortPixMap(port.port))->bounds));
    }
    DisposeRgn(visible);
    SetOrigin(32760, 32760); // nothing of it can be drawn in there
    PaintRect(&all);
    CHECK(ResizePixelPort(port.port, 50, 40));
    SetOrigin(0, 0);
    CHECK(BlackDifferences(port, [](int, int) { return false; }) == 0);
    PaintRect(&corner);
    CHECK(PortPixels(port.port).base[29 * 50 + 39] == 0);
    MovePortTo(32767, 32767);
    MovePortTo(0, 0);
    CHECK((*GetPortPixMap(port.port))->bounds.right == 50);
    CHECK((*GetPortPixMap(port.port))->bounds.bottom == 40);
}

TEST_CASE("PlacePort: LocalToGlobal follows it, whatever the origin")
{
    TestPort port;
    PlacePort(port.port, { 70, 50 });
    SetOrigin(10, 20);
    Point p = { 25, 13 };
    LocalToGlobal(&p);
    CHECK(p.h == 53);
    CHECK(p.v == 75);
    GlobalToLocal(&p);
    CHECK(p.h == 13);
    Rect r = MakeRect(10, 20, 12, 22);
    CHECK(QDLocalToGlobalRect(port.port, &r)->left == 50);
}

TEST_CASE("ResizePixelPort: keeps what overlaps; new pixels are white")
{
    TestPort port(10, 10);
    const Rect all = MakeRect(0, 0, 50, 50);
    PaintRect(&all);
    CHECK(ResizePixelPort(port.port, 20, 5));
    CHECK(BlackDifferences(port, [](int h, int) { return h < 10; }) == 0);
    Rect bounds;
    CHECK(GetPortBounds(port.port, &bounds)->right == 20);
    CHECK(!ResizePixelPort(port.port, -1, 5));
    CHECK(!ResizePixelPort(port.port, 20000, 5));
    CHECK(NewPixelPort(-1, 5) == nullptr);
    TestPort none(0, 0);
    PaintRect(&all);
}

struct Heard {
    std::vector<Rect> rects;
};

static void Hear(void* owner, CGrafPtr, const Rect& local)
{
    static_cast<Heard*>(owner)->rects.push_back(local);
}

TEST_CASE("SetPortOwner: the owner hears the clipped rectangle of each drawing, and the port is dirty until "
          "flushed")
{
    TestPort port;
    Heard heard;
    SetPortOwner(port.port, &heard, Hear);
    CHECK(PortOwner(port.port) == &heard);
    const Rect r = MakeRect(30, 20, 60, 60), outside = MakeRect(50, 50, 60, 60);
    PaintRect(&r);
    PaintRect(&outside);
    REQUIRE(heard.rects.size() == 1);
    CHECK(heard.rects[0].right == 40);
    CHECK(heard.rects[0].bottom == 30);
    CHECK(QDIsPortBuffered(port.port));
    CHECK(QDIsPortBufferDirty(port.port));
    RgnHandle dirty = NewRgn();
    CHECK(QDGetDirtyRegion(port.port, dirty) == noErr);
    CHECK(PtInRgn({ 25, 35 }, dirty));
    QDFlushPortBuffer(port.port, nullptr);
    CHECK(!QDIsPortBufferDirty(port.port));
    SetRectRgn(dirty, 0, 0, 3, 3);
    CHECK(QDSetDirtyRegion(port.port, dirty) == noErr);
    CHECK(QDIsPortBufferDirty(port.port));
    CHECK(heard.rects.size() == 2);
    CHECK(QDSetDirtyRegion(nullptr, dirty) == paramErr);
    DisposeRgn(dirty);
}

TEST_CASE("CopyBits: a destination that is not current tells its owner too")
{
    TestPort to, from;
    Heard heard;
    SetPortOwner(to.port, &heard, Hear);
    const Rect r = MakeRect(2, 2, 8, 9);
    CopyBits(GetPortBitMapForCopyBits(from.port), GetPortBitMapForCopyBits(to.port), &r, &r, srcCopy,
             nullptr);
    REQUIRE(heard.rects.size() == 1);
    CHECK(EqualRect(&heard.rects[0], &r));
}

TEST_CASE("GetMainDevice: has the screen's bounds")
{
    GDHandle device = GetMainDevice();
    BitMap screen;
    GetQDGlobalsScreenBits(&screen);
    CHECK((*device)->gdRect.right == lampblack::host::CurrentSettings().width);
    CHECK(EqualRect(&screen.bounds, &(*device)->gdRect));
    CHECK(GetNextDevice(device) == nullptr);
    CHECK(TestDeviceAttribute(device, mainScreen));
    CHECK(!TestDeviceAttribute(nullptr, mainScreen));
}

TEST_CASE("Random: the published sequence from seed 1")
{
    SetQDGlobalsRandomSeed(1);
    CHECK(Random() == 16807);
    CHECK(GetQDGlobalsRandomSeed() == 16807);
    Random();
    CHECK(GetQDGlobalsRandomSeed() == 282475249);
}

TEST_CASE("GetPenState: SetPenState puts all of it back")
{
    TestPort port;
    PenSize(3, 4);
    PenMode(patXor);
    MoveTo(5, 6);
    PenState state;
    GetPenState(&state);
    PenNormal();
    MoveTo(0, 0);
    SetPenState(&state);
    Point size, location;
    CHECK(GetPortPenSize(port.port, &size)->h == 3);
    CHECK(GetPortPenLocation(port.port, &location)->v == 6);
    CHECK(GetPortPenMode(port.port) == patXor);
}

TEST_CASE("GetCursor: the system's cursors exist, others do not; hiding nests")
{
    CHECK(GetCursor(watchCursor) != nullptr);
    CHECK(GetCursor(watchCursor) == GetCursor(watchCursor));
    CHECK(GetCursor(12345) == nullptr);
    SetCursor(*GetCursor(crossCursor));
    SetCursor(nullptr);
    HideCursor();
    ShowCursor();
    ShowCursor();
    ObscureCursor();
    MouseDidMove();
    InitCursor();
    CHECK(lampblack::host::CurrentThemeCursor() == 0);
}
