// The gallery's two windows.
#ifndef LAMPBLACK_GALLERY_GALLERYWINDOW_H
#define LAMPBLACK_GALLERY_GALLERYWINDOW_H

#include "Playground.h"

#include <lampblack/lampblack.h>

#include <memory>

// Stays alive when it is closed, so that it can be shown again where it was.
class AboutWindow : public CWindow {
public:
    AboutWindow();

    OSStatus DoControlHit(EventRef inEvent) override;
    OSStatus DoWindowClose(EventRef inEvent) const override;
};

class GalleryWindow : public CWindow {
public:
    GalleryWindow();

    void StandardSetup() override;
    void Timer() override;
    OSStatus DoControlHit(EventRef inEvent) override;
    OSStatus DoControlDraw(EventHandlerCallRef inCallRef, EventRef inEvent) override;
    OSStatus DoWindowClose(EventRef inEvent) const override;

private:
    using Action = void (GalleryWindow::*)(SInt32 inControlID);
    static Action ActionFor(SInt32 inControlID);

    void Quit(SInt32);
    void ShowAbout(SInt32);
    void Beep(SInt32);
    void Greet(SInt32);
    void ChooseColour(SInt32 inControlID);
    void ShowSpeed(SInt32);
    void Redraw(SInt32);

    Rect PaneBounds() const;
    BallLook Look() const;

    Playground fPlayground;
    std::unique_ptr<AboutWindow> fAbout;
    short fProgress = 0;
    SInt32 fColour;
};

#endif
