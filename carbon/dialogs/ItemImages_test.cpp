// Items that are icons and pictures: handles, drawing, clicks, and controls that lie on them.
#include "controls/TestSupport.h"

#include <Carbon/Dialogs.h>
#include <Carbon/Icons.h>
#include <Carbon/MacMemory.h>
#include <Carbon/QDOffscreen.h>

using namespace lampblack;
using namespace lampblack::test;

namespace {

constexpr UInt32 kRed = 0xFF0000, kBlue = 0x0000FF, kBlack = 0x000000;
constexpr SInt16 kIcon = 400, kColorIcon = 401, kPicture = 402;
constexpr SInt16 kIconItem = 1, kColorIconItem = 2, kPictureItem = 3, kButton = 4;

// Black everywhere, and without a mask.
Bytes PlainIcon()
{
    Bytes bytes;
    for (int word = 0; word < 64; ++word)
        bytes.Word(0xFFFF);
    return bytes;
}

// The outline of a square of 16 by 16 amid the icon.
Bytes OutlineIcon()
{
    Bytes bytes;
    for (int row = 0; row < 32; ++row)
        bytes.Long(row < 8 || row > 23 ? 0 : row == 8 || row == 23 ? 0x00FFFF00 : 0x00800100);
    return bytes;
}

// 16 by 8, depth 2, red; the mask is the left half.
Bytes ColorIcon()
{
    Bytes bytes;
    const auto put = [&](std::initializer_list<int> words) {
        for (int word : words)
            bytes.Word(word);
    };
    put({ 0, 0, 0x8004, 0, 0, 8, 16, 0, 0, 0, 0, 72, 0, 72, 0, 0, 2, 1, 2, 0, 0, 0, 0, 0, 0 });
    put({ 0, 0, 2, 0, 0, 8, 16, 0, 0, 0, 0, 0, 0, 0, 0, 0 });
    for (int row = 0; row < 8; ++row)
        put({ 0xFF00 });
    put({ 0, 7, 0, 1, 0, 0xFFFF, 0xFFFF, 0xFFFF, 1, 0xFFFF, 0, 0 });
    for (int word = 0; word < 16; ++word)
        put({ 0x5555 });
    return bytes;
}

// A picture of 10 by 10, all of one colour.
PicHandle NewPicture(const RGBColor& inColor)
{
    const Rect frame = { 0, 0, 10, 10 };
    GWorldPtr world = nullptr;
    CGrafPtr port = nullptr;
    GDHandle device = nullptr;
    GetGWorld(&port, &device);
    NewGWorld(&world, 32, &frame, nullptr, nullptr, 0);
    SetGWorld(world, nullptr);
    const PicHandle picture = OpenPicture(&frame);
    RGBForeColor(&inColor);
    PaintRect(&frame);
    ClosePicture();
    SetGWorld(port, device);
    DisposeGWorld(world);
    return picture;
}

Bytes PictureBytes(const RGBColor& inColor)
{
    const PicHandle picture = NewPicture(inColor);
    Bytes bytes;
    for (Size i = 0; i < GetHandleSize((Handle)picture); ++i)
        bytes.Byte((*(Handle)picture)[i]);
    KillPicture(picture);
    return bytes;
}

void AddItem(Bytes& ioBytes, const Rect& inBox, int inType, int inID)
{
    ioBytes.Long(0).Box(inBox).Byte(inType).Byte(2).Word(inID);
}

// An icon, a colour icon that an 'ICON' of its number shadows, a picture with a button on it, one that is
// disabled, and the icon of a note.
struct ImageDialog {
    TestResources file;
    DialogRef dialog = nullptr;

    ImageDialog()
    {
        Bytes items;
        items.Word(6 - 1);
        AddItem(items, { 10, 10, 42, 42 }, iconItem, kIcon);
        AddItem(items, { 10, 60, 26, 92 }, iconItem, kColorIcon);
        AddItem(items, { 60, 10, 160, 210 }, picItem, kPicture);
        items.Long(0).Box({ 100, 40, 120, 120 }).Byte(4).Text("OK").Even();
        AddItem(items, { 10, 110, 42, 142 }, picItem + itemDisable, kPicture);
        AddItem(items, { 10, 160, 42, 192 }, iconItem, 1);
        Bytes dlog;
        dlog.Box({ 100, 100, 300, 400 }).Word(dBoxProc).Word(0x0100).Word(0).Long(0).Word(128).Text("");
        file.Add('DITL', 128, items)
            .Add('DLOG', 128, dlog)
            .Add('ICON', kIcon, PlainIcon())
            .Add('ICON', kColorIcon, PlainIcon())
            .Add('cicn', kColorIcon, ColorIcon())
            .Add('PICT', kPicture, PictureBytes({ 0, 0, 0xFFFF }));
        REQUIRE(file.Open());
        dialog = GetNewDialog(128, nullptr, (WindowRef)-1);
        REQUIRE(dialog);
        host::RunFor(0.1);
        DrawDialog(dialog);
    }
    ~ImageDialog() { DisposeDialog(dialog); }

    Handle HandleOf(SInt16 inItem) const
    {
        Handle handle = nullptr;
        GetDialogItem(dialog, inItem, nullptr, &handle, nullptr);
        return handle;
    }
    Rect BoxOf(SInt16 inItem) const
    {
        Rect box;
        GetDialogItem(dialog, inItem, nullptr, nullptr, &box);
        return box;
    }
    WindowRef Window() const { return GetDialogWindow(dialog); }
    UInt32 At(short inH, short inV) const
    {
        return host::ScreenPixel({ (short)(100 + inV), (short)(100 + inH) });
    }
    DialogItemIndex HitBy(short inH, short inV) const
    {
        DialogItemIndex hit = 0;
        host::Click({ (short)(100 + inV), (short)(100 + inH) });
        host::PressKey(0x24, 13); // in case that nothing was hit
        SetDialogDefaultItem(dialog, kButton);
        ModalDialog(nullptr, &hit);
        if (hit != kButton)
            FlushEvents(everyEvent, 0);
        return hit;
    }
    // As an application around WaitNextEvent does.
    void Update() const
    {
        EventRecord event = {};
        DialogRef which = nullptr;
        DialogItemIndex item = 0;
        while (WaitNextEvent(updateMask, &event, 0, nullptr))
            DialogSelect(&event, &which, &item);
    }
    UInt32 Background() const { return At(250, 150); }
};

} // namespace

TEST_CASE("Icon and picture items: the handle is the icon or the picture, and a colour icon comes first")
{
    const ImageDialog d;
    CHECK(d.HandleOf(kIconItem) == GetIcon(kIcon));
    CHECK(d.HandleOf(kPictureItem) == (Handle)GetPicture(kPicture));
    const auto icon = (CIconHandle)d.HandleOf(kColorIconItem);
    REQUIRE(icon);
    CHECK((*icon)->iconPMap.bounds.right == 16);
    ControlRef control = nullptr;
    CHECK(GetDialogItemAsControl(d.dialog, kPictureItem, &control) == errItemNotControl);
}

TEST_CASE("Icon and picture items: drawn in their boxes, scaled, and a colour icon through its mask")
{
    const ImageDialog d;
    CHECK(d.At(11, 11) == kBlack);
    CHECK(d.At(41, 41) == kBlack);
    CHECK(d.At(62, 12) == kRed);
    CHECK(d.At(74, 24) == kRed);
    CHECK(d.At(80, 20) == d.Background()); // the half without a mask
    CHECK(d.At(10, 60) == kBlue);
    CHECK(d.At(209, 159) == kBlue);
    CHECK(d.At(210, 100) == d.Background());
    CHECK(d.At(115, 20) == kBlue);          // disabled items look like others
    CHECK(d.At(176, 26) != d.Background()); // an alert's icon, which the file does not hold
}

TEST_CASE("An icon item without a mask: white within its outline, and the dialog around it")
{
    TestResources file;
    file.Add('ICON', 403, OutlineIcon());
    REQUIRE(file.Open());
    const ImageDialog d;
    const Rect box = { 10, 220, 42, 252 };
    SetDialogItem(d.dialog, kIconItem, iconItem, GetIcon(403), &box);
    d.Update();
    CHECK(d.At(228, 18) == kBlack);
    CHECK(d.At(236, 26) == 0xFFFFFF);
    CHECK(d.At(222, 12) == d.Background());
}

TEST_CASE("An icon and a picture in the largest box there is: what is seen of them is drawn")
{
    const ImageDialog d;
    const Rect all = { -32768, -32768, 32767, 32767 };
    const PicHandle red = NewPicture({ 0xFFFF, 0, 0 });
    CHECK(InsertDialogItem(d.dialog, 6, iconItem, GetIcon(kIcon), &all) == noErr);
    d.Update();
    CHECK(d.At(250, 150) == kBlack);
    CHECK(InsertDialogItem(d.dialog, 7, picItem, (Handle)red, &all) == noErr);
    d.Update();
    CHECK(d.At(250, 150) == kRed);
    KillPicture(red);
}

TEST_CASE("A button on a picture item: pressed and let go, the picture is behind it still")
{
    const ImageDialog d;
    CHECK(d.At(40, 100) == kBlue); // beside the round end
    const ControlRef button = (ControlRef)d.HandleOf(kButton);
    HiliteControl(button, kControlButtonPart);
    CHECK(d.At(40, 100) == kBlue);
    CHECK(d.At(80, 110) != kBlue);
    HiliteControl(button, kControlNoPart);
    CHECK(d.At(40, 100) == kBlue);
    HideDialogItem(d.dialog, kButton);
    d.Update();
    CHECK(d.At(80, 110) == kBlue);
}

TEST_CASE("HideDialogItem and ShowDialogItem: an icon and a picture go and come back")
{
    const ImageDialog d;
    for (const SInt16 item : { kIconItem, kPictureItem }) {
        const Rect box = d.BoxOf(item);
        const UInt32 shown = d.At((short)(box.left + 2), (short)(box.top + 2));
        HideDialogItem(d.dialog, item);
        d.Update();
        CHECK(d.At((short)(box.left + 2), (short)(box.top + 2)) == d.Background());
        ShowDialogItem(d.dialog, item);
        d.Update();
        CHECK(d.At((short)(box.left + 2), (short)(box.top + 2)) == shown);
    }
    HideDialogItem(d.dialog, kPictureItem);
    CHECK(d.HitBy(150, 150) == kButton); // which Return stands for
    MoveDialogItem(d.dialog, kIconItem, 220, 20);
    d.Update();
    CHECK(d.At(11, 11) == d.Background());
    CHECK(d.At(230, 30) == kBlack);
}

TEST_CASE("SetDialogItem: another picture replaces the first, a user item becomes a picture, and back")
{
    const ImageDialog d;
    const PicHandle red = NewPicture({ 0xFFFF, 0, 0 });
    Rect box = d.BoxOf(kPictureItem);
    SetDialogItem(d.dialog, kPictureItem, picItem, (Handle)red, &box);
    d.Update();
    CHECK(d.HandleOf(kPictureItem) == (Handle)red);
    CHECK(d.At(200, 150) == kRed);
    SetDialogItem(d.dialog, kPictureItem, userItem, nullptr, &box);
    d.Update();
    CHECK(d.At(200, 150) == d.Background());
    SetDialogItem(d.dialog, kPictureItem, picItem, (Handle)red, &box);
    d.Update();
    CHECK(d.At(200, 150) == kRed);
    SetDialogItem(d.dialog, kIconItem, iconItem, nullptr, &box);
    KillPicture(red);
    d.Update(); // a picture that is gone draws nothing and does no harm
}

TEST_CASE("SetDialogItem: a colour icon that was replaced may be put back; a handle that is no icon is blank")
{
    const ImageDialog d;
    const Rect box = d.BoxOf(kColorIconItem);
    const Handle own = d.HandleOf(kColorIconItem), other = NewHandleClear(40);
    SetDialogItem(d.dialog, kColorIconItem, iconItem, other, &box);
    d.Update();
    CHECK(d.At(62, 12) == d.Background());
    SetDialogItem(d.dialog, kColorIconItem, iconItem, own, &box);
    d.Update();
    CHECK(d.At(62, 12) == kRed);
    DisposeHandle(other);
}

TEST_CASE("DisposeDialog: its colour icon goes with it, resources stay")
{
    Handle color = nullptr, plain = nullptr, picture = nullptr;
    {
        ImageDialog d;
        color = d.HandleOf(kColorIconItem);
        plain = d.HandleOf(kIconItem);
        picture = d.HandleOf(kPictureItem);
        CHECK(IsHandleValid(color));
        DisposeDialog(d.dialog);
        CHECK_FALSE(IsHandleValid(color));
        CHECK(IsHandleValid(plain));
        CHECK(IsHandleValid(picture));
    }
}

TEST_CASE("RemoveDialogItems: without their data, a colour icon becomes the application's")
{
    const ImageDialog d;
    const auto icon = (CIconHandle)d.HandleOf(kColorIconItem);
    CHECK(RemoveDialogItems(d.dialog, kColorIconItem, 1, false) == noErr);
    CHECK(IsHandleValid((Handle)icon));
    DisposeCIcon(icon);
    d.Update();
    CHECK(CountDITL(d.dialog) == 5);
}

TEST_CASE("InsertDialogItem: a picture of the application's")
{
    const ImageDialog d;
    const PicHandle red = NewPicture({ 0xFFFF, 0, 0 });
    const Rect box = { 10, 220, 40, 260 };
    CHECK(InsertDialogItem(d.dialog, 6, picItem, (Handle)red, &box) == noErr);
    d.Update();
    CHECK(d.At(230, 20) == kRed);
    CHECK(d.HandleOf(7) == (Handle)red);
    CHECK(RemoveDialogItems(d.dialog, 7, 1, true) == noErr);
    CHECK(IsHandleValid((Handle)red));
    KillPicture(red);
}

TEST_CASE(
    "ModalDialog: icons and pictures answer clicks when they are enabled, and controls on them come first")
{
    for (const bool standard : { false, true }) {
        CAPTURE(standard);
        const ImageDialog d;
        if (standard)
            ChangeWindowAttributes(d.Window(), kWindowStandardHandlerAttribute, 0);
        CHECK(d.HitBy(20, 20) == kIconItem);
        CHECK(d.HitBy(80, 20) == kColorIconItem); // its whole box, mask or not
        CHECK(d.HitBy(150, 150) == kPictureItem);
        CHECK(d.HitBy(80, 110) == kButton);
        CHECK(d.HitBy(120, 20) == kButton); // disabled: it was Return that answered
    }
}

TEST_CASE("A control that a picture covers: it is drawn below and found through it")
{
    const ImageDialog d;
    const Rect box = { 90, 30, 130, 130 };
    const PicHandle red = NewPicture({ 0xFFFF, 0, 0 });
    CHECK(InsertDialogItem(d.dialog, 6, picItem, (Handle)red, &box) == noErr);
    d.Update();
    CHECK(d.At(80, 110) == kRed);
    ControlPartCode part = kControlNoPart;
    CHECK(FindControlUnderMouse({ 110, 80 }, d.Window(), &part) == (ControlRef)d.HandleOf(kButton));
    CHECK(part == kControlButtonPart);
    KillPicture(red);
}
