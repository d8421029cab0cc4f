#include "scanner/scan_line.h"

#include <charconv>
#include <limits>

#include "base/numbers.h"
#include "base/text_parts.h"
#include "core/handling.h"
#include "core/registry_layer.h"
#include "platform/exact/text.h"

namespace bromvale {

namespace {

std::int32_t hiveNumber(std::string_view text) {
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && !text.empty() ? number : toInt32(text);
}

// A 16-bit number. Marks make a line longer than its text is, and one with marks must come apart whole: what
// is left of it decides whether its object is left alone.
std::int32_t placeOf(std::string_view line, char sought) {
    const std::int64_t place = positionOf(line, sought);
    if (place > std::numeric_limits<std::int16_t>::max() && !isExact(line)) return narrowInt32(place);
    return narrowInt16(place);
}

}  // namespace

// The first "]" and the first "=" of the line count. So a "]" in a key cuts it and a name with "=" loses its
// tail to the value; a "=" in a key gives the name a negative length, which fails and leaves the name of the
// entry before. A place beyond 32767 fails and keeps the one of the line before.
void EntryParts::take(std::string_view line, Tags tags) {
    const auto onFailure = reportAndGoOn(tags);
    const auto length = static_cast<std::int64_t>(line.size());
    attempt(onFailure, [&] { p1 = placeOf(line, '['); });
    attempt(onFailure, [&] { hive = hiveNumber(leftPart(line, p1 - 1)); });
    hiveName = HiveName(hive);
    attempt(onFailure, [&] { p2 = placeOf(line, ']'); });
    attempt(onFailure, [&] { key = midPart(line, p1 + 1, p2 - p1); });
    attempt(onFailure, [&] { p3 = placeOf(line, '='); });
    attempt(onFailure, [&] { name = midPart(line, p2 + 1, p3 - p2 - 1); });
    attempt(onFailure, [&] { value = rightPart(line, length - p3); });
}

}  // namespace bromvale
