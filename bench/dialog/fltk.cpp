// The dialog by FLTK, which needs a display.
#include "Places.h"

#include <FL/Fl.H>
#include <FL/Fl_Box.H>
#include <FL/Fl_Button.H>
#include <FL/Fl_Check_Button.H>
#include <FL/Fl_Double_Window.H>
#include <FL/Fl_Image_Surface.H>
#include <benchmark/benchmark.h>
#include <cstdlib>

namespace {

void Fltk(benchmark::State& state)
{
    if (!std::getenv("DISPLAY")) {
        state.SkipWithError("no display");
        return;
    }
    for (auto _ : state) {
        Fl_Double_Window window(kWidth, kHeight);
        const std::vector<Place> places = Places();
        for (const Place& place : places)
            switch (place.shape) {
            case Shape::Button: new Fl_Button(place.x, place.y, place.width, place.height, place.text); break;
            case Shape::CheckBox:
                new Fl_Check_Button(place.x, place.y, place.width, place.height, place.text);
                break;
            case Shape::Text: new Fl_Box(place.x, place.y, place.width, place.height, place.text); break;
            }
        window.end();
        window.show();
        window.wait_for_expose();
        Fl::flush();
        Fl_Image_Surface picture(kWidth, kHeight);
        picture.draw(&window);
    }
}
BENCHMARK(Fltk)->Unit(benchmark::kMicrosecond);

} // namespace
