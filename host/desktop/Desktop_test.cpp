// The parts of the desktop machine that need no display: keys, geometry, scaling, clicks.
#include "Scaler.h"
#include "Translator.h"

#include <doctest/doctest.h>

#include <cstring>
#include <vector>

using namespace lampblack::host;

namespace {

SDL_Event KeyEvent(bool down, SDL_Scancode code, SDL_Keycode sym, Uint16 mod = 0, Uint8 repeat = 0)
{
    SDL_Event event = {};
    event.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    event.key.keysym.scancode = code;
    event.key.keysym.sym = sym;
    event.key.keysym.mod = mod;
    event.key.repeat = repeat;
    return event;
}

SDL_Event TextEvent(const char* utf8)
{
    SDL_Event event = {};
    event.type = SDL_TEXTINPUT;
    strncpy(event.text.text, utf8, sizeof(event.text.text) - 1);
    return event;
}

SDL_Event ButtonEvent(bool down, int x, int y)
{
    SDL_Event event = {};
    event.type = down ? SDL_MOUSEBUTTONDOWN : SDL_MOUSEBUTTONUP;
    event.button.button = SDL_BUTTON_LEFT;
    event.button.x = x;
    event.button.y = y;
    return event;
}

Input TakeFrom(Translator& translator)
{
    Input input;
    REQUIRE(translator.Take(&input));
    return input;
}

} // namespace

TEST_CASE("Translator: a key and its text are one input, in the user's layout")
{
    Translator translator(CommandKey::Control);
    translator.Translate(KeyEvent(true, SDL_SCANCODE_Q, SDLK_a)); // a French keyboard
    CHECK_FALSE(translator.HasInput());
    translator.Translate(TextEvent("a"));
    translator.Translate(KeyEvent(false, SDL_SCANCODE_Q, SDLK_a));
    translator.End();
    const Input down = TakeFrom(translator);
    CHECK(down.kind == Input::Kind::KeyDown);
    CHECK(down.virtualKey == 0x0C);
    CHECK(down.textLength == 1);
    CHECK(down.text[0] == 'a');
    const Input up = TakeFrom(translator);
    CHECK(up.kind == Input::Kind::KeyUp);
    CHECK(up.text[0] == 'a');
    CHECK_FALSE(translator.HasInput());
}

TEST_CASE("Translator: a dead key types nothing, and the next key types the accented letter")
{
    Translator translator(CommandKey::Control);
    translator.Translate(KeyEvent(true, SDL_SCANCODE_LEFTBRACKET, SDLK_UNKNOWN));
    translator.Translate(KeyEvent(false, SDL_SCANCODE_LEFTBRACKET, SDLK_UNKNOWN));
    translator.Translate(KeyEvent(true, SDL_SCANCODE_E, SDLK_e));
    translator.Translate(TextEvent("\xC3\xAA"));
    translator.End();
    CHECK(TakeFrom(translator).textLength == 0);
    TakeFrom(translator);
    CHECK(TakeFrom(translator).text[0] == 0xEA);
}

TEST_CASE("Translator: text without a key was composed, and long text comes in pieces")
{
    Translator translator(CommandKey::Control);
    translator.Translate(TextEvent("0123456789abcdefghij"));
    translator.End();
    std::vector<UniChar> all;
    Input input;
    while (translator.Take(&input)) {
        CHECK(input.kind == Input::Kind::TextCommitted);
        all.insert(all.end(), input.text, input.text + input.textLength);
    }
    REQUIRE(all.size() == 20);
    CHECK(all[0] == '0');
    CHECK(all[19] == 'j');
}

TEST_CASE("Translator: with Command held the character comes from the key, whatever text follows")
{
    Translator translator(CommandKey::Control);
    translator.Translate(KeyEvent(true, SDL_SCANCODE_LCTRL, SDLK_LCTRL, KMOD_LCTRL));
    translator.Translate(KeyEvent(true, SDL_SCANCODE_S, SDLK_s, KMOD_LCTRL));
    translator.Translate(KeyEvent(true, SDL_SCANCODE_EQUALS, SDLK_EQUALS, KMOD_LCTRL | KMOD_LSHIFT));
    translator.End();
    const Input command = TakeFrom(translator);
    CHECK(command.kind == Input::Kind::ModifiersChanged);
    CHECK(command.virtualKey == 0x37);
    CHECK(command.modifiers == 0x0100);
    const Input save = TakeFrom(translator);
    CHECK(save.text[0] == 's');
    CHECK(save.modifiers == 0x0100);
    CHECK(TakeFrom(translator).text[0] == '+');
}

TEST_CASE("Translator: Super is Control, which makes control characters")
{
    Translator translator(CommandKey::Control);
    translator.Translate(KeyEvent(true, SDL_SCANCODE_C, SDLK_c, KMOD_RGUI));
    translator.Translate(TextEvent("c"));
    translator.End();
    const Input input = TakeFrom(translator);
    CHECK(input.modifiers == 0x1000);
    CHECK(input.text[0] == 3);
    CHECK(input.textLength == 1);
}

TEST_CASE("Translator: Return, arrows and function keys carry their published characters")
{
    Translator translator(CommandKey::Control);
    translator.Translate(KeyEvent(true, SDL_SCANCODE_RETURN, SDLK_RETURN));
    translator.Translate(KeyEvent(true, SDL_SCANCODE_LEFT, SDLK_LEFT));
    translator.Translate(KeyEvent(true, SDL_SCANCODE_KP_ENTER, SDLK_KP_ENTER));
    translator.Translate(KeyEvent(true, SDL_SCANCODE_F1, SDLK_F1));
    translator.End();
    CHECK(TakeFrom(translator).text[0] == 13);
    CHECK(TakeFrom(translator).text[0] == 28);
    CHECK(TakeFrom(translator).text[0] == 3);
    CHECK(TakeFrom(translator).text[0] == 16);
}

TEST_CASE("KeyMap: the Command key can be Super or Alt, and the others make room")
{
    const KeyMap super(CommandKey::Super), alt(CommandKey::Alt);
    CHECK(super.Modifiers(KMOD_LGUI) == 0x0100);
    CHECK(super.Modifiers(KMOD_RCTRL) == 0x1000);
    CHECK(super.Modifiers(KMOD_LALT) == 0x0800);
    CHECK(super.VirtualKey(SDL_SCANCODE_RGUI) == 0x36);
    CHECK(alt.Modifiers(KMOD_LALT) == 0x0100);
    CHECK(alt.Modifiers(KMOD_LCTRL) == 0x1000);
    CHECK(alt.VirtualKey(SDL_SCANCODE_LGUI) == 0x3A);
    CHECK(alt.VirtualKey(static_cast<SDL_Scancode>(100000)) == kNoKey);
}

TEST_CASE("Translator: a second press nearby and soon is a double click, a later one is not")
{
    Translator translator(CommandKey::Control);
    const auto pressAt = [&](double time, int x) {
        translator.Begin(time);
        translator.Translate(ButtonEvent(true, x, 5));
        translator.Translate(ButtonEvent(false, x, 5));
        const UInt32 count = TakeFrom(translator).clickCount;
        CHECK(TakeFrom(translator).clickCount == count);
        return count;
    };
    CHECK(pressAt(10.0, 5) == 1);
    CHECK(pressAt(10.3, 7) == 2);
    CHECK(pressAt(10.6, 7) == 3);
    CHECK(pressAt(11.2, 7) == 1);
    CHECK(pressAt(11.3, 50) == 1);
}

TEST_CASE("Translator: moves between two takes become one, presses do not")
{
    Translator translator(CommandKey::Control);
    SDL_Event move = {};
    move.type = SDL_MOUSEMOTION;
    for (int x = 0; x < 10; ++x) {
        move.motion.x = x;
        translator.Translate(move);
    }
    translator.Translate(ButtonEvent(true, 9, 0));
    CHECK(TakeFrom(translator).where.h == 9);
    CHECK(TakeFrom(translator).kind == Input::Kind::MouseDown);
}

TEST_CASE("Translator: the keyboard's coming and going is told once each")
{
    Translator translator(CommandKey::Control);
    SDL_Event event = {};
    event.type = SDL_WINDOWEVENT;
    event.window.event = SDL_WINDOWEVENT_FOCUS_GAINED;
    translator.Translate(event);
    CHECK_FALSE(translator.HasInput());
    event.window.event = SDL_WINDOWEVENT_FOCUS_LOST;
    translator.Translate(event);
    translator.Translate(event);
    CHECK(TakeFrom(translator).kind == Input::Kind::Deactivated);
    CHECK_FALSE(translator.HasInput());
}

TEST_CASE("Viewport: a window of another shape shows all of the screen, centred")
{
    const Viewport viewport(100, 50, 300, 300);
    CHECK(viewport.Shown().x == 0);
    CHECK(viewport.Shown().y == 75);
    CHECK(viewport.Shown().height == 150);
    CHECK(viewport.IntegerScale() == 3);
    CHECK(Viewport(100, 50, 250, 125).IntegerScale() == 0);
    CHECK(Viewport(100, 50, 60, 30).IntegerScale() == 0);
}

TEST_CASE("Viewport: a window a little larger than a whole scale needs keeps the screen sharp, in a margin")
{
    const Viewport viewport(100, 50, 104, 53);
    CHECK(viewport.IntegerScale() == 1);
    CHECK(viewport.Shown().x == 2);
    CHECK(viewport.Shown().y == 1);
    CHECK(viewport.ScreenPointAt(2, 1).h == 0);
    CHECK(viewport.ScreenPointAt(101, 50).h == 99);
    CHECK(Viewport(100, 50, 209, 104).IntegerScale() == 2);
    CHECK(Viewport(100, 50, 106, 53).IntegerScale() == 0);
}

TEST_CASE("Viewport: every window pixel leads to the screen pixel that it shows, at any scale")
{
    for (const int size : { 37, 100, 141, 200, 350 }) {
        const Viewport viewport(100, 80, size, size);
        for (int pixel = 0; pixel < 80; ++pixel) {
            int x, y;
            viewport.WindowPixelOf(pixel, pixel, &x, &y);
            const Point back = viewport.ScreenPointAt(x + 0.5, y + 0.5);
            CHECK(abs(back.h - pixel) <= (size < 100 ? 2 : 0));
            CHECK(abs(back.v - pixel) <= (size < 100 ? 2 : 0));
        }
        CHECK(viewport.ScreenPointAt(-50, -50).h == 0);
        CHECK(viewport.ScreenPointAt(1e6, 1e6).h == 99);
        CHECK(viewport.ScreenPointAt(1e6, 1e6).v == 79);
    }
}

TEST_CASE("Viewport: damage at a whole scale is exact, else it has its neighbours with it")
{
    const Area exact = Viewport(10, 10, 30, 30).AreaOf({ 1, 2, 3, 4 });
    CHECK(exact.x == 6);
    CHECK(exact.y == 3);
    CHECK(exact.width == 6);
    CHECK(exact.height == 6);
    const Area smooth = Viewport(10, 10, 15, 15).AreaOf({ 4, 4, 5, 5 });
    CHECK(smooth.x <= 4);
    CHECK(smooth.x + smooth.width >= 9);
    const Area clipped = Viewport(10, 10, 15, 15).AreaOf({ -100, -100, 1000, 1000 });
    CHECK(clipped.x == 0);
    CHECK(clipped.width == 15);
}

TEST_CASE("Scaler: a damaged part drawn later equals the whole drawn at once, at every scale")
{
    constexpr int kSize = 24;
    std::vector<uint32_t> before(kSize * kSize), after;
    for (size_t i = 0; i < before.size(); ++i)
        before[i] = static_cast<uint32_t>(i * 2654435761u) & 0xFFFFFF;
    after = before;
    const Rect damaged = { 5, 7, 12, 15 };
    for (int y = damaged.top; y < damaged.bottom; ++y)
        for (int x = damaged.left; x < damaged.right; ++x)
            after[static_cast<size_t>(y) * kSize + x] ^= 0x00FF7F3F;
    for (const int size : { 17, 24, 31, 36, 48, 53, 72 }) {
        std::vector<uint32_t> whole(static_cast<size_t>(size) * size), part = whole;
        const Viewport viewport(kSize, kSize, size, size);
        const Rect all = { 0, 0, kSize, kSize };
        const auto draw = [&](std::vector<uint32_t>& to, const std::vector<uint32_t>& from, Scaler& scaler,
                              const Rect& rect) {
            scaler.Draw({ from.data(), kSize, kSize, kSize }, rect, viewport,
                        { to.data(), size, size, size * 4, PIXMAN_x8r8g8b8 });
        };
        Scaler one, two;
        draw(whole, after, one, all);
        draw(part, before, two, all);
        draw(part, after, two, damaged);
        size_t different = 0;
        for (size_t i = 0; i < whole.size(); ++i)
            different += (whole[i] & 0xFFFFFF) != (part[i] & 0xFFFFFF);
        CAPTURE(size);
        CHECK(different == 0);
    }
}
