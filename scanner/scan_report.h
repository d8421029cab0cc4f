#pragma once
#include <cstdint>
#include <string>
#include <string_view>

namespace bromvale {

// The sentence for a share of faults in percent; empty for exactly 5.
[[nodiscard]] std::string_view scanRating(double percent);

// " (73 von 4120 Einträgen = 1,77%)", what follows the sentence.
[[nodiscard]] std::string scanShare(int faults, int total, double percent);

// Faults in a hundred entries, two decimals, half to even. Failure 6 for no entries and no faults.
[[nodiscard]] double faultPercent(int faults, int total);

// How much of the entries has been looked at, rounded to a whole number half to even.
[[nodiscard]] std::int64_t donePercent(int entry, int total);

}  // namespace bromvale
