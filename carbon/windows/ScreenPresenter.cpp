// Composing and presenting the one screen.
#include "ScreenPresenter.h"

#include "Surface.h"
#include "Updates.h"
#include "WindowFrame.h"
#include "WindowList.h"

#include <Host.h>
#include <quickdraw/Port.h>

#include <algorithm>

namespace lampblack::windows {

namespace {

constexpr int kMostRects = 32; // more damaged rectangles than this are presented as one
short gMenuBarInset = 0;

bool HasShadow(const WindowRecord& inWindow)
{
    return !inWindow.Has(kWindowNoShadowAttribute);
}

Shadow& ShadowOf(const WindowRecord& inWindow)
{
    static Shadow shadow; // refitted from window to window; its tables are short
    shadow.Fit(inWindow.structure.Bounds(), inWindow.hilited && inWindow.layer <= Layer::Modal);
    return shadow;
}

// Structure and shadow.
Rect Covered(const WindowRecord& inWindow)
{
    const Rect bounds = inWindow.structure.Bounds();
    if (!HasShadow(inWindow))
        return bounds;
    return { (short)(bounds.top - Shadow::kReach + Shadow::kDrop), (short)(bounds.left - Shadow::kReach),
             (short)(bounds.bottom + Shadow::kReach + Shadow::kDrop),
             (short)(bounds.right + Shadow::kReach) };
}

Rect Union(const Rect& a, const Rect& b)
{
    return { std::min(a.top, b.top), std::min(a.left, b.left), std::max(a.bottom, b.bottom),
             std::max(a.right, b.right) };
}

long Area(const Rect& inRect)
{
    return (long)Width(inRect) * Height(inRect);
}

bool Contains(const Rect& inOuter, const Rect& inInner)
{
    return inInner.left >= inOuter.left && inInner.right <= inOuter.right && inInner.top >= inOuter.top &&
           inInner.bottom <= inOuter.bottom;
}

int CornersOf(const WindowRecord& inWindow, Corner outCorners[4])
{
    return RoundCorners(inWindow.structure.Bounds(), inWindow.topRadius, inWindow.bottomRadius, outCorners);
}

Source SourceOf(CGrafPtr inPort, const Rect& inPlace)
{
    const quickdraw::PixelView view = quickdraw::PortPixels(inPort);
    return { view.base, view.rowPixels, inPlace };
}

} // namespace

Presenter& Screen()
{
    static ScreenPresenter presenter;
    return presenter;
}

Rect ScreenBounds()
{
    return Screen().ScreenBounds();
}

Rect AvailableBounds()
{
    Rect bounds = Screen().ScreenBounds();
    bounds.top = (short)(bounds.top + gMenuBarInset);
    return bounds;
}

void SetMenuBarInset(short inHeight)
{
    gMenuBarInset = inHeight;
}

// --- What changed

int DamageList::BestToMerge(const Rect& inRect) const
{
    int best = 0;
    long least = Area(Union(fRects[0], inRect)) - Area(fRects[0]);
    for (int i = 1; i < fCount; ++i) {
        const long growth = Area(Union(fRects[i], inRect)) - Area(fRects[i]);
        if (growth < least) {
            least = growth;
            best = i;
        }
    }
    return best;
}

void DamageList::Add(const Rect& inRect)
{
    if (IsEmptyRect(inRect))
        return;
    for (int i = fCount; i-- > 0;)
        if (Contains(fRects[i], inRect))
            return;
    if (fCount < kMost) {
        fRects[fCount++] = inRect;
        return;
    }
    Rect& merged = fRects[BestToMerge(inRect)];
    merged = Union(merged, inRect);
}

void ScreenPresenter::ContentDamaged(WindowRecord& inWindow, const Rect& inRect)
{
    if (!inWindow.OnScreen() || inWindow.collapsed)
        return;
    const Rect content = inWindow.content;
    fDamage.Add(Overlap(Shifted(inRect, content.left, content.top), Overlap(content, fBounds)));
}

// The frame is all around the content; its four sides are damaged and the content is not.
void ScreenPresenter::FrameDamaged(WindowRecord& inWindow)
{
    if (!inWindow.OnScreen())
        return;
    for (const FrameStrip& strip : inWindow.strips)
        fDamage.Add(Overlap(Shifted(strip.place, inWindow.content.left, inWindow.content.top), fBounds));
    if (HasShadow(inWindow)) {
        const Rect outer = Covered(inWindow), inner = inWindow.structure.Bounds();
        fDamage.Add(Overlap({ outer.top, outer.left, inner.top, outer.right }, fBounds));
        fDamage.Add(Overlap({ inner.top, outer.left, inner.bottom, inner.left }, fBounds));
        fDamage.Add(Overlap({ inner.top, inner.right, inner.bottom, outer.right }, fBounds));
        fDamage.Add(Overlap({ inner.bottom, outer.left, outer.bottom, outer.right }, fBounds));
    }
}

void ScreenPresenter::WindowDamaged(WindowRecord& inWindow)
{
    if (inWindow.OnScreen())
        fDamage.Add(Overlap(Covered(inWindow), fBounds));
}

void ScreenPresenter::EverythingDamaged()
{
    fDamage.Add(fBounds);
}

// --- The screen

ScreenPresenter::ScreenPresenter()
{
    const host::Settings& settings = host::CurrentSettings();
    const host::Table& machine = host::Machine();
    const std::string title = settings.application.stem().string();
    if (machine.openScreen)
        machine.openScreen(settings.width, settings.height, title.c_str());
    FollowScreenSize();
}

void ScreenPresenter::FollowScreenSize()
{
    int width = fBounds.right, height = fBounds.bottom;
    if (host::Machine().screenSize)
        host::Machine().screenSize(&width, &height);
    if (width == fBounds.right && height == fBounds.bottom)
        return;
    fBounds = { 0, 0, (short)std::clamp(height, 1, 16000), (short)std::clamp(width, 1, 16000) };
    fPixels.clear();
    fCanvas = {};
    FindCanvas();
    fLayoutStale = true;
    EverythingDamaged();
    if (TheSurfaceHooks().screenChanged)
        TheSurfaceHooks().screenChanged();
}

void ScreenPresenter::FindCanvas()
{
    const host::Table& machine = host::Machine();
    int rowPixels = Width(fBounds);
    uint32_t* pixels = machine.screenMemory ? machine.screenMemory(&rowPixels) : nullptr;
    if (pixels)
        fPixels = {};
    else if (fPixels.empty())
        fPixels.resize((size_t)Area(fBounds));
    if (!pixels)
        pixels = fPixels.data();
    if (pixels == fCanvas.pixels && rowPixels == fCanvas.rowPixels)
        return;
    fCanvas = { pixels, rowPixels };
    quickdraw::SetScreenPixels(pixels, rowPixels, Width(fBounds), Height(fBounds));
    EverythingDamaged();
}

// --- Composing

// From the front to the back, each window is seen where nothing opaque lies in front.
void ScreenPresenter::Settle()
{
    if (!fLayoutStale)
        return;
    fLayoutStale = false;
    Region free(fBounds);
    for (WindowRecord* window : List().Order()) {
        window->bodySeen.Clear();
        window->shadowSeen.Clear();
        if (!window->OnScreen())
            continue;
        // What lies behind shows through the smoothed edges of round corners.
        Region body = window->structure, opaque = window->structure;
        Corner corners[4];
        for (int i = CornersOf(*window, corners); i-- > 0;) {
            body.Add(corners[i].place);
            opaque.Subtract(corners[i].place);
        }
        window->bodySeen.SetIntersection(free, body);
        if (HasShadow(*window)) {
            window->shadowSeen = free;
            window->shadowSeen.Clip(Covered(*window));
            window->shadowSeen.Subtract(opaque);
        }
        if (window->alpha >= 1)
            free.Subtract(opaque);
    }
    fDesktopSeen = free;
}

void ScreenPresenter::PaintShadow(WindowRecord& inWindow, const Region& inWhere) const
{
    const Shadow& shadow = ShadowOf(inWindow);
    for (const pixman_box32_t& box : inWhere.Boxes()) {
        shadow.Paint(fCanvas, box);
        shadow.PaintOutline(fCanvas, box, inWindow.topRadius, inWindow.bottomRadius);
    }
}

void ScreenPresenter::PaintBody(WindowRecord& inWindow, Region* ioWhere) const
{
    Source sources[5];
    int count = 0;
    for (const FrameStrip& strip : inWindow.strips)
        if (strip.port)
            sources[count++] =
                SourceOf(strip.port, Shifted(strip.place, inWindow.content.left, inWindow.content.top));
    if (!inWindow.collapsed)
        sources[count++] = SourceOf(inWindow.port, inWindow.content);
    const auto alpha = (uint32_t)(inWindow.alpha * 256 + 0.5f);
    Corner corners[4];
    for (int corner = CornersOf(inWindow, corners); corner-- > 0;) {
        static Region within;
        within = *ioWhere;
        within.Clip(corners[corner].place);
        for (const pixman_box32_t& box : within.Boxes())
            for (int i = 0; i < count; ++i)
                BlendCorner(fCanvas, sources[i], box, corners[corner], alpha);
        ioWhere->Subtract(within);
    }
    for (const pixman_box32_t& box : ioWhere->Boxes())
        for (int i = 0; i < count; ++i) {
            if (alpha >= 256)
                PaintSource(fCanvas, sources[i], box);
            else
                BlendSource(fCanvas, sources[i], box, alpha);
        }
}

void ScreenPresenter::Compose()
{
    fDamaged.Clear();
    for (const Rect& rect : fDamage)
        fDamaged.Add(rect);
    fDamage.Clear();
    fDamaged.Clip(fBounds);
    fScratch.SetIntersection(fDesktopSeen, fDamaged);
    for (const pixman_box32_t& box : fScratch.Boxes())
        PaintDesktop(fCanvas, Height(fBounds), box);
    const std::vector<WindowRecord*>& order = List().Order();
    for (auto window = order.rbegin(); window != order.rend(); ++window) {
        fScratch.SetIntersection((*window)->shadowSeen, fDamaged);
        if (!fScratch.IsEmpty())
            PaintShadow(**window, fScratch);
        fScratch.SetIntersection((*window)->bodySeen, fDamaged);
        if (!fScratch.IsEmpty())
            PaintBody(**window, &fScratch);
    }
}

void ScreenPresenter::Present(double inNow)
{
    if (TheSurfaceHooks().beforeFrame)
        TheSurfaceHooks().beforeFrame();
    for (WindowRecord* window : List().Order())
        if (window->OnScreen())
            DrawFrameIfStale(*window);
    Settle();
    FindCanvas();
    Compose();
    for (WindowRecord* window : List().Order())
        if (window->OnScreen())
            quickdraw::PortWasPresented(window->port);
    fLast = inNow;
    const auto boxes = fDamaged.Boxes();
    Rect rects[kMostRects] = { fDamaged.Bounds() };
    int count = 1;
    if (boxes.size() <= kMostRects) {
        count = (int)boxes.size();
        for (int i = 0; i < count; ++i)
            rects[i] = { (short)boxes[(size_t)i].y1, (short)boxes[(size_t)i].x1, (short)boxes[(size_t)i].y2,
                         (short)boxes[(size_t)i].x2 };
    }
    if (count && host::Machine().present)
        host::Machine().present({ fCanvas.pixels, fCanvas.rowPixels, Width(fBounds), Height(fBounds) }, rects,
                                count);
}

double ScreenPresenter::PresentIfDue(double inNow)
{
    if (fDamage.IsEmpty())
        return host::kForever;
    const double interval = host::Machine().refreshInterval ? host::Machine().refreshInterval() : 1 / 60.0;
    if (fLast >= 0 && inNow < fLast + interval)
        return fLast + interval;
    Present(inNow);
    return host::kForever;
}

void ScreenPresenter::PresentNow()
{
    if (!fDamage.IsEmpty())
        Present(host::Now());
}

} // namespace lampblack::windows
