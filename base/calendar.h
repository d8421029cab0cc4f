#pragma once
#include <cstdint>
#include <string_view>

namespace bromvale {

// A day that Windows can keep: years 1601 to 30827.
[[nodiscard]] bool isDate(int day, int month, int year);
[[nodiscard]] int daysInMonth(int month, int year);
// Days from the first of January of year 1 to that of this year.
[[nodiscard]] std::int32_t daysBefore(int year);

// Days counted from a fixed one. `text` is "day.month.year" in plain decimal, leading zeros allowed, whatever
// the user's locale. Failure 13 where it is no such date, 1601 to 30827.
[[nodiscard]] std::int32_t dayNumber(std::string_view text);

// Midnights from `from` to `to`, negative where `to` is the earlier one; both as above.
[[nodiscard]] std::int32_t daysBetween(std::string_view from, std::string_view to);

}  // namespace bromvale
