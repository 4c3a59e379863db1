// The headless machine as the managers see it: order of input, state of mouse and keyboard, the clock, the
// screen.
#include "../Parts.h"

#include <doctest/doctest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace lampblack::host;

namespace {

Input TakeOne()
{
    Input input;
    REQUIRE(Machine().takeInput(&input));
    return input;
}

void DrainInput()
{
    Input input;
    while (Machine().takeInput(&input))
        ;
}

void ShowPixels(const uint32_t* pixels, int width, int height, const Rect& damaged)
{
    const Frame frame = { pixels, width, width, height };
    Machine().present(frame, &damaged, 1);
}

} // namespace

TEST_CASE("Click: the press and the release are taken one at a time, and the button follows")
{
    DrainInput();
    Click({ 20, 10 }, 0x0200, 2);
    CHECK(Machine().buttons() == 0);
    const Input down = TakeOne();
    CHECK(down.kind == Input::Kind::MouseDown);
    CHECK(down.where.h == 10);
    CHECK(down.clickCount == 2);
    CHECK(down.modifiers == 0x0200);
    CHECK(Machine().buttons() == 1);
    CHECK(Machine().mouse().v == 20);
    const Input up = TakeOne();
    CHECK(up.kind == Input::Kind::MouseUp);
    CHECK(Machine().buttons() == 0);
}

TEST_CASE("PressKey: modifiers are held until the machine waits with nothing queued")
{
    DrainInput();
    PressKey(0x01, 's', 0x0100);
    CHECK(TakeOne().modifiers == 0x0100);
    CHECK(Machine().keyIsDown(0x37));
    CHECK(Machine().keyIsDown(0x01));
    CHECK(TakeOne().kind == Input::Kind::KeyUp);
    CHECK(Machine().modifiers() == 0x0100);
    Machine().wait(Now());
    CHECK(Machine().modifiers() == 0);
    CHECK_FALSE(Machine().keyIsDown(0x37));
}

TEST_CASE("HoldKey: modifier keys change the modifiers of later input, and a pair of keys counts once")
{
    DrainInput();
    HoldKey(0x38, true);
    HoldKey(0x3C, true);
    MoveMouse({ 1, 1 });
    HoldKey(0x38, false);
    HoldKey(0x3C, false);
    CHECK(TakeOne().kind == Input::Kind::ModifiersChanged);
    TakeOne();
    CHECK(TakeOne().modifiers == 0x0200);
    CHECK(TakeOne().modifiers == 0x0200);
    CHECK(TakeOne().modifiers == 0);
}

TEST_CASE("HoldKey: a key held down twice repeats")
{
    DrainInput();
    HoldKey(0x00, true);
    HoldKey(0x00, true);
    HoldKey(0x00, false);
    CHECK(TakeOne().kind == Input::Kind::KeyDown);
    const Input repeat = TakeOne();
    CHECK(repeat.kind == Input::Kind::KeyRepeat);
    CHECK(repeat.text[0] == 'a');
    CHECK(TakeOne().kind == Input::Kind::KeyUp);
}

TEST_CASE("TypeText: letters become keys with Shift where a keyboard has them, the rest is committed text")
{
    DrainInput();
    TypeText("A\n\xC3\xA9\xF0\x9F\x98\x80\xFF");
    const Input letter = TakeOne();
    CHECK(letter.virtualKey == 0x00);
    CHECK(letter.modifiers == 0x0200);
    CHECK(letter.text[0] == 'A');
    TakeOne();
    const Input line = TakeOne();
    CHECK(line.virtualKey == 0x24);
    CHECK(line.text[0] == 13);
    TakeOne();
    const Input accent = TakeOne();
    CHECK(accent.kind == Input::Kind::TextCommitted);
    CHECK(accent.text[0] == 0xE9);
    const Input pair = TakeOne();
    CHECK(pair.textLength == 2);
    CHECK(pair.text[0] == 0xD83D);
    CHECK(pair.text[1] == 0xDE00);
    CHECK(TakeOne().text[0] == 0xFFFD);
    Input none;
    CHECK_FALSE(Machine().takeInput(&none));
}

TEST_CASE("HoldKey: a virtual key that no keyboard has is input without a state")
{
    DrainInput();
    HoldKey(0xFFFF, true);
    CHECK(TakeOne().virtualKey == 0xFFFF);
    CHECK_FALSE(Machine().keyIsDown(0xFFFF));
}

TEST_CASE("wait: the virtual clock moves to the asked second, and not while input is queued")
{
    DrainInput();
    const double start = Now();
    CHECK_FALSE(Machine().wait(start + 2));
    CHECK(Now() == start + 2);
    MoveMouse({ 3, 4 });
    CHECK(Machine().wait(start + 5));
    CHECK(Now() == start + 2);
    CHECK(Machine().wait(start));
    DrainInput();
    Machine().wait(start); // the past
    CHECK(Now() == start + 2);
}

TEST_CASE("wake: from another thread ends one wait that would last for ever")
{
    DrainInput();
    std::thread([] { Machine().wake(); }).join();
    const double start = Now();
    CHECK_FALSE(Machine().wait(kForever));
    CHECK(Now() == start);
}

TEST_CASE("wait: on the virtual clock, for ever and with nothing that could come, ends the process")
{
    DrainInput();
    fflush(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        const rlimit noCore = { 0, 0 };
        setrlimit(RLIMIT_CORE, &noCore);
        signal(SIGABRT, SIG_DFL); // the test runner's own handler would report
        fclose(stderr);
        alarm(10);
        Machine().wait(kForever);
        _exit(0);
    }
    int status = 0;
    REQUIRE(waitpid(child, &status, 0) == child);
    CHECK(WIFSIGNALED(status));
    CHECK(WTERMSIG(status) == SIGABRT);
}

TEST_CASE("now: a loop that polls the virtual clock comes to an end")
{
    const double end = Now() + 1;
    while (Now() < end)
        ;
    CHECK(Now() >= end);
}

TEST_CASE("present: only the damaged rectangle reaches the screen, clipped to it")
{
    REQUIRE(Machine().openScreen(4, 3, "test"));
    const uint32_t red[12] = { 0xFF0000, 0xFF0000, 0xFF0000, 0xFF0000, 0xFF0000, 0xFF0000,
                               0xFF0000, 0xFF0000, 0xFF0000, 0xFF0000, 0xFF0000, 0xFF0000 };
    ShowPixels(red, 4, 3, { 1, 2, 100, 100 });
    CHECK(ScreenPixel({ 1, 1 }) == 0);
    CHECK(ScreenPixel({ 1, 2 }) == 0xFF0000);
    CHECK(ScreenPixel({ 2, 3 }) == 0xFF0000);
    CHECK(ScreenPixel({ 3, 3 }) == 0);
    CHECK(ScreenPixel({ -1, 0 }) == 0);
    Machine().closeScreen();
    CHECK(ScreenPixel({ 1, 2 }) == 0);
}

TEST_CASE("SaveScreenshot: writes a PNG of the screen, and answers false without screen or folder")
{
    const auto path = std::filesystem::temp_directory_path() / "lampblack_headless_test.png";
    CHECK_FALSE(SaveScreenshot(path));
    REQUIRE(Machine().openScreen(8, 8, "test"));
    CHECK(SaveScreenshot(path));
    CHECK(std::filesystem::file_size(path) > 50);
    CHECK_FALSE(SaveScreenshot("/nonexistent/folder/picture.png"));
    std::filesystem::remove(path);
    Machine().closeScreen();
}

TEST_CASE("CopyElsewhere: another program's text is on the clipboard and counts as a change")
{
    const UInt32 before = Machine().clipboardSerial();
    CHECK(Machine().setClipboardText("mine"));
    CHECK(Machine().clipboardSerial() == before);
    CHECK(PasteElsewhere() == "mine");
    CopyElsewhere("theirs");
    CHECK(Machine().clipboardSerial() == before + 1);
    CHECK(Machine().clipboardText() == "theirs");
}

TEST_CASE("openURL: only what has a scheme is opened")
{
    const size_t before = OpenedURLs().size();
    CHECK(Machine().openURL("https://example.org/a?b"));
    CHECK_FALSE(Machine().openURL("rm -rf /"));
    CHECK_FALSE(Machine().openURL("/etc/passwd"));
    CHECK_FALSE(Machine().openURL(":x"));
    CHECK_FALSE(Machine().openURL("http:"));
    CHECK_FALSE(Machine().openURL(""));
    REQUIRE(OpenedURLs().size() == before + 1);
    CHECK(OpenedURLs().back() == "https://example.org/a?b");
}

TEST_CASE("SwitchProgram: the process is active again only when the input has been taken")
{
    DrainInput();
    SwitchProgram(false);
    CHECK(Machine().active());
    CHECK(TakeOne().kind == Input::Kind::Deactivated);
    CHECK_FALSE(Machine().active());
    Machine().activate();
    CHECK(TakeOne().kind == Input::Kind::Activated);
    CHECK(Machine().active());
}
