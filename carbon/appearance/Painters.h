// Every painter of the theme. The comments say what Look::value and Look::variant mean to it; sizes are the
// painter's whole image, which it may fill or leave transparent.
#ifndef LAMPBLACK_APPEARANCE_PAINTERS_H
#define LAMPBLACK_APPEARANCE_PAINTERS_H

#include "appearance/Palette.h"
#include "appearance/Piece.h"

namespace lampblack::appearance {

// Buttons. value 1: accented (default buttons), or on; 2: mixed.
void PaintPushButton(Canvas&, int, int, Look);
void PaintCheckBox(Canvas&, int, int, Look);
void PaintRadioButton(Canvas&, int, int, Look);
void PaintBevelButton(Canvas&, int, int, Look); // variant: corner radius
void PaintRoundButton(Canvas&, int, int, Look);
void PaintPopupButton(Canvas&, int, int, Look);  // variant: width of its arrow part
void PaintComboButton(Canvas&, int, int, Look);  // the arrow part alone
void PaintLittleArrows(Canvas&, int, int, Look); // value 1: upper half pressed, 2: lower half
void PaintListHeader(Canvas&, int, int, Look);   // value 1: the sorted column
void PaintTriangle(Canvas&, int, int, Look); // variant: a kThemeArrow… direction; value: how strong, 0…2

// Tracks. variant 1: horizontal (0: vertical), or what it says.
void PaintScrollTrack(Canvas&, int, int, Look);
void PaintScrollThumb(Canvas&, int, int, Look);
void PaintScrollArrow(Canvas&, int, int, Look); // variant 2 added: the arrow to higher values
void PaintSliderTrack(Canvas&, int, int, Look);
void PaintSliderThumb(Canvas&, int, int, Look); // value: kThemeThumb… direction
void PaintTick(Canvas&, int, int, Look);
void PaintProgressTrough(Canvas&, int, int, Look);
void PaintProgressFill(Canvas&, int, int, Look);
void PaintIndeterminate(Canvas&, int, int, Look); // variant: pixels that the stripes have moved
void PaintRelevance(Canvas&, int, int, Look);
void PaintSpinner(Canvas&, int, int, Look); // variant: the leading spoke of twelve

inline constexpr int kStripePeriod = 16;
inline constexpr int kSpokes = 12;

// Frames. The edit-text frame is one pixel wide; a focus ring is kFocusWidth pixels wide.
inline constexpr int kFocusWidth = 3;
void PaintFocusRing(Canvas&, int, int, Look); // variant: corner radius of what it surrounds
void PaintEditFrame(Canvas&, int, int, Look); // value 1: a list box, the same on every side
void PaintGroup(Canvas&, int, int, Look);     // value 1: secondary
void PaintSeparator(Canvas&, int, int, Look); // value 1: in a menu; variant 1: vertical
void PaintPlacard(Canvas&, int, int, Look);   // value 1: window header, 2: list view header
void PaintWell(Canvas&, int, int, Look);      // value 1: its inside is white
void PaintGrowBox(Canvas&, int, int, Look);   // variant: kThemeGrow… bits
void PaintDialogFrame(Canvas&, int, int, Look);
void PaintTab(Canvas&, int, int, Look); // value 1: front; variant: ThemeTabDirection
void PaintTabPane(Canvas&, int, int, Look);

// Windows. variant: corner radius. Pixels are opaque; the corners are cut by the structure region.
void PaintTitleBar(Canvas&, int, int, Look);
void PaintSideTitleBar(Canvas&, int, int, Look);
void PaintWindowBorder(Canvas&, int, int, Look); // variant: thickness
void PaintTitleWidget(Canvas&, int, int, Look);  // value: ThemeTitleBarWidget; variant 1: with its glyph

// Menus
void PaintMenuBar(Canvas&, int, int, Look);
void PaintMenuTitle(Canvas&, int, int, Look);
void PaintMenuItem(Canvas&, int, int, Look);
void PaintMenuBackground(Canvas&, int, int, Look);

// Shared strokes
void FillFace(Canvas&, const palette::Face&, double inTop, double inBottom);
const palette::Face& FaceOf(Look); // accented when its value is not zero and its tone allows it
void PaintArrow(Canvas&, double inCenterX, double inCenterY, double inHalf, int inDirection, Color);

} // namespace lampblack::appearance

#endif
