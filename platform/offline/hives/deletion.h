// Takes keys out of a hive in memory, with all that is theirs.
#pragma once

#include <optional>
#include <span>
#include <string>

#include "platform/offline/hives/image.h"
#include "platform/offline/hives/layout.h"

namespace bromvale::offline {

// Why the key can't be deleted (English, a sentence without full stop), or nothing: the root, one that must
// not be deleted, a symbolic link, a predefined handle, or one that holds such a key.
[[nodiscard]] std::optional<std::string> whyUndeletable(HiveBytes file, Cell key);

// The hive must have passed the checker. Each key goes with its sub keys, values, data of all forms, class
// names and its part in the counts of security; a list that is left empty goes as well. A key inside one that
// was taken before counts as taken. Nothing else changes: no time, no other key, nothing behind the bins.
// Both sequence numbers go one up, the checksum follows. HiveDamage where something can't be taken: then the
// image is spoilt. How many keys went, those below others included.
std::size_t deleteKeys(HiveImage& image, std::span<const Cell> keys);

}  // namespace bromvale::offline
