// Pixel patterns: resources, what they draw at every depth, and references that are none.
#include "PixelPatterns.h"
#include "TestWorld.h"

#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>
#include <Carbon/Resources.h>

#include <resources/Container.h>
#include <resources/ResourceFork.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

using namespace lampblack::quickdraw;

namespace {

constexpr int kDepths[] = { 1, 2, 4, 8, 16, 32 };

// The published bytes of a pattern of type 1 with 8 bits a pixel: pixel (h, v) is the index h + v * width.
std::vector<uint8_t> PatternBytes(int width, int height, int colors, short type = 1)
{
    lampblack::foundation::BigEndianWriter out;
    const uint32_t data = 28 + 50, table = data + (uint32_t)(width * height);
    out.U16((uint16_t)type);
    out.U32(28);
    out.U32(data);
    out.Zeros(10);
    for (int i = 0; i < 8; ++i)
        out.U8((uint8_t)(0x80 >> i));
    out.U32(0);
    out.U16((uint16_t)(0x8000 | width));
    for (const int side : { 0, 0, height, width })
        out.U16((uint16_t)side);
    out.Zeros(4 + 4);
    out.U32(72 << 16);
    out.U32(72 << 16);
    out.U16(0);
    out.U16(8);
    out.U16(1);
    out.U16(8);
    out.U32(0);
    out.U32(table);
    out.U32(0);
    for (int i = 0; i < width * height; ++i)
        out.U8((uint8_t)i);
    out.U32(77);
    out.U16(0);
    out.U16((uint16_t)(colors - 1));
    for (int i = 0; i < colors; ++i) {
        out.U16((uint16_t)i);
        for (const int channel : { i * 37, i * 91, 255 - i })
            out.U16((uint16_t)((channel & 0xFF) * 0x101));
    }
    return out.Data();
}

uint32_t EntryOf(int i)
{
    return (uint32_t)(i * 37 & 0xFF) << 16 | (uint32_t)(i * 91 & 0xFF) << 8 | (uint32_t)(255 - i);
}

struct OwnPattern {
    explicit OwnPattern(PixPatHandle inPattern) : handle(inPattern) { REQUIRE(handle); }
    ~OwnPattern() { DisposePixPat(handle); }
    PixPatHandle handle;
};

Rect All(const TestWorld& world)
{
    Rect bounds;
    return *GetPortBounds(world.world, &bounds);
}

} // namespace

TEST_CASE("FillCRect: a pixel pattern repeats from the origin, in the nearest colours of each depth")
{
    const OwnPattern pattern(PatternFromBytes(PatternBytes(16, 8, 128)));
    for (const int depth : kDepths) {
        const TestWorld world(depth, Rect{ -3, -5, 30, 40 });
        const Rect all = All(world);
        QDSetPatternOrigin({ 2, -1 });
        FillCRect(&all, pattern.handle);
        int errors = 0;
        for (int v = all.top; v < all.bottom; ++v)
            for (int h = all.left; h < all.right; ++h)
                errors += world.At(h, v) != PixelIn(world, EntryOf(((h + 1) & 15) + ((v - 2) & 7) * 16));
        CAPTURE(depth);
        CHECK(errors == 0);
    }
}

TEST_CASE("PenPixPat: modes combine the bits of pixels, black being set")
{
    const OwnPattern pattern(PatternFromBytes(PatternBytes(8, 8, 64)));
    std::mt19937 random(4);
    for (const int depth : kDepths)
        for (short mode = patCopy; mode <= notPatBic; ++mode) {
            const TestWorld world(depth, 21, 9);
            const Rect all = All(world);
            std::vector<uint32_t> old;
            for (int i = 0; i < 21 * 9; ++i)
                old.push_back((uint32_t)random() & BitsOfDepth(depth));
            for (int i = 0; i < 21 * 9; ++i)
                world.Put(i % 21, i / 21, old[(size_t)i]);
            PenPixPat(pattern.handle);
            PenMode(mode);
            PaintRect(&all);
            const uint32_t bits = BitsOfDepth(depth);
            int errors = 0;
            for (int i = 0; i < 21 * 9; ++i) {
                const int h = i % 21, v = i / 21;
                uint32_t source = PixelIn(world, EntryOf((h & 7) + (v & 7) * 8));
                const uint32_t flip = (depth >= 16) != ((mode & 4) != 0) ? bits : 0;
                source ^= flip; // now 1 means set
                const uint32_t d = old[(size_t)i], black = depth >= 16 ? 0 : bits, white = black ^ bits;
                const uint32_t of[4] = { (source & black) | (~source & white),
                                         (source & black) | (~source & d), source ^ d,
                                         (source & white) | (~source & d) };
                errors += world.At(h, v) != (of[mode & 3] & bits);
            }
            CAPTURE(depth);
            CAPTURE(mode);
            CHECK(errors == 0);
        }
}

TEST_CASE("BackPixPat: Erase draws it, BackPat and PenPat go back to bits")
{
    const OwnPattern pattern(PatternFromBytes(PatternBytes(8, 8, 64)));
    const TestWorld world(32, 16, 8);
    const Rect all = All(world);
    BackPixPat(pattern.handle);
    EraseRect(&all);
    CHECK(world.At(9, 2) == EntryOf(17));
    Pattern white;
    BackPat(GetQDGlobalsWhite(&white));
    EraseRect(&all);
    CHECK(world.At(9, 2) == 0xFFFFFF);
    PenPixPat(pattern.handle);
    PaintRect(&all);
    CHECK(world.At(9, 2) == EntryOf(17));
    PenState state;
    GetPenState(&state);
    SetPenState(&state); // keeps the pixels
    EraseRect(&all);
    MoveTo(0, 2);
    LineTo(15, 2);
    CHECK(world.At(9, 2) == EntryOf(17));
    PenNormal();
    PaintRect(&all);
    CHECK(world.At(9, 2) == 0);
}

TEST_CASE("PenPixPat: a pattern that was disposed of leaves its bits behind")
{
    const TestWorld world(32, 16, 8);
    const Rect all = All(world);
    PixPatHandle pattern = PatternFromBytes(PatternBytes(8, 8, 64));
    PenPixPat(pattern);
    DisposePixPat(pattern);
    PaintRect(&all);
    CHECK(world.At(2, 2) == 0);
    CHECK(world.At(3, 2) == 0xFFFFFF);
    PenPixPat(pattern);
    PenPixPat(nullptr);
    FillCRect(&all, pattern);
    FillCRect(nullptr, pattern);
    DisposePixPat(pattern);
    CHECK(world.At(2, 2) == 0);
}

TEST_CASE("FillCOval: every shape takes a pixel pattern")
{
    const OwnPattern pattern(PatternFromBytes(PatternBytes(8, 8, 64)));
    const TestWorld world(8, 16, 16);
    const Rect all = All(world);
    const RgnHandle region = NewRgn();
    RectRgn(region, &all);
    const PolyHandle polygon = OpenPoly();
    MoveTo(0, 0);
    LineTo(16, 0);
    LineTo(16, 16);
    LineTo(0, 16);
    LineTo(0, 0);
    ClosePoly();
    const auto draws = [&](auto fill) {
        EraseRect(&all);
        fill();
        return world.At(8, 8) == PixelIn(world, EntryOf(0)) && world.At(9, 8) == PixelIn(world, EntryOf(1));
    };
    CHECK(draws([&] { FillCOval(&all, pattern.handle); }));
    CHECK(draws([&] { FillCRoundRect(&all, 4, 4, pattern.handle); }));
    CHECK(draws([&] { FillCArc(&all, 0, 360, pattern.handle); }));
    CHECK(draws([&] { FillCRgn(region, pattern.handle); }));
    CHECK(draws([&] { FillCPoly(polygon, pattern.handle); }));
    KillPoly(polygon);
    DisposeRgn(region);
}

TEST_CASE("MakeRGBPat: is solid where pixels are direct and a mixture where they are not")
{
    const OwnPattern pattern(NewPixPat());
    const RGBColor color = { 0x8080, 0x8080, 0x8080 };
    MakeRGBPat(pattern.handle, &color);
    CHECK((**pattern.handle).patType == 2);
    {
        const TestWorld world(32, 8, 8);
        const Rect all = All(world);
        FillCRect(&all, pattern.handle);
        CHECK(world.At(3, 3) == 0x808080);
        CHECK(world.At(4, 3) == 0x808080);
    }
    const TestWorld world(1, 64, 64);
    const Rect all = All(world);
    FillCRect(&all, pattern.handle);
    int black = 0;
    for (int i = 0; i < 64 * 64; ++i)
        black += (int)world.At(i % 64, i / 64);
    CHECK(black > 64 * 64 * 2 / 5);
    CHECK(black < 64 * 64 * 3 / 5);
}

TEST_CASE("CopyPixPat: the copy stands alone; PixPatChanged makes new pixels show")
{
    const OwnPattern pattern(PatternFromBytes(PatternBytes(8, 8, 64))), copy(NewPixPat());
    const TestWorld world(32, 8, 8);
    const Rect all = All(world);
    CopyPixPat(pattern.handle, copy.handle);
    FillCRect(&all, copy.handle);
    CHECK(world.At(1, 1) == EntryOf(9));
    (*(**copy.handle).patData)[9] = 20;
    PixPatChanged(copy.handle);
    FillCRect(&all, copy.handle);
    CHECK(world.At(1, 1) == EntryOf(20));
    FillCRect(&all, pattern.handle);
    CHECK(world.At(1, 1) == EntryOf(9));
    CopyPixPat(nullptr, copy.handle);
    CopyPixPat(copy.handle, copy.handle);
    FillCRect(&all, copy.handle);
    CHECK(world.At(1, 1) == EntryOf(20));
}

TEST_CASE("GetPortPenPixPat: answers the pixels, or an old pattern as type 0")
{
    const OwnPattern pattern(PatternFromBytes(PatternBytes(8, 8, 64))), answer(NewPixPat());
    const TestWorld world(32);
    PenPixPat(pattern.handle);
    CHECK(GetPortPenPixPat(world.world, answer.handle) == answer.handle);
    CHECK((**answer.handle).patType == 1);
    CHECK(SourceOf(answer.handle).kind == PatternKind::Pixels);
    GetPortBackPixPat(world.world, answer.handle);
    CHECK((**answer.handle).patType == 0);
    CHECK((**answer.handle).pat1Data.pat[0] == 0);
    SetPortBackPixPat(world.world, pattern.handle);
    GetPortBackPixPat(world.world, answer.handle);
    CHECK((**answer.handle).patType == 1);
    SetPortPenPixPat(nullptr, pattern.handle);
    GetPortPenPixPat(nullptr, nullptr);
}

TEST_CASE("FillCRect: a pattern whose map an application broke draws its bits")
{
    const OwnPattern pattern(PatternFromBytes(PatternBytes(8, 8, 64)));
    const TestWorld world(32, 8, 8);
    const Rect all = All(world);
    const auto draws = [&] {
        PixPatChanged(pattern.handle);
        FillCRect(&all, pattern.handle);
        return world.At(0, 0) == 0 && world.At(1, 0) == 0xFFFFFF;
    };
    PixMap& map = **(**pattern.handle).patMap;
    const PixMap sound = map;
    map.bounds.right = 7;
    CHECK(draws());
    map = sound;
    map.bounds.bottom = 1024;
    CHECK(draws());
    map = sound;
    map.rowBytes = (short)0x8001;
    CHECK(draws());
    map = sound;
    map.pixelSize = 24;
    CHECK(draws());
    map = sound;
    CHECK_FALSE(draws());
    // The expansion is not trusted either.
    auto* expansion = reinterpret_cast<SInt32*>(*(**pattern.handle).patXData);
    expansion[0] = 1024;
    FillCRect(&all, pattern.handle);
    CHECK(world.At(1, 0) == 0xFFFFFF);
}

TEST_CASE("GetPixPat: patterns of every size that is a power of two are taken, others are none")
{
    for (const auto& [width, height] : { std::pair{ 8, 8 }, { 16, 8 }, { 64, 64 }, { 8, 128 } }) {
        const OwnPattern pattern(PatternFromBytes(PatternBytes(width, height, 256)));
        CHECK(SourceOf(pattern.handle).tile.width == width);
        CHECK(SourceOf(pattern.handle).tile.height == height);
    }
    CHECK_FALSE(PatternFromBytes(PatternBytes(12, 8, 4)));
    CHECK_FALSE(PatternFromBytes(PatternBytes(8, 9, 4)));
    CHECK_FALSE(PatternFromBytes(PatternBytes(8, 8, 4, 3)));
    CHECK(GetPixPat(12345) == nullptr);
    CHECK(QDError() == resNotFound);
}

TEST_CASE("GetPixPat: bytes that are cut off anywhere are no pattern")
{
    const std::vector<uint8_t> whole = PatternBytes(8, 8, 16);
    for (size_t length = 0; length < whole.size(); ++length) {
        const std::vector<uint8_t> part(whole.begin(), whole.begin() + (ptrdiff_t)length);
        CHECK_FALSE(PatternFromBytes(part));
    }
    const OwnPattern pattern(PatternFromBytes(whole));
}

TEST_CASE("GetPixPat: bytes changed by chance never do harm")
{
    const std::vector<uint8_t> whole = PatternBytes(8, 8, 16);
    const TestWorld world(4, 16, 16);
    const Rect all = All(world);
    std::mt19937 random(6);
    int taken = 0;
    for (int round = 0; round < 2000; ++round) {
        std::vector<uint8_t> bytes = whole;
        for (int i = 0; i < 3; ++i)
            bytes[random() % (i ? bytes.size() : 78)] = (uint8_t)random();
        const PixPatHandle pattern = PatternFromBytes(bytes);
        taken += pattern != nullptr;
        FillCRect(&all, pattern);
        DisposePixPat(pattern);
    }
    CHECK(taken > 0);
}

TEST_CASE("GetIndPattern: the system's list is there without a resource, from 1 to 38")
{
    Pattern pattern = { { 1, 2, 3, 4, 5, 6, 7, 8 } };
    const Pattern before = pattern;
    for (const short index : { 0, -1, 39, 32767, -32768 }) {
        GetIndPattern(&pattern, sysPatListID, index);
        CHECK(std::memcmp(&pattern, &before, sizeof pattern) == 0);
    }
    GetIndPattern(&pattern, 12345, 1);
    CHECK(std::memcmp(&pattern, &before, sizeof pattern) == 0);
    GetIndPattern(nullptr, sysPatListID, 1);
    Pattern expected;
    GetIndPattern(&pattern, sysPatListID, 1);
    CHECK(std::memcmp(&pattern, GetQDGlobalsBlack(&expected), sizeof pattern) == 0);
    GetIndPattern(&pattern, sysPatListID, 4);
    CHECK(std::memcmp(&pattern, GetQDGlobalsGray(&expected), sizeof pattern) == 0);
    GetIndPattern(&pattern, sysPatListID, 20);
    CHECK(std::memcmp(&pattern, GetQDGlobalsWhite(&expected), sizeof pattern) == 0);
    GetIndPattern(&pattern, sysPatListID, 23);
    CHECK(std::memcmp(&pattern, GetQDGlobalsLightGray(&expected), sizeof pattern) == 0);
    GetIndPattern(&pattern, sysPatListID, 38);
    CHECK(pattern.pat[4] == 0x55);
}

TEST_CASE("GetPixPat: the patterns of real applications load and draw")
{
    const auto folder = std::filesystem::path(LAMPBLACK_SOURCE_DIR).parent_path() / "shared/data/real/public";
    if (!std::filesystem::exists(folder)) {
        MESSAGE("skipped: the folder of real files is not here");
        return;
    }
    int loaded = 0, broken = 0;
    const TestWorld world(8, 64, 64);
    const Rect all = All(world);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file() || entry.file_size() > (32u << 20))
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        const std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(file)),
                                         std::istreambuf_iterator<char>());
        const lampblack::resources::Container container = lampblack::resources::ReadContainer(bytes);
        lampblack::resources::ResourceFork fork;
        if (fork.Open(container.resourceFork) != nullptr && fork.Open(bytes) != nullptr)
            continue;
        fork.ForEach([&](lampblack::resources::ResourceRef ref) {
            lampblack::foundation::Bytes data;
            if (fork.Info(ref).type != 'ppat' || !fork.Data(ref, &data))
                return;
            const PixPatHandle pattern = PatternFromBytes(data);
            if (!pattern)
                MESSAGE(entry.path().string(), ": 'ppat' ", fork.Info(ref).id, " is no pattern");
            broken += !pattern;
            loaded += pattern != nullptr;
            FillCRect(&all, pattern);
            DisposePixPat(pattern);
        });
    }
    CHECK(loaded > 10);
    CHECK(broken == 0);
    MESSAGE(loaded, " patterns");
}
