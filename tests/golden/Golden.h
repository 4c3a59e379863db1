// Pictures that a test draws, compared with those in tests/golden to the last bit. Begin with MatchesGolden:
//
//     CHECK(golden::MatchesGolden(port, "quickdraw/shapes.8"));
//
// A picture that differs, or that has none to be compared with, is left in the build folder as
// golden/quickdraw/shapes.8.actual.png; `./dev approve` takes all of those over.
#ifndef LAMPBLACK_TESTS_GOLDEN_H
#define LAMPBLACK_TESTS_GOLDEN_H

#include <Carbon/Quickdraw.h>

#include <doctest/doctest.h>
#include <png.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace lampblack::golden {

struct Picture {
    int width = 0, height = 0;
    std::vector<uint32_t> colors; // 0x00RRGGBB, row by row

    bool operator==(const Picture&) const = default;
};

// What a port of any depth shows within its bounds.
inline Picture PictureOf(CGrafPtr inPort)
{
    CGrafPtr oldPort;
    GDHandle oldDevice;
    GetGWorld(&oldPort, &oldDevice);
    SetPort(inPort);
    Rect bounds;
    GetPortBounds(inPort, &bounds);
    Picture picture = { bounds.right - bounds.left, bounds.bottom - bounds.top, {} };
    for (int v = bounds.top; v < bounds.bottom; ++v)
        for (int h = bounds.left; h < bounds.right; ++h) {
            RGBColor color;
            GetCPixel((short)h, (short)v, &color);
            picture.colors.push_back((uint32_t)(color.red >> 8) << 16 | (uint32_t)(color.green >> 8) << 8 |
                                     color.blue >> 8);
        }
    SetGWorld(oldPort, oldDevice);
    return picture;
}

inline bool SavePng(const Picture& inPicture, const std::filesystem::path& inPath)
{
    std::filesystem::create_directories(inPath.parent_path());
    std::vector<uint8_t> bytes;
    for (const uint32_t color : inPicture.colors)
        bytes.insert(bytes.end(), { (uint8_t)(color >> 16), (uint8_t)(color >> 8), (uint8_t)color });
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = (png_uint_32)inPicture.width;
    image.height = (png_uint_32)inPicture.height;
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, inPath.c_str(), 0, bytes.data(), 0, nullptr);
}

// Nothing for a file that is none.
inline Picture LoadPng(const std::filesystem::path& inPath)
{
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, inPath.c_str()))
        return {};
    image.format = PNG_FORMAT_RGB;
    std::vector<uint8_t> bytes(PNG_IMAGE_SIZE(image));
    if (!png_image_finish_read(&image, nullptr, bytes.data(), 0, nullptr))
        return {};
    Picture picture = { (int)image.width, (int)image.height, {} };
    for (size_t i = 0; i + 2 < bytes.size(); i += 3)
        picture.colors.push_back((uint32_t)bytes[i] << 16 | (uint32_t)bytes[i + 1] << 8 | bytes[i + 2]);
    return picture;
}

inline int DifferentPixels(const Picture& a, const Picture& b)
{
    if (a.width != b.width || a.height != b.height)
        return a.width * a.height;
    int count = 0;
    for (size_t i = 0; i < a.colors.size(); ++i)
        count += a.colors[i] != b.colors[i];
    return count;
}

// Whether the port shows what tests/golden/NAME.png holds. Says where both pictures are when it does not.
inline bool MatchesGolden(const Picture& inActual, const std::string& inName)
{
    const auto wantedPath = std::filesystem::path(LAMPBLACK_SOURCE_DIR) / "tests/golden" / (inName + ".png");
    const auto actualPath = std::filesystem::path(LAMPBLACK_BINARY_DIR) / "golden" / (inName + ".actual.png");
    const Picture wanted = LoadPng(wantedPath);
    if (wanted == inActual) {
        std::filesystem::remove(actualPath);
        return true;
    }
    CHECK(SavePng(inActual, actualPath));
    const std::string actual = actualPath.string(), expected = wantedPath.string();
    MESSAGE(DifferentPixels(inActual, wanted), " pixels differ: ", actual, " is not ", expected);
    return false;
}

inline bool MatchesGolden(CGrafPtr inPort, const std::string& inName)
{
    return MatchesGolden(PictureOf(inPort), inName);
}

} // namespace lampblack::golden

#endif
