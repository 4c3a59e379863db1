// TextEdit: a record of up to 32,767 bytes of Mac Roman text in one font, its lines, selection and caret.
// Begin at TENew; every other call takes the handle that it answers.
#ifndef LAMPBLACK_CARBON_TEXTEDIT_H
#define LAMPBLACK_CARBON_TEXTEDIT_H

#include <Carbon/MacTypes.h>

typedef Style StyleField;
typedef short CharParameter;
typedef char Chars[32001];
typedef Chars* CharsPtr;
typedef CharsPtr* CharsHandle;

typedef struct TERec TERec;
typedef TERec* TEPtr;
typedef TEPtr* TEHandle;

// Is there a word break before the character at this offset?
typedef Boolean (*WordBreakProcPtr)(Ptr text, short charPos);
// Called while the mouse is held in TEClick; false ends the tracking.
typedef Boolean (*TEClickLoopProcPtr)(TEPtr pTE);
// Draws the highlight, and the caret, in place of inverting the rectangle.
typedef void (*HighHookProcPtr)(const Rect* r, TEPtr pTE);
typedef void (*CaretHookProcPtr)(const Rect* r, TEPtr pTE);
typedef WordBreakProcPtr WordBreakUPP;
typedef TEClickLoopProcPtr TEClickLoopUPP;
typedef HighHookProcPtr HighHookUPP;
typedef CaretHookProcPtr CaretHookUPP;

struct TERec {
    Rect destRect; // where lines are laid out; its bottom is not a limit
    Rect viewRect; // what of it is seen
    Rect selRect;
    short lineHeight;
    short fontAscent;
    Point selPoint; // the last point clicked
    short selStart; // byte offsets
    short selEnd;
    short active;
    WordBreakUPP wordBreak;
    TEClickLoopUPP clickLoop;
    long clickTime; // ticks
    short clickLoc;
    long caretTime; // ticks
    short caretState;
    short just;
    short teLength;
    Handle hText;
    long hDispatchRec; // private
    short clikStuff;
    short crOnly; // negative: lines end at returns only
    short txFont;
    StyleField txFace;
    short txMode;
    short txSize;
    GrafPtr inPort;
    HighHookUPP highHook;
    CaretHookUPP caretHook;
    short nLines;
    short lineStarts[16001]; // offset of each line, then the length of the text; only those are allocated
};

enum { teJustLeft = 0, teJustCenter = 1, teJustRight = -1, teForceLeft = -2 };
enum { teFlushDefault = 0, teCenter = 1, teFlushRight = -1, teFlushLeft = -2 };
enum { teFAutoScroll = 0, teFTextBuffering = 1, teFOutlineHilite = 2 };
enum { teBitClear = 0, teBitSet = 1, teBitTest = -1 };

LAMPBLACK_BEGIN_C

void TEInit(void);

// TENew
//
// A record with the font, face, size and mode of the current port, in which it will draw.
//
// Units:      local coordinates of the current port.
// Ownership:  the caller's; release it with TEDispose. NULL when there is no port or no memory, or a NULL
//             Rect.
TEHandle TENew(const Rect* inDestRect, const Rect* inViewRect);
void TEDispose(TEHandle);

// A handle that is NULL, disposed or foreign makes every call below do nothing, or answer zero.
// Text past 32,767 bytes is left out.
void TESetText(const void* inText, long inLength, TEHandle);
CharsHandle TEGetText(TEHandle);                            // the record's own handle, not a copy
void TEInsert(const void* inText, long inLength, TEHandle); // before the selection, which stays selected
void TEDelete(TEHandle);

// TEKey
//
// Types one character: it replaces the selection; 8 deletes backward, 127 forward, 28 to 31 are the arrows
// and 1 and 4 Home and End. With the arrows Option moves by words, Command to the ends of lines and text, and
// Shift extends.
void TEKey(CharParameter inKey, TEHandle);

void TECut(TEHandle);
void TECopy(TEHandle);
void TEPaste(TEHandle);

// The private scrap that Cut, Copy and Paste use.
long TEGetScrapLength(void);
void TESetScrapLength(long inLength);
Handle TEGetScrapHandle(void);
void TESetScrapHandle(Handle inScrap);
OSErr TEFromScrap(void); // desk scrap to private scrap; noTypeErr when it holds no text
OSErr TEToScrap(void);

// Offsets outside the text are taken as its nearest end; a start beyond the end is taken as the end.
void TESetSelect(long inStart, long inEnd, TEHandle);
// Sets the caret, or extends the selection, and follows the mouse until its button is released.
// A second click in the same place selects the word, a third one the line.
void TEClick(Point inLocal, Boolean inExtend, TEHandle);
void TEIdle(TEHandle);
void TEActivate(TEHandle);
void TEDeactivate(TEHandle);

void TEUpdate(const Rect* inUpdate, TEHandle); // NULL: the whole view
void TETextBox(const void* inText, long inLength, const Rect* inBox, short inAlignment);
void TESetAlignment(short inAlignment, TEHandle);
void TECalText(TEHandle); // lays the lines out again after fields were changed
void TEScroll(short inH, short inV, TEHandle);
void TEPinScroll(short inH, short inV, TEHandle); // no further than the text reaches
void TEAutoView(Boolean inOn, TEHandle);
void TESelView(TEHandle); // scrolls the selection into view when automatic scrolling is on
short TEGetOffset(Point inLocal, TEHandle);
Point TEGetPoint(short inOffset, TEHandle);                     // the baseline left of this offset, local
long TEGetHeight(long inEndLine, long inStartLine, TEHandle);   // lines count from 1, both are included
short TEFeatureFlag(short inFeature, short inAction, TEHandle); // the state before the call

void TESetClickLoop(TEClickLoopUPP, TEHandle);
void TESetWordBreak(WordBreakUPP, TEHandle);

WordBreakUPP NewWordBreakUPP(WordBreakProcPtr);
TEClickLoopUPP NewTEClickLoopUPP(TEClickLoopProcPtr);
HighHookUPP NewHighHookUPP(HighHookProcPtr);
CaretHookUPP NewCaretHookUPP(CaretHookProcPtr);
void DisposeWordBreakUPP(WordBreakUPP);
void DisposeTEClickLoopUPP(TEClickLoopUPP);
void DisposeHighHookUPP(HighHookUPP);
void DisposeCaretHookUPP(CaretHookUPP);

LAMPBLACK_END_C

#endif
