// The row loops of the arithmetic modes: plain and without branches, so that a compiler makes vectors of
// them.
#include "Arithmetic.h"

#include <algorithm>

namespace lampblack::quickdraw {

static constexpr uint32_t kColor = 0x00FFFFFF;

// Applies a function of (source, destination, operand) to each of the three channels.
template <class Channel>
static inline void EachChannel(const uint32_t* inSource, uint32_t* ioDestination, int inCount,
                               uint32_t inOperand, Channel inChannel)
{
    const uint32_t red = inOperand >> 16 & 0xFF, green = inOperand >> 8 & 0xFF, blue = inOperand & 0xFF;
    for (int i = 0; i < inCount; ++i) {
        const uint32_t s = inSource[i], d = ioDestination[i];
        ioDestination[i] = inChannel(s >> 16 & 0xFF, d >> 16 & 0xFF, red) << 16 |
                           inChannel(s >> 8 & 0xFF, d >> 8 & 0xFF, green) << 8 |
                           inChannel(s & 0xFF, d & 0xFF, blue);
    }
}

// The weighted mean, rounded to the nearest; exact at both ends.
static void BlendRow(const uint32_t* source, uint32_t* ioDestination, int count, const ArithmeticColors& c)
{
    EachChannel(source, ioDestination, count, c.op, [](uint32_t s, uint32_t d, uint32_t weight) {
        const uint32_t sum = s * weight + d * (255 - weight) + 128;
        return (sum + (sum >> 8)) >> 8;
    });
}

static void AddPinRow(const uint32_t* source, uint32_t* ioDestination, int count, const ArithmeticColors& c)
{
    EachChannel(source, ioDestination, count, c.op,
                [](uint32_t s, uint32_t d, uint32_t most) { return std::min(s + d, most); });
}

static void AddOverRow(const uint32_t* source, uint32_t* ioDestination, int count, const ArithmeticColors&)
{
    EachChannel(source, ioDestination, count, 0,
                [](uint32_t s, uint32_t d, uint32_t) { return (s + d) & 0xFF; });
}

static void SubPinRow(const uint32_t* source, uint32_t* ioDestination, int count, const ArithmeticColors& c)
{
    EachChannel(source, ioDestination, count, c.op, [](uint32_t s, uint32_t d, uint32_t least) {
        return (uint32_t)std::max((int)d - (int)s, (int)least);
    });
}

static void SubOverRow(const uint32_t* source, uint32_t* ioDestination, int count, const ArithmeticColors&)
{
    EachChannel(source, ioDestination, count, 0,
                [](uint32_t s, uint32_t d, uint32_t) { return (d - s) & 0xFF; });
}

static void AddMaxRow(const uint32_t* source, uint32_t* ioDestination, int count, const ArithmeticColors&)
{
    EachChannel(source, ioDestination, count, 0,
                [](uint32_t s, uint32_t d, uint32_t) { return std::max(s, d); });
}

static void AdMinRow(const uint32_t* source, uint32_t* ioDestination, int count, const ArithmeticColors&)
{
    EachChannel(source, ioDestination, count, 0,
                [](uint32_t s, uint32_t d, uint32_t) { return std::min(s, d); });
}

static void TransparentRow(const uint32_t* source, uint32_t* ioDestination, int count,
                           const ArithmeticColors& c)
{
    const uint32_t back = c.back & kColor;
    for (int i = 0; i < count; ++i) {
        const uint32_t s = source[i] & kColor, d = ioDestination[i];
        ioDestination[i] = s == back ? d : s;
    }
}

static void HiliteRow(const uint32_t* source, uint32_t* ioDestination, int count, const ArithmeticColors& c)
{
    const uint32_t back = c.back & kColor, hilite = c.hilite & kColor;
    for (int i = 0; i < count; ++i) {
        const uint32_t d = ioDestination[i] & kColor;
        const uint32_t other = d == back ? hilite : d == hilite ? back : d;
        ioDestination[i] = (source[i] & kColor) == kColor ? d : other;
    }
}

bool IsArithmetic(short inMode)
{
    return inMode >= blend && inMode <= adMin;
}

ArithmeticRow ArithmeticRowOf(short inMode)
{
    static constexpr ArithmeticRow kRows[] = { BlendRow,       AddPinRow, AddOverRow, SubPinRow,
                                               TransparentRow, AddMaxRow, SubOverRow, AdMinRow };
    const auto mode = (short)(inMode & ~ditherCopy);
    if (mode == hilite)
        return HiliteRow;
    return IsArithmetic(mode) ? kRows[mode - blend] : nullptr;
}

short ModeAtDepth1(short inMode)
{
    static constexpr short kModes[] = { srcCopy, srcBic, srcXor, srcOr, srcOr, srcBic, srcXor, srcOr };
    const auto mode = (short)(inMode & ~ditherCopy);
    if (mode == hilite)
        return srcXor;
    return IsArithmetic(mode) ? kModes[mode - blend] : inMode;
}

void Combine(short mode, const uint32_t* source, uint32_t* ioDestination, int count, uint32_t opColor,
             uint32_t back)
{
    if (const ArithmeticRow row = IsArithmetic(mode) ? ArithmeticRowOf(mode) : nullptr)
        row(source, ioDestination, count, { .op = opColor, .back = back });
}

} // namespace lampblack::quickdraw
