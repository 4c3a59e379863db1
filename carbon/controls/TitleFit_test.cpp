// Titles of buttons that are wider than their place, and the images of bevel buttons.
#include "controls/TestSupport.h"

#include <Carbon/Icons.h>

#include <cstdlib>

using namespace lampblack;
using namespace lampblack::test;

namespace {

constexpr Rect kWide = { 20, 20, 40, 300 };

// The extent of dark pixels within an area of the window; titles are the only ones.
Rect InkIn(const Rect& inArea)
{
    Rect ink = { inArea.bottom, inArea.right, inArea.top, inArea.left };
    for (short v = inArea.top; v < inArea.bottom; ++v)
        for (short h = inArea.left; h < inArea.right; ++h)
            if ((host::ScreenPixel(Global(h, v)) & 0xFF) < 0x50)
                ink = { std::min(ink.top, v), std::min(ink.left, h), std::max(ink.bottom, (short)(v + 1)),
                        std::max(ink.right, (short)(h + 1)) };
    return ink;
}

Rect InkOf(SInt16 inProcID, const Rect& inBounds, const Str& inTitle, short inSkip = 0)
{
    const TestWindow window;
    window.Add(inProcID, inBounds, inTitle);
    host::RunFor(0.1);
    Rect area = { inBounds.top, (short)(inBounds.left + inSkip), inBounds.bottom, 390 };
    return InkIn(area);
}

int WidthOf(const Rect& inRect)
{
    return inRect.right - inRect.left;
}

} // namespace

TEST_CASE("A check box whose title is a little too wide: narrower letters, all of them, within its bounds")
{
    const Str title = "Blinking Background";
    const Rect free = InkOf(kControlCheckBoxProc, kWide, title, 22);
    const int wanted = WidthOf(free) * 85 / 100;
    const Rect tight = { 20, 20, 40, (short)(free.left + wanted) };
    const Rect fitted = InkOf(kControlCheckBoxProc, tight, title, 22);
    CHECK(fitted.left == doctest::Approx(free.left).epsilon(0.05));
    CHECK(fitted.right <= tight.right);
    CHECK(WidthOf(fitted) > wanted * 9 / 10);
    CHECK(fitted.top == free.top); // the capital B
}

TEST_CASE("A title that no narrowing saves: it ends with an ellipsis within the bounds")
{
    const Str title = "The quick brown fox jumps over the lazy dog";
    for (const SInt16 procID : { kControlCheckBoxProc, kControlRadioButtonProc, kControlPushButtonProc }) {
        CAPTURE(procID);
        const Rect tight = { 20, 20, 40, 110 };
        const Rect ink = InkOf(procID, tight, title, 22);
        CHECK(ink.right <= tight.right);
        CHECK(ink.right > tight.right - 14);
    }
}

TEST_CASE("A title that fits keeps its letters")
{
    const Rect free = InkOf(kControlCheckBoxProc, kWide, "Sound", 22);
    const Rect near = { 20, 20, 40, (short)(free.right + 2) };
    CHECK(WidthOf(InkOf(kControlCheckBoxProc, near, "Sound", 22)) == WidthOf(free));
}

TEST_CASE("A pop-up button's title that is wider than the place for it: cut before the button")
{
    const TestWindow window;
    constexpr SInt16 kNoMenuYet = -12345, kTitleWidth = 70;
    window.Add(kControlPopupButtonProc, kWide, "A title as long as the window", 0, kNoMenuYet, kTitleWidth);
    host::RunFor(0.1);
    const Rect ink = InkIn({ 20, 20, 40, 20 + kTitleWidth });
    CHECK(ink.right <= 20 + kTitleWidth - 6);
    CHECK(ink.right > 20 + kTitleWidth - 20);
}

TEST_CASE("A pop-up button's menu: at least as wide as the button")
{
    static UInt32 gPixel;
    struct User {
        static void Look(EventLoopTimerRef, void*)
        {
            gPixel = host::ScreenPixel(Global(205, 50));
            host::PressKey(0x35, 27);
        }
    };
    const TestWindow window;
    const ControlRef button = window.Add(kControlPopupButtonProc, { 20, 20, 40, 220 }, "", 0, -12345, 0);
    MenuRef menu = nullptr;
    REQUIRE(CreateNewMenu(300, 0, &menu) == noErr);
    for (int item = 0; item < 4; ++item)
        AppendMenuItemText(menu, Pascal("A").data());
    SetControlPopupMenuHandle(button, menu);
    host::RunFor(0.1);
    const UInt32 before = host::ScreenPixel(Global(205, 50));
    InstallEventLoopTimer(GetMainEventLoop(), 0.5, 0, User::Look, nullptr, nullptr);
    host::Click(Middle(button));
    host::RunFor(2);
    CHECK(gPixel != before);
    CHECK(host::ScreenPixel(Global(205, 50)) == before);
    DisposeControl(button);
    DisposeMenu(menu);
}

TEST_CASE("A button without room for a letter, and one without room for itself: nothing breaks")
{
    const TestWindow window;
    for (const short width : { 1, 3, 12, 22 }) {
        const Rect bounds = { 20, 20, 40, (short)(20 + width) };
        CHECK(window.Add(kControlPushButtonProc, bounds, "Much too long"));
        CHECK(window.Add(kControlCheckBoxProc, bounds, "Much too long"));
    }
    host::RunFor(0.1);
}

namespace {

// All black, without a mask.
Bytes BlackIcon()
{
    Bytes bytes;
    for (int word = 0; word < 64; ++word)
        bytes.Word(0xFFFF);
    return bytes;
}

// A small icon of a suite, its mask after it.
Bytes SmallSuiteIcon()
{
    Bytes bytes;
    for (int word = 0; word < 32; ++word)
        bytes.Word(0xFFFF);
    return bytes;
}

} // namespace

TEST_CASE("A bevel button with an icon: drawn amid it, at the size that suits it, beside its title")
{
    TestResources file;
    file.Add('ICON', 500, BlackIcon()).Add('ics#', 501, SmallSuiteIcon());
    file.Add('CNTL', 200,
             ControlTemplate({ 20, 20, 60, 60 }, 0, true, 500, kControlContentICONRes, 33, 0, ""));
    file.Add('CNTL', 201,
             ControlTemplate({ 20, 80, 44, 104 }, 0, true, 501, kControlContentIconSuiteRes, 33, 0, ""));
    file.Add(
        'CNTL', 202,
        ControlTemplate({ 20, 120, 44, 250 }, 0, true, 501, kControlContentIconSuiteRes, 33, 0, "Title"));
    file.Add('CNTL', 203,
             ControlTemplate({ 70, 20, 90, 60 }, 0, true, 999, kControlContentPictRes, 33, 0, "None"));
    REQUIRE(file.Open());
    const TestWindow window;
    for (const SInt16 id : { 200, 201, 202, 203 }) {
        const ControlRef button = GetNewControl(id, window);
        REQUIRE(button);
        CHECK(GetControlMaximum(button) == 1);
        CHECK(GetControlValue(button) == 0);
    }
    host::RunFor(0.1);
    const Rect large = InkIn({ 20, 20, 60, 60 }), small = InkIn({ 20, 80, 44, 104 });
    CHECK(WidthOf(large) == 32);
    CHECK(large.bottom - large.top == 32);
    CHECK(WidthOf(small) == 16);
    const Rect titled = InkIn({ 20, 120, 44, 250 });
    CHECK(WidthOf(titled) > 36);
    CHECK(titled.left > 140);                       // both amid the button
    CHECK(WidthOf(InkIn({ 70, 22, 90, 58 })) > 10); // what there is no image for has its title
}

TEST_CASE("A bevel button with an icon: pressed it is darker, disabled it is paler")
{
    TestResources file;
    file.Add('ICON', 500, BlackIcon());
    file.Add('CNTL', 200,
             ControlTemplate({ 20, 20, 60, 60 }, 0, true, 500, kControlContentICONRes, 33, 0, ""));
    REQUIRE(file.Open());
    const TestWindow window;
    const ControlRef button = GetNewControl(200, window);
    REQUIRE(button);
    host::RunFor(0.1);
    CHECK((host::ScreenPixel(Global(40, 40)) & 0xFF) < 0x10);
    DisableControl(button);
    const Rect dimmed = InkIn({ 22, 22, 58, 58 });
    CHECK(WidthOf(dimmed) < 32);
}

TEST_CASE("A picture of titles" * doctest::skip(std::getenv("LAMPBLACK_TITLE_PICTURE") == nullptr))
{
    const TestWindow window;
    short top = 10;
    for (const short width : { 200, 140, 120, 100, 80, 50 }) {
        window.Add(kControlPushButtonProc, { top, 10, (short)(top + 20), (short)(10 + width) },
                   "Restore Defaults");
        window.Add(kControlCheckBoxProc, { top, 220, (short)(top + 18), (short)(220 + width * 3 / 4) },
                   "Blinking Background");
        top = (short)(top + 30);
    }
    host::RunFor(0.1);
    CHECK(host::SaveScreenshot(std::getenv("LAMPBLACK_TITLE_PICTURE")));
}
