// The record behind a TEHandle. Applications read and write its fields, so nothing in it is believed: Find
// answers only for handles that TENew made and that still live, and mends what cannot be right before
// anything is used.
#ifndef LAMPBLACK_TEXT_TEXTRECORD_H
#define LAMPBLACK_TEXT_TEXTRECORD_H

#include "text/EditCore.h"

#include <Carbon/Quickdraw.h>
#include <Carbon/TextEdit.h>

namespace lampblack::text {

// What the record keeps in its private field.
struct Private {
    uint8_t features = 0;    // a bit for each teF… feature
    uint8_t clicks = 0;      // in a row, in the same place
    int16_t goalX = kNoGoal; // where up and down aim, from the left of the destination
    static constexpr int16_t kNoGoal = -32768;
};

Private PrivateOf(const TERec&);
void SetPrivate(TERec&, Private);

// A live record, or nothing. The record may move when its lines or text change: it is reached through the
// handle.
class Record {
public:
    Record() = default;
    explicit Record(TEHandle inHandle) : fHandle(inHandle) {}

    explicit operator bool() const { return fHandle; }
    TERec* operator->() const { return *fHandle; }
    TERec& operator*() const { return **fHandle; }
    TEHandle Handle() const { return fHandle; }

    Text Bytes() const;
    Lines LineTable() const;
    Span Selection() const { return { (**fHandle).selStart, (**fHandle).selEnd }; }
    bool HasFeature(short inFeature) const { return PrivateOf(**fHandle).features & (1 << inFeature); }

private:
    TEHandle fHandle = nullptr;
};

Record NewRecord(const Rect& inDestination, const Rect& inView);
Record Find(TEHandle);
void DisposeRecord(Record);

// Replaces a span of the text; what does not fit is left out. Answers how many bytes came in. Lays out
// nothing.
int ReplaceBytes(Record, Span, const void* inBytes, int inCount);

// Lays out all lines, in the current port.
void LayOut(Record);

// What a change of the text did to its lines: the first and last one that look different, and whether there
// are more lines than before, or fewer, so that all that follow stand elsewhere.
struct Relaid {
    int first = 0, last = 0;
    bool moved = false;
};

// After ReplaceBytes at an offset: lays out anew from there until lines begin where they began before.
Relaid LayOutChange(Record, int inStart, int inRemoved, int inAdded);

} // namespace lampblack::text

#endif
