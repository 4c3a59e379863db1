// The table of window classes.
#include "WindowClasses.h"

namespace lampblack::windows {

namespace {

constexpr WindowAttributes kEverywhere =
    kWindowNoUpdatesAttribute | kWindowNoActivatesAttribute | kWindowOpaqueForEventsAttribute |
    kWindowCompositingAttribute | kWindowNoShadowAttribute | kWindowHideOnSuspendAttribute |
    kWindowStandardHandlerAttribute | kWindowHideOnFullScreenAttribute | kWindowIgnoreClicksAttribute |
    kWindowNoConstrainAttribute | kWindowDoesNotCycleAttribute;
constexpr WindowAttributes kSizing =
    kWindowFullZoomAttribute | kWindowResizableAttribute | kWindowLiveResizeAttribute;
constexpr WindowAttributes kTitled = kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute;
constexpr WindowAttributes kDocument = kEverywhere | kSizing | kTitled | kWindowInWindowMenuAttribute |
                                       kWindowMetalAttribute | kWindowNoTitleBarAttribute;
constexpr WindowAttributes kFloating =
    kEverywhere | kSizing | kTitled | kWindowSideTitlebarAttribute | kWindowNoTitleBarAttribute;
constexpr WindowAttributes kMovable =
    kEverywhere | kSizing | kWindowCloseBoxAttribute | kWindowCollapseBoxAttribute | kWindowMetalAttribute;

constexpr auto kNoModality = kWindowModalityNone;
constexpr auto kAppModal = kWindowModalityAppModal;
constexpr auto kScopeNone = kWindowActivationScopeNone;
constexpr auto kIndependent = kWindowActivationScopeIndependent;
constexpr auto kAll = kWindowActivationScopeAll;

using enum Layer;

// class, layer, frame, look of the frame, title, modality, activation, attributes
constexpr ClassTraits kClasses[] = {
    { kAlertWindowClass, Modal, FrameKind::Theme, kThemeAlertWindow, false, kAppModal, kAll, kEverywhere },
    { kMovableAlertWindowClass, Modal, FrameKind::Theme, kThemeMovableAlertWindow, true, kAppModal, kAll,
      kMovable },
    { kModalWindowClass, Modal, FrameKind::Theme, kThemeDialogWindow, false, kAppModal, kAll, kEverywhere },
    { kMovableModalWindowClass, Modal, FrameKind::Theme, kThemeMovableDialogWindow, true, kAppModal, kAll,
      kMovable },
    { kFloatingWindowClass, Floating, FrameKind::Theme, kThemeUtilityWindow, true, kNoModality, kIndependent,
      kFloating },
    { kDocumentWindowClass, Document, FrameKind::Theme, kThemeDocumentWindow, true, kNoModality, kAll,
      kDocument },
    { kUtilityWindowClass, Utility, FrameKind::Theme, kThemeUtilityWindow, true, kNoModality, kIndependent,
      kFloating },
    { kHelpWindowClass, Help, FrameKind::None, kThemePlainDialogWindow, false, kNoModality, kScopeNone,
      kEverywhere },
    { kSheetWindowClass, Document, FrameKind::Theme, kThemeSheetWindow, false, kNoModality, kAll,
      kEverywhere | kWindowResizableAttribute | kWindowLiveResizeAttribute },
    { kToolbarWindowClass, Floating, FrameKind::None, kThemePlainDialogWindow, false, kNoModality, kScopeNone,
      kEverywhere },
    { kPlainWindowClass, Document, FrameKind::Theme, kThemePlainDialogWindow, false, kNoModality, kAll,
      kEverywhere },
    { kSheetAlertWindowClass, Document, FrameKind::Theme, kThemeSheetWindow, false, kNoModality, kAll,
      kEverywhere },
    { kAltPlainWindowClass, Document, FrameKind::Theme, kThemeShadowDialogWindow, false, kNoModality, kAll,
      kEverywhere },
    { kSimpleWindowClass, Document, FrameKind::None, kThemePlainDialogWindow, false, kNoModality, kAll,
      kEverywhere }
};

} // namespace

const ClassTraits* FindClass(WindowClass inClass)
{
    for (const ClassTraits& traits : kClasses)
        if (traits.windowClass == inClass)
            return &traits;
    return nullptr;
}

} // namespace lampblack::windows
