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
    const std::int64_t open = place('[');
    const std::int64_t close = place(']');
    const std::int64_t equals = place('=');
    const std::int32_t number = hive(open);
    return {number, HiveName(number), key(open, close), name(close, equals), value(equals)};
}

void ScanLine::takeInto(LineParts& parts, const Routine<>& routine) const {
    routine.step([&] { parts.open = shortPlace('['); });
    routine.step([&] { parts.hive = hive(parts.open); });
    parts.hiveName = HiveName(parts.hive);
    routine.step([&] { parts.close = shortPlace(']'); });
    routine.step([&] { parts.key = key(parts.open, parts.close); });
    routine.step([&] { parts.equals = shortPlace('='); });
    routine.step([&] { parts.name = name(parts.close, parts.equals); });
    routine.step([&] { parts.value = value(parts.equals); });
}

std::int64_t ScanLine::place(char sign) const {
    return positionOf(text_, sign);
}

// A 16-bit number. Marks make a line longer than its text is, and one with marks must come apart whole: what
// is left of it decides whether its object is left alone.
std::int32_t ScanLine::shortPlace(char sign) const {
    const std::int64_t found = place(sign);
    if (found > std::numeric_limits<std::int16_t>::max() && !isExact(text_)) return narrowInt32(found);
    return narrowInt16(found);
}

std::int32_t ScanLine::hive(std::int64_t open) const {
    const std::string_view text = leftPart(text_, open - 1);
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end && !text.empty() ? number : toInt32(text);
}

std::string_view ScanLine::key(std::int64_t open, std::int64_t close) const {
    return midPart(text_, open + 1, close - open);
}

std::string_view ScanLine::name(std::int64_t close, std::int64_t equals) const {
    return midPart(text_, close + 1, equals - close - 1);
}

std::string_view ScanLine::value(std::int64_t equals) const {
    return rightPart(text_, static_cast<std::int64_t>(text_.size()) - equals);
}

}  // namespace bromvale
