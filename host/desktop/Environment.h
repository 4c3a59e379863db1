// What the desktop's libraries read from the environment while they start, set for that time only: programs
// that this one starts shall not see it.
#ifndef LAMPBLACK_HOST_ENVIRONMENT_H
#define LAMPBLACK_HOST_ENVIRONMENT_H

#include <string>

namespace lampblack::host {

// A variable that is set as long as this lives, unless the user has set it. An empty value sets nothing.
class StVariable {
public:
    [[nodiscard]] StVariable(const char* name, const std::string& value);
    ~StVariable();
    StVariable(const StVariable&) = delete;
    StVariable& operator=(const StVariable&) = delete;

private:
    const char* fName; // null: nothing was set
};

// For DBUS_SESSION_BUS_ADDRESS: keeps D-Bus from starting a bus of its own for us where there is none, which
// costs a process at each start; nobody else would be on it. Empty where there is one.
std::string AddressOfNoBus();

// For XCOMPOSECACHE: the folder where the X library keeps its table of composed letters, which it otherwise
// reads from half a megabyte of text at each start. Made when it is missing, for this user alone. Empty when
// it cannot be made, or the user has a folder for it already.
std::string ComposeCacheFolder();

} // namespace lampblack::host

#endif
