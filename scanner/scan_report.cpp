#include "scanner/scan_report.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/numbers.h"

namespace bromvale {

namespace {

struct Rating {
    bool (*holds)(double percent);
    std::string_view sentence;
};

// The first row that holds. None does for exactly 5 percent: that gap stays, the report then begins with the
// blank of its share.
constexpr std::array<Rating, 5> kRatings{{
    {[](double percent) { return percent == 0; }, "Hervorragend, keine Fehler gefunden."},
    {[](double percent) { return percent < 1; }, "Nur wenige Fehler gefunden."},
    {[](double percent) { return percent < 3; }, "Einige Fehler gefunden."},
    {[](double percent) { return percent < 5; }, "Viele Fehler gefunden."},
    {[](double percent) { return percent > 5; }, "Sehr viele Fehler gefunden."},
}};

}  // namespace

std::string_view scanRating(double percent) {
    const auto* const row = std::find_if(kRatings.begin(), kRatings.end(),
                                         [&](const Rating& rating) { return rating.holds(percent); });
    return row == kRatings.end() ? std::string_view() : row->sentence;
}

std::string scanShare(int faults, int total, double percent) {
    return " (" + std::to_string(faults) + " von " + std::to_string(total) +
           " Einträgen = " + numberText(percent) + "%)";
}

double faultPercent(int faults, int total) {
    return roundHalfEven(divide(faults, total) * 100, 2);
}

std::int64_t donePercent(int entry, int total) {
    return std::llrint(static_cast<double>(entry) / static_cast<double>(total) * 100);
}

}  // namespace bromvale
