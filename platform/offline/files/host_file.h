#pragma once
#include <sys/stat.h>

#include <memory>
#include <string>
#include <string_view>

#include "platform/offline/files/volume.h"

namespace bromvale::offline {

// Names of the host's files and what the machine calls them, in the stored form: the 9x family knows names of
// its code page only.
[[nodiscard]] std::string knownName(std::string_view hostName);
[[nodiscard]] std::string hostOfStored(std::string_view stored);

// What a call of the host has come to, as a last-error number: 0 where it gave 0, else what errno says.
[[nodiscard]] DWORD outcome(int result);
// Universal time.
[[nodiscard]] Milliseconds lastWriteOf(const struct stat& state);

// An open file of the host, which is closed with the object. Its time is the machine's, not the host's, so
// that its age is what the program sees.
[[nodiscard]] std::unique_ptr<OpenedFile> makeHostFile(const Clock& clock, int file);

}  // namespace bromvale::offline
