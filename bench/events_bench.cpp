// An event from its making to its end: made with three parameters, posted, taken, and read by three handlers.
// The limit is the same traffic through a ring buffer and an array of function pointers.
#include <Carbon/CarbonEvents.h>
#include <benchmark/benchmark.h>
#include <lampblack/host.h>

#include <cstring>

#ifdef LAMPBLACK_BENCH_QT
#include <QCoreApplication>
#include <QEvent>
#endif
#ifdef LAMPBLACK_BENCH_GLIB
#include <glib.h>
#endif

namespace {

struct Sum {
    Point where;
    UInt32 modifiers = 0;
    UInt32 count = 0;
};
Sum gSum;

// The limit

struct RingEvent {
    UInt32 eventClass, kind;
    double time;
    Point where;
    UInt32 modifiers;
    UInt32 count;
};
using RingHandler = bool (*)(const RingEvent&, void*);

struct Ring {
    static constexpr size_t kSize = 256;
    RingEvent events[kSize];
    size_t head = 0, tail = 0;
};
Ring gRing;

bool ReadRing(const RingEvent& inEvent, void* ioSum)
{
    Sum& sum = *static_cast<Sum*>(ioSum);
    sum.where = inEvent.where;
    sum.modifiers += inEvent.modifiers;
    sum.count += inEvent.count;
    return false;
}

RingHandler gRingHandlers[3] = { ReadRing, ReadRing, ReadRing };

void PostRing(UInt32 inNumber)
{
    RingEvent& event = gRing.events[gRing.head++ % Ring::kSize];
    event = { kEventClassMouse, kEventMouseDown, 1.0, { 10, 20 }, inNumber, 1 };
}

void TakeRing()
{
    const RingEvent& event = gRing.events[gRing.tail++ % Ring::kSize];
    for (RingHandler handler : gRingHandlers) {
        benchmark::DoNotOptimize(handler);
        if (handler(event, &gSum))
            break;
    }
}

void Limit(benchmark::State& state)
{
    UInt32 number = 0;
    for (auto _ : state) {
        PostRing(++number);
        benchmark::ClobberMemory();
        TakeRing();
    }
}
BENCHMARK(Limit);

// The same with parameters that are named and typed, as handlers need them that were written apart from the
// sender: three of them, looked up by name.

struct NamedParameter {
    UInt32 name, type, size, offset;
};
struct NamedEvent {
    UInt32 eventClass, kind;
    double time;
    UInt32 count = 0, bytes = 0;
    NamedParameter parameters[8];
    UInt8 data[128];
};
using NamedHandler = bool (*)(const NamedEvent&, void*);
NamedEvent gNamedRing[Ring::kSize];

bool SetNamed(NamedEvent& ioEvent, UInt32 inName, UInt32 inType, UInt32 inSize, const void* inData)
{
    ioEvent.parameters[ioEvent.count++] = { inName, inType, inSize, ioEvent.bytes };
    memcpy(ioEvent.data + ioEvent.bytes, inData, inSize);
    ioEvent.bytes += (inSize + 7) & ~7u;
    return true;
}

template <class Value>
bool GetNamed(const NamedEvent& inEvent, UInt32 inName, UInt32 inType, Value* outValue)
{
    for (UInt32 i = 0; i < inEvent.count; ++i) {
        const NamedParameter& parameter = inEvent.parameters[i];
        if (parameter.name != inName)
            continue;
        if (parameter.type != inType || parameter.size != sizeof(Value))
            return false;
        memcpy(outValue, inEvent.data + parameter.offset, sizeof(Value));
        return true;
    }
    return false;
}

bool ReadNamedPlace(const NamedEvent& inEvent, void* ioSum)
{
    GetNamed(inEvent, kEventParamMouseLocation, typeQDPoint, &static_cast<Sum*>(ioSum)->where);
    return false;
}

bool ReadNamedModifiers(const NamedEvent& inEvent, void* ioSum)
{
    UInt32 modifiers = 0;
    GetNamed(inEvent, kEventParamKeyModifiers, typeUInt32, &modifiers);
    static_cast<Sum*>(ioSum)->modifiers += modifiers;
    return false;
}

bool ReadNamedCount(const NamedEvent& inEvent, void* ioSum)
{
    UInt32 count = 0;
    GetNamed(inEvent, kEventParamClickCount, typeUInt32, &count);
    static_cast<Sum*>(ioSum)->count += count;
    return false;
}

NamedHandler gNamedHandlers[3] = { ReadNamedPlace, ReadNamedModifiers, ReadNamedCount };

void LimitNamed(benchmark::State& state)
{
    UInt32 number = 0;
    for (auto _ : state) {
        NamedEvent& event = gNamedRing[gRing.head++ % Ring::kSize];
        const Point where = { 10, 20 };
        const UInt32 count = 1;
        ++number;
        event.eventClass = kEventClassMouse;
        event.kind = kEventMouseDown;
        event.time = 1.0;
        event.count = event.bytes = 0;
        SetNamed(event, kEventParamMouseLocation, typeQDPoint, sizeof where, &where);
        SetNamed(event, kEventParamKeyModifiers, typeUInt32, sizeof number, &number);
        SetNamed(event, kEventParamClickCount, typeUInt32, sizeof count, &count);
        benchmark::ClobberMemory();
        const NamedEvent& taken = gNamedRing[gRing.tail++ % Ring::kSize];
        for (NamedHandler handler : gNamedHandlers) {
            benchmark::DoNotOptimize(handler);
            if (handler(taken, &gSum))
                break;
        }
    }
}
BENCHMARK(LimitNamed);

// This project

OSStatus ReadAll(EventHandlerCallRef, EventRef inEvent, void* ioSum)
{
    Sum& sum = *static_cast<Sum*>(ioSum);
    UInt32 modifiers = 0, count = 0;
    GetEventParameter(inEvent, kEventParamMouseLocation, typeQDPoint, NULL, sizeof(Point), NULL, &sum.where);
    GetEventParameter(inEvent, kEventParamKeyModifiers, typeUInt32, NULL, sizeof(UInt32), NULL, &modifiers);
    GetEventParameter(inEvent, kEventParamClickCount, typeUInt32, NULL, sizeof(UInt32), NULL, &count);
    sum.modifiers += modifiers;
    sum.count += count;
    return eventNotHandledErr;
}

OSStatus ReadPlace(EventHandlerCallRef, EventRef inEvent, void* ioSum)
{
    GetEventParameter(inEvent, kEventParamMouseLocation, typeQDPoint, NULL, sizeof(Point), NULL,
                      &static_cast<Sum*>(ioSum)->where);
    return eventNotHandledErr;
}

OSStatus ReadModifiers(EventHandlerCallRef, EventRef inEvent, void* ioSum)
{
    UInt32 modifiers = 0;
    GetEventParameter(inEvent, kEventParamKeyModifiers, typeUInt32, NULL, sizeof(UInt32), NULL, &modifiers);
    static_cast<Sum*>(ioSum)->modifiers += modifiers;
    return eventNotHandledErr;
}

OSStatus ReadCount(EventHandlerCallRef, EventRef inEvent, void* ioSum)
{
    UInt32 count = 0;
    GetEventParameter(inEvent, kEventParamClickCount, typeUInt32, NULL, sizeof(UInt32), NULL, &count);
    static_cast<Sum*>(ioSum)->count += count;
    return eventNotHandledErr;
}

class StHandlers {
public:
    StHandlers(EventHandlerProcPtr a, EventHandlerProcPtr b, EventHandlerProcPtr c)
    {
        const EventTypeSpec type = { kEventClassMouse, kEventMouseDown };
        const EventHandlerProcPtr procs[] = { a, b, c };
        for (int i = 0; i < 3; ++i) // one sum, three user data: a procedure may serve more than one
            InstallEventHandler(GetApplicationEventTarget(), procs[i], 1, &type, &fSums[i], &fHandlers[i]);
    }
    ~StHandlers()
    {
        for (EventHandlerRef handler : fHandlers)
            RemoveEventHandler(handler);
    }

private:
    Sum fSums[3];
    EventHandlerRef fHandlers[3] = {};
};

EventRef MakeEvent(UInt32 inNumber)
{
    EventRef event = nullptr;
    const Point where = { 10, 20 };
    const UInt32 count = 1;
    CreateEvent(NULL, kEventClassMouse, kEventMouseDown, 1.0, kEventAttributeNone, &event);
    SetEventParameter(event, kEventParamMouseLocation, typeQDPoint, sizeof where, &where);
    SetEventParameter(event, kEventParamKeyModifiers, typeUInt32, sizeof inNumber, &inNumber);
    SetEventParameter(event, kEventParamClickCount, typeUInt32, sizeof count, &count);
    return event;
}

void RunThrough(benchmark::State& state, EventTargetRef inTarget)
{
    UInt32 number = 0;
    for (auto _ : state) {
        EventRef event = MakeEvent(++number);
        PostEventToQueue(GetMainEventQueue(), event, kEventPriorityStandard);
        ReleaseEvent(event);
        ReceiveNextEvent(0, NULL, kEventDurationNoWait, true, &event);
        SendEventToEventTarget(event, inTarget);
        ReleaseEvent(event);
    }
}

// Each handler reads the parameter that it is for.
void Carbon(benchmark::State& state)
{
    const StHandlers handlers(ReadPlace, ReadModifiers, ReadCount);
    RunThrough(state, GetApplicationEventTarget());
}
BENCHMARK(Carbon);

// Each handler reads all three parameters.
void CarbonReadAll(benchmark::State& state)
{
    const StHandlers handlers(ReadAll, ReadAll, ReadAll);
    RunThrough(state, GetApplicationEventTarget());
}
BENCHMARK(CarbonReadAll);

// By way of the dispatcher, as the application's loop sends it.
void CarbonDispatched(benchmark::State& state)
{
    const StHandlers handlers(ReadPlace, ReadModifiers, ReadCount);
    RunThrough(state, GetEventDispatcherTarget());
}
BENCHMARK(CarbonDispatched);

#ifdef LAMPBLACK_BENCH_QT
class QtEvent : public QEvent {
public:
    explicit QtEvent(UInt32 inNumber) : QEvent(User), where{ 10, 20 }, modifiers(inNumber), count(1) {}
    Point where;
    UInt32 modifiers, count;
};

class QtReader : public QObject {
public:
    bool eventFilter(QObject*, QEvent* inEvent) override
    {
        Read(inEvent);
        return false;
    }
    bool event(QEvent* inEvent) override
    {
        Read(inEvent);
        return true;
    }

private:
    void Read(QEvent* inEvent)
    {
        if (inEvent->type() != QEvent::User)
            return;
        const QtEvent& event = *static_cast<QtEvent*>(inEvent);
        gSum.where = event.where;
        gSum.modifiers += event.modifiers;
        gSum.count += event.count;
    }
};

void QtPostEvent(benchmark::State& state)
{
    int count = 1;
    char name[] = "events_bench";
    char* arguments[] = { name, nullptr };
    QCoreApplication application(count, arguments);
    QtReader target, first, second;
    target.installEventFilter(&first);
    target.installEventFilter(&second);
    UInt32 number = 0;
    for (auto _ : state) {
        QCoreApplication::postEvent(&target, new QtEvent(++number));
        QCoreApplication::sendPostedEvents();
    }
}
BENCHMARK(QtPostEvent);
#endif

#ifdef LAMPBLACK_BENCH_GLIB
struct GlibEvent {
    Point where;
    UInt32 modifiers, count;
};

gboolean ReadGlib(gpointer inData)
{
    const GlibEvent& event = *static_cast<GlibEvent*>(inData);
    for (int handler = 0; handler < 3; ++handler) {
        gSum.where = event.where;
        gSum.modifiers += event.modifiers;
        gSum.count += event.count;
        benchmark::ClobberMemory();
    }
    return G_SOURCE_REMOVE;
}

void GlibIdle(benchmark::State& state)
{
    UInt32 number = 0;
    for (auto _ : state) {
        auto* event = g_new(GlibEvent, 1);
        *event = { { 10, 20 }, ++number, 1 };
        g_idle_add_full(G_PRIORITY_DEFAULT, ReadGlib, event, g_free);
        g_main_context_iteration(nullptr, FALSE);
    }
}
BENCHMARK(GlibIdle);
#endif

} // namespace

int main(int argc, char** argv)
{
    lampblack::host::Settings settings;
    settings.screen = lampblack::host::Screen::Headless;
    lampblack::host::Configure(settings);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
