// Events and their parameters.
#include "events/EventRecord.h"
#include "events/TestSupport.h"

#include <array>
#include <cstring>

using namespace lampblack::events::test;

TEST_CASE("CreateEvent: class, kind, time and one reference, which is given back")
{
    EventRef event = nullptr;
    REQUIRE(CreateEvent(NULL, 'MOSH', 'RSHT', 12.5, kEventAttributeNone, &event) == noErr);
    CHECK(GetEventClass(event) == 'MOSH');
    CHECK(GetEventKind(event) == 'RSHT');
    CHECK(GetEventTime(event) == 12.5);
    CHECK(GetEventRetainCount(event) == 1);
    CHECK(RetainEvent(event) == event);
    CHECK(GetEventRetainCount(event) == 2);
    ReleaseEvent(event);
    CHECK(SetEventTime(event, 20) == noErr);
    CHECK(GetEventTime(event) == 20);
    ReleaseEvent(event);
    CHECK(GetEventRetainCount(event) == 0);
    CHECK(GetEventClass(event) == 0);
}

TEST_CASE("CreateEvent: a time of 0 is now, and no place for the event is an error")
{
    const StEvent event;
    CHECK(GetEventTime(event) == doctest::Approx(GetCurrentEventTime()).epsilon(0.01));
    CHECK(CreateEvent(NULL, 'test', 1, 0, kEventAttributeNone, nullptr) == paramErr);
}

TEST_CASE("Events: null, foreign and released references are refused and harmless")
{
    EventRef released = nullptr;
    REQUIRE(CreateEvent(NULL, 'test', 1, 0, kEventAttributeNone, &released) == noErr);
    ReleaseEvent(released);
    int foreign = 0;
    const StEvent next; // takes the storage of the one that was released
    for (EventRef event : { EventRef{}, released, reinterpret_cast<EventRef>(&foreign),
                            reinterpret_cast<EventRef>(reinterpret_cast<char*>((EventRef)next) + 8) }) {
        UInt32 value = 0;
        CHECK(SetEventParameter(event, 'abcd', typeUInt32, sizeof value, &value) == paramErr);
        CHECK(GetEventParameter(event, 'abcd', typeUInt32, NULL, sizeof value, NULL, &value) == paramErr);
        CHECK(SetEventTime(event, 1) == paramErr);
        CHECK(RetainEvent(event) == nullptr);
        CHECK(CopyEvent(event) == nullptr);
        CHECK(SendEventToEventTarget(event, GetApplicationEventTarget()) == paramErr);
        CHECK(PostEventToQueue(GetMainEventQueue(), event, kEventPriorityStandard) == paramErr);
        ReleaseEvent(event);
    }
    CHECK(GetEventRetainCount(next) == 1);
}

TEST_CASE("Events: a reference stays dead however often its slot is used again")
{
    EventRef first = nullptr;
    REQUIRE(CreateEvent(NULL, 'test', 1, 1, kEventAttributeNone, &first) == noErr);
    ReleaseEvent(first);
    int alive = 0;
    for (int i = 0; i < 100000; ++i) {
        EventRef event = nullptr;
        CreateEvent(NULL, 'test', 2, 1, kEventAttributeNone, &event);
        alive += GetEventKind(first) != 0 || event == first;
        ReleaseEvent(event);
    }
    CHECK(alive == 0);
}

TEST_CASE("Events: whatever bits a reference has, it is no other than the one that was given")
{
    const StEvent event;
    const UInt64 bits = (UInt64)(uintptr_t)(EventRef)event;
    for (int bit = 0; bit < 64; ++bit)
        CHECK(GetEventClass((EventRef)(uintptr_t)(bits ^ UInt64{ 1 } << bit)) == 0);
    for (UInt64 other :
         { UInt64{ 1 }, bits + 512, bits - 512, bits + (UInt64{ 1 } << 32), ~bits, ~UInt64{ 0 } })
        CHECK(GetEventClass((EventRef)(uintptr_t)other) == 0);
    CHECK(GetEventClass(event) == 'test');
}

TEST_CASE("SlotPool: a free slot's tag is nobody's reference, nor is any before the first record")
{
    using namespace lampblack::events;
    struct Record : Slot {
        int value = 0;
    };
    using Pool = SlotPool<Record, EventRef, 4096>;
    Pool pool;
    for (UInt64 bits : { 0, 1, 16, 32, 64 })
        CHECK(pool.Find((EventRef)bits) == nullptr);
    Record* record = pool.Take();
    REQUIRE(record);
    const EventRef reference = pool.ReferenceTo(record);
    CHECK(pool.Find(reference) == record);
    pool.GiveBack(record);
    CHECK(pool.Find(reference) == nullptr);
    CHECK(pool.Find((EventRef)(uintptr_t)record->tag) == nullptr);
    for (UInt64 place = 0; place < 4096 * sizeof(Record); place += 16)
        CHECK(pool.Find((EventRef)(uintptr_t)place) == nullptr);
    size_t taken = 0;
    while (pool.Take())
        ++taken;
    CHECK(taken >= 255); // a sixteenth where leaks are checked
    CHECK(taken < 4096);
    CHECK(pool.Take() == nullptr);
}

TEST_CASE("SetEventParameter: what was set is read back with its type and size")
{
    const StEvent event;
    char object = 0;
    const WindowRef window = reinterpret_cast<WindowRef>(&object);
    CHECK(SetEventParameter(event, kEventParamDirectObject, typeWindowRef, sizeof window, &window) == noErr);
    WindowRef read = nullptr;
    EventParamType type = 0;
    ByteCount size = 0;
    CHECK(GetEventParameter(event, kEventParamDirectObject, typeWindowRef, &type, sizeof read, &size,
                            &read) == noErr);
    CHECK(read == window);
    CHECK(type == typeWindowRef);
    CHECK(size == sizeof window);
    UInt32 shortSize = 0; // the type that older sources have
    CHECK(GetEventParameter(event, kEventParamDirectObject, typeWildCard, &type, 0, &shortSize, NULL) ==
          noErr);
    CHECK(shortSize == sizeof window);
    CHECK(type == typeWindowRef);
}

TEST_CASE("GetEventParameter: a missing parameter, a type that is no kin, data without a pointer")
{
    const StEvent event;
    UInt32 value = 7;
    CHECK(GetEventParameter(event, 'none', typeUInt32, NULL, sizeof value, NULL, &value) ==
          eventParameterNotFoundErr);
    SetEventParameter(event, 'kmod', typeUInt32, sizeof value, &value);
    Point point = { 1, 2 };
    CHECK(GetEventParameter(event, 'kmod', typeQDPoint, NULL, sizeof point, NULL, &point) ==
          errAECoercionFail);
    CHECK(point.h == 2);
    CHECK(SetEventParameter(event, 'kmod', typeUInt32, 4, NULL) == paramErr);
    CHECK(SetEventParameter(event, 'mark', typeNull, 0, NULL) == noErr);
    CHECK(GetEventParameter(event, 'mark', typeNull, NULL, 0, NULL, NULL) == noErr);
}

TEST_CASE("GetEventParameter: a buffer that is too small gets the beginning, and hears the whole size")
{
    const StEvent event;
    SetEventParameter(event, 'data', typeChar, 5, "hello");
    char buffer[5] = { '-', '-', '-', '-', '-' };
    ByteCount size = 0;
    CHECK(GetEventParameter(event, 'data', typeChar, NULL, 2, &size, buffer) == noErr);
    CHECK(size == 5);
    CHECK(std::string(buffer, 5) == "he---");
}

TEST_CASE("SetEventParameter: replacing a parameter by another type, smaller and larger")
{
    const StEvent event;
    for (int round = 0; round < 40; ++round) {
        const UInt16 small = 3;
        SetEventParameter(event, 'data', typeUInt16, sizeof small, &small);
        const std::string large((size_t)round * 40 + 1, 'x');
        CHECK(SetEventParameter(event, 'data', typeChar, large.size(), large.data()) == noErr);
        std::string read(large.size(), 0);
        ByteCount size = 0;
        CHECK(GetEventParameter(event, 'data', typeChar, NULL, read.size(), &size, read.data()) == noErr);
        CHECK(size == large.size());
        CHECK(read == large);
    }
}

TEST_CASE("SetEventParameter: more parameters than lie within the record, and one of a megabyte")
{
    const StEvent event;
    for (UInt32 i = 0; i < 100; ++i)
        CHECK(SetEventParameter(event, 'A000' + i, typeUInt32, sizeof i, &i) == noErr);
    const std::string megabyte(1 << 20, 'm');
    CHECK(SetEventParameter(event, 'mega', typeChar, megabyte.size(), megabyte.data()) == noErr);
    const EventRef copy = CopyEvent(event);
    UInt32 value = 0;
    for (UInt32 i = 0; i < 100; ++i) {
        CHECK(GetEventParameter(copy, 'A000' + i, typeUInt32, NULL, sizeof value, NULL, &value) == noErr);
        CHECK(value == i);
    }
    ByteCount size = 0;
    CHECK(GetEventParameter(copy, 'mega', typeChar, NULL, 0, &size, NULL) == noErr);
    CHECK(size == megabyte.size());
    ReleaseEvent(copy);
}

TEST_CASE("SetEventParameter: of every size, replaced by every other, with the parameter's own bytes too")
{
    const StEvent event;
    std::string expected(64, 0);
    for (size_t from = 0; from <= 40; from += 4)
        for (size_t to = 0; to <= 40; to += 4) {
            for (char& each : expected)
                each = (char)(&each - expected.data() + from * 3 + to);
            SetEventParameter(event, 'data', typeChar, from, expected.data());
            REQUIRE(SetEventParameter(event, 'data', typeUTF8Text, to, expected.data()) == noErr);
            std::string read(64, 0);
            ByteCount size = 0;
            REQUIRE(GetEventParameter(event, 'data', typeUTF8Text, NULL, 64, &size, read.data()) == noErr);
            CHECK(size == to);
            CHECK(read.substr(0, to) == expected.substr(0, to));
        }
}

TEST_CASE("CopyEvent: a copy of an event with large parameters owns its own")
{
    EventRef event = nullptr;
    REQUIRE(CreateEvent(NULL, 'test', 1, 1, kEventAttributeNone, &event) == noErr);
    const std::string large(5000, 'l');
    for (UInt32 i = 0; i < 20; ++i)
        SetEventParameter(event, 'A000' + i, typeChar, large.size() + i, (large + large).data());
    const EventRef copy = CopyEvent(event);
    ReleaseEvent(event);
    for (UInt32 i = 0; i < 20; ++i) {
        ByteCount size = 0;
        CHECK(GetEventParameter(copy, 'A000' + i, typeChar, NULL, 0, &size, NULL) == noErr);
        CHECK(size == large.size() + i);
    }
    ReleaseEvent(copy);
}

TEST_CASE("ReleaseEvent: one release too many does not end an event that is queued")
{
    StartClean();
    EventRef event = nullptr;
    REQUIRE(CreateEvent(NULL, 'test', 1, 1, kEventAttributeNone, &event) == noErr);
    REQUIRE(PostEventToQueue(GetMainEventQueue(), event, kEventPriorityLow) == noErr);
    CHECK(GetEventRetainCount(event) == 2);
    for (int i = 0; i < 3; ++i)
        ReleaseEvent(event);
    CHECK(IsEventInQueue(GetMainEventQueue(), event));
    EventRef taken = nullptr;
    REQUIRE(ReceiveNextEvent(0, NULL, kEventDurationNoWait, true, &taken) == noErr);
    CHECK(taken == event);
    ReleaseEvent(taken);
    CHECK(GetEventRetainCount(taken) == 0);
}

TEST_CASE("PostEventToQueue: high before standard before low, each in its order")
{
    StartClean();
    const EventPriority priorities[] = { kEventPriorityLow, kEventPriorityStandard, kEventPriorityHigh };
    for (UInt32 i = 0; i < 6; ++i) {
        const StEvent event('test', i);
        REQUIRE(PostEventToQueue(GetMainEventQueue(), event, priorities[i % 3]) == noErr);
        CHECK(PostEventToQueue(GetMainEventQueue(), event, priorities[i % 3]) == eventAlreadyPostedErr);
    }
    CHECK(GetNumEventsInQueue(GetMainEventQueue()) == 6);
    std::vector<UInt32> order;
    EventRef event = nullptr;
    while (ReceiveNextEvent(0, NULL, kEventDurationNoWait, true, &event) == noErr) {
        order.push_back(GetEventKind(event));
        ReleaseEvent(event);
    }
    CHECK(order == std::vector<UInt32>{ 2, 5, 1, 4, 0, 3 });
}

namespace {

template <class To, class From>
OSStatus Convert(EventParamType inFromType, From inFrom, EventParamType inToType, To* outTo)
{
    const StEvent event;
    SetEventParameter(event, 'data', inFromType, sizeof inFrom, &inFrom);
    return GetEventParameter(event, 'data', inToType, NULL, sizeof *outTo, NULL, outTo);
}

} // namespace

TEST_CASE("GetEventParameter: integers convert where they fit")
{
    SInt32 s32 = 0;
    CHECK(Convert(typeSInt16, SInt16{ -5 }, typeSInt32, &s32) == noErr);
    CHECK(s32 == -5);
    SInt16 s16 = 9;
    CHECK(Convert(typeUInt32, UInt32{ 70000 }, typeSInt16, &s16) == errAECoercionFail);
    CHECK(s16 == 9);
    UInt32 u32 = 0;
    CHECK(Convert(typeSInt32, SInt32{ -1 }, typeUInt32, &u32) == errAECoercionFail);
    CHECK(Convert(typeMouseButton, UInt16{ 2 }, typeUInt32, &u32) == noErr);
    CHECK(u32 == 2);
    Boolean flag = 0;
    CHECK(Convert(typeSInt32, SInt32{ 256 }, typeBoolean, &flag) == noErr);
    CHECK(flag == 1);
    double real = 0;
    CHECK(Convert(typeUInt64, ~UInt64{ 0 }, typeIEEE64BitFloatingPoint, &real) == noErr);
    CHECK(real == doctest::Approx(18446744073709551615.0));
    SInt64 s64 = 0;
    CHECK(Convert(typeIEEE64BitFloatingPoint, 1e30, typeSInt64, &s64) == errAECoercionFail);
    CHECK(Convert(typeIEEE32BitFloatingPoint, 2.6f, typeSInt64, &s64) == noErr);
    CHECK(s64 == 3);
    CHECK(Convert(typeSInt32, SInt16{ 1 }, typeSInt64, &s64) == errAECoercionFail); // not a value of its type
}

TEST_CASE("GetEventParameter: points and rectangles convert between their two forms")
{
    HIPoint fine = {};
    CHECK(Convert(typeQDPoint, Point{ 20, -10 }, typeHIPoint, &fine) == noErr);
    CHECK(fine.x == -10);
    CHECK(fine.y == 20);
    Point coarse = {};
    CHECK(Convert(typeHIPoint, HIPoint{ 1e9, 3.9 }, typeQDPoint, &coarse) == noErr);
    CHECK(coarse.h == 32767);
    CHECK(coarse.v == 3);
    HIRect box = {};
    CHECK(Convert(typeQDRectangle, Rect{ 1, 2, 11, 32 }, typeHIRect, &box) == noErr);
    CHECK(box.origin.x == 2);
    CHECK(box.size.width == 30);
    Rect rect = {};
    CHECK(Convert(typeHIRect, box, typeQDRectangle, &rect) == noErr);
    CHECK(rect.bottom == 11);
    CHECK(rect.right == 32);
}

TEST_CASE("GetEventParameter: text converts between Mac Roman, UTF-16 and UTF-8")
{
    const StEvent event;
    SetEventParameter(event, 'text', typeChar, 2, "\x8E!"); // e acute
    UniChar units[2] = {};
    ByteCount size = 0;
    CHECK(GetEventParameter(event, 'text', typeUnicodeText, NULL, sizeof units, &size, units) == noErr);
    CHECK(size == 4);
    CHECK(units[0] == 0xE9);
    char utf8[4] = {};
    CHECK(GetEventParameter(event, 'text', typeUTF8Text, NULL, sizeof utf8, &size, utf8) == noErr);
    CHECK(std::string(utf8, size) == "\xC3\xA9!");
    SetEventParameter(event, 'utxt', typeUnicodeText, sizeof units, units);
    UInt8 roman = 0; // one byte of the two
    CHECK(GetEventParameter(event, 'utxt', typeChar, NULL, 1, &size, &roman) == noErr);
    CHECK(size == 2);
    CHECK(roman == 0x8E);
}

TEST_CASE("SetEventParameter: an event within an event lives as long as its carrier")
{
    EventRef inner = nullptr;
    REQUIRE(CreateEvent(NULL, 'keyb', 1, 0, kEventAttributeNone, &inner) == noErr);
    EventRef copy = nullptr;
    {
        const StEvent carrier;
        CHECK(SetEventParameter(carrier, 'tske', typeEventRef, sizeof inner, &inner) == noErr);
        CHECK(GetEventRetainCount(inner) == 2);
        CHECK(SetEventParameter(carrier, 'tske', typeEventRef, sizeof inner, &inner) == noErr);
        CHECK(GetEventRetainCount(inner) == 2);
        copy = CopyEvent(carrier);
        CHECK(GetEventRetainCount(inner) == 3);
        const EventRef self = carrier;
        CHECK(SetEventParameter(carrier, 'self', typeEventRef, sizeof self, &self) == paramErr);
    }
    ReleaseEvent(inner);
    CHECK(GetEventRetainCount(inner) == 1);
    ReleaseEvent(copy);
    CHECK(GetEventRetainCount(inner) == 0);
    const StEvent other;
    CHECK(SetEventParameter(other, 'tske', typeEventRef, sizeof inner, &inner) == paramErr); // it is gone
}

TEST_CASE("CopyEventAs: the parameters under another class and kind")
{
    const StEvent event;
    const UInt32 value = 11;
    SetEventParameter(event, 'data', typeUInt32, sizeof value, &value);
    const EventRef copy = CopyEventAs(NULL, event, 'othr', 5);
    CHECK(GetEventClass(copy) == 'othr');
    CHECK(GetEventKind(copy) == 5);
    UInt32 read = 0;
    CHECK(GetEventParameter(copy, 'data', typeUInt32, NULL, sizeof read, NULL, &read) == noErr);
    CHECK(read == 11);
    ReleaseEvent(copy);
}

TEST_CASE("HICommand: a command parameter is as large as the record")
{
    const StEvent event(kEventClassCommand, kEventCommandProcess);
    HICommand command = {};
    command.commandID = kHICommandOK;
    command.menu.menuItemIndex = 3;
    SetEventParameter(event, kEventParamDirectObject, typeHICommand, sizeof command, &command);
    HICommandExtended read = {};
    CHECK(GetEventParameter(event, kEventParamDirectObject, typeHICommand, NULL, sizeof read, NULL, &read) ==
          noErr);
    CHECK(read.commandID == kHICommandOK);
    CHECK(read.source.menu.menuItemIndex == 3);
}
