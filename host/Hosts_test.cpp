// Settings, the overrides of Gestalt, and PNG files.
#include "Parts.h"

#include <doctest/doctest.h>

using namespace lampblack::host;

TEST_CASE("Configure: refused once the machine is running, and the settings stay")
{
    Machine();
    Settings settings;
    settings.width = 12;
    CHECK_FALSE(Configure(settings));
    CHECK(CurrentSettings().width == 1024);
}

TEST_CASE("CurrentSettings: application and home are filled in")
{
    CHECK(CurrentSettings().application.filename() == "host_test");
    CHECK_FALSE(CurrentSettings().home.empty());
}

TEST_CASE("GestaltOverride: the last of SetGestalt and FailGestalt counts, other selectors have none")
{
    bool fails = true;
    SInt32 value = 0;
    CHECK_FALSE(GestaltOverride('none', &fails, &value));
    SetGestalt('sysv', 0x1039);
    REQUIRE(GestaltOverride('sysv', &fails, &value));
    CHECK_FALSE(fails);
    CHECK(value == 0x1039);
    FailGestalt('sysv');
    REQUIRE(GestaltOverride('sysv', &fails, &value));
    CHECK(fails);
}
