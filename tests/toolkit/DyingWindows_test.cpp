// A window that is deleted inside one of its own handlers: nothing of it is touched afterwards.
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <lampblack/lampblack.h>

using namespace lampblack::host;

namespace {

enum class In {
    Activated,
    Deactivated,
    DrawContent,
    ClickContentRgn,
    HandleContentClick,
    MouseMoved,
    ControlHit,
    NoTrackHit,
    Close,
    Showing,
    Hiding,
    Zoomed,
    Timer
};

int gDeaths = 0;

class Dying : public CWindow {
public:
    explicit Dying(In inHandler)
        : CWindow(128, kDocumentWindowClass,
                  kWindowStandardDocumentAttributes | kWindowStandardHandlerAttribute),
          fHandler(inHandler)
    {
    }
    OSStatus DoWindowActivated(EventRef) override { return DieIn(In::Activated); }
    OSStatus DoWindowDeactivated(EventRef) override { return DieIn(In::Deactivated); }
    OSStatus DoWindowDrawContent(EventRef) override { return DieIn(In::DrawContent); }
    OSStatus DoWindowClickContentRgn(EventHandlerCallRef inCallRef, EventRef inEvent) override
    {
        const OSStatus result = CWindow::DoWindowClickContentRgn(inCallRef, inEvent);
        return IsAlive() ? DieIn(In::ClickContentRgn, result) : result;
    }
    OSStatus DoWindowHandleContentClick(EventRef) override { return DieIn(In::HandleContentClick); }
    OSStatus DoMouseMoved(EventRef) override { return DieIn(In::MouseMoved); }
    OSStatus DoControlHit(EventRef) override { return DieIn(In::ControlHit, noErr); }
    OSStatus DoControlNoTrackHit(EventRef) override { return DieIn(In::NoTrackHit); }
    OSStatus DoWindowClose(EventRef) const override { return Self()->DieIn(In::Close, noErr); }
    OSStatus DoWindowShowing(EventRef) const override { return Self()->DieIn(In::Showing); }
    OSStatus DoWindowHiding(EventRef) const override { return Self()->DieIn(In::Hiding); }
    OSStatus DoWindowZoomed(EventRef) override { return DieIn(In::Zoomed); }
    void Timer() override { DieIn(In::Timer); }

private:
    Dying* Self() const { return const_cast<Dying*>(this); }
    static bool IsAlive() { return gDeaths == 0; }
    OSStatus DieIn(In inHandler, OSStatus inResult = eventNotHandledErr)
    {
        if (inHandler == fHandler) {
            ++gDeaths;
            delete this;
        }
        return inResult;
    }

    In fHandler;
};

Point MiddleOf(WindowRef inWindow, WindowRegionCode inRegion)
{
    const RgnHandle region = NewRgn();
    Rect bounds = { 0, 0, 0, 0 };
    GetWindowRegion(inWindow, inRegion, region);
    GetRegionBounds(region, &bounds);
    DisposeRgn(region);
    return { static_cast<short>((bounds.top + bounds.bottom) / 2),
             static_cast<short>((bounds.left + bounds.right) / 2) };
}

// What the user does to a window, step by step, as long as it is there.
void Use(WindowRef inWindow)
{
    Rect content;
    GetWindowBounds(inWindow, kWindowContentRgn, &content);
    const auto at = [&](short inV, short inH) {
        return Point{ static_cast<short>(content.top + inV), static_cast<short>(content.left + inH) };
    };
    void (*const steps[])(WindowRef, const Point*) = {
        [](WindowRef, const Point* places) { MoveMouse(places[0]); },
        [](WindowRef, const Point* places) { Click(places[1]); }, // nothing
        [](WindowRef, const Point* places) { Click(places[2]); }, // the text
        [](WindowRef, const Point* places) { Click(places[3]); }, // the button
        [](WindowRef window, const Point*) { Click(MiddleOf(window, kWindowZoomBoxRgn)); },
        [](WindowRef, const Point*) {
            SwitchProgram(false);
            SwitchProgram(true);
        },
        [](WindowRef window, const Point*) { HideWindow(window); },
        [](WindowRef window, const Point*) { ShowWindow(window); },
        [](WindowRef window, const Point*) { Click(MiddleOf(window, kWindowCloseBoxRgn)); },
    };
    const Point places[] = { at(100, 300), at(150, 300), at(48, 50), at(20, 50) };
    for (const auto step : steps) {
        if (IsValidWindowPtr(inWindow))
            step(inWindow, places);
        RunFor(0.3);
    }
}

} // namespace

TEST_CASE("CWindow: deleted inside any of its handlers it is gone, and the loop goes on")
{
    InitializeMacOSHelpers();
    for (int handler = 0; handler <= static_cast<int>(In::Timer); ++handler) {
        CAPTURE(handler);
        gDeaths = 0;
        CWindow* const window = new Dying(static_cast<In>(handler));
        const WindowRef ref = window->fWindow;
        window->StandardSetup();
        if (static_cast<In>(handler) == In::Timer)
            window->StartTimer(0.05, 0.05);
        window->Show();
        RunFor(0.2);
        Use(ref);
        CHECK(gDeaths == 1);
        CHECK_FALSE(IsValidWindowPtr(ref));
        CGrafPtr port = nullptr;
        GetPort(&port);
        CHECK((!port || IsValidPort(port)));
    }
    CHECK(GetWindowList() == nullptr);
    CHECK(CTimer::cgHead == nullptr);
}
