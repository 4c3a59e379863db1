// Descriptors: what they hold, what is refused, lists and records of them.
#include "Descriptors.h"

#include <doctest/doctest.h>

#include <cstring>
#include <string>

using lampblack::process::kDeepest;

namespace {

// A descriptor that goes with its scope.
struct Desc : AEDesc {
    Desc() { AEInitializeDesc(this); }
    Desc(DescType inType, std::string_view inBytes)
    {
        AECreateDesc(inType, inBytes.data(), static_cast<Size>(inBytes.size()), this);
    }
    ~Desc() { AEDisposeDesc(this); }
    Desc(const Desc&) = delete;

    std::string Text() const
    {
        std::string text(static_cast<size_t>(AEGetDescDataSize(this)), '\0');
        AEGetDescData(this, text.data(), static_cast<Size>(text.size()));
        return text;
    }
};

struct List : Desc {
    explicit List(Boolean inIsRecord = false) { AECreateList(nullptr, 0, inIsRecord, this); }

    long Count() const
    {
        long count = -1;
        AECountItems(this, &count);
        return count;
    }
    OSErr Put(long inIndex, const char* inText)
    {
        return AEPutPtr(this, inIndex, typeChar, inText, static_cast<Size>(std::strlen(inText)));
    }
    std::string At(long inIndex) const
    {
        Desc item;
        return AEGetNthDesc(this, inIndex, typeWildCard, nullptr, &item) == noErr ? item.Text() : "none";
    }
};

AEDesc Garbage()
{
    static int storage[64];
    return { typeChar, reinterpret_cast<AEDataStorage>(storage) };
}

AEDesc Disposed()
{
    AEDesc desc, copy;
    AECreateDesc(typeChar, "a", 1, &desc);
    copy = desc;
    AEDisposeDesc(&desc);
    return copy;
}

} // namespace

TEST_CASE("AEInitializeDesc: a null descriptor of anything")
{
    AEDesc desc = Garbage();
    AEInitializeDesc(&desc);
    CHECK(desc.descriptorType == typeNull);
    CHECK(desc.dataHandle == nullptr);
    AEInitializeDesc(nullptr);
}

TEST_CASE("AECreateDesc: a copy of the bytes, with their type")
{
    char bytes[] = "abc";
    AEDesc desc;
    REQUIRE(AECreateDesc(typeChar, bytes, 3, &desc) == noErr);
    bytes[0] = 'x';
    CHECK(desc.descriptorType == typeChar);
    CHECK(AEGetDescDataSize(&desc) == 3);
    char out[4] = "###";
    CHECK(AEGetDescData(&desc, out, 4) == noErr);
    CHECK(std::string(out) == "abc");
    CHECK(AEDisposeDesc(&desc) == noErr);
    CHECK(desc.descriptorType == typeNull);
    CHECK(desc.dataHandle == nullptr);
    CHECK(AEDisposeDesc(&desc) == noErr);
}

TEST_CASE("AECreateDesc: no bytes, and none where some should be")
{
    AEDesc desc;
    CHECK(AECreateDesc(typeTrue, nullptr, 0, &desc) == noErr);
    CHECK(desc.descriptorType == typeTrue);
    CHECK(AEGetDescDataSize(&desc) == 0);
    AEDisposeDesc(&desc);
    CHECK(AECreateDesc(typeChar, nullptr, 1, &desc) == paramErr);
    CHECK(desc.descriptorType == typeNull);
    CHECK(AECreateDesc(typeChar, "a", -1, &desc) == paramErr);
    CHECK(AECreateDesc(typeChar, "a", Size(1) << 40, &desc) == memFullErr);
    CHECK(AECreateDesc(typeChar, "a", 1, nullptr) == paramErr);
}

TEST_CASE("AEGetDescData: no more than the room, and nothing of a list")
{
    Desc desc(typeChar, "abcdef");
    char out[] = "######";
    CHECK(AEGetDescData(&desc, out, 2) == noErr);
    CHECK(std::string(out) == "ab####");
    CHECK(AEGetDescData(&desc, nullptr, 0) == noErr);
    CHECK(AEGetDescData(&desc, nullptr, 1) == paramErr);
    CHECK(AEGetDescData(&desc, out, -1) == paramErr);
    List list;
    CHECK(AEGetDescData(&list, out, 2) == errAEWrongDataType);
    CHECK(AEGetDescDataSize(&list) == 0);
}

TEST_CASE("AEDuplicateDesc: each on its own")
{
    Desc desc(typeChar, "abc");
    Desc copy;
    CHECK(AEDuplicateDesc(&desc, &copy) == noErr);
    CHECK(copy.dataHandle != desc.dataHandle);
    AEReplaceDescData(typeUTF8Text, "xy", 2, &desc);
    CHECK(copy.descriptorType == typeChar);
    CHECK(copy.Text() == "abc");
    CHECK(desc.descriptorType == typeUTF8Text);
    CHECK(desc.Text() == "xy");
}

TEST_CASE("AEReplaceDescData: of a null descriptor, and refused without harm")
{
    Desc desc;
    CHECK(AEReplaceDescData(typeChar, "abc", 3, &desc) == noErr);
    CHECK(AEReplaceDescData(typeChar, nullptr, 3, &desc) == paramErr);
    CHECK(desc.Text() == "abc");
}

TEST_CASE("Descriptors: one that is garbage or disposed of is no descriptor, to any call")
{
    List list;
    for (const AEDesc bad : { Garbage(), Disposed() }) {
        AEDesc desc = bad, result;
        long count = 0;
        DescType type = 0;
        Size size = 0;
        char byte = 0;
        CHECK(AEDisposeDesc(&desc) == errAENotAEDesc);
        CHECK(AEDuplicateDesc(&desc, &result) == errAENotAEDesc);
        CHECK(result.dataHandle == nullptr);
        CHECK(AEGetDescData(&desc, &byte, 1) == errAENotAEDesc);
        CHECK(AEGetDescDataSize(&desc) == 0);
        CHECK(AEReplaceDescData(typeChar, "a", 1, &desc) == errAENotAEDesc);
        CHECK(AECoerceDesc(&desc, typeUTF8Text, &result) == errAENotAEDesc);
        CHECK(AECountItems(&desc, &count) == errAENotAEDesc);
        CHECK(AEPutPtr(&desc, 0, typeChar, "a", 1) == errAENotAEDesc);
        CHECK(AEPutDesc(&list, 0, &desc) == errAENotAEDesc);
        CHECK(AEGetNthPtr(&desc, 1, typeChar, nullptr, &type, &byte, 1, &size) == errAENotAEDesc);
        CHECK(AEGetNthDesc(&desc, 1, typeChar, nullptr, &result) == errAENotAEDesc);
        CHECK(AESizeOfNthItem(&desc, 1, &type, &size) == errAENotAEDesc);
        CHECK(AEDeleteItem(&desc, 1) == errAENotAEDesc);
        CHECK(AEPutKeyPtr(&desc, 'key1', typeChar, "a", 1) == errAENotAEDesc);
        CHECK(AEGetKeyPtr(&desc, 'key1', typeChar, &type, &byte, 1, &size) == errAENotAEDesc);
        CHECK(AEDeleteKeyDesc(&desc, 'key1') == errAENotAEDesc);
        CHECK_FALSE(AECheckIsRecord(&desc));
    }
    CHECK(list.Count() == 0);
}

TEST_CASE("Lists: appended by 0 and by the count plus 1, replaced by index")
{
    List list;
    CHECK(list.descriptorType == typeAEList);
    CHECK(list.Put(0, "a") == noErr);
    CHECK(list.Put(2, "b") == noErr);
    CHECK(list.Put(0, "c") == noErr);
    CHECK(list.Put(2, "B") == noErr);
    CHECK(list.Count() == 3);
    CHECK(list.At(1) + list.At(2) + list.At(3) == "aBc");
}

TEST_CASE("Lists: indices that are not there")
{
    List list;
    list.Put(0, "a");
    CHECK(list.Put(3, "x") == errAEIllegalIndex);
    CHECK(list.Put(-1, "x") == errAEIllegalIndex);
    Desc item;
    for (const long index : { -1L, 0L, 2L, 0x7FFFFFFFL }) {
        CHECK(AEGetNthDesc(&list, index, typeWildCard, nullptr, &item) == errAEDescNotFound);
        CHECK(AESizeOfNthItem(&list, index, nullptr, nullptr) == errAEDescNotFound);
        CHECK(AEDeleteItem(&list, index) == errAEDescNotFound);
    }
    CHECK(list.Count() == 1);
}

TEST_CASE("AEDeleteItem: those behind move up")
{
    List list;
    for (const char* text : { "a", "b", "c" })
        list.Put(0, text);
    CHECK(AEDeleteItem(&list, 2) == noErr);
    CHECK(list.At(1) + list.At(2) + list.At(3) == "acnone");
}

TEST_CASE("AEGetNthPtr: type, keyword and whole size; no more bytes than the room; coerced on demand")
{
    List list;
    const SInt32 number = 70000;
    AEPutPtr(&list, 0, typeSInt32, &number, sizeof number);
    list.Put(0, "abcdef");
    AEKeyword keyword = 0;
    DescType type = 0;
    Size size = 0;
    char out[] = "####";
    CHECK(AEGetNthPtr(&list, 2, typeWildCard, &keyword, &type, out, 2, &size) == noErr);
    CHECK(std::string(out) == "ab##");
    CHECK(keyword == typeWildCard);
    CHECK(type == typeChar);
    CHECK(size == 6);
    SInt64 wide = 0;
    CHECK(AEGetNthPtr(&list, 1, typeSInt64, nullptr, &type, &wide, sizeof wide, nullptr) == noErr);
    CHECK(wide == 70000);
    CHECK(type == typeSInt64);
    SInt16 narrow = 5;
    CHECK(AEGetNthPtr(&list, 1, typeSInt16, nullptr, nullptr, &narrow, sizeof narrow, &size) ==
          errAECoercionFail);
    CHECK(narrow == 5);
    CHECK(AEGetNthPtr(&list, 1, typeSInt64, nullptr, nullptr, nullptr, 8, nullptr) == paramErr);
    CHECK(AEGetNthPtr(&list, 1, typeSInt64, nullptr, nullptr, nullptr, 0, &size) == noErr);
    CHECK(size == 8);
}

TEST_CASE("AESizeOfNthItem: of the item as it is")
{
    List list;
    list.Put(0, "abc");
    DescType type = 0;
    Size size = 0;
    CHECK(AESizeOfNthItem(&list, 1, &type, &size) == noErr);
    CHECK(type == typeChar);
    CHECK(size == 3);
}

TEST_CASE("AEPutDesc: lists in lists, each a copy")
{
    List outer, inner;
    inner.Put(0, "a");
    CHECK(AEPutDesc(&outer, 0, &inner) == noErr);
    inner.Put(0, "b");
    List copy;
    AEDisposeDesc(&copy);
    CHECK(AEGetNthDesc(&outer, 1, typeAEList, nullptr, &copy) == noErr);
    CHECK(copy.Count() == 1);
    copy.Put(0, "c");
    CHECK(copy.Count() == 2);
    List again;
    AEDisposeDesc(&again);
    AEGetNthDesc(&outer, 1, typeAEList, nullptr, &again);
    CHECK(again.Count() == 1);
    char byte = 0;
    CHECK(AEGetNthPtr(&outer, 1, typeWildCard, nullptr, nullptr, &byte, 1, nullptr) == errAEWrongDataType);
}

TEST_CASE("AEPutDesc: a list into itself is a copy of what it was")
{
    List list;
    list.Put(0, "a");
    CHECK(AEPutDesc(&list, 0, &list) == noErr);
    CHECK(list.Count() == 2);
    List inner;
    AEDisposeDesc(&inner);
    AEGetNthDesc(&list, 2, typeAEList, nullptr, &inner);
    CHECK(inner.Count() == 1);
}

TEST_CASE("AEPutDesc: lists in lists end at their limit")
{
    List list;
    OSErr err = noErr;
    int depth = 0;
    while (err == noErr && depth < 2 * kDeepest) {
        err = AEPutDesc(&list, 1, &list);
        depth += err == noErr;
    }
    CHECK(err == errAEBadListItem);
    CHECK(depth == kDeepest);
}

TEST_CASE("Lists: what is none has no items")
{
    Desc desc(typeChar, "abc");
    Desc null;
    long count = 7;
    for (AEDesc* each : { static_cast<AEDesc*>(&desc), static_cast<AEDesc*>(&null) }) {
        CHECK(AECountItems(each, &count) == errAEWrongDataType);
        CHECK(count == 0);
        CHECK(AEPutPtr(each, 0, typeChar, "a", 1) == errAEWrongDataType);
        CHECK(AEDeleteItem(each, 1) == errAEWrongDataType);
        CHECK(AEGetKeyPtr(each, 'key1', typeChar, nullptr, nullptr, 0, nullptr) == errAEWrongDataType);
    }
}

TEST_CASE("AECreateList: the factoring changes nothing of what is put")
{
    AEDescList list;
    CHECK(AECreateList("ab", 2, false, &list) == noErr);
    AEPutPtr(&list, 0, typeChar, "abc", 3);
    Size size = 0;
    AESizeOfNthItem(&list, 1, nullptr, &size);
    CHECK(size == 3);
    AEDisposeDesc(&list);
    CHECK(AECreateList("ab", -1, false, &list) == paramErr);
    CHECK(AECreateList(nullptr, 0, false, nullptr) == paramErr);
}

TEST_CASE("Records: put, replaced, read and deleted by keyword")
{
    List record(true);
    CHECK(record.descriptorType == typeAERecord);
    CHECK(AECheckIsRecord(&record));
    CHECK(AEPutKeyPtr(&record, 'name', typeChar, "Jean", 4) == noErr);
    const SInt16 age = 40;
    CHECK(AEPutParamPtr(&record, 'age ', typeSInt16, &age, sizeof age) == noErr);
    CHECK(AEPutKeyPtr(&record, 'name', typeChar, "Jo", 2) == noErr);
    CHECK(record.Count() == 2);
    char name[8] = "";
    Size size = 0;
    DescType type = 0;
    CHECK(AEGetKeyPtr(&record, 'name', typeChar, &type, name, sizeof name, &size) == noErr);
    CHECK(std::string(name, static_cast<size_t>(size)) == "Jo");
    SInt32 wide = 0;
    CHECK(AEGetParamPtr(&record, 'age ', typeSInt32, nullptr, &wide, sizeof wide, nullptr) == noErr);
    CHECK(wide == 40);
    CHECK(AESizeOfKeyDesc(&record, 'age ', &type, &size) == noErr);
    CHECK(type == typeSInt16);
    CHECK(size == 2);
    CHECK(AEDeleteKeyDesc(&record, 'name') == noErr);
    CHECK(AEDeleteParam(&record, 'name') == errAEDescNotFound);
    CHECK(AEGetParamPtr(&record, 'name', typeChar, &type, name, 8, &size) == errAEDescNotFound);
    CHECK(AESizeOfParam(&record, 'name', &type, &size) == errAEDescNotFound);
    CHECK(record.Count() == 1);
}

TEST_CASE("Records: read by index with their keywords, not put by index")
{
    List record(true);
    AEPutKeyPtr(&record, 'name', typeChar, "Jo", 2);
    AEKeyword keyword = 0;
    Desc item;
    CHECK(AEGetNthDesc(&record, 1, typeWildCard, &keyword, &item) == noErr);
    CHECK(keyword == 'name');
    CHECK(item.Text() == "Jo");
    CHECK(record.Put(0, "x") == errAEWrongDataType);
    List list;
    CHECK(AEPutKeyPtr(&list, 'name', typeChar, "Jo", 2) == errAEWrongDataType);
    CHECK_FALSE(AECheckIsRecord(&list));
}

TEST_CASE("Records: one that goes by another type is still one")
{
    List record(true);
    record.descriptorType = 'obj ';
    CHECK(AEPutParamPtr(&record, 'name', typeChar, "Jo", 2) == noErr);
    CHECK(AECheckIsRecord(&record));
    List list(true);
    AEPutKeyDesc(&list, 'from', &record);
    Desc back;
    CHECK(AEGetParamDesc(&list, 'from', typeWildCard, &back) == noErr);
    CHECK(back.descriptorType == 'obj ');
    CHECK(AECheckIsRecord(&back));
}

TEST_CASE("Lists and records: null pointers")
{
    List list;
    Desc item;
    CHECK(AECountItems(&list, nullptr) == paramErr);
    CHECK(AECountItems(nullptr, nullptr) == paramErr);
    CHECK(AEPutPtr(nullptr, 0, typeChar, "a", 1) == paramErr);
    CHECK(AEPutPtr(&list, 0, typeChar, nullptr, 1) == paramErr);
    CHECK(AEPutDesc(&list, 0, nullptr) == paramErr);
    CHECK(AEGetNthDesc(&list, 1, typeChar, nullptr, nullptr) == paramErr);
    CHECK(AEGetNthDesc(nullptr, 1, typeChar, nullptr, &item) == paramErr);
    CHECK(AEGetKeyDesc(&list, 'key1', typeChar, nullptr) == paramErr);
    CHECK(AEDeleteItem(nullptr, 1) == paramErr);
}

TEST_CASE("Lists: ten thousand items appended one by one, each readable")
{
    List list;
    for (SInt32 i = 0; i < 10000; ++i)
        REQUIRE(AEPutPtr(&list, 0, typeSInt32, &i, sizeof i) == noErr);
    SInt32 value = 0;
    CHECK(AEGetNthPtr(&list, 7777, typeSInt32, nullptr, nullptr, &value, sizeof value, nullptr) == noErr);
    CHECK(value == 7776);
}
