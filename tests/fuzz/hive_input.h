// Hives and logs as small inputs: what is always zero isn't in them, and checksums can be made right, which
// chance never finds.
#pragma once

#include <string>
#include <string_view>

namespace bromvale::fuzz {

enum class HiveFile { Hive, Log };

// The start of the first sector, then all that is behind the base block (of a log: behind its first sector),
// filled up with zeros to whole pages (sectors).
[[nodiscard]] std::string expanded(std::string_view input, HiveFile file);
// The other way round.
[[nodiscard]] std::string compact(std::string_view file, HiveFile kind);

// The checksum of the first sector.
void setChecksum(std::string& file);
// The hashes of all entries of a log of the new form.
void setHashes(std::string& log);

}  // namespace bromvale::fuzz
