// The names of the user and of the machine, as the machine's own data bases have them.
#include "MacRoman.h"
#include "StringObject.h"

#include <Carbon/OSUtils.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>
#include <vector>

using namespace lampblack::foundation;

namespace {

struct User {
    std::string login;
    std::string full;
};

// The field of a user's particulars begins with the full name, in which '&' stands for the login name with a
// capital.
std::string FullName(const std::string& inField, const std::string& inLogin)
{
    std::string name;
    for (const char character : inField.substr(0, inField.find(','))) {
        if (character != '&') {
            name += character;
            continue;
        }
        const size_t start = name.size();
        name += inLogin;
        if (name.size() > start && name[start] >= 'a' && name[start] <= 'z')
            name[start] = (char)(name[start] - 32);
    }
    return name;
}

std::string UnknownUser()
{
    const char* name = std::getenv("USER");
    return name && *name ? name : "user" + std::to_string(getuid());
}

User CurrentUser()
{
    std::vector<char> storage(16384);
    struct passwd entry = {};
    struct passwd* found = nullptr;
    getpwuid_r(getuid(), &entry, storage.data(), storage.size(), &found);
    User user;
    user.login = found && found->pw_name && *found->pw_name ? found->pw_name : UnknownUser();
    if (found && found->pw_gecos)
        user.full = FullName(found->pw_gecos, user.login);
    return user;
}

CFStringRef StringOf(const std::string& inUtf8)
{
    return NewConstant(Utf16FromUtf8(inUtf8));
}

} // namespace

CFStringRef CSCopyUserName(Boolean useShortName)
{
    const User user = CurrentUser();
    return StringOf(useShortName || user.full.empty() ? user.login : user.full);
}

CFStringRef CSCopyMachineName(void)
{
    std::array<char, 257> name = {};
    gethostname(name.data(), name.size() - 1);
    std::string host = name.data();
    host.resize(std::min(host.find('.'), host.size()));
    return StringOf(host.empty() ? "localhost" : host);
}
