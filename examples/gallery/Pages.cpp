#include "Pages.h"

#include "GalleryIDs.h"

#include <utility>

namespace {

constexpr unsigned long kAttributes = kWindowStandardHandlerAttribute | kWindowCloseBoxAttribute;
constexpr double kFrame = 1.0 / 60; // seconds

// The backdrop is JPEG data in a resource, as an image file has it.
PicHandle LoadBackdrop()
{
    const Handle jpeg = GetResource('JPEG', kBackdrop);
    PicHandle picture = nullptr;
    if (jpeg)
        ConvertJPEGToPicture(jpeg, &picture);
    return picture;
}

struct ThemeFontName {
    ThemeFontID font;
    const char* name;
};

constexpr ThemeFontName kThemeFonts[] = {
    { kThemeSystemFont, "System font" },
    { kThemeEmphasizedSystemFont, "Emphasized system font" },
    { kThemeSmallSystemFont, "Small system font" },
    { kThemeSmallEmphasizedSystemFont, "Small emphasized system font" },
    { kThemeMiniSystemFont, "Mini system font" },
    { kThemeLabelFont, "Label font" },
    { kThemeViewsFont, "Views font" },
    { kThemeApplicationFont, "Application font" },
    { kThemeMenuTitleFont, "Menu title font" },
    { kThemeMenuItemFont, "Menu item font" },
    { kThemeWindowTitleFont, "Window title font" },
    { kThemeUtilityWindowTitleFont, "Utility window title font" },
    { kThemeAlertHeaderFont, "Alert header font" },
    { kThemePushButtonFont, "Push button font" },
};

enum class Place { File, Folder, None };

Place SpecOfPath(const std::string& inPath, FSSpec* outSpec)
{
    FSRef file;
    Boolean isFolder = false;
    if (FSPathMakeRef(reinterpret_cast<const UInt8*>(inPath.c_str()), &file, &isFolder) != noErr ||
        FSGetCatalogInfo(&file, kFSCatInfoNone, nullptr, nullptr, outSpec, nullptr) != noErr)
        return Place::None;
    return isFolder ? Place::Folder : Place::File;
}

// Text of one encoding in another; empty when it has no place there.
std::string Converted(const std::string& inText, CFStringEncoding inFrom, CFStringEncoding inTo)
{
    char text[1024] = "";
    const CFStringRef string = CFStringCreateWithCString(nullptr, inText.c_str(), inFrom);
    if (!string)
        return "";
    const bool fits = CFStringGetCString(string, text, sizeof text, inTo);
    CFRelease(string);
    return fits ? text : "";
}

} // namespace

Page::Page(long inID) : CWindow(inID, kDocumentWindowClass, kAttributes) {}

OSStatus Page::DoWindowClose(EventRef) const
{
    HideWindow(fWindow);
    return noErr;
}

void Page::Open()
{
    Show();
    SelectWindow(fWindow);
}

AboutPage::AboutPage() : Page(kAboutWindow) {}

OSStatus AboutPage::DoControlHit(EventRef)
{
    Hide();
    return noErr;
}

SpritePage::SpritePage() : Page(kSpriteWindow)
{
    const PicHandle backdrop = LoadBackdrop();
    fSprites.emplace(backdrop);
    if (backdrop)
        KillPicture(backdrop);
}

void SpritePage::Show()
{
    Page::Show();
    if (std::exchange(fRuns, true))
        return;
    StopTimer();
    StartTimer(kFrame, kFrame);
}

void SpritePage::Timer()
{
    if (fRuns)
        fSprites->Step(fWindow);
    else
        StopTimer();
}

OSStatus SpritePage::DoWindowDrawContent(EventRef)
{
    fSprites->Draw(fWindow);
    return noErr;
}

OSStatus SpritePage::DoWindowHiding(EventRef) const
{
    fRuns = false;
    return eventNotHandledErr;
}

FontPage::FontPage() : Page(kFontWindow) {}

OSStatus FontPage::DoWindowDrawContent(EventRef)
{
    constexpr short kLine = 24, kMargin = 20;
    const StPortSaver port(fWindow);
    Rect bounds;
    EraseRect(GetWindowPortBounds(fWindow, &bounds));
    short baseline = kMargin + 12;
    for (const ThemeFontName& font : kThemeFonts) {
        MoveTo(kMargin, baseline);
        DrawThemeCString(font.name, font.font, teJustLeft);
        MoveTo((short)(bounds.right - kMargin - WidthThemeCString("0123456789", font.font)), baseline);
        DrawThemeCString("0123456789", font.font, teJustLeft);
        baseline = (short)(baseline + kLine);
    }
    return noErr;
}

PicturePage::PicturePage() : Page(kPictureWindow) {}

PicturePage::~PicturePage()
{
    if (fPicture)
        KillPicture(fPicture);
}

void PicturePage::StandardSetup()
{
    Page::StandardSetup();
    SetupControlDrawHandler(GetControlByID(fWindow, kPicturePane));
}

OSStatus PicturePage::DoControlHit(EventRef inEvent)
{
    if (GetControlID(GetCarbonEventControl(inEvent)) != kOpenButton)
        return eventNotHandledErr;
    char path[256] = "";
    GetEditTextControlContents(fWindow, kPathField, path);
    Load(Converted(path, kCFStringEncodingMacRoman, kCFStringEncodingUTF8));
    return noErr;
}

void PicturePage::ShowFile(const std::string& inPath)
{
    SetContents(kPathField, Converted(inPath, kCFStringEncodingUTF8, kCFStringEncodingMacRoman).c_str());
    Load(inPath);
}

// The pane shows the file that the text above is about: nothing when there is no picture in it.
void PicturePage::Load(const std::string& inPath)
{
    if (fPicture)
        KillPicture(std::exchange(fPicture, nullptr));
    Say(Read(inPath));
    const Rect pane = PaneBounds();
    InvalWindowRect(fWindow, &pane);
}

// Answers what is to be said.
std::string PicturePage::Read(const std::string& inPath)
{
    FSSpec file;
    switch (SpecOfPath(inPath, &file)) {
    case Place::None:
        return inPath.empty() ? "Type the name of a file first." : "There is no file of that name.";
    case Place::Folder: return "This is a folder. A picture is in a file.";
    case Place::File: break;
    }
    if (const OSErr error = NewPictureFromFile(&file, &fPicture))
        return "This file holds no picture that can be shown (error " + std::to_string(error) + ").";
    Rect frame;
    QDGetPictureBounds(fPicture, &frame);
    return std::to_string(frame.right - frame.left) + " by " + std::to_string(frame.bottom - frame.top) +
           " pixels";
}

void PicturePage::Say(const std::string& inText) const
{
    SetStaticTextControlTitle(fWindow, kPictureText, inText.c_str());
}

OSStatus PicturePage::DoControlDraw(EventHandlerCallRef, EventRef)
{
    const StPortSaver port(fWindow);
    const Rect pane = PaneBounds();
    EraseRect(&pane);
    if (fPicture) {
        Rect frame;
        QDGetPictureBounds(fPicture, &frame);
        frame = CenterRectInRect(&frame, &pane, kCenterDontEnlarge);
        DrawPicture(fPicture, &frame);
    }
    const StColorState colours;
    const RGBColor grey = { 0x9999, 0x9999, 0x9999 };
    RGBForeColor(&grey);
    FrameRect(&pane);
    return noErr;
}

Rect PicturePage::PaneBounds() const
{
    Rect bounds = { 0, 0, 0, 0 };
    GetControlBounds(GetControlByID(fWindow, kPicturePane), &bounds);
    return bounds;
}
