// Drawing and measuring Mac Roman text in the current port, and the port's text settings.
// Begin with TextFont and DrawString. Quickdraw.h includes this.
#ifndef LAMPBLACK_CARBON_QUICKDRAWTEXT_H
#define LAMPBLACK_CARBON_QUICKDRAWTEXT_H

#include <Carbon/MacTypes.h>

typedef SInt16 CharParameter;
typedef SInt16 StyleParameter;
typedef SInt16 TruncCode;

enum { truncEnd = 0, truncMiddle = 0x4000, smTruncEnd = 0, smTruncMiddle = 0x4000 };
enum { notTruncated = 0, truncated = 1, truncErr = -1, smNotTruncated = 0, smTruncated = 1, smTruncErr = -1 };

// Added to a text mode: only what the glyphs cover is changed, never the background.
static const int mask = 64;

struct FontInfo {
    short ascent;  // pixels above the baseline
    short descent; // pixels below it
    short widMax;
    short leading; // between the descent of one line and the ascent of the next
};
typedef struct FontInfo FontInfo;

// Where a run of one style stands within its line; all runs are treated alike here.
typedef SInt16 JustStyleCode;
enum {
    smOnlyStyleRun = 0,
    smLeftStyleRun = 1,
    smRightStyleRun = 2,
    smMiddleStyleRun = 3,
    onlyStyleRun = 0,
    leftStyleRun = 1,
    rightStyleRun = 2,
    middleStyleRun = 3
};
enum { leftCaret = 0, rightCaret = -1, kHilite = 1 }; // directions of CharToPixel: all mean the same here

typedef SInt8 StyledLineBreakCode;
enum { smBreakWord = 0, smBreakChar = 1, smBreakOverflow = 2 };

LAMPBLACK_BEGIN_C

// The text settings of the current port. A size of 0 is the system font's size, 12.
void TextFont(short font);
void TextFace(StyleParameter face);
void TextMode(short mode);
void TextSize(short size);
void SpaceExtra(Fixed extra); // added to the width of every space
void CharExtra(Fixed extra);  // added to the width of every other character

// DrawString / DrawText / DrawChar
//
// Draw Mac Roman bytes from the pen, which is on the baseline, and leave the pen where the text ends.
//
// Modes:      srcOr, srcBic and their kin change what the glyphs cover, with grey edges wherever the pixels
//             can show them; srcXor and notSrcXor invert what is covered by half or more, so that drawing
//             twice restores. srcCopy, the not- forms and the arithmetic modes draw the whole text box, the
//             background with the background colour; adding mask (64) confines them to the glyphs.
//             grayishTextOr is half-way between the colours, or every second pixel where there is no such
//             colour.
void DrawChar(CharParameter ch);
void DrawString(ConstStr255Param s);
void DrawText(const void* textBuf, short firstByte, short byteCount);
#define MacDrawText DrawText

// Widths in pixels, always the distance that the pen would move.
short CharWidth(CharParameter ch);
short StringWidth(ConstStr255Param s);
short TextWidth(const void* textBuf, short firstByte, short byteCount);

// MeasureText
//
// charLocs receives count + 1 numbers of 16 bits: the distance from the start of the text to each character,
// and to the end.
void MeasureText(short count, const void* textAddr, void* charLocs);

void GetFontInfo(FontInfo* info);

// StdText / StdTxMeas
//
// Draw and measure text that is scaled by numer / denom, horizontally and vertically on their own. A zero or
// negative scale counts as 1. StdTxMeas answers the width before scaling, and leaves in *numer and *denom the
// scale that a caller has to apply to it and to *info.
void StdText(short count, const void* textAddr, Point numer, Point denom);
short StdTxMeas(short byteCount, const void* textAddr, Point* numer, Point* denom, FontInfo* info);

// CharToPixel / PixelToChar
//
// The distance from the start of a text to a character, and the place between characters that is nearest to a
// distance. slop is what the spaces of the text share beyond their width. PixelToChar answers an offset from
// 0 to textLength; *leadingEdge is whether the distance lies in the front half of the character there, and
// *widthRemaining is -1, or by how much the distance passes the end of the text. NULL results are not given.
short CharToPixel(Ptr textBuf, long textLength, Fixed slop, long offset, short direction,
                  JustStyleCode styleRunPosition, Point numer, Point denom);
short PixelToChar(Ptr textBuf, long textLength, Fixed slop, Fixed pixelWidth, Boolean* leadingEdge,
                  Fixed* widthRemaining, JustStyleCode styleRunPosition, Point numer, Point denom);

// DrawJustified / MeasureJustified: DrawText and MeasureText with a slop shared by the spaces.
void DrawJustified(Ptr textPtr, long textLength, Fixed slop, JustStyleCode styleRunPosition, Point numer,
                   Point denom);
void MeasureJustified(Ptr textPtr, long textLength, Fixed slop, Ptr charLocs, JustStyleCode styleRunPosition,
                      Point numer, Point denom);

// The length of a text without the white space at its end.
long VisibleLength(Ptr textPtr, long textLength);

// TruncString / TruncText
//
// Shorten text until it fits into width pixels and mark the place with an ellipsis (0xC9). The answer is
// notTruncated, truncated, or truncErr when not even the ellipsis fits.
short TruncString(short width, unsigned char* theString, TruncCode truncWhere);
short TruncText(short width, Ptr textPtr, short* length, TruncCode truncWhere);

// StyledLineBreak
//
// Where a line that has *textWidth pixels left ends within textStart to textEnd of a text. *textOffset comes
// in as other than 0 for the first run of a line, and goes out as the start of the next line. The answer is
// smBreakWord for a break between words, smBreakChar for a word cut in two (only in a first run), and
// smBreakOverflow when all of it fits: *textWidth is then what remains.
StyledLineBreakCode StyledLineBreak(Ptr textPtr, SInt32 textLen, SInt32 textStart, SInt32 textEnd,
                                    SInt32 flags, Fixed* textWidth, SInt32* textOffset);

LAMPBLACK_END_C

#endif
