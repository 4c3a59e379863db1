// The smallest user of the desktop machine: draws a pattern, prints each input on one line, and what the
// machine tells when a key asks for it. The scripts here drive it through a real window.
#include <Host.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

#include <unistd.h>

using namespace lampblack::host;

namespace {

constexpr int kWidth = 320, kHeight = 200;

struct Picture {
    std::vector<uint32_t> pixels = std::vector<uint32_t>(kWidth * kHeight);

    // Four corners of their own colour on a slope of greys: a shift or a flip shows.
    void Paint()
    {
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                pixels[static_cast<size_t>(y) * kWidth + x] =
                    static_cast<uint32_t>(x * 200 / kWidth) * 0x010101;
        Fill({ 0, 0, 20, 20 }, 0xFF0000);
        Fill({ 0, kWidth - 20, 20, kWidth }, 0x00FF00);
        Fill({ kHeight - 20, 0, kHeight, 20 }, 0x0000FF);
        Fill({ kHeight - 20, kWidth - 20, kHeight, kWidth }, 0xFFFFFF);
    }

    void Fill(const Rect& rect, uint32_t colour)
    {
        for (int y = rect.top; y < rect.bottom; ++y)
            for (int x = rect.left; x < rect.right; ++x)
                pixels[static_cast<size_t>(y) * kWidth + x] = colour;
    }

    void Show(const Rect& rect) { Machine().present({ pixels.data(), kWidth, kWidth, kHeight }, &rect, 1); }
};

const char* NameOf(Input::Kind kind)
{
    static const char* const kNames[] = { "move",      "down",      "up",          "wheel",     "keydown",
                                          "keyrepeat", "keyup",     "modifiers",   "committed", "resized",
                                          "exposed",   "activated", "deactivated", "quit" };
    return kNames[static_cast<int>(kind)];
}

void Print(const Input& input)
{
    printf("%s where=%d,%d button=%d clicks=%u key=%02X modifiers=%04X text=", NameOf(input.kind),
           input.where.h, input.where.v, input.button, input.clickCount, input.virtualKey, input.modifiers);
    for (int i = 0; i < input.textLength; ++i)
        printf("%s%04X", i ? "," : "", input.text[i]);
    printf("\n");
}

// What a letter asks for.
void Answer(UniChar letter, Picture& picture)
{
    const Table& machine = Machine();
    if (letter == 'w')
        std::thread([] {
            usleep(300000);
            Machine().wake();
        }).detach();
    if (letter == 'b')
        machine.beep();
    if (letter == 'c')
        printf("copied=%d\n", machine.setClipboardText("from the probe"));
    if (letter == 'v')
        printf("clipboard=%s serial=%u\n", machine.clipboardText().c_str(), machine.clipboardSerial());
    if (letter == 'm')
        printf("mouse=%d,%d buttons=%u\n", machine.mouse().h, machine.mouse().v, machine.buttons());
    if (letter == 't')
        for (SInt32 cursor = 0; cursor < 23; ++cursor)
            machine.setThemeCursor(cursor);
    if (letter == 'p') {
        picture.Fill({ 100, 100, 101, 102 }, 0xFFFF00);
        picture.Show({ 100, 100, 101, 102 });
        printf("pixel=%06X beside=%06X\n", ScreenPixel({ 100, 101 }), ScreenPixel({ 10, 10 }));
    }
    if (letter == 's')
        printf("saved=%d\n", SaveScreenshot(getenv("PROBE_PICTURE")));
}

void TakeAll(Picture& picture, bool& ioDone)
{
    Input input;
    while (Machine().takeInput(&input)) {
        Print(input);
        if (input.kind == Input::Kind::ScreenExposed)
            picture.Show({ 0, 0, kHeight, kWidth });
        if (input.kind == Input::Kind::KeyDown && input.textLength == 1)
            Answer(input.text[0], picture);
        ioDone =
            ioDone || input.kind == Input::Kind::QuitRequested || (input.textLength && input.text[0] == 27);
    }
}

// Holds the clipboard until it is ended from outside, as another program does.
int CopyAndStay(const char* text)
{
    Machine().setClipboardText(text);
    Machine().openScreen(64, 64, "Other");
    Input input;
    for (;;)
        if (Machine().wait(kForever))
            Machine().takeInput(&input);
}

} // namespace

int main(int argc, char** argv)
{
    const std::string task = argc > 1 ? argv[1] : "";
    Picture picture;
    setvbuf(stdout, nullptr, _IOLBF, 0);
    if (task == "no-screen")
        return Machine().wait(Now() + 0.01) ? 1 : 0;
    if (task == "copy")
        return CopyAndStay(getenv("PROBE_COPY"));
    if (!Machine().openScreen(kWidth, kHeight, "Probe"))
        return 1;
    picture.Paint();
    picture.Show({ 0, 0, kHeight, kWidth });
    printf("open on %s\n", Machine().name);
    for (bool done = task == "once"; !done;) {
        const bool input = Machine().wait(kForever);
        if (!input)
            printf("woken\n");
        TakeAll(picture, done);
    }
    printf("end\n");
    return 0;
}
