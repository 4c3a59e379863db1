// The records behind targets and handlers, and the walk of an event along them.
#ifndef LAMPBLACK_EVENTS_TARGETRECORD_H
#define LAMPBLACK_EVENTS_TARGETRECORD_H

#include "events/EventRecord.h"
#include "events/SlotPool.h"

#include <Carbon/CarbonEventsCore.h>

#include <memory>
#include <vector>

namespace lampblack::events {

struct Target;

// A place in a target's stack: handlers are called in descending rank. The application's stand above the
// defaults, among each the newer above the older.
using Rank = uint64_t;
inline constexpr Rank kAboveAll = ~Rank{ 0 };
inline constexpr Rank kApplicationRank = Rank{ 1 } << 63;
inline constexpr Rank kCatchAllRank = 0;

struct Handler : Slot {
    Target* target = nullptr;
    EventHandlerProcPtr proc = nullptr;
    void* userData = nullptr;
    Rank rank = 0;
    std::vector<EventTypeSpec> types;
};

// What is called for one type of event, in order, up to one without a procedure. Made when the first such
// event comes, and kept until a handler comes or goes.
struct Call {
    EventHandlerProcPtr proc;
    void* userData;
    Rank rank;
};

// What the walks that are going on know of targets and their calls may no longer be so.
void DisturbWalks();

// The calls for one type of event; none in an entry of the table that is free.
struct CallChain {
    uint64_t type = 0;
    const Call* calls = nullptr;
};
inline constexpr CallChain kNoChain = {};

class CallTable {
public:
    // Null when nobody has asked for this type since Clear, and now and then for one that was asked for.
    const Call* FindAtOnce(uint64_t inType) const
    {
        const CallChain& chain = At(Home(inType));
        return chain.type == inType ? chain.calls : nullptr;
    }
    const Call* Find(uint64_t inType) const
    {
        for (size_t slot = Home(inType);; slot = Next(slot))
            if (At(slot).type == inType || !At(slot).calls)
                return At(slot).calls;
    }

    const Call* Add(uint64_t inType, const std::vector<Handler*>& inHandlers, const Call* inCatchAll);
    void Clear();

private:
    static constexpr size_t kMostChains = 1024; // a program that invents event kinds does not fill the memory

    // A slot is a distance in bytes.
    const CallChain& At(size_t inSlot) const { return *(const CallChain*)((const char*)fChains + inSlot); }
    size_t Home(uint64_t inType) const { return (size_t)(inType * 0x9E3779B97F4A7C15u >> 32) & fMask; }
    size_t Next(size_t inSlot) const { return (inSlot + sizeof(CallChain)) & fMask; }
    void Insert(const CallChain& inChain);
    void Grow();

    const CallChain* fChains = &kNoChain;
    size_t fMask = 0;
    size_t fCount = 0;
    std::vector<CallChain> fOwned; // the chains
    std::vector<std::unique_ptr<Call[]>> fCalls;
};

struct Target : Slot {
    void* owner = nullptr;
    EventTargetRef (*next)(void* owner) = nullptr;
    EventHandlerProcPtr catchAll = nullptr; // hears, after all handlers, events of every type
    std::vector<Handler*> handlers;         // in descending rank
    CallTable calls;
};

using TargetPool = SlotPool<Target, EventTargetRef, 1 << 18>;
using HandlerPool = SlotPool<Handler, EventHandlerRef, 1 << 18>;
extern constinit TargetPool gTargets;
extern constinit HandlerPool gHandlers;

OSStatus AddHandler(EventTargetRef inTarget, bool inIsDefault, ItemCount inCount, const EventTypeSpec* inList,
                    EventHandlerProcPtr inProc, void* inUserData, EventHandlerRef* outHandler);

// Sends a live event; the target may be any reference.
OSStatus Send(Event* inEvent, EventTargetRef inTarget, OptionBits inOptions);

} // namespace lampblack::events

#endif
