// Which windows are active, and which one has the keyboard.
#ifndef LAMPBLACK_WINDOWS_ACTIVATION_H
#define LAMPBLACK_WINDOWS_ACTIVATION_H

#include "WindowRecord.h"

namespace lampblack::windows {

// Makes activation agree with order and visibility: the old front window hears that it is deactivated before
// the new one hears that it is activated. Call after every change of either.
void SettleActivation();
// A window goes away or is hidden: it is deactivated, whatever is in front.
void Deactivate(WindowRecord& inWindow);
// Takes back an activation that nobody took from the queue yet.
void CancelActivation(WindowRecord& ioWindow);
void SetHilited(WindowRecord& inWindow, bool inHilited);

// The desktop gave or took this process's keyboard.
void ApplicationActivated(bool inActive);
bool IsApplicationActive();

} // namespace lampblack::windows

#endif
