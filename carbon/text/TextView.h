// Where text stands in its view, and how it, the selection and the caret are drawn. Everything here works in
// the record's port, which the caller has made current with StTextPort.
#ifndef LAMPBLACK_TEXT_TEXTVIEW_H
#define LAMPBLACK_TEXT_TEXTVIEW_H

#include "text/TextRecord.h"

namespace lampblack::text {

// Local coordinates that may lie far outside of what a Rect holds.
int LineTop(Record, int inLine);
int LineAt(Record, int inV);
int HorizontalOf(Record, int inOffset);
int OffsetAt(Record, Point inLocal);
int OffsetInLine(Record, int inLine, int inH);
int TextHeight(Record); // with the empty line at the end

// Draws the lines that meet the area, with the selection, over a fresh background, and the caret if it is on.
void DrawLines(Record, const Rect& inArea);
// What a change left to draw; inOldTotal lines were there before.
void DrawChange(Record, const Relaid&, int inOldTotal);
// The lines that hold a span.
void DrawSpan(Record, Span);

// The caret is drawn by inverting, so that it goes as it came.
void ShowCaret(Record);
void HideCaret(Record);

// Takes a new selection, drawing only where it differs from the one before.
void ChangeSelection(Record, Span);

void ScrollBy(Record, int inH, int inV);
void Reveal(Record,
            int inOffset); // scrolls until the offset is in the view, whether or not the feature is on

} // namespace lampblack::text

#endif
