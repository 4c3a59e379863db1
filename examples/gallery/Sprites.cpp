#include "Sprites.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr Rect kStage = { 0, 0, Sprites::kHeight, Sprites::kWidth };
constexpr RGBColor kColours[] = { { 0xE800, 0x3000, 0x2800 },
                                  { 0x2800, 0x8000, 0xE800 },
                                  { 0xF800, 0xB800, 0x2000 } };

// A point of a ball, from -1 to 1 along each axis, lit from the top left.
struct Light {
    float coverage;  // 0 outside, 1 inside, between them at the rim
    float body;      // how much of the colour is left in the shade
    float highlight; // how much white is on top
};

Light LightAt(float x, float y, float inPixel)
{
    const float distance = std::sqrt(x * x + y * y);
    const float toLight = std::sqrt((x + 0.35f) * (x + 0.35f) + (y + 0.4f) * (y + 0.4f));
    return { std::clamp((1 - distance) / inPixel + 0.5f, 0.0f, 1.0f),
             std::clamp(1.15f - 0.6f * toLight, 0.2f, 1.0f), std::clamp(1 - toLight / 0.3f, 0.0f, 1.0f) };
}

UInt32 Lit(UInt16 inChannel, const Light& inLight)
{
    const float lit = (float)(inChannel >> 8) * inLight.body;
    return (UInt32)(lit + (255 - lit) * inLight.highlight);
}

Rect Joined(const Rect& a, const Rect& b)
{
    Rect both;
    UnionRect(&a, &b, &both);
    return both;
}

} // namespace

World::World(short inWidth, short inHeight)
{
    const Rect bounds = { 0, 0, inHeight, inWidth };
    if (const OSErr error = NewGWorldEnhanced(&fWorld, 32, &bounds, nullptr, nullptr, 0))
        throw(long) error;
}

UInt32* World::Row(short inRow) const
{
    const PixMapHandle map = GetGWorldPixMap(fWorld);
    return reinterpret_cast<UInt32*>(GetPixBaseAddr(map) + (long)inRow * GetPixRowBytes(map));
}

Sprites::Sprites(PicHandle inBackdrop)
{
    const StGWorldSaver saver(fBackdrop, nullptr);
    if (inBackdrop)
        DrawPicture(inBackdrop, &kStage);
    else
        EraseRect(&kStage);
    Restore(kStage);
    for (size_t i = 0; i < kColours; ++i)
        PaintArt(fArt[i], ::kColours[i]);
    mt_random random;
    for (size_t i = 0; i < kBalls; ++i) {
        const auto upTo = [&random](UInt32 inMost) { return (float)random.ranged_long(0, inMost); };
        fBalls[i] = { upTo(kWidth - kSize), upTo(kHeight - kSize), 0.6f + upTo(20) / 10, 0.6f + upTo(20) / 10,
                      i % kColours };
        Blend(fBalls[i]);
    }
}

// The mask is the weight of what lies below: black inside, white outside, and a little grey everywhere,
// because glass lets some of the backdrop through.
void Sprites::PaintArt(Art& ioArt, const RGBColor& inColour)
{
    constexpr float kGlass = 0.82f;
    for (short v = 0; v < kSize; ++v)
        for (short h = 0; h < kSize; ++h) {
            const float half = kSize / 2.0f;
            const Light light = LightAt(((float)h + 0.5f - half) / (half - 1),
                                        ((float)v + 0.5f - half) / (half - 1), 1 / half);
            const float opacity = light.coverage * (kGlass + (1 - kGlass) * light.highlight);
            ioArt.image.Row(v)[h] =
                Lit(inColour.red, light) << 16 | Lit(inColour.green, light) << 8 | Lit(inColour.blue, light);
            ioArt.mask.Row(v)[h] = (UInt32)(255 - 255 * opacity) * 0x010101;
        }
}

Rect Sprites::Ball::Bounds() const
{
    const short left = (short)h, top = (short)v;
    return { top, left, (short)(top + kSize), (short)(left + kSize) };
}

// The ball turns round at the edges.
void Sprites::Ball::Move()
{
    h += speedH;
    v += speedV;
    if (h < 0 || h > kWidth - kSize)
        speedH = -speedH;
    if (v < 0 || v > kHeight - kSize)
        speedV = -speedV;
    h = std::clamp(h, 0.0f, (float)(kWidth - kSize));
    v = std::clamp(v, 0.0f, (float)(kHeight - kSize));
}

void Sprites::Restore(const Rect& inRect)
{
    CopyPixels(fBackdrop, fStage, &inRect, &inRect, srcCopy, nullptr);
}

void Sprites::Blend(const Ball& inBall)
{
    const Rect bounds = inBall.Bounds();
    const Art& art = fArt[inBall.colour];
    CopyPixelsTransparentMask32(art.image, art.mask, fStage, &bounds);
}

void Sprites::Step(WindowRef inWindow)
{
    std::array<Rect, kBalls> changed;
    for (size_t i = 0; i < kBalls; ++i) {
        const Rect before = fBalls[i].Bounds();
        Restore(before);
        fBalls[i].Move();
        changed[i] = Joined(before, fBalls[i].Bounds());
    }
    for (const Ball& ball : fBalls)
        Blend(ball);
    for (const Rect& rect : changed)
        CopyPixels(fStage, GetWindowPort(inWindow), &rect, &rect, srcCopy, nullptr);
    FlushWindowDirtyRegion(inWindow);
}

void Sprites::Draw(WindowRef inWindow) const
{
    CopyPixelsToWindow(fStage, inWindow, &kStage, &kStage, srcCopy, nullptr);
}
