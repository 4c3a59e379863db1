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

struct FontInfo {
    short ascent;  // pixels above the baseline
    short descent; // pixels below it
    short widMax;
    short leading; // between the descent of one line and the ascent of the next
};
typedef struct FontInfo FontInfo;

LAMPBLACK_BEGIN_C

// The text settings of the current port. A size of 0 is the system font's size, 12.
void TextFont(short font);
void TextFace(StyleParameter face);
void TextMode(short mode);
void TextSize(short size);
void SpaceExtra(Fixed extra); // added to the width of every space

// DrawString / DrawText / DrawChar
//
// Draw Mac Roman bytes from the pen, which is on the baseline, and leave the pen where the text ends.
// Text modes: srcCopy, srcOr, srcXor, srcBic with their not- forms, grayishTextOr, transparent.
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

// TruncString / TruncText
//
// Shorten text until it fits into width pixels and mark the place with an ellipsis (0xC9). The answer is
// notTruncated, truncated, or truncErr when not even the ellipsis fits.
short TruncString(short width, unsigned char* theString, TruncCode truncWhere);
short TruncText(short width, Ptr textPtr, short* length, TruncCode truncWhere);

LAMPBLACK_END_C

#endif
