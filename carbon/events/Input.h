// What the user and the desktop did, as events in the queue.
#ifndef LAMPBLACK_EVENTS_INPUT_H
#define LAMPBLACK_EVENTS_INPUT_H

#include "events/EventRecord.h"

namespace lampblack::events {

// Takes the machine's oldest input and posts what it means. Answers false when there is none.
bool TakeInput();
void TakeAllInput();

// Takes all input when none was taken for a sixtieth of a second: for the calls that a program asks in a loop
// without ever receiving an event.
void TakeInputInPolls();

// Keeps the state of buttons and modifier keys in step with the queue.
void NoteUserEventTaken(const Event& inEvent);
inline void NoteTaken(const Event& inEvent)
{
    if (inEvent.attributes & kEventAttributeUserEvent)
        NoteUserEventTaken(inEvent);
}

} // namespace lampblack::events

#endif
