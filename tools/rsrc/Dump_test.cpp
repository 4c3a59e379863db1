// Resources as text, and back.
#include "BuiltinTypes.h"
#include "Compiler.h"
#include "Dump.h"

#include <doctest/doctest.h>

using namespace lampblack::rsrc;

namespace {

std::vector<Resource> Compile(const std::string& inText, bool inNativeIsBig = false)
{
    Compiler compiler([](const std::string&, std::string*) { return false; }, {});
    compiler.SetNativeIsBig(inNativeIsBig);
    std::vector<Resource> resources;
    std::vector<std::string> problems;
    compiler.Compile("t.r", inText, &resources, &problems);
    INFO(inText);
    for (const std::string& problem : problems)
        FAIL_CHECK(problem);
    return resources;
}

std::string Dump(const std::vector<Resource>& inResources, bool inNativeIsBig = false,
                 const TypeTable* inTypes = nullptr)
{
    const TypeTable builtin = BuiltinTypes();
    const Names none;
    return DumpResources(inResources, { inTypes ? inTypes : &builtin, &none, inNativeIsBig });
}

// The text of a statement's resource.
std::string Again(const std::string& inStatement)
{
    return Dump(Compile(inStatement));
}

// Compiles what Dump wrote and expects the same resources, in every detail.
void CheckReturns(const std::vector<Resource>& inResources)
{
    const std::string text = Dump(inResources);
    const std::vector<Resource> again = Compile(text);
    CAPTURE(text);
    REQUIRE(again.size() == inResources.size());
    for (size_t i = 0; i < again.size(); ++i) {
        CHECK(again[i].SameKey(inResources[i]));
        CHECK(again[i].attributes == inResources[i].attributes);
        CHECK(again[i].hasName == inResources[i].hasName);
        CHECK(again[i].name == inResources[i].name);
        CHECK(again[i].data == inResources[i].data);
    }
}

Resource Make(OSType inType, std::vector<uint8_t> inData)
{
    Resource resource;
    resource.type = inType;
    resource.id = 128;
    resource.data = std::move(inData);
    return resource;
}

} // namespace

TEST_CASE("dump: names for values, labels behind the others")
{
    CHECK(
        Again("resource 'DLOG' (128, \"Main\", purgeable) { {1,2,3,4}, movableDBoxProc, visible, goAway, 0, "
              "129, \"Hi\" };") == "resource 'DLOG' (128, \"Main\", purgeable) {\n"
                                   "    { 1, 2, 3, 4 },  // bounds\n"
                                   "    movableDBoxProc,\n"
                                   "    visible,\n"
                                   "    goAway,\n"
                                   "    0,  // refCon\n"
                                   "    129,  // itemsID\n"
                                   "    \"Hi\"\n"
                                   "};\n");
}

TEST_CASE("dump: an item list, an item a line")
{
    CHECK(
        Again("resource 'DITL' (1) { { {1,2,3,4}, Button { enabled, \"OK\" }; {5,6,7,8}, HelpItem { disabled,"
              " HMScanhdlg { 9 } } } };") ==
        "resource 'DITL' (1) {\n"
        "    {  // items\n"
        "        { 1, 2, 3, 4 }, Button { enabled, \"OK\" };\n"
        "        { 5, 6, 7, 8 }, HelpItem { disabled, HMScanhdlg { 9 } }\n"
        "    }\n"
        "};\n");
}

TEST_CASE("dump: sets of bits by their names")
{
    const std::string text =
        Again("resource 'MENU' (1) { 1, 0, allEnabled, enabled, apple, { \"A\", noIcon, \"K\","
              " check, bold + italic } };");
    CHECK(text.find("apple") != std::string::npos);
    CHECK(text.find("\"A\", noIcon, \"K\", check, bold + italic") != std::string::npos);
}

TEST_CASE("dump: what has no type, and what is none of its type, as bytes")
{
    CHECK(Dump({ Make('XYZ?', { 'a', 0, 0xD5 }) }) ==
          "data 'XYZ?' (128) {\n"
          "    $\"6100 D5\"                                  // a.\xE2\x80\x99\n"
          "};\n");
    CHECK(Dump({ Make('STR ', { 5, 'a' }) }) ==
          "// As bytes: at byte 1 of 2: a string that ends behind the data.\n"
          "data 'STR ' (128) {\n"
          "    $\"0561\"                                     // .a\n"
          "};\n");
    CHECK(Dump({ Make('STR ', { 1, 'a', 'b' }) }).find("the type has no more fields") != std::string::npos);
}

TEST_CASE("dump: bytes that a type fills up become a patch")
{
    std::vector<Resource> items =
        Compile("resource 'DITL' (1) { { {1,2,3,4}, Button { enabled, \"abc\" } } };");
    items[0].data[2] = 0x12;
    items[0].data.back() = 0x77;
    const std::string text = Dump(items);
    CHECK(text.find("} patch {\n    2, $\"12\";\n    19, $\"77\";\n};\n") != std::string::npos);
    CheckReturns(items);
}

TEST_CASE("dump: every byte in names, codes and strings comes back, and the text is UTF-8")
{
    Resource strings = Make('STR#', { 0, 2, 128 });
    for (int byte = 0; byte < 128; ++byte)
        strings.data.push_back((uint8_t)byte);
    strings.data.push_back(128);
    for (int byte = 128; byte < 256; ++byte)
        strings.data.push_back((uint8_t)byte);
    Resource codes = Make(0x00278E5C, {});
    codes.hasName = true;
    for (int byte = 1; byte < 256; ++byte)
        codes.name += (char)byte;
    Resource unnamed = Make('TEXT', { 'a', 0, '\r', '\n', '"' });
    unnamed.hasName = true; // by an empty name
    unnamed.attributes = 0xFF;
    CheckReturns({ strings, codes, unnamed });
    CHECK(TextFromBytes(Dump({ strings, codes, unnamed })) == Dump({ strings, codes, unnamed }));
}

TEST_CASE("dump: a key that is there twice")
{
    CheckReturns({ Make('STR ', { 0 }), Make('STR ', { 1, 'a' }) });
    CHECK(Dump({ Make('STR ', { 0 }), Make('STR ', { 0 }) }).find("duplicate resource") != std::string::npos);
}

TEST_CASE("dump: every built-in type that has a statement in use comes back typed")
{
    for (const char* statement : {
             "resource 'ALRT' (1) { {1,2,3,4}, 5, { OK, visible, sound1; OK, visible, sound1;"
             " OK, invisible, silent; Cancel, visible, sound3 }, centerMainScreen };",
             "resource 'CNTL' (1) { {1,2,3,4}, 0, visible, 100, -1, scrollBarProc, 7, \"T\" };",
             "resource 'CTL#' (1) { { 1, -2, 3 } };",
             "resource 'WIND' (1) { {1,2,3,4}, zoomDocProc, visible, goAway, -1, \"W\" };",
             "resource 'MBAR' (1) { { 128, 129 } };",
             "resource 'vers' (1) { 0x01, 0x20, beta, 0x03, verUS, \"1.2\", \"1.2 x\" };",
             "resource 'BNDL' (1) { 'LAMP', 0, { 'ICN#', { 0, 128 }, 'FREF', { 0, 128; 1, 129 } } };",
             "resource 'FREF' (1) { 'APPL', 0, \"\" };",
             "resource 'SIZE' (-1) { reserved, acceptSuspendResumeEvents, reserved, canBackground,"
             " doesActivateOnFGSwitch, backgroundAndForeground, dontGetFrontClicks, ignoreChildDiedEvents,"
             " is32BitCompatible, isHighLevelEventAware, onlyLocalHLEvents, notStationeryAware,"
             " dontUseTextEditServices, reserved, reserved, reserved, 500 * 1024, 0xC0000000 };",
             "resource 'CURS' (1) { $\"01\", $\"02\", { 8, 9 } };",
             "resource 'ICN#' (1) { { $\"FF\", $\"00\" } };",
             "resource 'PAT#' (1) { { $\"0102030405060708\" } };",
             "resource 'clut' (1) { 0x10, 0x8000, { 0, 1, 2, 65535 } };",
             "resource 'dctb' (1) { { wContentColor, 1, 2, 3; wTitleBarColor, 4, 5, 6 } };",
             "resource 'cctb' (1) { { cThumbColor, 1, 2, 3 } };",
             "resource 'mctb' (1) { { 128, 0, 1,2,3, 4,5,6, 7,8,9, 10,11,12 } };",
             "resource 'nrct' (1) { { {1,2,3,4} } };",
             "resource 'finf' (1) { { 4, bold, 9 } };",
             "resource 'acur' (1) { { 128; 129 } };",
             "resource 'styl' (1) { { 0, 12, 10, 3, bold + shadow, 9, 1, 2, 3 } };",
             "resource 'TMPL' (1) { { \"Count\", 'OCNT' } };",
             "resource 'ldes' (1) { versionZero, 1, 2, 3, 4, hasVertScroll, noHorizScroll, 0, noGrowSpace };",
             "resource 'dlgx' (1) { versionZero, kDialogFlagsUseThemeBackground + "
             "kDialogFlagsUseThemeControls };",
             "resource 'alrx' (1) { versionZero, 11, 0, kUseThemeWindow, \"T\" };",
             "resource 'wpos' (1) { {1,-2,3,4} };",
             "resource 'RECT' (1) { 1, -2, 3, 4 };",
             "resource 'RGB ' (1) { 1, 2, 65535 };",
             "resource 'BOOL' (1) { true };",
             "resource 'xBTN' (1) { defaultButton, notCancel };",
             "resource 'PBAR' (1) { indeterminate };",
             "resource 'CNTS' (1) { smallSize };",
             "resource 'TDEx' (1) { unicode | locked, 31 };",
             "resource 'CNTF' (1) { useFont + useFace, monacoFont, 12, bold, srcOr, teJustRight, 1,2,3,4,5,6 "
             "};",
             "resource 'CNTH' (1) { string, stringList, 1, 2, 3, 4, \"a\", \"b\" };",
         }) {
        const std::vector<Resource> resources = Compile(statement);
        CAPTURE(Dump(resources));
        CHECK(Dump(resources).starts_with("resource"));
        CheckReturns(resources);
    }
}

TEST_CASE("dump: records of the reading machine's order, in this one and in the other")
{
    const char* statement = "resource 'CNTS' (1) { smallSize };";
    CHECK(Compile(statement)[0].data == std::vector<uint8_t>{ 1, 0 });
    CHECK(Compile(statement, true)[0].data == std::vector<uint8_t>{ 0, 1 });
    CHECK(Dump(Compile(statement, true), true) == Dump(Compile(statement)));
}

TEST_CASE("SwapNativeNumbers: turns each record into the other order, and back")
{
    const char* texts[] = { "resource 'CNTH' (1) { string, stringList, 1, 2, 3, 4, \"a\", \"b\" };",
                            "resource 'TDEx' (1) { unicode | locked, 31 };",
                            "resource 'RECT' (1) { 1, 2, 3, 4 };", "resource 'wpos' (1) { {1, 2, 3, 4} };" };
    for (const char* text : texts) {
        Resource resource = Compile(text)[0];
        const std::vector<uint8_t> big = Compile(text, true)[0].data, little = resource.data;
        CHECK(SwapNativeNumbers(BuiltinTypes(), {}, &resource));
        CHECK(resource.data == big);
        CHECK(SwapNativeNumbers(BuiltinTypes(), {}, &resource));
        CHECK(resource.data == little);
    }
    Resource list = Compile("resource 'CTL#' (1) { { 1 } };")[0];
    CHECK_FALSE(SwapNativeNumbers(BuiltinTypes(), {}, &list)); // big-endian in either kind of file
    CHECK(list.data == std::vector<uint8_t>{ 0, 1 });
}

TEST_CASE("dump: types of the source's own, with sizes and ends that the data tell")
{
    Compiler compiler([](const std::string&, std::string*) { return false; }, {});
    std::vector<Resource> made;
    std::vector<std::string> problems;
    compiler.Compile("t.r",
                     "type 'Rows' { Size: integer; hex string[$$Word(Size)]; array { pstring; }; byte = 0; };"
                     "resource 'Rows' (1) { 2, $\"0102\", { \"a\"; \"bc\" } };",
                     &made, &problems);
    REQUIRE(problems.empty());
    CHECK(Dump(made, false, &compiler.Types()) == "resource 'Rows' (1) {\n"
                                                  "    2,  // Size\n"
                                                  "    $\"0102\",\n"
                                                  "    { \"a\"; \"bc\" }\n"
                                                  "};\n");
}

TEST_CASE("dump: counts beyond the data are told and end at once")
{
    CHECK(Dump({ Make('STR#', { 0xFF, 0xFF, 0 }) }).find("As bytes") != std::string::npos);
    CHECK(Dump({ Make('BNDL', { 0, 0, 0, 0, 0, 0, 0x7F, 0xFF }) }).find("As bytes") != std::string::npos);
}
