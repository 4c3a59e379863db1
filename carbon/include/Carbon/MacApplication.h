// What the application's text is in, unless something says otherwise.
#ifndef LAMPBLACK_CARBON_MACAPPLICATION_H
#define LAMPBLACK_CARBON_MACAPPLICATION_H

#include <Carbon/Script.h>
#include <Carbon/TextCommon.h>

LAMPBLACK_BEGIN_C

TextEncoding GetApplicationTextEncoding(void); // Mac Roman
ScriptCode GetApplicationScript(void);         // smRoman

LAMPBLACK_END_C

#endif
