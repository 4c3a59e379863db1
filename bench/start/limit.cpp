// The limit: a window with a text and a button, drawn with the server's own letters. Less cannot be run.
#include <X11/Xlib.h>

#include <cstring>

int main()
{
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        return 1;
    const int screen = DefaultScreen(display);
    const Window window = XCreateSimpleWindow(display, RootWindow(display, screen), 20, 20, 300, 120, 0, 0,
                                              WhitePixel(display, screen));
    XStoreName(display, window, "Start");
    XSelectInput(display, window, ExposureMask);
    XMapWindow(display, window);
    const GC context = XCreateGC(display, window, 0, nullptr);
    for (XEvent event;;) {
        XNextEvent(display, &event);
        if (event.type != Expose || event.xexpose.count)
            continue;
        XSetForeground(display, context, 0xDDDDDD);
        XFillRectangle(display, window, context, 210, 80, 70, 20);
        XSetForeground(display, context, 0x888888);
        XDrawRectangle(display, window, context, 210, 80, 70, 20);
        XSetForeground(display, context, 0);
        XDrawString(display, window, context, 20, 32, "Hello, world.", 13);
        XDrawString(display, window, context, 238, 94, "OK", 2);
    }
}
