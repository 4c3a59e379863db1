// Cursors, as the machine shows them.
#include "CursorImage.h"
#include "Port.h"

#include <Carbon/MacMemory.h>
#include <Host.h>

#include <RealResourceFile.h>
#include <doctest/doctest.h>
#include <random>
#include <vector>

using namespace lampblack;
using namespace lampblack::quickdraw;

using ByteList = std::vector<uint8_t>;

static void Put(ByteList& ioBytes, std::initializer_list<int> inWords)
{
    for (const int word : inWords) {
        ioBytes.push_back((uint8_t)(word >> 8));
        ioBytes.push_back((uint8_t)word);
    }
}

// A 'crsr' of depth 4: the mask is the left half, the colours are red above and green below.
static ByteList MakeColorCursor()
{
    ByteList bytes;
    Put(bytes, { 0x8001, 0, 96, 0, 146, 0, 0, 0, 0, 0 });
    for (int row = 0; row < 16; ++row)
        Put(bytes, { 0x8000 });
    for (int row = 0; row < 16; ++row)
        Put(bytes, { 0xFF00 });
    Put(bytes, { 3, 4, 0, 0, 0, 0 }); // hot spot, table, ID
    Put(bytes, { 0, 0, 0x8008, 0, 0, 16, 16, 0, 0, 0, 0, 72, 0, 72, 0, 0, 4, 1, 4, 0, 0, 0, 274, 0, 0 });
    for (int row = 0; row < 16; ++row)
        bytes.insert(bytes.end(), 8, row < 8 ? 0x11 : 0x22);
    Put(bytes, { 0, 7, 0, 2, 0, 0xFFFF, 0xFFFF, 0xFFFF, 1, 0xFFFF, 0, 0, 2, 0, 0xFFFF, 0 });
    return bytes;
}

TEST_CASE("SetCCursor: the machine shows the colours of what the mask covers, at the hot spot")
{
    const CCrsrHandle cursor = ReadColorCursor(MakeColorCursor());
    REQUIRE(cursor);
    CHECK((*cursor)->crsr1Data[0] == (SInt16)0x8000);
    CHECK((*(*cursor)->crsrMap)->pixelSize == 4);
    SetCCursor(cursor);
    const host::ShownCursor shown = host::CurrentCursor();
    REQUIRE(shown.width == 16);
    CHECK(shown.hotSpot.v == 3);
    CHECK(shown.hotSpot.h == 4);
    CHECK(shown.pixels[0] == 0xFFFF0000);
    CHECK(shown.pixels[15 * 16 + 7] == 0xFF00FF00);
    CHECK(shown.pixels[8] == 0);
    DisposeCCursor(cursor);
    DisposeCCursor(cursor);
    SetCCursor(cursor);
    InitCursor();
    CHECK(host::CurrentCursor().width == 0);
}

TEST_CASE("GetCCursor: a resource that ends early, or tells of places beyond its end, is none")
{
    const ByteList whole = MakeColorCursor();
    for (size_t size = 0; size < whole.size(); ++size) {
        const ByteList part(whole.begin(), whole.begin() + (ptrdiff_t)size);
        CHECK(ReadColorCursor(part) == nullptr);
    }
    for (const size_t place : { 0, 2, 6, 96 + 4, 96 + 10, 96 + 32, 96 + 42 }) {
        ByteList bad = whole;
        bad[place] = 0x7F;
        CHECK(ReadColorCursor(bad) == nullptr);
    }
    CHECK(GetCCursor(12345) == nullptr);
    CHECK(GetCCursor(-32768) == nullptr);
}

TEST_CASE("SetCCursor: a record that the application broke shows nothing new")
{
    const CCrsrHandle cursor = ReadColorCursor(MakeColorCursor());
    REQUIRE(cursor);
    SetCursor(*GetCursor(crossCursor));
    const std::vector<UInt32> before = host::CurrentCursor().pixels;
    (*(*cursor)->crsrMap)->bounds = { 0, 0, 32767, 32767 };
    SetCCursor(cursor);
    CHECK(host::CurrentCursor().pixels == before);
    DisposeHandle((*cursor)->crsrData);
    SetCCursor(cursor);
    CHECK(host::CurrentCursor().pixels == before);
    DisposeCCursor(cursor);
    SetCCursor(nullptr);
    int something[40] = {};
    SetCCursor(reinterpret_cast<CCrsrHandle>(&something));
    InitCursor();
}

TEST_CASE("SetCursor: black where the data are, white where only the mask is, nothing elsewhere")
{
    Cursor cursor = {};
    cursor.data[2] = 0x4000;
    cursor.mask[2] = (SInt16)0xE000;
    cursor.data[3] = 0x0001; // inverts the screen there: black
    cursor.hotSpot = { 99, -5 };
    SetCursor(&cursor);
    const host::ShownCursor shown = host::CurrentCursor();
    CHECK(shown.pixels[2 * 16 + 0] == 0xFFFFFFFF);
    CHECK(shown.pixels[2 * 16 + 1] == 0xFF000000);
    CHECK(shown.pixels[2 * 16 + 3] == 0);
    CHECK(shown.pixels[3 * 16 + 15] == 0xFF000000);
    CHECK(shown.hotSpot.v == 15);
    CHECK(shown.hotSpot.h == 0);
    InitCursor();
}

TEST_CASE("HideCursor, ShowCursor: nest, and showing more often does not count")
{
    InitCursor();
    CHECK(host::CurrentCursor().visible);
    HideCursor();
    HideCursor();
    ShowCursor();
    CHECK(!host::CurrentCursor().visible);
    ShowCursor();
    CHECK(host::CurrentCursor().visible);
    ShowCursor();
    HideCursor();
    CHECK(!host::CurrentCursor().visible);
    InitCursor();
    CHECK(host::CurrentCursor().visible);
}

TEST_CASE("ObscureCursor: until the mouse moves")
{
    ObscureCursor();
    CHECK(!host::CurrentCursor().visible);
    MouseDidMove();
    CHECK(host::CurrentCursor().visible);
}

TEST_CASE("ShieldCursor: hides a cursor in the rectangle at once, another one when it moves")
{
    host::Input ignored;
    host::MoveMouse({ 100, 100 });
    while (host::Machine().takeInput(&ignored)) {
    }
    const Rect around = { 90, 90, 110, 110 }, away = { 300, 300, 400, 400 }, local = { 0, 0, 20, 20 };
    ShieldCursor(&around, { 0, 0 });
    CHECK(!host::CurrentCursor().visible);
    ShowCursor();
    CHECK(host::CurrentCursor().visible);
    ShieldCursor(&local, { -95, -95 }); // a port whose top left is (95,95) on the screen
    CHECK(!host::CurrentCursor().visible);
    ShowCursor();
    ShieldCursor(&away, { 0, 0 });
    CHECK(host::CurrentCursor().visible);
    MouseDidMove();
    CHECK(!host::CurrentCursor().visible);
    ShowCursor();
    CHECK(host::CurrentCursor().visible);
    ShieldCursor(nullptr, { 0, 0 });
    CHECK(host::CurrentCursor().visible);
}

// How many of a type can be shown; each one that is made is shown and disposed of.
static int ShowAll(OSType inType, bool (*inShow)(SInt16 inID))
{
    int shown = 0;
    for (SInt16 i = 1; i <= Count1Resources(inType); ++i) {
        SInt16 id = 0;
        GetResInfo(Get1IndResource(inType, i), &id, nullptr, nullptr);
        shown += inShow(id);
    }
    return shown;
}

static bool ShowColored(SInt16 inID)
{
    const CCrsrHandle cursor = GetCCursor(inID);
    SetCCursor(cursor);
    DisposeCCursor(cursor);
    return cursor && host::CurrentCursor().width == 16;
}

static bool ShowPlain(SInt16 inID)
{
    const CursHandle cursor = GetCursor(inID);
    if (cursor)
        SetCursor(*cursor);
    return cursor && host::CurrentCursor().width == 16;
}

TEST_CASE("GetCCursor, GetCursor: all cursors of real files can be shown")
{
    static const struct {
        const char* file;
        int colored, plain;
    } kFiles[] = { { "macssh/telnet.rsrc", 3, 8 }, { "pararena2/Pararena.project.rsrc.bin", 12, 13 } };
    for (const auto& each : kFiles) {
        const RealResourceFile file(each.file);
        if (!file.IsOpen())
            continue;
        CHECK(ShowAll('crsr', ShowColored) == each.colored);
        CHECK(ShowAll('CURS', ShowPlain) == each.plain);
    }
    InitCursor();
}
