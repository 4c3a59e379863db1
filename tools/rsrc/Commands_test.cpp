#include "Workshop.h"

#include <doctest/doctest.h>

#include <files/Container.h>

#include <sys/stat.h>

using namespace lampblack::rsrc;
namespace files = lampblack::files;

namespace {

constexpr char kText[] = "data 'b\\$22\\0x01\xC3\xA9' (-1, \"caf\xC3\xA9\", purgeable) { \"xyz\" };\n"
                         "resource 'STR ' (128) { \"hello\" };\n";

} // namespace

TEST_CASE("build, list --json, get: a round trip")
{
    Workshop shop;
    const std::string out = shop.Path("a.rsrc");
    CHECK(Run({ "build", shop.Put("a.r", kText), "-o", out }).code == 0);
    const Outcome list = Run({ "list", "--json", out });
    CHECK(list.code == 0);
    CHECK(list.output ==
          "[\n"
          "  {\"type\": \"b\\\"\\u0001\xC3\xA9\", \"id\": -1, \"name\": \"caf\xC3\xA9\", \"attributes\": 32, "
          "\"size\": 3},\n"
          "  {\"type\": \"STR \", \"id\": 128, \"name\": null, \"attributes\": 0, \"size\": 6}\n"
          "]\n");
    CHECK(Run({ "get", out, "STR", "128" }).output == "\x05hello");
    CHECK(Run({ "list", out }).output.find("'STR '    128        6  -\n") != std::string::npos);
}

TEST_CASE("build: type and creator make an AppleDouble file of two entries")
{
    Workshop shop;
    const std::string out = shop.Path("a.rsrc");
    CHECK(Run({ "build", shop.Put("a.r", kText), "-o", out, "--creator", "LB\xC3\xA9!", "--type", "APPL" })
              .code == 0);
    std::string bytes;
    REQUIRE(LoadFile(out, &bytes));
    const auto container = files::ReadContainer({ (const uint8_t*)bytes.data(), bytes.size() });
    CHECK(container.form == files::Form::AppleDouble);
    CHECK(container.problems.empty());
    CHECK(container.finderInfo.fdType == 0x4150504C);
    CHECK(container.finderInfo.fdCreator == 0x4C428E21);
    CHECK(bytes[25] == 2); // entries
    CHECK(bytes[29] == 9); // Finder information first
    CHECK(bytes[41] == 2); // then the resource fork
    CHECK(Run({ "get", out, "STR ", "128" }).code == 0);
}

TEST_CASE("build: a later input takes the place of the earlier one's resource")
{
    Workshop shop;
    const std::string base = shop.Path("base.rsrc"), out = shop.Path("out.rsrc");
    CHECK(Run({ "build", shop.Put("a.r", kText), "-o", base }).code == 0);
    const std::string text = shop.Put("b.r", "resource 'STR ' (128) { \"new\" }; data 'more' (1) { };");
    CHECK(Run({ "build", base, text, "-o", out }).code == 0);
    CHECK(Run({ "get", out, "STR ", "128" }).output == "\x03new");
    CHECK(Run({ "list", out }).output.find("more") != std::string::npos);
}

TEST_CASE("build: a faulty text leaves the old output as it is")
{
    Workshop shop;
    const std::string out = shop.Put("out.rsrc", "old");
    const std::string text = shop.Put("a.r", "resource 'STR ' (128) { 5 };");
    const Outcome built = Run({ "build", text, "-o", out });
    CHECK(built.code == 1);
    CHECK(built.errors == text + ":1:25: expected a string for text, found the number 5\n");
    std::string bytes;
    REQUIRE(LoadFile(out, &bytes));
    CHECK(bytes == "old");
    CHECK(shop.CountFiles() == 2);
}

TEST_CASE("build: an output that cannot be written is told and leaves nothing behind")
{
    Workshop shop;
    std::filesystem::create_directory(shop.Path("folder"));
    const Outcome built = Run({ "build", shop.Put("a.r", kText), "-o", shop.Path("folder") });
    CHECK(built.code == 1);
    CHECK(built.errors.find("cannot write") != std::string::npos);
    CHECK(shop.CountFiles() == 2);
}

TEST_CASE("build -M: a rule for make names what was read")
{
    Workshop shop;
    shop.Put("ids.r", "#define kID 7\n");
    const std::string text = shop.Put("a b.r", "#include \"ids.r\"\ndata 'abcd' (kID) { };");
    const std::string out = shop.Path("a.rsrc"), rule = shop.Path("a.d");
    CHECK(Run({ "build", text, "-o", out, "-M", rule }).code == 0);
    std::string bytes;
    REQUIRE(LoadFile(rule, &bytes));
    CHECK(bytes == out + ": " + shop.Path("a\\ b.r") + " " + shop.Path("ids.r") + "\n");
}

TEST_CASE("list, get: missing files, wrong files and missing resources fail with a line")
{
    Workshop shop;
    CHECK(Run({ "list", shop.Path("none") }).code == 1);
    CHECK(Run({ "list", shop.Put("text", "just text") }).errors.find("not a resource file") !=
          std::string::npos);
    const std::string out = shop.Path("a.rsrc");
    CHECK(Run({ "build", shop.Put("a.r", kText), "-o", out }).code == 0);
    CHECK(Run({ "get", out, "STR ", "1" }).errors == out + ": there is no 'STR ' (1)\n");
}

TEST_CASE("every command: a folder or a pipe in place of a file is told with its name")
{
    Workshop shop;
    const std::string folder = shop.Path("folder"), pipe = shop.Path("pipe"), out = shop.Path("out");
    std::filesystem::create_directory(folder);
    REQUIRE(mkfifo(pipe.c_str(), 0600) == 0);
    const std::string isFolder = folder + ": Is a directory\n";
    CHECK(Run({ "list", folder }).errors == isFolder);
    CHECK(Run({ "dump", folder }).errors == isFolder);
    CHECK(Run({ "build", folder, "-o", out }).errors == isFolder);
    CHECK(Run({ "diff", folder, folder }).errors == isFolder);
    CHECK(Run({ "convert", folder, "-o", out, "--to", "raw" }).errors == isFolder);
    CHECK(Run({ "list", pipe }).errors == pipe + ": not a file\n");
    CHECK(Run({ "convert", pipe, "-o", out, "--to", "raw" }).errors == pipe + ": not a file\n");
    const std::string reader = shop.Put("a.r", "read 'TEXT' (1) \"folder\";");
    CHECK(Run({ "build", reader, "-o", out }).errors == reader + ":1:17: cannot read 'folder'\n");
    CHECK_FALSE(std::filesystem::exists(out));
}

TEST_CASE("build: a stream without end is refused")
{
    Workshop shop;
    CHECK(Run({ "build", "/dev/zero", "-o", shop.Path("out") }).code == 1);
    CHECK_FALSE(std::filesystem::exists(shop.Path("out")));
}

TEST_CASE("list --json: a file without resources is an empty array")
{
    Workshop shop;
    const std::string out = shop.Path("a.rsrc");
    CHECK(Run({ "build", shop.Put("a.r", "// nothing\n"), "-o", out }).code == 0);
    CHECK(Run({ "list", "--json", out }).output == "[]\n");
}

TEST_CASE("a wrong call answers 2 and shows the usage")
{
    const std::vector<std::vector<std::string>> calls = { {},
                                                          { "what" },
                                                          { "list" },
                                                          { "list", "--xml", "f" },
                                                          { "get", "f", "STR " },
                                                          { "get", "f", "TOOLONG", "1" },
                                                          { "get", "f", "STR ", "99999" },
                                                          { "build", "a.r" },
                                                          { "build", "-o" },
                                                          { "build", "-o", "x" },
                                                          { "build", "a.r", "-o", "x", "--creator",
                                                            "TOOLONG" } };
    for (const auto& call : calls) {
        const Outcome outcome = Run(call);
        CHECK(outcome.code == 2);
        CHECK(outcome.errors.find("usage: rsrc") != std::string::npos);
        CHECK(outcome.output.empty());
    }
    CHECK(Run({ "--help" }).code == 0);
}
