// Mouse, keyboard and time as they are now, whatever the queue holds.
#include "Host.h"
#include "events/Input.h"
#include "events/Loop.h"
#include "events/Timers.h"

#include <Carbon/CarbonEvents.h>

#include <algorithm>
#include <cstring>

using namespace lampblack;
using namespace lampblack::events;

void GetKeys(KeyMap outKeys)
{
    if (!outKeys)
        return;
    TakeInputInPolls();
    KeyMapByteArray bytes = {};
    for (UInt16 key = 0; key < 128; ++key)
        if (host::Machine().keyIsDown(key))
            bytes[key >> 3] |= (UInt8)(1 << (key & 7));
    memcpy(outKeys, bytes, sizeof bytes);
}

UInt32 GetCurrentKeyModifiers(void)
{
    TakeInputInPolls();
    return host::Machine().modifiers();
}

UInt32 GetCurrentButtonState(void)
{
    TakeInputInPolls();
    return host::Machine().buttons();
}

Point* GetGlobalMouse(Point* outGlobalMouse)
{
    if (!outGlobalMouse)
        return nullptr;
    TakeInputInPolls();
    *outGlobalMouse = host::Machine().mouse();
    return outGlobalMouse;
}

Boolean Button(void)
{
    return GetCurrentButtonState() & 1;
}

static Event* MouseUpInQueue()
{
    static const EventTypeSpec kUp = { kEventClassMouse, kEventMouseUp };
    static const TypeList kList = { 1, &kUp };
    TakeAllInput();
    return gQueue.First(MatchTypes(kList));
}

Boolean StillDown(void)
{
    return !MouseUpInQueue() && (host::Machine().buttons() & 1);
}

Boolean WaitMouseUp(void)
{
    Event* up = MouseUpInQueue();
    if (!up)
        return host::Machine().buttons() & 1;
    Take(up);
    Release(up);
    return false;
}

UInt32 TickCount(void)
{
    return (UInt32)(SInt64)(host::Now() * 60);
}

// Waits without handling events or timers; the screen is kept up to date meanwhile.
void Delay(UInt32 inTicks, UInt32* outFinalTicks)
{
    const double end = host::Now() + inTicks / 60.0;
    for (double now = host::Now(); now < end; now = host::Now()) {
        const double hooks = RunWaitHooks(now);
        TakeAllInput(); // the wait would end at once for input that stays there
        host::Machine().wait(std::min(end, hooks));
    }
    if (outFinalTicks)
        *outFinalTicks = TickCount();
}

void Microseconds(UnsignedWide* outMicroseconds)
{
    if (!outMicroseconds)
        return;
    const UInt64 now = (UInt64)(host::Now() * 1e6);
    outMicroseconds->lo = (UInt32)now;
    outMicroseconds->hi = (UInt32)(now >> 32);
}

UInt32 GetDblTime(void)
{
    return 30;
}

UInt32 GetCaretTime(void)
{
    return 32;
}
