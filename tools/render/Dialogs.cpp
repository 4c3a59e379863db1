#include "Dialogs.h"

#include <lampblack/host.h>

namespace lampblack::render {

namespace {

constexpr double kSeconds = 0.1; // for all that is drawn by the event loop

// Moves the window, frame and all, to the left edge, below what the menu bar and its shadow cover.
Rect MoveToCorner(WindowRef inWindow)
{
    static constexpr short kShadow = 20;
    Rect frame, content;
    GetWindowBounds(inWindow, kWindowStructureRgn, &frame);
    GetWindowBounds(inWindow, kWindowContentRgn, &content);
    MoveWindow(inWindow, (short)(content.left - frame.left),
               (short)(content.top - frame.top + GetMBarHeight() + kShadow), true);
    GetWindowBounds(inWindow, kWindowStructureRgn, &frame);
    return frame;
}

// What is outside of the frame, at its round corners, is not part of the picture.
void TakeScreen(WindowRef inWindow, const Rect& inFrame, Image* outImage)
{
    const RgnHandle frame = NewRgn();
    GetWindowRegion(inWindow, kWindowStructureRgn, frame);
    *outImage = { inFrame.right - inFrame.left, inFrame.bottom - inFrame.top, {} };
    for (short v = inFrame.top; v < inFrame.bottom; ++v)
        for (short h = inFrame.left; h < inFrame.right; ++h) {
            const Point at = { v, h };
            outImage->pixels.push_back(PtInRgn(at, frame) ? 0xFF000000 | host::ScreenPixel(at) : 0);
        }
    DisposeRgn(frame);
}

} // namespace

OSStatus RenderDialog(ResType, short inID, Image* outImage)
{
    const DialogRef dialog = GetNewDialog(inID, nullptr, (WindowRef)-1L);
    if (!dialog)
        return paramErr;
    const WindowRef window = GetDialogWindow(dialog);
    const Rect frame = MoveToCorner(window);
    ShowWindow(window);
    DrawDialog(dialog);
    host::RunFor(kSeconds);
    TakeScreen(window, frame, outImage);
    DisposeDialog(dialog);
    return noErr;
}

} // namespace lampblack::render
