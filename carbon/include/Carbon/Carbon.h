// Everything that this platform provides, in one include, as an application written for it expects.
#ifndef LAMPBLACK_CARBON_CARBON_H
#define LAMPBLACK_CARBON_CARBON_H

#include <Carbon/AEDataModel.h>
#include <Carbon/Aliases.h>
#include <Carbon/Appearance.h>
#include <Carbon/CFBase.h>
#include <Carbon/CFString.h>
#include <Carbon/CarbonEvents.h>
#include <Carbon/Components.h>
#include <Carbon/Controls.h>
#include <Carbon/DateTimeUtils.h>
#include <Carbon/Dialogs.h>
#include <Carbon/Drag.h>
#include <Carbon/Events.h>
#include <Carbon/Files.h>
#include <Carbon/Folders.h>
#include <Carbon/Fonts.h>
#include <Carbon/Gestalt.h>
#include <Carbon/Icons.h>
#include <Carbon/ImageCompression.h>
#include <Carbon/Lists.h>
#include <Carbon/MacApplication.h>
#include <Carbon/MacErrors.h>
#include <Carbon/MacMemory.h>
#include <Carbon/MacTypes.h>
#include <Carbon/MacWindows.h>
#include <Carbon/Menus.h>
#include <Carbon/NumberFormatting.h>
#include <Carbon/OSUtils.h>
#include <Carbon/PLStringFuncs.h>
#include <Carbon/Processes.h>
#include <Carbon/Quickdraw.h>
#include <Carbon/Resources.h>
#include <Carbon/Scrap.h>
#include <Carbon/Script.h>
#include <Carbon/Sound.h>
#include <Carbon/StringCompare.h>
#include <Carbon/TextCommon.h>
#include <Carbon/TextEdit.h>
#include <Carbon/TextUtils.h>
#include <Carbon/ToolUtils.h>
#include <Carbon/UTCUtils.h>

#endif
