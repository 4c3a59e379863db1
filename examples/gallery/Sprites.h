// Glass balls over a backdrop: every frame restores what the balls covered, moves them and blends them again,
// and only what changed goes on to the screen.
#ifndef LAMPBLACK_GALLERY_SPRITES_H
#define LAMPBLACK_GALLERY_SPRITES_H

#include <lampblack/lampblack.h>

#include <array>

// An offscreen world with its owner.
class World {
public:
    World(short inWidth, short inHeight);
    ~World() { DisposeGWorld(fWorld); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    operator GWorldPtr() const { return fWorld; }
    UInt32* Row(short inRow) const; // native words 0x00RRGGBB

private:
    GWorldPtr fWorld = nullptr;
};

class Sprites {
public:
    static constexpr short kWidth = 640, kHeight = 480;

    // inBackdrop is a picture of that size, or NULL.
    explicit Sprites(PicHandle inBackdrop);

    // Moves everything by one frame and draws what changed into the window's port.
    void Step(WindowRef inWindow);
    // Draws all.
    void Draw(WindowRef inWindow) const;

private:
    static constexpr size_t kBalls = 12;
    static constexpr short kSize = 64;
    static constexpr size_t kColours = 3;

    struct Ball {
        float h, v, speedH, speedV;
        size_t colour;
        Rect Bounds() const;
        void Move();
    };
    struct Art {
        World image{ kSize, kSize }, mask{ kSize, kSize };
    };

    void PaintArt(Art&, const RGBColor&);
    void Restore(const Rect&);
    void Blend(const Ball&);

    World fBackdrop{ kWidth, kHeight };
    World fStage{ kWidth, kHeight };
    std::array<Art, kColours> fArt;
    std::array<Ball, kBalls> fBalls;
};

#endif
