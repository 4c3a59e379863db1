// What the sources of host/ know of one another: the hosts to choose from, and small shared pieces.
#ifndef LAMPBLACK_HOST_PARTS_H
#define LAMPBLACK_HOST_PARTS_H

#include <Host.h>

#include <filesystem>

namespace lampblack::host {

// Each is made once, by Machine().
Table HeadlessTable(const Settings&);
Table DesktopTable(const Settings&);

// Whether the headless host serves this process; its user does nothing elsewhere.
bool HeadlessIsChosen();

// Answers false when the file cannot be written whole.
bool WritePng(const std::filesystem::path&, const Frame&);

// "scheme:rest" without spaces or control characters: what may be handed to the desktop as a URL.
bool HasScheme(std::string_view utf8);

} // namespace lampblack::host

#endif
