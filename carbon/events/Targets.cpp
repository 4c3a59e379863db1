// Targets and their stacks of handlers.
#include "events/EventTargets.h"
#include "events/TargetRecord.h"

#include <algorithm>

namespace lampblack::events {

constinit TargetPool gTargets;
constinit HandlerPool gHandlers;

// The calls of one type

static bool Hears(const Handler& inHandler, uint64_t inType)
{
    for (const EventTypeSpec& type : inHandler.types)
        if (TypeKey(type.eventClass, type.eventKind) == inType)
            return true;
    return false;
}

const Call* CallTable::Add(uint64_t inType, const std::vector<Handler*>& inHandlers, const Call* inCatchAll)
{
    if (fCount == kMostChains)
        Clear();
    if ((fCount + 1) * 2 > fOwned.size())
        Grow();
    std::vector<Call> calls;
    for (const Handler* handler : inHandlers)
        if (Hears(*handler, inType))
            calls.push_back({ handler->proc, handler->userData, handler->rank });
    if (inCatchAll)
        calls.push_back(*inCatchAll);
    calls.push_back({});
    fCalls.push_back(std::make_unique<Call[]>(calls.size()));
    Call* kept = fCalls.back().get();
    std::copy(calls.begin(), calls.end(), kept);
    Insert({ inType, kept });
    ++fCount;
    return kept;
}

void CallTable::Insert(const CallChain& inChain)
{
    size_t slot = Home(inChain.type);
    while (At(slot).calls)
        slot = Next(slot);
    fOwned[slot / sizeof(CallChain)] = inChain;
}

void CallTable::Grow()
{
    std::vector<CallChain> old(fOwned.empty() ? 8 : fOwned.size() * 2);
    old.swap(fOwned);
    fChains = fOwned.data();
    fMask = (fOwned.size() - 1) * sizeof(CallChain);
    for (const CallChain& chain : old)
        if (chain.calls)
            Insert(chain);
}

void CallTable::Clear()
{
    DisturbWalks();
    if (!fCount)
        return;
    std::fill(fOwned.begin(), fOwned.end(), CallChain{});
    fCalls.clear();
    fCount = 0;
}

// Targets

EventTargetRef NewEventTarget(void* inOwner, EventTargetRef (*inNext)(void* inOwner))
{
    Target* target = gTargets.Take();
    if (!target)
        return nullptr;
    target->owner = inOwner;
    target->next = inNext;
    target->catchAll = nullptr;
    return gTargets.ReferenceTo(target);
}

static void EndHandler(Handler* inHandler)
{
    inHandler->types.clear();
    gHandlers.GiveBack(inHandler);
}

void DisposeEventTarget(EventTargetRef inTarget)
{
    Target* target = gTargets.Find(inTarget);
    if (!target)
        return;
    for (Handler* handler : target->handlers)
        EndHandler(handler);
    target->handlers.clear();
    target->calls.Clear();
    gTargets.GiveBack(target);
}

void* EventTargetOwner(EventTargetRef inTarget)
{
    const Target* target = gTargets.Find(inTarget);
    return target ? target->owner : nullptr;
}

// Handlers

static bool HearsAlready(const Target& inTarget, const EventTypeSpec& inType, EventHandlerProcPtr inProc,
                         void* inUserData)
{
    const uint64_t key = TypeKey(inType.eventClass, inType.eventKind);
    for (const Handler* handler : inTarget.handlers)
        if (handler->proc == inProc && handler->userData == inUserData && Hears(*handler, key))
            return true;
    return false;
}

static bool IsInstalled(const Target& inTarget, EventHandlerProcPtr inProc, void* inUserData)
{
    for (const Handler* handler : inTarget.handlers)
        if (handler->proc == inProc && handler->userData == inUserData)
            return true;
    return false;
}

static void AddTypes(Handler& ioHandler, ItemCount inCount, const EventTypeSpec* inList)
{
    for (ItemCount i = 0; i < inCount; ++i)
        if (!Hears(ioHandler, TypeKey(inList[i].eventClass, inList[i].eventKind)))
            ioHandler.types.push_back(inList[i]);
}

static void PlaceInStack(Target& ioTarget, Handler* inHandler)
{
    const auto lower = [](const Handler* a, const Handler* b) { return a->rank > b->rank; };
    ioTarget.handlers.insert(
        std::upper_bound(ioTarget.handlers.begin(), ioTarget.handlers.end(), inHandler, lower), inHandler);
    ioTarget.calls.Clear();
}

static OSStatus AddNewHandler(Target& ioTarget, bool inIsDefault, const std::vector<EventTypeSpec>& inTypes,
                              EventHandlerProcPtr inProc, void* inUserData, EventHandlerRef* outHandler)
{
    static Rank gSerial = kCatchAllRank;
    Handler* handler = gHandlers.Take();
    if (!handler)
        return memFullErr;
    handler->target = &ioTarget;
    handler->proc = inProc;
    handler->userData = inUserData;
    handler->rank = ++gSerial | (inIsDefault ? 0 : kApplicationRank);
    AddTypes(*handler, inTypes.size(), inTypes.data());
    PlaceInStack(ioTarget, handler);
    if (outHandler)
        *outHandler = gHandlers.ReferenceTo(handler);
    return noErr;
}

// A procedure is not called twice for one event with the same data: of a list that is partly new, the handler
// gets the new types.
OSStatus AddHandler(EventTargetRef inTarget, bool inIsDefault, ItemCount inCount, const EventTypeSpec* inList,
                    EventHandlerProcPtr inProc, void* inUserData, EventHandlerRef* outHandler)
{
    Target* target = gTargets.Find(inTarget);
    if (!target || !inProc || (inCount && !inList))
        return paramErr;
    std::vector<EventTypeSpec> types;
    for (ItemCount i = 0; i < inCount; ++i)
        if (!HearsAlready(*target, inList[i], inProc, inUserData))
            types.push_back(inList[i]);
    if (types.empty() && IsInstalled(*target, inProc, inUserData))
        return eventHandlerAlreadyInstalledErr;
    return AddNewHandler(*target, inIsDefault, types, inProc, inUserData, outHandler);
}

OSStatus InstallDefaultHandler(EventTargetRef inTarget, ItemCount inCount, const EventTypeSpec* inList,
                               EventHandlerProcPtr inProc, void* inUserData)
{
    return AddHandler(inTarget, true, inCount, inList, inProc, inUserData, nullptr);
}

} // namespace lampblack::events

using namespace lampblack::events;

OSStatus InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler, ItemCount inNumTypes,
                             const EventTypeSpec* inList, void* inUserData, EventHandlerRef* outRef)
{
    if (outRef)
        *outRef = nullptr;
    return AddHandler(inTarget, false, inNumTypes, inList, inHandler, inUserData, outRef);
}

OSStatus RemoveEventHandler(EventHandlerRef inHandlerRef)
{
    Handler* handler = gHandlers.Find(inHandlerRef);
    if (!handler)
        return paramErr;
    Target& target = *handler->target;
    std::erase(target.handlers, handler);
    target.calls.Clear();
    EndHandler(handler);
    return noErr;
}

OSStatus AddEventTypesToHandler(EventHandlerRef inHandlerRef, ItemCount inNumTypes,
                                const EventTypeSpec* inList)
{
    Handler* handler = gHandlers.Find(inHandlerRef);
    if (!handler || (inNumTypes && !inList))
        return paramErr;
    AddTypes(*handler, inNumTypes, inList);
    handler->target->calls.Clear();
    return noErr;
}

OSStatus RemoveEventTypesFromHandler(EventHandlerRef inHandlerRef, ItemCount inNumTypes,
                                     const EventTypeSpec* inList)
{
    Handler* handler = gHandlers.Find(inHandlerRef);
    if (!handler || (inNumTypes && !inList))
        return paramErr;
    for (ItemCount i = 0; i < inNumTypes; ++i) {
        const uint64_t key = TypeKey(inList[i].eventClass, inList[i].eventKind);
        std::erase_if(handler->types, [=](const EventTypeSpec& type) {
            return TypeKey(type.eventClass, type.eventKind) == key;
        });
    }
    handler->target->calls.Clear();
    return noErr;
}

EventHandlerUPP NewEventHandlerUPP(EventHandlerProcPtr inProc)
{
    return inProc;
}

void DisposeEventHandlerUPP(EventHandlerUPP) {}

OSStatus InvokeEventHandlerUPP(EventHandlerCallRef inCallRef, EventRef inEvent, void* inUserData,
                               EventHandlerUPP inUPP)
{
    return inUPP ? inUPP(inCallRef, inEvent, inUserData) : OSStatus{ paramErr };
}
