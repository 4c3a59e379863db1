// The whole toolkit in one include: windows, controls, resources, drawing, strings, system checks.
// Begin with CWindow (window/CWindow.h) and InitializeMacOSHelpers (window/Startup.h).
#ifndef LAMPBLACK_LAMPBLACK_H
#define LAMPBLACK_LAMPBLACK_H

#include <Carbon/Carbon.h>

#include "controls/ControlData.h"
#include "controls/ControlsByID.h"
#include "controls/ControlsFromResources.h"
#include "controls/Focus.h"
#include "graphics/Geometry.h"
#include "graphics/OffscreenWorlds.h"
#include "graphics/PixelCopies.h"
#include "graphics/StateSavers.h"
#include "graphics/ThemeText.h"
#include "prefs/ApplicationResources.h"
#include "prefs/FileDescriptors.h"
#include "prefs/FileHelpers.h"
#include "prefs/FolderMenus.h"
#include "prefs/PreferenceFile.h"
#include "prefs/Preferences.h"
#include "prefs/ResourceValues.h"
#include "util/CarbonEventHelpers.h"
#include "util/ProcessHelpers.h"
#include "util/Random.h"
#include "util/StringConversions.h"
#include "util/StringResources.h"
#include "util/Strings.h"
#include "util/SystemChecks.h"
#include "window/CTimer.h"
#include "window/CWindow.h"
#include "window/Startup.h"
#include "window/WindowUtilities.h"

#endif
