// Gestalt: who answers, and what is unknown.
#include <Carbon/Gestalt.h>

#include <doctest/doctest.h>
#include <lampblack/host.h>

namespace {

SInt32 Ask(OSType inSelector)
{
    SInt32 value = -77;
    CHECK(Gestalt(inSelector, &value) == noErr);
    return value;
}

} // namespace

TEST_CASE("Gestalt: this system is of the class of 10.4, with what goes with it")
{
    CHECK(Ask('sysv') == 0x1049);
    CHECK(Ask('sys1') == 10);
    CHECK(Ask('sys2') == 4);
    CHECK((Ask('menu') & gestaltMenuMgrAquaLayoutMask) != 0);
    CHECK(Ask('cbon') == 0x0160);
    CHECK(Ask('qtim') >= 0x07000000);
    CHECK((Ask('ttsc') & 1) == 1);
    CHECK((Ask('fs  ') & 1) == 1);
    CHECK(Ask('vers') > 0);
    CHECK((UInt32)(Ask('cput') - 0x101) > 9); // no PowerPC 60x
    CHECK(Ask('ram ') > 0);
    CHECK(Ask('pgsz') == 4096);
}

TEST_CASE("Gestalt: an unknown selector leaves the answer alone; a null answer is paramErr")
{
    SInt32 value = 5;
    CHECK(Gestalt('zzzz', &value) == gestaltUndefSelectorErr);
    CHECK(value == 5);
    CHECK(Gestalt('sysv', nullptr) == paramErr);
}

TEST_CASE(
    "NewGestaltValue, ReplaceGestaltValue, SetGestaltValue, DeleteGestaltValue: an application's own answers")
{
    SInt32 value = 0;
    CHECK(ReplaceGestaltValue('mine', 1) == gestaltUndefSelectorErr);
    CHECK(DeleteGestaltValue('mine') == gestaltUndefSelectorErr);
    CHECK(NewGestaltValue('mine', 1) == noErr);
    CHECK(NewGestaltValue('mine', 2) == gestaltDupSelectorErr);
    CHECK(NewGestaltValue('sysv', 2) == gestaltDupSelectorErr);
    CHECK(Ask('mine') == 1);
    CHECK(ReplaceGestaltValue('mine', 3) == noErr);
    CHECK(Ask('mine') == 3);
    CHECK(SetGestaltValue('mine', 4) == noErr);
    CHECK(Ask('mine') == 4);
    CHECK(DeleteGestaltValue('mine') == noErr);
    CHECK(Gestalt('mine', &value) == gestaltUndefSelectorErr);
}

TEST_CASE("Gestalt: the host's control interface stands before everything")
{
    SetGestaltValue('ovrd', 1);
    lampblack::host::SetGestalt('ovrd', 0x1030);
    CHECK(Ask('ovrd') == 0x1030);
    lampblack::host::FailGestalt('ovrd');
    SInt32 value = 9;
    CHECK(Gestalt('ovrd', &value) == gestaltUndefSelectorErr);
    CHECK(value == 9);
}
