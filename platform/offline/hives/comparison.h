// Proves that one hive is another one less some keys: by the reader of this folder, and by another one that
// knows nothing of it.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string>

#include "platform/offline/hives/hive.h"

namespace bromvale::offline {

// The first difference (English, with the key's path), or nothing: `after` must be `before` without the keys
// `gone` (cells of `before`) and what lies below them; every other key with its name, time, flags, class name
// and security, its values in their order with names, types, flags and bytes. HiveDamage where either can't
// be read.
[[nodiscard]] std::optional<std::string> differenceOfTrees(const Hive& before, const Hive& after,
                                                           std::span<const Cell> gone);

// Whether the program was built with the second reader (libhivex).
[[nodiscard]] bool hasSecondReader();

// What the second reader can't tell by its nature, as numbers of keys and values.
struct PassedOver {
    std::size_t names = 0;  // with a NUL (compared up to it) or half of a surrogate pair
    std::size_t times = 0;  // beyond what it has a number for
    std::size_t data = 0;   // without a cell, or longer than 8,000,000 bytes: type and length are compared
    std::size_t valueLists = 0;  // of keys: of predefined handles, or longer than 110,000
    std::size_t keyLists = 0;    // longer than 70,000: what lies below them isn't compared at all

    bool operator==(const PassedOver&) const = default;
};

// The same by the second reader, which opens `file` (a path of the host) itself: names, times, types and
// bytes; it knows no flags, class names and security. It works in a process of its own, since damage may end
// it: that is a difference too, and so is a file that it can't open. The caller has no other threads.
[[nodiscard]] std::optional<std::string> differenceForSecondReader(const std::string& file,
                                                                   const Hive& before,
                                                                   std::span<const Cell> gone,
                                                                   PassedOver* passedOver = nullptr);

}  // namespace bromvale::offline
