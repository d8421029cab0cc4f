// Registries as files of the registry editor.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "bromvale-offline/rescue/sources.h"

namespace bromvale::offline {

// The machine that the scan would see, or one key of it, as --export wants it. The exit status; throws
// RescueStop.
[[nodiscard]] int exportRegistry(const Sources& sources, const Options& options);

// The bytes of a registry file with keys of a hive and all below them; `liveKey` is what the hive is on the
// living machine. What has no form in such a file (a NUL in a name) is left out.
[[nodiscard]] std::string completeCopyOf(const SourceHive& hive, const std::vector<Cell>& keys);

// A new file of the host, whole or not at all; devices and pipes are written into. Throws RescueStop where it
// can't be written, or where a hive would be lost.
void writeNewFile(const std::string& path, const std::string& bytes);
void writeToStandardOutput(const std::string& bytes);

}  // namespace bromvale::offline
