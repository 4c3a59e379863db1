// The walk of an event: down the stack of a target, then to the targets behind it. Handlers may remove
// handlers, dispose of targets and send events on the way.
#include "events/TargetRecord.h"

namespace lampblack::events {

namespace {

// One level of the walk: the handlers of one target. Its address is the call reference of the handlers called
// from it.
struct Level {
    Level(EventTargetRef inTarget, EventTargetRef inNext, Rank inBelow, OptionBits inOptions);
    ~Level() { gInnermost = outer; }
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;

    static Level* gInnermost;

    EventTargetRef target;
    EventTargetRef next; // asked for before the handlers run: the target may not survive them
    Rank rank;           // of the handler that is being called
    OptionBits options;
    bool passedOn = false; // the handler sent the event down itself
    Level* outer;
};

Level* Level::gInnermost = nullptr;

Level::Level(EventTargetRef inTarget, EventTargetRef inNext, Rank inBelow, OptionBits inOptions)
    : target(inTarget), next(inNext), rank(inBelow), options(inOptions), outer(gInnermost)
{
    gInnermost = this;
}

[[gnu::noinline]] const CallTable::Chain& MakeCallsFor(Target& ioTarget, uint64_t inType)
{
    const Call catchAll = { kCatchAllRank, ioTarget.catchAll, ioTarget.owner };
    return *ioTarget.calls.Add(inType, ioTarget.handlers, ioTarget.catchAll ? &catchAll : nullptr);
}

const CallTable::Chain& CallsFor(Target& ioTarget, const Event& inEvent)
{
    const uint64_t type = TypeKey(inEvent.eventClass, inEvent.kind);
    const CallTable::Chain* chain = ioTarget.calls.Find(type);
    return chain ? *chain : MakeCallsFor(ioTarget, type);
}

EventTargetRef NextOf(const Target& inTarget)
{
    return inTarget.next ? inTarget.next(inTarget.owner) : nullptr;
}

bool MayGoOn(OSStatus inStatus, OptionBits inOptions)
{
    return inStatus == eventNotHandledErr || (inOptions & kEventTargetSendToAllHandlers);
}

// The first call below a rank; the index after the last when there is none.
uint32_t FirstBelow(const Target& inTarget, const CallTable::Chain& inChain, Rank inRank)
{
    uint32_t index = inChain.first;
    while (index < inChain.first + inChain.count && inTarget.calls.At(index).rank >= inRank)
        ++index;
    return index;
}

struct Outcome {
    OSStatus status = eventNotHandledErr;
    bool done = false; // nobody else is asked
};

// What a handler's answer means for the level. True when the level is at its end.
bool EndsLevel(const Level& inLevel, OSStatus inStatus, Outcome* ioOutcome)
{
    if (inStatus == eventPassToNextTargetErr && !inLevel.passedOn)
        return true;
    if (inStatus != eventPassToNextTargetErr && inStatus != eventNotHandledErr)
        ioOutcome->status = inStatus;
    return ioOutcome->done = inLevel.passedOn || !MayGoOn(inStatus, inLevel.options);
}

// Calls what stands in the target's stack below the level's rank. The stack may change under each call: then
// the place is found again by its rank.
[[gnu::always_inline]] inline Outcome CallHandlers(Level& ioLevel, Target* inTarget, Event* inEvent)
{
    Outcome outcome;
    Target* target = inTarget;
    CallTable::Chain chain = CallsFor(*target, *inEvent);
    uint32_t version = target->calls.Version();
    uint32_t index = ioLevel.rank == kAboveAll ? chain.first : FirstBelow(*target, chain, ioLevel.rank);
    while (index < chain.first + chain.count) {
        const Call call = target->calls.At(index);
        ioLevel.rank = call.rank;
        const OSStatus status =
            call.proc(reinterpret_cast<EventHandlerCallRef>(&ioLevel), ReferenceTo(inEvent), call.userData);
        if (status != eventNotHandledErr || ioLevel.passedOn) [[unlikely]]
            if (EndsLevel(ioLevel, status, &outcome))
                return outcome;
        if (!(target = gTargets.Find(ioLevel.target))) [[unlikely]]
            return outcome;
        if (target->calls.Version() == version) [[likely]] {
            ++index;
            continue;
        }
        chain = CallsFor(*target, *inEvent);
        version = target->calls.Version();
        index = FirstBelow(*target, chain, ioLevel.rank);
    }
    return outcome;
}

// From a place in one target's stack to the end of the way. The first target may be gone.
[[gnu::always_inline]] inline OSStatus Walk(Event* inEvent, Target* inTarget, EventTargetRef inReference,
                                            EventTargetRef inNext, Rank inBelow, OptionBits inOptions)
{
    OSStatus result = eventNotHandledErr;
    while (true) {
        if (inTarget) {
            Level level(inReference, inNext, inBelow, inOptions);
            const Outcome outcome = CallHandlers(level, inTarget, inEvent);
            if (outcome.done)
                return outcome.status;
            if (outcome.status != eventNotHandledErr)
                result = outcome.status;
        }
        if (inOptions & kEventTargetDontPropagate)
            return result;
        inTarget = gTargets.Find(inNext);
        if (!inTarget)
            return result;
        inReference = inNext;
        inNext = NextOf(*inTarget);
        inBelow = kAboveAll;
    }
}

Level* FindLevel(EventHandlerCallRef inCallRef)
{
    for (Level* level = Level::gInnermost; level; level = level->outer)
        if (reinterpret_cast<EventHandlerCallRef>(level) == inCallRef)
            return level;
    return nullptr;
}

[[gnu::noinline]] OSStatus SendTo(Target* inTarget, EventTargetRef inReference, Event* inEvent,
                                  OptionBits inOptions)
{
    const StRetained alive(inEvent);
    return Walk(inEvent, inTarget, inReference, NextOf(*inTarget), kAboveAll, inOptions);
}

inline OSStatus SendChecked(EventRef inEvent, EventTargetRef inTarget, OptionBits inOptions)
{
    Event* event = FindEvent(inEvent);
    Target* target = gTargets.Find(inTarget);
    if (!event || !target)
        return paramErr;
    return SendTo(target, inTarget, event, inOptions);
}

} // namespace

OSStatus Send(Event* inEvent, EventTargetRef inTarget, OptionBits inOptions)
{
    Target* target = gTargets.Find(inTarget);
    return target ? SendTo(target, inTarget, inEvent, inOptions) : OSStatus{ eventNotHandledErr };
}

} // namespace lampblack::events

using namespace lampblack::events;

OSStatus SendEventToEventTarget(EventRef inEvent, EventTargetRef inTarget)
{
    return SendChecked(inEvent, inTarget, kNilOptions);
}

OSStatus SendEventToEventTargetWithOptions(EventRef inEvent, EventTargetRef inTarget, OptionBits inOptions)
{
    return SendChecked(inEvent, inTarget, inOptions);
}

OSStatus CallNextEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent)
{
    Level* level = FindLevel(inCallRef);
    Event* event = FindEvent(inEvent);
    if (!level || !event)
        return paramErr;
    level->passedOn = true;
    const StRetained alive(event);
    return Walk(event, gTargets.Find(level->target), level->target, level->next, level->rank, level->options);
}
