// The colours of the theme, in one place: greys with a hint of cool, one blue accent, graphite when inactive.
#ifndef LAMPBLACK_APPEARANCE_PALETTE_H
#define LAMPBLACK_APPEARANCE_PALETTE_H

#include "appearance/Canvas.h"

namespace lampblack::appearance::palette {

inline constexpr Color kDialog = { 0xEDEDED };
inline constexpr Color kUtility = { 0xEFEFEF };
inline constexpr Color kSheet = { 0xF1F1F1 };
inline constexpr Color kDrawer = { 0xE6E8EB };
inline constexpr Color kWhite = { 0xFFFFFF };
inline constexpr Color kText = { 0x000000 };
inline constexpr Color kDimText = { 0x8C8C8C };
inline constexpr Color kHighlight = { 0xB5D3FB };          // selected text
inline constexpr Color kSecondaryHighlight = { 0xD6D6D6 }; // the same in an inactive window

// The accent, light to dark.
inline constexpr Color kAccentPale = { 0xC9DFFA };
inline constexpr Color kAccentLight = { 0x8FBEF5 };
inline constexpr Color kAccent = { 0x4A90E8 };
inline constexpr Color kAccentDark = { 0x2F72D0 };
inline constexpr Color kAccentEdge = { 0x26549C };
inline constexpr Color kAccentDeep = { 0x1B3C72 };
inline constexpr Color kFocus = { 0x5A9BEC };

// Faces of buttons from top to bottom, and their edges.
struct Face {
    Color top, upper, lower, bottom;
    Color edgeTop, edgeBottom;
    Color mark; // arrows, checks and dots on this face
};

inline constexpr Face kPlainFace = { { 0xFFFFFF }, { 0xF9F9F9 }, { 0xEEEEEE }, { 0xF7F7F7 },
                                     { 0xABABAB }, { 0x868686 }, { 0x3C3C3C } };
inline constexpr Face kPressedFace = { { 0xBFC3C9 }, { 0xCBCFD5 }, { 0xD3D7DC }, { 0xE0E3E7 },
                                       { 0x7E8288 }, { 0x74787E }, { 0x262626 } };
inline constexpr Face kInactiveFace = { { 0xFDFDFD }, { 0xF8F8F8 }, { 0xF2F2F2 }, { 0xF6F6F6 },
                                        { 0xBCBCBC }, { 0xA6A6A6 }, { 0x6E6E6E } };
inline constexpr Face kDimFace = { { 0xF7F7F7 }, { 0xF5F5F5 }, { 0xF2F2F2 }, { 0xF3F3F3 },
                                   { 0xCDCDCD }, { 0xC2C2C2 }, { 0xADADAD } };
inline constexpr Face kAccentFace = { { 0xBBD9FA }, { 0x86B9F4 }, { 0x5B9EEE }, { 0x86C0FA },
                                      { 0x4C7FC6 }, { 0x2F5DA6 }, { 0x10264A } };
inline constexpr Face kAccentPressedFace = { { 0x6E9FDD }, { 0x4D87D4 }, { 0x4583D5 }, { 0x74ACEC },
                                             { 0x2F5C9F }, { 0x244B88 }, { 0x0A1A36 } };

} // namespace lampblack::appearance::palette

#endif
