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

const CallTable::Chain& CallsFor(Target& ioTarget, const Event& inEvent)
{
    const uint64_t type = TypeKey(inEvent.eventClass, inEvent.kind);
    if (const CallTable::Chain* chain = ioTarget.calls.Find(type)) [[likely]]
        return *chain;
    const Call catchAll = { kCatchAllRank, ioTarget.catchAll, ioTarget.owner };
    return *ioTarget.calls.Add(type, ioTarget.handlers, ioTarget.catchAll ? &catchAll : nullptr);
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

// Calls what stands in the target's stack below the level's rank. The stack may change under each call: then
// the place is found again by its rank.
Outcome CallHandlers(Level& ioLevel, Event* inEvent)
{
    Outcome outcome;
    Target* target = gTargets.Find(ioLevel.target);
    CallTable::Chain chain = CallsFor(*target, *inEvent);
    uint32_t version = target->calls.Version();
    uint32_t index = ioLevel.rank == kAboveAll ? chain.first : FirstBelow(*target, chain, ioLevel.rank);
    while (index < chain.first + chain.count) {
        const Call call = target->calls.At(index);
        ioLevel.rank = call.rank;
        const OSStatus status =
            call.proc(reinterpret_cast<EventHandlerCallRef>(&ioLevel), ReferenceTo(inEvent), call.userData);
        if (status == eventPassToNextTargetErr && !ioLevel.passedOn)
            return outcome;
        if (status != eventPassToNextTargetErr && status != eventNotHandledErr)
            outcome.status = status;
        outcome.done = ioLevel.passedOn || !MayGoOn(status, ioLevel.options);
        if (outcome.done || !(target = gTargets.Find(ioLevel.target)))
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

// From a place in one target's stack to the end of the way.
OSStatus Walk(Event* inEvent, EventTargetRef inTarget, EventTargetRef inNext, Rank inBelow,
              OptionBits inOptions)
{
    OSStatus result = eventNotHandledErr;
    while (true) {
        EventTargetRef next = inNext;
        if (gTargets.Find(inTarget)) {
            Level level(inTarget, inNext, inBelow, inOptions);
            const Outcome outcome = CallHandlers(level, inEvent);
            if (outcome.done)
                return outcome.status;
            if (outcome.status != eventNotHandledErr)
                result = outcome.status;
        }
        if (inOptions & kEventTargetDontPropagate)
            return result;
        const Target* target = gTargets.Find(next);
        if (!target)
            return result;
        inTarget = next;
        inNext = NextOf(*target);
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

} // namespace

OSStatus Send(Event* inEvent, EventTargetRef inTarget, OptionBits inOptions)
{
    const Target* target = gTargets.Find(inTarget);
    if (!target)
        return eventNotHandledErr;
    const StRetained alive(inEvent);
    return Walk(inEvent, inTarget, NextOf(*target), kAboveAll, inOptions);
}

} // namespace lampblack::events

using namespace lampblack::events;

OSStatus SendEventToEventTarget(EventRef inEvent, EventTargetRef inTarget)
{
    return SendEventToEventTargetWithOptions(inEvent, inTarget, kNilOptions);
}

OSStatus SendEventToEventTargetWithOptions(EventRef inEvent, EventTargetRef inTarget, OptionBits inOptions)
{
    Event* event = FindEvent(inEvent);
    if (!event || !gTargets.Find(inTarget))
        return paramErr;
    return Send(event, inTarget, inOptions);
}

OSStatus CallNextEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent)
{
    Level* level = FindLevel(inCallRef);
    Event* event = FindEvent(inEvent);
    if (!level || !event)
        return paramErr;
    level->passedOn = true;
    const StRetained alive(event);
    return Walk(event, level->target, level->next, level->rank, level->options);
}
