// The text of the built-in declarations, a subject a piece. BuiltinTypes.cpp joins them.
#ifndef LAMPBLACK_RSRC_BUILTINTEXT_H
#define LAMPBLACK_RSRC_BUILTINTEXT_H

namespace lampblack::rsrc {

extern const char kFinderTypes[];  // what the Finder and the start of an application read
extern const char kPictureTypes[]; // icons, cursors and patterns
extern const char kColorTypes[];   // tables of colours
extern const char kListTypes[];    // rectangles, fonts, styles, templates, lists

} // namespace lampblack::rsrc

#endif
