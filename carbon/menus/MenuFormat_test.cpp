// The bytes of menus.
#include "MenuFormat.h"

#include <doctest/doctest.h>

#include <string>

using namespace lampblack::menus;

namespace {

// ID 129, "File", its first item "New" with key N, its second disabled with submenu 200.
const std::string kMenu = std::string("\x00\x81\0\0\0\0\0\0\0\0\xFF\xFF\xFF\xFB\x04"
                                      "File\x03"
                                      "New\0N\0\0\x04More\0\x1B\xC8\0\0",
                                      15 + 4 + 1 + 3 + 4 + 1 + 4 + 4 + 1);

} // namespace

TEST_CASE("ReadMenu: title, items, keys, submenus and what is disabled")
{
    MenuRecord menu;
    REQUIRE(ReadMenu(kMenu.data(), kMenu.size(), menu));
    CHECK(menu.id == 129);
    CHECK(menu.title == "File");
    REQUIRE(menu.items.size() == 2);
    CHECK(menu.items[0].text == "New");
    CHECK(menu.items[0].key == 'N');
    CHECK(!menu.items[0].Has(kMenuItemAttrDisabled));
    CHECK(menu.items[1].submenuID == 200);
    CHECK(menu.items[1].key == 0);
    CHECK(menu.items[1].Has(kMenuItemAttrDisabled));
}

TEST_CASE("ReadMenu: cut off anywhere, it is refused")
{
    for (size_t size = 0; size < kMenu.size(); ++size) {
        MenuRecord menu;
        CHECK(!ReadMenu(kMenu.data(), size, menu));
    }
}

TEST_CASE("ReadExtensions: commands and modifiers reach their items; cut off, the rest stays")
{
    const std::string bytes("\0\0\0\x02\0\0\0\x01quit\x01\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 36);
    MenuRecord menu;
    REQUIRE(ReadMenu(kMenu.data(), kMenu.size(), menu));
    ReadExtensions(bytes.data(), bytes.size(), menu);
    CHECK(menu.items[0].command == 0);
    CHECK(menu.items[1].command == kHICommandQuit);
    CHECK(menu.items[1].modifiers == kMenuShiftModifier);
    CHECK(menu.items[1].submenuID == 200);
    for (size_t size = 0; size < bytes.size(); ++size)
        ReadExtensions(bytes.data(), size, menu);
}
