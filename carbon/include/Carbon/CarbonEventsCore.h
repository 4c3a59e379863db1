// The machine of the Carbon Event Manager: events and their parameters, targets and handlers, the queue, the
// loop and its timers. The events themselves are named in CarbonEvents.h. Begin at InstallEventHandler, or at
// CreateEvent.
#ifndef LAMPBLACK_CARBON_CARBONEVENTSCORE_H
#define LAMPBLACK_CARBON_CARBONEVENTSCORE_H

#include <Carbon/AEDataModel.h>
#include <Carbon/MacErrors.h>
#include <Carbon/MacTypes.h>

// Times are seconds since the system started; durations are seconds.
typedef double EventTime;
typedef double EventTimeout;
typedef double EventTimerInterval;

#define kEventDurationSecond ((EventTime)1.0)
#define kEventDurationMillisecond ((EventTime)(kEventDurationSecond / 1000))
#define kEventDurationMicrosecond ((EventTime)(kEventDurationSecond / 1000000))
#define kEventDurationNanosecond ((EventTime)(kEventDurationSecond / 1000000000))
#define kEventDurationMinute ((EventTime)(kEventDurationSecond * 60))
#define kEventDurationHour ((EventTime)(kEventDurationMinute * 60))
#define kEventDurationDay ((EventTime)(kEventDurationHour * 24))
#define kEventDurationNoWait ((EventTime)0.0)
#define kEventDurationForever ((EventTime)(-1.0))

// Ticks are sixtieths of a second.
#define TicksToEventTime(t) ((EventTime)((t) / 60.0))
#define EventTimeToTicks(t) ((UInt32)(((t)*60) + 0.5))

typedef UInt16 EventPriority;
enum { kEventPriorityLow = 0, kEventPriorityStandard = 1, kEventPriorityHigh = 2 };

typedef UInt32 EventAttributes;
enum { kEventAttributeNone = 0, kEventAttributeUserEvent = 1 << 0, kEventAttributeMonitored = 1 << 3 };

enum { kEventLeaveInQueue = false, kEventRemoveFromQueue = true };

enum { kEventQueueOptionsNone = 0 };

enum { kEventTargetDontPropagate = 1 << 0, kEventTargetSendToAllHandlers = 1 << 1 };

struct EventTypeSpec {
    OSType eventClass;
    UInt32 eventKind;
};
typedef struct EventTypeSpec EventTypeSpec;

#define GetEventTypeCount(t) (sizeof(t) / sizeof(EventTypeSpec))

typedef OSType EventParamName;
typedef OSType EventParamType;

// What every event may carry.
enum {
    kEventParamDirectObject = '----', // whom the event is about; the type depends on the class
    kEventParamPostTarget = 'ptrg'    // typeEventTargetRef: where the dispatcher sends a posted event
};
enum { typeEventTargetRef = 'etrg', typeEventRef = 'evrf' };

typedef OSStatus (*EventHandlerProcPtr)(EventHandlerCallRef inCallRef, EventRef inEvent, void* inUserData);
typedef EventHandlerProcPtr EventHandlerUPP;
typedef Boolean (*EventComparatorProcPtr)(EventRef inEvent, void* inCompareData);
typedef EventComparatorProcPtr EventComparatorUPP;
typedef void (*EventLoopTimerProcPtr)(EventLoopTimerRef inTimer, void* inUserData);
typedef EventLoopTimerProcPtr EventLoopTimerUPP;

typedef UInt16 EventLoopIdleTimerMessage;
enum {
    kEventLoopIdleTimerStarted = 1, // the user has just been idle for the delay
    kEventLoopIdleTimerIdling = 2,  // and is still
    kEventLoopIdleTimerStopped = 3  // and no longer is
};
typedef void (*EventLoopIdleTimerProcPtr)(EventLoopTimerRef inTimer, EventLoopIdleTimerMessage inState,
                                          void* inUserData);
typedef EventLoopIdleTimerProcPtr EventLoopIdleTimerUPP;

LAMPBLACK_BEGIN_C

// Events

// CreateEvent
//
// Makes an event with one reference, the caller's. A time of 0 is the time now.
//
// Errors:     paramErr  outEvent is null
//             memFullErr  half a million events are alive
OSStatus CreateEvent(CFAllocatorRef inAllocator, OSType inClassID, UInt32 inKind, EventTime inWhen,
                     EventAttributes inAttributes, EventRef* outEvent);
EventRef CopyEvent(EventRef inOther); // parameters too; null for an event that is not alive
EventRef CopyEventAs(CFAllocatorRef inAllocator, EventRef inOther, OSType inEventClass, UInt32 inEventKind);
EventRef RetainEvent(EventRef inEvent);
ItemCount GetEventRetainCount(EventRef inEvent);
void ReleaseEvent(EventRef inEvent);

// SetEventParameter
//
// Copies the data in; a parameter of the same name is replaced. An event that is a parameter (typeEventRef)
// is retained until it is replaced or its carrier goes.
OSStatus SetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inType, ByteCount inSize,
                           const void* inDataPtr);

// GetEventParameter
//
// Copies a parameter out, as the type that is asked for: integers, points, rectangles and texts convert into
// their kin, typeWildCard takes what is there.
//
// Units:      *outActualSize is the size of the whole value in the desired type, *outActualType the type as
//             which it was set. A smaller buffer gets the first inBufferSize bytes; outData may be NULL to
//             ask for the size alone. Each out parameter may be NULL.
// Errors:     eventParameterNotFoundErr, errAECoercionFail, paramErr
OSStatus GetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inDesiredType,
                           EventParamType* outActualType, ByteCount inBufferSize, ByteCount* outActualSize,
                           void* outData);

OSType GetEventClass(EventRef inEvent); // 0 for an event that is not alive
UInt32 GetEventKind(EventRef inEvent);
EventTime GetEventTime(EventRef inEvent);
OSStatus SetEventTime(EventRef inEvent, EventTime inTime);

// The user event that the dispatcher is sending, not retained; null outside of one.
EventRef GetCurrentEvent(void);
// The state of buttons and modifier keys as of the last user event taken from the queue.
UInt32 GetCurrentEventButtonState(void);
UInt32 GetCurrentEventKeyModifiers(void);
EventTime GetCurrentEventTime(void); // now

// Targets and handlers

// InstallEventHandler
//
// Puts a handler on top of a target's stack: it hears its events before the handlers that are there already.
//
// Ownership:  outRef may be NULL; the handler goes with RemoveEventHandler or with its target.
// Errors:     paramErr  no such target, null procedure, or a count without a list
//             eventHandlerAlreadyInstalledErr  the procedure hears all these types here, with this user data.
//             Of a list that is partly new, the new types are installed.
OSStatus InstallEventHandler(EventTargetRef inTarget, EventHandlerUPP inHandler, ItemCount inNumTypes,
                             const EventTypeSpec* inList, void* inUserData, EventHandlerRef* outRef);
OSStatus RemoveEventHandler(EventHandlerRef inHandlerRef);
OSStatus AddEventTypesToHandler(EventHandlerRef inHandlerRef, ItemCount inNumTypes,
                                const EventTypeSpec* inList);
OSStatus RemoveEventTypesFromHandler(EventHandlerRef inHandlerRef, ItemCount inNumTypes,
                                     const EventTypeSpec* inList);

// SendEventToEventTarget
//
// Calls the target's handlers for this type, newest first, then those of the targets behind it, until one
// answers other than eventNotHandledErr. eventPassToNextTargetErr skips the rest of one target. The result is
// the last handler's, or eventNotHandledErr.
OSStatus SendEventToEventTarget(EventRef inEvent, EventTargetRef inTarget);
OSStatus SendEventToEventTargetWithOptions(EventRef inEvent, EventTargetRef inTarget, OptionBits inOptions);
OSStatus CallNextEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent);

EventTargetRef GetApplicationEventTarget(void);
EventTargetRef GetUserFocusEventTarget(void); // the application when nothing has the focus
EventTargetRef GetEventDispatcherTarget(void);

EventHandlerUPP NewEventHandlerUPP(EventHandlerProcPtr inProc);
void DisposeEventHandlerUPP(EventHandlerUPP inUPP);
OSStatus InvokeEventHandlerUPP(EventHandlerCallRef inCallRef, EventRef inEvent, void* inUserData,
                               EventHandlerUPP inUPP);

// The queue

EventQueueRef GetMainEventQueue(void);
EventQueueRef GetCurrentEventQueue(void);

// PostEventToQueue
//
// Queues an event behind those of its priority, and wakes the loop. The queue retains it.
OSStatus PostEventToQueue(EventQueueRef inQueue, EventRef inEvent, EventPriority inPriority);
OSStatus RemoveEventFromQueue(EventQueueRef inQueue, EventRef inEvent);
OSStatus FlushEventQueue(EventQueueRef inQueue);
OSStatus FlushEventsMatchingListFromQueue(EventQueueRef inQueue, ItemCount inNumTypes,
                                          const EventTypeSpec* inList);
OSStatus FlushSpecificEventsFromQueue(EventQueueRef inQueue, EventComparatorUPP inComparator,
                                      void* inCompareData);
EventRef FindSpecificEventInQueue(EventQueueRef inQueue, EventComparatorUPP inComparator,
                                  void* inCompareData); // not retained, still in the queue
ItemCount GetNumEventsInQueue(EventQueueRef inQueue);
Boolean IsEventInQueue(EventQueueRef inQueue, EventRef inEvent);
// The first event of these types (of any with an empty list), out of the queue and the caller's; null if
// none.
EventRef AcquireFirstMatchingEventInQueue(EventQueueRef inQueue, ItemCount inNumTypes,
                                          const EventTypeSpec* inList, OptionBits inOptions);

EventComparatorUPP NewEventComparatorUPP(EventComparatorProcPtr inProc);
void DisposeEventComparatorUPP(EventComparatorUPP inUPP);
Boolean InvokeEventComparatorUPP(EventRef inEvent, void* inCompareData, EventComparatorUPP inUPP);

// ReceiveNextEvent
//
// Waits for an event of these types (of any with an empty list). Timers fire meanwhile.
//
// Ownership:  an event that is pulled is the caller's to release.
// Errors:     eventLoopTimedOutErr, eventLoopQuitErr, paramErr
OSStatus ReceiveNextEvent(ItemCount inNumTypes, const EventTypeSpec* inList, EventTimeout inTimeout,
                          Boolean inPullEvent, EventRef* outEvent);

// The loop

EventLoopRef GetMainEventLoop(void);
EventLoopRef GetCurrentEventLoop(void);

// RunCurrentEventLoop
//
// Waits, and fires timers meanwhile, until the time is over (eventLoopTimedOutErr) or QuitEventLoop
// (eventLoopQuitErr). Events stay in the queue for whoever receives them.
OSStatus RunCurrentEventLoop(EventTimeout inTimeout);
OSStatus QuitEventLoop(EventLoopRef inEventLoop);

// Timers

// InstallEventLoopTimer
//
// Fires after inFireDelay seconds (kEventDurationForever: not until it is told when) and then every
// inInterval seconds; with an interval of 0 once, and stays installed. A repeating timer keeps its phase; of
// the firings that it missed it makes up one.
OSStatus InstallEventLoopTimer(EventLoopRef inEventLoop, EventTimerInterval inFireDelay,
                               EventTimerInterval inInterval, EventLoopTimerUPP inTimerProc,
                               void* inTimerData, EventLoopTimerRef* outTimer);

// InstallEventLoopIdleTimer
//
// Fires once the user has been idle for inDelay seconds, then every inInterval seconds while that lasts, and
// when it ends.
OSStatus InstallEventLoopIdleTimer(EventLoopRef inEventLoop, EventTimerInterval inDelay,
                                   EventTimerInterval inInterval, EventLoopIdleTimerUPP inTimerProc,
                                   void* inTimerData, EventLoopTimerRef* outTimer);
OSStatus RemoveEventLoopTimer(EventLoopTimerRef inTimer);
OSStatus SetEventLoopTimerNextFireTime(EventLoopTimerRef inTimer, EventTimerInterval inNextFire);

EventLoopTimerUPP NewEventLoopTimerUPP(EventLoopTimerProcPtr inProc);
void DisposeEventLoopTimerUPP(EventLoopTimerUPP inUPP);
void InvokeEventLoopTimerUPP(EventLoopTimerRef inTimer, void* inUserData, EventLoopTimerUPP inUPP);
EventLoopIdleTimerUPP NewEventLoopIdleTimerUPP(EventLoopIdleTimerProcPtr inProc);
void DisposeEventLoopIdleTimerUPP(EventLoopIdleTimerUPP inUPP);
void InvokeEventLoopIdleTimerUPP(EventLoopTimerRef inTimer, EventLoopIdleTimerMessage inState,
                                 void* inUserData, EventLoopIdleTimerUPP inUPP);

LAMPBLACK_END_C

// UInt32 and ByteCount were one type when applications of that time were written; both are taken.
LAMPBLACK_IF_TYPE(Count, UInt32)
inline OSStatus GetEventParameter(EventRef inEvent, EventParamName inName, EventParamType inDesiredType,
                                  EventParamType* outActualType, ByteCount inBufferSize, Count* outActualSize,
                                  void* outData)
{
    ByteCount size = 0;
    const OSStatus status =
        GetEventParameter(inEvent, inName, inDesiredType, outActualType, inBufferSize, &size, outData);
    if (outActualSize)
        *outActualSize = (UInt32)size;
    return status;
}

#endif
