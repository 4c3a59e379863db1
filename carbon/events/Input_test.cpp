// What the user does, as events; and the classic calls.
#include "events/MouseTracking.h"
#include "events/Routing.h"
#include "events/ScreenHooks.h"
#include "events/TestSupport.h"

using namespace lampblack::events;
using namespace lampblack::events::test;
namespace host = lampblack::host;

namespace {

constexpr EventTypeSpec kMouse[] = { { kEventClassMouse, kEventMouseDown },
                                     { kEventClassMouse, kEventMouseUp },
                                     { kEventClassMouse, kEventMouseMoved },
                                     { kEventClassMouse, kEventMouseDragged },
                                     { kEventClassMouse, kEventMouseWheelMoved } };

EventRef Next(EventTimeout inTimeout = kEventDurationNoWait)
{
    EventRef event = nullptr;
    ReceiveNextEvent(0, NULL, inTimeout, true, &event);
    return event;
}

template <class Value>
Value ValueOf(EventRef inEvent, EventParamName inName, EventParamType inType)
{
    Value value = {};
    CHECK(GetEventParameter(inEvent, inName, inType, NULL, sizeof value, NULL, &value) == noErr);
    return value;
}

void SwallowAll()
{
    while (EventRef event = Next())
        ReleaseEvent(event);
    StartClean();
}

} // namespace

TEST_CASE("A click: mouse down and up with place, button, count and modifiers")
{
    SwallowAll();
    host::Click({ 40, 30 }, shiftKey, 2);
    const EventRef down = Next();
    CHECK(GetEventClass(down) == kEventClassMouse);
    CHECK(GetEventKind(down) == kEventMouseDown);
    CHECK(ValueOf<Point>(down, kEventParamMouseLocation, typeQDPoint).h == 30);
    CHECK(ValueOf<HIPoint>(down, kEventParamMouseLocation, typeHIPoint).y == 40);
    CHECK(ValueOf<EventMouseButton>(down, kEventParamMouseButton, typeMouseButton) ==
          kEventMouseButtonPrimary);
    CHECK(ValueOf<UInt32>(down, kEventParamClickCount, typeUInt32) == 2);
    CHECK(ValueOf<UInt32>(down, kEventParamKeyModifiers, typeUInt32) == shiftKey);
    CHECK(ValueOf<UInt32>(down, kEventParamMouseChord, typeUInt32) == 1);
    CHECK(GetCurrentEventButtonState() == 1);
    CHECK(GetCurrentEventKeyModifiers() == shiftKey);
    const EventRef up = Next();
    CHECK(GetEventKind(up) == kEventMouseUp);
    CHECK(GetCurrentEventButtonState() == 0);
    ReleaseEvent(down);
    ReleaseEvent(up);
    CHECK(Next() == nullptr);
}

TEST_CASE("The mouse: moves with the button up, drags with it down, and tells how far")
{
    SwallowAll();
    host::MoveMouse({ 10, 10 });
    host::PressMouse({ 10, 10 });
    host::MoveMouse({ 13, 15 });
    host::ReleaseMouse({ 13, 15 });
    std::vector<UInt32> kinds;
    while (EventRef event = Next()) {
        kinds.push_back(GetEventKind(event));
        if (GetEventKind(event) == kEventMouseDragged) {
            CHECK(ValueOf<Point>(event, kEventParamMouseDelta, typeQDPoint).h == 5);
            CHECK(ValueOf<EventMouseButton>(event, kEventParamMouseButton, typeMouseButton) == 1);
        }
        ReleaseEvent(event);
    }
    CHECK(kinds ==
          std::vector<UInt32>{ kEventMouseMoved, kEventMouseDown, kEventMouseDragged, kEventMouseUp });
}

TEST_CASE("The wheel: an axis and its lines")
{
    SwallowAll();
    host::TurnWheel({ 5, 6 }, -3);
    const EventRef event = Next();
    CHECK(GetEventKind(event) == kEventMouseWheelMoved);
    CHECK(ValueOf<SInt32>(event, kEventParamMouseWheelDelta, typeSInt32) == -3);
    CHECK(ValueOf<EventMouseWheelAxis>(event, kEventParamMouseWheelAxis, typeMouseWheelAxis) ==
          kEventMouseWheelAxisY);
    ReleaseEvent(event);
}

TEST_CASE("A key: its code, its Mac Roman character and its Unicode; a modifier key says so itself")
{
    SwallowAll();
    host::PressKey(kVK_ANSI_E, 0xE9, optionKey);
    const EventRef down = Next();
    CHECK(GetEventKind(down) == kEventRawKeyDown);
    CHECK(ValueOf<UInt32>(down, kEventParamKeyCode, typeUInt32) == kVK_ANSI_E);
    CHECK((UInt8)ValueOf<char>(down, kEventParamKeyMacCharCodes, typeChar) == 0x8E);
    CHECK(ValueOf<UniChar>(down, kEventParamKeyUnicodes, typeUnicodeText) == 0xE9);
    CHECK(ValueOf<UInt32>(down, kEventParamKeyModifiers, typeUInt32) == optionKey);
    ReleaseEvent(down);
    SwallowAll();
    host::HoldKey(kVK_Shift, true);
    const EventRef shift = Next();
    CHECK(GetEventKind(shift) == kEventRawKeyModifiersChanged);
    CHECK(ValueOf<UInt32>(shift, kEventParamKeyModifiers, typeUInt32) == shiftKey);
    ReleaseEvent(shift);
    host::HoldKey(kVK_Shift, false);
    SwallowAll();
    host::HoldKey(kVK_F5, true);
    host::HoldKey(kVK_F5, true);
    const EventRef first = Next(), again = Next();
    CHECK(GetEventKind(first) == kEventRawKeyDown);
    CHECK(GetEventKind(again) == kEventRawKeyRepeat);
    ReleaseEvent(first);
    ReleaseEvent(again);
    host::HoldKey(kVK_F5, false);
    SwallowAll();
}

TEST_CASE("Text of an input method: arrives as text with a key event in it")
{
    SwallowAll();
    host::TypeText("\xE4\xB8\xAD"); // a character that no key types
    std::vector<UniChar> text;
    bool hasKey = false;
    const StHandler handler(
        GetApplicationEventTarget(), { { kEventClassTextInput, kEventTextInputUnicodeForKeyEvent } },
        [&](EventHandlerCallRef, EventRef event) {
            text.push_back(ValueOf<UniChar>(event, kEventParamTextInputSendText, typeUnicodeText));
            const auto key = ValueOf<EventRef>(event, kEventParamTextInputSendKeyboardEvent, typeEventRef);
            hasKey = ValueOf<char>(key, kEventParamKeyMacCharCodes, typeChar) == 0 &&
                     GetEventClass(key) == kEventClassKeyboard;
            return noErr;
        });
    host::RunFor(0.1);
    CHECK(text == std::vector<UniChar>{ 0x4E2D });
    CHECK(hasKey);
}

TEST_CASE("Typed text: a key that nobody takes is text for the application")
{
    SwallowAll();
    std::string text;
    const StHandler handler(
        GetApplicationEventTarget(), { { kEventClassTextInput, kEventTextInputUnicodeForKeyEvent } },
        [&](EventHandlerCallRef, EventRef event) {
            text += (char)ValueOf<UniChar>(event, kEventParamTextInputSendText, typeUnicodeText);
            CHECK(GetCurrentEvent() != nullptr);
            return noErr;
        });
    host::TypeText("Ab1");
    host::RunFor(0.1);
    CHECK(text == "Ab1");
    CHECK(GetCurrentEvent() == nullptr);
}

TEST_CASE("The program is deactivated and activated")
{
    SwallowAll();
    host::SwitchProgram(false);
    host::SwitchProgram(true);
    const EventRef away = Next(), back = Next();
    CHECK(GetEventClass(away) == kEventClassApplication);
    CHECK(GetEventKind(away) == kEventAppDeactivated);
    CHECK(GetEventKind(back) == kEventAppActivated);
    EventRecord record;
    CHECK(ConvertEventRefToEventRecord(back, &record));
    CHECK(record.what == osEvt);
    CHECK((record.message >> 24) == suspendResumeMessage);
    CHECK((record.message & resumeFlag));
    ReleaseEvent(away);
    ReleaseEvent(back);
}

TEST_CASE("WaitNextEvent: a key as a record; one that a handler takes is not returned")
{
    SwallowAll();
    host::PressKey(kVK_Return, '\r', cmdKey);
    EventRecord record;
    CHECK(WaitNextEvent(keyDownMask, &record, 10, nullptr));
    CHECK(record.what == keyDown);
    CHECK((record.message & charCodeMask) == kReturnCharCode);
    CHECK(((record.message & keyCodeMask) >> 8) == kVK_Return);
    CHECK((record.modifiers & cmdKey));
    CHECK((record.modifiers & btnState)); // the button is up
    CHECK(record.when <= TickCount());
    const UInt32 start = TickCount();
    CHECK(!WaitNextEvent(keyDownMask, &record, 30, nullptr)); // the key up is not asked for
    CHECK(record.what == nullEvent);
    CHECK(TickCount() - start >= 29);
    CHECK(EventAvail(keyUpMask, &record));
    CHECK(GetNextEvent(keyUpMask, &record));
    CHECK(record.what == keyUp);
    const StHandler handler(GetApplicationEventTarget(), { { kEventClassMouse, kEventMouseDown } },
                            [](EventHandlerCallRef, EventRef) { return noErr; });
    host::Click({ 7, 8 });
    CHECK(WaitNextEvent(everyEvent, &record, 10, nullptr));
    CHECK(record.what == mouseUp);
    CHECK(record.where.h == 8);
    CHECK(!WaitNextEvent(everyEvent, nullptr, 10, nullptr));
}

TEST_CASE("WaitNextEvent: leaving the mouse region is an event")
{
    SwallowAll();
    EventRouting().pointInRegion = [](Point point, RgnHandle) { return point.h < 100; };
    char region = 0;
    EventRecord record;
    host::MoveMouse({ 10, 50 });
    CHECK(!WaitNextEvent(everyEvent, &record, 10, reinterpret_cast<RgnHandle>(&region)));
    host::MoveMouse({ 10, 150 });
    CHECK(WaitNextEvent(everyEvent, &record, 10, reinterpret_cast<RgnHandle>(&region)));
    CHECK(record.what == osEvt);
    CHECK((record.message >> 24) == mouseMovedMessage);
    EventRouting().pointInRegion = nullptr;
}

TEST_CASE("ConvertEventRefToEventRecord: window events carry their window; the others have no record")
{
    const StEvent activated(kEventClassWindow, kEventWindowActivated);
    char object = 0;
    const WindowRef window = reinterpret_cast<WindowRef>(&object);
    SetEventParameter(activated, kEventParamDirectObject, typeWindowRef, sizeof window, &window);
    EventRecord record;
    CHECK(ConvertEventRefToEventRecord(activated, &record));
    CHECK(record.what == activateEvt);
    CHECK((WindowRef)record.message == window);
    CHECK((record.modifiers & activeFlag));
    CHECK(!ConvertEventRefToEventRecord(StEvent(), &record));
    CHECK(record.what == nullEvent);
    CHECK(!ConvertEventRefToEventRecord(nullptr, &record));
    CHECK(!ConvertEventRefToEventRecord(activated, nullptr));
}

TEST_CASE("FlushEvents: takes the kinds that are named, up to one that stops it")
{
    SwallowAll();
    host::Click({ 1, 1 });
    host::PressKey(kVK_ANSI_A, 'a');
    host::Click({ 1, 1 });
    FlushEvents(mDownMask | mUpMask, keyDownMask);
    EventRecord record;
    std::vector<EventKind> kinds;
    while (GetNextEvent(everyEvent, &record))
        kinds.push_back(record.what);
    CHECK(kinds == std::vector<EventKind>{ keyDown, keyUp, mouseDown, mouseUp });
}

TEST_CASE("CheckEventQueueForUserCancel: Command-period and Escape")
{
    SwallowAll();
    CHECK(!CheckEventQueueForUserCancel());
    host::PressKey(kVK_ANSI_Period, '.', cmdKey);
    CHECK(CheckEventQueueForUserCancel());
    host::PressKey(kVK_Escape, kEscapeCharCode);
    CHECK(CheckEventQueueForUserCancel());
    host::PressKey(kVK_ANSI_Period, '.');
    CHECK(!CheckEventQueueForUserCancel());
    CHECK(!IsUserCancelEventRef(nullptr));
    SwallowAll();
}

TEST_CASE("GetKeys: bit (code & 7) of byte (code >> 3), while the event of the key is handled")
{
    SwallowAll();
    KeyMapByteArray keys = {};
    UInt32 modifiers = 0;
    const StHandler handler(GetApplicationEventTarget(), { { kEventClassKeyboard, kEventRawKeyDown } },
                            [&](EventHandlerCallRef, EventRef) {
                                GetKeys(reinterpret_cast<BigEndianUInt32*>(keys));
                                modifiers = GetCurrentKeyModifiers();
                                return noErr;
                            });
    host::PressKey(kVK_ANSI_A, 'A', shiftKey);
    host::RunFor(0.1);
    CHECK((keys[kVK_ANSI_A >> 3] & 1 << (kVK_ANSI_A & 7)));
    CHECK((keys[0x38 >> 3] & 1));
    CHECK(modifiers == shiftKey);
    GetKeys(reinterpret_cast<BigEndianUInt32*>(keys));
    CHECK(keys[0] == 0);
    GetKeys(nullptr);
}

TEST_CASE("Button: a loop that asks nothing else hears of the release")
{
    SwallowAll();
    host::PressMouse({ 5, 5 });
    ReleaseEvent(Next());
    CHECK(Button());
    host::ReleaseMouse({ 5, 9 });
    long asked = 0;
    while (Button() && asked < 10000000)
        ++asked;
    CHECK(!Button());
    Point mouse = {};
    CHECK(GetGlobalMouse(&mouse) == &mouse);
    CHECK(mouse.h == 9);
    CHECK(GetGlobalMouse(nullptr) == nullptr);
    SwallowAll();
}

TEST_CASE("StillDown, WaitMouseUp: end with the release, which the second one takes")
{
    SwallowAll();
    host::PressMouse({ 5, 5 });
    ReleaseEvent(Next());
    CHECK(StillDown());
    CHECK(WaitMouseUp());
    host::ReleaseMouse({ 5, 5 });
    CHECK(!StillDown());
    CHECK(GetNumEventsInQueue(GetMainEventQueue()) == 1);
    CHECK(!WaitMouseUp());
    CHECK(GetNumEventsInQueue(GetMainEventQueue()) == 0);
}

TEST_CASE("Delay: lets the time go by without timers or events, and tells when it is")
{
    SwallowAll();
    int fired = 0;
    const StTimer timer(0.1, 0.1, [&] { ++fired; });
    host::Click({ 3, 3 });
    const UInt32 start = TickCount();
    UInt32 end = 0;
    Delay(60, &end);
    CHECK(end - start >= 60);
    CHECK(end - start <= 61);
    CHECK(fired == 0);
    CHECK(GetNumEventsInQueue(GetMainEventQueue()) == 2);
    unsigned long wide = 0;
    Delay(1, &wide);
    CHECK(wide >= end);
    Delay(0, NULL);
    SwallowAll();
}

TEST_CASE("Microseconds: a million a second")
{
    UnsignedWide before = {}, after = {};
    Microseconds(&before);
    UInt32 ticks = 0;
    Delay(60, &ticks);
    Microseconds(&after);
    const UInt64 passed = ((UInt64)after.hi << 32 | after.lo) - ((UInt64)before.hi << 32 | before.lo);
    CHECK((double)passed == doctest::Approx(1e6).epsilon(0.01));
    CHECK(GetDblTime() > 0);
    CHECK(GetCaretTime() > 0);
}

TEST_CASE("TrackMouseGlobal: drags, then the release; at once when no button is down")
{
    SwallowAll();
    MouseTrackingResult result = 0;
    Point where = {};
    CHECK(TrackMouseGlobal(0, kEventDurationForever, &where, nullptr, &result) == noErr);
    CHECK(result == kMouseTrackingMouseUp);
    host::PressMouse({ 5, 5 });
    ReleaseEvent(Next());
    CHECK(TrackMouseGlobal(0, 0.5, &where, nullptr, &result) == eventLoopTimedOutErr);
    CHECK(result == kMouseTrackingTimedOut);
    host::MoveMouse({ 6, 8 });
    host::HoldKey(kVK_Option, true);
    host::ReleaseMouse({ 7, 9 });
    UInt32 modifiers = 0;
    CHECK(TrackMouseGlobal(0, kEventDurationForever, &where, &modifiers, &result) == noErr);
    CHECK(result == kMouseTrackingMouseDragged);
    CHECK(where.h == 8);
    CHECK(TrackMouseGlobal(0, kEventDurationForever, &where, &modifiers, &result) == noErr);
    CHECK(result == kMouseTrackingKeyModifiersChanged);
    CHECK(modifiers == optionKey);
    CHECK(TrackMouseGlobal(kTrackMouseLocationOptionDontConsumeMouseUp, kEventDurationForever, &where,
                           nullptr, &result) == noErr);
    CHECK(result == kMouseTrackingMouseUp);
    CHECK(GetNumEventsInQueue(GetMainEventQueue()) == 1);
    host::HoldKey(kVK_Option, false);
    SwallowAll();
}

TEST_CASE("TrackMouseGlobal: timers fire meanwhile, and the end of the program ends it")
{
    SwallowAll();
    host::PressMouse({ 5, 5 });
    ReleaseEvent(Next());
    MouseTrackingResult result = 0;
    OSStatus status = noErr;
    const StTimer quit(2, 0, [] { QuitApplicationEventLoop(); });
    const StTimer track(
        1, 0, [&] { status = TrackMouseGlobal(0, kEventDurationForever, nullptr, nullptr, &result); });
    RunApplicationEventLoop();
    CHECK(status == eventLoopQuitErr);
    CHECK(result == kMouseTrackingUserCancelled);
    host::ReleaseMouse({ 5, 5 });
    SwallowAll();
}

TEST_CASE("TrackMouseArea: entering, leaving and the release")
{
    SwallowAll();
    host::PressMouse({ 5, 50 });
    ReleaseEvent(Next());
    const auto inside = [](Point point, void*) { return point.h < 100; };
    bool was = true;
    MouseTrackingResult result = 0;
    host::MoveMouse({ 5, 60 });
    host::MoveMouse({ 5, 150 });
    host::MoveMouse({ 5, 90 });
    host::ReleaseMouse({ 5, 90 });
    CHECK(TrackMouseArea(inside, nullptr, &was, &result) == noErr);
    CHECK(result == kMouseTrackingMouseExited);
    CHECK(!was);
    CHECK(TrackMouseArea(inside, nullptr, &was, &result) == noErr);
    CHECK(result == kMouseTrackingMouseEntered);
    CHECK(TrackMouseArea(inside, nullptr, &was, &result) == noErr);
    CHECK(result == kMouseTrackingMouseUp);
    CHECK(TrackMouseArea(nullptr, nullptr, &was, &result) == paramErr);
}

TEST_CASE("The mouse's events can be received alone while others wait")
{
    SwallowAll();
    host::PressKey(kVK_ANSI_A, 'a');
    host::Click({ 2, 2 });
    EventRef event = nullptr;
    CHECK(ReceiveNextEvent(GetEventTypeCount(kMouse), kMouse, kEventDurationNoWait, true, &event) == noErr);
    CHECK(GetEventKind(event) == kEventMouseDown);
    ReleaseEvent(event);
    SwallowAll();
}
