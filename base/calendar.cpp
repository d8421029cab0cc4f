#include "base/calendar.h"

#include <array>
#include <charconv>

#include "base/failure.h"

namespace bromvale {
namespace {

// The number in front of `sign` (of the whole rest for none), which is cut off with it.
int takeNumber(std::string_view& rest, char sign) {
    const std::size_t length = sign != '\0' ? rest.find(sign) : rest.size();
    if (length == std::string_view::npos || length == 0) raise(Failure::kTypesDiffer);
    int number = 0;
    const char* end = rest.data() + length;
    const auto [behind, error] = std::from_chars(rest.data(), end, number);
    if (error != std::errc() || behind != end) raise(Failure::kTypesDiffer);
    rest.remove_prefix(sign != '\0' ? length + 1 : length);
    return number;
}

bool isLeapYear(int year) {
    return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

}  // namespace

int daysInMonth(int month, int year) {
    constexpr std::array kDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    return kDays[static_cast<std::size_t>(month - 1)] + (month == 2 && isLeapYear(year) ? 1 : 0);
}

bool isDate(int day, int month, int year) {
    return year >= 1601 && year <= 30827 && month >= 1 && month <= 12 && day >= 1 &&
           day <= daysInMonth(month, year);
}

std::int32_t daysBefore(int year) {
    const int past = year - 1;
    return past * 365 + past / 4 - past / 100 + past / 400;
}

std::int32_t dayNumber(std::string_view text) {
    const int day = takeNumber(text, '.');
    const int month = takeNumber(text, '.');
    const int year = takeNumber(text, '\0');
    if (!isDate(day, month, year)) raise(Failure::kTypesDiffer);
    std::int32_t days = daysBefore(year) + day;
    for (int earlier = 1; earlier < month; ++earlier) days += daysInMonth(earlier, year);
    return days;
}

std::int32_t daysBetween(std::string_view from, std::string_view to) {
    return dayNumber(to) - dayNumber(from);
}

}  // namespace bromvale
