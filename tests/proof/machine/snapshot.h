#pragma once
// The registry and the drive as they stand, in a form that can be compared and looked up.
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/proof/machine/letters.h"

namespace bromvale::proof {

struct StoredData {
    Text name;
    std::uint32_t type = 0;
    std::string bytes;
    bool operator==(const StoredData&) const = default;
};

// Values by their names in lower case.
using StoredValues = std::map<Text, StoredData>;

struct StoredKey {
    Text path;  // with the hive's name
    StoredValues values;
};

// Keys by their whole paths in lower case.
using RegistrySnapshot = std::map<Text, StoredKey>;

// The differences as readable lines, at most so many.
[[nodiscard]] std::vector<std::string> differences(const RegistrySnapshot& before,
                                                   const RegistrySnapshot& after);

// Keys at a path and below it.
[[nodiscard]] RegistrySnapshot subTree(const RegistrySnapshot& registry, View path);

// What a registry file of either version would put into an empty registry. A line that can't be read is told
// in `complaints`. `codePage` is that of a file in ANSI.
[[nodiscard]] RegistrySnapshot readRegistryFile(const std::string& bytes,
                                                std::vector<std::string>& complaints);

// Files and folders of a host folder by their paths in UTF-8, with "<link>" and the target or the bytes of a
// file behind them; links are not followed.
using DriveSnapshot = std::map<std::string, std::string>;
[[nodiscard]] DriveSnapshot readDrive(const std::string& hostFolder);

}  // namespace bromvale::proof
