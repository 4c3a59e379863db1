// Changes that more than one published call makes.
#ifndef LAMPBLACK_TEXT_EDITING_H
#define LAMPBLACK_TEXT_EDITING_H

#include "text/TextRecord.h"

namespace lampblack::text {

// Replaces a span by bytes and puts the caret behind them, drawing what changes.
void ReplaceSpan(Record, Span, const void* inBytes, long inCount);

// TEKey with the modifiers of the event that brought the key, for a caller that has one.
void TypeKey(TEHandle, char inKey, unsigned inModifiers);

} // namespace lampblack::text

#endif
