// What the tests of controls and dialogs share: a window with a root, events counted, a user at the machine.
#ifndef LAMPBLACK_CONTROLS_TESTSUPPORT_H
#define LAMPBLACK_CONTROLS_TESTSUPPORT_H

#include "resources/ResourceFork.h"

#include <Carbon/CarbonEvents.h>
#include <Carbon/Controls.h>
#include <Carbon/MacWindows.h>
#include <Carbon/Resources.h>
#include <doctest/doctest.h>
#include <lampblack/host.h>

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace lampblack::test {

using Str = std::string;

inline std::vector<unsigned char> Pascal(const Str& inText)
{
    std::vector<unsigned char> bytes(256);
    bytes[0] = (unsigned char)inText.size();
    std::copy(inText.begin(), inText.end(), bytes.begin() + 1);
    return bytes;
}

// A shown window with the standard handler and a root control; its content begins at (100, 100) of the
// screen.
class TestWindow {
public:
    explicit TestWindow(bool inRoot = true, WindowAttributes inAttributes = kWindowStandardHandlerAttribute)
    {
        const Rect bounds = { 100, 100, 400, 500 };
        CreateNewWindow(kDocumentWindowClass, inAttributes, &bounds, &fWindow);
        if (inRoot)
            CreateRootControl(fWindow, &fRoot);
        ShowWindow(fWindow);
    }
    ~TestWindow()
    {
        if (IsValidWindowPtr(fWindow))
            DisposeWindow(fWindow);
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;

    operator WindowRef() const { return fWindow; }
    ControlRef Root() const { return fRoot; }

    ControlRef Add(SInt16 inProcID, const Rect& inBounds, const Str& inTitle = {}, SInt16 inValue = 0,
                   SInt16 inMinimum = 0, SInt16 inMaximum = 1) const
    {
        return NewControl(fWindow, &inBounds, Pascal(inTitle).data(), true, inValue, inMinimum, inMaximum,
                          inProcID, 0);
    }

private:
    WindowRef fWindow = nullptr;
    ControlRef fRoot = nullptr;
};

inline Point Global(SInt16 inLocalH, SInt16 inLocalV)
{
    return { (SInt16)(100 + inLocalV), (SInt16)(100 + inLocalH) };
}
inline Point Middle(ControlRef inControl)
{
    Rect bounds;
    GetControlBounds(inControl, &bounds);
    return Global((SInt16)((bounds.left + bounds.right) / 2), (SInt16)((bounds.top + bounds.bottom) / 2));
}

inline Str TextOf(ControlRef inControl, ResType inTag = 'text')
{
    Size size = 0;
    if (GetControlDataSize(inControl, 0, inTag, &size) != noErr)
        return "<none>";
    Str text((size_t)size, '\0');
    GetControlData(inControl, 0, inTag, size, text.data(), nullptr);
    return text;
}
inline OSErr SetTextOf(ControlRef inControl, const Str& inText, ResType inTag = 'text')
{
    return SetControlData(inControl, 0, inTag, (Size)inText.size(), inText.data());
}
inline Str TitleOf(ControlRef inControl)
{
    Str255 title;
    GetControlTitle(inControl, title);
    return { (const char*)title + 1, title[0] };
}
inline ControlRef FocusOf(WindowRef inWindow)
{
    ControlRef focus = nullptr;
    GetKeyboardFocus(inWindow, &focus);
    return focus;
}

// Records the events that a target hears, and answers what it is told to.
class Listener {
public:
    Listener(EventTargetRef inTarget, std::vector<EventTypeSpec> inTypes,
             OSStatus inAnswer = eventNotHandledErr)
        : fAnswer(inAnswer)
    {
        InstallEventHandler(inTarget, Hear, inTypes.size(), inTypes.data(), this, &fHandler);
    }
    ~Listener() { RemoveEventHandler(fHandler); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    size_t Count() const { return fHeard.size(); }
    struct Heard {
        UInt32 kind = 0;
        ControlRef control = nullptr;
        ControlPartCode part = 0;
        UInt32 command = 0;
    };
    const std::vector<Heard>& All() const { return fHeard; }
    void (*fWhenHeard)(EventRef) = nullptr;

private:
    static OSStatus Hear(EventHandlerCallRef, EventRef inEvent, void* inData)
    {
        auto* self = (Listener*)inData;
        Heard heard;
        heard.kind = GetEventKind(inEvent);
        GetEventParameter(inEvent, kEventParamDirectObject, typeControlRef, nullptr, sizeof heard.control,
                          nullptr, &heard.control);
        GetEventParameter(inEvent, kEventParamControlPart, typeControlPartCode, nullptr, sizeof heard.part,
                          nullptr, &heard.part);
        HICommand command = {};
        if (GetEventParameter(inEvent, kEventParamDirectObject, typeHICommand, nullptr, sizeof command,
                              nullptr, &command) == noErr)
            heard.command = command.commandID;
        self->fHeard.push_back(heard);
        if (self->fWhenHeard)
            self->fWhenHeard(inEvent);
        return self->fAnswer;
    }
    EventHandlerRef fHandler = nullptr;
    OSStatus fAnswer;
    std::vector<Heard> fHeard;
};

constexpr EventTypeSpec kHitEvent = { kEventClassControl, kEventControlHit };

// Big-endian bytes of a resource while they are written.
class Bytes {
public:
    Bytes& Word(int inValue)
    {
        fBytes.push_back((uint8_t)(inValue >> 8));
        fBytes.push_back((uint8_t)inValue);
        return *this;
    }
    Bytes& Long(SInt32 inValue) { return Word(inValue >> 16).Word(inValue); }
    Bytes& Box(const Rect& r) { return Word(r.top).Word(r.left).Word(r.bottom).Word(r.right); }
    Bytes& Byte(int inValue)
    {
        fBytes.push_back((uint8_t)inValue);
        return *this;
    }
    Bytes& Text(const Str& inText)
    {
        Byte((int)inText.size());
        fBytes.insert(fBytes.end(), inText.begin(), inText.end());
        return *this;
    }
    Bytes& Even()
    {
        if (fBytes.size() & 1)
            Byte(0);
        return *this;
    }
    const std::vector<uint8_t>& All() const { return fBytes; }

private:
    std::vector<uint8_t> fBytes;
};

// A resource file of its own, open and current as long as this lives.
class TestResources {
public:
    TestResources& Add(OSType inType, SInt16 inID, const Bytes& inBytes)
    {
        fData.push_back(inBytes.All());
        fEntries.push_back({ inType, inID });
        return *this;
    }
    bool Open()
    {
        resources::ForkBuilder builder;
        for (size_t i = 0; i < fEntries.size(); ++i) {
            resources::ForkEntry entry;
            entry.type = fEntries[i].first;
            entry.id = fEntries[i].second;
            entry.data = fData[i];
            builder.Add(entry);
        }
        std::vector<uint8_t> fork;
        if (builder.Build(&fork))
            return false;
        static int number = 0;
        fPath = std::filesystem::temp_directory_path() /
                ("lampblack-controls-" + std::to_string(getpid()) + "-" + std::to_string(++number) + ".rsrc");
        std::ofstream(fPath, std::ios::binary).write((const char*)fork.data(), (std::streamsize)fork.size());
        FSRef reference;
        if (FSPathMakeRef((const UInt8*)fPath.c_str(), &reference, nullptr) != noErr)
            return false;
        fFile = FSOpenResFile(&reference, 1);
        return fFile != -1;
    }
    ~TestResources()
    {
        if (fFile != -1)
            CloseResFile(fFile);
        std::error_code ignored;
        std::filesystem::remove(fPath, ignored);
    }

private:
    std::vector<std::pair<OSType, SInt16>> fEntries;
    std::vector<std::vector<uint8_t>> fData;
    std::filesystem::path fPath;
    SInt16 fFile = -1;
};

inline Bytes ControlTemplate(const Rect& inBounds, int inValue, bool inVisible, int inMaximum, int inMinimum,
                             int inProcID, SInt32 inReference, const Str& inTitle)
{
    Bytes bytes;
    bytes.Box(inBounds)
        .Word(inValue)
        .Word(inVisible ? 0x0100 : 0)
        .Word(inMaximum)
        .Word(inMinimum)
        .Word(inProcID);
    bytes.Long(inReference).Text(inTitle);
    return bytes;
}

} // namespace lampblack::test

#endif
