#include "platform/offline/hives/cleaning/record.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <tuple>

namespace bromvale::offline {
namespace {

constexpr std::string_view kFirstLine = "bromvale cleaning 1";
constexpr std::string_view kLastLine = "end";
constexpr std::string_view kMark = ".bromvale-";
constexpr std::string_view kListEnd = ".list";
constexpr std::string_view kHalfListEnd = ".list.new";

constexpr std::array<std::string_view, 6> kStates{"begun", "ready", "done", "undoing", "undone", "abandoned"};

bool isControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

std::string escaped(std::string_view text) {
    std::string line;
    for (const char c : text) {
        if (isControl(c) || c == '%') {
            std::array<char, 4> code{};
            std::snprintf(code.data(), code.size(), "%%%02X", static_cast<unsigned char>(c));
            line += code.data();
        } else {
            line += c;
        }
    }
    return line;
}

template <class Number>
std::optional<Number> numberOf(std::string_view text, int base = 10) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

std::optional<std::string> unescaped(std::string_view line) {
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (line[i] != '%') {
            text += line[i];
            continue;
        }
        const std::optional<unsigned> code =
            line.size() - i < 3 ? std::nullopt : numberOf<unsigned>(line.substr(i + 1, 2), 16);
        if (!code) return std::nullopt;
        text += static_cast<char>(*code);
        i += 2;
    }
    return text;
}

std::string line(std::string_view name, std::string_view value) {
    return std::string(name) + ": " + std::string(value) + "\n";
}

std::string textOf(const FilePrint& print) {
    std::array<char, 17> hash{};
    std::snprintf(hash.data(), hash.size(), "%016llx", static_cast<unsigned long long>(print.hash));
    return std::to_string(print.size) + " " + hash.data();
}

// Up to the separator, which goes as well; all of it where there is none.
std::string_view cut(std::string_view& text, std::string_view separator) {
    const std::size_t end = text.find(separator);
    const std::string_view first = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + separator.size());
    return first;
}

bool readPrint(std::string_view& text, FilePrint& print) {
    const auto size = numberOf<std::uint64_t>(cut(text, " "));
    const auto hash = numberOf<std::uint64_t>(cut(text, " "), 16);
    print = {size.value_or(0), hash.value_or(0)};
    return size && hash;
}

bool readText(std::string_view value, std::string& text) {
    const std::optional<std::string> plain = unescaped(value);
    text = plain.value_or("");
    return plain.has_value();
}

bool readLog(std::string_view value, CleaningRecord& record) {
    RecordedLog& log = record.logs.emplace_back();
    return readPrint(value, log.print) && readText(value, log.name) && !log.name.empty();
}

bool readState(std::string_view value, CleaningRecord& record) {
    const auto* const state = std::ranges::find(kStates, value);
    record.state = static_cast<CleaningState>(state - kStates.begin());
    return state != kStates.end();
}

bool readPart(std::string_view value, CleaningRecord& record) {
    const auto part = numberOf<std::size_t>(cut(value, " of "));
    const auto parts = numberOf<std::size_t>(value);
    record.part = part.value_or(0);
    record.parts = parts.value_or(0);
    return part && parts;
}

bool readLine(std::string_view name, std::string_view value, CleaningRecord& record) {
    if (name == "stamp") return readText(value, record.stamp) && isStamp(record.stamp);
    if (name == "state") return readState(value, record);
    if (name == "hive") return readText(value, record.hive);
    if (name == "part") return readPart(value, record);
    if (name == "old") return readPrint(value, record.old);
    if (name == "replayed") return readPrint(value, record.replayed);
    if (name == "new") return readPrint(value, record.fresh);
    if (name == "present") return readPrint(value, record.present);
    if (name == "forced") return record.forced = value == "yes";
    if (name == "log") return readLog(value, record);
    if (name == "key") return readText(value, record.keys.emplace_back());
    const auto removed = name == "removed" ? numberOf<std::size_t>(value) : std::nullopt;
    record.removed = removed.value_or(0);
    return removed.has_value();
}

bool isFileName(std::string_view name) {
    return !name.empty() && name != "." && name != ".." && name.find('/') == std::string_view::npos;
}

}  // namespace

std::string CleaningRecord::copyOf(const std::string& file) const {
    return file + std::string(kMark) + stamp;
}

std::string CleaningRecord::hiveCopy() const {
    return copyOf(hive);
}

bool CleaningRecord::unfinished() const {
    return state == CleaningState::Begun || state == CleaningState::Ready || state == CleaningState::Undoing;
}

bool isStamp(std::string_view stamp) {
    return !stamp.empty() && stamp.size() <= 64 && std::ranges::all_of(stamp, [](char c) {
        return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' ||
               c == '_';
    });
}

std::string_view nameOfState(CleaningState state) {
    return kStates.at(static_cast<std::size_t>(state));
}

std::string textOfRecord(const CleaningRecord& record) {
    std::string text = std::string(kFirstLine) + "\n";
    text += line("stamp", record.stamp);
    text += line("state", nameOfState(record.state));
    text += line("hive", escaped(record.hive));
    text += line("part", std::to_string(record.part) + " of " + std::to_string(record.parts));
    text += line("old", textOf(record.old));
    text += line("replayed", textOf(record.replayed));
    text += line("new", textOf(record.fresh));
    text += line("present", textOf(record.present));
    if (record.forced) text += line("forced", "yes");
    for (const RecordedLog& log : record.logs)
        text += line("log", textOf(log.print) + " " + escaped(log.name));
    text += line("removed", std::to_string(record.removed));
    for (const std::string& key : record.keys) text += line("key", escaped(key));
    return text + std::string(kLastLine) + "\n";
}

std::optional<CleaningRecord> readRecord(std::string_view text) {
    if (cut(text, "\n") != kFirstLine) return std::nullopt;
    CleaningRecord record;
    while (!text.empty()) {
        std::string_view value = cut(text, "\n");
        if (value == kLastLine) {
            const bool whole = text.empty() && isStamp(record.stamp) && isFileName(record.hive) &&
                               std::ranges::all_of(record.logs, isFileName, &RecordedLog::name);
            return whole ? std::optional(std::move(record)) : std::nullopt;
        }
        const std::string_view name = cut(value, ": ");
        if (!readLine(name, value, record)) return std::nullopt;
    }
    return std::nullopt;
}

void storeRecord(HostFolder& folder, const CleaningRecord& record) {
    const std::string half = record.list() + ".new";
    folder.remove(half);
    folder.create(half, textOfRecord(record));
    folder.rename(half, record.list());
    folder.sync();
}

FoundRecords findRecords(const HostFolder& folder) {
    FoundRecords found;
    for (const std::string& name : folder.names()) {
        if (name.find(kMark) == std::string::npos) continue;
        if (name.ends_with(kHalfListEnd)) {
            found.halfMade.push_back(name);
            continue;
        }
        if (!name.ends_with(kListEnd)) continue;
        const std::optional<struct stat> state = folder.state(name);
        std::optional<CleaningRecord> record;
        if (state && S_ISREG(state->st_mode)) record = readRecord(folder.read(name));
        if (record && record->list() == name) {
            found.records.push_back(std::move(*record));
        } else {
            found.unreadable.push_back(name);
        }
    }
    std::ranges::sort(found.records, {},
                      [](const CleaningRecord& record) { return std::tie(record.stamp, record.hive); });
    return found;
}

}  // namespace bromvale::offline
