// The names of the user and the machine.
#include "StringTest.h"

#include <Carbon/OSUtils.h>

#include <cstring>
#include <pwd.h>
#include <unistd.h>

using namespace lampblack::foundation;

TEST_CASE("CSCopyUserName: the login name of this process's user, and a full name that is not empty")
{
    const StString shortName(CSCopyUserName(true)), longName(CSCopyUserName(false));
    const struct passwd* user = getpwuid(getuid());
    if (user)
        CHECK(Utf8Of(shortName) == user->pw_name);
    CHECK(CFStringGetLength(shortName) > 0);
    CHECK(CFStringGetLength(longName) > 0);
    CHECK(Utf8Of(longName).find(',') == std::string::npos);
}

TEST_CASE("CSCopyMachineName: the host without its domain")
{
    char host[257] = {};
    gethostname(host, 256);
    const std::string name = Utf8Of(StString(CSCopyMachineName()));
    CHECK_FALSE(name.empty());
    CHECK(name.find('.') == std::string::npos);
    if (host[0])
        CHECK(std::strncmp(host, name.c_str(), name.size()) == 0);
}
