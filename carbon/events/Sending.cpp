// The walk of an event: down the stack of a target, then to the targets behind it. Handlers may remove
// handlers, dispose of targets and send events on the way.
#include "events/TargetRecord.h"

namespace lampblack::events {

namespace {

constexpr UInt32 kPassedOn = 1;  // the handler sent the event down itself
constexpr UInt32 kDisturbed = 2; // calls and targets may have changed

// Where a walk is: among the handlers of one target. Its address is the call reference of the handlers.
struct Place {
    Place(EventTargetRef inTarget, EventTargetRef inNext, OptionBits inOptions)
        : target(inTarget), next(inNext), options(inOptions), outer(gInnermost)
    {
        gInnermost = this;
    }
    ~Place() { gInnermost = outer; }
    Place(const Place&) = delete;
    Place& operator=(const Place&) = delete;

    static Place* gInnermost;

    EventTargetRef target;
    EventTargetRef next; // asked for before the handlers run: the target may not survive them
    Rank rank;           // of the handler that is being called
    OptionBits options;
    UInt32 marks = 0; // what happened while the handler ran
    Place* outer;
};

Place* Place::gInnermost = nullptr;

[[gnu::noinline]] const Call* FindOrMakeCalls(Target& ioTarget, uint64_t inType)
{
    if (const Call* calls = ioTarget.calls.Find(inType))
        return calls;
    const Call catchAll = { ioTarget.catchAll, ioTarget.owner, kCatchAllRank };
    return ioTarget.calls.Add(inType, ioTarget.handlers, ioTarget.catchAll ? &catchAll : nullptr);
}

inline const Call* CallsFor(Target& ioTarget, const Event& inEvent)
{
    const Call* calls = ioTarget.calls.FindAtOnce(inEvent.type);
    if (!calls) [[unlikely]]
        return FindOrMakeCalls(ioTarget, inEvent.type);
    return calls;
}

inline EventTargetRef NextOf(const Target& inTarget)
{
    return inTarget.next ? inTarget.next(inTarget.owner) : nullptr;
}

// The first call below a rank.
const Call* CallsBelow(Target& ioTarget, const Event& inEvent, Rank inRank)
{
    const Call* call = CallsFor(ioTarget, inEvent);
    while (call->proc && call->rank >= inRank)
        ++call;
    return call;
}

bool MayGoOn(OSStatus inStatus, OptionBits inOptions)
{
    return inStatus == eventNotHandledErr || (inOptions & kEventTargetSendToAllHandlers);
}

struct Outcome {
    OSStatus status = eventNotHandledErr;
    bool done = false; // nobody else is asked
};

// What a handler's answer means for its target. True when no more of its handlers are called.
bool EndsTarget(const Place& inPlace, OSStatus inStatus, Outcome* ioOutcome)
{
    if (inStatus == eventPassToNextTargetErr && !(inPlace.marks & kPassedOn))
        return true;
    if (inStatus != eventPassToNextTargetErr && inStatus != eventNotHandledErr)
        ioOutcome->status = inStatus;
    return ioOutcome->done = (inPlace.marks & kPassedOn) || !MayGoOn(inStatus, inPlace.options);
}

// The rest of a target's calls after one that may have changed them: the place is found again by its rank.
const Call* CallsAfter(const Place& inPlace, const Event& inEvent)
{
    static constexpr Call kNone = {};
    Target* target = gTargets.Find(inPlace.target);
    return target ? CallsBelow(*target, inEvent, inPlace.rank) : &kNone;
}

inline OSStatus CallOne(Place& ioPlace, Event* inEvent, const Call& inCall)
{
    ioPlace.rank = inCall.rank;
    return inCall.proc(reinterpret_cast<EventHandlerCallRef>(&ioPlace), ReferenceTo(inEvent),
                       inCall.userData);
}

// To the target behind this one; null when nobody is.
inline const Call* CallsOfNext(Place& ioPlace, const Event& inEvent)
{
    if (!ioPlace.next || (ioPlace.options & kEventTargetDontPropagate))
        return nullptr;
    Target* target = gTargets.Find(ioPlace.next);
    if (!target)
        return nullptr;
    ioPlace.target = ioPlace.next;
    ioPlace.next = NextOf(*target);
    ioPlace.marks = 0;
    return CallsFor(*target, inEvent);
}

// Goes on after a call that answered, or that changed something, in every detail.
[[gnu::noinline]] OSStatus WalkWithCare(Place& ioPlace, Event* inEvent, OSStatus inStatus)
{
    OSStatus result = eventNotHandledErr;
    OSStatus status = inStatus;
    const Call* call = nullptr;
    do {
        Outcome outcome;
        while (!EndsTarget(ioPlace, status, &outcome) && (call = CallsAfter(ioPlace, *inEvent))->proc)
            status = CallOne(ioPlace, inEvent, *call);
        if (outcome.done)
            return outcome.status;
        if (outcome.status != eventNotHandledErr)
            result = outcome.status;
        while ((call = CallsOfNext(ioPlace, *inEvent)) && !call->proc)
            ;
        if (call)
            status = CallOne(ioPlace, inEvent, *call);
    } while (call);
    return result;
}

// Through the calls of one target, and those of the targets behind it, for as long as nobody takes the event
// and nothing changes.
[[gnu::always_inline]] inline OSStatus Walk(Place& ioPlace, Event* inEvent, const Call* inFirst)
{
    const Call* call = inFirst;
    do {
        for (; call->proc; ++call) {
            const OSStatus status = CallOne(ioPlace, inEvent, *call);
            if (status != eventNotHandledErr || ioPlace.marks) [[unlikely]]
                return WalkWithCare(ioPlace, inEvent, status);
        }
    } while ((call = CallsOfNext(ioPlace, *inEvent)));
    return eventNotHandledErr;
}

Place* FindPlace(EventHandlerCallRef inCallRef)
{
    for (Place* place = Place::gInnermost; place; place = place->outer)
        if (reinterpret_cast<EventHandlerCallRef>(place) == inCallRef)
            return place;
    return nullptr;
}

[[gnu::always_inline]] inline OSStatus SendTo(Target* inTarget, EventTargetRef inReference, Event* inEvent,
                                              OptionBits inOptions)
{
    const StRetained alive(inEvent);
    Place place(inReference, NextOf(*inTarget), inOptions);
    return Walk(place, inEvent, CallsFor(*inTarget, *inEvent));
}

} // namespace

void DisturbWalks()
{
    for (Place* place = Place::gInnermost; place; place = place->outer)
        place->marks |= kDisturbed;
}

OSStatus Send(Event* inEvent, EventTargetRef inTarget, OptionBits inOptions)
{
    Target* target = gTargets.Find(inTarget);
    return target ? SendTo(target, inTarget, inEvent, inOptions) : OSStatus{ eventNotHandledErr };
}

} // namespace lampblack::events

using namespace lampblack::events;

OSStatus SendEventToEventTarget(EventRef inEvent, EventTargetRef inTarget)
{
    Event* event = FindEvent(inEvent);
    Target* target = gTargets.Find(inTarget);
    if (!event || !target)
        return paramErr;
    return SendTo(target, inTarget, event, kNilOptions);
}

OSStatus SendEventToEventTargetWithOptions(EventRef inEvent, EventTargetRef inTarget, OptionBits inOptions)
{
    if (!FindEvent(inEvent) || !gTargets.Find(inTarget))
        return paramErr;
    return Send(FindEvent(inEvent), inTarget, inOptions);
}

// The rest of the way, walked by itself: the target may be gone.
OSStatus CallNextEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent)
{
    Place* caller = FindPlace(inCallRef);
    Event* event = FindEvent(inEvent);
    if (!caller || !event)
        return paramErr;
    caller->marks |= kPassedOn;
    const StRetained alive(event);
    Place place(caller->target, caller->next, caller->options);
    return Walk(place, event, CallsAfter(*caller, *event));
}
