#include "text/Editing.h"

#include <Carbon/CarbonEvents.h>
#include <Carbon/Events.h>
#include <Carbon/MacMemory.h>
#include <Carbon/Scrap.h>
#include <doctest/doctest.h>
#include <lampblack/host.h>
#include <quickdraw/Port.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

using namespace lampblack;
using text::TypeKey;

namespace {

constexpr char kLeft = 28, kRight = 29, kUp = 30, kDown = 31;
constexpr Rect kBox = { 10, 10, 90, 190 };

// A record in a port of its own.
class Field {
public:
    explicit Field(const std::string& inText = "", const Rect& inBox = kBox)
        : fPort(quickdraw::NewPixelPort(200, 100))
    {
        SetPort(fPort);
        TextSize(12);
        fText = TENew(&inBox, &inBox);
        REQUIRE(fText);
        TESetText(inText.data(), (long)inText.size(), fText);
    }
    ~Field()
    {
        TEDispose(fText);
        quickdraw::DisposePixelPort(fPort);
    }
    Field(const Field&) = delete;
    Field& operator=(const Field&) = delete;

    TEHandle Ref() const { return fText; }
    TERec* operator->() const { return *fText; }
    std::string Text() const { return std::string(*(**fText).hText, (size_t)(**fText).teLength); }
    std::pair<int, int> Selection() const { return { (**fText).selStart, (**fText).selEnd }; }

    void Select(long inStart, long inEnd) { TESetSelect(inStart, inEnd, fText); }
    void Type(const std::string& inKeys, unsigned inModifiers = 0)
    {
        for (char key : inKeys)
            TypeKey(fText, key, inModifiers);
    }
    void Press(char inKey, unsigned inModifiers = 0) { TypeKey(fText, inKey, inModifiers); }

    std::vector<uint32_t> Pixels() const
    {
        const quickdraw::PixelView view = quickdraw::PortPixels(fPort);
        std::vector<uint32_t> pixels;
        for (int y = 0; y < 100; ++y)
            for (int x = 0; x < 200; ++x)
                pixels.push_back(view.base[y * view.rowPixels + x] & 0xFFFFFF);
        return pixels;
    }
    int CountNot(uint32_t inColor) const
    {
        const auto pixels = Pixels();
        return (int)(pixels.size() - (size_t)std::count(pixels.begin(), pixels.end(), inColor));
    }

private:
    CGrafPtr fPort;
    TEHandle fText = nullptr;
};

using Pair = std::pair<int, int>;

} // namespace

TEST_CASE("TENew: the record takes the port's font and lays out nothing; without a port there is none")
{
    Field field;
    CHECK(field->teLength == 0);
    CHECK(field->nLines == 0);
    CHECK(field->txSize == 12);
    CHECK(field->lineHeight > 8);
    CHECK(field->inPort == GetQDGlobalsThePort());
    CHECK(TENew(nullptr, &kBox) == nullptr);
    CHECK(TENew(&kBox, nullptr) == nullptr);
    SetPort(nullptr);
    CHECK(TENew(&kBox, &kBox) == nullptr);
}

TEST_CASE("TESetText: the text, its lines and a caret at its end")
{
    Field field("one\rtwo\rthree");
    CHECK(field.Text() == "one\rtwo\rthree");
    CHECK(field->nLines == 3);
    CHECK(field->lineStarts[0] == 0);
    CHECK(field->lineStarts[1] == 4);
    CHECK(field->lineStarts[2] == 8);
    CHECK(field->lineStarts[3] == 13);
    CHECK(field.Selection() == Pair(13, 13));
    CHECK(TEGetText(field.Ref()) == (CharsHandle)field->hText);
}

TEST_CASE("TESetText: wide text wraps, and not when only returns break lines")
{
    const std::string text = "the quick brown fox jumps over the lazy dog again and again and again";
    Field field(text);
    CHECK(field->nLines > 1);
    for (int line = 1; line < field->nLines; ++line)
        CHECK(text[(size_t)field->lineStarts[line] - 1] == ' ');
    field->crOnly = -1;
    TECalText(field.Ref());
    CHECK(field->nLines == 1);
}

TEST_CASE("TESetText: what is longer than 32,767 bytes is cut off, and many lines are no harm")
{
    Field field(std::string(40000, 'x'));
    CHECK(field->teLength == 32767);
    Field lines(std::string(40000, '\r'));
    CHECK(lines->teLength == 32767);
    CHECK(lines->nLines <= 16000);
    lines.Press('y');
    lines.Press(kUp);
    TESetText(nullptr, 5, field.Ref());
    CHECK(field->teLength == 32767);
    TESetText(nullptr, 0, field.Ref());
    CHECK(field->teLength == 0);
}

TEST_CASE("TEKey: typing replaces the selection and puts the caret behind it")
{
    Field field("hello world");
    field.Select(0, 5);
    TEKey('J', field.Ref());
    CHECK(field.Text() == "J world");
    CHECK(field.Selection() == Pair(1, 1));
    field.Type("ust\r");
    CHECK(field.Text() == "Just\r world");
}

TEST_CASE("TEKey: backspace and forward delete, alone, with a selection, by words and at the ends")
{
    Field field("one two three");
    field.Press(8);
    CHECK(field.Text() == "one two thre");
    field.Press(8, optionKey);
    CHECK(field.Text() == "one two ");
    field.Select(0, 0);
    field.Press(8);
    CHECK(field.Text() == "one two ");
    field.Press(127);
    CHECK(field.Text() == "ne two ");
    field.Select(2, 6);
    field.Press(127);
    CHECK(field.Text() == "ne ");
    field.Select(3, 3);
    field.Press(127);
    CHECK(field.Text() == "ne ");
}

TEST_CASE("TEKey: keys that type nothing leave the text alone")
{
    Field field("abc");
    for (char key : { 3, 5, 11, 12, 16, 27 })
        field.Press(key);
    CHECK(field.Text() == "abc");
}

TEST_CASE("TEKey: a full record takes no more")
{
    Field field(std::string(32767, 'x'));
    field.Type("yy");
    CHECK(field->teLength == 32767);
    field.Select(0, 1);
    field.Type("y");
    CHECK(field.Text().substr(0, 2) == "yx");
}

TEST_CASE("TEKey: arrows move by characters, words and to ends of lines and text")
{
    Field field("one two\rthree four");
    field.Select(0, 0);
    field.Press(kRight);
    CHECK(field.Selection() == Pair(1, 1));
    field.Press(kRight, optionKey);
    CHECK(field.Selection() == Pair(3, 3));
    field.Press(kRight, cmdKey);
    CHECK(field.Selection() == Pair(7, 7));
    field.Press(kDown);
    CHECK(field.Selection().first > 8);
    field.Press(kLeft, cmdKey);
    CHECK(field.Selection() == Pair(8, 8));
    field.Press(kDown, cmdKey);
    CHECK(field.Selection() == Pair(18, 18));
    field.Press(kLeft, optionKey);
    CHECK(field.Selection() == Pair(14, 14));
    field.Press(kUp, cmdKey);
    CHECK(field.Selection() == Pair(0, 0));
    field.Press(4);
    CHECK(field.Selection() == Pair(7, 7));
    field.Press(1);
    CHECK(field.Selection() == Pair(0, 0));
}

TEST_CASE("TEKey: an arrow leaves a selection at the end that it points to")
{
    Field field("abcdef");
    field.Select(2, 4);
    field.Press(kLeft);
    CHECK(field.Selection() == Pair(2, 2));
    field.Select(2, 4);
    field.Press(kRight);
    CHECK(field.Selection() == Pair(4, 4));
}

TEST_CASE("TEKey: with Shift the selection grows and shrinks about the place where it began")
{
    Field field("abcdef");
    field.Select(3, 3);
    field.Press(kRight, shiftKey);
    field.Press(kRight, shiftKey);
    CHECK(field.Selection() == Pair(3, 5));
    for (int press = 0; press < 4; ++press)
        field.Press(kLeft, shiftKey);
    CHECK(field.Selection() == Pair(1, 3));
    field.Press(kRight, shiftKey | cmdKey);
    CHECK(field.Selection() == Pair(3, 6));
}

TEST_CASE("TEKey: up and down keep their place past a shorter line")
{
    Field field("abcdefgh\rx\rabcdefgh");
    field.Select(6, 6);
    field.Press(kDown);
    CHECK(field.Selection() == Pair(10, 10));
    field.Press(kDown);
    CHECK(field.Selection() == Pair(17, 17));
    field.Press(kUp);
    field.Press(kUp);
    CHECK(field.Selection() == Pair(6, 6));
    field.Press(kUp);
    CHECK(field.Selection() == Pair(0, 0));
}

TEST_CASE("TESetSelect: hostile offsets are taken as the nearest ends")
{
    Field field("abcdef");
    field.Select(-5, 32767);
    CHECK(field.Selection() == Pair(0, 6));
    field.Select(100, 200);
    CHECK(field.Selection() == Pair(6, 6));
    field.Select(5, 2);
    CHECK(field.Selection() == Pair(2, 2));
    field.Select(-9000000000L, 9000000000L);
    CHECK(field.Selection() == Pair(0, 6));
}

TEST_CASE("TESetSelect: a negative end means the end of the text")
{
    Field field("abcdef");
    field.Select(0, -1);
    CHECK(field.Selection() == Pair(0, 6));
    field.Select(4, -1);
    CHECK(field.Selection() == Pair(4, 6));
}

TEST_CASE("TEInsert and TEDelete: text comes before the selection, which stays; deleting leaves a caret")
{
    Field field("world");
    field.Select(0, 5);
    TEInsert("hello ", 6, field.Ref());
    CHECK(field.Text() == "hello world");
    CHECK(field.Selection() == Pair(6, 11));
    TEDelete(field.Ref());
    CHECK(field.Text() == "hello ");
    CHECK(field.Selection() == Pair(6, 6));
    TEDelete(field.Ref());
    CHECK(field.Text() == "hello ");
    TEInsert(*field->hText, 5, field.Ref()); // out of the text itself
    CHECK(field.Text() == "hello hello");
}

TEST_CASE("TECut, TECopy and TEPaste: by the private scrap")
{
    Field field("one two");
    field.Select(0, 4);
    TECut(field.Ref());
    CHECK(field.Text() == "two");
    CHECK(TEGetScrapLength() == 4);
    field.Select(3, 3);
    TEPaste(field.Ref());
    CHECK(field.Text() == "twoone ");
    CHECK(field.Selection() == Pair(7, 7));
    field.Select(0, 7);
    TECopy(field.Ref());
    CHECK(field.Text() == "twoone ");
    CHECK(TEGetScrapLength() == 7);
    TESetScrapLength(100000); // more than there is
    CHECK(TEGetScrapLength() == 7);
    TESetScrapHandle(nullptr);
    CHECK(TEGetScrapHandle() != nullptr);
}

TEST_CASE("TEToScrap and TEFromScrap: the desk scrap's text, and noTypeErr without any")
{
    Field field("desk");
    field.Select(0, 4);
    TECopy(field.Ref());
    ClearCurrentScrap();
    CHECK(TEToScrap() == noErr);
    TESetScrapLength(0);
    CHECK(TEFromScrap() == noErr);
    CHECK(TEGetScrapLength() == 4);
    ClearCurrentScrap();
    CHECK(TEFromScrap() == noTypeErr);
}

TEST_CASE("TEUpdate: text is drawn within the view, in the record's port, and the current port stays")
{
    Field field("Hello");
    Field other;
    CGrafPtr current = GetQDGlobalsThePort();
    TEUpdate(nullptr, field.Ref());
    CHECK(GetQDGlobalsThePort() == current);
    CHECK(field.CountNot(0xFFFFFF) > 20);
    CHECK(other.CountNot(0xFFFFFF) == 0);
    const auto pixels = field.Pixels();
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 200; ++x)
            if (x < 10 || x >= 190 || y < 10 || y >= 90)
                CHECK(pixels[(size_t)(y * 200 + x)] == 0xFFFFFF);
}

TEST_CASE("TEUpdate: only what lies in the update rectangle is drawn")
{
    Field field("Hello\rHello");
    const Rect lower = { 30, 0, 100, 200 };
    TEUpdate(&lower, field.Ref());
    const auto pixels = field.Pixels();
    CHECK(std::all_of(pixels.begin(), pixels.begin() + 200 * 25,
                      [](uint32_t pixel) { return pixel == 0xFFFFFF; }));
}

TEST_CASE("TEActivate: a caret shows and blinks, a selection is highlighted; TEDeactivate takes both away")
{
    Field field("Hello");
    TEUpdate(nullptr, field.Ref());
    const auto plain = field.Pixels();
    TEActivate(field.Ref());
    const auto caret = field.Pixels();
    CHECK(plain != caret);
    TEIdle(field.Ref());
    CHECK(field.Pixels() == caret); // not yet
    UInt32 now = 0;
    Delay(GetCaretTime() + 1, &now);
    TEIdle(field.Ref());
    CHECK(field.Pixels() == plain);
    Delay(GetCaretTime() + 1, &now);
    TEIdle(field.Ref());
    CHECK(field.Pixels() == caret);
    field.Select(0, 5);
    const auto selected = field.Pixels();
    CHECK(selected != plain);
    CHECK(selected != caret);
    TEDeactivate(field.Ref());
    CHECK(field.Pixels() == plain);
}

TEST_CASE("Drawing after any change is what a fresh drawing of everything would be")
{
    Field field("The quick brown fox jumps over the lazy dog. And again.");
    TEUpdate(nullptr, field.Ref());
    TEActivate(field.Ref());
    const auto check = [&](const char* inStep) {
        CAPTURE(inStep);
        const auto shown = field.Pixels();
        EraseRect(&kBox);
        TEUpdate(nullptr, field.Ref());
        CHECK(shown == field.Pixels());
    };
    field.Select(3, 20);
    check("select");
    field.Select(3, 40);
    check("extend");
    field.Select(10, 40);
    check("shrink");
    field.Type("xyz");
    check("type");
    field.Press(8);
    check("backspace");
    field.Press(kUp);
    check("up");
    field.Press(kRight, shiftKey | optionKey);
    check("extend by word");
    TEDelete(field.Ref());
    check("delete");
    TEInsert("wide wide words ", 16, field.Ref());
    check("insert");
    field.Type("\r\r");
    check("returns");
    TEScroll(-7, -9, field.Ref());
    check("scroll");
    TEScroll(7, 9, field.Ref());
    check("scroll back");
    field.Select(0, 32767);
    check("all");
    TEDeactivate(field.Ref());
    check("deactivate");
}

TEST_CASE("Random edits: lines and pixels are those of a layout and a drawing from scratch")
{
    Field field("The quick brown fox\rjumps over\rthe lazy dog and runs away before anybody wakes up.");
    TEUpdate(nullptr, field.Ref());
    TEActivate(field.Ref());
    uint32_t seed = 12345;
    const auto random = [&seed](int inBelow) {
        seed = seed * 1664525u + 1013904223u;
        return (int)((seed >> 8) % (uint32_t)inBelow);
    };
    static constexpr const char* kInserts[] = { "x",      " ", "\r", "two words ", "longlonglonglonglongword",
                                                "a\rb\r", "-" };
    for (int step = 0; step < 600; ++step) {
        CAPTURE(step);
        const int length = field->teLength, start = random(length + 1);
        field.Select(start, std::min(length, start + random(3) * random(12)));
        const std::string insert = kInserts[random(7)];
        switch (random(length > 200 ? 3 : 5)) {
        case 0: field.Press(8); break;
        case 1: field.Press(127, random(2) ? (unsigned)optionKey : 0u); break;
        case 2: TEDelete(field.Ref()); break;
        case 3: TEInsert(insert.data(), (long)insert.size(), field.Ref()); break;
        default: field.Type(insert); break;
        }
        const std::vector<short> lines(field->lineStarts, field->lineStarts + field->nLines + 1);
        TECalText(field.Ref());
        REQUIRE(lines == std::vector<short>(field->lineStarts, field->lineStarts + field->nLines + 1));
        const auto shown = field.Pixels();
        EraseRect(&kBox);
        TEUpdate(nullptr, field.Ref());
        REQUIRE(shown == field.Pixels());
    }
}

TEST_CASE("TEGetOffset and TEGetPoint: from place to offset and back")
{
    Field field("Hello world\rsecond");
    for (short offset : { 0, 3, 7, 11, 12, 15, 18 }) {
        Point point = TEGetPoint(offset, field.Ref());
        point.v = (short)(point.v - 1); // within the line
        CHECK(TEGetOffset(point, field.Ref()) == offset);
    }
    CHECK(TEGetPoint(0, field.Ref()).h == kBox.left);
    CHECK(TEGetPoint(0, field.Ref()).v == kBox.top + field->lineHeight);
    CHECK(TEGetPoint(12, field.Ref()).v == kBox.top + 2 * field->lineHeight);
    CHECK(TEGetOffset({ -1000, -1000 }, field.Ref()) == 0);
    CHECK(TEGetOffset({ 1000, 1000 }, field.Ref()) == 18);
}

TEST_CASE("TESetAlignment: centred and right text stand where they are told to")
{
    Field field("Hello");
    const short left = TEGetPoint(0, field.Ref()).h;
    TESetAlignment(teJustCenter, field.Ref());
    const short center = TEGetPoint(0, field.Ref()).h;
    TESetAlignment(teJustRight, field.Ref());
    CHECK(left < center);
    CHECK(center < TEGetPoint(0, field.Ref()).h);
    CHECK(TEGetPoint(5, field.Ref()).h == kBox.right);
}

TEST_CASE("TEGetHeight: lines count from 1, both ends included")
{
    Field field("a\rb\rc");
    const long each = field->lineHeight;
    CHECK(TEGetHeight(3, 1, field.Ref()) == 3 * each);
    CHECK(TEGetHeight(2, 2, field.Ref()) == each);
    CHECK(TEGetHeight(99, 0, field.Ref()) == 3 * each);
    CHECK(TEGetHeight(field->nLines, 1, field.Ref()) == 3 * each);
}

TEST_CASE("TEScroll and TEPinScroll: the destination moves; pinned, no further than the text")
{
    std::string text;
    for (int line = 0; line < 20; ++line)
        text += "line\r";
    Field field(text);
    TEScroll(0, -30, field.Ref());
    CHECK(field->destRect.top == kBox.top - 30);
    TEPinScroll(0, 1000, field.Ref());
    CHECK(field->destRect.top == kBox.top);
    TEPinScroll(0, -10000, field.Ref());
    CHECK(field->destRect.top + 21 * field->lineHeight == kBox.bottom);
}

TEST_CASE("TESelView: the selection is scrolled into view when that is on, and only then")
{
    std::string text;
    for (int line = 0; line < 20; ++line)
        text += "line\r";
    Field field(text);
    field.Select(60, 60);
    TESelView(field.Ref());
    CHECK(field->destRect.top == kBox.top);
    TEAutoView(true, field.Ref());
    TESelView(field.Ref());
    CHECK(field->destRect.top < kBox.top);
    CHECK(TEGetPoint(60, field.Ref()).v <= kBox.bottom);
    field.Press(kUp, cmdKey);
    CHECK(field->destRect.top == kBox.top);
}

TEST_CASE("TEFeatureFlag: a test tells, setting and clearing answer what was before")
{
    Field field;
    CHECK(TEFeatureFlag(teFOutlineHilite, teBitTest, field.Ref()) == teBitClear);
    CHECK(TEFeatureFlag(teFOutlineHilite, teBitSet, field.Ref()) == teBitClear);
    CHECK(TEFeatureFlag(teFOutlineHilite, teBitTest, field.Ref()) == teBitSet);
    CHECK(TEFeatureFlag(teFOutlineHilite, teBitClear, field.Ref()) == teBitSet);
    CHECK(TEFeatureFlag(77, teBitSet, field.Ref()) == 0);
}

TEST_CASE("TEClick: one click sets the caret, two select the word, three the paragraph")
{
    Field field("one two\rthree");
    Point where = TEGetPoint(5, field.Ref());
    where.v = (short)(where.v - 3);
    TEClick(where, false, field.Ref());
    CHECK(field.Selection() == Pair(5, 5));
    TEClick(where, false, field.Ref());
    CHECK(field.Selection() == Pair(4, 7));
    TEClick(where, false, field.Ref());
    CHECK(field.Selection() == Pair(0, 8));
    UInt32 now = 0;
    Delay(GetDblTime() + 1, &now);
    TEClick(where, false, field.Ref());
    CHECK(field.Selection() == Pair(5, 5));
}

TEST_CASE("TEClick: extending keeps the end that is farther away")
{
    Field field("abcdefghij");
    field.Select(2, 6);
    Point where = TEGetPoint(8, field.Ref());
    where.v = (short)(where.v - 3);
    TEClick(where, true, field.Ref());
    CHECK(field.Selection() == Pair(2, 8));
    where.h = TEGetPoint(1, field.Ref()).h;
    TEClick(where, true, field.Ref());
    CHECK(field.Selection() == Pair(1, 8));
}

namespace {

TEHandle gDoomed = nullptr;

Boolean DisposeWhileClicked(TEPtr)
{
    TEDispose(gDoomed);
    return true;
}

} // namespace

TEST_CASE("TEClick: the selection follows the mouse until it is released")
{
    Field field("abcdefghij");
    Point from = TEGetPoint(2, field.Ref()), to = TEGetPoint(7, field.Ref());
    from.v = to.v = (short)(from.v - 3);
    EventRecord event = {};
    host::PressMouse(from);
    while (WaitNextEvent(everyEvent, &event, 0, nullptr) && event.what != mouseDown) {
    }
    host::MoveMouse(to);
    host::ReleaseMouse(to);
    TEClick(from, false, field.Ref());
    CHECK(field.Selection() == Pair(2, 7));
    CHECK_FALSE(Button());
}

TEST_CASE("TEClick: a record that is disposed of while it is clicked in does no harm")
{
    Field field("abcdefghij");
    gDoomed = TENew(&kBox, &kBox);
    TESetText("abc", 3, gDoomed);
    TESetClickLoop(NewTEClickLoopUPP(DisposeWhileClicked), gDoomed);
    EventRecord event = {};
    host::PressMouse({ 20, 20 });
    while (WaitNextEvent(everyEvent, &event, 0, nullptr) && event.what != mouseDown) {
    }
    host::MoveMouse({ 25, 25 });
    host::ReleaseMouse({ 25, 25 });
    TEClick({ 20, 20 }, false, gDoomed);
    CHECK(TEGetText(gDoomed) == nullptr);
    FlushEvents(everyEvent, 0);
}

TEST_CASE("TextEdit: null, disposed, foreign and odd handles answer nothing and do no harm")
{
    Field field("abc");
    TEHandle disposed = TENew(&kBox, &kBox);
    TEDispose(disposed);
    const Handle foreign = NewHandleClear(500);
    for (TEHandle each : { (TEHandle) nullptr, disposed, (TEHandle)foreign, (TEHandle)0x1001 }) {
        TESetText("x", 1, each);
        TEKey('x', each);
        TEInsert("x", 1, each);
        TEDelete(each);
        TESetSelect(0, 1, each);
        TEActivate(each);
        TEDeactivate(each);
        TEIdle(each);
        TEUpdate(&kBox, each);
        TEClick({ 20, 20 }, false, each);
        TECut(each);
        TEPaste(each);
        TEScroll(1, 1, each);
        TECalText(each);
        TEDispose(each);
        CHECK(TEGetText(each) == nullptr);
        CHECK(TEGetHeight(1, 1, each) == 0);
        CHECK(TEGetOffset({ 0, 0 }, each) == 0);
        CHECK(TEFeatureFlag(teFAutoScroll, teBitSet, each) == 0);
    }
    CHECK(GetHandleSize(foreign) == 500);
    DisposeHandle(foreign);
    CHECK(field.Text() == "abc");
}

TEST_CASE("TextEdit: a record whose fields were spoilt is mended, not believed")
{
    Field field("abcdef");
    TERec& record = **field.Ref();
    record.teLength = 32000;
    record.selStart = -7;
    record.selEnd = 31000;
    record.nLines = 12345;
    record.lineHeight = 0;
    record.lineStarts[0] = -100;
    TEUpdate(nullptr, field.Ref());
    TEActivate(field.Ref());
    field.Press(kDown);
    field.Press('x');
    CHECK(field->teLength <= 7);
    DisposeHandle(field->hText);
    field.Press('y');
    TEUpdate(nullptr, field.Ref());
    CHECK(field.Text() == "y");
}

TEST_CASE("TextEdit: a record that outlives its port keeps its text")
{
    CGrafPtr port = quickdraw::NewPixelPort(50, 50);
    SetPort(port);
    const TEHandle text = TENew(&kBox, &kBox);
    TESetText("abc", 3, text);
    quickdraw::DisposePixelPort(port);
    TEKey('d', text);
    TEActivate(text);
    TEUpdate(nullptr, text);
    CHECK((**text).teLength == 4);
    TEDispose(text);
}

TEST_CASE("TETextBox: text wraps and is clipped to the box")
{
    Field field;
    const Rect box = { 20, 20, 50, 100 };
    const std::string text = "The quick brown fox jumps over the lazy dog and over it again";
    TETextBox(text.data(), (long)text.size(), &box, teJustCenter);
    CHECK(field.CountNot(0xFFFFFF) > 50);
    const auto pixels = field.Pixels();
    for (int y = 0; y < 100; ++y)
        for (int x = 0; x < 200; ++x)
            if (x < 20 || x >= 100 || y < 20 || y >= 50)
                REQUIRE(pixels[(size_t)(y * 200 + x)] == 0xFFFFFF);
    TETextBox(nullptr, 0, &box, teJustLeft);
    CHECK(field.CountNot(0xFFFFFF) == 0);
    TETextBox(text.data(), 5, nullptr, teJustLeft);
    TETextBox(nullptr, 5, &box, teJustLeft);
}
