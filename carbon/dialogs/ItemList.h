// Item lists ('DITL') and dialog templates ('DLOG') as the Resource Manager hands them out, numbers in native
// byte order. Pure: knows bytes, nothing of windows or controls. Any bytes are accepted; items end where the
// bytes do.
#ifndef LAMPBLACK_DIALOGS_ITEMLIST_H
#define LAMPBLACK_DIALOGS_ITEMLIST_H

#include <Carbon/MacTypes.h>

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace lampblack::dialogs {

struct ItemTemplate {
    UInt8 type = 0; // with the disable bit
    Rect box = { 0, 0, 0, 0 };
    std::string text;      // of buttons and text items, Mac Roman
    SInt16 resourceID = 0; // of controls, icons and pictures
};

// Shape: count - 1 (2 bytes; 0xFFFF is none), then for each item 4 bytes for a handle, the box (8), the type
// (1),
//        the length of its data (1), the data, and a pad byte after an odd length, which may be missing at
//        the end.
std::vector<ItemTemplate> ParseItemList(std::span<const uint8_t> inBytes);

struct DialogTemplate {
    Rect bounds = { 0, 0, 0, 0 };
    SInt16 procID = 0;
    bool visible = false, goAway = false;
    SInt32 reference = 0;
    SInt16 itemsID = 0;
    std::string title;
    UInt16 position = 0; // where it asks to be put; 0 when the template does not say
};

// False when the bytes end before the title. A title that runs past the end is cut there.
bool ParseDialogTemplate(std::span<const uint8_t> inBytes, DialogTemplate* outTemplate);

} // namespace lampblack::dialogs

#endif
