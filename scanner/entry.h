#pragma once
#include <cstdint>
#include <string_view>

namespace bromvale {

// One value of the registry, as views into its line or its group and into fixed texts. Texts have their marks
// (platform/exact/text.h).
struct Entry {
    std::int32_t hive = 0;
    std::string_view hiveName;  // in the checks of a group: that of the entry that closed it
    std::string_view key;       // with its closing "]", which the checks rely on
    std::string_view name;      // "@" for the default value
    std::string_view value;
};

}  // namespace bromvale
