// The age of an undo file, from texts of days: as the library's own calendar counts.
#include <chrono>
#include <cstdio>
#include <optional>

#include "base/calendar.h"
#include "base/failure.h"
#include "tests/fuzz/target.h"

namespace bromvale::fuzz {
namespace {

std::optional<std::int32_t> between(std::string_view from, std::string_view to) {
    try {
        return daysBetween(from, to);
    } catch (const Failure& failure) {
        require(failure.number == Failure::kTypesDiffer, "no date is the one failure");
        return std::nullopt;
    }
}

std::string dayText(const std::chrono::year_month_day& day) {
    return std::to_string(static_cast<unsigned>(day.day())) + "." +
           std::to_string(static_cast<unsigned>(day.month())) + "." +
           std::to_string(static_cast<int>(day.year()));
}

// A text as it is made of a date is one if the library's calendar has that day.
void requireSameDays(const std::string& text) {
    int day = 0;
    int month = 0;
    int year = 0;
    if (std::sscanf(text.c_str(), "%2d.%2d.%5d", &day, &month, &year) != 3 || day < 1 || month < 1) return;
    const std::chrono::year_month_day meant{std::chrono::year(year),
                                            std::chrono::month(static_cast<unsigned>(month)),
                                            std::chrono::day(static_cast<unsigned>(day))};
    if (dayText(meant) != text) return;
    const bool isDay = meant.ok() && year >= 1601 && year <= 30827;
    require(between(text, text).has_value() == isDay, "the days of the library's calendar");
}

// The first line is a text of a day; it stands at another place of the calendar by the number behind it.
void run(std::string_view input) {
    using std::chrono::sys_days;
    Pieces pieces(input);
    const std::string text(pieces.until("\n"));
    const sys_days fixed = std::chrono::year{2000} / 1 / 1;
    requireSameDays(text);
    const auto days = between("1.1.2000", text);
    if (!days) return;
    const sys_days meant = fixed + std::chrono::days(*days);
    require(between(dayText(meant), text) == 0, "the day has that date");
    const sys_days other = meant + std::chrono::days(static_cast<int>(pieces.number()) - 32768);
    const auto difference = between(text, dayText(other));
    const int year = static_cast<int>(std::chrono::year_month_day(other).year());
    require(difference.has_value() == (year >= 1601 && year <= 30827), "the years that Windows keeps");
    require(!difference || *difference == (other - meant).count(), "as many midnights");
}

std::vector<std::string> seeds() {
    return {"22.11.2026\n\x01\x80", "29.2.2000\n", "029.02.1904\n\xFF\xFF",
            "31.12.30827\n",        "1.1.1601\n",  "29.2.1900\n"};
}

const KnownTarget kTarget({"undo_age", run, seeds});

}  // namespace
}  // namespace bromvale::fuzz
