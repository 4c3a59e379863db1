// The records behind targets and handlers, and the walk of an event along them.
#ifndef LAMPBLACK_EVENTS_TARGETRECORD_H
#define LAMPBLACK_EVENTS_TARGETRECORD_H

#include "events/EventRecord.h"
#include "events/SlotPool.h"

#include <Carbon/CarbonEventsCore.h>

#include <vector>

namespace lampblack::events {

struct Target;

// A place in a target's stack: handlers are called in descending rank. The application's stand above the
// defaults, among each the newer above the older.
using Rank = uint64_t;
inline constexpr Rank kAboveAll = ~Rank{ 0 };
inline constexpr Rank kApplicationRank = Rank{ 1 } << 63;
inline constexpr Rank kCatchAllRank = 0;

struct Handler : Slot<Handler> {
    Target* target = nullptr;
    EventHandlerProcPtr proc = nullptr;
    void* userData = nullptr;
    Rank rank = 0;
    std::vector<EventTypeSpec> types;
};

// What is called for one type of event, in order. Made when the first such event comes, and kept until a
// handler comes or goes.
struct Call {
    Rank rank;
    EventHandlerProcPtr proc;
    void* userData;
};

class CallTable {
public:
    struct Chain {
        uint64_t type;
        uint32_t first, count; // of the calls; count is kFree in an unused entry
    };

    // Null when nobody has asked for this type since Clear.
    const Chain* Find(uint64_t inType) const
    {
        if (fChains.empty()) [[unlikely]]
            return nullptr;
        for (size_t slot = Home(inType);; slot = (slot + 1) & fMask) {
            const Chain& chain = fChains[slot];
            if (chain.type == inType && chain.count != kFree) [[likely]]
                return &chain;
            if (chain.count == kFree)
                return nullptr;
        }
    }

    const Chain* Add(uint64_t inType, const std::vector<Handler*>& inHandlers, const Call* inCatchAll);
    const Call& At(size_t inIndex) const { return fCalls[inIndex]; }
    uint32_t Version() const { return fVersion; }
    void Clear();

private:
    static constexpr uint32_t kFree = 0xFFFFFFFF;
    static constexpr size_t kMostChains = 1024; // a program that invents event kinds does not fill the memory

    size_t Home(uint64_t inType) const { return (size_t)((inType * 0x9E3779B97F4A7C15u) >> 40) & fMask; }
    void Insert(const Chain& inChain);
    void Grow();

    std::vector<Chain> fChains;
    std::vector<Call> fCalls;
    size_t fMask = 0; // the number of chains less one
    size_t fCount = 0;
    uint32_t fVersion = 0;
};

struct Target : Slot<Target> {
    void* owner = nullptr;
    EventTargetRef (*next)(void* owner) = nullptr;
    EventHandlerProcPtr catchAll = nullptr; // hears, after all handlers, events of every type
    std::vector<Handler*> handlers;         // in descending rank
    CallTable calls;
};

using TargetPool = SlotPool<Target, EventTargetRef, 1 << 18>;
using HandlerPool = SlotPool<Handler, EventHandlerRef, 1 << 18>;
extern TargetPool gTargets;
extern HandlerPool gHandlers;

inline uint64_t TypeKey(OSType inClass, UInt32 inKind)
{
    return (uint64_t)inClass << 32 | inKind;
}

OSStatus AddHandler(EventTargetRef inTarget, bool inIsDefault, ItemCount inCount, const EventTypeSpec* inList,
                    EventHandlerProcPtr inProc, void* inUserData, EventHandlerRef* outHandler);

// Sends a live event; the target may be any reference.
OSStatus Send(Event* inEvent, EventTargetRef inTarget, OptionBits inOptions);

} // namespace lampblack::events

#endif
