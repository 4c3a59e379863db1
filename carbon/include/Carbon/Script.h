// Codes of scripts. This system has one, Roman, whose text is Mac Roman.
#ifndef LAMPBLACK_CARBON_SCRIPT_H
#define LAMPBLACK_CARBON_SCRIPT_H

#include <Carbon/MacTypes.h>

enum { smSystemScript = -1, smCurrentScript = -2, smAllScripts = -3 };
enum { smRoman = 0 };

#endif
