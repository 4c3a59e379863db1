// A loop within the loop: receives and dispatches events until it is told to stop.
//
//     ModalLoop loop;
//     record.modal = &loop;      // whoever ends it calls record.modal->Quit()
//     OSStatus status = loop.Run();
#ifndef LAMPBLACK_EVENTS_MODALLOOP_H
#define LAMPBLACK_EVENTS_MODALLOOP_H

#include "events/Runs.h"

#include <Carbon/CarbonEventsCore.h>

namespace lampblack::events {

class ModalLoop {
public:
    ModalLoop() = default;
    ModalLoop(const ModalLoop&) = delete;
    ModalLoop& operator=(const ModalLoop&) = delete;

    // Dispatches events until Quit (noErr), until a loop around this one is told to quit (eventLoopQuitErr),
    // or until the time is over (eventLoopTimedOutErr). Loops nest.
    OSStatus Run(EventTimeout inTimeout = kEventDurationForever);

    // Ends this loop, and the loops that run inside it. Before Run, Run returns at once.
    void Quit();

    bool IsRunning() const { return fRun != nullptr; }

private:
    LoopRun* fRun = nullptr;
    bool fQuit = false;
};

} // namespace lampblack::events

#endif
