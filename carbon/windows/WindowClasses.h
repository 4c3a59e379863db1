// What each window class is: where it lies, what it may have, how its frame looks, how it becomes active.
#ifndef LAMPBLACK_WINDOWS_WINDOWCLASSES_H
#define LAMPBLACK_WINDOWS_WINDOWCLASSES_H

#include <Carbon/MacWindows.h>

namespace lampblack::windows {

// From the back to the front. No window of a layer ever lies above one of the next.
enum class Layer : uint8_t { Document, Floating, Modal, Utility, MenuBar, Menu, Help };

// Which frame: none at all, or one that the theme draws.
enum class FrameKind : uint8_t { None, Theme };

struct ClassTraits {
    WindowClass windowClass;
    Layer layer;
    FrameKind frame;
    ThemeWindowType theme;
    bool hasTitle;
    WindowModality modality;
    WindowActivationScope scope;
    WindowAttributes available;
};

const ClassTraits* FindClass(WindowClass inClass); // null for a class that there is not

} // namespace lampblack::windows

#endif
