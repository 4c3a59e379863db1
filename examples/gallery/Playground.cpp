#include "Playground.h"

#include <algorithm>

namespace {

short Diameter(bool inLarge)
{
    return inLarge ? 32 : 18;
}

// Moves along one axis between 0 and the end, and turns round at both.
short Move(short inAt, short inEnd, short inSpeed, short* ioTurn)
{
    const int next = inAt + inSpeed * *ioTurn;
    if (next < 0 || next > inEnd)
        *ioTurn = next < 0 ? 1 : -1;
    return (short)std::clamp(next, 0, (int)std::max<short>(inEnd, 0));
}

RGBColor Fainter(const RGBColor& inColour, size_t inStep, size_t inSteps)
{
    const auto mix = [&](UInt16 inChannel) {
        return (UInt16)(0xFFFF - (0xFFFF - inChannel) * (inSteps - inStep) / (2 * inSteps));
    };
    return { mix(inColour.red), mix(inColour.green), mix(inColour.blue) };
}

} // namespace

void Playground::Step(const Rect& inPane, short inSpeed, bool inLarge)
{
    const short size = Diameter(inLarge);
    Point next = fPast[0];
    next.h = Move(next.h, (short)(2 * (inPane.right - inPane.left - size)), inSpeed, &fTurnH);
    next.v = Move(next.v, (short)(2 * (inPane.bottom - inPane.top - size)), inSpeed, &fTurnV);
    std::copy_backward(fPast.begin(), fPast.end() - 1, fPast.end());
    fPast[0] = next;
}

void Playground::Draw(const Rect& inPane, const BallLook& inLook) const
{
    const RGBColor white = { 0xFFFF, 0xFFFF, 0xFFFF }, grey = { 0x9999, 0x9999, 0x9999 }, black = { 0, 0, 0 };
    RGBForeColor(&white);
    PaintRect(&inPane);
    const short size = Diameter(inLook.large);
    for (size_t i = inLook.trail ? kTrail : 1; i-- > 0;) {
        const RGBColor colour = i == 0 ? inLook.colour : Fainter(inLook.colour, i, kTrail);
        Rect ball;
        ball.left = (short)(inPane.left + fPast[i].h / 2);
        ball.top = (short)(inPane.top + fPast[i].v / 2);
        ball.right = (short)(ball.left + size);
        ball.bottom = (short)(ball.top + size);
        RGBForeColor(&colour);
        PaintOval(&ball);
    }
    RGBForeColor(&grey);
    FrameRect(&inPane);
    RGBForeColor(&black);
}
