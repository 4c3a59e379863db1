// Offscreen worlds: their depths, tables, flags and errors.
#include "TestWorld.h"

#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>

#include <string>

using namespace lampblack::quickdraw;

namespace {

Rect Bounds(int width, int height)
{
    return { 0, 0, (short)height, (short)width };
}

QDErr Make(int depth, const Rect& bounds)
{
    GWorldPtr world = (GWorldPtr)1;
    const QDErr error = NewGWorld(&world, (short)depth, &bounds, nullptr, nullptr, 0);
    if (error)
        CHECK(world == nullptr);
    CHECK(QDError() == error);
    DisposeGWorld(world);
    return error;
}

} // namespace

TEST_CASE("NewGWorld: rows of indexes are whole words, direct rows have no slack")
{
    struct {
        int depth, width, rowBytes;
    } static const kRows[] = { { 1, 1, 4 }, { 1, 33, 8 },  { 2, 17, 8 }, { 4, 9, 8 },
                               { 8, 5, 8 }, { 16, 5, 10 }, { 32, 5, 20 } };
    for (const auto& row : kRows) {
        const TestWorld world(row.depth, row.width, 3);
        CAPTURE(row.depth);
        CHECK(GetPixRowBytes(world.Map()) == row.rowBytes);
        CHECK((UInt16)(**world.Map()).rowBytes == (0x8000 | row.rowBytes));
        CHECK((**world.Map()).pixelSize == row.depth);
        CHECK((**world.Map()).pixelType == (row.depth >= 16 ? 16 : 0));
        CHECK(LockPixels(world.Map()));
    }
}

TEST_CASE("NewGWorld: depth 0 is that of the screen, and a standard table belongs to indexes")
{
    CHECK(TestWorld(0).Depth() == 32);
    const TestWorld world(8);
    REQUIRE(world.Table());
    CHECK((**world.Table()).ctSize == 255);
    CHECK((**world.Table()).ctSeed == 8);
    CHECK((**world.Table()).ctTable[0].rgb.red == 0xFFFF);
    CHECK((**world.Table()).ctTable[255].rgb.red == 0);
}

TEST_CASE("NewGWorld: a given table is copied")
{
    std::mt19937 random(1);
    const CTabHandle table = RandomTable(random, 4);
    const RGBColor fifth = (**table).ctTable[5].rgb;
    const SInt32 seed = (**table).ctSeed;
    const TestWorld world(4, 20, 20, table);
    DisposeCTable(table);
    CHECK(world.Table() != table);
    CHECK((**world.Table()).ctTable[5].rgb.green == fifth.green);
    CHECK((**world.Table()).ctSeed == seed);
    RGBForeColor(&fifth);
    const Rect all = Bounds(20, 20);
    PaintRect(&all);
    CHECK(world.At(19, 19) == 5);
}

TEST_CASE("NewGWorld: of a table that is too long the first entries are taken")
{
    const CTabHandle table = GetCTable(8);
    const TestWorld world(2, 20, 20, table);
    DisposeCTable(table);
    CHECK((**world.Table()).ctSize == 3);
    const RGBColor black = { 0, 0, 0 };
    RGBForeColor(&black);
    const Rect all = Bounds(20, 20);
    PaintRect(&all); // the nearest of four light colours
    CHECK(world.At(5, 5) == 3);
}

TEST_CASE("NewGWorld: depths, rectangles and rows that cannot be are refused")
{
    for (const int depth : { -1, 3, 5, 24, 33, 64, 32767 })
        CHECK(Make(depth, Bounds(10, 10)) == cDepthErr);
    CHECK(Make(8, Bounds(0, 10)) == paramErr);
    CHECK(Make(8, { 10, 10, 5, 20 }) == paramErr);
    CHECK(Make(8, Bounds(16384, 1)) == paramErr);
    CHECK(Make(8, Bounds(16380, 1)) == noErr);
    CHECK(Make(1, Bounds(32767, 1)) == noErr);
    CHECK(Make(32, Bounds(4096, 1)) == paramErr);
    CHECK(Make(1, { -32768, -32768, 32767, 32767 }) == paramErr);
    GWorldPtr world = nullptr;
    CHECK(NewGWorld(&world, 8, nullptr, nullptr, nullptr, 0) == paramErr);
    const Rect bounds = Bounds(4, 4);
    CHECK(NewGWorld(nullptr, 8, &bounds, nullptr, nullptr, 0) == paramErr);
}

TEST_CASE("NewGWorld: a foreign table is none, and the standard one serves")
{
    int foreign = 0;
    const TestWorld world(2, 4, 4, reinterpret_cast<CTabHandle>(&foreign));
    CHECK((**world.Table()).ctSize == 3);
}

TEST_CASE("NewGWorld: a world brings a device of its depth unless it is given one")
{
    const Rect bounds = Bounds(4, 4);
    for (const int depth : { 1, 8, 32 }) {
        const TestWorld world(depth, bounds);
        const GDHandle device = GetGWorldDevice(world.world);
        CHECK(device != GetMainDevice());
        CHECK((**device).gdType == (depth <= 8 ? clutType : directType));
        CHECK((**device).gdPMap == world.Map());
        CHECK(TestDeviceAttribute(device, gdDevType) == (depth > 1));
        CHECK(GetGDevice() == device);
    }
    const TestWorld lender(8, bounds);
    GWorldPtr world = nullptr;
    REQUIRE(NewGWorld(&world, 4, &bounds, nullptr, GetGWorldDevice(lender.world), noNewDevice) == noErr);
    CHECK(GetGWorldDevice(world) == GetGWorldDevice(lender.world));
    DisposeGWorld(world);
    REQUIRE(NewGWorld(&world, 4, &bounds, nullptr, nullptr, noNewDevice) == noErr);
    CHECK(GetGWorldDevice(world) != nullptr);
    DisposeGWorld(world);
}

TEST_CASE("UpdateGWorld: what stays the same is answered by 0, a new place too")
{
    TestWorld world(8, 10, 10);
    world.Put(3, 3, 77);
    const Rect moved = { 100, 100, 110, 110 };
    CHECK(UpdateGWorld(&world.world, 8, &moved, nullptr, nullptr, 0) == 0);
    CHECK(world.At(103, 103) == 77);
    CHECK((**GetGWorldDevice(world.world)).gdRect.left == 100);
}

TEST_CASE("UpdateGWorld: clipPix keeps pixels, stretchPix stretches them, neither clears them")
{
    TestWorld world(8, 4, 4);
    for (const GWorldFlags flags : { (GWorldFlags)clipPix, (GWorldFlags)stretchPix, (GWorldFlags)0 }) {
        const Rect small = Bounds(4, 4), large = Bounds(8, 8);
        UpdateGWorld(&world.world, 8, &small, nullptr, nullptr, 0);
        world.Put(0, 0, 5);
        world.Put(3, 3, 9);
        CHECK(UpdateGWorld(&world.world, 8, &large, nullptr, nullptr, flags) ==
              (reallocPix | newRowBytes | flags));
        CHECK(world.At(0, 0) == (flags ? 5 : 0));
        CHECK(world.At(3, 3) == (flags & clipPix ? 9 : 0));
        CHECK(world.At(7, 7) == (flags & stretchPix ? 9 : 0));
    }
}

TEST_CASE("UpdateGWorld: a new depth keeps colours as near as it can show them")
{
    TestWorld world(32, 4, 4);
    const Rect bounds = Bounds(4, 4);
    world.Put(1, 1, 0xFF0000);
    world.Put(2, 2, 0x33CC99);
    const GWorldFlags changed = UpdateGWorld(&world.world, 8, &bounds, nullptr, nullptr, clipPix);
    CHECK(changed == (reallocPix | newDepth | mapPix | newRowBytes | clipPix));
    CHECK(ColorIn(world, world.At(1, 1)) == 0xFF0000);
    CHECK(ColorIn(world, world.At(2, 2)) == 0x33CC99);
    CHECK((**GetGWorldDevice(world.world)).gdType == clutType);
    CHECK(UpdateGWorld(&world.world, 16, &bounds, nullptr, nullptr, 0) ==
          (reallocPix | newDepth | newRowBytes));
    CHECK(world.Depth() == 16);
    CHECK(world.Table() == nullptr);
    CHECK(world.At(1, 1) == 0x7C00);
    RGBColor red = { 0xFFFF, 0, 0 };
    RGBForeColor(&red); // the port's colours follow its depth
    const Rect all = bounds;
    PaintRect(&all);
    CHECK(world.At(0, 0) == 0x7C00);
}

TEST_CASE("UpdateGWorld: a new table keeps colours, under other indexes")
{
    TestWorld world(8, 4, 4);
    const Rect bounds = Bounds(4, 4);
    world.Put(1, 1, PixelIn(world, 0x999999));
    const CTabHandle grays = GetCTable(40);
    CHECK(UpdateGWorld(&world.world, 8, &bounds, grays, nullptr, 0) == (reallocPix | mapPix));
    DisposeCTable(grays);
    CHECK(world.At(1, 1) == 0xFF - 0x99);
    CHECK((**world.Table()).ctSeed == 40);
}

TEST_CASE("UpdateGWorld: ditherPix mixes what a depth lacks")
{
    TestWorld world(32, 16, 16);
    const Rect bounds = Bounds(16, 16);
    const RGBColor gray = { 0x8080, 0x8080, 0x8080 };
    RGBForeColor(&gray);
    PaintRect(&bounds);
    CHECK((UpdateGWorld(&world.world, 1, &bounds, nullptr, nullptr, clipPix | ditherPix) & ditherPix) != 0);
    int black = 0;
    for (int i = 0; i < 256; ++i)
        black += (int)world.At(i % 16, i / 16);
    CHECK(black > 108);
    CHECK(black < 148);
}

TEST_CASE("UpdateGWorld: a device that is given says depth and colours")
{
    TestWorld world(32, 4, 4), model(4, 4, 4), grays(8, 4, 4, GetCTable(40));
    const Rect bounds = Bounds(4, 4);
    CHECK((UpdateGWorld(&world.world, 8, &bounds, nullptr, GetGWorldDevice(model.world), 0) &
           (newDepth | gwFlagErr)) == newDepth);
    CHECK(GetPixDepth(world.Map()) == 4);
    UpdateGWorld(&world.world, 32, &bounds, nullptr, GetGWorldDevice(grays.world), 0);
    CHECK(GetPixDepth(world.Map()) == 8);
    CHECK((**(**world.Map()).pmTable).ctSeed == (**(**grays.Map()).pmTable).ctSeed);
    CHECK((**(**world.Map()).pmTable).ctTable[1].rgb.red == (**(**world.Map()).pmTable).ctTable[1].rgb.blue);
    const auto foreign = (GDHandle)&bounds; // no device: the depth says it
    CHECK((UpdateGWorld(&world.world, 2, &bounds, nullptr, foreign, 0) & newDepth) != 0);
    CHECK(GetPixDepth(world.Map()) == 2);
}

TEST_CASE("UpdateGWorld: keeps the pixels of a world whose origin is at the end of the coordinates")
{
    for (const GWorldFlags flags : { (GWorldFlags)clipPix, (GWorldFlags)stretchPix }) {
        TestWorld world(8, 10, 10);
        const Rect bounds = Bounds(10, 10), larger = Bounds(20, 20);
        PaintRect(&bounds);
        SetOrigin(32767, 32767);
        UpdateGWorld(&world.world, 8, &larger, nullptr, nullptr, flags);
        RGBColor first = { 1, 1, 1 };
        GetCPixel(9, 9, &first);
        CHECK(first.red == 0);
    }
}

TEST_CASE("UpdateGWorld: what is no world or cannot be changes nothing and says why")
{
    TestWorld world(8, 4, 4);
    const Rect bounds = Bounds(5, 5), empty = Bounds(0, 5);
    const PixMapHandle map = world.Map();
    CHECK((UpdateGWorld(&world.world, 7, &bounds, nullptr, nullptr, 0) & gwFlagErr) != 0);
    CHECK(QDError() == cDepthErr);
    CHECK((UpdateGWorld(&world.world, 8, &empty, nullptr, nullptr, 0) & gwFlagErr) != 0);
    CHECK(QDError() == paramErr);
    CHECK((UpdateGWorld(nullptr, 8, &bounds, nullptr, nullptr, 0) & gwFlagErr) != 0);
    GWorldPtr foreign = (GWorldPtr)&bounds;
    CHECK((UpdateGWorld(&foreign, 8, &bounds, nullptr, nullptr, 0) & gwFlagErr) != 0);
    CHECK(world.Map() == map);
    CHECK(GetPixRowBytes(map) == 4);
}

TEST_CASE("NewGWorldFromPtr: drawing goes into the caller's bytes, between their rows' slack nothing")
{
    std::vector<uint8_t> bytes(12 * 3, 0xCC);
    const Rect bounds = Bounds(5, 3);
    GWorldPtr world = nullptr;
    REQUIRE(NewGWorldFromPtr(&world, 8, &bounds, nullptr, nullptr, 0, (Ptr)bytes.data(), 12) == noErr);
    CGrafPtr old;
    GetPort(&old);
    SetPort(world);
    PaintRect(&bounds);
    SetPort(old);
    DisposeGWorld(world);
    for (size_t i = 0; i < bytes.size(); ++i)
        CHECK(bytes[i] == (i % 12 < 5 ? 255 : 0xCC));
}

TEST_CASE("NewGWorldFromPtr: bytes that cannot hold the pixels are refused")
{
    alignas(8) uint8_t bytes[64] = {};
    const Rect bounds = Bounds(5, 3);
    const auto make = [&](UInt32 depth, uint8_t* base, SInt32 rowBytes) {
        GWorldPtr world = nullptr;
        const QDErr error =
            NewGWorldFromPtr(&world, depth, &bounds, nullptr, nullptr, 0, (Ptr)base, rowBytes);
        CHECK((world == nullptr) == (error != noErr));
        DisposeGWorld(world);
        return error;
    };
    CHECK(make(8, bytes, 6) == noErr);
    CHECK(make(8, bytes, 4) == paramErr);
    CHECK(make(8, bytes, 7) == paramErr);
    CHECK(make(8, bytes, -6) == paramErr);
    CHECK(make(8, bytes, 16384) == paramErr);
    CHECK(make(32, bytes, 22) == paramErr);
    CHECK(make(32, bytes + 2, 20) == paramErr);
    CHECK(make(8, nullptr, 8) == paramErr);
    CHECK(make(0x42475241, bytes, 20) == cDepthErr);
}

TEST_CASE("NewScreenBuffer: a buffer like the screen, without a port of its own to see")
{
    const Rect global = Bounds(30, 20);
    GDHandle device = nullptr;
    PixMapHandle map = nullptr;
    REQUIRE(NewScreenBuffer(&global, false, &device, &map) == noErr);
    CHECK(device == GetMainDevice());
    CHECK(GetPixDepth(map) == 32);
    CHECK(GetPixBaseAddr(map) != nullptr);
    DisposeScreenBuffer(map);
    CHECK(GetPixBaseAddr(map) == nullptr);
    CHECK(NewTempScreenBuffer(&global, true, &device, nullptr) == paramErr);
    CHECK(NewTempScreenBuffer(nullptr, true, &device, &map) == paramErr);
    CHECK(map == nullptr);
}

TEST_CASE("GetPixelsState: is what was set, and pixels stay")
{
    const TestWorld world(8);
    const PixMapHandle map = world.Map();
    AllowPurgePixels(map);
    CHECK(GetPixelsState(map) == pixelsPurgeable);
    CHECK(LockPixels(map));
    CHECK(GetPixelsState(map) == (pixelsPurgeable | pixelsLocked));
    SetPixelsState(map, 0);
    CHECK(GetPixelsState(map) == 0);
    CHECK_FALSE(LockPixels(nullptr));
    CHECK(GetPixRowBytes(nullptr) == 0);
}

TEST_CASE("CTabChanged: drawing follows entries that were changed in place")
{
    const TestWorld world(4, 8, 8);
    const RGBColor odd = { 0x1234, 0x5678, 0x9ABC };
    const Rect all = Bounds(8, 8);
    RGBForeColor(&odd);
    (**world.Table()).ctTable[3].rgb = odd;
    CTabChanged(world.Table());
    PaintRect(&all);
    CHECK(world.At(4, 4) == 3);
    RGBColor color;
    GetCPixel(4, 4, &color);
    CHECK(color.blue == 0x9ABC);
}

TEST_CASE("pmTable: drawing follows a table that the application put there, and outlives it")
{
    const TestWorld world(8, 8, 8);
    const CTabHandle own = world.Table();
    const CTabHandle grays = GetCTable(40);
    (**world.Map()).pmTable = grays;
    const RGBColor gray = { 0x4040, 0x4040, 0x4040 };
    const Rect all = Bounds(8, 8);
    RGBForeColor(&gray);
    PaintRect(&all);
    CHECK(world.At(1, 1) == 0xFF - 0x40);
    DisposeCTable(grays);
    PaintRect(&all);
    CHECK(world.At(1, 1) == 0xFF - 0x40);
    (**world.Map()).pmTable = own;
    PaintRect(&all);
    CHECK(ColorIn(world, world.At(1, 1)) == 0x444444);
}

TEST_CASE("NewPixMap: a map of the application's own is like the device's, with a table that it owns")
{
    const TestWorld world(8);
    const PixMapHandle map = NewPixMap();
    REQUIRE(map);
    CHECK((**map).pixelSize == 8);
    CHECK((**map).baseAddr == nullptr);
    CHECK_FALSE(LockPixels(map));
    REQUIRE((**map).pmTable);
    CHECK((**(**map).pmTable).ctSize == -1);
    CopyPixMap(world.Map(), map);
    CHECK((**map).pmTable != world.Table());
    CHECK((**(**map).pmTable).ctSize == 255);
    CHECK(GetPixBaseAddr(map) == GetPixBaseAddr(world.Map()));
    DisposePixMap(map);
    CHECK(GetPixDepth(map) == 0);
    DisposePixMap(map);
    DisposePixMap(world.Map()); // a port's own stays
    CHECK(GetPixDepth(world.Map()) == 8);
    CopyPixMap(nullptr, world.Map());
}

TEST_CASE("NewGDevice: a device of the application's own has a map like the current one's")
{
    const GDHandle device = NewGDevice(5, -1);
    REQUIRE(device);
    CHECK((**device).gdRefNum == 5);
    CHECK((**(**device).gdPMap).pixelSize == 32);
    CHECK_FALSE(TestDeviceAttribute(device, screenDevice));
    SetDeviceAttribute(device, screenDevice, true);
    CHECK(TestDeviceAttribute(device, screenDevice));
    SetDeviceAttribute(device, 16, true);
    SetGDevice(device);
    CHECK(GetGDevice() == device);
    DisposeGDevice(device);
    CHECK(GetGDevice() == GetMainDevice());
    DisposeGDevice(device);
    DisposeGDevice(GetMainDevice());
    CHECK(NewGDevice(0, 128) == nullptr);
    CHECK(QDError() == cDevErr);
}

TEST_CASE("Color2Index: a current device whose map is gone counts as direct")
{
    const GDHandle device = NewGDevice(0, -1);
    DisposePixMap((**device).gdPMap);
    SetGDevice(device);
    const RGBColor red = { 0xFFFF, 0, 0 };
    CHECK(Color2Index(&red) == 0xFF0000);
    DisposeGDevice(device);
}

TEST_CASE("HasDepth: the screen has depth 32 in colour, and no other")
{
    CHECK(HasDepth(GetMainDevice(), 32, 1, 1) != 0);
    CHECK(HasDepth(GetMainDevice(), 32, 0, 0) != 0);
    CHECK(HasDepth(GetMainDevice(), 32, 1, 0) == 0);
    CHECK(HasDepth(GetMainDevice(), 8, 0, 0) == 0);
    CHECK(SetDepth(GetMainDevice(), 32, 0, 0) == noErr);
    CHECK(SetDepth(GetMainDevice(), 8, 0, 0) == paramErr);
}
