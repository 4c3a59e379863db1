#include "GalleryWindow.h"

#include "GalleryIDs.h"

#include <string>

namespace {

constexpr unsigned long kAttributes = kWindowStandardHandlerAttribute | kWindowCloseBoxAttribute;
constexpr double kFrame = 1.0 / 30; // seconds

RGBColor ColourOf(SInt32 inButton)
{
    switch (inButton) {
    case kGreenButton: return { 0x2222, 0x9999, 0x3333 };
    case kBlueButton: return { 0x2222, 0x5555, 0xCCCC };
    default: return { 0xCCCC, 0x2222, 0x2222 };
    }
}

template <class Kind>
void OpenPage(std::unique_ptr<Kind>& ioPage)
{
    if (!ioPage) {
        ioPage = std::make_unique<Kind>();
        ioPage->StandardSetup();
    }
    ioPage->Open();
}

} // namespace

GalleryWindow::GalleryWindow()
    : CWindow(kGalleryWindow, kDocumentWindowClass, kAttributes), fColour(kRedButton)
{
}

void GalleryWindow::StandardSetup()
{
    CWindow::StandardSetup();
    SetContents(kNameField, "Lampblack"); // a 'CNTL' has no place for an edit field's text
    SetupControlDrawHandler(GetControlByID(fWindow, kPlayground));
    StartTimer(kFrame, kFrame);
}

void GalleryWindow::Timer()
{
    fProgress = (short)((fProgress + 1) % 101);
    SetValue(kProgressBar, fProgress);
    if (!GetValue(kMoveBox))
        return;
    fPlayground.Step(PaneBounds(), (short)GetValue(kSpeedBar), GetValue(kLargeBox) != 0);
    Redraw(kPlayground);
}

GalleryWindow::Action GalleryWindow::ActionFor(SInt32 inControlID)
{
    switch (inControlID) {
    case kOKButton: return &GalleryWindow::Quit;
    case kAboutButton: return &GalleryWindow::ShowAbout;
    case kSpritesButton: return &GalleryWindow::ShowSprites;
    case kFontsButton: return &GalleryWindow::ShowFonts;
    case kPictureButton: return &GalleryWindow::ShowPicture;
    case kBeepButton: return &GalleryWindow::Beep;
    case kGreetButton: return &GalleryWindow::Greet;
    case kRedButton:
    case kGreenButton:
    case kBlueButton: return &GalleryWindow::ChooseColour;
    case kSpeedBar: return &GalleryWindow::ShowSpeed;
    case kTrailBox:
    case kLargeBox: return &GalleryWindow::Redraw;
    default: return nullptr;
    }
}

OSStatus GalleryWindow::DoControlHit(EventRef inEvent)
{
    const SInt32 control = GetControlID(GetCarbonEventControl(inEvent));
    const Action action = ActionFor(control);
    if (!action)
        return eventNotHandledErr;
    (this->*action)(control);
    return noErr;
}

OSStatus GalleryWindow::DoWindowClose(EventRef) const
{
    QuitApplicationEventLoop();
    return noErr;
}

void GalleryWindow::Quit(SInt32)
{
    QuitApplicationEventLoop();
}

void GalleryWindow::ShowAbout(SInt32)
{
    OpenPage(fAbout);
}

void GalleryWindow::ShowSprites(SInt32)
{
    OpenPage(fSprites);
}

void GalleryWindow::ShowFonts(SInt32)
{
    OpenPage(fFonts);
}

void GalleryWindow::ShowPicture(SInt32)
{
    OpenPage(fPicture);
}

void GalleryWindow::ShowPicture(const std::string& inPath)
{
    OpenPage(fPicture);
    fPicture->ShowFile(inPath);
}

void GalleryWindow::Beep(SInt32)
{
    SysBeep(1);
}

void GalleryWindow::Greet(SInt32)
{
    char name[256] = "";
    GetEditTextControlContents(fWindow, kNameField, name);
    SetStaticTextControlTitle(fWindow, kGreetingText, ("Hello, " + std::string(name) + ".").c_str());
}

void GalleryWindow::ChooseColour(SInt32 inControlID)
{
    fColour = inControlID;
    for (const SInt32 button : { kRedButton, kGreenButton, kBlueButton })
        SetValue(button, button == inControlID);
    Redraw(kPlayground);
}

void GalleryWindow::ShowSpeed(SInt32)
{
    SetStaticTextControlTitle(fWindow, kSpeedText, std::to_string(GetValue(kSpeedBar)).c_str());
}

void GalleryWindow::Redraw(SInt32)
{
    const Rect pane = PaneBounds();
    InvalWindowRect(fWindow, &pane);
}

OSStatus GalleryWindow::DoControlDraw(EventHandlerCallRef, EventRef)
{
    const StPortSaver port(fWindow);
    fPlayground.Draw(PaneBounds(), Look());
    return noErr;
}

Rect GalleryWindow::PaneBounds() const
{
    Rect bounds = { 0, 0, 0, 0 };
    GetControlBounds(GetControlByID(fWindow, kPlayground), &bounds);
    return bounds;
}

BallLook GalleryWindow::Look() const
{
    return { ColourOf(fColour), GetValue(kTrailBox) != 0, GetValue(kLargeBox) != 0 };
}
