#include "Workshop.h"

#include <doctest/doctest.h>

#include <files/ContainerWriter.h>
#include <resources/Container.h>

using namespace lampblack::rsrc;
using namespace lampblack::files;

namespace {

std::string Text(Bytes inBytes)
{
    return std::string((const char*)inBytes.data(), inBytes.size());
}

// A MacBinary file with both forks, all of its Finder information and a name.
std::string PutMacBinary(const Workshop& inShop)
{
    Build(inShop, "fork", "resource 'STR ' (128, \"n\", purgeable) { \"hello\" };");
    const std::string fork = inShop.Get("fork");
    FileParts parts;
    parts.name = "caf\x8E";
    parts.finderInfo = { 'TEXT', 'lamp', 0x2104, { 1, 2 }, 3 };
    parts.resourceFork = { (const uint8_t*)fork.data(), fork.size() };
    parts.dataFork = { (const uint8_t*)"data\r", 5 };
    parts.dates = { 0xB0000000, 0xB0000001 };
    const std::vector<uint8_t> bytes = WriteMacBinary(parts);
    return inShop.Put("in.bin", std::string(bytes.begin(), bytes.end()));
}

} // namespace

TEST_CASE("convert: each form keeps both forks, the Finder information and the name")
{
    Workshop shop;
    const std::string in = PutMacBinary(shop);
    const struct {
        const char* name;
        Form form;
    } forms[] = { { "applesingle", Form::AppleSingle },
                  { "macbinary", Form::MacBinary },
                  { "binhex", Form::BinHex } };
    for (const auto& form : forms) {
        CAPTURE(form.name);
        REQUIRE(Run({ "convert", in, "--to", form.name, "-o", shop.Path("out") }).code == 0);
        const std::string bytes = shop.Get("out");
        const Container container = ReadContainer({ (const uint8_t*)bytes.data(), bytes.size() });
        CHECK(container.form == form.form);
        CHECK(container.problems.empty());
        CHECK(container.name == "caf\x8E");
        CHECK(Text(container.dataFork) == "data\r");
        CHECK(Text(container.resourceFork) == shop.Get("fork"));
        CHECK(+container.finderInfo.fdType == 'TEXT');
        CHECK(+container.finderInfo.fdCreator == 'lamp');
        CHECK(+container.finderInfo.fdFlags == 0x2104);
    }
    CHECK(Run({ "convert", in, "--to", "raw", "-o", shop.Path("out") }).code == 0);
    CHECK(shop.Get("out") == shop.Get("fork"));
}

TEST_CASE("convert: AppleDouble named as a sidecar puts the data fork beside it")
{
    Workshop shop;
    const std::string in = PutMacBinary(shop);
    const Outcome converted = Run({ "convert", in, "--to", "appledouble", "-o", shop.Path("._name") });
    CHECK(converted.code == 0);
    CHECK(converted.errors.empty());
    CHECK(shop.Get("name") == "data\r");
    CHECK(Run({ "list", shop.Path("name") }).output == "'STR '    128        6  purgeable  \"n\"\n");
    CHECK(Run({ "convert", in, "--to", "appledouble", "-o", shop.Path("other") })
              .errors.find("has no place in AppleDouble") != std::string::npos);
}

TEST_CASE("convert: a file with a sidecar is read as a whole")
{
    Workshop shop;
    REQUIRE(Run({ "convert", PutMacBinary(shop), "--to", "appledouble", "-o", shop.Path("._name") }).code ==
            0);
    REQUIRE(Run({ "convert", shop.Path("name"), "--to", "binhex", "-o", shop.Path("out.hqx") }).code == 0);
    const auto forks = lampblack::resources::LocateForks(shop.Path("out.hqx"));
    CHECK(Text(forks.dataFork) == "data\r");
    CHECK(Text(forks.resourceFork) == shop.Get("fork"));
    CHECK(+forks.finderInfo.fdType == 'TEXT');
}

TEST_CASE("convert: a MacBinary file is unwrapped in place")
{
    Workshop shop;
    std::filesystem::rename(PutMacBinary(shop), shop.Path("name"));
    REQUIRE(Run({ "convert", shop.Path("name"), "--to", "appledouble", "-o", shop.Path("._name") }).code ==
            0);
    CHECK(shop.Get("name") == "data\r");
    CHECK(Text(lampblack::resources::LocateForks(shop.Path("name")).resourceFork) == shop.Get("fork"));
}

TEST_CASE("convert: to text and from text")
{
    Workshop shop;
    const std::string fork = Build(shop, "fork", "resource 'STR ' (128) { \"hello\" };");
    REQUIRE(Run({ "convert", fork, "--to", "text", "-o", shop.Path("out.r") }).code == 0);
    CHECK(shop.Get("out.r") == "resource 'STR ' (128) {\n    \"hello\"\n};\n");
    REQUIRE(Run({ "convert", shop.Path("out.r"), "--to", "macbinary", "-o", shop.Path("out.bin"), "--type",
                  "rsrc", "--creator", "RSED", "--name", "New" })
                .code == 0);
    const auto forks = lampblack::resources::LocateForks(shop.Path("out.bin"));
    CHECK(Text(forks.resourceFork) == shop.Get("fork"));
    CHECK(+forks.finderInfo.fdType == 'rsrc');
    CHECK(forks.containers[0]->name == "New");
    CHECK(forks.dataFork.empty());
}

TEST_CASE("convert --swap-custom: an older file's records become this machine's")
{
    Workshop shop;
    const char* text = "resource 'CNTS' (1) { smallSize }; resource 'CTL#' (1) { { 1 } };";
    const std::string older = shop.Path("older");
    REQUIRE(Run({ "build", "--big-endian-custom", shop.Put("a.r", text), "-o", older }).code == 0);
    REQUIRE(Run({ "convert", older, "--swap-custom", "--to", "raw", "-o", shop.Path("new") }).code == 0);
    const std::string now = Build(shop, "now", text);
    CHECK(Run({ "diff", shop.Path("new"), now }).code == 0);
    CHECK(Run({ "diff", older, now }).output == "changed  'CNTS' (1): from byte 0 on\n");
    CHECK(Run({ "dump", "--big-endian-custom", older }).output.find("smallSize") != std::string::npos);
}

TEST_CASE("convert: damage, a missing fork and wrong calls")
{
    Workshop shop;
    PutMacBinary(shop);
    REQUIRE(Run({ "convert", shop.Path("in.bin"), "--to", "binhex", "-o", shop.Path("a.hqx") }).code == 0);
    std::string hex = shop.Get("a.hqx");
    const size_t middle = hex.find('\n', 60) + 20; // in the second line
    hex[middle] = hex[middle] == 'A' ? 'B' : 'A';
    const Outcome damaged = Run({ "convert", shop.Put("b.hqx", hex), "--to", "raw", "-o", shop.Path("x") });
    CHECK(damaged.code == 1);
    CHECK(damaged.errors.find("check sum") != std::string::npos);
    CHECK_FALSE(std::filesystem::exists(shop.Path("x")));
    CHECK(Run({ "convert", shop.Put("plain", "text"), "--to", "raw", "-o", shop.Path("x") }).code == 1);
    CHECK(Run({ "convert", shop.Path("plain"), "--to", "zip", "-o", "x" }).code == 2);
    CHECK(Run({ "convert", shop.Path("plain"), "-o", "x" }).code == 2);
    CHECK(Run({ "convert", shop.Path("plain"), "--to", "raw" }).code == 2);
}
