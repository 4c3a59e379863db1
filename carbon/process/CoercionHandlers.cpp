// The coercions that an application installs, and the order in which they are asked.
#include "DescriptorCoercions.h"

#include <algorithm>

namespace lampblack::process {

namespace {

struct Handler {
    DescType from;
    DescType to;
    AECoercionHandlerUPP procedure;
    long refcon;
    bool takesDesc;
};

std::vector<Handler>& Handlers(bool inSystem)
{
    static std::vector<Handler> tables[2];
    return tables[inSystem];
}

std::vector<Handler>::iterator Find(std::vector<Handler>& inTable, DescType inFrom, DescType inTo)
{
    return std::find_if(inTable.begin(), inTable.end(),
                        [&](const Handler& each) { return each.from == inFrom && each.to == inTo; });
}

OSErr Call(const Handler& inHandler, const Typed& inValue, DescType inTo, AEDesc* outDesc)
{
    if (!inHandler.takesDesc) {
        const auto procedure =
            reinterpret_cast<AECoercePtrProcPtr>(reinterpret_cast<void*>(inHandler.procedure));
        return procedure(inValue.type, inValue.Bytes().data(), static_cast<Size>(inValue.Bytes().size()),
                         inTo, inHandler.refcon, outDesc);
    }
    AEDesc from;
    OSErr err = MakeDesc(inValue, &from);
    if (err == noErr)
        err = inHandler.procedure(&from, inTo, inHandler.refcon, outDesc);
    AEDisposeDesc(&from);
    return err;
}

OSErr CoerceBy(const Handler& inHandler, const Typed& inValue, DescType inTo, Typed* outValue)
{
    if (!inHandler.takesDesc && inValue.ShapeOf() != Shape::Data)
        return errAECoercionFail; // it would be asked about bytes that are not there
    AEDesc made;
    AEInitializeDesc(&made);
    Typed value;
    OSErr err = Call(inHandler, inValue, inTo, &made);
    if (err == noErr && ValueOf(&made, &value) != noErr)
        err = errAECoercionFail;
    AEDisposeDesc(&made);
    if (err == noErr)
        *outValue = std::move(value);
    return err;
}

} // namespace

OSErr CoerceByHandlers(const Typed& inValue, DescType inTo, Typed* outValue)
{
    const std::pair<DescType, DescType> order[] = { { inValue.type, inTo },
                                                    { inValue.type, typeWildCard },
                                                    { typeWildCard, inTo },
                                                    { typeWildCard, typeWildCard } };
    for (const bool isSystem : { false, true })
        for (const auto& [from, to] : order) {
            std::vector<Handler>& table = Handlers(isSystem);
            const auto found = Find(table, from, to);
            if (found == table.end())
                continue;
            const Handler handler = *found; // it may change the table
            const OSErr err = CoerceBy(handler, inValue, inTo, outValue);
            if (err != errAECoercionFail)
                return err;
        }
    return errAECoercionFail;
}

} // namespace lampblack::process

using namespace lampblack::process;

OSErr AEInstallCoercionHandler(DescType fromType, DescType toType, AECoercionHandlerUPP handler,
                               long handlerRefcon, Boolean fromTypeIsDesc, Boolean isSysHandler)
{
    if (!handler)
        return paramErr;
    return WithMemory([&] {
        std::vector<Handler>& table = Handlers(isSysHandler != 0);
        const Handler installed = { fromType, toType, handler, handlerRefcon, fromTypeIsDesc != 0 };
        const auto found = Find(table, fromType, toType);
        if (found == table.end())
            table.push_back(installed);
        else
            *found = installed;
        return OSErr{ noErr };
    });
}

OSErr AERemoveCoercionHandler(DescType fromType, DescType toType, AECoercionHandlerUPP handler,
                              Boolean isSysHandler)
{
    std::vector<Handler>& table = Handlers(isSysHandler != 0);
    const auto found = Find(table, fromType, toType);
    if (found == table.end() || (handler && handler != found->procedure))
        return errAEHandlerNotFound;
    table.erase(found);
    return noErr;
}

OSErr AEGetCoercionHandler(DescType fromType, DescType toType, AECoercionHandlerUPP* handler,
                           long* handlerRefcon, Boolean* fromTypeIsDesc, Boolean isSysHandler)
{
    if (!handler || !handlerRefcon || !fromTypeIsDesc)
        return paramErr;
    std::vector<Handler>& table = Handlers(isSysHandler != 0);
    const auto found = Find(table, fromType, toType);
    if (found == table.end())
        return errAEHandlerNotFound;
    *handler = found->procedure;
    *handlerRefcon = found->refcon;
    *fromTypeIsDesc = found->takesDesc;
    return noErr;
}

AECoerceDescUPP NewAECoerceDescUPP(AECoerceDescProcPtr userRoutine)
{
    return userRoutine;
}

void DisposeAECoerceDescUPP(AECoerceDescUPP) {}

OSErr InvokeAECoerceDescUPP(const AEDesc* fromDesc, DescType toType, long handlerRefcon, AEDesc* toDesc,
                            AECoerceDescUPP userUPP)
{
    return userUPP ? userUPP(fromDesc, toType, handlerRefcon, toDesc) : OSErr{ paramErr };
}

AECoercePtrUPP NewAECoercePtrUPP(AECoercePtrProcPtr userRoutine)
{
    return userRoutine;
}

void DisposeAECoercePtrUPP(AECoercePtrUPP) {}

OSErr InvokeAECoercePtrUPP(DescType typeCode, const void* dataPtr, Size dataSize, DescType toType,
                           long handlerRefcon, AEDesc* result, AECoercePtrUPP userUPP)
{
    return userUPP ? userUPP(typeCode, dataPtr, dataSize, toType, handlerRefcon, result) : OSErr{ paramErr };
}
