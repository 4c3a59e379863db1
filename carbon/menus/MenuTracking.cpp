// Choosing from menus. A press that is held chooses where it is released; a click leaves the menu open until
// the next one. The arrow keys, Return and Escape work in both.
#include "MenuTracking.h"

#include "Commands.h"
#include "MenuSending.h"
#include "OpenMenus.h"
#include "PopUpMenu.h"

#include <Carbon/Events.h>
#include <Carbon/MacWindows.h>
#include <Host.h>
#include <events/EventTargets.h>
#include <events/Routing.h>
#include <events/Runs.h>
#include <windows/WindowEvents.h>

#include <cstdlib>

namespace lampblack::menus {

namespace {

constexpr EventTypeSpec kTracked[] = {
    { kEventClassMouse, kEventMouseDown },           { kEventClassMouse, kEventMouseUp },
    { kEventClassMouse, kEventMouseMoved },          { kEventClassMouse, kEventMouseDragged },
    { kEventClassKeyboard, kEventRawKeyDown },       { kEventClassKeyboard, kEventRawKeyRepeat },
    { kEventClassApplication, kEventAppDeactivated }
};
constexpr EventTypeSpec kNothing[] = { { 'none', 0 } };
constexpr EventTimeout kScrollPause = 0.05, // for each row
    kFlash = 0.06;
constexpr double kClickTime = 0.5; // a release later than this chooses
constexpr int kClickDistance = 4;

class Tracker {
public:
    Choice RunBar(Point inStart);
    Choice RunPopUp(MenuRef inMenu, Point inTopLeft, MenuItemIndex inItem, short inLeastWidth);

private:
    Choice Run(Point inStart);
    EventTimeout Scroll();
    void Handle(EventRef inEvent);
    bool IsNearStart(Point inWhere) const;
    bool RestsAtStart(Point inWhere);
    void Follow(Point inWhere);
    void OnPress(Point inWhere);
    void OnRelease(Point inWhere, double inTime);
    void OnKey(UInt16 inKey, bool inCommand);
    void OpenTitle(const Title& inTitle);
    void StepTitle(int inBy);
    void StepRow(int inBy);
    void Descend();
    void Ascend();
    void ChooseSelected();
    void Flash();

    OpenMenus fOpen;
    bool fBar = false, fSticky = false, fLeftStart = false, fDone = false;
    Point fStart = { 0, 0 }, fMouse = { 0, 0 };
    bool fMouseMoved = false; // since the menu came or a key was pressed: then it scrolls
    double fPressed = 0, fScrollDue = 0;
    std::vector<MenuRef> fTitle; // whose menu hangs open from the bar
    UInt32 fContext = 0, fModifiers = 0;
    Choice fChoice;
};

void Tracker::OpenTitle(const Title& inTitle)
{
    if (fTitle == inTitle.menus && fOpen.Count())
        return;
    fOpen.CloseTo(0);
    fTitle = inTitle.menus;
    const Point corner = { inTitle.bounds.bottom, inTitle.bounds.left };
    HiliteTitle(fTitle.back());
    fOpen.Open(fTitle, corner, fContext);
}

// --- The mouse

bool Tracker::IsNearStart(Point inWhere) const
{
    return std::abs(inWhere.h - fStart.h) <= kClickDistance &&
           std::abs(inWhere.v - fStart.v) <= kClickDistance;
}

// A pop-up menu near the end of the screen lies with another item under the pointer than the chosen one, which a
// hand that trembles does not mean.
bool Tracker::RestsAtStart(Point inWhere)
{
    fLeftStart = fLeftStart || fBar || fSticky || !IsNearStart(inWhere);
    return !fLeftStart;
}

void Tracker::Follow(Point inWhere)
{
    if (RestsAtStart(inWhere))
        return;
    fMouseMoved = fMouseMoved || inWhere.h != fMouse.h || inWhere.v != fMouse.v;
    fMouse = inWhere;
    const int menu = fOpen.MenuAt(inWhere);
    if (menu >= 0) {
        fOpen.Select((size_t)menu, fOpen.RowAt(fOpen.At((size_t)menu), inWhere));
        fOpen.OpenSubmenu((size_t)menu);
        return;
    }
    const Title* title = fBar ? TitleAt(inWhere) : nullptr;
    if (title)
        return OpenTitle(*title);
    if (fOpen.Count())
        fOpen.Select(fOpen.Count() - 1, -1);
}

// In a menu that stays open by itself, a press outside of it ends the tracking.
void Tracker::OnPress(Point inWhere)
{
    const bool inside = fOpen.MenuAt(inWhere) >= 0;
    const Title* title = fBar ? TitleAt(inWhere) : nullptr;
    const bool again = title && title->menus == fTitle;
    fDone = fSticky && !inside && (!title || again);
    fStart = inWhere;
    fPressed = host::Now();
    if (!fDone)
        Follow(inWhere);
}

void Tracker::OnRelease(Point inWhere, double inTime)
{
    Follow(inWhere);
    if (!fSticky && IsNearStart(inWhere) && inTime - fPressed < kClickTime) {
        fSticky = true;
        return;
    }
    if (fOpen.MenuAt(inWhere) >= 0 || RestsAtStart(inWhere))
        return ChooseSelected();
    fDone = !(fBar && TitleAt(inWhere) && fSticky);
}

// --- The keyboard

void Tracker::StepTitle(int inBy)
{
    const std::vector<Title>& titles = Titles();
    const int count = (int)titles.size();
    for (int i = 0; i < count; ++i) {
        if (titles[(size_t)i].menus != fTitle)
            continue;
        const Title next = titles[(size_t)((i + inBy + count) % count)];
        return OpenTitle(next);
    }
}

void Tracker::StepRow(int inBy)
{
    if (!fOpen.Count())
        return;
    const OpenMenu& menu = fOpen.Last();
    const int count = (int)menu.layout.rows.size();
    int row = menu.selected < 0 && inBy < 0 ? count : menu.selected;
    for (row += inBy; row >= 0 && row < count; row += inBy)
        if (CanChoose(menu.layout.rows[(size_t)row])) {
            fOpen.Reveal(row);
            return fOpen.Select(fOpen.Count() - 1, row);
        }
}

void Tracker::Descend()
{
    if (fOpen.Count() && fOpen.OpenSubmenu(fOpen.Count() - 1))
        return StepRow(1);
    if (fBar)
        StepTitle(1);
}

void Tracker::Ascend()
{
    if (fOpen.Count() > 1)
        return fOpen.CloseTo(fOpen.Count() - 1);
    if (fBar)
        StepTitle(-1);
}

void Tracker::OnKey(UInt16 inKey, bool inCommand)
{
    fSticky = true;
    fMouseMoved = false;
    switch (inKey) {
    case kVK_Escape: fDone = true; return;
    case kVK_DownArrow: return StepRow(1);
    case kVK_UpArrow: return StepRow(-1);
    case kVK_RightArrow: return Descend();
    case kVK_LeftArrow: return Ascend();
    case kVK_Return:
    case kVK_ANSI_KeypadEnter:
    case kVK_Space: return ChooseSelected();
    case kVK_ANSI_Period: fDone = fDone || inCommand; return;
    default: return;
    }
}

// --- The end

void Tracker::ChooseSelected()
{
    if (!fOpen.Count())
        return;
    OpenMenu& menu = fOpen.Last();
    const Row* row = menu.selected >= 0 ? &menu.layout.rows[(size_t)menu.selected] : nullptr;
    if (!row || !CanChoose(*row)) {
        fDone = !fSticky || (row && !ItemOf(*row));
        return;
    }
    const MenuItem* item = ItemOf(*row);
    if (SubmenuOf(*item) && !item->Has(kMenuItemAttrSubmenuParentChoosable)) {
        fSticky = true;
        fOpen.OpenSubmenu(fOpen.Count() - 1);
        return;
    }
    fChoice = { row->menu, row->item, fModifiers };
    fDone = true;
    Flash();
}

// The item blinks, so that the eye sees what was chosen.
void Tracker::Flash()
{
    const size_t menu = fOpen.Count() - 1;
    for (bool lit : { false, true }) {
        EventRef none = nullptr;
        fOpen.FlashSelected(menu, lit);
        ReceiveNextEvent(1, kNothing, kFlash, true, &none);
    }
}

void Tracker::Handle(EventRef inEvent)
{
    fModifiers = windows::EventModifiers(inEvent);
    if (GetEventClass(inEvent) == kEventClassKeyboard) {
        UInt32 key = 0;
        windows::GetParameter(inEvent, kEventParamKeyCode, typeUInt32, &key);
        return OnKey((UInt16)key, fModifiers & cmdKey);
    }
    if (GetEventClass(inEvent) == kEventClassApplication) {
        SendEventToEventTarget(inEvent, GetEventDispatcherTarget());
        fDone = true;
        return;
    }
    const Point where = windows::EventLocation(inEvent);
    switch (GetEventKind(inEvent)) {
    case kEventMouseDown: return OnPress(where);
    case kEventMouseUp: return OnRelease(where, GetEventTime(inEvent));
    default: return Follow(where);
    }
}

// Moves a menu that does not fit on, one row at a time, while the pointer is on one of its arrows. Answers for
// how long there is nothing to do.
EventTimeout Tracker::Scroll()
{
    if (!fMouseMoved || !fOpen.IsOnArrow(fMouse))
        return kEventDurationForever;
    const double now = host::Now();
    if (now >= fScrollDue) {
        fOpen.ScrollAt(fMouse);
        fScrollDue = now + kScrollPause;
    }
    return fScrollDue - now;
}

// A release that never comes leaves the menu open as a click does.
Choice Tracker::Run(Point inStart)
{
    fStart = inStart;
    fPressed = host::Now();
    fSticky = fSticky || !host::Machine().buttons();
    EventTypeSpec release = { kEventClassMouse, kEventMouseUp };
    if (EventRef waiting = AcquireFirstMatchingEventInQueue(GetMainEventQueue(), 1, &release, 0)) {
        PostEventToQueue(GetMainEventQueue(), waiting, kEventPriorityStandard);
        ReleaseEvent(waiting);
        fSticky = false;
    }
    while (!fDone) {
        const EventTimeout pause = Scroll();
        EventRef event = nullptr;
        const OSStatus status = ReceiveNextEvent(std::size(kTracked), kTracked, pause, true, &event);
        if (status == eventLoopQuitErr)
            break;
        if (status != noErr)
            continue;
        Handle(event);
        ReleaseEvent(event);
    }
    return fChoice;
}

Choice Tracker::RunBar(Point inStart)
{
    const Title* title = TitleAt(inStart);
    if (!title)
        return {};
    const MenuRef menu = title->menus.back();
    fBar = true;
    fContext = kMenuContextMenuBar | kMenuContextPullDown | kMenuContextMenuBarTracking;
    SendTracking(menu, kEventMenuBeginTracking, fContext);
    fMouse = inStart;
    OpenTitle(*title);
    const Choice choice = Run(inStart);
    fOpen.CloseTo(0);
    SendTracking(menu, kEventMenuEndTracking, fContext);
    return choice;
}

Choice Tracker::RunPopUp(MenuRef inMenu, Point inTopLeft, MenuItemIndex inItem, short inLeastWidth)
{
    fContext = kMenuContextPopUp | kMenuContextPopUpTracking;
    SendTracking(inMenu, kEventMenuBeginTracking, fContext);
    const Layout layout = LayOut({ inMenu });
    Point corner = inTopLeft;
    int initial = -1;
    for (size_t row = 0; row < layout.rows.size(); ++row)
        if (inItem && layout.rows[row].item == inItem)
            initial = (int)row;
    if (initial >= 0)
        corner.v = (short)(corner.v - layout.rows[(size_t)initial].bounds.top);
    const Point mouse = host::Machine().mouse();
    fMouse = mouse;
    if (fOpen.Open({ inMenu }, corner, fContext, inLeastWidth)) {
        fOpen.Reveal(initial);
        fOpen.Select(0, initial);
        Run(mouse);
        fOpen.CloseTo(0);
    }
    SendTracking(inMenu, kEventMenuEndTracking, fContext);
    return fChoice;
}

// --- The application's part

// Only a loop that dispatches events by itself answers for the application; one that takes its events with
// WaitNextEvent calls MenuSelect and MenuKey itself.
bool IsDispatching()
{
    for (const events::LoopRun* run = events::InnermostRun(); run; run = run->outer)
        if (run->kind != events::LoopRun::Kind::Current)
            return true;
    return false;
}

OSStatus OnMouseDown(EventHandlerCallRef, EventRef inEvent, void*)
{
    const Point where = windows::EventLocation(inEvent);
    if (!IsDispatching() || FindWindow(where, nullptr) != inMenuBar)
        return eventNotHandledErr;
    MenuSelect(where);
    HiliteMenu(0);
    return noErr;
}

bool FilterKey(EventRef inEvent)
{
    return IsDispatching() && ChooseByKey(inEvent);
}

// An application around WaitNextEvent does not know the application menu: its own item with Command-Q or the
// command 'quit' stands for the one chosen there, so that it quits as from its own menu.
Choice OwnQuitItem(const Choice& inChosen)
{
    if (IsDispatching() || inChosen.menu != ApplicationMenu())
        return inChosen;
    Choice own = inChosen;
    auto visit = [&](MenuRef menu, MenuItemIndex number) {
        const MenuItem* item = FindItem(menu, number);
        if (menu == ApplicationMenu() || (item->command != kHICommandQuit && item->key != 'Q'))
            return false;
        own.menu = menu;
        own.item = number;
        return true;
    };
    const MenuItem* chosen = FindItem(inChosen.menu, inChosen.item);
    if (chosen && chosen->command == kHICommandQuit)
        Walk(visit).Run(nullptr);
    return own;
}

SInt32 Packed(const Choice& inChoice)
{
    return (SInt32)((UInt32)(UInt16)GetMenuID(inChoice.menu) << 16 | inChoice.item);
}

SInt32 gDisabledChoice = 0; // for MenuChoice

} // namespace

Choice TrackBar(Point inStart)
{
    return Tracker().RunBar(inStart);
}

Choice TrackPopUp(MenuRef inMenu, Point inTopLeft, MenuItemIndex inItem, short inLeastWidth)
{
    return Tracker().RunPopUp(inMenu, inTopLeft, inItem, inLeastWidth);
}

SInt32 PopUpMenu(MenuRef inMenu, Point inTopLeft, MenuItemIndex inItem, short inLeastWidth)
{
    if (!Find(inMenu))
        return 0;
    const Choice choice = TrackPopUp(inMenu, inTopLeft, inItem, inLeastWidth);
    if (!choice.menu)
        return 0;
    SendCommand(choice.menu, choice.item, choice.modifiers);
    return Packed(choice);
}

void InstallMenuHandlers()
{
    static const EventTypeSpec kType = { kEventClassMouse, kEventMouseDown };
    events::InstallDefaultHandler(GetApplicationEventTarget(), 1, &kType, OnMouseDown, nullptr);
    events::EventRouting().filterKey = FilterKey;
    events::EventRouting().menuTarget = GetMenuEventTarget;
}

} // namespace lampblack::menus

using namespace lampblack::menus;

// An item's command is sent before this returns; what a handler took is not chosen any more.
SInt32 MenuSelect(Point inStart)
{
    StartMenus();
    const Choice choice = OwnQuitItem(TrackBar(inStart));
    gDisabledChoice = 0;
    if (!choice.menu || SendCommand(choice.menu, choice.item, choice.modifiers) != eventNotHandledErr) {
        HiliteTitle(nullptr);
        return 0;
    }
    return gDisabledChoice = Packed(choice);
}

SInt32 MenuChoice(void)
{
    return gDisabledChoice;
}

SInt32 PopUpMenuSelect(MenuRef inMenu, short inTop, short inLeft, MenuItemIndex inItem)
{
    return PopUpMenu(inMenu, { inTop, inLeft }, inItem, 0);
}
