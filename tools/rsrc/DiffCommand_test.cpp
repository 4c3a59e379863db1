#include "LineDiff.h"
#include "Workshop.h"

#include <doctest/doctest.h>

using namespace lampblack::rsrc;

TEST_CASE("diff: nothing for the same resources in another order")
{
    Workshop shop;
    const std::string a = Build(shop, "a", "data 'aaaa' (1) { \"x\" }; data 'bbbb' (2) { };");
    const std::string b = Build(shop, "b", "data 'bbbb' (2) { }; data 'aaaa' (1) { \"x\" };");
    const Outcome same = Run({ "diff", a, b });
    CHECK(same.code == 0);
    CHECK(same.output.empty());
}

TEST_CASE("diff: added, removed and changed in name, attributes and bytes")
{
    Workshop shop;
    const std::string a = Build(shop, "a", "data 'aaaa' (1, \"n\") { \"xyz\" }; data 'gone' (2) { \"12\" };");
    const std::string b =
        Build(shop, "b", "data 'aaaa' (1, \"m\", locked) { \"xyZ!\" }; data 'new!' (3, \"q\") { };");
    const Outcome different = Run({ "diff", a, b });
    CHECK(different.code == 1);
    CHECK(different.output ==
          "changed  'aaaa' (1): name \"n\" -> \"m\", attributes 0 -> 16, 3 -> 4 bytes, from byte 2 on\n"
          "removed  'gone' (2), 2 bytes\n"
          "added    'new!' (3) \"q\", 0 bytes\n");
}

TEST_CASE("diff --text: the lines that differ; a description is compared as what it makes")
{
    Workshop shop;
    const std::string a = Build(shop, "a", "resource 'STR#' (1) { { \"one\", \"two\" } };");
    const std::string b = shop.Put("b.r", "resource 'STR#' (1) { { \"one\", \"2\" } };");
    CHECK(Run({ "diff", "--text", a, b }).output == "changed  'STR#' (1): 10 -> 8 bytes, from byte 6 on\n"
                                                    "    -     { \"one\"; \"two\" }  // strings\n"
                                                    "    +     { \"one\"; \"2\" }  // strings\n");
}

TEST_CASE("diff: a key that is there twice is compared by its order")
{
    Workshop shop;
    const std::string a = Build(shop, "a", "data 'a   ' (1) { }; duplicate data 'a   ' (1) { \"x\" };");
    const std::string b = Build(shop, "b", "data 'a   ' (1) { };");
    CHECK(Run({ "diff", a, b }).output == "removed  'a   ' (1), 1 bytes\n");
}

TEST_CASE("diff: wrong calls and files that cannot be read")
{
    Workshop shop;
    CHECK(Run({ "diff", "a" }).code == 2);
    CHECK(Run({ "diff", shop.Path("none"), shop.Path("none") }).code == 1);
}

TEST_CASE("LineDiff: the fewest lines")
{
    CHECK(LineDiff("a\nb\nc\nd\n", "a\nc\nx\nd\n") == "- b\n+ x\n");
    CHECK(LineDiff("", "a\n") == "+ a\n");
    CHECK(LineDiff("a\n", "a\n").empty());
}
