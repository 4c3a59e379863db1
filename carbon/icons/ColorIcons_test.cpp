// 'cicn' resources.
#include "icons/ColorIcons.h"
#include "icons/TestIcons.h"

using namespace lampblack::icons;

namespace {

void Put(ByteList& ioBytes, std::initializer_list<int> inWords)
{
    for (const int word : inWords) {
        ioBytes.push_back((uint8_t)(word >> 8));
        ioBytes.push_back((uint8_t)word);
    }
}

// 16 by 8, depth 2, red; the mask is the left half; in black and white it is black.
ByteList MakeColorIcon()
{
    ByteList bytes;
    Put(bytes, { 0, 0, 0x8004, 0, 0, 8, 16, 0, 0, 0, 0, 72, 0, 72, 0, 0, 2, 1, 2, 0, 0, 0, 0, 0, 0 });
    Put(bytes, { 0, 0, 2, 0, 0, 8, 16 });
    Put(bytes, { 0, 0, 2, 0, 0, 8, 16, 0, 0 });
    for (int row = 0; row < 8; ++row)
        Put(bytes, { 0xFF00 });
    for (int row = 0; row < 8; ++row)
        Put(bytes, { 0xFFFF });
    Put(bytes, { 0, 7, 0, 1, 0, 0xFFFF, 0xFFFF, 0xFFFF, 1, 0xFFFF, 0, 0 });
    bytes.insert(bytes.end(), 32, 0x55);
    return bytes;
}

struct StColorIcon {
    explicit StColorIcon(const ByteList& inBytes) : ref(NewColorIcon(inBytes)) {}
    ~StColorIcon() { DisposeCIcon(ref); }
    StColorIcon(const StColorIcon&) = delete;
    CIconHandle ref;
};

} // namespace

TEST_CASE("GetCIcon: the record as published, made anew by each call")
{
    const IconFile file({ { 'cicn', 300, MakeColorIcon() }, { 'cicn', 301, ByteList(50) } });
    const CIconHandle icon = GetCIcon(300), other = GetCIcon(300);
    REQUIRE(icon);
    CHECK(icon != other);
    CHECK((*icon)->iconPMap.pixelSize == 2);
    CHECK((*icon)->iconPMap.bounds.right == 16);
    CHECK((*icon)->iconMask.rowBytes == 2);
    CHECK(GetHandleSize((*icon)->iconData) == 32);
    CHECK((*(*icon)->iconPMap.pmTable)->ctSize == 1);
    CHECK(GetCIcon(301) == nullptr);
    CHECK(GetCIcon(302) == nullptr);
    DisposeCIcon(icon);
    DisposeCIcon(icon);
    DisposeCIcon(other);
    DisposeCIcon(nullptr);
}

TEST_CASE("PlotCIcon: colours within the mask, stretched; on one bit the black-and-white icon")
{
    const StColorIcon icon(MakeColorIcon());
    REQUIRE(icon.ref);
    const Rect r = MakeRect(0, 0, 32, 32);
    Backdrop port;
    PlotCIcon(&r, icon.ref);
    CHECK(IsRect(port.Changed(), 0, 0, 16, 32));
    CHECK(port.At(15, 31) == 0xFF0000);
    const World eight(8);
    PlotCIcon(&r, icon.ref);
    CHECK(eight.At(15, 31) == 0xFF0000);
    CHECK(eight.At(16, 31) == kWhite);
    const World one(1);
    PlotCIcon(&r, icon.ref);
    CHECK(one.At(15, 31) == kBlack);
    CHECK(one.At(16, 31) == kWhite);
}

TEST_CASE("PlotCIconHandle: alignment and transforms, and its errors")
{
    const StColorIcon icon(MakeColorIcon());
    const Rect r = MakeRect(0, 0, 32, 32);
    Backdrop port;
    CHECK(PlotCIconHandle(&r, kAlignBottomRight, kTransformSelected, icon.ref) == noErr);
    CHECK(IsRect(port.Changed(), 16, 24, 24, 32));
    CHECK(port.At(16, 24) == 0x7F0000);
    CHECK(PlotCIconHandle(nullptr, kAlignNone, kTransformNone, icon.ref) == paramErr);
    CHECK(PlotCIconHandle(&r, kAlignNone, kTransformNone, nullptr) == paramErr);
}

TEST_CASE("GetCIcon: a resource that ends early is none, and any changed byte does no harm")
{
    const ByteList whole = MakeColorIcon();
    for (size_t size = 0; size < whole.size(); ++size)
        CHECK(NewColorIcon(Bytes(whole).first(size)) == nullptr);
    const Rect r = MakeRect(0, 0, 32, 32);
    Backdrop port;
    for (size_t place = 0; place < whole.size(); ++place)
        for (const uint8_t value : { 0x00, 0x7F, 0x80, 0xFF }) {
            ByteList bad = whole;
            bad[place] = value;
            const StColorIcon icon(bad);
            PlotCIcon(&r, icon.ref);
        }
}

TEST_CASE("PlotCIcon: a record that the application broke is not drawn")
{
    const StColorIcon icon(MakeColorIcon());
    REQUIRE(icon.ref);
    const Rect r = MakeRect(0, 0, 32, 32);
    Backdrop port;
    const BitMap mask = (*icon.ref)->iconMask;
    (*icon.ref)->iconMask.bounds.bottom = 32767;
    CHECK(PlotCIconHandle(&r, kAlignNone, kTransformNone, icon.ref) == paramErr);
    (*icon.ref)->iconMask = mask;
    const CTabHandle table = (*icon.ref)->iconPMap.pmTable;
    (*icon.ref)->iconPMap.pmTable = nullptr;
    CHECK(PlotCIconHandle(&r, kAlignNone, kTransformNone, icon.ref) == paramErr);
    (*icon.ref)->iconPMap.pmTable = table;
    (*icon.ref)->iconPMap.bounds = MakeRect(0, 0, 32767, 32767);
    CHECK(PlotCIconHandle(&r, kAlignNone, kTransformNone, icon.ref) == paramErr);
    CHECK(port.Changed().right == 0);
}
