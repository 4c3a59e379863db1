// The file shown last, kept in the preference file as an alias: it is found again when it was renamed or
// moved.
#ifndef LAMPBLACK_VIEWER_LASTFILE_H
#define LAMPBLACK_VIEWER_LASTFILE_H

#include <filesystem>

void RememberFile(const std::filesystem::path&);

// Empty when none was kept, or when it is gone.
std::filesystem::path RememberedFile();

#endif
