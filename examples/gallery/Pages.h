// The gallery's further pages, a window each: sprites over a backdrop, the theme's fonts, a picture of the
// user's.
#ifndef LAMPBLACK_GALLERY_PAGES_H
#define LAMPBLACK_GALLERY_PAGES_H

#include "Sprites.h"

#include <lampblack/lampblack.h>

#include <optional>
#include <string>

// Stays alive when it is closed, so that it can be shown again where it was.
class Page : public CWindow {
public:
    explicit Page(long inID);

    OSStatus DoWindowClose(EventRef inEvent) const override;
    void Open(); // shown, in front
};

class AboutPage : public Page {
public:
    AboutPage();
    OSStatus DoControlHit(EventRef inEvent) override;
};

// 60 frames a second while it is shown.
class SpritePage : public Page {
public:
    SpritePage();
    void Show() override;
    void Timer() override;
    OSStatus DoWindowDrawContent(EventRef inEvent) override;
    OSStatus DoWindowHiding(EventRef inEvent) const override;

private:
    std::optional<Sprites> fSprites;
    mutable bool fRuns = false;
};

class FontPage : public Page {
public:
    FontPage();
    OSStatus DoWindowDrawContent(EventRef inEvent) override;
};

// Shows any picture file, scaled down to the pane when it is larger.
class PicturePage : public Page {
public:
    PicturePage();
    ~PicturePage() override;

    void StandardSetup() override;
    OSStatus DoControlHit(EventRef inEvent) override;
    OSStatus DoControlDraw(EventHandlerCallRef inCallRef, EventRef inEvent) override;
    void ShowFile(const std::string& inPath); // in UTF-8

private:
    void Load(const std::string& inPath);
    std::string Read(const std::string& inPath);
    void Say(const std::string&) const;
    Rect PaneBounds() const;

    PicHandle fPicture = nullptr;
};

#endif
