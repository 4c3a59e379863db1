// A window with a text and a button, made by the managers' own calls.
#include <Carbon/Carbon.h>

namespace {

// "\005Start" and its like: a length, then the text.
ConstStringPtr Pascal(const char* text)
{
    return reinterpret_cast<ConstStringPtr>(text);
}

} // namespace

int main()
{
    const Rect bounds = { 120, 180, 240, 480 }, textBounds = { 20, 20, 36, 280 },
               buttonBounds = { 80, 210, 100, 280 };
    WindowRef window = nullptr;
    ControlRef root = nullptr;
    if (CreateNewWindow(kDocumentWindowClass, kWindowStandardHandlerAttribute | kWindowCloseBoxAttribute,
                        &bounds, &window) != noErr)
        return 1;
    CreateRootControl(window, &root);
    SetWTitle(window, Pascal("\005Start"));
    NewControl(window, &textBounds, Pascal("\015Hello, world."), true, 0, 0, 0, kControlStaticTextProc, 0);
    NewControl(window, &buttonBounds, Pascal("\002OK"), true, 0, 0, 1, kControlPushButtonProc, 0);
    ShowWindow(window);
    RunApplicationEventLoop();
    return 0;
}
