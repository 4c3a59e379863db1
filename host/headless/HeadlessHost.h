// The headless machine: a screen in memory, a clock that may be virtual, and a user who acts by calls.
#ifndef LAMPBLACK_HOST_HEADLESSHOST_H
#define LAMPBLACK_HOST_HEADLESSHOST_H

#include "../Waiter.h"
#include <Host.h>

#include <bitset>
#include <deque>
#include <vector>

namespace lampblack::host {

struct HeadlessScreen {
    bool open = false;
    int width = 0, height = 0;
    std::vector<uint32_t> pixels;
    SInt32 themeCursor = 0;
    ShownCursor cursor;
};

struct HeadlessDesk {
    std::string clipboard;
    UInt32 clipboardSerial = 0;
    std::vector<OSType> sounds;
    std::vector<std::string> urls, spoken;
};

// Time that moves only while somebody waits.
class VirtualClock {
public:
    double Now();
    void MoveTo(double second);

private:
    double fNow = 1000; // seconds; any start will do that is not the zero of an unset time
    long fPolls = 0;    // calls of Now since the last wait
};

// What the user did and the machine has not taken yet, and how mouse and keyboard stand after what was taken.
class HeadlessUser {
public:
    // Modifiers are held for this input only; 0 leaves those of HoldKey.
    void Queue(const Input&, UInt32 modifiers = 0);
    bool HasQueued() const { return !fQueue.empty(); }
    bool Take(double now, Input* out);
    bool LetGo();                 // of a button that is held, where the mouse is
    void Rest() { fPassing = 0; } // nothing more to do: the fingers leave the modifiers

    Point Mouse() const { return fMouse; }
    UInt32 Modifiers() const { return fHeld | fPassing; }
    UInt32 Buttons() const { return fButtons; }
    bool KeyIsDown(UInt16 virtualKey) const;
    bool IsActive() const { return fActive; }

private:
    struct Action {
        Input input;
        UInt32 modifiers;
    };
    void Apply(Input& ioInput);
    void PressOrRelease(Input& ioInput);

    std::deque<Action> fQueue;
    Point fMouse = { 0, 0 };
    UInt32 fHeld = 0, fPassing = 0;
    UInt32 fButtons = 0;
    std::bitset<128> fKeys;
    bool fActive = true;
};

struct HeadlessHost {
    bool isVirtual = false;
    HeadlessScreen screen;
    HeadlessDesk desk;
    VirtualClock clock;
    HeadlessUser user;
    Waiter waiter;
};

HeadlessHost& TheHeadlessHost();

} // namespace lampblack::host

#endif
