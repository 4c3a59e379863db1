// What keys do to a record: typing, deleting, and the ways of the caret.
#include "text/Editing.h"
#include "text/PortText.h"
#include "text/TextView.h"

#include <Carbon/Events.h>

#include <algorithm>

namespace lampblack::text {

namespace {

constexpr char kHome = 1, kEnd = 4, kBackspace = 8, kTab = 9;
constexpr char kLeft = 28, kRight = 29, kUp = 30, kDown = 31, kForwardDelete = 127;

struct Way {
    char key;
    unsigned modifier; // 0: neither Option nor Command
    Motion motion;
};

constexpr Way kWays[] = { { kLeft, 0, Motion::CharacterLeft },
                          { kLeft, optionKey, Motion::WordLeft },
                          { kLeft, cmdKey, Motion::LineStart },
                          { kRight, 0, Motion::CharacterRight },
                          { kRight, optionKey, Motion::WordRight },
                          { kRight, cmdKey, Motion::LineEnd },
                          { kUp, 0, Motion::LineUp },
                          { kUp, optionKey, Motion::LineUp },
                          { kUp, cmdKey, Motion::TextStart },
                          { kDown, 0, Motion::LineDown },
                          { kDown, optionKey, Motion::LineDown },
                          { kDown, cmdKey, Motion::TextEnd },
                          { kHome, 0, Motion::LineStart },
                          { kHome, cmdKey, Motion::TextStart },
                          { kEnd, 0, Motion::LineEnd },
                          { kEnd, cmdKey, Motion::TextEnd } };

const Way* FindWay(char inKey, unsigned inModifiers)
{
    const unsigned modifier = inModifiers & cmdKey ? cmdKey : inModifiers & optionKey ? optionKey : 0;
    for (const Way& way : kWays)
        if (way.key == inKey && (way.modifier == modifier || (!way.modifier && modifier == optionKey &&
                                                              (inKey == kHome || inKey == kEnd))))
            return &way;
    return nullptr;
}

bool IsVertical(Motion inMotion)
{
    return inMotion == Motion::LineUp || inMotion == Motion::LineDown;
}

// Up and down keep aiming at the place where they began, past shorter lines.
int MovedByLine(Record inRecord, int inFrom, bool inUp)
{
    Private fields = PrivateOf(*inRecord);
    if (fields.goalX == Private::kNoGoal)
        fields.goalX =
            (int16_t)std::clamp(HorizontalOf(inRecord, inFrom) - inRecord->destRect.left, -32767, 32767);
    SetPrivate(*inRecord, fields);
    const Lines lines = inRecord.LineTable();
    const int line = lines.LineOf(inFrom) + (inUp ? -1 : 1);
    if (line < 0)
        return 0;
    if (line >= lines.Total())
        return inRecord->teLength;
    return OffsetInLine(inRecord, line, inRecord->destRect.left + fields.goalX);
}

void ForgetGoal(Record inRecord)
{
    Private fields = PrivateOf(*inRecord);
    fields.goalX = Private::kNoGoal;
    SetPrivate(*inRecord, fields);
}

// The end of a selection that Shift moves: the one that was not its origin. clickLoc remembers the origin.
int MovingEnd(Record inRecord)
{
    return inRecord->clickLoc == inRecord->selEnd ? inRecord->selStart : inRecord->selEnd;
}

int AnchorEnd(Record inRecord)
{
    return MovingEnd(inRecord) == inRecord->selStart ? inRecord->selEnd : inRecord->selStart;
}

bool GoesBack(Motion inMotion)
{
    return inMotion == Motion::CharacterLeft || inMotion == Motion::WordLeft ||
           inMotion == Motion::LineStart || inMotion == Motion::LineUp || inMotion == Motion::TextStart;
}

// Where the caret goes. A selection that is not extended is left at the end towards which the motion goes.
int Target(Record inRecord, Motion inMotion, bool inExtends)
{
    const Span selection = inRecord.Selection();
    const bool byCharacter = inMotion == Motion::CharacterLeft || inMotion == Motion::CharacterRight;
    const int edge = GoesBack(inMotion) ? selection.start : selection.end;
    if (!inExtends && byCharacter && !selection.IsEmpty())
        return edge;
    const int from = inExtends ? MovingEnd(inRecord) : edge;
    return IsVertical(inMotion)
               ? MovedByLine(inRecord, from, inMotion == Motion::LineUp)
               : Moved(inRecord.Bytes(), inRecord.LineTable(), from, inMotion, inRecord->wordBreak);
}

void MoveCaret(Record inRecord, Motion inMotion, bool inExtends)
{
    const StTextPort port(*inRecord);
    if (!IsVertical(inMotion))
        ForgetGoal(inRecord);
    const int anchor = AnchorEnd(inRecord), target = Target(inRecord, inMotion, inExtends);
    inRecord->clickLoc = (short)(inExtends ? anchor : target);
    ChangeSelection(inRecord, inExtends ? Span{ std::min(anchor, target), std::max(anchor, target) }
                                        : Span{ target, target });
    inRecord->caretTime = (long)TickCount() + (long)GetCaretTime(); // a caret on its way does not blink
    if (inRecord.HasFeature(teFAutoScroll))
        Reveal(inRecord, target);
}

// Deletes from the caret to where a motion leads, or the selection when there is one.
void DeleteTowards(Record inRecord, Motion inMotion)
{
    Span span = inRecord.Selection();
    if (span.IsEmpty()) {
        const int other =
            Moved(inRecord.Bytes(), inRecord.LineTable(), span.end, inMotion, inRecord->wordBreak);
        span = { std::min(span.end, other), std::max(span.end, other) };
    }
    if (!span.IsEmpty())
        ReplaceSpan(inRecord, span, nullptr, 0);
}

// Keys that type nothing, such as Escape or Enter, leave the text alone.
bool IsTyped(char inKey)
{
    return (unsigned char)inKey >= ' ' || inKey == kReturn || inKey == kTab;
}

} // namespace

void TypeKey(TEHandle inHandle, char inKey, unsigned inModifiers)
{
    const Record record = Find(inHandle);
    if (!record)
        return;
    if (const Way* way = FindWay(inKey, inModifiers)) {
        MoveCaret(record, way->motion, inModifiers & (shiftKey | rightShiftKey));
        return;
    }
    ForgetGoal(record);
    const bool byWord = inModifiers & optionKey;
    if (inKey == kBackspace)
        DeleteTowards(record, byWord ? Motion::WordLeft : Motion::CharacterLeft);
    else if (inKey == kForwardDelete)
        DeleteTowards(record, byWord ? Motion::WordRight : Motion::CharacterRight);
    else if (IsTyped(inKey))
        ReplaceSpan(record, record.Selection(), &inKey, 1);
    record->clickLoc = record->selEnd;
}

} // namespace lampblack::text

void TEKey(CharParameter inKey, TEHandle inHandle)
{
    lampblack::text::TypeKey(inHandle, (char)inKey, GetCurrentKeyModifiers());
}
