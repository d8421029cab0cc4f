#pragma once
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/machine.h"

namespace bromvale {

// Days counted from a fixed one. `text` is "day.month.year" in plain decimal, leading zeros allowed, whatever
// the user's locale. Failure 13 where it is no such date, 1601 to 30827.
[[nodiscard]] std::int32_t dayNumber(std::string_view text);

// Midnights from `from` to `to`, negative where `to` is the earlier one; both as above.
[[nodiscard]] std::int32_t daysBetween(std::string_view from, std::string_view to);

// Date and time in the user's short date and long time format, a blank between them.
[[nodiscard]] std::string dateTimeText(const SYSTEMTIME& time);

}  // namespace bromvale
