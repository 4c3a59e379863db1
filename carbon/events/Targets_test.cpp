// Targets, handlers and the way of an event.
#include "events/EventTargets.h"
#include "events/Routing.h"
#include "events/TestSupport.h"

#include <optional>

using namespace lampblack::events;
using namespace lampblack::events::test;

namespace {

constexpr EventTypeSpec kTest = { 'test', 1 };
constexpr EventTypeSpec kOther = { 'test', 2 };

using Log = std::vector<std::string>;

// Control, window and application in small: each target passes on to the next.
struct Owner {
    EventTargetRef target;
    EventTargetRef next;

    explicit Owner(EventTargetRef inNext = nullptr) : target(NewEventTarget(this, Next)), next(inNext) {}
    ~Owner() { DisposeEventTarget(target); }
    static EventTargetRef Next(void* inOwner) { return static_cast<Owner*>(inOwner)->next; }
};

StHandler::Body Note(Log& ioLog, std::string inName, OSStatus inStatus = eventNotHandledErr)
{
    return [&ioLog, inName, inStatus](EventHandlerCallRef, EventRef) {
        ioLog.push_back(inName);
        return inStatus;
    };
}

OSStatus DefaultProc(EventHandlerCallRef, EventRef, void* inLog)
{
    static_cast<Log*>(inLog)->push_back("default");
    return eventNotHandledErr;
}

OSStatus NewerDefaultProc(EventHandlerCallRef, EventRef, void* inLog)
{
    static_cast<Log*>(inLog)->push_back("newer default");
    return eventNotHandledErr;
}

} // namespace

TEST_CASE("SendEventToEventTarget: the newest handler is first, and handling ends the way")
{
    const Owner owner;
    Log log;
    const StHandler first(owner.target, { kTest }, Note(log, "first"));
    const StHandler second(owner.target, { kTest }, Note(log, "second"));
    const StEvent event;
    CHECK(SendEventToEventTarget(event, owner.target) == eventNotHandledErr);
    CHECK(log == Log{ "second", "first" });
    log.clear();
    const StHandler third(owner.target, { kTest }, Note(log, "third", noErr));
    CHECK(SendEventToEventTarget(event, owner.target) == noErr);
    CHECK(log == Log{ "third" });
    const StEvent other('test', 2);
    CHECK(SendEventToEventTarget(other, owner.target) == eventNotHandledErr);
    CHECK(log.size() == 1);
}

TEST_CASE("SendEventToEventTarget: an error of a handler is the result and ends the way")
{
    const Owner window;
    const Owner control(window.target);
    Log log;
    const StHandler outer(window.target, { kTest }, Note(log, "window"));
    const StHandler inner(control.target, { kTest }, Note(log, "control", userCanceledErr));
    CHECK(SendEventToEventTarget(StEvent(), control.target) == userCanceledErr);
    CHECK(log == Log{ "control" });
}

TEST_CASE("SendEventToEventTarget: a handler that disposes of its own target and sends to others on the way")
{
    const Owner window;
    Log log;
    const StHandler outer(window.target, { kTest }, Note(log, "window"));
    std::optional<Owner> control(std::in_place, window.target);
    EventTargetRef target = control->target;
    const StHandler below(control->target, { kTest }, Note(log, "below"));
    const StHandler top(control->target, { kTest }, [&](EventHandlerCallRef, EventRef) {
        log.push_back("top");
        const StEvent other('test', 2);
        SendEventToEventTarget(other, window.target);
        control.reset();
        const Owner another; // takes the storage
        const StHandler anothers(another.target, { kTest }, Note(log, "another"));
        return eventNotHandledErr;
    });
    CHECK(SendEventToEventTarget(StEvent(), target) == eventNotHandledErr);
    CHECK(log == Log{ "top", "window" });
    CHECK(SendEventToEventTarget(StEvent(), target) == paramErr);
    const EventTypeSpec types[] = { kTest };
    CHECK(InstallEventHandler(target, DefaultProc, 1, types, &log, nullptr) == paramErr);
}

TEST_CASE("SendEventToEventTarget: what other walks change inside does not disturb the one outside")
{
    const Owner first, second;
    Log log;
    const StHandler low(first.target, { kTest }, Note(log, "low"));
    std::optional<StHandler> newer;
    const StHandler middle(first.target, { kTest }, [&](EventHandlerCallRef, EventRef) {
        log.push_back("middle");
        return eventNotHandledErr;
    });
    const StHandler elsewhere(second.target, { kOther }, [&](EventHandlerCallRef call, EventRef event) {
        log.push_back("elsewhere");
        newer.emplace(first.target, std::vector<EventTypeSpec>{ kTest }, Note(log, "newer"));
        return CallNextEventHandler(call, event);
    });
    const StHandler top(first.target, { kTest }, [&](EventHandlerCallRef, EventRef) {
        log.push_back("top");
        return SendEventToEventTarget(StEvent('test', 2), second.target);
    });
    CHECK(SendEventToEventTarget(StEvent(), first.target) == eventNotHandledErr);
    CHECK(log == Log{ "top", "elsewhere", "middle", "low" }); // the newer one stands above the caller
    log.clear();
    newer.reset();
    const StEvent event;
    CHECK(SendEventToEventTargetWithOptions(event, first.target, kEventTargetDontPropagate) ==
          eventNotHandledErr);
    CHECK(log == Log{ "top", "elsewhere", "middle", "low" });
}

TEST_CASE(
    "SendEventToEventTarget: an event of class 0 and kind 0, and thousands of kinds, find their handlers")
{
    const Owner owner;
    int heard = 0;
    const StHandler zero(owner.target, { { 0, 0 }, { 'many', 2500 }, { 0xFFFFFFFF, 0xFFFFFFFF } },
                         [&](EventHandlerCallRef, EventRef) {
                             ++heard;
                             return noErr;
                         });
    for (int round = 0; round < 2; ++round) {
        CHECK(SendEventToEventTarget(StEvent(0, 0), owner.target) == noErr);
        CHECK(SendEventToEventTarget(StEvent(0xFFFFFFFF, 0xFFFFFFFF), owner.target) == noErr);
        for (UInt32 kind = 0; kind < 3000; ++kind)
            CHECK(SendEventToEventTarget(StEvent('many', kind), owner.target) ==
                  (kind == 2500 ? OSStatus{ noErr } : OSStatus{ eventNotHandledErr }));
    }
    CHECK(heard == 6);
}

TEST_CASE("SendEventToEventTarget: from control to window to application, and no further with DontPropagate")
{
    const Owner window(GetApplicationEventTarget());
    const Owner control(window.target);
    Log log;
    const StHandler app(GetApplicationEventTarget(), { kTest }, Note(log, "application"));
    const StHandler middle(window.target, { kTest }, Note(log, "window"));
    const StHandler inner(control.target, { kTest }, Note(log, "control"));
    CHECK(SendEventToEventTarget(StEvent(), control.target) == eventNotHandledErr);
    CHECK(log == Log{ "control", "window", "application" });
    log.clear();
    CHECK(SendEventToEventTargetWithOptions(StEvent(), control.target, kEventTargetDontPropagate) ==
          eventNotHandledErr);
    CHECK(log == Log{ "control" });
}

TEST_CASE("SendEventToEventTarget: eventPassToNextTargetErr skips the rest of one target")
{
    const Owner window;
    const Owner control(window.target);
    Log log;
    const StHandler outer(window.target, { kTest }, Note(log, "window"));
    const StHandler older(control.target, { kTest }, Note(log, "older"));
    const StHandler newer(control.target, { kTest }, Note(log, "newer", eventPassToNextTargetErr));
    CHECK(SendEventToEventTarget(StEvent(), control.target) == eventNotHandledErr);
    CHECK(log == Log{ "newer", "window" });
}

TEST_CASE("SendEventToEventTargetWithOptions: SendToAllHandlers goes on after a handler that handled it")
{
    const Owner window;
    const Owner control(window.target);
    Log log;
    const StHandler outer(window.target, { kTest }, Note(log, "window"));
    const StHandler older(control.target, { kTest }, Note(log, "older"));
    const StHandler newer(control.target, { kTest }, Note(log, "newer", noErr));
    CHECK(SendEventToEventTargetWithOptions(StEvent(), control.target, kEventTargetSendToAllHandlers) ==
          noErr);
    CHECK(log == Log{ "newer", "older", "window" });
}

TEST_CASE("CallNextEventHandler: the rest of the way runs inside the handler, and once")
{
    const Owner window;
    const Owner control(window.target);
    Log log;
    const StHandler outer(window.target, { kTest }, Note(log, "window"));
    const StHandler older(control.target, { kTest }, Note(log, "older"));
    const StHandler newer(control.target, { kTest }, [&](EventHandlerCallRef call, EventRef event) {
        log.push_back("before");
        const OSStatus status = CallNextEventHandler(call, event);
        log.push_back("after");
        return status;
    });
    CHECK(SendEventToEventTarget(StEvent(), control.target) == eventNotHandledErr);
    CHECK(log == Log{ "before", "older", "window", "after" });
}

TEST_CASE("CallNextEventHandler: a call reference that is null or over is refused")
{
    const Owner owner;
    EventHandlerCallRef kept = nullptr;
    const StHandler handler(owner.target, { kTest }, [&](EventHandlerCallRef call, EventRef) {
        kept = call;
        return noErr;
    });
    const StEvent event;
    SendEventToEventTarget(event, owner.target);
    CHECK(CallNextEventHandler(kept, event) == paramErr);
    CHECK(CallNextEventHandler(nullptr, event) == paramErr);
}

TEST_CASE("InstallEventHandler: bad arguments")
{
    const Owner owner;
    char object = 0;
    EventHandlerRef handler = reinterpret_cast<EventHandlerRef>(&object);
    Log log;
    CHECK(InstallEventHandler(nullptr, DefaultProc, 1, &kTest, &log, &handler) == paramErr);
    CHECK(handler == nullptr);
    CHECK(InstallEventHandler(owner.target, nullptr, 1, &kTest, &log, nullptr) == paramErr);
    CHECK(InstallEventHandler(owner.target, DefaultProc, 1, nullptr, &log, nullptr) == paramErr);
    CHECK(RemoveEventHandler(nullptr) == paramErr);
    CHECK(AddEventTypesToHandler(nullptr, 1, &kTest) == paramErr);
    CHECK(RemoveEventTypesFromHandler(reinterpret_cast<EventHandlerRef>(&log), 1, &kTest) == paramErr);
    CHECK(SendEventToEventTarget(StEvent(), nullptr) == paramErr);
}

TEST_CASE("InstallEventHandler: one procedure with one user data hears a type once")
{
    const Owner owner;
    Log log, otherLog;
    const EventTypeSpec twice[] = { kTest, kTest };
    const EventTypeSpec both[] = { kTest, kOther };
    EventHandlerRef handler = nullptr;
    CHECK(InstallEventHandler(owner.target, DefaultProc, 2, twice, &log, &handler) == noErr);
    CHECK(InstallEventHandler(owner.target, DefaultProc, 1, &kTest, &log, nullptr) ==
          eventHandlerAlreadyInstalledErr);
    CHECK(InstallEventHandler(owner.target, DefaultProc, 1, &kTest, &otherLog, nullptr) == noErr);
    SendEventToEventTarget(StEvent(), owner.target);
    CHECK(log.size() == 1);
    CHECK(otherLog.size() == 1);
    CHECK(InstallEventHandler(owner.target, DefaultProc, 2, both, &log, nullptr) == noErr); // 2 is new
    SendEventToEventTarget(StEvent(), owner.target);
    SendEventToEventTarget(StEvent('test', 2), owner.target);
    CHECK(log.size() == 3);
    CHECK(RemoveEventHandler(handler) == noErr);
    CHECK(RemoveEventHandler(handler) == paramErr);
}

TEST_CASE("AddEventTypesToHandler, RemoveEventTypesFromHandler: take effect with the next event")
{
    const Owner owner;
    Log log;
    const StHandler handler(owner.target, {}, Note(log, "heard"));
    SendEventToEventTarget(StEvent(), owner.target);
    CHECK(log.empty());
    CHECK(AddEventTypesToHandler(handler.Reference(), 1, &kTest) == noErr);
    SendEventToEventTarget(StEvent(), owner.target);
    CHECK(log.size() == 1);
    CHECK(RemoveEventTypesFromHandler(handler.Reference(), 1, &kTest) == noErr);
    SendEventToEventTarget(StEvent(), owner.target);
    CHECK(log.size() == 1);
}

TEST_CASE("InstallDefaultHandler: defaults run after the application's handlers, the newer first")
{
    const Owner owner;
    Log log;
    CHECK(InstallDefaultHandler(owner.target, 1, &kTest, DefaultProc, &log) == noErr);
    const StHandler older(owner.target, { kTest }, Note(log, "older"));
    CHECK(InstallDefaultHandler(owner.target, 1, &kTest, NewerDefaultProc, &log) == noErr);
    const StHandler newer(owner.target, { kTest }, Note(log, "newer"));
    SendEventToEventTarget(StEvent(), owner.target);
    CHECK(log == Log{ "newer", "older", "newer default", "default" });
}

TEST_CASE("RemoveEventHandler: inside a handler, of itself and of the next one")
{
    const Owner owner;
    Log log;
    std::optional<StHandler> oldest(std::in_place, owner.target, std::vector{ kTest }, Note(log, "oldest"));
    std::optional<StHandler> middle(std::in_place, owner.target, std::vector{ kTest }, Note(log, "middle"));
    EventHandlerRef self = nullptr;
    const StHandler newest(owner.target, { kTest }, [&](EventHandlerCallRef, EventRef) {
        log.push_back("newest");
        RemoveEventHandler(self);
        middle.reset();
        return eventNotHandledErr;
    });
    self = newest.Reference();
    SendEventToEventTarget(StEvent(), owner.target);
    CHECK(log == Log{ "newest", "oldest" });
    SendEventToEventTarget(StEvent(), owner.target);
    CHECK(log == Log{ "newest", "oldest", "oldest" });
}

TEST_CASE("InstallEventHandler: inside a handler, the new one hears the next event and not this one")
{
    const Owner owner;
    Log log;
    std::optional<StHandler> added;
    const StHandler older(owner.target, { kTest }, Note(log, "older"));
    const StHandler newer(owner.target, { kTest }, [&](EventHandlerCallRef, EventRef) {
        log.push_back("newer");
        if (!added)
            added.emplace(owner.target, std::vector{ kTest }, Note(log, "added"));
        return eventNotHandledErr;
    });
    SendEventToEventTarget(StEvent(), owner.target);
    CHECK(log == Log{ "newer", "older" });
    SendEventToEventTarget(StEvent(), owner.target);
    CHECK(log == Log{ "newer", "older", "added", "newer", "older" });
}

TEST_CASE("DisposeEventTarget: inside its own handler; the event goes on to the next target")
{
    const Owner window;
    std::optional<Owner> control(std::in_place, window.target);
    Log log;
    const StHandler outer(window.target, { kTest }, Note(log, "window"));
    const EventTargetRef target = control->target;
    const StHandler older(target, { kTest }, Note(log, "older"));
    const StHandler newer(target, { kTest }, [&](EventHandlerCallRef call, EventRef event) {
        log.push_back("newer");
        control.reset();
        return CallNextEventHandler(call, event);
    });
    CHECK(SendEventToEventTarget(StEvent(), target) == eventNotHandledErr);
    CHECK(log == Log{ "newer", "window" });
    CHECK(SendEventToEventTarget(StEvent(), target) == paramErr);
    CHECK(RemoveEventHandler(older.Reference()) == paramErr);
    CHECK(EventTargetOwner(target) == nullptr);
    DisposeEventTarget(target);
}

TEST_CASE("ReleaseEvent: inside a handler, more often than retained, the event outlives its sending")
{
    const Owner owner;
    EventRef event = nullptr;
    REQUIRE(CreateEvent(NULL, 'test', 1, 0, kEventAttributeNone, &event) == noErr);
    OSType seen = 0;
    const StHandler older(owner.target, { kTest }, [&](EventHandlerCallRef, EventRef inEvent) {
        seen = GetEventClass(inEvent);
        return noErr;
    });
    const StHandler newer(owner.target, { kTest }, [&](EventHandlerCallRef, EventRef inEvent) {
        ReleaseEvent(inEvent);
        return eventNotHandledErr;
    });
    CHECK(SendEventToEventTarget(event, owner.target) == noErr);
    CHECK(seen == 'test');
    CHECK(GetEventRetainCount(event) == 0);
}

TEST_CASE("SendEventToEventTarget: a handler that throws leaves everything in order")
{
    const Owner owner;
    const StEvent event;
    {
        const StHandler handler(owner.target, { kTest },
                                [](EventHandlerCallRef, EventRef) -> OSStatus { throw 5L; });
        CHECK_THROWS_AS(SendEventToEventTarget(event, owner.target), long);
    }
    CHECK(GetEventRetainCount(event) == 1);
    Log log;
    const StHandler handler(owner.target, { kTest }, Note(log, "heard"));
    SendEventToEventTarget(event, owner.target);
    CHECK(log.size() == 1);
}

TEST_CASE("SendEventToEventTarget: thousands of kinds of event do not disturb one another")
{
    const Owner owner;
    int heard = 0;
    const StHandler handler(owner.target, { kTest }, [&](EventHandlerCallRef, EventRef) {
        ++heard;
        return noErr;
    });
    for (UInt32 kind = 0; kind < 5000; ++kind) {
        const StEvent event('test', kind);
        CHECK(SendEventToEventTarget(event, owner.target) ==
              (kind == 1 ? OSStatus{ noErr } : eventNotHandledErr));
    }
    CHECK(heard == 1);
}

TEST_CASE("GetEventDispatcherTarget: a posted target, and handlers of the dispatcher itself before it")
{
    const Owner owner;
    Log log;
    const StHandler handler(owner.target, { kTest }, Note(log, "target", noErr));
    const StEvent event;
    SetEventParameter(event, kEventParamPostTarget, typeEventTargetRef, sizeof owner.target, &owner.target);
    {
        const StHandler early(GetEventDispatcherTarget(), { kTest }, Note(log, "dispatcher"));
        CHECK(SendEventToEventTarget(event, GetEventDispatcherTarget()) == noErr);
    }
    CHECK(log == Log{ "dispatcher", "target" });
}

TEST_CASE("GetEventDispatcherTarget: a posted target that is gone leaves the event to the application")
{
    Log log;
    const StHandler app(GetApplicationEventTarget(), { kTest }, Note(log, "application", noErr));
    const StEvent event;
    {
        const Owner owner;
        SetEventParameter(event, kEventParamPostTarget, typeEventTargetRef, sizeof owner.target,
                          &owner.target);
    }
    CHECK(SendEventToEventTarget(event, GetEventDispatcherTarget()) == noErr);
    CHECK(log == Log{ "application" });
}

namespace {

EventTargetRef gMouseTarget, gFocus;

struct StRouting {
    Routing saved = EventRouting();
    StRouting()
    {
        EventRouting().mouseTarget = [](EventRef) { return gMouseTarget; };
        EventRouting().keyboardTarget = [](EventRef) { return gFocus; };
        EventRouting().filterKey = nullptr;
        EventRouting().windowTarget = [](WindowRef) { return gMouseTarget; };
    }
    ~StRouting() { EventRouting() = saved; }
};

} // namespace

TEST_CASE("GetEventDispatcherTarget: mouse, keyboard, command and window events find their targets")
{
    const StRouting routing;
    const Owner under(GetApplicationEventTarget()), focus(GetApplicationEventTarget());
    gMouseTarget = under.target;
    gFocus = focus.target;
    Log log;
    const std::vector<EventTypeSpec> all = { { kEventClassMouse, kEventMouseDown },
                                             { kEventClassKeyboard, kEventRawKeyUp },
                                             { kEventClassCommand, kEventCommandProcess },
                                             { kEventClassWindow, kEventWindowUpdate } };
    const StHandler underHandler(under.target, all, Note(log, "under", noErr));
    const StHandler focusHandler(focus.target, all, Note(log, "focus", noErr));
    for (const EventTypeSpec& type : all) {
        const StEvent event(type.eventClass, type.eventKind);
        const WindowRef window = reinterpret_cast<WindowRef>(&log);
        if (type.eventClass == kEventClassWindow)
            SetEventParameter(event, kEventParamDirectObject, typeWindowRef, sizeof window, &window);
        CHECK(SendEventToEventTarget(event, GetEventDispatcherTarget()) == noErr);
    }
    CHECK(log == Log{ "under", "focus", "focus", "under" });
    CHECK(GetUserFocusEventTarget() == focus.target);
    gFocus = nullptr;
    CHECK(GetUserFocusEventTarget() == GetApplicationEventTarget());
}

TEST_CASE("GetEventDispatcherTarget: a raw key that nobody takes comes again as text")
{
    const StRouting routing;
    const Owner focus;
    gFocus = focus.target;
    Log log;
    const StHandler raw(focus.target, { { kEventClassKeyboard, kEventRawKeyDown } }, Note(log, "raw"));
    std::vector<UniChar> text;
    UInt32 modifiers = 0;
    const StHandler unicode(focus.target, { { kEventClassTextInput, kEventTextInputUnicodeForKeyEvent } },
                            [&](EventHandlerCallRef, EventRef event) {
                                UniChar character = 0;
                                GetEventParameter(event, kEventParamTextInputSendText, typeUnicodeText, NULL,
                                                  sizeof character, NULL, &character);
                                text.push_back(character);
                                EventRef key = nullptr;
                                GetEventParameter(event, kEventParamTextInputSendKeyboardEvent, typeEventRef,
                                                  NULL, sizeof key, NULL, &key);
                                GetEventParameter(key, kEventParamKeyModifiers, typeUInt32, NULL,
                                                  sizeof modifiers, NULL, &modifiers);
                                return noErr;
                            });
    const StEvent event(kEventClassKeyboard, kEventRawKeyDown);
    const UniChar character = 0xE9;
    const UInt32 shift = shiftKey;
    SetEventParameter(event, kEventParamKeyUnicodes, typeUnicodeText, sizeof character, &character);
    SetEventParameter(event, kEventParamKeyModifiers, typeUInt32, sizeof shift, &shift);
    CHECK(SendEventToEventTarget(event, GetEventDispatcherTarget()) == noErr);
    CHECK(log == Log{ "raw" });
    CHECK(text == std::vector<UniChar>{ 0xE9 });
    CHECK(modifiers == shift);
    EventRouting().filterKey = [](EventRef) { return true; }; // a menu took it
    CHECK(SendEventToEventTarget(event, GetEventDispatcherTarget()) == noErr);
    CHECK(log.size() == 1);
}

TEST_CASE("ProcessHICommand: the command reaches the application")
{
    UInt32 heard = 0;
    const StHandler app(GetApplicationEventTarget(), { { kEventClassCommand, kEventCommandProcess } },
                        [&](EventHandlerCallRef, EventRef event) {
                            HICommand command = {};
                            GetEventParameter(event, kEventParamDirectObject, typeHICommand, NULL,
                                              sizeof command, NULL, &command);
                            heard = command.commandID;
                            return noErr;
                        });
    HICommand command = {};
    command.commandID = kHICommandOpen;
    CHECK(ProcessHICommand(&command) == noErr);
    CHECK(heard == kHICommandOpen);
    CHECK(ProcessHICommand(nullptr) == paramErr);
}

TEST_CASE("NewEventHandlerUPP: is invoked with what it was given")
{
    Log log;
    EventHandlerUPP upp = NewEventHandlerUPP(DefaultProc);
    CHECK(InvokeEventHandlerUPP(nullptr, nullptr, &log, upp) == eventNotHandledErr);
    CHECK(log == Log{ "default" });
    DisposeEventHandlerUPP(upp);
}
