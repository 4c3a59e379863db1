// The order of all windows, from the front to the back. It knows layers and order and nothing else.
#ifndef LAMPBLACK_WINDOWS_WINDOWLIST_H
#define LAMPBLACK_WINDOWS_WINDOWLIST_H

#include "WindowRecord.h"

#include <vector>

namespace lampblack::windows {

class WindowList {
public:
    void AddInFront(WindowRecord& inWindow); // of its layer
    void Remove(WindowRecord& inWindow);
    // Each answers whether the order changed. No window leaves its layer.
    bool MoveToFront(WindowRecord& inWindow);
    bool MoveBehind(WindowRecord& inWindow, const WindowRecord* inBehind);   // null: behind all of its layer
    bool MoveInFrontOf(WindowRecord& inWindow, const WindowRecord& inOther); // just in front, same layer

    WindowRecord* Front() const { return fOrder.empty() ? nullptr : fOrder.front(); }
    WindowRecord* Next(const WindowRecord& inWindow) const;
    WindowRecord* Previous(const WindowRecord& inWindow) const;
    bool IsInFront(const WindowRecord& inWindow, const WindowRecord& inOther) const;
    const std::vector<WindowRecord*>& Order() const { return fOrder; }

private:
    size_t IndexOf(const WindowRecord& inWindow) const;  // fOrder.size() when it is not there
    bool MoveTo(WindowRecord& inWindow, size_t inIndex); // an index in the order without the window

    std::vector<WindowRecord*> fOrder;
};

WindowList& List();

// The first window from the front that satisfies the condition, or null.
template <class Condition>
WindowRecord* FirstWindow(Condition inCondition)
{
    for (WindowRecord* window : List().Order())
        if (inCondition(*window))
            return window;
    return nullptr;
}

} // namespace lampblack::windows

#endif
