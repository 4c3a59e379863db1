// What a user sees of the screen, on any host: single pixels and PNG files.
#include "Parts.h"

#include <png.h>

#include <cstdio>
#include <vector>

namespace lampblack::host {

namespace {

bool ReadUpToDateScreen(Frame* outFrame)
{
    if (UpwardHooks().updateScreen)
        UpwardHooks().updateScreen();
    return Machine().readScreen && Machine().readScreen(outFrame);
}

std::vector<uint8_t> AsBytes(const Frame& inFrame)
{
    std::vector<uint8_t> bytes;
    bytes.reserve(static_cast<size_t>(inFrame.width) * inFrame.height * 3);
    for (int y = 0; y < inFrame.height; ++y) {
        const uint32_t* row = inFrame.pixels + static_cast<ptrdiff_t>(y) * inFrame.rowPixels;
        for (int x = 0; x < inFrame.width; ++x)
            bytes.insert(bytes.end(), { static_cast<uint8_t>(row[x] >> 16), static_cast<uint8_t>(row[x] >> 8),
                                        static_cast<uint8_t>(row[x]) });
    }
    return bytes;
}

} // namespace

bool WritePng(const std::filesystem::path& inPath, const Frame& inFrame)
{
    const std::vector<uint8_t> bytes = AsBytes(inFrame);
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(inFrame.width);
    image.height = static_cast<png_uint_32>(inFrame.height);
    image.format = PNG_FORMAT_RGB;
    return png_image_write_to_file(&image, inPath.c_str(), 0, bytes.data(), 0, nullptr) != 0;
}

bool SaveScreenshot(const std::filesystem::path& inPath)
{
    Frame frame;
    return ReadUpToDateScreen(&frame) && WritePng(inPath, frame);
}

UInt32 ScreenPixel(Point inGlobal)
{
    Frame frame;
    if (!ReadUpToDateScreen(&frame))
        return 0;
    if (inGlobal.h < 0 || inGlobal.v < 0 || inGlobal.h >= frame.width || inGlobal.v >= frame.height)
        return 0;
    return frame.pixels[static_cast<ptrdiff_t>(inGlobal.v) * frame.rowPixels + inGlobal.h] & 0xFFFFFF;
}

void RunFor(double inSeconds)
{
    if (UpwardHooks().runCurrentEventLoop)
        return UpwardHooks().runCurrentEventLoop(inSeconds);
    const double end = Now() + inSeconds; // no event loop in this process: the time passes all the same
    Input dropped;
    while (Now() < end)
        if (Machine().wait(end))
            Machine().takeInput(&dropped);
}

} // namespace lampblack::host
