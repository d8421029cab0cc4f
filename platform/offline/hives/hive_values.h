// Single values of a hive, for those who look for something particular in it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/offline/hives/hive.h"

namespace bromvale::offline {

// Of the key at `path` below the root, without case; nothing where key or value is missing. HiveDamage where
// the way there is damaged.
[[nodiscard]] std::optional<HiveValue> valueAt(const Hive& hive, std::u16string_view path,
                                               std::u16string_view name);
// A text up to its first NUL, nothing where the value is none.
[[nodiscard]] std::optional<std::u16string> textAt(const Hive& hive, std::u16string_view path,
                                                   std::u16string_view name);
[[nodiscard]] std::optional<std::uint32_t> numberAt(const Hive& hive, std::u16string_view path,
                                                    std::u16string_view name);

[[nodiscard]] std::u16string textOfBytes(std::string_view utf16Bytes);
[[nodiscard]] bool sameName(std::u16string_view left, std::u16string_view right);

}  // namespace bromvale::offline
