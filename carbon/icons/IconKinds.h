// The members of an icon: which sizes there are, and what data each of them may have.
#ifndef LAMPBLACK_ICONS_ICONKINDS_H
#define LAMPBLACK_ICONS_ICONKINDS_H

#include <Carbon/Icons.h>

#include <cstddef>
#include <cstdint>

namespace lampblack::icons {

// What data a member holds; the numbers are columns of the table and bit places of the published selectors.
enum class Data : uint8_t {
    Bits,   // one bit a pixel, and as many of the mask behind them
    Four,   // indexes of the standard table of 16 colours
    Eight,  // indexes of the standard table of 256 colours
    Direct, // four bytes a pixel: 0, red, green, blue
    Alpha   // a byte a pixel
};
inline constexpr int kDataKinds = 5;

struct IconSize {
    int width, height;
    OSType types[kDataKinds]; // by Data; 0 where there is none
    int selectorShift;        // of the column Bits; -1: no selector but that of everything names it
};

inline constexpr IconSize kSizes[] = {
    { 16, 12, { kMini1BitMask, kMini4BitData, kMini8BitData, 0, 0 }, 16 },
    { 16, 16, { kSmall1BitMask, kSmall4BitData, kSmall8BitData, kSmall32BitData, kSmall8BitMask }, 8 },
    { 32, 32, { kLarge1BitMask, kLarge4BitData, kLarge8BitData, kLarge32BitData, kLarge8BitMask }, 0 },
    { 48, 48, { kHuge1BitMask, kHuge4BitData, kHuge8BitData, kHuge32BitData, kHuge8BitMask }, 24 },
    { 128, 128, { 0, 0, 0, kThumbnail32BitData, kThumbnail8BitMask }, -1 },
};
inline constexpr int kSizeCount = 5;

// One cell of that table.
struct Kind {
    int size; // index of kSizes
    Data data;

    const IconSize& Size() const { return kSizes[size]; }
    OSType Type() const { return Size().types[(int)data]; }
    size_t Place() const { return (size_t)size * kDataKinds + (size_t)data; }
    bool IsSelectedBy(IconSelectorValue) const;
    size_t Bytes() const; // of whole data; for Bits of icon and mask
};
inline constexpr size_t kPlaces = (size_t)kSizeCount * kDataKinds;

// Answers false for a type that is no member of an icon.
bool FindKind(OSType, Kind* out);

template <class Visitor>
void ForEachKind(Visitor&& inVisit)
{
    for (int size = 0; size < kSizeCount; ++size)
        for (int data = 0; data < kDataKinds; ++data)
            if (kSizes[size].types[data])
                inVisit(Kind{ size, (Data)data });
}

} // namespace lampblack::icons

#endif
