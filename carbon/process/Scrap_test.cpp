// The scrap: flavors, promises, references, and the clipboard of the desktop.
#include <Carbon/MacErrors.h>
#include <Carbon/Scrap.h>

#include <doctest/doctest.h>
#include <lampblack/host.h>

#include <cstring>
#include <string>

namespace host = lampblack::host;

namespace {

ScrapRef FreshScrap()
{
    ScrapRef scrap = nullptr;
    REQUIRE(ClearScrap(&scrap) == noErr);
    return scrap;
}

OSStatus PutText(ScrapRef scrap, OSType type, const std::string& text)
{
    return PutScrapFlavor(scrap, type, kScrapFlavorMaskNone, static_cast<Size>(text.size()), text.data());
}

std::string TextOf(ScrapRef scrap, OSType type)
{
    char buffer[64];
    Size size = sizeof(buffer);
    REQUIRE(GetScrapFlavorData(scrap, type, &size, buffer) == noErr);
    return std::string(buffer, static_cast<size_t>(size));
}

struct Keeper {
    int calls = 0;
    bool keeps = true;
    bool clears = false;
    OSStatus result = noErr;
};

OSStatus Keep(ScrapRef scrap, ScrapFlavorType type, void* data)
{
    auto* keeper = static_cast<Keeper*>(data);
    ++keeper->calls;
    Size nested = 0;
    CHECK(GetScrapFlavorData(scrap, type, &nested, nullptr) == noTypeErr); // not without end
    if (keeper->clears)
        ClearCurrentScrap();
    else if (keeper->keeps)
        PutText(scrap, type, "kept");
    return keeper->result;
}

} // namespace

TEST_CASE("PutScrapFlavor: what was put is there, once, with its flags")
{
    ScrapRef scrap = FreshScrap();
    CHECK(PutScrapFlavor(scrap, 'DATA', kScrapFlavorMaskSenderOnly, 5, "a\0b\0c") == noErr);
    CHECK(TextOf(scrap, 'DATA') == std::string("a\0b\0c", 5));
    ScrapFlavorFlags flags = 0;
    CHECK(GetScrapFlavorFlags(scrap, 'DATA', &flags) == noErr);
    CHECK(flags == kScrapFlavorMaskSenderOnly);
    CHECK(PutText(scrap, 'DATA', "again") == duplicateScrapFlavorErr);
    CHECK(GetScrapFlavorFlags(scrap, 'none', &flags) == noTypeErr);
    UInt32 count = 0;
    CHECK(GetScrapFlavorCount(scrap, &count) == noErr);
    CHECK(count == 1);
}

TEST_CASE("GetScrapFlavorData: a small buffer gets its part, and the whole size comes back")
{
    ScrapRef scrap = FreshScrap();
    PutText(scrap, 'DATA', "abcdef");
    char buffer[4] = "xyz";
    Size size = 2;
    CHECK(GetScrapFlavorData(scrap, 'DATA', &size, buffer) == noErr);
    CHECK(size == 6);
    CHECK(std::string(buffer) == "abz");
    size = 0;
    CHECK(GetScrapFlavorData(scrap, 'DATA', &size, nullptr) == noErr);
    CHECK(size == 6);
}

TEST_CASE("GetScrapFlavorInfoList: fills no more than the room and says how many")
{
    ScrapRef scrap = FreshScrap();
    PutText(scrap, 'aaaa', "1");
    PutText(scrap, 'bbbb', "2");
    ScrapFlavorInfo info[3] = {};
    UInt32 count = 1;
    CHECK(GetScrapFlavorInfoList(scrap, &count, info) == noErr);
    CHECK(count == 1);
    CHECK(info[0].flavorType == 'aaaa');
    CHECK(info[1].flavorType == 0);
    count = 3;
    CHECK(GetScrapFlavorInfoList(scrap, &count, info) == noErr);
    CHECK(count == 2);
    CHECK(info[1].flavorType == 'bbbb');
}

TEST_CASE("ClearCurrentScrap: an older reference is refused by every call")
{
    ScrapRef old = FreshScrap();
    PutText(old, 'DATA', "x");
    CHECK(ClearCurrentScrap() == noErr);
    Size size = 0;
    UInt32 count = 0;
    ScrapFlavorFlags flags;
    CHECK(PutText(old, 'MORE', "x") == badScrapRefErr);
    CHECK(GetScrapFlavorSize(old, 'DATA', &size) == badScrapRefErr);
    CHECK(GetScrapFlavorData(old, 'DATA', &size, nullptr) == badScrapRefErr);
    CHECK(GetScrapFlavorFlags(old, 'DATA', &flags) == badScrapRefErr);
    CHECK(GetScrapFlavorCount(old, &count) == badScrapRefErr);
    CHECK(GetScrapFlavorInfoList(old, &count, nullptr) == badScrapRefErr);
    CHECK(SetScrapPromiseKeeper(old, Keep, nullptr) == badScrapRefErr);
    CHECK(ClearScrap(&old) == badScrapRefErr);
    CHECK(GetScrapFlavorCount(nullptr, &count) == badScrapRefErr);
    CHECK(GetScrapFlavorCount(reinterpret_cast<ScrapRef>(&count), &count) == badScrapRefErr);
}

TEST_CASE("Scrap Manager: null results and impossible sizes are paramErr")
{
    ScrapRef scrap = FreshScrap();
    Size size = -1;
    char byte = 0;
    CHECK(GetCurrentScrap(nullptr) == paramErr);
    CHECK(ClearScrap(nullptr) == paramErr);
    CHECK(GetScrapFlavorSize(scrap, 'DATA', nullptr) == paramErr);
    CHECK(GetScrapFlavorData(scrap, 'DATA', nullptr, &byte) == paramErr);
    CHECK(GetScrapFlavorData(scrap, 'DATA', &size, &byte) == paramErr);
    CHECK(GetScrapFlavorCount(scrap, nullptr) == paramErr);
    CHECK(PutScrapFlavor(scrap, 'DATA', 0, -1, &byte) == paramErr);
    CHECK(PutScrapFlavor(scrap, 'DATA', 0, -2, nullptr) == paramErr);
    CHECK(PutScrapFlavor(scrap, kScrapReservedFlavorType, 0, 1, &byte) == paramErr);
}

TEST_CASE("Promises: the keeper is called once, when the data is wanted")
{
    Keeper keeper;
    ScrapRef scrap = FreshScrap();
    CHECK(SetScrapPromiseKeeper(scrap, Keep, &keeper) == noErr);
    CHECK(PutScrapFlavor(scrap, 'DATA', 0, 4, nullptr) == noErr);
    Size size = 0;
    CHECK(GetScrapFlavorSize(scrap, 'DATA', &size) == noErr);
    CHECK(size == 4);
    CHECK(keeper.calls == 0);
    CHECK(TextOf(scrap, 'DATA') == "kept");
    CHECK(TextOf(scrap, 'DATA') == "kept");
    CHECK(keeper.calls == 1);
}

TEST_CASE("Promises: of unknown size are kept to tell the size, all of them by CallInScrapPromises")
{
    Keeper keeper;
    ScrapRef scrap = FreshScrap();
    SetScrapPromiseKeeper(scrap, Keep, &keeper);
    PutScrapFlavor(scrap, 'one ', 0, kScrapFlavorSizeUnknown, nullptr);
    PutScrapFlavor(scrap, 'two ', 0, kScrapFlavorSizeUnknown, nullptr);
    Size size = 0;
    CHECK(GetScrapFlavorSize(scrap, 'one ', &size) == noErr);
    CHECK(size == 4);
    CHECK(CallInScrapPromises() == noErr);
    CHECK(keeper.calls == 2);
}

TEST_CASE("Promises: a keeper that fails, forgets, clears the scrap, or is not there")
{
    Keeper keeper;
    Size size = 0;
    ScrapRef scrap = FreshScrap();
    PutScrapFlavor(scrap, 'DATA', 0, kScrapFlavorSizeUnknown, nullptr);
    CHECK(GetScrapFlavorSize(scrap, 'DATA', &size) == noTypeErr);
    SetScrapPromiseKeeper(scrap, Keep, &keeper);
    keeper.keeps = false;
    CHECK(GetScrapFlavorSize(scrap, 'DATA', &size) == noTypeErr);
    keeper.result = -1234;
    CHECK(GetScrapFlavorSize(scrap, 'DATA', &size) == -1234);
    keeper.clears = true;
    CHECK(GetScrapFlavorSize(scrap, 'DATA', &size) == badScrapRefErr);
}

TEST_CASE("'TEXT': Mac Roman goes to the clipboard as UTF-8 with line feeds")
{
    ScrapRef scrap = FreshScrap();
    PutText(scrap, 'TEXT', "caf\x8E\rtwo"); // Mac Roman e acute
    CHECK(host::PasteElsewhere() == "caf\xC3\xA9\ntwo");
}

TEST_CASE("'utxt': is what the clipboard gets, whichever came first")
{
    const UniChar letters[] = { 0x4E2D, 0xD83D, 0xDE00 };
    const std::string wide(reinterpret_cast<const char*>(letters), sizeof(letters));
    for (const bool wideFirst : { false, true }) {
        ScrapRef scrap = FreshScrap();
        if (wideFirst)
            PutText(scrap, 'utxt', wide);
        PutText(scrap, 'TEXT', "??");
        if (!wideFirst)
            PutText(scrap, 'utxt', wide);
        CHECK(host::PasteElsewhere() == "\xE4\xB8\xAD\xF0\x9F\x98\x80");
    }
}

TEST_CASE("ClearCurrentScrap: the clipboard is empty for others too, and private flavors stay private")
{
    host::CopyElsewhere("old");
    ScrapRef scrap = FreshScrap();
    CHECK(host::PasteElsewhere().empty());
    PutScrapFlavor(scrap, 'TEXT', kScrapFlavorMaskSenderOnly, 6, "secret");
    CHECK(host::PasteElsewhere().empty());
}

TEST_CASE("GetCurrentScrap: another program's copy is a new scrap with its text in both flavors")
{
    ScrapRef before = FreshScrap(), after = nullptr;
    PutText(before, 'DATA', "mine");
    host::CopyElsewhere("na\xC3\xAFve\r\nline");
    CHECK(GetCurrentScrap(&after) == noErr);
    CHECK(after != before);
    UInt32 count = 0;
    CHECK(GetScrapFlavorCount(before, &count) == badScrapRefErr);
    CHECK(TextOf(after, 'TEXT') == "na\x95ve\rline");
    const std::string wide = TextOf(after, 'utxt');
    REQUIRE(wide.size() == 20);
    UniChar third;
    memcpy(&third, wide.data() + 4, 2);
    CHECK(third == 0xEF);
    Size size = 0;
    CHECK(GetScrapFlavorSize(after, 'DATA', &size) == noTypeErr);
}

TEST_CASE("Promises: promised text is on the clipboard once the user has turned to another program")
{
    Keeper keeper;
    ScrapRef scrap = FreshScrap();
    SetScrapPromiseKeeper(scrap, Keep, &keeper);
    PutScrapFlavor(scrap, 'TEXT', 0, kScrapFlavorSizeUnknown, nullptr);
    host::RunFor(0.1);
    CHECK(keeper.calls == 0);
    host::SwitchProgram(false);
    host::RunFor(0.1);
    CHECK(keeper.calls == 1);
    CHECK(host::PasteElsewhere() == "kept");
    host::SwitchProgram(true);
    host::RunFor(0.1);
}
