#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/registry.h"

namespace bromvale {

// Texts of the complete copy, as bytes of a file.

// What the file begins with that holds the record made last.
[[nodiscard]] std::string keyFileHeader();

enum class KeyRecord { Whole, Unreadable, NoForm };

// All that goes with an opened key, in the form of this system's registry editor, under the names that it has
// in that editor. What `record` held before is gone, its memory is used again. It is of use only where the
// answer is Whole.
[[nodiscard]] KeyRecord keyRecord(HKEY key, std::int32_t hive, std::string_view subKey, std::string& record);

}  // namespace bromvale
