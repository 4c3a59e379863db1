// Making, copying and reading descriptors.
#include "Descriptors.h"

#include "memory/HandleBlock.h"
#include "memory/ReferenceTable.h"

#include <algorithm>
#include <cstring>

namespace lampblack::process {

namespace {

struct Storage {
    explicit Storage(std::shared_ptr<DescValue> inValue) : value(std::move(inValue)) {}

    std::shared_ptr<DescValue> value;
};

memory::ReferenceTable<Storage>& Storages()
{
    static auto* table = new memory::ReferenceTable<Storage>; // left alive for exit handlers
    return *table;
}

} // namespace

Typed DataOf(DescType inType, std::string_view inBytes)
{
    Typed made{ inType, std::make_shared<DescValue>() };
    made.value->bytes = inBytes;
    return made;
}

OSErr ValueOf(const AEDesc* inDesc, Typed* outValue)
{
    if (!inDesc)
        return paramErr;
    Typed value{ inDesc->descriptorType, nullptr };
    if (inDesc->dataHandle) {
        const Storage* storage = Storages().Find(inDesc->dataHandle);
        if (!storage)
            return errAENotAEDesc;
        value.value = storage->value;
    }
    *outValue = std::move(value);
    return noErr;
}

OSErr OwnValueOf(AEDesc* inDesc, DescValue** outValue)
{
    if (!inDesc)
        return paramErr;
    if (!inDesc->dataHandle)
        return errAEWrongDataType;
    Storage* storage = Storages().Find(inDesc->dataHandle);
    if (!storage)
        return errAENotAEDesc;
    if (storage->value.use_count() > 1)
        storage->value = std::make_shared<DescValue>(*storage->value);
    *outValue = storage->value.get();
    return noErr;
}

OSErr MakeDesc(Typed inValue, AEDesc* outDesc)
{
    *outDesc = { inValue.type, nullptr };
    if (inValue.type == typeNull && inValue.Bytes().empty() && inValue.ShapeOf() == Shape::Data)
        return noErr;
    const OSErr err = WithMemory([&] {
        if (!inValue.value)
            inValue.value = std::make_shared<DescValue>();
        Storage* storage = Storages().New(std::move(inValue.value));
        outDesc->dataHandle = reinterpret_cast<AEDataStorage>(storage);
        return OSErr{ noErr };
    });
    if (err != noErr)
        AEInitializeDesc(outDesc);
    return err;
}

OSErr CheckBytes(const void* inBytes, Size inSize)
{
    if (inSize < 0 || (inSize > 0 && !inBytes))
        return paramErr;
    return inSize > memory::kLargestBlock ? OSErr{ memFullErr } : OSErr{ noErr };
}

} // namespace lampblack::process

using namespace lampblack::process;

void AEInitializeDesc(AEDesc* desc)
{
    if (desc)
        *desc = { typeNull, nullptr };
}

OSErr AECreateDesc(DescType typeCode, const void* dataPtr, Size dataSize, AEDesc* result)
{
    if (!result)
        return paramErr;
    AEInitializeDesc(result);
    if (const OSErr err = CheckBytes(dataPtr, dataSize); err != noErr)
        return err;
    return WithMemory([&] {
        const std::string_view bytes(static_cast<const char*>(dataPtr), static_cast<size_t>(dataSize));
        return MakeDesc(DataOf(typeCode, bytes), result);
    });
}

OSErr AEDisposeDesc(AEDesc* theAEDesc)
{
    Typed value;
    if (const OSErr err = ValueOf(theAEDesc, &value); err != noErr)
        return err;
    Storages().Delete(Storages().Find(theAEDesc->dataHandle));
    AEInitializeDesc(theAEDesc);
    return noErr;
}

OSErr AEDuplicateDesc(const AEDesc* theAEDesc, AEDesc* result)
{
    if (!result)
        return paramErr;
    Typed value;
    const OSErr err = ValueOf(theAEDesc, &value);
    AEInitializeDesc(result);
    return err == noErr ? MakeDesc(std::move(value), result) : err;
}

OSErr AEGetDescData(const AEDesc* theAEDesc, void* dataPtr, Size maximumSize)
{
    Typed value;
    if (maximumSize < 0 || (maximumSize > 0 && !dataPtr))
        return paramErr;
    if (const OSErr err = ValueOf(theAEDesc, &value); err != noErr)
        return err;
    if (value.ShapeOf() != Shape::Data)
        return errAEWrongDataType;
    if (const size_t count = std::min(value.Bytes().size(), static_cast<size_t>(maximumSize)))
        std::memcpy(dataPtr, value.Bytes().data(), count);
    return noErr;
}

Size AEGetDescDataSize(const AEDesc* theAEDesc)
{
    Typed value;
    return ValueOf(theAEDesc, &value) == noErr ? static_cast<Size>(value.Bytes().size()) : 0;
}

OSErr AEReplaceDescData(DescType typeCode, const void* dataPtr, Size dataSize, AEDesc* theAEDesc)
{
    Typed old;
    if (const OSErr err = ValueOf(theAEDesc, &old); err != noErr)
        return err;
    AEDesc made;
    const OSErr err = AECreateDesc(typeCode, dataPtr, dataSize, &made);
    if (err != noErr)
        return err;
    AEDisposeDesc(theAEDesc);
    *theAEDesc = made;
    return noErr;
}
