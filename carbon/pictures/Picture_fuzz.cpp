// Any bytes as a picture: played in its own size and scaled, in ports of 8 and of 32 bits, and recorded again
// while it is played. What was recorded plays without complaint.
#include "Playback.h"

#include <Carbon/MacMemory.h>
#include <lampblack/host.h>

#include <algorithm>
#include <cstdint>
#include <memory>

using namespace lampblack;

namespace {

struct World {
    explicit World(SInt16 depth)
    {
        const Rect bounds = { 0, 0, 48, 64 };
        NewGWorld(&world, depth, &bounds, nullptr, nullptr, 0);
    }
    GWorldPtr world = nullptr;
};

void PlayIn(GWorldPtr inWorld, foundation::Bytes inPicture, const Rect& inFrame)
{
    SetGWorld(inWorld, nullptr);
    pictures::PlayPicture(inPicture, inFrame);
}

void RecordAndPlay(GWorldPtr inWorld, foundation::Bytes inPicture)
{
    const Rect frame = { 0, 0, 48, 64 };
    SetGWorld(inWorld, nullptr);
    const PicHandle recorded = OpenPicture(&frame);
    pictures::PlayPicture(inPicture, frame);
    ClosePicture();
    DrawPicture(recorded, &frame);
    KillPicture(recorded);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    host::Settings settings;
    settings.screen = host::Screen::Headless;
    return host::Configure(settings) ? 0 : 1;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* inData, size_t inSize)
{
    static const World indexed(8), direct(32);
    // On a block of its exact size, so that a sanitizer sees a step past its end.
    const std::unique_ptr<uint8_t[]> copy(new uint8_t[inSize]);
    std::copy_n(inData, inSize, copy.get());
    const foundation::Bytes picture(copy.get(), inSize);
    PlayIn(direct.world, picture, { 0, 0, 48, 64 });
    PlayIn(indexed.world, picture, pictures::FrameOf(picture));
    RecordAndPlay(direct.world, picture);
    return 0;
}
