// The same window by FLTK.
#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Window.H>

int main()
{
    Fl_Window window(20, 20, 300, 120, "Start");
    Fl_Box text(20, 20, 260, 16, "Hello, world.");
    Fl_Button button(210, 80, 70, 20, "OK");
    window.end();
    window.show();
    return Fl::run();
}
