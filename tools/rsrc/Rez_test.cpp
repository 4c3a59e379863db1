#include "Compiler.h"

#include <doctest/doctest.h>

using namespace lampblack::rsrc;

namespace {

std::string Hex(const std::vector<uint8_t>& inBytes)
{
    constexpr char kDigits[] = "0123456789ABCDEF";
    std::string text;
    for (const uint8_t byte : inBytes)
        text += { kDigits[byte >> 4], kDigits[byte & 0xF] };
    return text;
}

using Files = std::map<std::string, std::string>;

std::vector<Resource> Compile(const std::string& inText, const Files& inFiles = {})
{
    const FileLoader load = [&](const std::string& inPath, std::string* outBytes) {
        const auto file = inFiles.find(inPath);
        if (file != inFiles.end())
            *outBytes = file->second;
        return file != inFiles.end();
    };
    Compiler compiler(load, {});
    std::vector<Resource> resources;
    std::vector<std::string> problems;
    const bool sound = compiler.Compile("t.r", TextFromBytes(inText), &resources, &problems);
    INFO(inText);
    for (const std::string& problem : problems)
        FAIL_CHECK(problem);
    CHECK(sound);
    return resources;
}

// The bytes of the only resource that a text makes, in hexadecimal digits.
std::string BytesOf(const std::string& inText, const Files& inFiles = {})
{
    const std::vector<Resource> resources = Compile(inText, inFiles);
    REQUIRE(resources.size() == 1);
    return Hex(resources[0].data);
}

std::vector<std::string> ProblemsOf(const std::string& inText)
{
    Compiler compiler([](const std::string&, std::string*) { return false; }, {});
    std::vector<Resource> resources;
    std::vector<std::string> problems;
    CHECK_FALSE(compiler.Compile("t.r", TextFromBytes(inText), &resources, &problems));
    return problems;
}

std::string ProblemOf(const std::string& inText)
{
    const std::vector<std::string> problems = ProblemsOf(inText);
    REQUIRE(problems.size() == 1);
    return problems[0];
}

} // namespace

TEST_CASE("data: hexadecimal digits and strings follow one another")
{
    const auto made =
        Compile("data 'Ab\xC3\xA9!' (-5, \"Na\" \"me\", purgeable | preload) { $\"0a FF\" \"xy\" \"z\" };");
    REQUIRE(made.size() == 1);
    CHECK(made[0].type == 0x41628E21);
    CHECK(made[0].id == -5);
    CHECK(made[0].attributes == 36);
    CHECK(made[0].name == "Name");
    CHECK(Hex(made[0].data) == "0AFF78797A");
}

TEST_CASE("data: attributes separated by commas, or as a number, and no name")
{
    CHECK(Compile("data 'abcd' (1, locked, protected) { };")[0].attributes == 24);
    CHECK(Compile("data 'abcd' (1, $20) { };")[0].attributes == 32);
    CHECK_FALSE(Compile("data 'abcd' (1, 32) { };")[0].hasName);
    CHECK(BytesOf("data 'abcd' (1) { };").empty());
}

TEST_CASE("strings: escapes make single bytes")
{
    CHECK(BytesOf(R"(data 'abcd' (1) { "\n\t\\\"\'\0xD5\$41\101\0d65\0b1000001" };)") ==
          "0D095C2227D541414141");
    CHECK(BytesOf("data 'abcd' (1) { \"a\\\nb\" };") == "6162");
}

TEST_CASE("strings: UTF-8 becomes Mac Roman, composed or not")
{
    CHECK(BytesOf("data 'abcd' (1) { \"\xC2\xA9\xE2\x80\xA6"
                  "e\xCC\x81\" };") == "A9C98E");
}

TEST_CASE("strings: a source that is not UTF-8 is read as Mac Roman")
{
    CHECK(BytesOf("data 'abcd' (1) { \"\xA9\xC9\" };") == "A9C9");
}

TEST_CASE("strings: a character that Mac Roman lacks is refused where it stands")
{
    CHECK(ProblemOf("data 'abcd' (1) { \"ok \xE4\xB8\xAD\" };") ==
          "t.r:1:23: Mac Roman has no such character");
}

TEST_CASE("comments and line ends of every kind separate words")
{
    CHECK(BytesOf("// one\rdata /* two\n */ 'abcd' (1)\r\n{ $\"01\" }; // last") == "01");
}

TEST_CASE("DLOG: the published layout, names for numbers")
{
    const char* text = R"(resource 'DLOG' (128, "Main") {
        {40, 60, 240, 360}, movableDBoxProc, visible, goAway, 0x12345678, 129, "Hi!", alertPositionMainScreen
    };)";
    CHECK(BytesOf(text) == "0028003C00F0016800050100010012345678008103486921300A");
}

TEST_CASE("DLOG: the position is preceded by a pad byte after a title of even length")
{
    const char* text =
        R"(resource 'DLOG' (1) { {0, 0, 1, 1}, 5, invisible, noGoAway, 0, 0, "Hi", noAutoCenter };)";
    CHECK(BytesOf(text) == "0000000000010001000500000000000000000000024869000000");
}

TEST_CASE("DLOG: a statement may end before the position, which then takes no bytes")
{
    const char* text = R"(resource 'DLOG' (1) { {0, 0, 1, 1}, documentProc, visible, noGoAway, 0, -1, "" };)";
    CHECK(BytesOf(text) == "0000000000010001000001000000"
                           "00000000FFFF00");
}

TEST_CASE("DITL: every kind of item, padded to words, counted from zero")
{
    const char* text = R"(resource 'DITL' (1) { {
        {1, 2, 3, 4}, Button { enabled, "OK" };
        {1, 2, 3, 4}, CheckBox { disabled, "abc" },
        {1, 2, 3, 4}, Control { enabled, 300 };
        {1, 2, 3, 4}, UserItem { disabled };
        {1, 2, 3, 4}, HelpItem { disabled, HMScanhdlg { 5 } };
    } };)";
    CHECK(BytesOf(text) == "0004"
                           "00000000000100020003000404024F4B"
                           "000000000001000200030004850361626300"
                           "0000000000010002000300040702012C"
                           "0000000000010002000300048000"
                           "000000000001000200030004810400010005");
}

TEST_CASE("DITL: no items count as -1")
{
    CHECK(BytesOf("resource 'DITL' (1) { { } };") == "FFFF");
}

TEST_CASE("CNTL: the published layout")
{
    const char* text =
        R"(resource 'CNTL' (1) { {10, 16400, 30, 16500}, 2, visible, 9, -1, scrollBarProc, 1006, "T" };)";
    CHECK(BytesOf(text) == "000A4010001E4074"
                           "00020100"
                           "0009FFFF"
                           "0010"
                           "000003EE"
                           "0154");
}

TEST_CASE("CTL#: big-endian IDs without a count")
{
    CHECK(BytesOf("resource 'CTL#' (1) { { 1000, 1001; -2 } };") == "03E803E9FFFE");
}

TEST_CASE("records in the order of the reading machine")
{
    CHECK(BytesOf("resource 'xBTN' (1) { defaultButton, notCancel };") == "02");
    CHECK(BytesOf("resource 'xBTN' (1) { notDefault, cancelButton };") == "01");
    CHECK(BytesOf("resource 'PBAR' (1) { indeterminate };") == "01");
    CHECK(BytesOf("resource 'CNTS' (1) { smallSize };") == "0100");
    CHECK(BytesOf("resource 'TDEx' (1) { unicode | locked, 31 };") == "010000801F000000");
    CHECK(BytesOf("resource 'CNTF' (1) { useFont + useFace, monacoFont, 12, bold, srcOr, teJustRight, "
                  "1,2,3,4,5,$FFFF };") == "0300"
                                           "3930"
                                           "0C00"
                                           "0100"
                                           "0100"
                                           "FFFF"
                                           "010002000300"
                                           "04000500FFFF");
    CHECK(BytesOf("resource 'CNTH' (1) { string, none, 0, 0, 0, 0, \"Hi\", \"\" };") == "72747370"
                                                                                        "656E6F6E"
                                                                                        "0000000000000000"
                                                                                        "0248690"
                                                                                        "0");
}

TEST_CASE("MENU: enable bits, keys, marks, styles and the end mark")
{
    const char* text = R"(resource 'MENU' (129) { 129, textMenuProc, 0x7FFFFFFD, enabled, "File", {
        "Open", noIcon, "O", noMark, plain;
        "-", noIcon, noKey, check, bold + italic
    } };)";
    CHECK(BytesOf(text) == "0081"
                           "00000000"
                           "0000"
                           "0000"
                           "FFFFFFFB"
                           "0446696C65"
                           "044F70656E"
                           "004F0000"
                           "012D"
                           "00001203"
                           "00");
}

TEST_CASE("MBAR, STR#, STR and vers")
{
    CHECK(BytesOf("resource 'MBAR' (1) { { 128; 129 } };") == "000200800081");
    CHECK(BytesOf("resource 'STR#' (1) { { \"a\", \"\" } };") == "0002016100");
    CHECK(BytesOf("resource 'STR ' (1) { \"a\" \"b\" };") == "026162");
    CHECK(BytesOf("resource 'vers' (1) { 0x1, 0x20, release, 0, verUS, \"1.2\", \"1.2 x\" };") ==
          "012080000000"
          "03312E32"
          "05312E322078");
}

TEST_CASE("carb: its presence is all")
{
    CHECK(BytesOf("resource 'carb' (0) { };") == "");
}

TEST_CASE("WIND and ALRT: the published layouts")
{
    CHECK(BytesOf("resource 'WIND' (1) { {1, 2, 3, 4}, zoomDocProc, visible, goAway, 0, \"W\" };") ==
          "0001000200030004"
          "0008"
          "0100"
          "0100"
          "00000000"
          "0157");
    CHECK(BytesOf("resource 'ALRT' (1) { {1, 2, 3, 4}, 5, { OK, visible, sound1; OK, visible, sound1;"
                  " OK, invisible, silent; Cancel, visible, sound3 } };") == "0001000200030004"
                                                                             "0005"
                                                                             "550F");
}

TEST_CASE("type: a declaration of the source serves its statements")
{
    const char* text = R"(
        type 'Test' {
            unsigned hex integer = 0xCAFE;
            boolean no, yes; bitstring[3]; fill bit[4];
            align word;
            longint = $$CountOf(rows);
            wide array rows { byte one = 1, two; array cells { char; }; };
            cstring; pstring[3]; string[2]; point;
        };
        type 'Copy' as 'Test';
        resource 'Copy' (1) { yes, 5, { one, { "a", "b" }; two, { } }, "c", "p", "s", { 7, -7 } };
    )";
    CHECK(BytesOf(text) == "CAFE"
                           "D000"
                           "00000002"
                           "016162"
                           "02"
                           "6300"
                           "01700000"
                           "7300"
                           "0007FFF9");
}

TEST_CASE("expressions: operators, precedence, codes")
{
    const auto value = [](const std::string& inText) {
        return BytesOf("type 'Test' { longint; }; resource 'Test' (1) { " + inText + " };");
    };
    CHECK(value("1 + 2 * 3 - (8 / 3) % 2") == "00000007");
    CHECK(value("1 << 4 | 0b11 ^ 1") == "00000012");
    CHECK(value("-1") == "FFFFFFFF");
    CHECK(value("~0 & $FF") == "000000FF");
    CHECK(value("!(1 == 2) && 3 >= 3 || 0") == "00000001");
    CHECK(value("017") == "0000000F");
    CHECK(value("'ABCD'") == "41424344");
}

TEST_CASE("directives: names, conditions and included files")
{
    const Files files = { { "ids.r", "#define kID 128\n#define kNext (kID + 1)\n" } };
    const char* text = "#include \"ids.r\"\n#include \"Types.r\"\n#ifndef kID\n#error no\n#elif kNext == 129 "
                       "&& defined(kID)\n"
                       "resource 'CTL#' (kNext) { { kID } };\n#else\nwrong\n#endif\n#undef kID\n#if defined "
                       "kID\nwrong\n#endif\n";
    const auto made = Compile(text, files);
    REQUIRE(made.size() == 1);
    CHECK(made[0].id == 129);
    CHECK(Hex(made[0].data) == "0080");
}

TEST_CASE("read: a file becomes the data of a resource")
{
    CHECK(BytesOf("read 'TEXT' (1, \"n\") \"a.txt\";", { { "a.txt", "abc" } }) == "616263");
}

TEST_CASE("include: the resources of a file, all or those of one type")
{
    const auto bytes = BuildFork(Compile("data 'aaaa' (1) { \"x\" }; data 'bbbb' (2, \"n\") { \"y\" };"));
    const Files files = { { "f.rsrc", std::string(bytes.begin(), bytes.end()) } };
    CHECK(Compile("include \"f.rsrc\";", files).size() == 2);
    CHECK(BytesOf("include \"f.rsrc\" 'bbbb';", files) == "79");
    CHECK(BytesOf("include \"f.rsrc\" 'aaaa' (1);", files) == "78");
}

TEST_CASE("messages: file, line, column and what was expected")
{
    CHECK(ProblemOf("data 'abcd' (1) { 5 };") ==
          "t.r:1:19: expected a string, hexadecimal digits such as $\"0A0B\", or '}', found the number 5");
    CHECK(ProblemOf("\n  resource 'CNTL' (1) { {1, 2, 3, 4}, 0, shown, 1, 0, 0, 0, \"\" };") ==
          "t.r:2:42: expected a number for visible (invisible, visible), found 'shown', which has no value "
          "here");
    CHECK(ProblemOf("resource 'STR ' (1) { \"a\", \"b\" };") ==
          "t.r:1:26: expected '}', since 'STR ' has no more values, found ','");
    CHECK(ProblemOf("resource 'CTL#' (1) { { 40000000 } };") ==
          "t.r:1:25: the number 40000000 does not fit into 16 bits");
    CHECK(ProblemOf("resource 'CNTL' (1) { {1, 2, 3, 4}, 0 };") ==
          "t.r:1:39: expected a number for visible (invisible, visible) before the end of 'CNTL', found '}'");
    CHECK(ProblemOf("resource 'XYZ!' (1) { };") ==
          "t.r:1:10: the type 'XYZ!' has not been declared; use data, or declare it with type");
    CHECK(ProblemOf("data 'abcd' (1) { } data") == "t.r:1:21: expected ';' after the data, found 'data'");
    CHECK(ProblemOf("data 'abcd' (1) { \"open\n };") == "t.r:1:19: expected \" before the end of the line");
    CHECK(ProblemOf("data 'abcd' (70000) { };") == "t.r:1:14: an ID is a number from -32768 to 32767");
    CHECK(ProblemOf("#if 1\n") == "t.r:1:1: expected #endif for this condition");
    CHECK(ProblemOf("#include \"none.h\"\n") == "t.r:1:10: cannot read 'none.h'");
    CHECK(ProblemOf("type 'a' { };") ==
          "t.r:1:6: expected a type of four characters in single quotes, found the code 'a'");
}

TEST_CASE("messages: each faulty statement is told, and the next one is read")
{
    const auto problems =
        ProblemsOf("data 'a' (1) { };\nresource 'STR ' (1) { 5 };\ndata 'abcd' (2) { \"x\" };\nnonsense;\n");
    REQUIRE(problems.size() == 3);
    CHECK(problems[1].starts_with("t.r:2:"));
    CHECK(problems[2].starts_with("t.r:4:1: expected data, resource, type, include or read"));
}

TEST_CASE("messages: the same type and ID twice")
{
    CHECK(ProblemOf("data 'abcd' (1) { };\ndata 'abcd' (1) { };") ==
          "t.r:2:6: 'abcd' (1) was defined before, at t.r:1:6");
}

TEST_CASE("limits: names that multiply and expressions without end are refused")
{
    std::string text = "#define a0 1 1\n";
    for (int i = 1; i < 40; ++i)
        text += "#define a" + std::to_string(i) + " a" + std::to_string(i - 1) + " a" +
                std::to_string(i - 1) + "\n";
    CHECK(ProblemOf(text + "data 'abcd' (a39) { };").find("too many words") != std::string::npos);
    CHECK(ProblemOf("data 'abcd' (" + std::string(100000, '(') + "1) { };").find("too deeply") !=
          std::string::npos);
    CHECK(ProblemOf("type 'Test' { fill long[9000000]; }; resource 'Test' (1) { };").find("16 MB") !=
          std::string::npos);
}
