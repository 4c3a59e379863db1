// From the machine's events to Input, in order. Keys and the text that they type arrive apart and leave as
// one.
#ifndef LAMPBLACK_HOST_TRANSLATOR_H
#define LAMPBLACK_HOST_TRANSLATOR_H

#include "ClickCounter.h"
#include "Keys.h"
#include <Host.h>

#include <deque>

namespace lampblack::host {

class Translator {
public:
    explicit Translator(CommandKey inCommand) : fKeys(inCommand) {}

    // The time of what follows.
    void Begin(double inNow) { fNow = inNow; }
    // Positions in mouse events are screen pixels already.
    void Translate(const SDL_Event&);
    void End() { FlushKey(); } // all events of this moment have been seen

    void Report(Input::Kind kind, Point where = { 0, 0 }); // something that is no event of the machine
    bool Take(Input* out);
    bool HasInput() const { return !fInputs.empty(); }
    const KeyMap& Keys() const { return fKeys; }

private:
    void Key(const SDL_KeyboardEvent&);
    void ModifierKey(UInt16 key, bool repeat);
    void KeyDown(UInt16 key, const SDL_KeyboardEvent&);
    void KeyUp(UInt16 key);
    void Text(const char* utf8);
    void PushText(const Input&);
    void FlushKey();
    void PushKey(const Input& pressed);
    void Motion(const SDL_MouseMotionEvent&);
    void Button(const SDL_MouseButtonEvent&);
    void Wheel(const SDL_MouseWheelEvent&);
    void Focus(bool gained);
    Input Start(Input::Kind) const;

    KeyMap fKeys;
    std::deque<Input> fInputs;
    ClickCounter fClicks;
    double fNow = 0;
    UInt32 fModifiers = 0;
    Point fWhere = { 0, 0 };
    bool fActive = true;  // a process is in front until the desktop says otherwise
    bool fHasKey = false; // fKey waits for its text
    Input fKey;
    UniChar fTyped[128] = {}; // by virtual key: what it typed when it went down
};

} // namespace lampblack::host

#endif
