// Icon suites, IDs and methods: which member is drawn, where, and how it looks.
#include "icons/TestIcons.h"

using namespace lampblack::icons;

namespace {

// One icon, 128, in two sizes and three depths, each of its own colour: black bits, colours of 4 and 8 bits.
std::vector<Entry> AllMembers()
{
    return { { 'ICN#', 128, HalfMasked(32, 32, 0xFF) },
             { 'icl4', 128, ByteList(512, kGreenIndex) },
             { 'icl8', 128, ByteList(1024, kRedIndex) },
             { 'ics#', 128, HalfMasked(16, 16, 0x00) },
             { 'icm#', 128, HalfMasked(16, 12, 0xFF) } };
}

struct StSuite {
    explicit StSuite(const std::vector<std::pair<OSType, ByteList>>& inMembers)
    {
        NewIconSuite(&ref);
        for (const auto& [type, bytes] : inMembers)
            REQUIRE(AddIconToSuite(HandleOf(bytes), ref, type) == noErr);
    }
    ~StSuite() { DisposeIconSuite(ref, true); }
    StSuite(const StSuite&) = delete;
    IconSuiteRef ref = nullptr;
};

uint32_t PlottedAt(Backdrop& ioPort, const Rect& inRect, IconTransformType inTransform, short h, short v)
{
    CHECK(PlotIconID(&inRect, kAlignNone, inTransform, 128) == noErr);
    return ioPort.At(h, v);
}

} // namespace

TEST_CASE("PlotIconID: the depth of the port chooses the member, whose mask is that of its size")
{
    const IconFile file(AllMembers());
    const Rect r = MakeRect(0, 0, 32, 32);
    Backdrop deep;
    CHECK(PlotIconID(&r, kAlignNone, kTransformNone, 128) == noErr);
    CHECK(deep.At(0, 0) == 0xFF0000);
    CHECK(deep.At(15, 31) == 0xFF0000);
    CHECK(deep.At(16, 0) == kBackdrop);
    const World eight(8);
    CHECK(PlotIconID(&r, kAlignNone, kTransformNone, 128) == noErr);
    CHECK(eight.At(15, 31) == 0xFF0000);
    CHECK(eight.At(16, 0) == kWhite);
    const World one(1);
    CHECK(PlotIconID(&r, kAlignNone, kTransformNone, 128) == noErr);
    CHECK(one.At(15, 31) == kBlack);
    CHECK(one.At(16, 0) == kWhite);
}

TEST_CASE("PlotIconID: on a port of 16 colours the member of 4 bits is drawn, with its own colour")
{
    const IconFile file(AllMembers());
    const Rect r = MakeRect(0, 0, 32, 32);
    const World four(4);
    CHECK(PlotIconID(&r, kAlignNone, kTransformNone, 128) == noErr);
    CHECK(four.At(3, 3) == 0x1FB714); // the ninth of the published colours
}

TEST_CASE("PlotIconID: the extent of the rectangle chooses the size, and a missing size is scaled")
{
    const IconFile file(AllMembers());
    Backdrop port;
    CHECK(PlottedAt(port, MakeRect(0, 0, 16, 16), 0, 0, 0) == kWhite); // the small icon is white
    CHECK(PlottedAt(port, MakeRect(0, 20, 16, 32), 0, 0, 20) == kBlack);
    CHECK(PlottedAt(port, MakeRect(16, 0, 64, 48), 0, 39, 47) == 0xFF0000); // no huge one: the large, scaled
    CHECK(port.At(40, 0) == kBackdrop);
}

TEST_CASE("PlotIconID: no icon has the ID, or no rectangle")
{
    const Rect r = MakeRect(0, 0, 32, 32);
    Backdrop port;
    CHECK(PlotIconID(&r, kAlignNone, kTransformNone, 12345) == resNotFound);
    CHECK(PlotIconID(nullptr, kAlignNone, kTransformNone, 12345) == paramErr);
    CHECK(port.Changed().right == 0);
}

TEST_CASE("PlotIconSuite: each alignment puts the icon where its name says")
{
    const StSuite suite({ { 'ics8', ByteList(256, kRedIndex) } });
    static const struct {
        IconAlignmentType align;
        int left, top;
    } kCases[] = { { kAlignAbsoluteCenter, 16, 12 }, { kAlignTopLeft, 4, 2 },
                   { kAlignBottomRight, 28, 22 },    { kAlignCenterTop, 16, 2 },
                   { kAlignCenterBottom, 16, 22 },   { kAlignCenterLeft, 4, 12 },
                   { kAlignCenterRight, 28, 12 },    { kAlignTopRight, 28, 2 },
                   { kAlignBottomLeft, 4, 22 } };
    const Rect r = MakeRect(4, 2, 44, 38);
    for (const auto& each : kCases) {
        Backdrop port;
        CHECK(PlotIconSuite(&r, each.align, kTransformNone, suite.ref) == noErr);
        CHECK(IsRect(port.Changed(), each.left, each.top, each.left + 16, each.top + 16));
    }
    Backdrop port;
    CHECK(PlotIconSuite(&r, kAlignNone, kTransformNone, suite.ref) == noErr);
    CHECK(IsRect(port.Changed(), 4, 2, 44, 38));
    const Rect small = MakeRect(0, 0, 8, 10);
    Backdrop other;
    CHECK(PlotIconSuite(&small, kAlignAbsoluteCenter, kTransformNone, suite.ref) == noErr);
    CHECK(IsRect(other.Changed(), 0, 1, 8, 9)); // larger than its place: as much as fits
}

TEST_CASE("Transforms: selection darkens colours and inverts black and white, disabling lightens")
{
    const IconFile file(AllMembers());
    Backdrop port;
    const Rect large = MakeRect(0, 0, 32, 32), small = MakeRect(40, 0, 56, 16);
    CHECK(PlottedAt(port, large, kTransformSelected, 1, 1) == 0x7F0000);
    CHECK(PlottedAt(port, large, kTransformDisabled, 1, 1) == 0xFF8080);
    CHECK(PlottedAt(port, large, kTransformSelectedDisabled, 1, 1) == 0x7F4040);
    CHECK(PlottedAt(port, small, kTransformSelected, 41, 1) == kBlack);
    CHECK(port.At(16, 0) == kBackdrop); // never outside the mask
    CHECK(port.At(48, 0) == kBackdrop);
}

TEST_CASE("Transforms: offline and open icons are patterns within the mask, labels tint")
{
    const IconFile file(AllMembers());
    Backdrop port;
    const Rect r = MakeRect(0, 0, 32, 32);
    CHECK(PlottedAt(port, r, kTransformOffline, 4, 4) != PlottedAt(port, r, kTransformOffline, 5, 4));
    CHECK(PlottedAt(port, r, kTransformOpen, 4, 4) != PlottedAt(port, r, kTransformOpen, 5, 4));
    CHECK(PlottedAt(port, r, kTransformOpen, 0, 0) == 0xFF0000); // the outline stays
    CHECK(PlottedAt(port, r, kTransformLabel4, 4, 4) == 0x800000);
    CHECK(port.At(20, 4) == kBackdrop);
}

TEST_CASE("Transforms: on one bit they are patterns, and none of them makes an icon vanish")
{
    const StSuite suite({ { 'ICN#', ByteList(256, 0xFF) } });
    const World one(1);
    const Rect r = MakeRect(4, 4, 36, 36), all = MakeRect(0, 0, 64, 64);
    const auto blacks = [&](IconTransformType inTransform) {
        EraseRect(&all);
        CHECK(PlotIconSuite(&r, kAlignNone, inTransform, suite.ref) == noErr);
        int count = 0;
        for (short v = 0; v < 64; ++v)
            for (short h = 0; h < 64; ++h)
                count += one.At(h, v) == kBlack;
        return count;
    };
    CHECK(blacks(kTransformNone) == 1024);
    CHECK(blacks(kTransformDisabled) == 512);
    CHECK(blacks(kTransformOffline) == 256);
    CHECK(blacks(kTransformOpen) == 450 + 124); // dots within an outline
    CHECK(one.At(4, 17) == kBlack);
    CHECK(blacks(kTransformSelected) == 0);
    CHECK(blacks(kTransformSelectedDisabled) == 512);
    CHECK(blacks(kTransformSelectedOffline) == 768);
    CHECK(blacks(kTransformSelectedOpen) == 450);
    CHECK(blacks(kTransformLabel3) == 1024); // there is no tint
}

TEST_CASE("SetSuiteLabel: the label of the suite holds where the transform names none")
{
    const StSuite suite({ { 'icl8', ByteList(1024, kRedIndex) } });
    const Rect r = MakeRect(0, 0, 32, 32);
    Backdrop port;
    CHECK(SetSuiteLabel(suite.ref, 4) == noErr);
    CHECK(GetSuiteLabel(suite.ref) == 4);
    PlotIconSuite(&r, kAlignNone, kTransformNone, suite.ref);
    CHECK(port.At(3, 3) == 0x800000);
    PlotIconSuite(&r, kAlignNone, kTransformLabel1, suite.ref);
    CHECK(port.At(3, 3) == 0xFF0000);
    CHECK(SetSuiteLabel(suite.ref, 8) == paramErr);
    CHECK(SetSuiteLabel(nullptr, 1) == paramErr);
}

TEST_CASE("GetIconSuite: loads what the selector names; the data stay the resources' own")
{
    const IconFile file(AllMembers());
    IconSuiteRef suite = nullptr;
    Handle data = nullptr;
    REQUIRE(GetIconSuite(&suite, 128, kSelectorLarge8Bit | kSelectorLarge1Bit) == noErr);
    CHECK(GetIconFromSuite(&data, suite, 'icl8') == noErr);
    CHECK(data == GetResource('icl8', 128));
    CHECK(GetIconFromSuite(&data, suite, 'icl4') == paramErr);
    CHECK(data == nullptr);
    CHECK(GetIconFromSuite(&data, suite, 'ics#') == paramErr);
    CHECK(DisposeIconSuite(suite, true) == noErr);
    CHECK(DisposeIconSuite(suite, true) == paramErr);
    CHECK(GetResource('icl8', 128) != nullptr);
    CHECK(GetHandleSize(GetResource('icl8', 128)) == 1024);
    CHECK(GetIconSuite(&suite, 129, kSelectorAllAvailableData) == resNotFound);
    CHECK(suite == nullptr);
    CHECK(GetIconSuite(&suite, 128, kSelectorMini8Bit) == resNotFound);
    CHECK(GetIconSuite(nullptr, 128, kSelectorAllAvailableData) == paramErr);
}

TEST_CASE("DisposeIconSuite: with its data the handles go, without they stay")
{
    const Handle kept = HandleOf(ByteList(256, 1)), gone = HandleOf(ByteList(256, 1));
    IconSuiteRef suite = nullptr;
    NewIconSuite(&suite);
    AddIconToSuite(kept, suite, 'ics8');
    CHECK(DisposeIconSuite(suite, false) == noErr);
    CHECK(IsHandleValid(kept));
    NewIconSuite(&suite);
    AddIconToSuite(gone, suite, 'ics8');
    CHECK(DisposeIconSuite(suite, true) == noErr);
    CHECK(!IsHandleValid(gone));
    DisposeHandle(kept);
}

TEST_CASE("AddIconToSuite: what is no suite, no member or no handle is refused")
{
    const StSuite suite({});
    const Handle data = HandleOf(ByteList(256, 1));
    int something = 0;
    const Rect r = MakeRect(0, 0, 16, 16);
    CHECK(AddIconToSuite(data, nullptr, 'ics8') == paramErr);
    CHECK(AddIconToSuite(data, reinterpret_cast<IconSuiteRef>(&something), 'ics8') == paramErr);
    CHECK(AddIconToSuite(data, suite.ref, 'PICT') == paramErr);
    CHECK(AddIconToSuite(reinterpret_cast<Handle>(&something), suite.ref, 'ics8') == paramErr);
    CHECK(PlotIconSuite(&r, kAlignNone, kTransformNone, suite.ref) == paramErr);
    CHECK(PlotIconSuite(&r, kAlignNone, kTransformNone, nullptr) == paramErr);
    CHECK(NewIconSuite(nullptr) == paramErr);
    DisposeHandle(data);
}

TEST_CASE("PlotIconSuite: data that are too short, or disposed of since, are not there")
{
    const StSuite suite({ { 'icl8', ByteList(1023, kRedIndex) }, { 'ICN#', ByteList(128, 0xFF) } });
    const Rect r = MakeRect(0, 0, 32, 32);
    Backdrop port;
    CHECK(PlotIconSuite(&r, kAlignNone, kTransformNone, suite.ref) == noErr);
    CHECK(port.At(31, 31) == kBlack); // the bits, without a mask
    Handle data = nullptr;
    GetIconFromSuite(&data, suite.ref, 'ICN#');
    DisposeHandle(data);
    CHECK(PlotIconSuite(&r, kAlignNone, kTransformNone, suite.ref) == paramErr);
}

namespace {

struct Visits {
    std::vector<OSType> types;
    OSErr answer = noErr;
};

OSErr Visit(ResType inType, Handle*, void* inData)
{
    auto* visits = static_cast<Visits*>(inData);
    visits->types.push_back(inType);
    return visits->answer;
}

OSErr TakeAway(ResType, Handle* ioIcon, void*)
{
    DisposeHandle(*ioIcon);
    *ioIcon = nullptr;
    return noErr;
}

OSErr DisposeSuite(ResType, Handle*, void* inSuite)
{
    return DisposeIconSuite(static_cast<IconSuiteRef>(inSuite), true);
}

Handle RedIcons(ResType inType, void* inData)
{
    return inType == 'icl8' ? static_cast<Handle>(inData) : nullptr;
}

} // namespace

TEST_CASE("ForEachIconDo: visits the members that are there and selected; an error ends it")
{
    const StSuite suite({ { 'ICN#', ByteList(256) }, { 'icl8', ByteList(1024) }, { 'ics8', ByteList(256) } });
    Visits visits;
    CHECK(ForEachIconDo(suite.ref, kSelectorAllLargeData, Visit, &visits) == noErr);
    CHECK(visits.types == std::vector<OSType>{ 'ICN#', 'icl8' });
    visits = { {}, -77 };
    CHECK(ForEachIconDo(suite.ref, kSelectorAllAvailableData, Visit, &visits) == -77);
    CHECK(visits.types.size() == 1);
    CHECK(ForEachIconDo(suite.ref, kSelectorAll8BitData, TakeAway, nullptr) == noErr);
    Handle data = nullptr;
    CHECK(GetIconFromSuite(&data, suite.ref, 'icl8') == paramErr);
    CHECK(ForEachIconDo(suite.ref, kSelectorAllAvailableData, nullptr, nullptr) == paramErr);
    CHECK(ForEachIconDo(nullptr, kSelectorAllAvailableData, Visit, &visits) == paramErr);
    IconSuiteRef other = nullptr;
    NewIconSuite(&other);
    AddIconToSuite(HandleOf(ByteList(256)), other, 'ics8');
    AddIconToSuite(HandleOf(ByteList(256)), other, 'ics#');
    CHECK(ForEachIconDo(other, kSelectorAllAvailableData, DisposeSuite, other) == noErr);
}

TEST_CASE("PlotIconMethod: asks the method for data, and draws what it gives")
{
    const Handle data = HandleOf(ByteList(1024, kRedIndex));
    const Rect r = MakeRect(0, 0, 32, 32);
    Backdrop port;
    CHECK(PlotIconMethod(&r, kAlignNone, kTransformNone, RedIcons, data) == noErr);
    CHECK(port.At(31, 31) == 0xFF0000);
    CHECK(PlotIconMethod(&r, kAlignNone, kTransformNone, RedIcons, nullptr) == paramErr);
    CHECK(PlotIconMethod(&r, kAlignNone, kTransformNone, nullptr, data) == paramErr);
    RgnHandle region = NewRgn();
    CHECK(IconMethodToRgn(region, &r, kAlignNone, RedIcons, data) == noMaskFoundErr);
    CHECK(!PtInIconMethod({ 1, 1 }, &r, kAlignNone, RedIcons, data));
    CHECK(!RectInIconMethod(&r, &r, kAlignNone, RedIcons, data));
    DisposeRgn(region);
    DisposeHandle(data);
}

TEST_CASE("IconIDToRgn, PtInIconID, RectInIconID: tell of the mask, scaled to its place")
{
    const IconFile file(AllMembers());
    const Rect r = MakeRect(10, 10, 74, 74), right = MakeRect(45, 12, 70, 40),
               both = MakeRect(40, 12, 70, 40);
    RgnHandle region = NewRgn(), expected = NewRgn();
    CHECK(IconIDToRgn(region, &r, kAlignNone, 128) == noErr);
    SetRectRgn(expected, 10, 10, 42, 74);
    CHECK(EqualRgn(region, expected));
    CHECK(PtInIconID({ 12, 41 }, &r, kAlignNone, 128));
    CHECK(!PtInIconID({ 12, 42 }, &r, kAlignNone, 128));
    CHECK(!RectInIconID(&right, &r, kAlignNone, 128));
    CHECK(RectInIconID(&both, &r, kAlignNone, 128));
    CHECK(IconIDToRgn(region, &r, kAlignNone, 999) == resNotFound);
    CHECK(IconIDToRgn(region, nullptr, kAlignNone, 128) == paramErr);
    CHECK(IconIDToRgn(nullptr, &r, kAlignNone, 128) == paramErr);
    CHECK(!RectInIconID(nullptr, &r, kAlignNone, 128));
    CHECK(EqualRgn(region, expected));
    IconSuiteRef suite = nullptr;
    GetIconSuite(&suite, 128, kSelectorAllAvailableData);
    CHECK(IconSuiteToRgn(region, &r, kAlignNone, suite) == noErr);
    CHECK(EqualRgn(region, expected));
    CHECK(PtInIconSuite({ 12, 41 }, &r, kAlignNone, suite));
    CHECK(!RectInIconSuite(&right, &r, kAlignNone, suite));
    CHECK(IconSuiteToRgn(region, &r, kAlignNone, nullptr) == paramErr);
    DisposeIconSuite(suite, true);
    DisposeRgn(region);
    DisposeRgn(expected);
}
