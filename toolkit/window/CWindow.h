// CWindow: one window made from a 'DLOG' resource, whose events arrive at virtual Do... operations.
//
//     class About : public CWindow {
//     public:
//         About() : CWindow(129, kDocumentWindowClass) {}
//         OSStatus DoControlHit(EventRef) override { QuitApplicationEventLoop(); return noErr; }
//     };
//     About about; about.StandardSetup(); about.Show(); RunApplicationEventLoop();
#ifndef LAMPBLACK_WINDOW_CWINDOW_H
#define LAMPBLACK_WINDOW_CWINDOW_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

class CTimer;

// The window class that means: do not create the window now, Create will be called later.
enum : unsigned long { kDeferWindowCreation = 0xFFFFFFFF };

// The toolkit's own Carbon event class and kinds.
enum : unsigned {
    kEventClassToolkit = 'MOSH',
    kEventTextAboutToChange = 'TXI-', // an edit field's text will change; noErr vetoes the key
    kEventTextChanged = 'TXI+',
    kEventTextCutCopyPasteValidation = 'CCPV'
};

// CWindow
//
// Owns its window and its timers; the host owns the object. Order of use: construct (which creates the window
// from 'DLOG' inID), StandardSetup, Show, and in the end StandardTeardown and delete.
//
// Every Do... operation answers noErr to consume its event or eventNotHandledErr to let the standard handler
// act; except where said, the base class does nothing and answers the latter. Members are open to subclasses
// and hosts alike.
// Errors: the constructors, Create and SetupControls throw the OSStatus of a failure as a long.
class CWindow {
public:
    CWindow(long inID, unsigned long inWindowClass); // with kWindowStandardHandlerAttribute
    CWindow(long inID, unsigned long inWindowClass, unsigned long inAttributes);

    CWindow(const CWindow&) = delete;
    CWindow& operator=(const CWindow&) = delete;

    virtual ~CWindow();

    // Makes the window from 'DLOG' inID, with that ID and a root control.
    virtual void Create(long inID, unsigned long inWindowClass, unsigned long inAttributes);
    virtual void Show();
    virtual void Hide();

    // Theme font, background, controls, position, event handlers, in this order.
    virtual void StandardSetup();
    // To be called before the object goes, when the window's position shall be kept.
    virtual void StandardTeardown();
    virtual void SetupControls() const; // those of the 'CTL#' list with the window's ID
    virtual void SetupEventHandlers() const;
    virtual void SetupControlDrawHandler(ControlRef inControl) const; // DoControlDraw for this control
    virtual void SetupCommandEventHandlers() const;                   // commands, update status included
    virtual void SetupThemeFont() const;                              // nothing in the base class
    virtual void SetupWindowBackground() const;                       // nothing in the base class
    // The position in the preference file under the window's ID: restored and stored.
    virtual void SetupWindowPosition() const;
    virtual void StoreWindowPosition() const;

    // Two timers of the window's own, in seconds. SetupTimer keeps an earlier timer, and calls inProc with
    // the CWindow as user data. StartTimer calls Timer(); it forgets a timer already running, so stop that
    // first.
    virtual void SetupTimer(EventLoopTimerProcPtr inProc, double inDelay, double inInterval);
    virtual void RemoveTimer();
    virtual void StartTimer(double inDelay, double inInterval);
    virtual void StopTimer();
    virtual void Timer();
    // The procedure of the StartTimer timer: Timer() of the CWindow, if there is one.
    static void CWindowTimer(EventLoopTimerRef inTimer, void* inWindow);

    virtual OSStatus DoMouseMoved(EventRef inEvent);      // shows the cursor of the control under the mouse
    virtual OSStatus DoWindowActivated(EventRef inEvent); // shows the right cursor
    virtual OSStatus DoWindowClickContentRgn(EventHandlerCallRef inCallRef, EventRef inEvent);
    virtual OSStatus DoWindowClose(EventRef inEvent) const;
    virtual OSStatus DoWindowDeactivated(EventRef inEvent);
    virtual OSStatus DoWindowDrawContent(EventRef inEvent); // draws the controls; noErr
    // A click moved the keyboard focus; either control may be NULL.
    virtual OSStatus DoWindowFocusChange(EventRef inEvent, ControlRef inOldFocus, ControlRef inNewFocus);
    virtual OSStatus DoWindowHandleContentClick(EventRef inEvent); // clears the keyboard focus
    virtual OSStatus DoWindowGetIdealSize(EventRef inEvent);
    virtual OSStatus DoWindowGetMinimumSize(EventRef inEvent);
    virtual OSStatus DoWindowGetMaximumSize(EventRef inEvent);
    virtual OSStatus DoWindowHiding(EventRef inEvent) const;
    virtual OSStatus DoWindowResizeCompleted(EventRef inEvent);
    virtual OSStatus DoWindowShowing(EventRef inEvent) const; // shows the arrow; cannot consume
    virtual OSStatus DoWindowZoom(EventRef inEvent);
    virtual OSStatus DoWindowZoomAll(EventRef inEvent);
    virtual OSStatus DoWindowZoomed(EventRef inEvent);
    virtual OSStatus DoWindowContextualMenuSelect(EventRef inEvent, Point inGlobalMouse);
    virtual OSStatus DoControlDraw(EventHandlerCallRef inCallRef, EventRef inEvent);
    virtual OSStatus DoControlHit(EventRef inEvent);        // noErr in the base class
    virtual OSStatus DoControlNoTrackHit(EventRef inEvent); // a click on an enabled control that made no hit
    virtual OSStatus DoControlTextAboutToChange(EventRef inEvent);
    virtual OSStatus DoControlTextChanged(EventRef inEvent);
    virtual OSStatus DoControlTextCutCopyPasteValidation(EventRef inEvent); // cannot consume
    // The mouse is in a focused list: noErr asks for the arrow, eventNotHandledErr for the I-beam.
    virtual OSStatus DoControlSetCursor(EventRef inEvent, ControlRef inControl);

    virtual void SetPort() const;
    virtual void SetTitle(const char* inTitle);
    virtual void SetTitle(const unsigned char* inTitle);

    // Controls by ID.
    virtual void Activate(long inControlID) const;
    virtual void Deactivate(long inControlID) const;
    virtual void SetValue(long inControlID, short inValue) const;
    virtual long GetValue(long inControlID) const;
    virtual void SetContents(long inControlID, const char* inText) const;
    virtual void SetPassword(long inControlID, const char* inText) const;

    WindowRef fWindow;      // NULL until Create succeeds
    SInt32 fFocusControlID; // the control that shall have the focus when a dialog is shown; 0: none
    CGrafPtr fCreationPort; // the port that was current at construction
    CTimer* fSetupTimer;
    CTimer* fTimer;
};

// The Carbon procedures behind CWindow; their user data is the CWindow.
OSStatus CWindowEventHandler(EventHandlerCallRef inCallRef, EventRef inEvent, void* inUserData);
OSStatus CWindowControlDrawHandler(EventHandlerCallRef inCallRef, EventRef inEvent, void* inUserData);

LAMPBLACK_END

#endif
