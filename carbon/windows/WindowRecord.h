// The data behind a WindowRef. All geometry is in global pixels unless a field says otherwise.
#ifndef LAMPBLACK_WINDOWS_WINDOWRECORD_H
#define LAMPBLACK_WINDOWS_WINDOWRECORD_H

#include "PortSaver.h"
#include "PropertyList.h"
#include "Region.h"
#include "WindowClasses.h"

#include <Carbon/CarbonEvents.h>
#include <Carbon/MacWindows.h>
#include <memory/ReferenceTable.h>

namespace lampblack::windows {

// The pixels of one side of a frame. `place` is relative to the top left of the content.
struct FrameStrip {
    CGrafPtr port = nullptr;
    Rect place = { 0, 0, 0, 0 };
};

struct WindowRecord {
    const ClassTraits* traits = nullptr;
    WindowAttributes attributes = 0;
    WindowModality modality = kWindowModalityNone;
    WindowRef unavailable = nullptr; // the parent that a window-modal window keeps from the mouse
    WindowActivationScope scope = kWindowActivationScopeNone;
    Layer layer = Layer::Document;
    bool internal = false; // menus and their bar: not in the published list
    ItemCount owners = 1;

    Rect content = { 0, 0, 0, 0 }; // of the expanded window
    CGrafPtr port = nullptr;
    EventTargetRef target = nullptr;

    bool visible = false, hilited = false, collapsed = false, modified = false;
    bool hiddenBySuspend = false, wasShown = false, disposing = false;

    Str255 title = {};
    long refCon = 0;
    short kind = kApplicationWindowKind;
    PropertyList properties;
    Rect userState = { 0, 0, 0, 0 }, standardState = { 0, 0, 0, 0 };

    RGBColor contentColor = { 0xFFFF, 0xFFFF, 0xFFFF };
    float alpha = 1;

    // Updates: relative to the top left of the content, so that moving the window leaves it alone.
    Region update;
    EventRef updateEvent = nullptr;   // retained while it may still stand in the queue
    EventRef activateEvent = nullptr; // the same
    RgnHandle fullVisible = nullptr;  // between BeginUpdate and EndUpdate: what was visible before
    bool updating = false;

    // Frame
    FrameStrip strips[4]; // top, left, bottom, right
    Rect frameInsets = { 0, 0, 0, 0 };
    ThemeWindowMetrics metrics = { sizeof(ThemeWindowMetrics), 0, 0, 0, 0, 0 };
    bool frameStale = true;
    SInt16 pressedWidget = -1;             // a ThemeTitleBarWidget while it is tracked
    short topRadius = 0, bottomRadius = 0; // of round corners, which the compositor smooths
    Region structure;                      // global

    // Compositor
    Region bodySeen, shadowSeen; // global: what nothing opaque in front covers

    WindowRef Ref() { return reinterpret_cast<WindowRef>(this); }
    bool Has(WindowAttributes inAny) const { return attributes & inAny; }
    // What is shown of it at all.
    bool OnScreen() const { return visible && !hiddenBySuspend; }
};

memory::ReferenceTable<WindowRecord>& Windows();

// The live record, internal windows included; null for a null, disposed or foreign reference.
inline WindowRecord* Find(WindowRef inWindow)
{
    return Windows().Find(inWindow);
}

// Local coordinates of a window's port differ from those relative to its content by what SetOrigin did.
Point LocalOrigin(const WindowRecord& inWindow);

} // namespace lampblack::windows

#endif
