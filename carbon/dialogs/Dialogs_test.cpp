#include "controls/TestSupport.h"
#include "dialogs/ItemList.h"

#include <Carbon/Dialogs.h>
#include <Carbon/MacMemory.h>

using namespace lampblack;
using namespace lampblack::test;
using dialogs::DialogTemplate;
using dialogs::ItemTemplate;
using dialogs::ParseDialogTemplate;
using dialogs::ParseItemList;

namespace {

constexpr UInt16 kReturnKey = 0x24, kTabKey = 0x30, kEscapeKey = 0x35;

Bytes Items(int inCount)
{
    Bytes bytes;
    bytes.Word(inCount - 1);
    return bytes;
}
Bytes& AddText(Bytes& ioBytes, const Rect& inBox, int inType, const Str& inText)
{
    return ioBytes.Long(0).Box(inBox).Byte(inType).Text(inText).Even();
}
Bytes& AddResource(Bytes& ioBytes, const Rect& inBox, int inType, int inID)
{
    return ioBytes.Long(0).Box(inBox).Byte(inType).Byte(2).Word(inID);
}
Bytes Dialog(const Rect& inBounds, int inProcID, bool inVisible, int inItems, const Str& inTitle,
             int inPosition = -1)
{
    Bytes bytes;
    bytes.Box(inBounds)
        .Word(inProcID)
        .Word(inVisible ? 0x0100 : 0)
        .Word(0)
        .Long(7)
        .Word(inItems)
        .Text(inTitle);
    bytes.Even();
    if (inPosition >= 0)
        bytes.Word(inPosition);
    return bytes;
}

// 1 OK, 2 Cancel, 3 check box, 4 static text, 5 edit text, 6 user item, 7 'CNTL', 8 disabled picture
TestResources& Standard(TestResources& ioFile)
{
    Bytes items = Items(8);
    AddText(items, { 150, 200, 170, 270 }, 4, "OK");
    AddText(items, { 150, 110, 170, 180 }, 4, "Cancel");
    AddText(items, { 10, 20, 28, 200 }, 5, "Sound");
    AddText(items, { 40, 20, 56, 270 }, 8, "Hello ^0, ^1!");
    AddText(items, { 70, 20, 86, 200 }, 16, "name");
    AddText(items, { 100, 20, 130, 60 }, 0, "");
    AddResource(items, { 100, 80, 116, 260 }, 7, 200);
    AddResource(items, { 100, 262, 130, 290 }, 64 + 128, 300);
    ioFile.Add('DITL', 128, items);
    ioFile.Add('DLOG', 128, Dialog({ 100, 100, 300, 400 }, dBoxProc, true, 128, "Settings"));
    ioFile.Add('CNTL', 200, ControlTemplate({ 0, 0, 16, 100 }, 40, true, 100, 0, 80, 0, ""));
    return ioFile;
}

struct TestDialog {
    TestResources file;
    DialogRef dialog = nullptr;
    TestDialog()
    {
        REQUIRE(Standard(file).Open());
        dialog = GetNewDialog(128, nullptr, (WindowRef)-1);
        REQUIRE(dialog);
    }
    ~TestDialog() { DisposeDialog(dialog); }
    WindowRef Window() const { return GetDialogWindow(dialog); }
    ControlRef Item(SInt16 inItem) const
    {
        ControlRef control = nullptr;
        GetDialogItemAsControl(dialog, inItem, &control);
        return control;
    }
    Point Where(SInt16 inItem) const
    {
        Rect box;
        GetDialogItem(dialog, inItem, nullptr, nullptr, &box);
        Point where = { (SInt16)((box.top + box.bottom) / 2), (SInt16)((box.left + box.right) / 2) };
        SetPortDialogPort(dialog);
        LocalToGlobal(&where);
        return where;
    }
};

std::vector<ItemTemplate> Parse(const std::vector<uint8_t>& inBytes)
{
    return ParseItemList(inBytes);
}

} // namespace

TEST_CASE("ParseItemList: no bytes, no items, a lying count, a cut item")
{
    CHECK(Parse({}).empty());
    CHECK(Parse({ 0xFF }).empty());
    CHECK(Parse({ 0xFF, 0xFF }).empty());
    CHECK(Parse({ 0xFE, 0x7F }).empty()); // many, and none there
    std::vector<uint8_t> one = { 0, 0, 0, 0, 0, 0, 10, 0, 10, 0, 5, 0, 5, 0, 8, 3, 'a', 'b', 'c' };
    auto items = Parse(one); // the pad byte is missing
    REQUIRE(items.size() == 1);
    CHECK(items[0].text == "abc");
    CHECK(items[0].box.top == 5); // edges turned upright
    CHECK(items[0].box.bottom == 10);
    one[15] = 200; // longer than there is
    items = Parse(one);
    REQUIRE(items.size() == 1);
    CHECK(items[0].text == "abc");
    one.resize(15); // no length
    CHECK(Parse(one).empty());
}

TEST_CASE("ParseDialogTemplate: the position word is optional, the fixed fields are not")
{
    DialogTemplate t;
    std::vector<uint8_t> bytes(20, 0);
    CHECK(ParseDialogTemplate(bytes, &t));
    CHECK(t.title.empty());
    CHECK(t.position == 0);
    bytes.resize(19);
    CHECK_FALSE(ParseDialogTemplate(bytes, &t));
}

TEST_CASE("GetNewDialog: items are made as the list says")
{
    TestDialog d;
    CHECK(CountDITL(d.dialog) == 8);
    DialogItemType type = 0;
    Handle handle = nullptr;
    Rect box;
    GetDialogItem(d.dialog, 1, &type, &handle, &box);
    CHECK(type == kButtonDialogItem);
    CHECK((ControlRef)handle == d.Item(1));
    CHECK(box.left == 200);
    CHECK(TitleOf(d.Item(2)) == "Cancel");
    CHECK(TextOf(d.Item(5)) == "name");
    GetDialogItem(d.dialog, 8, &type, &handle, &box);
    CHECK(type == kPictureDialogItem + kItemDisableBit);
    CHECK(handle == nullptr);
    CHECK(GetControlValue(d.Item(7)) == 40);
    GetControlBounds(d.Item(7), &box); // the item's place, not the control's own
    CHECK(box.top == 100);
    CHECK(box.right == 260);
    CHECK(GetWindowKind(d.Window()) == kDialogWindowKind);
    CHECK(GetWRefCon(d.Window()) == 7);
    CHECK(GetDialogFromWindow(d.Window()) == d.dialog);
    CHECK(IsWindowVisible(d.Window()));
}

TEST_CASE(
    "GetNewDialog: a missing dialog is none, missing items are an empty dialog, bad references are errors")
{
    TestResources file;
    file.Add('DLOG', 129, Dialog({ 100, 100, 200, 300 }, documentProc, false, 999, "Empty"));
    Bytes cut;
    cut.Box({ 1, 2, 3, 4 });
    file.Add('DLOG', 130, cut);
    REQUIRE(file.Open());
    CHECK(GetNewDialog(500, nullptr, nullptr) == nullptr);
    CHECK(GetNewDialog(130, nullptr, nullptr) == nullptr);
    const DialogRef dialog = GetNewDialog(129, nullptr, (WindowRef)-1);
    REQUIRE(dialog);
    CHECK(CountDITL(dialog) == 0);
    CHECK_FALSE(IsWindowVisible(GetDialogWindow(dialog)));
    ControlRef control = nullptr;
    CHECK(GetDialogItemAsControl(dialog, 1, &control) == paramErr);
    DisposeDialog(dialog);
    CHECK(GetDialogWindow(dialog) == nullptr);
    CHECK(CountDITL(dialog) == 0);
    CHECK(GetDialogItemAsControl(dialog, 1, &control) == errNotDialogRef);
    CHECK(GetDialogItemAsControl(nullptr, 1, &control) == paramErr);
    CHECK(SetDialogDefaultItem(dialog, 1) == paramErr);
}

TEST_CASE("GetNewDialog: the position word places the window")
{
    TestResources file;
    file.Add('DLOG', 128, Dialog({ 10, 10, 210, 310 }, dBoxProc, false, 999, "Centred", 0x280A));
    REQUIRE(file.Open());
    const DialogRef dialog = GetNewDialog(128, nullptr, (WindowRef)-1);
    Rect bounds;
    GetWindowBounds(GetDialogWindow(dialog), kWindowContentRgn, &bounds);
    CHECK(bounds.right - bounds.left == 300);
    CHECK(bounds.left > 300); // of a screen 1,024 pixels wide
    CHECK(bounds.left < 400);
    DisposeDialog(dialog);
}

TEST_CASE("Definition IDs become window classes")
{
    struct {
        int procID;
        WindowClass windowClass;
    } const cases[] = { { dBoxProc, kModalWindowClass },
                        { movableDBoxProc, kMovableModalWindowClass },
                        { documentProc, kDocumentWindowClass },
                        { noGrowDocProc, kDocumentWindowClass },
                        { kWindowModalDialogProc, kModalWindowClass },
                        { kWindowMovableModalDialogProc, kMovableModalWindowClass },
                        { kWindowAlertProc, kAlertWindowClass },
                        { 16 * 68, kSheetWindowClass }, // definition 68 of the system, and 70
                        { 16 * 70, kSheetAlertWindowClass } };
    for (const auto& expected : cases) {
        CAPTURE(expected.procID);
        const Rect bounds = { 100, 100, 200, 300 };
        const DialogRef dialog = NewDialog(nullptr, &bounds, nullptr, false, (SInt16)expected.procID,
                                           (WindowRef)-1, false, 0, nullptr);
        REQUIRE(dialog);
        WindowClass windowClass = 0;
        GetWindowClass(GetDialogWindow(dialog), &windowClass);
        CHECK(windowClass == expected.windowClass);
        DisposeDialog(dialog);
    }
}

TEST_CASE("Item texts: read and set, of text items, buttons and plain handles")
{
    TestDialog d;
    Str255 text;
    GetDialogItemText((Handle)d.Item(5), text);
    CHECK(Str((const char*)text + 1, text[0]) == "name");
    SetDialogItemText((Handle)d.Item(5), Pascal("changed").data());
    CHECK(TextOf(d.Item(5)) == "changed");
    GetDialogItemText((Handle)d.Item(1), text);
    CHECK(Str((const char*)text + 1, text[0]) == "OK");
    const Handle plain = NewHandle(0);
    SetDialogItemText(plain, Pascal("plain").data());
    GetDialogItemText(plain, text);
    CHECK(Str((const char*)text + 1, text[0]) == "plain");
    DisposeHandle(plain);
    GetDialogItemText(nullptr, text);
    CHECK(text[0] == 0);
}

TEST_CASE("ParamText: replaces ^0 to ^3 when the dialog is made and when it is drawn")
{
    ParamText(Pascal("Ann").data(), Pascal("bye").data(), nullptr, nullptr);
    TestDialog d;
    CHECK(TextOf(d.Item(4)) == "Hello Ann, bye!");
    ParamText(Pascal("Bob").data(), nullptr, nullptr, nullptr);
    DrawDialog(d.dialog);
    CHECK(TextOf(d.Item(4)) == "Hello Bob, bye!");
    Str255 first = { 0 };
    GetParamText(first, nullptr, nullptr, nullptr);
    CHECK(Str((const char*)first + 1, first[0]) == "Bob");
    ParamText(Pascal("").data(), Pascal("").data(), Pascal("").data(), Pascal("").data());
}

TEST_CASE("GetNewDialog: a zoom bit on a window that cannot zoom is passed over")
{
    TestResources file;
    file.Add('DITL', 128, Items(0));
    file.Add('DLOG', 128, Dialog({ 100, 100, 300, 400 }, zoomDocProc + dBoxProc, true, 128, ""));
    REQUIRE(file.Open());
    const DialogRef dialog = GetNewDialog(128, nullptr, (WindowRef)-1);
    REQUIRE(dialog);
    WindowClass windowClass = kDocumentWindowClass;
    CHECK(GetWindowClass(GetDialogWindow(dialog), &windowClass) == noErr);
    CHECK(windowClass == (WindowClass)kModalWindowClass);
    DisposeDialog(dialog);
}

TEST_CASE("DrawDialog: a static text without a parameter, or with a lone sign at its end, is as it was")
{
    TestDialog d;
    const auto draw = [&](const char* inText) {
        SetDialogItemText((Handle)d.Item(4), Pascal(inText).data());
        DrawDialog(d.dialog);
        return TextOf(d.Item(4));
    };
    CHECK(draw("plain") == "plain");
    CHECK(draw("2^") == "2^");
    CHECK(draw("^^9") == "^^9");
    CHECK(draw("").empty());
}

TEST_CASE("HideDialogItem and ShowDialogItem: the item goes aside and comes back")
{
    TestDialog d;
    HideDialogItem(d.dialog, 3);
    CHECK_FALSE(IsControlVisible(d.Item(3)));
    Rect box;
    GetDialogItem(d.dialog, 3, nullptr, nullptr, &box);
    CHECK(box.left == 20 + 16384);
    HideDialogItem(d.dialog, 3);
    ShowDialogItem(d.dialog, 3);
    CHECK(IsControlVisible(d.Item(3)));
    GetDialogItem(d.dialog, 3, nullptr, nullptr, &box);
    CHECK(box.left == 20);
}

TEST_CASE("FindDialogItem: counts from zero, -1 for none")
{
    TestDialog d;
    CHECK(FindDialogItem(d.dialog, { 160, 210 }) == 0);
    CHECK(FindDialogItem(d.dialog, { 160, 120 }) == 1);
    CHECK(FindDialogItem(d.dialog, { 5, 5 }) == -1);
    CHECK(FindDialogItem(nullptr, { 5, 5 }) == -1);
}

TEST_CASE("GetDialogKeyboardFocusItem: the first edit text has the focus, with its text selected")
{
    TestDialog d;
    CHECK(GetDialogKeyboardFocusItem(d.dialog) == 5);
    ControlEditTextSelectionRec selection = {};
    GetControlData(d.Item(5), 0, kControlEditTextSelectionTag, sizeof selection, &selection, nullptr);
    CHECK(selection.selEnd == 4);
    SelectDialogItemText(d.dialog, 5, 1, 2);
    GetControlData(d.Item(5), 0, kControlEditTextSelectionTag, sizeof selection, &selection, nullptr);
    CHECK(selection.selStart == 1);
    CHECK(selection.selEnd == 2);
}

TEST_CASE("AppendDITL below, ShortenDITL, InsertDialogItem, RemoveDialogItems: numbers and the window follow")
{
    TestDialog d;
    TestResources more;
    Bytes items = Items(1);
    AddText(items, { 10, 20, 28, 200 }, 5, "More");
    more.Add('DITL', 500, items);
    REQUIRE(more.Open());
    AppendDITL(d.dialog, GetResource('DITL', 500), appendDITLBottom);
    CHECK(CountDITL(d.dialog) == 9);
    Rect box, port;
    GetDialogItem(d.dialog, 9, nullptr, nullptr, &box);
    CHECK(box.top == 210);
    GetWindowPortBounds(d.Window(), &port);
    CHECK(port.bottom >= 228);
    ShortenDITL(d.dialog, 1);
    CHECK(CountDITL(d.dialog) == 8);

    const Rect where = { 0, 0, 20, 20 };
    const ControlRef extra =
        NewControl(d.Window(), &where, nullptr, true, 0, 0, 1, kControlPushButtonProc, 0);
    CHECK(InsertDialogItem(d.dialog, 1, kControlDialogItem, (Handle)extra, &where) == noErr);
    CHECK(d.Item(2) == extra);
    CHECK(TitleOf(d.Item(3)) == "Cancel");
    CHECK(RemoveDialogItems(d.dialog, 2, 1, true) == noErr);
    CHECK_FALSE(IsValidControlHandle(extra));
    CHECK(TitleOf(d.Item(2)) == "Cancel");
    CHECK(RemoveDialogItems(d.dialog, 8, 2, true) == paramErr);
    CHECK(InsertDialogItem(d.dialog, 99, 0, nullptr, &where) == paramErr);
    CHECK(AppendDialogItemList(d.dialog, 12345, overlayDITL) == resNotFound);
}

TEST_CASE("ModalDialog: answers the item that was clicked")
{
    TestDialog d;
    DialogItemIndex hit = 0;
    host::Click(d.Where(2));
    ModalDialog(nullptr, &hit);
    CHECK(hit == 2);
    host::Click(d.Where(3));
    ModalDialog(nullptr, &hit);
    CHECK(hit == 3);
    CHECK(GetControlValue(d.Item(3)) == 0); // toggling is the application's
    host::Click(d.Where(6));
    ModalDialog(nullptr, &hit);
    CHECK(hit == 6);
}

TEST_CASE("ModalDialog: a disabled item, a release beside the button and a click outside answer nothing")
{
    TestDialog d;
    DialogItemIndex hit = 0;
    host::Click(d.Where(8));
    host::PressMouse(d.Where(1));
    host::ReleaseMouse({ 105, 105 });
    host::Click({ 700, 900 });
    host::Click(d.Where(2));
    ModalDialog(nullptr, &hit);
    CHECK(hit == 2);
    CHECK_FALSE(host::PlayedSounds().empty());
}

TEST_CASE("ModalDialog: Return is item 1 by default, Escape the cancel item once there is one")
{
    TestDialog d;
    DialogItemIndex hit = 0;
    host::PressKey(kReturnKey, 13);
    ModalDialog(nullptr, &hit);
    CHECK(hit == 1);
    CHECK(SetDialogCancelItem(d.dialog, 2) == noErr);
    host::PressKey(kEscapeKey, 27);
    ModalDialog(nullptr, &hit);
    CHECK(hit == 2);
    CHECK(SetDialogDefaultItem(d.dialog, 2) == noErr);
    host::PressKey(kReturnKey, 13);
    ModalDialog(nullptr, &hit);
    CHECK(hit == 2);
    ControlRef button = nullptr;
    GetWindowDefaultButton(d.Window(), &button);
    CHECK(button == d.Item(2));
}

TEST_CASE("ModalDialog: typing goes to the edit text, which answers when it is enabled")
{
    TestDialog d;
    DialogItemIndex hit = 0;
    host::TypeText("x");
    ModalDialog(nullptr, &hit);
    CHECK(hit == 5);
    CHECK(TextOf(d.Item(5)) == "x"); // its text was selected
}

namespace {

int gFiltered;
Boolean Filter(DialogRef inDialog, EventRecord* ioEvent, DialogItemIndex* outItem)
{
    ++gFiltered;
    if (ioEvent->what == keyDown && (ioEvent->message & charCodeMask) == 'q') {
        *outItem = 77;
        return true;
    }
    ModalFilterUPP standard = nullptr;
    GetStdFilterProc(&standard);
    return InvokeModalFilterUPP(inDialog, ioEvent, outItem, standard);
}

} // namespace

TEST_CASE("ModalDialog: the filter sees events first and may answer any item")
{
    TestDialog d;
    DialogItemIndex hit = 0;
    gFiltered = 0;
    host::TypeText("q");
    ModalDialog(NewModalFilterUPP(Filter), &hit);
    CHECK(hit == 77);
    CHECK(gFiltered >= 1);
    CHECK(TextOf(d.Item(5)) == "name");
    host::PressKey(kReturnKey, 13);
    ModalDialog(Filter, &hit);
    CHECK(hit == 1);
}

TEST_CASE("ModalDialog: the same with the standard handler installed")
{
    TestDialog d;
    ChangeWindowAttributes(d.Window(), kWindowStandardHandlerAttribute, 0);
    DialogItemIndex hit = 0;
    host::Click(d.Where(2));
    ModalDialog(nullptr, &hit);
    CHECK(hit == 2);
    host::PressKey(kReturnKey, 13);
    ModalDialog(nullptr, &hit);
    CHECK(hit == 1);
}

TEST_CASE("ModalDialog: a dialog that its filter disposes of, and no dialog at all, end it")
{
    TestDialog d;
    DialogItemIndex hit = 5;
    host::TypeText("z");
    ModalDialog(
        [](DialogRef inDialog, EventRecord*, DialogItemIndex*) -> Boolean {
            DisposeDialog(inDialog);
            return false;
        },
        &hit);
    CHECK(hit == 0);
    ModalDialog(nullptr, &hit);
    CHECK(hit == 0);
}

TEST_CASE("User items: their procedure draws them when the dialog is drawn, not while hidden")
{
    TestDialog d;
    static int gDrawn;
    static DialogItemIndex gItem;
    gDrawn = 0;
    const UserItemUPP draw = NewUserItemUPP([](DialogRef, DialogItemIndex inItem) {
        ++gDrawn;
        gItem = inItem;
    });
    Rect box = { 100, 20, 130, 60 };
    SetDialogItem(d.dialog, 6, kUserDialogItem, (Handle)draw, &box);
    DrawDialog(d.dialog);
    CHECK(gDrawn == 1);
    CHECK(gItem == 6);
    HideDialogItem(d.dialog, 6);
    DrawDialog(d.dialog);
    CHECK(gDrawn == 1);
}

TEST_CASE("IsDialogEvent and DialogSelect: keys of the front dialog, clicks in it, nothing else")
{
    TestDialog d;
    EventRecord event = {};
    event.what = keyDown;
    event.message = 'k';
    CHECK(IsDialogEvent(&event));
    DialogRef which = nullptr;
    DialogItemIndex hit = 0;
    CHECK(DialogSelect(&event, &which, &hit));
    CHECK(which == d.dialog);
    CHECK(hit == 5);
    event.message = 9 | kTabKey << 8;
    CHECK_FALSE(DialogSelect(&event, &which, &hit));
    event.what = mouseDown;
    event.where = { 700, 900 };
    CHECK_FALSE(IsDialogEvent(&event));
    CHECK_FALSE(IsDialogEvent(nullptr));
    HideWindow(d.Window());
    event.what = keyDown;
    CHECK_FALSE(IsDialogEvent(&event));
}
