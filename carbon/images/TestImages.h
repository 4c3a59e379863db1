// For the tests of this folder: the small images of testdata/, importers of them, and what is drawn.
#ifndef LAMPBLACK_IMAGES_TESTIMAGES_H
#define LAMPBLACK_IMAGES_TESTIMAGES_H

#include <Carbon/ImageCompression.h>
#include <Carbon/MacMemory.h>

#include <files/TestFolder.h>
#include <quickdraw/TestPort.h>

#include <algorithm>
#include <cstdlib>
#include <doctest/doctest.h>
#include <fstream>
#include <string>

namespace lampblack::images {

using quickdraw::MakeRect;
using quickdraw::TestPort;

inline constexpr int kWidth = 16, kHeight = 12; // of all test images

// The colour of a pixel of the test images.
inline uint32_t ColorAt(int x, int y)
{
    return (uint32_t)(16 * x) << 16 | (uint32_t)(20 * y) << 8 | (uint32_t)(8 * x + 4 * y);
}

inline uint32_t GreyOf(uint32_t inColor) // as the tool that made the files weighs the channels
{
    const double grey =
        0.212656 * (inColor >> 16 & 0xFF) + 0.715158 * (inColor >> 8 & 0xFF) + 0.072186 * (inColor & 0xFF);
    return (uint32_t)(grey + 0.5) * 0x010101;
}

// The largest difference of a channel.
inline int Distance(uint32_t a, uint32_t b)
{
    int distance = 0;
    for (int shift = 0; shift < 32; shift += 8)
        distance = std::max(distance, std::abs((int)(a >> shift & 0xFF) - (int)(b >> shift & 0xFF)));
    return distance;
}

inline std::string TestBytes(const std::string& inName)
{
    std::ifstream file(LAMPBLACK_SOURCE_DIR "/carbon/images/testdata/" + inName, std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    REQUIRE(!bytes.empty());
    return bytes;
}

// A handle of bytes, disposed at the end.
class TestHandle {
public:
    explicit TestHandle(const std::string& inBytes) : fHandle(NewHandle((Size)inBytes.size()))
    {
        std::copy(inBytes.begin(), inBytes.end(), *fHandle);
    }
    ~TestHandle() { DisposeHandle(fHandle); }
    TestHandle(const TestHandle&) = delete;
    TestHandle& operator=(const TestHandle&) = delete;
    operator Handle() const { return fHandle; }

    std::string Bytes() const { return std::string(*fHandle, (size_t)GetHandleSize(fHandle)); }

private:
    Handle fHandle;
};

inline OSType SubTypeOf(const std::string& inName)
{
    const std::string extension = inName.substr(inName.rfind('.') + 1);
    return extension == "jpg"   ? 'JPEG'
           : extension == "png" ? 'PNGf'
           : extension == "gif" ? 'GIFf'
           : extension == "tif" ? 'TIFF'
           : extension == "bmp" ? 'BMPf'
           : extension == "tga" ? 'TPIC'
                                : 'PICT';
}

// An open importer of bytes.
struct TestImporter {
    TestImporter(OSType inSubType, const std::string& inBytes) : data(inBytes)
    {
        REQUIRE(OpenADefaultComponent('grip', inSubType, &importer) == noErr);
        REQUIRE(GraphicsImportSetDataHandle(importer, data) == noErr);
    }
    explicit TestImporter(const std::string& inName) : TestImporter(SubTypeOf(inName), TestBytes(inName)) {}
    ~TestImporter() { CloseComponent(importer); }
    TestImporter(const TestImporter&) = delete;
    TestImporter& operator=(const TestImporter&) = delete;
    operator ComponentInstance() const { return importer; }

    TestHandle data;
    ComponentInstance importer = nullptr;
};

// The largest difference between the image at the port's top left and the test images' colours.
inline int DistanceFrom(const TestPort& inPort, uint32_t (*inColor)(int, int) = ColorAt)
{
    int distance = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
            distance = std::max(distance, Distance(inPort.At(x, y), inColor(x, y)));
    return distance;
}

} // namespace lampblack::images

#endif
