// The editing core: words, lines and the ways a caret moves, on plain Mac Roman bytes. It knows no port and
// no record; a measure answers where characters stand. TextEdit is built on it.
#ifndef LAMPBLACK_TEXT_EDITCORE_H
#define LAMPBLACK_TEXT_EDITCORE_H

#include <cstdint>

namespace lampblack::text {

constexpr char kReturn = '\r';
constexpr int kLongestText = 32767; // bytes; offsets are published as short
constexpr int kMostLines = 16000;   // as many as the published record has room for

struct Text {
    const char* bytes = nullptr;
    int length = 0;

    char At(int inOffset) const { return inOffset >= 0 && inOffset < length ? bytes[inOffset] : 0; }
    bool IsReturn(int inOffset) const
    {
        return inOffset >= 0 && inOffset < length && bytes[inOffset] == kReturn;
    }
};

// From start up to, and not including, end.
struct Span {
    int start = 0, end = 0;
    bool operator==(const Span&) const = default;
    bool IsEmpty() const { return start >= end; }
};

// Is there a word break before this character? An application's own, or null for the built-in rule: letters,
// digits and apostrophes between letters make words, and every other run of like characters is one of its
// own.
using WordBreak = unsigned char (*)(char* text, short offset);

Span WordAt(const Text&, int inOffset, WordBreak = nullptr);      // the word that a double click selects
Span ParagraphAt(const Text&, int inOffset);                      // with its return
int PreviousWord(const Text&, int inOffset, WordBreak = nullptr); // where the word before begins
int NextWord(const Text&, int inOffset, WordBreak = nullptr);     // where the word after ends

// How wide a run of bytes is, in pixels.
class Measure {
public:
    virtual ~Measure() = default;
    virtual int Width(const char* inBytes, int inCount) = 0;
    // How many of the bytes fit into the width.
    virtual int Fitting(const char* inBytes, int inCount, int inWidth) = 0;
};

struct Breaking {
    int width = 0; // pixels
    bool atReturnsOnly = false;
    WordBreak wordBreak = nullptr;
};

// Where the line that begins at inStart ends: behind its return, or behind the last word that fits with the
// spaces that follow it, or behind the characters that fit when one word is too wide; always past inStart.
int LineEnd(const Text&, int inStart, const Breaking&, Measure&);

// Lines as their starts, followed by the length of the text. The values may be an application's and are
// pinned to the text wherever they are used. A text that is empty or ends with a return has one line more,
// which starts at its end and is not counted by `count`.
class Lines {
public:
    Lines(const Text& inText, const short* inStarts, int inCount)
        : fText(inText), fStarts(inStarts), fCount(inCount)
    {
    }

    int Total() const { return fCount + HasLastEmpty(); }
    bool HasLastEmpty() const { return fText.length == 0 || fText.IsReturn(fText.length - 1); }
    int LineOf(int inOffset) const;
    Span Whole(int inLine) const;    // with its return
    Span Visible(int inLine) const;  // without it, and without spaces at the end of a wrapped line
    int LastCaret(int inLine) const; // the farthest offset whose caret still stands in this line

private:
    int Start(int inLine) const;

    Text fText;
    const short* fStarts;
    int fCount;
};

enum class Motion : uint8_t {
    CharacterLeft,
    CharacterRight,
    WordLeft,
    WordRight,
    LineStart,
    LineEnd,
    LineUp,
    LineDown,
    TextStart,
    TextEnd
};

// The offset that a horizontal motion reaches; LineUp and LineDown need places and are the caller's.
int Moved(const Text&, const Lines&, int inFrom, Motion, WordBreak = nullptr);

} // namespace lampblack::text

#endif
