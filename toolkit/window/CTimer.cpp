// CTimer and the global list of timers.
#include "window/CTimer.h"

#include <algorithm>

#include "util/SystemChecks.h"

CTimer* CTimer::cgHead = nullptr;

namespace {

void InstallMenuHandlerOnce()
{
    static bool doneThis = false;
    if (doneThis || HasMacOSX())
        return;
    doneThis = true;
    static const EventTypeSpec menuEvents[] = { { kEventClassMenu, kEventMenuBeginTracking },
                                                { kEventClassMenu, kEventMenuEndTracking } };
    InstallEventHandler(GetApplicationEventTarget(), NewEventHandlerUPP(CTimerMenuEventHandler), 2,
                        menuEvents, nullptr, nullptr);
}

} // namespace

CTimer::CTimer(EventLoopTimerProcPtr inProc, double inDelay, double inInterval, void* inUserData)
{
    CommonInit(inProc, inDelay, inInterval, inUserData);
}

CTimer::~CTimer()
{
    Remove();
    if (fTimerRef)
        RemoveEventLoopTimer(fTimerRef);
}

void CTimer::CommonInit(EventLoopTimerProcPtr inProc, double inDelay, double inInterval, void* inUserData)
{
    fProc = inProc;
    fDelay = inDelay;
    fInterval = inInterval;
    fNextFire = inInterval;
    fUserData = inUserData;
    fSuspendCount = 0;
    fTimerRef = nullptr;
    fFired = false;
    fNext = nullptr;
    fPrev = nullptr;
    Insert();
    fStartTime = GetCurrentEventTime();
    static const EventLoopTimerUPP timerUPP = NewEventLoopTimerUPP(CTimerCallback);
    InstallEventLoopTimer(GetCurrentEventLoop(), inDelay, inInterval, timerUPP, this, &fTimerRef);
    InstallMenuHandlerOnce();
}

void CTimer::DoTimer(EventLoopTimerRef, void*) {}

void CTimer::Suspend()
{
    if (++fSuspendCount == 1)
        SetEventLoopTimerNextFireTime(fTimerRef, kEventDurationForever);
}

void CTimer::Resume()
{
    fSuspendCount = std::max<SInt32>(fSuspendCount - 1, 0);
    if (fSuspendCount != 0 || fNextFire == kEventDurationForever)
        return;
    if (fInterval != 0) {
        SetEventLoopTimerNextFireTime(fTimerRef, kEventDurationNoWait);
        return;
    }
    if (fFired)
        return;
    // Measured against the delay of construction even after SetNextFireTime: games time their cues by it.
    const double remaining = fDelay - (GetCurrentEventTime() - fStartTime);
    SetEventLoopTimerNextFireTime(fTimerRef, std::max(0.0, remaining));
}

void CTimer::SetNextFireTime(double inDelay)
{
    fFired = false;
    fStartTime = GetCurrentEventTime();
    fNextFire = inDelay;
    SetEventLoopTimerNextFireTime(fTimerRef, inDelay);
}

void CTimer::Insert()
{
    if (!cgHead) {
        cgHead = this;
        return;
    }
    CTimer* last = cgHead;
    while (last->fNext)
        last = last->fNext;
    Link(last, this);
}

void CTimer::Remove()
{
    if (this == cgHead) {
        cgHead = fNext;
        if (cgHead)
            cgHead->fPrev = nullptr;
    } else {
        if (fPrev)
            fPrev->fNext = fNext;
        if (fNext)
            fNext->fPrev = fPrev;
    }
    fNext = nullptr;
    fPrev = nullptr;
}

CTimer* CTimer::Link(CTimer* inA, CTimer* inB)
{
    if (inA)
        inA->fNext = inB;
    if (inB)
        inB->fPrev = inA;
    return inB;
}

void CTimer::SuspendAll()
{
    for (CTimer* timer = cgHead; timer; timer = timer->fNext)
        timer->Suspend();
}

void CTimer::ResumeAll()
{
    for (CTimer* timer = cgHead; timer; timer = timer->fNext)
        timer->Resume();
}

void CTimer::NavDialogOpen()
{
    if (!HasMacOSX())
        SuspendAll();
}

void CTimer::NavDialogClosed()
{
    if (!HasMacOSX())
        ResumeAll();
}

void CTimerCallback(EventLoopTimerRef inTimer, void* inUserData)
{
    CTimer* const timer = static_cast<CTimer*>(inUserData);
    timer->fFired = true;
    if (timer->fProc)
        timer->fProc(inTimer, timer->fUserData);
    else
        timer->DoTimer(inTimer, timer->fUserData);
}

OSStatus CTimerMenuEventHandler(EventHandlerCallRef, EventRef inEvent, void*)
{
    switch (GetEventKind(inEvent)) {
    case kEventMenuBeginTracking: CTimer::SuspendAll(); break;
    case kEventMenuEndTracking: CTimer::ResumeAll(); break;
    }
    return eventNotHandledErr;
}
