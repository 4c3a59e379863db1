// Windows that come back where they stood.
#include <doctest/doctest.h>
#include <lampblack/lampblack.h>

#include "FreshPreferences.h"

namespace {

constexpr OSType kPositionType = 'wpos';

int gReposition = -1; // the method of the last RepositionWindow

Rect BoundsOf(const CWindow& inWindow)
{
    Rect bounds = {};
    GetWindowPortGlobalBounds(inWindow.fWindow, &bounds);
    return bounds;
}

bool StandsAt(const CWindow& inWindow, short inTop, short inLeft)
{
    const Rect bounds = BoundsOf(inWindow);
    return bounds.top == inTop && bounds.left == inLeft;
}

Rect StoredFor(SInt16 inID)
{
    return GetRectPreference(kPositionType, inID, nullptr);
}

} // namespace

LAMPBLACK_INTERPOSE OSStatus RepositionWindow(WindowRef window, WindowRef parent, WindowPositionMethod method)
{
    gReposition = (int)method;
    return Next<decltype(RepositionWindow)>("RepositionWindow")(window, parent, method);
}

TEST_CASE("CWindow: StandardTeardown stores the position, StandardSetup of the next one restores it")
{
    const FreshPreferences fresh;
    {
        CWindow window(128, kDocumentWindowClass);
        gReposition = -1;
        window.StandardSetup(); // nothing is stored yet
        CHECK(gReposition == kWindowCenterOnMainScreen);
        MoveWindow(window.fWindow, 33, 77, false);
        window.StandardTeardown();
    }
    CHECK(StoredFor(128).top == 77);
    CHECK(StoredFor(128).left == 33);
    CHECK(StoredFor(128).right == 433);
    CWindow window(128, kDocumentWindowClass);
    gReposition = -1;
    window.StandardSetup();
    CHECK(gReposition == -1);
    CHECK(StandsAt(window, 77, 33));
}

TEST_CASE("CWindow: a window that goes without StandardTeardown stores nothing")
{
    const FreshPreferences fresh;
    {
        CWindow window(128, kDocumentWindowClass);
        window.StandardSetup();
    }
    CHECK(GetPreferenceResource(kPositionType, 128) == nullptr);
}

TEST_CASE("StoreWindowPosition: the record is the content's global bounds, eight bytes")
{
    const FreshPreferences fresh;
    CWindow window(128, kDocumentWindowClass);
    CHECK(StoreWindowPosition(window.fWindow, 5) == noErr);
    const Handle entry = GetPreferenceResource(kPositionType, 5);
    REQUIRE(entry);
    CHECK(GetHandleSize(entry) == 8);
    DisposeHandle(entry);
    const Rect stored = StoredFor(5), bounds = BoundsOf(window);
    CHECK(EqualRect(&stored, &bounds));
}

TEST_CASE("StoreWindowPosition, RestoreWindowPosition: a null window is told and stores nothing")
{
    const FreshPreferences fresh;
    CHECK(StoreWindowPosition(nullptr, 5) == errInvalidWindowRef);
    CHECK(RestoreWindowPosition(nullptr, 5) == errInvalidWindowRef);
    CHECK(GetPreferenceResource(kPositionType, 5) == nullptr);
}

TEST_CASE("RestoreWindowPosition: without a record the window is centred")
{
    const FreshPreferences fresh;
    CWindow window(128, kDocumentWindowClass);
    gReposition = -1;
    CHECK(RestoreWindowPosition(window.fWindow, 5) == nilHandleErr);
    CHECK(gReposition == kWindowCenterOnMainScreen);
}

TEST_CASE("RestoreWindowPosition: a record of another size centres a window that cannot be resized")
{
    const FreshPreferences fresh;
    const Rect other = { 50, 50, 150, 150 };
    CHECK(AddRectPreference(&other, kPositionType, 5, nullptr) == noErr);
    CWindow window(128, kDocumentWindowClass);
    gReposition = -1;
    CHECK(RestoreWindowPosition(window.fWindow, 5) == -1);
    CHECK(gReposition == kWindowCenterOnMainScreen);
    CWindow resizable(128, kDocumentWindowClass, kWindowStandardHandlerAttribute | kWindowResizableAttribute);
    CHECK(RestoreWindowPosition(resizable.fWindow, 5) == noErr);
    const Rect bounds = BoundsOf(resizable);
    CHECK(EqualRect(&bounds, &other));
}

TEST_CASE("RestoreWindowPosition: a record that is cut off is none")
{
    const FreshPreferences fresh;
    CHECK(AddPreferenceData("\0\1\0", 3, kPositionType, 5, nullptr) == noErr);
    CWindow window(128, kDocumentWindowClass);
    gReposition = -1;
    CHECK(RestoreWindowPosition(window.fWindow, 5) == nilHandleErr);
    CHECK(gReposition == kWindowCenterOnMainScreen);
}

TEST_CASE("Window positions: a preference file held open stays open")
{
    const FreshPreferences fresh;
    CWindow window(128, kDocumentWindowClass);
    REQUIRE(OpenPreferenceFile(fsRdWrPerm) == noErr);
    CHECK(StoreWindowPosition(window.fWindow, 5) == noErr);
    CHECK(RestoreWindowPosition(window.fWindow, 5) == noErr);
    CHECK(Count1Resources(kPositionType) == 1);
    CHECK(ClosePreferenceFile() == noErr);
}
