// A window with one field, which has the focus: nothing in it moves but the caret.
#include <Carbon/Carbon.h>

#include <cstdio>

int main()
{
    const Rect bounds = { 60, 60, 160, 360 }, fieldBounds = { 40, 20, 56, 280 };
    WindowRef window = nullptr;
    ControlRef root = nullptr;
    if (CreateNewWindow(kDocumentWindowClass, kWindowStandardHandlerAttribute, &bounds, &window) != noErr ||
        CreateRootControl(window, &root) != noErr)
        return 1;
    const ControlRef field =
        NewControl(window, &fieldBounds, nullptr, true, 0, 0, 0, kControlEditTextProc, 0);
    ShowWindow(window);
    SelectWindow(window);
    if (SetKeyboardFocus(window, field, kControlFocusNextPart) != noErr)
        return 1;
    printf("caret %u\n", (unsigned)GetCaretTime());
    fflush(stdout);
    RunApplicationEventLoop();
    return 0;
}
