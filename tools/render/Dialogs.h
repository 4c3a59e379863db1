// Dialogs drawn as the windows that they are. Begin with RenderDialog.
#ifndef LAMPBLACK_RENDER_DIALOGS_H
#define LAMPBLACK_RENDER_DIALOGS_H

#include "Rendering.h"

namespace lampblack::render {

// A 'DLOG' with its items and its window's frame, as it looks on screen; what lies beyond the screen is black.
OSStatus RenderDialog(ResType, short inID, Image* outImage);

} // namespace lampblack::render

#endif
