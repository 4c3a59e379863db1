// What the tests of windows and menus share: a window that notes the events it hears.
#ifndef LAMPBLACK_WINDOWS_TESTWINDOW_H
#define LAMPBLACK_WINDOWS_TESTWINDOW_H

#include <Carbon/CarbonEvents.h>
#include <Carbon/MacWindows.h>
#include <lampblack/host.h>

#include <string>
#include <vector>

namespace lampblack::windows {

inline std::vector<std::string>& Log()
{
    static std::vector<std::string> log;
    return log;
}

class TestWindow {
public:
    static constexpr WindowAttributes kDocument =
        kWindowStandardDocumentAttributes | kWindowStandardHandlerAttribute;

    explicit TestWindow(const char* inName, WindowClass inClass = kDocumentWindowClass,
                        WindowAttributes inAttributes = kDocument, Rect inBounds = { 100, 100, 300, 400 },
                        bool inShow = true)
        : fName(inName)
    {
        fStatus = CreateNewWindow(inClass, inAttributes, &inBounds, &fWindow);
        if (inShow)
            ShowWindow(fWindow);
    }
    ~TestWindow()
    {
        if (IsValidWindowPtr(fWindow))
            DisposeWindow(fWindow);
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    // Notes these kinds as "name kind" and leaves them to whoever comes next.
    TestWindow& Hear(std::initializer_list<UInt32> inKinds, OSStatus inAnswer = eventNotHandledErr)
    {
        fAnswer = inAnswer;
        for (UInt32 kind : inKinds) {
            const EventTypeSpec type = { kEventClassWindow, kind };
            InstallEventHandler(GetWindowEventTarget(fWindow), Note, 1, &type, this, nullptr);
        }
        return *this;
    }

    operator WindowRef() const { return fWindow; }
    OSStatus Status() const { return fStatus; }
    Rect Content() const
    {
        Rect bounds = { 0, 0, 0, 0 };
        GetWindowBounds(fWindow, kWindowContentRgn, &bounds);
        return bounds;
    }
    // The middle of a part.
    Point Middle(WindowRegionCode inPart) const
    {
        Rect bounds = { 0, 0, 0, 0 };
        GetWindowBounds(fWindow, inPart, &bounds);
        return { (short)((bounds.top + bounds.bottom) / 2), (short)((bounds.left + bounds.right) / 2) };
    }

private:
    static OSStatus Note(EventHandlerCallRef, EventRef inEvent, void* inSelf)
    {
        auto& self = *static_cast<TestWindow*>(inSelf);
        Log().push_back(self.fName + " " + std::to_string(GetEventKind(inEvent)));
        return self.fAnswer;
    }

    std::string fName;
    WindowRef fWindow = nullptr;
    OSStatus fStatus = noErr, fAnswer = eventNotHandledErr;
};

} // namespace lampblack::windows

#endif
