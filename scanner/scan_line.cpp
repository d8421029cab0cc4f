#include "scanner/scan_line.h"

#include <charconv>
#include <limits>

#include "base/numbers.h"
#include "base/text_parts.h"
#include "core/registry_layer.h"
#include "platform/exact/text.h"

namespace bromvale {
namespace {

// A "]" in a key with marks gets one as well: the line is taken apart at its first "]", and the key would
// look exact where the marks stand behind it.
void appendKey(std::string& line, std::string_view key) {
    if (isExact(key)) {
        line.append(key);
        return;
    }
    for (const char c : key) {
        if (c == ']') {
            appendMark(line, u']');
        } else {
            line += c;
        }
    }
}

std::int32_t hiveNumber(std::string_view text) {
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && !text.empty() ? number : toInt32(text);
}

// A 16-bit number. Marks make a line longer than its text is, and one with marks must come apart whole: what
// is left of it decides whether its object is left alone.
std::int64_t shortPlace(std::string_view line, char sign) {
    const std::int64_t place = positionOf(line, sign);
    return place > std::numeric_limits<std::int16_t>::max() && !isExact(line) ? place : narrowInt16(place);
}

// `step` runs each statement that can fail.
template <class Place, class Step>
void takeApart(std::string_view line, LineParts& parts, Place place, Step step) {
    const auto length = static_cast<std::int64_t>(line.size());
    step([&] { parts.open = place(line, '['); });
    step([&] { parts.hive = hiveNumber(leftPart(line, parts.open - 1)); });
    parts.hiveName = HiveName(parts.hive);
    step([&] { parts.close = place(line, ']'); });
    step([&] { parts.key = midPart(line, parts.open + 1, parts.close - parts.open); });
    step([&] { parts.equals = place(line, '='); });
    step([&] { parts.name = midPart(line, parts.close + 1, parts.equals - parts.close - 1); });
    step([&] { parts.value = rightPart(line, length - parts.equals); });
}

}  // namespace

void ScanLine::write(std::string& line, std::int32_t hive, std::string_view key, std::string_view name,
                     std::string_view data) {
    const NumberPart number(hive);
    const std::string_view slash = key.find('\\') == std::string_view::npos ? "\\" : "";
    if (name.empty()) name = "@";
    line.clear();
    line.reserve(number.text().size() + slash.size() + key.size() + name.size() + data.size() + 3);
    line.append(number.text()).append(1, '[').append(slash);
    appendKey(line, key);
    line.append(1, ']').append(name).append(1, '=').append(data);
}

Entry ScanLine::entry() const {
    LineParts parts;
    const auto place = [](std::string_view line, char sign) { return positionOf(line, sign); };
    takeApart(text_, parts, place, [](auto statement) { statement(); });
    return parts;
}

void ScanLine::takeInto(LineParts& parts, const Routine<>& routine) const {
    takeApart(text_, parts, shortPlace, [&](auto statement) { routine.step(statement); });
}

}  // namespace bromvale
