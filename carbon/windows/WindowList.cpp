// The order of all windows.
#include "WindowList.h"

#include <Host.h>

#include <algorithm>

namespace lampblack::windows {

namespace {

// Where the layer begins and ends in an order from the front to the back.
size_t LayerStart(const std::vector<WindowRecord*>& inOrder, Layer inLayer)
{
    return (size_t)(std::find_if(inOrder.begin(), inOrder.end(),
                                 [=](const WindowRecord* window) { return window->layer <= inLayer; }) -
                    inOrder.begin());
}

size_t LayerEnd(const std::vector<WindowRecord*>& inOrder, Layer inLayer)
{
    return (size_t)(std::find_if(inOrder.begin(), inOrder.end(),
                                 [=](const WindowRecord* window) { return window->layer < inLayer; }) -
                    inOrder.begin());
}

} // namespace

WindowList& List()
{
    static WindowList list = [] {
        host::Machine(); // is chosen with the first call
        return WindowList();
    }();
    return list;
}

size_t WindowList::IndexOf(const WindowRecord& inWindow) const
{
    return (size_t)(std::find(fOrder.begin(), fOrder.end(), &inWindow) - fOrder.begin());
}

void WindowList::AddInFront(WindowRecord& inWindow)
{
    fOrder.insert(fOrder.begin() + (long)LayerStart(fOrder, inWindow.layer), &inWindow);
}

void WindowList::Remove(WindowRecord& inWindow)
{
    std::erase(fOrder, &inWindow);
}

bool WindowList::MoveTo(WindowRecord& inWindow, size_t inIndex)
{
    const size_t old = IndexOf(inWindow);
    if (old == inIndex || old == fOrder.size())
        return false;
    fOrder.erase(fOrder.begin() + (long)old);
    fOrder.insert(fOrder.begin() + (long)std::min(inIndex, fOrder.size()), &inWindow);
    return true;
}

bool WindowList::MoveToFront(WindowRecord& inWindow)
{
    return MoveTo(inWindow, LayerStart(fOrder, inWindow.layer));
}

bool WindowList::MoveBehind(WindowRecord& inWindow, const WindowRecord* inBehind)
{
    if (inBehind == &inWindow)
        return false;
    std::vector<WindowRecord*> others = fOrder;
    std::erase(others, &inWindow);
    const auto found = std::find(others.begin(), others.end(), inBehind);
    size_t index = LayerEnd(others, inWindow.layer);
    if (inBehind && found != others.end())
        index = std::clamp((size_t)(found - others.begin()) + 1, LayerStart(others, inWindow.layer), index);
    return MoveTo(inWindow, index);
}

bool WindowList::MoveInFrontOf(WindowRecord& inWindow, const WindowRecord& inOther)
{
    if (&inOther == &inWindow || inOther.layer != inWindow.layer)
        return false;
    std::vector<WindowRecord*> others = fOrder;
    std::erase(others, &inWindow);
    return MoveTo(inWindow, (size_t)(std::find(others.begin(), others.end(), &inOther) - others.begin()));
}

WindowRecord* WindowList::Next(const WindowRecord& inWindow) const
{
    const size_t index = IndexOf(inWindow);
    return index + 1 < fOrder.size() ? fOrder[index + 1] : nullptr;
}

WindowRecord* WindowList::Previous(const WindowRecord& inWindow) const
{
    const size_t index = IndexOf(inWindow);
    return index > 0 && index < fOrder.size() ? fOrder[index - 1] : nullptr;
}

bool WindowList::IsInFront(const WindowRecord& inWindow, const WindowRecord& inOther) const
{
    return IndexOf(inWindow) < IndexOf(inOther);
}

} // namespace lampblack::windows
