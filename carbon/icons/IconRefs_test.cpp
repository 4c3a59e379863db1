// Icon references: the system's, registered ones, their owners.
#include "icons/Family.h"
#include "icons/TestIcons.h"

using namespace lampblack::icons;

namespace {

IconFamilyHandle RedFamily()
{
    Members members;
    members.data[Kind{ 2, Data::Eight }.Place()] = ByteList(1024, kRedIndex);
    members.data[Kind{ 2, Data::Bits }.Place()] = HalfMasked(32, 32, 0xFF);
    return reinterpret_cast<IconFamilyHandle>(HandleOf(FamilyOf(members)));
}

} // namespace

TEST_CASE("GetIconRef: each of the system's icons is drawn at every size, on every depth")
{
    static constexpr OSType kTypes[] = { kAlertStopIcon,          kAlertNoteIcon,
                                         kAlertCautionIcon,       kHelpIcon,
                                         kGenericDocumentIcon,    kGenericFolderIcon,
                                         kGenericApplicationIcon, kTrashIcon };
    for (const OSType type : kTypes)
        for (const int side : { 16, 32, 48, 100 }) {
            IconRef icon = nullptr;
            REQUIRE(GetIconRef(kOnSystemDisk, kSystemIconsCreator, type, &icon) == noErr);
            Backdrop port(128, 128);
            const Rect r = MakeRect(5, 7, 5 + side, 7 + side);
            CHECK(PlotIconRef(&r, kAlignNone, kTransformNone, kIconServicesNormalUsageFlag, icon) == noErr);
            const Rect changed = port.Changed();
            CHECK(changed.right - changed.left > side / 2);
            Rect shared;
            SectRect(&changed, &r, &shared);
            CHECK(EqualRect(&changed, &shared));
            const World one(1);
            CHECK(PlotIconRef(&r, kAlignNone, kTransformNone, kIconServicesNormalUsageFlag, icon) == noErr);
            CHECK(ReleaseIconRef(icon) == noErr);
        }
}

TEST_CASE("GetIconRef: on one bit each of the system's icons is whole, black and white within its outline")
{
    static constexpr OSType kTypes[] = { kAlertStopIcon,          kAlertNoteIcon,
                                         kAlertCautionIcon,       kHelpIcon,
                                         kGenericDocumentIcon,    kGenericFolderIcon,
                                         kGenericApplicationIcon, kTrashIcon };
    const Rect r = MakeRect(5, 7, 37, 39), all = MakeRect(0, 0, 64, 64);
    const World one(1);
    const RgnHandle mask = NewRgn();
    for (const OSType type : kTypes) {
        CAPTURE(type);
        IconRef icon = nullptr;
        REQUIRE(GetIconRef(kOnSystemDisk, kSystemIconsCreator, type, &icon) == noErr);
        EraseRect(&all);
        PlotIconRef(&r, kAlignNone, kTransformNone, kIconServicesNormalUsageFlag, icon);
        CHECK(IconRefToRgn(mask, &r, kAlignNone, kIconServicesNormalUsageFlag, icon) == noErr);
        const auto isIn = [&](int h, int v) { return (bool)PtInRgn({ (short)v, (short)h }, mask); };
        int white = 0, open = 0, outside = 0;
        for (short v = 0; v < 64; ++v)
            for (short h = 0; h < 64; ++h) {
                const bool isBlack = one.At(h, v) == kBlack;
                const bool isInside = isIn(h - 1, v) && isIn(h + 1, v) && isIn(h, v - 1) && isIn(h, v + 1);
                white += isIn(h, v) && !isBlack;
                open += isIn(h, v) && !isBlack && !isInside;
                outside += isBlack && !isIn(h, v);
            }
        CHECK(white > 20);
        CHECK(open == 0);
        CHECK(outside == 0);
        CHECK(ReleaseIconRef(icon) == noErr);
    }
    // The sign of help is white on its dark ground.
    IconRef help = nullptr;
    GetIconRef(kOnSystemDisk, kSystemIconsCreator, kHelpIcon, &help);
    EraseRect(&all);
    PlotIconRef(&r, kAlignNone, kTransformNone, kIconServicesNormalUsageFlag, help);
    CHECK(one.At(12, 23) == kBlack);
    CHECK(one.At(21, 31) == kWhite);
    EraseRect(&all);
    PlotIconRef(&r, kAlignNone, kTransformSelected, kIconServicesNormalUsageFlag, help);
    CHECK(one.At(12, 23) == kWhite);
    CHECK(one.At(21, 31) == kBlack);
    ReleaseIconRef(help);
    DisposeRgn(mask);
}

TEST_CASE("GetIconRef: what nobody registered is no icon")
{
    IconRef icon = reinterpret_cast<IconRef>(1);
    CHECK(GetIconRef(kOnSystemDisk, 'none', 'none', &icon) == noSuchIconErr);
    CHECK(icon == nullptr);
    CHECK(GetIconRef(kOnSystemDisk, kSystemIconsCreator, '!?!?', &icon) == noSuchIconErr);
    CHECK(GetIconRef(kOnSystemDisk, kSystemIconsCreator, kHelpIcon, nullptr) == paramErr);
}

TEST_CASE("AcquireIconRef, ReleaseIconRef: owners are counted, and the last one takes the icon along")
{
    IconRef icon = nullptr, again = nullptr;
    UInt16 owners = 99;
    REQUIRE(GetIconRef(kOnSystemDisk, kSystemIconsCreator, kHelpIcon, &icon) == noErr);
    REQUIRE(GetIconRef(kOnSystemDisk, kSystemIconsCreator, kHelpIcon, &again) == noErr);
    CHECK(icon == again);
    CHECK(AcquireIconRef(icon) == noErr);
    CHECK(GetIconRefOwners(icon, &owners) == noErr);
    CHECK(owners == 3);
    for (int i = 0; i < 3; ++i)
        CHECK(ReleaseIconRef(icon) == noErr);
    CHECK(!IsValidIconRef(icon));
    CHECK(ReleaseIconRef(icon) == invalidIconRefErr);
    CHECK(AcquireIconRef(icon) == invalidIconRefErr);
    CHECK(GetIconRefOwners(icon, &owners) == invalidIconRefErr);
    CHECK(owners == 0);
    const Rect r = MakeRect(0, 0, 32, 32);
    CHECK(PlotIconRef(&r, kAlignNone, kTransformNone, 0, icon) == invalidIconRefErr);
    CHECK(PlotIconRef(&r, kAlignNone, kTransformNone, 0, nullptr) == invalidIconRefErr);
}

TEST_CASE("RegisterIconRefFromIconFamily: is found by its name until it is unregistered; owners keep it")
{
    const IconFamilyHandle family = RedFamily();
    IconRef icon = nullptr, found = nullptr;
    REQUIRE(RegisterIconRefFromIconFamily('GAME', 'SAVE', family, &icon) == noErr);
    DisposeHandle(reinterpret_cast<Handle>(family));
    CHECK(GetIconRef(kOnAppropriateDisk, 'GAME', 'SAVE', &found) == noErr);
    CHECK(found == icon);
    const Rect r = MakeRect(0, 0, 32, 32);
    Backdrop port;
    CHECK(PlotIconRef(&r, kAlignNone, kTransformNone, 0, icon) == noErr);
    CHECK(IsRect(port.Changed(), 0, 0, 16, 32));
    CHECK(port.At(0, 0) == 0xFF0000);
    CHECK(PlotIconRef(nullptr, kAlignNone, kTransformNone, 0, icon) == paramErr);
    ReleaseIconRef(icon);
    ReleaseIconRef(icon);
    CHECK(IsValidIconRef(icon)); // registered still
    CHECK(GetIconRef(kOnSystemDisk, 'GAME', 'SAVE', &found) == noErr);
    CHECK(UnregisterIconRef('GAME', 'SAVE') == noErr);
    CHECK(UnregisterIconRef('GAME', 'SAVE') == noSuchIconErr);
    CHECK(IsValidIconRef(found));
    ReleaseIconRef(found);
    CHECK(!IsValidIconRef(found));
    CHECK(RegisterIconRefFromIconFamily('GAME', 'SAVE', nullptr, &icon) == paramErr);
    CHECK(icon == nullptr);
}

TEST_CASE("RegisterIconRefFromResource: a suite or a family of a file that need not stay open")
{
    IconFile file({ { 'ics8', 128, ByteList(256, kRedIndex) } });
    file.Close();
    const SInt16 before = CurResFile();
    IconRef icon = nullptr;
    REQUIRE(RegisterIconRefFromResource('GAME', 'MAP ', &file.Spec(), 128, &icon) == noErr);
    CHECK(CurResFile() == before);
    const Rect r = MakeRect(0, 0, 16, 16);
    Backdrop port;
    CHECK(PlotIconRef(&r, kAlignNone, kTransformNone, 0, icon) == noErr);
    CHECK(port.At(15, 15) == 0xFF0000);
    CHECK(!RectInIconRef(&r, &r, kAlignNone, 0, icon)); // no mask
    ReleaseIconRef(icon);
    UnregisterIconRef('GAME', 'MAP ');
    CHECK(RegisterIconRefFromResource('GAME', 'MAP ', &file.Spec(), 129, &icon) == resNotFound);
    CHECK(RegisterIconRefFromResource('GAME', 'MAP ', nullptr, 128, &icon) == paramErr);
    CHECK(icon == nullptr);
}

TEST_CASE("IconRefToRgn, PtInIconRef: the mask of the caution icon is its triangle")
{
    IconRef icon = nullptr;
    REQUIRE(GetIconRef(kOnSystemDisk, kSystemIconsCreator, kAlertCautionIcon, &icon) == noErr);
    const Rect r = MakeRect(0, 0, 32, 32), corner = MakeRect(0, 0, 4, 4);
    const Point inside = { 20, 16 }, outside = { 2, 2 };
    CHECK(PtInIconRef(&inside, &r, kAlignNone, 0, icon));
    CHECK(!PtInIconRef(&outside, &r, kAlignNone, 0, icon));
    CHECK(!RectInIconRef(&corner, &r, kAlignNone, 0, icon));
    RgnHandle region = NewRgn();
    CHECK(IconRefToRgn(region, &r, kAlignNone, 0, icon) == noErr);
    CHECK(PtInRgn(inside, region));
    CHECK(IconRefToRgn(nullptr, &r, kAlignNone, 0, icon) == paramErr);
    CHECK(IconRefToRgn(region, nullptr, kAlignNone, 0, icon) == paramErr);
    CHECK(IconRefToRgn(region, &r, kAlignNone, 0, nullptr) == invalidIconRefErr);
    DisposeRgn(region);
    ReleaseIconRef(icon);
}

TEST_CASE("PlotIconID: the numbers of the system's icons are drawn where no resource has them")
{
    const Rect r = MakeRect(0, 0, 32, 32);
    for (const SInt16 id : { 0, 1, 2, (int)kHelpIconResource, (int)kTrashIconResource }) {
        Backdrop port;
        CHECK(PlotIconID(&r, kAlignNone, kTransformNone, id) == noErr);
        CHECK(port.Changed().right > 16);
        CHECK(PtInIconID({ 20, 16 }, &r, kAlignNone, id));
    }
}

TEST_CASE("RegisterIconRefFromResource: a file that was open stays open, and current")
{
    IconFile file({ { 'ics8', 128, ByteList(256, kRedIndex) } });
    IconFile other({ { 'ics8', 129, ByteList(256, kRedIndex) } });
    const SInt16 before = CurResFile();
    IconRef icon = nullptr;
    REQUIRE(RegisterIconRefFromResource('GAME', 'MAP ', &file.Spec(), 128, &icon) == noErr);
    CHECK(CurResFile() == before);
    CHECK(GetResource('ics8', 128) != nullptr);
    CHECK(GetResource('ics8', 129) != nullptr);
    ReleaseIconRef(icon);
    UnregisterIconRef('GAME', 'MAP ');
}
