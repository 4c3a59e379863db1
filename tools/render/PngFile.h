// An image as a PNG file.
#ifndef LAMPBLACK_RENDER_PNGFILE_H
#define LAMPBLACK_RENDER_PNGFILE_H

#include "Rendering.h"

namespace lampblack::render {

// Empty when the file is written, else the reason why not.
std::string WritePng(const Image&, const std::string& path);

} // namespace lampblack::render

#endif
