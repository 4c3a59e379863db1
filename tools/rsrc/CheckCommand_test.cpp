#include "Workshop.h"

#include <algorithm>

#include <doctest/doctest.h>

#include <files/ContainerWriter.h>

using namespace lampblack::rsrc;
using namespace lampblack::files;

namespace {

std::string AppleDouble(FInfo inInfo, const std::string& inFork)
{
    FileParts parts;
    parts.finderInfo = inInfo;
    parts.resourceFork = { (const uint8_t*)inFork.data(), inFork.size() };
    const std::vector<uint8_t> bytes = WriteAppleDouble(parts);
    return std::string(bytes.begin(), bytes.end());
}

FInfo Info(OSType inType, UInt16 inFlags = 0)
{
    return { inType, 'lamp', inFlags, { 0, 0 }, 0 };
}

// The only finding in a folder that holds only "files"; empty when there is none.
std::string Finding(const Workshop& inShop)
{
    const Outcome checked = Run({ "check", inShop.Path("files") });
    CHECK(checked.code == (checked.output.empty() ? 0 : 1));
    CHECK(std::count(checked.output.begin(), checked.output.end(), '\n') <= 1);
    return checked.output.empty() ? "" : checked.output.substr(inShop.Path("files/").size());
}

struct Folder : Workshop {
    Folder() { std::filesystem::create_directory(Path("files")); }
    std::string Fork() const
    {
        Build(*this, "fork", "data 'STR ' (128) { \"abc\\n\\ndef\" }; data 'abcd' (1) { };");
        return Get("fork");
    }
};

} // namespace

TEST_CASE("check: sound files, with and without sidecars, are no finding")
{
    Folder shop;
    shop.Put("files/name", "data");
    shop.Put("files/._name", AppleDouble(Info('TEXT'), shop.Fork()));
    shop.Put("files/a.rsrc", shop.Fork());
    shop.Put("files/text", "line\nline\n");
    CHECK(Finding(shop).empty());
}

TEST_CASE("check: an orphan")
{
    Folder shop;
    shop.Put("files/._name", AppleDouble(Info('TEXT'), shop.Fork()));
    CHECK(Finding(shop) == "._name: an orphan: there is no file 'name' that it belongs to\n");
}

TEST_CASE("check: a sidecar in an archive's own tree belongs to the file beside that tree")
{
    Folder shop;
    std::filesystem::create_directories(shop.Path("files/__MACOSX/sub"));
    std::filesystem::create_directories(shop.Path("files/sub"));
    shop.Put("files/sub/name", "data");
    shop.Put("files/__MACOSX/sub/._name", AppleDouble(Info('TEXT'), shop.Fork()));
    CHECK(Finding(shop).empty());
    std::filesystem::remove(shop.Path("files/sub/name"));
    CHECK(Finding(shop).find("an orphan") != std::string::npos);
}

TEST_CASE("check: what the Finder information promises and the fork does not keep")
{
    const struct {
        FInfo info;
        const char* finding;
    } cases[] = {
        { Info('APPL'),
          "name: the Finder information says 'APPL', which lives in its resource fork, and there is none\n" },
        { Info('TEXT', 0x2000),
          "name: the Finder information promises a bundle, and there is no resource fork\n" },
        { Info('TEXT', 0x0400),
          "name: the Finder information promises an icon of its own, and there is no resource fork\n" },
        { Info('TEXT', 0x8000),
          "name: the Finder information says that this is an alias, and there is no resource fork\n" },
        { Info('TEXT'), "" },
    };
    for (const auto& expected : cases) {
        Folder shop;
        shop.Put("files/name", "data");
        shop.Put("files/._name", AppleDouble(expected.info, ""));
        CHECK(Finding(shop) == expected.finding);
    }
}

TEST_CASE("check: converted line ends, cut-off files and replaced bytes")
{
    Folder shop;
    // 0x10D bytes of data, so that there are returns in the numbers at the fork's front.
    Build(shop, "returns", "data 'TEXT' (128) { \"" + std::string(264, 'x') + "\\n\" };");
    std::string fork = shop.Get("returns");
    for (char& byte : fork)
        byte = byte == '\r' ? '\n' : byte;
    shop.Put("files/a.rsrc", fork);
    CHECK(
        Finding(shop) ==
        "a.rsrc: a resource fork that cannot be read: a conversion has turned its returns into line feeds\n");
    // Line feeds, too, but bytes are missing, which is no conversion's doing.
    Build(shop, "feeds", "data 'TEXT' (128) { \"one\\rtwo\\r\" };");
    fork = shop.Get("feeds");
    const size_t whole = fork.size();
    fork.resize(whole - 20);
    shop.Put("files/a.rsrc", fork);
    CHECK(Finding(shop) == "a.rsrc: a resource fork of " + std::to_string(whole) + " bytes, cut off after " +
                               std::to_string(whole - 20) + "\n");
    fork = shop.Fork();
    fork[fork.size() - 30] = '\xEF';
    fork.replace(fork.size() - 29, 2, "\xBF\xBD");
    shop.Put("files/a.rsrc", fork + "\xEF\xBF\xBD");
    shop.Put("files/a.rsrc", AppleDouble(Info('TEXT'), fork).substr(0, 120) + "\xEF\xBF\xBD");
    CHECK(Finding(shop).find("a conversion of text has replaced its bytes") != std::string::npos);
}

TEST_CASE("check: a sidecar that is empty, or no AppleDouble")
{
    Folder shop;
    shop.Put("files/name", "data");
    shop.Put("files/._name", "");
    CHECK(Finding(shop).find("an empty file instead of") != std::string::npos);
    shop.Put("files/._name", "some text");
    CHECK(Finding(shop) == "._name: not AppleDouble, but named like a sidecar\n");
    shop.Put("files/._name", AppleDouble(Info('TEXT'), std::string(300, 'x')));
    CHECK(Finding(shop).starts_with("._name: the resource fork: "));
}

TEST_CASE("check: damaged MacBinary, and a resource file without content")
{
    Folder shop;
    FileParts parts;
    parts.name = "Name";
    std::vector<uint8_t> bytes = WriteMacBinary(parts);
    bytes[70] ^= 1;
    shop.Put("files/a.bin", std::string(bytes.begin(), bytes.end()));
    CHECK(Finding(shop).starts_with("a.bin: MacBinary with a damaged header"));
    std::filesystem::remove(shop.Path("files/a.bin"));
    shop.Put("files/b.rsrc", "");
    CHECK(Finding(shop) == "b.rsrc: empty, and no resource fork beside it\n");
}

TEST_CASE("check: wrong calls")
{
    const Folder shop;
    CHECK(Run({ "check" }).code == 2);
    CHECK(Run({ "check", "a", "b" }).code == 2);
    CHECK(Run({ "check", shop.Path("none") }).code == 1);
}
