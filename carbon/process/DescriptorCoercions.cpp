// Which way a coercion goes, by the shapes of what there is and what is wanted.
#include "DescriptorCoercions.h"

namespace lampblack::process {

namespace {

Typed ListOf(std::vector<DescItem> inItems, int inDepth)
{
    Typed list{ typeAEList, std::make_shared<DescValue>() };
    list.value->shape = Shape::List;
    list.value->items = std::move(inItems);
    list.value->depth = inDepth;
    return list;
}

OSErr ListOfOne(const Typed& inValue, Typed* outValue)
{
    const int depth = inValue.value ? inValue.value->depth : 0;
    if (depth >= kDeepest)
        return errAECoercionFail;
    *outValue = ListOf({ { typeWildCard, inValue } }, depth + 1);
    return noErr;
}

OSErr CoerceList(const Typed& inList, DescType inTo, Typed* outValue)
{
    if (inTo == typeAERecord || inList.value->items.size() != 1)
        return errAECoercionFail;
    return Coerce(inList.value->items[0].content, inTo, outValue);
}

OSErr CoerceRecord(const Typed& inRecord, DescType inTo, Typed* outValue)
{
    if (IsDataType(inTo) || IsFileType(inTo))
        return errAECoercionFail;
    if (inTo == typeAEList) {
        std::vector<DescItem> items = inRecord.value->items;
        for (DescItem& item : items)
            item.keyword = typeWildCard;
        *outValue = ListOf(std::move(items), inRecord.value->depth);
        return noErr;
    }
    *outValue = { inTo, inRecord.value };
    return noErr;
}

OSErr CoerceProvided(const Typed& inValue, DescType inTo, Typed* outValue)
{
    if (inValue.ShapeOf() == Shape::Record)
        return CoerceRecord(inValue, inTo, outValue);
    if (inValue.ShapeOf() == Shape::List)
        return inTo == typeAEList ? ListOfOne(inValue, outValue) : CoerceList(inValue, inTo, outValue);
    if (inTo == typeAEList)
        return ListOfOne(inValue, outValue);
    if (IsFileType(inValue.type) && IsFileType(inTo))
        return CoerceFile(inValue, inTo, outValue);
    return CoerceData(inValue, inTo, outValue);
}

} // namespace

OSErr Coerce(const Typed& inValue, DescType inTo, Typed* outValue)
{
    if (inTo == typeWildCard || inTo == inValue.type) {
        *outValue = inValue;
        return noErr;
    }
    const OSErr err = CoerceByHandlers(inValue, inTo, outValue);
    return err == errAECoercionFail ? CoerceProvided(inValue, inTo, outValue) : err;
}

} // namespace lampblack::process

using namespace lampblack::process;

OSErr AECoerceDesc(const AEDesc* theAEDesc, DescType toType, AEDesc* result)
{
    if (!result)
        return paramErr;
    Typed from;
    OSErr err = ValueOf(theAEDesc, &from);
    AEInitializeDesc(result);
    if (err != noErr)
        return err;
    Typed to;
    err = WithMemory([&] { return Coerce(from, toType, &to); });
    return err == noErr ? MakeDesc(std::move(to), result) : err;
}

OSErr AECoercePtr(DescType typeCode, const void* dataPtr, Size dataSize, DescType toType, AEDesc* result)
{
    AEDesc from;
    OSErr err = AECreateDesc(typeCode, dataPtr, dataSize, &from);
    if (err == noErr)
        err = AECoerceDesc(&from, toType, result);
    else
        AEInitializeDesc(result);
    AEDisposeDesc(&from);
    return err;
}
