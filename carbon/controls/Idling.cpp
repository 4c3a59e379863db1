#include "controls/Idling.h"

#include "controls/Drawing.h"
#include "controls/Kind.h"

#include <Carbon/CarbonEvents.h>

#include <map>

namespace lampblack::controls {

namespace {

struct IdleTimer {
    EventLoopTimerRef timer;
    double interval;
};

std::map<const Control*, IdleTimer>& Timers()
{
    static auto& timers = *new std::map<const Control*, IdleTimer>;
    return timers;
}

void IdleOnce(EventLoopTimerRef, void* inControl)
{
    Control* control = Find((ControlRef)inControl);
    if (!control)
        return;
    if (!CanDraw(*control)) {
        StopIdling(*control); // its next Draw starts it again
        return;
    }
    StPin pin(control);
    StDrawing drawing(*control);
    control->kind->Idle();
}

} // namespace

void StartIdling(Control& inControl, double inInterval)
{
    auto found = Timers().find(&inControl);
    if (found != Timers().end()) {
        if (found->second.interval == inInterval)
            return;
        StopIdling(inControl);
    }
    EventLoopTimerRef timer = nullptr;
    if (InstallEventLoopTimer(GetMainEventLoop(), inInterval, inInterval, IdleOnce, inControl.Ref(),
                              &timer) == noErr)
        Timers()[&inControl] = { timer, inInterval };
}

void StopIdling(Control& inControl)
{
    auto found = Timers().find(&inControl);
    if (found == Timers().end())
        return;
    RemoveEventLoopTimer(found->second.timer);
    Timers().erase(found);
}

bool IsIdling(const Control& inControl)
{
    return Timers().count(&inControl) != 0;
}

} // namespace lampblack::controls
