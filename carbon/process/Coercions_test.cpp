// Coercions of descriptors: what becomes what, what does not, and the handlers that are asked first.
#include <Carbon/AEDataModel.h>
#include <Carbon/Aliases.h>
#include <Carbon/Files.h>
#include <doctest/doctest.h>

#include <cstring>
#include <string>
#include <vector>

#include "ScratchFolder.h"

namespace {

template <class Value>
std::string BytesOf(const Value& inValue)
{
    return { reinterpret_cast<const char*>(&inValue), sizeof inValue };
}

std::string BytesOf(const std::u16string& inText)
{
    return { reinterpret_cast<const char*>(inText.data()), inText.size() * 2 };
}

std::string BytesOf(const AEDesc& inDesc)
{
    std::string bytes(static_cast<size_t>(AEGetDescDataSize(&inDesc)), '\0');
    AEGetDescData(&inDesc, bytes.data(), static_cast<Size>(bytes.size()));
    return bytes;
}

OSErr Coerced(DescType inFrom, const std::string& inBytes, DescType inTo, std::string* outBytes)
{
    AEDesc result;
    const OSErr err = AECoercePtr(inFrom, inBytes.data(), static_cast<Size>(inBytes.size()), inTo, &result);
    if (err == noErr) {
        CHECK(result.descriptorType == inTo);
        *outBytes = BytesOf(result);
    } else {
        CHECK(result.dataHandle == nullptr);
    }
    AEDisposeDesc(&result);
    return err;
}

// The bytes after a coercion, or "failed".
std::string As(DescType inFrom, const std::string& inBytes, DescType inTo)
{
    std::string bytes;
    const OSErr err = Coerced(inFrom, inBytes, inTo, &bytes);
    CHECK((err == noErr || err == errAECoercionFail));
    return err == noErr ? bytes : "failed";
}

template <class Value>
std::string TextOf(DescType inType, Value inValue)
{
    return As(inType, BytesOf(inValue), typeChar);
}

std::vector<long> gAsked; // the refcons of the handlers, in order
OSErr gAnswer = noErr;

OSErr ByPtr(DescType inType, const void* inBytes, Size inSize, DescType inTo, long inRefcon, AEDesc* outDesc)
{
    gAsked.push_back(inRefcon);
    if (gAnswer != noErr)
        return gAnswer;
    const std::string text =
        BytesOf(inType) + std::string(static_cast<const char*>(inBytes), static_cast<size_t>(inSize));
    return AECreateDesc(inTo, text.data(), static_cast<Size>(text.size()), outDesc);
}

OSErr ByDesc(const AEDesc* inDesc, DescType inTo, long inRefcon, AEDesc* outDesc)
{
    const std::string bytes = BytesOf(*inDesc);
    return ByPtr(inDesc->descriptorType, bytes.data(), static_cast<Size>(bytes.size()), inTo, inRefcon,
                 outDesc);
}

OSErr ByGarbage(const AEDesc*, DescType, long, AEDesc* outDesc)
{
    static int storage[16];
    *outDesc = { typeChar, reinterpret_cast<AEDataStorage>(storage) };
    return noErr;
}

AECoercionHandlerUPP PtrHandler()
{
    return reinterpret_cast<AECoercionHandlerUPP>(reinterpret_cast<void*>(NewAECoercePtrUPP(ByPtr)));
}

// Installs a handler for its scope.
struct Installed {
    DescType from, to;
    AECoercionHandlerUPP handler;
    Boolean isSystem;

    Installed(DescType inFrom, DescType inTo, AECoercionHandlerUPP inHandler, long inRefcon,
              Boolean inIsDesc = true, Boolean inIsSystem = false)
        : from(inFrom), to(inTo), handler(inHandler), isSystem(inIsSystem)
    {
        CHECK(AEInstallCoercionHandler(from, to, handler, inRefcon, inIsDesc, isSystem) == noErr);
        gAsked.clear();
        gAnswer = noErr;
    }
    ~Installed() { CHECK(AERemoveCoercionHandler(from, to, handler, isSystem) == noErr); }
};

template <class Record>
Record RecordOf(const std::string& inBytes)
{
    Record record = {};
    CHECK(inBytes.size() == sizeof record);
    std::memcpy(&record, inBytes.data(), std::min(sizeof record, inBytes.size()));
    return record;
}

FSRef RefOf(const std::filesystem::path& inPath)
{
    FSRef ref = {};
    CHECK(FSPathMakeRef(reinterpret_cast<const UInt8*>(inPath.c_str()), &ref, nullptr) == noErr);
    return ref;
}

bool LeadsTo(const FSRef& inRef, const FSRef& inOther)
{
    return FSCompareFSRefs(&inRef, &inOther) == noErr;
}

} // namespace

TEST_CASE("AECoercePtr: the type that there is, and the wild card, copy")
{
    CHECK(As('what', "abc", 'what') == "abc");
    AEDesc result;
    CHECK(AECoercePtr('what', "abc", 3, typeWildCard, &result) == noErr);
    CHECK(result.descriptorType == 'what');
    CHECK(BytesOf(result) == "abc");
    AEDisposeDesc(&result);
}

TEST_CASE("AECoercePtr, AECoerceDesc: bad arguments")
{
    AEDesc result;
    CHECK(AECoercePtr(typeChar, nullptr, 3, typeUTF8Text, &result) == paramErr);
    CHECK(result.descriptorType == typeNull);
    CHECK(AECoercePtr(typeChar, "a", -1, typeUTF8Text, &result) == paramErr);
    CHECK(AECoercePtr(typeChar, "a", 1, typeUTF8Text, nullptr) == paramErr);
    CHECK(AECoerceDesc(nullptr, typeUTF8Text, &result) == paramErr);
    CHECK(As('what', "abc", typeChar) == "failed");
    CHECK(As(typeChar, "abc", 'what') == "failed");
}

TEST_CASE("Coercions: integers and reals among themselves, where they fit")
{
    CHECK(As(typeSInt16, BytesOf(SInt16{ -5 }), typeSInt32) == BytesOf(SInt32{ -5 }));
    CHECK(As(typeSInt32, BytesOf(SInt32{ 70000 }), typeSInt16) == "failed");
    CHECK(As(typeSInt32, BytesOf(SInt32{ -1 }), typeUInt32) == "failed");
    CHECK(As(typeUInt64, BytesOf(~UInt64{ 0 }), typeSInt64) == "failed");
    CHECK(As(typeSInt32, BytesOf(SInt32{ 3 }), typeIEEE64BitFloatingPoint) == BytesOf(3.0));
    CHECK(As(typeIEEE64BitFloatingPoint, BytesOf(2.75), typeSInt16) == BytesOf(SInt16{ 3 }));
    CHECK(As(typeIEEE64BitFloatingPoint, BytesOf(0.5), typeIEEE32BitFloatingPoint) == BytesOf(0.5f));
    CHECK(As(typeSInt32, "abc", typeSInt16) == "failed"); // three bytes are no long integer
    CHECK(As(typeSInt32, "", typeSInt16) == "failed");
}

TEST_CASE("Coercions: text among its three forms")
{
    CHECK(As(typeChar, "\x8A", typeUTF8Text) == "\xC3\xA4");
    CHECK(As(typeUTF8Text, "\xC3\xA4", typeChar) == "\x8A");
    CHECK(As(typeUTF8Text, "\xC3\xA4", typeUnicodeText) == BytesOf(std::u16string(u"\u00E4")));
    CHECK(As(typeUnicodeText, BytesOf(std::u16string(u"a\u00E4")), typeChar) == "a\x8A");
    CHECK(As(typeChar, "", typeUnicodeText) == "");
    CHECK(As(typeUnicodeText, "abc", typeChar).size() == 1); // half a character is left out
}

TEST_CASE("Coercions: numbers as text")
{
    CHECK(TextOf(typeSInt16, SInt16{ -123 }) == "-123");
    CHECK(TextOf(typeUInt64, ~UInt64{ 0 }) == "18446744073709551615");
    CHECK(TextOf(typeIEEE64BitFloatingPoint, 2.5) == "2.5");
    CHECK(TextOf(typeIEEE64BitFloatingPoint, -3.0) == "-3");
    CHECK(TextOf(typeIEEE32BitFloatingPoint, 0.5f) == "0.5");
    CHECK(TextOf(typeBoolean, Boolean{ 1 }) == "true");
    CHECK(As(typeTrue, "", typeUTF8Text) == "true");
    CHECK(As(typeSInt16, BytesOf(SInt16{ 7 }), typeUnicodeText) == BytesOf(std::u16string(u"7")));
}

TEST_CASE("Coercions: text as numbers")
{
    CHECK(As(typeChar, " 42 ", typeSInt16) == BytesOf(SInt16{ 42 }));
    CHECK(As(typeChar, "+42", typeSInt32) == BytesOf(SInt32{ 42 }));
    CHECK(As(typeUTF8Text, "-2.5e1", typeIEEE64BitFloatingPoint) == BytesOf(-25.0));
    CHECK(As(typeUnicodeText, BytesOf(std::u16string(u"12")), typeSInt64) == BytesOf(SInt64{ 12 }));
    CHECK(As(typeChar, "18446744073709551615", typeUInt64) == BytesOf(~UInt64{ 0 }));
    CHECK(As(typeChar, "99999", typeSInt16) == "failed");
    CHECK(As(typeChar, "false", typeBoolean) == BytesOf(Boolean{ 0 }));
    for (const char* text : { "", " ", "x", "1x", "1 2", "--1", "+-1", "nan", "inf", "0x10", "1e999", "." })
        CHECK(As(typeChar, text, typeIEEE64BitFloatingPoint) == "failed");
}

TEST_CASE("Coercions: four-character codes as text and among themselves")
{
    const std::string code = BytesOf(OSType{ 'ttro' });
    CHECK(As(typeType, code, typeChar) == "ttro");
    CHECK(As(typeChar, "ttro", typeType) == code);
    CHECK(As(typeUnicodeText, BytesOf(std::u16string(u"ttro")), typeEnumerated) == code);
    CHECK(As(typeType, code, typeEnumerated) == code);
    CHECK(As(typeKeyword, code, typeUInt32) == code);
    CHECK(As(typeUInt32, code, typeApplSignature) == code);
    CHECK(As(typeType, BytesOf(OSType{ 0x8A616263 }), typeUTF8Text) == "\xC3\xA4"
                                                                       "abc");
    CHECK(As(typeChar, "toolong", typeType) == "failed");
    CHECK(As(typeChar, "abc", typeType) == "failed");
    CHECK(As(typeType, "abc", typeChar) == "failed");
    CHECK(As(typeType, code, typeIEEE64BitFloatingPoint) == "failed");
}

TEST_CASE("Coercions: truth by number, by enumerator and by type alone")
{
    const std::string yes = BytesOf(Boolean{ 1 }), no = BytesOf(Boolean{ 0 });
    CHECK(As(typeTrue, "", typeBoolean) == yes);
    CHECK(As(typeFalse, "", typeBoolean) == no);
    CHECK(As(typeEnumerated, BytesOf(OSType{ 'true' }), typeBoolean) == yes);
    CHECK(As(typeEnumerated, BytesOf(OSType{ 'fals' }), typeBoolean) == no);
    CHECK(As(typeEnumerated, BytesOf(OSType{ 'mayb' }), typeBoolean) == "failed");
    CHECK(As(typeBoolean, yes, typeEnumerated) == BytesOf(OSType{ 'true' }));
    CHECK(As(typeBoolean, no, typeFalse) == "");
    CHECK(As(typeBoolean, no, typeTrue) == "failed");
    CHECK(As(typeSInt32, BytesOf(SInt32{ 7 }), typeBoolean) == yes);
    CHECK(As(typeBoolean, yes, typeSInt16) == BytesOf(SInt16{ 1 }));
    CHECK(As(typeFalse, "", typeSInt32) == BytesOf(SInt32{ 0 }));
}

TEST_CASE("Coercions: anything to a list of one, and back")
{
    AEDesc list, item;
    CHECK(AECoercePtr(typeChar, "12", 2, typeAEList, &list) == noErr);
    long count = 0;
    CHECK(AECountItems(&list, &count) == noErr);
    CHECK(count == 1);
    CHECK(AECoerceDesc(&list, typeSInt16, &item) == noErr);
    CHECK(BytesOf(item) == BytesOf(SInt16{ 12 }));
    AEDisposeDesc(&item);
    AEPutPtr(&list, 0, typeChar, "13", 2);
    CHECK(AECoerceDesc(&list, typeSInt16, &item) == errAECoercionFail);
    CHECK(AECoerceDesc(&list, typeAERecord, &item) == errAECoercionFail);
    AEDisposeDesc(&list);
}

TEST_CASE("Coercions: a record to a list, and to a record that goes by another type")
{
    AEDesc record, result;
    AECreateList(nullptr, 0, true, &record);
    AEPutKeyPtr(&record, 'name', typeChar, "Jo", 2);
    CHECK(AECoerceDesc(&record, 'obj ', &result) == noErr);
    CHECK(result.descriptorType == 'obj ');
    CHECK(AECheckIsRecord(&result));
    AEDisposeDesc(&result);
    CHECK(AECoerceDesc(&record, typeAEList, &result) == noErr);
    CHECK_FALSE(AECheckIsRecord(&result));
    AEKeyword keyword = 0;
    AEGetNthPtr(&result, 1, typeChar, &keyword, nullptr, nullptr, 0, nullptr);
    CHECK(keyword == typeWildCard);
    AEDisposeDesc(&result);
    CHECK(AECoerceDesc(&record, typeChar, &result) == errAECoercionFail);
    CHECK(AECoerceDesc(&record, typeFSS, &result) == errAECoercionFail);
    AEDisposeDesc(&record);
}

TEST_CASE("Coercions: a file by FSSpec, FSRef, alias and URL, each from each")
{
    const ScratchFolder folder;
    const FSRef file = RefOf(folder.Write("A file.txt", "x"));
    FSSpec spec = {};
    REQUIRE(FSGetCatalogInfo(&file, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr) == noErr);
    std::string alias, url, back;
    REQUIRE(Coerced(typeFSS, BytesOf(spec), typeAlias, &alias) == noErr);
    REQUIRE(Coerced(typeFSRef, BytesOf(file), typeFileURL, &url) == noErr);
    const std::pair<DescType, std::string> forms[] = {
        { typeFSS, BytesOf(spec) }, { typeFSRef, BytesOf(file) }, { typeAlias, alias }, { typeFileURL, url }
    };
    for (const auto& [type, bytes] : forms) {
        REQUIRE(Coerced(type, bytes, typeFSRef, &back) == noErr);
        CHECK(LeadsTo(RecordOf<FSRef>(back), file));
        REQUIRE(Coerced(type, bytes, typeFSS, &back) == noErr);
        const auto same = RecordOf<FSSpec>(back);
        CHECK(+same.vRefNum == +spec.vRefNum);
        CHECK(+same.parID == +spec.parID);
        CHECK(std::memcmp(same.name, spec.name, spec.name[0] + 1u) == 0);
        REQUIRE(Coerced(type, bytes, typeFileURL, &back) == noErr);
        CHECK(back == url);
        REQUIRE(Coerced(type, bytes, typeAlias, &back) == noErr);
        CHECK(Coerced(typeAlias, back, typeFSRef, &back) == noErr);
    }
}

TEST_CASE("Coercions: URLs are percent-encoded UTF-8; a folder's ends with a '/'")
{
    const ScratchFolder folder;
    const std::string base = "file://" + folder.Path().string() + "/";
    const FSRef file = RefOf(folder.Write("50% \xC3\xA4?#", "x"));
    CHECK(As(typeFSRef, BytesOf(file), typeFileURL) == base + "50%25%20%C3%A4%3F%23");
    CHECK(As(typeFSRef, BytesOf(RefOf(folder.Path())), typeFileURL) == base);
    for (const std::string& url :
         { base + "50%25%20%c3%a4%3f%23", "FILE:" + folder.Path().string() + "/50%25 %C3%A4%3F%23",
           "file://localhost" + folder.Path().string() + "/50%25%20%C3%A4%3F%23?query#fragment" })
        CHECK(LeadsTo(RecordOf<FSRef>(As(typeFileURL, url, typeFSRef)), file));
    CHECK(LeadsTo(RecordOf<FSRef>(As(typeFileURL, base, typeFSRef)), RefOf(folder.Path())));
}

TEST_CASE("Coercions: what is no URL of a file")
{
    for (const char* url :
         { "", "file", "file:", "file://", "file:relative", "file://host/path", "http:///etc", "file:///%",
           "file:///%4", "file:///%zz", "file:///etc%00", "/etc" })
        CHECK(As(typeFileURL, url, typeFSRef) == "failed");
    CHECK(As(typeFileURL, std::string("file:///etc\0x", 13), typeFSRef) == "failed");
}

TEST_CASE("Coercions: a file that is not there is the File Manager's error")
{
    const ScratchFolder folder;
    std::string out;
    CHECK(Coerced(typeFileURL, "file://" + folder.Path().string() + "/none", typeFSRef, &out) == fnfErr);
    FSSpec spec = {};
    const FSRef root = RefOf(folder.Write("gone"));
    REQUIRE(FSGetCatalogInfo(&root, kFSCatInfoNone, nullptr, nullptr, &spec, nullptr) == noErr);
    std::string alias;
    REQUIRE(Coerced(typeFSS, BytesOf(spec), typeAlias, &alias) == noErr);
    std::filesystem::remove(folder.Path() / "gone");
    CHECK(Coerced(typeFSS, BytesOf(spec), typeFSRef, &out) == fnfErr);
    CHECK(Coerced(typeAlias, alias, typeFSRef, &out) == fnfErr);
}

TEST_CASE("Coercions: bytes that are no file")
{
    for (const DescType type : { typeFSS, typeFSRef, typeAlias }) {
        CHECK(As(type, "", typeFileURL) == "failed");
        CHECK(As(type, "abc", typeFileURL) == "failed");
    }
    CHECK(As(typeAlias, std::string(400, '\xFF'), typeFileURL) == "failed");
    CHECK(As(typeFSS, std::string(71, '\0'), typeFSRef) == "failed");
    std::string out;
    CHECK(Coerced(typeFSRef, std::string(80, '\x5A'), typeFileURL, &out) == errFSBadFSRef);
    CHECK(As(typeChar, "/etc", typeFSRef) == "failed");
    CHECK(As(typeFSS, std::string(70, '\0'), typeChar) == "failed");
}

TEST_CASE("AEInstallCoercionHandler: asked before what is provided, with bytes or a descriptor")
{
    const Installed byDesc('one ', typeChar, NewAECoerceDescUPP(ByDesc), 7);
    CHECK(As('one ', "abc", typeChar) == BytesOf(DescType{ 'one ' }) + "abc");
    const Installed byPtr(typeSInt16, typeChar, PtrHandler(), 8, false);
    CHECK(As(typeSInt16, BytesOf(SInt16{ 1 }), typeChar) ==
          BytesOf(DescType{ typeSInt16 }) + BytesOf(SInt16{ 1 }));
    CHECK(gAsked == std::vector<long>{ 8 });
}

TEST_CASE("AEInstallCoercionHandler: the exact types first, then wild cards, the system's last")
{
    const Installed system('one ', 'two ', ByDesc, 5, true, true);
    const Installed any(typeWildCard, typeWildCard, ByDesc, 4);
    const Installed to(typeWildCard, 'two ', ByDesc, 3);
    const Installed from('one ', typeWildCard, ByDesc, 2);
    const Installed exact('one ', 'two ', ByDesc, 1);
    CHECK(As('one ', "abc", 'two ') != "failed");
    CHECK(gAsked == std::vector<long>{ 1 });
    gAsked.clear();
    gAnswer = errAECoercionFail;
    CHECK(As('one ', "abc", 'two ') == "failed");
    CHECK(gAsked == std::vector<long>{ 1, 2, 3, 4, 5 });
    gAsked.clear();
    gAnswer = errAECorruptData;
    std::string out;
    CHECK(Coerced('one ', "abc", 'two ', &out) == errAECorruptData);
    CHECK(gAsked == std::vector<long>{ 1 });
    gAnswer = errAECoercionFail; // then what is provided
    CHECK(As(typeSInt16, BytesOf(SInt16{ 1 }), typeSInt32) == BytesOf(SInt32{ 1 }));
}

TEST_CASE("AEInstallCoercionHandler: one that makes garbage has failed")
{
    const Installed handler('one ', 'two ', ByGarbage, 0);
    CHECK(As('one ', "abc", 'two ') == "failed");
}

TEST_CASE("AEInstallCoercionHandler: items of lists are coerced by it too; a list's bytes are not asked for")
{
    const Installed handler('one ', 'two ', PtrHandler(), 9, false);
    AEDesc list, item;
    AECreateList(nullptr, 0, false, &list);
    AEPutPtr(&list, 0, 'one ', "abc", 3);
    CHECK(AEGetNthDesc(&list, 1, 'two ', nullptr, &item) == noErr);
    CHECK(item.descriptorType == 'two ');
    AEDisposeDesc(&item);
    const Installed ofLists(typeAEList, 'two ', PtrHandler(), 10, false);
    CHECK(AECoerceDesc(&list, 'two ', &item) == noErr);
    CHECK(gAsked == std::vector<long>{ 9 });
    AEDisposeDesc(&item);
    AEDisposeDesc(&list);
}

TEST_CASE("AEGetCoercionHandler, AERemoveCoercionHandler: what is installed")
{
    AECoercionHandlerUPP handler = nullptr;
    long refcon = 0;
    Boolean isDesc = false;
    {
        const Installed first('one ', 'two ', ByDesc, 1);
        CHECK(AEInstallCoercionHandler('one ', 'two ', ByDesc, 2, true, false) == noErr);
        CHECK(AEGetCoercionHandler('one ', 'two ', &handler, &refcon, &isDesc, false) == noErr);
        CHECK((handler == ByDesc));
        CHECK(refcon == 2);
        CHECK(isDesc);
        CHECK(AEGetCoercionHandler('one ', 'two ', &handler, &refcon, &isDesc, true) == errAEHandlerNotFound);
        CHECK(AERemoveCoercionHandler('one ', 'two ', ByGarbage, false) == errAEHandlerNotFound);
    }
    CHECK(AEGetCoercionHandler('one ', 'two ', &handler, &refcon, &isDesc, false) == errAEHandlerNotFound);
    CHECK(AERemoveCoercionHandler('one ', 'two ', nullptr, false) == errAEHandlerNotFound);
    CHECK(AEInstallCoercionHandler('one ', 'two ', nullptr, 0, true, false) == paramErr);
    CHECK(AEGetCoercionHandler('one ', 'two ', nullptr, &refcon, &isDesc, false) == paramErr);
}
