// The drawing state of a port as one value, and the registration of clients.
#include "appearance/Geometry.h"
#include "memory/ReferenceTable.h"
#include "quickdraw/Port.h"

struct OpaqueThemeDrawingState {
    PenState pen;
    RGBColor fore, back;
    Pattern backPattern;
    short font, size, mode;
    Style face;
};

namespace lampblack::appearance {

namespace {

memory::ReferenceTable<OpaqueThemeDrawingState>& States()
{
    static memory::ReferenceTable<OpaqueThemeDrawingState> states;
    return states;
}

void Capture(OpaqueThemeDrawingState& outState)
{
    const CGrafPtr port = GetQDGlobalsThePort();
    GetPenState(&outState.pen);
    GetForeColor(&outState.fore);
    GetBackColor(&outState.back);
    outState.backPattern = quickdraw::PortBackPattern(port);
    outState.font = GetPortTextFont(port);
    outState.size = GetPortTextSize(port);
    outState.mode = GetPortTextMode(port);
    outState.face = GetPortTextFace(port);
}

void Restore(const OpaqueThemeDrawingState& inState)
{
    SetPenState(&inState.pen);
    RGBForeColor(&inState.fore);
    RGBBackColor(&inState.back);
    BackPat(&inState.backPattern);
    TextFont(inState.font);
    TextSize(inState.size);
    TextMode(inState.mode);
    TextFace(inState.face);
}

bool& IsRegistered()
{
    static bool registered = false;
    return registered;
}

} // namespace

} // namespace lampblack::appearance

using namespace lampblack::appearance;

OSStatus GetThemeDrawingState(ThemeDrawingState* outState)
{
    if (!outState)
        return paramErr;
    *outState = States().New();
    Capture(**outState);
    return noErr;
}

OSStatus SetThemeDrawingState(ThemeDrawingState inState, Boolean inDisposeNow)
{
    const OpaqueThemeDrawingState* state = States().Find(inState);
    if (!state)
        return paramErr;
    Restore(*state);
    return inDisposeNow ? DisposeThemeDrawingState(inState) : (OSStatus)noErr;
}

OSStatus DisposeThemeDrawingState(ThemeDrawingState inState)
{
    if (!States().Find(inState))
        return paramErr;
    States().Delete(inState);
    return noErr;
}

OSStatus NormalizeThemeDrawingState(void)
{
    static constexpr RGBColor kBlack = { 0, 0, 0 }, kWhite = { 0xFFFF, 0xFFFF, 0xFFFF };
    Pattern white = {};
    PenNormal();
    RGBForeColor(&kBlack);
    RGBBackColor(&kWhite);
    BackPat(GetQDGlobalsWhite(&white));
    TextMode(srcOr);
    return noErr;
}

OSStatus RegisterAppearanceClient(void)
{
    if (IsRegistered())
        return appearanceProcessRegisteredErr;
    IsRegistered() = true;
    return noErr;
}

OSStatus UnregisterAppearanceClient(void)
{
    if (!IsRegistered())
        return appearanceProcessNotRegisteredErr;
    IsRegistered() = false;
    return noErr;
}
