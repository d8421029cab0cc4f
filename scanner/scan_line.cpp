#include "scanner/scan_line.h"

#include <charconv>

#include "core/handling.h"
#include "core/registry_layer.h"
#include "core/runtime.h"
#include "scanner/text_parts.h"

namespace bromvale {

namespace {

std::int32_t hiveNumber(std::string_view text) {
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && !text.empty() ? number : toInt32(text);
}

}  // namespace

// The first "]" and the first "=" of the line count. So a "]" in a key cuts it and a name with "=" loses its
// tail to the value; a "=" in a key gives the name a negative length, which fails and leaves the name of the
// entry before. The places are 16-bit numbers: one beyond 32767 fails and keeps the place of the line before.
void EntryParts::take(std::string_view line, Tags tags) {
    const auto onFailure = reportAndGoOn(tags);
    const auto length = static_cast<std::int64_t>(line.size());
    attempt(onFailure, [&] { p1 = narrowInt16(positionOf(line, '[')); });
    attempt(onFailure, [&] { hive = hiveNumber(leftPart(line, p1 - 1)); });
    hiveName = HiveName(hive);
    attempt(onFailure, [&] { p2 = narrowInt16(positionOf(line, ']')); });
    attempt(onFailure, [&] { key = midPart(line, p1 + 1, p2 - p1); });
    attempt(onFailure, [&] { p3 = narrowInt16(positionOf(line, '=')); });
    attempt(onFailure, [&] { name = midPart(line, p2 + 1, p3 - p2 - 1); });
    attempt(onFailure, [&] { value = rightPart(line, length - p3); });
}

}  // namespace bromvale
