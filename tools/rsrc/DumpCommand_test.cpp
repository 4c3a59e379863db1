#include "Workshop.h"

#include <doctest/doctest.h>

using namespace lampblack::rsrc;

TEST_CASE("dump: all resources, those of a type, one")
{
    Workshop shop;
    const std::string fork = Build(
        shop, "a", "resource 'STR ' (-5) { \"x\" }; resource 'STR ' (2) { \"y\" }; data 'abcd' (1) { };");
    const std::string head = "// a, written by rsrc dump.\n\n";
    const std::string first = "resource 'STR ' (-5) {\n    \"x\"\n};\n";
    const std::string second = "resource 'STR ' (2) {\n    \"y\"\n};\n";
    CHECK(Run({ "dump", fork }).output == head + first + "\n" + second + "\ndata 'abcd' (1) { };\n");
    CHECK(Run({ "dump", fork, "STR" }).output == head + first + "\n" + second);
    CHECK(Run({ "dump", fork, "STR ", "-5" }).output == head + first);
    CHECK(Run({ "dump", fork, "STR ", "9" }).code == 1);
    CHECK(Run({ "dump", fork, "STR ", "9x" }).code == 2);
}

TEST_CASE("dump --type-file: types of the user's own, included by the text")
{
    Workshop shop;
    const std::string types = shop.Put("types.r", "type 'Rank' { score: longint; };\n");
    const std::string fork = Build(shop, "a", "type 'Rank' { longint; }; resource 'Rank' (1) { -7 };");
    const std::string text = shop.Path("out.r");
    REQUIRE(Run({ "dump", fork, "--type-file", types, "-o", text }).code == 0);
    CHECK(shop.Get("out.r") == "// a, written by rsrc dump.\n#include \"" + types +
                                   "\"\n\nresource 'Rank' (1) {\n    -7  // score\n};\n");
    REQUIRE(Run({ "build", text, "-o", shop.Path("b") }).code == 0);
    CHECK(shop.Get("b") == shop.Get("a"));
    CHECK(Run({ "dump", fork, "--type-file", shop.Put("bad.r", "type 5;") }).code == 1);
}

TEST_CASE("dump: the resources of a damaged file that are whole are written, and the others told")
{
    Workshop shop;
    Build(shop, "a", "data 'abcd' (1) { \"x\" }; data 'abcd' (2) { \"y\" };");
    std::string bytes = shop.Get("a");
    bytes[256 + 5] = 0x7F; // the length of the second
    const Outcome dumped = Run({ "dump", shop.Put("b", bytes) });
    CHECK(dumped.code == 1);
    CHECK(dumped.output.find("data 'abcd' (1)") != std::string::npos);
    CHECK(dumped.errors.find("'abcd' (2) is cut off") != std::string::npos);
}
