// Resources that are pictures, drawn as pixels with an alpha channel. Begin with Render.
#ifndef LAMPBLACK_RENDER_RENDERING_H
#define LAMPBLACK_RENDER_RENDERING_H

#include <Carbon/Carbon.h>

#include <cstdint>
#include <string>
#include <vector>

namespace lampblack::render {

struct Image {
    int width = 0, height = 0;
    std::vector<uint32_t> pixels; // 0xAARRGGBB, not premultiplied, rows without slack
};

// The types that Render knows, separated by commas.
std::string KnownTypes();

// Draws a resource of the current resource chain. A picture lies on white paper; all else is transparent
// where nothing is drawn.
//
// Errors:     resNotFound  no such resource;  paramErr  of a type that is not known, or damaged;
//             memFullErr, cNoMemErr and the like  too large.
OSStatus Render(ResType inType, short inID, Image* outImage);

// Draws an image file or a picture file.
OSStatus RenderFile(const FSSpec& inFile, Image* outImage);

} // namespace lampblack::render

#endif
