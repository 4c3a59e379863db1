// Declarations of types: labels, sizes that depend on other fields, $$Functions, and statements that move
// resources.
#include "Compiler.h"

#include <doctest/doctest.h>

using namespace lampblack::rsrc;

namespace {

using Files = std::map<std::string, std::string>;

struct Made {
    std::vector<Resource> resources;
    std::vector<std::string> problems;
};

Made Compile(const std::string& inText, const Files& inFiles = {})
{
    const FileLoader load = [&](const std::string& inPath, std::string* outBytes) {
        const auto file = inFiles.find(inPath);
        if (file != inFiles.end())
            *outBytes = file->second;
        return file != inFiles.end();
    };
    Compiler compiler(load, {});
    Made made;
    compiler.Compile("t.r", inText, &made.resources, &made.problems);
    return made;
}

std::string Hex(const std::vector<uint8_t>& inBytes)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const uint8_t byte : inBytes)
        text += { kDigits[byte >> 4], kDigits[byte & 0xF] };
    return text;
}

std::string BytesOf(const std::string& inText, const Files& inFiles = {})
{
    const Made made = Compile(inText, inFiles);
    INFO(inText);
    for (const std::string& problem : made.problems)
        FAIL_CHECK(problem);
    REQUIRE(made.resources.size() == 1);
    return Hex(made.resources[0].data);
}

std::string ProblemOf(const std::string& inText)
{
    const Made made = Compile(inText);
    REQUIRE(made.problems.size() == 1);
    return made.problems[0];
}

// "type 'Test' { FIELDS }; resource 'Test' (7) { VALUES };"
std::string BytesOf(const char* inFields, const char* inValues)
{
    return BytesOf("type 'Test' { " + std::string(inFields) + " }; resource 'Test' (7) { " + inValues +
                   " };");
}

Files TwoResources()
{
    const auto fork =
        BuildFork(Compile("data 'aaaa' (1, \"one\") { \"x\" }; data 'aaaa' (2, \"two\") { \"y\" };"
                          "data 'bbbb' (1) { \"z\" };")
                      .resources);
    return { { "f.rsrc", std::string(fork.begin(), fork.end()) } };
}

std::string KeysOf(const std::vector<Resource>& inResources)
{
    std::string text;
    for (const Resource& resource : inResources)
        text += KeyText(resource.type, resource.id) + resource.name + " ";
    return text;
}

} // namespace

TEST_CASE("labels: a distance in bits, known before and after its place")
{
    CHECK(BytesOf("integer = (End - Start) / 8; Start: pstring; End: integer = End / 8;", "\"abc\"") ==
          "0004"
          "03616263"
          "0006");
    CHECK(BytesOf("integer = $$Offset(Tail); string; Tail:;", "\"abcde\"") == "00076162636465");
}

TEST_CASE("labels: those of an array's elements by index, the nearest without one")
{
    const char* fields = "integer = $$CountOf(items);"
                         "array items { integer = $$Offset(Body); Body: pstring; };"
                         "array places { byte = $$Offset(Body[$$ArrayIndex(places)]); pstring; };";
    CHECK(BytesOf(fields, "{ \"a\", \"bc\" }, { \"\", \"\" }") == "0002"
                                                                  "00040161"
                                                                  "0008026263"
                                                                  "04000800");
}

TEST_CASE("$$BitField, $$Byte, $$Word and $$Long read what was written")
{
    CHECK(BytesOf("Start: longint; byte = $$Byte(Start); integer = $$Word(Start); longint = $$Long(Start);"
                  "byte = $$BitField(Start, 4, 8);",
                  "0x12345678") == "12345678"
                                   "12"
                                   "1234"
                                   "12345678"
                                   "23");
}

TEST_CASE("sizes: a string and an array as long as another field says")
{
    CHECK(BytesOf("Rows: integer; hex string[$$Word(Rows) * 2]; array[$$Word(Rows)] { byte; };",
                  "2, $\"01020304\", { 5, 6 }") == "0002010203040506");
    CHECK(BytesOf("Rows: integer; string[$$Word(Rows)]; byte;", "3, \"a\", 1") == "000361000001");
    CHECK(ProblemOf("type 'Test' { N: byte; array[$$Byte(N)] { byte; }; }; resource 'Test' (1) { 2, { 5 } };")
              .find("expected 2 elements, found 1") != std::string::npos);
}

TEST_CASE("$$ID, $$Type, $$Attributes and $$ResourceSize know the resource")
{
    CHECK(BytesOf("integer = $$ID; literal longint = $$Type; byte = $$Attributes; byte = $$ResourceSize;",
                  "") == "00075465737400"
                         "08");
}

TEST_CASE("$$Format, $$Name, $$Read and $$Resource stand for text")
{
    CHECK(BytesOf("data 'abcd' (1) { $$Format(\"%d-%02X-%s%%\", 5, 10, \"z\") };") == "352D30412D7A25");
    CHECK(BytesOf("type 'Test' { pstring = $$Name; }; resource 'Test' (1, \"ab\") { };") == "026162");
    CHECK(BytesOf("data 'abcd' (1) { $$Read(\"a.txt\") \"!\" };", { { "a.txt", "hi" } }) == "686921");
    CHECK(BytesOf("data 'abcd' (1) { $$Resource(\"f.rsrc\", 'aaaa', 2) };", TwoResources()) == "79");
    CHECK(BytesOf("data 'abcd' (1) { $$Resource(\"f.rsrc\", 'aaaa', \"one\") };", TwoResources()) == "78");
}

TEST_CASE("type with IDs: holds for these and no others")
{
    const char* text = "type 'Test' { byte; }; type 'Test' (5:9) { integer; };"
                       "resource 'Test' (4) { 1 }; resource 'Test' (5) { 1 };";
    const Made made = Compile(text);
    REQUIRE(made.resources.size() == 2);
    CHECK(Hex(made.resources[0].data) == "01");
    CHECK(Hex(made.resources[1].data) == "0001");
}

TEST_CASE("wstring, binary and octal fields, names of one field's values")
{
    CHECK(BytesOf("wstring; binary byte; octal byte;", "\"ab\", 0b101, 010") == "000261620508");
    CHECK(BytesOf("byte one = 1, two, four = 4;", "one | four") == "05");
}

TEST_CASE("enum: names for numbers anywhere behind it")
{
    CHECK(BytesOf("enum Things { kFirst = 3, kSecond }; type 'Test' { byte[kSecond] = kFirst; byte; };"
                  "resource 'Test' (kFirst) { kSecond };") == "0304");
}

TEST_CASE("#define with arguments: each is expanded and put in")
{
    CHECK(BytesOf("#define PAIR(a, b) { a, b * 2 }\n#define TWO 2\ntype 'Test' { point; };\n"
                  "resource 'Test' (1) { PAIR(TWO, (1 + TWO)) };") == "00020006");
    CHECK(BytesOf("#define NONE() 7\n#define plain(x) x\ntype 'Test' { byte plain = 3; byte; };\n"
                  "resource 'Test' (1) { plain, NONE() };") == "0307");
    CHECK(ProblemOf("#define A(x) x\ndata 'abcd' (A(1, 2)) { };").find("expected 1 arguments, found 2") !=
          std::string::npos);
    CHECK(ProblemOf("#define A(x) x\ndata 'abcd' (A(1 { };").find("expected ')'") != std::string::npos);
}

TEST_CASE("include: a name, a range, all but some, another key")
{
    const Files files = TwoResources();
    CHECK(KeysOf(Compile("include \"f.rsrc\" 'aaaa' (\"two\");", files).resources) == "'aaaa' (2)two ");
    CHECK(KeysOf(Compile("include \"f.rsrc\" 'aaaa' (2:9);", files).resources) == "'aaaa' (2)two ");
    CHECK(KeysOf(Compile("include \"f.rsrc\" not 'aaaa';", files).resources) == "'bbbb' (1) ");
    CHECK(KeysOf(Compile("include \"f.rsrc\" 'aaaa' as 'cccc';", files).resources) ==
          "'cccc' (1)one 'cccc' (2)two ");
    CHECK(KeysOf(
              Compile("include \"f.rsrc\" 'aaaa' (2) as 'cccc' (7, \"new\", purgeable);", files).resources) ==
          "'cccc' (7)new ");
    CHECK(KeysOf(Compile("include \"f.rsrc\" 'aaaa' (1:2) as 'aaaa' (128);", files).resources) ==
          "'aaaa' (128)one 'aaaa' (129)two ");
    CHECK(Compile("include \"f.rsrc\" 'aaaa' (3);", files).problems.size() == 1);
}

TEST_CASE("delete and change: what earlier statements made")
{
    const Files files = TwoResources();
    CHECK(KeysOf(Compile("include \"f.rsrc\"; delete 'aaaa' (1); delete 'bbbb';", files).resources) ==
          "'aaaa' (2)two ");
    CHECK(KeysOf(Compile("include \"f.rsrc\"; change 'bbbb' to 'cccc' (5, \"n\");", files).resources) ==
          "'aaaa' (1)one 'aaaa' (2)two 'cccc' (5)n ");
    CHECK(ProblemOf("delete 'aaaa';") == "t.r:1:8: no resource so far is one of these");
}

TEST_CASE("duplicate: a key that the file holds twice")
{
    CHECK(Compile("data 'abcd' (1) { \"a\" }; duplicate data 'abcd' (1) { \"b\" };").resources.size() == 2);
}

TEST_CASE("patch: bytes that the type fills up, and no others")
{
    CHECK(BytesOf("type 'Test' { byte; fill byte[2]; }; resource 'Test' (1) { 1 } patch { 1, $\"FF\"; };") ==
          "01FF00");
    CHECK(ProblemOf("type 'Test' { byte; fill byte[2]; }; resource 'Test' (1) { 1 } patch { 0, $\"FF\" };")
              .find("is none that the type fills up") != std::string::npos);
    CHECK(ProblemOf("type 'Test' { fill byte; }; resource 'Test' (1) { } patch { 0, $\"FFFF\" };")
              .find("the resource has 1 bytes") != std::string::npos);
}

TEST_CASE("expressions without end, labels that nobody set and sizes below zero are refused")
{
    std::string deep = "type 'Test' { A: byte = ";
    for (int i = 0; i < 5000; ++i)
        deep += "A[";
    CHECK(ProblemOf(deep + "1; }; resource 'Test' (1) { };").find("too deeply") != std::string::npos);
    CHECK(ProblemOf("type 'Test' { byte = Nowhere; }; resource 'Test' (1) { };").find("Nowhere") !=
          std::string::npos);
    CHECK(ProblemOf("type 'Test' { A: byte; string[$$Byte(A) - 9]; }; resource 'Test' (1) { 1, \"\" };")
              .find("-8") != std::string::npos);
}
