// Lists and records of descriptors.
#include "DescriptorCoercions.h"

#include <algorithm>
#include <cstring>

namespace lampblack::process {

namespace {

// Which item: of a list or record by its index, of a record by its keyword.
struct Place {
    long index;
    AEKeyword keyword;
};

DescItem* FindItem(DescValue& inValue, const Place& inPlace)
{
    std::vector<DescItem>& items = inValue.items;
    if (inPlace.index) {
        const bool isThere = inPlace.index > 0 && static_cast<size_t>(inPlace.index) <= items.size();
        return isThere ? &items[static_cast<size_t>(inPlace.index) - 1] : nullptr;
    }
    const auto found = std::find_if(items.begin(), items.end(),
                                    [&](const DescItem& item) { return item.keyword == inPlace.keyword; });
    return found == items.end() ? nullptr : &*found;
}

bool HasPlaces(const DescValue* inValue, bool inByKeyword)
{
    return inValue && (inByKeyword ? inValue->shape == Shape::Record : inValue->shape != Shape::Data);
}

// The item at a place, as it is.
OSErr ItemAt(const AEDesc* inList, const Place& inPlace, bool inByKeyword, DescItem* outItem)
{
    Typed list;
    if (const OSErr err = ValueOf(inList, &list); err != noErr)
        return err;
    if (!HasPlaces(list.value.get(), inByKeyword))
        return errAEWrongDataType;
    const DescItem* item = !inByKeyword && inPlace.index <= 0 ? nullptr : FindItem(*list.value, inPlace);
    if (!item)
        return errAEDescNotFound;
    *outItem = *item;
    return noErr;
}

OSErr CheckDepth(const Typed& inContent, int* outDepth)
{
    *outDepth = 1 + (inContent.value ? inContent.value->depth : 0);
    return *outDepth > kDeepest ? OSErr{ errAEBadListItem } : OSErr{ noErr };
}

OSErr PutAt(AEDesc* ioList, long inIndex, Typed inContent)
{
    int depth = 0;
    DescValue* list = nullptr;
    OSErr err = CheckDepth(inContent, &depth);
    if (err == noErr)
        err = OwnValueOf(ioList, &list);
    if (err != noErr)
        return err;
    if (list->shape != Shape::List)
        return errAEWrongDataType;
    const auto count = static_cast<long>(list->items.size());
    if (inIndex < 0 || inIndex > count + 1)
        return errAEIllegalIndex;
    if (inIndex >= 1 && inIndex <= count)
        list->items[static_cast<size_t>(inIndex) - 1].content = std::move(inContent);
    else
        list->items.push_back({ typeWildCard, std::move(inContent) });
    list->depth = std::max(list->depth, depth);
    return noErr;
}

OSErr PutKey(AEDesc* ioRecord, AEKeyword inKeyword, Typed inContent)
{
    int depth = 0;
    DescValue* record = nullptr;
    OSErr err = CheckDepth(inContent, &depth);
    if (err == noErr)
        err = OwnValueOf(ioRecord, &record);
    if (err != noErr)
        return err;
    if (record->shape != Shape::Record)
        return errAEWrongDataType;
    if (DescItem* item = FindItem(*record, { 0, inKeyword }))
        item->content = std::move(inContent);
    else
        record->items.push_back({ inKeyword, std::move(inContent) });
    record->depth = std::max(record->depth, depth);
    return noErr;
}

// Calls inPut(content) with a copy of bytes, or with a descriptor's value.
template <class Put>
OSErr PutBytes(DescType inType, const void* inBytes, Size inSize, Put inPut)
{
    if (const OSErr err = CheckBytes(inBytes, inSize); err != noErr)
        return err;
    return WithMemory([&] {
        return inPut(DataOf(inType, { static_cast<const char*>(inBytes), static_cast<size_t>(inSize) }));
    });
}

template <class Put>
OSErr PutDesc(const AEDesc* inDesc, Put inPut)
{
    Typed content;
    if (const OSErr err = ValueOf(inDesc, &content); err != noErr)
        return err;
    return WithMemory([&] { return inPut(std::move(content)); });
}

// What an item is read into; any of the pointers may be null.
struct Buffer {
    DescType* type;
    void* bytes;
    Size room;
    Size* size;
};

OSErr ReadBytes(const DescItem& inItem, DescType inDesired, const Buffer& inBuffer)
{
    if (inBuffer.room < 0 || (inBuffer.room > 0 && !inBuffer.bytes))
        return paramErr;
    Typed value;
    const OSErr err = WithMemory([&] { return Coerce(inItem.content, inDesired, &value); });
    if (err != noErr)
        return err;
    if (value.ShapeOf() != Shape::Data)
        return errAEWrongDataType;
    const size_t size = value.Bytes().size();
    if (const size_t count = std::min(size, static_cast<size_t>(inBuffer.room)))
        std::memcpy(inBuffer.bytes, value.Bytes().data(), count);
    if (inBuffer.type)
        *inBuffer.type = value.type;
    if (inBuffer.size)
        *inBuffer.size = static_cast<Size>(size);
    return noErr;
}

OSErr ReadDesc(const DescItem& inItem, DescType inDesired, AEDesc* outDesc)
{
    Typed value;
    const OSErr err = WithMemory([&] { return Coerce(inItem.content, inDesired, &value); });
    return err == noErr ? MakeDesc(std::move(value), outDesc) : err;
}

OSErr ReadSize(const DescItem& inItem, DescType* outType, Size* outSize)
{
    if (outType)
        *outType = inItem.content.type;
    if (outSize)
        *outSize = static_cast<Size>(inItem.content.Bytes().size());
    return noErr;
}

OSErr Delete(AEDesc* ioList, const Place& inPlace, bool inByKeyword)
{
    return WithMemory([&] {
        DescValue* list = nullptr;
        DescItem item;
        OSErr err = ItemAt(ioList, inPlace, inByKeyword, &item);
        if (err == noErr)
            err = OwnValueOf(ioList, &list);
        if (err == noErr)
            list->items.erase(list->items.begin() + (FindItem(*list, inPlace) - list->items.data()));
        return err;
    });
}

} // namespace

} // namespace lampblack::process

using namespace lampblack::process;

OSErr AECreateList(const void* factoringPtr, Size factoredSize, Boolean isRecord, AEDescList* resultList)
{
    if (!resultList)
        return paramErr;
    AEInitializeDesc(resultList);
    if (factoringPtr && factoredSize < 0)
        return paramErr;
    return WithMemory([&] {
        Typed list{ isRecord ? DescType{ typeAERecord } : DescType{ typeAEList },
                    std::make_shared<DescValue>() };
        list.value->shape = isRecord ? Shape::Record : Shape::List;
        return MakeDesc(std::move(list), resultList);
    });
}

Boolean AECheckIsRecord(const AEDesc* theDesc)
{
    Typed value;
    return ValueOf(theDesc, &value) == noErr && value.ShapeOf() == Shape::Record;
}

OSErr AECountItems(const AEDescList* theAEDescList, long* theCount)
{
    if (!theCount)
        return paramErr;
    *theCount = 0;
    Typed list;
    if (const OSErr err = ValueOf(theAEDescList, &list); err != noErr)
        return err;
    if (!HasPlaces(list.value.get(), false))
        return errAEWrongDataType;
    *theCount = static_cast<long>(list.value->items.size());
    return noErr;
}

OSErr AEPutPtr(AEDescList* theAEDescList, long index, DescType typeCode, const void* dataPtr, Size dataSize)
{
    return PutBytes(typeCode, dataPtr, dataSize,
                    [&](Typed content) { return PutAt(theAEDescList, index, std::move(content)); });
}

OSErr AEPutDesc(AEDescList* theAEDescList, long index, const AEDesc* theAEDesc)
{
    return PutDesc(theAEDesc, [&](Typed content) { return PutAt(theAEDescList, index, std::move(content)); });
}

OSErr AEGetNthPtr(const AEDescList* theAEDescList, long index, DescType desiredType, AEKeyword* theAEKeyword,
                  DescType* typeCode, void* dataPtr, Size maximumSize, Size* actualSize)
{
    DescItem item;
    OSErr err = ItemAt(theAEDescList, { index, 0 }, false, &item);
    if (err == noErr)
        err = ReadBytes(item, desiredType, { typeCode, dataPtr, maximumSize, actualSize });
    if (err == noErr && theAEKeyword)
        *theAEKeyword = item.keyword;
    return err;
}

OSErr AEGetNthDesc(const AEDescList* theAEDescList, long index, DescType desiredType, AEKeyword* theAEKeyword,
                   AEDesc* result)
{
    if (!result)
        return paramErr;
    DescItem item;
    OSErr err = ItemAt(theAEDescList, { index, 0 }, false, &item);
    AEInitializeDesc(result);
    if (err == noErr)
        err = ReadDesc(item, desiredType, result);
    if (err == noErr && theAEKeyword)
        *theAEKeyword = item.keyword;
    return err;
}

OSErr AESizeOfNthItem(const AEDescList* theAEDescList, long index, DescType* typeCode, Size* dataSize)
{
    DescItem item;
    const OSErr err = ItemAt(theAEDescList, { index, 0 }, false, &item);
    return err == noErr ? ReadSize(item, typeCode, dataSize) : err;
}

OSErr AEDeleteItem(AEDescList* theAEDescList, long index)
{
    return Delete(theAEDescList, { index, 0 }, false);
}

OSErr AEPutKeyPtr(AERecord* theAERecord, AEKeyword theAEKeyword, DescType typeCode, const void* dataPtr,
                  Size dataSize)
{
    return PutBytes(typeCode, dataPtr, dataSize,
                    [&](Typed content) { return PutKey(theAERecord, theAEKeyword, std::move(content)); });
}

OSErr AEPutKeyDesc(AERecord* theAERecord, AEKeyword theAEKeyword, const AEDesc* theAEDesc)
{
    return PutDesc(theAEDesc,
                   [&](Typed content) { return PutKey(theAERecord, theAEKeyword, std::move(content)); });
}

OSErr AEGetKeyPtr(const AERecord* theAERecord, AEKeyword theAEKeyword, DescType desiredType,
                  DescType* actualType, void* dataPtr, Size maximumSize, Size* actualSize)
{
    DescItem item;
    const OSErr err = ItemAt(theAERecord, { 0, theAEKeyword }, true, &item);
    return err == noErr ? ReadBytes(item, desiredType, { actualType, dataPtr, maximumSize, actualSize })
                        : err;
}

OSErr AEGetKeyDesc(const AERecord* theAERecord, AEKeyword theAEKeyword, DescType desiredType, AEDesc* result)
{
    if (!result)
        return paramErr;
    DescItem item;
    const OSErr err = ItemAt(theAERecord, { 0, theAEKeyword }, true, &item);
    AEInitializeDesc(result);
    return err == noErr ? ReadDesc(item, desiredType, result) : err;
}

OSErr AESizeOfKeyDesc(const AERecord* theAERecord, AEKeyword theAEKeyword, DescType* typeCode, Size* dataSize)
{
    DescItem item;
    const OSErr err = ItemAt(theAERecord, { 0, theAEKeyword }, true, &item);
    return err == noErr ? ReadSize(item, typeCode, dataSize) : err;
}

OSErr AEDeleteKeyDesc(AERecord* theAERecord, AEKeyword theAEKeyword)
{
    return Delete(theAERecord, { 0, theAEKeyword }, true);
}

OSErr AEPutParamPtr(AppleEvent* theAppleEvent, AEKeyword theAEKeyword, DescType typeCode, const void* dataPtr,
                    Size dataSize)
{
    return AEPutKeyPtr(theAppleEvent, theAEKeyword, typeCode, dataPtr, dataSize);
}

OSErr AEPutParamDesc(AppleEvent* theAppleEvent, AEKeyword theAEKeyword, const AEDesc* theAEDesc)
{
    return AEPutKeyDesc(theAppleEvent, theAEKeyword, theAEDesc);
}

OSErr AEGetParamPtr(const AppleEvent* theAppleEvent, AEKeyword theAEKeyword, DescType desiredType,
                    DescType* actualType, void* dataPtr, Size maximumSize, Size* actualSize)
{
    return AEGetKeyPtr(theAppleEvent, theAEKeyword, desiredType, actualType, dataPtr, maximumSize,
                       actualSize);
}

OSErr AEGetParamDesc(const AppleEvent* theAppleEvent, AEKeyword theAEKeyword, DescType desiredType,
                     AEDesc* result)
{
    return AEGetKeyDesc(theAppleEvent, theAEKeyword, desiredType, result);
}

OSErr AESizeOfParam(const AppleEvent* theAppleEvent, AEKeyword theAEKeyword, DescType* typeCode,
                    Size* dataSize)
{
    return AESizeOfKeyDesc(theAppleEvent, theAEKeyword, typeCode, dataSize);
}

OSErr AEDeleteParam(AppleEvent* theAppleEvent, AEKeyword theAEKeyword)
{
    return AEDeleteKeyDesc(theAppleEvent, theAEKeyword);
}
