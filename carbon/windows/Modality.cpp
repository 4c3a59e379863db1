// Modality and modal loops.
#include "Modality.h"

#include "Sheets.h"
#include "WindowList.h"

#include <events/ModalLoop.h>

#include <algorithm>

namespace lampblack::windows {

namespace {

std::vector<WindowRef> gStates; // BeginAppModalStateForWindow, innermost last

struct Loop {
    WindowRef window;
    events::ModalLoop loop;
    bool over = false;
};
std::vector<Loop*> gLoops; // running, innermost last

bool IsModal(const WindowRecord& inWindow)
{
    return inWindow.OnScreen() && !inWindow.internal &&
           (inWindow.modality == kWindowModalityAppModal || inWindow.modality == kWindowModalitySystemModal);
}

// The modal window in front: of those shown, and of the states begun.
WindowRecord* FrontModal()
{
    WindowRecord* front = FirstWindow(IsModal);
    WindowRecord* state = gStates.empty() ? nullptr : Find(gStates.back());
    if (!state || !state->OnScreen())
        return front;
    return front && List().IsInFront(*front, *state) ? front : state;
}

bool EndLoop(WindowRef inWindow)
{
    for (auto loop = gLoops.rbegin(); loop != gLoops.rend(); ++loop) {
        if ((*loop)->window != inWindow || (*loop)->over)
            continue;
        (*loop)->over = true;
        (*loop)->loop.Quit();
        return true;
    }
    return false;
}

} // namespace

bool IsBlocked(WindowRecord& inWindow)
{
    if (inWindow.internal)
        return false;
    if (HasSheet(inWindow))
        return true;
    const WindowRecord* modal = FrontModal();
    if (!modal || modal == &inWindow || List().IsInFront(inWindow, *modal))
        return false;
    return !(inWindow.unavailable && Find(inWindow.unavailable) == modal); // a sheet of the modal window
}

bool IsAppModal()
{
    return FrontModal() != nullptr;
}

void LeaveModality(WindowRef inWindow)
{
    std::erase(gStates, inWindow);
    while (EndLoop(inWindow)) {
    }
}

} // namespace lampblack::windows

using namespace lampblack::windows;

OSStatus BeginAppModalStateForWindow(WindowRef inWindow)
{
    if (!Find(inWindow))
        return errInvalidWindowRef;
    gStates.push_back(inWindow);
    return noErr;
}

OSStatus EndAppModalStateForWindow(WindowRef inWindow)
{
    const auto found = std::find(gStates.rbegin(), gStates.rend(), inWindow);
    if (found == gStates.rend())
        return Find(inWindow) ? (OSStatus)paramErr : (OSStatus)errInvalidWindowRef;
    gStates.erase(std::next(found).base());
    return noErr;
}

OSStatus RunAppModalLoopForWindow(WindowRef inWindow)
{
    const OSStatus begun = BeginAppModalStateForWindow(inWindow);
    if (begun != noErr)
        return begun;
    Loop loop = { .window = inWindow, .loop = {} };
    gLoops.push_back(&loop);
    loop.loop.Run(); // ends by QuitAppModalLoopForWindow, or because the application ends
    gLoops.pop_back();
    EndAppModalStateForWindow(inWindow);
    return noErr;
}

OSStatus QuitAppModalLoopForWindow(WindowRef inWindow)
{
    if (!Find(inWindow))
        return errInvalidWindowRef;
    return EndLoop(inWindow) ? (OSStatus)noErr : (OSStatus)paramErr;
}

OSStatus GetWindowModality(WindowRef inWindow, WindowModality* outModality, WindowRef* outUnavailableWindow)
{
    const WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (outModality)
        *outModality = window->modality;
    if (outUnavailableWindow)
        *outUnavailableWindow = window->unavailable;
    return noErr;
}

OSStatus SetWindowModality(WindowRef inWindow, WindowModality inModality, WindowRef inUnavailableWindow)
{
    WindowRecord* window = Find(inWindow);
    if (!window)
        return errInvalidWindowRef;
    if (inModality > kWindowModalityWindowModal ||
        (inModality == kWindowModalityWindowModal && !Find(inUnavailableWindow)))
        return paramErr;
    window->modality = inModality;
    window->unavailable = inModality == kWindowModalityWindowModal ? inUnavailableWindow : nullptr;
    return noErr;
}
