#pragma once
#include <cstdint>
#include <string_view>

#include "base/failure.h"

namespace bromvale {

// Parts of texts without copies, for work that is done for each entry. The positions and failures are those
// of Left, Mid, Right and InStr.

[[nodiscard]] inline std::int64_t positionOf(std::string_view text, std::string_view sought) {
    const std::size_t found = text.find(sought);
    return found == std::string_view::npos ? 0 : static_cast<std::int64_t>(found) + 1;
}

[[nodiscard]] inline std::int64_t positionOf(std::string_view text, char sought) {
    const std::size_t found = text.find(sought);
    return found == std::string_view::npos ? 0 : static_cast<std::int64_t>(found) + 1;
}

// Failure 5 for a start below 1 or a negative length.
[[nodiscard]] inline std::string_view midPart(std::string_view text, std::int64_t start,
                                              std::int64_t length) {
    if (start < 1 || length < 0) raise(5);
    if (start > static_cast<std::int64_t>(text.size())) return {};
    return text.substr(static_cast<std::size_t>(start - 1), static_cast<std::size_t>(length));
}

[[nodiscard]] inline std::string_view leftPart(std::string_view text, std::int64_t length) {
    return midPart(text, 1, length);
}

[[nodiscard]] inline std::string_view rightPart(std::string_view text, std::int64_t length) {
    if (length < 0) raise(5);
    const auto wanted = static_cast<std::size_t>(length);
    return wanted >= text.size() ? text : text.substr(text.size() - wanted);
}

// The sought text stands in `text`, but not right at its start: such a hit doesn't count in any check.
[[nodiscard]] inline bool standsBehindStart(std::string_view text, std::string_view sought) {
    return positionOf(text, sought) > 1;
}

}  // namespace bromvale
