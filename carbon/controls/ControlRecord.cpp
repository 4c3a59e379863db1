// Life of controls and of a window's share of them.
#include "controls/ControlRecord.h"

#include "controls/ControlEvents.h"
#include "controls/Drawing.h"
#include "controls/Focus.h"
#include "controls/Idling.h"
#include "controls/Kind.h"
#include "controls/WindowHandler.h"
#include "events/EventTargets.h"
#include "memory/ReferenceTable.h"

#include <Carbon/MacWindows.h>

#include <algorithm>
#include <map>
#include <utility>

namespace lampblack::controls {

namespace {

// Both live as long as the process: controls may be disposed of by other static objects at its end.
memory::ReferenceTable<Control>& Table()
{
    static auto& table = *new memory::ReferenceTable<Control>;
    return table;
}

std::map<WindowRef, std::unique_ptr<WindowControls>>& Windows()
{
    static auto& windows = *new std::map<WindowRef, std::unique_ptr<WindowControls>>;
    return windows;
}

void Detach(Control& ioControl)
{
    std::vector<Control*>& list = ioControl.parent ? ioControl.parent->children : ioControl.owner->flat;
    list.erase(std::remove(list.begin(), list.end(), &ioControl), list.end());
    ioControl.parent = nullptr;
}

// Nobody may go on pointing at a control that is about to end.
void ForgetRoles(Control& ioControl)
{
    WindowControls& owner = *ioControl.owner;
    if (owner.focus == &ioControl)
        DropFocus(owner);
    if (owner.defaultButton == &ioControl)
        owner.defaultButton = nullptr;
    if (owner.cancelButton == &ioControl)
        owner.cancelButton = nullptr;
    if (owner.root == &ioControl)
        owner.root = nullptr;
    ForEachControl(owner, [&](Control& other) {
        if (other.supervisor == &ioControl)
            other.supervisor = nullptr;
    });
}

void EndRecord(Control& ioControl)
{
    ioControl.disposed = true;
    StopIdling(ioControl);
    if (EventTargetRef target = std::exchange(ioControl.target, nullptr))
        events::DisposeEventTarget(target);
    ioControl.window = nullptr;
    ioControl.owner = nullptr;
    if (ioControl.pins == 0)
        Table().Delete(&ioControl);
}

void Fill(Control& ioControl, const NewControlInfo& inInfo)
{
    ioControl.window = inInfo.window;
    ioControl.bounds = inInfo.bounds;
    ioControl.title = inInfo.title;
    ioControl.visible = inInfo.visible;
    ioControl.value = inInfo.value;
    ioControl.minimum = inInfo.minimum;
    ioControl.maximum = inInfo.maximum;
    ioControl.procID = inInfo.procID;
    ioControl.reference = inInfo.reference;
}

void Attach(Control& ioControl, WindowControls& ioOwner)
{
    ioControl.owner = &ioOwner;
    ioControl.parent = ioOwner.root;
    (ioOwner.root ? ioOwner.root->children : ioOwner.flat).push_back(&ioControl);
}

} // namespace

Control* Find(ControlRef inControl)
{
    Control* control = Table().Find(inControl);
    return control && !control->disposed ? control : nullptr;
}

StPin::StPin(Control* inControl) : fControl(inControl)
{
    if (fControl)
        ++fControl->pins;
}

StPin::~StPin()
{
    if (fControl && --fControl->pins == 0 && fControl->disposed)
        Table().Delete(fControl);
}

WindowControls* FindWindowControls(WindowRef inWindow)
{
    auto found = Windows().find(inWindow);
    return found == Windows().end() ? nullptr : found->second.get();
}

WindowControls* WindowControlsFor(WindowRef inWindow)
{
    if (WindowControls* known = FindWindowControls(inWindow))
        return known;
    if (!IsValidWindowPtr(inWindow))
        return nullptr;
    auto& made = Windows()[inWindow];
    made = std::make_unique<WindowControls>();
    made->window = inWindow;
    InstallWindowHandler(inWindow);
    return made.get();
}

void ForgetWindow(WindowControls* inControls)
{
    if (!inControls)
        return;
    inControls->focus = nullptr;
    if (inControls->root)
        Destroy(inControls->root);
    while (!inControls->flat.empty())
        Destroy(inControls->flat.back());
    Windows().erase(inControls->window);
}

Control* MakeControl(const NewControlInfo& inInfo, OSStatus* outWhy)
{
    OSStatus why = noErr;
    Control* control = nullptr;
    WindowControls* owner = WindowControlsFor(inInfo.window);
    if (!owner)
        why = errInvalidWindowRef;
    else if (!HasKind(inInfo.procID))
        why = paramErr;
    if (why == noErr) {
        control = Table().New();
        Fill(*control, inInfo);
        Attach(*control, *owner);
        control->kind = NewKind(inInfo.procID, *control);
        StDrawing drawing(*control);
        why = control->kind->Initialize(inInfo);
    }
    if (why != noErr && control) {
        Detach(*control);
        EndRecord(*control);
        control = nullptr;
    }
    if (outWhy)
        *outWhy = why;
    return control;
}

Control* MakeRoot(WindowControls& ioOwner)
{
    Control* root = Table().New();
    root->window = ioOwner.window;
    GetWindowPortBounds(ioOwner.window, &root->bounds);
    root->procID = kControlUserPaneProc;
    root->owner = &ioOwner;
    root->kind = NewRoot(*root);
    ioOwner.root = root;
    return root;
}

void Destroy(Control* ioControl)
{
    if (!ioControl || ioControl->disposed)
        return;
    StPin pin(ioControl);
    NotifyDispose(*ioControl);
    if (!pin.Alive())
        return;
    while (!ioControl->children.empty())
        Destroy(ioControl->children.back());
    ForgetRoles(*ioControl);
    if (ioControl->parent || ioControl->owner->root != ioControl)
        Detach(*ioControl);
    EndRecord(*ioControl);
}

bool IsVisible(const Control& inControl)
{
    for (const Control* control = &inControl; control; control = control->parent)
        if (!control->visible)
            return false;
    return true;
}

bool IsEnabled(const Control& inControl)
{
    for (const Control* control = &inControl; control; control = control->parent)
        if (!control->enabled)
            return false;
    return true;
}

bool IsActive(const Control& inControl)
{
    for (const Control* control = &inControl; control; control = control->parent)
        if (!control->active || control->hilite == kControlInactivePart ||
            control->hilite == kControlDisabledPart)
            return false;
    return true;
}

bool HasFocus(const Control& inControl)
{
    return inControl.owner && inControl.owner->focus == &inControl && IsActive(inControl);
}

bool IsInside(const Control& inControl, const Control& inContainer)
{
    for (const Control* control = &inControl; control; control = control->parent)
        if (control == &inContainer)
            return true;
    return false;
}

} // namespace lampblack::controls
