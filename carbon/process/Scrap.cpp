// The entries of the Scrap Manager.
#include "ScrapStore.h"

#include <Carbon/MacErrors.h>
#include <Carbon/Scrap.h>
#include <Host.h>
#include <events/WaitHooks.h>

#include <algorithm>
#include <cstring>
#include <new>
#include <stdexcept>

using namespace lampblack;
using process::Flavor;
using process::TheScrap;

namespace {

// Another program that the user turns to can only paste text that has been delivered.
double DeliverTextWhenLeft(double)
{
    const auto& machine = host::Machine();
    if (TheScrap().HasPromisedText() && machine.active && !machine.active())
        TheScrap().KeepPromises();
    return host::kForever;
}

void WatchForLeaving()
{
    static const bool watching = (events::AddWaitHook(DeliverTextWhenLeft), true);
    (void)watching;
}

// Runs a call that may need more memory than there is.
template <class Call>
OSStatus Guarded(Call inCall)
{
    try {
        return inCall();
    } catch (const std::bad_alloc&) {
        return memFullErr;
    } catch (const std::length_error&) {
        return memFullErr;
    }
}

} // namespace

ScrapPromiseKeeperUPP NewScrapPromiseKeeperUPP(ScrapPromiseKeeperProcPtr inProc)
{
    return inProc;
}

void DisposeScrapPromiseKeeperUPP(ScrapPromiseKeeperUPP) {}

OSStatus InvokeScrapPromiseKeeperUPP(ScrapRef inScrap, ScrapFlavorType inType, void* inUserData,
                                     ScrapPromiseKeeperUPP inUPP)
{
    return inUPP ? inUPP(inScrap, inType, inUserData) : OSStatus{ paramErr };
}

OSStatus GetCurrentScrap(ScrapRef* outScrap)
{
    if (!outScrap)
        return paramErr;
    *outScrap = TheScrap().Current();
    return noErr;
}

OSStatus ClearCurrentScrap()
{
    TheScrap().Clear();
    return noErr;
}

OSStatus ClearScrap(ScrapRef* ioScrap)
{
    if (!ioScrap)
        return paramErr;
    if (*ioScrap && !TheScrap().IsCurrent(*ioScrap))
        return badScrapRefErr;
    TheScrap().Clear();
    return GetCurrentScrap(ioScrap);
}

OSStatus PutScrapFlavor(ScrapRef inScrap, ScrapFlavorType inType, ScrapFlavorFlags inFlags, Size inSize,
                        const void* inData)
{
    if (inSize < (inData ? 0 : kScrapFlavorSizeUnknown))
        return paramErr;
    if (!TheScrap().IsCurrent(inScrap))
        return badScrapRefErr;
    if (inData)
        return Guarded([&] {
            return TheScrap().Put(inType, inFlags,
                                  { static_cast<const char*>(inData), static_cast<size_t>(inSize) });
        });
    WatchForLeaving();
    return TheScrap().Promise(inType, inFlags, inSize);
}

OSStatus SetScrapPromiseKeeper(ScrapRef inScrap, ScrapPromiseKeeperUPP inUPP, const void* inUserData)
{
    if (!TheScrap().IsCurrent(inScrap))
        return badScrapRefErr;
    TheScrap().SetKeeper(inUPP, const_cast<void*>(inUserData));
    return noErr;
}

OSStatus GetScrapFlavorCount(ScrapRef inScrap, UInt32* outCount)
{
    if (!outCount)
        return paramErr;
    if (!TheScrap().IsCurrent(inScrap))
        return badScrapRefErr;
    *outCount = static_cast<UInt32>(TheScrap().Flavors().size());
    return noErr;
}

OSStatus GetScrapFlavorInfoList(ScrapRef inScrap, UInt32* ioCount, ScrapFlavorInfo outInfo[])
{
    if (!ioCount || (*ioCount > 0 && !outInfo))
        return paramErr;
    if (!TheScrap().IsCurrent(inScrap))
        return badScrapRefErr;
    const auto& flavors = TheScrap().Flavors();
    *ioCount = static_cast<UInt32>(std::min<size_t>(*ioCount, flavors.size()));
    for (UInt32 i = 0; i < *ioCount; ++i)
        outInfo[i] = { flavors[i].type, flavors[i].flags };
    return noErr;
}

OSStatus GetScrapFlavorFlags(ScrapRef inScrap, ScrapFlavorType inType, ScrapFlavorFlags* outFlags)
{
    if (!outFlags)
        return paramErr;
    if (!TheScrap().IsCurrent(inScrap))
        return badScrapRefErr;
    const Flavor* flavor = TheScrap().Find(inType);
    if (!flavor)
        return noTypeErr;
    *outFlags = flavor->flags;
    return noErr;
}

OSStatus GetScrapFlavorSize(ScrapRef inScrap, ScrapFlavorType inType, Size* outSize)
{
    if (!outSize)
        return paramErr;
    if (!TheScrap().IsCurrent(inScrap))
        return badScrapRefErr;
    Flavor* flavor = TheScrap().Find(inType);
    if (flavor && flavor->isPromise && flavor->promisedSize != kScrapFlavorSizeUnknown) {
        *outSize = flavor->promisedSize;
        return noErr;
    }
    if (const OSStatus result = TheScrap().Fetch(inType, &flavor); result != noErr)
        return result;
    *outSize = static_cast<Size>(flavor->data.size());
    return noErr;
}

OSStatus GetScrapFlavorData(ScrapRef inScrap, ScrapFlavorType inType, Size* ioSize, void* outData)
{
    if (!ioSize || *ioSize < 0 || (*ioSize > 0 && !outData))
        return paramErr;
    if (!TheScrap().IsCurrent(inScrap))
        return badScrapRefErr;
    Flavor* flavor = nullptr;
    if (const OSStatus result = TheScrap().Fetch(inType, &flavor); result != noErr)
        return result;
    const size_t room = std::min(static_cast<size_t>(*ioSize), flavor->data.size());
    if (room > 0)
        memcpy(outData, flavor->data.data(), room);
    *ioSize = static_cast<Size>(flavor->data.size());
    return noErr;
}

OSStatus CallInScrapPromises()
{
    TheScrap().Current();
    return TheScrap().KeepPromises();
}
