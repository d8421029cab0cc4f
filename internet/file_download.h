#pragma once
#include <string>

namespace bromvale {

// What stands for the system's download dialog where there is none: the user says where the file goes, or
// that it doesn't; and is told when it can't be fetched.
void fetchWithConsent(const std::string& address);

// Fetches a file to its place, serving the windows meanwhile. Until it is whole it lies under a temporary
// name beside; a file that was there goes only then. False, and nothing has changed, where the server has no
// such file or the line breaks.
[[nodiscard]] bool fetchFile(const std::string& address, const std::string& path);
}  // namespace bromvale
