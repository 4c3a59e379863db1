// Where the hundred controls of the dialog benchmark stand, for every toolkit alike.
#ifndef LAMPBLACK_BENCH_DIALOG_PLACES_H
#define LAMPBLACK_BENCH_DIALOG_PLACES_H

#include <cstdio>
#include <vector>

constexpr int kControls = 100, kColumns = 5;
constexpr int kWidth = 640, kHeight = 480;

enum class Shape { Button, CheckBox, Text };
struct Place {
    Shape shape;
    int x, y, width, height;
    char text[16];
};

inline std::vector<Place> Places()
{
    std::vector<Place> places;
    for (int i = 0; i < kControls; ++i) {
        Place place = { i < 40   ? Shape::Button
                        : i < 70 ? Shape::CheckBox
                                 : Shape::Text,
                        10 + i % kColumns * 125,
                        10 + i / kColumns * 23,
                        115,
                        20,
                        "" };
        std::snprintf(place.text, sizeof place.text, "Control %d", i);
        places.push_back(place);
    }
    return places;
}

#endif
