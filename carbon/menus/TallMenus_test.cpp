// Menus that do not fit on the screen, and the least width of pop-up menus.
#include "OpenMenus.h"
#include "PopUpMenu.h"

#include <Carbon/Events.h>
#include <Carbon/MacWindows.h>
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <windows/Rects.h>

#include <cstdlib>

using namespace lampblack;
using namespace lampblack::menus;

namespace {

MenuRef TallMenu(short inID)
{
    const MenuRef menu = NewMenu(inID, (ConstStr255Param) "\4Tall");
    for (int i = 1; i <= 100; ++i)
        AppendMenu(menu, (ConstStr255Param) "\4Item");
    return menu;
}

bool IsShown(const OpenMenus& inOpen, const OpenMenu& inMenu, int inRow)
{
    const Rect row = inOpen.RowBounds(inMenu, inRow);
    const Rect area = windows::Shifted(inMenu.RowArea(), inMenu.bounds.left, inMenu.bounds.top);
    return row.top >= area.top && row.bottom <= area.bottom;
}

} // namespace

TEST_CASE(
    "A menu taller than the screen: an arrow at each end that hides more, and none where there is no more")
{
    const MenuRef menu = TallMenu(143);
    {
        OpenMenus open;
        REQUIRE(open.Open({ menu }, { 40, 300 }, kMenuContextPopUp));
        const OpenMenu& shown = open.Last();
        const Point top = { (short)(shown.bounds.top + 8), 320 },
                    bottom = { (short)(shown.bounds.bottom - 8), 320 };
        CHECK_FALSE(shown.HasArrowAbove());
        CHECK(shown.HasArrowBelow());
        CHECK(open.IsOnArrow(bottom));
        CHECK_FALSE(open.IsOnArrow(top));
        CHECK(open.RowAt(shown, top) == 0);
        CHECK(open.RowAt(shown, bottom) == -1);
        CHECK(open.IsOnArrow({ 767, 320 })); // the edge of the screen, below the menu
        CHECK_FALSE(open.IsOnArrow({ 767, 100 }));
        const UInt32 paper = host::ScreenPixel({ 400, (short)(shown.bounds.right - 12) });
        const short middle = (short)((shown.bounds.left + shown.bounds.right) / 2);
        CHECK(host::ScreenPixel({ (short)(shown.bounds.bottom - 9), middle }) != paper);
        open.ScrollAt(bottom);
        CHECK(shown.scrolled > 0);
        CHECK(shown.HasArrowAbove());
        CHECK(open.IsOnArrow(top));
        CHECK(open.RowAt(shown, top) == -1);
        for (int i = 0; i < 200; ++i)
            open.ScrollAt(bottom);
        CHECK_FALSE(shown.HasArrowBelow());
        CHECK(shown.selected == 99);
        CHECK(open.RowAt(shown, bottom) == 99);
        for (int i = 0; i < 200; ++i)
            open.ScrollAt(top);
        CHECK(shown.scrolled == 0);
    }
    DisposeMenu(menu);
}

TEST_CASE("A menu taller than the screen: what the keyboard steps to comes into view")
{
    const MenuRef menu = TallMenu(144);
    {
        OpenMenus open;
        REQUIRE(open.Open({ menu }, { 40, 300 }, kMenuContextPopUp));
        for (const int row : { 99, 0, 50, 51, 20, 98, 1 }) {
            CAPTURE(row);
            open.Reveal(row);
            CHECK(IsShown(open, open.Last(), row));
        }
        open.Reveal(-1);
        open.Reveal(100);
    }
    DisposeMenu(menu);
    const MenuRef chosenFrom = TallMenu(145);
    struct Keys {
        static void Act(EventLoopTimerRef, void*)
        {
            for (int i = 0; i < 98; ++i)
                host::PressKey(kVK_DownArrow, 0x1F);
            host::PressKey(kVK_Return, 13);
        }
    };
    InstallEventLoopTimer(GetMainEventLoop(), 1, 0, Keys::Act, nullptr, nullptr);
    CHECK(PopUpMenuSelect(chosenFrom, 30, 300, 1) == (145 << 16 | 99));
    DisposeMenu(chosenFrom);
}

TEST_CASE("PopUpMenuSelect: a menu taller than the screen scrolls while the mouse waits at its end")
{
    const MenuRef menu = TallMenu(142);
    struct User {
        static void AtEnd(EventLoopTimerRef, void*) { host::MoveMouse({ 760, 330 }); }
        static void Done(EventLoopTimerRef, void*) { host::ReleaseMouse({ 740, 330 }); }
    };
    host::PressMouse({ 305, 330 });
    host::RunFor(0.05);
    InstallEventLoopTimer(GetMainEventLoop(), 1, 0, User::AtEnd, nullptr, nullptr);
    InstallEventLoopTimer(GetMainEventLoop(), 20, 0, User::Done, nullptr, nullptr);
    const SInt32 chosen = PopUpMenuSelect(menu, 30, 300, 1);
    CHECK((chosen & ~0xFFFF) == (142 << 16));
    CHECK((chosen & 0xFFFF) >= 97);
    DisposeMenu(menu);
}

TEST_CASE("A menu taller than the screen: it scrolls by time, however much the mouse trembles on the arrow")
{
    const MenuRef menu = TallMenu(146);
    static int gTremble;
    struct User {
        static void OnArrow(EventLoopTimerRef, void*)
        {
            for (int i = 0; i < gTremble; ++i)
                host::MoveMouse({ (short)(750 + i % 2), 330 });
            host::MoveMouse({ 400, 330 });
            host::ReleaseMouse({ 400, 330 });
        }
    };
    SInt32 chosen[2];
    for (const int tremble : { 2, 60 }) {
        gTremble = tremble;
        host::PressMouse({ 305, 330 });
        host::RunFor(0.05);
        InstallEventLoopTimer(GetMainEventLoop(), 1, 0, User::OnArrow, nullptr, nullptr);
        chosen[tremble == 60] = PopUpMenuSelect(menu, 30, 300, 1) & 0xFFFF;
    }
    CHECK(chosen[0] > 0);
    CHECK(chosen[1] <= chosen[0] + 2);
    DisposeMenu(menu);
}

TEST_CASE(
    "PopUpMenuSelect: held where it was pressed and let go, the item stays, wherever the menu had to go")
{
    const MenuRef menu = TallMenu(149);
    struct User {
        static void Tremble(EventLoopTimerRef, void*) { host::MoveMouse({ 742, 332 }); }
        static void LetGo(EventLoopTimerRef, void*) { host::ReleaseMouse({ 741, 331 }); }
        static void Stray(EventLoopTimerRef, void*)
        {
            host::MoveMouse({ 600, 332 });
            host::MoveMouse({ 741, 331 }); // back at the start, and on an item that was meant
        }
    };
    for (const bool strays : { false, true }) {
        CAPTURE(strays);
        host::PressMouse({ 740, 330 });
        host::RunFor(0.05);
        InstallEventLoopTimer(GetMainEventLoop(), 1, 0, strays ? User::Stray : User::Tremble, nullptr,
                              nullptr);
        InstallEventLoopTimer(GetMainEventLoop(), 1.02, 0, User::LetGo, nullptr, nullptr);
        const SInt32 chosen = PopUpMenuSelect(menu, 735, 300, 7);
        CHECK((chosen == (149 << 16 | 7)) == !strays);
    }
    DisposeMenu(menu);
}

TEST_CASE("PopUpMenu: the menu is at least as wide as what it belongs to")
{
    const MenuRef menu = NewMenu(147, (ConstStr255Param) "\6Narrow");
    AppendMenu(menu, (ConstStr255Param) "\3A;B");
    {
        OpenMenus open;
        REQUIRE(open.Open({ menu }, { 100, 300 }, kMenuContextPopUp, 240));
        CHECK(open.Last().bounds.right - open.Last().bounds.left == 240);
        CHECK(open.Last().layout.rows[0].bounds.right == 240);
    }
    {
        OpenMenus open;
        REQUIRE(open.Open({ menu }, { 100, 300 }, kMenuContextPopUp, 5));
        CHECK(open.Last().bounds.right - open.Last().bounds.left < 100);
        CHECK(open.Last().bounds.right - open.Last().bounds.left > 20);
    }
    CHECK(PopUpMenu(nullptr, { 0, 0 }, 1, 100) == 0);
    DisposeMenu(menu);
}

TEST_CASE("A picture of a tall menu" * doctest::skip(std::getenv("LAMPBLACK_TALL_PICTURE") == nullptr))
{
    const MenuRef menu = TallMenu(148);
    OpenMenus open;
    REQUIRE(open.Open({ menu }, { 40, 300 }, kMenuContextPopUp));
    open.Reveal(60);
    open.Select(0, 60);
    CHECK(host::SaveScreenshot(std::getenv("LAMPBLACK_TALL_PICTURE")));
    open.CloseTo(0);
    DisposeMenu(menu);
}
