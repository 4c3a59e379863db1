// The signs of menus.
#include "Glyphs.h"

#include <Carbon/Quickdraw.h>

namespace lampblack::menus {

namespace {

// Nine rows of nine pixels.
constexpr const char* kPictures[][kGlyphSize] = {
    { "........#", ".......##", "......##.", "#.....##.", "##...##..", ".##.##...", ".#####...", "..###....",
      "...#....." },
    { ".........", "....#....", "...###...", "..#####..", ".#######.", "..#####..", "...###...", "....#....",
      "........." },
    { ".........", ".........", "...###...", "..#####..", "..#####..", "..#####..", "...###...", ".........",
      "........." },
    { ".##...##.", "#..#.#..#", "#..#.#..#", ".#######.", "...#.#...", ".#######.", "#..#.#..#", "#..#.#..#",
      ".##...##." },
    { "....#....", "...#.#...", "..#...#..", ".#.....#.", "####.####", "...#.#...", "...#.#...", "...#.#...",
      "...###..." },
    { ".........", "###..####", "..#......", "..#......", "...#.....", "...#.....", "....#....", "....#####",
      "........." },
    { ".........", "....#....", "...#.#...", "..#...#..", ".#.....#.", "#.......#", ".........", ".........",
      "........." }
};

} // namespace

void DrawGlyph(Glyph inGlyph, Point inBottomLeft)
{
    const auto& picture = kPictures[(size_t)inGlyph];
    for (short row = 0; row < kGlyphSize; ++row)
        for (short column = 0; column < kGlyphSize; ++column) {
            if (picture[row][column] != '#')
                continue;
            const auto top = (short)(inBottomLeft.v - kGlyphSize + row);
            const auto left = (short)(inBottomLeft.h + column);
            const Rect pixel = { top, left, (short)(top + 1), (short)(left + 1) };
            PaintRect(&pixel);
        }
}

} // namespace lampblack::menus
