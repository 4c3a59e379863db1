// The presenter that paints one screen: desktop, shadows, windows, into one image of which only the damaged
// rectangles are composed and shown.
#ifndef LAMPBLACK_WINDOWS_SCREENPRESENTER_H
#define LAMPBLACK_WINDOWS_SCREENPRESENTER_H

#include "Painting.h"
#include "Presenter.h"

namespace lampblack::windows {

// Rectangles that changed: a few, merged where they get too many, so that a thousand small drawings cost no
// memory.
class DamageList {
public:
    void Add(const Rect& inRect);
    void Clear() { fCount = 0; }
    bool IsEmpty() const { return fCount == 0; }
    const Rect* begin() const { return fRects; }
    const Rect* end() const { return fRects + fCount; }

private:
    static constexpr int kMost = 16;
    int BestToMerge(const Rect& inRect) const;

    Rect fRects[kMost];
    int fCount = 0;
};

class ScreenPresenter final : public Presenter {
public:
    ScreenPresenter();

    void ContentDamaged(WindowRecord& inWindow, const Rect& inRect) override;
    void FrameDamaged(WindowRecord& inWindow) override;
    void WindowDamaged(WindowRecord& inWindow) override;
    void LayoutChanged() override { fLayoutStale = true; }
    void EverythingDamaged() override;
    void SizeChanged() override { FollowScreenSize(); }
    double PresentIfDue(double inNow) override;
    void PresentNow() override;
    Rect ScreenBounds() override { return fBounds; }

private:
    void FollowScreenSize();
    void FindCanvas(); // the host's memory, or our own
    void Settle();     // what is seen of each window
    void Compose();    // the damaged rectangles of the screen
    void PaintBody(WindowRecord& inWindow, Region* ioWhere) const;
    void PaintShadow(WindowRecord& inWindow, const Region& inWhere) const;
    void Present(double inNow);

    Rect fBounds = { 0, 0, 0, 0 };
    std::vector<uint32_t> fPixels; // empty while composing in the host's memory
    Canvas fCanvas;
    DamageList fDamage;
    Region fDamaged, fScratch, fDesktopSeen;
    bool fLayoutStale = true;
    double fLast = -1; // when the last frame was presented
};

} // namespace lampblack::windows

#endif
