// The gallery's first window.
#ifndef LAMPBLACK_GALLERY_GALLERYWINDOW_H
#define LAMPBLACK_GALLERY_GALLERYWINDOW_H

#include "Pages.h"
#include "Playground.h"

#include <lampblack/lampblack.h>

#include <memory>
#include <string>

class GalleryWindow : public CWindow {
public:
    GalleryWindow();

    void StandardSetup() override;
    void Timer() override;
    OSStatus DoControlHit(EventRef inEvent) override;
    OSStatus DoControlDraw(EventHandlerCallRef inCallRef, EventRef inEvent) override;
    OSStatus DoWindowClose(EventRef inEvent) const override;

    // The pages, made when they are first shown.
    void ShowAbout(SInt32 = 0);
    void ShowSprites(SInt32 = 0);
    void ShowFonts(SInt32 = 0);
    void ShowPicture(SInt32 = 0);
    void ShowPicture(const std::string& inPath);

private:
    using Action = void (GalleryWindow::*)(SInt32 inControlID);
    static Action ActionFor(SInt32 inControlID);

    void Quit(SInt32);
    void Beep(SInt32);
    void Greet(SInt32);
    void ChooseColour(SInt32 inControlID);
    void ShowSpeed(SInt32);
    void Redraw(SInt32);

    Rect PaneBounds() const;
    BallLook Look() const;

    Playground fPlayground;
    std::unique_ptr<AboutPage> fAbout;
    std::unique_ptr<SpritePage> fSprites;
    std::unique_ptr<FontPage> fFonts;
    std::unique_ptr<PicturePage> fPicture;
    short fProgress = 0;
    SInt32 fColour;
};

#endif
