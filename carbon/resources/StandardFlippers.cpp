// The platform's own flippers. Each walks a record field by field, and stops where the record is cut off:
// nothing behind a missing field is touched. Layouts: Inside Macintosh, Macintosh Toolbox Essentials,
// chapters 3 to 6.
#include "Flippers.h"

#include <foundation/BigEndian.h>

#include <algorithm>
#include <iterator>

namespace lampblack::resources {
namespace {

using foundation::Flip16;
using foundation::Flip32;

// Flips fields one after another, in either direction; a count is answered in native order whichever it is.
class FieldFlipper {
public:
    FieldFlipper(void* ioData, size_t inSize, bool inNative)
        : fAt((uint8_t*)ioData), fStart(fAt), fEnd(fAt + inSize), fNative(inNative)
    {
    }

    size_t Remaining() const { return (size_t)(fEnd - fAt); }

    uint16_t Word()
    {
        if (Remaining() < 2)
            return Stop();
        uint16_t before, after;
        std::memcpy(&before, fAt, 2);
        Flip16(fAt);
        std::memcpy(&after, fAt, 2);
        fAt += 2;
        return fNative ? before : after;
    }

    void Words(size_t inCount)
    {
        for (size_t i = 0; i < inCount && Remaining() > 0; ++i)
            Word();
    }

    void Long()
    {
        if (Remaining() < 4) {
            Stop();
            return;
        }
        Flip32(fAt);
        fAt += 4;
    }

    uint8_t Byte() { return Remaining() ? *fAt++ : 0; }

    void Skip(size_t inCount) { fAt += std::min(inCount, Remaining()); }

    void SkipPascal()
    {
        const size_t length = Byte();
        if (length > Remaining())
            Stop();
        else
            Skip(length);
    }

    void Align()
    {
        if ((fAt - fStart) & 1)
            Skip(1);
    }

private:
    uint16_t Stop()
    {
        fAt = fEnd;
        return 0;
    }

    uint8_t* fAt;
    uint8_t* fStart;
    uint8_t* fEnd;
    bool fNative;
};

void FlipRect(FieldFlipper& ioFields)
{
    ioFields.Words(4);
}

// Title, then, from the next even place on, where the window is to be put: a word that older files lack.
void FlipTitleAndPosition(FieldFlipper& ioFields)
{
    ioFields.SkipPascal();
    ioFields.Align();
    ioFields.Word();
}

// 'DLOG': bounds, procID, visible, goAway (each a byte and a filler), refCon, item list.
void FlipDialog(FieldFlipper& ioFields)
{
    FlipRect(ioFields);
    ioFields.Word();
    ioFields.Skip(4);
    ioFields.Long();
    ioFields.Word();
    FlipTitleAndPosition(ioFields);
}

// 'WIND': as 'DLOG', without the item list.
void FlipWindow(FieldFlipper& ioFields)
{
    FlipRect(ioFields);
    ioFields.Word();
    ioFields.Skip(4);
    ioFields.Long();
    FlipTitleAndPosition(ioFields);
}

// 'ALRT': bounds, item list, stages, position.
void FlipAlert(FieldFlipper& ioFields)
{
    FlipRect(ioFields);
    ioFields.Words(3);
}

// 'CNTL': bounds, value, visible and a filler, max, min, procID, refCon, title.
void FlipControl(FieldFlipper& ioFields)
{
    FlipRect(ioFields);
    ioFields.Word();
    ioFields.Skip(2);
    ioFields.Words(3);
    ioFields.Long();
}

// The data of one 'DITL' item. The high bit of the kind says that it is disabled.
void FlipItemData(FieldFlipper& ioFields, uint8_t inKind, size_t inLength)
{
    constexpr uint8_t kHelp = 1, kResourceControl = 7, kIcon = 32, kPicture = 64;
    const size_t length = std::min(inLength, ioFields.Remaining());
    const uint8_t kind = inKind & 0x7F;
    const size_t words = kind == kHelp ? length / 2
                         : kind == kResourceControl || kind == kIcon || kind == kPicture
                             ? std::min<size_t>(length / 2, 1)
                             : 0;
    ioFields.Words(words);
    ioFields.Skip(length - words * 2);
}

// 'DITL': the number of items less one; of each a handle's place, bounds, kind, and data padded to even
// length.
void FlipItemList(FieldFlipper& ioFields)
{
    const size_t count = (uint16_t)(ioFields.Word() + 1);
    for (size_t i = 0; i < count && ioFields.Remaining() > 0; ++i) {
        ioFields.Long();
        FlipRect(ioFields);
        const uint8_t kind = ioFields.Byte(), length = ioFields.Byte();
        FlipItemData(ioFields, kind, length);
        ioFields.Align();
    }
}

void FlipAllWords(FieldFlipper& ioFields)
{
    ioFields.Words(ioFields.Remaining() / 2);
}

void FlipFirstWord(FieldFlipper& ioFields)
{
    ioFields.Word();
}

// 'CURS': 16 words of picture, 16 of mask, the hot spot.
void FlipCursor(FieldFlipper& ioFields)
{
    ioFields.Words(34);
}

// A ColorTable: seed, flags, the number of entries less one; of each a value and three components.
void FlipColorTable(FieldFlipper& ioFields)
{
    ioFields.Long();
    ioFields.Word();
    const size_t count = (uint16_t)(ioFields.Word() + 1);
    ioFields.Words(count * 4);
}

// 'styl': the number of runs; of each a start, height, ascent, font, face and a filler, size, colour.
void FlipStyles(FieldFlipper& ioFields)
{
    const size_t count = ioFields.Word();
    for (size_t i = 0; i < count && ioFields.Remaining() > 0; ++i) {
        ioFields.Long();
        ioFields.Words(3);
        ioFields.Skip(2);
        ioFields.Words(4);
    }
}

template <void (*kFlip)(FieldFlipper&)>
OSStatus Flip(OSType, OSType, SInt16, void* ioData, ByteCount inSize, Boolean inNative, void*)
{
    FieldFlipper fields(ioData, inSize, inNative);
    kFlip(fields);
    return noErr;
}

struct Entry {
    OSType type;
    CoreEndianFlipProc flip;
};

constexpr Entry kFlippers[] = {
    { 'DLOG', Flip<FlipDialog> },     { 'DITL', Flip<FlipItemList> },   { 'CNTL', Flip<FlipControl> },
    { 'WIND', Flip<FlipWindow> },     { 'ALRT', Flip<FlipAlert> },      { 'MBAR', Flip<FlipAllWords> },
    { 'STR#', Flip<FlipFirstWord> },  { 'CURS', Flip<FlipCursor> },     { 'clut', Flip<FlipColorTable> },
    { 'wctb', Flip<FlipColorTable> }, { 'cctb', Flip<FlipColorTable> }, { 'dctb', Flip<FlipColorTable> },
    { 'actb', Flip<FlipColorTable> }, { 'styl', Flip<FlipStyles> },
};

} // namespace

CoreEndianFlipProc StandardFlipper(OSType inType)
{
    const auto found = std::find_if(std::begin(kFlippers), std::end(kFlippers),
                                    [&](const Entry& entry) { return entry.type == inType; });
    return found == std::end(kFlippers) ? nullptr : found->flip;
}

} // namespace lampblack::resources
