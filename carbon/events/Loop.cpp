// Waiting, receiving and running.
#include "events/Loop.h"
#include "Host.h"
#include "events/Input.h"
#include "events/ModalLoop.h"
#include "events/TargetRecord.h"
#include "events/Timers.h"
#include "events/WaitHooks.h"

#include <Carbon/CarbonEvents.h>

#include <algorithm>
#include <utility>

namespace lampblack::events {

// Runs

namespace {

LoopRun* gInnermostRun = nullptr;
bool gQuitWithoutRun = false;            // QuitEventLoop while nothing ran
const bool* gQuit = &gQuitWithoutRun;    // which of the two, or of the runs, says whether to leave
bool gQuitApplicationWithoutRun = false; // QuitApplicationEventLoop before the application ran its loop

} // namespace

LoopRun::LoopRun(Kind inKind) : kind(inKind), outer(gInnermostRun)
{
    gInnermostRun = this;
    gQuit = &quit;
}

LoopRun::~LoopRun()
{
    gInnermostRun = outer;
    gQuit = outer ? &outer->quit : &gQuitWithoutRun;
}

LoopRun* InnermostRun()
{
    return gInnermostRun;
}

void QuitFrom(LoopRun* inRun)
{
    for (LoopRun* run = gInnermostRun; run; run = run->outer) {
        run->quit = true;
        if (run == inRun)
            break;
    }
    WakeLoop();
}

bool TakeQuit()
{
    if (gInnermostRun) [[likely]]
        return gInnermostRun->quit;
    return std::exchange(gQuitWithoutRun, false);
}

// Hooks

namespace {

constexpr double kFrame = 1.0 / 60;
// The clock is not asked for every event, but the more often the longer they take.
constexpr int kMostBetweenLooks = 128, kLeastBetweenLooks = 8;

std::vector<double (*)(double)>& Hooks()
{
    static std::vector<double (*)(double)> hooks;
    return hooks;
}

double gHooksRan = 0; // when
double gLooked = 0;   // when
int gEventsBetweenLooks = kLeastBetweenLooks;
int gEventsToLook = kLeastBetweenLooks;

[[gnu::noinline]] void LookAtHooks()
{
    const double now = host::Now();
    const bool isOften = now - gLooked < kFrame / 8;
    gEventsBetweenLooks = std::clamp(isOften ? gEventsBetweenLooks * 2 : gEventsBetweenLooks / 2,
                                     kLeastBetweenLooks, kMostBetweenLooks);
    gEventsToLook = gEventsBetweenLooks;
    gLooked = now;
    if (now - gHooksRan >= kFrame)
        RunWaitHooks(now);
}

[[gnu::noinline]] OSStatus NoteTake(const Event& inEvent)
{
    NoteTaken(inEvent);
    if (gEventsToLook < 0)
        LookAtHooks();
    return noErr;
}

} // namespace

void AddWaitHook(double (*inHook)(double inNow))
{
    if (inHook && std::find(Hooks().begin(), Hooks().end(), inHook) == Hooks().end())
        Hooks().push_back(inHook);
}

double RunWaitHooks(double inNow)
{
    gHooksRan = inNow;
    gEventsToLook = gEventsBetweenLooks;
    double earliest = host::kForever;
    for (size_t i = 0; i < Hooks().size(); ++i)
        earliest = std::min(earliest, Hooks()[i](inNow));
    return earliest;
}

std::atomic<bool> gIsWaiting = false;

void EndWait()
{
    host::Machine().wake();
}

// Waiting

double DeadlineAfter(EventTimeout inTimeout)
{
    if (inTimeout == kEventDurationNoWait)
        return 0;
    return inTimeout > 0 ? host::Now() + inTimeout : host::kForever;
}

// What the control interface runs for a while has to come back, whatever waits inside of it.
namespace {

struct Limit {
    double deadline = host::kForever;
    LoopRun* run = nullptr;
};
Limit gLimit;

// Only a wait within the one that has the limit for its own deadline comes here.
bool EndsWaitInside(double inDeadline)
{
    if (host::Machine().letGo())
        return true;
    if (inDeadline != host::kForever)
        return false; // it ends by itself
    QuitFrom(gLimit.run);
    return true;
}

} // namespace

static unsigned long gWaits = 0;

unsigned long WaitsSoFar()
{
    return gWaits;
}

static void WaitUntil(double inTime)
{
    ++gWaits;
    gIsWaiting = true;
    host::Machine().wait(inTime);
    gIsWaiting = false;
}

OSStatus Await(Matcher inMatcher, double inDeadline, Event** outEvent)
{
    while (true) { // the first round finds an event, mostly, and asks nobody else
        if (!gTimers.IsEmpty())
            gTimers.FireDue(host::Now());
        if (TakeQuit())
            return eventLoopQuitErr;
        if ((*outEvent = gQueue.First(inMatcher)))
            return noErr;
        if (TakeInput())
            continue;
        const double now = host::Now();
        const double hooks = RunWaitHooks(now);
        if ((*outEvent = gQueue.First(inMatcher))) // a hook may post
            return noErr;
        const bool isInside = gLimit.deadline != inDeadline;
        if (isInside && now >= gLimit.deadline && EndsWaitInside(inDeadline))
            continue;
        if (now >= inDeadline)
            return eventLoopTimedOutErr;
        const double limit = now < gLimit.deadline ? gLimit.deadline : host::kForever;
        WaitUntil(std::min({ inDeadline, hooks, gTimers.Next(), limit }));
    }
}

// A loop that always finds an event, and so never waits, looks at the hooks now and then.
static inline OSStatus TakeFromQueue(Event* inEvent)
{
    gQueue.Remove(inEvent);
    if (--gEventsToLook < 0 || (inEvent->attributes & kEventAttributeUserEvent))
        return NoteTake(*inEvent);
    return noErr;
}

void Take(Event* inEvent)
{
    TakeFromQueue(inEvent);
}

OSStatus Dispatch(Event* inEvent)
{
    const StOwned owned(inEvent);
    return Send(inEvent, GetEventDispatcherTarget(), kNilOptions);
}

OSStatus DispatchUntil(double inDeadline)
{
    while (true) {
        Event* event = nullptr;
        if (const OSStatus status = Await({}, inDeadline, &event))
            return status;
        Take(event);
        Dispatch(event);
    }
}

// Modal loops

OSStatus ModalLoop::Run(EventTimeout inTimeout)
{
    if (fRun)
        return eventInternalErr;
    struct StRunning {
        LoopRun*& slot;
        ~StRunning() { slot = nullptr; }
    } const running{ fRun };
    LoopRun run(LoopRun::Kind::Modal);
    run.quit = fQuit;
    fRun = &run;
    const OSStatus status = DispatchUntil(DeadlineAfter(inTimeout));
    return std::exchange(fQuit, false) ? OSStatus{ noErr } : status;
}

void ModalLoop::Quit()
{
    fQuit = true;
    if (fRun)
        QuitFrom(fRun);
}

// The control interface runs the loop as the application would.
static void RunForSeconds(double inSeconds)
{
    LoopRun run(LoopRun::Kind::Application);
    const double deadline = DeadlineAfter(std::max(inSeconds, 0.0));
    struct StLimited {
        Limit outer;
        ~StLimited() { gLimit = outer; }
    } const limited{ gLimit };
    if (host::Machine().letGo)
        gLimit = { deadline, &run };
    DispatchUntil(deadline);
}

static const bool gIsReachable = (host::UpwardHooks().runCurrentEventLoop = RunForSeconds, true);

} // namespace lampblack::events

using namespace lampblack;
using namespace lampblack::events;

[[gnu::noinline]] static OSStatus Receive(ItemCount inNumTypes, const EventTypeSpec* inList,
                                          EventTimeout inTimeout, Boolean inPullEvent, EventRef* outEvent)
{
    if (inNumTypes && !inList)
        return paramErr;
    *outEvent = nullptr;
    const TypeList list = { inNumTypes, inList };
    Event* event = nullptr;
    if (const OSStatus status = Await(MatchTypes(list), DeadlineAfter(inTimeout), &event))
        return status;
    if (inPullEvent)
        Take(event);
    *outEvent = ReferenceTo(event);
    return noErr;
}

// An event that waits already, while no timer does, is handed out without a look at anything else.
OSStatus ReceiveNextEvent(ItemCount inNumTypes, const EventTypeSpec* inList, EventTimeout inTimeout,
                          Boolean inPullEvent, EventRef* outEvent)
{
    if (!outEvent)
        return paramErr;
    if (!inNumTypes && inPullEvent && gTimers.IsEmpty() && !*gQuit) [[likely]]
        if (Event* event = gQueue.First()) [[likely]] {
            *outEvent = ReferenceTo(event);
            return TakeFromQueue(event);
        }
    return Receive(inNumTypes, inList, inTimeout, inPullEvent, outEvent);
}

EventLoopRef GetMainEventLoop(void)
{
    static char loop;
    return reinterpret_cast<EventLoopRef>(&loop);
}

EventLoopRef GetCurrentEventLoop(void)
{
    return GetMainEventLoop();
}

// A program calls this to wait for something that a timer or another call of the platform brings about, often
// from inside a handler, and does not expect its handlers to run then. So events are left in the queue.
OSStatus RunCurrentEventLoop(EventTimeout inTimeout)
{
    LoopRun run(LoopRun::Kind::Current);
    Event* none = nullptr;
    const Matcher nothing = { [](const Event&, const void*) { return false; }, nullptr };
    return Await(nothing, DeadlineAfter(inTimeout), &none);
}

OSStatus QuitEventLoop(EventLoopRef inEventLoop)
{
    if (inEventLoop != GetMainEventLoop())
        return paramErr;
    if (InnermostRun())
        QuitFrom(InnermostRun());
    else
        gQuitWithoutRun = true;
    return noErr;
}

static void SendApplicationQuit()
{
    if (Event* event = NewEvent(kEventClassApplication, kEventAppQuit, host::Now(), kEventAttributeNone)) {
        const StOwned owned(event);
        Send(event, GetApplicationEventTarget(), kNilOptions);
    }
}

void RunApplicationEventLoop(void)
{
    {
        LoopRun run(LoopRun::Kind::Application);
        run.quit = std::exchange(gQuitApplicationWithoutRun, false);
        DispatchUntil(host::kForever);
    }
    SendApplicationQuit();
}

// The outermost loop of the application ends, and with it all that run inside.
void QuitApplicationEventLoop(void)
{
    LoopRun* application = nullptr;
    for (LoopRun* run = InnermostRun(); run; run = run->outer)
        if (run->kind == LoopRun::Kind::Application)
            application = run;
    if (application)
        QuitFrom(application);
    else
        gQuitApplicationWithoutRun = true;
}
