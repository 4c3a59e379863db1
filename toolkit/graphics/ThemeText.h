// Text in the theme's fonts at the pen, the meta fonts of control resources, and growing strings out of C and
// Pascal text. Begin with DrawThemeCString.
#ifndef LAMPBLACK_GRAPHICS_THEMETEXT_H
#define LAMPBLACK_GRAPHICS_THEMETEXT_H

#include <Carbon/Carbon.h>

#include "util/Visibility.h"

LAMPBLACK_BEGIN

// CFMutableStringCreateWithCString, CFMutableStringCreateWithPascalString
//
// A string that can grow to 255 units, or to the length of a C string that is longer. NULL text gives an
// empty one. NULL when the string could not be made; the caller releases it.
CFMutableStringRef CFMutableStringCreateWithCString(CFAllocatorRef inAllocator, const char* inText,
                                                    CFStringEncoding inEncoding);
CFMutableStringRef CFMutableStringCreateWithPascalString(CFAllocatorRef inAllocator, ConstStr255Param inText,
                                                         CFStringEncoding inEncoding);

// DrawThemeCString, DrawThemePascalString
//
// Draw one line in a theme font and in the active state, on the pen's baseline, from one pixel left of the
// pen, which does not move. The text is in the application's encoding.
//
// Errors:     paramErr  NULL, or text that is none in that encoding; else what DrawThemeTextBox answers.
OSStatus DrawThemeCString(const char* inText, ThemeFontID inFont, SInt16 inJustification);
OSStatus DrawThemePascalString(ConstStr255Param inText, ThemeFontID inFont, SInt16 inJustification);

// WidthThemeCString, WidthThemePascalString
//
// Pixels that the text takes on one line; 0 for NULL. outBaseline receives how far the baseline is below the
// text's bottom edge: minus the descent.
SInt16 WidthThemeCString(const char* inText, ThemeFontID inFont, SInt16* outBaseline);
SInt16 WidthThemePascalString(ConstStr255Param inText, ThemeFontID inFont, SInt16* outBaseline);
SInt16 WidthThemeCString(const char* inText, ThemeFontID inFont);
SInt16 WidthThemePascalString(ConstStr255Param inText, ThemeFontID inFont);

// ConvertMetaFontToFontAndSize
//
// Which font and size a font number of a control resource means: -1 the system font, -2 the small one, -3 the
// small emphasized one, -4 the views font; any other number is a font, in the current port's size. Always
// noErr.
OSErr ConvertMetaFontToFontAndSize(SInt16 inFont, SInt16* outFont, SInt16* outSize);

LAMPBLACK_END

#endif
