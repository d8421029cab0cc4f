#pragma once
#include <string>

#include "bromvale-offline/options.h"
#include "platform/offline/reg_files/reg_file.h"

namespace bromvale::offline {

// "bromvale-offline: " and the text (UTF-8), to standard error.
void complain(const std::string& text);
void complain(const RegFileError& error);

// What --now says, else the host's local time.
[[nodiscard]] SYSTEMTIME timeOf(const Options& options);
// The process's machine as the options describe it, but for its registry.
void setUpMachine(const Options& options);
// The registry files in their order; without any and without raw hives the example machine. False where one
// can't be read: that was said then.
[[nodiscard]] bool loadRegistries(const Options& options);

}  // namespace bromvale::offline
