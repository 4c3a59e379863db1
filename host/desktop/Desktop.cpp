// placeholder
#include "../Parts.h"
namespace lampblack::host {
Table DesktopTable(const Settings& s) { return HeadlessTable(s); }
}
